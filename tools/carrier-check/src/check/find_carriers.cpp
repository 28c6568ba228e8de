#include <algorithm>
#include <check/find_carriers.hpp>
#include <filesystem>
#include <optional>
#include <vela/SpeakerLayout.hpp>
#include <vela/carrier/Instruction.hpp>
#include <vela/carrier/decode_block.hpp>
#include <vela/carrier/read_wav.hpp>

namespace check {

namespace {

using vela::CarrierRecipe;
using vela::carrier::Block;

// So many blocks may be damaged at the front until a carrier is known by its name alone.
constexpr std::size_t nr_blocks_tried = 8;

/// The first block of a mono file that decodes.
std::optional<Block> first_block(const vela::file::Name& file, std::size_t frame_size) {
    Track track;
    std::string why;
    if (!track.open(why, file, frame_size)) return std::nullopt;
    for (std::size_t i = 0; i < nr_blocks_tried && track.next(why); ++i) {
        Block block;
        if (track.samples(0).empty()) break;
        if (vela::carrier::decode_block(block, why, track.samples(0))) return block;
    }
    return std::nullopt;
}

const CarrierRecipe* recipe_of(const Block& block) {
    const auto* const layout = block.find(vela::carrier::opcode::input_layout);
    if (!layout) return nullptr;
    const auto recipes = vela::carrier_recipes();
    const auto at = std::ranges::find(recipes, layout->operands.front(), &CarrierRecipe::code);
    return at == recipes.end() ? nullptr : &*at;
}

bool find_named_recipe(const CarrierRecipe*& out, std::string& why, const std::string& name) {
    vela::SpeakerLayout layout;
    if (!vela::translate(layout, name))
        why = name + " is no layout";
    else if (out = vela::find_recipe(layout); !out)
        why = name + " has no carrier";
    return why.empty();
}

const CarrierRecipe* recorded_recipe(const std::vector<std::shared_ptr<Track>>& tracks,
                                     std::size_t frame_size) {
    for (const auto& track : tracks)
        if (const auto block = first_block(track->name(), frame_size))
            if (const auto* const recipe = recipe_of(*block)) return recipe;
    return nullptr;
}

bool may_hold(const CarrierRecipe::Group& group, const Block& block) {
    return std::ranges::all_of(block.header.channels, [&](auto id) {
        const auto members = group.active_members();
        return std::ranges::find(members, id) != members.end();
    });
}

/// Short names of a channel in both schemas, since file names follow that of the encoder's run.
std::vector<std::string> short_names(vela::carrier::ChannelId id) {
    std::vector<std::string> out;
    for (const char* const schema : {"NHK", "vela"}) {  // ends with the one that is in force
        if (vela::api::Channel::set_naming_schema(schema))
            out.emplace_back(vela::api::Channel::create(id).short_name());
    }
    return out;
}

std::size_t length_of_named_end(const std::string& stem, const CarrierRecipe::Group& group) {
    std::size_t longest = 0;
    for (const auto& name : short_names(group.carrier))
        if (stem.ends_with(name)) longest = std::max(longest, name.size());
    return longest;
}

/// The group whose carrier the file is named after; null if there is none.
const CarrierRecipe::Group* named_group(const std::vector<const CarrierRecipe::Group*>& possible,
                                        const vela::file::Name& file) {
    const std::string stem = std::filesystem::path(file.str()).stem().string();
    const CarrierRecipe::Group* best = nullptr;
    std::size_t longest = 0;
    for (const auto* const group : possible) {
        const std::size_t length = length_of_named_end(stem, *group);
        if (length <= longest) continue;  // of two names that fit, the longer is meant
        longest = length;
        best = group;
    }
    return best;
}

bool find_group(const CarrierRecipe::Group*& out, std::string& why, const CarrierRecipe& recipe,
                const vela::file::Name& file, std::size_t frame_size) {
    const auto block = first_block(file, frame_size);
    std::vector<const CarrierRecipe::Group*> possible;
    for (const auto& group : recipe.groups)
        if (!block || may_hold(group, *block)) possible.push_back(&group);
    if (possible.empty()) {
        why = file.str() + ": holds channels that no carrier of " +
              vela::SpeakerLayout(recipe.input).names().front() + " holds together";
        return false;
    }
    out = possible.size() == 1 ? possible.front() : named_group(possible, file);
    if (!out)
        why = file.str() +
              ": cannot tell which carrier channel this is; let its name end in the channel's "
              "short name";
    return out != nullptr;
}

Lane make_lane(const std::shared_ptr<Track>& track, std::size_t channel,
               const CarrierRecipe::Group* group) {
    Lane lane{.track = track, .channel = channel, .group = group, .report = {}};
    lane.report.file = track->name();
    if (group) lane.report.carrier = group->carrier;
    return lane;
}

void add_mono_lane(Carriers& carriers, const std::shared_ptr<Track>& track,
                   std::size_t frame_size) {
    const CarrierRecipe::Group* group = nullptr;
    std::string why;
    if (track->nr_channels() != 1)
        why = track->name().str() + ": holds " + std::to_string(track->nr_channels()) +
              " channels; of several files each must be mono";
    else if (carriers.recipe)
        (void)find_group(group, why, *carriers.recipe, track->name(), frame_size);
    Lane lane = make_lane(track, 0, group);
    if (!why.empty()) lane.report.add_problem(why);
    carriers.lanes.push_back(std::move(lane));
}

void add_interleaved_lanes(Findings& findings, Carriers& carriers,
                           const std::shared_ptr<Track>& track) {
    const auto ids =
        vela::carrier::interleaving_of(vela::api::SpeakerLayout(carriers.recipe->carrier));
    if (ids.size() != track->nr_channels()) {
        findings.problems.push_back(track->name().str() + ": holds " +
                                    std::to_string(track->nr_channels()) +
                                    " channels, the carrier has " + std::to_string(ids.size()));
        return;
    }
    for (std::size_t channel = 0; channel < ids.size(); ++channel) {
        const auto& groups = carriers.recipe->groups;
        const auto group = std::ranges::find(groups, ids[channel], &CarrierRecipe::Group::carrier);
        carriers.lanes.push_back(make_lane(track, channel, &*group));
    }
}

void refuse_twins(Findings& findings, const Carriers& carriers) {
    for (auto a = carriers.lanes.begin(); a != carriers.lanes.end(); ++a)
        for (auto b = carriers.lanes.begin(); b != a; ++b)
            if (a->group && a->group == b->group)
                findings.problems.push_back(a->report.file.str() + " and " + b->report.file.str() +
                                            " are one and the same carrier channel");
}

std::vector<std::shared_ptr<Track>> open_tracks(Findings& findings, const Options& options) {
    std::vector<std::shared_ptr<Track>> tracks;
    for (const auto& file : options.files) {
        auto track = std::make_shared<Track>();
        std::string why;
        if (track->open(why, file, options.frame_size))
            tracks.push_back(std::move(track));
        else
            findings.problems.push_back(why);
    }
    return tracks;
}

}  // namespace

Carriers find_carriers(Findings& findings, const Options& options) {
    Carriers carriers;
    const auto tracks = open_tracks(findings, options);
    std::string why;
    if (!options.layout.empty() && !find_named_recipe(carriers.recipe, why, options.layout)) {
        findings.problems.push_back(why);
        return carriers;
    }
    const bool interleaved =
        options.files.size() == 1 && tracks.size() == 1 && tracks.front()->nr_channels() > 1;
    if (interleaved && !carriers.recipe) {
        findings.problems.push_back(tracks.front()->name().str() +
                                    ": an interleaved file needs --layout");
        return carriers;
    }
    if (!carriers.recipe) carriers.recipe = recorded_recipe(tracks, options.frame_size);

    if (interleaved) {
        add_interleaved_lanes(findings, carriers, tracks.front());
    } else {
        for (const auto& track : tracks)
            add_mono_lane(carriers, track, options.frame_size);
    }
    refuse_twins(findings, carriers);
    std::ranges::stable_sort(carriers.lanes, {},
                             [](const Lane& lane) { return lane.report.carrier; });
    return carriers;
}

}  // namespace check
