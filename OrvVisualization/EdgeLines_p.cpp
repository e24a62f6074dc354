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
          m_acrossPerPixel(std::hypot(m_across * steps.right, m_across * steps.up)),
          m_alongPerPixel(std::hypot(m_along * steps.right, m_along * steps.up)) {}

    double pixelsTo(const Vec3d& point) const {
        return std::abs((point - m_from) * m_across) / m_acrossPerPixel;
    }

    bool isBetween(const Vec3d& point, const Vec3d& other) const {
        return ((point - m_from) * m_across) * ((other - m_from) * m_across) < 0.0;
    }

    /// @param overshoot in pixels, how far beyond its ends the side still goes on
    bool isBeside(const Vec3d& point, double overshoot) const {
        const double place = (point - m_from) * m_along;
        const double beyond = overshoot * m_alongPerPixel;
        return place >= -beyond && place <= m_along * m_along + beyond;
    }

private:
    Vec3d m_from;
    Vec3d m_along;
    Vec3d m_across;
    double m_acrossPerPixel;
    double m_alongPerPixel;
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
        for (std::size_t t = m_triangles.first; t < m_triangles.end; ++t) {
            // Where a face is bent, edges of its far side are no outline.
            if (towardsViewer(t) * towardsViewer(m_place.triangle) > 0.0) {
                addOutside(t);
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

    double towardsViewer(std::size_t triangle) const {
        const Vec3d a = cornerOf(m_shape, 3 * triangle);
        const Vec3d toMiddle = cornerOf(m_shape, 3 * triangle + 1) - a;
        const Vec3d toLast = cornerOf(m_shape, 3 * triangle + 2) - a;
        return -((toMiddle ^ toLast) * m_steps.sight);
    }

    void addOutside(std::size_t triangle) {
        for (std::size_t side = 0; side < 3; ++side) {
            if (isEdge(triangle, side)) {
                const SideLine line = lineOf(triangle, side);
                const Vec3d inner = cornerOf(m_shape, 3 * triangle + (side + 2) % 3);
                if (line.isBeside(m_place.point, lineHalfWidth) && line.isBetween(m_place.point, inner)) {
                    add(line);
                }
            }
        }
    }

    void addOtherTriangles() {
        for (std::size_t t = m_triangles.first; t < m_triangles.end; ++t) {
            for (std::size_t side = 0; t != m_place.triangle && side < 3; ++side) {
                if (isEdge(t, side)) {
                    const SideLine line = lineOf(t, side);
                    if (line.isBeside(m_place.point, 0.0)) {
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
