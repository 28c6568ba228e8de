#pragma once

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <tuple>

namespace vela::gvm::ref {

/// Sums over a set of deltas, and its cost: the squared distances of the deltas from their mean.
///
/// `Element` is an array of integers, one delta.  With an exponent other than 0 the cost is divided
/// by the count raised to it, which favours large clusters.
template <typename Element>
class Cluster {
public:
    static constexpr std::size_t dimension = std::tuple_size_v<Element>;
    using Vector = std::array<double, dimension>;

    explicit Cluster(double exponent = 0.0) : exponent_(exponent) {}

    [[nodiscard]] double exponent() const { return exponent_; }
    [[nodiscard]] std::uint32_t count() const { return count_; }
    [[nodiscard]] const Vector& sum() const { return sum_; }

    /// 0 for an empty cluster.  Computed once after each change.
    [[nodiscard]] double cost() const {
        if (!cached_cost_) cached_cost_ = compute_cost_();
        return *cached_cost_;
    }

    /// By how much the cost would rise with `delta`; never below 0 but for rounding.
    [[nodiscard]] double add_delta(const Element& delta) const {
        Cluster grown = *this;
        grown.insert(delta);
        return grown.cost() - cost();
    }

    void insert(const Element& delta) {
        for (std::size_t i = 0; i < dimension; ++i) {
            const double x = delta[i];
            sum_sq_[i] += x * x;
            sum_[i] += x;
        }
        ++count_;
        cached_cost_.reset();
    }

    void merge(const Cluster& other) {
        for (std::size_t i = 0; i < dimension; ++i) {
            sum_sq_[i] += other.sum_sq_[i];
            sum_[i] += other.sum_[i];
        }
        count_ += other.count_;
        cached_cost_.reset();
    }

private:
    [[nodiscard]] double compute_cost_() const {
        if (count_ == 0) return 0.0;
        double squares = 0.0;
        double length_sq = 0.0;
        for (std::size_t i = 0; i < dimension; ++i) {
            squares += sum_sq_[i];
            length_sq += sum_[i] * sum_[i];
        }
        const double cost = squares - length_sq / count_;
        return exponent_ == 0.0 ? cost : cost / std::pow(count_, exponent_);
    }

    double exponent_;
    std::uint32_t count_ = 0;
    Vector sum_sq_{};
    Vector sum_{};
    mutable std::optional<double> cached_cost_;
};

}  // namespace vela::gvm::ref
