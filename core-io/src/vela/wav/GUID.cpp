#include <vela/wav/GUID.hpp>

namespace vela::wav {

bool GUID::parse(file::Range& range) {
    using Order = bnb::LittleEndian_tag;
    return range.pop_raw<bnb::UInt32_tag, Order>(data1) &&
           range.pop_raw<bnb::UInt16_tag, Order>(data2) &&
           range.pop_raw<bnb::UInt16_tag, Order>(data3) &&
           range.pop_raw<bnb::UInt32_tag, Order>(data4) &&
           range.pop_raw<bnb::UInt32_tag, Order>(data5);
}

}  // namespace vela::wav
