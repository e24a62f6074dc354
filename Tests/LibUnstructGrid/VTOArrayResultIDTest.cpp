#include "LibUnstructGrid/VTOArrayResultID.h"

#include "Tests/LibUnstructGrid/PortableRandom.h"
#include "Tests/LibUnstructGrid/VTOArrayTestSupport.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

using namespace vtarraytest;
using orvtest::AssertRecorder;
using orvtest::assertsUntil;
using orvtest::FailedAssert;
using orvtest::failedIn;
using orvtest::PortableRandom;
using IDs = std::vector<VTResultID>;
using Numbers = std::vector<int>;

const std::string unit = "LibUnstructGrid/VTOArrayResultID";

std::vector<FailedAssert> failed(std::vector<std::string> expressions) {
    return failedIn(unit, std::move(expressions));
}

VTResultIDArray made(const IDs& list) {
    VTResultIDArray array;
    for (const VTResultID& id : list) {
        array.AddGrow(id);
    }
    return array;
}

IDs idsOf(const VTResultIDArray& array) {
    IDs list;
    for (int i = 0; i < array.GetNumItems(); ++i) {
        list.push_back(array.Get(i));
    }
    return list;
}

TEST(VTResultIDArray, HoldsTwoListsInParallel) {
    VTResultIDArray array = made({{1, 10}, {2, 20}});
    EXPECT_EQ(array.GetNumItems(), 2);
    EXPECT_EQ(array.GetNumAllocated(), 4);
    EXPECT_EQ(numbers(array.GetResultIDs()), (Numbers{1, 2}));
    EXPECT_EQ(numbers(array.GetSectionIDs()), (Numbers{10, 20}));
    array.Set(0, VTResultID(3, 30));
    EXPECT_EQ(idsOf(array), (IDs{{3, 30}, {2, 20}}));
}

TEST(VTResultIDArray, SizesBothLists) {
    VTResultIDArray array = made({{1, 10}, {2, 20}});
    array.Realloc(-1, 3, false);
    EXPECT_EQ(array.GetNumAllocated(), 2);
    array.AddGrow(VTResultID(3, 30));
    EXPECT_EQ(array.GetNumAllocated(), 5);
    array.SetNumItems(1);
    EXPECT_EQ(idsOf(array), (IDs{{1, 10}}));
    array.Alloc(7, -1, false);
    EXPECT_EQ(array.GetNumItems(), 0);
    EXPECT_EQ(array.GetNumAllocated(), 7);
    array.Free();
    EXPECT_EQ(array.GetNumAllocated(), 0);
}

TEST(VTResultIDArray, AccessChecksTheIndex) {
    VTResultIDArray array = made({{1, 10}});
    EXPECT_EQ(assertsUntil(1, [&] { array.Get(-1); }), failed({"iIndex >= 0"}));
    EXPECT_EQ(assertsUntil(1, [&] { array.Get(1); }), failed({"iIndex < GetNumItems()"}));
    EXPECT_EQ(assertsUntil(1, [&] { array.Set(-1, VTResultID()); }), failed({"iIndex >= 0"}));
    EXPECT_EQ(assertsUntil(1, [&] { array.Set(1, VTResultID()); }), failed({"iIndex < GetNumItems()"}));
}

TEST(VTResultIDArray, AddNeverGrows) {
    VTResultIDArray array;
    array.Alloc(1, -1, false);
    array.Add(VTResultID(1, 10));
    EXPECT_EQ(idsOf(array), (IDs{{1, 10}}));
    EXPECT_EQ(assertsUntil(1, [&] { array.Add(VTResultID(2, 20)); }), failed({"GetNumItems() < GetNumAllocated()"}));
}

// The lists are handed out to be read; written to, they get out of step.
TEST(VTResultIDArray, ChecksThatBothListsAreInStep) {
    AssertRecorder recorder;
    VTResultIDArray array = made({{1, 10}, {2, 20}});
    auto& aiResultIDs = const_cast<VTIntArray&>(array.GetResultIDs());
    aiResultIDs.SetNumItems(1);
    EXPECT_EQ(array.GetNumItems(), 1);
    EXPECT_EQ(recorder.take(), failed({"m_aiResultIDs.GetNumItems() == m_aiSectionIDs.GetNumItems()"}));
    aiResultIDs.Realloc(9, -1, false);
    EXPECT_EQ(array.GetNumAllocated(), 9);
    EXPECT_EQ(recorder.take(), failed({"m_aiResultIDs.GetNumAllocated() == m_aiSectionIDs.GetNumAllocated()"}));
}

TEST(VTResultIDArray, FindWantsBothIds) {
    const VTResultIDArray array = made({{1, 10}, {1, 20}, {2, 10}, {1, 20}});
    EXPECT_EQ(array.Find(VTResultID(1, 20), 0), 1);
    EXPECT_EQ(array.Find(VTResultID(1, 20), 2), 3);
    EXPECT_EQ(array.Find(VTResultID(2, 20), 0), -1);
    EXPECT_EQ(array.Find(VTResultID(1, 10), 1), -1);
    EXPECT_EQ(VTResultIDArray().Find(VTResultID(1, 10), 0), -1);
}

