#pragma once

#include <memory>
#include <string>
#include <vela/gvm/api/Learner.hpp>

namespace vela::gvm {

/// Makes the learner of that name: "ref", exact and slow, or "fast".
///
/// Exists for `T` double and deltas of one or two integers.
/// Errors:  false for another name; the pointer is then null.
template <typename T, typename Iterator>
[[nodiscard]] bool create(std::shared_ptr<api::Learner<T, Iterator>>& learner,
                          const std::string& name);

}  // namespace vela::gvm
