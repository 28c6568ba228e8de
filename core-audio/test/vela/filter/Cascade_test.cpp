#include <gtest/gtest.h>

#include <vela/filter/Cascade.hpp>

namespace vela::filter {
namespace {

struct Sum {
    double total = 0;

    double operator()(double x) { return total += x; }
};

TEST(Cascade, EmptyLetsThrough) {
    Cascade<Sum> cascade;
    EXPECT_EQ(cascade(7.0), 7.0);
}

TEST(Cascade, EachGainStandsBehindItsFilter) {
    Cascade<Sum> cascade;
    cascade.add(2.0, Sum{1.0});
    cascade.add(10.0, Sum{5.0});
    EXPECT_EQ(cascade(3.0), 130.0) << "((3 + 1) * 2 + 5) * 10";
    EXPECT_EQ(cascade(0.0), 210.0) << "state stays from call to call";
}

}  // namespace
}  // namespace vela::filter
