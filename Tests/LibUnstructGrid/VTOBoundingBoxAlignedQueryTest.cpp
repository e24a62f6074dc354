#include "LibUnstructGrid/VTOBoundingBoxAligned.h"

#include "LibUnstructGrid/VTOLinAlgebraVector4.h"
#include "Tests/LibUnstructGrid/BoxSupport.h"
#include "Tests/LibUnstructGrid/NewWatch.h"

#include <limits>

using orvtest::near;
using orvtest::PortableRandom;
using orvtest::randomBox;
using orvtest::randomVector;

namespace {

TEST(BoxQuery, PointInBoxIncludesItsWidenedSides) {
    const VTBox box(0, 0, 0, 2, 4, 8);
    for (int i = 0; i < 3; ++i) {
        for (double fTolerance : {0.0, 0.5, -0.5}) {
            const double fLow = box.min[i] - fTolerance;
            const double fHigh = box.max[i] + fTolerance;
            VTVector point(1, 1, 1);
            for (double fInside : {fLow, fHigh}) {
                point[i] = fInside;
                EXPECT_TRUE(box.PointInBox(point, fTolerance)) << i << ": " << fInside;
            }
            for (double fOutside : {std::nextafter(fLow, -9.0), std::nextafter(fHigh, 9.0)}) {
                point[i] = fOutside;
                EXPECT_FALSE(box.PointInBox(point, fTolerance)) << i << ": " << fOutside;
            }
        }
    }
    VTBox reset;
    reset.Reset();
    EXPECT_FALSE(reset.PointInBox(VT_ZERO_VEC, 1));
}

TEST(BoxQuery, BoxIntersectIncludesTouching) {
    const VTBox box(0, 0, 0, 1, 1, 1);
    for (int i = 0; i < 3; ++i) {
        VTBox other = box;
        other.min[i] = 1;
        other.max[i] = 2;
        EXPECT_TRUE(box.BoxIntersect(other)) << i;
        EXPECT_TRUE(other.BoxIntersect(box)) << i;
        other.min[i] = std::nextafter(1.0, 2.0);
        EXPECT_FALSE(box.BoxIntersect(other)) << i;
        EXPECT_FALSE(other.BoxIntersect(box)) << i;
    }
    EXPECT_TRUE(box.BoxIntersect(VTBox(0.25, 0.25, 0.25, 0.5, 0.5, 0.5)));
    VTBox reset;
    reset.Reset();
    EXPECT_FALSE(box.BoxIntersect(reset));
}

// Boxes of whole numbers have a point in common when they have one of whole numbers in common.
TEST(BoxQuery, BoxIntersectAgreesWithASearch) {
    PortableRandom random(83);
    int iNumHits = 0;
    for (int n = 0; n < 500; ++n) {
        VTBox boxes[2];
        for (VTBox& box : boxes) {
            for (int i = 0; i < 3; ++i) {
                box.min[i] = random.integer(0, 7);
                box.max[i] = box.min[i] + random.integer(0, 4);
            }
        }
        bool bCommon = false;
        for (int i = 0; i < 12 * 12 * 12; ++i) {
            const VTVector point(i % 12, i / 12 % 12, i / 144);
            bCommon = bCommon || (boxes[0].PointInBox(point, 0.0) && boxes[1].PointInBox(point, 0.0));
        }
        ASSERT_EQ(boxes[0].BoxIntersect(boxes[1]), bCommon) << n;
        iNumHits += bCommon;
    }
    EXPECT_GT(iNumHits, 50);
    EXPECT_LT(iNumHits, 450);
}

// The box reaches from 0 to 1; `at` is where the plane cuts the axis, its inside is above it (sign 1) or below (-1).
VTVector4 planeAcross(int axis, double sign, double at) {
    VTVector normal = VT_ZERO_VEC;
    normal[axis] = 2.0 * sign;
    return VTVector4(normal.x, normal.y, normal.z, 2.0 * sign * at);
}

TEST(BoxQuery, PlanesBoxIntersectTellsOneSideOfAPlaneFromTheOther) {
    const VTBox box(0, 0, 0, 1, 1, 1);
    const double above = std::nextafter(1.0, 2.0);
    const double below = -std::numeric_limits<double>::denorm_min();
    const struct {
        double sign, at;
        int resultWithFlag, resultWithout;
    } cases[] = {{1, above, -1, -1},    // The box lies just below.
                 {1, 1, 0, 1},          // It touches the inside with a side: not outside.
                 {1, 0.5, 0, 1},        // It is crossed, which counts only with the flag.
                 {1, 1e-300, 0, 1},     // So it is here,
                 {1, 0, 1, 1},          // but not where all of it is at or above the plane.
                 {-1, below, -1, -1},   // The same from the other side.
                 {-1, 0, 0, 1},         //
                 {-1, 0.5, 0, 1},       //
                 {-1, 1 - 1e-15, 0, 1}, //
                 {-1, 1, 1, 1}};
    for (const auto& c : cases) {
        for (int axis = 0; axis < 3; ++axis) {
            const VTVector4 plane = planeAcross(axis, c.sign, c.at);
            EXPECT_EQ(box.PlanesBoxIntersect(&plane, 1, true), c.resultWithFlag)
                << axis << ' ' << c.sign << ' ' << c.at;
            EXPECT_EQ(box.PlanesBoxIntersect(&plane, 1, false), c.resultWithout)
                << axis << ' ' << c.sign << ' ' << c.at;
        }
    }
}

TEST(BoxQuery, PlanesBoxIntersectLooksAtAllPlanes) {
    const VTBox box(0, 0, 0, 1, 1, 1);
    const VTVector4 around = planeAcross(0, 1, -1);
    const VTVector4 across = planeAcross(1, 1, 0.5);
    const VTVector4 beyond = planeAcross(2, 1, 2);
    const struct {
        VTVector4 planes[3];
        int resultWithFlag, resultWithout;
    } cases[] = {{{around, around, around}, 1, 1},   {{across, around, around}, 0, 1},
                 {{around, across, around}, 0, 1},   {{around, around, across}, 0, 1},
                 {{beyond, around, across}, -1, -1}, {{across, beyond, around}, -1, -1},
                 {{around, across, beyond}, -1, -1}};
    for (const auto& c : cases) {
        EXPECT_EQ(box.PlanesBoxIntersect(c.planes, 3, true), c.resultWithFlag);
        EXPECT_EQ(box.PlanesBoxIntersect(c.planes, 3, false), c.resultWithout);
    }
    EXPECT_EQ(box.PlanesBoxIntersect(cases[4].planes + 1, 1, true), 1) << "not beyond the count";
}

// By the values of the equation at all eight corners.
TEST(BoxQuery, PlanesBoxIntersectAgreesWithTheCorners) {
    PortableRandom random(84);
    int iCounts[3] = {0, 0, 0};
    for (int n = 0; n < 500; ++n) {
        const VTBox box = randomBox(random, 5);
        const VTVector normal = randomVector(random, 1);
        const VTVector4 plane(normal.x, normal.y, normal.z, random.real(-5, 5));
        VTVector corners[8];
        box.GetCornerPoints(corners);
        int iInside = 0;
        for (const VTVector& corner : corners) {
            iInside += corner * normal - plane.w >= 0.0;
        }
        const int iExpected = iInside == 0 ? -1 : (iInside == 8 ? 1 : 0);
        ASSERT_EQ(box.PlanesBoxIntersect(&plane, 1, true), iExpected) << n;
        ++iCounts[iExpected + 1];
    }
    EXPECT_GT(iCounts[0], 50);
    EXPECT_GT(iCounts[1], 50);
    EXPECT_GT(iCounts[2], 50);
}

TEST(BoxQuery, PlaneMinMaxDistIsTheRangeOverTheCorners) {
    const VTBox box(0, 0, 0, 1, 5, 2);
    EXPECT_EQ(box.PlaneMinMaxDist(VTPlane(0, 2, 0, -2)), VTRealRange(-1, 4));
    EXPECT_EQ(box.PlaneMinMaxDist(VTPlane(0, -2, 0, 2)), VTRealRange(-4, 1));
    EXPECT_EQ(box.PlaneMinMaxDist(VTPlane()), VTRealRange(VT_UNDEFINED_DOUBLE, VT_UNDEFINED_DOUBLE));
    EXPECT_EQ(VTBox(2e30, 0, 0, 3e30, 0, 0).PlaneMinMaxDist(VTPlane(1, 0, 0, 0)), VTRealRange(2e30, 3e30));
    VTBox reset;
    reset.Reset();
    EXPECT_EQ(reset.PlaneMinMaxDist(VTPlane(0, 2, 0, -2)), VTRealRange()) << "invalid";
}

TEST(BoxQuery, PlaneMinMaxDistAgreesWithTheProjectedSize) {
    PortableRandom random(85);
    for (int n = 0; n < 200; ++n) {
        const VTBox box = randomBox(random, 5);
        VTPlane plane;
        const VTVector normal = randomVector(random, 1).GetNormalized();
        plane.SetFromPointAndNormal(randomVector(random, 5), normal);
        const VTVector half = box.Extent() / 2.0;
        const double fReach =
            std::fabs(normal.x) * half.x + std::fabs(normal.y) * half.y + std::fabs(normal.z) * half.z;
        const VTRealRange range = box.PlaneMinMaxDist(plane);
        ASSERT_NEAR(range.min, plane.GetDistance(box.Center()) - fReach, 1e-12);
        ASSERT_NEAR(range.max, plane.GetDistance(box.Center()) + fReach, 1e-12);
    }
}

TEST(BoxQuery, PointDistIsZeroInside) {
    const VTBox box(0, 0, 0, 2, 4, 8);
    for (const VTVector& point : {VTVector(1, 1, 1), VTVector(0, 4, 8), VTVector(2, 0, 3)}) {
        VTVector closest = VT_UNDEFINED_VECTOR;
        EXPECT_EQ(box.GetPointL2Dist(point, &closest), 0);
        EXPECT_EQ(closest, point);
        EXPECT_EQ(box.GetPointDist(point, nullptr), 0);
    }
}

TEST(BoxQuery, PointDistGoesToTheClosestPoint) {
    const VTBox box(0, 0, 0, 2, 4, 8);
    const struct {
        VTVector point, closest;
        double l2;
    } cases[] = {{VTVector(-3, 1, 1), VTVector(0, 1, 1), 9},   {VTVector(5, 1, 1), VTVector(2, 1, 1), 9},
                 {VTVector(1, -3, 1), VTVector(1, 0, 1), 9},   {VTVector(1, 7, 1), VTVector(1, 4, 1), 9},
                 {VTVector(1, 1, -3), VTVector(1, 1, 0), 9},   {VTVector(1, 1, 11), VTVector(1, 1, 8), 9},
                 {VTVector(4, -3, 14), VTVector(2, 0, 8), 49}, {VTVector(-2, 7, -6), VTVector(0, 4, 0), 49}};
    for (const auto& c : cases) {
        VTVector closest = VT_UNDEFINED_VECTOR;
        EXPECT_EQ(box.GetPointL2Dist(c.point, &closest), c.l2);
        EXPECT_EQ(closest, c.closest);
        closest = VT_UNDEFINED_VECTOR;
        EXPECT_EQ(box.GetPointDist(c.point, &closest), std::sqrt(c.l2));
        EXPECT_EQ(closest, c.closest);
        EXPECT_EQ(box.GetPointL2Dist(c.point, nullptr), c.l2);
    }
}

TEST(BoxQuery, PointDistAgreesWithASearch) {
    PortableRandom random(86);
    for (int n = 0; n < 100; ++n) {
        const VTBox box = randomBox(random, 5);
        const VTVector point = randomVector(random, 8);
        VTVector closest;
        const double fL2Dist = box.GetPointL2Dist(point, &closest);
        ASSERT_NEAR(fL2Dist, VTPointL2Dist(point, closest), 1e-12);
        ASSERT_TRUE(box.PointInBox(closest, 1e-12));
        orvtest::forGrid(8, [&](double x, double y, double z) {
            ASSERT_GE(VTPointL2Dist(point, orvtest::pointAt(box, x, y, z)), fL2Dist - 1e-12);
        });
    }
}

struct RayCase {
    VTVector origin, dir;
    double distance;
    VTVector point;
};

TEST(BoxQuery, RayEntersThroughEachSide) {
    const VTBox box(0, 0, 0, 2, 4, 8);
    const RayCase cases[] = {
        {VTVector(-3, 1, 1), VTVector(1, 0, 0), 3, VTVector(0, 1, 1)},
        {VTVector(5, 1, 1), VTVector(-1, 0, 0), 3, VTVector(2, 1, 1)},
        {VTVector(1, -3, 1), VTVector(0, 1, 0), 3, VTVector(1, 0, 1)},
        {VTVector(1, 7, 1), VTVector(0, -1, 0), 3, VTVector(1, 4, 1)},
        {VTVector(1, 1, -3), VTVector(0, 0, 1), 3, VTVector(1, 1, 0)},
        {VTVector(1, 1, 11), VTVector(0, 0, -1), 3, VTVector(1, 1, 8)},
        // Distances count in lengths of the direction.
        {VTVector(-3, 1, 1), VTVector(2, 0, 0), 1.5, VTVector(0, 1, 1)},
        // Oblique: the side that is met last is the one entered.
        {VTVector(-1, -2, 1), VTVector(1, 1, 0), 2, VTVector(1, 0, 1)},
        {VTVector(-2, -1, 1), VTVector(1, 1, 0), 2, VTVector(0, 1, 1)},
        {VTVector(3, 5, 10), VTVector(-1, -1, -1), 2, VTVector(1, 3, 8)},
        // On the way in along an edge and at a vertex.
        {VTVector(-3, 4, 8), VTVector(1, 0, 0), 3, VTVector(0, 4, 8)},
        {VTVector(-3, 0, 0), VTVector(1, 0, 0), 3, VTVector(0, 0, 0)},
        {VTVector(-1, -1, -1), VTVector(1, 1, 1), 1, VTVector(0, 0, 0)},
        {VTVector(3, 5, 9), VTVector(-1, -1, -1), 1, VTVector(2, 4, 8)},
        // From inside and from a side, in whatever direction.
        {VTVector(1, 1, 1), VTVector(1, 0, 0), 0, VTVector(1, 1, 1)},
        {VTVector(0, 1, 1), VTVector(-1, 0, 0), 0, VTVector(0, 1, 1)},
        {VTVector(2, 4, 8), VTVector(1, 1, 1), 0, VTVector(2, 4, 8)},
        {VTVector(1, 1, 1), VTVector(0, 0, 0), 0, VTVector(1, 1, 1)},
        // So near for such a direction that the distance is 0 in doubles: 1e-200 / 1e200.
        {VTVector(-1e-200, 1, 1), VTVector(1e200, 0, 0), 0, VTVector(0, 1, 1)},
        // Along the side it starts on, which it will never meet.
        {VTVector(0, 1, 1), VTVector(0, 1, 0), 0, VTVector(0, 1, 1)},
        {VTVector(2, 1, 1), VTVector(0, 1, 0), 0, VTVector(2, 1, 1)},
        {VTVector(1, 0, 1), VTVector(1, 0, 0), 0, VTVector(1, 0, 1)},
        {VTVector(1, 4, 1), VTVector(1, 0, 0), 0, VTVector(1, 4, 1)},
        {VTVector(1, 1, 0), VTVector(1, 0, 0), 0, VTVector(1, 1, 0)},
        {VTVector(1, 1, 8), VTVector(1, 0, 0), 0, VTVector(1, 1, 8)},
    };
    for (const RayCase& c : cases) {
        double fDist = -9;
        VTVector point = VT_UNDEFINED_VECTOR;
        EXPECT_TRUE(box.RayIntersect(c.origin, c.dir, &fDist, &point)) << testing::PrintToString(c.origin);
        EXPECT_EQ(fDist, c.distance) << testing::PrintToString(c.origin);
        EXPECT_EQ(point, c.point) << testing::PrintToString(c.origin);
        EXPECT_TRUE(box.RayIntersect(c.origin, c.dir, nullptr, nullptr));
    }
}

TEST(BoxQuery, RayThatMissesWritesNothing) {
    const VTBox box(0, 0, 0, 2, 4, 8);
    const std::pair<VTVector, VTVector> rays[] = {
        {VTVector(-3, 1, 1), VTVector(-1, 0, 0)}, // Away from the box, on each side.
        {VTVector(5, 1, 1), VTVector(1, 0, 0)},
        {VTVector(1, -3, 1), VTVector(0, -1, 0)},
        {VTVector(1, 7, 1), VTVector(0, 1, 0)},
        {VTVector(1, 1, -3), VTVector(0, 0, -1)},
        {VTVector(1, 1, 11), VTVector(0, 0, 1)},
        {VTVector(-3, 1, 1), VTVector(-99, 0, 0)}, // The side lies behind by a small part of the direction only.
        {VTVector(-3, -1, 1), VTVector(-99, -99, 0)},
        {VTVector(-3, 1, 1), VTVector(0, 1, 0)}, // Along a side and nowhere.
        {VTVector(-3, 1, 1), VTVector(0, 0, 0)},
        {VTVector(-3, 5, 1), VTVector(1, 0, 0)}, // Along an axis, but beside the box.
        {VTVector(-3, -1, 1), VTVector(1, 0, 0)},
        {VTVector(-3, 1, 9), VTVector(1, 0, 0)},
        {VTVector(-3, 1, -1), VTVector(1, 0, 0)},
        {VTVector(3, 1, -1), VTVector(0, 0, 1)},
        {VTVector(-3, 1, 1), VTVector(1, 2, 0)},  // Oblique, past each neighbouring side.
        {VTVector(-3, 1, 1), VTVector(1, -2, 0)}, //
        {VTVector(-3, 1, 1), VTVector(1, 0, 4)},  //
        {VTVector(-3, 1, 1), VTVector(1, 0, -4)}, //
        {VTVector(1, 1, 11), VTVector(2, 0, -3)},
        {VTVector(1, 1, 11), VTVector(-2, 0, -3)},
        {VTVector(-3, 4, std::nextafter(8.0, 9.0)), VTVector(1, 0, 0)}, // Just beside an edge.
    };
    for (const auto& [origin, dir] : rays) {
        double fDist = -9;
        VTVector point(7, 7, 7);
        EXPECT_FALSE(box.RayIntersect(origin, dir, &fDist, &point)) << testing::PrintToString(origin);
        EXPECT_EQ(fDist, -9);
        EXPECT_EQ(point, VTVector(7, 7, 7));
    }
}

// A box that is invalid in x: from both ends the ray goes to the numbers as they stand.
TEST(BoxQuery, RayTakesAnInvalidBoxAsItStands) {
    const VTBox box(5, 0, 0, -5, 1, 1);
    double fDist = 0;
    VTVector point;
    EXPECT_TRUE(box.RayIntersect(VTVector(-9, 0.5, 0.5), VT_XAXIS_VEC, &fDist, &point));
    EXPECT_EQ(fDist, 14);
    EXPECT_EQ(point, VTVector(5, 0.5, 0.5));
    EXPECT_TRUE(box.RayIntersect(VTVector(0, 0.5, 0.5), VT_XAXIS_VEC, &fDist, &point)) << "below, before above";
    EXPECT_EQ(fDist, 5);
    EXPECT_FALSE(box.RayIntersect(VTVector(-9, 2, 0.5), VTVector(0, -1, 0), &fDist, &point));
}

TEST(BoxQuery, RayAllocatesNothing) {
    const VTBox box(0, 0, 0, 2, 4, 8);
    double fDist = 0;
    VTVector point;
    EXPECT_TRUE(orvtest::allocations([&] {
                    box.RayIntersect(VTVector(-3, 1, 1), VT_XAXIS_VEC, &fDist, &point);
                    box.RayIntersect(VTVector(-3, 1, 1), VT_YAXIS_VEC, &fDist, &point);
                }).empty());
    EXPECT_EQ(point, VTVector(0, 1, 1));
}

// In doubles 1/49 * 49 is one rounding below 1. Both axes are met at the same distance, the first counts as the one
// hit: its coordinate is that of the side, and the other one is computed and lies just outside.
TEST(BoxQuery, RayHitsTheFirstOfEqualAxesExactly) {
    const VTBox box(0, 0, 0, 1, 1, 1);
    ASSERT_LT(1.0 / 49 * 49, 1);
    double fDist = 0;
    VTVector point;
    EXPECT_FALSE(box.RayIntersect(VTVector(-1.0 / 49, -1, 0.5), VTVector(1, 49, 0), &fDist, &point));
    EXPECT_TRUE(box.RayIntersect(VTVector(-1, -1.0 / 49, 0.5), VTVector(49, 1, 0), &fDist, &point));
    EXPECT_EQ(fDist, 1.0 / 49);
    EXPECT_EQ(point, VTVector(0, 0, 0.5));
    // The same with y before z, and with x before z.
    EXPECT_FALSE(box.RayIntersect(VTVector(0.5, -1.0 / 49, -1), VTVector(0, 1, 49), &fDist, &point));
    EXPECT_TRUE(box.RayIntersect(VTVector(0.5, -1, -1.0 / 49), VTVector(0, 49, 1), &fDist, &point));
    EXPECT_FALSE(box.RayIntersect(VTVector(-1.0 / 49, 0.5, -1), VTVector(1, 0, 49), &fDist, &point));
    EXPECT_TRUE(box.RayIntersect(VTVector(-1, 0.5, -1.0 / 49), VTVector(49, 0, 1), &fDist, &point));
}

// Samples along the ray: none before the hit is inside, and on a miss none at all.
TEST(BoxQuery, RayAgreesWithDenseSampling) {
    PortableRandom random(87);
    int iNumHits = 0;
    for (int n = 0; n < 400; ++n) {
        const VTBox box = randomBox(random, 3);
        const VTVector origin = randomVector(random, 6);
        VTVector dir = (randomVector(random, 3) - origin) * random.real(-0.1, 0.5);
        if (n % 4 == 0) {
            dir[n / 4 % 3] = 0.0;
        }
        double fDist = 40;
        VTVector point;
        const bool bHit = box.RayIntersect(origin, dir, &fDist, &point);
        const int iNumSamples = 2000;
        for (int i = 0; i < iNumSamples && fDist > 0.0; ++i) {
            ASSERT_FALSE(box.PointInBox(origin + (fDist * i / iNumSamples) * dir, -1e-9)) << n;
        }
        if (bHit) {
            ++iNumHits;
            ASSERT_TRUE(near(point, origin + fDist * dir, 1e-12)) << n;
            ASSERT_TRUE(box.PointInBox(point, 0.0)) << n;
        }
    }
    EXPECT_GT(iNumHits, 50);
    EXPECT_LT(iNumHits, 350);
}

} // namespace
