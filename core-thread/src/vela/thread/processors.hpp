#pragma once

namespace vela::thread {

/// How many threads this machine can run at the same time, at least 1.
///
/// Builds with VELA_TEST_SWITCHES take the number from the environment variable VELA_PROCESSORS, so
/// that tests get as many threads at work as they ask for.
[[nodiscard]] unsigned nr_processors();

}  // namespace vela::thread
