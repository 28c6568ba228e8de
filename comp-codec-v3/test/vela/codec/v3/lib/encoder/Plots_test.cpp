#include <gtest/gtest.h>

#include <vela/codec/v3/lib/encode/groups.hpp>
#include <vela/codec/v3/lib/encoder/Plots.hpp>
#include <vela/file/read.hpp>

namespace vela::codec::v3::encoder {
namespace {

using encode::Group;

std::string path(const std::string& name) {
    return testing::TempDir() + "Plots_" + name;
}

/// Everything behind the first line, which tells the time.
std::string text_of(const std::string& name) {
    std::string text;
    EXPECT_TRUE(file::read(text, file::Name(name)));
    return text.substr(text.find('\n') + 1);
}

/// A winner of `nr_channels` with figures that tell the frame.
Group winner(std::size_t nr_channels, std::int64_t start) {
    Group group = encode::group_of(5, {{0}, {0}, {0}});
    group.origs.resize(nr_channels);
    group.active = group.origs;
    group.span = {start, start + 1};
    for (std::size_t i = 0; i < nr_channels; ++i) {
        group.dbrms.push_back(-80.5 - static_cast<double>(i));
        group.dbpeak.push_back(-70);
        group.crest.push_back(2);
    }
    return group;
}

void draw(Plots& plots, const Group& group) {
    plots.start_frame(group.span);
    EXPECT_TRUE(plots.add(group));
    EXPECT_TRUE(plots.end_frame(group.span));
}

TEST(Plots, TakesKnownKeysOnly) {
    Plots plots;
    EXPECT_FALSE(plots.set_option("output.deltas", path("x")));
    for (const char* const key : {"output.dbrms", "output.dbpeak", "output.crest"})
        EXPECT_TRUE(plots.set_option(key, path(key)));
    EXPECT_TRUE(plots.set_option("output.centers", path("centers_")));
}

TEST(Plots, ARowAFrameUnderTheNamesOfTheChannels) {
    const std::string name = path("dbrms");
    {
        Plots plots;
        ASSERT_TRUE(plots.set_option("output.dbrms", name));
        draw(plots, winner(2, 0));
        draw(plots, winner(2, 256));
    }
    EXPECT_EQ(text_of(name),
              "$dataset_0_0 << EOD\n"
              "\"Start of frame\" \"Left in Left\" \"LeftSurround in Left\"\n"
              "0 -80.5 -81.5\n256 -80.5 -81.5\nEOD\n"
              "set key autotitle columnheader\n"
              "plot $dataset_0_0 using 1:2 with lines, $dataset_0_0 using 1:3 with lines\n"
              "pause mouse\n");
}

TEST(Plots, EachFigureGoesToItsOwnFile) {
    {
        Plots plots;
        ASSERT_TRUE(plots.set_option("output.dbpeak", path("dbpeak")));
        ASSERT_TRUE(plots.set_option("output.crest", path("crest")));
        draw(plots, winner(1, 0));
    }
    EXPECT_NE(text_of(path("dbpeak")).find("\n0 -70\n"), std::string::npos);
    EXPECT_NE(text_of(path("crest")).find("\n0 2\n"), std::string::npos);
}

TEST(Plots, DeltasOfTwoChannelsLieOnALine) {
    {
        Plots plots;
        ASSERT_TRUE(plots.set_option("output.centers", path("two_")));
        Group group = winner(2, 0);
        group.deltas = {5, -3};
        group.centers_1d = {{4}, {-3}};
        draw(plots, group);
    }
    EXPECT_EQ(text_of(path("two_L.gnuplot")),
              "$dataset_0_0 << EOD\n5 0\n-3 0\nEOD\n"
              "$dataset_0_1 << EOD\n4 0\n-3 0\nEOD\n"
              "set title \n"
              "plot $dataset_0_0 using 1:2 with points, $dataset_0_1 using 1:2 with circles\n"
              "pause mouse\n");
}

TEST(Plots, PairsOfThreeChannelsAreTiedToTheirCenters) {
    {
        Plots plots;
        ASSERT_TRUE(plots.set_option("output.centers", path("three_")));
        Group group = winner(3, 0);
        group.deltas = {5, -3, 7, 8};
        group.centers_2d = {{7, 9}, {4, -2}};
        group.ixs = {1, 0};
        draw(plots, group);
    }
    EXPECT_EQ(text_of(path("three_L.gnuplot")),
              "$dataset_0_0 << EOD\n5 -3\n7 8\nEOD\n"
              "$dataset_0_1 << EOD\n7 9\n4 -2\nEOD\n"
              "$dataset_0_2 << EOD\n4 -2\n5 -3\n\n7 9\n7 8\n\nEOD\n"
              "set title \n"
              "plot $dataset_0_0 using 1:2 with points, $dataset_0_1 using 1:2 with circles, "
              "$dataset_0_2 using 1:2 with lines\n"
              "pause mouse\n");
}

TEST(Plots, ASingleChannelHasAFileAndNothingInIt) {
    {
        Plots plots;
        ASSERT_TRUE(plots.set_option("output.centers", path("one_")));
        draw(plots, winner(1, 0));
        draw(plots, winner(1, 256));
    }
    EXPECT_EQ(text_of(path("one_L.gnuplot")), "");
}

TEST(Plots, MoreThanThreeChannelsCannotBeDrawn) {
    Plots plots;
    ASSERT_TRUE(plots.set_option("output.centers", path("four_")));
    Group group = winner(3, 0);
    group.active.push_back(group.active[0]);
    EXPECT_FALSE(plots.add(group));
}

TEST(Plots, WithoutOptionsNothingIsDrawnAndNothingFails) {
    Plots plots;
    draw(plots, winner(3, 0));
}

}  // namespace
}  // namespace vela::codec::v3::encoder
