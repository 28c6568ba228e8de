#include <algorithm>
#include <mutex>
#include <utility>
#include <vela/codec/v3/lib/encode/gvm/Learner.hpp>
#include <vela/codec/zvk/details/error_centers.hpp>
#include <vela/fixed_width/bit_width.hpp>
#include <vela/gvm/create.hpp>
#include <vela/permutation/MersenneTwister.hpp>
#include <vela/thread/awake.hpp>

namespace vela::codec::v3::encode::gvm {

namespace {

auto& centers_of(Group& group, std::integral_constant<unsigned, 2>) {
    return group.centers_1d;
}
auto& centers_of(Group& group, std::integral_constant<unsigned, 3>) {
    return group.centers_2d;
}

double distance_from_origin(const std::array<int, 1>& center) {
    return std::abs(static_cast<double>(center[0]));
}

// The second coordinate stands unsquared and twice: decoders get the centers that this rule chose,
// so that it must not be mended into a distance.
double distance_from_origin(const std::array<int, 2>& center) {
    const double x = center[0];
    const double y = center[1];
    return x * x + y + y;
}

}  // namespace

template <unsigned M>
Learner<M>::Learner(const std::string& implementation, const std::vector<int>& deltas,
                    bool update_all, bool force_origin, bool randomize)
    : force_origin_(force_origin), deltas_(deltas) {
    const std::size_t n = deltas_.size() / dimension;
    if (n != 0) range_ = {Iterator(deltas_.data()), Iterator(deltas_.data() + n * dimension)};

    permutation::Permutation permutation;
    permutation.identity(n);
    if (randomize) randomize_(permutation);
    static_cast<void>(permutation.shuffle(range_));  // cannot fail: made for n elements
    permutation.invert();
    inverse_ = std::move(permutation);

    if (::vela::gvm::create<double, Iterator>(learner_, implementation))
        learner_->set_update_all_after_insert(update_all);
}

template <unsigned M>
void Learner<M>::randomize_(permutation::Permutation& permutation) {
    static std::mutex mutex;
    static permutation::MersenneTwister engine;
    const auto lock = thread::lock_awake(mutex);
    permutation.randomize(engine);
}

template <unsigned M>
bool Learner<M>::learn(unsigned nr_centers, bool allow_merge) {
    if (!learner_) return false;
    if (learner_->nr_clusters() < nr_centers || !allow_merge)
        if (!learner_->learn(nr_centers, range_)) return false;
    if (allow_merge)
        while (learner_->nr_clusters() > nr_centers)
            if (!learner_->merge_two_clusters()) return false;
    if (learner_->nr_clusters() > nr_centers) return false;
    return learner_->nr_clusters() != 0;
}

template <unsigned M>
bool Learner<M>::get_ixs(Group& group) const {
    if (!learner_) return false;
    group.ixs.resize(group.size());
    return learner_->get_ixs(group.ixs) && inverse_.shuffle(group.ixs);
}

template <unsigned M>
bool Learner<M>::get_centers(Group& group) const {
    if (!learner_) return false;
    Centers& centers = centers_of(group, std::integral_constant<unsigned, M>());
    if (!learner_->get_centers(centers)) return false;

    if (force_origin_) {
        const auto origin = find_best_origin_(centers);
        if (origin == centers.end()) return false;
        origin->fill(0);
    }

    set_width_(group, centers.size(), fixed_width::bit_width(centers));
    return true;
}

// With a center moved to the origin the width depends on which one that is.
template <unsigned M>
bool Learner<M>::measure_centers(Group& group) const {
    if (force_origin_) return get_centers(group);
    unsigned width = 0;
    if (!learner_ || !learner_->get_center_width(width)) return false;
    set_width_(group, learner_->nr_clusters(), width);
    return true;
}

template <unsigned M>
void Learner<M>::set_width_(Group& group, std::size_t count, unsigned width) {
    const std::uint32_t slots = zvk::details::nr_error_centers_per_index(
        zvk::details::error_center_index(static_cast<std::uint32_t>(count)));
    const std::uint32_t bits = std::max(width, 1u) + 1;
    group.record.center_bits = static_cast<std::uint8_t>(bits);
    group.budget.centers_bits = slots * bits * static_cast<std::uint32_t>(dimension);
}

template <unsigned M>
bool Learner<M>::get_sizes(std::vector<unsigned>& sizes) const {
    return learner_ && learner_->get_sizes(sizes);
}

template <unsigned M>
double Learner<M>::cost() const {
    return learner_ ? learner_->cost() : 0.0;
}

template <unsigned M>
typename Learner<M>::Centers::iterator Learner<M>::find_best_origin_(Centers& centers) {
    return std::ranges::min_element(
        centers, {}, [](const auto& center) { return distance_from_origin(center); });
}

template class Learner<2>;
template class Learner<3>;

}  // namespace vela::codec::v3::encode::gvm
