#include <vela/codec/v3/lib/encode/gvm/Factory.hpp>
#include <vela/codec/v3/lib/encode/gvm/Learner.hpp>

namespace vela::codec::v3::encode::gvm {

std::shared_ptr<Interface> create(const std::string& implementation, unsigned nr_channels,
                                  const std::vector<int>& deltas, bool update_all,
                                  bool force_origin, bool randomize) {
    switch (nr_channels) {
        case 2:
            return std::make_shared<Learner<2>>(implementation, deltas, update_all, force_origin,
                                                randomize);
        case 3:
            return std::make_shared<Learner<3>>(implementation, deltas, update_all, force_origin,
                                                randomize);
        default:
            return nullptr;
    }
}

}  // namespace vela::codec::v3::encode::gvm
