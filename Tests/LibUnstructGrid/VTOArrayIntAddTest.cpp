// The adds of VTIntArray that look for the value first.

#include "LibUnstructGrid/VTOArrayInt.h"

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
using Ints = Full<VTIntArray>;
using RoomyInts = Roomy<VTIntArray>;
using Numbers = std::vector<int>;

const std::string unit = "LibUnstructGrid/VTOArrayInt";

std::vector<FailedAssert> failed(std::vector<std::string> expressions) {
    return failedIn(unit, std::move(expressions));
}

TEST(VTIntArrayAdd, AddUniqueLeavesWhatIsThere) {
    RoomyInts array({3, 1}, 3);
    bool bAdded = true;
    array.AddUnique(1, &bAdded);
    EXPECT_FALSE(bAdded);
    array.AddUnique(2, &bAdded);
    EXPECT_TRUE(bAdded);
    EXPECT_EQ(numbers<VTIntArray>(array), (Numbers{3, 1, 2}));
    array.AddUnique(1, nullptr); // Full, but there is nothing to add.
    EXPECT_EQ(assertsUntil(1, [&] { array.AddUnique(4, nullptr); }), failed({"m_iNumItems < m_iNumAllocated"}));
}

TEST(VTIntArrayAdd, AddUniqueGrowMakesRoom) {
    Ints array({3, 1});
    bool bAdded = true;
    array.AddUniqueGrow(1, &bAdded);
    EXPECT_FALSE(bAdded);
    array.AddUniqueGrow(2, &bAdded);
    EXPECT_TRUE(bAdded);
    array.AddUniqueGrow(9, nullptr);
    EXPECT_EQ(numbers<VTIntArray>(array), (Numbers{3, 1, 2, 9}));
}

// One row for each add that looks first: whether it sorts, and what an item that is there already does.
TEST(VTIntArrayAdd, AddsOfAnArrayTakeItsItemsInOrder) {
    const Numbers values = {4, 2, 4, 1};
    const struct {
        const char* name;
        void (*add)(VTIntArray&, const VTIntArray&);
        Numbers expected;
    } rows[] = {
        {"AddUnique", [](VTIntArray& a, const VTIntArray& v) { a.AddUnique(v, nullptr); }, {1, 3, 4, 2}},
        {"AddUniqueGrow", [](VTIntArray& a, const VTIntArray& v) { a.AddUniqueGrow(v, nullptr); }, {1, 3, 4, 2}},
        {"AddSorted", [](VTIntArray& a, const VTIntArray& v) { a.AddSorted(v); }, {1, 1, 2, 3, 4, 4}},
        {"AddSortedGrow", [](VTIntArray& a, const VTIntArray& v) { a.AddSortedGrow(v); }, {1, 1, 2, 3, 4, 4}},
        {"AddSortedUnique", [](VTIntArray& a, const VTIntArray& v) { a.AddSortedUnique(v, nullptr); }, {1, 2, 3, 4}},
        {"AddSortedUniqueGrow",
         [](VTIntArray& a, const VTIntArray& v) { a.AddSortedUniqueGrow(v, nullptr); },
         {1, 2, 3, 4}},
    };
    for (const auto& row : rows) {
        RoomyInts array({1, 3}, 6);
        row.add(array, Ints(values));
        EXPECT_EQ(numbers<VTIntArray>(array), row.expected) << row.name;
        EXPECT_EQ(array.GetNumAllocated(), 6) << row.name;
        row.add(array, VTIntArray());
        EXPECT_EQ(numbers<VTIntArray>(array), row.expected) << row.name;
    }
}

TEST(VTIntArrayAdd, AddsOfAnArrayTellWhetherAnythingWasAdded) {
    using Add = void (*)(VTIntArray&, const VTIntArray&, bool*);
    const Add adds[] = {
        [](VTIntArray& a, const VTIntArray& v, bool* pb) { a.AddUnique(v, pb); },
        [](VTIntArray& a, const VTIntArray& v, bool* pb) { a.AddUniqueGrow(v, pb); },
        [](VTIntArray& a, const VTIntArray& v, bool* pb) { a.AddSortedUnique(v, pb); },
        [](VTIntArray& a, const VTIntArray& v, bool* pb) { a.AddSortedUniqueGrow(v, pb); },
    };
    for (Add add : adds) {
        RoomyInts array({1, 3}, 6);
        bool bAdded = true;
        add(array, VTIntArray(), &bAdded);
        EXPECT_FALSE(bAdded);
        bAdded = true;
        add(array, Ints({3, 1}), &bAdded);
        EXPECT_FALSE(bAdded);
        add(array, Ints({3, 2, 1}), &bAdded); // The last item alone does not decide.
        EXPECT_TRUE(bAdded);
    }
}

TEST(VTIntArrayAdd, NeverGrowingAddsCheckTheRoom) {
    const auto noRoom = failed({"m_iNumItems < m_iNumAllocated"});
    Ints array({1, 3});
    EXPECT_EQ(assertsUntil(1, [&] { array.AddSorted(2); }), noRoom);
    EXPECT_EQ(assertsUntil(1, [&] { array.AddSortedUnique(2, nullptr); }), noRoom);
    EXPECT_EQ(assertsUntil(1, [&] { array.AddSortedUnique(3, nullptr); }), noRoom); // There already, and still.
    EXPECT_EQ(assertsUntil(1, [&] { array.AddSorted(Ints({2})); }), noRoom);
    EXPECT_EQ(assertsUntil(1, [&] { array.AddSortedUnique(Ints({2}), nullptr); }), noRoom);
}

