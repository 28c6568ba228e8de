#include <vela/carrier/BitReader.hpp>

namespace vela::carrier {

bool BitReader::take(std::uint32_t& out, unsigned width) {
    if (width > left()) return false;
    std::uint32_t value = 0;
    for (unsigned bit = 0; bit < width; ++bit)
        value = value << 1 | (bits_[at_++] ? 1u : 0u);
    out = value;
    return true;
}

}  // namespace vela::carrier
