#include <vela/gvm/fast/costs_sets.hpp>

namespace vela::gvm::fast::costs::avx512 {

namespace {

#define LANES 8
#include "costs_lanes.inc"

}  // namespace

const Functions<1> one = table<1>;
const Functions<2> two = table<2>;

}  // namespace vela::gvm::fast::costs::avx512
