#pragma once

#include <cstdint>
#include <string>
#include <vela/Any.hpp>
#include <vela/api/SampleSpan.hpp>
#include <vela/audio/Frame.hpp>
#include <vela/thread/Errands.hpp>

namespace app::profile {

/// What stands between the run and one particular encoder.
///
/// Options first, then `process_one` for each block in turn, then `done`; all from one thread.
class Interface {
public:
    virtual ~Interface() = default;

    [[nodiscard]] virtual std::string name() const = 0;
    [[nodiscard]] virtual std::string help() const = 0;

    /// False for an unknown key (then `error_msg` tells) or a value that cannot be used.
    [[nodiscard]] virtual bool set_option(const std::string& key, const vela::Any& value) = 0;

    /// Samples per block and channel.
    [[nodiscard]] virtual std::uint64_t frame_size() const = 0;

    /// Encodes one block; `span` is its place in the input.  A false ends the run.
    [[nodiscard]] virtual bool process_one(vela::audio::Frames& frames,
                                           const vela::api::SampleSpan& span) = 0;

    /// Prints the quality figures; false if nothing was encoded.
    [[nodiscard]] virtual bool done() = 0;

    [[nodiscard]] virtual std::string error_msg() const = 0;

    /// Work that threads of the encoder do between blocks, and the calling one while it waits for
    /// them; null while there is no such thread.
    [[nodiscard]] virtual vela::thread::Errands* errands() = 0;
};

}  // namespace app::profile
