#include <benchmark/benchmark.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>
#include <vela/wav/FileParser.hpp>
#include <vela/wav/FileWriter.hpp>

/// Time per sample of reading and writing 24-bit files a frame at a time, as an encoder run does.
namespace vela::wav {
namespace {

constexpr std::size_t frame_size = 4096;
constexpr std::size_t nr_frames = 256;

Format format_of(std::uint16_t channels) {
    Format format;
    format.format_tag = Format::pcm;
    format.channels = channels;
    format.sample_rate = 48000;
    format.bits_per_sample = 24;
    format.block_align = static_cast<std::uint16_t>(3 * channels);
    format.byte_rate = 48000u * format.block_align;
    return format;
}

class Scratch {
public:
    Scratch()
        : path_(std::filesystem::temp_directory_path() /
                ("wav-bench-" + std::to_string(getpid()))) {}
    ~Scratch() { std::filesystem::remove(path_); }
    [[nodiscard]] file::Name name() const { return file::Name(path_.string()); }

private:
    std::filesystem::path path_;
};

void write_file(const file::Name& name, std::uint16_t channels) {
    static const std::vector<int> samples(frame_size, -123456);
    const FileWriter::Samples range(samples.data(), samples.data() + samples.size());
    const std::vector<FileWriter::Samples> block(channels, range);
    FileWriter writer(name, format_of(channels));
    for (std::size_t i = 0; i < nr_frames; ++i)
        if (!(channels == 1 ? writer.add_frame(range) : writer.add_block(block))) std::abort();
}

void count_samples(benchmark::State& state) {
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(frame_size * nr_frames) *
                            state.range(0));
}

void Write(benchmark::State& state) {
    const Scratch scratch;
    for ([[maybe_unused]] auto _ : state)
        write_file(scratch.name(), static_cast<std::uint16_t>(state.range(0)));
    count_samples(state);
}
BENCHMARK(Write)->Arg(1)->Arg(6);

void Read(benchmark::State& state) {
    const Scratch scratch;
    write_file(scratch.name(), static_cast<std::uint16_t>(state.range(0)));
    for ([[maybe_unused]] auto _ : state) {
        FileParser<int> parser(scratch.name());
        parser.block_size = frame_size;
        if (!parser.parse()) std::abort();
        for (auto at = parser.blocks.begin(); !(at == parser.blocks.end()); ++at) {
            if (!at.parse_block_()) std::abort();
            benchmark::DoNotOptimize(at.cache->channels[0].data());
        }
    }
    count_samples(state);
}
BENCHMARK(Read)->Arg(1)->Arg(6);

}  // namespace
}  // namespace vela::wav
