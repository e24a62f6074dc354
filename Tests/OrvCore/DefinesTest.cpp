#include "OrvCore/Defines.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

TEST(Defines, UndefinedSizeHasAllBitsSet) {
    EXPECT_EQ(orv::UNDEFINED_SIZE_T, ~size_t(0));
}

TEST(Defines, UndefinedDoubleIsTheLargestFiniteOne) {
    EXPECT_EQ(orv::UNDEFINED_DOUBLE, 1.7976931348623157e+308);
    EXPECT_TRUE(std::isfinite(orv::UNDEFINED_DOUBLE));
    EXPECT_NE(orv::UNDEFINED_DOUBLE, std::numeric_limits<double>::quiet_NaN());
}

TEST(Defines, UndefinedVectorIsUndefinedInAllComponents) {
    EXPECT_EQ(orv::UNDEFINED_VECTOR.x(), orv::UNDEFINED_DOUBLE);
    EXPECT_EQ(orv::UNDEFINED_VECTOR.y(), orv::UNDEFINED_DOUBLE);
    EXPECT_EQ(orv::UNDEFINED_VECTOR.z(), orv::UNDEFINED_DOUBLE);
}

} // namespace
