#pragma once

#include <array>
#include <cstdint>
#include <string_view>
#include <vela/bnb/details/bytes.hpp>

namespace vela::bnb::details {

/// Appends the low bytes of `value` to `sink`, as many as `Tag` is wide.
///
/// A sink is anything that can append bytes: a `file::String`, a string.
template <typename Sink, typename T, typename Tag, typename Order>
void serialize(Sink& sink, const T& value, Tag tag, Order order) {
    std::array<char, Traits<Tag>::width> bytes;
    put_bytes(bytes.data(), static_cast<std::uint64_t>(value), tag, order);
    sink.append(std::string_view(bytes.data(), bytes.size()));
}

}  // namespace vela::bnb::details
