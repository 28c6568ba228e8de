#pragma once

#include <cstdint>
#include <deque>

namespace vela::codec::v3::encode::details {

/// The best scores of one carrier channel over counts of bit-lines, bracketed.
///
/// Quality over the count of bit-lines is taken to have one peak.  At most three points are kept:
/// the best and the neighbours that bracket it.
///
///     quality          *            counts outside the bracket cannot win
///                  *       *
///          skip |  b0  b1  b2 | skip
class Filter {
public:
    struct Point {
        std::uint32_t nr_bitlines;
        float quality;  ///< higher is better
    };

    /// Forgets all points.
    void clear() { points_.clear(); }

    void update(std::uint32_t nr_bitlines, float quality);

    /// Whether this count cannot win any more.
    [[nodiscard]] bool operator()(std::uint32_t nr_bitlines) const;

    [[nodiscard]] const std::deque<Point>& points() const { return points_; }

private:
    void sort_();
    void prune_();

    std::deque<Point> points_;
};

}  // namespace vela::codec::v3::encode::details
