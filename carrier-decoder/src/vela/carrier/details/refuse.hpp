#pragma once

#include <sstream>
#include <string>

namespace vela::carrier::details {

/// Writes the reason into `why`; false, to be handed upward.
template <typename... Parts>
bool refuse(std::string& why, const Parts&... parts) {
    std::ostringstream text;
    (text << ... << parts);
    why = text.str();
    return false;
}

}  // namespace vela::carrier::details
