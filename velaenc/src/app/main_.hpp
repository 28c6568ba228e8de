#pragma once

namespace app {

/// One run, from the command line to the report: 0, or 1 for any failure.
///
/// Values that no conversion takes ("-f x") raise the standard library's exception.
[[nodiscard]] int main_(int argc, const char* const* argv);

}  // namespace app
