#pragma once

#include <check/CarrierReport.hpp>
#include <check/Track.hpp>
#include <cstddef>
#include <memory>
#include <vela/CarrierRecipe.hpp>

namespace check {

/// One carrier channel on its way through the check: where its samples are and what it should hold.
struct Lane {
    std::shared_ptr<Track> track;
    std::size_t channel = 0;                            ///< of the file
    const vela::CarrierRecipe::Group* group = nullptr;  ///< null if it could not be told
    CarrierReport report;
    std::size_t nr_problem_blocks = 0;
    bool compared = false;   ///< with the originals
    bool explained = false;  ///< what happened to the whole carrier is printed
    bool ended = false;

    [[nodiscard]] std::span<const int> samples() const { return track->samples(channel); }
};

}  // namespace check
