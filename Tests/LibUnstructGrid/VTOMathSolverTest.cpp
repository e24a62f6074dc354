#include "LibUnstructGrid/VTOMathSolver.h"

#include "Tests/LibUnstructGrid/VectorSupport.h"

#include <algorithm>

using orvtest::near;
using orvtest::PortableRandom;

namespace {

TEST(SecondDegreeEquation, GivesTheLargerRootFirst) {
    struct Row {
        double a, b, c;
        double larger, smaller;
    };
    const Row rows[] = {{1, -5, 6, 3, 2}, {-1, 5, -6, 3, 2}, {1, 2, 1, -1, -1}, {1, 0, -4, 2, -2},
                        {1, 0, 1, 0, 0},  {2, 3, 5, 0, 0},   {1, 0, 0, 0, 0},   {-2, 2, 4, 2, -1}};
    for (const Row& row : rows) {
        double one = 77;
        double two = 77;
        VT2ndDegEq(row.a, row.b, row.c, &one, &two);
        EXPECT_EQ(one, row.larger);
        EXPECT_EQ(two, row.smaller);
    }
}

TEST(SecondDegreeEquation, NeedsBothPointersAndAnA) {
    double root = 77;
    VT2ndDegEq(1, -5, 6, &root, nullptr);
    VT2ndDegEq(1, -5, 6, nullptr, &root);
    EXPECT_EQ(root, 77);
    double other = 77;
    VT2ndDegEq(0, 2, 4, &root, &other);
    EXPECT_FALSE(std::isfinite(root) && std::isfinite(other)) << "a = 0 is not looked at";
}

// (2 1; 1 2) has 3 along (1, 1) and 1 along (-1, 1).
TEST(Eigen2D, GivesValuesAndVectors) {
    double e1 = 77;
    double e2 = 77;
    VTVector v1(7, 7, 7);
    VTVector v2(7, 7, 7);
    VTEigen2D(2, 1, 1, 2, &e1, &e2, &v1, &v2);
    EXPECT_EQ(e1, 3);
    EXPECT_EQ(e2, 1);
    const double half = std::sqrt(0.5);
    EXPECT_TRUE(near(v1, VTVector(half, half, 0), 1e-15));
    EXPECT_TRUE(near(v2, VTVector(-half, half, 0), 1e-15));
}

TEST(Eigen2D, DiagonalMatrixHasItsVectorsInAFixedOrder) {
    for (const auto& [a, d] : {std::pair(5.0, 2.0), {2.0, 5.0}, {3.0, 3.0}}) {
        double e1 = 77;
        double e2 = 77;
        VTVector v1;
        VTVector v2;
        VTEigen2D(a, 0, 0, d, &e1, &e2, &v1, &v2);
        EXPECT_EQ(e1, std::max(a, d));
        EXPECT_EQ(e2, std::min(a, d));
        EXPECT_EQ(v1, VT_YAXIS_VEC) << "also where 5 lies along x";
        EXPECT_EQ(v2, VT_XAXIS_VEC);
    }
}

// The upper triangle (1 2; 0 3): 3 along (1, 1) by the first row, and c = 0 makes the second (1, 0). The lower one
// (1 0; 2 3): b = 0 makes the first (0, 1), and the second row gives (1 - 3) / 2 = -1 for the value 1.
TEST(Eigen2D, EachVectorHasItsOwnZeroTest) {
    double e1 = 77;
    double e2 = 77;
    VTVector v1;
    VTVector v2;
    const double half = std::sqrt(0.5);
    VTEigen2D(1, 2, 0, 3, &e1, &e2, &v1, &v2);
    EXPECT_TRUE(near(v1, VTVector(half, half, 0), 1e-15));
    EXPECT_EQ(v2, VT_XAXIS_VEC);
    VTEigen2D(1, 0, 2, 3, &e1, &e2, &v1, &v2);
    EXPECT_EQ(v1, VT_YAXIS_VEC);
    EXPECT_TRUE(near(v2, VTVector(-half, half, 0), 1e-15));
    // Below 1e-60 counts as 0.
    VTEigen2D(5, 1e-61, 1e-61, 2, &e1, &e2, &v1, &v2);
    EXPECT_EQ(v1, VT_YAXIS_VEC);
    EXPECT_EQ(v2, VT_XAXIS_VEC);
}

TEST(Eigen2D, NeedsBothPointersOfAPair) {
    double e1 = 77;
    double e2 = 77;
    VTVector v(7, 7, 7);
    VTEigen2D(2, 1, 1, 2, &e1, nullptr, &v, &v);
    VTEigen2D(2, 1, 1, 2, nullptr, &e2, &v, &v);
    EXPECT_EQ(e1, 77);
    EXPECT_EQ(e2, 77);
    VTEigen2D(2, 1, 1, 2, &e1, &e2, &v, nullptr);
    VTEigen2D(2, 1, 1, 2, &e1, &e2, nullptr, &v);
    EXPECT_EQ(e1, 3);
    EXPECT_EQ(e2, 1);
    EXPECT_EQ(v, VTVector(7, 7, 7));
}

// A rotation has no real values.
TEST(Eigen2D, ComplexValuesComeOutAsZero) {
    double e1 = 77;
    double e2 = 77;
    VTEigen2D(0, -1, 1, 0, &e1, &e2, nullptr, nullptr);
    EXPECT_EQ(e1, 0);
    EXPECT_EQ(e2, 0);
}

TEST(Eigen2D, SymmetricMatricesProperty) {
    PortableRandom random(91);
    for (int i = 0; i < 200; ++i) {
        const double a = random.real(-5, 5);
        const double b = random.real(0.1, 5);
        const double d = random.real(-5, 5);
        double e[2];
        VTVector v[2];
        VTEigen2D(a, b, b, d, &e[0], &e[1], &v[0], &v[1]);
        ASSERT_GE(e[0], e[1]);
        for (int k = 0; k < 2; ++k) {
            ASSERT_NEAR(v[k].Length(), 1, 1e-14);
            ASSERT_TRUE(near(VTVector(a * v[k].x + b * v[k].y, b * v[k].x + d * v[k].y, 0), e[k] * v[k], 1e-11));
        }
    }
}

TEST(Matrix3x3, CopiesAndGivesSignedMinors) {
    const double m[3][3] = {{2, 0, 1}, {1, 3, 2}, {1, 1, 4}};
    double copy[3][3] = {};
    VTCopy3x3(m, copy);
    EXPECT_TRUE(std::equal(&m[0][0], &m[0][0] + 9, &copy[0][0]));
    double c[3][3] = {};
    VTCofactor3x3(m, c);
    const double expected[3][3] = {{10, -2, -2}, {1, 7, -2}, {-3, -3, 6}};
    EXPECT_TRUE(std::equal(&expected[0][0], &expected[0][0] + 9, &c[0][0]));
}

// M - 2 I = (0 0 0; 0 1 1; 0 1 3) for the value 2. Its only cofactor is C[0][0] = 2: v[0] = 1, and the largest entry
// elsewhere is A[2][2] = 3, which gives v[1] = C[0][1] / C[0][0] = 0 and v[2] = 0.
TEST(EigenVector3x3, ByHand) {
    const double m[3][3] = {{2, 0, 0}, {0, 3, 1}, {0, 1, 5}};
    double v[3] = {7, 7, 7};
    EXPECT_TRUE(VTEigenVector3x3(m, 2, v));
    EXPECT_EQ(v[0], 1);
    EXPECT_EQ(v[1], 0);
    EXPECT_EQ(v[2], 0);
}

// M - 1 I is all ones but for a diagonal of 1, that is of rank 1: every cofactor is 0.
TEST(EigenVector3x3, RepeatedValueFails) {
    const double m[3][3] = {{2, 1, 1}, {1, 2, 1}, {1, 1, 2}};
    double v[3] = {7, 7, 7};
    EXPECT_FALSE(VTEigenVector3x3(m, 1, v));
    EXPECT_EQ(v[0], 7);
    // The simple value 4: A = (-2 1 1; 1 -2 1; 1 1 -2), all cofactors 3, the first of equals taken: v[0] = 1. Of rows
    // and columns 1 and 2 the largest is A[1][1] = -2, so v[2] = C[0][2] / C[0][0] = 1 and v[1] = (-1 - 1) / -2 = 1.
    EXPECT_TRUE(VTEigenVector3x3(m, 4, v));
    EXPECT_EQ(v[0], 1);
    EXPECT_EQ(v[1], 1);
    EXPECT_EQ(v[2], 1);
}

// Not symmetric, so that rows and columns cannot be mistaken: M - 0 I with M (1, 2, 3) = 0. Rows (2 -1 0) (3 0 -1)
// (1 1 -1). Cofactor rows: (1 2 3), (-1 -2 -3), (1 2 3); the largest, the first 3, is C[0][2]. So v[2] = 1; in rows
// 1, 2 and columns 0, 1 the largest is A[1][0] = 3; k = 1: v[1] = C[0][1] / C[0][2] = 2/3, v[0] = (1 - 0) / 3.
TEST(EigenVector3x3, TakesTheFirstLargestCofactor) {
    const double m[3][3] = {{2, -1, 0}, {3, 0, -1}, {1, 1, -1}};
    double v[3] = {7, 7, 7};
    EXPECT_TRUE(VTEigenVector3x3(m, 0, v));
    EXPECT_EQ(v[2], 1);
    EXPECT_EQ(v[1], 2.0 / 3.0);
    EXPECT_EQ(v[0], 1.0 / 3.0);
}

// A = M - 1 I = (1 1 0; 1 1 0; 0 0 6): its cofactors 6, -6, -6 and 6 are equal in magnitude. The first of them makes
// v[0] the 1; by the last one it would be v[1], and the vector point the other way.
TEST(EigenVector3x3, FirstOfEqualCofactorsSettlesTheSense) {
    const double m[3][3] = {{2, 1, 0}, {1, 2, 0}, {0, 0, 7}};
    double v[3] = {7, 7, 7};
    EXPECT_TRUE(VTEigenVector3x3(m, 1, v));
    EXPECT_EQ(v[0], 1);
    EXPECT_EQ(v[1], -1);
    EXPECT_EQ(v[2], 0);
}

// A cofactor of 1e-60 or more and nothing left in the other rows and columns cannot be, but for overflow; a limit it
// is.
TEST(EigenVector3x3, LimitIsThatOfTheCofactors) {
    double m[3][3] = {{0, 0, 0}, {0, 0.9e-30, 0}, {0, 0, 1e-30}};
    double v[3] = {7, 7, 7};
    EXPECT_FALSE(VTEigenVector3x3(m, 0, v)) << "0.9e-60";
    m[1][1] = 1.1e-30;
    EXPECT_TRUE(VTEigenVector3x3(m, 0, v));
    EXPECT_EQ(v[0], 1);
}

} // namespace
