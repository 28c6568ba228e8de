#include "Mixer.hpp"

namespace vela::carrier::support {

namespace {

int even(int x) {
    return x / 2 * 2;
}

int quad(int x) {
    return x >= 0 ? (x + 1) / 4 * 4 : (x - 1) / 4 * 4;
}

/// One channel of two, anchored at even or odd samples; `c` gives the center of a sample.
template <typename Center>
Signal part_of_two(const Signal& x, std::size_t anchor, Center c) {
    const std::size_t n = x.size();
    Signal out(n);
    for (std::size_t t = 0; t < n; ++t) {
        if (t % 2 == anchor) {
            out[t] = even(x[t]);
        } else if (t == 0 || t + 1 == n) {
            out[t] = x[t];
        } else {
            out[t] = (even(x[t - 1]) + even(x[t + 1])) / 2 + c(t);
        }
    }
    return out;
}

/// What is predicted at `t`, 1 or 2 samples behind the anchor `a`.
int prediction(const Signal& x, std::size_t a, std::size_t t) {
    const int from = quad(x[a]);
    if (a + 3 < x.size()) {
        const int to = quad(x[a + 3]);
        const int step = (to - from) / 4;
        return t == a + 1 ? from + step : to - step;
    }
    const int step = (x[a + 2] - from) / 3;
    return t == a + 1 ? from + step : from + 3 * step;
}

/// One channel of three, anchored at its own number and every third sample from there.
template <typename Center>
Signal part_of_three(const Signal& x, std::size_t number, Center c) {
    const std::size_t n = x.size();
    Signal out(n);
    for (std::size_t t = 0; t < n; ++t) {
        const std::size_t behind = (t + 3 - number) % 3;
        const bool last_alone = behind == 1 && t + 1 == n;
        if (behind == 0) {
            out[t] = quad(x[t]);
        } else if (t < number || last_alone) {
            out[t] = x[t];
        } else {
            out[t] = prediction(x, t - behind, t) + c(t);
        }
    }
    return out;
}

}  // namespace

Mixed mix(const std::vector<Signal>& channels, const std::vector<std::array<int, 2>>& centers,
          const std::vector<std::uint32_t>& ixs) {
    const std::size_t n = ixs.size();
    const auto center = [&](std::size_t t, std::size_t element) {
        return centers[ixs[t]][element];
    };
    // Of the channels that are not anchored at t, the lower one takes element 0.
    const auto element = [](std::size_t t, std::size_t number) {
        const std::size_t lowest = t % 3 == 0 ? 1 : 0;
        return number == lowest ? std::size_t{0} : std::size_t{1};
    };
    Mixed out;
    for (std::size_t i = 0; i < channels.size(); ++i) {
        out.rebuilt.push_back(
            channels.size() == 2
                ? part_of_two(channels[i], i, [&](std::size_t t) { return center(t, 0); })
                : part_of_three(channels[i], i,
                                [&](std::size_t t) { return center(t, element(t, i)); }));
    }
    out.mix.resize(n);
    for (std::size_t t = 0; t < n; ++t) {
        for (const Signal& part : out.rebuilt)
            out.mix[t] += part[t];
    }
    const auto& r = out.rebuilt;
    if (channels.size() == 2) {
        out.seeds = {r[1][0] - center(0, 0), r[0][1] - center(1, 0)};
    } else {
        out.seeds = {r[1][0] - center(0, 0), r[2][0] - center(0, 1), r[0][1] - center(1, 0),
                     r[2][1] - center(1, 1), r[1][2] - center(2, 1)};
    }
    return out;
}

Signal noise(std::mt19937& engine, std::size_t length, int limit) {
    std::uniform_int_distribution<int> draw(-limit, limit);
    Signal out(length);
    for (int& x : out)
        x = draw(engine);
    return out;
}

std::vector<std::uint32_t> random_ixs(std::mt19937& engine, std::size_t length,
                                      std::uint32_t count) {
    std::uniform_int_distribution<std::uint32_t> draw(0, count - 1);
    std::vector<std::uint32_t> out(length);
    for (std::uint32_t& ix : out)
        ix = draw(engine);
    out[length / 2] = count - 1;
    return out;
}

}  // namespace vela::carrier::support
