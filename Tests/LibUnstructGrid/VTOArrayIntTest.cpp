#include "LibUnstructGrid/VTOArrayInt.h"

#include "Tests/LibUnstructGrid/PortableRandom.h"
#include "Tests/LibUnstructGrid/VTOArrayTestSupport.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cmath>
#include <malloc.h>
#include <memory>

namespace {

using namespace vtarraytest;
using orvtest::AssertRecorder;
using orvtest::assertsUntil;
using orvtest::FailedAssert;
using orvtest::failedIn;
using orvtest::PortableRandom;
using Ints = Full<VTIntArray>;
using Numbers = std::vector<int>;

const std::string unit = "LibUnstructGrid/VTOArrayInt";

std::vector<FailedAssert> failed(std::vector<std::string> expressions) {
    return failedIn(unit, std::move(expressions));
}

Numbers randomNumbers(PortableRandom& random, int iCount, int iLow, int iHigh) {
    Numbers list;
    for (int i = 0; i < iCount; ++i) {
        list.push_back(random.integer(iLow, iHigh));
    }
    return list;
}

TEST(VTIntArray, SelfAssignmentIsReportedAndMakesEverySlotAnItem) {
    AssertRecorder recorder;
    Ints array({1, 2, 3});
    array.SetNumItems(2);
    const VTIntArray& same = array;
    static_cast<VTIntArray&>(array) = same;
    EXPECT_EQ(recorder.take(), failed({"this != &other"}));
    EXPECT_EQ(numbers<VTIntArray>(array), (Numbers{1, 2, 3}));
}

TEST(VTIntArray, AssignmentAsksForAnOwnBufferFirst) {
    Ints owner({1, 2});
    Shared<VTIntArray> shared(&owner);
    const VTIntArray& same = shared;
    EXPECT_EQ(assertsUntil(2, [&] { static_cast<VTIntArray&>(shared) = same; }),
              failed({"!m_bSharedData", "this != &other"}));
}

TEST(VTIntArray, CopiesTakeCapacityUnusedSlotsAndGrowthStep) {
    Ints source({1, 2, 3});
    source.SetNumItems(2);
    source.Realloc(3, 7, false);
    VTIntArray copy(source);
    EXPECT_EQ(copy.GetNumAllocated(), 3);
    EXPECT_EQ(copy.GetNumItems(), 2);
    EXPECT_EQ(copy.GetGrowBy(), 7);
    copy.SetNumItems(3);
    EXPECT_EQ(numbers(copy), (Numbers{1, 2, 3}));
}

TEST(VTIntArray, MakeIsALiteralList) {
    const VTIntArray all = VTIntArray::Make(1, 2, 3, 4, 5, 6, 7, 8);
    EXPECT_EQ(numbers(all), (Numbers{1, 2, 3, 4, 5, 6, 7, 8}));
    EXPECT_EQ(all.GetNumAllocated(), 10); // One slot, and at the second item a step of 9 behind it.
    EXPECT_EQ(all.GetGrowBy(), 9);
    EXPECT_EQ(VTIntArray::Make(5).GetNumAllocated(), 1);
    EXPECT_EQ(numbers(VTIntArray::Make(5)), (Numbers{5}));
}

TEST(VTIntArray, MakeSkipsUndefinedItemsButTheFirst) {
    const int iNone = VT_UNDEFINED_INT;
    EXPECT_EQ(numbers(VTIntArray::Make(1, 2, iNone, 3, iNone, iNone, iNone, iNone)), (Numbers{1, 2, 3}));
    EXPECT_EQ(numbers(VTIntArray::Make(iNone, 2, iNone, iNone, iNone, iNone, iNone, iNone)), (Numbers{iNone, 2}));
}

TEST(VTIntArray, SetAllItemsZeroWritesUnusedSlotsToo) {
    Ints array({1, 2, 3});
    array.SetNumItems(1);
    array.SetAllItemsZero();
    EXPECT_EQ(array.GetNumItems(), 1);
    array.SetNumItems(3);
    EXPECT_EQ(numbers<VTIntArray>(array), (Numbers{0, 0, 0}));
    VTIntArray().SetAllItemsZero();
    VTIntArray().SetAllItems(1);
}

TEST(VTIntArray, AssignConsecutiveGrowsButNeverShrinks) {
    Ints array({9, 9, 9});
    array.AssignConsecutive(2, 5);
    EXPECT_EQ(numbers<VTIntArray>(array), (Numbers{5, 6, 9}));
    array.AssignConsecutive(4, -1);
    EXPECT_EQ(numbers<VTIntArray>(array), (Numbers{-1, 0, 1, 2}));
    EXPECT_EQ(array.GetNumAllocated(), 4); // Exactly, without the growth step.
    array.AssignConsecutive(0, 7);
    EXPECT_EQ(array.GetNumItems(), 4);
}

// An array whose Realloc() cannot give room.
struct StuckArray : VTIntArray {
    void Realloc(int, int, bool) override {}
};

TEST(VTIntArray, AssignConsecutiveChecksTheRoomItMade) {
    StuckArray array;
    EXPECT_EQ(assertsUntil(1, [&] { array.AssignConsecutive(4, 0); }), failed({"m_iNumAllocated >= iNumItems"}));
}

TEST(VTIntArray, DeleteByValueKeepsTheOrder) {
    Ints array({3, 1, 3, 2, 3});
    EXPECT_TRUE(array.DeleteByValue(3));
    EXPECT_EQ(numbers<VTIntArray>(array), (Numbers{1, 2}));
    EXPECT_EQ(array.GetNumAllocated(), 5);
    EXPECT_FALSE(array.DeleteByValue(3));
    EXPECT_FALSE(VTIntArray().DeleteByValue(3));
}

TEST(VTIntArray, DeleteByValueTakesAnArray) {
    Ints array({3, 1, 4, 1, 5});
    EXPECT_TRUE(array.DeleteByValue(Ints({1, 9, 5})));
    EXPECT_EQ(numbers<VTIntArray>(array), (Numbers{3, 4}));
    EXPECT_TRUE(array.DeleteByValue(Ints({3, 9}))); // The last value alone does not decide.
    EXPECT_FALSE(array.DeleteByValue(Ints({1, 9})));
    EXPECT_FALSE(array.DeleteByValue(VTIntArray()));
}

TEST(VTIntArray, RemoveDuplicatesSorts) {
    Ints array({3, 1, 3, 2, 1});
    array.Realloc(9, 7, false);
    array.RemoveDuplicates(false);
    EXPECT_EQ(numbers<VTIntArray>(array), (Numbers{1, 2, 3}));
    EXPECT_EQ(array.GetNumAllocated(), 5); // The former count.
    EXPECT_EQ(array.GetGrowBy(), 4);       // The heuristic step again.
}

TEST(VTIntArray, RemoveDuplicatesLeavesAnArrayWithoutAnySorted) {
    Ints array({3, 1, 2});
    array.Realloc(9, 7, false);
    array.RemoveDuplicates(false);
    EXPECT_EQ(numbers<VTIntArray>(array), (Numbers{1, 2, 3}));
    EXPECT_EQ(array.GetNumAllocated(), 9);
    EXPECT_EQ(array.GetGrowBy(), 7);
}

TEST(VTIntArray, RemoveDuplicatesOfWhatIsCalledSortedTakesAdjacentRepeatsOnly) {
    Ints array({3, 3, 1, 3, 3});
    array.RemoveDuplicates(true);
    EXPECT_EQ(numbers<VTIntArray>(array), (Numbers{3, 1, 3}));
    VTIntArray empty;
    empty.RemoveDuplicates(false);
    EXPECT_EQ(empty.GetNumItems(), 0);
}

TEST(VTIntArray, SortsItemsAndNotUnusedSlots) {
    Roomy<VTIntArray> array({3, 1, 2}, 5);
    array.Realloc(4, -1, true);
    array.Set(3, 0);
    array.SetNumItems(3);
    for (bool bCheckIfSorted : {false, true}) {
        array.Sort(bCheckIfSorted);
        EXPECT_EQ(numbers<VTIntArray>(array), (Numbers{1, 2, 3}));
    }
    AssertRecorder recorder;
    VTIntArray().Sort(false);
    VTIntArray().Sort(true);
    EXPECT_TRUE(recorder.take().empty());
}

TEST(VTIntArray, SortMatchesTheStandardLibrary) {
    PortableRandom random(1);
    for (int iCount : {1, 2, 31, 32, 33, 34, 500, 3000}) {
        Numbers expected = randomNumbers(random, iCount, -iCount / 2, iCount / 2);
        Ints array(expected);
        array.Sort(true);
        std::sort(expected.begin(), expected.end());
        EXPECT_EQ(numbers<VTIntArray>(array), expected) << iCount;
    }
}

TEST(VTIntArray, EqualNeighboursAreSorted) {
    EXPECT_TRUE(Ints({1, 1, 2}).IsSorted());
    EXPECT_FALSE(Ints({1, 2, 1}).IsSorted());
    EXPECT_TRUE(Ints({1}).IsSorted());
    EXPECT_TRUE(VTIntArray().IsSorted());
}

TEST(VTIntArray, GetSortedIndexOrdersByValue) {
    const Ints array({30, 10, 20});
    const std::unique_ptr<int[]> piIndices(array.GetSortedIndex(false));
    EXPECT_EQ(Numbers(piIndices.get(), piIndices.get() + 3), (Numbers{1, 2, 0}));
}

// 36 equal keys: the first exchange of the partition swaps the ends, and so on towards the middle; with the check there
// is no partition at all.
TEST(VTIntArray, GetSortedIndexOfASortedArrayIsTheIdentityWhenItLooks) {
    const Ints array(Numbers(36, 5));
    Numbers identity;
    for (int i = 0; i < 36; ++i) {
        identity.push_back(i);
    }
    const std::unique_ptr<int[]> piLooked(array.GetSortedIndex(true));
    EXPECT_EQ(Numbers(piLooked.get(), piLooked.get() + 36), identity);
    const std::unique_ptr<int[]> piSorted(array.GetSortedIndex(false));
    EXPECT_EQ(Numbers(piSorted.get(), piSorted.get() + 36), Numbers(identity.rbegin(), identity.rend()));
}

TEST(VTIntArray, GetSortedIndexHasAnEntryForEachItemOnly) {
    Roomy<VTIntArray> array({3, 1}, 10000);
    const std::unique_ptr<int[]> piIndices(array.GetSortedIndex(false));
    EXPECT_LT(malloc_usable_size(piIndices.get()), 10000 * sizeof(int));
}

TEST(VTIntArray, GetSortedIndexIsNullWithoutItems) {
    AssertRecorder recorder;
    EXPECT_EQ(VTIntArray().GetSortedIndex(true), nullptr);
    EXPECT_EQ(recorder.take(), failed({"m_piData"}));
    EXPECT_EQ(Roomy<VTIntArray>({}, 3).GetSortedIndex(true), nullptr);
    EXPECT_TRUE(recorder.take().empty());
}

TEST(VTIntArray, GetUniqueItemsIsAscendingAndFits) {
    const Ints array({3, 1, 3, 2, 1});
    Ints unique({9, 9});
    array.GetUniqueItems(&unique);
    EXPECT_EQ(numbers<VTIntArray>(unique), (Numbers{1, 2, 3}));
    EXPECT_EQ(unique.GetNumAllocated(), 3);
    EXPECT_EQ(unique.GetGrowBy(), 4);
    EXPECT_EQ(numbers<VTIntArray>(array), (Numbers{3, 1, 3, 2, 1}));
    EXPECT_EQ(assertsUntil(1, [&] { array.GetUniqueItems(nullptr); }), failed({"paiUniqueItems"}));
}

TEST(VTIntArray, GetUniqueItemsOfAnEmptyArrayFailsTheChecksOfTheTarget) {
    AssertRecorder recorder;
    Ints unique({9, 9});
    VTIntArray().GetUniqueItems(&unique);
    EXPECT_EQ(recorder.take(), failed({"iNumItems > 0", "(iNewSize > 0) || (iNewSize == -1)"}));
    EXPECT_EQ(unique.GetNumItems(), 0);
    EXPECT_EQ(unique.GetDataPtr(), nullptr);
}

TEST(VTIntArray, FindWalksBothWays) {
    const Ints array({7, 8, 7, 9});
    const struct {
        int iValue;
        int iStart;
        bool bForward;
        int iFound;
    } rows[] = {{7, 0, true, 0},   {7, 1, true, 2},   {7, 3, true, -1},  {7, 3, false, 2},  {7, 1, false, 0},
                {8, 0, false, -1}, {9, -1, true, 3},  {7, -1, true, -1}, {7, -1, false, 2}, {8, -1, false, 1},
                {5, 0, true, -1},  {5, 3, false, -1}, {7, 4, true, -1}};
    for (const auto& row : rows) {
        EXPECT_EQ(array.Find(row.iValue, row.iStart, row.bForward), row.iFound)
            << row.iValue << " from " << row.iStart << (row.bForward ? " up" : " down");
    }
}

TEST(VTIntArray, FindInNothingFindsNothing) {
    EXPECT_EQ(VTIntArray().Find(0, 0, true), -1);
    EXPECT_EQ(VTIntArray().Find(0, -1, false), -1);
    const Roomy<VTIntArray> noItems({}, 3);
    EXPECT_EQ(noItems.Find(99, 0, true), -1);
    EXPECT_EQ(noItems.Find(99, -1, true), -1);
    EXPECT_EQ(noItems.Find(99, -1, false), -1);
}

TEST(VTIntArray, BinSearchFindsOrTellsThePlace) {
    const Ints array({10, 20, 30, 40});
    const struct {
        int iValue;
        int iFound;
        int iInsertion;
    } rows[] = {{10, 0, 0}, {40, 3, 3}, {20, 1, 1}, {5, -1, 0}, {25, -1, 2}, {45, -1, 4}};
    for (const auto& row : rows) {
        int iInsertion = -7;
        EXPECT_EQ(array.BinSearch(row.iValue, 0, -1, &iInsertion), row.iFound) << row.iValue;
        EXPECT_EQ(iInsertion, row.iInsertion) << row.iValue;
        EXPECT_EQ(array.BinSearch(row.iValue, 0, -1, nullptr), row.iFound) << row.iValue;
    }
    EXPECT_EQ(array.BinSearch(10, 1, 3, nullptr), -1);
    EXPECT_EQ(array.BinSearch(40, 0, 2, nullptr), -1);
}

TEST(VTIntArray, BinSearchOfAnEmptyArrayLooksAtNoOtherArgument) {
    AssertRecorder recorder;
    for (const VTIntArray& array : {VTIntArray(), static_cast<VTIntArray>(Roomy<VTIntArray>({}, 3))}) {
        int iInsertion = -7;
        EXPECT_EQ(array.BinSearch(5, 17, -9, &iInsertion), -1);
        EXPECT_EQ(iInsertion, 0);
        EXPECT_EQ(array.BinSearch(5, 17, -9, nullptr), -1);
    }
    EXPECT_TRUE(recorder.take().empty());
}

TEST(VTIntArray, BinSearchChecksTheRange) {
    AssertRecorder recorder;
    const Ints array({10, 20, 30});
    array.BinSearch(10, 2, 1, nullptr);
    EXPECT_EQ(recorder.take(), failed({"iStopIndex >= iStartIndex"}));
    const std::string start = "iStartIndex >= 0 && iStartIndex < m_iNumItems";
    const std::string stop = "iStopIndex >= 0 && iStopIndex < m_iNumItems";
    EXPECT_EQ(assertsUntil(1, [&] { array.BinSearch(10, -1, 1, nullptr); }), failed({start}));
    EXPECT_EQ(assertsUntil(3, [&] { array.BinSearch(10, 3, -2, nullptr); }),
              failed({start, stop, "iStopIndex >= iStartIndex"}));
    EXPECT_EQ(assertsUntil(1, [&] { array.BinSearch(10, 0, 3, nullptr); }), failed({stop}));
}

TEST(VTIntArray, FindMinMaxOfARange) {
    const Ints array({5, 9, 1, 7});
    const struct {
        int iStart;
        int iCount;
        bool bFound;
        int iMin;
        int iMax;
    } rows[] = {{0, -1, true, 1, 9}, {0, 2, true, 5, 9},  {1, 1, true, 9, 9},   {2, 2, true, 1, 7},
                {3, 5, true, 7, 7},  {2, -9, true, 1, 7}, {0, 0, false, -7, -7}};
    for (const auto& row : rows) {
        for (bool bIgnoreUndefined : {false, true}) {
            int iMin = -7;
            int iMax = -7;
            EXPECT_EQ(array.FindMinMax(&iMin, &iMax, row.iStart, row.iCount, bIgnoreUndefined), row.bFound);
            EXPECT_EQ(iMin, row.iMin) << row.iStart << " " << row.iCount;
            EXPECT_EQ(iMax, row.iMax) << row.iStart << " " << row.iCount;
        }
    }
    EXPECT_TRUE(array.FindMinMax(nullptr, nullptr, 0, -1, false));
    EXPECT_FALSE(VTIntArray().FindMinMax(nullptr, nullptr, 9, -1, false));
    const auto start = failed({"iStartIndex >= 0 && iStartIndex < m_iNumItems"});
    EXPECT_EQ(assertsUntil(1, [&] { array.FindMinMax(nullptr, nullptr, 4, -1, false); }), start);
    EXPECT_EQ(assertsUntil(1, [&] { array.FindMinMax(nullptr, nullptr, -1, -1, false); }), start);
}

TEST(VTIntArray, FindMinMaxSkipsUndefinedItemsWhenAsked) {
    const int iNone = VT_UNDEFINED_INT;
    int iMin = 0;
    int iMax = 0;
    EXPECT_TRUE(Ints({3, iNone, 5}).FindMinMax(&iMin, &iMax, 0, -1, false));
    EXPECT_EQ(iMax, iNone);
    EXPECT_TRUE(Ints({iNone, 3, iNone, 5}).FindMinMax(&iMin, &iMax, 0, -1, true));
    EXPECT_EQ(iMin, 3);
    EXPECT_EQ(iMax, 5);
    EXPECT_FALSE(Ints({iNone, iNone}).FindMinMax(&iMin, &iMax, 0, -1, true));
    EXPECT_EQ(iMin, 3);
    EXPECT_EQ(iMax, 5);
}

// The seed of the maximum is 0x80000002, two above the smallest int.
TEST(VTIntArray, FindMinMaxWithTheFlagNeverReportsAMaximumBelowItsSeed) {
    for (int iItem : {INT_MIN, INT_MIN + 1, INT_MIN + 2}) {
        int iMin = 0;
        int iMax = 0;
        EXPECT_TRUE(Ints({iItem}).FindMinMax(&iMin, &iMax, 0, -1, true));
        EXPECT_EQ(iMin, iItem);
        EXPECT_EQ(iMax, -2147483646);
        EXPECT_TRUE(Ints({iItem}).FindMinMax(&iMin, &iMax, 0, -1, false));
        EXPECT_EQ(iMax, iItem);
    }
}

TEST(VTIntArray, FindMinMaxMatchesTheStandardLibrary) {
    PortableRandom random(2);
    for (int iRound = 0; iRound < 50; ++iRound) {
        const Numbers list = randomNumbers(random, 1 + iRound, -1000, 1000);
        const auto [least, most] = std::minmax_element(list.begin(), list.end());
        for (bool bIgnoreUndefined : {false, true}) {
            int iMin = 0;
            int iMax = 0;
            EXPECT_TRUE(Ints(list).FindMinMax(&iMin, &iMax, 0, -1, bIgnoreUndefined));
            EXPECT_EQ(iMin, *least);
            EXPECT_EQ(iMax, *most);
        }
    }
}

TEST(VTIntArray, FindUnusedValueTakesTheFirstGap) {
    const int iNone = VT_UNDEFINED_INT;
    const struct {
        Numbers list;
        int iStart;
        int iUnused;
    } rows[] = {{{1, 5, 6, 8}, 5, 7},
                {{1, 2}, 5, 5},
                {{1, 5, 6, 8}, 1, 2},
                {{1, 5, 6, 8}, 8, 9},
                {{5, 5, 6, 6}, 5, 7},
                {{5, 6, 7}, 5, 8},
                {{}, 5, 5},
                {{5, iNone}, 5, 6},
                {{-1, 0, 1}, -1, 2},
                {{4, 6}, 5, 5},
                {{iNone - 1, iNone}, iNone - 1, iNone}}; // It stops there, and does not step past the largest int.
    PortableRandom random(3);
    for (const auto& row : rows) {
        EXPECT_EQ(Ints(row.list).FindUnusedValue(row.iStart, true), row.iUnused) << row.iStart;
        Numbers mixed = row.list;
        for (std::size_t i = mixed.size(); i > 1; --i) {
            std::swap(mixed[i - 1], mixed[static_cast<std::size_t>(random.integer(0, static_cast<int>(i) - 1))]);
        }
        EXPECT_EQ(Ints(mixed).FindUnusedValue(row.iStart, false), row.iUnused) << row.iStart;
    }
}

TEST(VTIntArray, FindUnusedValueWithoutItemsIsTheStart) {
    AssertRecorder recorder;
    const Roomy<VTIntArray> array({}, 3);
    EXPECT_EQ(array.FindUnusedValue(99, true), 99); // Which the unused slots hold.
    EXPECT_EQ(array.FindUnusedValue(99, false), 99);
    EXPECT_TRUE(recorder.take().empty());
}

TEST(VTIntArray, FindUnusedValueChecksItsIndex) {
    Ints array({1});
    assertsUntil(0, [&] { array.SetNumItems(-5); });
    EXPECT_EQ(assertsUntil(1, [&] { array.FindUnusedValue(1, false); }), failed({"piSortedIndices"}));
    array.SetNumItems(1);
}

TEST(VTIntArray, OffsetMovesAllItemsOrTheDefinedOnes) {
    const int iNone = VT_UNDEFINED_INT;
    Ints array({1, iNone, 3});
    array.Offset(10, true);
    EXPECT_EQ(numbers<VTIntArray>(array), (Numbers{11, iNone, 13}));
    array.Offset(-1, false);
    EXPECT_EQ(numbers<VTIntArray>(array), (Numbers{10, iNone - 1, 12}));
    array.Offset(0, false);
    EXPECT_EQ(numbers<VTIntArray>(array), (Numbers{10, iNone - 1, 12}));
    Ints high({INT_MAX});
    high.Offset(1, false);
    EXPECT_EQ(high.Get(0), INT_MIN);
}

TEST(VTIntArray, SumOfARange) {
    const int iNone = VT_UNDEFINED_INT;
    const Ints array({1, 2, 4, iNone, 8});
    EXPECT_EQ(array.Sum(0, 3, true), 7);
    EXPECT_EQ(array.Sum(1, 2, false), 6);
    EXPECT_EQ(array.Sum(4, -1, true), 8);
    EXPECT_EQ(array.Sum(0, 0, true), 0);
    EXPECT_EQ(array.Sum(0, -1, true), iNone);
    EXPECT_EQ(array.Sum(2, -1, false), INT_MIN + 11); // 4 + (2^31 - 1) + 8, wrapped around.
    EXPECT_EQ(VTIntArray().Sum(3, 5, true), 0);
    const auto start = failed({"iStartIndex >= 0 && iStartIndex < m_iNumItems"});
    EXPECT_EQ(assertsUntil(1, [&] { array.Sum(5, -1, false); }), start);
    EXPECT_EQ(assertsUntil(1, [&] { array.Sum(-1, -1, false); }), start);
}

TEST(VTIntArray, ComputeAverageDividesInFloat) {
    const Ints array({1, 2, 4});
    EXPECT_EQ(array.ComputeAverage(0, 2), 1.5f);
    EXPECT_EQ(array.ComputeAverage(0, -1), 7.0f / 3.0f);
    EXPECT_EQ(array.ComputeAverage(1, -1), 3.0f);
    EXPECT_EQ(array.ComputeAverage(0, 0), 0.0f);
    EXPECT_EQ(VTIntArray().ComputeAverage(0, -1), 0.0f);
    EXPECT_EQ(Ints({VT_UNDEFINED_INT}).ComputeAverage(0, 1), 2147483648.0f); // An ordinary number here.
    const auto start = failed({"iStartIndex >= 0 && iStartIndex < m_iNumItems"});
    EXPECT_EQ(assertsUntil(1, [&] { array.ComputeAverage(3, 1); }), start);
    EXPECT_EQ(assertsUntil(1, [&] { array.ComputeAverage(-1, 1); }), start);
    AssertRecorder recorder;
    EXPECT_EQ(array.ComputeAverage(3, -1), 0.0f); // A start at the end leaves a count of 0.
    EXPECT_TRUE(recorder.take().empty());
}

TEST(VTIntArray, ReverseChecksForABufferFirst) {
    AssertRecorder recorder;
    VTIntArray().Reverse();
    EXPECT_EQ(recorder.take(), failed({"m_piData"}));
    Ints array({1, 2, 3});
    array.Reverse();
    EXPECT_EQ(numbers<VTIntArray>(array), (Numbers{3, 2, 1}));
    Ints even({1, 2});
    even.Reverse();
    EXPECT_EQ(numbers<VTIntArray>(even), (Numbers{2, 1}));
    Ints single({1});
    single.Reverse();
    EXPECT_EQ(numbers<VTIntArray>(single), (Numbers{1}));
    EXPECT_TRUE(recorder.take().empty());
}

TEST(VTIntArray, CompactIndicesRenumbersFromZeroWithoutGaps) {
    Ints array({7, 3, 7});
    VTIntArray mapping;
    int iNewMax = -1;
    EXPECT_TRUE(array.CompactIndices(-1, &mapping, &iNewMax));
    EXPECT_EQ(numbers<VTIntArray>(array), (Numbers{1, 0, 1}));
    EXPECT_EQ(iNewMax, 1);
    EXPECT_EQ(numbers(mapping), (Numbers{-1, -1, -1, 0, -1, -1, -1, 1}));
    Ints given({2, 0});
    EXPECT_TRUE(given.CompactIndices(4, &mapping, &iNewMax));
    EXPECT_EQ(numbers<VTIntArray>(given), (Numbers{1, 0}));
    EXPECT_EQ(numbers(mapping), (Numbers{0, -1, 1, -1, -1}));
}

TEST(VTIntArray, CompactIndicesWithoutItemsOrDefinedItemsIsFalse) {
    VTIntArray mapping;
    int iNewMax = -7;
    EXPECT_FALSE(VTIntArray().CompactIndices(-1, &mapping, &iNewMax));
    EXPECT_FALSE(Ints({VT_UNDEFINED_INT}).CompactIndices(-1, &mapping, &iNewMax));
    EXPECT_EQ(iNewMax, -7);
    EXPECT_EQ(mapping.GetNumItems(), 0);
}

TEST(VTIntArray, CompactIndicesChecksItsArgumentsAndItems) {
    Ints array({1, 3, -1});
    VTIntArray mapping;
    int iNewMax = -7;
    const std::string item = "iIndex >= 0 && iIndex <= iMaxIndex";
    EXPECT_EQ(assertsUntil(2, [&] { array.CompactIndices(-1, nullptr, nullptr); }),
              failed({"paiMapping", "piNewMaxIndex"}));
    EXPECT_EQ(assertsUntil(1, [&] { array.CompactIndices(-2, &mapping, &iNewMax); }), failed({"iMaxIndex >= 0"}));
    EXPECT_EQ(assertsUntil(1, [&] { array.CompactIndices(2, &mapping, &iNewMax); }), failed({item}));
    EXPECT_EQ(assertsUntil(1, [&] { array.CompactIndices(3, &mapping, &iNewMax); }), failed({item}));
    VTIntArray noBuffer;
    assertsUntil(0, [&] { noBuffer.SetNumItems(1); });
    EXPECT_EQ(assertsUntil(1, [&] { noBuffer.CompactIndices(0, &mapping, &iNewMax); }), failed({"m_piData"}));
}

// A mapping whose buffer was there before.
struct PlacedMapping : VTIntArray {
    void Alloc(int, int, bool) override {}
};

// Items and mapping in one buffer: 0, -2 | -1, -1. Marking index 0 and, two places in front of the mapping, index -2
// makes it 1, -2 | 1, -1, and numbering 1, -2 | 0, -1. Now index 1 is in range, but in use it is not.
TEST(VTIntArray, CompactIndicesChecksItsItemsOnceMoreWhenItRewritesThem) {
    AssertRecorder recorder;
    int aiBuffer[] = {0, -2, 7, 7};
    VTIntArray array;
    array.SetSharedDataPtr(aiBuffer, 2);
    PlacedMapping mapping;
    mapping.SetSharedDataPtr(aiBuffer + 2, 2);
    int iNewMax = -7;
    EXPECT_TRUE(array.CompactIndices(1, &mapping, &iNewMax));
    const std::string item = "iIndex >= 0 && iIndex <= iMaxIndex";
    const std::string mapped = "paiMapping->Get(iIndex) >= 0";
    const std::string access = "iIndex >= 0"; // Of the mapping itself, at each access.
    EXPECT_EQ(recorder.take(), failed({item, access, mapped, item, access, mapped, access}));
    EXPECT_EQ(numbers(array), (Numbers{-1, -1}));
    EXPECT_EQ(numbers<VTIntArray>(mapping), (Numbers{0, -1}));
    EXPECT_EQ(iNewMax, 0);
}

TEST(VTIntArray, SetOperations) {
    Ints array({3, 1, 3});
    array.Union(Ints({1, 5, 5}));
    EXPECT_EQ(numbers<VTIntArray>(array), (Numbers{3, 1, 3, 5}));
    array.Union(VTIntArray());
    array.Subtract(Ints({1, 8}));
    EXPECT_EQ(numbers<VTIntArray>(array), (Numbers{3, 3, 5}));
    array.Subtract(VTIntArray());
    EXPECT_EQ(numbers<VTIntArray>(array), (Numbers{3, 3, 5}));
}

TEST(VTIntArray, UnionOfABorrowedArrayFailsOnlyWhenThereIsSomethingToAdd) {
    Ints owner({1, 2});
    Shared<VTIntArray> shared(&owner);
    AssertRecorder recorder;
    shared.Union(VTIntArray());
    EXPECT_TRUE(recorder.take().empty());
    shared.Union(Ints({1}));
    EXPECT_EQ(recorder.take(), failed({"!m_bSharedData", "!m_bSharedData"})); // Once for the list, once for its item.
}

TEST(VTIntArray, IntersectKeepsOrderDuplicatesAndCapacity) {
    Ints array({5, 3, 9, 3, 1});
    array.Intersect(Ints({8, 3, 5, 4}));
    EXPECT_EQ(numbers<VTIntArray>(array), (Numbers{5, 3, 3}));
    EXPECT_EQ(array.GetNumAllocated(), 5);
}

TEST(VTIntArray, IntersectWithNothingFrees) {
    Ints array({5, 3});
    array.Realloc(8, 7, false);
    array.Intersect(VTIntArray());
    EXPECT_EQ(array.GetNumItems(), 0);
    EXPECT_EQ(array.GetDataPtr(), nullptr);
    EXPECT_EQ(array.GetGrowBy(), 7);
}

TEST(VTIntArray, SetOperationsMatchTheirDefinitions) {
    PortableRandom random(4);
    for (int iRound = 0; iRound < 50; ++iRound) {
        const Numbers a = randomNumbers(random, random.integer(1, 80), 0, 60);
        const Numbers b = randomNumbers(random, random.integer(1, 80), 0, 60);
        const auto in = [](const Numbers& list, int i) { return std::find(list.begin(), list.end(), i) != list.end(); };
        Numbers common;
        Numbers rest;
        Numbers all = a;
        for (int i : a) {
            (in(b, i) ? common : rest).push_back(i);
        }
        for (int i : b) {
            if (!in(all, i)) {
                all.push_back(i);
            }
        }
        Ints array(a);
        array.Intersect(Ints(b));
        EXPECT_EQ(numbers<VTIntArray>(array), common);
        array.CopyData(a.data(), static_cast<int>(a.size()), 0);
        array.Delete(static_cast<int>(a.size()), -1);
        array.Subtract(Ints(b));
        EXPECT_EQ(numbers<VTIntArray>(array), rest);
        Ints joined(a);
        joined.Union(Ints(b));
        EXPECT_EQ(numbers<VTIntArray>(joined), all);
    }
}

} // namespace
