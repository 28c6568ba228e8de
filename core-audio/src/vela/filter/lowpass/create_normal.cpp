#include <vela/filter/lowpass/create_normal.hpp>
#include <vela/filter/lowpass/fir/Normal.hpp>
#include <vela/filter/lowpass/fir/get_coefs.hpp>
#include <vela/filter/lowpass/iir/Normal.hpp>
#include <vela/filter/lowpass/iir/get_coefs.hpp>
#include <vela/filter/lowpass/none/Normal.hpp>

namespace vela::filter::lowpass {

namespace {

template <typename Filter, typename Coefs>
std::shared_ptr<Filter> create_from(const Coefs* coefs) {
    return coefs ? std::make_shared<Filter>(*coefs) : nullptr;
}

}  // namespace

template <typename T>
typename Normal_itf<T>::Ptr create_normal(Type type, unsigned freq, unsigned sample_rate) {
    switch (type) {
        case Type::None:
            return std::make_shared<none::Normal<T>>();
        case Type::FIR:
            return create_from<fir::Normal<T>>(fir::get_coefs(freq, sample_rate));
        case Type::IIR:
            return create_from<iir::Normal<T>>(iir::get_coefs(freq, sample_rate));
    }
    return nullptr;
}

template Normal_itf<double>::Ptr create_normal<double>(Type, unsigned, unsigned);

}  // namespace vela::filter::lowpass
