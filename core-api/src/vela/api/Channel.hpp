#pragma once

#include <cstdint>
#include <ostream>
#include <string_view>
#include <vector>

namespace vela::api {

namespace channel::id {

/// Speaker positions.  25 says that there is none.
enum Value : std::uint32_t {
    Left,
    Right,
    Center,
    LFE,
    LeftSurround,
    RightSurround,
    CenterSurround,
    LeftBack,
    RightBack,
    HeightLeft,
    HeightRight,
    HeightCenter,
    Top,
    HeightLeftSurround,
    HeightRightSurround,
    HeightCenterSurround,
    HeightLeftBack,
    HeightRightBack,
    LeftCenter,
    RightCenter,
    LFE2,
    BottomLeft,
    BottomRight,
    BottomCenter,
    Ambisonics,
    None
};

/// Count of positions that have a name.
inline constexpr std::uint32_t count = 25;

}  // namespace channel::id

/// A speaker position: its id, a short name in each of two naming schemas, and a full name.
///
/// It holds the id alone: each frame has dozens of copies, and names stand in a table.
///
/// The schema ("vela" or "NHK") is one setting of the whole process; it is written while options
/// are read, on the main thread, and decides what `short_name` gives from then on.
class Channel {
public:
    /// No position: id 25, no names.
    constexpr Channel() = default;

    /// The position with that id.  An id outside the table gives a channel without names.
    static constexpr Channel create(channel::id::Value id) { return Channel(id); }

    /// False, with `out` untouched, for an id outside the table.
    [[nodiscard]] static bool create(Channel& out, channel::id::Value id);

    /// By short name in the current schema, by full name, or "LF1"; case does not matter.
    /// False, with `out` untouched, for an unknown name.
    [[nodiscard]] static bool create(Channel& out, std::string_view name);

    /// "vela" or "NHK", exactly.  False, with the schema kept, for anything else.
    [[nodiscard]] static bool set_naming_schema(std::string_view schema);

    [[nodiscard]] constexpr std::uint32_t id() const { return id_; }
    /// Name in the current schema; null for a channel outside the table.
    [[nodiscard]] const char* short_name() const;
    /// Null for a channel outside the table.
    [[nodiscard]] const char* full_name() const;
    /// Whether this is a position at all; false for id 25 alone.
    [[nodiscard]] constexpr bool valid() const { return id_ != channel::id::None; }

    /// Full name, else short name, else the id, else "Invalid" for no position.
    void stream(std::ostream& out) const;

    constexpr bool operator==(const Channel& other) const = default;
    constexpr bool operator<(const Channel& other) const {
        return static_cast<std::int32_t>(id_) < static_cast<std::int32_t>(other.id_);
    }

private:
    explicit constexpr Channel(channel::id::Value id) : id_(id) {}

    std::uint32_t id_ = channel::id::None;
};

inline std::ostream& operator<<(std::ostream& out, const Channel& channel) {
    channel.stream(out);
    return out;
}

/// One constant per position, for use before `main` too.
namespace channel {

inline constexpr Channel Left = Channel::create(id::Left);
inline constexpr Channel Right = Channel::create(id::Right);
inline constexpr Channel Center = Channel::create(id::Center);
inline constexpr Channel LFE = Channel::create(id::LFE);
inline constexpr Channel LeftSurround = Channel::create(id::LeftSurround);
inline constexpr Channel RightSurround = Channel::create(id::RightSurround);
inline constexpr Channel CenterSurround = Channel::create(id::CenterSurround);
inline constexpr Channel LeftBack = Channel::create(id::LeftBack);
inline constexpr Channel RightBack = Channel::create(id::RightBack);
inline constexpr Channel HeightLeft = Channel::create(id::HeightLeft);
inline constexpr Channel HeightRight = Channel::create(id::HeightRight);
inline constexpr Channel HeightCenter = Channel::create(id::HeightCenter);
inline constexpr Channel Top = Channel::create(id::Top);
inline constexpr Channel HeightLeftSurround = Channel::create(id::HeightLeftSurround);
inline constexpr Channel HeightRightSurround = Channel::create(id::HeightRightSurround);
inline constexpr Channel HeightCenterSurround = Channel::create(id::HeightCenterSurround);
inline constexpr Channel HeightLeftBack = Channel::create(id::HeightLeftBack);
inline constexpr Channel HeightRightBack = Channel::create(id::HeightRightBack);
inline constexpr Channel LeftCenter = Channel::create(id::LeftCenter);
inline constexpr Channel RightCenter = Channel::create(id::RightCenter);
inline constexpr Channel LFE2 = Channel::create(id::LFE2);
inline constexpr Channel BottomLeft = Channel::create(id::BottomLeft);
inline constexpr Channel BottomRight = Channel::create(id::BottomRight);
inline constexpr Channel BottomCenter = Channel::create(id::BottomCenter);
inline constexpr Channel Ambisonics = Channel::create(id::Ambisonics);

/// All positions that have a name, by ascending id.
[[nodiscard]] const std::vector<Channel>& all();

}  // namespace channel

}  // namespace vela::api
