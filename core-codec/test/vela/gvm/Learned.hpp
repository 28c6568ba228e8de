#pragma once

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <vector>
#include <vela/gvm/deltas.hpp>

namespace vela::gvm {

using Ixs = std::vector<unsigned long>;
using Sizes = std::vector<unsigned>;
template <std::size_t N>
using Centers = std::vector<std::array<int, N>>;

/// A learner that has learned a list of numbers, and answers with vectors of the right size.
template <typename Learner, std::size_t N>
struct Learned : Learner {
    Learned(unsigned k, std::vector<int> values, bool update_all = true)
        : nr_deltas(values.size() / N) {
        this->set_update_all_after_insert(update_all);
        good = this->learn(k, range_of<N>(values));
    }

    Sizes sizes() const {
        Sizes result(this->nr_clusters());
        EXPECT_TRUE(this->get_sizes(result));
        return result;
    }
    Centers<N> centers() const {
        Centers<N> result(this->nr_clusters());
        EXPECT_TRUE(this->get_centers(result));
        return result;
    }
    Ixs ixs() const {
        Ixs result(nr_deltas);
        EXPECT_TRUE(this->get_ixs(result));
        return result;
    }

    std::size_t nr_deltas;
    bool good = false;
};

}  // namespace vela::gvm
