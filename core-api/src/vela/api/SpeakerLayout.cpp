#include <vela/api/SpeakerLayout.hpp>

namespace vela::api {

void SpeakerLayout::stream(std::ostream& out) const {
    for (std::uint32_t id = channel::id::count; id-- > 0;)
        out << (test(id) ? '1' : '0');
}

}  // namespace vela::api
