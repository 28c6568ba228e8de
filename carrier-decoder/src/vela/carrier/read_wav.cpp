#include <utility>
#include <vela/carrier/details/refuse.hpp>
#include <vela/carrier/read_wav.hpp>
#include <vela/wav/FileParser.hpp>

namespace vela::carrier {

using details::refuse;

bool read_wav(WavFile& out, std::string& why, const file::Name& name) {
    wav::FileParser<int> parser(name);
    parser.block_size = std::uint64_t{1} << 32;  // all of it: a WAV file is shorter
    if (!parser.parse()) return refuse(why, name.str(), " is no PCM WAV file");
    if (parser.format->bits_per_sample != 24) {
        return refuse(why, name.str(), " has ", parser.format->bits_per_sample, " bits, not 24");
    }
    auto all = parser.blocks.begin();
    if (!all.parse_block_()) return refuse(why, name.str(), " cannot be read");
    out.sample_rate = parser.format->sample_rate;
    out.channels = std::move(all.cache->channels);
    return true;
}

std::vector<ChannelId> interleaving_of(const api::SpeakerLayout& carrier) {
    using namespace api::channel::id;
    std::vector<ChannelId> out;
    for (const ChannelId id :
         {Left, Right, Center, LFE, LeftBack, RightBack, LeftSurround, RightSurround}) {
        if (carrier.test(id)) out.push_back(id);
    }
    return out;
}

}  // namespace vela::carrier
