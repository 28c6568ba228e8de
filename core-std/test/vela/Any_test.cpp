#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <string>
#include <vela/Any.hpp>

namespace vela {
namespace {

TEST(Any, HoldsNothingAtFirst) {
    const Any any;
    EXPECT_EQ(any.get<bool>(), nullptr);
    EXPECT_EQ(any.get<std::string>(), nullptr);
}

template <typename T>
class AnyOf : public testing::Test {};

using Types =
    testing::Types<std::uint32_t, std::int32_t, std::uint64_t, bool, std::string, unsigned char>;
TYPED_TEST_SUITE(AnyOf, Types);

// A held 32-bit number is not found under any other number type.
TYPED_TEST(AnyOf, AnswersForJustTheTypeThatWasSet) {
    const TypeParam value{};
    const Any any(value);
    int answers = 0;
    answers += any.get<std::uint32_t>() != nullptr;
    answers += any.get<std::int32_t>() != nullptr;
    answers += any.get<std::uint64_t>() != nullptr;
    answers += any.get<bool>() != nullptr;
    answers += any.get<std::string>() != nullptr;
    answers += any.get<unsigned char>() != nullptr;
    EXPECT_EQ(answers, 1);
    ASSERT_NE(any.get<TypeParam>(), nullptr);
    EXPECT_EQ(*any.get<TypeParam>(), value);
}

TEST(Any, AHeldBoolIsNoInt) {
    const Any any(true);
    ASSERT_NE(any.get<bool>(), nullptr);
    EXPECT_TRUE(*any.get<bool>());
    EXPECT_EQ(any.get<int>(), nullptr);
}

TEST(Any, HoldsACopy) {
    std::string text = "before";
    const Any any(text);
    text = "after";
    EXPECT_EQ(*any.get<std::string>(), "before");
    EXPECT_NE(any.get<std::string>(), &text);
}

TEST(Any, SetReplacesAndEndsWhatWasHeld) {
    const auto counted = std::make_shared<int>(1);
    Any any(counted);
    EXPECT_EQ(counted.use_count(), 2);
    any.set(std::string("text"));
    EXPECT_EQ(counted.use_count(), 1);
    EXPECT_EQ(any.get<std::shared_ptr<int>>(), nullptr);
    ASSERT_NE(any.get<std::string>(), nullptr);
    EXPECT_EQ(*any.get<std::string>(), "text");
}

// The copy is made before the old value goes.
TEST(Any, MaySetWhatItHolds) {
    Any any(std::string("the same text, too long for a short string"));
    any.set(*any.get<std::string>());
    EXPECT_EQ(*any.get<std::string>(), "the same text, too long for a short string");
}

}  // namespace
}  // namespace vela
