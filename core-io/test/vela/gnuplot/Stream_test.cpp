#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <regex>
#include <support/TempFile.hpp>
#include <vela/gnuplot/Stream.hpp>

namespace vela::gnuplot {

namespace {

using testing_support::TempFile;

std::string plots_of(const TempFile& file) {
    const std::string text = file.bytes();
    return text.substr(text.find('\n') + 1);
}

}  // namespace

TEST(GnuplotStream, FirstLineTellsWhen) {
    const TempFile file;
    const Stream stream(file.name());
    // Already there while the stream is open.
    const std::string text = file.bytes();
    EXPECT_TRUE(std::regex_match(
        text, std::regex("#Created by core-io/src/vela/gnuplot/Stream on .*[0-9]{4} [^ ]+\n")))
        << text;
    EXPECT_EQ(stream.name(), file.name());
}

TEST(GnuplotStream, NumbersItsPlotsAndWaitsForTheMouseByDefault) {
    const TempFile file;
    {
        Stream stream(file.name());
        EXPECT_EQ(stream.nr_plots(), 0u);
        stream.plot("").add_row(1, 2);
        stream.plot("5").add_row(3, 4);
        EXPECT_EQ(stream.nr_plots(), 2u);
    }
    EXPECT_EQ(plots_of(file),
              "$dataset_0_0 << EOD\n"
              "1 2\n"
              "EOD\n"
              "plot $dataset_0_0 using 1:2 with lines\n"
              "pause mouse\n"
              "$dataset_1_0 << EOD\n"
              "3 4\n"
              "EOD\n"
              "plot $dataset_1_0 using 1:2 with lines\n"
              "pause 5\n");
}

TEST(GnuplotStream, FinishedPlotIsInTheFileWhileTheRunGoesOn) {
    const TempFile file;
    Stream stream(file.name());
    { const auto plot = stream.plot(""); }
    EXPECT_EQ(plots_of(file), "$dataset_0_0 << EOD\nEOD\n\npause mouse\n");
}

TEST(GnuplotStream, NameWithBackslashesIsOpenedWithForwardSlashes) {
    const TempFile file;
    std::string typed = file.path();
    std::ranges::replace(typed, '/', '\\');
    file::Name name;
    name << typed;
    { const Stream stream(name); }
    EXPECT_TRUE(file.bytes().starts_with("#Created by "));
}

TEST(GnuplotStream, UnopenableFileSwallowsItsPlots) {
    const TempFile folder;
    Stream stream(file::Name(folder.path() + "/a.plot"));
    stream.plot("").add_row(1, 2);
    EXPECT_EQ(stream.nr_plots(), 1u);
    EXPECT_FALSE(std::filesystem::exists(folder.path()));
}

TEST(GnuplotStream, GnuplotDrawsIt) {
    if (std::system("command -v gnuplot >/dev/null 2>&1") != 0)
        GTEST_SKIP() << "gnuplot is not on the PATH";
    const TempFile file;
    {
        Stream stream(file.name());
        auto plot = stream.plot("0");
        plot.title = "";
        plot.datas.back().style = "points";
        ASSERT_TRUE(plot.add_header({"Start of frame", "Left in Left", "Center in Left"}));
        for (int i = 0; i < 10; ++i)
            plot.add_row({512.0 * i, -80.0 - i, -90.0 + i});
        plot.new_data().style = "circles";
        plot.add_row(100, -85.5);
        plot.add_row(900, -84.5);
        plot.new_data().style = "lines";
        plot.add_row(100, -85);
        plot.add_row(2000, -90);
        plot.add_row({});
    }
    const TempFile picture_file;
    const std::string call = "gnuplot -e \"set terminal png; set output '" + picture_file.path() +
                             "'\" " + file.path() + " </dev/null";
    ASSERT_EQ(std::system(call.c_str()), 0);
    const std::string picture = picture_file.bytes();
    EXPECT_GT(picture.size(), 1000u);
    EXPECT_EQ(picture.substr(1, 3), "PNG");
}

}  // namespace vela::gnuplot
