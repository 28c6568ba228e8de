#include <gtest/gtest.h>

#include <chrono>
#include <cmath>
#include <cstdlib>
#include <sstream>
#include <string>
#include <thread>
#include <vector>
#include <vela/profiler/Stack.hpp>

namespace vela::profiler {
namespace {

using Clock = std::chrono::steady_clock;
using Profile = Stack<const char*>;

// An array, so that the order of the addresses is known.
const char* const names[] = {"Lowpass", "Encoding", "Lowpass"};

const std::string during =
    "WARNING: You are querying the profiling information during profiling. This will affect the "
    "results.\n";
const std::string not_stopped =
    "WARNING: You did not stop the profiler: you will not correctly see the not-accounted-for "
    "times. This will affect the results.\n";

void work() {
    std::this_thread::sleep_for(std::chrono::milliseconds(2));
}

double seconds_since(Clock::time_point start) {
    return std::chrono::duration<double>(Clock::now() - start).count();
}

std::string text_of(const Profile& profile) {
    std::ostringstream out;
    profile.stream(out);
    return out.str();
}

struct Line {
    std::string name;
    double seconds = 0;
    double fraction = 0;
};

struct Report {
    std::string warnings;
    double total = 0;
    std::vector<Line> lines;
};

// Takes what stands before `stop` from the front of `text`.
std::string take(std::string& text, const std::string& stop) {
    const auto at = text.find(stop);
    EXPECT_NE(at, std::string::npos) << stop;
    if (at == std::string::npos) return {};
    const auto taken = text.substr(0, at);
    text.erase(0, at + stop.size());
    return taken;
}

double take_number(std::string& text, const std::string& stop) {
    const auto number = take(text, stop);
    char* end = nullptr;
    const double value = std::strtod(number.c_str(), &end);
    EXPECT_TRUE(!number.empty() && *end == '\0') << number;
    return value;
}

// Reads back every character of the report.
Report parse(std::string text) {
    Report report;
    report.warnings = take(text, "Total duration: ");
    report.total = take_number(text, " seconds\n");
    while (!text.empty()) {
        Line line;
        line.name = take(text, ": {seconds: ");
        line.seconds = take_number(text, "}{fraction: ");
        line.fraction = take_number(text, "}\n");
        report.lines.push_back(line);
        if (testing::Test::HasFailure()) break;
    }
    return report;
}

TEST(Stack, AnImmediateReportIsAllZeros) {
    EXPECT_EQ(text_of(Profile()), not_stopped +
                                      "Total duration: 0 seconds\n"
                                      "*** Not accounted for: {seconds: 0}{fraction: 0}\n");
}

TEST(Stack, WithoutMarksAllTimeIsNotAccountedFor) {
    Profile profile;
    work();
    ASSERT_TRUE(profile.stop());
    const auto report = parse(text_of(profile));
    EXPECT_EQ(report.warnings, "");
    EXPECT_GE(report.total, 0.002);
    ASSERT_EQ(report.lines.size(), 1u);
    EXPECT_EQ(report.lines[0].name, "*** Not accounted for");
    EXPECT_EQ(report.lines[0].seconds, report.total);
    EXPECT_EQ(report.lines[0].fraction, 1.0);
}

TEST(Stack, MarksComeByAddressNotByNameAndKeepTheirTimes) {
    Profile profile;
    double upper[3] = {};
    for (const int i : {2, 0, 1, 0}) {
        const auto start = Clock::now();
        ASSERT_TRUE(profile.push(&names[i]));
        work();
        ASSERT_TRUE(profile.pop());
        upper[i] += seconds_since(start);
    }
    ASSERT_TRUE(profile.stop());

    const auto report = parse(text_of(profile));
    ASSERT_EQ(report.lines.size(), 4u);
    double seconds = report.lines[3].seconds;
    double fractions = report.lines[3].fraction;
    for (std::size_t i = 0; i < 3; ++i) {
        SCOPED_TRACE(i);
        EXPECT_EQ(report.lines[i].name, names[i]);
        EXPECT_GE(report.lines[i].seconds, i == 0 ? 0.004 : 0.002);
        EXPECT_LE(report.lines[i].seconds, upper[i] + 1e-5);
        EXPECT_NEAR(report.lines[i].fraction, report.lines[i].seconds / report.total, 1e-2);
        seconds += report.lines[i].seconds;
        fractions += report.lines[i].fraction;
    }
    EXPECT_EQ(report.lines[3].name, "*** Not accounted for");
    EXPECT_NEAR(seconds, report.total, 1e-5);
    EXPECT_NEAR(fractions, 1.0, 1e-5);
}

TEST(Stack, ANestedMarkTakesOverFromTheMarkBelow) {
    Profile profile;
    const auto start = Clock::now();
    ASSERT_TRUE(profile.push(&names[0]));
    const auto before = Clock::now();
    ASSERT_TRUE(profile.push(&names[1]));
    work();
    work();
    const auto after = Clock::now();
    ASSERT_TRUE(profile.pop());
    ASSERT_TRUE(profile.pop());
    const auto all = seconds_since(start);
    ASSERT_TRUE(profile.stop());

    const auto report = parse(text_of(profile));
    ASSERT_EQ(report.lines.size(), 3u);
    const double inside = std::chrono::duration<double>(after - before).count();
    EXPECT_GE(report.lines[1].seconds, 0.004);
    EXPECT_LE(report.lines[0].seconds, all - inside + 1e-5);
}

TEST(Stack, TimeBeforeTheFirstMarkBelongsToNobody) {
    Profile profile;
    work();
    ASSERT_TRUE(profile.push(&names[0]));
    ASSERT_TRUE(profile.pop());
    const auto report = parse(text_of(profile));
    EXPECT_EQ(report.warnings, not_stopped);
    ASSERT_EQ(report.lines.size(), 2u);
    EXPECT_EQ(report.lines[1].name, "*** Not accounted for");
    EXPECT_GE(report.lines[1].seconds, 0.002);
}

TEST(Stack, AMarkThatIsStillOpenForbidsStopAndIsWarnedOf) {
    Profile profile;
    ASSERT_TRUE(profile.push(&names[0]));
    EXPECT_FALSE(profile.stop());
    EXPECT_EQ(parse(text_of(profile)).warnings, during + not_stopped);
    EXPECT_TRUE(profile.pop());
    EXPECT_TRUE(profile.stop());
    EXPECT_EQ(parse(text_of(profile)).warnings, "");
}

TEST(Stack, AfterStopNothingIsBooked) {
    Profile profile;
    ASSERT_TRUE(profile.push(&names[0]));
    ASSERT_TRUE(profile.pop());
    ASSERT_TRUE(profile.stop());
    const auto text = text_of(profile);
    work();
    EXPECT_FALSE(profile.stop());
    EXPECT_FALSE(profile.push(&names[1]));
    EXPECT_FALSE(profile.pop());
    EXPECT_EQ(text_of(profile), text);
}

// A reader of a pipe sees the report before the program ends, and no half lines.
TEST(Stack, EachLineGoesOutWhenItEnds) {
    struct Buffer : std::stringbuf {
        int sync() override {
            sent.push_back(str());
            str("");
            return 0;
        }
        std::vector<std::string> sent;
    } buffer;
    std::ostream out(&buffer);
    Profile profile;
    ASSERT_TRUE(profile.push(&names[0]));
    ASSERT_TRUE(profile.pop());
    ASSERT_TRUE(profile.push(&names[0]));
    profile.stream(out);
    std::string all;
    for (const std::string& line : buffer.sent) {
        EXPECT_EQ(line.find('\n'), line.size() - 1) << line;
        all += line;
    }
    EXPECT_EQ(all, text_of(profile));
}

TEST(Stack, SecondsAreWholeMicroseconds) {
    Profile profile;
    for (int i = 0; i < 50; ++i) {
        ASSERT_TRUE(profile.push(&names[0]));
        ASSERT_TRUE(profile.pop());
        const auto report = parse(text_of(profile));
        const double microseconds = report.lines[0].seconds * 1e6;
        ASSERT_NEAR(microseconds, std::round(microseconds), 1e-6);
    }
}

}  // namespace
}  // namespace vela::profiler
