#include <utility>
#include <vela/codec/v3/lib/encoder/SpareGroups.hpp>
#include <vela/thread/awake.hpp>

namespace vela::codec::v3::encoder {

SpareGroups::GroupPtr SpareGroups::copy(const encode::Group& draft) {
    auto group = take_();
    if (!group) return std::make_shared<encode::Group>(draft);
    // Vectors keep their memory by themselves; samples, which are overwritten, would go.
    auto rescaled = std::move(group->rescaled);
    auto frame = std::move(group->frame);
    frame.key = draft.frame.key;
    *group = draft;
    group->rescaled = std::move(rescaled);
    group->frame = std::move(frame);
    return group;
}

void SpareGroups::give_back(GroupPtr group) {
    if (!group) return;
    group->origs.clear();
    group->active.clear();
    const auto lock = thread::lock_awake(mutex_);
    groups_.push_back(std::move(group));
}

SpareGroups::GroupPtr SpareGroups::take_() {
    const auto lock = thread::lock_awake(mutex_);
    if (groups_.empty()) return nullptr;
    auto group = std::move(groups_.back());
    groups_.pop_back();
    return group;
}

}  // namespace vela::codec::v3::encoder
