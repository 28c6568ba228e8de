#include <app/profile/Factory.hpp>
#include <app/profile/VelaCodec.hpp>

namespace app::profile {

std::shared_ptr<Interface> create(const std::string& name) {
    if (name == "Vela-Codec") return std::make_shared<VelaCodec>();
    return nullptr;
}

}  // namespace app::profile
