#pragma once

#include <utility>
#include <vector>

namespace vela::filter {

/// Filters in a row, each with a gain behind it.
template <typename F>
class Cascade {
public:
    struct ScaledFilter {
        double gain;
        F filter;
    };

    /// Puts a filter at the end of the row.
    void add(double gain, F filter) { sections_.push_back({gain, std::move(filter)}); }

    /// One sample in, one out.
    double operator()(double x) {
        for (ScaledFilter& section : sections_)
            x = section.gain * section.filter(x);
        return x;
    }

private:
    std::vector<ScaledFilter> sections_;
};

}  // namespace vela::filter
