#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <iomanip>
#include <limits>
#include <optional>
#include <span>
#include <string>
#include <vela/codec/v3/lib/encoder/CandidateLog.hpp>

namespace vela::codec::v3::encoder {

namespace {

using encode::Group;

const char* file_name() {
#ifdef VELA_TEST_SWITCHES
    return std::getenv("VELA_CANDIDATES");
#else
    return nullptr;
#endif
}

/// FNV-1a, 32 bits, over the four low bytes of each value, least significant first.
class Hash {
public:
    template <typename T>
    Hash& operator<<(const T& value) {
        if constexpr (std::is_integral_v<T>)
            add_(static_cast<std::uint32_t>(value));
        else
            for (const auto& element : value)
                *this << element;
        return *this;
    }
    [[nodiscard]] std::uint32_t value() const { return state_; }

private:
    void add_(std::uint32_t value) {
        for (int shift = 0; shift < 32; shift += 8)
            state_ = (state_ ^ (value >> shift & 0xff)) * 16777619u;
    }

    std::uint32_t state_ = 2166136261u;
};

template <typename T>
std::uint32_t hash(const T& values) {
    return (Hash() << values).value();
}

std::size_t nr_centers(const Group& group) {
    return group.active.size() == 3 ? group.centers_2d.size() : group.centers_1d.size();
}

std::uint32_t hash_centers(const Group& group) {
    return group.active.size() == 3 ? hash(group.centers_2d) : hash(group.centers_1d);
}

template <typename T>
std::int64_t or_not_due(const std::optional<T>& value) {
    return value ? static_cast<std::int64_t>(*value) : -1;
}

/// One line, opened and closed; every key comes with its value.
class Line {
public:
    explicit Line(std::ostream& out) : out_(out) { out_ << '{'; }
    Line(const Line&) = delete;
    Line& operator=(const Line&) = delete;
    ~Line() { out_ << "}\n" << std::flush; }

    template <typename T>
    Line& add(const char* key, const T& value) {
        if (!first_) out_ << ',';
        first_ = false;
        out_ << '"' << key << "\":";
        write_(value);
        return *this;
    }

private:
    void write_(bool value) { out_ << (value ? "true" : "false"); }
    void write_(const char* value) { out_ << '"' << value << '"'; }
    template <typename T>
    void write_(const std::optional<T>& value) {
        value ? static_cast<void>(write_(*value)) : static_cast<void>(out_ << "null");
    }
    void write_(const std::vector<double>& values) {
        out_ << '[';
        for (std::size_t i = 0; i < values.size(); ++i) {
            out_ << (i ? "," : "");
            write_(values[i]);
        }
        out_ << ']';
    }
    template <typename T>
    void write_(const T& value) {
        if constexpr (std::is_integral_v<T>)
            out_ << +value;
        else
            out_ << std::setprecision(std::numeric_limits<double>::max_digits10) << value;
    }

    std::ostream& out_;
    bool first_ = true;
};

// All frames of a run are of the same length; several of them may be under way.
void add_head(Line& line, const Group& group) {
    line.add("frame", group.span.start / std::max(group.span.size(), std::int64_t{1}))
        .add("carrier", group.frame.key.channel.short_name())
        .add("b", group.nr_bitlines)
        .add("prev_b", group.prev_bitlines)
        .add("active", group.active.size());
}

void add_common(Line& line, const Group& group) {
    const bool scored = group.has_score;
    line.add("centers", nr_centers(group))
        .add("fits", group.fits)
        .add("score", scored ? std::optional(group.score) : std::nullopt)
        .add("scaler_ix", group.scaler_ix)
        .add("rice_k", group.record.rice_k)
        .add("center_bits", group.record.center_bits)
        .add("instruction_bits", group.budget.instruction_bits)
        .add("h_deltas", hash(group.deltas))
        .add("h_centers", hash_centers(group))
        .add("h_ixs", hash(group.ixs))
        .add("h_mixed", hash(group.mixed));
}

}  // namespace

CandidateLog::CandidateLog() {
    if (const char* const name = file_name()) out_.open(name);
}

void CandidateLog::add(const Group& group, encode::Chain::Code code) {
    if (!out_.is_open()) return;
    const std::lock_guard lock(mutex_);
    Line line(out_);
    add_head(line, group);
    line.add("start", group.trace.start);
    add_common(line, group);
    line.add("learns", group.trace.learns)
        .add("fit", group.trace.fit)
        .add("need", group.trace.need)
        .add("capacity", group.trace.capacity)
        .add("retries", group.trace.retries)
        .add("code", static_cast<int>(code))
        .add("filtered", code == encode::Chain::Code::filtered)
        .add("overflow", group.overflow)
        .add("silent", group.silence.size() != 0);
}

void CandidateLog::add_winner(const Group& group) {
    if (!out_.is_open()) return;
    const std::lock_guard lock(mutex_);
    Line line(out_);
    add_head(line, group);
    line.add("winner", true);
    add_common(line, group);
    line.add("h_frame", hash(group.frame.samples()))
        .add("meta", or_not_due(group.meta))
        .add("preset", or_not_due(group.preset))
        .add("dbrms", group.dbrms)
        .add("dbpeak", group.dbpeak);
}

}  // namespace vela::codec::v3::encoder
