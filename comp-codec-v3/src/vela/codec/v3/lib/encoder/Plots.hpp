#pragma once

#include <map>
#include <string>
#include <vector>
#include <vela/api/ChannelVariant.hpp>
#include <vela/api/SampleSpan.hpp>
#include <vela/codec/v3/lib/encode/Group.hpp>
#include <vela/codec/v3/lib/encoder/Gnuplot.hpp>

namespace vela::codec::v3::encoder {

/// The diagnostic plots of a run: error figures over time, and deltas with their centers.
class Plots {
public:
    /// "output.dbrms", "output.dbpeak", "output.crest" open a file; "output.centers" is a prefix,
    /// with one file per carrier channel.  False for any other key.
    [[nodiscard]] bool set_option(const std::string& key, const std::string& value);

    void start_frame(const api::SampleSpan& span);
    /// False if the winner cannot be drawn.
    [[nodiscard]] bool add(const encode::Group& winner);
    /// False if the columns of the first frame cannot be named.
    [[nodiscard]] bool end_frame(const api::SampleSpan& span);

private:
    bool add_centers_(const encode::Group& winner);
    bool add_header_();

    Gnuplot dbrms_;
    Gnuplot dbpeak_;
    Gnuplot crest_;
    std::vector<std::string> header_;  ///< names of the columns
    std::string centers_name_;
    std::map<api::ChannelVariant, Gnuplot> centers_plots_;
};

}  // namespace vela::codec::v3::encoder
