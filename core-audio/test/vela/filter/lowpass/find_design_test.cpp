#include <gtest/gtest.h>

#include <vela/filter/lowpass/find_design.hpp>

namespace vela::filter::lowpass {
namespace {

using enum Design;

TEST(FindDesign, EachRateHasThreeFrequencies) {
    struct Row {
        unsigned rate, freq;
        Design design;
    };
    for (const Row& row : {
             Row{88200, 36000, Rate88200Freq36000},
             Row{88200, 38000, Rate88200Freq38000},
             Row{88200, 40000, Rate88200Freq40000},
             Row{96000, 36000, Rate96000Freq36000},
             Row{96000, 38000, Rate96000Freq38000},
             Row{96000, 40000, Rate96000Freq40000},
             Row{44100, 18000, Rate88200Freq36000},
             Row{44100, 19000, Rate88200Freq38000},
             Row{44100, 20000, Rate88200Freq40000},
             Row{48000, 18000, Rate96000Freq36000},
             Row{48000, 19000, Rate96000Freq38000},
             Row{48000, 20000, Rate96000Freq40000},
             Row{32000, 13061, Rate88200Freq36000},
             Row{32000, 13787, Rate88200Freq38000},
             Row{32000, 14512, Rate88200Freq40000},
         })
        EXPECT_EQ(find_design(row.freq, row.rate), row.design) << row.rate << " " << row.freq;
}

TEST(FindDesign, NothingElseHasOne) {
    struct Row {
        unsigned rate, freq;
    };
    for (const Row& row : {Row{0, 0}, Row{96000, 0}, Row{96000, 18000}, Row{96000, 36001},
                           Row{48000, 36000}, Row{32000, 18000}, Row{32000, 13062},
                           Row{88200, 13061}, Row{22050, 9000}, Row{96001, 36000}})
        EXPECT_FALSE(find_design(row.freq, row.rate)) << row.rate << " " << row.freq;
}

TEST(FindDesign, NoDesignAbove96k) {
    for (const unsigned rate : {176400u, 192000u, 384000u})
        for (const unsigned freq : {18000u, 36000u, 38000u, 40000u, 72000u, 80000u})
            EXPECT_FALSE(find_design(freq, rate)) << rate << " " << freq;
}

}  // namespace
}  // namespace vela::filter::lowpass
