#include "LibUnstructGrid/VTOBoundingBoxOriented.h"

#include "Tests/LibUnstructGrid/BoxSupport.h"

#include <algorithm>

using orvtest::Basis;
using orvtest::floatE30;
using orvtest::makeBox;
using orvtest::near;
using orvtest::PortableRandom;
using orvtest::randomBasis;
using orvtest::randomOrientedBox;
using orvtest::randomVector;
using orvtest::verticesOf;

namespace {

const Basis unturned{{VT_XAXIS_VEC, VT_YAXIS_VEC, VT_ZAXIS_VEC}};
// A quarter turn about z: the box's x goes along y, its y against x. Coordinates stay exact.
const Basis quarterTurn{{VT_YAXIS_VEC, VT_NEG_XAXIS_VEC, VT_ZAXIS_VEC}};

VTVector extentOf(const VTOrientedBoundingBox& box) {
    const VTVector half = (verticesOf(box)[5] - verticesOf(box)[3]) / 2.0;
    return VTVector(half * box.GetBasis()[0], half * box.GetBasis()[1], half * box.GetBasis()[2]);
}

/// The components of a way along the basis of a box.
VTVector alongBasis(const VTOrientedBoundingBox& box, const VTVector& way) {
    return VTVector(way * box.GetBasis()[0], way * box.GetBasis()[1], way * box.GetBasis()[2]);
}

VTVector fromBasis(const VTOrientedBoundingBox& box, const VTVector& local) {
    return local.x * box.GetBasis()[0] + local.y * box.GetBasis()[1] + local.z * box.GetBasis()[2];
}

/// The same box in its own coordinates.
VTBox localBox(const VTOrientedBoundingBox& box) {
    return VTBox(-extentOf(box), extentOf(box));
}

struct Hit {
    double distance = -9;
    int vertex = -9;
    int side = -9;
    VTVector point = VTVector(-9, -9, -9);
};

bool shoot(const VTOrientedBoundingBox& box, const VTVector& origin, const VTVector& dir, Hit* pHit) {
    return box.RayIntersect(origin, dir, &pHit->distance, &pHit->vertex, &pHit->side, &pHit->point);
}

TEST(OrientedBoxRay, MeetsEachSide) {
    // 2 against x for the box's y, 1 along y for its x, 3 along z.
    const VTOrientedBoundingBox box = makeBox(VTVector(10, 20, 30), quarterTurn, VTVector(1, 2, 3));
    const struct {
        VTVector way; // From beside the center outwards, to beyond the side.
        int side;
        VTVector point;
        int vertex;
    } cases[] = {
        {VTVector(7, 0, 0), 0, VTVector(12, 20.25, 30.5), 1}, {VTVector(-7, 0, 0), 1, VTVector(8, 20.25, 30.5), 5},
        {VTVector(0, 0, 8), 2, VTVector(9.5, 20.25, 33), 5},  {VTVector(0, 0, -8), 3, VTVector(9.5, 20.25, 27), 6},
        {VTVector(0, -6, 0), 4, VTVector(9.5, 19, 30.5), 4},  {VTVector(0, 6, 0), 5, VTVector(9.5, 21, 30.5), 5}};
    for (const auto& c : cases) {
        const VTVector start = VTVector(9.5, 20.25, 30.5) + c.way;
        Hit hit;
        EXPECT_TRUE(shoot(box, start, -2.0 * c.way.GetNormalized(), &hit)) << c.side;
        EXPECT_EQ(hit.distance, VTPointDist(start, c.point) / 2) << c.side << ": in lengths of the direction";
        EXPECT_EQ(hit.side, c.side);
        EXPECT_EQ(hit.point, c.point) << c.side;
        EXPECT_EQ(hit.vertex, c.vertex) << c.side;
        // From inside the same side is met on the way out.
        EXPECT_TRUE(shoot(box, VTVector(9.5, 20.25, 30.5), c.way, &hit)) << c.side;
        EXPECT_EQ(hit.side, c.side);
        EXPECT_TRUE(near(hit.point, c.point, 1e-14));
    }
}

TEST(OrientedBoxRay, NearestVertexIsTheFirstOfItsSide) {
    const VTOrientedBoundingBox box = makeBox(VT_ZERO_VEC, unturned, VT_UNIT_VEC);
    const int first[6] = {0, 4, 0, 2, 3, 1};
    const VTVector normals[6] = {VT_NEG_YAXIS_VEC, VT_YAXIS_VEC,     VT_ZAXIS_VEC,
                                 VT_NEG_ZAXIS_VEC, VT_NEG_XAXIS_VEC, VT_XAXIS_VEC};
    for (int side = 0; side < 6; ++side) {
        Hit hit;
        EXPECT_TRUE(shoot(box, 3 * normals[side], -normals[side], &hit));
        EXPECT_EQ(hit.side, side);
        EXPECT_EQ(hit.vertex, first[side]) << "all four are equally near";
    }
}

TEST(OrientedBoxRay, MissWritesTheFarDistanceAlone) {
    const VTOrientedBoundingBox box = makeBox(VT_ZERO_VEC, unturned, VT_UNIT_VEC);
    const std::pair<VTVector, VTVector> rays[] = {
        {VTVector(3, 0, 0), VTVector(1, 0, 0)},    // Away from the box.
        {VTVector(3, 2, 0), VTVector(-1, 0, 0)},   // Past it.
        {VTVector(3, 0, 0), VTVector(0, 1, 0)},    // Along a side.
        {VTVector(2e30, 0, 0), VTVector(-1, 0, 0)} // Towards it, from too far away.
    };
    for (const auto& [origin, dir] : rays) {
        Hit hit;
        EXPECT_FALSE(shoot(box, origin, dir, &hit));
        EXPECT_EQ(hit.distance, floatE30);
        EXPECT_EQ(hit.vertex, -9);
        EXPECT_EQ(hit.side, -9);
        EXPECT_EQ(hit.point, VTVector(-9, -9, -9));
        EXPECT_FALSE(box.RayIntersect(origin, dir, nullptr, nullptr, nullptr, nullptr));
    }
}

TEST(OrientedBoxRay, OutputsAreOptional) {
    const VTOrientedBoundingBox box = makeBox(VT_ZERO_VEC, unturned, VT_UNIT_VEC);
    EXPECT_TRUE(box.RayIntersect(VTVector(3, 0, 0), VT_NEG_XAXIS_VEC, nullptr, nullptr, nullptr, nullptr));
}

TEST(OrientedBoxRay, StartOnASideIsMet) {
    const VTOrientedBoundingBox box = makeBox(VT_ZERO_VEC, unturned, VT_UNIT_VEC);
    Hit hit;
    EXPECT_TRUE(shoot(box, VTVector(1, 0.25, 0.5), VT_XAXIS_VEC, &hit));
    EXPECT_EQ(hit.distance, 0);
    EXPECT_EQ(hit.side, 5);
    EXPECT_EQ(hit.point, VTVector(1, 0.25, 0.5));
}

TEST(OrientedBoxRay, OfSidesEquallyNearTheFirstCounts) {
    const VTOrientedBoundingBox box = makeBox(VT_ZERO_VEC, unturned, VT_UNIT_VEC);
    Hit hit;
    EXPECT_TRUE(shoot(box, VTVector(3, 0.25, 3), VTVector(-1, 0, -1), &hit)); // Towards the edge of sides 2 and 5.
    EXPECT_EQ(hit.side, 2);
    EXPECT_EQ(hit.distance, 2);
}

// In the coordinates of the box itself a ray from outside enters as it enters an aligned box.
TEST(OrientedBoxRay, AgreesWithTheAlignedBox) {
    PortableRandom random(101);
    int iNumHits = 0;
    for (int n = 0; n < 500; ++n) {
        const VTOrientedBoundingBox box = randomOrientedBox(random);
        const VTVector origin = randomVector(random, 10);
        const VTVector dir = (box.GetCenter() + randomVector(random, 3) - origin) * random.real(-0.1, 0.5);
        const VTVector localOrigin = alongBasis(box, origin - box.GetCenter());
        if (localBox(box).PointInBox(localOrigin, 0.0)) {
            continue;
        }
        double fExpected = floatE30;
        VTVector localPoint;
        const bool bExpected = localBox(box).RayIntersect(localOrigin, alongBasis(box, dir), &fExpected, &localPoint);
        Hit hit;
        ASSERT_EQ(shoot(box, origin, dir, &hit), bExpected) << n;
        ASSERT_NEAR(hit.distance, fExpected, 1e-9) << n;
        if (bExpected) {
            ++iNumHits;
            ASSERT_TRUE(near(hit.point, box.GetCenter() + fromBasis(box, localPoint), 1e-12)) << n;
            VTOrientedBoundingBox planes(box);
            ASSERT_NEAR(planes.GetSidePlanes(hit.side, nullptr)->GetDistance(hit.point), 0, 1e-12) << n;
            const auto vertices = verticesOf(box);
            const VTVector& nearest = vertices[static_cast<std::size_t>(hit.vertex)];
            for (const VTVector& vertex : vertices) {
                ASSERT_LE(VTPointDist(hit.point, nearest), VTPointDist(hit.point, vertex) + 1e-12) << n;
            }
        }
    }
    EXPECT_GT(iNumHits, 100);
    EXPECT_LT(iNumHits, 400);
}

// Samples along the ray: from outside none before the hit is inside, from inside all are; on a miss none at all.
TEST(OrientedBoxRay, AgreesWithDenseSampling) {
    PortableRandom random(102);
    for (int n = 0; n < 200; ++n) {
        VTOrientedBoundingBox box = randomOrientedBox(random);
        VTVector origin = randomVector(random, 8);
        if (n % 4 == 0) {
            origin = box.GetCenter() + fromBasis(box, 0.9 * random.real(-1, 1) * extentOf(box));
        }
        const VTVector dir = randomVector(random, 1);
        Hit hit;
        const bool bHit = shoot(box, origin, dir, &hit);
        const bool bInside = box.PointInBox(origin);
        ASSERT_TRUE(bHit || !bInside) << n;
        const double fEnd = bHit ? hit.distance * (1 - 1e-9) : 50.0;
        for (int i = 0; i <= 1000; ++i) {
            ASSERT_EQ(box.PointInBox(origin + (fEnd * i / 1000) * dir), bInside) << n << ' ' << i;
        }
    }
}

TEST(OrientedBoxPoint, LiesInsideOrOnTheSides) {
    VTOrientedBoundingBox box = makeBox(VTVector(10, 20, 30), quarterTurn, VTVector(1, 2, 3));
    const VTVector half(2, 1, 3); // Along the axes of the model.
    for (int i = 0; i < 3; ++i) {
        for (double sign : {-1.0, 1.0}) {
            VTVector point(10, 20, 30);
            point[i] += sign * half[i];
            EXPECT_TRUE(box.PointInBox(point)) << i;
            // By far within the tolerance of the bounds, and outside all the same.
            point[i] = std::nextafter(point[i], sign * 99);
            EXPECT_FALSE(box.PointInBox(point)) << i;
        }
    }
    EXPECT_TRUE(box.PointInBox(VTVector(10, 20, 30)));
    EXPECT_TRUE(box.PointInBox(VTVector(12, 21, 33))) << "a vertex";
    EXPECT_FALSE(box.PointInBox(VTVector(13, 20, 30)));
    box.SetCenter(13, 20, 30);
    EXPECT_TRUE(box.PointInBox(VTVector(13, 20, 30))) << "after a change";
}

// The planes of a slanted box, whose basis is not at right angles, are not those of its sides and leave room beyond its
// vertices: x from -3 to -1 and 2 x + y from -7 to 3. There the bounds decide, y from -1 to 1 with their tolerance.
TEST(OrientedBoxPoint, MustLieInTheBoundsToo) {
    VTOrientedBoundingBox box = makeBox(VT_ZERO_VEC, {{VT_XAXIS_VEC, VTVector(2, 1, 0), VT_ZAXIS_VEC}}, VT_UNIT_VEC);
    EXPECT_TRUE(box.PointInBox(VTVector(-2, 1, 0)));
    EXPECT_TRUE(box.PointInBox(VTVector(-2, 1 + 0.9e-12, 0)));
    EXPECT_FALSE(box.PointInBox(VTVector(-2, 1 + 1.1e-12, 0)));
}

TEST(OrientedBoxPoint, AgreesWithLocalCoordinates) {
    PortableRandom random(103);
    int iNumInside = 0;
    for (int n = 0; n < 1000; ++n) {
        VTOrientedBoundingBox box = randomOrientedBox(random);
        const VTVector point = box.GetCenter() + randomVector(random, 3);
        const bool bExpected = localBox(box).PointInBox(alongBasis(box, point - box.GetCenter()), 0.0);
        ASSERT_EQ(box.PointInBox(point), bExpected) << n;
        iNumInside += bExpected;
    }
    EXPECT_GT(iNumInside, 50);
    EXPECT_LT(iNumInside, 900);
}

TEST(OrientedBoxPoint, DistGoesToTheClosestPoint) {
    const VTOrientedBoundingBox box = makeBox(VTVector(10, 20, 30), quarterTurn, VTVector(1, 2, 3));
    const struct {
        VTVector way, closest;
        double l2;
    } cases[] = {{VTVector(0, 0, 0), VTVector(0, 0, 0), 0},   {VTVector(2, -1, 3), VTVector(2, -1, 3), 0},
                 {VTVector(5, 0, 0), VTVector(2, 0, 0), 9},   {VTVector(-5, 0, 0), VTVector(-2, 0, 0), 9},
                 {VTVector(0, 4, 0), VTVector(0, 1, 0), 9},   {VTVector(0, -4, 0), VTVector(0, -1, 0), 9},
                 {VTVector(0, 0, 6), VTVector(0, 0, 3), 9},   {VTVector(0, 0, -6), VTVector(0, 0, -3), 9},
                 {VTVector(4, -4, 9), VTVector(2, -1, 3), 49}};
    for (const auto& c : cases) {
        const VTVector center(10, 20, 30);
        VTVector closest = VT_UNDEFINED_VECTOR;
        EXPECT_EQ(box.GetPointL2Dist(center + c.way, &closest), c.l2);
        EXPECT_EQ(closest, center + c.closest);
        closest = VT_UNDEFINED_VECTOR;
        EXPECT_EQ(box.GetPointDist(center + c.way, &closest), std::sqrt(c.l2));
        EXPECT_EQ(closest, center + c.closest);
        EXPECT_EQ(box.GetPointL2Dist(center + c.way, nullptr), c.l2);
    }
}

// With twice the length of an axis the way along it counts twice, and so does the half-size on the way back.
TEST(OrientedBoxPoint, DistTakesTheBasisAsItIs) {
    const VTOrientedBoundingBox box =
        makeBox(VT_ZERO_VEC, {{2 * VT_XAXIS_VEC, VT_YAXIS_VEC, VT_ZAXIS_VEC}}, VT_UNIT_VEC);
    VTVector closest;
    EXPECT_EQ(box.GetPointL2Dist(VTVector(3, 0, 0), &closest), 25);
    EXPECT_EQ(closest, VTVector(2, 0, 0));
}

TEST(OrientedBoxPoint, DistAgreesWithASearch) {
    PortableRandom random(104);
    for (int n = 0; n < 100; ++n) {
        VTOrientedBoundingBox box = randomOrientedBox(random);
        const VTVector point = randomVector(random, 8);
        VTVector closest;
        const double fL2Dist = box.GetPointL2Dist(point, &closest);
        ASSERT_NEAR(fL2Dist, VTPointL2Dist(point, closest), 1e-12);
        ASSERT_TRUE(localBox(box).PointInBox(alongBasis(box, closest - box.GetCenter()), 1e-12));
        orvtest::forGrid(8, [&](double x, double y, double z) {
            const VTVector inside = box.GetCenter() + fromBasis(box, orvtest::pointAt(localBox(box), x, y, z));
            ASSERT_GE(VTPointL2Dist(point, inside), fL2Dist - 1e-12);
        });
    }
}

/// Whether some part of a segment lies in the box: what the three pairs of sides leave of it.
bool segmentMeets(const VTOrientedBoundingBox& box, const VTVector& from, const VTVector& to) {
    const VTVector start = alongBasis(box, from - box.GetCenter());
    const VTVector way = alongBasis(box, to - from);
    const VTVector extent = extentOf(box);
    double fIn = 0.0;
    double fOut = 1.0;
    for (int i = 0; i < 3; ++i) {
        const double a = (-extent[i] - start[i]) / way[i];
        const double b = (extent[i] - start[i]) / way[i];
        fIn = std::max(fIn, std::min(a, b));
        fOut = std::min(fOut, std::max(a, b));
    }
    return fIn <= fOut;
}

/// Two convex bodies have a point in common exactly when an edge of one of them meets the other.
bool edgesMeet(const VTOrientedBoundingBox& a, const VTOrientedBoundingBox& b) {
    int sides[24];
    VTVector vertices[8];
    b.GetFaceSet(vertices, sides, nullptr);
    for (int i = 0; i < 24; ++i) {
        const int next = i % 4 == 3 ? i - 3 : i + 1;
        if (segmentMeets(a, vertices[sides[i]], vertices[sides[next]])) {
            return true;
        }
    }
    return false;
}

TEST(OrientedBoxIntersect, AgreesWithAllEdges) {
    PortableRandom random(105);
    int iNumHits = 0;
    for (int n = 0; n < 3000; ++n) {
        const VTOrientedBoundingBox a = randomOrientedBox(random);
        const VTOrientedBoundingBox b = randomOrientedBox(random);
        const bool bExpected = edgesMeet(a, b) || edgesMeet(b, a);
        ASSERT_EQ(a.BoxIntersect(b), bExpected) << n;
        ASSERT_EQ(b.BoxIntersect(a), bExpected) << n;
        iNumHits += bExpected;
    }
    EXPECT_GT(iNumHits, 500);
    EXPECT_LT(iNumHits, 2500);
}

/// The middle of the box's vertex, edge or side that is farthest along a direction. Axes across the direction, marked
/// in `bFlat`, do not count.
VTVector farthestMiddle(const VTOrientedBoundingBox& box, const VTVector& direction, const bool (&bFlat)[3]) {
    VTVector local = extentOf(box);
    for (int i = 0; i < 3; ++i) {
        local[i] *= bFlat[i] ? 0.0 : (box.GetBasis()[i] * direction < 0.0 ? -1.0 : 1.0);
    }
    return fromBasis(box, local);
}

/// Puts `b` beside `a` so that the two touch, at the places given, across `direction`, and then moves it away by `gap`.
void putBeside(const VTOrientedBoundingBox& a, const VTVector& placeOnA, VTOrientedBoundingBox* b,
               const VTVector& placeOnB, const VTVector& direction, double gap) {
    const VTVector center = a.GetCenter() + placeOnA - placeOnB + gap * direction.GetNormalized();
    b->SetCenter(center.x, center.y, center.z);
}

constexpr double gap = 1e-9;

// A side of the one against a vertex of the other: only the axis of that side separates them.
TEST(OrientedBoxIntersect, AxisOfASideSeparatesByAHair) {
    PortableRandom random(106);
    for (int n = 0; n < 60; ++n) {
        const VTOrientedBoundingBox a = randomOrientedBox(random);
        VTOrientedBoundingBox b = randomOrientedBox(random);
        const int i = n % 3;
        const VTVector direction = n % 2 ? a.GetBasis()[i] : -a.GetBasis()[i];
        const bool side[3] = {i != 0, i != 1, i != 2};
        const VTVector placeOnA = farthestMiddle(a, direction, side);
        const VTVector placeOnB = farthestMiddle(b, -direction, {false, false, false});
        putBeside(a, placeOnA, &b, placeOnB, direction, gap);
        EXPECT_FALSE(a.BoxIntersect(b)) << n;
        EXPECT_FALSE(b.BoxIntersect(a)) << n;
        putBeside(a, placeOnA, &b, placeOnB, direction, -gap);
        EXPECT_TRUE(a.BoxIntersect(b)) << n;
        EXPECT_TRUE(b.BoxIntersect(a)) << n;
    }
}

// An edge against an edge: only the axis across both separates them.
TEST(OrientedBoxIntersect, AxisAcrossTwoEdgesSeparatesByAHair) {
    PortableRandom random(107);
    for (int n = 0; n < 180; ++n) {
        const VTOrientedBoundingBox a = randomOrientedBox(random);
        VTOrientedBoundingBox b = randomOrientedBox(random);
        const int i = n % 3;
        const int j = n / 3 % 3;
        const VTVector across = a.GetBasis()[i] ^ b.GetBasis()[j];
        const VTVector direction = n % 2 ? across : -across;
        const VTVector placeOnA = farthestMiddle(a, direction, {i == 0, i == 1, i == 2});
        const VTVector placeOnB = farthestMiddle(b, -direction, {j == 0, j == 1, j == 2});
        putBeside(a, placeOnA, &b, placeOnB, direction, gap);
        EXPECT_FALSE(a.BoxIntersect(b)) << i << ' ' << j;
        putBeside(a, placeOnA, &b, placeOnB, direction, -gap);
        EXPECT_TRUE(a.BoxIntersect(b)) << i << ' ' << j;
    }
}

TEST(OrientedBoxIntersect, TouchingSidesIntersectExactly) {
    const VTOrientedBoundingBox a = makeBox(VT_ZERO_VEC, unturned, VTVector(1, 2, 3));
    const VTVector halfOfB(5, 4, 6); // Of (4, 5, 6) along the turned axes.
    for (int i = 0; i < 3; ++i) {
        for (double sign : {-1.0, 1.0}) {
            VTVector center = VT_ZERO_VEC;
            center[i] = sign * (extentOf(a)[i] + halfOfB[i]);
            VTOrientedBoundingBox b = makeBox(center, quarterTurn, VTVector(4, 5, 6));
            EXPECT_TRUE(a.BoxIntersect(b)) << i;
            EXPECT_TRUE(b.BoxIntersect(a)) << i;
            center[i] = std::nextafter(center[i], sign * 99);
            b.SetCenter(center.x, center.y, center.z);
            EXPECT_FALSE(a.BoxIntersect(b)) << i;
            EXPECT_FALSE(b.BoxIntersect(a)) << i;
        }
    }
    EXPECT_TRUE(a.BoxIntersect(a));
    EXPECT_TRUE(a.BoxIntersect(makeBox(VT_ZERO_VEC, unturned, 0.1 * VT_UNIT_VEC))) << "one in the other";
    EXPECT_TRUE(makeBox(VT_ZERO_VEC, unturned, 0.1 * VT_UNIT_VEC).BoxIntersect(a));
}

} // namespace
