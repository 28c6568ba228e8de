#pragma once

#include <cstddef>
#include <string>

namespace vela::gnuplot::details {

/// Name of an inline dataset, "$dataset_0_0": unique in a file, since gnuplot keeps the datasets
/// of earlier plots.
[[nodiscard]] std::string create_dataset_name(std::size_t plot_index, std::size_t data_index);

}  // namespace vela::gnuplot::details
