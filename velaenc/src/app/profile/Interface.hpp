#pragma once

#include <cstdint>
#include <string>
#include <vela/Any.hpp>
#include <vela/api/SampleSpan.hpp>
#include <vela/audio/Frame.hpp>

namespace app::profile {

/// What stands between the run and one particular encoder.
///
/// Options first, then `process_one` for each block in turn, `flush` and `done`; all from one
/// thread.
class Interface {
public:
    virtual ~Interface() = default;

    [[nodiscard]] virtual std::string name() const = 0;
    [[nodiscard]] virtual std::string help() const = 0;

    /// False for an unknown key (then `error_msg` tells) or a value that cannot be used.
    [[nodiscard]] virtual bool set_option(const std::string& key, const vela::Any& value) = 0;

    /// Samples per block and channel.
    [[nodiscard]] virtual std::uint64_t frame_size() const = 0;

    /// Encodes one block; `span` is its place in the input.  Some blocks may still be under way
    /// when it returns.  A false, of this block or of one before it, ends the run.
    [[nodiscard]] virtual bool process_one(vela::audio::Frames& frames,
                                           const vela::api::SampleSpan& span) = 0;

    /// Prints the quality figures; false if nothing was encoded.  REQUIRES `flush` first.
    [[nodiscard]] virtual bool done() = 0;

    [[nodiscard]] virtual std::string error_msg() const = 0;

    /// Ends all blocks that are under way; false if one of them fails.
    [[nodiscard]] virtual bool flush() = 0;

    /// Blocks of `process_one` that have not ended yet; after a false, those behind the one that
    /// failed.
    [[nodiscard]] virtual unsigned nr_under_way() const = 0;
};

}  // namespace app::profile
