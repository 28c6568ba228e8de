#include <gtest/gtest.h>

#include <thread>
#include <vela/codec/v3/lib/encode/Chain.hpp>
#include <vela/codec/v3/lib/encode/Muxer.hpp>
#include <vela/codec/v3/lib/encode/groups.hpp>
#include <vela/codec/v3/lib/encoder/SpareGroups.hpp>

namespace vela::codec::v3::encoder {
namespace {

using encode::Chain;
using encode::Group;
using encode::group_of;
using encode::music;
using encode::noise;
using encode::samples_of;

TEST(SpareGroups, MemoryIsUsedAgain) {
    SpareGroups spare;
    auto first = spare.copy(Group());
    const Group* const address = first.get();
    spare.give_back(nullptr);
    spare.give_back(std::move(first));
    const auto second = spare.copy(Group());
    const auto third = spare.copy(Group());
    EXPECT_EQ(second.get(), address);
    EXPECT_NE(third.get(), address);
}

// Samples, too, as long as nobody else has them: a reader, or who writes the carrier.
TEST(SpareGroups, SamplesStayWhereTheyAreAndAreSharedNoLonger) {
    SpareGroups spare;
    const Group draft = group_of(8, {music(512, 1), music(512, 2)});
    Chain chain;
    auto group = spare.copy(draft);
    ASSERT_EQ(chain(*group), Chain::Code::ok);
    ASSERT_TRUE(encode::Muxer()(*group));
    const int* const rescaled = group->rescaled[1].samples().data();
    const int* const carrier = group->frame.samples().data();
    const Group* const address = group.get();
    EXPECT_TRUE(draft.origs[0].is_shared());
    spare.give_back(std::move(group));
    EXPECT_FALSE(draft.origs[0].is_shared()) << "the next block can be read there";

    chain.start_frame(draft.frame.key);
    group = spare.copy(draft);
    ASSERT_EQ(group.get(), address);
    const encode::Frame reader = group->frame;
    const std::vector<int> before = samples_of(reader);
    ASSERT_EQ(chain(*group), Chain::Code::ok);
    group->mixed[0] ^= 1;
    ASSERT_TRUE(encode::Muxer()(*group));
    EXPECT_EQ(group->rescaled[1].samples().data(), rescaled);
    EXPECT_NE(group->frame.samples().data(), carrier);
    EXPECT_EQ(samples_of(reader), before);
}

// What a stage left in a group must not reach the next candidate.
TEST(SpareGroups, NothingOfTheGroupBeforeIsLeft) {
    Group drafts[] = {
        group_of(8, {music(512, 1), music(512, 2), music(512, 3)}),
        group_of(8, {music(512, 4), music(512, 5)}),
        group_of(5, {music(512, 6)}),
        group_of(8, {music(512, 7), music(512, 8)}),
        group_of(3, {std::vector<int>(512), std::vector<int>(512)}),
        group_of(10,
                 {noise(1024, 3, 0x7FFFFF), noise(1024, 4, 0x7FFFFF), noise(1024, 5, 0x7FFFFF)}),
        group_of(9, {music(256, 9)}),
        group_of(9, {music(1024, 9), music(1024, 10), music(1024, 11)}),
        group_of(7, {music(1024, 12), std::vector<int>(1024)}),
        group_of(8, {music(256, 13), music(256, 14)}),
    };
    drafts[3].frame.key = api::ChannelVariant(api::channel::Right);
    SpareGroups spare;
    for (const Group& draft : drafts) {
        SCOPED_TRACE(draft.origs.size());
        const auto group = spare.copy(draft);
        Group fresh = draft;
        Chain chain;
        Chain twin;
        chain.cluster_deltas.settings.randomize_deltas = false;
        twin.cluster_deltas.settings.randomize_deltas = false;
        EXPECT_EQ(chain(*group), Chain::Code::ok);
        EXPECT_EQ(twin(fresh), Chain::Code::ok);

        EXPECT_EQ(group->mixed, fresh.mixed);
        EXPECT_EQ(group->mix_seeds, fresh.mix_seeds);
        EXPECT_EQ(group->deltas, fresh.deltas);
        EXPECT_EQ(group->ixs, fresh.ixs);
        EXPECT_EQ(group->centers_1d, fresh.centers_1d);
        EXPECT_EQ(group->centers_2d, fresh.centers_2d);
        EXPECT_EQ(group->dbrms, fresh.dbrms);
        EXPECT_EQ(group->score, fresh.score);
        EXPECT_EQ(group->silence.size(), fresh.silence.size());
        EXPECT_EQ(group->active.size(), fresh.active.size());
        ASSERT_EQ(group->rescaled.size(), fresh.rescaled.size());
        for (std::size_t i = 0; i < fresh.rescaled.size(); ++i) {
            EXPECT_EQ(samples_of(group->rescaled[i]), samples_of(fresh.rescaled[i]));
            EXPECT_EQ(group->rescaled[i].key, fresh.rescaled[i].key);
            EXPECT_EQ(group->rescaled[i].bit_depth, fresh.rescaled[i].bit_depth);
        }
        ASSERT_TRUE(encode::Muxer()(*group) && encode::Muxer()(fresh));
        EXPECT_EQ(samples_of(group->frame), samples_of(fresh.frame));
        EXPECT_EQ(group->frame.key, fresh.frame.key);
        EXPECT_EQ(group->budget.total(), fresh.budget.total());
        spare.give_back(group);
    }
}

TEST(SpareGroups, ThreadsGetAGroupEach) {
    SpareGroups spare;
    const Group draft = group_of(8, {music(64, 1), music(64, 2)});
    std::vector<std::thread> threads;
    for (unsigned id = 0; id < 4; ++id)
        threads.emplace_back([&, id] {
            for (unsigned round = 0; round < 200; ++round) {
                auto group = spare.copy(draft);
                group->nr_bitlines = id;
                group->deltas.assign(64, static_cast<int>(round));
                EXPECT_EQ(samples_of(group->origs[0]), samples_of(draft.origs[0]));
                EXPECT_EQ(group->nr_bitlines, id);
                spare.give_back(std::move(group));
            }
        });
    for (std::thread& thread : threads)
        thread.join();
}

}  // namespace
}  // namespace vela::codec::v3::encoder
