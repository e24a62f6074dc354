#include "LibUnstructGrid/VTOSortSearch.h"

#include "Tests/LibUnstructGrid/PortableRandom.h"
#include "Tests/Support/AssertStopper.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <vector>

using orvtest::AssertRecorder;
using orvtest::assertsUntil;
using orvtest::failedIn;
using orvtest::PortableRandom;

namespace {

const std::string source = "LibUnstructGrid/VTOSortSearch";

struct SearchRow {
    int value;
    int start;
    int stop;
    int found;
    int insertion;
};

const int tens[] = {10, 20, 30, 40, 50};
const int straight[] = {0, 1, 2, 3, 4};

// Middles of 0..4: 2; then 0 (of 0..1) or 3 (of 3..4).
const SearchRow commonRows[] = {{30, 0, 4, 2, 2},  {10, 0, 4, 0, 0},  {20, 0, 4, 1, 1},  {40, 0, 4, 3, 3},
                                {50, 0, 4, 4, 4},  {15, 0, 4, -1, 1}, {25, 0, 4, -1, 2}, {45, 0, 4, -1, 4},
                                {55, 0, 4, -1, 5}, {30, 2, 2, 2, 2},  {29, 2, 2, -1, 2}, {31, 2, 2, -1, 3},
                                {10, 1, 3, -1, 1}, {99, 0, -1, -1, 0}};

TEST(BinarySearch, FindsThePositionOrThePlace) {
    for (const SearchRow& row : commonRows) {
        int insertion = -7;
        EXPECT_EQ(VTBinarySearch(tens, row.value, row.start, row.stop, &insertion), row.found) << row.value;
        EXPECT_EQ(insertion, row.insertion) << row.value;
        EXPECT_EQ(VTBinarySearch(tens, row.value, row.start, row.stop, nullptr), row.found);
    }
}

// 5 lies before 10, the first of the two left (0..1), so the search ends in the range 0..-1; 35 before 40, the first
// of 3..4.
TEST(BinarySearch, InsertionIndexOfAnEmptyRangeIsItsStart) {
    int insertion = -7;
    EXPECT_EQ(VTBinarySearch(tens, 5, 0, 4, &insertion), -1);
    EXPECT_EQ(insertion, 0);
    EXPECT_EQ(VTBinarySearch(tens, 35, 0, 4, &insertion), -1);
    EXPECT_EQ(insertion, 3);
    EXPECT_EQ(VTBinarySearch(tens, 35, 5, 4, &insertion), -1);
    EXPECT_EQ(insertion, 5);
}

TEST(BinarySearch, HitAmongDuplicatesIsTheBisections) {
    const int data[] = {1, 7, 7, 7, 7, 9};
    int insertion = -7;
    EXPECT_EQ(VTBinarySearch(data, 7, 0, 5, &insertion), 2);
    EXPECT_EQ(insertion, 2);
    EXPECT_EQ(VTBinarySearch(data, 7, 3, 5, &insertion), 4);
    EXPECT_EQ(insertion, 4);
}

TEST(BinarySearch, NullListHasNothing) {
    AssertRecorder recorder;
    const int* none = nullptr;
    int insertion = -7;
    EXPECT_EQ(VTBinarySearch(none, 1, 3, 9, &insertion), -1);
    EXPECT_EQ(insertion, 0);
    EXPECT_EQ(VTBinarySearch(none, 1, 3, 9, nullptr), -1);
    EXPECT_TRUE(recorder.take().empty()) << "the int search asserts nothing";
}

template <typename T>
void expectFindsNumbers() {
    const T data[] = {T(10), T(20), T(30), T(40), T(50)};
    for (const SearchRow& row : commonRows) {
        if (row.stop < row.start) {
            continue;
        }
        int insertion = -7;
        EXPECT_EQ(VTBinarySearch(data, T(row.value), row.start, row.stop, &insertion), row.found) << row.value;
        EXPECT_EQ(insertion, row.insertion) << row.value;
    }
    int insertion = -7;
    EXPECT_EQ(VTBinarySearch(data, T(35), 0, 4, &insertion), -1);
    EXPECT_EQ(insertion, 3);
    EXPECT_EQ(VTBinarySearch(data, std::nextafter(T(30), T(0)), 0, 4, &insertion), -1) << "exact";
    EXPECT_EQ(insertion, 2);
    EXPECT_EQ(VTBinarySearch(data, T(std::nan("")), 0, 4, &insertion), -1);
    EXPECT_EQ(insertion, 5) << "a NaN is below nothing";
}

TEST(BinarySearch, FindsNumbersExactly) {
    expectFindsNumbers<float>();
    expectFindsNumbers<double>();
}

TEST(BinarySearch, NumbersAssertListAndRange) {
    AssertRecorder recorder;
    int insertion = -7;
    EXPECT_EQ(VTBinarySearch(static_cast<const float*>(nullptr), 1.0f, -1, -2, &insertion), -1);
    EXPECT_EQ(insertion, 0);
    EXPECT_EQ(recorder.take(), failedIn(source, {"pfData", "iStartIndex >= 0", "iStopIndex >= iStartIndex"}));
    EXPECT_EQ(VTBinarySearch(static_cast<const double*>(nullptr), 1.0, -1, -2, &insertion), -1);
    EXPECT_EQ(recorder.take(), failedIn(source, {"pdData", "iStartIndex >= 0", "iStopIndex >= iStartIndex"}));
    // An empty range goes on: its start is the place.
    const double data[] = {1.0};
    EXPECT_EQ(VTBinarySearch(data, 1.0, 5, 4, &insertion), -1);
    EXPECT_EQ(insertion, 5);
    EXPECT_EQ(recorder.take(), failedIn(source, {"iStopIndex >= iStartIndex"}));
}

TEST(BinarySearch, AgreesWithTheLibraryOnRandomLists) {
    PortableRandom random(99);
    for (int round = 0; round < 200; ++round) {
        std::vector<int> data(random.integer(1, 60));
        for (int& value : data) {
            value = random.integer(0, 80);
        }
        std::sort(data.begin(), data.end());
        const int wanted = random.integer(-1, 81);
        int insertion = -7;
        const int found = VTBinarySearch(data.data(), wanted, 0, static_cast<int>(data.size()) - 1, &insertion);
        const auto [first, last] = std::equal_range(data.begin(), data.end(), wanted);
        if (first == last) {
            EXPECT_EQ(found, -1);
            EXPECT_EQ(insertion, first - data.begin());
        } else {
            EXPECT_GE(found, first - data.begin());
            EXPECT_LT(found, last - data.begin());
            EXPECT_EQ(insertion, found);
        }
    }
}

TEST(BinaryIndexSearch, FindsPositionsInTheIndexList) {
    for (const SearchRow& row : commonRows) {
        int insertion = -7;
        EXPECT_EQ(VTBinaryIndexSearch(tens, straight, row.value, row.start, row.stop, &insertion), row.found);
        EXPECT_EQ(insertion, row.insertion) << row.value;
        EXPECT_EQ(VTBinaryIndexSearch(tens, straight, row.value, row.start, row.stop, nullptr), row.found);
    }
    const int keys[] = {30, 10, 20};
    const int indexes[] = {1, 2, 0};
    int insertion = -7;
    EXPECT_EQ(VTBinaryIndexSearch(keys, indexes, 30, 0, 2, &insertion), 2);
    EXPECT_EQ(insertion, 2);
}

TEST(BinaryIndexSearch, WritesZeroForAnEmptyRange) {
    int insertion = -7;
    EXPECT_EQ(VTBinaryIndexSearch(tens, straight, 35, 5, 4, &insertion), -1);
    EXPECT_EQ(insertion, 0);
    EXPECT_EQ(VTBinaryIndexSearch(tens, straight, 35, 0, -1, &insertion), -1);
    EXPECT_EQ(insertion, 0);
}

// The same 35 as above, for which VTBinarySearch() gives 3: the search runs into the empty range 3..2 on its way.
TEST(BinaryIndexSearch, WritesZeroAlsoWhenTheRangeRunsEmptyOnTheWay) {
    int insertion = -7;
    EXPECT_EQ(VTBinaryIndexSearch(tens, straight, 35, 0, 4, &insertion), -1);
    EXPECT_EQ(insertion, 0);
}

TEST(BinaryIndexSearch, NullListLeavesTheInsertionIndex) {
    int insertion = -7;
    EXPECT_EQ(VTBinaryIndexSearch(nullptr, straight, 1, 0, 4, &insertion), -1);
    EXPECT_EQ(VTBinaryIndexSearch(tens, nullptr, 1, 0, 4, &insertion), -1);
    EXPECT_EQ(insertion, -7);
}

TEST(InsertIntInSortedList, KeepsTheOrder) {
    int list[5] = {-1, -1, -1, -1, -1};
    EXPECT_TRUE(VTInsertIntInSortedList(list, 20, 0, 5, true));
    EXPECT_TRUE(VTInsertIntInSortedList(list, 10, 1, 5, true));
    EXPECT_TRUE(VTInsertIntInSortedList(list, 30, 2, 5, true));
    EXPECT_FALSE(VTInsertIntInSortedList(list, 20, 3, 5, true));
    EXPECT_THAT(list, testing::ElementsAre(10, 20, 30, -1, -1));
    EXPECT_TRUE(VTInsertIntInSortedList(list, 20, 3, 5, false));
    EXPECT_TRUE(VTInsertIntInSortedList(list, 25, 4, 5, true));
    EXPECT_THAT(list, testing::ElementsAre(10, 20, 20, 25, 30));
}

TEST(InsertIntInSortedList, RefusesAFullListAndANegativeCount) {
    AssertRecorder recorder;
    int list[2] = {1, 2};
    EXPECT_FALSE(VTInsertIntInSortedList(list, 3, 2, 2, false));
    EXPECT_EQ(recorder.take(), failedIn(source, {"iNumEntriesInList < iMaxEntriesInList"}));
    EXPECT_FALSE(VTInsertIntInSortedList(list, 3, -1, 2, false));
    EXPECT_EQ(recorder.take(), failedIn(source, {"iNumEntriesInList >= 0"}));
    EXPECT_FALSE(VTInsertIntInSortedList(list, 3, -1, -1, false));
    EXPECT_EQ(recorder.take(), failedIn(source, {"iNumEntriesInList < iMaxEntriesInList", "iNumEntriesInList >= 0"}));
    EXPECT_THAT(list, testing::ElementsAre(1, 2));
}

TEST(IsSorted, EqualNeighboursAreSorted) {
    const int sorted[] = {1, 2, 2, 3};
    const int unsorted[] = {1, 3, 2, 4};
    const int lastOut[] = {1, 2, 3, 0};
    EXPECT_TRUE(VTIsSorted(sorted, 4));
    EXPECT_FALSE(VTIsSorted(unsorted, 4));
    EXPECT_TRUE(VTIsSorted(unsorted, 2));
    EXPECT_FALSE(VTIsSorted(lastOut, 4));
    EXPECT_TRUE(VTIsSorted(unsorted, 1));
    EXPECT_TRUE(VTIsSorted(nullptr, 0));
}

TEST(IsIndexSorted, LooksThroughTheIndexes) {
    const int keys[] = {3, 1, 2, 2};
    const int up[] = {1, 3, 2, 0};
    const int lastOut[] = {1, 2, 0, 3};
    EXPECT_TRUE(VTIsIndexSorted(keys, up, 4));
    EXPECT_FALSE(VTIsIndexSorted(keys, lastOut, 4));
    EXPECT_TRUE(VTIsIndexSorted(keys, lastOut, 3));
    EXPECT_TRUE(VTIsIndexSorted(keys, lastOut, 1));
    EXPECT_TRUE(VTIsIndexSorted(nullptr, nullptr, 0));
}

TEST(Find2Ints, FindsAnEdgeInEitherDirection) {
    const int polygon[] = {4, 7, 9, 2};
    EXPECT_EQ(VTFind2Ints(7, 9, polygon, 4), 1);
    EXPECT_EQ(VTFind2Ints(9, 7, polygon, 4), 1);
    EXPECT_EQ(VTFind2Ints(2, 4, polygon, 4), 3) << "the closing edge";
    EXPECT_EQ(VTFind2Ints(4, 2, polygon, 4), 3);
    EXPECT_EQ(VTFind2Ints(4, 9, polygon, 4), -1) << "a diagonal";
    EXPECT_EQ(VTFind2Ints(4, 4, polygon, 4), -1);
    EXPECT_EQ(VTFind2Ints(4, 7, nullptr, 4), -1);
    EXPECT_EQ(VTFind2Ints(4, 7, polygon, 0), -1);
    const int twice[] = {1, 2, 1, 2};
    EXPECT_EQ(VTFind2Ints(2, 1, twice, 4), 0) << "the first match";
    EXPECT_EQ(VTFind2Ints(4, 4, polygon, 1), 0) << "one item is its own successor";
}

TEST(FindInt, CountsOccurrencesFromOne) {
    const int data[] = {5, 3, 5, 5};
    const unsigned char bytes[] = {5, 3, 5, 5};
    const int expected[][2] = {{1, 0}, {2, 2}, {3, 3}, {4, -1}, {0, -1}, {-1, -1}};
    for (const auto& [occurrence, position] : expected) {
        EXPECT_EQ(VTFindInt(data, 4, 5, occurrence), position);
        EXPECT_EQ(VTFind(bytes, 4, 5, occurrence), position);
    }
    EXPECT_EQ(VTFindInt(data, 4, 4, 1), -1);
    EXPECT_EQ(VTFind(bytes, 4, 4, 1), -1);
    EXPECT_EQ(VTFindInt(data, 2, 5, 2), -1);
    EXPECT_EQ(VTFindInt(nullptr, 0, 5, 1), -1);
    EXPECT_EQ(VTFind(nullptr, 0, 5, 1), -1);
}

} // namespace
