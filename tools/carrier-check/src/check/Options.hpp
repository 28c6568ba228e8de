#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <vector>
#include <vela/carrier/Block.hpp>
#include <vela/file/Name.hpp>

namespace check {

/// What the command line asks for.
struct Options {
    std::size_t frame_size = 0;           ///< samples per block, as given to the encoder
    std::string layout;                   ///< input layout by name; empty: as the records say
    std::vector<vela::file::Name> files;  ///< mono carriers, or one interleaved file
    std::map<vela::carrier::ChannelId, vela::file::Name> originals;
    std::string rebuild_prefix;  ///< where rebuilt channels go; empty for nowhere
    bool json = false;
    bool verbose = false;
    bool help = false;

    /// False, with one sentence in `why`, for anything that cannot be used.
    [[nodiscard]] bool parse(std::string& why, const std::vector<std::string>& arguments);

    [[nodiscard]] static const char* usage();

private:
    [[nodiscard]] bool take_(std::string& why, const std::string& name, const std::string& value);
    [[nodiscard]] bool take_original_(std::string& why, const std::string& text);
};

}  // namespace check
