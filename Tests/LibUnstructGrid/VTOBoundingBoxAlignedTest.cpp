#include "LibUnstructGrid/VTOBoundingBoxAligned.h"

#include "LibUnstructGrid/VTOArrayInt.h"
#include "LibUnstructGrid/VTOArrayVector.h"
#include "Tests/LibUnstructGrid/BoxSupport.h"
#include "Tests/Support/AssertStopper.h"

using orvtest::assertsUntil;
using orvtest::failedIn;
using orvtest::floatE30;
using orvtest::near;
using orvtest::PortableRandom;
using orvtest::randomBox;
using orvtest::randomVector;

namespace {

const std::string source = "LibUnstructGrid/VTOBoundingBoxAligned";
const double nan = std::nan("");

TEST(Box, StartsAsThePointAtTheOrigin) {
    const VTBox box;
    EXPECT_EQ(box.min, VT_ZERO_VEC);
    EXPECT_EQ(box.max, VT_ZERO_VEC);
    EXPECT_TRUE(box.IsValid());
    EXPECT_TRUE(box.bMark);
}

TEST(Box, ComesFromTwoPoints) {
    const VTBox fromVectors(VTVector(1, 2, 3), VTVector(4, 5, 6));
    EXPECT_EQ(fromVectors.min, VTVector(1, 2, 3));
    EXPECT_EQ(fromVectors.max, VTVector(4, 5, 6));
    EXPECT_TRUE(fromVectors.bMark);
    const VTBox fromNumbers(1, 2, 3, 4, 5, 6);
    EXPECT_EQ(fromNumbers.min, VTVector(1, 2, 3));
    EXPECT_EQ(fromNumbers.max, VTVector(4, 5, 6));
    EXPECT_TRUE(fromNumbers.bMark);
}

TEST(Box, OnlyTheAssignmentTakesOverTheMark) {
    VTBox box(1, 2, 3, 4, 5, 6);
    box.bMark = false;
    const VTBox copy(box);
    EXPECT_EQ(copy, box);
    EXPECT_TRUE(copy.bMark);
    VTBox assigned;
    assigned = box;
    EXPECT_EQ(assigned, box);
    EXPECT_FALSE(assigned.bMark);
}

TEST(Box, NoOperationChangesTheMark) {
    VTBox box(1, 2, 3, 4, 5, 6);
    box.bMark = false;
    VTMatrix4 matrix;
    matrix.LoadIdentity();
    box.Transform(matrix);
    box.Add(VTBox(0, 0, 0, 9, 9, 9));
    box.ScaleExtent(1, 1, 1);
    box.Expand(1);
    box.BoxFromPointAndExtent(VT_ZERO_VEC, VT_UNIT_VEC);
    box.Reset();
    box.SetZero();
    EXPECT_FALSE(box.bMark);
}

TEST(Box, EqualityIsExactAndWithoutTheMark) {
    const VTBox box(1, 2, 3, 4, 5, 6);
    VTBox other(box);
    other.bMark = false;
    EXPECT_TRUE(box == other);
    for (int i = 0; i < 3; ++i) {
        other = box;
        other.min[i] = std::nextafter(other.min[i], 0.0);
        EXPECT_FALSE(box == other) << i;
        other = box;
        other.max[i] = std::nextafter(other.max[i], 9.0);
        EXPECT_FALSE(box == other) << i;
    }
}

TEST(Box, IsValidUntilAMinimumIsAboveItsMaximum) {
    EXPECT_TRUE(VTBox(1, 1, 1, 1, 1, 1).IsValid());
    for (int i = 0; i < 3; ++i) {
        VTBox box(1, 1, 1, 1, 1, 1);
        box.min[i] = std::nextafter(1.0, 2.0);
        EXPECT_FALSE(box.IsValid()) << i;
        box.min[i] = nan;
        EXPECT_TRUE(box.IsValid()) << "NaN is above nothing";
    }
    VTBox box;
    box.Reset();
    EXPECT_FALSE(box.IsValid());
}

TEST(Box, ComesFromACenterAndAFullSize) {
    VTBox box;
    box.BoxFromPointAndExtent(VTVector(1, 2, 3), VTVector(2, 4, 8));
    EXPECT_EQ(box, VTBox(0, 0, -1, 2, 4, 7));
}

TEST(Box, ComesFromItsOwnFields) {
    VTBox box(1, 2, 3, 2, 4, 8);
    box.BoxFromPointAndExtent(box.min, box.max);
    EXPECT_EQ(box, VTBox(0, 0, -1, 2, 4, 7));
    box = VTBox(2, 4, 8, 1, 2, 3);
    box.BoxFromPointAndExtent(box.max, box.min);
    EXPECT_EQ(box, VTBox(0, 0, -1, 2, 4, 7));
}

TEST(Box, MeasuresItself) {
    const VTBox box(1, 2, 3, 3, 5, 9);
    EXPECT_EQ(box.Extent(), VTVector(2, 3, 6));
    EXPECT_EQ(box.Center(), VTVector(2, 3.5, 6));
    EXPECT_EQ(box.Radius(), 3.5); // 4 + 9 + 36 = 49.
    EXPECT_EQ(box.LargestExtent(), 6);
    EXPECT_EQ(VTBox(0, 0, 0, -1, -2, -3).LargestExtent(), -1) << "by sign";
}

TEST(Box, LargestExtentAxisNeedsAStrictlyLongestXOrY) {
    const struct {
        VTVector size;
        int axis;
    } cases[] = {{VTVector(3, 2, 1), 0}, {VTVector(3, 1, 2), 0}, {VTVector(2, 3, 1), 1}, {VTVector(1, 3, 2), 1},
                 {VTVector(1, 2, 3), 2}, {VTVector(2, 1, 3), 2}, {VTVector(3, 3, 1), 2}, {VTVector(3, 1, 3), 2},
                 {VTVector(1, 3, 3), 2}, {VTVector(3, 3, 3), 2}};
    for (const auto& c : cases) {
        EXPECT_EQ(VTBox(VTVector(5, 6, 7), VTVector(5, 6, 7) + c.size).LargestExtentAxis(), c.axis)
            << testing::PrintToString(c.size);
    }
}

TEST(Box, ScaleExtentMovesEachSideByTheFullExtent) {
    VTBox box(0, 0, 0, 1, 1, 1);
    box.ScaleExtent(1, 1, 1);
    EXPECT_EQ(box, VTBox(-1, -1, -1, 2, 2, 2));
    box.ScaleExtent(0, 0, 0);
    EXPECT_EQ(box, VTBox(-1, -1, -1, 2, 2, 2));
    box = VTBox(0, 10, 100, 1, 12, 104);
    box.ScaleExtent(1, 0.5, -0.25);
    EXPECT_EQ(box, VTBox(-1, 9, 101, 2, 13, 103));
}

TEST(Box, ExpandMovesEachSideByTheDistance) {
    VTBox box(0, 10, 100, 1, 12, 104);
    box.Expand(2);
    EXPECT_EQ(box, VTBox(-2, 8, 98, 3, 14, 106));
    box.Expand(-2);
    EXPECT_EQ(box, VTBox(0, 10, 100, 1, 12, 104));
}

TEST(Box, ResetIsReadyForTheFirstPoint) {
    VTBox box;
    box.Reset();
    EXPECT_EQ(box.min, VTVector(floatE30, floatE30, floatE30));
    EXPECT_EQ(box.max, VTVector(-floatE30, -floatE30, -floatE30));
    EXPECT_TRUE(box.Add(VTVector(1, -2, 3)));
    EXPECT_EQ(box, VTBox(1, -2, 3, 1, -2, 3));
    box.SetZero();
    EXPECT_EQ(box, VTBox(0, 0, 0, 0, 0, 0));
    box.Reset();
    box.Add(VTVector(2e30, -2e30, 0));
    EXPECT_EQ(box, VTBox(floatE30, -2e30, 0, 2e30, -floatE30, 0)) << "beyond the values of a reset";
}

TEST(Box, AddsPointsAndTellsOfChanges) {
    VTBox box(0, 0, 0, 1, 1, 1);
    EXPECT_FALSE(box.Add(VTVector(0, 0.5, 1)));
    EXPECT_EQ(box, VTBox(0, 0, 0, 1, 1, 1));
    for (int i = 0; i < 3; ++i) {
        VTVector point(0.5, 0.5, 0.5);
        VTBox expected = box;
        point[i] = expected.min[i] = -1;
        EXPECT_TRUE(box.Add(point)) << i;
        EXPECT_EQ(box, expected) << i;
        point[i] = expected.max[i] = 2;
        EXPECT_TRUE(box.Add(point)) << i;
        EXPECT_EQ(box, expected) << i;
        EXPECT_FALSE(box.Add(point)) << i;
    }
    EXPECT_FALSE(box.Add(VTVector(nan, nan, nan)));
    EXPECT_TRUE(box.Add(VTVector(nan, 9, nan)));
    EXPECT_EQ(box, VTBox(-1, -1, -1, 2, 9, 2));
}

TEST(Box, AddsBoxesWithoutAskingWhetherTheyAreValid) {
    VTBox box(0, 0, 0, 1, 1, 1);
    EXPECT_FALSE(box.Add(VTBox(0, 0.25, 0.5, 1, 0.75, 1)));
    EXPECT_TRUE(box.Add(VTBox(-1, 0, 0, 1, 1, 3)));
    EXPECT_EQ(box, VTBox(-1, 0, 0, 1, 1, 3));
    VTBox reset;
    reset.Reset();
    EXPECT_FALSE(box.Add(reset));
    EXPECT_EQ(box, VTBox(-1, 0, 0, 1, 1, 3));
    // Invalid in x, where it changes nothing, and not in y and z.
    EXPECT_TRUE(box.Add(VTBox(5, -7, -8, -5, 7, 8)));
    EXPECT_EQ(box, VTBox(-1, -7, -8, 1, 7, 8));
    EXPECT_TRUE(reset.Add(box));
    EXPECT_EQ(reset, box);
}

TEST(Box, AddsManyPoints) {
    const VTVector points[3] = {VTVector(0, 5, 0), VTVector(-1, 0, 0), VTVector(0, 0, 7)};
    VTVectorArray aPoints;
    aPoints.AddGrow(points, 3);

    VTBox box;
    EXPECT_TRUE(box.Add(aPoints));
    EXPECT_EQ(box, VTBox(-1, 0, 0, 0, 5, 7));
    EXPECT_FALSE(box.Add(aPoints));
    EXPECT_FALSE(box.Add(VTVectorArray())) << "no points and no complaint";

    box.SetZero();
    EXPECT_TRUE(box.Add(points, 2));
    EXPECT_EQ(box, VTBox(-1, 0, 0, 0, 5, 0));
    EXPECT_FALSE(box.Add(points, 2));
    EXPECT_TRUE(box.Add(points, 3)) << "one change is a change";
    EXPECT_FALSE(box.Add(points, 0));

    // The first point changes the box, the last one does not.
    box.SetZero();
    const VTVector changeFirst[2] = {VTVector(0, 5, 0), VT_ZERO_VEC};
    EXPECT_TRUE(box.Add(changeFirst, 2));
}

TEST(Box, AddsPointsByIndex) {
    const VTVector points[3] = {VTVector(0, 5, 0), VTVector(-1, 0, 0), VTVector(0, 0, 7)};
    VTVectorArray aPoints;
    aPoints.AddGrow(points, 3);

    VTBox box;
    EXPECT_TRUE(box.Add(aPoints, VTIntArray::Make(2, 0)));
    EXPECT_EQ(box, VTBox(0, 0, 0, 0, 5, 7));
    EXPECT_FALSE(box.Add(aPoints, VTIntArray::Make(2, 0)));
    EXPECT_TRUE(box.Add(aPoints, VTIntArray::Make(0, 1, 2))) << "one change is a change";
    EXPECT_FALSE(box.Add(aPoints, VTIntArray()));

    box.SetZero();
    const int indices[3] = {2, 0, 1};
    EXPECT_TRUE(box.Add(points, indices, 2));
    EXPECT_EQ(box, VTBox(0, 0, 0, 0, 5, 7));
    EXPECT_FALSE(box.Add(points, indices, 2));
    EXPECT_TRUE(box.Add(points, indices, 3));
    EXPECT_EQ(box, VTBox(-1, 0, 0, 0, 5, 7));
    EXPECT_FALSE(box.Add(points, indices, 0));

    // The first point changes the box, the last one, the same again, does not.
    const int repeated[2] = {2, 2};
    box.SetZero();
    EXPECT_TRUE(box.Add(points, repeated, 2));
    box.SetZero();
    EXPECT_TRUE(box.Add(aPoints, VTIntArray::Make(2, 2)));
}

TEST(Box, AssertsPointsAndIndexes) {
    const VTVectorArray aPoints = VTVectorArray::Make(VT_UNIT_VEC);
    const VTVector* pPoints = aPoints.GetDataPtr();
    const VTVector* pNoPoints = nullptr;
    const int* piNoIndices = nullptr;
    VTBox box;
    EXPECT_EQ(assertsUntil(9, [&] { box.Add(pNoPoints, 0); }), failedIn(source, {"pPoints"}));
    EXPECT_EQ(assertsUntil(9, [&] { box.Add(pNoPoints, piNoIndices, 0); }), failedIn(source, {"pPoints", "piIndices"}));
    const int iNegative = -1;
    EXPECT_EQ(assertsUntil(1, [&] { box.Add(pPoints, &iNegative, 1); }), failedIn(source, {"piIndices[i] >= 0"}));
    const std::string inRange = "(aiIndices[i] >= 0) && (aiIndices[i] < aPoints.GetNumItems())";
    EXPECT_EQ(assertsUntil(1, [&] { box.Add(aPoints, VTIntArray::Make(0, -1)); }), failedIn(source, {inRange}));
    EXPECT_EQ(assertsUntil(1, [&] { box.Add(aPoints, VTIntArray::Make(1)); }), failedIn(source, {inRange}));
    EXPECT_EQ(assertsUntil(9, [&] { box.Add(aPoints, VTIntArray::Make(0)); }), failedIn(source, {}));
}

TEST(Box, TransformGivesTheBoundsOfTheCorners) {
    VTBox box(0, 0, 0, 1, 2, 3);
    VTMatrix4 quarterTurn;
    quarterTurn.SetFromAxes(VT_YAXIS_VEC, VT_NEG_XAXIS_VEC, VT_ZAXIS_VEC);
    quarterTurn.Translate(10, 20, 30);
    box.Transform(quarterTurn);
    EXPECT_EQ(box, VTBox(8, 20, 30, 10, 21, 33));

    VTMatrix4 away;
    away.LoadIdentity();
    away.Translate(5e30, -5e30, 0);
    box.Transform(away);
    EXPECT_EQ(box, VTBox(5e30, -5e30, 30, 5e30, -5e30, 33)) << "also beyond the values of a reset box";

    VTBox reset;
    reset.Reset();
    const VTBox expected = reset;
    reset.Transform(quarterTurn);
    EXPECT_EQ(reset, expected);
}

// Each bound of a transformed box is the transformed center and the half-sizes times the magnitudes of the matrix.
TEST(Box, TransformAgreesWithTheMagnitudesOfTheMatrix) {
    PortableRandom random(81);
    for (int n = 0; n < 200; ++n) {
        VTBox box = randomBox(random, 5);
        VTMatrix4 matrix;
        matrix.SetFromAxes(randomVector(random, 2), randomVector(random, 2), randomVector(random, 2));
        matrix.Translate(randomVector(random, 10));
        VTVector center = box.Center();
        center.TransformPoint(matrix);
        const VTVector half = box.Extent() / 2.0;
        VTVector newHalf = VT_ZERO_VEC;
        for (int i = 0; i < 3; ++i) {
            for (int j = 0; j < 3; ++j) {
                newHalf[j] += std::fabs(matrix[i][j]) * half[i];
            }
        }
        box.Transform(matrix);
        ASSERT_TRUE(near(box.min, center - newHalf, 1e-12)) << n;
        ASSERT_TRUE(near(box.max, center + newHalf, 1e-12)) << n;
    }
}

TEST(Box, CornerPointsGoAroundTheBottomAndThenTheTop) {
    VTVector corners[8];
    VTBox(1, 2, 3, 4, 5, 6).GetCornerPoints(corners);
    const VTVector expected[8] = {VTVector(1, 2, 3), VTVector(4, 2, 3), VTVector(4, 5, 3), VTVector(1, 5, 3),
                                  VTVector(1, 2, 6), VTVector(4, 2, 6), VTVector(4, 5, 6), VTVector(1, 5, 6)};
    for (int i = 0; i < 8; ++i) {
        EXPECT_EQ(corners[i], expected[i]) << i;
    }
    EXPECT_EQ(assertsUntil(1, [] { VTBox().GetCornerPoints(nullptr); }), failedIn(source, {"pCornerPoints"}));
}

TEST(Box, FaceSetHasTheNumberingOfVerticesAndSides) {
    const VTVector expectedVertices[8] = {VTVector(1, 2, 6), VTVector(4, 2, 6), VTVector(4, 2, 3), VTVector(1, 2, 3),
                                          VTVector(1, 5, 6), VTVector(4, 5, 6), VTVector(4, 5, 3), VTVector(1, 5, 3)};
    const int expectedSides[6][4] = {{0, 3, 2, 1}, {4, 5, 6, 7}, {0, 1, 5, 4},
                                     {3, 7, 6, 2}, {0, 4, 7, 3}, {1, 2, 6, 5}};
    const VTVector expectedNormals[6] = {VTVector(0, -1, 0), VTVector(0, 1, 0),  VTVector(0, 0, 1),
                                         VTVector(0, 0, -1), VTVector(-1, 0, 0), VTVector(1, 0, 0)};
    VTVector vertices[8];
    int sides[24];
    VTVector normals[6];
    VTBox(1, 2, 3, 4, 5, 6).GetFaceSet(vertices, sides, normals);
    for (int i = 0; i < 8; ++i) {
        EXPECT_EQ(vertices[i], expectedVertices[i]) << "vertex " << i;
    }
    for (int i = 0; i < 24; ++i) {
        EXPECT_EQ(sides[i], expectedSides[i / 4][i % 4]) << "side " << i / 4 << ", place " << i % 4;
    }
    for (int i = 0; i < 6; ++i) {
        EXPECT_EQ(normals[i], expectedNormals[i]) << "normal " << i;
    }
}

TEST(Box, FaceSetIsOptionalButForItsVertices) {
    VTVector vertices[8];
    int sides[24];
    VTVector normals[6];
    const VTBox box(1, 2, 3, 4, 5, 6);
    box.GetFaceSet(vertices, nullptr, normals);
    EXPECT_EQ(vertices[7], VTVector(1, 5, 3));
    EXPECT_EQ(normals[5], VT_XAXIS_VEC);
    box.GetFaceSet(vertices, sides, nullptr);
    EXPECT_EQ(sides[23], 5);
}

TEST(Box, PointsFromBoxRunFromSideToSide) {
    VTVectorArray aPoints;
    VTBox(1, 2, 3, 3, 4, 7).GetPointsFromBox(2, 1, 3, &aPoints);
    ASSERT_EQ(aPoints.GetNumItems(), 6);
    const VTVector expected[6] = {VTVector(1, 3, 3), VTVector(3, 3, 3), VTVector(1, 3, 5),
                                  VTVector(3, 3, 5), VTVector(1, 3, 7), VTVector(3, 3, 7)};
    for (int i = 0; i < 6; ++i) {
        EXPECT_EQ(aPoints[i], expected[i]) << i;
    }
    const auto failed = assertsUntil(2, [] { VTBox().GetPointsFromBox(1, 1, 1, nullptr); });
    ASSERT_EQ(failed.size(), 2u);
    EXPECT_EQ(failed[0], failedIn(source, {"pNodeArray"})[0]);
    EXPECT_EQ(failed[1], failedIn("LibUnstructGrid/VTOBoundingBoxOriented", {"pNodeArray"})[0]);
}

TEST(Box, FindClosestNodeFindsTheNearestVertex) {
    const VTBox box(0, 0, 0, 2, 4, 6);
    VTVector closest;
    EXPECT_EQ(box.FindClosestNode(VTVector(3, 4, 8), &closest), 5); // 1 + 0 + 4, from vertex 5.
    EXPECT_EQ(closest, VTVector(2, 4, 6));
    EXPECT_EQ(box.FindClosestNode(VTVector(0.5, 1, 1), &closest), 2.25);
    EXPECT_EQ(closest, VT_ZERO_VEC);
    EXPECT_EQ(box.FindClosestNode(VTVector(3, 4, 8), nullptr), 5);
    // Of equal ones the lowest number: 0 of all; 1 of those at the maximum of x; 4 of those at the maximum of y.
    box.FindClosestNode(VTVector(1, 2, 3), &closest);
    EXPECT_EQ(closest, VTVector(0, 0, 6));
    box.FindClosestNode(VTVector(2, 2, 3), &closest);
    EXPECT_EQ(closest, VTVector(2, 0, 6));
    box.FindClosestNode(VTVector(1, 4, 3), &closest);
    EXPECT_EQ(closest, VTVector(0, 4, 6));
}

TEST(Box, FindClosestNodeAgreesWithASearch) {
    PortableRandom random(82);
    for (int n = 0; n < 200; ++n) {
        const VTBox box = randomBox(random, 5);
        const VTVector point = randomVector(random, 8);
        VTVector corners[8];
        box.GetCornerPoints(corners);
        double fNearest = 1e9;
        for (const VTVector& corner : corners) {
            fNearest = std::min(fNearest, VTPointL2Dist(corner, point));
        }
        VTVector closest;
        ASSERT_EQ(box.FindClosestNode(point, &closest), fNearest);
        ASSERT_EQ(VTPointL2Dist(point, closest), fNearest);
    }
}

} // namespace
