#include <vela/CarrierRecipe.hpp>
#include <vela/codec/v3/lib/encoder/Encoder.hpp>
#include <vela/codec/v3/lib/encoder/Factory.hpp>

namespace vela::codec::v3::encoder {

bool create(std::shared_ptr<IEncoder>& result, const api::SpeakerLayout& input,
            const api::SpeakerLayout& output, unsigned nr_threads) {
    const CarrierRecipe* const recipe = find_recipe(input);
    if (!recipe || recipe->carrier != output.mask()) return false;
    result = std::make_shared<Encoder>(input, output, nr_threads);
    return true;
}

}  // namespace vela::codec::v3::encoder
