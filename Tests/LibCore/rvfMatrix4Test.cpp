#include "LibCore/rvfMatrix4.h"

#include <gtest/gtest.h>

using Matrix = rvf::Matrix4<double>;
using Vector = rvf::Vector3<double>;

namespace {

Matrix translation(double x, double y, double z) {
    Matrix matrix;
    matrix(0, 3) = x;
    matrix(1, 3) = y;
    matrix(2, 3) = z;
    return matrix;
}

/// A quarter turn about z: x goes to y, y goes to -x.
Matrix quarterTurn() {
    Matrix matrix;
    matrix(0, 0) = 0;
    matrix(0, 1) = -1;
    matrix(1, 0) = 1;
    matrix(1, 1) = 0;
    return matrix;
}

TEST(Matrix4, StartsAsTheIdentity) {
    const Matrix matrix;
    for (size_t row = 0; row < 4; ++row) {
        for (size_t column = 0; column < 4; ++column) {
            EXPECT_EQ(matrix(row, column), row == column ? 1.0 : 0.0);
        }
    }
    EXPECT_EQ(matrix.transformPoint({1, 2, 3}), Vector(1, 2, 3));
}

TEST(Matrix4, TranslationStandsInTheLastColumn) {
    Matrix matrix = translation(10, 20, 30);
    EXPECT_EQ(matrix.transformPoint({1, 2, 3}), Vector(11, 22, 33));
    EXPECT_EQ(matrix.transformVector({1, 2, 3}), Vector(1, 2, 3));
}

TEST(Matrix4, TransformsColumnVectors) {
    EXPECT_EQ(quarterTurn().transformPoint({1, 0, 0}), Vector(0, 1, 0));
    EXPECT_EQ(quarterTurn().transformVector({0, 1, 5}), Vector(-1, 0, 5));
}

TEST(Matrix4, ProductAppliesTheRightFactorFirst) {
    // (1, 0, 0) moved to (11, 0, 0) and turned is (0, 11, 0); turned to (0, 1, 0) and moved it is (10, 1, 0).
    Matrix move = translation(10, 0, 0);
    EXPECT_EQ((quarterTurn() * move).transformPoint({1, 0, 0}), Vector(0, 11, 0));
    EXPECT_EQ((move * quarterTurn()).transformPoint({1, 0, 0}), Vector(10, 1, 0));
}

TEST(Matrix4, ProductTakesAllFourRowsAndColumns) {
    // Element (row, column) is 4 row + column in both. Row 3 of the product at column 0 is
    // 12*0 + 13*4 + 14*8 + 15*12 = 344; row 0 at column 3 is 0*3 + 1*7 + 2*11 + 3*15 = 74.
    Matrix matrix;
    for (size_t i = 0; i < 16; ++i) {
        matrix(i / 4, i % 4) = double(i);
    }
    Matrix product = matrix * matrix;
    EXPECT_EQ(product(3, 0), 344.0);
    EXPECT_EQ(product(0, 3), 74.0);
}

TEST(Matrix4, LastRowIsLeftOutOfTransforms) {
    Matrix matrix;
    matrix(3, 0) = 5;
    matrix(3, 3) = 2;
    EXPECT_EQ(matrix.transformPoint({1, 2, 3}), Vector(1, 2, 3));
}

TEST(Matrix4, EqualityIsExact) {
    Matrix matrix;
    EXPECT_EQ(matrix, Matrix());
    matrix(2, 1) = 1e-300;
    EXPECT_NE(matrix, Matrix());
}

} // namespace
