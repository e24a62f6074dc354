#include "LibUnstructGrid/VTOArrayVectorFloat.h"

#include "Tests/LibUnstructGrid/VTOArrayTestSupport.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

using namespace vtarraytest;
using orvtest::AssertRecorder;
using orvtest::assertsUntil;
using orvtest::FailedAssert;
using orvtest::failedIn;

const std::string unit = "LibUnstructGrid/VTOArrayVectorFloat";

std::vector<FailedAssert> failed(std::vector<std::string> expressions) {
    return failedIn(unit, std::move(expressions));
}

void expectItem(const VTVectorFloatArray& array, int iIndex, float x, float y, float z) {
    EXPECT_EQ(array[iIndex].x, x) << iIndex;
    EXPECT_EQ(array[iIndex].y, y) << iIndex;
    EXPECT_EQ(array[iIndex].z, z) << iIndex;
}

VTVectorArray doubles() {
    VTVectorArray array;
    array.AddGrow(VTVector(0.1, 2, 3));
    array.AddGrow(VTVector(4, VT_UNDEFINED_DOUBLE, -VT_UNDEFINED_DOUBLE));
    return array;
}

TEST(VTVectorFloatArray, ComparesEveryComponentExactly) {
    VTVectorFloatArray a;
    a.Alloc(1, -1, true);
    a.Set(0, 1, 2, 3);
    for (int i = 0; i < 3; ++i) {
        VTVectorFloatArray b(a);
        EXPECT_TRUE(a == b);
        float& fComponent = i == 0 ? b[0].x : i == 1 ? b[0].y : b[0].z;
        fComponent = std::nextafter(fComponent, 9.0f);
        EXPECT_FALSE(a == b);
    }
}

TEST(VTVectorFloatArray, SetsThreeComponents) {
    Roomy<VTVectorFloatArray> array({1, 2}, 3);
    array.Set(1, 4, 5, 6);
    expectItem(array, 1, 4, 5, 6);
    AssertRecorder recorder;
    array.Set(2, 4, 5, 6);
    EXPECT_EQ(recorder.take(), failed({"iIndex < m_iNumItems"}));
    EXPECT_EQ(assertsUntil(1, [&] { array.Set(-1, 4, 5, 6); }), failed({"iIndex >= 0"}));
}

TEST(VTVectorFloatArray, ConvertsDoublesAndDoesNotMapUndefinedOnes) {
    const float fInfinity = std::numeric_limits<float>::infinity();
    const VTVectorFloatArray array(doubles());
    ASSERT_EQ(array.GetNumItems(), 2);
    EXPECT_EQ(array.GetNumAllocated(), 2);
    expectItem(array, 0, 0.1f, 2, 3);
    expectItem(array, 1, 4, fInfinity, -fInfinity);
    AssertRecorder recorder;
    EXPECT_EQ(VTVectorFloatArray(VTVectorArray()).GetDataPtr(), nullptr);
    EXPECT_TRUE(recorder.take().empty());
}

TEST(VTVectorFloatArray, CopyDataTakesARangeOfDoubles) {
    VTVectorFloatArray array;
    array.CopyData(doubles(), 1, 1, 0);
    EXPECT_EQ(array.GetNumItems(), 2);
    EXPECT_EQ(array.GetNumAllocated(), 2);
    expectItem(array, 1, 0.1f, 2, 3);
    array.CopyData(doubles(), -1, 0, 0);
    expectItem(array, 0, 0.1f, 2, 3);
    array.CopyData(doubles(), 1, 0, 1);
    EXPECT_EQ(array.GetNumItems(), 2);
    EXPECT_EQ(array[0].x, 4);
}

