#pragma once

#include <memory>
#include <string>
#include <vector>
#include <vela/codec/v3/lib/encode/gvm/Interface.hpp>

namespace vela::codec::v3::encode::gvm {

/// The clustering for a group of `nr_channels` channels, 2 or 3; null for any other count.
///
/// An unknown implementation name gives an object that is not `valid`.
[[nodiscard]] std::shared_ptr<Interface> create(const std::string& implementation,
                                                unsigned nr_channels,
                                                const std::vector<int>& deltas, bool update_all,
                                                bool force_origin, bool randomize);

}  // namespace vela::codec::v3::encode::gvm
