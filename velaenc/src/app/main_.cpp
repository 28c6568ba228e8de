#include <unistd.h>

#include <app/Options.hpp>
#include <app/Settings.hpp>
#include <app/SpeakerLayoutHelp.hpp>
#include <app/apply_settings.hpp>
#include <app/main_.hpp>
#include <app/process_audio.hpp>
#include <app/profile/Factory.hpp>
#include <app/specify_arguments.hpp>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <info.hpp>
#include <iostream>
#include <optional>
#include <sstream>
#include <vela/cli/Arguments.hpp>

namespace app {

namespace {

constexpr int success = 0;
constexpr int failure = 1;

/// How the command line leaves the run.
struct CommandLine {
    std::optional<int> return_code;  ///< set if the run ends here
    bool profile_help = false;
};

void print_help(const vela::cli::Arguments& arguments) {
    std::cout << arguments.help() << std::endl
              << speaker_layout_help() << std::endl
              << channel_names_help();
}

void print_version() {
    std::cout << "Version info:" << std::endl
              << "\tName: " << info::name() << std::endl
              << "\tVersion: " << info::version() << std::endl
              << "\tGit hash: " << info::git_hash() << std::endl
              << "\tBuild date: " << info::build_date() << std::endl;
}

CommandLine read_command_line(Settings& settings, int argc, const char* const* argv) {
    Options options;
    vela::cli::Arguments arguments;
    std::ostringstream complaints;
    specify_arguments(arguments, options, complaints);
    const auto nr_read = static_cast<int>(arguments.process(argc, argv));

    const bool profile_help = nr_read + 1 == argc && std::strcmp(argv[nr_read], "help") == 0;
    if (nr_read != argc && !profile_help) {
        std::cout << "Not all arguments could be parsed" << std::endl;
        return {failure};
    }
    if (options.help) {
        print_help(arguments);
        return {success};
    }
    if (options.version) {
        print_version();
        return {success};
    }
    if (!complaints.str().empty()) {
        std::cout << "ERROR:" << std::endl
                  << complaints.str() << std::endl
                  << arguments.help() << std::endl;
        return {failure};
    }
    std::cout << "pid: " << getpid() << std::endl;
    if (!settings.set(options, std::cout)) {
        std::cout << "ERROR: There is a problem with the options." << std::endl;
        return {failure};
    }
    return {std::nullopt, profile_help};
}

// One line per successful run; a folder that cannot be written is none of the run's business.
void log_encode_time(std::clock_t ticks) {
    std::FILE* const file = std::fopen("encode_time.txt", "a");
    if (!file) return;
    std::fprintf(file, "Time Spend: %.5fs\n", static_cast<double>(ticks) / 1e6);
    std::fclose(file);
}

void print_clocks(std::clock_t start, std::clock_t stop) {
    std::cout << "Start " << static_cast<unsigned long>(start) << ", stop "
              << static_cast<unsigned long>(stop) << ", CLOCKS_PER_SEC 1000000" << std::endl;
}

}  // namespace

int main_(int argc, const char* const* argv) {
    Profiler profiler;
    Settings settings;
    const auto command_line = read_command_line(settings, argc, argv);
    if (command_line.return_code) return *command_line.return_code;

    std::cout << "Using these settings:" << std::endl;
    settings.stream(std::cout);

    const auto profile = profile::create(settings.profile);
    if (!profile) {
        std::cout << "ERROR: Unknown profile (or not available in this build) \""
                  << settings.profile << '"' << std::endl;
        return failure;
    }
    if (command_line.profile_help) {
        std::cout << profile->help() << std::endl;
        return success;
    }
    if (apply_settings(profile, settings) != success) return failure;

    const std::clock_t start = std::clock();
    if (process_audio(profile, settings, profiler) != success) return failure;
    const std::clock_t stop = std::clock();
    print_clocks(start, stop);
    log_encode_time(stop - start);

    if (!profile->done()) return failure;
    profiler.stop();
    profiler.stream(std::cout);
    return success;
}

}  // namespace app
