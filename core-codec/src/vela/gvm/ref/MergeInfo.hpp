#pragma once

#include <cstddef>
#include <optional>
#include <vector>
#include <vela/gvm/ref/Cluster.hpp>

namespace vela::gvm::ref {

/// The table of all pairs of clusters: for each the union and what it costs.
///
///     info 0   -
///     info 1   (1,0)                   a row per cluster, a column per cluster of a lower index;
///     info 2   (2,0) (2,1)             each row knows its cheapest pair, the table its
///     info 3   (3,0) (3,1) (3,2)       cheapest row
///
/// The clusters are the caller's; the table must be told of every change by `update`.
/// Ties of whole tables go to the lowest row and column.
template <typename Element>
class MergeInfo {
public:
    using Cluster = ref::Cluster<Element>;
    using Clusters = std::vector<Cluster>;

    /// The cheapest pair of all; `y` < `x`.
    struct Merge {
        std::size_t x;
        std::size_t y;
        double delta;           ///< cost of the union above the costs of the two
        const Cluster& united;  ///< valid until the next `setup` or `update`
    };

    /// Fills the table.  False for no clusters, an empty one, or exponents that differ.
    [[nodiscard]] bool setup(const Clusters& clusters);

    /// Renews the pairs of cluster `c`.  False if the table was not set up for these clusters, or
    /// cluster `c` is empty or has another exponent.
    [[nodiscard]] bool update(const Clusters& clusters, std::size_t c);

    /// Nothing if there are fewer than two clusters.
    [[nodiscard]] std::optional<Merge> best_merge() const;

    /// Number of clusters at the last `setup`.
    [[nodiscard]] std::size_t size() const { return infos_.size(); }

private:
    struct MergedCluster : Cluster {
        double delta = 0.0;
    };

    struct Info {
        double cost = 0.0;
        std::vector<MergedCluster> merged;  // by index of the partner
        std::optional<std::size_t> best;    // into `merged`

        [[nodiscard]] double best_delta() const { return merged[*best].delta; }
    };

    [[nodiscard]] bool setup_exponent_(const Clusters& clusters);
    [[nodiscard]] bool setup_info_(std::size_t i, const Clusters& clusters);
    void setup_info_element_(Info& info, const Cluster& cluster, std::size_t j,
                             const Clusters& clusters);
    void update_above_(const Clusters& clusters, std::size_t c);

    std::optional<double> exponent_;
    std::vector<Info> infos_;
    std::optional<std::size_t> best_;  // into `infos_`
};

}  // namespace vela::gvm::ref
