#include <algorithm>
#include <vela/codec/v3/lib/encode/details/Filter.hpp>

namespace vela::codec::v3::encode::details {

void Filter::update(std::uint32_t nr_bitlines, float quality) {
    points_.push_back({nr_bitlines, quality});
    sort_();
    prune_();
}

// Only the last one is out of place.  It goes behind its equals: a retry adds a second point of the
// same count.
void Filter::sort_() {
    const auto last = points_.end() - 1;
    const auto place =
        std::ranges::upper_bound(points_.begin(), last, last->nr_bitlines, {}, &Point::nr_bitlines);
    std::rotate(place, last, points_.end());
}

void Filter::prune_() {
    if (points_.size() < 2) return;
    const auto best = std::ranges::max_element(points_, {}, &Point::quality);
    const auto before = std::distance(points_.begin(), best);
    const auto after = std::distance(best, points_.end()) - 1;

    if (before == 0) {
        points_.resize(2);
    } else if (after == 0) {
        points_.erase(points_.begin(), points_.end() - 2);
    } else {
        points_.erase(best + 2, points_.end());
        points_.erase(points_.begin(), points_.begin() + (before - 1));
    }
}

bool Filter::operator()(std::uint32_t nr_bitlines) const {
    if (points_.size() == 3)
        return nr_bitlines < points_[0].nr_bitlines || nr_bitlines > points_[2].nr_bitlines;
    if (points_.size() == 2) {
        if (points_[1].quality > points_[0].quality) return nr_bitlines < points_[0].nr_bitlines;
        return nr_bitlines > points_[1].nr_bitlines;
    }
    return false;
}

}  // namespace vela::codec::v3::encode::details
