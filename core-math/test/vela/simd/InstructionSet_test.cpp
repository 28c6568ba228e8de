#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <utility>
#include <vela/simd/InstructionSet.hpp>

namespace vela::simd {
namespace {

/// The set is chosen once in a process, so that each case wants a fresh one.
class InstructionSetChoice : public testing::Test {
protected:
    void SetUp() override { GTEST_FLAG_SET(death_test_style, "threadsafe"); }

    [[noreturn]] static void choose(const char* forced) {
        setenv("VELA_INSTRUCTION_SET", forced, 1);
        std::_Exit(100 + static_cast<int>(instruction_set()));
    }
};

TEST_F(InstructionSetChoice, IsTheBestThatTheMachineHas) {
    if (std::getenv("VELA_INSTRUCTION_SET")) GTEST_SKIP() << "another one is forced";
    const auto best = machine_has("avx512") ? InstructionSet::avx512
                      : machine_has("avx2") ? InstructionSet::avx2
                                            : InstructionSet::sse2;
    EXPECT_EQ(instruction_set(), best);
}

TEST_F(InstructionSetChoice, EveryMachineHasTheLeastSetAndNoneAnUnknownOne) {
    EXPECT_TRUE(machine_has("sse2"));
    for (const char* const name : {"", "sse", "avx", "AVX2", "avx512f", "avx2 "})
        EXPECT_FALSE(machine_has(name)) << name;
}

#ifdef VELA_TEST_SWITCHES
// A time or a test of one set must never be one of another.
TEST_F(InstructionSetChoice, IsTheForcedOneOrNone) {
    const std::pair<const char*, InstructionSet> sets[] = {{"sse2", InstructionSet::sse2},
                                                           {"avx2", InstructionSet::avx2},
                                                           {"avx512", InstructionSet::avx512}};
    for (const auto& [name, set] : sets) {
        SCOPED_TRACE(name);
        if (machine_has(name))
            EXPECT_EXIT(choose(name), testing::ExitedWithCode(100 + static_cast<int>(set)), "");
        else
            EXPECT_EXIT(choose(name), testing::ExitedWithCode(EXIT_FAILURE), name);
    }
}

TEST_F(InstructionSetChoice, EndsTheProcessForAnUnknownName) {
    for (const std::string name : {"avx", "AVX2", "avx512f", "avx512 "})
        EXPECT_EXIT(choose(name.c_str()), testing::ExitedWithCode(EXIT_FAILURE),
                    "VELA_INSTRUCTION_SET is \"" + name + "\", but this machine has.* sse2");
}
#endif

}  // namespace
}  // namespace vela::simd
