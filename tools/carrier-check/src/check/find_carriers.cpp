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

std::optional<Block> first_block(const vela::file::Name& file, std::size_t channel,
                                 std::size_t frame_size) {
    Track track;
    Block block;
    std::string why;
    const bool decoded = track.open(why, file, frame_size) && track.next(why) &&
                         channel < track.nr_channels() &&
                         vela::carrier::decode_block(block, why, track.samples(channel));
    return decoded ? std::optional(block) : std::nullopt;
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
        if (const auto block = first_block(track->name(), 0, frame_size))
            if (const auto* const recipe = recipe_of(*block)) return recipe;
    return nullptr;
}

bool may_hold(const CarrierRecipe::Group& group, const Block& block) {
    return std::ranges::all_of(block.header.channels, [&](auto id) {
        const auto members = group.active_members();
        return std::ranges::find(members, id) != members.end();
    });
}

std::size_t length_of_named_end(const std::string& stem, const CarrierRecipe::Group& group) {
    const std::string name = vela::api::Channel::create(group.carrier).short_name();
    return stem.ends_with(name) ? name.size() : 0;
}

const CarrierRecipe::Group* group_of(const CarrierRecipe& recipe, const vela::file::Name& file,
                                     std::size_t frame_size) {
    const auto block = first_block(file, 0, frame_size);
    std::vector<const CarrierRecipe::Group*> possible;
    for (const auto& group : recipe.groups)
        if (!block || may_hold(group, *block)) possible.push_back(&group);
    if (possible.size() == 1) return possible.front();

    const std::string stem = std::filesystem::path(file.str()).stem().string();
    const CarrierRecipe::Group* best = nullptr;
    for (const auto* const group : possible)
        if (length_of_named_end(stem, *group) > (best ? length_of_named_end(stem, *best) : 0))
            best = group;
    return best;
}

Lane make_lane(const std::shared_ptr<Track>& track, std::size_t channel,
               const CarrierRecipe::Group* group) {
    Lane lane{.track = track, .channel = channel, .group = group, .report = {}};
    lane.report.file = track->name();
    if (group) lane.report.carrier = group->carrier;
    return lane;
}

void add_mono_lanes(Carriers& carriers, const std::vector<std::shared_ptr<Track>>& tracks,
                    const Options& options) {
    for (const auto& track : tracks) {
        const auto* const group =
            carriers.recipe ? group_of(*carriers.recipe, track->name(), options.frame_size)
                            : nullptr;
        Lane lane = make_lane(track, 0, group);
        if (carriers.recipe && !group)
            lane.report.add_problem(track->name().str() +
                                    ": cannot tell which carrier channel this is; let its name end "
                                    "in the channel's short name");
        carriers.lanes.push_back(std::move(lane));
    }
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
    const bool interleaved = tracks.size() == 1 && tracks.front()->nr_channels() > 1;
    if (interleaved && !carriers.recipe) {
        findings.problems.push_back(tracks.front()->name().str() +
                                    ": an interleaved file needs --layout");
        return carriers;
    }
    if (!carriers.recipe) carriers.recipe = recorded_recipe(tracks, options.frame_size);

    if (interleaved)
        add_interleaved_lanes(findings, carriers, tracks.front());
    else
        add_mono_lanes(carriers, tracks, options);
    refuse_twins(findings, carriers);
    std::ranges::stable_sort(carriers.lanes, {},
                             [](const Lane& lane) { return lane.report.carrier; });
    return carriers;
}

}  // namespace check
