#include <algorithm>
#include <check/Originals.hpp>
#include <check/Rebuilder.hpp>
#include <check/damage.hpp>
#include <check/find_carriers.hpp>
#include <check/print.hpp>
#include <check/run.hpp>
#include <vela/SpeakerLayout.hpp>
#include <vela/carrier/decode_block.hpp>
#include <vela/carrier/marks.hpp>
#include <vela/carrier/membership.hpp>

namespace check {

namespace {

using vela::carrier::Block;

// Beyond this a carrier's damaged blocks are only counted.
constexpr std::size_t nr_problems_told = 5;

/// One walk over all blocks of all carriers.
class Walk {
public:
    Walk(const Options& options, Findings& findings, std::ostream& out)
        : options_(options), findings_(findings), out_(out) {}

    [[nodiscard]] bool open(std::string& why);
    void run();

private:
    bool next_block_();
    void check_(Lane& lane);
    void tell_(Lane& lane, const std::string& what);
    bool decode_(Block& block, std::string& why, Lane& lane, std::span<const int> samples);
    void use_(Lane& lane, const Block& block);
    void finish_();
    [[nodiscard]] std::size_t longest_() const;

    const Options& options_;
    Findings& findings_;
    std::ostream& out_;
    Carriers carriers_;
    Originals originals_;
    std::unique_ptr<Rebuilder> rebuilder_;
    std::size_t frame_ = 0;
};

bool Walk::open(std::string& why) {
    carriers_ = find_carriers(findings_, options_);
    if (carriers_.recipe) {
        const vela::SpeakerLayout layout(carriers_.recipe->input);
        findings_.layout = layout.names().front();
    }
    findings_.frame_size = options_.frame_size;
    if (carriers_.lanes.empty()) return true;
    findings_.sample_rate = carriers_.lanes.front().track->sample_rate();

    if (!originals_.open(why, options_.originals, options_.frame_size)) return false;
    if (!originals_.empty()) findings_.comparison.emplace();
    if (options_.rebuild_prefix.empty()) return true;
    rebuilder_ = std::make_unique<Rebuilder>(options_.rebuild_prefix, findings_.sample_rate,
                                             options_.frame_size);
    for (const Lane& lane : carriers_.lanes)
        if (lane.group)
            for (const auto id : lane.group->active_members())
                rebuilder_->add_channel(id);
    return true;
}

void Walk::run() {
    for (; next_block_(); ++frame_) {
        for (Lane& lane : carriers_.lanes)
            if (!lane.ended) check_(lane);
        if (rebuilder_ && !rebuilder_->end_block()) {
            findings_.problems.push_back("the rebuilt channels cannot be written");
            rebuilder_.reset();
        }
    }
    finish_();
}

// False when no carrier has another block.
bool Walk::next_block_() {
    std::string why;
    const Track* taken = nullptr;
    bool any = false;
    for (Lane& lane : carriers_.lanes) {
        if (lane.ended) continue;
        // Lanes of one interleaved file share its blocks.
        if (lane.track.get() != taken && !lane.track->next(why)) {
            lane.report.add_problem(why);
            lane.ended = true;
            continue;
        }
        taken = lane.track.get();
        lane.ended = lane.samples().empty();
        any = any || !lane.ended;
    }
    if (any && !originals_.next(why)) findings_.problems.push_back(why);
    return any;
}

void Walk::check_(Lane& lane) {
    const auto samples = lane.samples();
    if (samples.size() < options_.frame_size) {
        lane.ended = true;
        lane.report.add_problem(lane.report.file.str() + ": ends in the middle of block " +
                                std::to_string(frame_) + ", after " +
                                std::to_string(samples.size()) + " of its " +
                                std::to_string(options_.frame_size) + " samples");
        return;
    }
    Block block;
    std::string why;
    if (!decode_(block, why, lane, samples)) {
        tell_(lane, why);
        return;
    }
    lane.report.add(frame_, block);
    if (options_.verbose && !options_.json) print_block(out_, lane.report, frame_, block);
    use_(lane, block);
}

bool Walk::decode_(Block& block, std::string& why, Lane& lane, std::span<const int> samples) {
    auto& report = lane.report;
    ++report.nr_blocks;
    if (vela::carrier::has_sync_word(samples)) ++report.nr_sync;
    if (vela::carrier::has_checksum(samples)) ++report.nr_checksum;
    if (!vela::carrier::decode_block(block, why, samples)) {
        if (report.nr_blocks > 1 || lane.nr_problem_blocks > 0) return false;
        const auto damage = explain_damage(report.file, lane.channel, options_.frame_size);
        if (!damage.empty()) why += "; " + damage;
        return false;
    }
    return !lane.group || vela::carrier::check_recipe(why, block, *carriers_.recipe, *lane.group);
}

void Walk::tell_(Lane& lane, const std::string& what) {
    if (++lane.nr_problem_blocks <= nr_problems_told)
        lane.report.add_problem(lane.report.file.str() + ": block " + std::to_string(frame_) +
                                ": " + what);
}

void Walk::use_(Lane& lane, const Block& block) {
    std::string why;
    if (findings_.comparison && lane.group &&
        !findings_.comparison->add(why, block, lane.group->active_members(), originals_.block(), 0))
        tell_(lane, why);
    if (rebuilder_) rebuilder_->take(block);
}

void Walk::finish_() {
    const std::size_t nr_blocks =
        originals_.empty() ? longest_() : static_cast<std::size_t>(originals_.nr_blocks());
    const char* const by = originals_.empty() ? "the longest carrier has" : "the originals make";
    for (Lane& lane : carriers_.lanes) {
        auto& report = lane.report;
        if (lane.nr_problem_blocks > nr_problems_told)
            report.add_problem(report.file.str() + ": " +
                               std::to_string(lane.nr_problem_blocks - nr_problems_told) +
                               " more blocks are not as they should be");
        if (report.nr_blocks != nr_blocks)
            report.add_problem(report.file.str() + ": holds " + std::to_string(report.nr_blocks) +
                               " blocks, but " + by + ' ' + std::to_string(nr_blocks));
        else if (nr_blocks == 0 && report.problems.empty())
            report.add_problem(report.file.str() + ": holds no samples");
        findings_.carriers.push_back(std::move(report));
    }
}

std::size_t Walk::longest_() const {
    std::size_t longest = 0;
    for (const Lane& lane : carriers_.lanes)
        longest = std::max(longest, lane.report.nr_blocks);
    return longest;
}

}  // namespace

bool run(const Options& options, std::ostream& out, std::ostream& complaints) {
    Findings findings;
    Walk walk(options, findings, out);
    std::string why;
    if (!walk.open(why)) {
        complaints << "carrier-check: " << why << std::endl;
        return false;
    }
    walk.run();
    if (options.json)
        print_json(out, findings);
    else
        print_text(out, findings);
    return findings.all_well();
}

}  // namespace check
