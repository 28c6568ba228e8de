#include <algorithm>
#include <initializer_list>
#include <iterator>
#include <vela/CarrierRecipe.hpp>

namespace vela {

namespace {

using api::channel::id::Value;
using Group = CarrierRecipe::Group;

constexpr Value L = Value::Left;
constexpr Value R = Value::Right;
constexpr Value C = Value::Center;
constexpr Value LFE = Value::LFE;
constexpr Value Ls = Value::LeftSurround;
constexpr Value Rs = Value::RightSurround;
constexpr Value Cs = Value::CenterSurround;
constexpr Value Lb = Value::LeftBack;
constexpr Value Rb = Value::RightBack;
constexpr Value HL = Value::HeightLeft;
constexpr Value HR = Value::HeightRight;
constexpr Value HC = Value::HeightCenter;
constexpr Value T = Value::Top;
constexpr Value HLs = Value::HeightLeftSurround;
constexpr Value HRs = Value::HeightRightSurround;

// Members that go into a carrier channel of another name.
template <typename... Members>
constexpr Group into(Value carrier, Members... members) {
    return {carrier, {members...}, sizeof...(members)};
}

// The first member is the carrier.
template <typename... Others>
constexpr Group g(Value carrier, Others... others) {
    return into(carrier, carrier, others...);
}

struct Row {
    std::uint32_t input;
    std::uint32_t carrier;
    std::uint32_t code;
    std::array<Group, 8> groups{};
    std::size_t nr_groups;

    constexpr Row(std::uint32_t in, std::uint32_t out, std::uint32_t layout_code,
                  std::initializer_list<Group> list)
        : input(in), carrier(out), code(layout_code), nr_groups(list.size()) {
        std::copy(list.begin(), list.end(), groups.begin());
    }
};

// The groups in which Center comes before Right and those in which it comes after are both meant:
// the order is that in which candidates are made.
// clang-format off
constexpr Row rows[] = {
    //  input      mask    carrier code groups
    /* 2.0       */ {   0x3,   0x4,  64, {into(C, L, R)}},
    /* 1.0       */ {   0x4,   0x4, 128, {g(C)}},
    /* testmix2  */ { 0x804,   0x4, 129, {g(C, HC)}},
    /* testmix3  */ {0x1804,   0x4, 130, {g(C, HC, T)}},

    /* lcr       */ {   0x7,   0x3,  66, {g(L, C), g(R, C)}},
    /* quad      */ {  0x33,   0x3,  12, {g(L, Ls), g(R, Rs)}},
    /* 5.0       */ {  0x37,   0x3,   1, {g(L, Ls, C), g(R, Rs, C)}},
    /* lcrs      */ {  0x47,   0x3,   8, {g(L, C, Cs), g(R, C, Cs)}},
    /* vela6.0   */ { 0x633,   0x3,  11, {g(L, Ls, HL), g(R, Rs, HR)}},

    /* 5.1       */ {  0x3F,   0xB,   2, {g(L, Ls, C), g(R, Rs, C), g(LFE)}},

    /* 8.0       */ {0x6633,  0x33,  20, {g(L, HL), g(R, HR), g(Ls, HLs), g(Rs, HRs)}},

    /* 6.0       */ {  0x77,  0x37,  67, {g(L), g(R), g(C), g(Ls, Cs), g(Rs, Cs)}},
    /* 7.0       */ { 0x1B7,  0x37,  69, {g(L), g(C), g(R), g(Ls, Lb), g(Rs, Rb)}},
    /* 9.0       */ {0x6637,  0x37,  71, {g(L, HL), g(C), g(R, HR), g(Ls, HLs), g(Rs, HRs)}},
    /* 10.0      */ {0x7637,  0x37,  72, {g(L, HL, T), g(C), g(R, HR, T), g(Ls, HLs, T), g(Rs, HRs, T)}},
    /* 11.0      */ {0x7E37,  0x37,  73, {g(L, HL, T), g(C, HC), g(R, HR, T), g(Ls, HLs, T), g(Rs, HRs, T)}},

    /* 6.1       */ {  0x7F,  0x3F,  68, {g(L), g(R), g(C), g(Ls, Cs), g(Rs, Cs), g(LFE)}},
    /* 7.1       */ { 0x1BF,  0x3F,  70, {g(L), g(C), g(R), g(Ls, Lb), g(Rs, Rb), g(LFE)}},
    /* height7.1 */ { 0x63F,  0x3F,  15, {g(L, HL), g(C), g(R, HR), g(Ls), g(Rs), g(LFE)}},
    /* 9.1       */ {0x663F,  0x3F,  30, {g(L, HL), g(C), g(R, HR), g(Ls, HLs), g(Rs, HRs), g(LFE)}},
    /* 10.1      */ {0x763F,  0x3F,  40, {g(L, HL, T), g(C), g(R, HR, T), g(Ls, HLs, T), g(Rs, HRs, T), g(LFE)}},
    /* 11.1      */ {0x7E3F,  0x3F,  50, {g(L, HL, T), g(C, HC), g(R, HR, T), g(Ls, HLs, T), g(Rs, HRs, T), g(LFE)}},

    /* 11.0b     */ {0x67B7, 0x1B7,  74, {g(L, HL), g(C), g(R, HR), g(Ls, HLs), g(Rs, HRs), g(Lb), g(Rb)}},
    /* 12.0      */ {0x77B7, 0x1B7,  76, {g(L, HL, T), g(C), g(R, HR, T), g(Ls, HLs, T), g(Rs, HRs, T), g(Lb), g(Rb)}},
    /* 13.0      */ {0x7FB7, 0x1B7,  78, {g(L, HL, T), g(C, HC), g(R, HR, T), g(Ls, HLs, T), g(Rs, HRs, T), g(Lb), g(Rb)}},

    /* height9.1 */ { 0x7BF, 0x1BF,  75, {g(L, HL), g(C), g(R, HR), g(Ls), g(Rs), g(Lb), g(Rb), g(LFE)}},
    /* 11.1b     */ {0x67BF, 0x1BF,  54, {g(L, HL), g(C), g(R, HR), g(Ls, HLs), g(Rs, HRs), g(Lb), g(Rb), g(LFE)}},
    /* 12.1      */ {0x77BF, 0x1BF,  77, {g(L, HL, T), g(C), g(R, HR, T), g(Ls, HLs, T), g(Rs, HRs, T), g(Lb), g(Rb), g(LFE)}},
    /* 13.1      */ {0x7FBF, 0x1BF,  62, {g(L, HL, T), g(C, HC), g(R, HR, T), g(Ls, HLs, T), g(Rs, HRs, T), g(Lb), g(Rb), g(LFE)}},
};
// clang-format on

constexpr std::array<CarrierRecipe, std::size(rows)> recipes = [] {
    std::array<CarrierRecipe, std::size(rows)> views;
    std::ranges::transform(rows, views.begin(), [](const Row& row) {
        return CarrierRecipe{row.input, row.carrier, row.code,
                             std::span(row.groups).first(row.nr_groups)};
    });
    return views;
}();

}  // namespace

const CarrierRecipe* find_recipe(const api::SpeakerLayout& input) {
    const auto at = std::ranges::find(recipes, input.mask(), &CarrierRecipe::input);
    return at == recipes.end() ? nullptr : at;
}

std::span<const CarrierRecipe> carrier_recipes() {
    return recipes;
}

}  // namespace vela
