#include <cmath>
#include <cstdint>
#include <utility>
#include <vela/audio/Quality.hpp>
#include <vela/audio/decibel.hpp>
#include <vela/codec/v3/lib/encode/ComputeQuality.hpp>
#include <vela/limiter/scaler.hpp>
#include <vela/mix/unmix.hpp>
#include <vela/numeric/wrap.hpp>
#include <vela/pcm/scale.hpp>
#include <vela/pcm/shift.hpp>

namespace vela::codec::v3::encode {

namespace {

constexpr int full_scale = 0x800000;
constexpr double floor_db = -144.0;
constexpr double floor_mean_square = 3.9810717055349695e-15;  // of -144 dB
constexpr double score_per_silent_bitline = 0.01;

// Sum of the squared errors, added up in order and in double precision.  Where all of it stays
// below 2^53 every partial sum is an integer that a double holds, so that integers give the same,
// several at a time.
double sum_of_squares(std::span<const int> orig, std::span<const int> rebuilt) {
    constexpr std::uint64_t exact = std::uint64_t{1} << 53;
    constexpr std::uint32_t largest = 1u << 20;  // 4096 squares of it stay below
    std::uint64_t sum = 0;
    std::uint32_t magnitudes = 0;
    for (std::size_t i = 0; i < orig.size(); ++i) {
        const auto error =
            static_cast<std::uint32_t>(numeric::wrap_abs(numeric::wrap_sub(orig[i], rebuilt[i])));
        magnitudes |= error;
        sum += std::uint64_t{error} * error;
    }
    if (magnitudes < largest && orig.size() <= exact / largest / largest)
        return static_cast<double>(sum);

    double in_order = 0;
    for (std::size_t i = 0; i < orig.size(); ++i) {
        const double error = numeric::wrap_sub(orig[i], rebuilt[i]);
        in_order += error * error;
    }
    return in_order;
}

// Mean square of the error, in dB of full scale.
double error_db(std::span<const int> orig, std::span<const int> rebuilt) {
    const double mean =
        sum_of_squares(orig, rebuilt) / static_cast<double>(orig.size()) * 0x1p-23 * 0x1p-23;
    return mean <= floor_mean_square ? floor_db : 10 * std::log10(mean);
}

}  // namespace

bool ComputeQuality::operator()(Group& group) const {
    group.has_score = false;
    if (!group.fits) return true;

    Frames rebuilt;
    if (!rebuild_(rebuilt, group)) return false;
    for (const Frame& orig : group.origs)
        if (!rebuilt.find(orig.key)) rebuilt.silence(orig.key, orig.size());
    if (!measure_(group, rebuilt)) return false;

    group.has_score = true;
    return !filter || filter->update(group);
}

bool ComputeQuality::rebuild_(Frames& rebuilt, const Group& group) {
    if (group.active.size() != group.rescaled.size()) return false;
    auto out = group.rescaled;
    switch (out.size()) {
        case 1:
            break;
        case 2:
            if (!mix::unmix(out[0].write(), out[1].write(), group.mix_seeds, group.mixed, group.ixs,
                            group.centers_1d))
                return false;
            break;
        case 3:
            if (!mix::unmix(out[0].write(), out[1].write(), out[2].write(), group.mix_seeds,
                            group.mixed, group.ixs, group.centers_2d))
                return false;
            break;
        default:
            return false;
    }
    for (Frame& frame : out) {
        if (!unscale_(frame, group)) return false;
        rebuilt.set(std::move(frame));
    }
    return true;
}

bool ComputeQuality::unscale_(Frame& frame, const Group& group) {
    if (group.scaler_ix == 0) return pcm::shift_left(group.nr_bitlines, frame);
    float scaler = 1.0f;
    if (!limiter::ix_to_scaler(scaler, static_cast<unsigned char>(group.scaler_ix))) return false;
    return pcm::multiply_by(std::ldexp(scaler, static_cast<int>(group.nr_bitlines)), frame);
}

bool ComputeQuality::measure_(Group& group, const Frames& rebuilt) {
    const std::size_t nr_channels = group.origs.size();
    group.dbrms.resize(nr_channels);
    group.dbpeak.resize(nr_channels);
    group.crest.resize(nr_channels);

    audio::Quality quality;
    for (std::size_t i = 0; i < nr_channels; ++i) {
        const auto orig = group.origs[i].samples();
        const Frame* const frame = rebuilt.find(group.origs[i].key);
        if (!frame || frame->size() != orig.size()) return false;

        group.dbrms[i] = error_db(orig, frame->samples());
        group.dbpeak[i] =
            audio::dB_delta_peak_container(orig, frame->samples(), full_scale, floor_db);
        quality.update_db(group.dbrms[i], group.dbpeak[i]);
        group.crest[i] = std::pow(10.0, (group.dbpeak[i] - group.dbrms[i]) / 20);
    }

    const bool silent = group.silence.size() != 0;
    group.score = silent ? score_per_silent_bitline * group.nr_bitlines : quality.db_rms();
    return true;
}

}  // namespace vela::codec::v3::encode
