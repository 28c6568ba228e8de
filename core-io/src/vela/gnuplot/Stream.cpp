#include <ctime>
#include <iomanip>
#include <ostream>
#include <vela/gnuplot/Stream.hpp>

namespace vela::gnuplot {

Stream::Stream(const file::Name& name) : name_(name), file_(name.str()) {
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    localtime_r(&now, &local);
    file_ << "#Created by core-io/src/vela/gnuplot/Stream on " << std::put_time(&local, "%c %Z")
          << std::endl;
}

Plot<Stream> Stream::plot(const std::string& pause) {
    return Plot<Stream>(*this, nr_plots_++, default_pause_(pause));
}

void Stream::write(std::string_view text) {
    file_ << text << std::flush;
}

std::string Stream::default_pause_(const std::string& pause) {
    return pause.empty() ? "mouse" : pause;
}

}  // namespace vela::gnuplot
