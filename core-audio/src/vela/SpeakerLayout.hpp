#pragma once

#include <string>
#include <string_view>
#include <vector>
#include <vela/api/SpeakerLayout.hpp>

namespace vela {

/// A channel layout that may have names.
///
/// The registry of named layouts is made on first use, also before `main`, and only read from then
/// on, by any thread.
class SpeakerLayout : public api::SpeakerLayout {
public:
    using api::SpeakerLayout::SpeakerLayout;

    /// All named layouts, in the order in which help lists them and names are searched.
    [[nodiscard]] static const std::vector<SpeakerLayout>& all();

    /// Names of this layout, the main one first; empty for a layout outside the registry.
    [[nodiscard]] const std::vector<std::string>& names() const;
};

/// Finds a layout by name.
///
/// Case does not matter, one " ", one "_" and one "-" are passed over, and "p" may stand for the
/// point before a 0 or 1: "5p1", "surround 5.1" and "5.1-Surround" are one.  Only a small "p" is a
/// point.  False, with `out` untouched, for an unknown name.
[[nodiscard]] bool translate(SpeakerLayout& out, std::string_view name);

}  // namespace vela
