#include "LibUnstructGrid/VTOLinAlgebraMatrix4.h"

#include "Tests/LibUnstructGrid/VectorSupport.h"
#include "Tests/Support/AssertStopper.h"

#include <limits>
#include <vector>

using orvtest::AssertRecorder;
using orvtest::assertsUntil;
using orvtest::countingMatrix;
using orvtest::failedIn;
using orvtest::matrixOf;
using orvtest::near;
using orvtest::PortableRandom;
using orvtest::randomVector;

namespace {

const std::string source = "LibUnstructGrid/VTOLinAlgebraMatrix4";

VTMatrix4 randomMatrix(PortableRandom& random) {
    VTMatrix4 m;
    for (double& element : m.v) {
        element = random.real(-3, 3);
    }
    return m;
}

VTMatrix4 identity() {
    VTMatrix4 m;
    m.LoadIdentity();
    return m;
}

TEST(Matrix4, ConstructorsFill) {
    EXPECT_EQ(VTMatrix4(), VTMatrix4(0.0));
    for (double element : VTMatrix4(2.5).v) {
        EXPECT_EQ(element, 2.5);
    }
    const VTMatrix4 copy(countingMatrix());
    EXPECT_EQ(copy.v[0], 1);
    EXPECT_EQ(copy.v[15], 16);
    EXPECT_EQ(sizeof(VTMatrix4), 16 * sizeof(double)) << "no virtual functions";
    for (double element : VT_UNDEFINED_MATRIX4.v) {
        EXPECT_EQ(element, std::numeric_limits<double>::max());
    }
}

TEST(Matrix4, AssignmentAssertsAnotherMatrix) {
    AssertRecorder recorder;
    VTMatrix4 m;
    m = countingMatrix();
    EXPECT_EQ(m, countingMatrix());
    m.Set(VTMatrix4(3.0));
    EXPECT_EQ(m, VTMatrix4(3.0));
    EXPECT_TRUE(recorder.take().empty());
    const VTMatrix4& same = m;
    m = same;
    EXPECT_EQ(recorder.take(), failedIn(source, {"v != m.v"}));
    m.Set(same);
    EXPECT_EQ(recorder.take(), failedIn(source, {"v != m.v"}));
    EXPECT_EQ(m, VTMatrix4(3.0));
}

TEST(Matrix4, IndexGivesAnArrayRow) {
    AssertRecorder recorder;
    VTMatrix4 m = countingMatrix();
    const VTMatrix4& constant = m;
    for (int i = 0; i < 4; ++i) {
        EXPECT_EQ(m[i], m.v + 4 * i);
        EXPECT_EQ(constant[i], m.v + 4 * i);
    }
    EXPECT_EQ(m[2][1], 10);
    EXPECT_EQ(~constant, m.v);
    EXPECT_TRUE(recorder.take().empty());
    for (int i : {-1, 4}) {
        EXPECT_EQ(m[i], m.v) << "row 0 after a failed check";
        EXPECT_EQ(recorder.take(), failedIn(source, {"i >= 0 && i < 4"}));
        EXPECT_EQ(constant[i], m.v);
        EXPECT_EQ(recorder.take(), failedIn(source, {"i >= 0 && i < 4"}));
    }
}

TEST(Matrix4, ElementwiseOperators) {
    const VTMatrix4 counting = countingMatrix();
    VTMatrix4 m = countingMatrix();
    EXPECT_EQ(&(m += counting), &m);
    EXPECT_EQ(m.v[15], 32);
    EXPECT_EQ(&(m -= VTMatrix4(1.0)), &m);
    EXPECT_EQ(m.v[0], 1);
    EXPECT_EQ(m.v[15], 31);
    EXPECT_EQ(&(m *= 2.0), &m);
    EXPECT_EQ(m.v[15], 62);
    EXPECT_EQ(&(m /= 4.0), &m);
    EXPECT_EQ(m.v[15], 15.5);
    EXPECT_EQ(+counting, counting);
    EXPECT_EQ((-counting).v[6], -7);
    EXPECT_EQ((counting + VTMatrix4(1.0)).v[6], 8);
    EXPECT_EQ((counting - VTMatrix4(1.0)).v[6], 6);
    EXPECT_EQ((counting * 3.0).v[6], 21);
    EXPECT_EQ((3.0 * counting).v[6], 21);
    EXPECT_EQ((counting / 2.0).v[6], 3.5);
}

TEST(Matrix4, DivisionByZeroIsAssertedAndDone) {
    AssertRecorder recorder;
    VTMatrix4 m(1.0);
    EXPECT_EQ((m / 0.0).v[3], std::numeric_limits<double>::infinity());
    EXPECT_EQ(recorder.take(), failedIn(source, {"fS != 0.0f"}));
    m /= 0.0;
    EXPECT_EQ(m.v[3], std::numeric_limits<double>::infinity());
    EXPECT_EQ(recorder.take(), failedIn(source, {"fS != 0.0f"}));
}

TEST(Matrix4, EqualityIsExact) {
    for (int i = 0; i < 16; ++i) {
        VTMatrix4 m = countingMatrix();
        m.v[i] = std::nextafter(m.v[i], 100);
        EXPECT_FALSE(m == countingMatrix());
        EXPECT_TRUE(m != countingMatrix());
        EXPECT_FALSE(VTMatrixEqual(m, countingMatrix(), true));
        EXPECT_TRUE(VTMatrixEqual(m, countingMatrix(), false));
        m.v[i] *= 1 + 1e-11;
        EXPECT_FALSE(VTMatrixEqual(m, countingMatrix(), false));
    }
    EXPECT_TRUE(countingMatrix() == countingMatrix());
    EXPECT_FALSE(countingMatrix() != countingMatrix());
}

TEST(Matrix4, FillsAndRecognisesTheIdentity) {
    VTMatrix4 m = countingMatrix();
    m.SetAllElements(7);
    EXPECT_EQ(m, VTMatrix4(7.0));
    m.SetZero();
    EXPECT_EQ(m, VTMatrix4(0.0));
    EXPECT_FALSE(m.IsIdentity());
    m.LoadIdentity();
    EXPECT_EQ(m, matrixOf({1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1}));
    EXPECT_TRUE(m.IsIdentity());
    for (int i = 0; i < 16; ++i) {
        const bool onDiagonal = i == 0 || i == 5 || i == 10 || i == 15;
        m.LoadIdentity();
        m.v[i] += onDiagonal ? 1e-13 : 1e-61;
        EXPECT_TRUE(m.IsIdentity()) << i;
        m.v[i] += onDiagonal ? 1e-11 : 1e-59;
        EXPECT_FALSE(m.IsIdentity()) << i;
    }
}

TEST(Matrix4, UndefinedIsToldByElementZero) {
    VTMatrix4 m;
    EXPECT_FALSE(m.IsUndefined());
    m.SetUndefined();
    EXPECT_EQ(m, VT_UNDEFINED_MATRIX4);
    EXPECT_TRUE(m.IsUndefined());
    m.LoadIdentity();
    m.v[0] = VT_UNDEFINED_DOUBLE;
    EXPECT_TRUE(m.IsUndefined());
    for (int i = 1; i < 16; ++i) {
        m.LoadIdentity();
        m.v[i] = VT_UNDEFINED_DOUBLE;
        EXPECT_FALSE(m.IsUndefined()) << i;
    }
    m.v[0] = 1e308;
    EXPECT_TRUE(m.IsUndefined()) << "not below the limit";
    m.v[0] = std::nan("");
    EXPECT_TRUE(m.IsUndefined());
    m.v[0] = std::nextafter(1e308, 0.0);
    EXPECT_FALSE(m.IsUndefined());
}

TEST(Matrix4, CrossesArraysInStorageOrder) {
    double in[16];
    for (int i = 0; i < 16; ++i) {
        in[i] = i + 1;
    }
    VTMatrix4 m;
    m.SetFromArray(in);
    EXPECT_EQ(m, countingMatrix());
    double out[16] = {};
    m.GetAsArray(out);
    EXPECT_TRUE(std::equal(in, in + 16, out));
    EXPECT_EQ(assertsUntil(1, [&] { m.SetFromArray(nullptr); }), failedIn(source, {"pfM"}));
    EXPECT_EQ(assertsUntil(1, [&] { m.GetAsArray(nullptr); }), failedIn(source, {"pfM"}));
}

// Row sums by hand: each of the first three elements of a row grows by d times its fourth.
TEST(Matrix4, TranslateActsAfterTheMatrix) {
    VTMatrix4 m = countingMatrix();
    m.Translate(10, 100, 1000);
    EXPECT_EQ(m, matrixOf({41, 402, 4003, 4, 85, 806, 8007, 8, 129, 1210, 12011, 12, 173, 1614, 16015, 16}));
    VTMatrix4 same = countingMatrix();
    same.Translate(VTVector(10, 100, 1000));
    EXPECT_EQ(same, m);

    VTMatrix4 affine = identity();
    affine.v[0] = 2;
    affine.Translate(1, 2, 3);
    EXPECT_EQ(affine, matrixOf({2, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 1, 2, 3, 1}));
    VTVector p(5, 0, 0);
    p.TransformPoint(affine);
    EXPECT_EQ(p, VTVector(11, 2, 3));
}

// v[12 + i] grows by dx v[i] + dy v[4 + i] + dz v[8 + i], w included: 13 + 1 + 50 + 900 and so on.
TEST(Matrix4, TranslatePostActsBeforeTheMatrix) {
    VTMatrix4 m = countingMatrix();
    m.TranslatePost(1, 10, 100);
    EXPECT_EQ(m, matrixOf({1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 964, 1076, 1188, 1300}));

    VTMatrix4 affine = identity();
    affine.v[0] = 2;
    affine.TranslatePost(1, 2, 3);
    VTVector p(5, 0, 0);
    p.TransformPoint(affine);
    EXPECT_EQ(p, VTVector(12, 2, 3));
}

TEST(Matrix4, ScaleActsAfterTheMatrix) {
    VTMatrix4 m = countingMatrix();
    m.Scale(10, 100, 1000);
    EXPECT_EQ(m, matrixOf({10, 200, 3000, 4, 50, 600, 7000, 8, 90, 1000, 11000, 12, 130, 1400, 15000, 16}));
}

// out[i][j] is the sum over k of a[k][j] b[i][k]. With a = 1..16 and b with rows (1, 0, 0, 0), (0, 1, 0, 0), ... but
// b[0] = (1, 10, 100, 1000): out[0][0] = 1 + 50 + 900 + 13000.
TEST(Matrix4, ProductAppliesTheSecondFactorFirst) {
    const VTMatrix4 a = countingMatrix();
    VTMatrix4 b = identity();
    b.v[1] = 10;
    b.v[2] = 100;
    b.v[3] = 1000;
    VTMatrix4 out;
    VTMatrixMultiply(a, b, &out);
    const VTMatrix4 expected = matrixOf({13951, 15062, 16173, 17284, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16});
    EXPECT_EQ(out, expected);
    EXPECT_EQ(a * b, expected);
    VTMatrix4 in = a;
    EXPECT_EQ(&(in *= b), &in);
    EXPECT_EQ(in, expected);
    EXPECT_EQ(assertsUntil(1, [&] { VTMatrixMultiply(a, b, nullptr); }), failedIn(source, {"pM"}));
}

TEST(Matrix4, ProductMayBeItsOwnTarget) {
    PortableRandom random(41);
    const VTMatrix4 a = randomMatrix(random);
    const VTMatrix4 b = randomMatrix(random);
    VTMatrix4 third;
    VTMatrixMultiply(a, b, &third);
    VTMatrix4 first = a;
    VTMatrixMultiply(first, b, &first);
    EXPECT_EQ(first, third);
    VTMatrix4 second = b;
    VTMatrixMultiply(a, second, &second);
    EXPECT_EQ(second, third);
    VTMatrixMultiply(a, a, &third);
    VTMatrix4 both = a;
    VTMatrixMultiply(both, both, &both);
    EXPECT_EQ(both, third);
}

TEST(Matrix4, ProductTransformsLikeOneAfterTheOther) {
    PortableRandom random(42);
    for (int i = 0; i < 100; ++i) {
        VTMatrix4 a = randomMatrix(random);
        VTMatrix4 b = randomMatrix(random);
        for (VTMatrix4* m : {&a, &b}) {
            m->v[3] = m->v[7] = m->v[11] = 0;
            m->v[15] = 1;
        }
        const VTVector p = randomVector(random, 5);
        VTVector one = p;
        one.TransformPoint(b);
        one.TransformPoint(a);
        VTVector other = p;
        other.TransformPoint(a * b);
        ASSERT_TRUE(near(one, other, 1e-11));
    }
}

TEST(Matrix4, CrossesAxes) {
    VTMatrix4 m(9.0);
    m.SetFromAxes(VTVector(1, 2, 3), VTVector(4, 5, 6), VTVector(7, 8, 9));
    EXPECT_EQ(m, matrixOf({1, 2, 3, 0, 4, 5, 6, 0, 7, 8, 9, 0, 0, 0, 0, 1}));
    VTVector x;
    VTVector y;
    VTVector z;
    countingMatrix().GetAsAxes(&x, &y, &z);
    EXPECT_EQ(x, VTVector(1, 2, 3));
    EXPECT_EQ(y, VTVector(5, 6, 7));
    EXPECT_EQ(z, VTVector(9, 10, 11));
    countingMatrix().GetAsAxes(nullptr, &x, nullptr);
    EXPECT_EQ(x, VTVector(5, 6, 7));
}

// Frame 1 is the global one, frame 2 is turned by a quarter about z: its x is the global y, its y the global -x. Rows
// are the axes of frame 2 in frame 1. What is (0, 1, 0) in frame 2 is the global -x.
TEST(Matrix4, CoordinateSystemTransformationTakesFrameTwoToFrameOne) {
    VTMatrix4 m(9.0);
    m.SetToCoordSysTransformation(VTVector(2, 0, 0), VTVector(0, 3, 0), VTVector(0, 4, 0), VTVector(-5, 0, 0));
    EXPECT_EQ(m, matrixOf({0, 1, 0, 0, -1, 0, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1}));
    VTVector components = VT_YAXIS_VEC;
    components.TransformVector(m);
    EXPECT_EQ(components, VT_NEG_XAXIS_VEC);
}

TEST(Matrix4, CoordinateSystemTransformationKeepsTheVectorItself) {
    PortableRandom random(43);
    for (int i = 0; i < 50; ++i) {
        const VTVector x1 = randomVector(random, 2);
        const VTVector y1 = x1 ^ randomVector(random, 2);
        const VTVector x2 = randomVector(random, 2);
        const VTVector y2 = x2 ^ randomVector(random, 2);
        VTMatrix4 m;
        m.SetToCoordSysTransformation(x1, y1, x2, y2);
        const VTVector one[] = {x1.GetNormalized(), y1.GetNormalized(), (x1 ^ y1).GetNormalized()};
        const VTVector two[] = {x2.GetNormalized(), y2.GetNormalized(), (x2 ^ y2).GetNormalized()};
        const VTVector v = randomVector(random, 5);
        VTVector components(v * two[0], v * two[1], v * two[2]);
        components.TransformVector(m);
        ASSERT_TRUE(near(components, VTVector(v * one[0], v * one[1], v * one[2]), 1e-12));
    }
}

TEST(Matrix4, SubMatrixIsReadByColumns) {
    const double block[] = {101, 102, 103, 201, 202, 203};
    VTMatrix4 m(0.0);
    // Two columns of three: array rows 1 and 2, elements 1 to 3.
    m.SetSubMatrix(block, 1, 1, 2, 3);
    EXPECT_EQ(m, matrixOf({0, 0, 0, 0, 0, 101, 102, 103, 0, 201, 202, 203, 0, 0, 0, 0}));
    double out[6] = {};
    m.GetSubMatrix(out, 1, 1, 2, 3);
    EXPECT_TRUE(std::equal(block, block + 6, out));
    m.SetSubMatrix(5.0, 0, 2, 4, 2);
    EXPECT_EQ(m, matrixOf({0, 0, 5, 5, 0, 101, 5, 5, 0, 201, 5, 5, 0, 0, 5, 5}));
    m.SetSubMatrix(block, 0, 0, 0, 0);
    EXPECT_EQ(m.v[0], 0) << "an empty block";
}

TEST(Matrix4, SubMatrixAssertsItsPlace) {
    double block[16] = {};
    VTMatrix4 m;
    const std::vector<std::string> place = {"(iOrigCol >= 0) && (iOrigCol < 4)", "(iOrigRow >= 0) && (iOrigRow < 4)",
                                            "(iOrigCol + iNumCols) <= 4", "(iOrigRow + iNumRows) <= 4"};
    std::vector<std::string> all = place;
    all.insert(all.begin(), "pfSub");
    const double* none = nullptr;
    EXPECT_EQ(assertsUntil(5, [&] { m.SetSubMatrix(none, 4, 4, 1, 1); }), failedIn(source, all));
    EXPECT_EQ(assertsUntil(5, [&] { m.GetSubMatrix(nullptr, 4, 4, 1, 1); }), failedIn(source, all));
    EXPECT_EQ(assertsUntil(4, [&] { m.SetSubMatrix(1.0, 4, 4, 1, 1); }), failedIn(source, place));
    // One at a time; an empty block touches nothing behind the failed check.
    EXPECT_EQ(assertsUntil(9, [&] { m.SetSubMatrix(block, -1, 0, 0, 0); }), failedIn(source, {place[0]}));
    EXPECT_EQ(assertsUntil(9, [&] { m.SetSubMatrix(block, 0, -1, 0, 0); }), failedIn(source, {place[1]}));
    EXPECT_EQ(assertsUntil(9, [&] { m.SetSubMatrix(block, 1, 0, 4, 0); }), failedIn(source, {place[2]}));
    EXPECT_EQ(assertsUntil(9, [&] { m.SetSubMatrix(block, 0, 1, 0, 4); }), failedIn(source, {place[3]}));
    EXPECT_EQ(assertsUntil(9, [&] { m.SetSubMatrix(1.0, 1, 0, 4, 0); }), failedIn(source, {place[2]}));
    EXPECT_EQ(assertsUntil(9, [&] { m.GetSubMatrix(block, 0, 1, 0, 4); }), failedIn(source, {place[3]}));
    EXPECT_EQ(assertsUntil(9, [&] { m.GetSubMatrix(block, 0, 0, 4, 4); }), failedIn(source, {}));
}

TEST(Matrix4, Transposes) {
    const VTMatrix4 expected = matrixOf({1, 5, 9, 13, 2, 6, 10, 14, 3, 7, 11, 15, 4, 8, 12, 16});
    EXPECT_EQ(countingMatrix().GetTransposed(), expected);
    VTMatrix4 m = countingMatrix();
    m.Transpose();
    EXPECT_EQ(m, expected);
}

TEST(Matrix4, DeterminantsOfSmallMatrices) {
    EXPECT_EQ(VTDet2x2(1, 2, 3, 4), -2);
    // Rows (2 0 1) (1 3 2) (1 1 4): 2 (12 - 2) - 0 + 1 (1 - 3).
    EXPECT_EQ(VTDet3x3(2, 0, 1, 1, 3, 2, 1, 1, 4), 18);
    EXPECT_EQ(identity().Determinant(), 1);
    EXPECT_EQ(countingMatrix().Determinant(), 0);
    // Upper triangle: the product of the diagonal. One exchange of rows: the sign.
    EXPECT_EQ(matrixOf({2, 9, 8, 7, 0, 3, 6, 5, 0, 0, 5, 4, 0, 0, 0, 7}).Determinant(), 210);
    EXPECT_EQ(matrixOf({0, 3, 6, 5, 2, 9, 8, 7, 0, 0, 5, 4, 0, 0, 0, 7}).Determinant(), -210);
}

// By elimination with pivots, where the library expands by minors.
double eliminated(VTMatrix4 m) {
    double determinant = 1;
    for (int k = 0; k < 4; ++k) {
        int pivot = k;
        for (int i = k; i < 4; ++i) {
            pivot = std::fabs(m[i][k]) > std::fabs(m[pivot][k]) ? i : pivot;
        }
        if (pivot != k) {
            std::swap_ranges(m[k], m[k] + 4, m[pivot]);
            determinant = -determinant;
        }
        determinant *= m[k][k];
        for (int i = k + 1; i < 4; ++i) {
            const double factor = m[i][k] / m[k][k];
            for (int j = k; j < 4; ++j) {
                m[i][j] -= factor * m[k][j];
            }
        }
    }
    return determinant;
}

TEST(Matrix4, DeterminantAdjointAndInverseAgree) {
    PortableRandom random(44);
    for (int i = 0; i < 200; ++i) {
        const VTMatrix4 m = randomMatrix(random);
        const double determinant = eliminated(m);
        ASSERT_NEAR(m.Determinant(), determinant, 1e-10);
        VTMatrix4 adjoint;
        VTMatrixAdjoint(m, &adjoint);
        ASSERT_TRUE(near(m * adjoint, determinant * identity(), 1e-10));
        ASSERT_TRUE(near(adjoint * m, determinant * identity(), 1e-10));
        VTMatrix4 inverse;
        ASSERT_TRUE(VTMatrixInverse(m, &inverse));
        ASSERT_TRUE(near(inverse, adjoint / determinant, 1e-9 / std::fabs(determinant)));
        VTMatrix4 inPlace = m;
        ASSERT_TRUE(inPlace.Invert());
        ASSERT_EQ(inPlace, inverse);
        ASSERT_EQ(m.GetInverse(), inverse);
        inPlace.Set(m);
        VTMatrixAdjoint(inPlace, &inPlace);
        ASSERT_EQ(inPlace, adjoint);
    }
}

// Cofactors of a matrix with the rows (1 2 0 0) (3 4 0 0) (0 0 5 0) (0 0 0 7): -2 for the block, times 35 where alone.
TEST(Matrix4, AdjointByHand) {
    VTMatrix4 adjoint;
    VTMatrixAdjoint(matrixOf({1, 2, 0, 0, 3, 4, 0, 0, 0, 0, 5, 0, 0, 0, 0, 7}), &adjoint);
    EXPECT_EQ(adjoint, matrixOf({140, -70, 0, 0, -105, 35, 0, 0, 0, 0, -14, 0, 0, 0, 0, -10}));
    EXPECT_EQ(assertsUntil(1, [&] { VTMatrixAdjoint(adjoint, nullptr); }), failedIn(source, {"pOut"}));
}

TEST(Matrix4, SingularMatricesHaveNoInverse) {
    VTMatrix4 out = countingMatrix();
    EXPECT_FALSE(VTMatrixInverse(VTMatrix4(0.0), &out));
    EXPECT_EQ(out, countingMatrix()) << "untouched";
    EXPECT_FALSE(out.Invert());
    EXPECT_EQ(out, countingMatrix());
    EXPECT_EQ(countingMatrix().GetInverse(), VTMatrix4(0.0));
    EXPECT_EQ(assertsUntil(1, [&] { VTMatrixInverse(out, nullptr); }), failedIn(source, {"pOut"}));
    // The limit of 1e-60 is one of the determinant, which says nothing about the condition of the matrix.
    VTMatrix4 small = identity();
    small.Scale(0.9e-20, 1e-20, 1e-20);
    EXPECT_FALSE(VTMatrixInverse(small, &out));
    small.LoadIdentity();
    small.Scale(1.1e-20, 1e-20, 1e-20);
    EXPECT_TRUE(VTMatrixInverse(small, &out));
    EXPECT_NEAR(out.v[5], 1e20, 1e6);
    // A negative determinant is no obstacle.
    small.LoadIdentity();
    small.Scale(-2, 1, 1);
    EXPECT_TRUE(small.Invert());
    EXPECT_EQ(small.v[0], -0.5);
}

} // namespace
