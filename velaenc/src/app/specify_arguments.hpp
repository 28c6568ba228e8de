#pragma once

#include <app/Options.hpp>
#include <sstream>
#include <vela/cli/Arguments.hpp>

namespace app {

/// Binds the options of the tool to `options`.
///
/// A value that cannot be used leaves its option as it was and writes a line to `complaints`;
/// reading goes on.  A text that is no number raises the standard library's exception.
/// `options` and `complaints` must outlive `arguments`.
void specify_arguments(vela::cli::Arguments& arguments, Options& options,
                       std::ostringstream& complaints);

}  // namespace app
