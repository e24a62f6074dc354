#include "OrvUnstructGrid/ResultsQueryResult.h"

#include "OrvCore/Defines.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using namespace orv::ug;
using orv::UNDEFINED_DOUBLE;

namespace {

double averageOf(std::vector<double> values) {
    return ResultsQueryResult(std::move(values)).averageSubItemScalar();
}

TEST(ResultsQueryResult, AveragesWhatIsDefined) {
    EXPECT_EQ(averageOf({1.0, 2.0, 6.0}), 3.0);
    EXPECT_EQ(averageOf({UNDEFINED_DOUBLE, 2.0, UNDEFINED_DOUBLE, 6.0}), 4.0);
    EXPECT_EQ(averageOf({UNDEFINED_DOUBLE, UNDEFINED_DOUBLE}), UNDEFINED_DOUBLE);
    EXPECT_EQ(averageOf({}), UNDEFINED_DOUBLE);
}

TEST(ResultsQueryResult, GivesASingleValueAsItIs) {
    EXPECT_EQ(averageOf({0.1}), 0.1);
    EXPECT_TRUE(std::signbit(averageOf({-0.0})));
    EXPECT_EQ(averageOf({-std::numeric_limits<double>::max()}), -std::numeric_limits<double>::max());
    EXPECT_EQ(averageOf({std::numeric_limits<double>::infinity()}), std::numeric_limits<double>::infinity());
}

TEST(ResultsQueryResult, NaNIsAValue) {
    EXPECT_TRUE(std::isnan(averageOf({1.0, std::nan(""), UNDEFINED_DOUBLE})));
}

TEST(ResultsQueryResult, KeepsTheSubItems) {
    const ResultsQueryResult result({3.0, UNDEFINED_DOUBLE});
    ASSERT_EQ(result.subItemScalars().size(), 2u);
    EXPECT_EQ(result.subItemScalars()[0], 3.0);
    EXPECT_EQ(result.subItemScalars()[1], UNDEFINED_DOUBLE);
}

} // namespace
