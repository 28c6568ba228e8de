#pragma once

#include <cstdint>

namespace vela::audio {

/// Sums up errors over blocks and channels.
///
/// Each measurement weighs the same, whatever its length: the RMS figure is the root of the mean
/// of the squared RMS errors.  All levels are relative to full scale.
class Quality {
public:
    /// Sum of squared RMS errors, linear.
    double sum_sq = 0.0;
    /// Measurements taken in.
    std::uint32_t count = 0;
    /// Largest peak error, linear.
    double peak = 0.0;

    /// Takes in one measurement.  -3000 dB and below stand for no error at all.
    void update_db(double rms_db, double peak_db);

    /// RMS error in dB; -3000 with no measurement or no error.
    [[nodiscard]] double db_rms() const;
    /// Largest error in dB; -3000 with no measurement or no error.
    [[nodiscard]] double db_peak() const;
    /// Peak over RMS, linear; 1 with no measurement or no error.
    [[nodiscard]] double crest() const;

private:
    [[nodiscard]] double rms_() const;
};

}  // namespace vela::audio
