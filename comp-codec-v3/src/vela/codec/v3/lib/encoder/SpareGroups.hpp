#pragma once

#include <memory>
#include <mutex>
#include <vector>
#include <vela/codec/v3/lib/encode/Group.hpp>

namespace vela::codec::v3::encoder {

/// Groups of a carrier that nobody needs any more.  The next ones are made in their memory, since a
/// group holds many vectors and there are some twenty groups a frame, all carriers together.
///
/// Threads: any number may call.
class SpareGroups {
public:
    using GroupPtr = std::shared_ptr<encode::Group>;

    /// As good as a new group that is a copy of a draft, which has neither `rescaled` channels nor
    /// samples in its `frame`: what these hold already is of no account to the stages.
    [[nodiscard]] GroupPtr copy(const encode::Group& draft);

    /// REQUIRES that nobody else has it.  Lets go of the samples that it shares.  Null is of no use
    /// and goes.
    void give_back(GroupPtr group);

private:
    GroupPtr take_();

    std::vector<GroupPtr> groups_;
    std::mutex mutex_;
};

}  // namespace vela::codec::v3::encoder
