#include <app/Options.hpp>
#include <app/profile/VelaCodec.hpp>
#include <array>
#include <iomanip>
#include <iostream>
#include <sstream>
#include <thread>
#include <vela/CarrierRecipe.hpp>
#include <vela/Strange.hpp>
#include <vela/audio/Quality.hpp>
#include <vela/codec/v3/lib/encoder/Factory.hpp>
#include <vela/file/read.hpp>

namespace app::profile {

namespace {

using vela::Strange;
using vela::codec::v3::encoder::QualityMetric;

struct Argument {
    const char* key;
    const char* help;
};

constexpr std::array<Argument, 13> VelaCodecArguments{{
    {"bitlines", "bitlines(<2 numbers separated by comma, expressing a range in [3,14]>)"},
    {"dither", "dither(true|false)"},
    {"centers_max", "centers_max(<max number of centers>)"},
    {"gvm.allow_merge", "gvm.allow_merge(true|false)"},
    {"gvm.update_all", "gvm.update_all(true|false)"},
    {"gvm.force_origin_center", "gvm.force_origin_center(true|false)"},
    {"gvm.implementation", "gvm.implementation(ref|fast)"},
    {"gvm.randomize_deltas", "gvm.randomize_deltas(true|false)"},
    {"output.dbrms", "output.dbrms(filename)"},
    {"output.dbpeak", "output.dbpeak(filename)"},
    {"output.crest", "output.crest(filename)"},
    {"output.centers", "output.centers(filename prefix)"},
    {"native_content", "native_content(true|false)"},
}};

bool pop_true_false_(bool& target, const Strange& text) {
    const std::string word = text.to_str();
    if (word != "true" && word != "false") return false;
    target = word == "true";
    return true;
}

template <typename T>
bool take(T& target, const vela::Any& value) {
    const T* const held = value.get<T>();
    if (held) target = *held;
    return held != nullptr;
}

template <typename T>
bool take(std::optional<T>& target, const vela::Any& value) {
    const T* const held = value.get<T>();
    if (held) target = *held;
    return held != nullptr;
}

// "Quality metrics" of one channel or of all, the figures from column 48 on.
void print_quality(std::ostringstream& subject, double dbrms, double dbpeak, double crest) {
    constexpr int width = 48;
    std::cout << std::left << std::setw(width) << subject.str() << "{dbrms: " << dbrms
              << "}\t{dbpeak: " << dbpeak << "}\t{crest: " << crest << '}' << std::endl;
}

}  // namespace

struct VelaCodec::DataStream {};

std::string VelaCodec::help() const {
    std::string text = "\nArguments for encoder profile Vela-Codec:\n";
    for (const Argument& argument : VelaCodecArguments)
        text += ' ' + std::string(argument.help) + '\n';
    return text;
}

bool VelaCodec::set_option(const std::string& key, const vela::Any& value) {
    if (key == "frame_count") return true;
    if (key == "nr_threads") return take(nr_threads_, value);
    if (key == "speaker_layout") {
        const auto* const name = value.get<std::string>();
        vela::SpeakerLayout layout;
        if (!name || !vela::translate(layout, *name)) return false;
        speaker_layout_ = layout;
        return true;
    }
    if (key == "sample_rate") return take(sample_rate_, value) && take(output_.sample_rate, value);
    if (key == "frame_size") return take(frame_size_, value);
    if (key == "downmix_filename") {
        const auto* const filename = value.get<vela::file::Name>();
        return filename && read_downmix_(*filename);
    }
    if (key == "output_filename") {
        if (!take(output_.filename, value)) return false;
        output_enabled_ = true;
        return true;
    }
    if (key == "output_format") {
        const auto* const format = value.get<std::string>();
        if (format) output_format_.set(*format);
        return format != nullptr;
    }
    if (key == "multi_channel_export")
        return take(multi_channel_export_, value) && take(output_.multi_channel, value);
    if (key == "data_filename") return take(data_filename_, value);
    if (key == "argument") {
        const auto* const argument = value.get<std::string>();
        return argument && set_argument_(*argument);
    }
    error_ = "Unknown option name " + key;
    return false;
}

bool VelaCodec::read_downmix_(const vela::file::Name& filename) {
    std::string text;
    if (!vela::file::read(text, filename)) {
        std::cout << "ERROR: Could not read downmix file \"" << filename << '"' << std::endl;
        return false;
    }
    if (!parser_.parse(text)) {
        std::cout << "ERROR: Could not parse the downmix coefficients from \"" << filename << '"'
                  << std::endl;
        return false;
    }
    return true;
}

bool VelaCodec::set_argument_(const std::string& argument) {
    Strange text(argument);
    Strange value;
    const auto is = [&](const char* key) { return text.pop_if(key); };
    const auto bracket = [&] { return text.pop_bracket(value, "()"); };
    const auto flag = [&](bool& target) { return bracket() && pop_true_false_(target, value); };
    const auto filename = [&](vela::Cache<vela::file::Name>& target) {
        if (!bracket()) return false;
        target.set(to_filename(value.to_str()));
        return true;
    };

    if (is("bitlines"))
        return bracket() && value.pop_int(bitline_min_) && value.pop_if(",") &&
               value.pop_int(bitline_max_);
    if (is("gvm.allow_merge")) return flag(allow_merge_);
    if (is("gvm.update_all")) return flag(update_all_);
    if (is("gvm.force_origin_center")) return flag(force_origin_center_);
    if (is("gvm.implementation")) {
        if (!bracket()) return false;
        implementation_ = value.to_str();
        return true;
    }
    if (is("gvm.randomize_deltas")) return flag(randomize_deltas_);
    if (is("dither")) return flag(dither_);
    if (is("centers_max")) return bracket() && value.pop_int(centers_max_);
    if (is("output.dbrms")) return filename(dbrms_filename_);
    if (is("output.dbpeak")) return filename(dbpeak_filename_);
    if (is("output.crest")) return filename(crest_filename_);
    if (is("output.centers")) return filename(centers_prefix_);
    if (is("native_content")) return flag(native_content_);
    error_ = "Unknown encoder argument \"" + argument + '"';
    return false;
}

bool VelaCodec::get_layouts_(vela::api::SpeakerLayout& input,
                             vela::api::SpeakerLayout& carrier) const {
    if (!speaker_layout_) return false;
    input = *speaker_layout_;
    if (const auto* const recipe = vela::find_recipe(input)) {
        carrier = vela::api::SpeakerLayout(recipe->carrier);
        return true;
    }
    std::cout << "ERROR: Cannot determine carrier speaker layout for input speaker layout ";
    input.stream(std::cout);
    std::cout << std::endl;
    return false;
}

bool VelaCodec::create_encoder_() {
    vela::api::SpeakerLayout input;
    vela::api::SpeakerLayout carrier;
    if (!get_layouts_(input, carrier)) return false;
    const unsigned nr_threads = nr_threads_.value_or(std::thread::hardware_concurrency());
    if (!vela::codec::v3::encoder::create(encoder_, input, carrier, nr_threads) || !encoder_)
        return false;
    return set_encoder_options_();
}

bool VelaCodec::set_encoder_options_() {
    const auto number = [this](const char* key, auto value) {
        return encoder_->set_option(key, static_cast<int>(value));
    };
    const auto filename = [this](const char* key, const vela::Cache<vela::file::Name>& name) {
        return !name || encoder_->set_option(key, name->str());
    };
    return number("bitline.min", bitline_min_) && number("bitline.max", bitline_max_) &&
           number("gvm.allow_merge", allow_merge_) && number("gvm.update_all", update_all_) &&
           number("gvm.force_origin_center", force_origin_center_) &&
           encoder_->set_option("gvm.implementation", implementation_) &&
           number("gvm.centers_max", centers_max_) &&
           number("gvm.randomize_deltas", randomize_deltas_) && number("dither.enabled", dither_) &&
           number("sample_rate", sample_rate_.value_or(0)) &&
           filename("output.dbrms", dbrms_filename_) &&
           filename("output.dbpeak", dbpeak_filename_) &&
           filename("output.crest", crest_filename_) &&
           filename("output.centers", centers_prefix_) && number("native_content", native_content_);
}

bool VelaCodec::prepare_output_() {
    if (!encoder_) return false;
    if (!frame_size_) {
        std::cout << "ERROR: No frame size was set." << std::endl;
        return false;
    }
    if (!output_enabled_) return true;
    output_.layout = encoder_->output_layout();
    return output_.prepare();
}

bool VelaCodec::process_one(vela::audio::Frames& frames, const vela::api::SampleSpan& span) {
    if (!encoder_ && (!create_encoder_() || !prepare_output_())) return false;
    ++nr_under_way_;
    if (feed_metadata_(span) && encoder_->begin_one(frames))
        return end_all_but_(encoder_->max_under_way() - 1);
    // The blocks before one that cannot begin are written all the same.  It is still behind them if
    // one of them fails; else it is the one that fails.
    if (end_all_but_(1)) nr_under_way_ = 0;
    return false;
}

bool VelaCodec::end_all_but_(unsigned nr_left) {
    while (nr_under_way_ > nr_left) {
        --nr_under_way_;
        if (!encoder_->end_one(encoded_)) return false;
        if (output_enabled_ && !output_.append(encoded_)) return false;
        encoded_ = {};  // the encoder writes another block where these samples are
    }
    return true;
}

bool VelaCodec::done() {
    if (!encoder_) return false;
    vela::audio::Quality all;
    for (const auto& channel : vela::api::channel::all()) {
        const vela::api::ChannelVariant key(channel);
        double dbrms = 0;
        double dbpeak = 0;
        double crest = 0;
        if (!encoder_->get_quality_metric(dbrms, key, QualityMetric::db_rms) ||
            !encoder_->get_quality_metric(dbpeak, key, QualityMetric::db_peak) ||
            !encoder_->get_quality_metric(crest, key, QualityMetric::crest))
            continue;
        std::ostringstream subject;
        subject << "Quality metrics: {channel: " << channel << '}';
        print_quality(subject, dbrms, dbpeak, crest);
        all.update_db(dbrms, dbpeak);
    }
    std::ostringstream subject;
    subject << "Quality metrics for all channels:";
    print_quality(subject, all.db_rms(), all.db_peak(), all.crest());
    data_stream_.reset();
    return true;
}

}  // namespace app::profile
