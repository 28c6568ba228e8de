#include <vela/gnuplot/details/create_dataset_name.hpp>

namespace vela::gnuplot::details {

std::string create_dataset_name(std::size_t plot_index, std::size_t data_index) {
    return "$dataset_" + std::to_string(plot_index) + "_" + std::to_string(data_index);
}

}  // namespace vela::gnuplot::details
