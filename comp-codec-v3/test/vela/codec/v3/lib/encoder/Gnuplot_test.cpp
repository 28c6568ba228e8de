#include <gtest/gtest.h>

#include <filesystem>
#include <vela/codec/v3/lib/encoder/Gnuplot.hpp>
#include <vela/file/read.hpp>

namespace vela::codec::v3::encoder {
namespace {

/// Everything behind the first line, which tells the time.
std::string text_of(const std::string& name) {
    std::string text;
    EXPECT_TRUE(file::read(text, file::Name(name)));
    return text.substr(text.find('\n') + 1);
}

TEST(Gnuplot, BackslashesInTheNameAreFolders) {
    const std::string folder = testing::TempDir() + "Gnuplot/";
    std::filesystem::create_directory(folder);
    {
        Gnuplot gnuplot;
        EXPECT_FALSE(gnuplot.is_created());
        EXPECT_TRUE(gnuplot.create(testing::TempDir() + "Gnuplot\\a.plot"));
    }
    EXPECT_EQ(text_of(folder + "a.plot"), "") << "a file without a plot has its first line only";
}

TEST(Gnuplot, RowsGoToThePlotThatIsOpen) {
    const std::string name = testing::TempDir() + "rows.plot";
    {
        Gnuplot gnuplot;
        gnuplot.start(1);
        gnuplot.append({2});
        gnuplot.end_row();
        EXPECT_EQ(gnuplot.plot(), nullptr) << "closed until it is created";

        ASSERT_TRUE(gnuplot.create_with_plot(name));
        gnuplot.start(0);
        gnuplot.append({-80.5, -90});
        gnuplot.append({1});
        gnuplot.end_row();
        gnuplot.start(256);
        gnuplot.end_row();
        gnuplot.next_plot().title = "";
    }
    EXPECT_EQ(text_of(name),
              "$dataset_0_0 << EOD\n0 -80.5 -90 1\n256\nEOD\n"
              "plot $dataset_0_0 using 1:2 with lines, $dataset_0_0 using 1:3 with lines, "
              "$dataset_0_0 using 1:4 with lines\npause mouse\n"
              "$dataset_1_0 << EOD\nEOD\nset title \n\npause mouse\n");
}

TEST(Gnuplot, AnotherFileFinishesTheOneBefore) {
    const std::string first = testing::TempDir() + "first.plot";
    const std::string second = testing::TempDir() + "second.plot";
    {
        Gnuplot gnuplot;
        ASSERT_TRUE(gnuplot.create_with_plot(first));
        gnuplot.start(7);
        gnuplot.end_row();
        ASSERT_TRUE(gnuplot.create_with_plot(second));
    }
    EXPECT_EQ(text_of(first), "$dataset_0_0 << EOD\n7\nEOD\n\npause mouse\n");
    EXPECT_EQ(text_of(second), "$dataset_0_0 << EOD\nEOD\n\npause mouse\n");
}

TEST(Gnuplot, AFileThatCannotBeOpenedLosesItsPlotWithoutAWord) {
    Gnuplot gnuplot;
    EXPECT_TRUE(gnuplot.create_with_plot(testing::TempDir() + "no/such/folder/a.plot"));
    gnuplot.start(0);
    gnuplot.end_row();
}

}  // namespace
}  // namespace vela::codec::v3::encoder
