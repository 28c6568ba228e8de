// The entry of every fuzzer: VELA_FUZZ_HEADER declares VELA_FUZZ_TARGET, which returns false when
// the code under test broke a promise.
#include VELA_FUZZ_HEADER

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view input(reinterpret_cast<const char*>(data), size);
    if (!vela::fuzz::VELA_FUZZ_TARGET(input)) std::abort();
    return 0;
}
