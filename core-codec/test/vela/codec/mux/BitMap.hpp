#pragma once

#include <string>
#include <vector>

namespace vela::codec::mux::test {

struct Position {
    unsigned sample;
    unsigned line;
};

/// Where each bit of a record stands, written down as a reader of carriers would.
inline std::vector<Position> bit_map(unsigned nr_samples, unsigned nr_lines) {
    std::vector<Position> map;
    for (unsigned line = 0; line < 3; ++line)
        for (unsigned sample = 0; sample < 16; ++sample)
            map.push_back({sample, line});
    for (unsigned sample = 0; sample < 16; ++sample)
        for (unsigned line = nr_lines - 1; line >= 3; --line)
            map.push_back({sample, line});
    for (unsigned sample = 16; sample < nr_samples; ++sample)
        for (int line = static_cast<int>(nr_lines) - 1; line >= 0; --line)
            if (line > 0 || sample % 16 != 0) map.push_back({sample, static_cast<unsigned>(line)});
    return map;
}

/// The record of a block as text of "0" and "1".
inline std::string record_bits(const std::vector<int>& samples, unsigned nr_lines) {
    std::string bits;
    for (const Position& at : bit_map(static_cast<unsigned>(samples.size()), nr_lines))
        bits += (samples[at.sample] >> at.line & 1) != 0 ? '1' : '0';
    return bits;
}

}  // namespace vela::codec::mux::test
