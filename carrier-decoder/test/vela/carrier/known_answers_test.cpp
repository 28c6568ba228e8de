#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <vela/CarrierRecipe.hpp>
#include <vela/SpeakerLayout.hpp>
#include <vela/carrier/Comparison.hpp>
#include <vela/carrier/decode_carrier.hpp>

namespace vela::carrier {
namespace {

namespace fs = std::filesystem;
using Id = api::channel::id::Value;

const fs::path root = fs::path(VELA_TEST_DATA) / "known-answers";

std::vector<std::string> lines_of(const fs::path& path) {
    std::ifstream file(path);
    std::vector<std::string> lines;
    for (std::string line; std::getline(file, line);)
        lines.push_back(line);
    return lines;
}

/// The channels of a 24-bit WAV file with a plain 44-byte header.
std::vector<std::vector<int>> read_wav(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    const std::string bytes((std::istreambuf_iterator<char>(file)), {});
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(bytes.at(i)); };
    std::vector<std::vector<int>> channels(byte(22));
    for (std::size_t i = 44; i + 3 <= bytes.size(); i += 3) {
        const int raw = byte(i) | byte(i + 1) << 8 | byte(i + 2) << 16;
        channels[(i - 44) / 3 % channels.size()].push_back(raw >= 0x800000 ? raw - 0x1000000 : raw);
    }
    return channels;
}

/// Names in file names and candidates follow the schema of the run.
class Schema {
public:
    explicit Schema(const std::string& name) { EXPECT_TRUE(api::Channel::set_naming_schema(name)); }
    ~Schema() { EXPECT_TRUE(api::Channel::set_naming_schema("vela")); }
};

Id id_of(const std::string& name) {
    api::Channel channel;
    EXPECT_TRUE(api::Channel::create(channel, name)) << name;
    return static_cast<Id>(channel.id());
}

/// What the command line of a run said.
struct Call {
    std::string layout;
    std::size_t frame_size = 0;
    bool interleaved = false;
    bool lowpass = false;
    std::string schema = "vela";
    Channels originals;
};

Call call_of(const fs::path& folder) {
    Call run;
    const auto words = lines_of(folder / "arguments.txt");
    for (std::size_t i = 0; i + 1 < words.size(); i += 2) {
        const std::string& value = words[i + 1];
        if (words[i] == "-l") run.layout = value;
        if (words[i] == "-f") run.frame_size = std::stoul(value);
        if (words[i] == "-m") run.interleaved = value == "true";
        if (words[i] == "-L") run.lowpass = true;
        if (words[i] == "-s") run.schema = value;
        if (words[i] == "-i") {
            const auto colon = value.find(':');
            run.originals[id_of(value.substr(0, colon))] =
                read_wav(folder / value.substr(colon + 1)).at(0);
        }
    }
    return run;
}

/// Channels of an interleaved file follow their bits in the WAVE channel mask.
std::vector<Id> interleaving_of(const CarrierRecipe& recipe) {
    using namespace api::channel::id;
    std::vector<Id> out;
    for (const Id id :
         {Left, Right, Center, LFE, LeftBack, RightBack, LeftSurround, RightSurround}) {
        if (api::SpeakerLayout(recipe.carrier).test(id)) out.push_back(id);
    }
    return out;
}

Channels carriers_of(const fs::path& folder, const Call& run, const CarrierRecipe& recipe) {
    Channels out;
    if (run.interleaved) {
        const auto ids = interleaving_of(recipe);
        const auto channels = read_wav(folder / "enc_.wav");
        for (std::size_t i = 0; i < ids.size(); ++i)
            out[ids[i]] = channels.at(i);
        return out;
    }
    for (const auto& group : recipe.groups) {
        const char* name = api::Channel::create(group.carrier).short_name();
        out[group.carrier] = read_wav(folder / ("enc_" + std::string(name) + ".wav")).at(0);
    }
    return out;
}

/// One line about a winner: numbers by key.
class Winner {
public:
    explicit Winner(std::string line) : line_(std::move(line)) {}

