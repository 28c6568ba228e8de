#pragma once

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

namespace vela::carrier {

/// A cursor over the bits of a record, from its front.
class BitReader {
public:
    explicit BitReader(std::vector<bool> bits) : bits_(std::move(bits)) {}

    [[nodiscard]] std::size_t left() const { return bits_.size() - at_; }

    /// A field of up to 32 bits, most significant bit first.  False, with nothing taken, if the
    /// record ends before.
    [[nodiscard]] bool take(std::uint32_t& out, unsigned width);

private:
    std::vector<bool> bits_;
    std::size_t at_ = 0;
};

}  // namespace vela::carrier
