// What the arrays that can grow share: adding, inserting and deleting items.

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
class VTArrayFamilyAdd : public testing::Test {
protected:
    static std::vector<FailedAssert> failed(std::vector<std::string> expressions) {
        return failedIn(Traits<Array>::unit, std::move(expressions));
    }
    static std::string text(const std::string& pattern) {
        return replaced(replaced(pattern, "piValues", Traits<Array>::pointer), "aiValues", Traits<Array>::values);
    }
};

using GrowingArrays =
    testing::Types<VTIntArray, VTIntIndexArray, VTFloatArray, VTRealArray, VTUbyteArray, VTStringArray, VTVectorArray>;
TYPED_TEST_SUITE(VTArrayFamilyAdd, GrowingArrays);

TYPED_TEST(VTArrayFamilyAdd, AddFillsTheRoomAndNeverGrows) {
    TypeParam array;
    array.Alloc(2, -1, false);
    array.Add(item<TypeParam>(1));
    array.Add(item<TypeParam>(2));
    EXPECT_EQ(numbers(array), (Numbers{1, 2}));
    EXPECT_EQ(array.GetNumAllocated(), 2);
    EXPECT_EQ(assertsUntil(1, [&] { array.Add(item<TypeParam>(3)); }), this->failed({"m_iNumItems < m_iNumAllocated"}));
}

TYPED_TEST(VTArrayFamilyAdd, AddTakesAnArray) {
    TypeParam array;
    array.Alloc(5, -1, false);
    array.Add(Full<TypeParam>({1, 2}));
    array.Add(TypeParam());
    array.Add(array);
    EXPECT_EQ(numbers(array), (Numbers{1, 2, 1, 2}));
    EXPECT_EQ(assertsUntil(1,
                           [&] {
                               array.Add(Full<TypeParam>({3, 4}));
                           }),
              this->failed({this->text("(m_iNumItems + aiValues.GetNumItems()) <= m_iNumAllocated")}));
}

TYPED_TEST(VTArrayFamilyAdd, AddTakesABuffer) {
    TypeParam array;
    array.Alloc(3, -1, false);
    array.Add(buffer<TypeParam>({1, 2}).data(), 2);
    EXPECT_EQ(numbers(array), (Numbers{1, 2}));
    EXPECT_EQ(assertsUntil(1, [&] { array.Add(nullptr, 1); }), this->failed({this->text("piValues")}));
    EXPECT_EQ(assertsUntil(1, [&] { array.Add(buffer<TypeParam>({1}).data(), -1); }), this->failed({"iNumItems >= 0"}));
    EXPECT_EQ(assertsUntil(1,
                           [&] {
                               array.Add(buffer<TypeParam>({1, 2}).data(), 2);
                           }),
              this->failed({"(m_iNumItems + iNumItems) <= m_iNumAllocated"}));
    EXPECT_EQ(assertsUntil(3, [&] { array.Add(nullptr, -1); }),
              this->failed({this->text("piValues"), "iNumItems >= 0"}));
}

// 0 + 4, then at index 4 of capacity 4 again 4 + 4, and so on.
TYPED_TEST(VTArrayFamilyAdd, AddGrowTakesTheGrowthStepToSpare) {
    TypeParam array;
    Numbers capacities;
    for (int i = 0; i < 9; ++i) {
        array.AddGrow(item<TypeParam>(i));
        capacities.push_back(array.GetNumAllocated());
    }
    EXPECT_EQ(capacities, (Numbers{4, 4, 4, 4, 8, 8, 8, 8, 12}));
    EXPECT_EQ(numbers(array), (Numbers{0, 1, 2, 3, 4, 5, 6, 7, 8}));
}

TYPED_TEST(VTArrayFamilyAdd, AddGrowUsesTheStepThatWasSet) {
    TypeParam array;
    array.Alloc(2, 3, true);
    array.AddGrow(item<TypeParam>(1));
    EXPECT_EQ(array.GetNumAllocated(), 5);
    EXPECT_EQ(array.GetGrowBy(), 3);
}

TYPED_TEST(VTArrayFamilyAdd, AddGrowTakesItemsOfTheSameArray) {
    Full<TypeParam> array({1, 2, 3});
    array.AddGrow(array.Get(1)); // The buffer moves in between.
    EXPECT_EQ(numbers<TypeParam>(array), (Numbers{1, 2, 3, 2}));
}

TYPED_TEST(VTArrayFamilyAdd, AddGrowTakesAnArray) {
    Full<TypeParam> array({1, 2});
    array.AddGrow(Full<TypeParam>({3, 4, 5}));
    EXPECT_EQ(numbers<TypeParam>(array), (Numbers{1, 2, 3, 4, 5}));
    EXPECT_EQ(array.GetNumAllocated(), 9); // 5 and the step of capacity 2.
    array.AddGrow(Full<TypeParam>({6, 7, 8, 9}));
    EXPECT_EQ(array.GetNumAllocated(), 9); // The sum just fits.
    array.AddGrow(static_cast<TypeParam&>(array));
    EXPECT_EQ(numbers<TypeParam>(array), (Numbers{1, 2, 3, 4, 5, 6, 7, 8, 9, 1, 2, 3, 4, 5, 6, 7, 8, 9}));
    EXPECT_EQ(array.GetNumAllocated(), 22); // 18 and the step of capacity 9.
}

