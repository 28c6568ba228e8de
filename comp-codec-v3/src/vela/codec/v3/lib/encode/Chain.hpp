#pragma once

#include <memory>
#include <vela/codec/v3/lib/encode/ClusterDeltas.hpp>
#include <vela/codec/v3/lib/encode/ComputeDeltas.hpp>
#include <vela/codec/v3/lib/encode/ComputeQuality.hpp>
#include <vela/codec/v3/lib/encode/DetectSilence.hpp>
#include <vela/codec/v3/lib/encode/Filter.hpp>
#include <vela/codec/v3/lib/encode/Mixer.hpp>
#include <vela/codec/v3/lib/encode/Rescaler.hpp>

namespace vela::codec::v3::encode {

/// The stages in the order in which a candidate passes them.
///
///     DetectSilence -> Rescaler -> ComputeDeltas -> ClusterDeltas -> Mixer -> ComputeQuality
///                         ^                                                       |
///                         +------- one step more attenuation while it overflows --+
///
/// May be called from several threads, each with a group of its own.
class Chain {
public:
    using Code = ClusterDeltas::Code;

    Chain();

    /// Runs one candidate.  `filtered` means that it cannot win and was dropped.
    [[nodiscard]] Code operator()(Group& group);

    /// Whether the call above would drop a group like this one at that count of bit-lines before it
    /// does anything: such a group need not be made at all.
    [[nodiscard]] bool drops(const Group& group, std::uint32_t nr_bitlines) const {
        return drop_early && is_pointless_(group, nr_bitlines);
    }

    /// Begins a frame of the carrier: the scores of the one before are forgotten.
    void start_frame(const api::ChannelVariant& carrier) { filter_->clear(carrier); }

    /// Whether candidates that the filter will drop skip the stages ahead of it.  Only a log that
    /// tells how far each came has a use for these.
    bool drop_early = true;

    DetectSilence detect_silence;
    Rescaler rescaler;
    ComputeDeltas compute_deltas;
    ClusterDeltas cluster_deltas;
    Mixer mixer;
    ComputeQuality compute_quality;

private:
    [[nodiscard]] bool is_pointless_(const Group& group, std::uint32_t nr_bitlines) const;
    Code attempt_(Group& group);

    std::shared_ptr<Filter> filter_ = std::make_shared<Filter>();
};

}  // namespace vela::codec::v3::encode
