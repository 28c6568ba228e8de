#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>
#include <vela/bnb/details/numbers.hpp>

namespace vela::bnb::details {
namespace {

/// Bytes in memory of their own, so that the address checker sees any that is read or written
/// beside them.
std::vector<char> random_bytes(std::size_t n, std::mt19937& random) {
    std::vector<char> bytes(n);
    for (char& byte : bytes)
        byte = static_cast<char>(random());
    return bytes;
}

template <typename Tag>
class Numbers : public testing::Test {};
using Tags = testing::Types<Int8_tag, Int16_tag, Int24_tag, Int32_tag>;
TYPED_TEST_SUITE(Numbers, Tags);

TYPED_TEST(Numbers, AreReadAsOneByOneWhateverLiesBetween) {
    constexpr std::size_t width = Traits<TypeParam>::width;
    std::mt19937 random(1);
    for (std::size_t n = 0; n < 20; ++n) {
        for (std::size_t stride = width; stride < width + 6; ++stride) {
            SCOPED_TRACE(testing::Message() << n << " numbers, " << stride << " bytes apart");
            const auto bytes = random_bytes(n == 0 ? 0 : (n - 1) * stride + width, random);
            std::vector<std::int32_t> numbers(n), one_by_one(n);
            get_numbers(numbers, bytes.data(), stride, TypeParam(), LittleEndian_tag());
            for (std::size_t i = 0; i < n; ++i)
                one_by_one[i] = static_cast<std::int32_t>(
                    get_bytes(bytes.data() + i * stride, TypeParam(), LittleEndian_tag()));
            EXPECT_EQ(numbers, one_by_one);
        }
    }
}

TYPED_TEST(Numbers, AreWrittenAsOneByOne) {
    constexpr std::size_t width = Traits<TypeParam>::width;
    std::mt19937 random(2);
    for (std::size_t n = 0; n < 20; ++n) {
        SCOPED_TRACE(n);
        std::vector<std::int32_t> numbers(n);
        for (auto& number : numbers)
            number = static_cast<std::int32_t>(random());
        std::vector<char> bytes(n * width), one_by_one(n * width);
        put_numbers<TypeParam>(bytes.data(), numbers, {}, {});
        for (std::size_t i = 0; i < n; ++i)
            put_bytes(one_by_one.data() + i * width, static_cast<std::uint64_t>(numbers[i]),
                      TypeParam(), LittleEndian_tag());
        EXPECT_EQ(bytes, one_by_one);
    }
}

TEST(Numbers, OfThreeBytesKeepTheirSign) {
    const std::vector<std::int32_t> numbers{-8388608, 8388607, -1, 0, 1, -8388608, 8388607};
    std::string bytes(numbers.size() * 3, '?');
    put_numbers<Int24_tag>(bytes.data(), numbers, {}, {});
    std::vector<std::int32_t> back(numbers.size());
    get_numbers(back, bytes.data(), 3, Int24_tag(), LittleEndian_tag());
    EXPECT_EQ(back, numbers);
}

}  // namespace
}  // namespace vela::bnb::details
