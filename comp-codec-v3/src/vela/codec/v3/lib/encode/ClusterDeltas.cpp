#include <algorithm>
#include <vela/codec/v3/lib/encode/ClusterDeltas.hpp>
#include <vela/codec/v3/lib/encode/gvm/Factory.hpp>
#include <vela/golomb_rice/OptimizeSizes.hpp>

namespace vela::codec::v3::encode {

namespace {

// Hidden bits of a block: line 0 stays empty at every sixteenth sample.
std::uint32_t count_capacity(std::uint32_t nr_bitlines, std::uint32_t nr_samples) {
    const std::uint32_t all = nr_bitlines * nr_samples;
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
        const bool computed = compute_fit_(fit, group_, sizes_, learner_);
        group_.trace.fit = static_cast<std::uint32_t>(fit);
        return computed;
    }

    /// Takes over the indices.
    [[nodiscard]] bool finish() { return learner_.get_ixs(group_); }

    Fit fit = Fit::none;

private:
    gvm::Interface& learner_;
    bool allow_merge_;
    Group& group_;
    std::vector<unsigned> sizes_;
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
    // Only the last attempt's indices are wanted: the fit goes by sizes and centers alone.
    return attempt.finish() ? Code::ok : Code::failure;
}

bool ClusterDeltas::compute_fit_(Fit& fit, Group& group, std::vector<unsigned>& sizes,
                                 const gvm::Interface& learner) {
    if (!learner.get_centers(group) || !learner.get_sizes(sizes)) return false;

    unsigned rice_k = 0;
    if (!golomb_rice::OptimizeSizes(1, 7)(rice_k, group.budget.ixs_bits, sizes)) return false;
    group.record.ix_coding_flag = false;
    group.record.ix_coding_mode = 0;
    group.record.rice_k = static_cast<std::uint8_t>(rice_k);

    const auto n = static_cast<std::uint32_t>(group.size());
    const std::uint32_t need = group.budget.total();
    const std::uint32_t capacity = count_capacity(group.nr_bitlines, n);
    group.trace.need = need;
    group.trace.capacity = capacity;

    if (need > capacity)
        fit = Fit::too_big;
    else
        fit = n * 0.1 >= capacity - need ? Fit::little_spare : Fit::much_spare;
    return true;
}

}  // namespace vela::codec::v3::encode
