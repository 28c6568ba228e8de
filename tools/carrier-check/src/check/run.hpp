#pragma once

#include <check/Options.hpp>
#include <ostream>

namespace check {

/// Checks carriers and prints what was found; true only if all is well.
///
/// What keeps the check from beginning at all goes to `complaints`.
[[nodiscard]] bool run(const Options& options, std::ostream& out, std::ostream& complaints);

}  // namespace check
