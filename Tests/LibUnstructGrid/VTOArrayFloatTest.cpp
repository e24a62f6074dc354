// The arrays of floats and of doubles work alike. What they do is tested here over both; VTOArrayRealTest.cpp has what
// the array of doubles has for itself.

#include "LibUnstructGrid/VTOArrayFloat.h"

#include "LibUnstructGrid/VTOMathConstants.h"
#include "Tests/LibUnstructGrid/PortableRandom.h"
#include "Tests/LibUnstructGrid/VTOArrayTestSupport.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <malloc.h>
#include <memory>

namespace {

using namespace vtarraytest;
using orvtest::AssertRecorder;
using orvtest::assertsUntil;
using orvtest::FailedAssert;
using orvtest::failedIn;
using orvtest::PortableRandom;
using Numbers = std::vector<int>;

template <typename Array>
struct Facts;

template <>
struct Facts<VTFloatArray> {
    using Value = float;
    static constexpr float undefined = VT_UNDEFINED_FLOAT;
    static constexpr float limit = VT_UNDEFINED_FLOAT_LIMIT;
    static constexpr float tolerance = VT_FLOAT_TOLERANCE;
    static constexpr float seed = 1e30f;
};

template <>
struct Facts<VTRealArray> {
    using Value = double;
    static constexpr double undefined = VT_UNDEFINED_DOUBLE;
    static constexpr double limit = VT_UNDEFINED_DOUBLE_LIMIT;
    static constexpr double tolerance = VT_DOUBLE_TOLERANCE;
    static constexpr double seed = 1.0000000150474662e30; // The float 1e30, widened.
};

template <typename Array>
class VTFloatingArray : public testing::Test {
protected:
    using Number = typename Facts<Array>::Value;
    using Numbers_t = std::vector<Number>;
    static constexpr Number none = Facts<Array>::undefined;
    static constexpr Number limit = Facts<Array>::limit;
    static constexpr Number seed = Facts<Array>::seed;
    static constexpr Number tolerance = Facts<Array>::tolerance;
    static constexpr Number NaN = std::numeric_limits<Number>::quiet_NaN();

