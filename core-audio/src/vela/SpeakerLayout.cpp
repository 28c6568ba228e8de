#include <algorithm>
#include <cstdint>
#include <vela/SpeakerLayout.hpp>

namespace vela {

namespace {

struct Entry {
    SpeakerLayout layout;
    std::vector<std::string> names;
};

std::vector<Entry> make_registry() {
    const auto entry = [](std::uint64_t mask, std::vector<std::string> names) {
        return Entry{SpeakerLayout(mask), std::move(names)};
    };
    // Help prints these lists as they stand, the second "mono" included.
    return {
        entry(0x8, {"mono_0_1", "0.1", "lfe"}),
        entry(0x4, {"mono_1_0", "mono", "1.0", "mono", "testmix1"}),
        entry(0x3, {"stereo_2_0", "stereo", "2.0"}),
        entry(0xB, {"stereo_2_1", "2.1"}),
        entry(0x7, {"lcr"}),
        entry(0x47, {"lcrs"}),
        entry(0x33, {"quad", "4.0"}),
        entry(0x37, {"surround5.0", "5.0", "5.0surround"}),
        entry(0x3F, {"surround5.1", "5.1", "5.1surround"}),
        entry(0x77, {"surround6.0", "6.0surround"}),
        entry(0x7F, {"surround6.1", "6.1surround"}),
        entry(0x633, {"vela6.0", "vela222"}),
        entry(0x1B7, {"surround7.0", "7.0", "7.0surround"}),
        entry(0x1BF, {"surround7.1", "7.1", "7.1surround"}),
        entry(0x63F, {"height7.1", "7.1height"}),
        entry(0x6633, {"8.0", "vela8.0"}),
        entry(0x7BF, {"height9.1", "9.1height"}),
        entry(0x6637, {"9.0", "vela9.0"}),
        entry(0x663F, {"9.1", "vela9.1"}),
        entry(0x7637, {"10.0", "vela10.0"}),
        entry(0x763F, {"10.1", "vela10.1"}),
        entry(0x7E37, {"11.0", "vela11.0", "551.0"}),
        entry(0x7E3F, {"11.1", "vela11.1", "551.1"}),
        entry(0x67B7, {"11.0b", "vela11.0b", "74.0", "vela11.0_74"}),
        entry(0x67BF, {"11.1b", "vela11.1b", "74.1", "vela11.1_74"}),
        entry(0x77B7, {"12.0", "vela12.0"}),
        entry(0x77BF, {"12.1", "vela12.1"}),
        entry(0x7FB7, {"13.0", "vela13.0", "751.0"}),
        entry(0x7FBF, {"13.1", "vela13.1", "751.1"}),
        entry(0xFFFFFF, {"22.2", "vela22.2"}),
        entry(0x1000000, {"ambisonics", "ambi"}),
        entry(0x804, {"testmix2"}),
        entry(0x1804, {"testmix3"}),
    };
}

const std::vector<Entry>& registry() {
    static const std::vector<Entry> entries = make_registry();
    return entries;
}

void replace_first(std::string& text, std::string_view from, std::string_view to) {
    const auto at = text.find(from);
    if (at != std::string::npos) text.replace(at, from.size(), to);
}

// ASCII alone: names must not depend on the locale.
char lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

std::string make_canonical(std::string_view name) {
    std::string text(name);
    replace_first(text, " ", "");
    replace_first(text, "_", "");
    replace_first(text, "-", "");
    replace_first(text, "p1", ".1");
    replace_first(text, "p0", ".0");
    std::ranges::transform(text, text.begin(), lower);
    return text;
}

}  // namespace

const std::vector<SpeakerLayout>& SpeakerLayout::all() {
    static const std::vector<SpeakerLayout> layouts = [] {
        std::vector<SpeakerLayout> in_order;
        for (const Entry& entry : registry())
            in_order.push_back(entry.layout);
        return in_order;
    }();
    return layouts;
}

const std::vector<std::string>& SpeakerLayout::names() const {
    static const std::vector<std::string> none;
    const auto at = std::ranges::find(registry(), *this, &Entry::layout);
    return at == registry().end() ? none : at->names;
}

bool translate(SpeakerLayout& out, std::string_view name) {
    const std::string wanted = make_canonical(name);
    for (const Entry& entry : registry()) {
        if (std::ranges::find(entry.names, wanted, make_canonical) == entry.names.end()) continue;
        out = entry.layout;
        return true;
    }
    return false;
}

}  // namespace vela
