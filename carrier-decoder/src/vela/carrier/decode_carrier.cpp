#include <vela/carrier/decode_block.hpp>
#include <vela/carrier/decode_carrier.hpp>
#include <vela/carrier/details/refuse.hpp>

namespace vela::carrier {

using details::refuse;

bool decode_carrier(std::vector<Block>& out, std::string& why, std::span<const int> samples,
                    std::size_t frame_size) {
    out.clear();
    if (frame_size == 0 || samples.empty() || samples.size() % frame_size != 0) {
        return refuse(why, samples.size(), " samples are no whole blocks of ", frame_size);
    }
    for (std::size_t start = 0; start < samples.size(); start += frame_size) {
        Block block;
        std::string reason;
        if (!decode_block(block, reason, samples.subspan(start, frame_size))) {
            return refuse(why, "block ", out.size(), ": ", reason);
        }
        out.push_back(std::move(block));
    }
    return true;
}

bool find_frame_size(std::size_t& out, std::string& why, std::span<const int> samples) {
    constexpr std::size_t row = 16;
    constexpr std::size_t code_bits = 8;
    if (samples.size() < row)
        return refuse(why, "there is no block in ", samples.size(), " samples");
    std::size_t code = 0;  // the first eight bits of the header, which lie on line 2
    for (const int x : samples.first(code_bits))
        code = code << 1 | (x >> 2 & 1);

    why = "the block is cut short";
    for (const std::size_t size : {(code + 1) * row, std::size_t{1000}}) {
        Block block;
        if (size > samples.size() || (size == 1000 && code != 61)) continue;
        if (!decode_block(block, why, samples.first(size))) continue;
        out = size;
        return true;
    }
    return false;
}

Channels join(std::span<const Block> blocks) {
    Channels out;
    std::size_t length = 0;
    for (const Block& block : blocks) {
        for (const auto& [channel, samples] : block.channels) {
            std::vector<int>& joined = out[channel];
            joined.resize(length);
            joined.insert(joined.end(), samples.begin(), samples.end());
        }
        length += block.nr_samples();
    }
    for (auto& [channel, samples] : out)
        samples.resize(length);
    return out;
}

}  // namespace vela::carrier
