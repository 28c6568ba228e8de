#pragma once

#include <cstdint>
#include <fstream>
#include <mutex>
#include <vela/codec/v3/lib/encode/Chain.hpp>
#include <vela/codec/v3/lib/encode/Group.hpp>

namespace vela::codec::v3::encoder {

/// One JSON line per candidate and per winner, to find the first place where two encoders part.
///
/// Only builds with VELA_TEST_SWITCHES write it, to the file that the environment variable
/// VELA_CANDIDATES names; the program that is shipped reads the command line alone.
class CandidateLog {
public:
    CandidateLog();

    [[nodiscard]] bool is_open() const { return out_.is_open(); }

    void add(const encode::Group& group, encode::Chain::Code code);
    void add_winner(const encode::Group& group);

private:
    std::ofstream out_;
    std::mutex mutex_;
};

}  // namespace vela::codec::v3::encoder
