#include "LibUnstructGrid/VTOBaseTypesRange.h"

#include "LibUnstructGrid/VTOMath.h"
#include "Tests/Support/AssertRecorder.h"
#include "Tests/Support/AssertStopper.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

using orvtest::AssertRecorder;
using orvtest::assertsUntil;
using orvtest::failedIn;

const std::string unit = "LibUnstructGrid/VTOBaseTypesRange";

template <typename Range>
struct Traits;

template <>
struct Traits<VTFloatRange> {
    using Value = float;
    using MinMax = VTFloatMinMax;
    static constexpr float undefined = VT_UNDEFINED_FLOAT;
    static constexpr float limit = VT_UNDEFINED_FLOAT_LIMIT;
    static constexpr float tolerance = VT_FLOAT_TOLERANCE;
    static constexpr float invalidBound = 1e30f;
    static constexpr float none = 5e-31f; // What VTFeqZero() takes for nothing.
};

template <>
struct Traits<VTRealRange> {
    using Value = double;
    using MinMax = VTRealMinMax;
    static constexpr double undefined = VT_UNDEFINED_DOUBLE;
    static constexpr double limit = VT_UNDEFINED_DOUBLE_LIMIT;
    static constexpr double tolerance = VT_DOUBLE_TOLERANCE;
    static constexpr double invalidBound = 1.0000000150474662e30; // The float, not the double 1e30.
    static constexpr double none = 5e-61;                         // What VTFeqZero() takes for nothing.
};

template <typename Range>
class FloatingRange : public testing::Test {
protected:
    using Number = typename Traits<Range>::Value;
    using Extremes = typename Traits<Range>::MinMax;
    using Facts = Traits<Range>;
    static constexpr Number NaN = std::numeric_limits<Number>::quiet_NaN();
    static Number above(Number value) {
        return std::nextafter(value, std::numeric_limits<Number>::max());
    }
    static Number below(Number value) {
        return std::nextafter(value, std::numeric_limits<Number>::lowest());
    }
};

using FloatingRanges = testing::Types<VTFloatRange, VTRealRange>;
TYPED_TEST_SUITE(FloatingRange, FloatingRanges);

TYPED_TEST(FloatingRange, IsInvalidAtFirst) {
    const TypeParam range;
    EXPECT_EQ(range.min, TestFixture::Facts::invalidBound);
    EXPECT_EQ(range.max, -TestFixture::Facts::invalidBound);
    EXPECT_FALSE(range.IsValid(false));
    EXPECT_TRUE(range.IsInvalid(false));
    EXPECT_TRUE(range.IsUndefined());
}

TYPED_TEST(FloatingRange, SetsAndGets) {
    TypeParam range;
    range.Set(2, 5);
    EXPECT_EQ(range, TypeParam(2, 5));
    EXPECT_NE(range, TypeParam(2, this->above(5)));
    EXPECT_NE(range, TypeParam(this->above(2), 5));
    typename TestFixture::Number min = 0;
    typename TestFixture::Number max = 0;
    range.Get(&min, &max);
    EXPECT_EQ(min, 2);
    EXPECT_EQ(max, 5);
    range.Get(nullptr, nullptr);
    EXPECT_EQ(range.GetRange(), 3);
    range.SetZero();
    EXPECT_EQ(range, TypeParam(0, 0));
    range.SetInvalid();
    EXPECT_EQ(range, TypeParam());
}

TYPED_TEST(FloatingRange, IsValidWhenOrderedAndWithTheFlagDefined) {
    using T = typename TestFixture::Facts;
    const struct {
        TypeParam range;
        bool bOrdered;
        bool bDefined;
    } rows[] = {
        {{2, 5}, true, true},
        {{5, 5}, true, true},
        {{5, 2}, false, false},
        {{2, this->below(T::limit)}, true, true},
        {{2, T::limit}, true, false},
        {{T::limit, T::undefined}, true, false},
        {{T::undefined, 2}, false, false},
        {{TestFixture::NaN, 2}, false, false},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(row.range.IsValid(false), row.bOrdered) << row.range.min << " " << row.range.max;
        EXPECT_EQ(row.range.IsValid(true), row.bDefined) << row.range.min << " " << row.range.max;
        EXPECT_EQ(row.range.IsInvalid(false), !row.bOrdered);
        EXPECT_EQ(row.range.IsInvalid(true), !row.bDefined);
    }
}

