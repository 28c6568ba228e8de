#pragma once

#include <cstdint>
#include <memory>
#include <vela/api/loudness/Parameter.hpp>

namespace vela::api::loudness {

/// One measurement, kept in tenths.
///
/// A default value has parameter `None`, dimension 0 and data 0; the metadata file gives
/// dimensions 1, 2 or 3.
class Value {
public:
    Value();
    Value(const Value& other);
    Value& operator=(const Value& other);
    ~Value();

    [[nodiscard]] Parameter parameter() const;
    void set_parameter(Parameter parameter);
    [[nodiscard]] std::uint32_t dimension() const;
    void set_dimension(std::uint32_t dimension);

    /// The stored tenths as a real.
    [[nodiscard]] double data() const;
    /// Keeps whole tenths, cut toward zero.
    void set_data(double data);

private:
    struct Record;

    std::unique_ptr<Record> record_;
};

}  // namespace vela::api::loudness
