#include <cmath>
#include <utility>
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

        const auto delta = audio::Delta::between(orig, frame->samples());
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