TYPED_TEST(FloatingRange, IsUndefinedByABoundOrAsTheInvalidPair) {
    using T = typename TestFixture::Facts;
    EXPECT_FALSE(TypeParam(2, 5).IsUndefined());
    EXPECT_FALSE(TypeParam(5, 2).IsUndefined());
    EXPECT_FALSE(TypeParam(2, this->below(T::limit)).IsUndefined());
    EXPECT_TRUE(TypeParam(2, T::limit).IsUndefined());
    EXPECT_TRUE(TypeParam(T::limit, 2).IsUndefined());
    EXPECT_TRUE(TypeParam(TestFixture::NaN, 2).IsUndefined());
    EXPECT_TRUE(TypeParam(2, TestFixture::NaN).IsUndefined());
    EXPECT_FALSE(TypeParam(T::invalidBound, this->above(-T::invalidBound)).IsUndefined());
    EXPECT_FALSE(TypeParam(this->below(T::invalidBound), -T::invalidBound).IsUndefined());
}

TYPED_TEST(FloatingRange, ValueInRangeForgivesTheTolerance) {
    using Value = typename TestFixture::Number;
    const Value tolerance = TestFixture::Facts::tolerance;
    const TypeParam range(2, 5);
    EXPECT_TRUE(range.ValueInRange(2));
    EXPECT_TRUE(range.ValueInRange(3));
    EXPECT_TRUE(range.ValueInRange(5));
    EXPECT_TRUE(range.ValueInRange(5 * (1 + tolerance / 4)));
    EXPECT_FALSE(range.ValueInRange(5 * (1 + tolerance * 4)));
    EXPECT_TRUE(range.ValueInRange(2 * (1 - tolerance / 4)));
    EXPECT_FALSE(range.ValueInRange(2 * (1 - tolerance * 4)));
    EXPECT_FALSE(range.ValueInRange(-3));
}

TYPED_TEST(FloatingRange, ClampValueTellsWhetherItChangedTheValue) {
    const TypeParam range(2, 5);
    const struct {
        typename TestFixture::Number value;
        bool bChanged;
        typename TestFixture::Number clamped;
    } rows[] = {{1, true, 2}, {2, false, 2}, {3, false, 3}, {5, false, 5}, {6, true, 5}};
    for (const auto& row : rows) {
        auto value = row.value;
        EXPECT_EQ(range.ClampValue(&value), row.bChanged) << row.value;
        EXPECT_EQ(value, row.clamped) << row.value;
    }
}

TYPED_TEST(FloatingRange, ClampValueChecksPointerAndOrder) {
    EXPECT_EQ(assertsUntil(2, [] { TypeParam(5, 2).ClampValue(nullptr); }), failedIn(unit, {"pfValue", "max >= min"}));
    AssertRecorder recorder;
    typename TestFixture::Number value = 3;
    EXPECT_TRUE(TypeParam(5, 2).ClampValue(&value)); // It goes on: 3 is below 5.
    EXPECT_EQ(value, 5);
    EXPECT_EQ(recorder.take(), failedIn(unit, {"max >= min"}));
}

TYPED_TEST(FloatingRange, GetRelativeValueOfAnEmptyRangeIsUndefined) {
    const TypeParam range(2, 6);
    EXPECT_EQ(range.GetRelativeValue(2), 0);
    EXPECT_EQ(range.GetRelativeValue(3), 0.25);
    EXPECT_EQ(range.GetRelativeValue(6), 1);
    EXPECT_EQ(range.GetRelativeValue(0), -0.5);
    EXPECT_EQ(TypeParam(2, 2).GetRelativeValue(2), TestFixture::Facts::undefined);
    EXPECT_EQ(TypeParam(0, TestFixture::Facts::none).GetRelativeValue(0), TestFixture::Facts::undefined);
    EXPECT_EQ(TypeParam(0, 4 * TestFixture::Facts::none).GetRelativeValue(0), 0);
}

