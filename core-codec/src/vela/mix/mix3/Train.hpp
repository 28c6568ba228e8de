#pragma once

#include <cstddef>
#include <vela/numeric/wrap.hpp>

namespace vela::mix::mix3 {

/// Takes a mix of three channels apart, one sample after the other.
///
/// At every t one channel lacks only its center, one is at an anchor, known since two samples ago,
/// and the third is what remains of the mix.  Its prediction, with its last anchor, gives away its
/// next two samples.  Which channel is which goes round with t mod 3:
///
///     t mod 3    finished     anchored    solved
///        0       1 (k = 0)       0        2 (k = 1)
///        1       2 (k = 1)       1        0 (k = 0)
///        2       0 (k = 0)       2        1 (k = 1)
template <typename It>
class Train {
public:
    /// Each iterator stands at t = 2 of its channel.  REQUIRES channel 0 to be known up to 3, its
    /// sample at 3 an anchor; channel 1 up to 4, its center missing at 3; channel 2 up to 2.
    Train(It p0, It p1, It p2)
        : p0_(p0), p1_(p1), p2_(p2), begun_(p1[1]), anchor_(p0[1]), next_(p1[2]), last_(p2[0]) {}

    /// Completes all three channels at t.  `t` counts up by one from 3; `K` is how many samples
    /// are left from t on, at most 3: what would come after the end is not worked out.
    template <std::size_t K, typename Center>
    void proceed(std::size_t t, int mixed, const Center& center) {
        ++p0_, ++p1_, ++p2_;
        switch (t % 3) {
            case 0:
                return step_<K>(*p1_, center[0], *p0_, *p2_, center[1], mixed);
            case 1:
                return step_<K>(*p2_, center[1], *p1_, *p0_, center[0], mixed);
            default:
                return step_<K>(*p0_, center[0], *p2_, *p1_, center[1], mixed);
        }
    }

private:
    template <std::size_t K>
    void step_(int& finished, int finished_center, int& anchored, int& solved, int solved_center,
               int mixed) {
        using numeric::wrap_add, numeric::wrap_mul, numeric::wrap_sub;
        finished = wrap_add(begun_, finished_center);
        anchored = anchor_;
        const int rest = wrap_sub(wrap_sub(mixed, finished), anchor_);
        const int prediction = wrap_sub(rest, solved_center);
        solved = rest;
        const int slope = wrap_sub(prediction, last_);
        last_ = anchor_;
        anchor_ = next_;
        if constexpr (K >= 2) begun_ = wrap_add(prediction, wrap_mul(2, slope));
        if constexpr (K >= 3) next_ = wrap_add(prediction, wrap_mul(3, slope));
    }

    It p0_;
    It p1_;
    It p2_;
    int begun_;   ///< Prediction of the channel that is finished next.
    int anchor_;  ///< Next anchor, and the one after it.
    int next_;
    int last_;  ///< Last anchor of the channel that is solved next.
};

}  // namespace vela::mix::mix3
