#pragma once

#include <vela/api/Channel.hpp>

namespace vela::api {

/// Sets the naming schema for a test; "vela" is in force again afterwards.
class NamingSchema {
public:
    explicit NamingSchema(std::string_view schema) : known_(Channel::set_naming_schema(schema)) {}
    NamingSchema(const NamingSchema&) = delete;
    NamingSchema& operator=(const NamingSchema&) = delete;
    ~NamingSchema() { static_cast<void>(Channel::set_naming_schema("vela")); }

    [[nodiscard]] bool known() const { return known_; }

private:
    bool known_;
};

}  // namespace vela::api
