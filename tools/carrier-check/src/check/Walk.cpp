#include <algorithm>
#include <check/Walk.hpp>
#include <check/damage.hpp>
#include <check/print.hpp>
#include <vela/SpeakerLayout.hpp>
#include <vela/carrier/decode_block.hpp>
#include <vela/carrier/marks.hpp>
#include <vela/carrier/membership.hpp>

namespace check {

namespace {

using vela::carrier::Block;

// Beyond this a carrier's damaged blocks are only counted.
constexpr std::size_t nr_problems_told = 5;

}  // namespace

bool Walk::open(std::string& why) {
    findings_.frame_size = options_.frame_size;
    carriers_ = find_carriers(findings_, options_);
    if (carriers_.recipe) {
        const vela::SpeakerLayout layout(carriers_.recipe->input);
        findings_.layout = layout.names().front();
    }
    if (carriers_.lanes.empty()) return true;
    findings_.sample_rate = carriers_.lanes.front().track->sample_rate();
    if (!open_originals_(why) || !open_rebuilder_(why)) return false;
    check_sample_rates_();
    return true;
}

bool Walk::open_originals_(std::string& why) {
    if (!originals_.open(why, options_.originals, options_.frame_size)) return false;
    if (originals_.empty()) return true;
    findings_.comparison.emplace();
    for (Lane& lane : carriers_.lanes)
        lane.compared = lane.group && has_originals_of_(lane);
    return true;
}

// An error is only the encoder's own if no channel of the carrier is left out.
bool Walk::has_originals_of_(const Lane& lane) {
    for (const auto id : lane.group->active_members()) {
        if (options_.originals.contains(id)) continue;
        findings_.problems.push_back(lane.report.file.str() + ": cannot be compared: channel " +
                                     vela::api::Channel::create(id).full_name() +
                                     " has no --original");
        return false;
    }
    return true;
}

bool Walk::open_rebuilder_(std::string& why) {
    if (options_.rebuild_prefix.empty()) return true;
    rebuilder_ = std::make_unique<Rebuilder>(options_.rebuild_prefix, findings_.sample_rate,
                                             options_.frame_size);
    std::vector<vela::file::Name> kept = options_.files;
    for (const auto& [id, file] : options_.originals)
        kept.push_back(file);
    for (const Lane& lane : carriers_.lanes) {
        if (!lane.group) continue;
        for (const auto id : lane.group->active_members())
            if (!rebuilder_->add_channel(why, id, kept)) return false;
    }
    return true;
}

// Another rate than the rest tells by itself that a file was resampled, even if it cannot be read
// any more.
void Walk::check_sample_rates_() {
    const auto by_originals = originals_.sample_rate();
    const auto expected = by_originals.value_or(findings_.sample_rate);
    const std::string by = by_originals ? "the originals have " : "the first carrier has ";
    const Track* told = nullptr;
    for (Lane& lane : carriers_.lanes) {
        const Track* const track = lane.track.get();
        if (track == told || track->sample_rate() == expected) continue;
        told = track;
        lane.report.add_problem(track->name().str() + ": has " +
                                std::to_string(track->sample_rate()) + " Hz, but " + by +
                                std::to_string(expected) + " Hz: it was resampled");
    }
}

void Walk::run() {
    for (; next_block_(); ++frame_) {
        for (Lane& lane : carriers_.lanes)
            if (!lane.ended) check_(lane);
        rebuild_();
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
    if (any && findings_.comparison && !originals_.next(why)) {
        findings_.problems.push_back(why);
        findings_.comparison.reset();
    }
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
    if (!decode_(block, why, lane)) {
        tell_(lane, why);
        return;
    }
    lane.report.add(frame_, block);
    if (options_.verbose && !options_.json) print_block(out_, lane.report, frame_, block);
    use_(lane, block);
}

bool Walk::decode_(Block& block, std::string& why, Lane& lane) {
    const auto samples = lane.samples();
    auto& report = lane.report;
    ++report.nr_blocks;
    if (vela::carrier::has_sync_word(samples)) ++report.nr_sync;
    if (vela::carrier::has_checksum(samples)) ++report.nr_checksum;
    if (!vela::carrier::decode_block(block, why, samples)) {
        explain_(why, lane);
        return false;
    }
    return !lane.group || vela::carrier::check_recipe(why, block, *carriers_.recipe, *lane.group);
}

// What goes on from a block to the end is told once, with the first block that shows it.
void Walk::explain_(std::string& why, Lane& lane) {
    if (lane.explained || lane.nr_problem_blocks >= nr_problems_told) return;
    const auto damage = explain_damage({.file = lane.report.file,
                                        .channel = lane.channel,
                                        .frame_size = options_.frame_size,
                                        .block = frame_});
    if (damage.empty()) return;
    why += "; " + damage;
    lane.explained = true;
}

void Walk::tell_(Lane& lane, const std::string& what) {
    if (++lane.nr_problem_blocks <= nr_problems_told)
        lane.report.add_problem(lane.report.file.str() + ": block " + std::to_string(frame_) +
                                ": " + what);
}

void Walk::use_(Lane& lane, const Block& block) {
    std::string why;
    if (findings_.comparison && lane.compared &&
        !findings_.comparison->add(why, block, lane.group->active_members(), originals_.block(), 0))
        tell_(lane, why);
    if (rebuilder_ && lane.group) rebuilder_->take(block);
}

void Walk::rebuild_() {
    std::string why;
    if (!rebuilder_ || rebuilder_->end_block(why)) return;
    findings_.problems.push_back(why);
    rebuilder_.reset();
}

void Walk::finish_() {
    const std::size_t nr_blocks = nr_blocks_expected_();
    for (Lane& lane : carriers_.lanes)
        finish_(lane, nr_blocks);
    std::string why;
    if (rebuilder_ && !rebuilder_->finish(why)) findings_.problems.push_back(why);
}

void Walk::finish_(Lane& lane, std::size_t nr_blocks) {
    auto& report = lane.report;
    const std::string file = report.file.str();
    if (lane.nr_problem_blocks > nr_problems_told)
        report.add_problem(file + ": " + std::to_string(lane.nr_problem_blocks - nr_problems_told) +
                           " more blocks are not as they should be");
    if (report.nr_blocks != nr_blocks)
        report.add_problem(
            file + ": holds " + std::to_string(report.nr_blocks) + " blocks, but " +
            (originals_.empty() ? "the longest carrier has " : "the originals make ") +
            std::to_string(nr_blocks));
    else if (nr_blocks == 0 && report.problems.empty())
        report.add_problem(file + ": holds no samples");
    findings_.carriers.push_back(std::move(report));
}

std::size_t Walk::nr_blocks_expected_() const {
    if (!originals_.empty()) return static_cast<std::size_t>(originals_.nr_blocks());
    std::size_t longest = 0;
    for (const Lane& lane : carriers_.lanes)
        longest = std::max(longest, lane.report.nr_blocks);
    return longest;
}

}  // namespace check
