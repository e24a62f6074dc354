#include "OrvVisualization/EdgeLines_p.h"

#include <algorithm>
#include <cmath>

namespace orv::vis {
namespace {

/// The line along a side of a triangle, in the plane of the surface that is looked at.
class SideLine {
public:
    SideLine(const Vec3d& from, const Vec3d& to, const Vec3d& normal, const PixelSteps& steps)
        : m_from(from), m_along(to - from), m_across(normal ^ m_along),
          m_acrossPerPixel(std::hypot(m_across * steps.right, m_across * steps.up)) {}

    double pixelsTo(const Vec3d& point) const {
        return std::abs((point - m_from) * m_across) / m_acrossPerPixel;
    }

    bool isBeside(const Vec3d& point) const {
        const double place = (point - m_from) * m_along;
        return place >= 0.0 && place <= m_along * m_along;
    }

private:
    Vec3d m_from;
    Vec3d m_along;
    Vec3d m_across;
    double m_acrossPerPixel;
};

/// The lines of one face about a point.
class FaceLines {
public:
    FaceLines(const SeenPoint& seen, const PixelSteps& steps, const LineStyle& style)
        : m_shape(*seen.shape), m_hit(seen.hit), m_steps(steps), m_sharpness(style.raysPerSide),
          m_reach(style.halfWidth + 0.5 / m_sharpness) {}

    double coverage() {
        bool isNearInnerSide = false;
        for (std::size_t side = 0; side < 3; ++side) {
            const SideLine line = lineOf(m_hit.triangle, side);
            if (line.pixelsTo(m_hit.point) < m_reach) {
                if (isEdge(m_hit.triangle, side)) {
                    add(line);
                } else {
                    isNearInnerSide = true;
                }
            }
        }
        // A line that is near, but behind a side which is no edge, is that of another triangle of the face.
        if (isNearInnerSide) {
            addOtherTriangles();
        }
        return m_coverage;
    }

private:
    bool isEdge(std::size_t triangle, std::size_t side) const {
        return m_shape.edges[triangle] >> side & 1;
    }

    SideLine lineOf(std::size_t triangle, std::size_t side) const {
        return {cornerOf(m_shape, 3 * triangle + side), cornerOf(m_shape, 3 * triangle + (side + 1) % 3), m_hit.normal,
                m_steps};
    }

    void addOtherTriangles() {
        const TriangleRange triangles = trianglesOf(m_shape, m_hit.primitive);
        for (std::size_t t = triangles.first; t < triangles.end; ++t) {
            for (std::size_t side = 0; t != m_hit.triangle && side < 3; ++side) {
                if (isEdge(t, side)) {
                    const SideLine line = lineOf(t, side);
                    if (line.isBeside(m_hit.point)) {
                        add(line);
                    }
                }
            }
        }
    }

    void add(const SideLine& line) {
        const double covered = std::clamp((m_reach - line.pixelsTo(m_hit.point)) * m_sharpness, 0.0, 1.0);
        if (covered > m_coverage) {
            m_coverage = std::max(m_coverage, covered * strength(line));
        }
    }

    double strength(const SideLine& line) const {
        const TriangleRange triangles = trianglesOf(m_shape, m_hit.primitive);
        double width = 0.0;
        for (std::size_t corner = 3 * triangles.first; corner < 3 * triangles.end; ++corner) {
            width = std::max(width, line.pixelsTo(cornerOf(m_shape, corner)));
        }
        constexpr double range = wideFace - narrowFace;
        return std::clamp((width - narrowFace) / range, 0.0, 1.0);
    }

    const Shape& m_shape;
    const RayHit& m_hit;
    const PixelSteps& m_steps;
    double m_sharpness; ///< How steep the border of a line is.
    double m_reach;     ///< Where it ends.
    double m_coverage = 0.0;
};

} // namespace

double lineCoverage(const SeenPoint& seen, const PixelSteps& steps, const LineStyle& style) {
    return seen.shape->edges.empty() ? 0.0 : FaceLines(seen, steps, style).coverage();
}

} // namespace orv::vis
