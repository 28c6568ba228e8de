#include <gtest/gtest.h>

#include <vela/codec/v3/lib/encoder/Cycler.hpp>

namespace vela::codec::v3::encoder {
namespace {

/// Frames in which a value is sent, of `nr_frames` frames of 100 samples.
std::vector<int> sent_in(Cycler<int> cycler, int nr_frames,
                         const std::map<int, int>& changes = {}) {
    std::vector<int> frames;
    for (int frame = 0; frame < nr_frames; ++frame) {
        const api::SampleSpan span{100 * frame, 100 * frame + 100};
        if (const auto change = changes.find(frame); change != changes.end())
            cycler.set_value(change->second);
        if (cycler.due(span)) frames.push_back(frame);
        cycler.update(span);
    }
    return frames;
}

Cycler<int> with_value(std::uint32_t period, int delay) {
    Cycler<int> cycler;
    cycler.set_period(period);
    cycler.set_value(1, delay);
    return cycler;
}

struct Case {
    const char* name;
    std::uint32_t period;
    int delay;
    std::vector<int> frames;
};

class CyclerTable : public testing::TestWithParam<Case> {};

TEST_P(CyclerTable, SendsAfterItsDelayAndThenEveryPeriod) {
    EXPECT_EQ(sent_in(with_value(GetParam().period, GetParam().delay), 10), GetParam().frames);
}

INSTANTIATE_TEST_SUITE_P(Periods, CyclerTable,
                         testing::Values(Case{"Never", 0, 0, {}},
                                         Case{"Always", 1, 0, {0, 1, 2, 3, 4, 5, 6, 7, 8, 9}},
                                         Case{"AFrame", 100, 0, {0, 1, 2, 3, 4, 5, 6, 7, 8, 9}},
                                         Case{"AFrameAndASample", 101, 0, {0, 2, 4, 6, 8}},
                                         Case{"RoundedUp", 250, 0, {0, 3, 6, 9}},
                                         Case{"DelayedByOne", 250, 1, {1, 4, 7}},
                                         Case{"DelayedByTwo", 250, 2, {2, 5, 8}}),
                         [](const auto& of) { return std::string(of.param.name); });

TEST(Cycler, AChangeIsSentAtOnceAndTheSameValueLetsThePeriodRun) {
    EXPECT_EQ(sent_in(with_value(400, 0), 10, {{2, 1}}), (std::vector<int>{0, 4, 8}));
    EXPECT_EQ(sent_in(with_value(400, 0), 10, {{2, 7}}), (std::vector<int>{0, 2, 6}));
    EXPECT_EQ(sent_in(with_value(400, 0), 10, {{2, 7}, {3, 1}}), (std::vector<int>{0, 2, 3, 7}));
}

TEST(Cycler, WithoutAValueNothingIsSent) {
    Cycler<int> cycler;
    cycler.set_period(1);
    EXPECT_EQ(sent_in(cycler, 5), std::vector<int>());
    EXPECT_EQ(sent_in(cycler, 5, {{3, 0}}), (std::vector<int>{3, 4}));
}

}  // namespace
}  // namespace vela::codec::v3::encoder
