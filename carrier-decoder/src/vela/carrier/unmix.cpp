#include <vela/carrier/unmix.hpp>
#include <vela/numeric/wrap.hpp>

namespace vela::carrier {

namespace {

/// An integer whose sums wrap, so that formulas read as they are.
struct Word {
    int value = 0;

    friend Word operator+(Word a, Word b) { return {numeric::wrap_add(a.value, b.value)}; }
    friend Word operator-(Word a, Word b) { return {numeric::wrap_sub(a.value, b.value)}; }
    friend Word operator*(int a, Word b) { return {numeric::wrap_mul(a, b.value)}; }
};

class Source {
public:
    explicit Source(const Block& block) : block_(block) {}

    [[nodiscard]] std::size_t size() const { return block_.mix.size(); }
    [[nodiscard]] Word mix(std::size_t t) const { return {block_.mix[t]}; }
    [[nodiscard]] Word seed(std::size_t i) const { return {block_.seeds[i]}; }
    [[nodiscard]] Word center(std::size_t t, std::size_t element) const {
        return {block_.centers[block_.ixs[t]][element]};
    }

private:
    const Block& block_;
};

using Signals = std::vector<std::vector<Word>>;

Signals unmix_two(const Source& in) {
    const std::size_t n = in.size();
    Signals y(2, std::vector<Word>(n));
    y[1][0] = in.seed(0) + in.center(0, 0);
    y[0][0] = in.mix(0) - y[1][0];
    y[0][1] = in.seed(1) + in.center(1, 0);
    y[0][2] = 2 * in.seed(1) - y[0][0];
    y[1][1] = in.mix(1) - y[0][1];
    for (std::size_t t = 2; t < n; ++t) {
        const auto& anchored = y[t % 2];
        auto& solved = y[1 - t % 2];
        solved[t] = in.mix(t) - anchored[t];
        if (t + 1 < n) solved[t + 1] = 2 * (solved[t] - in.center(t, 0)) - solved[t - 1];
    }
    return y;
}

/// Samples 0 to 2, and what they tell of samples 3 and 4.
void start_three(Signals& y, const Source& in) {
    y[1][0] = in.seed(0) + in.center(0, 0);
    y[2][0] = in.seed(1) + in.center(0, 1);
    y[0][0] = in.mix(0) - y[1][0] - y[2][0];

    const Word slope_0 = in.seed(2) - y[0][0];
    y[0][1] = in.seed(2) + in.center(1, 0);
    y[0][2] = in.seed(2) + 2 * slope_0 + in.center(2, 0);
    y[0][3] = in.seed(2) + 3 * slope_0;

    y[2][1] = in.seed(3) + in.center(1, 1);
    y[1][1] = in.mix(1) - y[2][1] - y[0][1];

    const Word slope_1 = in.seed(4) - y[1][1];
    y[1][2] = in.seed(4) + in.center(2, 1);
    y[1][3] = in.seed(4) + 2 * slope_1;
    y[1][4] = in.seed(4) + 3 * slope_1;

    y[2][2] = in.mix(2) - y[1][2] - y[0][2];
}

Signals unmix_three(const Source& in) {
    const std::size_t n = in.size();
    Signals y(3, std::vector<Word>(n));
    start_three(y, in);
    for (std::size_t t = 3; t < n; ++t) {
        const std::size_t anchored = t % 3;
        const std::size_t known = (t + 1) % 3;
        const std::size_t solved = (t + 2) % 3;
        // The two channels that are not anchored take the elements of the center in their order.
        const std::size_t element = known < solved ? 0 : 1;
        y[known][t] = y[known][t] + in.center(t, element);

        const Word own = in.center(t, 1 - element);
        const Word line = in.mix(t) - y[known][t] - y[anchored][t] - own;
        const Word slope = line - y[solved][t - 1];
        y[solved][t] = line + own;
        if (t + 1 < n) y[solved][t + 1] = line + 2 * slope;
        if (t + 2 < n) y[solved][t + 2] = line + 3 * slope;
    }
    return y;
}

}  // namespace

std::vector<std::vector<int>> unmix(const Block& block) {
    const Source in(block);
    if (block.header.channels.size() == 1) return {block.mix};
    const Signals y = block.header.channels.size() == 2 ? unmix_two(in) : unmix_three(in);
    std::vector<std::vector<int>> out(y.size());
    for (std::size_t i = 0; i < y.size(); ++i) {
        for (const Word word : y[i])
            out[i].push_back(word.value);
    }
    return out;
}

}  // namespace vela::carrier
