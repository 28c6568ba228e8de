#include <gtest/gtest.h>

#include <sstream>
#include <vela/filter/lowpass/Type.hpp>

namespace vela::filter::lowpass {
namespace {

std::string printed(Type type) {
    std::ostringstream out;
    out << type;
    return out.str();
}

TEST(LowpassType, PrintsAsSettingsShowIt) {
    EXPECT_EQ(printed(Type::None), "None");
    EXPECT_EQ(printed(Type::FIR), "FIR");
    EXPECT_EQ(printed(Type::IIR), "IIR");
    EXPECT_EQ(printed(static_cast<Type>(3)), "{type: 3}");
    EXPECT_EQ(printed(static_cast<Type>(700)), "{type: 700}");
}

}  // namespace
}  // namespace vela::filter::lowpass
