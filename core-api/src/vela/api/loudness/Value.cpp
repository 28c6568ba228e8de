#include <vela/api/loudness/Value.hpp>
#include <vela/numeric/truncate.hpp>

namespace vela::api::loudness {

struct Value::Record {
    Parameter parameter = Parameter::None;
    std::uint32_t dimension = 0;
    std::int32_t data = 0;
};

Value::Value() : record_(std::make_unique<Record>()) {}
Value::Value(const Value& other) : record_(std::make_unique<Record>(*other.record_)) {}
Value::~Value() = default;

Value& Value::operator=(const Value& other) {
    *record_ = *other.record_;
    return *this;
}

Parameter Value::parameter() const {
    return record_->parameter;
}
void Value::set_parameter(Parameter parameter) {
    record_->parameter = parameter;
}
std::uint32_t Value::dimension() const {
    return record_->dimension;
}
void Value::set_dimension(std::uint32_t dimension) {
    record_->dimension = dimension;
}
double Value::data() const {
    return record_->data / 10.0;
}
void Value::set_data(double data) {
    record_->data = numeric::truncate_to_int32(data * 10.0);
}

}  // namespace vela::api::loudness
