#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

/// Values as text at the end of a buffer.
///
/// Reals have six significant digits, as an output stream writes them by default; no locale can
/// put a comma where gnuplot expects a point.
namespace vela::gnuplot::details {

void append(std::string& buffer, std::int32_t value);
void append(std::string& buffer, std::size_t value);
void append(std::string& buffer, double value);
/// In double quotes.  Nothing is escaped: a quote inside the text ends it for gnuplot.
void append(std::string& buffer, std::string_view text);

}  // namespace vela::gnuplot::details
