#include <gtest/gtest.h>

#include <vela/codec/v3/lib/encode/Chain.hpp>
#include <vela/codec/v3/lib/encode/groups.hpp>

namespace vela::codec::v3::encode {
namespace {

using Code = Chain::Code;

// Unrelated noise of three channels is predicted so badly that the mix overshoots what the limiter
// made room for.
TEST(Chain, AttenuatesByOneStepUntilTheMixFits) {
    int nr_retried = 0;
    for (unsigned seed = 0; seed < 20; ++seed) {
        const auto channel = [&](unsigned which) { return noise(256, 3 * seed + which, 0x7FFFFF); };
        Group group = group_of(10, {channel(0), channel(1), channel(2)});
        Chain chain;
        ASSERT_EQ(chain(group), Code::ok);
        EXPECT_FALSE(group.overflow);
        if (group.trace.retries == 0) continue;
        ++nr_retried;

        Group limited = group_of(10, {channel(0), channel(1), channel(2)});
        ASSERT_TRUE(chain.detect_silence(limited) && chain.rescaler(limited));
        EXPECT_EQ(group.scaler_ix, limited.scaler_ix + group.trace.retries);
    }
    EXPECT_GT(nr_retried, 0);
}

TEST(Chain, AFailedStageFailsTheCandidate) {
    Chain chain;
    Group no_channels = group_of(5, {{0, 0, 0, 0}});
    no_channels.origs.clear();
    EXPECT_EQ(chain(no_channels), Code::failure);
    Group no_bitlines = group_of(0, {{9, 9, 9, 9}});
    EXPECT_EQ(chain(no_bitlines), Code::failure);
    Group too_short = group_of(5, {{99, 99, 99}, {99, 99, 99}});
    EXPECT_EQ(chain(too_short), Code::failure);
}

}  // namespace
}  // namespace vela::codec::v3::encode