TYPED_TEST(FloatingRange, UpdateExtends) {
    using T = typename TestFixture::Facts;
    TypeParam range;
    EXPECT_TRUE(range.Update(3, false));
    EXPECT_EQ(range, TypeParam(3, 3));
    EXPECT_FALSE(range.Update(3, false));
    EXPECT_TRUE(range.Update(1, false));
    EXPECT_TRUE(range.Update(7, false));
    EXPECT_FALSE(range.Update(4, false));
    EXPECT_EQ(range, TypeParam(1, 7));
    EXPECT_TRUE(range.Update(T::limit, true)); // Not above the limit.
    EXPECT_EQ(range, TypeParam(1, T::limit));
    EXPECT_FALSE(range.Update(this->above(T::limit), true));
    EXPECT_TRUE(range.Update(T::undefined, false));
    EXPECT_EQ(range, TypeParam(1, T::undefined));
}

TYPED_TEST(FloatingRange, UpdateTakesARange) {
    using T = typename TestFixture::Facts;
    TypeParam range(3, 5);
    EXPECT_FALSE(range.Update(TypeParam(), false));
    EXPECT_FALSE(range.Update(TypeParam(3, 4), false));
    EXPECT_TRUE(range.Update(TypeParam(2, 4), false));
    EXPECT_EQ(range, TypeParam(2, 5));
    EXPECT_TRUE(range.Update(TypeParam(1, 6), true));
    EXPECT_EQ(range, TypeParam(1, 6));
    EXPECT_FALSE(range.Update(TypeParam(0, T::undefined), true));
    EXPECT_FALSE(range.Update(TypeParam(T::undefined, 9), true));
    EXPECT_TRUE(range.Update(TypeParam(0, T::limit), true));
    EXPECT_EQ(range, TypeParam(0, T::limit));
}

TYPED_TEST(FloatingRange, MinMaxStartsInvalid) {
    const typename TestFixture::Extremes minMax;
    EXPECT_EQ(minMax.range, TypeParam());
    EXPECT_EQ(minMax.iMinIndex, -1);
    EXPECT_EQ(minMax.iMaxIndex, -1);
}

TYPED_TEST(FloatingRange, MinMaxSetsAndResets) {
    typename TestFixture::Extremes minMax;
    minMax.SetMin(2, 7);
    minMax.SetMax(5, 8);
    EXPECT_EQ(minMax.range, TypeParam(2, 5));
    EXPECT_EQ(minMax.iMinIndex, 7);
    EXPECT_EQ(minMax.iMaxIndex, 8);
    minMax.Reset();
    EXPECT_EQ(minMax, typename TestFixture::Extremes());
}

TYPED_TEST(FloatingRange, MinMaxTakesTheIndexOfWhatMovesABound) {
    typename TestFixture::Extremes minMax;
    EXPECT_TRUE(minMax.Update(3, 10, false));
    EXPECT_TRUE(minMax.Update(5, 11, false));
    EXPECT_FALSE(minMax.Update(5, 12, false)); // A tie keeps the earlier index.
    EXPECT_FALSE(minMax.Update(3, 13, false));
    EXPECT_TRUE(minMax.Update(1, 14, false));
    EXPECT_FALSE(minMax.Update(TestFixture::Facts::undefined, 15, true));
    EXPECT_EQ(minMax.range, TypeParam(1, 5));
    EXPECT_EQ(minMax.iMinIndex, 14);
    EXPECT_EQ(minMax.iMaxIndex, 11);
    EXPECT_TRUE(minMax.Update(TestFixture::Facts::undefined, 15, false));
    EXPECT_EQ(minMax.iMaxIndex, 15);
}

