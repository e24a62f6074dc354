#include "LibUnstructGrid/VTOArraySortedInt.h"

#include "Tests/LibUnstructGrid/PortableRandom.h"
#include "Tests/LibUnstructGrid/VTOArrayTestSupport.h"

#include <gtest/gtest.h>

namespace {

using namespace vtarraytest;
using orvtest::AssertRecorder;
using orvtest::assertsUntil;
using orvtest::failedIn;
using orvtest::PortableRandom;
using Ints = Full<VTIntArray>;
using Numbers = std::vector<int>;

const std::string unit = "LibUnstructGrid/VTOArraySortedInt";

TEST(VTSortedIntArray, FindsThePlaceInTheArray) {
    const Ints array({30, 10, 40, 20});
    VTSortedIntArray sorted(&array);
    sorted.IndexSort();
    EXPECT_EQ(sorted.IndexBinSearch(10), 1);
    EXPECT_EQ(sorted.IndexBinSearch(20), 3);
    EXPECT_EQ(sorted.IndexBinSearch(30), 0);
    EXPECT_EQ(sorted.IndexBinSearch(40), 2);
    EXPECT_EQ(sorted.IndexBinSearch(5), -1);
    EXPECT_EQ(sorted.IndexBinSearch(25), -1);
    EXPECT_EQ(sorted.IndexBinSearch(45), -1);
}

TEST(VTSortedIntArray, SortsOnTheFirstSearchAndNotAgain) {
    Ints array({30, 10});
    VTSortedIntArray sorted(&array);
    EXPECT_EQ(sorted.IndexBinSearch(30), 0);
    array.Set(0, 5); // The index still says 10 comes first.
    EXPECT_EQ(sorted.IndexBinSearch(5), -1);
    sorted.IndexSort();
    EXPECT_EQ(sorted.IndexBinSearch(5), 0);
}

TEST(VTSortedIntArray, LeavesTheBufferOfTheCaller) {
    int* piData = new int[3]{3, 1, 2};
    {
        VTSortedIntArray sorted(piData, 3);
        EXPECT_EQ(sorted.IndexBinSearch(1), 1);
        EXPECT_EQ(sorted.IndexBinSearch(3), 0);
    }
    EXPECT_EQ(Numbers(piData, piData + 3), (Numbers{3, 1, 2}));
    delete[] piData;
}

TEST(VTSortedIntArray, ChecksTheBufferOfTheCaller) {
    EXPECT_EQ(assertsUntil(2, [] { VTSortedIntArray sorted(nullptr, 0); }),
              failedIn("LibUnstructGrid/VTOArrayInt", {"pData", "iNumItems > 0"}));
}

TEST(VTSortedIntArray, FindsNothingInNothing) {
    AssertRecorder recorder;
    const VTIntArray empty;
    VTSortedIntArray sorted(&empty);
    EXPECT_EQ(sorted.IndexBinSearch(0), -1);
    const Roomy<VTIntArray> noItems({}, 3);
    VTSortedIntArray sortedNoItems(&noItems);
    EXPECT_EQ(sortedNoItems.IndexBinSearch(99), -1);
    EXPECT_TRUE(recorder.take().empty());
}

TEST(VTSortedIntArray, HasRoomForItemsThatFollow) {
    Roomy<VTIntArray> array({30, 10}, 4);
    VTSortedIntArray sorted(&array);
    sorted.IndexSort();
    array.Add(20);
    sorted.IndexSort();
    EXPECT_EQ(sorted.IndexBinSearch(20), 2);
}

TEST(VTSortedIntArray, AsksForAnArray) {
    VTSortedIntArray sorted(nullptr);
    EXPECT_EQ(assertsUntil(1, [&] { sorted.IndexSort(); }), failedIn(unit, {"m_paiArray"}));
    EXPECT_EQ(assertsUntil(2, [&] { sorted.IndexBinSearch(1); }), failedIn(unit, {"m_paiArray", "m_paiArray"}));
}

TEST(VTSortedIntArray, FindsWhatALinearSearchFinds) {
    PortableRandom random(6);
    VTIntArray array;
    for (int i = 0; i < 500; ++i) {
        array.AddGrow(random.integer(0, 300));
    }
    VTSortedIntArray sorted(&array);
    for (int iValue = -1; iValue <= 301; ++iValue) {
        const int iFound = sorted.IndexBinSearch(iValue);
        if (array.Find(iValue, 0, true) == -1) {
            EXPECT_EQ(iFound, -1);
        } else {
            ASSERT_GE(iFound, 0);
            EXPECT_EQ(array.Get(iFound), iValue);
        }
    }
}

} // namespace
