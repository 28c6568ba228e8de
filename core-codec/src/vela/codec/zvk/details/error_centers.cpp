#include <vela/codec/zvk/details/error_centers.hpp>

namespace vela::codec::zvk::details {

std::uint32_t nr_error_centers_per_index(std::uint32_t ix) {
    if (ix <= 4) return 2 * ix + 8;
    if (ix <= 15) return 4 * ix;
    if (ix <= 83) return 8 * ix - 64;
    return 16 * ix - 712;
}

std::uint32_t error_center_index(std::uint32_t count) {
    if (count < 9) return 0;
    if (count <= 16) return ((count - 9) >> 1) + 1;
    if (count <= 64) return ((count - 17) >> 2) + 5;
    if (count <= 600) return ((count - 65) >> 3) + 17;
    if (count <= 632) return 84;
    return ((count - 633) >> 4) + 85;
}

}  // namespace vela::codec::zvk::details
