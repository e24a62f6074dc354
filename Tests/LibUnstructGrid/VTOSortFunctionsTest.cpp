#include "LibUnstructGrid/VTOSortFunctions.h"

#include "LibUnstructGrid/VTOBaseTypes2D.h"
#include "LibUnstructGrid/VTOLinAlgebraVector.h"
#include "LibUnstructGrid/VTOString.h"
#include "Tests/LibUnstructGrid/PortableRandom.h"
#include "Tests/Support/AssertStopper.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>
#include <vector>

using orvtest::AssertRecorder;
using orvtest::assertsUntil;
using orvtest::FailedAssert;
using orvtest::failedIn;
using orvtest::PortableRandom;

namespace {

const std::string source = "LibUnstructGrid/VTOSortFunctions";

/// The patterns that make quick sorts slow, and some that do not.
std::vector<std::vector<int>> patterns(int count) {
    PortableRandom random(4711);
    std::vector<std::vector<int>> lists(6, std::vector<int>(count));
    for (int i = 0; i < count; ++i) {
        lists[0][i] = random.integer(-2147483647 - 1, 2147483647);
        lists[1][i] = i;
        lists[2][i] = count - i;
        lists[3][i] = random.integer(0, 3);
        lists[4][i] = 42;
        lists[5][i] = std::min(i, count - i);
    }
    return lists;
}

template <typename T>
void expectSorts(void (*sort)(T*, int)) {
    for (int count : {1, 2, 3, 31, 32, 33, 34, 100, 1000}) {
        for (const std::vector<int>& list : patterns(count)) {
            std::vector<T> items(list.begin(), list.end());
            std::vector<T> expected = items;
            std::sort(expected.begin(), expected.end());
            // One more item, beyond the count.
            items.push_back(-5);
            sort(items.data(), count);
            EXPECT_EQ(items.back(), T(-5));
            items.pop_back();
            EXPECT_EQ(items, expected) << count << " items";
        }
    }
}

template <typename T>
void expectIndexSorts(void (*sort)(const T*, int*, int)) {
    for (int count : {1, 2, 3, 31, 32, 33, 34, 100, 1000}) {
        for (const std::vector<int>& list : patterns(count)) {
            const std::vector<T> keys(list.begin(), list.end());
            std::vector<int> indexes(count + 1, -5);
            sort(keys.data(), indexes.data(), count);
            EXPECT_EQ(indexes.back(), -5);
            indexes.pop_back();
            EXPECT_TRUE(
                std::is_sorted(indexes.begin(), indexes.end(), [&](int a, int b) { return keys[a] < keys[b]; }));
            std::sort(indexes.begin(), indexes.end());
            std::vector<int> identity(count);
            std::iota(identity.begin(), identity.end(), 0);
            EXPECT_EQ(indexes, identity);
        }
    }
}

TEST(SortFunctions, EverySortSorts) {
    expectSorts<int>(VTIntBubbleSort);
    expectSorts<int>(VTIntInsertionSort);
    expectSorts<float>(VTFloatBubbleSort);
    expectSorts<float>(VTFloatInsertionSort);
    expectSorts<int>(VTIntQSort);
    expectSorts<long long>(VTInt64QSort);
    expectSorts<float>(VTQSort);
    expectSorts<double>(VTQSort);
}

TEST(SortFunctions, EveryIndexSortSorts) {
    expectIndexSorts<int>(VTIntIndexQSort);
    expectIndexSorts<float>(VTIndexQSort);
    expectIndexSorts<double>(VTIndexQSort);
}

// 33 equal keys: the one partition exchanges every pair from the ends inwards, so the list comes out reversed. The int
// keys go through the template as well: median of three is for the value sort alone.
TEST(SortFunctions, EqualKeysOfAnIndexSortComeOutReversed) {
    std::vector<int> reversed(33);
    std::iota(reversed.rbegin(), reversed.rend(), 0);
    std::vector<int> indexes(33);

    VTIntIndexQSort(std::vector<int>(33, 1).data(), indexes.data(), 33);
    EXPECT_EQ(indexes, reversed);
    std::fill(indexes.begin(), indexes.end(), 0);
    VTIndexQSort(std::vector<float>(33, 1.0f).data(), indexes.data(), 33);
    EXPECT_EQ(indexes, reversed);
    std::fill(indexes.begin(), indexes.end(), 0);
    VTIndexQSort(std::vector<double>(33, 1.0).data(), indexes.data(), 33);
    EXPECT_EQ(indexes, reversed);
    std::fill(indexes.begin(), indexes.end(), 0);
    VTStringIndexQSort(std::vector<VTString>(33, VTString(L"same")).data(), indexes.data(), 33);
    EXPECT_EQ(indexes, reversed);
    std::fill(indexes.begin(), indexes.end(), 0);
    const int order[] = {0, 1, 2};
    VTVectorIndexQSort(std::vector<VTVector>(33, VTVector(1, 2, 3)).data(), indexes.data(), 33, order);
    EXPECT_EQ(indexes, reversed);
}

// Middle item, not median of three, as the pivot of an int index sort. 33 keys: 10 at place 0, 0 at 16, 20 at 32, 15
// elsewhere. Around the 0: exchange of places 0 and 16, split at 0; then places 1..32 (a span of 31) are stably
// sorted, where index 0 (key 10) stands at 16 and goes to the front. Around 10 nothing would put 1 before 2
// differently, but the 15s would be exchanged among themselves.
TEST(SortFunctions, IntIndexSortTakesTheMiddleItemAsPivot) {
    std::vector<int> keys(33, 15);
    keys[0] = 10;
    keys[1] = 20;
    keys[16] = 0;
    keys[32] = 20;
    std::vector<int> indexes(33);
    VTIntIndexQSort(keys.data(), indexes.data(), 33);
    std::vector<int> expected = {16, 0};
    for (int i = 2; i < 32; ++i) {
        if (i != 16) {
            expected.push_back(i);
        }
    }
    expected.push_back(1);
    expected.push_back(32);
    EXPECT_EQ(indexes, expected);
}

TEST(SortFunctions, StringsSortByCharacterCode) {
    std::vector<VTString> items = {L"b", L"a", L"", L"B", L"ab"};
    VTStringQSort(items.data(), 5);
    EXPECT_EQ(items, (std::vector<VTString>{L"", L"B", L"a", L"ab", L"b"}));

    const std::vector<VTString> keys = {L"b", L"a", L"", L"B", L"ab"};
    std::vector<int> indexes(5);
    VTStringIndexQSort(keys.data(), indexes.data(), 5);
    EXPECT_EQ(indexes, (std::vector<int>{2, 3, 1, 4, 0}));
}

TEST(SortFunctions, ManyStringsSort) {
    std::vector<VTString> items;
    for (int i = 0; i < 100; ++i) {
        items.push_back(VTString(1000 + (i * 37) % 100));
    }
    VTStringQSort(items.data(), 100);
    for (int i = 0; i < 100; ++i) {
        EXPECT_EQ(items[i], VTString(1000 + i));
    }
}

TEST(SortFunctions, VectorsSortByTheOrderGiven) {
    const VTVector keys[] = {{1, 2, 0}, {0, 2, 1}, {1, 1, 2}};
    int indexes[3];
    const int xyz[] = {0, 1, 2};
    VTVectorIndexQSort(keys, indexes, 3, xyz);
    EXPECT_THAT(indexes, testing::ElementsAre(1, 2, 0));
    const int yxz[] = {1, 0, 2};
    VTVectorIndexQSort(keys, indexes, 3, yxz);
    EXPECT_THAT(indexes, testing::ElementsAre(2, 1, 0));
    const int zxy[] = {2, 0, 1};
    VTVectorIndexQSort(keys, indexes, 3, zxy);
    EXPECT_THAT(indexes, testing::ElementsAre(0, 1, 2));
}

TEST(SortFunctions, CoordinatesSortByXOrByY) {
    const VTIntCoord2D keys[] = {{2, 1}, {1, 3}, {2, 0}, {1, 2}};
    int indexes[4];
    VTIntCoord2DIndexQSort(keys, indexes, 4, true);
    EXPECT_THAT(indexes, testing::ElementsAre(3, 1, 2, 0));
    VTIntCoord2DIndexQSort(keys, indexes, 4, false);
    EXPECT_THAT(indexes, testing::ElementsAre(2, 0, 3, 1));
}

// With fewer than 33 items the insertion sort of a range is bounded by the start of the buffer, so what precedes the
// range and is larger gets passed.
TEST(SortFunctions, IntQuickSortOfARangeMayReachBelowIt) {
    std::vector<int> items = {1, 9, 8, 3, 2, 0};
    VTIntQuickSortRecursive(items.data(), 3, 4);
    // 3 stays, since its walk begins at the item after it; 2 passes 3, 8 and 9.
    EXPECT_EQ(items, (std::vector<int>{1, 2, 9, 8, 3, 0}));
}

// 100 stands before a descending range. 32 items go through the insertion sort: each but the first of the range passes
// the 100. 33 items are partitioned, which turns them into their order, so nothing passes the 100 any more.
TEST(SortFunctions, IntQuickSortPartitionsFromThirtyThreeItems) {
    for (int count : {32, 33}) {
        std::vector<int> items(count + 1);
        std::iota(items.rbegin(), items.rend() - 1, 1);
        items[0] = 100;
        VTIntQuickSortRecursive(items.data(), 1, count);
        std::vector<int> expected(count + 1);
        if (count == 32) {
            std::iota(expected.begin(), expected.end() - 2, 1);
            expected[31] = 100;
            expected[32] = 32;
        } else {
            std::iota(expected.begin() + 1, expected.end(), 1);
            expected[0] = 100;
        }
        EXPECT_EQ(items, expected);
    }
}

TEST(SortFunctions, IntQuickSortOfARangeLeavesTheRest) {
    std::vector<int> items = {-9, 5, 4, 3, -7};
    VTIntQuickSortRecursive(items.data(), 1, 3);
    EXPECT_EQ(items, (std::vector<int>{-9, 3, 4, 5, -7}));
    VTIntQuickSortRecursive(items.data(), 4, 3);
    EXPECT_EQ(items, (std::vector<int>{-9, 3, 4, 5, -7}));
}

TEST(SortFunctions, CountBelowOneDoesNothing) {
    AssertRecorder recorder;
    for (int count : {0, -1}) {
        int ints[] = {2, 1};
        int indexes[] = {7, 7};
        float floats[] = {2, 1};
        double doubles[] = {2, 1};
        long long longs[] = {2, 1};
        VTString strings[] = {L"b", L"a"};
        const VTVector vectors[] = {{2, 0, 0}, {1, 0, 0}};
        const int order[] = {0, 1, 2};
        VTIntBubbleSort(ints, count);
        VTIntInsertionSort(ints, count);
        VTIntQSort(ints, count);
        VTFloatBubbleSort(floats, count);
        VTFloatInsertionSort(floats, count);
        VTQSort(floats, count);
        VTQSort(doubles, count);
        VTInt64QSort(longs, count);
        VTStringQSort(strings, count);
        VTIntIndexQSort(ints, indexes, count);
        VTIndexQSort(floats, indexes, count);
        VTIndexQSort(doubles, indexes, count);
        VTStringIndexQSort(strings, indexes, count);
        VTVectorIndexQSort(vectors, indexes, count, order);
        const VTIntCoord2D coords[] = {{2, 0}, {1, 0}};
        VTIntCoord2DIndexQSort(coords, indexes, count, true);
        EXPECT_THAT(ints, testing::ElementsAre(2, 1));
        EXPECT_THAT(floats, testing::ElementsAre(2, 1));
        EXPECT_THAT(doubles, testing::ElementsAre(2, 1));
        EXPECT_THAT(longs, testing::ElementsAre(2, 1));
        EXPECT_EQ(strings[0], VTString(L"b"));
        EXPECT_THAT(indexes, testing::ElementsAre(7, 7));
    }
    EXPECT_TRUE(recorder.take().empty());
}

TEST(SortFunctions, NullPointersAreAssertedBeforeTheCountIsLookedAt) {
    struct Row {
        std::vector<FailedAssert> got;
        std::vector<FailedAssert> expected;
    };
    AssertRecorder recorder;
    auto failures = [&](auto call) {
        call();
        return recorder.take();
    };
    const std::string strings = "LibUnstructGrid/VTOSortString";
    const std::string vectors = "LibUnstructGrid/VTOSortVector";
    const float* noFloats = nullptr;
    const double* noDoubles = nullptr;
    const std::vector<Row> rows = {
        {failures([] { VTIntBubbleSort(nullptr, 0); }), failedIn(source, {"piArray"})},
        {failures([] { VTIntInsertionSort(nullptr, 0); }), failedIn(source, {"piArray"})},
        {failures([] { VTFloatBubbleSort(nullptr, 0); }), failedIn(source, {"pfArray"})},
        {failures([] { VTFloatInsertionSort(nullptr, 0); }), failedIn(source, {"pfArray"})},
        {failures([] { VTIntQSort(nullptr, 0); }), failedIn(source, {"piKeys"})},
        {failures([] { VTInt64QSort(nullptr, 0); }), failedIn(source, {"piKeys"})},
        {failures([] { VTQSort(static_cast<float*>(nullptr), 0); }), failedIn(source, {"pfKeys"})},
        {failures([] { VTQSort(static_cast<double*>(nullptr), 0); }), failedIn(source, {"pdKeys"})},
        {failures([] { VTStringQSort(nullptr, 0); }), failedIn(strings, {"psKeys"})},
        {failures([] { VTIntIndexQSort(nullptr, nullptr, 0); }), failedIn(source, {"piKeys", "piIndices"})},
        {failures([&] { VTIndexQSort(noFloats, nullptr, 0); }), failedIn(source, {"pfKeys", "piIndices"})},
        {failures([&] { VTIndexQSort(noDoubles, nullptr, 0); }), failedIn(source, {"pdKeys", "piIndices"})},
        {failures([] { VTStringIndexQSort(nullptr, nullptr, 0); }), failedIn(strings, {"psKeys", "piIndices"})},
        {failures([] { VTVectorIndexQSort(nullptr, nullptr, 0, nullptr); }),
         failedIn(vectors, {"pKeys", "piIndices", "piSortOrder"})},
        {failures([] { VTIntCoord2DIndexQSort(nullptr, nullptr, 0, true); }),
         failedIn("LibUnstructGrid/VTOSortCoord", {"pKeys", "piIndices"})},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(row.got, row.expected);
    }
}

// Behind its own checks an index sort goes on to the identity fill, which checks for itself.
TEST(SortFunctions, NullIndexListOfASortReachesTheIdentityFill) {
    const int keys[] = {1};
    EXPECT_EQ(assertsUntil(2, [&] { VTIntIndexQSort(keys, nullptr, 1); }), failedIn(source, {"piIndices", "piArray"}));
}

} // namespace