    [[nodiscard]] std::vector<double> numbers(const std::string& key) const {
        std::vector<double> out;
        const auto at = line_.find("\"" + key + "\":");
        if (at == std::string::npos) return out;
        const char* text = line_.c_str() + at + key.size() + 3;
        do {
            if (*text == '[' || *text == ',') ++text;
            char* end = nullptr;
            out.push_back(std::strtod(text, &end));
            text = end;
        } while (line_[at + key.size() + 3] == '[' && *text == ',');
        return out;
    }
    [[nodiscard]] std::int64_t number(const std::string& key) const {
        return static_cast<std::int64_t>(numbers(key).at(0));
    }
    [[nodiscard]] std::string carrier() const {
        const auto at = line_.find("\"carrier\":\"") + 11;
        return line_.substr(at, line_.find('"', at) - at);
    }

private:
    std::string line_;
};

/// 32-bit FNV-1a over the bytes of the values, low byte first.
class Hash {
public:
    void add(int value) {
        for (int shift = 0; shift < 32; shift += 8) {
            state_ ^= static_cast<std::uint32_t>(value) >> shift & 0xFFu;
            state_ *= 16777619u;
        }
    }
    void add(std::span<const int> values) {
        for (const int value : values)
            add(value);
    }
    [[nodiscard]] std::int64_t value() const { return state_; }

private:
    std::uint32_t state_ = 2166136261u;
};

std::int64_t hash_of(std::span<const int> values) {
    Hash hash;
    hash.add(values);
    return hash.value();
}

std::int64_t hash_of_centers(const Block& block) {
    Hash hash;
    const std::size_t nr_elements = block.header.channels.size() - 1;
    for (const auto& center : block.centers)
        hash.add(std::span(center).first(nr_elements));
    return hash.value();
}

void expect_record(const Block& block, const Winner& winner) {
    EXPECT_EQ(block.nr_bitlines, winner.number("b"));
    EXPECT_EQ(block.header.rice_k, winner.number("rice_k"));
    EXPECT_EQ(block.header.center_bits, winner.number("center_bits"));
    EXPECT_EQ(block.header.channels.size(), winner.number("active"));
    EXPECT_EQ(block.group_scaler_ix(), winner.number("scaler_ix"));
    EXPECT_EQ(block.centers.size(), winner.number("centers"));
    EXPECT_EQ(hash_of_centers(block), winner.number("h_centers"));
    EXPECT_EQ(hash_of(std::vector<int>(block.ixs.begin(), block.ixs.end())),
              winner.number("h_ixs"));
    EXPECT_EQ(hash_of(block.mix), winner.number("h_mixed"));
    const auto expect_operand = [&](std::uint32_t opcode, const std::string& key) {
        const Instruction* found = block.find(opcode);
        EXPECT_EQ(found == nullptr ? -1 : std::int64_t{found->operands[0]}, winner.number(key));
    };
    expect_operand(opcode::meta_gains, "meta");
    expect_operand(opcode::orbimix_preset, "preset");
}

void expect_errors(const std::vector<BlockError>& errors, const Winner& winner) {
    const auto rms = winner.numbers("dbrms");
    const auto peak = winner.numbers("dbpeak");
    ASSERT_EQ(errors.size(), rms.size());
    for (std::size_t i = 0; i < errors.size(); ++i) {
        EXPECT_EQ(errors[i].rms_db, rms[i]);
        EXPECT_EQ(errors[i].peak_db, peak[i]);
    }
}

std::string line_of(std::string text, const Figures& figures) {
    text.resize(std::max<std::size_t>(text.size(), 48), ' ');
    std::ostringstream out;
    out << text << "{dbrms: " << figures.rms_db << "}\t{dbpeak: " << figures.peak_db
        << "}\t{crest: " << figures.crest << "}";
    return out.str();
}

std::vector<std::string> report_of(const Comparison& comparison) {
    std::vector<std::string> out;
    for (const auto& [channel, figures] : comparison.figures()) {
        const std::string name = api::Channel::create(channel).full_name();
        out.push_back(line_of("Quality metrics: {channel: " + name + "}", figures));
    }
    out.push_back(line_of("Quality metrics for all channels:", comparison.overall()));
    return out;
}

std::vector<std::string> printed_report(const fs::path& folder) {
    std::vector<std::string> out = lines_of(folder / "stdout.txt");
    std::erase_if(out, [](const std::string& line) { return !line.starts_with("Quality"); });
    return out;
}

class KnownAnswers : public testing::TestWithParam<std::string> {};

TEST_P(KnownAnswers, DecodeToTheFiguresOfTheirEncoder) {
    const fs::path folder = root / "answers" / GetParam();
    const Call run = call_of(folder);
    const Schema schema(run.schema);
    SpeakerLayout layout;
    ASSERT_TRUE(translate(layout, run.layout));
    const CarrierRecipe* recipe = find_recipe(layout);
    ASSERT_NE(recipe, nullptr);

    std::map<Id, std::vector<Block>> blocks;
    std::size_t nr_blocks = 0;
    const Channels carriers = carriers_of(folder, run, *recipe);
    for (const auto& [carrier, samples] : carriers) {
        std::string why;
        ASSERT_TRUE(decode_carrier(blocks[carrier], why, samples, run.frame_size)) << why;
        nr_blocks += blocks[carrier].size();
    }
    Comparison comparison;
    for (const std::string& line : lines_of(folder / "candidates.jsonl")) {
        if (line.find("\"winner\":true") == std::string::npos) continue;
        SCOPED_TRACE(line);
        --nr_blocks;
        const Winner winner(line);
        const Id carrier = id_of(winner.carrier());
        const auto frame = static_cast<std::size_t>(winner.number("frame"));
        const std::size_t start = frame * run.frame_size;
        const Block& block = blocks[carrier].at(frame);
        expect_record(block, winner);
        EXPECT_EQ(hash_of(std::span(carriers.at(carrier)).subspan(start, run.frame_size)),
                  winner.number("h_frame"));

        const auto group =
            std::ranges::find(recipe->groups, carrier, &CarrierRecipe::Group::carrier);
        std::string why;
        ASSERT_TRUE(comparison.add(why, block, group->active_members(), run.originals, start))
            << why;
        if (!run.lowpass) expect_errors(comparison.last(), winner);
    }
    EXPECT_EQ(nr_blocks, 0u) << "blocks that no candidate won";
    if (!run.lowpass) {
        EXPECT_EQ(report_of(comparison), printed_report(folder));
    }
}

std::vector<std::string> names() {
    std::vector<std::string> out;
    for (const auto& entry : fs::directory_iterator(root / "answers")) {
        out.push_back(entry.path().filename().string());
    }
    std::ranges::sort(out);
    return out;
}

INSTANTIATE_TEST_SUITE_P(All, KnownAnswers, testing::ValuesIn(names()), [](const auto& param) {
    std::string name = param.param;
    std::ranges::replace_if(
        name, [](char c) { return c == '-' || c == '.'; }, '_');
    return name;
});

}  // namespace
}  // namespace vela::carrier
