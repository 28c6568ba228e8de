#pragma once

#include <map>
#include <mutex>
#include <vela/codec/v3/lib/encode/Group.hpp>
#include <vela/codec/v3/lib/encode/details/Filter.hpp>

namespace vela::codec::v3::encode {

/// Remembers the scores of a frame per carrier channel and tells which candidates cannot win.
///
/// Shared by all workers; every operation locks.
class Filter {
public:
    /// 2 if the candidate shall be dropped, else 0.
    [[nodiscard]] int check(const Group& group) const {
        return check(group.frame.key, group.nr_bitlines);
    }
    [[nodiscard]] int check(const api::ChannelVariant& carrier, std::uint32_t nr_bitlines) const;

    /// Takes in a scored candidate; false if it has no score.
    [[nodiscard]] bool update(const Group& group);

    /// Forgets everything, for the next frame.
    void clear();

private:
    std::map<api::ChannelVariant, details::Filter> filters_;
    mutable std::mutex mutex_;
};

}  // namespace vela::codec::v3::encode
