#include "LibCore/rvfPlane.h"

#include "LibCore/rvfAssert.h"

namespace rvf {

Plane::Plane() = default;

Plane::~Plane() = default;

void Plane::set(double A, double B, double C, double D) {
    RVF_ASSERT(!(A == 0.0 && B == 0.0 && C == 0.0));
    m_A = A;
    m_B = B;
    m_C = C;
    m_D = D;
}

double Plane::A() const {
    return m_A;
}

double Plane::B() const {
    return m_B;
}

double Plane::C() const {
    return m_C;
}

double Plane::D() const {
    return m_D;
}

bool Plane::operator==(const Plane& other) const {
    return m_A == other.m_A && m_B == other.m_B && m_C == other.m_C && m_D == other.m_D;
}

bool Plane::isValid() const {
    return m_A != 0.0 || m_B != 0.0 || m_C != 0.0;
}

bool Plane::setFromPointAndNormal(const Vector3<double>& point, const Vector3<double>& normal) {
    if (normal.isZero()) {
        return false;
    }
    set(normal.x(), normal.y(), normal.z(), -(normal * point));
    return true;
}

bool Plane::setFromPoints(const Vector3<double>& p1, const Vector3<double>& p2, const Vector3<double>& p3) {
    return setFromPointAndNormal(p1, (p2 - p1) ^ (p3 - p1));
}

Plane Plane::fromPointAndNormal(const Vector3<double>& point, const Vector3<double>& normal) {
    Plane plane;
    plane.setFromPointAndNormal(point, normal);
    return plane;
}

Plane Plane::fromPoints(const Vector3<double>& p1, const Vector3<double>& p2, const Vector3<double>& p3) {
    Plane plane;
    plane.setFromPoints(p1, p2, p3);
    return plane;
}

Vector3<double> Plane::normal() const {
    const Vector3<double> normal(m_A, m_B, m_C);
    RVF_ASSERT(!normal.isZero());
    return normal;
}

Vector3<double> Plane::pointInPlane() const {
    Vector3<double> unitNormal = normal();
    unitNormal.normalize();
    return unitNormal * distanceToOrigin();
}

double Plane::distanceToOrigin() const {
    const double factor = Vector3<double>(m_A, m_B, m_C).length();
    RVF_ASSERT(factor > 0.0);
    return -m_D / factor;
}

double Plane::distance(const Vector3<double>& point) const {
    const double factor = Vector3<double>(m_A, m_B, m_C).length();
    RVF_ASSERT(factor > 0.0);
    return distanceSquared(point) / factor;
}

double Plane::distanceSquared(const Vector3<double>& point) const {
    return m_A * point.x() + m_B * point.y() + m_C * point.z() + m_D;
}

void Plane::flip() {
    m_A = -m_A;
    m_B = -m_B;
    m_C = -m_C;
    m_D = -m_D;
}

bool Plane::transform(const Matrix4<double>& matrix) {
    const Vector3<double> newNormal = matrix.transformVector(normal());
    return setFromPointAndNormal(matrix.transformPoint(pointInPlane()), newNormal);
}

bool Plane::projectVector(const Vector3<double>& vector, Vector3<double>* projectedVector) const {
    RVF_ASSERT(projectedVector);
    const Vector3<double> n = normal();
    Vector3<double> m = (n ^ vector) ^ n;
    if (!projectedVector || !m.normalize()) {
        return false;
    }
    *projectedVector = (vector * m) * m;
    return true;
}

Vector3<double> Plane::projectPoint(const Vector3<double>& point) const {
    const Vector3<double> origin = pointInPlane();
    Vector3<double> along;
    return projectVector(point - origin, &along) ? origin + along : origin;
}

bool Plane::intersect(const Plane& other, Vector3<double>* point, Vector3<double>* direction) const {
    RVF_ASSERT(point);
    Vector3<double> m = normal() ^ other.normal();
    const double x2 = m.x() * m.x();
    const double y2 = m.y() * m.y();
    const double z2 = m.z() * m.z();
    Vector3<double> found;
    // The coordinate along which the line is steepest is set to zero, and the other two follow by Cramer's rule.
    if (z2 > y2 && z2 > x2) {
        found.set((m_B * other.m_D - other.m_B * m_D) / m.z(), (other.m_A * m_D - m_A * other.m_D) / m.z(), 0.0);
    } else if (y2 > x2) {
        found.set((other.m_C * m_D - m_C * other.m_D) / m.y(), 0.0, (m_A * other.m_D - other.m_A * m_D) / m.y());
    } else if (x2 == 0.0) {
        return false;
    } else {
        found.set(0.0, (m_C * other.m_D - other.m_C * m_D) / m.x(), (other.m_B * m_D - m_B * other.m_D) / m.x());
    }
    if (point) {
        *point = found;
    }
    if (direction) {
        m.normalize();
        *direction = m;
    }
    return true;
}

bool Plane::intersect(const Vector3<double>& a, const Vector3<double>& b, Vector3<double>* intersection) const {
    const Vector3<double> n = normal();
    const double t = (-m_D - n * a) / (n * (b - a));
    if (!(t >= 0.0 && t <= 1.0)) {
        return false;
    }
    if (intersection) {
        *intersection = a + t * (b - a);
    }
    return true;
}

Plane::Side Plane::side(const Vector3<double>& point) const {
    const double value = distanceSquared(point);
    return value > 0.0 ? FRONT : value < 0.0 ? BACK : ON;
}

Plane::Side Plane::side(const Array<Vector3<double>>& points) const {
    size_t front = 0;
    size_t back = 0;
    for (size_t i = 0; i < points.size(); ++i) {
        const Side pointSide = side(points[i]);
        front += pointSide == FRONT ? 1 : 0;
        back += pointSide == BACK ? 1 : 0;
    }
    if (front > 0) {
        return back > 0 ? BOTH : FRONT;
    }
    return back > 0 ? BACK : ON;
}

} // namespace rvf
