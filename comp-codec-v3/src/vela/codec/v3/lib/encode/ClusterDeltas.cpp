#include <algorithm>
#include <limits>
#include <vela/codec/v3/lib/encode/ClusterDeltas.hpp>
#include <vela/codec/v3/lib/encode/gvm/Factory.hpp>
#include <vela/golomb_rice/OptimizeSizes.hpp>

namespace vela::codec::v3::encode {

namespace {

const golomb_rice::OptimizeSizes optimize_sizes(1, 7);

// Hidden bits of a block: line 0 stays empty at every sixteenth sample.
std::uint32_t count_capacity(const Group& group) {
    const auto nr_samples = static_cast<std::uint32_t>(group.size());
    const std::uint32_t all = group.nr_bitlines * nr_samples;
    return nr_samples == 0 ? all : all - (nr_samples - 1) / 16;
}

}  // namespace

/// One learner and the size of the record for each number of clusters that it is asked for.
class ClusterDeltas::Attempt {
public:
    Attempt(gvm::Interface& learner, bool allow_merge, Group& group)
        : learner_(learner), allow_merge_(allow_merge), group_(group) {}

    /// False if the learner fails.
    bool operator()(std::uint32_t nr_centers) {
        ++group_.trace.learns;
        if (!learner_.learn(nr_centers, allow_merge_)) return false;
        if (!learner_.measure_centers(group_)) return false;
        if (is_still_too_big_(nr_centers)) return true;
        const bool computed = compute_fit_(fit, group_, sizes_, learner_);
        group_.trace.fit = static_cast<std::uint32_t>(fit);
        if (fit == Fit::too_big) look_ahead_(nr_centers);
        return computed;
    }

    /// Takes over indices and centers.
    [[nodiscard]] bool finish() { return learner_.get_ixs(group_) && learner_.get_centers(group_); }

    Fit fit = Fit::none;

private:
    // The last attempt is always counted: its bits are told.
    [[nodiscard]] bool is_still_too_big_(std::uint32_t nr_centers) const {
        return nr_centers >= floor_until_ && nr_centers > group_.centers_min &&
               is_too_big_with_(floor_);
    }

    [[nodiscard]] bool is_too_big_with_(std::uint32_t ixs_bits) const {
        const std::uint32_t others = group_.budget.total() - group_.budget.ixs_bits;
        return others + ixs_bits > count_capacity(group_);
    }

    // To count the bits of the indices takes longer than a merge.  So while much is missing they
    // are counted once for several merges, as few as they may become by then.
    void look_ahead_(std::uint32_t nr_centers) {
        floor_until_ = nowhere_;
        if (!allow_merge_ || sizes_.size() != nr_centers) return;  // what comes may be no merge
        for (; nr_merges_ != 0; nr_merges_ /= 2) {
            floor_ = optimize_sizes.floor_after_merges(sizes_, nr_merges_);
            if (!is_too_big_with_(floor_)) continue;
            floor_until_ = nr_centers - std::min(nr_centers, nr_merges_);
            return;
        }
    }

    static constexpr std::uint32_t nowhere_ = std::numeric_limits<std::uint32_t>::max();

    gvm::Interface& learner_;
    bool allow_merge_;
    Group& group_;
    std::vector<unsigned> sizes_;

    std::uint32_t nr_merges_ = 16;          // to look ahead; fewer as they get too many
    std::uint32_t floor_ = 0;               // bits of the indices, at least
    std::uint32_t floor_until_ = nowhere_;  // the fewest centers that it holds for
};

ClusterDeltas::Code ClusterDeltas::operator()(Group& group) {
    if (filter && filter->check(group) != 0) return Code::filtered;

    const std::size_t n = group.size();
    if (n == 0) return Code::failure;
    if (group.deltas.size() < n) {
        group.fits = true;
        return Code::ok;
    }

    const auto dims = static_cast<unsigned>(group.deltas.size() / n);
    if (dims != 1 && dims != 2) return Code::failure;
    const auto learner =
        gvm::create(settings.implementation, dims + 1, group.deltas, settings.update_all,
                    settings.force_origin_center, settings.randomize_deltas);
    if (!learner || !learner->valid()) return Code::failure;

    Attempt attempt(*learner, settings.allow_merge, group);
    return search_(attempt, group);
}

ClusterDeltas::Code ClusterDeltas::search_(Attempt& attempt, Group& group) {
    const bool three = group.deltas.size() / group.size() == 2;
    std::uint32_t wanted = three ? group.centers_start_3 : group.centers_start_2;
    std::uint32_t k = std::min(wanted, group.centers_max);
    group.trace.start = wanted;

    while (true) {
        if (!attempt(k)) return Code::failure;
        if (attempt.fit != Fit::much_spare || k == group.centers_max) break;
        retries_.fetch_add(1, std::memory_order_relaxed);
        wanted = k + 30;
        k = std::min(wanted, group.centers_max);
    }

    while (attempt.fit == Fit::too_big && k > group.centers_min) {
        --k;
        if (!attempt(k)) return Code::failure;
    }
    group.fits = attempt.fit != Fit::too_big;
    // Indices and centers are wanted of the last attempt alone: the fit goes by the sizes and by
    // the width of the centers.
    return attempt.finish() ? Code::ok : Code::failure;
}

bool ClusterDeltas::compute_fit_(Fit& fit, Group& group, std::vector<unsigned>& sizes,
                                 const gvm::Interface& learner) {
    unsigned rice_k = 0;
    if (!learner.get_sizes(sizes)) return false;
    if (!optimize_sizes(rice_k, group.budget.ixs_bits, sizes)) return false;
    group.record.ix_coding_flag = false;
    group.record.ix_coding_mode = 0;
    group.record.rice_k = static_cast<std::uint8_t>(rice_k);

    const auto n = static_cast<std::uint32_t>(group.size());
    const std::uint32_t need = group.budget.total();
    const std::uint32_t capacity = count_capacity(group);
    group.trace.need = need;
    group.trace.capacity = capacity;

    if (need > capacity)
        fit = Fit::too_big;
    else
        fit = n * 0.1 >= capacity - need ? Fit::little_spare : Fit::much_spare;
    return true;
}

}  // namespace vela::codec::v3::encode
