#pragma once

#include <check/Findings.hpp>
#include <check/Lane.hpp>
#include <check/Options.hpp>
#include <string>
#include <vector>
#include <vela/CarrierRecipe.hpp>

namespace check {

/// The carriers that the files hold.
struct Carriers {
    const vela::CarrierRecipe* recipe = nullptr;  ///< null if no record could be read
    std::vector<Lane> lanes;
};

/// Opens the files and finds out which carrier channel is where: an interleaved file by the order
/// of its layout, mono files by the channels that they hold, or by the end of their names where
/// that leaves a choice.  What cannot be used is told in `findings`.
[[nodiscard]] Carriers find_carriers(Findings& findings, const Options& options);

}  // namespace check
