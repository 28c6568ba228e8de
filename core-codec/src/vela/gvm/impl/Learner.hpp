#pragma once

#include <array>
#include <vector>
#include <vela/Range.hpp>
#include <vela/fixed_width/bit_width.hpp>
#include <vela/gvm/api/Learner.hpp>

namespace vela::gvm::impl {

/// Puts `Impl` (`ref::Learner` or `fast::Learner`) behind the common interface.
///
/// Sizes the vectors that `Impl` fills, and refuses what needs a good `learn` before there was one.
template <typename T, typename Iterator, typename Impl>
class Learner : public api::Learner<T, Iterator> {
public:
    using typename api::Learner<T, Iterator>::Center;

    void set_update_all_after_insert(bool update_all) override {
        impl_.set_update_all_after_insert(update_all);
    }

    [[nodiscard]] bool learn(unsigned nr_clusters, const Range<Iterator>& range) override {
        learned_ = false;
        if (!impl_.learn(nr_clusters, range)) return false;
        nr_deltas_ = static_cast<unsigned>(range.size());
        learned_ = true;
        return true;
    }

    [[nodiscard]] bool merge_two_clusters() override {
        return learned_ && impl_.merge_two_clusters();
    }

    [[nodiscard]] unsigned nr_clusters() const override { return impl_.nr_clusters(); }
    [[nodiscard]] T cost() const override { return impl_.cost(); }

    [[nodiscard]] bool get_sizes(std::vector<unsigned>& sizes) const override {
        sizes.resize(nr_clusters());
        return impl_.get_sizes(sizes);
    }

    [[nodiscard]] bool get_centers(std::vector<Center>& centers) const override {
        centers.resize(nr_clusters());
        return impl_.get_centers(centers);
    }

    [[nodiscard]] bool get_center_width(unsigned& bits) const override {
        if constexpr (requires { impl_.get_center_width(bits); }) {
            return impl_.get_center_width(bits);
        } else {
            std::vector<Center> centers;
            if (!get_centers(centers)) return false;
            bits = fixed_width::bit_width(centers);
            return true;
        }
    }

    [[nodiscard]] bool get_ixs(std::vector<unsigned long>& ixs) const override {
        if (!learned_) return false;
        ixs.resize(nr_deltas_);
        return impl_.get_ixs(ixs);
    }

private:
    unsigned nr_deltas_ = 0;  // of the last good learn
    bool learned_ = false;
    Impl impl_;
};

}  // namespace vela::gvm::impl
