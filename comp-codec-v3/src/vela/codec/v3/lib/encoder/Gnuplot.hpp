#pragma once

#include <memory>
#include <string>
#include <vector>
#include <vela/Cache.hpp>
#include <vela/gnuplot/Plot.hpp>
#include <vela/gnuplot/Stream.hpp>

namespace vela::codec::v3::encoder {

/// A gnuplot file and the plot that is being collected for it; closed until it is created.
///
/// A file that cannot be opened takes what it is given and loses it: plots must not stop a run.
class Gnuplot {
public:
    using Plot = gnuplot::Plot<gnuplot::Stream>;

    /// Opens the file, with backslashes in its name made forward slashes.  A file that was open
    /// before is finished first.
    bool create(const std::string& name);
    /// Also begins a plot at once.
    bool create_with_plot(const std::string& name);

    /// Ends the plot in work and begins the next one.  The file must have been created.
    Plot& next_plot();
    /// The plot in work, or null.
    [[nodiscard]] Plot* plot() { return plot_ ? &*plot_ : nullptr; }
    [[nodiscard]] bool is_created() const { return stream_ != nullptr; }

    /// Begins a row with its place on the time line.
    void start(double value);
    void append(const std::vector<double>& values);
    /// Hands the row to the plot.
    void end_row();

private:
    std::shared_ptr<gnuplot::Stream> stream_;
    Cache<Plot> plot_;  // ends before its stream
    std::vector<double> row_;
};

}  // namespace vela::codec::v3::encoder
