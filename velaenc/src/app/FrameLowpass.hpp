#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <ostream>
#include <vector>
#include <vela/api/ChannelVariant.hpp>
#include <vela/audio/Frame.hpp>
#include <vela/filter/lowpass/Normal_itf.hpp>
#include <vela/filter/lowpass/Type.hpp>

namespace app {

/// One lowpass per channel, with its delay taken out of the signal.
///
/// Output sample n is the filter's answer to input sample n + d, d being its delay, so that a
/// block needs the first d samples of the block after it:
///
///     input     |  0 .. d-1     d .. S-1  |  0 .. d-1  ...
///                      |            |            |
///     output    ... S-d..S-1 |  0 .. S-d-1   S-d..S-1 |
///                 current          upcoming
class FrameLowpass {
public:
    FrameLowpass(vela::filter::lowpass::Type type, std::uint32_t freq, std::uint32_t sample_rate)
        : type_(type), freq_(freq), sample_rate_(sample_rate) {}

    /// Filters one raw block: its start ends `current`, the rest begins `upcoming`.  False, with
    /// the reason on `messages`, if there is no such filter or its delay exceeds the block.
    [[nodiscard]] bool feed(vela::audio::Frames& current, vela::audio::Frames& upcoming,
                            const vela::audio::Frames& input, std::ostream& messages);

    /// Ends the last block with the filters' answers to silence.  False if a channel of it never
    /// went through `feed`.
    [[nodiscard]] bool flush(vela::audio::Frames& current);

private:
    using Filter = vela::filter::lowpass::Normal_itf<double>;

    Filter* goc_filter_(const vela::api::ChannelVariant& key, std::ostream& messages);

    vela::filter::lowpass::Type type_;
    std::uint32_t freq_;
    std::uint32_t sample_rate_;
    std::map<vela::api::ChannelVariant, Filter::Ptr> filters_;
    /// One channel on its way through its filter, kept for the sake of its memory.
    std::vector<double> samples_;
};

}  // namespace app
