#include <app/apply_settings.hpp>
#include <iostream>
#include <vela/Any.hpp>
#include <vela/api/Channel.hpp>

namespace app {

namespace {

template <typename T>
bool apply(profile::Interface& profile, const char* key, const T& value, const char* complaint) {
    if (profile.set_option(key, vela::Any(value))) return true;
    std::cout << "ERROR: " << complaint << " \"" << value << '"' << std::endl;
    return false;
}

template <typename T>
bool apply(profile::Interface& profile, const char* key, const std::optional<T>& value,
           const char* complaint) {
    return !value || apply(profile, key, *value, complaint);
}

bool apply_schema(const std::string& schema) {
    if (schema == "vela" || vela::api::Channel::set_naming_schema(schema)) return true;
    std::cout << "ERROR: Could not set naming schema to " << schema << std::endl;
    return false;
}

bool apply_argument(profile::Interface& profile, const std::string& argument) {
    if (profile.set_option("argument", vela::Any(argument))) return true;
    std::cout << "ERROR: Could not set argument to \"" << argument << "\": " << profile.error_msg()
              << std::endl;
    return false;
}

}  // namespace

int apply_settings(const std::shared_ptr<profile::Interface>& profile, const Settings& settings) {
    auto& p = *profile;
    const Settings& s = settings;
    const bool applied =
        apply(p, "speaker_layout", s.input_speaker_layout, "Unsupported input speaker layout") &&
        apply(p, "nr_threads", s.nr_threads, "Could not set the nr threads to") &&
        apply(p, "frame_size", s.frame_size, "Could not set the frame size to") &&
        apply(p, "downmix_filename", s.downmix_filename, "Could not set the downmix filename to") &&
        apply(p, "output_filename", s.output_fn, "Could not set output filename prefix to") &&
        apply(p, "output_format", s.output_format, "Could not set output file format to") &&
        apply(p, "data_filename", s.data_fn, "Could not set data filename to") &&
        apply(p, "multi_channel_export", s.multi_channel_export,
              "Could not set multi-channel export to") &&
        apply_schema(s.naming_schema);
    if (!applied) return 1;

    for (const std::string& argument : s.arguments)
        if (!apply_argument(p, argument)) return 1;
    return 0;
}

}  // namespace app
