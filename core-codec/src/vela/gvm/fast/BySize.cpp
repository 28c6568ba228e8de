#include <algorithm>
#include <vela/gvm/fast/BySize.hpp>

namespace vela::gvm::fast {

void BySize::sort(std::vector<Position>& order) const {
    std::sort(order.begin(), order.end(), [&](Position a, Position b) { return before(a, b); });
}

}  // namespace vela::gvm::fast
