#include <gtest/gtest.h>

#include <vela/api/SampleSpan.hpp>

namespace vela::api {
namespace {

TEST(SampleSpan, IsHalfOpen) {
    EXPECT_EQ(SampleSpan().size(), 0);
    const SampleSpan first{0, 1024};
    const SampleSpan second{first.stop, first.stop + 1024};
    EXPECT_EQ(first.size(), 1024);
    EXPECT_EQ(second.size(), 1024);
    EXPECT_EQ(second, (SampleSpan{1024, 2048}));
    EXPECT_NE(first, second);
}

TEST(SampleSpan, ReachesBeyond32Bits) {
    const SampleSpan late{5'000'000'000, 5'000'001'024};
    EXPECT_EQ(late.size(), 1024);
}

}  // namespace
}  // namespace vela::api
