#include <vela/numeric/truncate.hpp>
#include <vela/pcm/scale.hpp>

namespace vela::pcm {

bool multiply_by(float f, audio::Frame& frame) {
    if (f == 1.0f) return true;
    for (int& x : frame.write())
        x = numeric::truncate_to_int32(static_cast<float>(x) * f);
    return true;
}

bool divide_by(float f, audio::Frame& frame) {
    if (f == 0.0f) return false;
    if (f == 1.0f) return true;
    for (int& x : frame.write())
        x = numeric::truncate_to_int32(static_cast<float>(x) / f);
    return true;
}

}  // namespace vela::pcm
