#pragma once

#include <vela/api/ChannelVariant.hpp>
#include <vela/file/Name.hpp>

namespace app {

/// One input: which channel, and the mono WAV file that holds it.
struct Channel {
    vela::api::ChannelVariant channel;
    vela::file::Name filename;
};

}  // namespace app
