#include <algorithm>
#include <cstdlib>
#include <thread>
#include <vela/thread/processors.hpp>

namespace vela::thread {

unsigned nr_processors() {
#ifdef VELA_TEST_SWITCHES
    if (const char* const text = std::getenv("VELA_PROCESSORS"))
        return static_cast<unsigned>(std::max(1, std::atoi(text)));
#endif
    return std::max(1u, std::thread::hardware_concurrency());
}

}  // namespace vela::thread
