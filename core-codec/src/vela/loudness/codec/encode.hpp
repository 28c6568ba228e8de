#pragma once

#include <vela/api/loudness/Parameter.hpp>

namespace vela::loudness::codec {

/// Packs up to three values of one loudness parameter into the 32 bits that a record carries.
///
///     bit   31        22  21  20        11  10  9          0
///           | value 10  |  1  | first 10  |  1  | second 10 |
///                         `- first is there     `- second is there
///
/// `first` and `second` may be null; their code is then 0.  Each code counts tenths from the low
/// end of the range of its parameter, cut toward zero, so that a value less than a tenth outside
/// still passes (-35.09 counts as -35.0):
///
///     ProgramLoudness, SpeechLoudness         -35.0 ..  -2.0
///     ProgramLoudnessRange                      0.0 ..  30.0
///     MaximumTruePeak                          -1.0 ..   4.0
///     ShortTermLoudness, MomentaryLoudness   -100.0 ..   0.0
///
/// False, with `out` untouched, if one value is out of range (not-a-number is) or the parameter is
/// none of these.
[[nodiscard]] bool encode(unsigned& out, api::loudness::Parameter parameter, const double& value,
                          const double* first, const double* second);

}  // namespace vela::loudness::codec
