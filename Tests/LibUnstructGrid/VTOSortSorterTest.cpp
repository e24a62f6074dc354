#include "LibUnstructGrid/VTOSortSorter.h"

#include "LibUnstructGrid/VTOBaseTypes2D.h"
#include "LibUnstructGrid/VTOLinAlgebraVector.h"
#include "LibUnstructGrid/VTOSortSorter_p.h"
#include "LibUnstructGrid/VTOString.h"
#include "Tests/LibUnstructGrid/PortableRandom.h"
#include "Tests/Support/AssertStopper.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numeric>
#include <vector>

using orvtest::AssertRecorder;
using orvtest::assertsUntil;
using orvtest::failedIn;
using orvtest::PortableRandom;

namespace {

const std::string source = "LibUnstructGrid/VTOSortSorter_p";

/// Reaches the stages, and counts comparisons.
class OpenSorter : public VTSorterTemplate<int> {
public:
    using VTSorterTemplate<int>::BubbleSortSubArray;
    using VTSorterTemplate<int>::ExchangeIdx;
    using VTSorterTemplate<int>::ExchangeVal;
    using VTSorterTemplate<int>::InsertionSortIdxSubArray;
    using VTSorterTemplate<int>::InsertionSortSubArray;
    using VTSorterTemplate<int>::m_pData;
    using VTSorterTemplate<int>::m_piIndices;
    using VTSorterTemplate<int>::m_pKeys;
    using VTSorterTemplate<int>::Partition;
    using VTSorterTemplate<int>::QuickSortRecursive;

    bool CompGT(const int& a, const int& b) const override {
        ++m_greater;
        return a > b;
    }
    bool CompLT(const int& a, const int& b) const override {
        ++m_less;
        return a < b;
    }

