#pragma once

#include <app/Channel.hpp>
#include <app/Options.hpp>
#include <cstdint>
#include <list>
#include <optional>
#include <ostream>
#include <string>
#include <vector>
#include <vela/file/Name.hpp>
#include <vela/filter/lowpass/Type.hpp>

namespace app {

/// What the run uses: the options, checked.  Not changed after `set`.
struct Settings {
    Options options;

    std::string profile;
    std::string input_speaker_layout;
    std::optional<vela::file::Name> downmix_filename;
    std::list<std::string> arguments;
    std::uint64_t dither_bits = 8;  ///< only printed
    std::optional<std::uint32_t> sample_rate;
    std::optional<std::uint64_t> frame_size;
    std::int32_t frame_count = -1;  ///< blocks to encode; negative for all
    std::optional<std::int32_t> progress;
    std::optional<std::uint32_t> nr_threads;
    std::vector<Channel> channels;
    std::optional<vela::file::Name> output_fn;
    std::optional<std::string> output_format;
    std::optional<vela::file::Name> data_fn;
    std::optional<bool> multi_channel_export;
    std::string naming_schema;
    vela::filter::lowpass::Type lowpass_type = vela::filter::lowpass::Type::None;
    std::uint32_t lowpass_freq = 0;  ///< Hz

    /// False, with the reason on `messages` (a frequency that is no number has none), if an input
    /// file cannot be opened or the lowpass is unknown.
    [[nodiscard]] bool set(const Options& from, std::ostream& messages);

    /// One line per setting; those that may be left out carry an asterisk and print only when set.
    void stream(std::ostream& out) const;

private:
    [[nodiscard]] bool check_inputs_(std::ostream& messages) const;
    [[nodiscard]] bool set_lowpass_(std::ostream& messages);
};

}  // namespace app
