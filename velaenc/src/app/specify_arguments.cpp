#include <app/specify_arguments.hpp>
#include <functional>

namespace app {

namespace {

using Take = std::function<void(const std::string& value)>;

/// How an option takes its value: the first one stays, a second use complains.
class Once {
public:
    Once(Options& options, std::ostringstream& complaints)
        : options_(options), complaints_(complaints) {}

    Take text(std::string Options::*field, const char* what) const {
        return [=, *this](const std::string& value) {
            std::string& stored = options_.*field;
            if (!stored.empty())
                complain_(what, stored);
            else
                stored = value;
        };
    }

    template <typename T>
    Take integer(std::optional<T> Options::*field, const char* what) const {
        return optional_(field, what,
                         [](const std::string& value) { return static_cast<T>(std::stoi(value)); });
    }

    Take filename(std::optional<vela::file::Name> Options::*field, const char* what) const {
        return optional_(field, what, to_filename);
    }

    Take frame_count() const {
        return [*this](const std::string& value) {
            if (options_.frame_count != -1)
                complain_("Frame count", options_.frame_count);
            else
                options_.frame_count = std::stoi(value);
        };
    }

    Take multi_channel_export() const {
        return [*this](const std::string& value) {
            auto& stored = options_.multi_channel_export;
            if (stored)
                complain_("Multi channel export", *stored);
            else if (value == "true" || value == "1")
                stored = true;
            else if (value == "false" || value == "0")
                stored = false;
            else
                complaints_ << "Could not understand specified multi-channel export value \""
                            << value << "\"\n";
        };
    }

private:
    template <typename T, typename Convert>
    Take optional_(std::optional<T> Options::*field, const char* what, Convert convert) const {
        return [=, *this](const std::string& value) {
            std::optional<T>& stored = options_.*field;
            if (stored)
                complain_(what, *stored);
            else
                stored = convert(value);
        };
    }

    template <typename T>
    void complain_(const char* what, const T& stored) const {
        complaints_ << what << " was already set to \"" << stored << "\"\n";
    }

    Options& options_;
    std::ostringstream& complaints_;
};

constexpr const char* output_help =
    "Output filename prefix and optional file format, as <format>:<filename>. The available file "
    "formats are dependent on the used encoder profile, see the profile specific help for more "
    "information. Depending on the file format filename prefix, a relevant file extension and "
    "channel naming will be appended.";

constexpr const char* argument_help =
    "Argument for the encoder: <key>(<value>);<key>(<value>);... List the arguments for a specific "
    "encoder profile:\"velaenc -p <encoder-profile> help\"; ";

}  // namespace

void specify_arguments(vela::cli::Arguments& arguments, Options& o,
                       std::ostringstream& complaints) {
    const Once once(o, complaints);
    const auto flag = [&](char short_name, const char* name, const char* help,
                          std::optional<bool>& target) {
        arguments.add_switch(short_name, name, help, [&target] { target = true; });
    };
    const auto option = [&](char short_name, const char* name, const char* help, Take take) {
        arguments.add_option(short_name, name, help, std::move(take));
    };

    flag('h', "help", "Print this help", o.help);
    flag('v', "version", "Print version info", o.version);
    option('s', "naming_scheme", "Naming scheme for decoder [vela, NHK], default = vela",
           [&o](const std::string& value) { o.naming_schema = value; });
    option('p', "profile", "Encoder profile [Vela-Rx, Vela-Codec, PS4]",
           once.text(&Options::profile, "Profile"));
    option('a', "argument", argument_help, [&o, &complaints](const std::string& value) {
        if (!o.add_argument(value)) complaints << "Could not understand argument " << value << '\n';
    });
    option('l', "layout", "Input speaker layout",
           once.text(&Options::speaker_layout, "Speaker layout"));
    option('L', "lowpass",
           "Lowpass filter to be applied on input audio: none | fir(freq) | iir(freq)",
           once.text(&Options::lowpass, "Lowpass filter"));
    option('i', "input", "Input channel as <channel>:<filename>",
           [&o, &complaints](const std::string& value) {
               if (!o.add_channel(value))
                   complaints << "Could not understand input channel " << value << '\n';
           });
    option('d', "downmix", "Downmix coefficients",
           once.filename(&Options::downmix_filename, "Downmix filename"));
    option('n', "frame_count", "Nr frames to encode, -1 for all", once.frame_count());
    option('r', "sample_rate", "Sample rate", once.integer(&Options::sample_rate, "Sample rate"));
    option('f', "frame_size", "Frame size", once.integer(&Options::frame_size, "Frame size"));
    option('o', "output", output_help, [&o, &complaints](const std::string& value) {
        if (!o.set_output_format_and_fn(value))
            complaints << "Could not set output file and/or format";
    });
    option('O', "data output", "Data output filename.",
           once.filename(&Options::data_fn, "Data filename"));
    option('m', "multi-channel-export", "Export to a multi-channel wav file (true, 1, false, 0)",
           once.multi_channel_export());
    option('j', "threads", "Nr threads per pump", once.integer(&Options::nr_threads, "Nr threads"));
    option('P', "progress", "Progress max", once.integer(&Options::progress, "Progress max"));
}

}  // namespace app