    mutable int m_greater = 0;
    mutable int m_less = 0;
};

class DescendingSorter : public VTSorterTemplate<int> {
public:
    bool CompGT(const int& a, const int& b) const override {
        return a < b;
    }
    bool CompLT(const int& a, const int& b) const override {
        return a > b;
    }
};

std::vector<int> identity(int count) {
    std::vector<int> indexes(count);
    std::iota(indexes.begin(), indexes.end(), 0);
    return indexes;
}

std::vector<int> indexSorted(const std::vector<int>& keys) {
    std::vector<int> indexes = identity(static_cast<int>(keys.size()));
    VTSorterTemplate<int> sorter;
    sorter.QSortIdx(keys.data(), indexes.data(), static_cast<int>(keys.size()));
    return indexes;
}

// The index quick sort as it is told, on plain vectors: the independent formulation for random keys.
void modelSort(const std::vector<int>& keys, std::vector<int>& indexes, int left, int right) {
    if (right - left < 32) {
        std::stable_sort(indexes.begin() + left, indexes.begin() + right + 1,
                         [&](int a, int b) { return keys[a] < keys[b]; });
        return;
    }
    const int pivot = keys[indexes[(left + right) / 2]];
    int i = left - 1;
    int j = right + 1;
    for (;;) {
        for (--j; keys[indexes[j]] > pivot; --j) {
        }
        for (++i; keys[indexes[i]] < pivot; ++i) {
        }
        if (i >= j) {
            break;
        }
        std::swap(indexes[i], indexes[j]);
    }
    modelSort(keys, indexes, left, j);
    modelSort(keys, indexes, j + 1, right);
}

TEST(Sorter, ThirtyTwoEqualKeysKeepTheirOrder) {
    EXPECT_EQ(indexSorted(std::vector<int>(32, 7)), identity(32));
}

// All keys equal the pivot, so both scans stop at once and every pair (0, 32), (1, 31), ... (15, 17) is exchanged; the
// two halves are short enough for the insertion sort, which leaves equal keys alone.
TEST(Sorter, ThirtyThreeEqualKeysComeOutReversed) {
    std::vector<int> reversed = identity(33);
    std::reverse(reversed.begin(), reversed.end());
    EXPECT_EQ(indexSorted(std::vector<int>(33, 7)), reversed);
}

// The first partition reverses all and splits at 33; the parts 0..33 and 34..66 are long enough to be reversed again.
TEST(Sorter, SixtySevenEqualKeysAreReversedTwiceInHalves) {
    std::vector<int> expected;
    for (int i = 33; i <= 66; ++i) {
        expected.push_back(i);
    }
    for (int i = 0; i <= 32; ++i) {
        expected.push_back(i);
    }
    EXPECT_EQ(indexSorted(std::vector<int>(67, 7)), expected);
}

// Keys 1 at the even and 0 at the odd places of 33: the pivot, at place 16, is 1. The scan from the right stops at
// every item (nothing is above 1), the scan from the left skips the zeros. Exchanges: (0, 32) (2, 31) (4, 30) (6, 29)
// (8, 28) (10, 27) (12, 26) (14, 25) (16, 24) (18, 23) (20, 22), then both scans meet at 21 and 22.
TEST(Sorter, MixedKeysFollowTheExchanges) {
    std::vector<int> keys(33);
    for (int i = 0; i < 33; ++i) {
        keys[i] = i % 2 == 0 ? 1 : 0;
    }
    std::vector<int> after = identity(33);
    for (auto [i, j] : {std::pair(0, 32),
                        {2, 31},
                        {4, 30},
                        {6, 29},
                        {8, 28},
                        {10, 27},
                        {12, 26},
                        {14, 25},
                        {16, 24},
                        {18, 23},
                        {20, 22}}) {
        std::swap(after[i], after[j]);
    }
    // What remains is a stable sort of 0..21 and of 22..32.
    auto byKey = [&](int a, int b) { return keys[a] < keys[b]; };
    std::stable_sort(after.begin(), after.begin() + 22, byKey);
    std::stable_sort(after.begin() + 22, after.end(), byKey);

    EXPECT_EQ(indexSorted(keys), after);
    // Written out: places 0..21 hold 32 1 31 3 30 5 29 7 28 9 27 11 26 13 25 15 24 17 23 19 22 21 after the exchanges;
    // the odd ones, with key 0, go first in that order, then the even ones.
    EXPECT_EQ(after, (std::vector<int>{1,  31, 3,  5,  29, 7,  9,  27, 11, 13, 25, 15, 17, 23, 19, 21, 32,
                                       30, 28, 26, 24, 22, 20, 18, 16, 14, 12, 10, 8,  6,  4,  2,  0}));
}

TEST(Sorter, IndexSortOfRandomKeysFollowsTheToldSteps) {
    PortableRandom random(20240801);
    for (int round = 0; round < 60; ++round) {
        const int count = random.integer(1, 700);
        const int distinct = random.integer(1, 40);
        std::vector<int> keys(count);
        for (int& key : keys) {
            key = random.integer(-distinct, distinct);
        }
        std::vector<int> expected = identity(count);
        modelSort(keys, expected, 0, count - 1);
        ASSERT_EQ(indexSorted(keys), expected) << "round " << round;
    }
}

TEST(Sorter, IndexSortReordersWhatStandsInTheList) {
    const int keys[] = {50, 40, 30, 20, 10};
    int indexes[] = {4, 0, 2};
    VTSorterTemplate<int> sorter;
    sorter.QSortIdx(keys, indexes, 3);
    EXPECT_THAT(indexes, testing::ElementsAre(4, 2, 0));
    EXPECT_THAT(keys, testing::ElementsAre(50, 40, 30, 20, 10));
}

TEST(Sorter, PartitionOfEqualItemsSplitsInTheMiddle) {
    std::vector<int> items(1000, 3);
    OpenSorter sorter;
    sorter.m_pData = items.data();
    EXPECT_EQ(sorter.Partition(0, 999), 499);
    // Each of the 500 exchanges stops both scans once, and so does the last look.
    EXPECT_EQ(sorter.m_greater, 501);
    EXPECT_EQ(sorter.m_less, 501);
}

// The scan from the right goes first: with all items but the pivot below it, it stops at the last item.
TEST(Sorter, PartitionTakesTheMiddleItem) {
    std::vector<int> items = {10, 11, 5, 12, 13};
    OpenSorter sorter;
    sorter.m_pData = items.data();
    // Right scan stops at 5 (place 2), left scan at 10 (place 0); exchanged; right stops at 0, left at 1.
    EXPECT_EQ(sorter.Partition(0, 4), 0);
    EXPECT_EQ(items, (std::vector<int>{5, 11, 10, 12, 13}));
}

// (1 + 4) / 2 is 2: of an even number of items the lower middle one.
TEST(Sorter, PartitionTakesTheLowerMiddle) {
    std::vector<int> items = {-1, 7, 1, 9, 8};
    OpenSorter sorter;
    sorter.m_pData = items.data();
    EXPECT_EQ(sorter.Partition(1, 4), 1);
    EXPECT_EQ(items, (std::vector<int>{-1, 1, 7, 9, 8}));
}

TEST(Sorter, IndexPartitionLeavesTheKeys) {
    const std::vector<int> keys = {10, 11, 5, 12, 13};
    std::vector<int> indexes = identity(5);
    OpenSorter sorter;
    sorter.m_pKeys = keys.data();
    sorter.m_piIndices = indexes.data();
    EXPECT_EQ(sorter.Partition(0, 4), 0);
    EXPECT_EQ(indexes, (std::vector<int>{2, 1, 0, 3, 4}));
    EXPECT_EQ(keys, (std::vector<int>{10, 11, 5, 12, 13}));
}

// Below the threshold only CompGT is asked: 31 times for 32 sorted items. From 33 items on there is a partition.
TEST(Sorter, ThresholdIsASpanOfThirtyTwo) {
    for (int count : {32, 33}) {
        std::vector<int> items = identity(count);
        OpenSorter sorter;
        sorter.QSort(items.data(), count);
        if (count == 32) {
            EXPECT_EQ(sorter.m_less, 0);
            EXPECT_EQ(sorter.m_greater, 31);
        } else {
            EXPECT_GT(sorter.m_less, 0);
        }
    }
}

TEST(Sorter, InsertionSortIsStableAndKeepsToTheRange) {
    std::vector<int> items = {9, 5, 4, 6, 0};
    OpenSorter sorter;
    sorter.m_pData = items.data();
    sorter.InsertionSortSubArray(1, 3);
    EXPECT_EQ(items, (std::vector<int>{9, 4, 5, 6, 0}));

    const std::vector<int> keys = {2, 1, 2, 1};
    std::vector<int> indexes = identity(4);
    sorter.m_pKeys = keys.data();
    sorter.m_piIndices = indexes.data();
    sorter.InsertionSortIdxSubArray(0, 3);
    EXPECT_EQ(indexes, (std::vector<int>{1, 3, 0, 2}));
    sorter.InsertionSortIdxSubArray(3, 2);
    EXPECT_EQ(indexes, (std::vector<int>{1, 3, 0, 2}));
}

TEST(Sorter, BubbleSortStopsAfterAPassWithoutAnExchange) {
    std::vector<int> items = {2, 1, 3, 4};
    OpenSorter sorter;
    sorter.BubbleSort(items.data(), 4);
    EXPECT_EQ(items, (std::vector<int>{1, 2, 3, 4}));
    // Three comparisons in the first pass, and two in the second, which exchanges nothing.
    EXPECT_EQ(sorter.m_greater, 5);
}

TEST(Sorter, BubbleSortKnowsIndexes) {
    const std::vector<int> keys = {3, 1, 2};
    std::vector<int> indexes = identity(3);
    OpenSorter sorter;
    sorter.m_pKeys = keys.data();
    sorter.m_piIndices = indexes.data();
    sorter.BubbleSortSubArray(0, 2);
    EXPECT_EQ(indexes, (std::vector<int>{1, 2, 0}));
}

TEST(Sorter, ExchangesMoveItemsOrIndexes) {
    std::vector<int> items = {1, 2};
    std::vector<int> indexes = {5, 6};
    OpenSorter sorter;
    sorter.m_pData = items.data();
    sorter.m_piIndices = indexes.data();
    sorter.ExchangeVal(0, 1);
    EXPECT_EQ(items, (std::vector<int>{2, 1}));
    EXPECT_EQ(indexes, (std::vector<int>{5, 6}));
    sorter.ExchangeIdx(0, 1);
    EXPECT_EQ(items, (std::vector<int>{2, 1}));
    EXPECT_EQ(indexes, (std::vector<int>{6, 5}));
}

TEST(Sorter, SubclassSettlesTheOrder) {
    std::vector<int> items = identity(100);
    DescendingSorter sorter;
    sorter.QSort(items.data(), 100);
    EXPECT_TRUE(std::is_sorted(items.rbegin(), items.rend()));
    std::vector<int> indexes = identity(100);
    sorter.QSortIdx(items.data(), indexes.data(), 100);
    EXPECT_TRUE(std::is_sorted(indexes.begin(), indexes.end()));
}

TEST(Sorter, NoPointerOutlivesASort) {
    std::vector<int> items = {2, 1};
    std::vector<int> indexes = {0, 1};
    OpenSorter sorter;
    auto grounded = [&] { return !sorter.m_pData && !sorter.m_pKeys && !sorter.m_piIndices; };
    EXPECT_TRUE(grounded());
    sorter.QSort(items.data(), 2);
    EXPECT_TRUE(grounded());
    sorter.QSortIdx(items.data(), indexes.data(), 2);
    EXPECT_TRUE(grounded());
    // Grounded before the pointers are set, too: an index list left behind would turn this into an index sort.
    sorter.m_piIndices = indexes.data();
    items = {2, 1};
    sorter.InsertionSort(items.data(), 2);
    EXPECT_EQ(items, (std::vector<int>{1, 2}));
    EXPECT_TRUE(grounded());
    sorter.m_piIndices = indexes.data();
    items = {2, 1};
    sorter.BubbleSort(items.data(), 2);
    EXPECT_EQ(items, (std::vector<int>{1, 2}));
    EXPECT_TRUE(grounded());
    sorter.m_piIndices = indexes.data();
    items = {2, 1};
    sorter.QSort(items.data(), 2);
    EXPECT_EQ(items, (std::vector<int>{1, 2}));
}

TEST(Sorter, AssertsItsBuffersAndCount) {
    AssertRecorder recorder;
    VTSorterTemplate<int> sorter;
    sorter.QSort(nullptr, 0);
    EXPECT_EQ(recorder.take(), failedIn(source, {"pData", "iNumItems > 0"}));
    sorter.QSortIdx(nullptr, nullptr, 0);
    EXPECT_EQ(recorder.take(), failedIn(source, {"pKeys", "piIndices", "iNumItems > 0"}));
    // These two stages look at the buffer before they look at the range.
    sorter.InsertionSort(nullptr, 0);
    EXPECT_EQ(recorder.take(), failedIn(source, {"pData", "iNumItems > 0", "m_pData"}));
    sorter.BubbleSort(nullptr, -3);
    EXPECT_EQ(recorder.take(), failedIn(source, {"pData", "iNumItems > 0", "m_pData"}));
}

TEST(Sorter, StagesAssertTheirPointers) {
    AssertRecorder recorder;
    OpenSorter sorter;
    sorter.InsertionSortIdxSubArray(0, 0);
    EXPECT_EQ(recorder.take(), failedIn(source, {"m_pKeys", "m_piIndices"}));
    int index = 0;
    sorter.m_piIndices = &index;
    sorter.BubbleSortSubArray(0, 0);
    EXPECT_EQ(recorder.take(), failedIn(source, {"m_pKeys"}));
}

TEST(Sorter, ComparesByThePlainOperators) {
    VTSorterTemplate<double> doubles;
    EXPECT_TRUE(doubles.CompGT(2.0, 1.0));
    EXPECT_FALSE(doubles.CompGT(1.0, 1.0));
    EXPECT_TRUE(doubles.CompLT(1.0, 2.0));
    EXPECT_TRUE(doubles.CompEQ(1.0, 1.0));
    EXPECT_FALSE(doubles.CompEQ(1.0, std::nextafter(1.0, 2.0)));
    EXPECT_FALSE(doubles.CompGT(std::nan(""), 1.0));
    EXPECT_FALSE(doubles.CompLT(std::nan(""), 1.0));
    EXPECT_FALSE(doubles.CompEQ(std::nan(""), std::nan("")));
    VTSorterTemplate<float> floats;
    EXPECT_FALSE(floats.CompGT(1.0f, std::nanf("")));
    EXPECT_FALSE(floats.CompLT(1.0f, std::nanf("")));
    VTSorterTemplate<long long> longs;
    EXPECT_TRUE(longs.CompGT(1LL << 40, (1LL << 40) - 1));
    VTSorterTemplate<VTString> strings;
    EXPECT_TRUE(strings.CompLT(VTString(), VTString(L"a")));
    EXPECT_FALSE(strings.CompGT(VTString(L""), VTString()));
    EXPECT_FALSE(strings.CompEQ(VTString(L""), VTString()));
}

TEST(Sorter, VectorsCompareByTheirSortOrder) {
    VTSorterTemplate<VTVector> sorter;
    const VTVector a(1, 2, 3);
    const VTVector b(1, 3, 2);
    EXPECT_TRUE(sorter.CompLT(a, b)) << "x, y, z until an order is set";
    sorter.SetSortOrder(0, 2, 1);
    EXPECT_TRUE(sorter.CompGT(a, b));
    EXPECT_FALSE(sorter.CompLT(a, b));
    sorter.SetSortOrder(0, 0, 0);
    EXPECT_FALSE(sorter.CompGT(a, b));
    EXPECT_FALSE(sorter.CompLT(a, b));
    sorter.SetSortOrder(0, 0, 1);
    EXPECT_TRUE(sorter.CompLT(a, b));
    // Exact: one unit in the last place counts.
    EXPECT_TRUE(sorter.CompLT(a, VTVector(std::nextafter(1.0, 2.0), 0, 0)));
}

// Only the first number of the order counts, and of it only whether it is 0.
TEST(Sorter, CoordinatesCompareByTheFirstOfTheirOrder) {
    struct Row {
        VTIntCoord2D a;
        VTIntCoord2D b;
        bool xFirst;
        bool yFirst;
    };
    // Whether a is less than b.
    const Row rows[] = {{{1, 9}, {2, 3}, true, false},
                        {{1, 3}, {2, 9}, true, true},
                        {{2, 3}, {2, 9}, true, true},
                        {{1, 3}, {2, 3}, true, true},
                        {{2, 3}, {2, 3}, false, false}};
    VTSorterTemplate<VTIntCoord2D> sorter;
    for (const Row& row : rows) {
        sorter.SetSortOrder(0, 5, 5);
        EXPECT_EQ(sorter.CompLT(row.a, row.b), row.xFirst);
        EXPECT_EQ(sorter.CompGT(row.b, row.a), row.xFirst);
        for (int first : {1, 2, -1}) {
            sorter.SetSortOrder(first, 0, 0);
            EXPECT_EQ(sorter.CompLT(row.a, row.b), row.yFirst);
            EXPECT_EQ(sorter.CompGT(row.b, row.a), row.yFirst);
        }
    }
}

TEST(Sorter, BinarySearchIsExactAndKnowsAMissingList) {
    VTSorterTemplate<double> sorter;
    const double data[] = {1.0, 2.0, 4.0};
    int insertion = -7;
    EXPECT_EQ(sorter.BinarySearch(data, 2.0, 0, 2, &insertion), 1);
    EXPECT_EQ(insertion, 1);
    EXPECT_EQ(sorter.BinarySearch(data, 3.0, 0, 2, &insertion), -1);
    EXPECT_EQ(insertion, 2);
    EXPECT_EQ(sorter.BinarySearch(nullptr, 3.0, 5, 9, &insertion), -1);
    EXPECT_EQ(insertion, 0);
    EXPECT_EQ(sorter.BinarySearch(data, 4.0, 0, 2, nullptr), 2);
}

TEST(Sorter, BinarySearchOfASubclassUsesItsOrder) {
    class Descending : public VTSorterTemplate<float> {
        bool CompLT(const float& a, const float& b) const override {
            return a > b;
        }
    } sorter;
    const float data[] = {4.0f, 2.0f, 1.0f};
    int insertion = -7;
    EXPECT_EQ(sorter.BinarySearch(data, 3.0f, 0, 2, &insertion), -1);
    EXPECT_EQ(insertion, 1);
}

TEST(Sorter, IdentityFillAssertsItsArguments) {
    const std::string functions = "LibUnstructGrid/VTOSortFunctions";
    AssertRecorder recorder;
    vt::internal::VTInitIndexArray(nullptr, 0);
    EXPECT_EQ(recorder.take(), failedIn(functions, {"piArray", "iNumElmts > 0"}));
}

// 10, 0 and 20 stand first, in the middle and last. Their median, 10, is where the partition is made: the scan from
// the right stops at 9, that from the left at 10.
TEST(Sorter, IntPartitionTakesTheMedianOfThree) {
    std::vector<int> items = {10, 15, 0, 9, 20};
    EXPECT_EQ(vt::internal::partitionInts(items.data(), 0, 4), 1);
    EXPECT_EQ(items, (std::vector<int>{9, 0, 15, 10, 20}));
    // Around the middle item, 0, it would have been {0, 15, 10, 9, 20} with a split at 0.
    std::vector<int> same = {10, 15, 0, 9, 20};
    OpenSorter sorter;
    sorter.m_pData = same.data();
    EXPECT_EQ(sorter.Partition(0, 4), 0);
    EXPECT_EQ(same, (std::vector<int>{0, 15, 10, 9, 20}));
}

// Each order of 1, 2 and 3 in the three places: the pivot is 2 in all, so the 1 ends in the left part and the 3 not.
TEST(Sorter, IntPartitionFindsTheMedianInAnyOrder) {
    int three[] = {1, 2, 3};
    do {
        std::vector<int> items = {three[0], three[1], three[2]};
        const int split = vt::internal::partitionInts(items.data(), 0, 2);
        EXPECT_LE(*std::max_element(items.begin(), items.begin() + split + 1), 2);
        EXPECT_GE(*std::min_element(items.begin() + split + 1, items.end()), 2);
    } while (std::next_permutation(three, three + 3));
}

} // namespace
