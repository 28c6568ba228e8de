#pragma once

#include <vela/api/ChannelVariant.hpp>
#include <vela/api/Frame.hpp>
#include <vela/api/Frames.hpp>

namespace vela::audio {

/// One channel's block of right-justified integer samples, as all processing takes it.
using Frame = api::Frame<int, api::ChannelVariant>;
/// The frames of all channels of one block.
using Frames = api::Frames<int, api::ChannelVariant>;

}  // namespace vela::audio
