#pragma once

#include <array>
#include <memory>
#include <string>
#include <vector>
#include <vela/Range.hpp>
#include <vela/codec/v3/lib/encode/gvm/Interface.hpp>
#include <vela/gvm/api/Learner.hpp>
#include <vela/permutation/Permutation.hpp>
#include <vela/segment/Iterator.hpp>

namespace vela::codec::v3::encode::gvm {

/// Runs one online learner over a shuffled copy of a group's deltas and puts the results back into
/// time order.
///
/// `M` is the number of channels mixed, 2 or 3; a delta has M - 1 values.  The shuffle keeps the
/// online pass from seeing the deltas in time order.  Its engine is one per `M` for the whole
/// process, always seeded the same: learners made in the same order see the same shuffles.
template <unsigned M>
class Learner : public Interface {
public:
    static constexpr std::size_t dimension = M - 1;
    using Iterator = segment::Iterator<dimension, int>;
    using Centers = std::vector<std::array<int, dimension>>;

    Learner(const std::string& implementation, const std::vector<int>& deltas, bool update_all,
            bool force_origin, bool randomize);

    [[nodiscard]] bool valid() const override { return learner_ != nullptr; }
    [[nodiscard]] bool learn(unsigned nr_centers, bool allow_merge) override;
    [[nodiscard]] bool get_ixs(Group& group) const override;
    [[nodiscard]] bool get_centers(Group& group) const override;
    [[nodiscard]] bool measure_centers(Group& group) const override;
    [[nodiscard]] bool get_sizes(std::vector<unsigned>& sizes) const override;
    [[nodiscard]] double cost() const override;

    /// The center nearest to the origin, the first of equals; the end for no centers.
    [[nodiscard]] static typename Centers::iterator find_best_origin_(Centers& centers);

private:
    static void set_width_(Group& group, std::size_t count, unsigned width);
    static void randomize_(permutation::Permutation& permutation);

    bool force_origin_;
    std::vector<int> deltas_;
    Range<Iterator> range_;
    permutation::Permutation inverse_;  // puts what the learner tells into time order
    std::shared_ptr<::vela::gvm::api::Learner<double, Iterator>> learner_;
};

extern template class Learner<2>;
extern template class Learner<3>;

}  // namespace vela::codec::v3::encode::gvm
