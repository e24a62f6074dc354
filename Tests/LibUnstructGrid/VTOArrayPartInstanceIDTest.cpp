#include "LibUnstructGrid/VTOArrayPartInstanceID.h"

#include "Tests/Support/AssertRecorder.h"
#include "Tests/Support/AssertStopper.h"

#include <gtest/gtest.h>

namespace {

using orvtest::AssertRecorder;
using orvtest::FailedAssert;
using orvtest::failedIn;

const std::string unit = "LibUnstructGrid/VTOArrayPartInstanceID";

VTPartInstanceIDArray made() {
    VTPartInstanceIDArray array;
    array.AddGrow(VTPartInstanceID(1, 2, 3, 4));
    array.AddGrow(VTPartInstanceID(5, 6, 7, 8));
    array.AddGrow(VTPartInstanceID(5, 9, 7, 8));
    return array;
}

// What each of the four arrays raises for itself.
std::vector<FailedAssert> fourTimes(const std::string& source, const std::string& expression) {
    return failedIn(source, {expression, expression, expression, expression});
}

std::vector<FailedAssert> joined(std::vector<FailedAssert> first, const std::vector<FailedAssert>& second) {
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

TEST(VTPartInstanceIDArray, IsEmptyAtFirst) {
    EXPECT_EQ(VTPartInstanceIDArray().GetNumItems(), 0);
    EXPECT_EQ(VTPartInstanceIDArray().GetNumAllocated(), 0);
}

TEST(VTPartInstanceIDArray, AddsAndSetsAllFourFields) {
    VTPartInstanceIDArray array = made();
    EXPECT_EQ(array.GetNumItems(), 3);
    EXPECT_EQ(array.GetNumAllocated(), 4);
    EXPECT_EQ(array.Get(0), VTPartInstanceID(1, 2, 3, 4));
    EXPECT_EQ(array.Get(1), VTPartInstanceID(5, 6, 7, 8));
    array.Set(0, VTPartInstanceID(-1, 10, 11, 12));
    EXPECT_EQ(array.Get(0), VTPartInstanceID(-1, 10, 11, 12));
}

TEST(VTPartInstanceIDArray, SizesAllFour) {
    VTPartInstanceIDArray array = made();
    array.SetNumItems(1);
    EXPECT_EQ(array.GetNumItems(), 1);
    array.Realloc(-1, -1, false);
    EXPECT_EQ(array.GetNumAllocated(), 1);
    EXPECT_EQ(array.Get(0), VTPartInstanceID(1, 2, 3, 4));
    array.Realloc(5, 2, true);
    EXPECT_EQ(array.GetNumItems(), 5);
    array.Alloc(2, -1, false);
    EXPECT_EQ(array.GetNumItems(), 0);
    EXPECT_EQ(array.GetNumAllocated(), 2);
    array.Alloc(2, -1, true);
    EXPECT_EQ(array.GetNumItems(), 2);
    array.Free();
    EXPECT_EQ(array.GetNumAllocated(), 0);
}

TEST(VTPartInstanceIDArray, ChecksBeforeTheFourDo) {
    const std::string ints = "LibUnstructGrid/VTOArrayInt";
    const std::string base = "LibUnstructGrid/VTOArrayBase";
    AssertRecorder recorder;
    VTPartInstanceIDArray array = made();
    array.Alloc(0, -1, true);
    EXPECT_EQ(recorder.take(), joined(failedIn(unit, {"iNumItems > 0"}), fourTimes(ints, "iNumItems > 0")));
    const std::string size = "(iNewSize > 0) || (iNewSize == -1)";
    array.Realloc(-2, -1, true);
    EXPECT_EQ(recorder.take(), joined(failedIn(unit, {size}), fourTimes(ints, size)));
    array.SetNumItems(-1);
    EXPECT_EQ(recorder.take(), joined(failedIn(unit, {"iNumItems >= 0"}), fourTimes(base, "iNumItems >= 0")));
    array.SetNumItems(0);
    array.Realloc(-1, -1, false); // An array without items is freed, without a report.
    EXPECT_TRUE(recorder.take().empty());
}

// Only the geometry and the part ids are compared, which are the last two of the four lists.
TEST(VTPartInstanceIDArray, ChecksThatGeometryAndPartIdsAreInStep) {
    static_assert(sizeof(VTPartInstanceIDArray) == 4 * sizeof(VTIntArray));
    AssertRecorder recorder;
    VTPartInstanceIDArray array = made();
    auto* paiLists = reinterpret_cast<VTIntArray*>(&array);
    paiLists[0].Realloc(7, -1, false);
    paiLists[1].Realloc(8, -1, false);
    EXPECT_EQ(array.GetNumAllocated(), 4);
    EXPECT_TRUE(recorder.take().empty());
    paiLists[2].Realloc(9, -1, false);
    EXPECT_EQ(array.GetNumAllocated(), 9);
    EXPECT_EQ(recorder.take(), failedIn(unit, {"m_aiGeometryIDs.GetNumAllocated() == m_aiPartIDs.GetNumAllocated()"}));
}

TEST(VTPartInstanceIDArray, CopiesAndCompares) {
    VTPartInstanceIDArray copy(made());
    EXPECT_TRUE(copy == made());
    for (const VTPartInstanceID& id : {VTPartInstanceID(0, 6, 7, 8), VTPartInstanceID(5, 0, 7, 8),
                                       VTPartInstanceID(5, 6, 0, 8), VTPartInstanceID(5, 6, 7, 0)}) {
        copy = made();
        copy.Set(1, id);
        EXPECT_FALSE(copy == made());
    }
    AssertRecorder recorder;
    const VTPartInstanceIDArray& same = copy;
    copy = same;
    EXPECT_EQ(recorder.take().at(0), (FailedAssert{unit, "this != &other", std::nullopt}));
}

TEST(VTPartInstanceIDArray, FindPassesTheFlagsOn) {
    const VTPartInstanceIDArray array = made();
    EXPECT_EQ(array.Find(VTPartInstanceID(5, 9, 7, 8), true, true, false), 2);
    EXPECT_EQ(array.Find(VTPartInstanceID(5, 9, 7, 8), true, false, false), 1);
    EXPECT_EQ(array.Find(VTPartInstanceID(0, 9, 7, 8), false, true, false), 2);
    EXPECT_EQ(array.Find(VTPartInstanceID(0, 9, 7, 8), true, true, false), -1);
    EXPECT_EQ(array.Find(VTPartInstanceID(5, -1, 7, 8), true, true, false), -1);
    EXPECT_EQ(array.Find(VTPartInstanceID(5, -1, 7, 8), true, true, true), 1);
    EXPECT_EQ(VTPartInstanceIDArray().Find(VTPartInstanceID(), false, false, true), -1);
}

} // namespace
