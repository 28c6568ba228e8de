#include <gtest/gtest.h>

#include <cctype>
#include <sstream>
#include <string>
#include <type_traits>
#include <vela/api/Channel.hpp>
#include <vela/api/NamingSchema.hpp>

namespace other {
namespace {

// A table of its own, like those of layouts and recipes: made before `main` from the constants.
const struct {
    vela::api::Channel channel = vela::api::channel::Ambisonics;
    std::string short_name = vela::api::channel::LeftBack.short_name();
    std::size_t nr_channels = vela::api::channel::all().size();
} before_main;

}  // namespace
}  // namespace other

namespace vela::api {
namespace {

// Frames, groups and their keys are copied all the time: a channel must not allocate.
static_assert(std::is_trivially_copyable_v<Channel>);
static_assert(channel::Top.id() == channel::id::Top && channel::Top.valid() && !Channel().valid());

std::string text_of(const Channel& channel) {
    std::ostringstream out;
    out << channel;
    return out.str();
}

struct Row {
    channel::id::Value id;
    std::uint32_t number;
    const Channel& constant;
    const char* vela;
    const char* nhk;
    const char* full;
};

const Row rows[] = {
    {channel::id::Left, 0, channel::Left, "L", "FLc", "Left"},
    {channel::id::Right, 1, channel::Right, "R", "FRc", "Right"},
    {channel::id::Center, 2, channel::Center, "C", "FC", "Center"},
    {channel::id::LFE, 3, channel::LFE, "LFE", "LFE1", "LFE"},
    {channel::id::LeftSurround, 4, channel::LeftSurround, "Ls", "Ls", "LeftSurround"},
    {channel::id::RightSurround, 5, channel::RightSurround, "Rs", "Rs", "RightSurround"},
    {channel::id::CenterSurround, 6, channel::CenterSurround, "Cs", "Cs", "CenterSurround"},
    {channel::id::LeftBack, 7, channel::LeftBack, "Lb", "BL", "LeftBack"},
    {channel::id::RightBack, 8, channel::RightBack, "Rb", "BR", "RightBack"},
    {channel::id::HeightLeft, 9, channel::HeightLeft, "HL", "TpFLc", "HeightLeft"},
    {channel::id::HeightRight, 10, channel::HeightRight, "HR", "TpFRc", "HeightRight"},
    {channel::id::HeightCenter, 11, channel::HeightCenter, "HC", "TpFC", "HeightCenter"},
    {channel::id::Top, 12, channel::Top, "T", "TpC", "Top"},
    {channel::id::HeightLeftSurround, 13, channel::HeightLeftSurround, "HLs", "TpLs",
     "HeightLeftSurround"},
    {channel::id::HeightRightSurround, 14, channel::HeightRightSurround, "HRs", "TpRs",
     "HeightRightSurround"},
    {channel::id::HeightCenterSurround, 15, channel::HeightCenterSurround, "HCs", "TpCs",
     "HeightCenterSurround"},
    {channel::id::HeightLeftBack, 16, channel::HeightLeftBack, "HLb", "TpBL", "HeightLeftBack"},
    {channel::id::HeightRightBack, 17, channel::HeightRightBack, "HRb", "TpBR", "HeightRightBack"},
    {channel::id::LeftCenter, 18, channel::LeftCenter, "LC", "LC", "LeftCenter"},
    {channel::id::RightCenter, 19, channel::RightCenter, "RC", "RC", "RightCenter"},
    {channel::id::LFE2, 20, channel::LFE2, "LFE2", "LFE2", "LFE2"},
    {channel::id::BottomLeft, 21, channel::BottomLeft, "BL", "BtFL", "BottomLeft"},
    {channel::id::BottomRight, 22, channel::BottomRight, "BR", "BtFR", "BottomRight"},
    {channel::id::BottomCenter, 23, channel::BottomCenter, "BC", "BtFC", "BottomCenter"},
    {channel::id::Ambisonics, 24, channel::Ambisonics, "ambi", "ambi", "Ambisonics"},
};

std::string swapped_case(std::string text) {
    for (char& c : text) {
        const auto u = static_cast<unsigned char>(c);
        c = static_cast<char>(std::isupper(u) ? std::tolower(u) : std::toupper(u));
    }
    return text;
}

void is_found_by(const std::string& name, std::uint32_t id) {
    SCOPED_TRACE(name);
    for (const auto& spelled : {name, swapped_case(name)}) {
        Channel found;
        EXPECT_TRUE(Channel::create(found, spelled));
        EXPECT_EQ(found.id(), id);
    }
}

TEST(Channel, EachPositionHasItsIdAndNames) {
    ASSERT_EQ(std::size(rows), channel::id::count);
    for (const Row& row : rows) {
        SCOPED_TRACE(row.full);
        EXPECT_EQ(row.id, row.number);
        const Channel made = Channel::create(row.id);
        EXPECT_EQ(made, row.constant);
        EXPECT_EQ(made.id(), row.number);
        EXPECT_TRUE(made.valid());
        EXPECT_STREQ(made.short_name(), row.vela);
        EXPECT_STREQ(made.full_name(), row.full);
        EXPECT_EQ(text_of(made), row.full);
        const NamingSchema nhk("NHK");
        EXPECT_STREQ(made.short_name(), row.nhk);
        EXPECT_STREQ(row.constant.full_name(), row.full);
    }
}

TEST(Channel, EachPositionIsFoundByItsNamesInAnyCase) {
    for (const Row& row : rows) {
        is_found_by(row.full, row.number);
        is_found_by(row.vela, row.number);
        const NamingSchema nhk("NHK");
        is_found_by(row.full, row.number);
        is_found_by(row.nhk, row.number);
    }
}

TEST(Channel, AllAreListedByAscendingId) {
    ASSERT_EQ(channel::all().size(), 25u);
    for (std::uint32_t id = 0; id < 25; ++id)
        EXPECT_EQ(channel::all()[id].id(), id);
}

TEST(Channel, TheConstantsCanBeUsedBeforeMain) {
    EXPECT_EQ(other::before_main.channel, channel::Ambisonics);
    EXPECT_STREQ(other::before_main.channel.full_name(), "Ambisonics");
    EXPECT_EQ(other::before_main.short_name, "Lb");
    EXPECT_EQ(other::before_main.nr_channels, 25u);
}

TEST(Channel, ADefaultOneIsInvalid) {
    const Channel none;
    EXPECT_FALSE(none.valid());
    EXPECT_EQ(none.id(), 25u);
    EXPECT_EQ(none.short_name(), nullptr);
    EXPECT_EQ(none.full_name(), nullptr);
    EXPECT_EQ(text_of(none), "Invalid");
    EXPECT_EQ(text_of(Channel::create(channel::id::None)), "Invalid");
}

TEST(Channel, BackAndBottomShareShortNamesAcrossTheSchemas) {
    const Channel back = Channel::create(static_cast<channel::id::Value>(7));
    Channel found;
    EXPECT_STREQ(back.full_name(), "LeftBack");
    EXPECT_STREQ(back.short_name(), "Lb");
    EXPECT_TRUE(Channel::create(found, "BL"));
    EXPECT_EQ(found, channel::BottomLeft);
    const NamingSchema nhk("NHK");
    EXPECT_STREQ(back.full_name(), "LeftBack");
    EXPECT_STREQ(back.short_name(), "BL");
    EXPECT_TRUE(Channel::create(found, "BL"));
    EXPECT_EQ(found, channel::LeftBack);
}

TEST(Channel, TheFirstLFEHasAnAliasInBothSchemas) {
    is_found_by("lf1", channel::id::LFE);
    Channel found = channel::Top;
    EXPECT_FALSE(Channel::create(found, "LFE1"));
    EXPECT_EQ(found, channel::Top);
    const NamingSchema nhk("NHK");
    is_found_by("lf1", channel::id::LFE);
    is_found_by("LFE1", channel::id::LFE);
    is_found_by("LFE", channel::id::LFE);
}

TEST(Channel, NamesOfTheOtherSchemaAndPartsOfNamesAreUnknown) {
    for (const char* name : {"", "fc", "FLc", "Lef", "Leftt", " L", "L ", "x", "Invalid", "25"}) {
        SCOPED_TRACE(name);
        Channel found = channel::Top;
        EXPECT_FALSE(Channel::create(found, name));
        EXPECT_EQ(found, channel::Top);
    }
    const NamingSchema nhk("NHK");
    Channel found;
    EXPECT_TRUE(Channel::create(found, "fc"));
    EXPECT_EQ(found, channel::Center);
    for (const char* name : {"", "L", "Lb", "HLs"})
        EXPECT_FALSE(Channel::create(found, name)) << name;
    EXPECT_EQ(found, channel::Center);
}

TEST(Channel, AnIdOutsideTheTableHasNoNames) {
    constexpr auto id = static_cast<channel::id::Value>(100);
    const Channel made = Channel::create(id);
    EXPECT_TRUE(made.valid());
    EXPECT_EQ(made.id(), 100u);
    EXPECT_EQ(made.short_name(), nullptr);
    EXPECT_EQ(made.full_name(), nullptr);
    EXPECT_EQ(text_of(made), "100");

    Channel found = channel::Top;
    EXPECT_FALSE(Channel::create(found, id));
    EXPECT_FALSE(Channel::create(found, channel::id::None));
    EXPECT_EQ(found, channel::Top);
    EXPECT_TRUE(Channel::create(found, channel::id::LFE2));
    EXPECT_EQ(found, channel::LFE2);
}

TEST(Channel, SchemasAreKnownByTheirExactName) {
    for (const char* name : {"nhk", "Vela", "VELA", "", "NHK ", "other"}) {
        const NamingSchema unknown(name);
        EXPECT_FALSE(unknown.known()) << name;
        EXPECT_STREQ(channel::Left.short_name(), "L");
    }
    const NamingSchema nhk("NHK");
    EXPECT_TRUE(nhk.known());
    EXPECT_FALSE(Channel::set_naming_schema("other"));
    EXPECT_STREQ(channel::Left.short_name(), "FLc");
    EXPECT_TRUE(Channel::set_naming_schema("vela"));
    EXPECT_STREQ(channel::Left.short_name(), "L");
}

TEST(Channel, IsOrderedById) {
    EXPECT_LT(channel::Left, channel::Right);
    EXPECT_LT(channel::Ambisonics, Channel());
    EXPECT_FALSE(channel::Left < channel::Left);
    // As signed numbers.
    EXPECT_LT(Channel::create(static_cast<channel::id::Value>(0xFFFFFFFF)), channel::Left);
}

TEST(Channel, CopiesAreIndependent) {
    Channel a = channel::Left;
    const Channel b = a;
    a = channel::Right;
    EXPECT_EQ(b, channel::Left);
    EXPECT_EQ(text_of(b), "Left");
    const auto& same = a;
    a = same;
    EXPECT_EQ(text_of(a), "Right");
}

}  // namespace
}  // namespace vela::api