TYPED_TEST(VTArrayFamilyAdd, AddGrowTakesABuffer) {
    Full<TypeParam> array({1, 2});
    array.AddGrow(buffer<TypeParam>({3, 4, 5}).data(), 3);
    EXPECT_EQ(numbers<TypeParam>(array), (Numbers{1, 2, 3, 4, 5}));
    EXPECT_EQ(array.GetNumAllocated(), 9);
    array.AddGrow(buffer<TypeParam>({6, 7, 8, 9}).data(), 4);
    EXPECT_EQ(array.GetNumAllocated(), 9);
    EXPECT_EQ(assertsUntil(1, [&] { array.AddGrow(nullptr, 0); }), this->failed({this->text("piValues")}));
}

TYPED_TEST(VTArrayFamilyAdd, GrowingAsksForAnOwnBuffer) {
    Full<TypeParam> owner({1, 2});
    Shared<TypeParam> shared(&owner);
    const auto notShared = this->failed({"!m_bSharedData"});
    EXPECT_EQ(assertsUntil(1, [&] { shared.AddGrow(item<TypeParam>(3)); }), notShared);
    EXPECT_EQ(assertsUntil(1, [&] { shared.AddGrow(Full<TypeParam>({3})); }), notShared);
    EXPECT_EQ(assertsUntil(1, [&] { shared.AddGrow(buffer<TypeParam>({3}).data(), 1); }), notShared);
    EXPECT_EQ(assertsUntil(1, [&] { shared.SetAtGrow(0, item<TypeParam>(3)); }), notShared);
}

TYPED_TEST(VTArrayFamilyAdd, SetAtGrowOnAnEmptyArrayTakesFourSlots) {
    TypeParam array;
    array.SetAtGrow(0, item<TypeParam>(7));
    EXPECT_EQ(array.GetNumAllocated(), 4);
    EXPECT_EQ(numbers(array), (Numbers{7}));
}

TYPED_TEST(VTArrayFamilyAdd, SetAtGrowReachesTheIndex) {
    Roomy<TypeParam> array({1, 2}, 5);
    array.SetAtGrow(0, item<TypeParam>(7));
    EXPECT_EQ(numbers<TypeParam>(array), (Numbers{7, 2}));
    array.SetAtGrow(3, item<TypeParam>(8)); // The slot skipped over becomes an item as it is.
    EXPECT_EQ(numbers<TypeParam>(array), (Numbers{7, 2, 99, 8}));
    EXPECT_EQ(array.GetNumAllocated(), 5);
    array.SetAtGrow(5, item<TypeParam>(9));
    EXPECT_EQ(array.GetNumAllocated(), 9); // 5 and the step of capacity 5.
    EXPECT_EQ(array.GetNumItems(), 6);
    EXPECT_EQ(Traits<TypeParam>::number(array.Get(5)), 9);
}

TYPED_TEST(VTArrayFamilyAdd, SetAtGrowChecksForNegativeIndexes) {
    Full<TypeParam> array({1, 2});
    EXPECT_EQ(assertsUntil(1, [&] { array.SetAtGrow(-1, item<TypeParam>(3)); }), this->failed({"iIndex >= 0"}));
    EXPECT_EQ(array.GetNumItems(), 2);
}

TYPED_TEST(VTArrayFamilyAdd, AddKeepNumItemsIsASlidingWindow) {
    Full<TypeParam> array({1, 2, 3});
    array.AddKeepNumItems(item<TypeParam>(4));
    EXPECT_EQ(numbers<TypeParam>(array), (Numbers{2, 3, 4}));
    array.AddKeepNumItems(array.Get(0));
    EXPECT_EQ(numbers<TypeParam>(array), (Numbers{3, 4, 2}));
    Full<TypeParam> single({1});
    single.AddKeepNumItems(item<TypeParam>(2));
    EXPECT_EQ(numbers<TypeParam>(single), (Numbers{2}));
    TypeParam empty;
    EXPECT_EQ(assertsUntil(1, [&] { empty.AddKeepNumItems(item<TypeParam>(1)); }), this->failed({"GetNumItems() > 0"}));
}

TYPED_TEST(VTArrayFamilyAdd, InsertMovesItemsUp) {
    Full<TypeParam> array({1, 2, 3});
    array.Insert(0, item<TypeParam>(7));
    EXPECT_EQ(numbers<TypeParam>(array), (Numbers{7, 1, 2, 3}));
    EXPECT_EQ(array.GetNumAllocated(), 7); // 3 and the step of capacity 3.
    array.Insert(2, item<TypeParam>(8));
    EXPECT_EQ(numbers<TypeParam>(array), (Numbers{7, 1, 8, 2, 3}));
    array.Insert(5, item<TypeParam>(9)); // At the end.
    EXPECT_EQ(numbers<TypeParam>(array), (Numbers{7, 1, 8, 2, 3, 9}));
    array.Insert(0, array.Get(5));
    EXPECT_EQ(numbers<TypeParam>(array), (Numbers{9, 7, 1, 8, 2, 3, 9}));
    array.Insert(0, array.Get(2)); // The buffer moves in between.
    EXPECT_EQ(numbers<TypeParam>(array), (Numbers{1, 9, 7, 1, 8, 2, 3, 9}));
    EXPECT_EQ(array.GetNumAllocated(), 11);
}

