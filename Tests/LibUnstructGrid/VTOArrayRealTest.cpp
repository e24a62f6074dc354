#include "LibUnstructGrid/VTOArrayReal.h"

#include "LibUnstructGrid/VTOMathConstants.h"
#include "Tests/LibUnstructGrid/VTOArrayTestSupport.h"

#include <gtest/gtest.h>

namespace {

using namespace vtarraytest;
using orvtest::assertsUntil;
using orvtest::failedIn;

const std::string unit = "LibUnstructGrid/VTOArrayReal";

TEST(VTRealArray, WidensFloats) {
    const float afValues[] = {0.1f, 2.5f, VT_UNDEFINED_FLOAT};
    VTRealArray array;
    array.CopyData(afValues, 3, 0);
    EXPECT_EQ(array.GetNumAllocated(), 3);
    EXPECT_EQ(array.Get(0), 0.10000000149011612); // The float nearest to 0.1.
    EXPECT_EQ(array.Get(1), 2.5);
    EXPECT_EQ(array.Get(2), 3.4028234663852886e38);
    EXPECT_EQ(array.Sum(2, 1, true), 3.4028234663852886e38); // A number like any other here.
}

TEST(VTRealArray, WideningGrowsButNeverShrinks) {
    const float afValues[] = {1, 2, 3};
    Full<VTRealArray> array({7, 8});
    array.CopyData(afValues, 3, 1);
    EXPECT_EQ(array.GetNumItems(), 4);
    EXPECT_EQ(array.GetNumAllocated(), 4);
    EXPECT_EQ(array.Get(3), 3);
    array.CopyData(afValues, 1, 0);
    EXPECT_EQ(array.GetNumItems(), 4);
    EXPECT_EQ(array.Get(0), 1);
}

TEST(VTRealArray, WideningChecksPointerCountAndPlace) {
    VTRealArray array;
    EXPECT_EQ(assertsUntil(3, [&] { array.CopyData(static_cast<const float*>(nullptr), -1, -1); }),
              failedIn(unit, {"pData", "iNumItems >= 0", "iStartDstIndex >= 0"}));
}

} // namespace
