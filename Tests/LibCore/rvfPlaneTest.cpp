#include "LibCore/rvfPlane.h"

#include "LibCore/rvfRef.h"
#include "Tests/Support/AssertRecorder.h"

#include <gtest/gtest.h>

#include <cmath>

using orvtest::AssertRecorder;
using orvtest::FailedAssert;
using rvf::Plane;
using Vec3d = rvf::Vector3<double>;

namespace rvf {

static void PrintTo(const Vector3<double>& v, std::ostream* out) {
    *out << '(' << v.x() << ", " << v.y() << ", " << v.z() << ')';
}

} // namespace rvf

namespace {

const char* const NO_NORMAL = "!normal.isZero()";
const char* const NO_LENGTH = "factor > 0.0";

std::vector<FailedAssert> failed(std::initializer_list<const char*> expressions) {
    std::vector<FailedAssert> list;
    for (const char* expression : expressions) {
        list.push_back({"LibCore/rvfPlane", expression, std::nullopt});
    }
    return list;
}

Plane plane(double A, double B, double C, double D) {
    Plane result;
    result.set(A, B, C, D);
    return result;
}

void expectCoefficients(const Plane& plane, double A, double B, double C, double D) {
    EXPECT_EQ(plane.A(), A);
    EXPECT_EQ(plane.B(), B);
    EXPECT_EQ(plane.C(), C);
    EXPECT_EQ(plane.D(), D);
}

void expectNear(const Vec3d& found, const Vec3d& expected) {
    for (size_t axis = 0; axis < 3; ++axis) {
        EXPECT_NEAR(found[axis], expected[axis], 1e-12) << axis;
    }
}

TEST(Plane, NewPlaneIsAllZero) {
    expectCoefficients(Plane(), 0, 0, 0, 0);
    EXPECT_FALSE(Plane().isValid());
}

TEST(Plane, IsCounted) {
    rvf::ref<Plane> counted = new Plane;
    EXPECT_EQ(counted->refCount(), 1);
    const Plane copy(*counted);
    EXPECT_EQ(copy.refCount(), 0);
}

TEST(Plane, SetStoresTheFour) {
    AssertRecorder recorder;
    Plane p;
    p.set(1, -2, 3, 4);
    expectCoefficients(p, 1, -2, 3, 4);
    EXPECT_TRUE(recorder.take().empty());
    p.set(0, 0, 0, 7);
    EXPECT_EQ(recorder.take(), failed({"!(A == 0.0 && B == 0.0 && C == 0.0)"}));
    expectCoefficients(p, 0, 0, 0, 7);
}

TEST(Plane, EqualIsExact) {
    EXPECT_TRUE(plane(1, 2, 3, 4) == plane(1, 2, 3, 4));
    EXPECT_FALSE(plane(1, 2, 3, 4) != plane(1, 2, 3, 4));
    EXPECT_TRUE(plane(1, 2, 3, 4) != plane(2, 4, 6, 8));
    for (int i = 0; i < 4; ++i) {
        double c[4] = {1, 2, 3, 4};
        c[i] = 9;
        EXPECT_FALSE(plane(c[0], c[1], c[2], c[3]) == plane(1, 2, 3, 4)) << i;
    }
}

TEST(Plane, IsValidWithAnyNormal) {
    EXPECT_TRUE(plane(1e-300, 0, 0, 0).isValid());
    EXPECT_TRUE(plane(0, -1, 0, 0).isValid());
    EXPECT_TRUE(plane(0, 0, 2, 0).isValid());
    AssertRecorder recorder;
    EXPECT_FALSE(plane(0, 0, 0, 5).isValid());
}

TEST(Plane, SetFromPointAndNormalKeepsTheNormal) {
    AssertRecorder recorder;
    Plane p;
    EXPECT_TRUE(p.setFromPointAndNormal(Vec3d(1, 2, 3), Vec3d(0, 0, 2)));
    expectCoefficients(p, 0, 0, 2, -6);
    EXPECT_FALSE(p.setFromPointAndNormal(Vec3d(1, 2, 3), Vec3d(0, 0, 0)));
    expectCoefficients(p, 0, 0, 2, -6);
    EXPECT_TRUE(recorder.take().empty());
}

TEST(Plane, SetFromPoints) {
    AssertRecorder recorder;
    Plane p;
    // (2, 0, 0) ^ (0, 3, 0) = (0, 0, 6), at z = 1.
    EXPECT_TRUE(p.setFromPoints(Vec3d(0, 0, 1), Vec3d(2, 0, 1), Vec3d(0, 3, 1)));
    expectCoefficients(p, 0, 0, 6, -6);
    EXPECT_FALSE(p.setFromPoints(Vec3d(0, 0, 0), Vec3d(1, 1, 1), Vec3d(3, 3, 3)));
    expectCoefficients(p, 0, 0, 6, -6);
    EXPECT_TRUE(recorder.take().empty());
}

TEST(Plane, MakesNewPlanes) {
    AssertRecorder recorder;
    expectCoefficients(Plane::fromPointAndNormal(Vec3d(1, 2, 3), Vec3d(2, 0, 0)), 2, 0, 0, -2);
    expectCoefficients(Plane::fromPointAndNormal(Vec3d(1, 2, 3), Vec3d(0, 0, 0)), 0, 0, 0, 0);
    expectCoefficients(Plane::fromPoints(Vec3d(0, 0, 1), Vec3d(2, 0, 1), Vec3d(0, 3, 1)), 0, 0, 6, -6);
    expectCoefficients(Plane::fromPoints(Vec3d(0, 0, 1), Vec3d(0, 0, 1), Vec3d(0, 3, 1)), 0, 0, 0, 0);
    EXPECT_TRUE(recorder.take().empty());
}

TEST(Plane, NormalIsNotNormalised) {
    EXPECT_EQ(plane(1, -2, 3, 4).normal(), Vec3d(1, -2, 3));
    AssertRecorder recorder;
    EXPECT_EQ(Plane().normal(), Vec3d(0, 0, 0));
    EXPECT_EQ(recorder.take(), failed({NO_NORMAL}));
}

TEST(Plane, TellsItsPlace) {
    const Plane p = plane(0, 0, 2, -2);
    EXPECT_EQ(p.distanceToOrigin(), 1);
    EXPECT_EQ(p.pointInPlane(), Vec3d(0, 0, 1));
    EXPECT_EQ(p.distance(Vec3d(0, 0, 3)), 2);
    EXPECT_EQ(p.distance(Vec3d(7, 7, -1)), -2);
    EXPECT_EQ(p.distanceSquared(Vec3d(0, 0, 3)), 4);
    EXPECT_EQ(p.distanceSquared(Vec3d(0, 0, 0)), -2);
    // The origin in front: 3 x + 4 y + 10 = 0, at a distance of 10 / 5.
    const Plane inFront = plane(3, 4, 0, 10);
    EXPECT_EQ(inFront.distanceToOrigin(), -2);
    expectNear(inFront.pointInPlane(), Vec3d(-1.2, -1.6, 0));
    EXPECT_EQ(inFront.distanceSquared(Vec3d(1, 2, 3)), 21);
}

TEST(Plane, PlaceOfAnInvalidPlaneIsAsserted) {
    AssertRecorder recorder;
    EXPECT_TRUE(std::isnan(Plane().distanceToOrigin()));
    EXPECT_EQ(recorder.take(), failed({NO_LENGTH}));
    EXPECT_TRUE(std::isnan(Plane().distance(Vec3d(1, 2, 3))));
    EXPECT_EQ(recorder.take(), failed({NO_LENGTH}));
    EXPECT_EQ(Plane().distanceSquared(Vec3d(1, 2, 3)), 0);
    EXPECT_TRUE(recorder.take().empty());
    Plane().pointInPlane();
    EXPECT_EQ(recorder.take(), failed({NO_NORMAL, NO_LENGTH}));
}

TEST(Plane, FlipNegatesAll) {
    Plane p = plane(1, -2, 3, -4);
    p.flip();
    expectCoefficients(p, -1, 2, -3, 4);
}

TEST(Plane, TransformMovesNormalAndPoint) {
    // A quarter turn about z, x to y and y to -x, twice as large, and a translation by (0, 5, 0).
    rvf::Matrix4<double> matrix;
    matrix(0, 0) = 0;
    matrix(0, 1) = -2;
    matrix(1, 0) = 2;
    matrix(1, 1) = 0;
    matrix(2, 2) = 2;
    matrix(1, 3) = 5;
    Plane p = plane(1, 0, 0, -3); // x = 3 becomes y = 11
    EXPECT_TRUE(p.transform(matrix));
    expectCoefficients(p, 0, 2, 0, -22);
}

TEST(Plane, TransformToNothingIsRefused) {
    rvf::Matrix4<double> matrix;
    matrix(0, 0) = 0;
    Plane p = plane(1, 0, 0, -3);
    EXPECT_FALSE(p.transform(matrix));
    expectCoefficients(p, 1, 0, 0, -3);
}

TEST(Plane, TransformOfAnInvalidPlaneIsRefused) {
    AssertRecorder recorder;
    Plane p;
    EXPECT_FALSE(p.transform(rvf::Matrix4<double>()));
    // For the normal, and then for the point in the plane.
    EXPECT_EQ(recorder.take(), failed({NO_NORMAL, NO_NORMAL, NO_LENGTH}));
    expectCoefficients(p, 0, 0, 0, 0);
}

TEST(Plane, ProjectsVectors) {
    const Plane p = plane(0, 0, 2, -2);
    Vec3d projected;
    EXPECT_TRUE(p.projectVector(Vec3d(3, 0, 7), &projected));
    expectNear(projected, Vec3d(3, 0, 0));
    EXPECT_TRUE(p.projectVector(Vec3d(-1, 2, -5), &projected));
    expectNear(projected, Vec3d(-1, 2, 0));
    const Vec3d before = projected;
    EXPECT_FALSE(p.projectVector(Vec3d(0, 0, 4), &projected));
    EXPECT_FALSE(p.projectVector(Vec3d(0, 0, 0), &projected));
    EXPECT_EQ(projected, before);
}

TEST(Plane, ProjectVectorAssertsItsTarget) {
    AssertRecorder recorder;
    EXPECT_FALSE(plane(0, 0, 2, -2).projectVector(Vec3d(3, 0, 7), nullptr));
    EXPECT_EQ(recorder.take(), failed({"projectedVector"}));
}

TEST(Plane, ProjectsPoints) {
    const Plane p = plane(0, 0, 2, -2);
    expectNear(p.projectPoint(Vec3d(3, -4, 7)), Vec3d(3, -4, 1));
    // Straight above the point in the plane there is nothing to project.
    EXPECT_EQ(p.projectPoint(Vec3d(0, 0, 9)), Vec3d(0, 0, 1));
    // x + y + z = 3: (2, 2, 2) lies one step of (1, 1, 1) beyond (1, 1, 1); (3, 2, 1) does so too, beyond (2, 1, 0).
    expectNear(plane(1, 1, 1, -3).projectPoint(Vec3d(3, 2, 1)), Vec3d(2, 1, 0));
}

struct IntersectCase {
    Plane first;
    Plane second;
    Vec3d point;
    Vec3d direction;
};

TEST(Plane, IntersectsPlanes) {
    const double h = std::sqrt(0.5);
    const IntersectCase cases[] = {
        // x = 2 and y = 3, with coefficients on different scales: the line is along z, and z = 0 is chosen.
        {plane(1, 0, 0, -2), plane(0, 5, 0, -15), Vec3d(2, 3, 0), Vec3d(0, 0, 1)},
        // x = 2 and z = 3: along y, backwards.
        {plane(4, 0, 0, -8), plane(0, 0, 1, -3), Vec3d(2, 0, 3), Vec3d(0, -1, 0)},
        // y = 2 and z = 3: along x.
        {plane(0, 1, 0, -2), plane(0, 0, 7, -21), Vec3d(0, 2, 3), Vec3d(1, 0, 0)},
        // z = 1 and x - y = 3: (1, 1, 0) is as steep in x as in y, and then x = 0 is chosen.
        {plane(0, 0, 1, -1), plane(1, -1, 0, -3), Vec3d(0, -3, 1), Vec3d(h, h, 0)},
        // y = 1 and x - z = 3: the normals give (-1, 0, -1), z no steeper than x, so again x = 0.
        {plane(0, 1, 0, -1), plane(1, 0, -1, -3), Vec3d(0, 1, -3), Vec3d(-h, 0, -h)},
        // x = 1 and y - z = 3: (0, 1, 1), z no steeper than y, and y not beyond z: y exceeds x, so y = 0.
        {plane(1, 0, 0, -1), plane(0, 1, -1, -3), Vec3d(1, 0, -3), Vec3d(0, h, h)},
    };
    int index = 0;
    for (const IntersectCase& c : cases) {
        SCOPED_TRACE(index++);
        Vec3d point;
        Vec3d direction;
        EXPECT_TRUE(c.first.intersect(c.second, &point, &direction));
        expectNear(point, c.point);
        expectNear(direction, c.direction);
        Vec3d pointAlone;
        EXPECT_TRUE(c.first.intersect(c.second, &pointAlone, nullptr));
        EXPECT_EQ(pointAlone, point);
    }
}

TEST(Plane, IntersectionPointLiesOnBothPlanes) {
    const Plane first = plane(3, -1, 2, 5);
    const Plane second = plane(-20, 70, 10, -35);
    Vec3d point;
    Vec3d direction;
    ASSERT_TRUE(first.intersect(second, &point, &direction));
    for (double t : {0.0, 1.0, -3.0}) {
        EXPECT_NEAR(first.distance(point + t * direction), 0.0, 1e-12);
        EXPECT_NEAR(second.distance(point + t * direction), 0.0, 1e-12);
    }
}

TEST(Plane, ParallelPlanesDoNotIntersect) {
    Vec3d point(7, 8, 9);
    Vec3d direction(7, 8, 9);
    EXPECT_FALSE(plane(1, 2, 3, 4).intersect(plane(2, 4, 6, 9), &point, &direction));
    EXPECT_FALSE(plane(1, 2, 3, 4).intersect(plane(1, 2, 3, 4), &point, &direction));
    EXPECT_EQ(point, Vec3d(7, 8, 9));
    EXPECT_EQ(direction, Vec3d(7, 8, 9));
    // No tolerance: the slightest slant will do.
    EXPECT_TRUE(plane(0, 0, 1, 0).intersect(plane(1e-30, 0, 1, -1), &point, &direction));
}

TEST(Plane, IntersectAssertsItsTarget) {
    AssertRecorder recorder;
    Vec3d direction;
    EXPECT_TRUE(plane(1, 0, 0, -2).intersect(plane(0, 5, 0, -15), nullptr, &direction));
    EXPECT_EQ(recorder.take(), failed({"point"}));
    EXPECT_EQ(direction, Vec3d(0, 0, 1));
}

TEST(Plane, IntersectsSegments) {
    const Plane p = plane(0, 0, 2, -2);
    Vec3d hit;
    EXPECT_TRUE(p.intersect(Vec3d(0, 0, 0), Vec3d(4, 8, 4), &hit));
    EXPECT_EQ(hit, Vec3d(1, 2, 1));
    EXPECT_TRUE(p.intersect(Vec3d(4, 8, 4), Vec3d(0, 0, 0), nullptr));
    // The ends count.
    EXPECT_TRUE(p.intersect(Vec3d(5, 5, 1), Vec3d(5, 5, 3), &hit));
    EXPECT_EQ(hit, Vec3d(5, 5, 1));
    EXPECT_TRUE(p.intersect(Vec3d(5, 6, 3), Vec3d(5, 6, 1), &hit));
    EXPECT_EQ(hit, Vec3d(5, 6, 1));
}

TEST(Plane, SegmentsThatDoNotMeet) {
    const Plane p = plane(0, 0, 2, -2);
    Vec3d hit(7, 8, 9);
    EXPECT_FALSE(p.intersect(Vec3d(0, 0, 2), Vec3d(0, 0, 3), &hit));
    EXPECT_FALSE(p.intersect(Vec3d(0, 0, -2), Vec3d(0, 0, 0.5), &hit));
    // Parallel: t is infinite. In the plane: t is not a number.
    EXPECT_FALSE(p.intersect(Vec3d(0, 0, 2), Vec3d(1, 1, 2), &hit));
    EXPECT_FALSE(p.intersect(Vec3d(0, 0, 1), Vec3d(1, 1, 1), &hit));
    EXPECT_EQ(hit, Vec3d(7, 8, 9));
}

TEST(Plane, SidesHaveTheirNumbers) {
    EXPECT_EQ(Plane::FRONT, 0);
    EXPECT_EQ(Plane::BACK, 1);
    EXPECT_EQ(Plane::ON, 2);
    EXPECT_EQ(Plane::BOTH, 3);
}

TEST(Plane, SideOfAPoint) {
    const Plane p = plane(0, 0, 2, -2);
    EXPECT_EQ(p.side(Vec3d(0, 0, 1.0000001)), Plane::FRONT);
    EXPECT_EQ(p.side(Vec3d(0, 0, 0.9999999)), Plane::BACK);
    EXPECT_EQ(p.side(Vec3d(5, 6, 1)), Plane::ON);
}

TEST(Plane, SideOfManyPoints) {
    const Plane p = plane(0, 0, 2, -2);
    auto sideOf = [&p](std::initializer_list<double> heights) {
        rvf::Array<Vec3d> points(heights.size());
        size_t i = 0;
        for (double z : heights) {
            points[i++] = Vec3d(0, 0, z);
        }
        return p.side(points);
    };
    EXPECT_EQ(sideOf({}), Plane::ON);
    EXPECT_EQ(sideOf({1, 1}), Plane::ON);
    EXPECT_EQ(sideOf({2, 1, 3}), Plane::FRONT);
    EXPECT_EQ(sideOf({0, 1}), Plane::BACK);
    EXPECT_EQ(sideOf({0, 2}), Plane::BOTH);
    EXPECT_EQ(sideOf({2, 2, 1, 0}), Plane::BOTH);
}

} // namespace
