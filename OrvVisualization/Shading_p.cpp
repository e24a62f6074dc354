#include "OrvVisualization/Shading_p.h"

#include <algorithm>
#include <cmath>

namespace orv::vis {
namespace {

bool hasCorner(const Shape& shape, std::size_t triangle, std::uint32_t point) {
    const std::uint32_t* corners = &shape.corners[3 * triangle];
    return corners[0] == point || corners[1] == point || corners[2] == point;
}

/// At each corner of the triangle that was met the normals of all triangles of the face that have this corner, in
/// proportion to their areas, and in between in proportion to the weights.
Vec3d normalInFace(const Shape& shape, const RayHit& hit) {
    Vec3d sum;
    const TriangleRange triangles = trianglesOf(shape, hit.primitive);
    for (std::size_t t = triangles.first; t < triangles.end; ++t) {
        double weight = 0.0;
        for (std::size_t i = 0; i < 3; ++i) {
            weight += hasCorner(shape, t, shape.corners[3 * hit.triangle + i]) ? hit.weights[i] : 0.0;
        }
        const Vec3d a = cornerOf(shape, 3 * t);
        const Vec3d toMiddle = cornerOf(shape, 3 * t + 1) - a;
        const Vec3d toLast = cornerOf(shape, 3 * t + 2) - a;
        sum += (toMiddle ^ toLast) * weight;
    }
    return sum;
}

Vec3d normalAt(const Shape& shape, const RayHit& hit) {
    if (shape.kind != Shape::FACES) {
        return hit.normal;
    }
    const Vec3d normal = normalInFace(shape, hit);
    const double length = normal.length();
    return length > 0.0 ? normal / length : hit.normal;
}

} // namespace

Shading::Shading(const ColorMap& colors, const ScalarRange& range) : m_colors(colors), m_range(range) {}

void Shading::setLight(const Vec3d& forward, const Vec3d& up, const Vec3d& right) {
    const Vec3d toLight = up * lightUp - right * lightLeft - forward;
    m_toLight = toLight / toLight.length();
    m_isLit = true;
}

rvf::Color3f Shading::colorOf(const SeenPoint& seen, const Vec3d& direction) const {
    const rvf::Color3f color = surfaceColor(*seen.shape, seen.hit);
    if (!m_isLit) {
        return color;
    }
    const auto light = static_cast<float>(brightness(seen, direction));
    return {color.r() * light, color.g() * light, color.b() * light};
}

rvf::Color3f Shading::surfaceColor(const Shape& shape, const RayHit& hit) const {
    const bool hasScalars = !shape.pointScalars.empty() || !shape.primitiveScalars.empty();
    return hasScalars ? m_colors.colorAt(scalarAt(shape, hit), m_range.minimum, m_range.maximum) : shape.color;
}

double Shading::brightness(const SeenPoint& seen, const Vec3d& direction) const {
    const Vec3d normal = normalAt(*seen.shape, seen.hit);
    const double cosine = normal * m_toLight;
    const double towardsViewer = seen.hit.normal * direction <= 0.0 ? cosine : -cosine;
    return ambient + (1.0 - ambient) * std::max(towardsViewer, 0.0);
}

} // namespace orv::vis
