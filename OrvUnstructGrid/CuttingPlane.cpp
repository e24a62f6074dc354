#include "OrvUnstructGrid/CuttingPlane.h"

#include <algorithm>
#include <cmath>

namespace orv::ug {
namespace {

bool isFinite(const Vec3d& v) {
    return std::isfinite(v.x()) && std::isfinite(v.y()) && std::isfinite(v.z());
}

bool isUnit(const Vec3d& v) {
    constexpr double ROUNDING_ERRORS = 1e-14;
    return std::abs(v * v - 1.0) <= ROUNDING_ERRORS;
}

} // namespace

bool CuttingPlane::setPlane(const Vec3d& point, const Vec3d& normal) {
    const double largest = std::max({std::abs(normal.x()), std::abs(normal.y()), std::abs(normal.z())});
    if (!isFinite(point) || !isFinite(normal) || largest == 0.0) {
        return false;
    }
    const Vec3d scaled = normal / largest; // Whose square neither overflows nor vanishes.
    m_point = point;
    m_normal = isUnit(normal) ? normal : scaled / scaled.length();
    return true;
}

Vec3d CuttingPlane::point() const {
    return m_point;
}

Vec3d CuttingPlane::normal() const {
    return m_normal;
}

int CuttingPlane::mapScalarResultId() const {
    return m_mapScalarResultId;
}

void CuttingPlane::setMapScalarResultId(int scalarResultId) {
    m_mapScalarResultId = scalarResultId;
}

bool CuttingPlane::isVisible() const {
    return m_isVisible;
}

void CuttingPlane::setVisible(bool isVisible) {
    m_isVisible = isVisible;
}

} // namespace orv::ug