    static Array make(const Numbers_t& list) {
        Array array;
        if (!list.empty()) {
            array.CopyData(list.data(), static_cast<int>(list.size()), 0);
        }
        return array;
    }
    static Numbers_t list(const Array& array) {
        return Numbers_t(array.GetDataPtr(), array.GetDataPtr() + array.GetNumItems());
    }
    static Number above(Number value) {
        return std::nextafter(value, std::numeric_limits<Number>::max());
    }
    static Number below(Number value) {
        return std::nextafter(value, std::numeric_limits<Number>::lowest());
    }
    static std::vector<FailedAssert> failed(std::vector<std::string> expressions) {
        return failedIn(Traits<Array>::unit, std::move(expressions));
    }
};

using FloatingArrays = testing::Types<VTFloatArray, VTRealArray>;
TYPED_TEST_SUITE(VTFloatingArray, FloatingArrays);

TYPED_TEST(VTFloatingArray, ComparesWithTheToleranceOfItsType) {
    const auto near = 5 * (1 + this->tolerance / 4);
    const auto far = 5 * (1 + this->tolerance * 4);
    EXPECT_TRUE(this->make({3, 5}) == this->make({3, near}));
    EXPECT_FALSE(this->make({3, 5}) == this->make({3, far}));
    EXPECT_TRUE(this->make({this->NaN}) == this->make({7})); // A NaN equals anything.
}

TYPED_TEST(VTFloatingArray, FindsWithTheToleranceOfItsType) {
    const auto array = this->make({3, 5, 5});
    EXPECT_EQ(array.Find(5), 1);
    EXPECT_EQ(array.Find(5 * (1 + this->tolerance / 4)), 1);
    EXPECT_EQ(array.Find(5 * (1 + this->tolerance * 4)), -1);
    EXPECT_EQ(array.Find(4), -1);
    EXPECT_EQ(TypeParam().Find(0), -1);
}

TYPED_TEST(VTFloatingArray, SetAllItemsAsksForABuffer) {
    AssertRecorder recorder;
    TypeParam().SetAllItems(1);
    EXPECT_EQ(recorder.take(), this->failed({"m_pfData"}));
    TypeParam().SetAllItemsZero();
    EXPECT_TRUE(recorder.take().empty());
}

TYPED_TEST(VTFloatingArray, Sorts) {
    PortableRandom random(1);
    for (int iCount : {1, 2, 33, 500}) {
        typename TestFixture::Numbers_t expected;
        for (int i = 0; i < iCount; ++i) {
            expected.push_back(static_cast<typename TestFixture::Number>(random.real(-1000, 1000)));
        }
        auto array = this->make(expected);
        array.Sort(true);
        std::sort(expected.begin(), expected.end());
        EXPECT_EQ(this->list(array), expected);
        array.Sort(false);
        EXPECT_EQ(this->list(array), expected);
    }
    AssertRecorder recorder;
    TypeParam().Sort(false);
    EXPECT_TRUE(recorder.take().empty());
}

TYPED_TEST(VTFloatingArray, EqualNeighboursAreSorted) {
    EXPECT_TRUE(this->make({1, 1, 2}).IsSorted());
    EXPECT_FALSE(this->make({1, 2, 1}).IsSorted());
    EXPECT_TRUE(TypeParam().IsSorted());
    EXPECT_TRUE(this->make({1, this->NaN, 0}).IsSorted()); // No NaN is greater than anything.
}

TYPED_TEST(VTFloatingArray, GetSortedIndexOrdersByValue) {
    const auto array = this->make({30, 10, 20});
    const std::unique_ptr<int[]> piIndices(array.GetSortedIndex(false));
    EXPECT_EQ(Numbers(piIndices.get(), piIndices.get() + 3), (Numbers{1, 2, 0}));
    const std::unique_ptr<int[]> piLooked(array.GetSortedIndex(true));
    EXPECT_EQ(Numbers(piLooked.get(), piLooked.get() + 3), (Numbers{1, 2, 0}));
}

// 36 equal keys end up in reverse when they are sorted; with the check they are left alone.
TYPED_TEST(VTFloatingArray, GetSortedIndexOfASortedArrayIsTheIdentityWhenItLooks) {
    const auto array = this->make(typename TestFixture::Numbers_t(36, 5));
    Numbers identity;
    for (int i = 0; i < 36; ++i) {
        identity.push_back(i);
    }
    const Numbers reversed(identity.rbegin(), identity.rend());
    VTIntArray aiIndices;
    for (bool bLooks : {true, false}) {
        const std::unique_ptr<int[]> piIndices(array.GetSortedIndex(bLooks));
        EXPECT_EQ(Numbers(piIndices.get(), piIndices.get() + 36), bLooks ? identity : reversed);
        array.GetSortedIndex(&aiIndices, bLooks);
        EXPECT_EQ(numbers(aiIndices), bLooks ? identity : reversed);
    }
}

TYPED_TEST(VTFloatingArray, GetSortedIndexHasAPlaceForEachSlot) {
    AssertRecorder recorder;
    Roomy<TypeParam> array({3, 1}, 10000);
    const std::unique_ptr<int[]> piIndices(array.GetSortedIndex(false));
    EXPECT_GE(malloc_usable_size(piIndices.get()), 10000 * sizeof(int));
    array.SetNumItems(0);
    const std::unique_ptr<int[]> piOfNone(array.GetSortedIndex(true));
    EXPECT_NE(piOfNone, nullptr);
    EXPECT_TRUE(recorder.take().empty());
    EXPECT_EQ(TypeParam().GetSortedIndex(true), nullptr);
    EXPECT_EQ(recorder.take(), this->failed({"m_pfData"}));
}

TYPED_TEST(VTFloatingArray, GetSortedIndexIntoAnArrayFits) {
    const auto array = this->make({30, 10, 20});
    VTIntArray aiIndices;
    array.GetSortedIndex(&aiIndices, false);
    EXPECT_EQ(numbers(aiIndices), (Numbers{1, 2, 0}));
    EXPECT_EQ(aiIndices.GetNumAllocated(), 3);
    Full<VTIntArray> larger({9, 9, 9, 9, 9});
    array.GetSortedIndex(&larger, true);
    EXPECT_EQ(numbers<VTIntArray>(larger), (Numbers{1, 2, 0}));
    EXPECT_EQ(larger.GetNumAllocated(), 5);
    const Roomy<TypeParam> noItems({}, 3);
    noItems.GetSortedIndex(&larger, true);
    EXPECT_EQ(larger.GetNumAllocated(), 0);
    EXPECT_EQ(assertsUntil(2, [&] { TypeParam().GetSortedIndex(nullptr, true); }),
              this->failed({"m_pfData", "paiSortedIndices"}));
}

TYPED_TEST(VTFloatingArray, BinSearchFindsOrTellsThePlace) {
    const auto array = this->make({10, 20, 30, 40});
    const struct {
        typename TestFixture::Number value;
        int iFound;
        int iInsertion;
    } rows[] = {{10, 0, 0}, {40, 3, 3}, {20, 1, 1}, {5, -1, 0}, {25, -1, 2}, {45, -1, 4}};
    for (const auto& row : rows) {
        for (bool bExact : {true, false}) {
            int iInsertion = -7;
            EXPECT_EQ(array.BinSearch(row.value, bExact, 0, -1, &iInsertion), row.iFound) << row.value;
            EXPECT_EQ(iInsertion, row.iInsertion) << row.value;
            EXPECT_EQ(array.BinSearch(row.value, bExact, 0, -1, nullptr), row.iFound) << row.value;
        }
    }
    EXPECT_EQ(array.BinSearch(10, true, 1, 3, nullptr), -1);
    EXPECT_EQ(array.BinSearch(40, true, 0, 2, nullptr), -1);
}

// A value just below 20 belongs at 1, one just above at 2; the rescue finds the 20 at 1 for both, and tells 1.
TYPED_TEST(VTFloatingArray, BinSearchRescuesWhatIsNearlyThere) {
    const auto array = this->make({10, 20, 30});
    const auto less = this->below(20);
    const auto more = this->above(20);
    int iInsertion = -7;
    EXPECT_EQ(array.BinSearch(less, true, 0, -1, &iInsertion), -1);
    EXPECT_EQ(iInsertion, 1);
    EXPECT_EQ(array.BinSearch(more, true, 0, -1, &iInsertion), -1);
    EXPECT_EQ(iInsertion, 2);
    for (auto value : {less, more}) {
        iInsertion = -7;
        EXPECT_EQ(array.BinSearch(value, false, 0, -1, &iInsertion), 1);
        EXPECT_EQ(iInsertion, 1);
    }
    EXPECT_EQ(array.BinSearch(this->below(10), false, 0, -1, &iInsertion), 0);
    EXPECT_EQ(iInsertion, 0);
    EXPECT_EQ(array.BinSearch(this->above(30), false, 0, -1, &iInsertion), 2);
    EXPECT_EQ(iInsertion, 2);
    EXPECT_EQ(array.BinSearch(20 * (1 + this->tolerance * 4), false, 0, -1, &iInsertion), -1);
    EXPECT_EQ(iInsertion, 2);
}

// The rescue looks from one before to one behind the insertion index, and takes the first: of items that all count as
// equal that is not the nearest. It also looks outside the range that was searched.
TYPED_TEST(VTFloatingArray, BinSearchTakesTheFirstOfSeveralThatWillDo) {
    const auto a = typename TestFixture::Number(20);
    const auto b = this->above(a);
    const auto c = this->above(b);
    const auto d = this->above(c);
    int iInsertion = -7;
    EXPECT_EQ(this->make({1, a, b, d}).BinSearch(c, false, 0, -1, &iInsertion),
              2); // It belongs at 3: looks at 2 and 3.
    EXPECT_EQ(iInsertion, 2);
    EXPECT_EQ(this->make({a, b, 90, 95}).BinSearch(c, false, 2, 3, &iInsertion), 1);
    EXPECT_EQ(this->make({1, 2, 3, c, d}).BinSearch(b, false, 0, 1, &iInsertion),
              3); // It belongs at 2: looks at 1 to 3.
}

TYPED_TEST(VTFloatingArray, BinSearchOfAnEmptyArrayLooksAtNoOtherArgument) {
    AssertRecorder recorder;
    int iInsertion = -7;
    EXPECT_EQ(TypeParam().BinSearch(5, false, 17, -9, &iInsertion), -1);
    EXPECT_EQ(iInsertion, 0);
    EXPECT_EQ(TypeParam().BinSearch(5, false, 17, -9, nullptr), -1);
    EXPECT_TRUE(recorder.take().empty());
}

TYPED_TEST(VTFloatingArray, BinSearchChecksTheRange) {
    const auto array = this->make({10, 20, 30});
    const std::string start = "iStartIndex >= 0 && iStartIndex < m_iNumItems";
    const std::string stop = "iStopIndex >= 0 && iStopIndex < m_iNumItems";
    const std::string order = "iStopIndex >= iStartIndex";
    EXPECT_EQ(assertsUntil(3, [&] { array.BinSearch(10, true, 3, -2, nullptr); }), this->failed({start, stop, order}));
    EXPECT_EQ(assertsUntil(1, [&] { array.BinSearch(10, true, -1, 1, nullptr); }), this->failed({start}));
    EXPECT_EQ(assertsUntil(1, [&] { array.BinSearch(10, true, 0, 3, nullptr); }), this->failed({stop}));
    EXPECT_EQ(assertsUntil(1, [&] { array.BinSearch(10, true, 2, 1, nullptr); }), this->failed({order}));
    TypeParam noBuffer;
    AssertRecorder recorder;
    noBuffer.SetNumItems(1);
    recorder.take();
    EXPECT_EQ(assertsUntil(1, [&] { noBuffer.BinSearch(10, true, 0, -1, nullptr); }), this->failed({"m_pfData"}));
}

// A range that begins behind its end puts the insertion index at its begin.
TYPED_TEST(VTFloatingArray, BinSearchChecksTheInsertionIndex) {
    AssertRecorder recorder;
    EXPECT_EQ(this->make({10, 20, 30}).BinSearch(10, true, 7, 1, nullptr), -1);
    const auto all = recorder.take();
    ASSERT_FALSE(all.empty());
    EXPECT_EQ(all.back(), this->failed({"iInsertionIdx >= 0 && iInsertionIdx <= m_iNumItems"}).front());
}

TYPED_TEST(VTFloatingArray, LocateValueBrackets) {
    const auto array = this->make({10, 20, 20, 40});
    const struct {
        typename TestFixture::Number value;
        bool bFound;
        int iBefore;
        int iAfter;
        typename TestFixture::Number t;
    } rows[] = {
        {10, true, 0, 0, 0},     {15, true, 0, 1, 0.5},    {40, true, 3, 3, 0},
        {25, true, 2, 3, 0.25},  {12.5, true, 0, 1, 0.25}, {20, true, 1, 1, 0}, // The middle of 0 to 3.
        {9.5, false, -1, -1, 0}, {40.5, false, -1, -1, 0},
    };
    for (const auto& row : rows) {
        int iBefore = -7;
        int iAfter = -7;
        typename TestFixture::Number t = -7;
        EXPECT_EQ(array.LocateValueInSortedArray(row.value, &iBefore, &iAfter, &t), row.bFound) << row.value;
        EXPECT_EQ(iBefore, row.iBefore) << row.value;
        EXPECT_EQ(iAfter, row.iAfter) << row.value;
        EXPECT_EQ(t, row.t) << row.value;
        EXPECT_EQ(array.LocateValueInSortedArray(row.value, nullptr, nullptr, nullptr), row.bFound) << row.value;
    }
    int iBefore = -7;
    EXPECT_FALSE(TypeParam().LocateValueInSortedArray(1, &iBefore, nullptr, nullptr));
    EXPECT_EQ(iBefore, -1);
    EXPECT_TRUE(this->make({5}).LocateValueInSortedArray(5, &iBefore, nullptr, nullptr));
    EXPECT_EQ(iBefore, 0);
}

// A NaN is neither below nor above anything, and the search leads it to the end.
TYPED_TEST(VTFloatingArray, LocateValueOfANaNFailsItsChecks) {
    AssertRecorder recorder;
    int iBefore = -7;
    int iAfter = -7;
    typename TestFixture::Number t = -7;
    EXPECT_TRUE(this->make({10, 20}).LocateValueInSortedArray(this->NaN, &iBefore, &iAfter, &t));
    EXPECT_EQ(recorder.take(), this->failed({"fValue > m_pfData[0]", "fValue < m_pfData[m_iNumItems - 1]",
                                             "iFoundIdx == m_iNumItems - 1", "fValue == m_pfData[m_iNumItems - 1]",
                                             "fValue >= fValueBefore", "fValue <= fValueAfter"}));
    EXPECT_EQ(iBefore, 1);
    EXPECT_EQ(iAfter, 1);
    EXPECT_EQ(t, 0);
    this->make({10}).LocateValueInSortedArray(this->NaN, nullptr, nullptr, nullptr);
    EXPECT_EQ(recorder.take().at(2).expression, "m_iNumItems >= 2");
}

// 20 is not less than a NaN either, and so goes behind it.
TYPED_TEST(VTFloatingArray, LocateValueChecksThePairItFinds) {
    AssertRecorder recorder;
    int iBefore = -7;
    int iAfter = -7;
    typename TestFixture::Number t = -7;
    EXPECT_TRUE(this->make({10, this->NaN, 40, 50}).LocateValueInSortedArray(20, &iBefore, &iAfter, &t));
    EXPECT_EQ(recorder.take(), this->failed({"fValueAfter >= fValueBefore", "fValue >= fValueBefore"}));
    EXPECT_EQ(iBefore, 1);
    EXPECT_EQ(iAfter, 2);
    EXPECT_EQ(t, 0);
}

// Without items there is nothing to search, and the place is 0. Only a negative count gets that far: of -1 the last
// item seems to stand two places in front of the first.
TYPED_TEST(VTFloatingArray, LocateValueChecksThePlaceItFinds) {
    AssertRecorder recorder;
    typename TestFixture::Number values[] = {5, 0, 1};
    TypeParam array;
    array.SetSharedDataPtr(values + 2, 1);
    array.SetNumItems(-1);
    recorder.take();
    int iBefore = -7;
    int iAfter = -7;
    typename TestFixture::Number t = -7;
    EXPECT_TRUE(array.LocateValueInSortedArray(3, &iBefore, &iAfter, &t));
    EXPECT_EQ(recorder.take(), this->failed({"m_iNumItems >= 2", "iFoundIdx == 0", "fValue == m_pfData[0]",
                                             "iIdxBefore >= 0 && iIdxBefore < m_iNumItems",
                                             "iIdxAfter >= 0 && iIdxAfter < m_iNumItems", "fValue <= fValueAfter"}));
    EXPECT_EQ(iBefore, 0);
    EXPECT_EQ(iAfter, 0);
    EXPECT_EQ(t, 0);
}

// Between the infinities there is no fraction of the way.
TYPED_TEST(VTFloatingArray, LocateValueChecksTheFraction) {
    AssertRecorder recorder;
    const auto infinity = std::numeric_limits<typename TestFixture::Number>::infinity();
    typename TestFixture::Number t = -7;
    EXPECT_TRUE(this->make({-infinity, infinity}).LocateValueInSortedArray(3, nullptr, nullptr, &t));
    EXPECT_EQ(recorder.take(), this->failed({"fT >= 0 && fT <= 1"}));
    EXPECT_TRUE(std::isnan(t));
}

TYPED_TEST(VTFloatingArray, LocateValueMatchesInterpolation) {
    PortableRandom random(2);
    TypeParam array;
    for (int i = 0; i < 50; ++i) {
        array.AddGrow(static_cast<typename TestFixture::Number>(random.real(0, 100)));
    }
    array.Sort(false);
    for (int i = 0; i < 200; ++i) {
        const auto value = static_cast<typename TestFixture::Number>(random.real(0, 100));
        int iBefore = -7;
        int iAfter = -7;
        typename TestFixture::Number t = -7;
        if (!array.LocateValueInSortedArray(value, &iBefore, &iAfter, &t)) {
            EXPECT_TRUE(value < array.Get(0) || value > array.Get(49));
            continue;
        }
        EXPECT_LE(array.Get(iBefore), value);
        EXPECT_GE(array.Get(iAfter), value);
        EXPECT_NEAR(array.Get(iBefore) + (array.Get(iAfter) - array.Get(iBefore)) * t, value, 1e-4);
    }
}

TYPED_TEST(VTFloatingArray, FindMinMaxOfARange) {
    const auto array = this->make({5, 9, 1, 7});
    const struct {
        int iStart;
        int iCount;
        bool bFound;
        typename TestFixture::Number min;
        typename TestFixture::Number max;
    } rows[] = {{0, -1, true, 1, 9}, {0, 2, true, 5, 9},  {1, 1, true, 9, 9},   {2, 2, true, 1, 7},
                {3, 5, true, 7, 7},  {2, -9, true, 1, 7}, {0, 0, false, -7, -7}};
    for (const auto& row : rows) {
        for (bool bIgnoreUndefined : {false, true}) {
            typename TestFixture::Number min = -7;
            typename TestFixture::Number max = -7;
            EXPECT_EQ(array.FindMinMax(&min, &max, row.iStart, row.iCount, bIgnoreUndefined), row.bFound);
            EXPECT_EQ(min, row.min) << row.iStart << " " << row.iCount;
            EXPECT_EQ(max, row.max) << row.iStart << " " << row.iCount;
        }
    }
    EXPECT_TRUE(array.FindMinMax(nullptr, nullptr, 0, -1, false));
    EXPECT_FALSE(TypeParam().FindMinMax(nullptr, nullptr, 9, -1, false));
    const auto start = this->failed({"iStartIndex >= 0 && iStartIndex < m_iNumItems"});
    EXPECT_EQ(assertsUntil(1, [&] { array.FindMinMax(nullptr, nullptr, 4, -1, false); }), start);
    EXPECT_EQ(assertsUntil(1, [&] { array.FindMinMax(nullptr, nullptr, -1, -1, false); }), start);
}

TYPED_TEST(VTFloatingArray, FindMinMaxSkipsItemsAboveTheLimitWhenAsked) {
    typename TestFixture::Number min = -7;
    typename TestFixture::Number max = -7;
    EXPECT_FALSE(this->make({this->none, this->above(this->limit)}).FindMinMax(&min, &max, 0, -1, true));
    EXPECT_EQ(min, -7);
    EXPECT_EQ(max, -7);
    EXPECT_TRUE(this->make({this->none, 3, 5}).FindMinMax(&min, &max, 0, -1, true));
    EXPECT_EQ(min, 3);
    EXPECT_EQ(max, 5);
    EXPECT_TRUE(this->make({this->none, 3, 5}).FindMinMax(&min, &max, 0, -1, false));
    EXPECT_EQ(max, this->none);
    EXPECT_TRUE(this->make({3, this->limit}).FindMinMax(&min, &max, 0, -1, true)); // The limit itself is defined.
    EXPECT_EQ(max, this->limit);
}

TYPED_TEST(VTFloatingArray, FindMinMaxWithTheFlagNeverReportsAMinimumAboveItsSeed) {
    const auto huge = this->seed * 4;
    typename TestFixture::Number min = -7;
    typename TestFixture::Number max = -7;
    EXPECT_TRUE(this->make({huge, 2 * huge}).FindMinMax(&min, &max, 0, -1, true));
    EXPECT_EQ(min, this->seed);
    EXPECT_EQ(max, 2 * huge);
    EXPECT_TRUE(this->make({-huge, -2 * huge}).FindMinMax(&min, &max, 0, -1, true));
    EXPECT_EQ(min, -2 * huge);
    EXPECT_EQ(max, -this->seed);
    EXPECT_TRUE(this->make({huge, 2 * huge}).FindMinMax(&min, &max, 0, -1, false));
    EXPECT_EQ(min, huge);
}

// A NaN is not above the limit, but no comparison takes it over either.
TYPED_TEST(VTFloatingArray, FindMinMaxPassesNaNBy) {
    typename TestFixture::Number min = -7;
    typename TestFixture::Number max = -7;
    EXPECT_TRUE(this->make({this->NaN, 3, 5}).FindMinMax(&min, &max, 0, -1, true));
    EXPECT_EQ(min, 3);
    EXPECT_EQ(max, 5);
    EXPECT_FALSE(this->make({this->NaN}).FindMinMax(&min, &max, 0, -1, true));
    EXPECT_TRUE(this->make({3, this->NaN, 5}).FindMinMax(&min, &max, 0, -1, false));
    EXPECT_EQ(min, 3);
    EXPECT_EQ(max, 5);
    EXPECT_TRUE(this->make({this->NaN, 5}).FindMinMax(&min, &max, 0, -1, false));
    EXPECT_TRUE(std::isnan(min)); // As a seed it stays.
}

TYPED_TEST(VTFloatingArray, GetMinMaxTellsWhereTheFirstExtremesStand) {
    const auto minMax = this->make({5, 1, 9, 1, 9}).GetMinMax();
    EXPECT_EQ(minMax.range.min, 1);
    EXPECT_EQ(minMax.range.max, 9);
    EXPECT_EQ(minMax.iMinIndex, 1);
    EXPECT_EQ(minMax.iMaxIndex, 2);
    EXPECT_EQ(TypeParam().GetMinMax(), decltype(minMax)());
}

TYPED_TEST(VTFloatingArray, GetMinMaxDoesNotSkipUndefinedItems) {
    const auto minMax = this->make({5, this->none}).GetMinMax();
    EXPECT_EQ(minMax.range.max, this->none);
    EXPECT_EQ(minMax.iMaxIndex, 1);
    const auto huge = this->make({this->none}).GetMinMax();
    EXPECT_EQ(huge.range.min, this->seed);
    EXPECT_EQ(huge.iMinIndex, -1);
    EXPECT_EQ(huge.iMaxIndex, 0);
}

TYPED_TEST(VTFloatingArray, SumOfARange) {
    const auto array = this->make({1, 2, 4, this->none, 8});
    EXPECT_EQ(array.Sum(0, 3, true), 7);
    EXPECT_EQ(array.Sum(1, 2, false), 6);
    EXPECT_EQ(array.Sum(4, -1, true), 8);
    EXPECT_EQ(array.Sum(0, 0, true), 0);
    EXPECT_EQ(array.Sum(0, -1, true), this->none);
    EXPECT_EQ(array.Sum(3, 1, false), this->none); // As an ordinary number.
    EXPECT_EQ(TypeParam().Sum(3, 5, true), 0);
    const auto start = this->failed({"iStartIndex >= 0 && iStartIndex < m_iNumItems"});
    EXPECT_EQ(assertsUntil(1, [&] { array.Sum(5, -1, false); }), start);
    EXPECT_EQ(assertsUntil(1, [&] { array.Sum(-1, -1, false); }), start);
}

TYPED_TEST(VTFloatingArray, SumTakesWhatIsNotBelowTheLimitForUndefined) {
    EXPECT_EQ(this->make({1, this->limit}).Sum(0, -1, true), this->none);
    EXPECT_EQ(this->make({this->below(this->limit)}).Sum(0, -1, true), this->below(this->limit));
    EXPECT_EQ(this->make({this->NaN, 1}).Sum(0, -1, true), this->none);
    EXPECT_TRUE(std::isnan(this->make({this->NaN, 1}).Sum(0, -1, false)));
}

// One after the other in the type of the items: at 2^24 (2^53) a float (double) cannot take 1 any more.
TYPED_TEST(VTFloatingArray, SumsInTheTypeOfTheItems) {
    const auto big =
        std::ldexp(typename TestFixture::Number(1), std::numeric_limits<typename TestFixture::Number>::digits);
    EXPECT_EQ(this->make({big, 1, 1}).Sum(0, -1, false), big);
    EXPECT_EQ(this->make({1, 1, big}).Sum(0, -1, false), big + 2);
}

TYPED_TEST(VTFloatingArray, ComputeAverage) {
    const auto array = this->make({1, 2, 6});
    EXPECT_EQ(array.ComputeAverage(0, 2), 1.5);
    EXPECT_EQ(array.ComputeAverage(0, -1), 3);
    EXPECT_EQ(array.ComputeAverage(1, -1), 4);
    EXPECT_EQ(array.ComputeAverage(0, 0), 0);
    EXPECT_EQ(TypeParam().ComputeAverage(0, -1), 0);
    EXPECT_EQ(this->make({this->none}).ComputeAverage(0, 1), this->none);
    const auto start = this->failed({"iStartIndex >= 0 && iStartIndex < m_iNumItems"});
    EXPECT_EQ(assertsUntil(1, [&] { array.ComputeAverage(3, 1); }), start);
    EXPECT_EQ(assertsUntil(1, [&] { array.ComputeAverage(-1, 1); }), start);
}

// Each change, over all items and over those below the limit. The limit itself is not below, and so stays.
TYPED_TEST(VTFloatingArray, OffsetAndScaleLeaveUndefinedItemsWhenAsked) {
    using Value = typename TestFixture::Number;
    using Change = void (*)(TypeParam&, bool);
    const struct {
        const char* name;
        Change change;
        Value of2;
        Value ofMinus8;
        Value ofLimit;
    } rows[] = {
        {"Offset", [](TypeParam& a, bool b) { a.Offset(3, b); }, 5, -5, this->limit + 3},
        {"Scale", [](TypeParam& a, bool b) { a.Scale(Value(0.5), b); }, 1, -4, this->limit / 2},
        {"ScaleAndOffset", [](TypeParam& a, bool b) { a.ScaleAndOffset(Value(0.5), 3, b); }, 4, -1,
         this->limit / 2 + 3},
        {"Offset by 0", [](TypeParam& a, bool b) { a.Offset(0, b); }, 2, -8, this->limit},
        {"Scale by 1", [](TypeParam& a, bool b) { a.Scale(1, b); }, 2, -8, this->limit},
        {"ScaleAndOffset by 1 and 0", [](TypeParam& a, bool b) { a.ScaleAndOffset(1, 0, b); }, 2, -8, this->limit},
        {"ScaleAndOffset by 1", [](TypeParam& a, bool b) { a.ScaleAndOffset(1, 3, b); }, 5, -5, this->limit + 3},
        {"ScaleAndOffset by 0", [](TypeParam& a, bool b) { a.ScaleAndOffset(Value(0.5), 0, b); }, 1, -4,
         this->limit / 2},
    };
    for (const auto& row : rows) {
        auto all = this->make({2, this->limit, -8});
        row.change(all, false);
        EXPECT_EQ(this->list(all), (std::vector<Value>{row.of2, row.ofLimit, row.ofMinus8})) << row.name;
        auto defined = this->make({2, this->limit, this->none, -8});
        row.change(defined, true);
        EXPECT_EQ(this->list(defined), (std::vector<Value>{row.of2, this->limit, this->none, row.ofMinus8}))
            << row.name;
    }
}

TYPED_TEST(VTFloatingArray, InterpolatesItemByItem) {
    auto array = this->make({9, 9});
    array.Interpolate(this->make({2, 10}), this->make({4, 6}), typename TestFixture::Number(0.25), false, false);
    EXPECT_EQ(this->list(array), (typename TestFixture::Numbers_t{2.5, 9}));
}

TYPED_TEST(VTFloatingArray, InterpolateCanResize) {
    using List = typename TestFixture::Numbers_t;
    TypeParam array;
    array.Interpolate(this->make({2, 10}), this->make({4, 6}), 1, false, true);
    EXPECT_EQ(this->list(array), (List{4, 6}));
    EXPECT_EQ(array.GetNumAllocated(), 2);
    array.Alloc(10, 7, true);
    array.Interpolate(this->make({2, 10, 1}), this->make({4, 6, 1}), 0, false, true);
    EXPECT_EQ(this->list(array), (List{2, 10, 1}));
    EXPECT_EQ(array.GetGrowBy(), 4);
    array.Interpolate(TypeParam(), TypeParam(), 0, false, true);
    EXPECT_EQ(array.GetDataPtr(), nullptr);
}

// The limit is not above itself; a NaN is not either.
TYPED_TEST(VTFloatingArray, InterpolateMapsUndefinedItemsWhenAsked) {
    TypeParam array;
    const auto a = this->make({this->none, 1, this->limit});
    const auto b = this->make({1, this->above(this->limit), this->limit});
    array.Interpolate(a, b, typename TestFixture::Number(0.5), true, true);
    EXPECT_EQ(this->list(array), (typename TestFixture::Numbers_t{this->none, this->none, this->limit}));
    array.Interpolate(a, b, 1, false, false);
    EXPECT_EQ(array.Get(1), this->above(this->limit));
    array.Interpolate(this->make({this->NaN}), this->make({1}), 1, true, true);
    EXPECT_TRUE(std::isnan(array.Get(0)));
}

TYPED_TEST(VTFloatingArray, InterpolateChecksTheCounts) {
    auto array = this->make({1, 2, 3});
    AssertRecorder recorder;
    array.Interpolate(this->make({1, 2}), this->make({1, 2}), 0, false, false);
    EXPECT_EQ(recorder.take(), this->failed({"iNumItems == GetNumItems()"}));
    array.Interpolate(this->make({1, 2}), this->make({1, 2, 3}), 0, false, true);
    EXPECT_EQ(recorder.take(), this->failed({"afValues0.GetNumItems() == afValues1.GetNumItems()"}));
    TypeParam negative;
    negative.SetNumItems(-1);
    recorder.take();
    EXPECT_EQ(assertsUntil(1, [&] { array.Interpolate(negative, negative, 0, false, false); }),
              this->failed({"iNumItems >= 0"}));
}

TYPED_TEST(VTFloatingArray, ReverseChecksForABufferFirst) {
    AssertRecorder recorder;
    TypeParam().Reverse();
    EXPECT_EQ(recorder.take(), this->failed({"m_pfData"}));
}

TYPED_TEST(VTFloatingArray, AssignmentChecksOwnershipAndSelf) {
    Full<TypeParam> owner({1, 2});
    Shared<TypeParam> shared(&owner);
    const TypeParam& same = shared;
    EXPECT_EQ(assertsUntil(2, [&] { static_cast<TypeParam&>(shared) = same; }),
              this->failed({"!m_bSharedData", "this != &other"}));
}

} // namespace
