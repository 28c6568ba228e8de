#pragma once

#include <concepts>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace vela {

/// A string range: a cursor that consumes shared text from the front.
///
///     text   key(1,2);rest         begin = 3 after pop_if("key")
///               ^begin   ^end
///
/// A `pop_` operation takes something and returns true, or takes nothing, leaves its output alone
/// and returns false.  (`pop_bracket` is the one exception.)  Sub-ranges share the text: splitting
/// a cursor copies none of it.
///
/// Threads: a cursor belongs to one thread; cursors on the same text may live on several.
class Strange {
public:
    Strange() = default;
    /// Copies the text once; all of it is still to be taken.
    explicit Strange(std::string text);

    [[nodiscard]] bool empty() const { return !text_ || begin_ == end_; }
    /// Characters not yet taken.
    [[nodiscard]] std::uint64_t size() const { return end_ - begin_; }
    /// The characters not yet taken; nothing is taken by it.
    [[nodiscard]] std::string to_str() const;
    void clear();

    /// Takes the text before the first `c`, and `c` itself.  False if there is no `c`.
    [[nodiscard]] bool pop_until(std::string& out, char c);
    [[nodiscard]] bool pop_until(Strange& out, char c);

    /// Takes everything.  False if nothing is left.
    bool pop_all(std::string& out);

    /// Takes a line without its end, which is "\n" or "\r\n"; an empty line is a line.  The last
    /// line needs no end, and then keeps a "\r".  False if nothing is left.
    [[nodiscard]] bool pop_line(Strange& out);

    /// Takes `prefix` if the range starts with it.
    bool pop_if(std::string_view prefix);

    /// Takes characters for as long as each is one of `chars`.  True if that was one or more.
    bool pop_any_of(std::string_view chars);

    /// Takes a bracketed range, nested brackets included; `inner` is what the brackets enclose.
    ///
    /// `pair` is the opening and the closing character.  False without the opening one, which takes
    /// nothing; and false if the closing one is missing, which leaves the opening one taken: for
    /// callers that is the end of their line.
    [[nodiscard]] bool pop_bracket(Strange& inner, std::string_view pair);

    /// Takes leading white space, a sign and digits, as `strtoll` does in the bases that it knows
    /// (2 to 36; base 16 takes a leading "0x", too).
    ///
    /// Only 30 characters are looked at, so a longer number is cut there.  The 64-bit result is
    /// narrowed to `T` by dropping high bits: "300" is 44 in 8 bits, "-1" the largest unsigned.
    template <std::integral T>
    [[nodiscard]] bool pop_int(T& out, int base = 10) {
        std::int64_t value = 0;
        if (!pop_int64_(value, base)) return false;
        out = static_cast<T>(value);
        return true;
    }

    /// Takes a real as `strtod` does, again from at most 30 characters.  A `float` is rounded
    /// twice, first to double.
    template <std::floating_point T>
    [[nodiscard]] bool pop_float(T& out) {
        double value = 0;
        if (!pop_double_(value)) return false;
        out = static_cast<T>(value);
        return true;
    }

private:
    Strange(std::shared_ptr<const std::string> text, std::uint64_t begin, std::uint64_t end);

    [[nodiscard]] std::string_view rest_() const;
    /// The first `size` characters as a range of their own.
    [[nodiscard]] Strange front_(std::uint64_t size) const;
    bool pop_int64_(std::int64_t& out, int base);
    bool pop_double_(double& out);

    std::shared_ptr<const std::string> text_;
    std::uint64_t begin_ = 0;
    std::uint64_t end_ = 0;
};

}  // namespace vela
