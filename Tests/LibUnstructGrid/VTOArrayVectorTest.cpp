#include "LibUnstructGrid/VTOArrayVector.h"

#include "Tests/LibUnstructGrid/PortableRandom.h"
#include "Tests/LibUnstructGrid/VTOArrayTestSupport.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <malloc.h>
#include <memory>
#include <tuple>

namespace {

using namespace vtarraytest;
using orvtest::AssertRecorder;
using orvtest::assertsUntil;
using orvtest::FailedAssert;
using orvtest::failedIn;
using orvtest::PortableRandom;
using Numbers = std::vector<int>;

const std::string unit = "LibUnstructGrid/VTOArrayVector";
const double fNaN = std::numeric_limits<double>::quiet_NaN();
const VTVector halfUndefined(1, 2, VT_UNDEFINED_DOUBLE);

std::vector<FailedAssert> failed(std::vector<std::string> expressions) {
    return failedIn(unit, std::move(expressions));
}

VTVectorArray made(const std::vector<VTVector>& list) {
    VTVectorArray array;
    if (!list.empty()) {
        array.CopyData(list.data(), static_cast<int>(list.size()), 0);
    }
    return array;
}

void expectItems(const VTVectorArray& array, const std::vector<VTVector>& expected) {
    ASSERT_EQ(array.GetNumItems(), static_cast<int>(expected.size()));
    for (int i = 0; i < array.GetNumItems(); ++i) {
        const VTVector& wanted = expected[static_cast<std::size_t>(i)];
        EXPECT_TRUE(array[i] == wanted) << i << ": " << array[i].x << " " << array[i].y << " " << array[i].z;
    }
}

void expectNear(const VTVector& vector, double x, double y, double z) {
    EXPECT_NEAR(vector.x, x, 1e-12);
    EXPECT_NEAR(vector.y, y, 1e-12);
    EXPECT_NEAR(vector.z, z, 1e-12);
}

// x' = 2x + 10, y' = 3z + 20, z' = -y + 30.
VTMatrix4 testMatrix() {
    VTMatrix4 matrix(0.0);
    matrix.v[0] = 2;
    matrix.v[9] = 3;
    matrix.v[6] = -1;
    matrix.v[12] = 10;
    matrix.v[13] = 20;
    matrix.v[14] = 30;
    matrix.v[15] = 1;
    return matrix;
}

TEST(VTVectorArray, ComparesExactly) {
    const double fNext = std::nextafter(3.0, 4.0);
    EXPECT_TRUE(made({{1, 2, 3}}) == made({{1, 2, 3}}));
    EXPECT_FALSE(made({{1, 2, 3}}) == made({{1, 2, fNext}}));
}

TEST(VTVectorArray, MakeIsOneItemInAGrownArray) {
    const VTVectorArray array = VTVectorArray::Make(VTVector(1, 2, 3));
    expectItems(array, {{1, 2, 3}});
    EXPECT_EQ(array.GetNumAllocated(), 4);
}

// Every other member of the family leaves a full array in its place.
TEST(VTVectorArray, FittingAFullArrayMovesIt) {
    Full<VTVectorArray> array({1, 2, 3});
    const VTVector* pBuffer = array.GetDataPtr();
    array.Realloc(-1, 7, false);
    EXPECT_NE(array.GetDataPtr(), pBuffer);
    EXPECT_EQ(array.GetNumAllocated(), 3);
    EXPECT_EQ(array.GetGrowBy(), 7);
    EXPECT_EQ(numbers<VTVectorArray>(array), (Numbers{1, 2, 3}));
}

TEST(VTVectorArray, SetsThreeComponents) {
    Roomy<VTVectorArray> array({1, 2}, 3);
    array.Set(1, 4, 5, 6);
    EXPECT_TRUE(array[1] == VTVector(4, 5, 6));
    AssertRecorder recorder;
    array.Set(2, 4, 5, 6);
    EXPECT_EQ(recorder.take(), failed({"iIndex < m_iNumItems"}));
    EXPECT_EQ(assertsUntil(1, [&] { array.Set(-1, 4, 5, 6); }), failed({"iIndex >= 0"}));
}

TEST(VTVectorArray, GetRealPtrSeesTheComponentsInARow) {
    VTVectorArray array = made({{1, 2, 3}, {4, 5, 6}});
    const VTVectorArray& constArray = array;
    EXPECT_EQ(array.GetRealPtr(1)[2], 6);
    EXPECT_EQ(constArray.GetRealPtr(1)[0], 4);
    array.GetRealPtr(0)[1] = 7;
    EXPECT_TRUE(array[0] == VTVector(1, 7, 3));
    EXPECT_EQ(assertsUntil(1, [&] { array.GetRealPtr(2); }), failed({"iIndex >= 0 && iIndex < m_iNumItems"}));
    EXPECT_EQ(assertsUntil(1, [&] { constArray.GetRealPtr(-1); }), failed({"iIndex >= 0 && iIndex < m_iNumItems"}));
}

TEST(VTVectorArray, CopyDataTakesTriples) {
    const float afTriples[] = {1, 2, 3, 4, 5, 6};
    const double adTriples[] = {0.1, 0.2, 0.3};
    VTVectorArray array;
    array.CopyData(afTriples, 2, 0);
    expectItems(array, {{1, 2, 3}, {4, 5, 6}});
    EXPECT_EQ(array.GetNumAllocated(), 2);
    array.CopyData(adTriples, 1, 2);
    expectItems(array, {{1, 2, 3}, {4, 5, 6}, {0.1, 0.2, 0.3}});
    EXPECT_EQ(array.GetNumAllocated(), 3);
    array.CopyData(adTriples, 1, 0);
    EXPECT_EQ(array.GetNumItems(), 3);
    EXPECT_TRUE(array[0] == VTVector(0.1, 0.2, 0.3));
}

TEST(VTVectorArray, CopyDataChecksPointerCountAndPlace) {
    VTVectorArray array;
    const auto triples = failed({"pfData", "iNumItems >= 0", "iStartDstIndex >= 0"});
    EXPECT_EQ(assertsUntil(3, [&] { array.CopyData(static_cast<const float*>(nullptr), -1, -1); }), triples);
    EXPECT_EQ(assertsUntil(3, [&] { array.CopyData(static_cast<const double*>(nullptr), -1, -1); }), triples);
}

TEST(VTVectorArray, CopyComponentWritesOneOfThree) {
    VTFloatArray afValues;
    for (float f : {7.0f, 8.0f, 9.0f}) {
        afValues.AddGrow(f);
    }
    VTVectorArray array = made({{1, 2, 3}, {4, 5, 6}, {1, 1, 1}});
    array.CopyComponent(0, afValues, 1, 0, 2);
    array.CopyComponent(1, afValues, -1, 1, 1);
    array.CopyComponent(2, afValues, 2, 0, 0);
    expectItems(array, {{9, 2, 7}, {4, 8, 8}, {1, 9, 1}});
}

TEST(VTVectorArray, CopyComponentIsCutToTheItems) {
    VTFloatArray afValues;
    for (float f : {7.0f, 8.0f, 9.0f}) {
        afValues.AddGrow(f);
    }
    AssertRecorder recorder;
    VTVectorArray array = made({{1, 1, 1}, {1, 1, 1}});
    array.CopyComponent(0, afValues, 3, 1, 0);
    array.CopyComponent(1, afValues, -1, 0, 0);
    EXPECT_TRUE(recorder.take().empty());
    expectItems(array, {{1, 7, 1}, {7, 8, 1}});
    EXPECT_EQ(array.GetNumAllocated(), 2);
}

TEST(VTVectorArray, CopyComponentChecksItsArguments) {
    VTFloatArray afValues;
    afValues.AddGrow(7);
    VTVectorArray array = made({{1, 1, 1}, {1, 1, 1}});
    const auto check = [&](int iComponent, int iCount, int iDst, int iSrc, const std::string& expected) {
        EXPECT_EQ(assertsUntil(1, [&] { array.CopyComponent(iComponent, afValues, iCount, iDst, iSrc); }),
                  failed({expected}));
    };
    check(3, 1, 0, 0, "iComponent == 0 || iComponent == 1 || iComponent == 2");
    check(-1, 1, 0, 0, "iComponent == 0 || iComponent == 1 || iComponent == 2");
    check(0, -2, 0, 0, "iNumItemsToCopy >= -1");
    check(0, 2, 0, 0, "iNumItemsToCopy <= afValues.GetNumItems() - iStartSrcIndex");
    check(0, 1, -1, 0, "iStartDstIndex >= 0");
    check(0, 1, 2, 0, "iStartDstIndex < m_iNumItems");
    check(0, 1, 0, -1, "iStartSrcIndex >= 0");
    check(0, 0, 0, 1, "iStartSrcIndex < afValues.GetNumItems()");
    // Only a negative count lets a place fail both of its checks.
    VTVectorArray negative;
    assertsUntil(0, [&] { negative.SetNumItems(-5); });
    EXPECT_EQ(assertsUntil(2, [&] { negative.CopyComponent(0, afValues, 1, -1, 0); }),
              failed({"iStartDstIndex >= 0", "iStartDstIndex < m_iNumItems"}));
    EXPECT_EQ(assertsUntil(2, [&] { array.CopyComponent(0, VTFloatArray(), -1, 0, 0); }),
              failed({"iStartSrcIndex < afValues.GetNumItems()", "pSrcData"}));
    EXPECT_EQ(assertsUntil(2, [&] { array.CopyComponent(0, afValues, 2, 0, -1); }),
              failed({"iStartSrcIndex >= 0", "iNumItemsToCopy >= 0 && iNumItemsToCopy <= afValues.GetNumItems()"}));
}

TEST(VTVectorArray, DeleteByValueIsExactAndKeepsTheOrder) {
    Full<VTVectorArray> array({3, 1, 3, 2, 3});
    EXPECT_TRUE(array.DeleteByValue(array.Get(0)));
    EXPECT_EQ(numbers<VTVectorArray>(array), (Numbers{1, 2}));
    EXPECT_FALSE(array.DeleteByValue(item<VTVectorArray>(3)));
    EXPECT_TRUE(array.DeleteByValue(Full<VTVectorArray>({2, 9})));
    EXPECT_EQ(numbers<VTVectorArray>(array), (Numbers{1}));
    VTVector close = item<VTVectorArray>(1);
    close.z = std::nextafter(close.z, 9.0);
    EXPECT_FALSE(array.DeleteByValue(close));
}

TEST(VTVectorArray, FindIsExactOrTolerant) {
    const VTVectorArray array = made({{1, 2, 3}, {4, 5, 6}, {1, 2, 3}});
    const VTVector close(1, 2, 3 * (1 + 1e-13));
    EXPECT_EQ(array.Find(VTVector(1, 2, 3), true, 0), 0);
    EXPECT_EQ(array.Find(VTVector(1, 2, 3), true, 1), 2);
    EXPECT_EQ(array.Find(VTVector(4, 5, 6), true, 2), -1);
    EXPECT_EQ(array.Find(close, true, 0), -1);
    EXPECT_EQ(array.Find(close, false, 0), 0);
    EXPECT_EQ(array.Find(close, false, 1), 2);
    EXPECT_EQ(array.Find(VTVector(1, 2, 3 * (1 + 1e-11)), false, 0), -1);
    EXPECT_EQ(VTVectorArray().Find(VTVector(0, 0, 0), true, 0), -1);
}

TEST(VTVectorArray, FindUndefinedTakesAnyComponentAboveTheLimit) {
    const VTVectorArray array =
        made({{1, VT_UNDEFINED_DOUBLE_LIMIT, 3}, {fNaN, 1, 1}, halfUndefined, {1, 1, 1}, VT_UNDEFINED_VECTOR});
    EXPECT_EQ(array.FindUndefined(0), 2);
    EXPECT_EQ(array.FindUndefined(3), 4);
    EXPECT_EQ(array.FindUndefined(5), -1);
    EXPECT_EQ(VTVectorArray().FindUndefined(0), -1);
}

TEST(VTVectorArray, GetSortedIndexTakesTheComponentsInAnOrder) {
    const VTVectorArray array = made({{2, 1, 5}, {1, 2, 5}, {1, 1, 6}, {2, 1, 4}});
    const auto indices = [&](const int* piSortOrder) {
        const std::unique_ptr<int[]> piIndices(array.GetSortedIndex(piSortOrder));
        return Numbers(piIndices.get(), piIndices.get() + 4);
    };
    EXPECT_EQ(indices(nullptr), (Numbers{2, 1, 3, 0}));
    const int aiXYZ[] = {0, 1, 2};
    EXPECT_EQ(indices(aiXYZ), (Numbers{2, 1, 3, 0}));
    const int aiZYX[] = {2, 1, 0};
    EXPECT_EQ(indices(aiZYX), (Numbers{3, 0, 1, 2}));
    const int aiYXZ[] = {1, 0, 2};
    EXPECT_EQ(indices(aiYXZ), (Numbers{2, 3, 0, 1}));
}

TEST(VTVectorArray, GetSortedIndexHasAPlaceForEachSlot) {
    AssertRecorder recorder;
    Roomy<VTVectorArray> array({3, 1}, 1000);
    const std::unique_ptr<int[]> piIndices(array.GetSortedIndex(nullptr));
    EXPECT_GE(malloc_usable_size(piIndices.get()), 1000 * sizeof(int));
    EXPECT_EQ(Numbers(piIndices.get(), piIndices.get() + 2), (Numbers{1, 0}));
    EXPECT_TRUE(recorder.take().empty());
    EXPECT_EQ(VTVectorArray().GetSortedIndex(nullptr), nullptr);
    EXPECT_EQ(recorder.take(), failed({"m_pData"}));
}

TEST(VTVectorArray, OffsetAndScaleSkipUndefinedItemsWhenAsked) {
    using Change = void (*)(VTVectorArray&, bool);
    const struct {
        const char* name;
        Change change;
        VTVector expected;
        VTVector expectedOfUndefined;
    } rows[] = {
        {"Offset",
         [](VTVectorArray& a, bool b) { a.Offset(10, 20, 30, b); },
         {11, 22, 33},
         {11, 22, VT_UNDEFINED_DOUBLE}},
        {"Scale by component",
         [](VTVectorArray& a, bool b) { a.Scale(10, 20, 0.5, b); },
         {10, 40, 1.5},
         {10, 40, VT_UNDEFINED_DOUBLE / 2}},
        {"Scale", [](VTVectorArray& a, bool b) { a.Scale(0.5, b); }, {0.5, 1, 1.5}, {0.5, 1, VT_UNDEFINED_DOUBLE / 2}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        VTVectorArray all = made({{1, 2, 3}, halfUndefined});
        row.change(all, false);
        expectItems(all, {row.expected, row.expectedOfUndefined});
        VTVectorArray defined = made({{1, 2, 3}, halfUndefined});
        row.change(defined, true);
        expectItems(defined, {row.expected, halfUndefined});
    }
}

TEST(VTVectorArray, SumOfARange) {
    const VTVectorArray array = made({{1, 2, 3}, {10, 20, 30}, halfUndefined, {4, 5, 6}});
    EXPECT_TRUE(array.Sum(0, 2, true) == VTVector(11, 22, 33));
    EXPECT_TRUE(array.Sum(3, -1, true) == VTVector(4, 5, 6));
    EXPECT_TRUE(array.Sum(0, 0, true) == VT_ZERO_VEC);
    EXPECT_TRUE(array.Sum(0, -1, true) == VT_UNDEFINED_VECTOR);
    EXPECT_TRUE(array.Sum(2, 1, false) == halfUndefined);
    EXPECT_TRUE(VTVectorArray().Sum(7, 7, true) == VT_ZERO_VEC);
    EXPECT_TRUE(std::isnan(made({{fNaN, 1, 1}}).Sum(0, -1, true).x)); // A NaN is no undefined component.
    const auto start = failed({"iStartIndex >= 0 && iStartIndex < m_iNumItems"});
    EXPECT_EQ(assertsUntil(1, [&] { array.Sum(4, -1, false); }), start);
    EXPECT_EQ(assertsUntil(1, [&] { array.Sum(-1, -1, false); }), start);
}

TEST(VTVectorArray, ComputeAverageCountsUndefinedItemsAsNumbers) {
    const VTVectorArray array = made({{1, 2, 3}, {3, 4, 7}, {2, 2, 2}});
    expectNear(array.ComputeAverage(0, 2), 2, 3, 5);
    expectNear(array.ComputeAverage(1, -1), 2.5, 3, 4.5);
    EXPECT_TRUE(array.ComputeAverage(0, 0) == VT_ZERO_VEC);
    EXPECT_TRUE(VTVectorArray().ComputeAverage(0, -1) == VT_ZERO_VEC);
    EXPECT_TRUE(made({halfUndefined}).ComputeAverage(0, 1) == halfUndefined);
    const auto start = failed({"iStartIndex >= 0 && iStartIndex < m_iNumItems"});
    EXPECT_EQ(assertsUntil(1, [&] { array.ComputeAverage(3, 1); }), start);
    EXPECT_EQ(assertsUntil(1, [&] { array.ComputeAverage(-1, 1); }), start);
}

TEST(VTVectorArray, TransformsPointsAndVectors) {
    VTVectorArray points = made({{1, 2, 3}, {0, 0, 0}});
    points.TransformPoints(testMatrix(), 0, -1);
    expectItems(points, {{12, 29, 28}, {10, 20, 30}});
    VTVectorArray vectors = made({{1, 2, 3}, {0, 0, 0}});
    vectors.TransformVectors(testMatrix(), 0, -1);
    expectItems(vectors, {{2, 9, -2}, {0, 0, 0}});
}

TEST(VTVectorArray, TransformsARange) {
    for (int iCount : {-1, 0}) { // Anything below 1 means up to the last item.
        VTVectorArray points = made({{0, 0, 0}, {0, 0, 0}, {0, 0, 0}});
        points.TransformPoints(testMatrix(), 1, iCount);
        expectItems(points, {{0, 0, 0}, {10, 20, 30}, {10, 20, 30}});
        VTVectorArray vectors = made({{1, 0, 0}, {1, 0, 0}, {1, 0, 0}});
        vectors.TransformVectors(testMatrix(), 1, iCount);
        expectItems(vectors, {{1, 0, 0}, {2, 0, 0}, {2, 0, 0}});
    }
    VTVectorArray points = made({{0, 0, 0}, {0, 0, 0}, {0, 0, 0}});
    points.TransformPoints(testMatrix(), 1, 1);
    points.TransformVectors(testMatrix(), 2, 1);
    expectItems(points, {{0, 0, 0}, {10, 20, 30}, {0, 0, 0}});
    EXPECT_EQ(assertsUntil(1, [&] { points.TransformPoints(testMatrix(), 2, 2); }), failed({"iEndIdx < m_iNumItems"}));
    EXPECT_EQ(assertsUntil(1, [&] { points.TransformVectors(testMatrix(), 2, 2); }), failed({"iEndIdx < m_iNumItems"}));
    AssertRecorder recorder;
    VTVectorArray().TransformPoints(testMatrix(), 0, -1);
    EXPECT_TRUE(recorder.take().empty());
}

TEST(VTVectorArray, InterpolatesComponentByComponent) {
    VTVectorArray array = made({{9, 9, 9}});
    array.Interpolate(made({{0, 2, 4}}), made({{8, 2, 0}}), 0.25, false);
    expectItems(array, {{2, 2, 3}});
}

TEST(VTVectorArray, InterpolateMapsUndefinedItemsWhenAsked) {
    const VTVectorArray a = made({halfUndefined, {1, 1, 1}, {0, 0, 0}});
    const VTVectorArray b = made({{1, 1, 1}, halfUndefined, {2, 2, 2}});
    VTVectorArray array = made({{9, 9, 9}, {9, 9, 9}, {9, 9, 9}});
    array.Interpolate(a, b, 0.5, true);
    expectItems(array, {VT_UNDEFINED_VECTOR, VT_UNDEFINED_VECTOR, {1, 1, 1}});
    array.Interpolate(a, b, 1, false);
    EXPECT_TRUE(array[1] == halfUndefined);
}

TEST(VTVectorArray, InterpolateCanResize) {
    VTVectorArray array;
    array.Interpolate(made({{0, 0, 0}}), made({{2, 2, 2}}), 0.5, false, true);
    expectItems(array, {{1, 1, 1}});
    array.Interpolate(VTVectorArray(), VTVectorArray(), 0.5, false, true);
    EXPECT_EQ(array.GetDataPtr(), nullptr);
}

TEST(VTVectorArray, InterpolateChecksTheCounts) {
    VTVectorArray array = made({{1, 1, 1}, {1, 1, 1}});
    AssertRecorder recorder;
    array.Interpolate(made({{1, 1, 1}}), made({{1, 1, 1}}), 0, false);
    EXPECT_EQ(recorder.take(), failed({"iNumItems == GetNumItems()"}));
    array.Interpolate(made({{1, 1, 1}}), array, 0, false);
    EXPECT_EQ(recorder.take(),
              failed({"aValues0.GetNumItems() == aValues1.GetNumItems()", "iNumItems == GetNumItems()"}));
    VTVectorArray negative;
    negative.SetNumItems(-1);
    recorder.take();
    EXPECT_EQ(assertsUntil(1, [&] { array.Interpolate(negative, negative, 0, false); }), failed({"iNumItems >= 0"}));
}

TEST(VTVectorArray, ReverseLooksAtTheCountBeforeTheBuffer) {
    AssertRecorder recorder;
    VTVectorArray array;
    array.Reverse();
    EXPECT_TRUE(recorder.take().empty());
    array.SetNumItems(2);
    recorder.take();
    EXPECT_EQ(assertsUntil(1, [&] { array.Reverse(); }), failed({"m_pData"}));
}

TEST(VTVectorArray, AssignmentChecksOwnershipAndSelf) {
    Full<VTVectorArray> owner({1, 2});
    Shared<VTVectorArray> shared(&owner);
    const VTVectorArray& same = shared;
    EXPECT_EQ(assertsUntil(2, [&] { static_cast<VTVectorArray&>(shared) = same; }),
              failed({"!m_bSharedData", "this != &other"}));
}

TEST(VTVectorArray, TransformsMatchTheFormula) {
    PortableRandom random(1);
    VTMatrix4 matrix;
    for (double& fElement : matrix.v) {
        fElement = random.real(-1, 1);
    }
    std::vector<VTVector> list;
    for (int i = 0; i < 100; ++i) {
        list.emplace_back(random.real(-9, 9), random.real(-9, 9), random.real(-9, 9));
    }
    VTVectorArray array = made(list);
    array.TransformPoints(matrix, 0, -1);
    const double* m = matrix.v;
    for (int i = 0; i < 100; ++i) {
        const auto& [x, y, z] = std::tie(list[static_cast<std::size_t>(i)].x, list[static_cast<std::size_t>(i)].y,
                                         list[static_cast<std::size_t>(i)].z);
        expectNear(array[i], m[0] * x + m[4] * y + m[8] * z + m[12], m[1] * x + m[5] * y + m[9] * z + m[13],
                   m[2] * x + m[6] * y + m[10] * z + m[14]);
    }
}

} // namespace
