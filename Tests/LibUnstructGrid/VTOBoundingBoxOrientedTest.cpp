#include "LibUnstructGrid/VTOBoundingBoxOriented.h"

#include "LibUnstructGrid/VTOArrayVector.h"
#include "LibUnstructGrid/VTOBoundingBox_p.h"
#include "Tests/LibUnstructGrid/BoxSupport.h"
#include "Tests/Support/AssertStopper.h"

#include <climits>
#include <functional>

using orvtest::assertsUntil;
using orvtest::Basis;
using orvtest::failedIn;
using orvtest::makeBox;
using orvtest::near;
using orvtest::PortableRandom;
using orvtest::randomBasis;
using orvtest::randomOrientedBox;
using orvtest::randomVector;
using orvtest::verticesOf;

namespace {

const std::string source = "LibUnstructGrid/VTOBoundingBoxOriented";

// A quarter turn about z: the box's x goes along y, its y against x. Coordinates stay exact.
const Basis quarterTurn{{VT_YAXIS_VEC, VT_NEG_XAXIS_VEC, VT_ZAXIS_VEC}};
const Basis unturned{{VT_XAXIS_VEC, VT_YAXIS_VEC, VT_ZAXIS_VEC}};

VTBox boundsOf(VTOrientedBoundingBox& box) {
    VTBox bounds;
    box.GetMinMax(&bounds, true);
    return bounds;
}

/// What is on the minimum of the axis in one mask is on the maximum in the other.
TEST(BoxNumbering, MasksSplitTheVertices) {
    const bool atMaximum[8][3] = {{false, false, true},  {true, false, true}, {true, false, false},
                                  {false, false, false}, {false, true, true}, {true, true, true},
                                  {true, true, false},   {false, true, false}};
    const unsigned int low[3] = {153, 15, 204};
    const unsigned int high[3] = {102, 240, 51};
    for (int axis = 0; axis < 3; ++axis) {
        EXPECT_EQ(VTBoxes::lowVertices[axis], low[axis]) << axis;
        EXPECT_EQ(VTBoxes::highVertices[axis], high[axis]) << axis;
        for (int vertex = 0; vertex < 8; ++vertex) {
            EXPECT_EQ(low[axis] >> vertex & 1, atMaximum[vertex][axis] ? 0u : 1u) << vertex << ' ' << axis;
            EXPECT_EQ(high[axis] >> vertex & 1, atMaximum[vertex][axis] ? 1u : 0u) << vertex << ' ' << axis;
            EXPECT_EQ(VTBoxes::isHigh(vertex, axis), atMaximum[vertex][axis]) << vertex << ' ' << axis;
        }
    }
}

TEST(BoxNumbering, OnlyASingleBitIsAVertex) {
    for (int vertex = 0; vertex < 8; ++vertex) {
        EXPECT_EQ(VTBoxes::vertexOf(1u << vertex), vertex);
    }
    EXPECT_EQ(VTBoxes::vertexOf(0), -1);
    EXPECT_EQ(VTBoxes::vertexOf(3), -1);
    EXPECT_EQ(VTBoxes::vertexOf(153), -1);
}

TEST(OrientedBox, StartsWithoutSizeAtTheOrigin) {
    VTOrientedBoundingBox box;
    EXPECT_EQ(box.GetCenter(), VT_ZERO_VEC);
    EXPECT_EQ(box.GetBasis()[0], VT_XAXIS_VEC);
    EXPECT_EQ(box.GetBasis()[1], VT_YAXIS_VEC);
    EXPECT_EQ(box.GetBasis()[2], VT_ZAXIS_VEC);
    for (const VTVector& vertex : verticesOf(box)) {
        EXPECT_EQ(vertex, VT_ZERO_VEC);
    }
    EXPECT_EQ(boundsOf(box), VTBox());
    EXPECT_EQ(box.GetSidePlanes(5, nullptr)->a, 1) << "planes are made before they are shown";
}

TEST(OrientedBox, IsSetPieceByPiece) {
    VTOrientedBoundingBox box;
    box.SetCenter(10, 20, 30);
    box.SetExtent(1, 2, 3);
    box.SetBasis(VT_YAXIS_VEC, VT_NEG_XAXIS_VEC, 2 * VT_ZAXIS_VEC);
    EXPECT_EQ(box.GetCenter(), VTVector(10, 20, 30));
    EXPECT_EQ(box.GetBasis()[0], VT_YAXIS_VEC);
    EXPECT_EQ(box.GetBasis()[1], VT_NEG_XAXIS_VEC);
    EXPECT_EQ(box.GetBasis()[2], 2 * VT_ZAXIS_VEC);
    EXPECT_EQ(boundsOf(box), VTBox(8, 19, 24, 12, 21, 36));
    const VTOrientedBoundingBox copy(box);
    EXPECT_EQ(verticesOf(copy), verticesOf(box));
    VTOrientedBoundingBox assigned;
    assigned = box;
    EXPECT_EQ(boundsOf(assigned), boundsOf(box));
    box.SetBasis(box.GetBasis()[1], box.GetBasis()[2], box.GetBasis()[0]);
    EXPECT_EQ(box.GetBasis()[2], VT_YAXIS_VEC) << "from its own axes";
}

// The center is (10, 20, 30); 1 along y, 2 against x, 3 times 2 along z.
TEST(OrientedBox, FaceSetHasTheNumberingOfVerticesAndSides) {
    const VTOrientedBoundingBox box =
        makeBox(VTVector(10, 20, 30), {{VT_YAXIS_VEC, VT_NEG_XAXIS_VEC, 2 * VT_ZAXIS_VEC}}, VTVector(1, 2, 3));
    const VTVector expectedVertices[8] = {VTVector(12, 19, 36), VTVector(12, 21, 36), VTVector(12, 21, 24),
                                          VTVector(12, 19, 24), VTVector(8, 19, 36),  VTVector(8, 21, 36),
                                          VTVector(8, 21, 24),  VTVector(8, 19, 24)};
    const int expectedSides[6][4] = {{0, 3, 2, 1}, {4, 5, 6, 7}, {0, 1, 5, 4},
                                     {2, 3, 7, 6}, {3, 0, 4, 7}, {1, 2, 6, 5}};
    const VTVector expectedNormals[6] = {VT_XAXIS_VEC,         VT_NEG_XAXIS_VEC, 2 * VT_ZAXIS_VEC,
                                         2 * VT_NEG_ZAXIS_VEC, VT_NEG_YAXIS_VEC, VT_YAXIS_VEC};
    VTVector vertices[8];
    int sides[24];
    VTVector normals[6];
    box.GetFaceSet(vertices, sides, normals);
    for (int i = 0; i < 8; ++i) {
        EXPECT_EQ(vertices[i], expectedVertices[i]) << "vertex " << i;
    }
    for (int i = 0; i < 24; ++i) {
        EXPECT_EQ(sides[i], expectedSides[i / 4][i % 4]) << "side " << i / 4 << ", place " << i % 4;
    }
    for (int i = 0; i < 6; ++i) {
        EXPECT_EQ(normals[i], expectedNormals[i]) << "normal " << i;
    }
    int onlySides[24];
    box.GetFaceSet(vertices, onlySides, nullptr);
    EXPECT_EQ(onlySides[23], 5);
    VTVector onlyNormals[6];
    box.GetFaceSet(vertices, nullptr, onlyNormals);
    EXPECT_EQ(onlyNormals[5], VT_YAXIS_VEC);
}

TEST(OrientedBox, SidesRunCounterClockwiseSeenFromOutside) {
    PortableRandom random(91);
    const VTOrientedBoundingBox box = randomOrientedBox(random);
    VTVector vertices[8];
    int sides[24];
    VTVector normals[6];
    box.GetFaceSet(vertices, sides, normals);
    for (int side = 0; side < 6; ++side) {
        for (int i = 0; i < 4; ++i) {
            const auto corner = [&](int k) { return vertices[sides[4 * side + (i + k) % 4]]; };
            const VTVector turn = (corner(1) - corner(0)) ^ (corner(2) - corner(1));
            EXPECT_TRUE(near(turn.GetNormalized(), normals[side], 1e-12)) << side << ' ' << i;
        }
    }
}

TEST(OrientedBox, NumbersItsVerticesLikeTheAlignedBox) {
    PortableRandom random(92);
    const VTBox aligned = orvtest::randomBox(random, 5);
    VTOrientedBoundingBox box;
    box.SetFromMinMax(aligned);
    VTVector vertices[8];
    int alignedSides[24];
    VTVector alignedNormals[6];
    aligned.GetFaceSet(vertices, alignedSides, alignedNormals);
    VTVector ownVertices[8];
    int ownSides[24];
    VTVector ownNormals[6];
    box.GetFaceSet(ownVertices, ownSides, ownNormals);
    for (int i = 0; i < 8; ++i) {
        EXPECT_TRUE(near(ownVertices[i], vertices[i], 1e-14)) << i;
    }
    for (int i = 0; i < 6; ++i) {
        EXPECT_EQ(ownNormals[i], alignedNormals[i]) << i;
        std::sort(alignedSides + 4 * i, alignedSides + 4 * i + 4);
        std::sort(ownSides + 4 * i, ownSides + 4 * i + 4);
        EXPECT_TRUE(std::equal(ownSides + 4 * i, ownSides + 4 * i + 4, alignedSides + 4 * i)) << i;
    }
}

// In order on x, y, z; the vertices of the first and of the second point.
constexpr struct {
    bool inOrder[3];
    int minVertex, maxVertex;
} vertexNumbers[8] = {{{true, true, true}, 3, 5},   {{false, true, true}, 2, 4},  {{true, false, true}, 7, 1},
                      {{false, false, true}, 6, 0}, {{true, true, false}, 0, 6},  {{false, true, false}, 1, 7},
                      {{true, false, false}, 4, 2}, {{false, false, false}, 5, 3}};

TEST(OrientedBox, ComesFromTwoPointsInAnyOrder) {
    for (const auto& c : vertexNumbers) {
        VTVector minimum(10, 20, 30);
        VTVector maximum(12, 24, 36);
        for (int i = 0; i < 3; ++i) {
            if (!c.inOrder[i]) {
                std::swap(minimum[i], maximum[i]);
            }
        }
        VTOrientedBoundingBox box = makeBox(VT_UNIT_VEC, quarterTurn, VT_UNIT_VEC);
        box.SetFromMinMax(minimum, maximum);
        EXPECT_EQ(box.GetCenter(), VTVector(11, 22, 33));
        EXPECT_EQ(box.GetBasis()[0], VT_XAXIS_VEC);
        EXPECT_EQ(verticesOf(box)[3], VTVector(10, 20, 30)) << "turned around where need be";
        EXPECT_EQ(verticesOf(box)[5], VTVector(12, 24, 36));
        EXPECT_EQ(boundsOf(box), VTBox(10, 20, 30, 12, 24, 36));
        VTVector foundMin;
        VTVector foundMax;
        box.GetMinMax(&foundMin, &foundMax, false);
        EXPECT_EQ(foundMin, minimum) << "as given";
        EXPECT_EQ(foundMax, maximum);
        EXPECT_EQ(verticesOf(box)[c.minVertex], minimum);
        EXPECT_EQ(verticesOf(box)[c.maxVertex], maximum);

        VTOrientedBoundingBox fromBox;
        fromBox.SetFromMinMax(VTBox(minimum, maximum));
        EXPECT_EQ(verticesOf(fromBox), verticesOf(box));
        fromBox.GetMinMax(&foundMin, &foundMax, false);
        EXPECT_EQ(foundMin, minimum);
        EXPECT_EQ(foundMax, maximum);
    }
}

TEST(OrientedBox, ComesFromItsOwnCenter) {
    VTOrientedBoundingBox box = makeBox(VTVector(1, 2, 3), quarterTurn, VT_UNIT_VEC);
    box.SetFromMinMax(box.GetCenter(), VTVector(3, 6, 9));
    EXPECT_EQ(boundsOf(box), VTBox(1, 2, 3, 3, 6, 9));
    box.GetMinMax(nullptr, nullptr, false);
}

TEST(OrientedBox, KeepsTheVertexNumbersOfTwoPoints) {
    for (const auto& c : vertexNumbers) {
        for (double fBehind : {-1.0, 0.0}) {
            const VTVector first(5, 5, 5);
            VTVector second(6, 6, 6);
            for (int i = 0; i < 3; ++i) {
                second[i] = c.inOrder[i] ? 6 : 5 + fBehind; // Equal is not in order.
            }
            VTOrientedBoundingBox box = makeBox(VTVector(10, 20, 30), quarterTurn, VTVector(1, 2, 3));
            box.SetVertexNumbersFromPoints(first, second);
            VTVector foundMin;
            VTVector foundMax;
            box.GetMinMax(&foundMin, &foundMax, false);
            EXPECT_EQ(foundMin, verticesOf(box)[c.minVertex]);
            EXPECT_EQ(foundMax, verticesOf(box)[c.maxVertex]);
        }
    }
}

TEST(OrientedBox, MinMaxAreBoundsUnlessVerticesAreKnown) {
    VTOrientedBoundingBox box = makeBox(VTVector(10, 20, 30), quarterTurn, VTVector(1, 2, 3));
    const VTBox bounds(8, 19, 27, 12, 21, 33);
    VTBox found;
    found.bMark = false;
    box.GetMinMax(&found, false);
    EXPECT_EQ(found, bounds);
    EXPECT_FALSE(found.bMark);

    box.SetVertexNumbersFromPoints(VT_ZERO_VEC, VT_UNIT_VEC);
    VTVector min;
    VTVector max;
    box.GetMinMax(&min, &max, false);
    EXPECT_EQ(min, VTVector(12, 19, 27)); // Low along y, along minus x and along z.
    EXPECT_EQ(max, VTVector(8, 21, 33));
    box.GetMinMax(&found, false);
    EXPECT_EQ(found, VTBox(min, max)) << "invalid, but what was asked for";
    box.GetMinMax(&found, true);
    EXPECT_EQ(found, bounds);
    box.GetMinMax(&min, nullptr, true);
    EXPECT_EQ(min, bounds.min);
    box.GetMinMax(nullptr, &max, true);
    EXPECT_EQ(max, bounds.max);

    box.MoveCenterAlongBasis(1, 0, 0);
    box.GetMinMax(&min, &max, false);
    EXPECT_EQ(min, VTVector(12, 20, 27)) << "the vertex, wherever it has gone";
}

TEST(OrientedBox, ReorientRenumbersVertices) {
    const int mirrored[3][8] = {{1, 0, 3, 2, 5, 4, 7, 6}, {4, 5, 6, 7, 0, 1, 2, 3}, {3, 2, 1, 0, 7, 6, 5, 4}};
    for (int mask = 0; mask < 8; ++mask) {
        for (int vertex = 0; vertex < 8; ++vertex) {
            VTVector extent(1, 2, 3);
            int expected = vertex;
            for (int axis = 0; axis < 3; ++axis) {
                if (mask >> axis & 1) {
                    extent[axis] = -extent[axis];
                    expected = mirrored[axis][expected];
                }
            }
            VTOrientedBoundingBox box = makeBox(VTVector(10, 20, 30), quarterTurn, extent);
            const auto before = verticesOf(box);
            EXPECT_EQ(box.Reorient(vertex), expected) << mask << ' ' << vertex;
            EXPECT_EQ(verticesOf(box), verticesOf(makeBox(VTVector(10, 20, 30), quarterTurn, VTVector(1, 2, 3))));
            EXPECT_EQ(verticesOf(box)[expected], before[vertex]) << "the place stays";
            EXPECT_EQ(box.GetBasis()[0], VT_YAXIS_VEC) << "the basis stays";
        }
    }
}

TEST(OrientedBox, ReorientKnowsNoOtherVertices) {
    for (int vertex : {-1, -2, 8, INT_MIN, INT_MAX}) {
        VTOrientedBoundingBox box = makeBox(VT_ZERO_VEC, unturned, VTVector(-1, -2, -3));
        EXPECT_EQ(box.Reorient(vertex), -1);
        EXPECT_EQ(verticesOf(box)[5], VTVector(1, 2, 3));
    }
}

TEST(OrientedBox, ReorientTakesZeroForPositive) {
    for (int axis = 0; axis < 3; ++axis) {
        VTVector extent(1, 2, 3);
        extent[axis] = 0;
        VTOrientedBoundingBox box = makeBox(VT_ZERO_VEC, unturned, extent);
        EXPECT_EQ(box.Reorient(5), 5) << axis;
    }
}

struct Change {
    const char* name;
    std::function<void(VTOrientedBoundingBox&)> apply;
};

TEST(OrientedBox, EveryChangeIsSeenByPlanesAndBounds) {
    VTMatrix4 matrix;
    matrix.LoadIdentity();
    matrix.Translate(1, 2, 3);
    const VTVector target(5, 6, 7);
    const Change changes[] = {
        {"SetCenter", [](auto& box) { box.SetCenter(7, 8, 9); }},
        {"SetExtent", [](auto& box) { box.SetExtent(7, 8, 9); }},
        {"SetBasis", [](auto& box) { box.SetBasis(VT_XAXIS_VEC, VT_YAXIS_VEC, VT_ZAXIS_VEC); }},
        {"SetFromMinMax", [](auto& box) { box.SetFromMinMax(VT_ZERO_VEC, VT_UNIT_VEC); }},
        {"SetFromMinMax of a box", [](auto& box) { box.SetFromMinMax(VTBox(0, 0, 0, 1, 1, 1)); }},
        {"Reorient", [](auto& box) { box.Reorient(-1); }},
        {"Transform", [&](auto& box) { box.Transform(matrix); }},
        {"MoveCenterAlongBasis", [](auto& box) { box.MoveCenterAlongBasis(1, 0, 0); }},
        {"ScaleExtent", [](auto& box) { box.ScaleExtent(2, 1, 1); }},
        {"Expand", [](auto& box) { box.Expand(1); }},
        {"Resize", [&](auto& box) { box.Resize(5, &target, false, false, false); }},
    };
    for (const Change& change : changes) {
        VTOrientedBoundingBox box = makeBox(VTVector(10, 20, 30), quarterTurn, VTVector(-1, 2, 3));
        VTPlane former[6];
        box.GetSidePlanes(-1, former);
        change.apply(box);
        VTOrientedBoundingBox fresh(box);
        fresh.FlagDirty();
        VTPlane expected[6];
        fresh.GetSidePlanes(-1, expected);
        VTPlane found[6];
        box.GetSidePlanes(-1, found);
        EXPECT_TRUE(std::equal(found, found + 6, expected)) << change.name;
        EXPECT_FALSE(std::equal(found, found + 6, former)) << change.name;
        EXPECT_EQ(boundsOf(box), boundsOf(fresh)) << change.name;
    }
}

// A mark in a stored plane stays until the planes are computed again.
TEST(OrientedBox, PlanesAreComputedOnceForAChange) {
    VTOrientedBoundingBox box = makeBox(VT_ZERO_VEC, unturned, VT_UNIT_VEC);
    const VTPlane* pPlane = box.GetSidePlanes(5, nullptr);
    EXPECT_EQ(pPlane->d, -1);
    const_cast<VTPlane*>(pPlane)->d = 7;
    box.CalcPlanesAndMinMax();
    box.GetSidePlanes(5, nullptr);
    boundsOf(box);
    box.PointInBox(VT_ZERO_VEC);
    VTVector points[6];
    box.GetSideMidpoints(points);
    EXPECT_EQ(pPlane->d, 7);
    box.FlagDirty();
    box.CalcPlanesAndMinMax();
    EXPECT_EQ(pPlane->d, -1);
}

TEST(OrientedBox, EachReaderOfPlanesAndBoundsHasThemComputed) {
    const auto dirtyBox = [] { return makeBox(VTVector(10, 20, 30), unturned, VT_UNIT_VEC); };
    VTOrientedBoundingBox box = dirtyBox();
    EXPECT_EQ(box.GetSidePlanes(5, nullptr)->d, -11);
    box = dirtyBox();
    VTPlane plane;
    box.GetSidePlanes(5, &plane);
    EXPECT_EQ(plane.d, -11);
    box = dirtyBox();
    VTVector points[6];
    box.GetSideMidpoints(points);
    EXPECT_EQ(points[5], VTVector(11, 20, 30));
    box = dirtyBox();
    EXPECT_TRUE(box.PointInBox(VTVector(11, 21, 31)));
    box = dirtyBox();
    EXPECT_EQ(boundsOf(box), VTBox(9, 19, 29, 11, 21, 31));
}

// Normalize() leaves planes and bounds where they are, but for an axis without length.
TEST(OrientedBox, NormalizeIsSeenByPlanes) {
    VTOrientedBoundingBox box = makeBox(VT_ZERO_VEC, {{1e-31 * VT_XAXIS_VEC, VT_YAXIS_VEC, VT_ZAXIS_VEC}}, VT_UNIT_VEC);
    box.SetExtent(1e31, 1, 1);
    EXPECT_EQ(boundsOf(box).max.x, 1);
    box.Normalize();
    EXPECT_EQ(boundsOf(box).max.x, 0);
}

TEST(OrientedBox, PlanesAreUnitAndPointOutwards) {
    VTOrientedBoundingBox box = makeBox(
        VTVector(10, 20, 30), {{4 * VT_YAXIS_VEC, 0.5 * VT_NEG_XAXIS_VEC, 2 * VT_ZAXIS_VEC}}, VTVector(1, 2, 3));
    // x from 9 to 11, y from 16 to 24, z from 24 to 36.
    const VTPlane expected[6] = {VTPlane(1, 0, 0, -11), VTPlane(-1, 0, 0, 9),  VTPlane(0, 0, 1, -36),
                                 VTPlane(0, 0, -1, 24), VTPlane(0, -1, 0, 16), VTPlane(0, 1, 0, -24)};
    VTPlane planes[6];
    const VTPlane* pStored = box.GetSidePlanes(-1, planes);
    for (int i = 0; i < 6; ++i) {
        for (const VTPlane* pPlane : {pStored + i, std::as_const(planes) + i}) {
            EXPECT_EQ(VTVector(pPlane->a, pPlane->b, pPlane->c), VTVector(expected[i].a, expected[i].b, expected[i].c));
            EXPECT_EQ(pPlane->d, expected[i].d) << i;
        }
        EXPECT_LT(planes[i].GetDistance(box.GetCenter()), 0) << i;
    }
    EXPECT_EQ(boundsOf(box), VTBox(9, 16, 24, 11, 24, 36));
}

TEST(OrientedBox, PlanesHoldTheirFourVertices) {
    PortableRandom random(93);
    for (int n = 0; n < 50; ++n) {
        VTOrientedBoundingBox box = randomOrientedBox(random);
        VTVector vertices[8];
        int sides[24];
        box.GetFaceSet(vertices, sides, nullptr);
        VTPlane planes[6];
        box.GetSidePlanes(-1, planes);
        for (int i = 0; i < 24; ++i) {
            ASSERT_NEAR(planes[i / 4].GetDistance(vertices[sides[i]]), 0, 1e-13) << i;
        }
        const VTBox bounds = boundsOf(box);
        for (const VTVector& vertex : vertices) {
            ASSERT_TRUE(bounds.PointInBox(vertex, 0.0));
        }
        for (int i = 0; i < 3; ++i) {
            double fReach = 0.0;
            for (int j = 0; j < 3; ++j) {
                fReach += std::fabs((vertices[5] - vertices[3]) * box.GetBasis()[j] * box.GetBasis()[j][i]) / 2;
            }
            ASSERT_NEAR(bounds.max[i] - box.GetCenter()[i], fReach, 1e-12);
            ASSERT_NEAR(box.GetCenter()[i] - bounds.min[i], fReach, 1e-12);
        }
    }
}

TEST(OrientedBox, GetSidePlanesSelectsOneOrAll) {
    VTOrientedBoundingBox box = makeBox(VTVector(1, 2, 3), quarterTurn, VTVector(1, 2, 3));
    const VTPlane* pAll = box.GetSidePlanes(-1, nullptr);
    ASSERT_NE(pAll, nullptr);
    for (int side = 0; side < 6; ++side) {
        VTPlane planes[2];
        EXPECT_EQ(box.GetSidePlanes(side, planes), pAll + side);
        EXPECT_TRUE(planes[0] == pAll[side]);
        EXPECT_FALSE(planes[1].IsValid()) << "one plane, not six";
        EXPECT_EQ(box.GetSidePlanes(side, nullptr), pAll + side);
    }
    for (int side : {-2, 6, INT_MIN, INT_MAX}) {
        VTPlane plane;
        EXPECT_EQ(box.GetSidePlanes(side, &plane), nullptr);
        EXPECT_FALSE(plane.IsValid());
    }
}

TEST(OrientedBox, SideMidpointsGoTheExtentAlongThePlaneNormals) {
    VTOrientedBoundingBox box = makeBox(VTVector(10, 20, 30), quarterTurn, VTVector(1, 2, 3));
    const VTVector expected[6] = {VTVector(12, 20, 30), VTVector(8, 20, 30),  VTVector(10, 20, 33),
                                  VTVector(10, 20, 27), VTVector(10, 19, 30), VTVector(10, 21, 30)};
    VTVector points[6];
    EXPECT_TRUE(box.GetSideMidpoints(points));
    EXPECT_TRUE(std::equal(points, points + 6, expected));
    // The length of the basis does not count here, though it does for the sides themselves.
    box.SetBasis(2 * VT_YAXIS_VEC, 2 * VT_NEG_XAXIS_VEC, 2 * VT_ZAXIS_VEC);
    EXPECT_TRUE(box.GetSideMidpoints(points));
    EXPECT_TRUE(std::equal(points, points + 6, expected));
    EXPECT_FALSE(box.GetSideMidpoints(nullptr));
}

TEST(OrientedBox, TransformMovesCenterAndBasis) {
    VTOrientedBoundingBox box = makeBox(VTVector(1, 2, 3), unturned, VTVector(1, 2, 3));
    VTMatrix4 matrix;
    matrix.SetFromAxes(VT_YAXIS_VEC, VT_NEG_XAXIS_VEC, 2 * VT_ZAXIS_VEC);
    matrix.Translate(10, 20, 30);
    box.Transform(matrix);
    EXPECT_EQ(box.GetCenter(), VTVector(8, 21, 36));
    EXPECT_EQ(box.GetBasis()[0], VT_YAXIS_VEC);
    EXPECT_EQ(box.GetBasis()[1], VT_NEG_XAXIS_VEC);
    EXPECT_EQ(box.GetBasis()[2], 2 * VT_ZAXIS_VEC);
    EXPECT_EQ(boundsOf(box), VTBox(6, 20, 30, 10, 22, 42)) << "the extent stays; the basis carries the scale";
}

TEST(OrientedBox, TransformMovesEachVertex) {
    PortableRandom random(94);
    for (int n = 0; n < 100; ++n) {
        VTOrientedBoundingBox box = randomOrientedBox(random);
        VTMatrix4 matrix;
        matrix.SetFromAxes(randomVector(random, 2), randomVector(random, 2), randomVector(random, 2));
        matrix.Translate(randomVector(random, 10));
        auto expected = verticesOf(box);
        box.Transform(matrix);
        const auto found = verticesOf(box);
        for (std::size_t i = 0; i < 8; ++i) {
            expected[i].TransformPoint(matrix);
            ASSERT_TRUE(near(found[i], expected[i], 1e-12)) << n << ' ' << i;
        }
    }
}

TEST(OrientedBox, MoveCenterAlongBasisCountsInBasisVectors) {
    VTOrientedBoundingBox box =
        makeBox(VTVector(10, 20, 30), {{VT_YAXIS_VEC, VT_NEG_XAXIS_VEC, 2 * VT_ZAXIS_VEC}}, VT_UNIT_VEC);
    box.MoveCenterAlongBasis(1, 2, 3);
    EXPECT_EQ(box.GetCenter(), VTVector(8, 21, 36));
}

TEST(OrientedBox, ScaleExtentMultiplies) {
    VTOrientedBoundingBox box = makeBox(VT_ZERO_VEC, unturned, VTVector(1, 2, 3));
    box.ScaleExtent(1, 1, 1);
    EXPECT_EQ(boundsOf(box), VTBox(-1, -2, -3, 1, 2, 3));
    box.ScaleExtent(2, 3, 4);
    EXPECT_EQ(boundsOf(box), VTBox(-2, -6, -12, 2, 6, 12));
    // The same call means something else to the other box: a factor of 1 makes a unit box three long.
    VTBox aligned(0, 0, 0, 1, 1, 1);
    aligned.ScaleExtent(1, 1, 1);
    EXPECT_EQ(aligned.Extent(), VTVector(3, 3, 3));
}

TEST(OrientedBox, ExpandAddsToTheHalfSizes) {
    VTOrientedBoundingBox box =
        makeBox(VT_ZERO_VEC, {{2 * VT_XAXIS_VEC, VT_YAXIS_VEC, VT_ZAXIS_VEC}}, VTVector(1, 2, 3));
    box.Expand(10);
    EXPECT_EQ(boundsOf(box), VTBox(-22, -12, -13, 22, 12, 13)) << "in lengths of the basis";
}

TEST(OrientedBox, NormalizeMovesLengthsIntoTheExtent) {
    VTOrientedBoundingBox box = makeBox(
        VTVector(10, 20, 30), {{4 * VT_YAXIS_VEC, 0.5 * VT_NEG_XAXIS_VEC, 2 * VT_ZAXIS_VEC}}, VTVector(1, 2, 3));
    const auto vertices = verticesOf(box);
    box.Normalize();
    EXPECT_EQ(verticesOf(box), vertices);
    EXPECT_EQ(box.GetBasis()[0], VT_YAXIS_VEC);
    EXPECT_EQ(box.GetBasis()[1], VT_NEG_XAXIS_VEC);
    EXPECT_EQ(box.GetBasis()[2], VT_ZAXIS_VEC);
}

TEST(OrientedBox, GetTransformationMatrixTurnsAndThenMoves) {
    const VTOrientedBoundingBox box = makeBox(VTVector(10, 20, 30), quarterTurn, VTVector(1, 2, 3));
    VTMatrix4 matrix(9.0);
    EXPECT_TRUE(box.GetTransformationMatrix(nullptr, &matrix));
    VTMatrix4 expected;
    expected.SetFromAxes(VT_YAXIS_VEC, VT_NEG_XAXIS_VEC, VT_ZAXIS_VEC);
    expected.Translate(10, 20, 30);
    EXPECT_TRUE(near(matrix, expected, 1e-12)) << "from a new box";

    PortableRandom random(95);
    for (int n = 0; n < 50; ++n) {
        const VTOrientedBoundingBox from = randomOrientedBox(random);
        const VTOrientedBoundingBox to = randomOrientedBox(random);
        EXPECT_TRUE(to.GetTransformationMatrix(&from, &matrix));
        for (int i = 0; i < 3; ++i) {
            VTVector axis = from.GetBasis()[i];
            axis.TransformVector(matrix);
            ASSERT_TRUE(near(axis, to.GetBasis()[i], 1e-7)) << n << ' ' << i;
        }
        ASSERT_TRUE(near(VTVector(matrix.v[12], matrix.v[13], matrix.v[14]), to.GetCenter() - from.GetCenter(), 1e-12));
    }
    EXPECT_EQ(assertsUntil(1, [&] { box.GetTransformationMatrix(nullptr, nullptr); }),
              failedIn("LibUnstructGrid/VTOMathVector", {"pM"}));
}

TEST(OrientedBox, PointsFromBoxRunFromSideToSide) {
    const VTOrientedBoundingBox box =
        makeBox(VTVector(10, 20, 30), {{VT_YAXIS_VEC, VT_NEG_XAXIS_VEC, 2 * VT_ZAXIS_VEC}}, VTVector(1, 2, 3));
    VTVectorArray aPoints = VTVectorArray::Make(VT_ZERO_VEC);
    box.GetPointsFromBox(3, 2, 2, &aPoints);
    const VTVector expected[12] = {VTVector(12, 19, 24), VTVector(12, 20, 24), VTVector(12, 21, 24),
                                   VTVector(8, 19, 24),  VTVector(8, 20, 24),  VTVector(8, 21, 24),
                                   VTVector(12, 19, 36), VTVector(12, 20, 36), VTVector(12, 21, 36),
                                   VTVector(8, 19, 36),  VTVector(8, 20, 36),  VTVector(8, 21, 36)};
    ASSERT_EQ(aPoints.GetNumItems(), 12);
    EXPECT_EQ(aPoints.GetNumAllocated(), 12);
    for (int i = 0; i < 12; ++i) {
        EXPECT_EQ(aPoints[i], expected[i]) << i;
    }
    box.GetPointsFromBox(1, 1, 1, &aPoints);
    ASSERT_EQ(aPoints.GetNumItems(), 1);
    EXPECT_EQ(aPoints[0], VTVector(10, 20, 30));
    box.GetPointsFromBox(1, 1, 2, &aPoints);
    ASSERT_EQ(aPoints.GetNumItems(), 2);
    EXPECT_EQ(aPoints[0], VTVector(10, 20, 24));
    EXPECT_EQ(aPoints[1], VTVector(10, 20, 36));
    aPoints.Alloc(1, 7, true);
    box.GetPointsFromBox(10, 8, 1, &aPoints);
    EXPECT_EQ(aPoints.GetGrowBy(), 10) << "the default step, an eighth";
}

TEST(OrientedBox, PointsFromBoxAssertsArrayAndCounts) {
    const VTOrientedBoundingBox box;
    VTVectorArray aPoints;
    EXPECT_EQ(assertsUntil(1, [&] { box.GetPointsFromBox(1, 1, 1, nullptr); }), failedIn(source, {"pNodeArray"}));
    EXPECT_EQ(assertsUntil(2, [&] { box.GetPointsFromBox(0, 1, 1, nullptr); }),
              failedIn(source, {"pNodeArray", "iNumPoints > 0"}));
    EXPECT_EQ(assertsUntil(1, [&] { box.GetPointsFromBox(1, 0, 1, &aPoints); }), failedIn(source, {"iNumPoints > 0"}));
    EXPECT_EQ(assertsUntil(1, [&] { box.GetPointsFromBox(1, 1, 0, &aPoints); }), failedIn(source, {"iNumPoints > 0"}));
    EXPECT_EQ(assertsUntil(1, [&] { box.GetPointsFromBox(-1, 1, 1, &aPoints); }), failedIn(source, {"iNumPoints > 0"}));
}

TEST(OrientedBox, ResizeDragsAVertexAndKeepsTheOppositeOne) {
    const int opposite[8] = {6, 7, 4, 5, 2, 3, 0, 1};
    PortableRandom random(96);
    for (int n = 0; n < 200; ++n) {
        VTOrientedBoundingBox box = randomOrientedBox(random);
        const int vertex = random.integer(0, 7);
        const VTVector kept = verticesOf(box)[static_cast<std::size_t>(opposite[vertex])];
        const VTVector target = randomVector(random, 8);
        const int moved = box.Resize(vertex, &target, false, false, false);
        ASSERT_GE(moved, 0);
        ASSERT_LE(moved, 7);
        const auto vertices = verticesOf(box);
        ASSERT_TRUE(near(vertices[static_cast<std::size_t>(moved)], target, 1e-12)) << n;
        ASSERT_TRUE(near(vertices[static_cast<std::size_t>(opposite[moved])], kept, 1e-12)) << n;
        VTBox local;
        box.GetMinMax(&local, true);
        for (int i = 0; i < 3; ++i) {
            ASSERT_GE((vertices[5] - vertices[3]) * box.GetBasis()[i], 0) << "the extent is not negative";
        }
    }
}

TEST(OrientedBox, ResizeLeavesLockedAxesAlone) {
    const VTVector target(6, 8, 9);
    for (int mask = 0; mask < 8; ++mask) {
        VTOrientedBoundingBox box = makeBox(VT_ZERO_VEC, unturned, VTVector(1, 2, 3));
        EXPECT_EQ(box.Resize(5, &target, mask & 1, mask & 2, mask & 4), 5);
        const VTVector expected(mask & 1 ? 1 : 6, mask & 2 ? 2 : 8, mask & 4 ? 3 : 9);
        EXPECT_EQ(boundsOf(box), VTBox(VTVector(-1, -2, -3), expected)) << mask;
    }
}

TEST(OrientedBox, ResizeThroughTheOppositeSidesTurnsTheNumber) {
    const struct {
        VTVector target;
        int vertex;
        VTBox bounds;
    } cases[] = {{VTVector(4, 4, 4), 5, VTBox(0, 0, 0, 4, 4, 4)},
                 {VTVector(-4, 4, 4), 4, VTBox(-4, 0, 0, 0, 4, 4)},
                 {VTVector(4, -4, 4), 1, VTBox(0, -4, 0, 4, 0, 4)},
                 {VTVector(4, 4, -4), 6, VTBox(0, 0, -4, 4, 4, 0)},
                 {VTVector(-4, -4, -4), 3, VTBox(-4, -4, -4, 0, 0, 0)}};
    for (const auto& c : cases) {
        VTOrientedBoundingBox box;
        box.SetFromMinMax(VT_ZERO_VEC, VTVector(2, 2, 2));
        EXPECT_EQ(box.Resize(5, &c.target, false, false, false), c.vertex);
        EXPECT_EQ(boundsOf(box), c.bounds);
        VTVector min;
        box.GetMinMax(&min, nullptr, false);
        EXPECT_EQ(min, verticesOf(box)[3]) << "the known vertices keep their numbers";
    }
}

TEST(OrientedBox, ResizeKnowsNoOtherVertices) {
    const VTVector target(6, 8, 9);
    for (int vertex : {-1, 8, INT_MIN, INT_MAX}) {
        VTOrientedBoundingBox box = makeBox(VT_ZERO_VEC, unturned, VTVector(-1, 2, 3));
        const auto vertices = verticesOf(box);
        EXPECT_EQ(box.Resize(vertex, &target, false, false, false), vertex);
        EXPECT_EQ(verticesOf(box), vertices);
    }
}

// A box without size has each vertex at its maximum.
TEST(OrientedBox, ResizeOfABoxWithoutSizeTakesEachVertexForAHighOne) {
    VTOrientedBoundingBox box;
    const VTVector target(-2, 4, 6);
    EXPECT_EQ(box.Resize(3, &target, false, false, false), 2);
    EXPECT_EQ(boundsOf(box), VTBox(-2, 0, 0, 0, 4, 6));
}

// Twice the length of a basis vector counts four times: once in the dot product, once in the move.
TEST(OrientedBox, ResizeTakesTheBasisAsItIs) {
    VTOrientedBoundingBox box = makeBox(VT_ZERO_VEC, {{2 * VT_XAXIS_VEC, VT_YAXIS_VEC, VT_ZAXIS_VEC}}, VT_UNIT_VEC);
    const VTVector target(3, 1, 1); // The vertex stands at (2, 1, 1). The delta is 2 * 1 / 2.
    EXPECT_EQ(box.Resize(5, &target, false, false, false), 5);
    EXPECT_EQ(box.GetCenter(), VTVector(2, 0, 0));
    EXPECT_EQ(boundsOf(box), VTBox(-2, -1, -1, 6, 1, 1));
}

} // namespace
