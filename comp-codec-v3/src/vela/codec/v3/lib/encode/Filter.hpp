#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <mutex>
#include <vela/cache_line.hpp>
#include <vela/codec/v3/lib/encode/Group.hpp>
#include <vela/codec/v3/lib/encode/details/Filter.hpp>

namespace vela::codec::v3::encode {

/// Remembers the scores of a frame per carrier channel and tells which candidates cannot win.
///
/// Shared by all workers; every operation locks, but those of different channels never meet.
class Filter {
public:
    /// 2 if the candidate shall be dropped, else 0.
    [[nodiscard]] int check(const Group& group) const {
        return check(group.frame.key, group.nr_bitlines);
    }
    [[nodiscard]] int check(const api::ChannelVariant& carrier, std::uint32_t nr_bitlines) const;

    /// Takes in a scored candidate; false if it has no score.
    [[nodiscard]] bool update(const Group& group);

    /// Begins a frame of a carrier, whose candidates are judged by its own scores alone.
    void clear(const api::ChannelVariant& carrier);

private:
    /// The scores of some carriers.
    struct alignas(cache_line) Shard {
        std::map<api::ChannelVariant, details::Filter> filters;
        std::mutex mutex;
    };

    template <typename Use>
    auto with_filter_(const api::ChannelVariant& carrier, Use use) const;

    // More than there are channels, so that each has one to itself.
    mutable std::array<Shard, 32> shards_;
};

}  // namespace vela::codec::v3::encode