TEST(VTResultIDArray, AddsOfOneTellWhetherTheyAdded) {
    for (bool bGrow : {false, true}) {
        VTResultIDArray array = made({{1, 10}});
        const auto add = [&](const VTResultID& id, bool* pbAdded) {
            bGrow ? array.AddUniqueGrow(id, pbAdded) : array.AddUnique(id, pbAdded);
        };
        bool bAdded = true;
        add(VTResultID(1, 10), &bAdded);
        EXPECT_FALSE(bAdded);
        add(VTResultID(1, 20), &bAdded);
        EXPECT_TRUE(bAdded);
        add(VTResultID(2, 10), nullptr);
        EXPECT_EQ(idsOf(array), (IDs{{1, 10}, {1, 20}, {2, 10}}));
    }
    VTResultIDArray full = made({{1, 10}});
    full.Realloc(-1, -1, false);
    EXPECT_EQ(assertsUntil(1, [&] { full.AddUnique(VTResultID(2, 20)); }),
              failed({"GetNumItems() < GetNumAllocated()"}));
    full.AddUniqueGrow(VTResultID(2, 20));
    EXPECT_EQ(full.GetNumItems(), 2);
}

// Unlike in VTIntArray, the flag is not cleared: it gathers over several calls.
TEST(VTResultIDArray, AddsOfAnArrayLeaveTheFlagWhenTheyAddNothing) {
    for (bool bGrow : {false, true}) {
        VTResultIDArray array = made({{1, 10}});
        const auto add = [&](const VTResultIDArray& ids, bool* pbAdded) {
            bGrow ? array.AddUniqueGrow(ids, pbAdded) : array.AddUnique(ids, pbAdded);
        };
        bool bAdded = false;
        add(made({{1, 10}}), &bAdded);
        EXPECT_FALSE(bAdded);
        add(made({{2, 20}, {1, 10}, {2, 20}}), &bAdded);
        EXPECT_TRUE(bAdded);
        add(made({{1, 10}}), &bAdded);
        EXPECT_TRUE(bAdded);
        add(VTResultIDArray(), &bAdded);
        EXPECT_TRUE(bAdded);
        add(made({{3, 30}}), nullptr);
        EXPECT_EQ(idsOf(array), (IDs{{1, 10}, {2, 20}, {3, 30}}));
    }
}

TEST(VTResultIDArray, DeleteActsOnBothLists) {
    VTResultIDArray array = made({{1, 10}, {2, 20}, {3, 30}, {4, 40}});
    array.Delete(1, 2);
    EXPECT_EQ(idsOf(array), (IDs{{1, 10}, {4, 40}}));
    array.Delete(1, -1);
    EXPECT_EQ(idsOf(array), (IDs{{1, 10}}));
    EXPECT_EQ(array.GetNumAllocated(), 4);
    EXPECT_EQ(assertsUntil(1, [&] { array.Delete(-1, 1); }), failed({"iStartIndex >= 0"}));
    EXPECT_EQ(assertsUntil(1, [&] { array.Delete(0, -2); }), failed({"iNumItems >= 0"}));
    EXPECT_EQ(assertsUntil(1, [&] { array.Delete(0, 2); }), failed({"iStartIndex + iNumItems <= GetNumItems()"}));
}

TEST(VTResultIDArray, DeleteNoResultsTakesNegativeResultIds) {
    VTResultIDArray array = made({VT_NO_RESULT_ID, {1, -1}, {-5, 3}, {0, 0}, VT_NO_RESULT_ID});
    array.DeleteNoResults();
    EXPECT_EQ(idsOf(array), (IDs{{1, -1}, {0, 0}}));
    VTResultIDArray empty;
    empty.DeleteNoResults();
    EXPECT_EQ(empty.GetNumItems(), 0);
}

TEST(VTResultIDArray, SortsByResultThenSection) {
    for (bool bCheckIfSorted : {false, true}) {
        VTResultIDArray array = made({{2, 5}, {1, 9}, {2, 3}, {1, 7}, {2, 3}, {1, 8}});
        array.Sort(bCheckIfSorted);
        EXPECT_EQ(idsOf(array), (IDs{{1, 7}, {1, 8}, {1, 9}, {2, 3}, {2, 3}, {2, 5}}));
        array.Sort(bCheckIfSorted);
        EXPECT_EQ(array.Get(5), VTResultID(2, 5));
        EXPECT_EQ(array.GetNumAllocated(), 8);
        VTResultIDArray empty;
        empty.Sort(bCheckIfSorted);
    }
}

TEST(VTResultIDArray, SortMatchesTheStandardLibrary) {
    PortableRandom random(1);
    for (int iRange : {1, 5, 1000}) {
        IDs expected;
        for (int i = 0; i < 400; ++i) {
            expected.emplace_back(random.integer(0, iRange), random.integer(-3, 40));
        }
        VTResultIDArray array = made(expected);
        array.Sort(true);
        std::sort(expected.begin(), expected.end());
        EXPECT_EQ(idsOf(array), expected);
        EXPECT_TRUE(array.IsSorted());
    }
}

TEST(VTResultIDArray, IsSorted) {
    EXPECT_TRUE(VTResultIDArray().IsSorted());
    EXPECT_TRUE(made({{1, 5}, {1, 5}, {1, 6}, {2, 0}}).IsSorted());
    EXPECT_FALSE(made({{1, 5}, {1, 4}}).IsSorted());
    EXPECT_FALSE(made({{2, 0}, {1, 9}}).IsSorted());
    EXPECT_FALSE(made({{1, 0}, {2, 5}, {2, 4}}).IsSorted());
}

TEST(VTResultIDArray, CopiesAndCompares) {
    const VTResultIDArray array = made({{1, 10}, {2, 20}});
    VTResultIDArray copy(array);
    EXPECT_TRUE(copy == array);
    copy.Set(0, VTResultID(1, 11));
    EXPECT_FALSE(copy == array);
    copy = array;
    EXPECT_TRUE(copy == array);
    copy.Set(0, VTResultID(2, 10));
    EXPECT_FALSE(copy == array);
    EXPECT_FALSE(made({{1, 10}}) == array);
}

} // namespace
