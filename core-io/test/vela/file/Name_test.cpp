#include <gtest/gtest.h>

#include <sstream>
#include <vela/file/Name.hpp>

namespace vela::file {
namespace {

TEST(Name, OnlyWhatIsAppendedLosesItsBackslashes) {
    Name name("a\\b");
    EXPECT_EQ(name.str(), "a\\b");
    name << "c\\d"
         << "\\"
         << "";
    EXPECT_EQ(name.str(), "a\\bc/d/");
}

TEST(Name, ComparesAndPrintsAsItsText) {
    EXPECT_TRUE(Name().empty());
    EXPECT_EQ(Name("a"), Name("a"));
    EXPECT_LT(Name("a"), Name("b"));
    std::ostringstream out;
    out << Name("x\\y") << '.';
    EXPECT_EQ(out.str(), "x\\y.");
}

}  // namespace
}  // namespace vela::file
