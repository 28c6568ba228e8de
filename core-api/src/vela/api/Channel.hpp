#pragma once

#include <cstdint>
#include <memory>
#include <ostream>
#include <string>
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
/// The schema ("vela" or "NHK") is one setting of the whole process; it is written while options
/// are read, on the main thread, and decides what `short_name` gives from then on.
class Channel {
public:
    /// No position: id 25, no names.
    Channel();
    Channel(const Channel& other);
    Channel(Channel&& other) noexcept;  ///< `other` can only be assigned to or destroyed then
    Channel& operator=(const Channel& other);
    Channel& operator=(Channel&& other) noexcept;
    ~Channel();

    /// The position with that id.  An id outside the table gives a channel without names.
    static Channel create(channel::id::Value id);

    /// False, with `out` untouched, for an id outside the table.
    [[nodiscard]] static bool create(Channel& out, channel::id::Value id);

    /// By short name in the current schema, by full name, or "LF1"; case does not matter.
    /// False, with `out` untouched, for an unknown name.
    [[nodiscard]] static bool create(Channel& out, std::string_view name);

    /// "vela" or "NHK", exactly.  False, with the schema kept, for anything else.
    [[nodiscard]] static bool set_naming_schema(std::string_view schema);

    [[nodiscard]] std::uint32_t id() const;
    /// Name in the current schema; null for a channel outside the table.
    [[nodiscard]] const char* short_name() const;
    /// Null for a channel outside the table.
    [[nodiscard]] const char* full_name() const;
    /// Whether this is a position at all; false for id 25 alone.
    [[nodiscard]] bool valid() const { return id() != channel::id::None; }

    /// Full name, else short name, else the id, else "Invalid" for no position.
    void stream(std::ostream& out) const;

    bool operator==(const Channel& other) const { return id() == other.id(); }
    bool operator<(const Channel& other) const {
        return static_cast<std::int32_t>(id()) < static_cast<std::int32_t>(other.id());
    }

private:
    struct Impl;

    explicit Channel(Impl impl);

    std::unique_ptr<Impl> impl_;
};

inline std::ostream& operator<<(std::ostream& out, const Channel& channel) {
    channel.stream(out);
    return out;
}

/// One constant per position.  They are inline variables, so that any file that includes this
/// header may use them in its own variables, before `main` too.
namespace channel {

inline const Channel Left = Channel::create(id::Left);
inline const Channel Right = Channel::create(id::Right);
inline const Channel Center = Channel::create(id::Center);
inline const Channel LFE = Channel::create(id::LFE);
inline const Channel LeftSurround = Channel::create(id::LeftSurround);
inline const Channel RightSurround = Channel::create(id::RightSurround);
inline const Channel CenterSurround = Channel::create(id::CenterSurround);
inline const Channel LeftBack = Channel::create(id::LeftBack);
inline const Channel RightBack = Channel::create(id::RightBack);
inline const Channel HeightLeft = Channel::create(id::HeightLeft);
inline const Channel HeightRight = Channel::create(id::HeightRight);
inline const Channel HeightCenter = Channel::create(id::HeightCenter);
inline const Channel Top = Channel::create(id::Top);
inline const Channel HeightLeftSurround = Channel::create(id::HeightLeftSurround);
inline const Channel HeightRightSurround = Channel::create(id::HeightRightSurround);
inline const Channel HeightCenterSurround = Channel::create(id::HeightCenterSurround);
inline const Channel HeightLeftBack = Channel::create(id::HeightLeftBack);
inline const Channel HeightRightBack = Channel::create(id::HeightRightBack);
inline const Channel LeftCenter = Channel::create(id::LeftCenter);
inline const Channel RightCenter = Channel::create(id::RightCenter);
inline const Channel LFE2 = Channel::create(id::LFE2);
inline const Channel BottomLeft = Channel::create(id::BottomLeft);
inline const Channel BottomRight = Channel::create(id::BottomRight);
inline const Channel BottomCenter = Channel::create(id::BottomCenter);
inline const Channel Ambisonics = Channel::create(id::Ambisonics);

/// All positions that have a name, by ascending id.
[[nodiscard]] const std::vector<Channel>& all();

}  // namespace channel

}  // namespace vela::api
