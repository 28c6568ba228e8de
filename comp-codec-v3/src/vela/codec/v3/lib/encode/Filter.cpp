#include <vela/codec/v3/lib/encode/Filter.hpp>
#include <vela/thread/awake.hpp>

namespace vela::codec::v3::encode {

template <typename Use>
auto Filter::with_filter_(const api::ChannelVariant& carrier, Use use) const {
    Shard& shard = shards_[carrier.channel.id() % shards_.size()];
    const auto lock = thread::lock_awake(shard.mutex);
    return use(shard.filters[carrier]);
}

int Filter::check(const api::ChannelVariant& carrier, std::uint32_t nr_bitlines) const {
    return with_filter_(carrier, [&](auto& filter) { return filter(nr_bitlines) ? 2 : 0; });
}

bool Filter::update(const Group& group) {
    if (!group.has_score) return false;
    with_filter_(group.frame.key, [&](auto& filter) {
        filter.update(group.nr_bitlines, static_cast<float>(-group.score));
    });
    return true;
}

void Filter::clear(const api::ChannelVariant& carrier) {
    with_filter_(carrier, [](auto& filter) { filter.clear(); });
}

}  // namespace vela::codec::v3::encode
