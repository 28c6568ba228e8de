#include <vela/codec/v3/lib/encode/Filter.hpp>
#include <vela/thread/awake.hpp>

namespace vela::codec::v3::encode {

int Filter::check(const api::ChannelVariant& carrier, std::uint32_t nr_bitlines) const {
    const auto lock = thread::lock_awake(mutex_);
    const auto at = filters_.find(carrier);
    return at != filters_.end() && at->second(nr_bitlines) ? 2 : 0;
}

bool Filter::update(const Group& group) {
    if (!group.has_score) return false;
    const auto lock = thread::lock_awake(mutex_);
    filters_[group.frame.key].update(group.nr_bitlines, static_cast<float>(-group.score));
    return true;
}

void Filter::clear() {
    const auto lock = thread::lock_awake(mutex_);
    filters_.clear();
}

}  // namespace vela::codec::v3::encode
