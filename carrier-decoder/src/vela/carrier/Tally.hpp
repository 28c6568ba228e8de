#pragma once

#include <cstdint>
#include <span>

namespace vela::carrier {

/// Error of one channel in one block, in dB of full scale, not below -144.
struct BlockError {
    double rms_db = 0;
    double peak_db = 0;
};

/// Error of `rebuilt` against `original`.
///
/// Shape: equal lengths, at least one sample.  Units: 24-bit values.
[[nodiscard]] BlockError error_of(std::span<const int> original, std::span<const int> rebuilt);

/// Error over many blocks; silence is -3000 dB.
struct Figures {
    double rms_db = 0;
    double peak_db = 0;
    double crest = 1;  ///< peak to rms, as a factor
};

/// Gathers errors: the mean square of what is added, and the highest peak.
class Tally {
public:
    void add(double rms_db, double peak_db);
    [[nodiscard]] Figures figures() const;

private:
    double sum_of_squares_ = 0;
    double peak_ = 0;
    std::uint32_t count_ = 0;
};

}  // namespace vela::carrier
