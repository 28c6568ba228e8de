#include <vela/permutation/MersenneTwister.hpp>

namespace vela::permutation {

namespace {

constexpr std::size_t size = MersenneTwister::block_size;
constexpr std::size_t offset = 397;  // of the other word in the recurrence

constexpr std::uint32_t twist(std::uint32_t word, std::uint32_t next, std::uint32_t other) {
    const std::uint32_t mixed = (word & 0x80000000u) | (next & 0x7FFFFFFFu);
    const std::uint32_t odd = 0u - (mixed & 1u);  // all ones or none: a branch would not vectorise
    return other ^ (mixed >> 1) ^ (odd & 0x9908B0DFu);
}

constexpr std::uint32_t temper(std::uint32_t word) {
    word ^= word >> 11;
    word ^= (word << 7) & 0x9D2C5680u;
    word ^= (word << 15) & 0xEFC60000u;
    return word ^ (word >> 18);
}

}  // namespace

MersenneTwister::MersenneTwister(std::uint32_t seed) {
    state_[0] = seed;
    for (std::uint32_t i = 1; i < size; ++i)
        state_[i] = 1812433253u * (state_[i - 1] ^ (state_[i - 1] >> 30)) + i;
}

// The other word lies ahead, still of the last block, or 227 behind and already of this one: far
// enough for whole registers, once the loop is cut where that changes.
void MersenneTwister::make_block_() {
    constexpr std::size_t behind = size - offset;
    for (std::size_t i = 0; i < behind; ++i)
        state_[i] = twist(state_[i], state_[i + 1], state_[i + offset]);
    for (std::size_t i = behind; i < size - 1; ++i)
        state_[i] = twist(state_[i], state_[i + 1], state_[i - behind]);
    state_[size - 1] = twist(state_[size - 1], state_[0], state_[offset - 1]);

    for (std::size_t i = 0; i < size; ++i)
        outputs_[i] = temper(state_[i]);
    next_ = 0;
}

}  // namespace vela::permutation
