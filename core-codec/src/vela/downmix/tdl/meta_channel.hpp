#pragma once

#include <vela/api/Channel.hpp>
#include <vela/api/SpeakerLayout.hpp>

/// The numbers by which META gains name the channels of a carrier.
///
///     index   mono, stereo, 2.1, quad, 5.0, 5.1   7.0, 7.1
///       0     Left                                Left
///       1     Center                              Center
///       2     Right                               Right
///       3     LeftSurround                        LeftSurround
///       4     RightSurround                       RightSurround
///       5     LFE                                 LeftBack
///       6                                         RightBack
///       7                                         LFE
///
/// A column holds whether or not the layout has all of its channels: LFE is 5 on a stereo carrier.
namespace vela::downmix::tdl {

/// False, with `chix` untouched, for a layout that is no carrier, and for a channel that is not in
/// the column.
[[nodiscard]] bool meta_channel_to_chix(unsigned& chix, const api::Channel& channel,
                                        const api::SpeakerLayout& layout);

/// False for a layout that is no carrier.  For an index beyond the column the answer is true and
/// `channel` stays as it was: the caller looks at `channel.valid()`.
[[nodiscard]] bool meta_chix_to_channel(api::Channel& channel, unsigned chix,
                                        const api::SpeakerLayout& layout);

}  // namespace vela::downmix::tdl
