#include "LibUnstructGrid/VTOArrayIntIndex.h"

#include "Tests/LibUnstructGrid/VTOArrayTestSupport.h"

#include <gtest/gtest.h>

namespace {

using namespace vtarraytest;
using orvtest::AssertRecorder;
using orvtest::assertsUntil;
using orvtest::failedIn;
using Indexed = Full<VTIntIndexArray>;
using Numbers = std::vector<int>;

const std::string unit = "LibUnstructGrid/VTOArrayIntIndex";

bool hasIndex(const VTIntIndexArray& array) {
    return assertsUntil(0, [&] { array.IndexBinSearch(0); }).empty();
}

TEST(VTIntIndexArray, FindsThePlaceInTheArray) {
    Indexed array({30, 10, 40, 20});
    EXPECT_TRUE(array.IndexSort());
    EXPECT_EQ(numbers<VTIntIndexArray>(array), (Numbers{30, 10, 40, 20}));
    const VTIntIndexArray& constArray = array;
    const Numbers places = {1, 3, 0, 2};
    for (int i = 0; i < 4; ++i) {
        EXPECT_EQ(array.IndexBinSearch(10 * (i + 1)), places[static_cast<std::size_t>(i)]);
        EXPECT_EQ(constArray.IndexBinSearch(10 * (i + 1)), places[static_cast<std::size_t>(i)]);
    }
    EXPECT_EQ(array.IndexBinSearch(15), -1);
    EXPECT_EQ(constArray.IndexBinSearch(45), -1);
}

TEST(VTIntIndexArray, SortsOnTheFirstSearch) {
    Indexed array({30, 10});
    EXPECT_FALSE(hasIndex(array));
    EXPECT_EQ(array.IndexBinSearch(10), 1);
    EXPECT_TRUE(hasIndex(array));
}

TEST(VTIntIndexArray, ConstSearchAsksForAnIndex) {
    AssertRecorder recorder;
    const Indexed array({30, 10});
    EXPECT_EQ(array.IndexBinSearch(10), -1);
    EXPECT_EQ(recorder.take(), failedIn(unit, {"m_piIndices"}));
}

TEST(VTIntIndexArray, HasNoIndexWithoutItems) {
    AssertRecorder recorder;
    VTIntIndexArray array;
    EXPECT_FALSE(array.IndexSort());
    EXPECT_EQ(recorder.take(), failedIn("LibUnstructGrid/VTOArrayInt", {"m_piData"}));
    EXPECT_EQ(array.IndexBinSearch(1), -1);
    EXPECT_EQ(recorder.take(), failedIn("LibUnstructGrid/VTOArrayInt", {"m_piData"}));
    array.Alloc(3, -1, false);
    EXPECT_FALSE(array.IndexSort());
    EXPECT_EQ(array.IndexBinSearch(1), -1);
    EXPECT_TRUE(recorder.take().empty());
}

TEST(VTIntIndexArray, SizeChangesDropTheIndex) {
    using Change = void (*)(VTIntIndexArray&);
    const struct {
        const char* name;
        Change change;
        bool bDrops;
    } rows[] = {
        {"Alloc at the same capacity", [](VTIntIndexArray& a) { a.Alloc(2, -1, true); }, true},
        {"Realloc", [](VTIntIndexArray& a) { a.Realloc(5, -1, false); }, true},
        {"Realloc at the same capacity", [](VTIntIndexArray& a) { a.Realloc(2, -1, false); }, true},
        {"Free", [](VTIntIndexArray& a) { a.Free(); }, true},
        {"DeleteIndices", [](VTIntIndexArray& a) { a.DeleteIndices(); }, true},
        {"a growing add, through the base class", [](VTIntIndexArray& a) { a.AddGrow(5); }, true},
        {"CopyData that grows", [](VTIntIndexArray& a) { a.CopyData(VTIntArray(a), -1, 1, 0); }, true},
        {"RemoveDuplicates of one",
         [](VTIntIndexArray& a) {
             a.SetAllItems(1);
             a.RemoveDuplicates(false);
         },
         true},
        {"Set", [](VTIntIndexArray& a) { a.Set(0, 5); }, false},
        {"SetAllItems", [](VTIntIndexArray& a) { a.SetAllItems(5); }, false},
        {"Delete", [](VTIntIndexArray& a) { a.Delete(0, 1); }, false},
        {"Sort", [](VTIntIndexArray& a) { a.Sort(false); }, false},
    };
    for (const auto& row : rows) {
        Indexed array({30, 10});
        array.IndexSort();
        ASSERT_TRUE(hasIndex(array));
        row.change(array);
        EXPECT_EQ(hasIndex(array), !row.bDrops) << row.name;
    }
}

TEST(VTIntIndexArray, AStaleIndexIsUsedUntilItIsMadeAnew) {
    Indexed array({10, 20, 30});
    array.IndexSort();
    array.Set(0, 40);
    EXPECT_EQ(array.IndexBinSearch(40), -1); // Looked for at the end, where it is not.
    array.IndexSort();
    EXPECT_EQ(array.IndexBinSearch(40), 0);
}

TEST(VTIntIndexArray, AStaleIndexDoesNotCoverNewItems) {
    Roomy<VTIntIndexArray> array({10, 20}, 4);
    array.IndexSort();
    array.Add(30);
    EXPECT_EQ(array.IndexBinSearch(30), -1);
    EXPECT_EQ(array.IndexBinSearch(20), 1);
    array.IndexSort();
    EXPECT_EQ(array.IndexBinSearch(30), 2);
}

// The copy counts all slots as items and has the heuristic step, whatever the source had.
TEST(VTIntIndexArray, AssignmentTakesNeitherCountNorGrowthStep) {
    Roomy<VTIntIndexArray> source({30, 10}, 40);
    source.Realloc(40, 7, false);
    VTIntIndexArray assigned;
    assigned = source;
    for (const VTIntIndexArray& copy : {assigned, VTIntIndexArray(source)}) {
        EXPECT_EQ(copy.GetNumAllocated(), 40);
        EXPECT_EQ(copy.GetNumItems(), 40);
        EXPECT_EQ(copy.GetGrowBy(), 5);
        EXPECT_EQ(copy.Get(0), 30);
        EXPECT_EQ(copy.Get(1), 10);
        EXPECT_EQ(copy.Get(39), 99);
        EXPECT_FALSE(hasIndex(copy));
    }
}

TEST(VTIntIndexArray, AssignmentTakesTheIndexForWhatItCovers) {
    Roomy<VTIntIndexArray> source({30, 10, 20}, 40);
    source.IndexSort();
    VTIntIndexArray copy;
    copy = source;
    const VTIntIndexArray& constCopy = copy;
    EXPECT_TRUE(hasIndex(copy));
    EXPECT_EQ(constCopy.IndexBinSearch(10), 1);
    EXPECT_EQ(constCopy.IndexBinSearch(20), 2);
    EXPECT_EQ(constCopy.IndexBinSearch(30), 0);
    EXPECT_EQ(constCopy.IndexBinSearch(99), -1); // An item by now, but none that the index knows.
    source.Free();
    EXPECT_EQ(constCopy.IndexBinSearch(10), 1);
    copy.IndexSort();
    EXPECT_EQ(copy.Get(copy.IndexBinSearch(99)), 99);
}

TEST(VTIntIndexArray, AssignmentDropsTheOldIndex) {
    Indexed array({30, 10});
    array.IndexSort();
    const Indexed source({7, 8});
    static_cast<VTIntIndexArray&>(array) = source;
    EXPECT_FALSE(hasIndex(array));
    EXPECT_EQ(array.IndexBinSearch(8), 1);
}

TEST(VTIntIndexArray, AssignmentChecksOwnershipAndSelf) {
    Indexed owner({1, 2});
    Shared<VTIntIndexArray> shared(&owner);
    const VTIntIndexArray& same = shared;
    EXPECT_EQ(assertsUntil(2, [&] { static_cast<VTIntIndexArray&>(shared) = same; }),
              failedIn(unit, {"!m_bSharedData", "this != &other"}));
}

} // namespace