TYPED_TEST(VTArrayFamilyAdd, InsertIntoAnEmptyArrayAdds) {
    TypeParam array;
    array.Insert(0, item<TypeParam>(7));
    EXPECT_EQ(numbers(array), (Numbers{7}));
    EXPECT_EQ(array.GetNumAllocated(), 4);
}

TYPED_TEST(VTArrayFamilyAdd, InsertChecksThePlace) {
    Full<TypeParam> array({1, 2});
    const std::string place = "(iIndex >= 0) && (iIndex <= m_iNumItems)";
    EXPECT_EQ(assertsUntil(1, [&] { array.Insert(3, item<TypeParam>(7)); }), this->failed({place}));
    EXPECT_EQ(assertsUntil(1, [&] { array.Insert(-1, item<TypeParam>(7)); }), this->failed({place}));
}

TYPED_TEST(VTArrayFamilyAdd, InsertChecksTheCount) {
    Full<TypeParam> array({1, 2});
    assertsUntil(0, [&] { array.SetNumItems(3); });
    EXPECT_EQ(assertsUntil(1, [&] { array.Insert(0, item<TypeParam>(7)); }),
              this->failed({"m_iNumItems <= m_iNumAllocated"}));
}

TYPED_TEST(VTArrayFamilyAdd, InsertTakesAnArray) {
    Roomy<TypeParam> array({1, 2, 3}, 10);
    array.Insert(1, Full<TypeParam>({7, 8}));
    EXPECT_EQ(numbers<TypeParam>(array), (Numbers{1, 7, 8, 2, 3}));
    array.Insert(5, Full<TypeParam>({9}));
    EXPECT_EQ(numbers<TypeParam>(array), (Numbers{1, 7, 8, 2, 3, 9}));
    array.Insert(0, TypeParam());
    EXPECT_EQ(array.GetNumItems(), 6);
    const std::string place = "(iStartIndex >= 0) && (iStartIndex <= m_iNumItems)";
    EXPECT_EQ(assertsUntil(1, [&] { array.Insert(7, Full<TypeParam>({1})); }), this->failed({place}));
    EXPECT_EQ(assertsUntil(1, [&] { array.Insert(-1, Full<TypeParam>({1})); }), this->failed({place}));
}

// In front of items it grows when the sum reaches the capacity, behind them only when it exceeds it.
TYPED_TEST(VTArrayFamilyAdd, InsertOfAnArrayGrowsOneEarlierThanAddGrow) {
    Roomy<TypeParam> inFront({1, 2, 3}, 5);
    inFront.Insert(2, Full<TypeParam>({7, 8}));
    EXPECT_EQ(numbers<TypeParam>(inFront), (Numbers{1, 2, 7, 8, 3}));
    EXPECT_EQ(inFront.GetNumAllocated(), 9);
    Roomy<TypeParam> behind({1, 2, 3}, 5);
    behind.Insert(3, Full<TypeParam>({7, 8}));
    EXPECT_EQ(numbers<TypeParam>(behind), (Numbers{1, 2, 3, 7, 8}));
    EXPECT_EQ(behind.GetNumAllocated(), 5);
}

TYPED_TEST(VTArrayFamilyAdd, DeleteMovesItemsDownAndKeepsTheCapacity) {
    Full<TypeParam> array({1, 2, 3, 4, 5});
    array.Delete(1, 2);
    EXPECT_EQ(numbers<TypeParam>(array), (Numbers{1, 4, 5}));
    array.Delete(3, 0);
    EXPECT_EQ(numbers<TypeParam>(array), (Numbers{1, 4, 5}));
    array.Delete(1, -1);
    EXPECT_EQ(numbers<TypeParam>(array), (Numbers{1}));
    array.Delete(0, 1);
    EXPECT_EQ(array.GetNumItems(), 0);
    EXPECT_EQ(array.GetNumAllocated(), 5);
}

TYPED_TEST(VTArrayFamilyAdd, DeleteChecksTheRange) {
    AssertRecorder recorder;
    Full<TypeParam> array({1, 2, 3});
    array.Delete(2, 2); // Nothing is left to move; the count goes down all the same.
    EXPECT_EQ(recorder.take(), this->failed({"iStartIndex + iNumItems <= GetNumItems()"}));
    EXPECT_EQ(array.GetNumItems(), 1);
    EXPECT_EQ(assertsUntil(1, [&] { array.Delete(-1, 1); }), this->failed({"iStartIndex >= 0"}));
    EXPECT_EQ(assertsUntil(1, [&] { array.Delete(0, -2); }), this->failed({"iNumItems >= 0"}));
    EXPECT_EQ(assertsUntil(1, [&] { array.Delete(2, -1); }), this->failed({"iNumItems >= 0"}));
}

} // namespace
