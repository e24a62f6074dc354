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

RayBox boxOf(std::span<const Shape* const> shapes) {
    RayBox box;
    forPoints(shapes, [&box](const Vec3d& point, double radius) {
        const double coordinates[] = {point.x(), point.y(), point.z()};
        box.add(coordinates, radius);
    });
    return box;
}

/// What is seen, measured along an axis of the picture and along the line of sight.
class Span {
public:
    /// @param tangentLow of the angle between the line of sight and the side of the picture where places are low; 0 in
    ///                   parallel
    Span(double tangentLow, double tangentHigh) : m_tangentLow(tangentLow), m_tangentHigh(tangentHigh) {}

    void add(double place, double depth, double radius) {
        m_low = std::min(m_low, m_tangentLow * depth + place - radius * std::hypot(1.0, m_tangentLow));
        m_high = std::min(m_high, m_tangentHigh * depth - place - radius * std::hypot(1.0, m_tangentHigh));
    }

    /// How far along the line of sight the eye may go; in perspective.
    double depth() const {
        return (m_low + m_high) / (m_tangentLow + m_tangentHigh);
    }

    /// In parallel.
    double length() const {
        return -(m_low + m_high);
    }

    /// Where the eye has as much room on both sides.
    double middle() const {
        return (m_low - m_high) / 2.0;
    }

    /// The place that is nearest to a wish and from where all is seen, when so much is seen towards low and high places
    /// at the depth 0.
    double nearest(double wish, double reachLow, double reachHigh) const {
        return std::max(std::min(wish, m_low + reachLow), -m_high - reachHigh);
    }

private:
    double m_tangentLow;
    double m_tangentHigh;
    double m_low = infinity; ///< The least distance to the side of the picture through the origin.
    double m_high = infinity;
};

} // namespace

bool fitCamera(std::span<const Shape* const> shapes, double aspect, double leftRoom, Camera* camera) {
    const RayBox box = boxOf(shapes);
    const double diagonal = box.isEmpty() ? 0.0 : (box.upper - box.lower).length();
    if (!(diagonal > 0.0) || !std::isfinite(diagonal) || !(aspect > 0.0) || !std::isfinite(aspect)) {
        return false;
    }
    const Vec3d center = box.lower + (box.upper - box.lower) * 0.5;
    const PictureRays axes(*camera, 1, 1);
    const double tangent = camera->isParallel() ? 0.0 : camera->pixelSize(1.0, 1) / (2.0 * margin);
    const double left = 1.0 - 2.0 * leftRoom; // Of the half of the picture that is left of its middle.
    Span upwards(tangent, tangent);
    Span across(tangent * aspect, tangent * aspect);
    Span beside(tangent * aspect * left, tangent * aspect);
    double nearest = infinity;
    forPoints(shapes, [&](const Vec3d& point, double radius) {
        const Vec3d from = point - center;
        const double depth = from * axes.forward();
        const double ball = std::max(radius, leastShare * diagonal);
        upwards.add(from * axes.up(), depth, ball);
        across.add(from * axes.right(), depth, ball);
        beside.add(from * axes.right(), depth, ball);
        nearest = std::min(nearest, depth - ball);
    });
    double depth = nearest - diagonal;
    double reach = std::max(upwards.length(), across.length() / (aspect * (1.0 - leftRoom))) / 2.0;
    if (camera->isParallel()) {
        camera->setParallel(2.0 * margin * reach);
    } else {
        depth = std::min(upwards.depth(), beside.depth());
        reach = -tangent * depth;
    }
    const double place = beside.nearest(across.middle(), reach * aspect * left, reach * aspect);
    const Vec3d middle = center + axes.right() * place + axes.up() * upwards.middle();
    return camera->setFromLookAt(middle + axes.forward() * depth, middle, axes.up());
}

} // namespace orv::vis
