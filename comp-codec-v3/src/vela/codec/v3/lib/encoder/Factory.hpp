#pragma once

#include <memory>
#include <vela/codec/v3/lib/encoder/IEncoder.hpp>

namespace vela::codec::v3::encoder {

/// Makes an encoder from an input layout to its carrier, with `nr_threads` workers, the caller
/// among them (0: it is the only one).  False, with `result` untouched, unless the pair is one that
/// decoders know.
[[nodiscard]] bool create(std::shared_ptr<IEncoder>& result, const api::SpeakerLayout& input,
                          const api::SpeakerLayout& output, unsigned nr_threads);

}  // namespace vela::codec::v3::encoder
