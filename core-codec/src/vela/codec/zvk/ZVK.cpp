#include <vela/codec/zvk/ZVK.hpp>
#include <vela/codec/zvk/details/error_centers.hpp>

namespace vela::codec::zvk {

namespace {

template <typename Centers>
std::uint8_t size_class(const Centers* centers) {
    const auto count = centers ? static_cast<std::uint32_t>(centers->size()) : 0;
    return static_cast<std::uint8_t>(details::error_center_index(count));
}

}  // namespace

bool ZVK::set_version(std::uint8_t major, std::uint8_t minor) {
    version_major = major;
    version_minor = minor;
    return true;
}

bool ZVK::set_frame_size(std::uint64_t size) {
    if (size == 0 || (size % 16 != 0 && size != 1000)) return false;
    frame_size_code = static_cast<std::uint8_t>((size >> 4) - 1);
    return true;
}

bool ZVK::set_mix_bw(unsigned width) {
    if (width < 10) return false;
    mix_bw_code = static_cast<std::uint8_t>(width - 10);
    return true;
}

bool ZVK::set_centers(const Centers1* centers) {
    centers_1d = centers;
    error_center_ix = size_class(centers);
    return true;
}

bool ZVK::set_centers(const Centers2* centers) {
    centers_2d = centers;
    error_center_ix = size_class(centers);
    return true;
}

bool ZVK::add_dmol_instruction(const dmol::Instruction& instruction) {
    if (instructions.empty()) ++nr_instruction_lists;
    instructions.push_back(instruction);
    return true;
}

}  // namespace vela::codec::zvk