TEST(VTVectorFloatArray, CopyDataOfDoublesChecksBothRanges) {
    const VTVectorArray source = doubles();
    VTVectorFloatArray array;
    const auto check = [&](int iCount, int iDst, int iSrc, const std::string& expected) {
        EXPECT_EQ(assertsUntil(1, [&] { array.CopyData(source, iCount, iDst, iSrc); }), failed({expected}));
    };
    check(-2, 0, 0, "iNumItemsToCopy >= -1");
    check(3, 0, 0, "iNumItemsToCopy <= aValues.GetNumItems() - iStartSrcIndex");
    check(1, -1, 0, "iStartDstIndex >= 0");
    check(1, 0, -1, "iStartSrcIndex >= 0");
    check(0, 0, 2, "iStartSrcIndex < aValues.GetNumItems()");
    EXPECT_EQ(assertsUntil(2, [&] { array.CopyData(VTVectorArray(), -1, 0, 0); }),
              failed({"iStartSrcIndex < aValues.GetNumItems()", "pSrcData"}));
    EXPECT_EQ(assertsUntil(2, [&] { array.CopyData(source, 3, 0, -1); }),
              failed({"iStartSrcIndex >= 0", "iNumItemsToCopy >= 0 && iNumItemsToCopy <= aValues.GetNumItems()"}));
}

TEST(VTVectorFloatArray, CopyDataTakesTriples) {
    const float afTriples[] = {1, 2, 3, 4, 5, 6};
    const double adTriples[] = {0.1, 0.2, 0.3};
    VTVectorFloatArray array;
    array.CopyData(afTriples, 2, 0);
    array.CopyData(adTriples, 1, 2);
    ASSERT_EQ(array.GetNumItems(), 3);
    EXPECT_EQ(array.GetNumAllocated(), 3);
    expectItem(array, 0, 1, 2, 3);
    expectItem(array, 1, 4, 5, 6);
    expectItem(array, 2, 0.1f, 0.2f, 0.3f);
    array.CopyData(afTriples, 0, 0);
    EXPECT_EQ(array.GetNumItems(), 3);
}

TEST(VTVectorFloatArray, CopyDataChecksPointerCountAndPlace) {
    VTVectorFloatArray array;
    const auto triples = failed({"pfData", "iNumItems >= 0", "iStartDstIndex >= 0"});
    EXPECT_EQ(assertsUntil(3, [&] { array.CopyData(static_cast<const float*>(nullptr), -1, -1); }), triples);
    EXPECT_EQ(assertsUntil(3, [&] { array.CopyData(static_cast<const double*>(nullptr), -1, -1); }), triples);
}

// 16777217 is not a float: narrowed to 16777216 before it is added, it leaves the 1 alone; the sum in double would be
// 16777218.
TEST(VTVectorFloatArray, TransformsInFloat) {
    VTMatrix4 matrix;
    matrix.LoadIdentity();
    matrix.v[12] = 16777217;
    matrix.v[13] = 2;
    Full<VTVectorFloatArray> array({1, 1, 1, 1});
    array.TransformPoints(matrix, 1, 2);
    expectItem(array, 0, 1, 1.25f, 1.5f);
    expectItem(array, 1, 16777216, 3.25f, 1.5f);
    expectItem(array, 2, 16777216, 3.25f, 1.5f);
    expectItem(array, 3, 1, 1.25f, 1.5f);
    array.TransformPoints(matrix, 3, 0); // Below 1: up to the last item.
    expectItem(array, 3, 16777216, 3.25f, 1.5f);
    EXPECT_EQ(assertsUntil(1, [&] { array.TransformPoints(matrix, 3, 2); }), failed({"iEndIdx < m_iNumItems"}));
}

TEST(VTVectorFloatArray, ReverseChecksForABufferFirst) {
    AssertRecorder recorder;
    VTVectorFloatArray().Reverse();
    EXPECT_EQ(recorder.take(), failed({"m_pData"}));
}

TEST(VTVectorFloatArray, AssignmentChecksOwnershipAndSelf) {
    Full<VTVectorFloatArray> owner({1, 2});
    Shared<VTVectorFloatArray> shared(&owner);
    const VTVectorFloatArray& same = shared;
    EXPECT_EQ(assertsUntil(2, [&] { static_cast<VTVectorFloatArray&>(shared) = same; }),
              failed({"!m_bSharedData", "this != &other"}));
}

} // namespace