TYPED_TEST(FloatingRange, MinMaxTakesAnother) {
    using MinMax = typename TestFixture::Extremes;
    const auto made = [](int iMin, int iMinIndex, int iMax, int iMaxIndex) {
        MinMax minMax;
        minMax.SetMin(static_cast<typename TestFixture::Number>(iMin), iMinIndex);
        minMax.SetMax(static_cast<typename TestFixture::Number>(iMax), iMaxIndex);
        return minMax;
    };
    MinMax minMax = made(3, 10, 5, 11);
    EXPECT_FALSE(minMax.Update(MinMax(), false));
    EXPECT_FALSE(minMax.Update(made(3, 20, 5, 21), false));
    EXPECT_TRUE(minMax.Update(made(3, 20, 6, 21), false));
    EXPECT_EQ(minMax, made(3, 10, 6, 21));
    EXPECT_TRUE(minMax.Update(made(2, 30, 4, 31), false));
    EXPECT_EQ(minMax, made(2, 30, 6, 21));
    EXPECT_TRUE(minMax.Update(made(1, 35, 6, 36), false)); // At the maximum a tie.
    EXPECT_EQ(minMax, made(1, 35, 6, 21));
    MinMax undefined = made(0, 40, 0, 41);
    undefined.SetMax(TestFixture::Facts::undefined, 41);
    EXPECT_FALSE(minMax.Update(undefined, true));
    EXPECT_EQ(minMax, made(1, 35, 6, 21));
}

TEST(VTIntRange, IsInvalidAtFirst) {
    VTIntRange range;
    EXPECT_FALSE(range.IsValid(false));
    EXPECT_TRUE(range.IsInvalid(false));
    EXPECT_TRUE(range.IsUndefined());
    EXPECT_TRUE(range.Update(-5, false));
    EXPECT_EQ(range, VTIntRange(-5, -5));
}

TEST(VTIntRange, SetsAndGets) {
    VTIntRange range;
    range.Set(2, 5);
    int iMin = 0;
    int iMax = 0;
    range.Get(&iMin, &iMax);
    EXPECT_EQ(iMin, 2);
    EXPECT_EQ(iMax, 5);
    range.Get(nullptr, nullptr);
    EXPECT_EQ(range.GetRange(), 3);
    EXPECT_NE(range, VTIntRange(2, 6));
    EXPECT_NE(range, VTIntRange(1, 5));
    range.SetZero();
    EXPECT_EQ(range, VTIntRange(0, 0));
    range.SetInvalid();
    EXPECT_EQ(range, VTIntRange());
    // -(2^31 - 1) - (2^31 - 1) is 2 - 2^32, which is 2 in 32 bits.
    EXPECT_EQ(range.GetRange(), 2);
}

TEST(VTIntRange, ValidityIsExact) {
    const int iNone = VT_UNDEFINED_INT;
    const struct {
        VTIntRange range;
        bool bOrdered;
        bool bDefined;
        bool bUndefined;
    } rows[] = {{{2, 5}, true, true, false},     {{5, 5}, true, true, false},
                {{5, 2}, false, false, false},   {{2, iNone - 1}, true, true, false},
                {{2, iNone}, true, false, true}, {{iNone, iNone}, true, false, true},
                {{iNone, 2}, false, false, true}};
    for (const auto& row : rows) {
        EXPECT_EQ(row.range.IsValid(false), row.bOrdered) << row.range.min << " " << row.range.max;
        EXPECT_EQ(row.range.IsValid(true), row.bDefined) << row.range.min << " " << row.range.max;
        EXPECT_EQ(row.range.IsInvalid(true), !row.bDefined) << row.range.min << " " << row.range.max;
        EXPECT_EQ(row.range.IsUndefined(), row.bUndefined) << row.range.min << " " << row.range.max;
    }
}

TEST(VTIntRange, ValueInRangeAndClampValue) {
    const VTIntRange range(2, 5);
    const struct {
        int iValue;
        bool bInside;
        int iClamped;
    } rows[] = {{1, false, 2}, {2, true, 2}, {3, true, 3}, {5, true, 5}, {6, false, 5}};
    for (const auto& row : rows) {
        int iValue = row.iValue;
        EXPECT_EQ(range.ValueInRange(iValue), row.bInside) << row.iValue;
        EXPECT_EQ(range.ClampValue(&iValue), !row.bInside) << row.iValue;
        EXPECT_EQ(iValue, row.iClamped);
    }
    EXPECT_EQ(assertsUntil(2, [] { VTIntRange(5, 2).ClampValue(nullptr); }), failedIn(unit, {"piValue", "max >= min"}));
}

