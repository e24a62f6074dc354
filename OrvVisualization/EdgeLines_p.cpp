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

    bool isBetween(const Vec3d& point, const Vec3d& other) const {
        return ((point - m_from) * m_across) * ((other - m_from) * m_across) < 0.0;
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
    FaceLines(const FacePoint& place, const PixelSteps& steps, int raysPerSide)
        : m_shape(*place.shape), m_place(place), m_steps(steps), m_triangles(trianglesOf(m_shape, place.face)),
          m_sharpness(raysPerSide), m_reach(lineHalfWidth + 0.5 / m_sharpness) {}

    double inside() {
        bool isNearInnerSide = false;
        for (std::size_t side = 0; side < 3; ++side) {
            const SideLine line = lineOf(m_place.triangle, side);
            if (line.pixelsTo(m_place.point) < m_reach) {
                if (isEdge(m_place.triangle, side)) {
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

    double outside() {
        for (std::size_t side = 0; side < 3; ++side) {
            if (isEdge(m_place.triangle, side)) {
                const SideLine line = lineOf(m_place.triangle, side);
                const Vec3d inner = cornerOf(m_shape, 3 * m_place.triangle + (side + 2) % 3);
                if (line.isBeside(m_place.point) && line.isBetween(m_place.point, inner)) {
                    add(line);
                }
            }
        }
        return m_coverage;
    }

private:
    bool isEdge(std::size_t triangle, std::size_t side) const {
        return m_shape.edges[triangle] >> side & 1;
    }

    SideLine lineOf(std::size_t triangle, std::size_t side) const {
        return {cornerOf(m_shape, 3 * triangle + side), cornerOf(m_shape, 3 * triangle + (side + 1) % 3),
                m_place.normal, m_steps};
    }

    void addOtherTriangles() {
        for (std::size_t t = m_triangles.first; t < m_triangles.end; ++t) {
            for (std::size_t side = 0; t != m_place.triangle && side < 3; ++side) {
                if (isEdge(t, side)) {
                    const SideLine line = lineOf(t, side);
                    if (line.isBeside(m_place.point)) {
                        add(line);
                    }
                }
            }
        }
    }

    void add(const SideLine& line) {
        const double covered = std::clamp((m_reach - line.pixelsTo(m_place.point)) * m_sharpness, 0.0, 1.0);
        if (covered > m_coverage) {
            m_coverage = std::max(m_coverage, covered * strength(line));
        }
    }

    double strength(const SideLine& line) const {
        double width = 0.0;
        for (std::size_t corner = 3 * m_triangles.first; corner < 3 * m_triangles.end; ++corner) {
            width = std::max(width, line.pixelsTo(cornerOf(m_shape, corner)));
        }
        return std::clamp((width - narrowFace) / (wideFace - narrowFace), 0.0, 1.0);
    }

    const Shape& m_shape;
    const FacePoint& m_place;
    const PixelSteps& m_steps;
    TriangleRange m_triangles;
    double m_sharpness; ///< How steep the border of a line is.
    double m_reach;     ///< Where it ends.
    double m_coverage = 0.0;
};

} // namespace

double lineCoverage(const FacePoint& place, const PixelSteps& steps, int raysPerSide) {
    return place.shape->edges.empty() ? 0.0 : FaceLines(place, steps, raysPerSide).inside();
}

double outerLineCoverage(const FacePoint& place, const PixelSteps& steps, int raysPerSide) {
    return place.shape->edges.empty() ? 0.0 : FaceLines(place, steps, raysPerSide).outside();
}

} // namespace orv::vis
