#include <gtest/gtest.h>

#include <vela/gnuplot/details/create_dataset_name.hpp>

namespace vela::gnuplot::details {

TEST(CreateDatasetName, HoldsBothNumbers) {
    EXPECT_EQ(create_dataset_name(0, 0), "$dataset_0_0");
    EXPECT_EQ(create_dataset_name(12, 3), "$dataset_12_3");
}

TEST(CreateDatasetName, KeepsNumbersApart) {
    EXPECT_NE(create_dataset_name(1, 11), create_dataset_name(11, 1));
}

}  // namespace vela::gnuplot::details
