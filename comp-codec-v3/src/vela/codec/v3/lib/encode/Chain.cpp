#include <vela/codec/v3/lib/encode/Chain.hpp>

namespace vela::codec::v3::encode {

void Chain::start_frame() {
    if (filter_) {
        filter_->clear();
        return;
    }
    filter_ = std::make_shared<Filter>();
    cluster_deltas.filter = filter_;
    compute_quality.filter = filter_;
}

Chain::Code Chain::operator()(Group& group) {
    if (!detect_silence(group)) return Code::failure;

    group.overflow = true;
    while (true) {
        if (const auto code = attempt_(group); code != Code::ok) return code;
        if (!group.overflow) return Code::ok;
        ++group.scaler_ix;
        ++group.trace.retries;
    }
}

Chain::Code Chain::attempt_(Group& group) {
    if (!rescaler(group)) return Code::failure;
    if (!compute_deltas(group)) return Code::failure;
    if (const auto code = cluster_deltas(group); code != Code::ok) return code;
    if (!mixer(group)) return Code::failure;
    if (!compute_quality(group)) return Code::failure;
    return Code::ok;
}

}  // namespace vela::codec::v3::encode
