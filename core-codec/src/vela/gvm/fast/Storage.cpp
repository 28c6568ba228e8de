#include <vela/gvm/fast/Storage.hpp>

namespace vela::gvm::fast {

template <typename T, std::size_t N>
void Storage<T, N>::reset(std::size_t size) {
    const std::size_t padded = size + sieve::padding;
    for (std::vector<T>* column : {&sum_sq_, &count_, &cost_})
        column->assign(padded, 0);
    for (std::vector<T>& column : sum_)
        column.assign(padded, 0);
    for (std::vector<float>& column : mean_)
        column.assign(padded, std::numeric_limits<float>::infinity());
    weight_.assign(padded, 1);
    inverse_.assign(padded, 1);
}

template <typename T, std::size_t N>
costs::Columns<N> Storage<T, N>::columns() const {
    costs::Columns<N> columns{{}, sum_sq_.data(), count_.data(), cost_.data()};
    for (std::size_t i = 0; i < N; ++i)
        columns.sum[i] = sum_[i].data();
    return columns;
}

template <typename T, std::size_t N>
sieve::Columns<N> Storage<T, N>::shadows() const {
    sieve::Columns<N> columns{{}, weight_.data(), inverse_.data()};
    for (std::size_t i = 0; i < N; ++i)
        columns.mean[i] = mean_[i].data();
    return columns;
}

template class Storage<double, 1>;
template class Storage<double, 2>;

}  // namespace vela::gvm::fast
