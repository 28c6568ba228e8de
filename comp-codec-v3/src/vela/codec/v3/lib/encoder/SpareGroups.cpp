#include <utility>
#include <vela/codec/v3/lib/encoder/SpareGroups.hpp>
#include <vela/thread/awake.hpp>

namespace vela::codec::v3::encoder {

SpareGroups::GroupPtr SpareGroups::copy(const encode::Group& draft) {
    auto group = take_();
    if (!group) return std::make_shared<encode::Group>(draft);
    *group = draft;
    return group;
}

void SpareGroups::give_back(GroupPtr group) {
    if (!group) return;
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