TEST(VTIntArrayAdd, GrowingAddsAskForAnOwnBuffer) {
    const auto notShared = failed({"!m_bSharedData"});
    Ints owner({1, 3});
    Shared<VTIntArray> shared(&owner);
    EXPECT_EQ(assertsUntil(1, [&] { shared.AddUniqueGrow(3, nullptr); }), notShared);
    EXPECT_EQ(assertsUntil(1, [&] { shared.AddUniqueGrow(VTIntArray(), nullptr); }), notShared);
    EXPECT_EQ(assertsUntil(1, [&] { shared.AddSortedUniqueGrow(3, nullptr, nullptr); }), notShared);
    EXPECT_EQ(assertsUntil(1, [&] { shared.AddSortedUniqueGrow(Ints({3}), nullptr); }), notShared);
    EXPECT_TRUE(assertsUntil(1, [&] { shared.AddSortedUniqueGrow(VTIntArray(), nullptr); }).empty());
}

// The place found lies among the items, unless the count has been made negative.
TEST(VTIntArrayAdd, SortedAddsCheckThePlaceTheyFind) {
    const auto place = failed({"iInsertionIndex <= m_iNumItems"});
    Ints array({1, 3});
    assertsUntil(0, [&] { array.SetNumItems(-5); });
    EXPECT_EQ(assertsUntil(1, [&] { array.AddSortedGrow(2); }), place);
    EXPECT_EQ(assertsUntil(1, [&] { array.AddSortedUnique(2, nullptr); }), place);
    EXPECT_EQ(assertsUntil(1, [&] { array.AddSortedUniqueGrow(2, nullptr, nullptr); }), place);
    array.SetNumItems(2);
}

TEST(VTIntArrayAdd, AddSortedKeepsTheOrderAndDuplicates) {
    VTIntArray array;
    array.Alloc(6, -1, false);
    for (int i : {3, 1, 2, 3, 5, 1}) {
        array.AddSorted(i);
    }
    EXPECT_EQ(numbers(array), (Numbers{1, 1, 2, 3, 3, 5}));
    VTIntArray growing;
    for (int i : {3, 1, 2, 3, 5, 1}) {
        growing.AddSortedGrow(i);
    }
    EXPECT_TRUE(growing == array);
}

TEST(VTIntArrayAdd, AddSortedUniqueTellsWhetherItAdded) {
    RoomyInts array({1, 3}, 4);
    bool bAdded = true;
    array.AddSortedUnique(3, &bAdded);
    EXPECT_FALSE(bAdded);
    array.AddSortedUnique(2, &bAdded);
    EXPECT_TRUE(bAdded);
    EXPECT_EQ(numbers<VTIntArray>(array), (Numbers{1, 2, 3}));
}

TEST(VTIntArrayAdd, AddSortedUniqueGrowTellsThePlaceOfANewItemAlone) {
    Ints array({1, 3});
    bool bAdded = false;
    int iIndex = -7;
    array.AddSortedUniqueGrow(2, &bAdded, &iIndex);
    EXPECT_TRUE(bAdded);
    EXPECT_EQ(iIndex, 1);
    iIndex = -7;
    array.AddSortedUniqueGrow(2, &bAdded, &iIndex);
    EXPECT_FALSE(bAdded);
    EXPECT_EQ(iIndex, -7);
    array.AddSortedUniqueGrow(9, nullptr, nullptr);
    EXPECT_EQ(numbers<VTIntArray>(array), (Numbers{1, 2, 3, 9}));
}

TEST(VTIntArrayAdd, ArraysAddedToThemselves) {
    RoomyInts sorted({1, 3}, 4);
    sorted.AddSorted(sorted);
    EXPECT_EQ(sorted.GetNumItems(), 4);
    RoomyInts unique({1, 3}, 4);
    unique.AddUniqueGrow(unique, nullptr);
    EXPECT_EQ(numbers<VTIntArray>(unique), (Numbers{1, 3}));
}

TEST(VTIntArrayAdd, SortedAddsMatchSortedLists) {
    PortableRandom random(5);
    VTIntArray all;
    VTIntArray unique;
    Numbers expectedAll;
    for (int i = 0; i < 400; ++i) {
        const int iValue = random.integer(0, 200);
        int iIndex = -7;
        bool bAdded = false;
        const auto at = std::lower_bound(expectedAll.begin(), expectedAll.end(), iValue);
        const bool bNew = at == expectedAll.end() || *at != iValue;
        expectedAll.insert(at, iValue);
        all.AddSortedGrow(iValue);
        unique.AddSortedUniqueGrow(iValue, &bAdded, &iIndex);
        EXPECT_EQ(bAdded, bNew);
        if (bAdded) {
            EXPECT_EQ(unique.Get(iIndex), iValue);
        }
    }
    EXPECT_EQ(numbers(all), expectedAll);
    expectedAll.erase(std::unique(expectedAll.begin(), expectedAll.end()), expectedAll.end());
    EXPECT_EQ(numbers(unique), expectedAll);
}

} // namespace
