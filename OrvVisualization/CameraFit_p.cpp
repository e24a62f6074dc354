#include "OrvVisualization/CameraFit_p.h"

#include "OrvVisualization/PictureRays_p.h"
#include "OrvVisualization/RayScene_p.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace orv::vis {
namespace {

constexpr double margin = 1.05;

/// What looks like a point, or a line along the line of sight, is given this share of the whole.
constexpr double leastShare = 1e-3;

constexpr double infinity = std::numeric_limits<double>::infinity();

template <class Visit>
void forPoints(std::span<const Shape* const> shapes, Visit visit) {
    for (const Shape* shape : shapes) {
        for (std::size_t i = 0; i < shape->corners.size(); ++i) {
            const Vec3d point = cornerOf(*shape, i);
            if (std::max({std::abs(point.x()), std::abs(point.y()), std::abs(point.z())}) < largestCoordinate) {
                visit(point, shape->radius);
            }
        }
    }
}

/// What is seen, measured along an axis of the picture and along the line of sight.
class Span {
public:
    /// @param tangent of half the angle of the picture along this axis; 0 in parallel
    explicit Span(double tangent) : m_tangent(tangent), m_slant(std::sqrt(1.0 + tangent * tangent)) {}

    void add(double place, double depth, double radius) {
        m_high = std::min(m_high, m_tangent * depth - place - radius * m_slant);
        m_low = std::min(m_low, m_tangent * depth + place - radius * m_slant);
    }

    /// Where the eye must be for the same room on both sides.
    double middle() const {
        return (m_low - m_high) / 2.0;
    }

    /// How far along the line of sight the eye may go; in perspective.
    double depth() const {
        return (m_low + m_high) / (2.0 * m_tangent);
    }

    /// In parallel.
    double length() const {
        return -(m_low + m_high);
    }

private:
    double m_tangent;
    double m_slant;
    double m_high = infinity; ///< The least distance to the side of the picture where places are high.
    double m_low = infinity;
};

} // namespace

bool fitCamera(std::span<const Shape* const> shapes, double aspect, Camera* camera) {
    RayBox box;
    forPoints(shapes, [&box](const Vec3d& point, double radius) {
        const double coordinates[] = {point.x(), point.y(), point.z()};
        box.add(coordinates, radius);
    });
    const double diagonal = box.isEmpty() ? 0.0 : (box.upper - box.lower).length();
    if (!(diagonal > 0.0) || !std::isfinite(diagonal) || !(aspect > 0.0) || !std::isfinite(aspect)) {
        return false;
    }
    const Vec3d center = box.lower + (box.upper - box.lower) * 0.5;
    const PictureRays axes(*camera, 1, 1);
    const double tangent = camera->isParallel() ? 0.0 : camera->pixelSize(1.0, 1) / (2.0 * margin);
    Span across(tangent * aspect);
    Span upwards(tangent);
    double nearest = infinity;
    forPoints(shapes, [&](const Vec3d& point, double radius) {
        const Vec3d from = point - center;
        const double depth = from * axes.forward();
        const double ball = std::max(radius, leastShare * diagonal);
        across.add(from * axes.right(), depth, ball);
        upwards.add(from * axes.up(), depth, ball);
        nearest = std::min(nearest, depth - ball);
    });
    double depth = nearest - diagonal;
    if (camera->isParallel()) {
        camera->setParallel(margin * std::max(upwards.length(), across.length() / aspect));
    } else {
        depth = std::min(across.depth(), upwards.depth());
    }
    const Vec3d middle = center + axes.right() * across.middle() + axes.up() * upwards.middle();
    return camera->setFromLookAt(middle + axes.forward() * depth, middle, axes.up());
}

} // namespace orv::vis
