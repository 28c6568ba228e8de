#include <app/Settings.hpp>
#include <vela/Strange.hpp>
#include <vela/file/exist.hpp>

namespace app {

namespace {

template <typename T>
void print(std::ostream& out, const char* key, const T& value) {
    out << '{' << key << ": " << value << '}' << std::endl;
}

template <typename T>
void print(std::ostream& out, const char* key, const std::optional<T>& value) {
    if (value) out << "{*" << key << ": " << *value << '}' << std::endl;
}

}  // namespace

bool Settings::set(const Options& from, std::ostream& messages) {
    options = from;
    profile = from.profile;
    input_speaker_layout = from.speaker_layout;
    downmix_filename = from.downmix_filename;

    if (!check_inputs_(messages)) return false;
    channels = from.channels;
    arguments = from.arguments;
    sample_rate = from.sample_rate;
    frame_size = from.frame_size;
    frame_count = from.frame_count;

    if (!set_lowpass_(messages)) return false;
    progress = from.progress;
    nr_threads = from.nr_threads;
    output_fn = from.output_fn;
    output_format = from.output_format;
    data_fn = from.data_fn;
    multi_channel_export = from.multi_channel_export;
    naming_schema = from.naming_schema;
    return true;
}

bool Settings::check_inputs_(std::ostream& messages) const {
    bool all_found = true;
    for (const Channel& input : options.channels) {
        if (vela::file::exist(input.filename)) continue;
        messages << "ERROR: Input file \"" << input.filename << "\" does not exist." << std::endl;
        all_found = false;
    }
    if (!all_found) messages << "ERROR: Not all input files could be found." << std::endl;
    return all_found;
}

bool Settings::set_lowpass_(std::ostream& messages) {
    using vela::filter::lowpass::Type;
    vela::Strange text(options.lowpass);
    lowpass_type = Type::None;
    lowpass_freq = 0;

    if (options.lowpass.empty() || text.pop_if("none")) return true;
    if (text.pop_if("fir")) {
        lowpass_type = Type::FIR;
    } else if (text.pop_if("iir")) {
        lowpass_type = Type::IIR;
    } else {
        messages << "ERROR: Unknown lowpass filter " << options.lowpass << std::endl;
        return false;
    }
    vela::Strange inner;
    return text.pop_bracket(inner, "()") && inner.pop_int(lowpass_freq, 10);
}

void Settings::stream(std::ostream& out) const {
    print(out, "profile", profile);
    print(out, "input_speaker_layout", input_speaker_layout);
    print(out, "downmix_filename", downmix_filename);
    print(out, "sample_rate", sample_rate);
    print(out, "frame_size", frame_size);
    print(out, "frame_count", frame_count);
    print(out, "dither_bits", dither_bits);
    print(out, "nr_threads", nr_threads);
    print(out, "output_fn", output_fn);
    print(out, "output_format", output_format);
    print(out, "data_fn", data_fn);
    print(out, "multi_channel_export", multi_channel_export);

    out << "Encoder arguments:" << std::endl;
    for (const std::string& argument : arguments)
        out << "\t{argument: " << argument << '}' << std::endl;
    out << "Input channels:" << std::endl;
    for (const Channel& input : channels)
        out << "\t{channel: " << input.channel.channel << "}{variant: " << input.channel.variant
            << "}{filename: " << input.filename << '}' << std::endl;
}

}  // namespace app
