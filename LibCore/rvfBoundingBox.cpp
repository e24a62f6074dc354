#include "LibCore/rvfBoundingBox.h"

#include "LibCore/rvfAssert.h"

#include <limits>

namespace rvf {
namespace {

String coordinates(const Vector3<double>& point) {
    return "x=" + String::number(point.x(), 'g', -1) + " y=" + String::number(point.y(), 'g', -1) +
           " z=" + String::number(point.z(), 'g', -1);
}

} // namespace

BoundingBox::BoundingBox() {
    reset();
}

BoundingBox::BoundingBox(const Vector3<double>& min, const Vector3<double>& max) : m_min(min), m_max(max) {}

BoundingBox::BoundingBox(const Vector3<float>& min, const Vector3<float>& max) : m_min(min), m_max(max) {}

void BoundingBox::reset() {
    constexpr double largest = std::numeric_limits<double>::max();
    m_min.set(largest, largest, largest);
    m_max.set(-largest, -largest, -largest);
}

bool BoundingBox::isValid() const {
    return m_max.x() >= m_min.x() && m_max.y() >= m_min.y() && m_max.z() >= m_min.z();
}

void BoundingBox::add(const Vector3<double>& point) {
    for (size_t axis = 0; axis < 3; ++axis) {
        if (point[axis] < m_min[axis]) {
            m_min[axis] = point[axis];
        }
        if (point[axis] > m_max[axis]) {
            m_max[axis] = point[axis];
        }
    }
}

void BoundingBox::add(const Vector3<float>& point) {
    add(Vector3<double>(point));
}

void BoundingBox::add(const Array<Vector3<double>>& points) {
    for (size_t i = 0; i < points.size(); ++i) {
        add(points[i]);
    }
}

void BoundingBox::add(const Array<Vector3<float>>& points) {
    for (size_t i = 0; i < points.size(); ++i) {
        add(points[i]);
    }
}

void BoundingBox::add(const BoundingBox& box) {
    if (box.isValid()) {
        add(box.m_min);
        add(box.m_max);
    }
}

const Vector3<double>& BoundingBox::min() const {
    return m_min;
}

const Vector3<double>& BoundingBox::max() const {
    return m_max;
}

Vector3<double> BoundingBox::center() const {
    RVF_ASSERT(isValid());
    return (m_min + m_max) / 2.0;
}

Vector3<double> BoundingBox::extent() const {
    RVF_ASSERT(isValid());
    return m_max - m_min;
}

double BoundingBox::radius() const {
    RVF_ASSERT(isValid());
    return (m_max - m_min).length() / 2.0;
}

bool BoundingBox::contains(const Vector3<double>& point) const {
    RVF_ASSERT(isValid());
    return point.x() >= m_min.x() && point.x() <= m_max.x() && point.y() >= m_min.y() && point.y() <= m_max.y() &&
           point.z() >= m_min.z() && point.z() <= m_max.z();
}

bool BoundingBox::intersects(const BoundingBox& box) const {
    RVF_ASSERT(isValid());
    RVF_ASSERT(box.isValid());
    return box.m_min.x() <= m_max.x() && box.m_max.x() >= m_min.x() && box.m_min.y() <= m_max.y() &&
           box.m_max.y() >= m_min.y() && box.m_min.z() <= m_max.z() && box.m_max.z() >= m_min.z();
}

void BoundingBox::cornerVertices(Vector3<double>* vertices) const {
    for (double z : {m_min.z(), m_max.z()}) {
        *vertices++ = {m_min.x(), m_min.y(), z};
        *vertices++ = {m_max.x(), m_min.y(), z};
        *vertices++ = {m_max.x(), m_max.y(), z};
        *vertices++ = {m_min.x(), m_max.y(), z};
    }
}

void BoundingBox::expand(double amount) {
    const Vector3<double> half(amount / 2.0, amount / 2.0, amount / 2.0);
    m_min = m_min - half;
    m_max = m_max + half;
}

void BoundingBox::transform(const Matrix4<double>& matrix) {
    if (!isValid()) {
        return;
    }
    Vector3<double> corners[8];
    cornerVertices(corners);
    reset();
    for (const Vector3<double>& corner : corners) {
        add(matrix.transformPoint(corner));
    }
}

String BoundingBox::debugString() const {
    return "BoundingBox: min: " + coordinates(m_min) + " max: " + coordinates(m_max);
}

} // namespace rvf
