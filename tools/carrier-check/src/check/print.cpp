#include <check/print.hpp>
#include <iomanip>
#include <sstream>
#include <vela/api/Channel.hpp>

namespace check {

namespace {

using vela::api::Channel;
using vela::carrier::ChannelId;
using vela::carrier::Figures;

std::string name_of(ChannelId id) {
    const char* const name = Channel::create(id).full_name();
    return name ? name : "unknown";
}

template <typename T>
std::string text_of(const Spread<T>& spread) {
    return std::to_string(spread.from) + '/' + std::to_string(spread.median) + '/' +
           std::to_string(spread.to);
}

void print_figures(std::ostream& out, const std::string& subject, const Figures& figures) {
    constexpr int width = 48;
    out << std::left << std::setw(width) << subject << "{dbrms: " << figures.rms_db
        << "}\t{dbpeak: " << figures.peak_db << "}\t{crest: " << figures.crest << "}\n";
}

void print_carrier(std::ostream& out, const CarrierReport& carrier) {
    out << carrier.file << " (" << name_of(carrier.carrier) << "): " << carrier.nr_sound << " of "
        << carrier.nr_blocks << " blocks sound; sync " << carrier.nr_sync << ", CRC "
        << carrier.nr_checksum << "; bit-lines " << text_of(spread_of(carrier.bitlines))
        << "; centers " << text_of(spread_of(carrier.centers)) << "; spare bits "
        << text_of(spread_of(carrier.spare_bits)) << '\n';
}

void print_instructions(std::ostream& out, const CarrierReport& carrier) {
    for (const auto& [instruction, frames] : carrier.instructions) {
        out << "  " << name_of(carrier.carrier) << ": " << check::name_of(instruction.first);
        for (const auto operand : instruction.second)
            out << ' ' << operand;
        out << " in frames " << runs_of(frames) << '\n';
    }
}

void print_quality(std::ostream& out, const vela::carrier::Comparison& comparison) {
    if (comparison.figures().empty()) return;  // no block could be compared
    for (const auto& [id, figures] : comparison.figures())
        print_figures(out, "Quality metrics: {channel: " + name_of(id) + '}', figures);
    print_figures(out, "Quality metrics for all channels:", comparison.overall());
}

void print_problems(std::ostream& out, const std::vector<std::string>& problems) {
    for (const auto& problem : problems)
        out << "PROBLEM: " << problem << '\n';
}

std::string quoted(const std::string& text) {
    std::ostringstream out;
    out << '"';
    for (const char c : text) {
        if (c == '"' || c == '\\')
            out << '\\' << c;
        else if (static_cast<unsigned char>(c) < 0x20)
            out << "\\u" << std::hex << std::setw(4) << std::setfill('0') << +c << std::dec;
        else
            out << c;
    }
    out << '"';
    return out.str();
}

template <typename Values, typename Write>
void print_list(std::ostream& out, const Values& values, Write write) {
    out << '[';
    bool first = true;
    for (const auto& value : values) {
        out << (first ? "" : ",");
        first = false;
        write(value);
    }
    out << ']';
}

template <typename T>
void print_json_spread(std::ostream& out, const char* key, const Spread<T>& spread) {
    out << ',' << quoted(key) << ":{\"from\":" << spread.from << ",\"median\":" << spread.median
        << ",\"to\":" << spread.to << '}';
}

void print_json_figures(std::ostream& out, const Figures& figures) {
    out << "\"dbrms\":" << figures.rms_db << ",\"dbpeak\":" << figures.peak_db
        << ",\"crest\":" << figures.crest;
}

void print_json_carrier(std::ostream& out, const CarrierReport& carrier) {
    const auto number = [&](std::size_t value) { out << value; };
    out << "{\"file\":" << quoted(carrier.file.str())
        << ",\"carrier\":" << quoted(name_of(carrier.carrier))
        << ",\"blocks\":" << carrier.nr_blocks << ",\"sound\":" << carrier.nr_sound
        << ",\"sync\":" << carrier.nr_sync << ",\"crc\":" << carrier.nr_checksum;
    print_json_spread(out, "bitlines", spread_of(carrier.bitlines));
    print_json_spread(out, "centers", spread_of(carrier.centers));
    print_json_spread(out, "spare_bits", spread_of(carrier.spare_bits));
    out << ",\"instructions\":";
    print_list(out, carrier.instructions, [&](const auto& entry) {
        out << "{\"name\":" << quoted(check::name_of(entry.first.first))
            << ",\"opcode\":" << entry.first.first << ",\"operands\":";
        print_list(out, entry.first.second, number);
        out << ",\"frames\":";
        print_list(out, entry.second, number);
        out << '}';
    });
    out << ",\"problems\":";
    print_list(out, carrier.problems, [&](const std::string& problem) { out << quoted(problem); });
    out << '}';
}

}  // namespace

void print_block(std::ostream& out, const CarrierReport& carrier, std::size_t frame,
                 const vela::carrier::Block& block) {
    out << carrier.file << " frame " << frame << ": bit-lines " << block.nr_bitlines
        << ", channels";
    for (const auto id : block.header.channels)
        out << ' ' << Channel::create(id).short_name();
    out << ", centers " << block.centers.size() << ", spare bits " << block.nr_spare_bits << '\n';
}

void print_text(std::ostream& out, const Findings& findings) {
    for (const auto& carrier : findings.carriers)
        print_carrier(out, carrier);
    out << "Instructions:\n";
    for (const auto& carrier : findings.carriers)
        print_instructions(out, carrier);
    if (findings.comparison) print_quality(out, *findings.comparison);
    for (const auto& carrier : findings.carriers)
        print_problems(out, carrier.problems);
    print_problems(out, findings.problems);
    if (findings.all_well()) out << "All blocks of all carriers are sound\n";
    out << std::flush;
}

void print_json(std::ostream& out, const Findings& findings) {
    out << std::setprecision(10) << "{\"ok\":" << (findings.all_well() ? "true" : "false")
        << ",\"layout\":" << quoted(findings.layout) << ",\"frame_size\":" << findings.frame_size
        << ",\"sample_rate\":" << findings.sample_rate << ",\"carriers\":";
    print_list(out, findings.carriers,
               [&](const CarrierReport& carrier) { print_json_carrier(out, carrier); });
    if (findings.comparison) {
        out << ",\"quality\":";
        print_list(out, findings.comparison->figures(), [&](const auto& entry) {
            out << "{\"channel\":" << quoted(name_of(entry.first)) << ',';
            print_json_figures(out, entry.second);
            out << '}';
        });
        out << ",\"quality_all\":{";
        print_json_figures(out, findings.comparison->overall());
        out << '}';
    }
    out << ",\"problems\":";
    print_list(out, findings.problems, [&](const std::string& text) { out << quoted(text); });
    out << "}\n" << std::flush;
}

}  // namespace check
