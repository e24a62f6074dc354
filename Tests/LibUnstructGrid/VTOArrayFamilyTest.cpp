// What all arrays of the family share: the buffer, its size, and access to its items. The few that differ have their
// rows in VTOArrayDifferencesTest.cpp.

#include "LibUnstructGrid/VTOArray.h"

#include "Tests/LibUnstructGrid/VTOArrayTestSupport.h"

#include <gtest/gtest.h>

namespace {

using namespace vtarraytest;
using orvtest::AssertRecorder;
using orvtest::assertsUntil;
using orvtest::FailedAssert;
using orvtest::failedIn;
using Numbers = std::vector<int>;

const std::string baseUnit = "LibUnstructGrid/VTOArrayBase";

template <typename Array>
class VTArrayFamily : public testing::Test {
protected:
    static std::vector<FailedAssert> failed(std::vector<std::string> expressions) {
        return failedIn(Traits<Array>::unit, std::move(expressions));
    }
    static std::string text(const std::string& pattern) {
        return replaced(replaced(pattern, "m_piData", Traits<Array>::data), "aiValues", Traits<Array>::values);
    }
};

using Arrays = testing::Types<VTIntArray, VTIntIndexArray, VTFloatArray, VTRealArray, VTUbyteArray, VTStringArray,
                              VTVectorArray, VTVectorFloatArray, VTMatrix4Array>;
TYPED_TEST_SUITE(VTArrayFamily, Arrays);

TYPED_TEST(VTArrayFamily, IsEmptyAtFirst) {
    TypeParam array;
    EXPECT_EQ(array.GetNumItems(), 0);
    EXPECT_EQ(array.GetNumAllocated(), 0);
    EXPECT_EQ(array.GetDataPtr(), nullptr);
    EXPECT_EQ(array.GetGrowBy(), 4);
}

TYPED_TEST(VTArrayFamily, GrowthStepFollowsTheCapacityNotTheCount) {
    const struct {
        int iCapacity;
        int iStep;
    } rows[] = {{1, 4}, {32, 4}, {39, 4}, {40, 5}, {64, 8}, {8191, 1023}, {8192, 1024}, {100000, 1024}};
    for (const auto& row : rows) {
        TypeParam array;
        array.Alloc(row.iCapacity, -1, false);
        EXPECT_EQ(array.GetGrowBy(), row.iStep) << row.iCapacity;
        array.SetNumItems(1);
        EXPECT_EQ(array.GetGrowBy(), row.iStep) << row.iCapacity;
    }
}

TYPED_TEST(VTArrayFamily, GrowthStepIsTakenAsItIsFromZeroUp) {
    TypeParam array;
    array.Alloc(64, 0, false);
    EXPECT_EQ(array.GetGrowBy(), 0);
    array.Alloc(64, 3, false);
    EXPECT_EQ(array.GetGrowBy(), 3);
    array.Alloc(64, -5, false);
    EXPECT_EQ(array.GetGrowBy(), 8);
}

TYPED_TEST(VTArrayFamily, AllocMakesRoom) {
    TypeParam array;
    array.Alloc(3, 7, true);
    EXPECT_EQ(array.GetNumItems(), 3);
    EXPECT_EQ(array.GetNumAllocated(), 3);
    EXPECT_EQ(array.GetGrowBy(), 7);
    EXPECT_NE(array.GetDataPtr(), nullptr);
    array.Alloc(5, 2, false);
    EXPECT_EQ(array.GetNumItems(), 0);
    EXPECT_EQ(array.GetNumAllocated(), 5);
    EXPECT_EQ(array.GetGrowBy(), 2);
}

TYPED_TEST(VTArrayFamily, AllocAtTheSameCapacityKeepsTheContents) {
    Full<TypeParam> array({1, 2, 3});
    const auto* pBuffer = array.GetDataPtr();
    array.Alloc(3, -1, false);
    EXPECT_EQ(array.GetNumItems(), 0);
    EXPECT_EQ(array.GetDataPtr(), pBuffer);
    array.Alloc(3, -1, true);
    EXPECT_EQ(numbers<TypeParam>(array), (Numbers{1, 2, 3}));
}

TYPED_TEST(VTArrayFamily, AllocChecksTheCountAndTheOwnership) {
    AssertRecorder recorder;
    Full<TypeParam> array({1, 2});
    array.Alloc(0, -1, true);
    EXPECT_EQ(recorder.take(), this->failed({"iNumItems > 0"}));
    EXPECT_EQ(array.GetNumAllocated(), 0);
    EXPECT_EQ(array.GetNumItems(), 0);
    EXPECT_EQ(array.GetDataPtr(), nullptr);
    array.Alloc(-3, -1, true);
    EXPECT_EQ(recorder.take(), this->failed({"iNumItems > 0"}));
    EXPECT_EQ(array.GetNumAllocated(), -3);
    array.Free();
    Full<TypeParam> owner({1, 2});
    Shared<TypeParam> shared(&owner);
    EXPECT_EQ(assertsUntil(2, [&] { shared.Alloc(0, -1, true); }), this->failed({"iNumItems > 0", "!m_bSharedData"}));
}

TYPED_TEST(VTArrayFamily, AllocAndReallocReleaseEvenABorrowedBuffer) {
    AssertRecorder recorder;
    for (bool bRealloc : {false, true}) {
        TypeParam owner;
        fill<TypeParam>(&owner, {1, 2});
        TypeParam shared;
        shared.SetSharedDataPtr(owner.StealData(), 2); // Nobody else releases it now.
        if (bRealloc) {
            shared.Realloc(5, -1, true);
        } else {
            shared.Alloc(5, -1, true);
        }
        EXPECT_EQ(recorder.take(), this->failed({"!m_bSharedData"}));
        EXPECT_EQ(shared.GetNumAllocated(), 5);
        delete[] shared.StealData(); // It still counts as borrowed.
    }
}

TYPED_TEST(VTArrayFamily, ReallocKeepsTheItems) {
    Full<TypeParam> array({1, 2, 3});
    array.Realloc(10, 6, false);
    EXPECT_EQ(array.GetNumAllocated(), 10);
    EXPECT_EQ(array.GetGrowBy(), 6);
    EXPECT_EQ(numbers<TypeParam>(array), (Numbers{1, 2, 3}));
}

TYPED_TEST(VTArrayFamily, ReallocCarriesUnusedSlotsAlong) {
    Full<TypeParam> array({1, 2, 3});
    array.SetNumItems(1);
    array.Realloc(10, -1, false);
    EXPECT_EQ(array.GetNumItems(), 1);
    array.SetNumItems(3);
    EXPECT_EQ(numbers<TypeParam>(array), (Numbers{1, 2, 3}));
}

TYPED_TEST(VTArrayFamily, ShrinkingReallocCutsTheCount) {
    Full<TypeParam> array({1, 2, 3, 4, 5});
    array.Realloc(2, -1, false);
    EXPECT_EQ(array.GetNumAllocated(), 2);
    EXPECT_EQ(numbers<TypeParam>(array), (Numbers{1, 2}));
}

TYPED_TEST(VTArrayFamily, ReallocCanMakeEverySlotAnItem) {
    Roomy<TypeParam> array({1, 2}, 9);
    array.Realloc(5, -1, true);
    EXPECT_EQ(numbers<TypeParam>(array), (Numbers{1, 2, 99, 99, 99}));
    array.SetNumItems(2);
    array.Realloc(5, -1, true); // Also when there is nothing to move.
    EXPECT_EQ(array.GetNumItems(), 5);
}

TYPED_TEST(VTArrayFamily, ReallocAtTheSameCapacityMovesNothingButTakesTheStep) {
    Full<TypeParam> array({1, 2, 3});
    const auto* pBuffer = array.GetDataPtr();
    array.Realloc(3, 7, false);
    EXPECT_EQ(array.GetDataPtr(), pBuffer);
    EXPECT_EQ(array.GetGrowBy(), 7);
}

TYPED_TEST(VTArrayFamily, ReallocToMinusOneFits) {
    TypeParam array;
    array.Alloc(64, -1, true);
    for (int i = 0; i < 64; ++i) {
        array.Set(i, item<TypeParam>(i));
    }
    array.SetNumItems(10);
    array.Realloc(-1, -1, false);
    EXPECT_EQ(array.GetNumAllocated(), 10);
    EXPECT_EQ(numbers<TypeParam>(array), (Numbers{0, 1, 2, 3, 4, 5, 6, 7, 8, 9}));
}

TYPED_TEST(VTArrayFamily, ReallocToMinusOneFreesAnArrayWithoutItems) {
    AssertRecorder recorder;
    TypeParam array;
    array.Alloc(64, -1, false);
    array.Realloc(-1, 7, true);
    EXPECT_EQ(array.GetNumAllocated(), 0);
    EXPECT_EQ(array.GetDataPtr(), nullptr);
    EXPECT_EQ(array.GetGrowBy(), 7);
    array.Realloc(-1, -1, true);
    EXPECT_EQ(array.GetNumAllocated(), 0);
    EXPECT_TRUE(recorder.take().empty());
}

TYPED_TEST(VTArrayFamily, ReallocChecksTheSizeAndTheOwnership) {
    AssertRecorder recorder;
    Full<TypeParam> array({1, 2});
    array.Realloc(0, -1, false);
    EXPECT_EQ(recorder.take(), this->failed({"(iNewSize > 0) || (iNewSize == -1)"}));
    EXPECT_EQ(array.GetDataPtr(), nullptr); // It went on, and freed.
    fill<TypeParam>(&array, {1, 2});
    array.Realloc(-2, -1, false); // Taken like -1.
    EXPECT_EQ(recorder.take(), this->failed({"(iNewSize > 0) || (iNewSize == -1)"}));
    EXPECT_EQ(numbers<TypeParam>(array), (Numbers{1, 2}));
    Full<TypeParam> owner({1, 2});
    Shared<TypeParam> shared(&owner);
    EXPECT_EQ(assertsUntil(2, [&] { shared.Realloc(0, -1, true); }),
              this->failed({"(iNewSize > 0) || (iNewSize == -1)", "!m_bSharedData"}));
}

TYPED_TEST(VTArrayFamily, FreeKeepsTheGrowthStep) {
    Full<TypeParam> array({1, 2, 3});
    array.Realloc(4, 7, false);
    array.Free();
    EXPECT_EQ(array.GetNumItems(), 0);
    EXPECT_EQ(array.GetNumAllocated(), 0);
    EXPECT_EQ(array.GetDataPtr(), nullptr);
    EXPECT_EQ(array.GetGrowBy(), 7);
}

TYPED_TEST(VTArrayFamily, VirtualOperationsReachTheClass) {
    Full<TypeParam> array({1, 2, 3});
    VTArray* pBase = &array;
    pBase->Realloc(2, -1, false);
    EXPECT_EQ(numbers<TypeParam>(array), (Numbers{1, 2}));
    pBase->Alloc(5, -1, true);
    EXPECT_EQ(array.GetNumItems(), 5);
    pBase->Free();
    EXPECT_EQ(array.GetDataPtr(), nullptr);
    VTArray* pOwned = new TypeParam;
    pOwned->Alloc(3, -1, true);
    delete pOwned;
}

TYPED_TEST(VTArrayFamily, SetNumItemsStaysWithinTheCapacity) {
    AssertRecorder recorder;
    Full<TypeParam> array({1, 2, 3});
    array.SetNumItems(0);
    array.SetNumItems(3);
    EXPECT_TRUE(recorder.take().empty());
    EXPECT_EQ(numbers<TypeParam>(array), (Numbers{1, 2, 3}));
    array.SetNumItems(4);
    EXPECT_EQ(recorder.take(), failedIn(baseUnit, {"iNumItems <= m_iNumAllocated"}));
    EXPECT_EQ(array.GetNumItems(), 4);
    array.SetNumItems(-1);
    EXPECT_EQ(recorder.take(), failedIn(baseUnit, {"iNumItems >= 0"}));
    EXPECT_EQ(array.GetNumItems(), -1);
    array.SetNumItems(0);
}

TYPED_TEST(VTArrayFamily, ItemsAreReadAndWritten) {
    Full<TypeParam> array({1, 2, 3});
    const TypeParam& constArray = array;
    array.Set(0, item<TypeParam>(4));
    array.Get(1) = item<TypeParam>(5);
    array[2] = item<TypeParam>(6);
    EXPECT_EQ(numbers<TypeParam>(array), (Numbers{4, 5, 6}));
    EXPECT_EQ(&array[1], array.GetDataPtr() + 1);
    EXPECT_EQ(&constArray[1], array.GetDataPtr() + 1);
    EXPECT_EQ(&constArray.Get(1), array.GetDataPtr() + 1);
    EXPECT_EQ(array.GetDataPtr(2), array.GetDataPtr() + 2);
    EXPECT_EQ(constArray.GetDataPtr(2), constArray.GetDataPtr() + 2);
}

TYPED_TEST(VTArrayFamily, AccessChecksTheIndex) {
    AssertRecorder recorder;
    Roomy<TypeParam> array({1, 2}, 4); // Slot 2 is there to be read.
    const TypeParam& constArray = array;
    array.Get(2);
    EXPECT_EQ(recorder.take(), this->failed({"iIndex < m_iNumItems"}));
    constArray.Get(2);
    EXPECT_EQ(recorder.take(), this->failed({"iIndex < m_iNumItems"}));
    array[2];
    EXPECT_EQ(recorder.take(), this->failed({"iIndex < m_iNumItems"}));
    constArray[2];
    EXPECT_EQ(recorder.take(), this->failed({"iIndex < m_iNumItems"}));
    array.Set(2, item<TypeParam>(3));
    EXPECT_EQ(recorder.take(), this->failed({"iIndex < m_iNumItems"}));
    array.GetDataPtr(2);
    EXPECT_EQ(recorder.take(), this->failed({"iIndex >= 0 && iIndex < m_iNumItems"}));
    constArray.GetDataPtr(2);
    EXPECT_EQ(recorder.take(), this->failed({"iIndex >= 0 && iIndex < m_iNumItems"}));
    array.SetNumItems(3);
    EXPECT_EQ(numbers<TypeParam>(array), (Numbers{1, 2, 3})); // The write went through.
}

TYPED_TEST(VTArrayFamily, AccessChecksForNegativeIndexesFirst) {
    Full<TypeParam> array({1, 2});
    const TypeParam& constArray = array;
    const auto negative = this->failed({"iIndex >= 0"});
    EXPECT_EQ(assertsUntil(1, [&] { array.Get(-1); }), negative);
    EXPECT_EQ(assertsUntil(1, [&] { constArray.Get(-1); }), negative);
    EXPECT_EQ(assertsUntil(1, [&] { array[-1]; }), negative);
    EXPECT_EQ(assertsUntil(1, [&] { constArray[-1]; }), negative);
    EXPECT_EQ(assertsUntil(1, [&] { array.Set(-1, item<TypeParam>(0)); }), negative);
    EXPECT_EQ(assertsUntil(1, [&] { array.GetDataPtr(-1); }), this->failed({"iIndex >= 0 && iIndex < m_iNumItems"}));
}

TYPED_TEST(VTArrayFamily, SetDataPtrTakesTheBufferOver) {
    Full<TypeParam> source({1, 2, 3});
    auto* pBuffer = source.StealData();
    Full<TypeParam> array({7});
    array.SetDataPtr(pBuffer, 3);
    EXPECT_EQ(array.GetDataPtr(), pBuffer);
    EXPECT_EQ(array.GetNumAllocated(), 3);
    EXPECT_EQ(numbers<TypeParam>(array), (Numbers{1, 2, 3}));
    array.Realloc(5, -1, false); // Its own buffer by now.
    EXPECT_EQ(numbers<TypeParam>(array), (Numbers{1, 2, 3}));
}

TYPED_TEST(VTArrayFamily, SetDataPtrChecksPointerAndCount) {
    Full<TypeParam> owner({1});
    TypeParam array;
    EXPECT_EQ(assertsUntil(2, [&] { array.SetDataPtr(nullptr, 0); }), this->failed({"pData", "iNumItems > 0"}));
    EXPECT_EQ(assertsUntil(1, [&] { array.SetDataPtr(owner.GetDataPtr(), 0); }), this->failed({"iNumItems > 0"}));
    EXPECT_EQ(assertsUntil(2, [&] { array.SetSharedDataPtr(nullptr, -1); }), this->failed({"pData", "iNumItems > 0"}));
}

TYPED_TEST(VTArrayFamily, BorrowedBuffersOutliveTheArray) {
    Full<TypeParam> owner({1, 2, 3});
    {
        Shared<TypeParam> shared(&owner);
        EXPECT_EQ(shared.GetDataPtr(), owner.GetDataPtr());
        EXPECT_EQ(shared.GetNumAllocated(), 3);
        shared.Set(0, item<TypeParam>(7));
        Shared<TypeParam> freed(&owner);
        freed.Free();
        EXPECT_EQ(freed.GetDataPtr(), nullptr);
        freed.Alloc(2, -1, true); // Free() has made it an ordinary array again.
    }
    EXPECT_EQ(numbers<TypeParam>(owner), (Numbers{7, 2, 3}));
}

TYPED_TEST(VTArrayFamily, StealDataLeavesTheArrayWithoutABuffer) {
    Full<TypeParam> array({1, 2, 3});
    auto* pBuffer = array.GetDataPtr();
    auto* pStolen = array.StealData();
    EXPECT_EQ(pStolen, pBuffer);
    EXPECT_EQ(array.GetDataPtr(), nullptr);
    EXPECT_EQ(array.GetNumAllocated(), 0);
    EXPECT_EQ(array.GetNumItems(), 0);
    EXPECT_EQ(array.StealData(), nullptr);
    delete[] pStolen;
}

TYPED_TEST(VTArrayFamily, StealDataDoesNotForgetThatTheBufferWasBorrowed) {
    Full<TypeParam> owner({1, 2, 3});
    Shared<TypeParam> shared(&owner);
    EXPECT_EQ(shared.StealData(), owner.GetDataPtr());
    EXPECT_EQ(assertsUntil(1, [&] { shared.Alloc(2, -1, true); }), this->failed({"!m_bSharedData"}));
    shared.Free();
    shared.Alloc(2, -1, true);
}

TYPED_TEST(VTArrayFamily, SetAllItemsWritesUnusedSlotsToo) {
    Full<TypeParam> array({1, 2, 3});
    array.SetNumItems(1);
    array.SetAllItems(item<TypeParam>(7));
    EXPECT_EQ(array.GetNumItems(), 1);
    array.SetNumItems(3);
    EXPECT_EQ(numbers<TypeParam>(array), (Numbers{7, 7, 7}));
}

TYPED_TEST(VTArrayFamily, ComparesItemByItem) {
    EXPECT_TRUE(Full<TypeParam>({1, 2}) == Full<TypeParam>({1, 2}));
    EXPECT_FALSE(Full<TypeParam>({1, 2}) == Full<TypeParam>({1, 3}));
    EXPECT_FALSE(Full<TypeParam>({1, 2}) == Full<TypeParam>({1}));
    EXPECT_FALSE(Full<TypeParam>({1}) == Full<TypeParam>({1, 2}));
    EXPECT_TRUE(TypeParam() == TypeParam());
    EXPECT_TRUE(Full<TypeParam>({1, 2}) == Roomy<TypeParam>({1, 2}, 9));
    EXPECT_TRUE(Full<TypeParam>({1, 2}) != Full<TypeParam>({1, 3}));
}

TYPED_TEST(VTArrayFamily, AssignmentOfAnArrayWithoutABufferFrees) {
    AssertRecorder recorder;
    Full<TypeParam> array({1, 2});
    array.Realloc(3, 7, false);
    const TypeParam empty;
    static_cast<TypeParam&>(array) = empty;
    EXPECT_EQ(array.GetDataPtr(), nullptr);
    EXPECT_EQ(array.GetNumItems(), 0);
    EXPECT_EQ(array.GetGrowBy(), 7);
    EXPECT_EQ(TypeParam(empty).GetDataPtr(), nullptr);
    EXPECT_TRUE(recorder.take().empty());
}

TYPED_TEST(VTArrayFamily, CopiesHaveBuffersOfTheirOwn) {
    const Full<TypeParam> source({1, 2, 3});
    TypeParam copy(source);
    EXPECT_NE(copy.GetDataPtr(), source.GetDataPtr());
    copy.Set(0, item<TypeParam>(7));
    EXPECT_EQ(numbers<TypeParam>(copy), (Numbers{7, 2, 3}));
    EXPECT_EQ(numbers<TypeParam>(source), (Numbers{1, 2, 3}));
}

TYPED_TEST(VTArrayFamily, ACopyOfABorrowingArrayOwns) {
    Full<TypeParam> owner({1, 2, 3});
    const Shared<TypeParam> shared(&owner);
    TypeParam copy(shared);
    copy.Realloc(5, -1, false);
    EXPECT_EQ(numbers<TypeParam>(copy), (Numbers{1, 2, 3}));
}

TYPED_TEST(VTArrayFamily, CopyDataReplacesAllItemsInPlace) {
    Roomy<TypeParam> array({1, 2, 3}, 5);
    const auto* pBuffer = array.GetDataPtr();
    array.CopyData(buffer<TypeParam>({4, 5, 6}).data(), 3, 0);
    EXPECT_EQ(numbers<TypeParam>(array), (Numbers{4, 5, 6}));
    EXPECT_EQ(array.GetDataPtr(), pBuffer);
}

TYPED_TEST(VTArrayFamily, CopyDataGrowsToExactlyWhatItNeeds) {
    Full<TypeParam> array({1, 2, 3});
    array.CopyData(buffer<TypeParam>({4, 5, 6, 7}).data(), 4, 2);
    EXPECT_EQ(numbers<TypeParam>(array), (Numbers{1, 2, 4, 5, 6, 7}));
    EXPECT_EQ(array.GetNumAllocated(), 6);
}

TYPED_TEST(VTArrayFamily, CopyDataNeverLowersTheCount) {
    Roomy<TypeParam> array({1, 2, 3}, 5);
    array.CopyData(buffer<TypeParam>({4}).data(), 1, 0);
    EXPECT_EQ(numbers<TypeParam>(array), (Numbers{4, 2, 3}));
    array.CopyData(buffer<TypeParam>({5, 6}).data(), 2, 3);
    EXPECT_EQ(numbers<TypeParam>(array), (Numbers{4, 2, 3, 5, 6}));
    EXPECT_EQ(array.GetNumAllocated(), 5);
    array.CopyData(buffer<TypeParam>({7}).data(), 0, 0);
    EXPECT_EQ(array.GetNumItems(), 5);
}

TYPED_TEST(VTArrayFamily, CopyDataKeepsTheGrowthStep) {
    TypeParam array;
    array.Alloc(1, 6, true);
    array.CopyData(buffer<TypeParam>({1, 2}).data(), 2, 0);
    EXPECT_EQ(array.GetGrowBy(), 6);
    EXPECT_EQ(numbers<TypeParam>(array), (Numbers{1, 2}));
}

TYPED_TEST(VTArrayFamily, CopyDataTakesARangeOfAnArray) {
    const Full<TypeParam> source({4, 5, 6, 7});
    Full<TypeParam> array({1, 2, 3});
    array.CopyData(source, 2, 1, 1);
    EXPECT_EQ(numbers<TypeParam>(array), (Numbers{1, 5, 6}));
    array.CopyData(source, -1, 2, 3);
    EXPECT_EQ(numbers<TypeParam>(array), (Numbers{1, 5, 7}));
    array.CopyData(source, -1, 0, 0);
    EXPECT_EQ(numbers<TypeParam>(array), (Numbers{4, 5, 6, 7}));
    EXPECT_EQ(array.GetNumAllocated(), 4);
    array.CopyData(source, 0, 1, 2);
    EXPECT_EQ(numbers<TypeParam>(array), (Numbers{4, 5, 6, 7}));
}

TYPED_TEST(VTArrayFamily, CopyDataOfAnArrayChecksBothRanges) {
    const Full<TypeParam> source({4, 5, 6});
    Full<TypeParam> array({1, 2, 3});
    const auto check = [&](int iCount, int iDst, int iSrc, const std::string& expected) {
        EXPECT_EQ(assertsUntil(1, [&] { array.CopyData(source, iCount, iDst, iSrc); }),
                  this->failed({this->text(expected)}));
    };
    check(-2, 0, 0, "iNumItemsToCopy >= -1");
    check(3, 0, 1, "iNumItemsToCopy <= aiValues.GetNumItems() - iStartSrcIndex");
    check(1, -1, 0, "iStartDstIndex >= 0");
    check(1, 0, -1, "iStartSrcIndex >= 0");
    check(0, 0, 3, "iStartSrcIndex < aiValues.GetNumItems()");
    const TypeParam empty;
    EXPECT_EQ(assertsUntil(2, [&] { array.CopyData(empty, -1, 0, 0); }),
              this->failed({this->text("iStartSrcIndex < aiValues.GetNumItems()"), "pSrcData"}));
    EXPECT_EQ(assertsUntil(3, [&] { array.CopyData(source, 5, -1, -1); }),
              this->failed({this->text("iNumItemsToCopy <= aiValues.GetNumItems() - iStartSrcIndex"),
                            "iStartDstIndex >= 0", "iStartSrcIndex >= 0"}));
    const std::string range = this->text("iNumItemsToCopy >= 0 && iNumItemsToCopy <= aiValues.GetNumItems()");
    EXPECT_EQ(assertsUntil(2, [&] { array.CopyData(source, 4, 0, -1); }), this->failed({"iStartSrcIndex >= 0", range}));
    // From index 5 up to the end of 3 items there are -2.
    EXPECT_EQ(assertsUntil(3, [&] { array.CopyData(source, -1, 0, 5); }),
              this->failed({this->text("iNumItemsToCopy <= aiValues.GetNumItems() - iStartSrcIndex"),
                            this->text("iStartSrcIndex < aiValues.GetNumItems()"), range}));
}

template <typename Array>
class VTArrayFamilyBlock : public VTArrayFamily<Array> {};

using BlockArrays = testing::Types<VTIntArray, VTIntIndexArray, VTFloatArray, VTRealArray, VTVectorArray,
                                   VTVectorFloatArray, VTMatrix4Array>;
TYPED_TEST_SUITE(VTArrayFamilyBlock, BlockArrays);

// With the count of the items at index 0 there are checks of their own, and no crash on a missing source.
TYPED_TEST(VTArrayFamilyBlock, CopyDataOfAllItemsChecksBothBuffers) {
    AssertRecorder recorder;
    Full<TypeParam> array({1, 2});
    const typename Traits<TypeParam>::Item* pNone = nullptr;
    array.CopyData(pNone, 2, 0);
    EXPECT_EQ(recorder.take(), this->failed({"pData", this->text("m_piData && pData")}));
    EXPECT_EQ(numbers<TypeParam>(array), (Numbers{1, 2}));
    array.SetNumItems(3); // One more than there is room for.
    recorder.take();
    const auto values = buffer<TypeParam>({4, 5, 6});
    EXPECT_EQ(assertsUntil(1, [&] { array.CopyData(values.data(), 3, 0); }),
              this->failed({"m_iNumAllocated >= iNumItems"}));
}

TYPED_TEST(VTArrayFamilyBlock, CopyDataOfAllItemsOfAnArrayWithoutABufferCopiesNothing) {
    AssertRecorder recorder;
    TypeParam array;
    array.SetNumItems(2);
    recorder.take();
    array.CopyData(buffer<TypeParam>({4, 5}).data(), 2, 0);
    EXPECT_EQ(recorder.take(), this->failed({this->text("m_piData && pData"), "m_iNumAllocated >= iNumItems"}));
}

TYPED_TEST(VTArrayFamilyBlock, CopyDataChecksPointerCountAndPlace) {
    TypeParam array;
    const typename Traits<TypeParam>::Item* pNone = nullptr;
    EXPECT_EQ(assertsUntil(3, [&] { array.CopyData(pNone, -1, -1); }),
              this->failed({"pData", "iNumItems >= 0", "iStartDstIndex >= 0"}));
}

} // namespace
