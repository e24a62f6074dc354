#include "Tools/Statistics.h"

#include "OrvCore/Defines.h"

#include <gtest/gtest.h>

#include <limits>
#include <vector>

using namespace orvapp;

namespace {

constexpr double INF = std::numeric_limits<double>::infinity();
constexpr double NOT_A_NUMBER = std::numeric_limits<double>::quiet_NaN();

} // namespace

TEST(Statistics, LooksAtOneComponent) {
    // Three vectors; Y is 20, -5, 30: the sum is 45.
    const std::vector<double> values = {1, 20, 3, 4, -5, 6, 7, 30, 9};
    const Statistics y = componentStatistics(values, 3, 1);
    EXPECT_EQ(y.count, 3u);
    EXPECT_EQ(y.undefined, 0u);
    EXPECT_EQ(y.min->value, -5);
    EXPECT_EQ(y.min->item, 1u);
    EXPECT_EQ(y.max->value, 30);
    EXPECT_EQ(y.max->item, 2u);
    EXPECT_EQ(y.average, 15);
}

TEST(Statistics, TakesTheFirstOfEqualExtremes) {
    const std::vector<double> values = {2, 1, 1, 2};
    const Statistics all = componentStatistics(values, 1, 0);
    EXPECT_EQ(all.min->item, 1u);
    EXPECT_EQ(all.max->item, 0u);
}

TEST(Statistics, LeavesOutWhatIsUndefinedOrNoNumber) {
    const std::vector<double> values = {orv::UNDEFINED_DOUBLE, 4, NOT_A_NUMBER, 2};
    const Statistics all = componentStatistics(values, 1, 0);
    EXPECT_EQ(all.count, 4u);
    EXPECT_EQ(all.undefined, 2u);
    EXPECT_EQ(all.min->item, 3u);
    EXPECT_EQ(all.max->item, 1u);
    EXPECT_EQ(all.average, 3);
}

TEST(Statistics, HasNoRangeWithoutValues) {
    const Statistics none = componentStatistics({}, 6, 5);
    EXPECT_EQ(none.count, 0u);
    EXPECT_FALSE(none.min || none.max || none.average);

    const std::vector<double> undefined(2, orv::UNDEFINED_DOUBLE);
    const Statistics missing = componentStatistics(undefined, 1, 0);
    EXPECT_EQ(missing.undefined, 2u);
    EXPECT_FALSE(missing.min || missing.max || missing.average);
}

TEST(Statistics, AverageLosesNoSmallValues) {
    // Added up one after the other in any floating type of the machine, the ones disappear beside 1e30.
    const std::vector<double> values = {1e30, 1, -1e30, 1};
    EXPECT_EQ(componentStatistics(values, 1, 0).average, 0.5);
}

TEST(Statistics, AverageOfLargeValuesIsFinite) {
    const std::vector<double> values = {1.5e308, 1.5e308, 1.5e308};
    EXPECT_EQ(componentStatistics(values, 1, 0).average, 1.5e308);
}

TEST(Statistics, AverageWithInfinityIsInfinite) {
    EXPECT_EQ(componentStatistics(std::vector<double>{1, INF, 2}, 1, 0).average, INF);
    EXPECT_EQ(componentStatistics(std::vector<double>{1, -INF, 2}, 1, 0).average, -INF);
}
