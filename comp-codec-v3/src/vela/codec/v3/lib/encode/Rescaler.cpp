#include <algorithm>
#include <cstdint>
#include <vela/codec/v3/lib/encode/Rescaler.hpp>
#include <vela/limiter/Limiter.hpp>
#include <vela/limiter/scaler.hpp>
#include <vela/pcm/shift.hpp>
#include <vela/simd/widest.hpp>
#include <vela/thread/awake.hpp>

namespace vela::codec::v3::encode {

namespace {

constexpr unsigned sample_bits = 24;
// A full scale of 24 bits times 0.99.
constexpr std::uint64_t limiter_threshold = 8304720;
constexpr std::uint32_t largest_scaler_ix = 240;
// Samples are dithered at the top of 32 bits, where a step of the 24-bit word is 2^8.
constexpr unsigned headroom_bits = 8;
constexpr unsigned dither_width = 32;
constexpr unsigned long dither_size = 20480;

std::uint32_t count_instruction_bits(const Group& group) {
    std::uint32_t bits = 32;  // opening, closing and the layout
    if (group.meta) bits += 40;
    if (group.preset) bits += 16;
    if (group.loudness) bits += 40;
    if (group.room_type) bits += 16;
    for (const auto& [channel, attn_ix] : group.orig_attn)
        if (attn_ix != 0) bits += 24;
    if (group.version) bits += 32;
    if (group.git_hash) bits += 40;
    return bits;
}

// Asks how far the mix must be attenuated so that it stays below full scale.
bool consult_limiter(Group& group) {
    limiter::Limiter<int, limiter::LinearScaler> limiter(sample_bits, limiter_threshold);

    auto code = limiter::ReturnCode::nothing;
    const auto& active = group.active;
    switch (active.size()) {
        case 1:
            break;
        case 2:
            code = limiter.analyse(active[0], active[1]);
            break;
        case 3:
            code = limiter.analyse(active[0], active[1], active[2]);
            break;
        default:
            return false;
    }
    if (code == limiter::ReturnCode::scaled) group.scaler_ix = limiter.scaler_ix;
    return true;
}

// x * factor at the top of 32 bits, saturated.
int scale_to_32_bits(int x, std::int64_t factor_39) {
    constexpr std::int64_t top = 0x3fffffff80000000;
    constexpr std::int64_t bottom = -0x4000000000000000;
    const auto product = static_cast<std::int64_t>(static_cast<std::uint64_t>(std::int64_t{x}) *
                                                   static_cast<std::uint64_t>(factor_39));
    if (product >= top) return INT32_MAX;
    if (product <= bottom) return INT32_MIN;
    return static_cast<int>(product / (std::int64_t{1} << 31));
}

// The same for a factor of 1, as mostly, several samples at a time.  Of the product 64 bits are
// left, and so the low 25 of the sample; it saturates where these need more than 24.
int raise_to_32_bits(int sample) {
    const std::uint32_t doubled = static_cast<std::uint32_t>(sample) << (headroom_bits - 1);
    const std::uint32_t raised = doubled << 1;
    const bool fits = static_cast<int>(doubled ^ raised) >= 0;
    return fits ? static_cast<int>(raised) : INT32_MAX ^ (static_cast<int>(doubled) >> 31);
}

void raise_all(std::span<int> out, std::span<const int> samples) {
    std::ranges::transform(samples, out.begin(), raise_to_32_bits);
}

// In the memory that it has, if that will do.
std::span<int> start_frame(Frame& frame, const Frame& like) {
    if (frame.size() != like.size()) frame = Frame(like.size());
    frame.key = like.key;
    frame.bit_depth = like.bit_depth;
    return frame.overwrite();
}

}  // namespace

bool Rescaler::operator()(Group& group) {
    if (group.nr_bitlines < 3) return false;
    group.budget.instruction_bits = count_instruction_bits(group);

    if (group.scaler_ix == 0 && !consult_limiter(group)) return false;
    if (group.scaler_ix > largest_scaler_ix) return false;
    if (group.scaler_ix != 0) group.budget.instruction_bits += 16;

    float scaler = 1.0f;
    if (!limiter::ix_to_scaler(scaler, static_cast<unsigned char>(group.scaler_ix))) return false;
    return rescale_(group, 1.0f / scaler);
}

bool Rescaler::rescale_(Group& group, float factor) {
    const unsigned shift = group.nr_bitlines + headroom_bits;
    const auto factor_39 = static_cast<std::int64_t>(static_cast<double>(factor) * 0x1p39);
    const bool dithered = group.dither && group.silence.size() == 0;
    const auto pool = dithered ? goc_dither_pool_(shift) : nullptr;

    group.rescaled.resize(group.active.size());
    for (std::size_t i = 0; i < group.active.size(); ++i) {
        const Frame& active = group.active[i];
        Frame& frame = group.rescaled[i];
        const auto out = start_frame(frame, active);
        if (factor == 1.0f)
            simd::widest<raise_all>(out, active.samples());
        else
            std::ranges::transform(active.samples(), out.begin(),
                                   [=](int x) { return scale_to_32_bits(x, factor_39); });
        if (dithered && !(*pool)(frame.write_range(), 0)) return false;
        if (!pcm::shift_right(shift, frame.write_range())) return false;
    }
    return true;
}

std::shared_ptr<const dither::Pool> Rescaler::goc_dither_pool_(unsigned bits) {
    const auto lock = thread::lock_awake(mutex_);
    auto& pool = pools_[static_cast<float>(bits)];
    if (!pool) pool = std::make_shared<dither::Pool>(bits, 0, dither_width, dither_size);
    return pool;
}

}  // namespace vela::codec::v3::encode
