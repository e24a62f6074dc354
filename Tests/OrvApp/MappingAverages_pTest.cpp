#include "OrvApp/MappingAverages_p.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

using namespace orv::app;

namespace {

// No element type has no nodes, so no mesh reaches these.

TEST(MappingAveragesTest, AnElementWithoutNodesIsNaN) {
    const std::vector<std::uint32_t> offsets = {0, 1, 1, 3};
    const std::vector<std::uint32_t> nodes = {0, 0, 1};
    const std::vector<double> values = {2, 4};
    std::vector<double> averages(3, 7.0);
    averageNodesOfElements({offsets, nodes}, {values.data(), 1, 1}, averages.data());
    EXPECT_EQ(averages[0], 2);
    EXPECT_TRUE(std::isnan(averages[1]));
    EXPECT_EQ(averages[2], 3);
}

TEST(MappingAveragesTest, AnElementWithoutNodesTouchesNone) {
    const std::vector<std::uint32_t> offsets = {0, 0, 2};
    const std::vector<std::uint32_t> nodes = {0, 1};
    const std::vector<double> values = {2, 4};
    std::vector<double> averages(2, 7.0);
    averageElementsAroundNodes({offsets, nodes}, {values.data(), 1, 1}, 2, averages.data());
    EXPECT_EQ(averages, (std::vector<double>{4, 4}));
}

TEST(MappingAveragesTest, TakesTheFirstDoublesOfWiderItems) {
    const std::vector<std::uint32_t> offsets = {0, 2};
    const std::vector<std::uint32_t> nodes = {0, 1};
    const std::vector<double> values = {1, 2, 3, 90, 90, 90, 3, 4, 5, 90, 90, 90};
    std::vector<double> average(3);
    averageNodesOfElements({offsets, nodes}, {values.data(), 6, 3}, average.data());
    EXPECT_EQ(average, (std::vector<double>{2, 3, 4}));
    std::vector<double> atNodes(6);
    averageElementsAroundNodes({offsets, nodes}, {values.data(), 6, 3}, 2, atNodes.data());
    EXPECT_EQ(atNodes, (std::vector<double>{1, 2, 3, 1, 2, 3}));
}

} // namespace
