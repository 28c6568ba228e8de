#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace vela::fuzz {

/// Takes decisions from what a fuzzer makes up; once it is used up, all of them are 0.
class Bytes {
public:
    explicit Bytes(std::string_view bytes) : rest_(bytes) {}

    [[nodiscard]] bool empty() const { return rest_.empty(); }
    [[nodiscard]] std::string_view rest() const { return rest_; }

    std::uint8_t byte() {
        if (rest_.empty()) return 0;
        const auto value = static_cast<std::uint8_t>(rest_.front());
        rest_.remove_prefix(1);
        return value;
    }
    /// Little-endian, as many bytes as asked for, at most 4.
    std::uint32_t number(unsigned nr_bytes) {
        std::uint32_t value = 0;
        for (unsigned i = 0; i < nr_bytes; ++i)
            value |= std::uint32_t{byte()} << 8 * i;
        return value;
    }
    bool flag() { return byte() % 2 != 0; }
    /// The next bytes, fewer if there are not so many.
    std::string_view text(std::size_t size) {
        const auto taken = rest_.substr(0, size);
        rest_.remove_prefix(taken.size());
        return taken;
    }

private:
    std::string_view rest_;
};

}  // namespace vela::fuzz
