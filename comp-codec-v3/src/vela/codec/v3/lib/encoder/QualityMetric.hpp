#pragma once

namespace vela::codec::v3::encoder {

/// Error figures of a whole run, per input channel.
enum class QualityMetric : int { db_rms = 0, db_peak = 1, crest = 2 };

}  // namespace vela::codec::v3::encoder
