#include <vela/codec/v3/lib/encode/Group.hpp>

namespace vela::codec::v3::encode {

std::shared_ptr<Group> Group::create(const api::SpeakerLayout& in, const api::SpeakerLayout& out,
                                     const api::SampleSpan& span) {
    auto group = std::make_shared<Group>();
    group->input_layout = in;
    group->output_layout = out;
    group->span = span;
    return group;
}

}  // namespace vela::codec::v3::encode
