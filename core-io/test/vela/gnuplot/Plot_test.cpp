#include <gtest/gtest.h>

#include <vela/Cache.hpp>
#include <vela/gnuplot/Plot.hpp>

namespace vela::gnuplot {

namespace {

struct TextStream {
    std::string text;
    int nr_writes = 0;

    void write(std::string_view more) {
        text += more;
        ++nr_writes;
    }
};

using TextPlot = Plot<TextStream>;

/// The whole text of a plot that `fill` has filled.
template <typename Fill>
std::string text_of(Fill fill, std::size_t index = 0, const std::string& pause = "mouse") {
    TextStream stream;
    {
        TextPlot plot(stream, index, pause);
        fill(plot);
    }
    return stream.text;
}

/// The command line alone: the line before "pause".
std::string command_of(const std::string& style, std::size_t nr_columns) {
    const std::string text = text_of([&](TextPlot& plot) {
        plot.datas.back().style = style;
        plot.add_row(std::vector<double>(nr_columns, 7));
    });
    const auto begin = text.find("EOD\n", text.find("<< EOD\n") + 7) + 4;
    return text.substr(begin, text.find("\npause") - begin);
}

}  // namespace

TEST(Plot, WithoutRowsStillHasAllItsLines) {
    EXPECT_EQ(text_of([](TextPlot&) {}),
              "$dataset_0_0 << EOD\n"
              "EOD\n"
              "\n"
              "pause mouse\n");
}

TEST(Plot, LevelsOfAllChannelsOverTime) {
    const auto fill = [](TextPlot& plot) {
        ASSERT_TRUE(plot.add_header({"Start of frame", "Left in Left", "Center in Left"}));
        plot.add_row({0, -83.70114, -90.6802});
        plot.add_row({512, -83.9494, -90.5121});
        plot.add_row({1234567, -3000, 1.0});
    };
    EXPECT_EQ(text_of(fill),
              "$dataset_0_0 << EOD\n"
              "\"Start of frame\" \"Left in Left\" \"Center in Left\"\n"
              "0 -83.7011 -90.6802\n"
              "512 -83.9494 -90.5121\n"
              "1.23457e+06 -3000 1\n"
              "EOD\n"
              "set key autotitle columnheader\n"
              "plot $dataset_0_0 using 1:2 with lines, $dataset_0_0 using 1:3 with lines\n"
              "pause mouse\n");
}

TEST(Plot, DeltasAndCentersOfThreeChannels) {
    const auto fill = [](TextPlot& plot) {
        plot.title = "";
        plot.datas.back().style = "points";
        plot.add_row(2, 25);
        plot.new_data().style = "circles";
        plot.add_row(0, 21);
        plot.new_data().style = "lines";
        plot.add_row(0, 21);
        plot.add_row(2, 25);
        plot.add_row({});
    };
    EXPECT_EQ(text_of(fill, 2),
              "$dataset_2_0 << EOD\n"
              "2 25\n"
              "EOD\n"
              "$dataset_2_1 << EOD\n"
              "0 21\n"
              "EOD\n"
              "$dataset_2_2 << EOD\n"
              "0 21\n"
              "2 25\n"
              "\n"
              "EOD\n"
              "set title \n"
              "plot $dataset_2_0 using 1:2 with points, $dataset_2_1 using 1:2 with circles, "
              "$dataset_2_2 using 1:2 with lines\n"
              "pause mouse\n");
}

TEST(Plot, SettingsStandBetweenDataAndCommand) {
    const auto fill = [](TextPlot& plot) {
        plot.title = "\"Errors\"";
        plot.label = TextPlot::Label{"at 0.1 dB", 0.25f, 0.9f};
        plot.size = {1024, 768};
        plot.add_row(1, 0.5);
    };
    EXPECT_EQ(text_of(fill, 0, "-1"),
              "$dataset_0_0 << EOD\n"
              "1 0.5\n"
              "EOD\n"
              "set title \"Errors\"\n"
              "set label 1 \"at 0.1 dB\" at screen 0.25, screen 0.9\n"
              "set term wxt size 1024, 768\n"
              "plot $dataset_0_0 using 1:2 with lines\n"
              "pause -1\n");
}

// gnuplot takes no setting inside a command, yet files are compared to the byte.
TEST(Plot, HeaderOfALaterDatasetBreaksIntoTheCommand) {
    const auto fill = [](TextPlot& plot) {
        plot.add_row(1, 2);
        plot.new_data();
        ASSERT_TRUE(plot.add_header({"a", "b"}));
    };
    EXPECT_EQ(text_of(fill),
              "$dataset_0_0 << EOD\n"
              "1 2\n"
              "EOD\n"
              "$dataset_0_1 << EOD\n"
              "\"a\" \"b\"\n"
              "EOD\n"
              "plot $dataset_0_0 using 1:2 with linesset key autotitle columnheader\n"
              ", $dataset_0_1 using 1:2 with lines\n"
              "pause mouse\n");
}

struct StyleCase {
    const char* style;
    std::size_t nr_columns;
    const char* command;
};

class PlotStyle : public testing::TestWithParam<StyleCase> {};

TEST_P(PlotStyle, DecidesWhatIsDrawnOfTheColumns) {
    EXPECT_EQ(command_of(GetParam().style, GetParam().nr_columns), GetParam().command);
}

INSTANTIATE_TEST_SUITE_P(
    Styles, PlotStyle,
    testing::Values(
        StyleCase{"lines", 0, ""}, StyleCase{"lines", 1, ""},
        StyleCase{"lines", 2, "plot $dataset_0_0 using 1:2 with lines"},
        StyleCase{"lines", 3,
                  "plot $dataset_0_0 using 1:2 with lines, $dataset_0_0 using 1:3 with lines"},
        StyleCase{"points", 2, "plot $dataset_0_0 using 1:2 with points"},
        StyleCase{"circles", 1, ""},
        StyleCase{"circles", 2, "plot $dataset_0_0 using 1:2 with circles"},
        StyleCase{"circles", 3, "plot $dataset_0_0 using 1:2:3 with circles"},
        StyleCase{"circles", 4, ""},
        StyleCase{"circles fill solid", 2, "plot $dataset_0_0 using 1:2 with circles fill solid"}));

TEST(Plot, WidestRowCountsForTheClauses) {
    const auto fill = [](TextPlot& plot) {
        plot.add_row({1, 2, 3});
        plot.add_row({1});
        EXPECT_EQ(plot.datas.back().nr_columns, 3u);
        EXPECT_EQ(plot.datas.back().nr_rows, 2u);
    };
    EXPECT_NE(text_of(fill).find("using 1:3"), std::string::npos);
}

TEST(Plot, HeaderMustBeTheFirstRow) {
    const auto fill = [](TextPlot& plot) {
        plot.add_row(1, 2);
        EXPECT_FALSE(plot.add_header({"late"}));
        EXPECT_FALSE(plot.datas.back().has_header);
        plot.new_data();
        EXPECT_TRUE(plot.add_header({"x"}));
        EXPECT_EQ(plot.datas.back().nr_rows, 1u);
        EXPECT_FALSE(plot.add_header({"again"}));
    };
    const std::string text = text_of(fill);
    EXPECT_EQ(text.find("late"), std::string::npos);
    EXPECT_EQ(text.find("again"), std::string::npos);
}

TEST(Plot, IsWrittenAtItsEndInOneGo) {
    TextStream stream;
    {
        TextPlot plot(stream, 0, "mouse");
        plot.add_row(1, 2);
        plot.new_data();
        EXPECT_EQ(stream.text, "");
    }
    EXPECT_EQ(stream.nr_writes, 1);
}

TEST(Plot, MovedOnIsWrittenOnceWithAllItsRows) {
    TextStream stream;
    {
        Cache<TextPlot> cache;
        {
            TextPlot plot(stream, 0, "mouse");
            plot.title = "kept";
            plot.add_row(1, 2);
            cache.set(std::move(plot));
        }
        EXPECT_EQ(stream.text, "");
        cache->add_row(3, 4);
        EXPECT_EQ(cache->datas.back().nr_rows, 2u);
    }
    EXPECT_EQ(stream.text,
              "$dataset_0_0 << EOD\n"
              "1 2\n"
              "3 4\n"
              "EOD\n"
              "set title kept\n"
              "plot $dataset_0_0 using 1:2 with lines\n"
              "pause mouse\n");
}

TEST(Plot, IsFinishedBeforeTheOneThatReplacesIt) {
    TextStream stream;
    Cache<TextPlot> cache;
    cache.set(TextPlot(stream, 0, "mouse"));
    cache.set(TextPlot(stream, 1, "mouse"));
    EXPECT_EQ(stream.text, "$dataset_0_0 << EOD\nEOD\n\npause mouse\n");
    cache.reset();
    EXPECT_EQ(stream.nr_writes, 2);
}

TEST(PlotRow, MovedOnIsClosedOnce) {
    const auto fill = [](TextPlot& plot) {
        TextPlot::Row row(plot.datas.back());
        row << 1;
        TextPlot::Row moved(std::move(row));
        moved << 2.5 << std::string("three");
    };
    EXPECT_NE(text_of(fill).find("1 2.5 \"three\"\nEOD\n"), std::string::npos);
}

}  // namespace vela::gnuplot
