#include "LibUnstructGrid/VTOLinAlgebraVector4.h"

#include "Tests/LibUnstructGrid/VectorSupport.h"

using orvtest::countingMatrix;

namespace {

TEST(Vector4, HoldsFourDoublesAndComparesExactly) {
    VTVector4 v(1, 2, 3, 4);
    EXPECT_EQ(v.x, 1);
    EXPECT_EQ(v.y, 2);
    EXPECT_EQ(v.z, 3);
    EXPECT_EQ(v.w, 4);
    v.Set(5, 6, 7, 8);
    EXPECT_TRUE(v == VTVector4(5, 6, 7, 8));
    EXPECT_FALSE(v != VTVector4(5, 6, 7, 8));
    const double next = std::nextafter(1.0, 2.0);
    for (const VTVector4& other : {VTVector4(5 * next, 6, 7, 8), VTVector4(5, 6 * next, 7, 8),
                                   VTVector4(5, 6, 7 * next, 8), VTVector4(5, 6, 7, 8 * next)}) {
        EXPECT_FALSE(v == other);
        EXPECT_TRUE(v != other);
    }
}

TEST(Vector4, TransformsAPointWhateverItsW) {
    VTVector4 v(1, 10, 100, 1000);
    v.TransformPoint(countingMatrix());
    EXPECT_EQ(v, VTVector4(964, 1076, 1188, 4 + 80 + 1200 + 16));
}

TEST(VectorFloat, HoldsThreeFloats) {
    VTVectorFloat v(1, 2, 3);
    v.Set(2, 3, 6);
    EXPECT_EQ(sizeof(v), 3 * sizeof(float));
    EXPECT_EQ(v.Length(), 7.0f);
    VTVectorFloat other(0, 0, 0);
    other = v;
    EXPECT_EQ(other.x, 2.0f);
    EXPECT_EQ(other.y, 3.0f);
    EXPECT_EQ(other.z, 6.0f);
}

TEST(VectorFloat, TransformsAPoint) {
    VTVectorFloat v(1, 10, 100);
    v.TransformPoint(countingMatrix());
    EXPECT_EQ(v.x, 964.0f);
    EXPECT_EQ(v.y, 1076.0f);
    EXPECT_EQ(v.z, 1188.0f);
}

// 2^24 + 1 is no float: it narrows to 2^24, and 2^24 + 1 as a sum stays 2^24. In double the first would come out as
// 2^24 + 1 - 2^24 = 1 and the second as 1.
TEST(VectorFloat, NarrowsTheMatrixAndSumsInFloat) {
    VTMatrix4 m(0.0);
    m.v[0] = 16777217.0;
    m.v[12] = -16777216.0;
    m.v[1] = 16777216.0;
    m.v[5] = 1.0;
    m.v[13] = -16777216.0;
    VTVectorFloat v(1, 1, 0);
    v.TransformPoint(m);
    EXPECT_EQ(v.x, 0.0f);
    EXPECT_EQ(v.y, 0.0f);
}

} // namespace
