#include "OrvVisualization/RayPrimitives_p.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace orv::vis {
namespace {

/// A corner relative to the ray's origin, sheared so that the ray is the z axis.
struct Corner {
    double x;
    double y;
    double z;
};

/// Where a line is inside something; empty when `first` is above `last`.
struct Interval {
    double first = std::numeric_limits<double>::infinity();
    double last = -std::numeric_limits<double>::infinity();

    bool isEmpty() const {
        return !(first <= last);
    }
};

Vec3d toVec3d(const double* p) {
    return {p[0], p[1], p[2]};
}

std::size_t longestAxis(const Vec3d& v) {
    const Vec3d size(std::abs(v.x()), std::abs(v.y()), std::abs(v.z()));
    if (size.x() >= size.y() && size.x() >= size.z()) {
        return 0;
    }
    return size.y() >= size.z() ? 1 : 2;
}

double largestOf(const Vec3d& v) {
    return std::max({std::abs(v.x()), std::abs(v.y()), std::abs(v.z())});
}

/// Twice the signed area of the triangle of the origin, `a` and `b` in the xy plane.
double area(const Corner& a, const Corner& b) {
    return a.x * b.y - a.y * b.x;
}

double sizeInPlane(const Corner& corner) {
    return std::abs(corner.x) + std::abs(corner.y);
}

/// Where a t * t + 2 b t + c is not above 0, for a above 0.
Interval solve(double a, double b, double c) {
    const double radicand = b * b - a * c;
    if (!(radicand >= 0.0)) {
        return {};
    }
    const double root = std::sqrt(radicand);
    return {(-b - root) / a, (-b + root) / a};
}

Interval insideSphere(const Vec3d& fromCenter, const Vec3d& direction, double radius) {
    return solve(direction * direction, direction * fromCenter, fromCenter * fromCenter - radius * radius);
}

Interval common(const Interval& i, const Interval& j) {
    return {std::max(i.first, j.first), std::min(i.last, j.last)};
}

/// The hull of the two, where they are not empty.
Interval hull(const Interval& i, const Interval& j) {
    if (i.isEmpty() || j.isEmpty()) {
        return i.isEmpty() ? j : i;
    }
    return {std::min(i.first, j.first), std::max(i.last, j.last)};
}

/// Where start + t * step is between 0 and `length`.
Interval between(double start, double step, double length) {
    if (step == 0.0) {
        return start >= 0.0 && start <= length
                   ? Interval{-std::numeric_limits<double>::infinity(), std::numeric_limits<double>::infinity()}
                   : Interval();
    }
    const double t0 = -start / step;
    const double t1 = (length - start) / step;
    return {std::min(t0, t1), std::max(t0, t1)};
}

/// @param from the ray's origin seen from the beginning of the axis
Interval insideCylinder(const Vec3d& from, const Vec3d& direction, const Vec3d& axis, double radius) {
    const double axisAxis = axis * axis;
    const double axisDirection = axis * direction;
    const double axisFrom = axis * from;
    const Interval slab = between(axisFrom, axisDirection, axisAxis);
    const Vec3d side = direction - axis * (axisDirection / axisAxis);
    const Vec3d offset = from - axis * (axisFrom / axisAxis);
    const double c = offset * offset - radius * radius;
    if (side * side == 0.0) {
        return c <= 0.0 ? slab : Interval();
    }
    return common(slab, solve(side * side, side * offset, c));
}

} // namespace

RayTest::RayTest(const Ray& ray)
    : m_origin(ray.origin()), m_direction(ray.direction()), m_z(longestAxis(ray.direction())) {
    m_x = (m_z + 1) % 3;
    m_y = (m_z + 2) % 3;
    m_shearX = m_direction[m_x] / m_direction[m_z];
    m_shearY = m_direction[m_y] / m_direction[m_z];
}

bool RayTest::meetsTriangle(const double* pa, const double* pb, const double* pc, double* t, double weights[3]) const {
    const Vec3d from[3] = {toVec3d(pa) - m_origin, toVec3d(pb) - m_origin, toVec3d(pc) - m_origin};
    auto sheared = [this](const Vec3d& p) {
        return Corner{p[m_x] - m_shearX * p[m_z], p[m_y] - m_shearY * p[m_z], p[m_z]};
    };
    const Corner a = sheared(from[0]);
    const Corner b = sheared(from[1]);
    const Corner c = sheared(from[2]);

    // A sheared coordinate is out by a few roundings of the distance, the direction's own among them, and an area by
    // that times the sides.
    constexpr double roundings = 8.0 * std::numeric_limits<double>::epsilon();
    const double error = roundings * std::max({largestOf(from[0]), largestOf(from[1]), largestOf(from[2])});
    const double areas[3] = {area(b, c), area(c, a), area(a, b)};
    const double tolerances[3] = {error * (sizeInPlane(b) + sizeInPlane(c)), error * (sizeInPlane(c) + sizeInPlane(a)),
                                  error * (sizeInPlane(a) + sizeInPlane(b))};
    bool isLeft = true;
    bool isRight = true;
    for (int i = 0; i < 3; ++i) {
        isLeft = isLeft && areas[i] >= -tolerances[i];
        isRight = isRight && areas[i] <= tolerances[i];
    }
    const double whole = areas[0] + areas[1] + areas[2];
    if (isLeft == isRight || !(std::abs(whole) > tolerances[0] + tolerances[1] + tolerances[2])) {
        return false;
    }
    // What is outside by rounding counts as on the edge, so that the hit never leaves the triangle.
    double sum = 0.0;
    for (int i = 0; i < 3; ++i) {
        weights[i] = std::max(isLeft ? areas[i] : -areas[i], 0.0);
        sum += weights[i];
    }
    for (int i = 0; i < 3; ++i) {
        weights[i] /= sum;
    }
    *t = (weights[0] * a.z + weights[1] * b.z + weights[2] * c.z) / m_direction[m_z];
    return *t >= 0.0;
}

bool RayTest::meetsTube(const double* pa, const double* pb, double radius, double* t, double* position) const {
    const Vec3d axis = toVec3d(pb) - toVec3d(pa);
    const Vec3d toBegin = toVec3d(pa) - m_origin;
    // Measured from where the ray comes nearest to the tube, as a far origin would drown the radius in roundings.
    const double nearest = ((toBegin + axis * 0.5) * m_direction) / (m_direction * m_direction);
    const Vec3d from = m_direction * nearest - toBegin;
    Interval inside = hull(insideSphere(from, m_direction, radius), insideSphere(from - axis, m_direction, radius));
    const double axisAxis = axis * axis;
    if (axisAxis > 0.0) {
        inside = hull(inside, insideCylinder(from, m_direction, axis, radius));
    }
    if (inside.isEmpty() || nearest + inside.last < 0.0) {
        return false;
    }
    const double along = nearest + inside.first >= 0.0 ? inside.first : inside.last;
    *t = nearest + along;
    *position = axisAxis > 0.0 ? std::clamp((axis * (from + m_direction * along)) / axisAxis, 0.0, 1.0) : 0.0;
    return true;
}

} // namespace orv::vis
