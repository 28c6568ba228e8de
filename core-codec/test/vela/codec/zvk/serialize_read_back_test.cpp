#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string_view>
#include <vela/codec/mux/BitMap.hpp>
#include <vela/codec/mux/details/compute_crc.hpp>
#include <vela/codec/zvk/Block.hpp>
#include <vela/codec/zvk/details/error_centers.hpp>

namespace vela::codec::zvk {

using mux::test::record_bits;
using test::Block;
using test::layout_9_1;

/// Reads a record the way a decoder does.
class Reader {
public:
    explicit Reader(std::string_view record) : record_(record) {}

    std::uint64_t number(unsigned width) {
        std::uint64_t value = 0;
        while (width-- > 0)
            value = value << 1 | bit_();
        return value;
    }
    int center(unsigned width) {
        const bool negative = bit_() != 0;
        const int magnitude = static_cast<int>(number(width - 1));
        return negative ? -magnitude : magnitude;
    }
    std::uint64_t ix(unsigned k) {
        std::uint64_t value = 0;
        while (bit_() != 0)
            ++value;
        value <<= k;
        for (unsigned i = 0; i < k; ++i)
            value |= bit_() << i;
        return value;
    }
    std::string rest() const { return std::string(record_.substr(at_)); }

private:
    std::uint64_t bit_() { return record_.at(at_++) == '1'; }

    std::string_view record_;
    std::size_t at_ = 0;
};

template <std::size_t D>
std::vector<std::array<int, D>> random_centers(std::mt19937& engine, unsigned width) {
    std::vector<std::array<int, D>> centers(1 + engine() % 60);
    for (auto& center : centers)
        for (int& element : center)
            element = static_cast<int>(engine() % ((1u << width) - 1)) - (1 << (width - 1)) + 1;
    return centers;
}

template <std::size_t D>
void expect_centers(Reader& reader, const std::vector<std::array<int, D>>& centers,
                    const ZVK& record) {
    const auto slots = details::nr_error_centers_per_index(record.error_center_ix);
    for (std::size_t element = 0; element < D; ++element) {
        for (const auto& center : centers)
            ASSERT_EQ(reader.center(record.center_bits), center[element]);
        for (std::size_t slot = centers.size(); slot < slots; ++slot)
            ASSERT_EQ(reader.number(record.center_bits), (1u << record.center_bits) - 1);
    }
}

void fill_randomly(Block& block, std::mt19937& engine, bool three) {
    block.seeds.resize(three ? 5 : 2);
    for (std::int32_t& seed : block.seeds)
        seed = static_cast<std::int32_t>(engine());
    block.record.add_dmol_instruction(layout_9_1());
    const auto width = static_cast<unsigned>(3 + engine() % 12);
    block.record.center_bits = static_cast<std::uint8_t>(width);
    block.centers_1d = random_centers<1>(engine, width);
    block.centers_2d = random_centers<2>(engine, width);
    if (three)
        block.record.set_centers(&block.centers_2d);
    else
        block.record.set_centers(&block.centers_1d);
    block.record.rice_k = static_cast<std::uint8_t>(1 + engine() % 7);
    block.ixs.resize(block.samples.size());
    const std::size_t nr_centers = three ? block.centers_2d.size() : block.centers_1d.size();
    for (std::uint64_t& ix : block.ixs)
        ix = engine() % std::min<std::size_t>(nr_centers, std::size_t{2} << block.record.rice_k);
    block.record.ixs = &block.ixs;
}

void expect_record(const Block& block, unsigned nr_lines, bool three) {
    const std::string record = record_bits(block.samples, nr_lines);
    Reader reader(record);
    ASSERT_EQ(reader.number(16), 0xFFFFu);
    unsigned long crc = 0;
    const int* const first = block.samples.data();
    const Range<const int*> range(first, first + block.samples.size());
    ASSERT_TRUE(mux::details::compute_crc(24, crc, range));
    ASSERT_EQ(reader.number(16), crc);
    (void)reader.number(36);
    ASSERT_EQ(reader.number(4), block.record.rice_k);
    ASSERT_EQ(reader.number(8), block.record.error_center_ix);
    ASSERT_EQ(reader.number(8), 1u);
    ASSERT_EQ(reader.number(8), block.record.center_bits);
    (void)reader.number(64);
    std::vector<std::int32_t> seeds;
    for (std::size_t i = 0; i < block.seeds.size(); ++i)
        seeds.push_back(static_cast<std::int32_t>(reader.number(32)));
    if (!three) std::swap(seeds[0], seeds[1]);
    ASSERT_EQ(seeds, block.seeds);
    ASSERT_EQ(reader.number(32), 0x011E1E00u);
    if (three)
        expect_centers(reader, block.centers_2d, block.record);
    else
        expect_centers(reader, block.centers_1d, block.record);
    for (const std::uint64_t ix : block.ixs)
        ASSERT_EQ(reader.ix(block.record.rice_k), ix);
    ASSERT_EQ(reader.rest(), std::string(reader.rest().size(), '0'));
}

TEST(SerializeReadBack, RandomRecordsReadBackFromRandomAudio) {
    std::mt19937 engine(20);
    for (int round = 0; round < 60; ++round) {
        SCOPED_TRACE(round);
        const auto nr_lines = static_cast<unsigned>(12 + engine() % 5);
        const bool three = round % 2 != 0;
        Block block(16 * (64 + engine() % 34));
        fill_randomly(block, engine, three);
        for (int& sample : block.samples)
            sample = (static_cast<int>(engine() % (1u << 24)) - (1 << 23)) & -(1 << nr_lines);
        const std::vector<int> audio = block.samples;
        ASSERT_TRUE(block.write(nr_lines));
        expect_record(block, nr_lines, three);
        for (std::size_t i = 0; i < audio.size(); ++i)
            ASSERT_EQ(block.samples[i] & -(1 << nr_lines), audio[i]);
    }
}

}  // namespace vela::codec::zvk
