#pragma once

#include <memory>
#include <span>
#include <vela/codec/v3/lib/encode/Filter.hpp>
#include <vela/codec/v3/lib/encode/Group.hpp>

namespace vela::codec::v3::encode {

/// Rebuilds what a decoder would get from a candidate and scores it against what went in.
class ComputeQuality {
public:
    std::shared_ptr<Filter> filter;

    /// Fills `dbrms`, `dbpeak`, `crest` and `score`; a candidate that does not fit gets no score.
    /// False if sizes disagree or the mix cannot be taken apart.
    [[nodiscard]] bool operator()(Group& group) const;

private:
    static bool rebuild_(std::span<Frame> out, const Group& group);
    /// Back to the level of the input: undoes the shift and the common attenuation.
    static bool unscale_(Frame& frame, const Group& group);
    static bool measure_(Group& group, std::span<const Frame> rebuilt);
};

}  // namespace vela::codec::v3::encode
