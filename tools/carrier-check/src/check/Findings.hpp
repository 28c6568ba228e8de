#pragma once

#include <check/CarrierReport.hpp>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>
#include <vela/carrier/Comparison.hpp>

namespace check {

/// All that a run found out.
struct Findings {
    std::string layout;  ///< input layout that the records name
    std::size_t frame_size = 0;
    std::uint32_t sample_rate = 0;
    std::vector<CarrierReport> carriers;
    std::vector<std::string> problems;  ///< those that are no single carrier's
    /// Errors of the rebuilt channels, if there were originals.
    std::optional<vela::carrier::Comparison> comparison;

    [[nodiscard]] bool all_well() const {
        for (const auto& carrier : carriers)
            if (!carrier.problems.empty()) return false;
        return problems.empty();
    }
};

}  // namespace check
