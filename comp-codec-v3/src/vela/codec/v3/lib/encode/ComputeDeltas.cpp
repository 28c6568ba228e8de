#include <vela/codec/v3/lib/encode/ComputeDeltas.hpp>
#include <vela/mix/deltas.hpp>

namespace vela::codec::v3::encode {

bool ComputeDeltas::operator()(Group& group) const {
    const auto& in = group.rescaled;
    const std::size_t n = group.size();
    switch (in.size()) {
        case 1:
            group.deltas.clear();
            return true;
        case 2:
            group.deltas.resize(n);
            return mix::deltas(group.deltas, in[0].samples(), in[1].samples());
        case 3:
            group.deltas.resize(2 * n);
            return mix::deltas(group.deltas, in[0].samples(), in[1].samples(), in[2].samples());
        default:
            return false;
    }
}

}  // namespace vela::codec::v3::encode
