#pragma once

#include <cstddef>
#include <fstream>
#include <string>
#include <string_view>
#include <vela/file/Name.hpp>
#include <vela/gnuplot/Plot.hpp>

namespace vela::gnuplot {

/// A text file that gnuplot reads: a comment that says when it was made, then plot after plot.
///
/// Such a file is there for diagnosis and must never stop a run: if it cannot be opened or
/// written, its text is lost without a word.  Used by one thread at a time.
class Stream {
public:
    /// Opens the file anew and writes its first line.
    explicit Stream(const file::Name& name);
    Stream(const Stream&) = delete;
    Stream& operator=(const Stream&) = delete;

    /// The next plot of the file, which must end before the stream does.  An empty `pause` waits
    /// for the mouse.
    [[nodiscard]] Plot<Stream> plot(const std::string& pause);

    /// Appends `text` and hands it to the system at once: a whole plot can be looked at while the
    /// run goes on.
    void write(std::string_view text);

    [[nodiscard]] const file::Name& name() const { return name_; }
    /// Plots begun so far.
    [[nodiscard]] std::size_t nr_plots() const { return nr_plots_; }

private:
    static std::string default_pause_(const std::string& pause);

    file::Name name_;
    std::ofstream file_;
    std::size_t nr_plots_ = 0;
};

}  // namespace vela::gnuplot
