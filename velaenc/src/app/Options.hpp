#pragma once

#include <app/Channel.hpp>
#include <cstdint>
#include <list>
#include <optional>
#include <string>
#include <vector>
#include <vela/file/Name.hpp>

namespace app {

/// What the command line said; nothing is checked here.
struct Options {
    std::vector<Channel> channels;
    std::optional<std::uint32_t> sample_rate;
    std::optional<std::uint64_t> frame_size;
    std::int32_t frame_count = -1;
    std::optional<std::int32_t> progress;
    std::optional<std::uint32_t> nr_threads;
    std::string profile;
    std::string speaker_layout;
    std::optional<vela::file::Name> downmix_filename;
    std::string naming_schema = "vela";
    std::list<std::string> arguments;
    std::optional<vela::file::Name> output_fn;
    std::optional<std::string> output_format;
    std::optional<vela::file::Name> data_fn;
    std::optional<bool> multi_channel_export;
    std::string lowpass;
    std::optional<bool> help;
    std::optional<bool> version;

    /// Cuts at semicolons; empty pieces are dropped.  Always true.
    bool add_argument(const std::string& text);

    /// "channel:filename".  False without a colon or for an unknown channel.
    [[nodiscard]] bool add_channel(const std::string& text);

    /// "format:filename" or "filename".  False if either was set before.
    [[nodiscard]] bool set_output_format_and_fn(const std::string& text);
};

/// A file name as typed, with backslashes made forward slashes.
[[nodiscard]] vela::file::Name to_filename(const std::string& text);

}  // namespace app
