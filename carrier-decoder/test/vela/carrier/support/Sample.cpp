#include "Sample.hpp"

namespace vela::carrier::support {

namespace {

void add_mix(Sample& out, std::mt19937& engine, std::size_t nr_channels, std::size_t length) {
    const int limit = 1 << (20 - out.nr_bitlines);
    std::vector<Signal> channels;
    for (std::size_t i = 0; i < nr_channels; ++i)
        channels.push_back(noise(engine, length, limit));

    Record& record = out.record;
    record.dimensions = static_cast<unsigned>(nr_channels) - 1;
    record.rice_k = 2;
    record.center_bits = 5;
    record.centers = {{0, 0}, {3, -2}, {-7, 1}, {1, -6}, {-15, 15}};
    if (nr_channels == 2) {
        for (auto& center : record.centers)
            center[1] = 0;
    }
    record.ixs = random_ixs(engine, length, 5);
    out.mixed = mix(channels, record.centers, record.ixs);
    record.seeds = out.mixed.seeds;
}

}  // namespace

Sample make_sample(std::size_t nr_channels, std::size_t length, unsigned nr_bitlines,
                   unsigned seed) {
    std::mt19937 engine(seed);
    Sample out;
    out.nr_bitlines = nr_bitlines;
    Record& record = out.record;
    record.frame_size_code = static_cast<std::uint32_t>(length / 16 - 1);
    record.mix_bw_code = 14 - nr_bitlines;
    for (std::uint32_t i = 0; i < nr_channels; ++i)
        record.channels[i] = 2 + i;
    append(record.instructions, 1, 8);
    append(record.instructions, 30, 8);
    append(record.instructions, 70, 8);
    append(record.instructions, 0, 8);
    if (nr_channels == 1) {
        out.mixed.mix = noise(engine, length, 1 << (22 - nr_bitlines));
        out.mixed.rebuilt = {out.mixed.mix};
    } else {
        add_mix(out, engine, nr_channels, length);
    }
    return out;
}

}  // namespace vela::carrier::support
