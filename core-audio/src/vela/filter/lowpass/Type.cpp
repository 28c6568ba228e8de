#include <vela/filter/lowpass/Type.hpp>

namespace vela::filter::lowpass {

std::ostream& operator<<(std::ostream& out, Type type) {
    switch (type) {
        case Type::None:
            return out << "None";
        case Type::FIR:
            return out << "FIR";
        case Type::IIR:
            return out << "IIR";
    }
    return out << "{type: " << static_cast<std::uint32_t>(type) << "}";
}

}  // namespace vela::filter::lowpass
