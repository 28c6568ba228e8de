#include <vela/codec/v3/lib/encoder/Gnuplot.hpp>
#include <vela/file/Name.hpp>

namespace vela::codec::v3::encoder {

bool Gnuplot::create(const std::string& name) {
    file::Name slashed;
    slashed << name;
    plot_.reset();  // writes itself into the file before
    stream_ = std::make_shared<gnuplot::Stream>(slashed);
    return stream_ != nullptr;
}

bool Gnuplot::create_with_plot(const std::string& name) {
    if (!create(name)) return false;
    next_plot();
    return true;
}

Gnuplot::Plot& Gnuplot::next_plot() {
    return plot_.set(stream_->plot(""));
}

void Gnuplot::start(double value) {
    if (plot_) row_.assign(1, value);
}

void Gnuplot::append(const std::vector<double>& values) {
    if (plot_) row_.insert(row_.end(), values.begin(), values.end());
}

void Gnuplot::end_row() {
    if (plot_) plot_->add_row(row_);
}

}  // namespace vela::codec::v3::encoder
