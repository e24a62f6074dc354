#include "LibCore/rvfBoundingBox.h"

#include "Tests/Support/AssertRecorder.h"

#include <gtest/gtest.h>

#include <limits>

using orvtest::AssertRecorder;
using orvtest::FailedAssert;
using rvf::BoundingBox;
using Vec3d = rvf::Vector3<double>;
using Vec3f = rvf::Vector3<float>;

namespace rvf {

static void PrintTo(const Vector3<double>& v, std::ostream* out) {
    *out << '(' << v.x() << ", " << v.y() << ", " << v.z() << ')';
}

} // namespace rvf

namespace {

const double LARGEST = std::numeric_limits<double>::max();
const double NOT_A_NUMBER = std::numeric_limits<double>::quiet_NaN();

std::vector<FailedAssert> failed(std::initializer_list<const char*> expressions) {
    std::vector<FailedAssert> list;
    for (const char* expression : expressions) {
        list.push_back({"LibCore/rvfBoundingBox", expression, std::nullopt});
    }
    return list;
}

void expectReset(const BoundingBox& box) {
    EXPECT_EQ(box.min(), Vec3d(LARGEST, LARGEST, LARGEST));
    EXPECT_EQ(box.max(), Vec3d(-LARGEST, -LARGEST, -LARGEST));
    EXPECT_FALSE(box.isValid());
}

TEST(BoundingBox, NewAndResetBoxesAreInvalid) {
    expectReset(BoundingBox());
    BoundingBox box(Vec3d(0, 0, 0), Vec3d(1, 1, 1));
    box.reset();
    expectReset(box);
}

TEST(BoundingBox, ComesFromVectors) {
    const BoundingBox fromDoubles(Vec3d(1, 2, 3), Vec3d(4, 5, 6));
    EXPECT_EQ(fromDoubles.min(), Vec3d(1, 2, 3));
    EXPECT_EQ(fromDoubles.max(), Vec3d(4, 5, 6));
    const BoundingBox fromFloats(Vec3f(0.1f, 2, 3), Vec3f(4, 5, 6));
    EXPECT_EQ(fromFloats.min(), Vec3d(static_cast<double>(0.1f), 2, 3));
    EXPECT_EQ(fromFloats.max(), Vec3d(4, 5, 6));
    const BoundingBox copy(fromDoubles);
    EXPECT_EQ(copy.min(), Vec3d(1, 2, 3));
    EXPECT_EQ(copy.max(), Vec3d(4, 5, 6));
}

TEST(BoundingBox, IsValidLooksAtEachAxis) {
    EXPECT_TRUE(BoundingBox(Vec3d(0, 0, 0), Vec3d(0, 0, 0)).isValid());
    EXPECT_FALSE(BoundingBox(Vec3d(1, 0, 0), Vec3d(0, 0, 0)).isValid());
    EXPECT_FALSE(BoundingBox(Vec3d(0, 1, 0), Vec3d(0, 0, 0)).isValid());
    EXPECT_FALSE(BoundingBox(Vec3d(0, 0, 1), Vec3d(0, 0, 0)).isValid());
    for (int axis = 0; axis < 3; ++axis) {
        Vec3d corner(0, 0, 0);
        corner[static_cast<size_t>(axis)] = NOT_A_NUMBER;
        EXPECT_FALSE(BoundingBox(corner, Vec3d(1, 1, 1)).isValid()) << axis;
        EXPECT_FALSE(BoundingBox(Vec3d(-1, -1, -1), corner).isValid()) << axis;
    }
}

TEST(BoundingBox, AddsPoints) {
    BoundingBox box;
    box.add(Vec3d(1, 2, 3));
    EXPECT_EQ(box.min(), Vec3d(1, 2, 3));
    EXPECT_EQ(box.max(), Vec3d(1, 2, 3));
    EXPECT_TRUE(box.isValid());
    box.add(Vec3d(0, 5, 3));
    EXPECT_EQ(box.min(), Vec3d(0, 2, 3));
    EXPECT_EQ(box.max(), Vec3d(1, 5, 3));
    box.add(Vec3f(0.5f, 2.5f, -0.1f));
    EXPECT_EQ(box.min(), Vec3d(0, 2, static_cast<double>(-0.1f)));
    EXPECT_EQ(box.max(), Vec3d(1, 5, 3));
    box.add(Vec3d(NOT_A_NUMBER, 9, NOT_A_NUMBER));
    EXPECT_EQ(box.min(), Vec3d(0, 2, static_cast<double>(-0.1f)));
    EXPECT_EQ(box.max(), Vec3d(1, 9, 3));
}

TEST(BoundingBox, AddsArrays) {
    rvf::Array<Vec3d> doubles(2);
    doubles[0] = Vec3d(1, -1, 0);
    doubles[1] = Vec3d(-1, 1, 2);
    BoundingBox box;
    box.add(doubles);
    EXPECT_EQ(box.min(), Vec3d(-1, -1, 0));
    EXPECT_EQ(box.max(), Vec3d(1, 1, 2));
    rvf::Array<Vec3f> floats(2);
    floats[0] = Vec3f(0, 0, -3);
    floats[1] = Vec3f(4, 0, 0);
    box.add(floats);
    EXPECT_EQ(box.min(), Vec3d(-1, -1, -3));
    EXPECT_EQ(box.max(), Vec3d(4, 1, 2));
    BoundingBox untouched;
    untouched.add(rvf::Array<Vec3d>());
    untouched.add(rvf::Array<Vec3f>());
    expectReset(untouched);
}

TEST(BoundingBox, AddsBoxes) {
    BoundingBox box(Vec3d(0, 0, 0), Vec3d(1, 1, 1));
    box.add(BoundingBox());
    EXPECT_EQ(box.min(), Vec3d(0, 0, 0));
    EXPECT_EQ(box.max(), Vec3d(1, 1, 1));
    // Invalid on one axis only, and still ignored.
    box.add(BoundingBox(Vec3d(-5, -5, 1), Vec3d(5, 5, 0)));
    EXPECT_EQ(box.max(), Vec3d(1, 1, 1));
    box.add(BoundingBox(Vec3d(-1, 0.5, 0.5), Vec3d(0.5, 2, 0.5)));
    EXPECT_EQ(box.min(), Vec3d(-1, 0, 0));
    EXPECT_EQ(box.max(), Vec3d(1, 2, 1));
}

TEST(BoundingBox, MeasuresItself) {
    const BoundingBox box(Vec3d(1, 2, 3), Vec3d(3, 5, 9));
    EXPECT_EQ(box.center(), Vec3d(2, 3.5, 6));
    EXPECT_EQ(box.extent(), Vec3d(2, 3, 6));
    // The diagonal of 2, 3 and 6 is 7.
    EXPECT_EQ(box.radius(), 3.5);
}

TEST(BoundingBox, MeasuringAnInvalidBoxIsAsserted) {
    AssertRecorder recorder;
    const BoundingBox box(Vec3d(2, 0, 0), Vec3d(0, 0, 0));
    EXPECT_EQ(box.center(), Vec3d(1, 0, 0));
    EXPECT_EQ(recorder.take(), failed({"isValid()"}));
    EXPECT_EQ(box.extent(), Vec3d(-2, 0, 0));
    EXPECT_EQ(recorder.take(), failed({"isValid()"}));
    EXPECT_EQ(box.radius(), 1.0);
    EXPECT_EQ(recorder.take(), failed({"isValid()"}));
    EXPECT_FALSE(box.contains(Vec3d(1, 0, 0)));
    EXPECT_EQ(recorder.take(), failed({"isValid()"}));
    box.intersects(BoundingBox());
    EXPECT_EQ(recorder.take(), failed({"isValid()", "box.isValid()"}));
    BoundingBox(Vec3d(0, 0, 0), Vec3d(1, 1, 1)).intersects(box);
    EXPECT_EQ(recorder.take(), failed({"box.isValid()"}));
    BoundingBox().center();
    EXPECT_EQ(recorder.take(), failed({"isValid()"}));
}

TEST(BoundingBox, ContainsItsFaces) {
    const BoundingBox box(Vec3d(0, 0, 0), Vec3d(1, 2, 3));
    EXPECT_TRUE(box.contains(Vec3d(0.5, 0.5, 0.5)));
    EXPECT_TRUE(box.contains(Vec3d(0, 0, 0)));
    EXPECT_TRUE(box.contains(Vec3d(1, 2, 3)));
    for (const Vec3d& outside : {Vec3d(-0.1, 1, 1), Vec3d(1.1, 1, 1), Vec3d(0.5, -0.1, 1), Vec3d(0.5, 2.1, 1),
                                 Vec3d(0.5, 1, -0.1), Vec3d(0.5, 1, 3.1)}) {
        EXPECT_FALSE(box.contains(outside)) << testing::PrintToString(outside);
    }
}

TEST(BoundingBox, IntersectsAtItsFaces) {
    const BoundingBox box(Vec3d(0, 0, 0), Vec3d(1, 1, 1));
    EXPECT_TRUE(box.intersects(box));
    EXPECT_TRUE(box.intersects(BoundingBox(Vec3d(0.2, 0.2, 0.2), Vec3d(0.3, 0.3, 0.3))));
    EXPECT_TRUE(box.intersects(BoundingBox(Vec3d(1, 1, 1), Vec3d(2, 2, 2))));
    EXPECT_TRUE(box.intersects(BoundingBox(Vec3d(-1, -1, -1), Vec3d(0, 0, 0))));
    for (size_t axis = 0; axis < 3; ++axis) {
        Vec3d above(0, 0, 0);
        above[axis] = 1.5;
        EXPECT_FALSE(box.intersects(BoundingBox(above, Vec3d(2, 2, 2)))) << axis;
        Vec3d below(2, 2, 2);
        below[axis] = -0.5;
        EXPECT_FALSE(box.intersects(BoundingBox(Vec3d(-1, -1, -1), below))) << axis;
    }
}

TEST(BoundingBox, CornersGoAroundBottomAndTop) {
    Vec3d corners[8];
    BoundingBox(Vec3d(0, 1, 2), Vec3d(3, 4, 5)).cornerVertices(corners);
    const Vec3d expected[8] = {Vec3d(0, 1, 2), Vec3d(3, 1, 2), Vec3d(3, 4, 2), Vec3d(0, 4, 2),
                               Vec3d(0, 1, 5), Vec3d(3, 1, 5), Vec3d(3, 4, 5), Vec3d(0, 4, 5)};
    for (int i = 0; i < 8; ++i) {
        EXPECT_EQ(corners[i], expected[i]) << i;
    }
}

TEST(BoundingBox, ExpandMovesEachSideByHalf) {
    BoundingBox box(Vec3d(0, 0, 0), Vec3d(1, 1, 1));
    box.expand(2);
    EXPECT_EQ(box.min(), Vec3d(-1, -1, -1));
    EXPECT_EQ(box.max(), Vec3d(2, 2, 2));
    box.expand(-2);
    EXPECT_EQ(box.min(), Vec3d(0, 0, 0));
    EXPECT_EQ(box.max(), Vec3d(1, 1, 1));
}

TEST(BoundingBox, TransformGivesTheBoundsOfTheCorners) {
    // A quarter turn about z, x to y and y to -x, and a translation by (10, 0, 1).
    rvf::Matrix4<double> matrix;
    matrix(0, 0) = 0;
    matrix(0, 1) = -1;
    matrix(1, 0) = 1;
    matrix(1, 1) = 0;
    matrix(0, 3) = 10;
    matrix(2, 3) = 1;
    BoundingBox box(Vec3d(0, 0, 0), Vec3d(1, 2, 3));
    box.transform(matrix);
    EXPECT_EQ(box.min(), Vec3d(8, 0, 1));
    EXPECT_EQ(box.max(), Vec3d(10, 1, 4));
    BoundingBox invalid;
    invalid.transform(matrix);
    expectReset(invalid);
}

TEST(BoundingBox, DebugString) {
    EXPECT_EQ(std::wstring(BoundingBox(Vec3d(0, 0, 0), Vec3d(1, 2, 3)).debugString().c_str()),
              L"BoundingBox: min: x=0 y=0 z=0 max: x=1 y=2 z=3");
    EXPECT_EQ(std::wstring(BoundingBox(Vec3d(-0.5, 1.23456789, 1e20), Vec3d(1, 2, 3)).debugString().c_str()),
              L"BoundingBox: min: x=-0.5 y=1.23457 z=1e+20 max: x=1 y=2 z=3");
}

} // namespace
