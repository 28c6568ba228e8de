#include <algorithm>
#include <array>
#include <cmath>
#include <vela/audio/Delta.hpp>
#include <vela/audio/Quality.hpp>
#include <vela/audio/decibel.hpp>
#include <vela/codec/v3/lib/encode/ComputeQuality.hpp>
#include <vela/limiter/scaler.hpp>
#include <vela/mix/unmix.hpp>
#include <vela/pcm/scale.hpp>
#include <vela/pcm/shift.hpp>

namespace vela::codec::v3::encode {

namespace {

constexpr int full_scale = 0x800000;
constexpr double floor_db = -144.0;
constexpr double floor_mean_square = 3.9810717055349695e-15;  // of -144 dB
constexpr double score_per_silent_bitline = 0.01;

// Mean square of the error, in dB of full scale.
double error_db(const audio::Delta& delta, std::size_t size) {
    const double mean = delta.sum_of_squares / static_cast<double>(size) * 0x1p-23 * 0x1p-23;
    return mean <= floor_mean_square ? floor_db : 10 * std::log10(mean);
}

// What a decoder gives for a channel: silence for one that was not mixed.
Frame heard_of(const Frame& orig, std::span<const Frame> rebuilt) {
    const auto at = std::ranges::find(rebuilt, orig.key, &Frame::key);
    return at == rebuilt.end() ? Frame(orig.key, orig.size()) : *at;
}

}  // namespace

bool ComputeQuality::operator()(Group& group) const {
    group.has_score = false;
    if (!group.fits) return true;

    // Memory is kept from one candidate to the next.
    static thread_local std::array<Frame, 3> frames;
    const std::size_t nr_active = group.active.size();
    if (nr_active > frames.size() || group.rescaled.size() != nr_active) return false;
    const std::span rebuilt(frames.data(), nr_active);
    if (!rebuild_(rebuilt, group) || !measure_(group, rebuilt)) return false;

    group.has_score = true;
    return !filter || filter->update(group);
}

bool ComputeQuality::rebuild_(std::span<Frame> out, const Group& group) {
    const auto& in = group.rescaled;
    for (std::size_t i = 0; i < out.size(); ++i) {
        if (out[i].size() != in[i].size()) out[i] = Frame(in[i].size());
        out[i].key = in[i].key;
    }
    switch (out.size()) {
        case 1:
            std::ranges::copy(in[0].samples(), out[0].overwrite().begin());
            break;
        case 2:
            if (!mix::unmix(out[0].overwrite(), out[1].overwrite(), group.mix_seeds, group.mixed,
                            group.ixs, group.centers_1d))
                return false;
            break;
        case 3:
            if (!mix::unmix(out[0].overwrite(), out[1].overwrite(), out[2].overwrite(),
                            group.mix_seeds, group.mixed, group.ixs, group.centers_2d))
                return false;
            break;
        default:
            return false;
    }
    return std::ranges::all_of(out, [&](Frame& frame) { return unscale_(frame, group); });
}

bool ComputeQuality::unscale_(Frame& frame, const Group& group) {
    if (group.scaler_ix == 0) return pcm::shift_left(group.nr_bitlines, frame);
    float scaler = 1.0f;
    if (!limiter::ix_to_scaler(scaler, static_cast<unsigned char>(group.scaler_ix))) return false;
    return pcm::multiply_by(std::ldexp(scaler, static_cast<int>(group.nr_bitlines)), frame);
}

bool ComputeQuality::measure_(Group& group, std::span<const Frame> rebuilt) {
    const std::size_t nr_channels = group.origs.size();
    group.dbrms.resize(nr_channels);
    group.dbpeak.resize(nr_channels);
    group.crest.resize(nr_channels);

    audio::Quality quality;
    for (std::size_t i = 0; i < nr_channels; ++i) {
        const auto orig = group.origs[i].samples();
        const Frame frame = heard_of(group.origs[i], rebuilt);
        if (frame.size() != orig.size()) return false;

        const auto delta = audio::Delta::between(orig, frame.samples());
        group.dbrms[i] = error_db(delta, orig.size());
        group.dbpeak[i] = audio::dB_delta_peak_container(delta, full_scale, floor_db);
        quality.update_db(group.dbrms[i], group.dbpeak[i]);
        group.crest[i] = std::pow(10.0, (group.dbpeak[i] - group.dbrms[i]) / 20);
    }

    const bool silent = group.silence.size() != 0;
    group.score = silent ? score_per_silent_bitline * group.nr_bitlines : quality.db_rms();
    return true;
}

}  // namespace vela::codec::v3::encode
