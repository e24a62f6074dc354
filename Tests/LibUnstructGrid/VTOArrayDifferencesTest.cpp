// The arrays of the family are written out one by one and differ on purpose. Here is how: one row for each class and
// operation, in groups that show the same operation side by side. Anybody who evens a row out breaks callers.

#include "Tests/LibUnstructGrid/VTOArrayTestSupport.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <limits>
#include <malloc.h>
#include <memory>
#include <sstream>

namespace {

using namespace vtarraytest;
using orvtest::AssertRecorder;
using orvtest::assertsUntil;

struct Row {
    const char* operation;
    const char* arrayClass;
    std::function<std::string()> outcome;
    std::string expected;
};

void expectRows(const std::vector<Row>& rows) {
    for (const Row& row : rows) {
        EXPECT_EQ(row.outcome(), row.expected) << row.arrayClass << ": " << row.operation;
    }
}

// The tests that failed up to the `iLimit`-th one, where the call is left.
template <typename Call>
std::string checksUntil(std::size_t limit, Call call) {
    std::string text;
    for (const auto& failed : assertsUntil(limit, call)) {
        text += (text.empty() ? "" : "; ") + failed.expression.value_or("(none)");
    }
    return text;
}

std::string number(double fValue) {
    std::ostringstream text;
    text.precision(17);
    text << fValue;
    return text.str();
}

std::string equality(bool bEqual) {
    return bEqual ? "equal" : "different";
}

template <typename Array>
Array with(const typename Traits<Array>::Item& a) {
    Array array;
    array.Alloc(1, -1, true);
    array.Set(0, a);
    return array;
}

template <typename Array>
Array with(const typename Traits<Array>::Item& a, const typename Traits<Array>::Item& b) {
    Array array;
    array.Alloc(2, -1, true);
    array.Set(0, a);
    array.Set(1, b);
    return array;
}

template <typename Array>
std::function<std::string()> selfAssignmentOfABorrower() {
    return [] {
        Full<Array> owner({1, 2});
        Shared<Array> shared(&owner);
        const Array& same = shared;
        return checksUntil(2, [&] { static_cast<Array&>(shared) = same; });
    };
}

TEST(VTArrayDifferences, OrderOfTheChecksOfAssignment) {
    const std::string ownershipFirst = "!m_bSharedData; this != &other";
    expectRows({
        {"operator=", "VTIntArray", selfAssignmentOfABorrower<VTIntArray>(), ownershipFirst},
        {"operator=", "VTIntIndexArray", selfAssignmentOfABorrower<VTIntIndexArray>(), ownershipFirst},
        {"operator=", "VTFloatArray", selfAssignmentOfABorrower<VTFloatArray>(), ownershipFirst},
        {"operator=", "VTRealArray", selfAssignmentOfABorrower<VTRealArray>(), ownershipFirst},
        {"operator=", "VTUbyteArray", selfAssignmentOfABorrower<VTUbyteArray>(), ownershipFirst},
        {"operator=", "VTVectorArray", selfAssignmentOfABorrower<VTVectorArray>(), ownershipFirst},
        {"operator=", "VTVectorFloatArray", selfAssignmentOfABorrower<VTVectorFloatArray>(), ownershipFirst},
        {"operator=", "VTMatrix4Array", selfAssignmentOfABorrower<VTMatrix4Array>(), ownershipFirst},
        {"operator=", "VTStringArray", selfAssignmentOfABorrower<VTStringArray>(), "this != &other; !m_bSharedData"},
    });
}

// A source of 2 items in 5 slots with a growth step of 7.
template <typename Array>
std::function<std::string()> copyOfAnArrayWithRoom() {
    return [] {
        Roomy<Array> source({1, 2}, 4);
        source.Realloc(5, 7, false);
        Array copy;
        copy = source;
        return std::to_string(copy.GetNumItems()) + " in " + std::to_string(copy.GetNumAllocated()) + ", step " +
               std::to_string(copy.GetGrowBy());
    };
}

TEST(VTArrayDifferences, WhatAssignmentTakesOver) {
    const std::string all = "2 in 5, step 7";
    expectRows({
        {"operator=", "VTIntArray", copyOfAnArrayWithRoom<VTIntArray>(), all},
        {"operator=", "VTIntIndexArray", copyOfAnArrayWithRoom<VTIntIndexArray>(), "5 in 5, step 4"},
        {"operator=", "VTFloatArray", copyOfAnArrayWithRoom<VTFloatArray>(), all},
        {"operator=", "VTRealArray", copyOfAnArrayWithRoom<VTRealArray>(), all},
        {"operator=", "VTUbyteArray", copyOfAnArrayWithRoom<VTUbyteArray>(), all},
        {"operator=", "VTVectorArray", copyOfAnArrayWithRoom<VTVectorArray>(), all},
        {"operator=", "VTVectorFloatArray", copyOfAnArrayWithRoom<VTVectorFloatArray>(), all},
        {"operator=", "VTMatrix4Array", copyOfAnArrayWithRoom<VTMatrix4Array>(), all},
        {"operator=", "VTStringArray", copyOfAnArrayWithRoom<VTStringArray>(), all},
    });
}

template <typename Array>
std::function<std::string()> fittingOfAFullArray() {
    return [] {
        Full<Array> array({1, 2, 3});
        const auto* pBuffer = array.GetDataPtr();
        array.Realloc(-1, -1, false);
        return std::string(array.GetDataPtr() == pBuffer ? "stays" : "moves");
    };
}

TEST(VTArrayDifferences, FittingAFullArray) {
    expectRows({
        {"Realloc(-1)", "VTIntArray", fittingOfAFullArray<VTIntArray>(), "stays"},
        {"Realloc(-1)", "VTIntIndexArray", fittingOfAFullArray<VTIntIndexArray>(), "stays"},
        {"Realloc(-1)", "VTFloatArray", fittingOfAFullArray<VTFloatArray>(), "stays"},
        {"Realloc(-1)", "VTRealArray", fittingOfAFullArray<VTRealArray>(), "stays"},
        {"Realloc(-1)", "VTUbyteArray", fittingOfAFullArray<VTUbyteArray>(), "stays"},
        {"Realloc(-1)", "VTVectorArray", fittingOfAFullArray<VTVectorArray>(), "moves"},
        {"Realloc(-1)", "VTVectorFloatArray", fittingOfAFullArray<VTVectorFloatArray>(), "stays"},
        {"Realloc(-1)", "VTMatrix4Array", fittingOfAFullArray<VTMatrix4Array>(), "stays"},
        {"Realloc(-1)", "VTStringArray", fittingOfAFullArray<VTStringArray>(), "stays"},
    });
}

// What a new slot holds, where that is settled at all.
TEST(VTArrayDifferences, NewSlots) {
    expectRows({
        {"new slot", "VTMatrix4Array",
         [] {
             VTMatrix4Array array;
             array.Alloc(1, -1, true);
             return equality(array[0] == VTMatrix4(0.0));
         },
         "equal"},
        {"new slot", "VTStringArray",
         [] {
             VTStringArray array;
             array.Alloc(1, -1, true);
             return std::string(array[0].IsNull() ? "null" : "a text");
         },
         "null"},
    });
}

TEST(VTArrayDifferences, SettingAllItemsWithoutABuffer) {
    expectRows({
        {"SetAllItems", "VTIntArray", [] { return checksUntil(9, [] { VTIntArray().SetAllItems(1); }); }, ""},
        {"SetAllItems", "VTFloatArray", [] { return checksUntil(9, [] { VTFloatArray().SetAllItems(1); }); },
         "m_pfData"},
        {"SetAllItems", "VTRealArray", [] { return checksUntil(9, [] { VTRealArray().SetAllItems(1); }); }, "m_pfData"},
        {"SetAllItems", "VTUbyteArray", [] { return checksUntil(9, [] { VTUbyteArray().SetAllItems(1); }); }, ""},
        {"SetAllItems", "VTVectorArray",
         [] { return checksUntil(9, [] { VTVectorArray().SetAllItems(VT_ZERO_VEC); }); }, ""},
        {"SetAllItems", "VTVectorFloatArray",
         [] { return checksUntil(9, [] { VTVectorFloatArray().SetAllItems(VTVectorFloat(0, 0, 0)); }); }, ""},
        {"SetAllItems", "VTMatrix4Array",
         [] { return checksUntil(9, [] { VTMatrix4Array().SetAllItems(VTMatrix4()); }); }, ""},
        {"SetAllItems", "VTStringArray", [] { return checksUntil(9, [] { VTStringArray().SetAllItems(L""); }); }, ""},
    });
}

template <typename Array>
std::function<std::string()> reverseWithoutABuffer() {
    return [] { return checksUntil(9, [] { Array().Reverse(); }); };
}

TEST(VTArrayDifferences, ReversingWithoutABuffer) {
    expectRows({
        {"Reverse", "VTIntArray", reverseWithoutABuffer<VTIntArray>(), "m_piData"},
        {"Reverse", "VTIntIndexArray", reverseWithoutABuffer<VTIntIndexArray>(), "m_piData"},
        {"Reverse", "VTFloatArray", reverseWithoutABuffer<VTFloatArray>(), "m_pfData"},
        {"Reverse", "VTRealArray", reverseWithoutABuffer<VTRealArray>(), "m_pfData"},
        {"Reverse", "VTUbyteArray", reverseWithoutABuffer<VTUbyteArray>(), "m_pubData"},
        {"Reverse", "VTVectorArray", reverseWithoutABuffer<VTVectorArray>(), ""},
        {"Reverse", "VTVectorFloatArray", reverseWithoutABuffer<VTVectorFloatArray>(), "m_pData"},
        {"Reverse", "VTMatrix4Array", reverseWithoutABuffer<VTMatrix4Array>(), "m_pData"},
    });
}

template <typename Array, typename Source>
std::function<std::string()> copyFromNothing() {
    return [] { return checksUntil(9, [] { Array().CopyData(static_cast<const Source*>(nullptr), 0, 0); }); };
}

TEST(VTArrayDifferences, CopyingNothingFromNowhere) {
    expectRows({
        {"CopyData", "VTIntArray", copyFromNothing<VTIntArray, int>(), "pData"},
        {"CopyData", "VTFloatArray", copyFromNothing<VTFloatArray, float>(), "pData"},
        {"CopyData", "VTRealArray", copyFromNothing<VTRealArray, double>(), "pData"},
        {"CopyData of floats", "VTRealArray", copyFromNothing<VTRealArray, float>(), "pData"},
        {"CopyData", "VTUbyteArray", copyFromNothing<VTUbyteArray, unsigned char>(), ""},
        {"CopyData", "VTVectorArray", copyFromNothing<VTVectorArray, VTVector>(), "pData"},
        {"CopyData of floats", "VTVectorArray", copyFromNothing<VTVectorArray, float>(), "pfData"},
        {"CopyData of doubles", "VTVectorArray", copyFromNothing<VTVectorArray, double>(), "pfData"},
        {"CopyData", "VTVectorFloatArray", copyFromNothing<VTVectorFloatArray, VTVectorFloat>(), "pData"},
        {"CopyData of floats", "VTVectorFloatArray", copyFromNothing<VTVectorFloatArray, float>(), "pfData"},
        {"CopyData of doubles", "VTVectorFloatArray", copyFromNothing<VTVectorFloatArray, double>(), "pfData"},
        {"CopyData", "VTMatrix4Array", copyFromNothing<VTMatrix4Array, VTMatrix4>(), "pData"},
        {"CopyData", "VTStringArray", copyFromNothing<VTStringArray, VTString>(), "pData"},
    });
}

// Items that differ in their last digits.
TEST(VTArrayDifferences, ComparingWhatIsNearlyEqual) {
    const float fFloat = std::nextafter(5.0f, 6.0f);
    const double fDouble = std::nextafter(5.0, 6.0);
    const VTVector vector(5, 5, 5);
    const VTVector nearVector(5, 5, fDouble);
    const VTVectorFloat vectorFloat(5, 5, 5);
    const VTVectorFloat nearVectorFloat(5, 5, fFloat);
    const VTMatrix4 matrix(5.0);
    VTMatrix4 nearMatrix(5.0);
    nearMatrix.v[15] = fDouble;
    expectRows({
        {"operator==", "VTFloatArray", [&] { return equality(with<VTFloatArray>(5) == with<VTFloatArray>(fFloat)); },
         "equal"},
        {"operator==", "VTRealArray", [&] { return equality(with<VTRealArray>(5) == with<VTRealArray>(fDouble)); },
         "equal"},
        {"operator== with the tolerance of floats", "VTRealArray",
         [&] { return equality(with<VTRealArray>(5) == with<VTRealArray>(fFloat)); }, "different"},
        {"operator==", "VTVectorArray",
         [&] { return equality(with<VTVectorArray>(vector) == with<VTVectorArray>(nearVector)); }, "different"},
        {"operator==", "VTVectorFloatArray",
         [&] { return equality(with<VTVectorFloatArray>(vectorFloat) == with<VTVectorFloatArray>(nearVectorFloat)); },
         "different"},
        {"operator==", "VTMatrix4Array",
         [&] { return equality(with<VTMatrix4Array>(matrix) == with<VTMatrix4Array>(nearMatrix)); }, "different"},
        {"Find", "VTFloatArray", [&] { return number(with<VTFloatArray>(5).Find(fFloat)); }, "0"},
        {"Find", "VTRealArray", [&] { return number(with<VTRealArray>(5).Find(fDouble)); }, "0"},
        {"Find exactly", "VTVectorArray", [&] { return number(with<VTVectorArray>(vector).Find(nearVector, true)); },
         "-1"},
        {"Find", "VTVectorArray", [&] { return number(with<VTVectorArray>(vector).Find(nearVector, false)); }, "0"},
        {"Find", "VTMatrix4Array", [&] { return number(with<VTMatrix4Array>(matrix).Find(nearMatrix)); }, "-1"},
    });
}

// 2 items in 10000 slots; an index of slots needs at least 40000 bytes.
template <typename Array>
std::function<std::string()> sizeOfTheSortedIndex() {
    return [] {
        const Roomy<Array> array({2, 1}, 10000);
        std::unique_ptr<int[]> piIndices;
        if constexpr (requires { array.GetSortedIndex(false); }) {
            piIndices.reset(array.GetSortedIndex(false));
        } else {
            piIndices.reset(array.GetSortedIndex(nullptr));
        }
        return std::string(malloc_usable_size(piIndices.get()) < 40000 ? "items" : "slots");
    };
}

TEST(VTArrayDifferences, PlacesOfASortedIndex) {
    expectRows({
        {"GetSortedIndex", "VTIntArray", sizeOfTheSortedIndex<VTIntArray>(), "items"},
        {"GetSortedIndex", "VTIntIndexArray", sizeOfTheSortedIndex<VTIntIndexArray>(), "items"},
        {"GetSortedIndex", "VTFloatArray", sizeOfTheSortedIndex<VTFloatArray>(), "slots"},
        {"GetSortedIndex", "VTRealArray", sizeOfTheSortedIndex<VTRealArray>(), "slots"},
        {"GetSortedIndex", "VTVectorArray", sizeOfTheSortedIndex<VTVectorArray>(), "slots"},
        {"GetSortedIndex", "VTStringArray", sizeOfTheSortedIndex<VTStringArray>(), "slots"},
    });
}

TEST(VTArrayDifferences, SortedWithoutABuffer) {
    expectRows({
        {"IsSorted", "VTIntArray", [] { return checksUntil(9, [] { VTIntArray().IsSorted(); }); }, ""},
        {"IsSorted", "VTFloatArray", [] { return checksUntil(9, [] { VTFloatArray().IsSorted(); }); }, ""},
        {"IsSorted", "VTRealArray", [] { return checksUntil(9, [] { VTRealArray().IsSorted(); }); }, ""},
        {"IsSorted", "VTResultIDArray", [] { return checksUntil(9, [] { VTResultIDArray().IsSorted(); }); }, ""},
        {"IsSorted", "VTStringArray", [] { return checksUntil(9, [] { VTStringArray().IsSorted(); }); }, "m_psData"},
    });
}

template <typename Array>
std::string extremes(const Array& array) {
    using Item = typename Traits<Array>::Item;
    Item min = 0;
    Item max = 0;
    return array.FindMinMax(&min, &max, 0, -1, true) ? number(min) + " to " + number(max) : "none";
}

// Seeds show where all items lie beyond them.
TEST(VTArrayDifferences, SeedsOfFindMinMax) {
    const int iLeast = std::numeric_limits<int>::min();
    expectRows({
        {"FindMinMax", "VTIntArray", [=] { return extremes(with<VTIntArray>(iLeast)); }, "-2147483648 to -2147483646"},
        {"FindMinMax", "VTFloatArray", [] { return extremes(with<VTFloatArray>(2e38f)); },
         number(1e30f) + " to " + number(2e38f)},
        {"FindMinMax", "VTRealArray", [] { return extremes(with<VTRealArray>(1e100)); },
         "1.0000000150474662e+30 to 1e+100"},
    });
}

// An item at the limit, and a NaN: undefined for a sum, defined for the extremes.
TEST(VTArrayDifferences, WhatCountsAsUndefined) {
    const float fNaN = std::numeric_limits<float>::quiet_NaN();
    const float fLimit = VT_UNDEFINED_FLOAT_LIMIT;
    const double fRealLimit = VT_UNDEFINED_DOUBLE_LIMIT;
    const VTVector nan(fNaN, 1, 1);
    const VTVector limit(fRealLimit, 1, 1);
    const auto sum = [](double fSum, double fNone) { return std::string(fSum == fNone ? "undefined" : "defined"); };
    expectRows({
        {"Sum of the limit", "VTFloatArray",
         [=] { return sum(with<VTFloatArray>(fLimit).Sum(0, -1, true), VT_UNDEFINED_FLOAT); }, "undefined"},
        {"Sum of the limit", "VTRealArray",
         [=] { return sum(with<VTRealArray>(fRealLimit).Sum(0, -1, true), VT_UNDEFINED_DOUBLE); }, "undefined"},
        {"Sum of the limit", "VTVectorArray",
         [=] { return sum(with<VTVectorArray>(limit).Sum(0, -1, true).x, VT_UNDEFINED_DOUBLE); }, "defined"},
        {"Sum of a NaN", "VTFloatArray",
         [=] { return sum(with<VTFloatArray>(fNaN).Sum(0, -1, true), VT_UNDEFINED_FLOAT); }, "undefined"},
        {"Sum of a NaN", "VTRealArray",
         [=] { return sum(with<VTRealArray>(fNaN).Sum(0, -1, true), VT_UNDEFINED_DOUBLE); }, "undefined"},
        {"Sum of a NaN", "VTVectorArray",
         [=] { return sum(with<VTVectorArray>(nan).Sum(0, -1, true).x, VT_UNDEFINED_DOUBLE); }, "defined"},
        {"FindMinMax of the limit", "VTFloatArray", [=] { return extremes(with<VTFloatArray>(1, fLimit)); },
         "1 to " + number(fLimit)},
        {"FindMinMax of the limit", "VTRealArray", [=] { return extremes(with<VTRealArray>(1, fRealLimit)); },
         "1 to " + number(fRealLimit)},
        {"FindUndefined of the limit", "VTVectorArray",
         [=] { return number(with<VTVectorArray>(limit).FindUndefined(0)); }, "-1"},
        {"Offset of the limit", "VTFloatArray",
         [=] {
             VTFloatArray array = with<VTFloatArray>(fLimit);
             array.Offset(-fLimit, true);
             return number(array[0]);
         },
         number(fLimit)},
        {"Offset of the limit", "VTVectorArray",
         [=] {
             VTVectorArray array = with<VTVectorArray>(limit);
             array.Offset(-fRealLimit, 0, 0, true);
             return number(array[0].x);
         },
         "0"},
    });
}

// -0 plus 0 is 0, -0 times 1 is -0: a neutral offset shows whether anything was done.
TEST(VTArrayDifferences, NeutralOffsets) {
    const auto signOf = [](double fValue) { return std::string(std::signbit(fValue) ? "untouched" : "added"); };
    expectRows({
        {"Offset by 0", "VTFloatArray",
         [=] {
             VTFloatArray array = with<VTFloatArray>(-0.0f);
             array.Offset(0.0f, false);
             return signOf(array[0]);
         },
         "untouched"},
        {"Offset by 0", "VTRealArray",
         [=] {
             VTRealArray array = with<VTRealArray>(-0.0);
             array.Offset(0.0, false);
             return signOf(array[0]);
         },
         "untouched"},
        {"Offset by 0", "VTVectorArray",
         [=] {
             VTVectorArray array = with<VTVectorArray>(VTVector(-0.0, 1, 1));
             array.Offset(0, 0, 0, false);
             return signOf(array[0].x);
         },
         "added"},
    });
}

TEST(VTArrayDifferences, AveragesOfUndefinedItems) {
    expectRows({
        {"ComputeAverage", "VTIntArray",
         [] { return number(with<VTIntArray>(VT_UNDEFINED_INT).ComputeAverage(0, -1)); }, "2147483648"},
        {"ComputeAverage", "VTFloatArray",
         [] { return number(with<VTFloatArray>(VT_UNDEFINED_FLOAT).ComputeAverage(0, -1)); },
         number(VT_UNDEFINED_FLOAT)},
        {"ComputeAverage of two", "VTRealArray",
         [] { return number(with<VTRealArray>(VT_UNDEFINED_DOUBLE, VT_UNDEFINED_DOUBLE).ComputeAverage(0, -1)); },
         "inf"},
    });
}

// Duplicates go from b, a, b in 9 slots.
TEST(VTArrayDifferences, RoomAfterRemovingDuplicates) {
    expectRows({
        {"RemoveDuplicates", "VTIntArray",
         [] {
             Roomy<VTIntArray> array({2, 1, 2}, 9);
             array.RemoveDuplicates(false);
             return number(array.GetNumAllocated());
         },
         "3"},
        {"RemoveDuplicates", "VTStringArray",
         [] {
             Roomy<VTStringArray> array({2, 1, 2}, 9);
             array.RemoveDuplicates(false);
             return number(array.GetNumAllocated());
         },
         "9"},
    });
}

TEST(VTArrayDifferences, FlagOfAddingAnArrayThatIsThere) {
    expectRows({
        {"AddUnique of an array", "VTIntArray",
         [] {
             bool bAdded = true;
             VTIntArray().AddUnique(VTIntArray(), &bAdded);
             return std::string(bAdded ? "left" : "cleared");
         },
         "cleared"},
        {"AddUnique of an array", "VTResultIDArray",
         [] {
             bool bAdded = true;
             VTResultIDArray().AddUnique(VTResultIDArray(), &bAdded);
             return std::string(bAdded ? "left" : "cleared");
         },
         "left"},
        {"AddUnique of one", "VTResultIDArray",
         [] {
             bool bAdded = true;
             VTResultIDArray array;
             array.AddGrow(VTResultID(1, 1));
             array.AddUnique(VTResultID(1, 1), &bAdded);
             return std::string(bAdded ? "left" : "cleared");
         },
         "cleared"},
    });
}

TEST(VTArrayDifferences, ChecksOfTheCompositesBeforeThoseOfTheirLists) {
    const auto sources = [](const std::function<void()>& call) {
        AssertRecorder recorder;
        call();
        const auto failed = recorder.take();
        return failed.empty() ? "none" : failed.front().file.substr(failed.front().file.find("VTO"));
    };
    expectRows({
        {"Alloc(0)", "VTPartInstanceIDArray",
         [&] { return sources([] { VTPartInstanceIDArray().Alloc(0, -1, true); }); }, "VTOArrayPartInstanceID"},
        {"Alloc(0)", "VTResultIDArray", [&] { return sources([] { VTResultIDArray().Alloc(0, -1, true); }); },
         "VTOArrayInt"},
        {"SetNumItems(-1)", "VTPartInstanceIDArray",
         [&] { return sources([] { VTPartInstanceIDArray().SetNumItems(-1); }); }, "VTOArrayPartInstanceID"},
        {"SetNumItems(-1)", "VTResultIDArray", [&] { return sources([] { VTResultIDArray().SetNumItems(-1); }); },
         "VTOArrayBase"},
    });
}

// One more than 80 slots of which 8 are in use: how many slots are taken.
TEST(VTArrayDifferences, GrowthStepFollowsTheCapacityOrTheCount) {
    expectRows({
        {"growth", "VTIntArray",
         [] {
             VTIntArray array;
             array.Alloc(80, -1, false);
             array.SetNumItems(8);
             array.SetAtGrow(80, 1);
             return number(array.GetNumAllocated() - 80);
         },
         "10"},
        {"growth", "VTOArray",
         [] {
             VTOArray<int*, int*> array;
             array.SetSize(80, -1);
             array.SetSize(8, -1);
             array.SetSize(81, -1);
             int** ppBuffer = &array[0];
             int nRoom = 81;
             while (array.SetSize(nRoom + 1, -1) && &array[0] == ppBuffer) {
                 ++nRoom;
             }
             return number(nRoom - 80);
         },
         "4"},
    });
}

} // namespace
