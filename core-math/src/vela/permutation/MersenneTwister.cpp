#include <vela/permutation/MersenneTwister.hpp>
#include <vela/simd/widest.hpp>

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

// The other word lies ahead, still of the last block, or 227 behind and already of this one: far
// enough for whole registers, once the loop is cut where that changes.
void make_states(std::uint32_t* state) {
    constexpr std::size_t behind = size - offset;
    for (std::size_t i = 0; i < behind; ++i)
        state[i] = twist(state[i], state[i + 1], state[i + offset]);
    for (std::size_t i = behind; i < size - 1; ++i)
        state[i] = twist(state[i], state[i + 1], state[i - behind]);
    state[size - 1] = twist(state[size - 1], state[0], state[offset - 1]);
}

void make_outputs(std::uint32_t* outputs, const std::uint32_t* state) {
    for (std::size_t i = 0; i < size; ++i)
        outputs[i] = temper(state[i]);
}

}  // namespace

MersenneTwister::MersenneTwister(std::uint32_t seed) {
    state_[0] = seed;
    for (std::uint32_t i = 1; i < size; ++i)
        state_[i] = 1812433253u * (state_[i - 1] ^ (state_[i - 1] >> 30)) + i;
}

void MersenneTwister::make_block_() {
    simd::widest<make_states>(state_.data());
    simd::widest<make_outputs>(outputs_.data(), state_.data());
    next_ = 0;
}

}  // namespace vela::permutation
