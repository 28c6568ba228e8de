#include <gtest/gtest.h>

#include <vela/codec/v3/lib/encode/groups.hpp>

namespace vela::codec::v3::encode {
namespace {

TEST(Group, BeginsWithNothingDecided) {
    const auto group = Group::create(api::SpeakerLayout(7), api::SpeakerLayout(3), {100, 356});
    EXPECT_EQ(group->input_layout.mask(), 7u);
    EXPECT_EQ(group->output_layout.mask(), 3u);
    EXPECT_EQ(group->size(), 256u);
    EXPECT_EQ(group->prev_bitlines, 10u);
    EXPECT_TRUE(group->dither);
    EXPECT_FALSE(group->has_score);
    EXPECT_FALSE(group->fits);
    EXPECT_EQ(group->centers_min, 1u);
    EXPECT_EQ(group->budget.total(), 160u) << "sync word, checksum and header";
}

TEST(Group, ACopySharesSamplesUntilOneSideWrites) {
    Group group = group_of(5, {{1, 2, 3, 4}});
    const Group before = group;
    EXPECT_EQ(before.origs[0].samples().data(), group.origs[0].samples().data());
    group.origs[0].write()[0] = 9;
    EXPECT_EQ(samples_of(before.origs[0]), (std::vector<int>{1, 2, 3, 4}));
    EXPECT_EQ(samples_of(group.origs[0]), (std::vector<int>{9, 2, 3, 4}));
}

}  // namespace
}  // namespace vela::codec::v3::encode
