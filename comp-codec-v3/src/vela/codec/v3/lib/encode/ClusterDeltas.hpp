#pragma once

#include <atomic>
#include <memory>
#include <string>
#include <vela/codec/v3/lib/encode/Filter.hpp>
#include <vela/codec/v3/lib/encode/Group.hpp>
#include <vela/codec/v3/lib/encode/gvm/Interface.hpp>

namespace vela::codec::v3::encode {

/// Finds the largest number of clusters whose centers and indices fit into the bit-lines.
///
/// The search climbs in steps of 30 while much room is left, and comes down one by one once it has
/// overshot.  May be called from several threads.
class ClusterDeltas {
public:
    enum class Code { ok = 0, failure = 1, filtered = 2 };

    struct Settings {
        bool allow_merge = true;
        bool update_all = false;
        bool force_origin_center = false;
        bool randomize_deltas = true;
        std::string implementation = "fast";
    };

    Settings settings;
    std::shared_ptr<Filter> filter;

    /// Fills `ixs`, the centers, `fits` and the record's coding fields.  A candidate that does not
    /// fit is no failure: `fits` is false.
    [[nodiscard]] Code operator()(Group& group);

private:
    enum class Fit { none = 0, too_big = 1, little_spare = 2, much_spare = 3 };

    class Attempt;

    Code search_(Attempt& attempt, Group& group);
    static bool compute_fit_(Fit& fit, Group& group, std::vector<unsigned>& sizes,
                             const gvm::Interface& learner);

    std::atomic<unsigned> retries_{0};
};

}  // namespace vela::codec::v3::encode
