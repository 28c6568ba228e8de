#include <sstream>
#include <vela/codec/v3/lib/encoder/Plots.hpp>

namespace vela::codec::v3::encoder {

namespace {

using encode::Group;

// Deltas along a line, and the centers among them.
void draw_1d(Gnuplot::Plot& plot, const Group& winner) {
    plot.title = "";
    plot.datas.back().style = "points";
    for (const int delta : winner.deltas)
        plot.add_row(delta, 0.0);
    plot.new_data().style = "circles";
    for (const auto& center : winner.centers_1d)
        plot.add_row(center[0], 0.0);
}

// Pairs of deltas in the plane, the centers among them, and a stroke from each pair to its center.
void draw_2d(Gnuplot::Plot& plot, const Group& winner) {
    const auto& deltas = winner.deltas;
    plot.title = "";
    plot.datas.back().style = "points";
    for (std::size_t i = 0; i + 1 < deltas.size(); i += 2)
        plot.add_row(deltas[i], deltas[i + 1]);
    plot.new_data().style = "circles";
    for (const auto& center : winner.centers_2d)
        plot.add_row(center[0], center[1]);
    plot.new_data().style = "lines";
    for (std::size_t t = 0; t < winner.ixs.size(); ++t) {
        const auto& center = winner.centers_2d[winner.ixs[t]];
        plot.add_row(center[0], center[1]);
        plot.add_row(deltas[2 * t], deltas[2 * t + 1]);
        plot.add_row({});
    }
}

std::string name_of(const api::Channel& channel) {
    std::ostringstream name;
    channel.stream(name);
    return name.str();
}

std::string short_name_of(const api::Channel& channel) {
    return channel.short_name() ? channel.short_name() : std::to_string(channel.id());
}

}  // namespace

bool Plots::set_option(const std::string& key, const std::string& value) {
    if (key == "output.dbrms") return dbrms_.create_with_plot(value);
    if (key == "output.dbpeak") return dbpeak_.create_with_plot(value);
    if (key == "output.crest") return crest_.create_with_plot(value);
    if (key != "output.centers") return false;
    centers_name_ = value;
    return true;
}

void Plots::start_frame(const api::SampleSpan& span) {
    if (span.start == 0) header_ = {"Start of frame"};
    for (Gnuplot* const gnuplot : {&dbrms_, &dbpeak_, &crest_})
        gnuplot->start(static_cast<double>(span.start));
}

bool Plots::add(const Group& winner) {
    const auto& carrier = winner.frame.key.channel;
    if (winner.span.start == 0)
        for (const auto& orig : winner.origs)
            header_.push_back(name_of(orig.key.channel) + " in " + name_of(carrier));
    dbrms_.append(winner.dbrms);
    dbpeak_.append(winner.dbpeak);
    crest_.append(winner.crest);
    return centers_name_.empty() || add_centers_(winner);
}

bool Plots::add_centers_(const Group& winner) {
    const auto& carrier = winner.frame.key;
    Gnuplot& gnuplot = centers_plots_[carrier];
    const std::string name = centers_name_ + short_name_of(carrier.channel) + ".gnuplot";
    if (!gnuplot.is_created() && !gnuplot.create(name)) return false;
    switch (winner.active.size()) {
        case 0:
        case 1:
            return true;
        case 2:
            draw_1d(gnuplot.next_plot(), winner);
            return true;
        case 3:
            draw_2d(gnuplot.next_plot(), winner);
            return true;
        default:
            return false;
    }
}

bool Plots::end_frame(const api::SampleSpan& span) {
    if (span.start == 0 && !add_header_()) return false;
    for (Gnuplot* const gnuplot : {&dbrms_, &dbpeak_, &crest_})
        gnuplot->end_row();
    return true;
}

bool Plots::add_header_() {
    for (Gnuplot* const gnuplot : {&dbrms_, &dbpeak_, &crest_})
        if (gnuplot->plot() && !gnuplot->plot()->add_header(header_)) return false;
    return true;
}

}  // namespace vela::codec::v3::encoder
