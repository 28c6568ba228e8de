#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>
#include <sstream>
#include <vela/gnuplot/details/append.hpp>

namespace vela::gnuplot::details {

namespace {

template <typename T>
std::string appended(T value) {
    std::string buffer = "<";
    append(buffer, value);
    return buffer;
}

template <typename T>
std::string streamed(T value) {
    std::ostringstream out;
    out.imbue(std::locale::classic());
    out << '<' << value;
    return out.str();
}

}  // namespace

TEST(Append, RealsHaveSixDigits) {
    struct Case {
        double value;
        const char* text;
    };
    for (const auto& [value, text] :
         {Case{0, "<0"}, Case{-0.0, "<-0"}, Case{1, "<1"}, Case{-83.70114, "<-83.7011"},
          Case{1234567, "<1.23457e+06"}, Case{1e-5, "<1e-05"}, Case{-3000, "<-3000"}})
        EXPECT_EQ(appended(value), text);
}

TEST(Append, ReadsAsAStreamWrites) {
    std::mt19937_64 engine(7);
    std::uniform_real_distribution<double> exponent(-320, 309), mantissa(-1, 1);
    for (int i = 0; i < 20000; ++i) {
        const double value = mantissa(engine) * std::pow(10.0, exponent(engine));
        ASSERT_EQ(appended(value), streamed(value));
    }
    using Limits = std::numeric_limits<double>;
    for (const double value : {Limits::infinity(), -Limits::infinity(), Limits::max(),
                               Limits::lowest(), Limits::denorm_min(), Limits::quiet_NaN()})
        EXPECT_EQ(appended(value), streamed(value));
}

TEST(Append, IntegersReachTheEndsOfTheirType) {
    using Int = std::numeric_limits<std::int32_t>;
    EXPECT_EQ(appended(Int::min()), "<-2147483648");
    EXPECT_EQ(appended(Int::max()), "<2147483647");
    EXPECT_EQ(appended(std::numeric_limits<std::size_t>::max()), "<18446744073709551615");
}

TEST(Append, TextIsQuotedAsItStands) {
    EXPECT_EQ(appended(std::string_view("Left in Left")), "<\"Left in Left\"");
    EXPECT_EQ(appended(std::string_view("say \"a\"\\")), "<\"say \"a\"\\\"");
    EXPECT_EQ(appended(std::string_view()), "<\"\"");
}

}  // namespace vela::gnuplot::details