TEST(VTIntRange, UpdateExtends) {
    const int iNone = VT_UNDEFINED_INT;
    VTIntRange range(3, 5);
    EXPECT_FALSE(range.Update(4, false));
    EXPECT_TRUE(range.Update(2, false));
    EXPECT_TRUE(range.Update(6, true));
    EXPECT_FALSE(range.Update(iNone, true));
    EXPECT_EQ(range, VTIntRange(2, 6));
    EXPECT_FALSE(range.Update(VTIntRange(), false));
    EXPECT_FALSE(range.Update(VTIntRange(0, iNone), true));
    EXPECT_TRUE(range.Update(VTIntRange(1, 7), true));
    EXPECT_EQ(range, VTIntRange(1, 7));
    EXPECT_TRUE(range.Update(iNone, false));
    EXPECT_EQ(range, VTIntRange(1, iNone));
}

TEST(VTValueInRange, IncludesBothBounds) {
    EXPECT_TRUE(VTValueInRange(-2, -2, 5));
    EXPECT_TRUE(VTValueInRange(5, -2, 5));
    EXPECT_FALSE(VTValueInRange(-3, -2, 5));
    EXPECT_FALSE(VTValueInRange(6, -2, 5));
    EXPECT_TRUE(VTValueInRange(2u, 2u, 4000000000u));
    EXPECT_TRUE(VTValueInRange(4000000000u, 2u, 4000000000u));
    EXPECT_FALSE(VTValueInRange(1u, 2u, 4000000000u));
    EXPECT_FALSE(VTValueInRange(4000000001u, 2u, 4000000000u));
    EXPECT_TRUE(VTValueInRange(2.0f, 2.0f, 5.0f));
    EXPECT_TRUE(VTValueInRange(5.0f, 2.0f, 5.0f));
    EXPECT_FALSE(VTValueInRange(std::nextafter(2.0f, 0.0f), 2.0f, 5.0f)); // No tolerance here.
    EXPECT_FALSE(VTValueInRange(std::nextafter(5.0f, 9.0f), 2.0f, 5.0f));
}

template <typename Value>
void expectClamps(const std::string& check) {
    for (const auto& [iValue, bChanged, iClamped] :
         {std::tuple(1, true, 2), std::tuple(2, false, 2), std::tuple(5, false, 5), std::tuple(6, true, 5)}) {
        Value value = static_cast<Value>(iValue);
        EXPECT_EQ(VTClampValue(&value, Value(2), Value(5)), bChanged) << iValue;
        EXPECT_EQ(value, static_cast<Value>(iClamped)) << iValue;
    }
    AssertRecorder recorder;
    Value value = 3;
    EXPECT_TRUE(VTClampValue(&value, Value(5), Value(2)));
    EXPECT_EQ(value, Value(5));
    EXPECT_EQ(recorder.take(), failedIn(unit, {check}));
}

TEST(VTClampValue, ChecksTheOrderOfItsBounds) {
    expectClamps<int>("iMax >= iMin");
    expectClamps<unsigned int>("uiMax >= uiMin");
    expectClamps<float>("fMax >= fMin");
    expectClamps<double>("dMax >= dMin");
}

TEST(VTSwapValues, Exchanges) {
    int iA = 1;
    int iB = -2;
    VTSwapValues(&iA, &iB);
    EXPECT_EQ(iA, -2);
    EXPECT_EQ(iB, 1);
    unsigned int uiA = 1;
    unsigned int uiB = 4000000000u;
    VTSwapValues(&uiA, &uiB);
    EXPECT_EQ(uiA, 4000000000u);
    EXPECT_EQ(uiB, 1u);
    float fA = 1.5f;
    float fB = -2.5f;
    VTSwapValues(&fA, &fB);
    EXPECT_EQ(fA, -2.5f);
    EXPECT_EQ(fB, 1.5f);
    void* pA = &fA;
    void* pB = &fB;
    VTSwapPointers(&pA, &pB);
    EXPECT_EQ(pA, &fB);
    EXPECT_EQ(pB, &fA);
}

} // namespace
