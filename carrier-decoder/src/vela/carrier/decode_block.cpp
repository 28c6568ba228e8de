#include <algorithm>
#include <vela/carrier/BitMap.hpp>
#include <vela/carrier/checksum.hpp>
#include <vela/carrier/decode_block.hpp>
#include <vela/carrier/details/RecordReader.hpp>
#include <vela/carrier/details/refuse.hpp>
#include <vela/carrier/scale.hpp>
#include <vela/carrier/unmix.hpp>

namespace vela::carrier {

namespace {

using details::refuse;
using Samples = std::span<const int>;

constexpr std::size_t row = 16;

/// The 16 bits that stand on one of the lines 0 to 2 of the first 16 samples.
std::uint32_t word_on_line(Samples samples, unsigned line) {
    std::uint32_t word = 0;
    for (const int x : samples.first(row)) {
        word = word << 1 | (static_cast<std::uint32_t>(x) >> line & 1u);
    }
    return word;
}

bool check_samples(std::string& why, Samples samples) {
    const std::size_t n = samples.size();
    const bool is_frame_size = n == 1000 || (n >= row && n <= 4096 && n % row == 0);
    if (!is_frame_size) return refuse(why, n, " samples are no size of a block");
    const auto wide =
        std::ranges::find_if(samples, [](int x) { return x < -0x800000 || x > 0x7FFFFF; });
    if (wide == samples.end()) return true;
    return refuse(why, "sample ", wide - samples.begin(), " has more than 24 bits");
}

bool check_sync(std::string& why, Samples samples) {
    if (word_on_line(samples, 0) != 0xFFFF) return refuse(why, "there is no sync word");
    for (std::size_t t = row; t < samples.size(); t += row) {
        if ((samples[t] & 1) != 0) return refuse(why, "line 0 of sample ", t, " is not empty");
    }
    return true;
}

bool check_crc(std::string& why, Samples samples) {
    const std::uint32_t written = word_on_line(samples, 1);
    const std::uint32_t computed = crc_of_block(samples);
    if (written == computed) return true;
    return refuse(why, "the checksum reads ", written, " but should be ", computed);
}

/// The first 16 bits of the header lie on line 2 whatever the count of bit-lines, and tell it.
bool find_bitlines(Block& out, std::string& why, Samples samples) {
    const std::uint32_t start = word_on_line(samples, 2);
    const std::uint32_t code = start & 0xFu;
    if (code > 11) return refuse(why, "a mix of ", code + 10, " bits leaves too few bit-lines");
    out.nr_bitlines = 14 - code;
    if (start >> 8 == ((samples.size() >> 4) - 1)) return true;
    return refuse(why, "the frame size code ", start >> 8, " does not go with ", samples.size(),
                  " samples");
}

bool read_sections(Block& out, std::string& why, Samples samples) {
    BitReader bits(read_record(samples, out.nr_bitlines));
    std::uint32_t sync_and_checksum = 0;
    if (!bits.take(sync_and_checksum, 32)) return refuse(why, "the record ends before its header");
    return details::RecordReader(out, why, std::move(bits)).read(samples.size());
}

void rebuild(Block& out, Samples samples) {
    out.mix.clear();
    for (const int x : samples)
        out.mix.push_back(x >> out.nr_bitlines);
    auto rebuilt = unmix(out);
    out.channels.clear();
    for (std::size_t i = 0; i < rebuilt.size(); ++i) {
        restore_level(rebuilt[i], out.nr_bitlines, out.group_scaler_ix());
        out.channels[out.header.channels[i]] = std::move(rebuilt[i]);
    }
}

}  // namespace

bool decode_block(Block& out, std::string& why, Samples samples) {
    out = Block();
    const bool whole = check_samples(why, samples) && check_sync(why, samples) &&
                       check_crc(why, samples) && find_bitlines(out, why, samples) &&
                       read_sections(out, why, samples);
    if (whole) rebuild(out, samples);
    return whole;
}

}  // namespace vela::carrier
