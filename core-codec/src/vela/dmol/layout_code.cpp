#include <vela/CarrierRecipe.hpp>
#include <vela/dmol/layout_code.hpp>

namespace vela::dmol {

namespace {

constexpr std::uint32_t mono = 0x4;
constexpr std::uint32_t testmix2 = 0x804;
constexpr std::uint32_t testmix3 = 0x1804;

bool takes_any_carrier(std::uint32_t input) {
    return input == mono || input == testmix2 || input == testmix3;
}

}  // namespace

bool layout_code(std::uint32_t& code, const api::SpeakerLayout& input,
                 const api::SpeakerLayout& carrier) {
    const CarrierRecipe* recipe = find_recipe(input);
    if (!recipe) return false;
    if (carrier.mask() != recipe->carrier && !takes_any_carrier(input.mask())) return false;
    code = recipe->code;
    return true;
}

}  // namespace vela::dmol
