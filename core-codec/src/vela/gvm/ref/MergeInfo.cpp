#include <algorithm>
#include <array>
#include <vela/gvm/ref/MergeInfo.hpp>

namespace vela::gvm::ref {

template <typename Element>
bool MergeInfo<Element>::setup(const Clusters& clusters) {
    if (clusters.empty() || !setup_exponent_(clusters)) return false;
    for (const Cluster& cluster : clusters)
        if (cluster.count() == 0) return false;

    infos_.resize(clusters.size());
    best_.reset();
    for (std::size_t i = 0; i < infos_.size(); ++i) {
        if (!setup_info_(i, clusters)) return false;
        if (!infos_[i].best) continue;
        if (!best_ || infos_[*best_].best_delta() > infos_[i].best_delta()) best_ = i;
    }
    return true;
}

template <typename Element>
bool MergeInfo<Element>::setup_exponent_(const Clusters& clusters) {
    const double exponent = clusters.front().exponent();
    // Written so that not-a-number, which equals nothing, is refused too.
    for (const Cluster& cluster : clusters)
        if (!(cluster.exponent() == exponent)) return false;
    exponent_ = exponent;
    return true;
}

template <typename Element>
bool MergeInfo<Element>::setup_info_(std::size_t i, const Clusters& clusters) {
    if (i >= infos_.size()) return false;
    Info& info = infos_[i];
    info.cost = clusters[i].cost();
    info.merged.resize(i);
    info.best.reset();
    for (std::size_t j = 0; j < i; ++j) {
        setup_info_element_(info, clusters[i], j, clusters);
        if (!info.best || info.best_delta() > info.merged[j].delta) info.best = j;
    }
    return true;
}

template <typename Element>
void MergeInfo<Element>::setup_info_element_(Info& info, const Cluster& cluster, std::size_t j,
                                             const Clusters& clusters) {
    MergedCluster merged{clusters[j]};
    merged.merge(cluster);
    merged.delta = merged.cost() - info.cost - clusters[j].cost();
    info.merged[j] = merged;
}

template <typename Element>
bool MergeInfo<Element>::update(const Clusters& clusters, std::size_t c) {
    if (infos_.size() != clusters.size() || c >= clusters.size()) return false;
    if (clusters[c].count() == 0) return false;
    if (!exponent_ || !(clusters[c].exponent() == *exponent_)) return false;
    if (!setup_info_(c, clusters)) return false;
    update_above_(clusters, c);

    if (infos_.size() < 2) return true;
    best_ = 1;
    for (std::size_t i = 2; i < infos_.size(); ++i)
        if (infos_[i].best_delta() < infos_[*best_].best_delta()) best_ = i;
    return true;
}

/// Renews column `c`.  A row is searched again only if its best pair became dearer.
template <typename Element>
void MergeInfo<Element>::update_above_(const Clusters& clusters, std::size_t c) {
    for (std::size_t i = c + 1; i < infos_.size(); ++i) {
        Info& info = infos_[i];
        const double old_delta = info.best_delta();
        setup_info_element_(info, clusters[i], c, clusters);
        if (info.merged[c].delta < old_delta) {
            info.best = c;
        } else if (*info.best == c) {
            const auto cheaper = [](const MergedCluster& a, const MergedCluster& b) {
                return a.delta < b.delta;
            };
            const auto cheapest = std::min_element(info.merged.begin(), info.merged.end(), cheaper);
            info.best = static_cast<std::size_t>(cheapest - info.merged.begin());
        }
    }
}

template <typename Element>
auto MergeInfo<Element>::best_merge() const -> std::optional<Merge> {
    if (!best_ || !infos_[*best_].best) return std::nullopt;
    const Info& info = infos_[*best_];
    const MergedCluster& merged = info.merged[*info.best];
    return Merge{*best_, *info.best, merged.delta, merged};
}

template class MergeInfo<std::array<int, 1>>;
template class MergeInfo<std::array<int, 2>>;

}  // namespace vela::gvm::ref
