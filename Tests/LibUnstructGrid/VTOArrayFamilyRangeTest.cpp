// What several arrays of the family share: ranges of items, and their order.

#include "Tests/LibUnstructGrid/VTOArrayTestSupport.h"

#include <gtest/gtest.h>

namespace {

using namespace vtarraytest;
using orvtest::AssertRecorder;
using orvtest::assertsUntil;
using orvtest::FailedAssert;
using orvtest::failedIn;
using Numbers = std::vector<int>;

template <typename Array>
class VTArrayFamilyRange : public testing::Test {
protected:
    static std::vector<FailedAssert> failed(std::vector<std::string> expressions) {
        return failedIn(Traits<Array>::unit, std::move(expressions));
    }
};

using RangeArrays =
    testing::Types<VTIntArray, VTIntIndexArray, VTUbyteArray, VTVectorArray, VTVectorFloatArray, VTMatrix4Array>;
TYPED_TEST_SUITE(VTArrayFamilyRange, RangeArrays);

TYPED_TEST(VTArrayFamilyRange, SetRangeWritesARange) {
    Full<TypeParam> array({1, 2, 3, 4, 5});
    array.SetRange(1, 2, item<TypeParam>(7));
    EXPECT_EQ(numbers<TypeParam>(array), (Numbers{1, 7, 7, 4, 5}));
    array.SetRange(3, -1, item<TypeParam>(8));
    EXPECT_EQ(numbers<TypeParam>(array), (Numbers{1, 7, 7, 8, 8}));
    array.SetRange(0, 0, item<TypeParam>(9));
    array.SetRange(1, -1, array.Get(4)); // An item of the same array.
    EXPECT_EQ(numbers<TypeParam>(array), (Numbers{1, 8, 8, 8, 8}));
    const auto start = this->failed({"iStartIndex >= 0 && iStartIndex < m_iNumItems"});
    EXPECT_EQ(assertsUntil(1, [&] { array.SetRange(-1, 1, item<TypeParam>(7)); }), start);
    EXPECT_EQ(assertsUntil(1, [&] { array.SetRange(5, 1, item<TypeParam>(7)); }), start);
}

TYPED_TEST(VTArrayFamilyRange, GetRangeCopiesIntoAFittingArray) {
    const Full<TypeParam> array({1, 2, 3, 4});
    Full<TypeParam> range({9, 9, 9, 9, 9, 9});
    array.GetRange(&range, 1, 2);
    EXPECT_EQ(numbers<TypeParam>(range), (Numbers{2, 3}));
    EXPECT_EQ(range.GetNumAllocated(), 2);
    array.GetRange(&range, 2, -1);
    EXPECT_EQ(numbers<TypeParam>(range), (Numbers{3, 4}));
    EXPECT_EQ(assertsUntil(1, [&] { array.GetRange(nullptr, 0, 1); }),
              this->failed({"pa" + std::string(Traits<TypeParam>::values).substr(1)}));
}

// Every start is at or above 0 or below the count: 4 is the one, -1 the other.
TYPED_TEST(VTArrayFamilyRange, GetRangeNoticesABadStartOnlyAtTheItems) {
    const Full<TypeParam> array({1, 2, 3, 4});
    TypeParam range;
    EXPECT_EQ(assertsUntil(1, [&] { array.GetRange(&range, 4, 1); }), this->failed({"iIndex < m_iNumItems"}));
    EXPECT_EQ(assertsUntil(1, [&] { array.GetRange(&range, -1, 1); }), this->failed({"iIndex >= 0"}));
}

TYPED_TEST(VTArrayFamilyRange, GetRangeOfNothingEmptiesTheTargetAndFails) {
    AssertRecorder recorder;
    const Full<TypeParam> array({1, 2, 3, 4});
    Full<TypeParam> range({9, 9});
    array.GetRange(&range, 1, 0);
    EXPECT_EQ(recorder.take(), this->failed({"iNumItems > 0"}));
    EXPECT_EQ(range.GetDataPtr(), nullptr);
    EXPECT_EQ(range.GetNumItems(), 0);
}

// Only a negative count has starts that are neither.
TYPED_TEST(VTArrayFamilyRange, GetRangeChecksAStartThatNoArrayHas) {
    TypeParam array;
    TypeParam range;
    assertsUntil(0, [&] { array.SetNumItems(-5); });
    EXPECT_EQ(assertsUntil(1, [&] { array.GetRange(&range, -1, 1); }),
              this->failed({"(iStartIndex >= 0) || (iStartIndex < m_iNumItems)"}));
}

TYPED_TEST(VTArrayFamilyRange, SwapExchangesTwoItems) {
    AssertRecorder recorder;
    Full<TypeParam> array({1, 2, 3});
    array.Swap(0, 2);
    EXPECT_EQ(numbers<TypeParam>(array), (Numbers{3, 2, 1}));
    array.Swap(1, 1);
    EXPECT_EQ(numbers<TypeParam>(array), (Numbers{3, 2, 1}));
    EXPECT_TRUE(recorder.take().empty());
    const auto both =
        this->failed({"(iIndexA >= 0) && (iIndexA < m_iNumItems)", "(iIndexB >= 0) && (iIndexB < m_iNumItems)"});
    EXPECT_EQ(assertsUntil(2, [&] { array.Swap(-1, 3); }), both);
    EXPECT_EQ(assertsUntil(2, [&] { array.Swap(3, -1); }), both);
}

TYPED_TEST(VTArrayFamilyRange, SwapArrayRangeReversesARange) {
    Full<TypeParam> array({1, 2, 3, 4, 5});
    array.SwapArrayRange(1, 3);
    EXPECT_EQ(numbers<TypeParam>(array), (Numbers{1, 4, 3, 2, 5}));
    array.SwapArrayRange(3, -1);
    EXPECT_EQ(numbers<TypeParam>(array), (Numbers{1, 4, 3, 5, 2}));
    const std::string start = "(iStartIndex >= 0) && (iStartIndex < m_iNumItems)";
    const std::string stop = "(iStopIndex > iStartIndex) && (iStopIndex < m_iNumItems)";
    EXPECT_EQ(assertsUntil(1, [&] { array.SwapArrayRange(-1, 2); }), this->failed({start}));
    EXPECT_EQ(assertsUntil(2, [&] { array.SwapArrayRange(5, 5); }), this->failed({start, stop}));
    EXPECT_EQ(assertsUntil(1, [&] { array.SwapArrayRange(2, 2); }), this->failed({stop}));
    EXPECT_EQ(assertsUntil(1, [&] { array.SwapArrayRange(2, 5); }), this->failed({stop}));
    EXPECT_EQ(assertsUntil(1, [&] { array.SwapArrayRange(4, -1); }), this->failed({stop}));
}

template <typename Array>
class VTArrayFamilyOrder : public testing::Test {};

using OrderArrays = testing::Types<VTIntArray, VTIntIndexArray, VTFloatArray, VTRealArray, VTUbyteArray, VTVectorArray,
                                   VTVectorFloatArray, VTMatrix4Array>;
TYPED_TEST_SUITE(VTArrayFamilyOrder, OrderArrays);

TYPED_TEST(VTArrayFamilyOrder, ReversesItems) {
    Roomy<TypeParam> array({1, 2, 3}, 5);
    array.Reverse();
    EXPECT_EQ(numbers<TypeParam>(array), (Numbers{3, 2, 1}));
    Full<TypeParam> even({1, 2, 3, 4});
    even.Reverse();
    EXPECT_EQ(numbers<TypeParam>(even), (Numbers{4, 3, 2, 1}));
    Full<TypeParam> single({1});
    single.Reverse();
    EXPECT_EQ(numbers<TypeParam>(single), (Numbers{1}));
}

TYPED_TEST(VTArrayFamilyOrder, SetAllItemsZeroWritesUnusedSlotsToo) {
    Full<TypeParam> array({1, 2, 3});
    array.SetNumItems(1);
    array.SetAllItemsZero();
    EXPECT_EQ(array.GetNumItems(), 1);
    array.SetNumItems(3);
    const auto* pBytes = reinterpret_cast<const unsigned char*>(array.GetDataPtr());
    for (std::size_t i = 0; i < 3 * sizeof(*array.GetDataPtr()); ++i) {
        ASSERT_EQ(pBytes[i], 0) << i;
    }
    TypeParam().SetAllItemsZero();
}

} // namespace
