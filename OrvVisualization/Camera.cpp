#include "OrvVisualization/Camera.h"

#include "OrvVisualization/PictureRays_p.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace orv::vis {
namespace {

constexpr double fitMargin = 1.05;

struct Orientation {
    Vec3d toEye;
    Vec3d up;
};

Orientation orientationOf(StandardView view) {
    switch (view) {
    case StandardView::FRONT:
        return {{0, -1, 0}, {0, 0, 1}};
    case StandardView::BACK:
        return {{0, 1, 0}, {0, 0, 1}};
    case StandardView::LEFT:
        return {{-1, 0, 0}, {0, 0, 1}};
    case StandardView::RIGHT:
        return {{1, 0, 0}, {0, 0, 1}};
    case StandardView::TOP:
        return {{0, 0, 1}, {0, 1, 0}};
    case StandardView::BOTTOM:
        return {{0, 0, -1}, {0, 1, 0}};
    case StandardView::ISOMETRIC:
        break;
    }
    return {{1, -1, 1}, {0, 0, 1}};
}

bool isFinite(const Vec3d& v) {
    return std::isfinite(v.x()) && std::isfinite(v.y()) && std::isfinite(v.z());
}

bool isPositive(double value) {
    return value > 0.0 && std::isfinite(value);
}

bool isUpright(const Vec3d& up, const Vec3d& forward) {
    constexpr double roundingErrors = 1e-14;
    return std::abs(up * forward) <= roundingErrors && std::abs(up * up - 1.0) <= roundingErrors;
}

/// The part of `up` at right angles to the unit vector `forward`, of length 1; of the axis that is least along
/// `forward` when nothing is left of it. `up` itself when it is that already.
Vec3d uprightOf(const Vec3d& up, const Vec3d& forward) {
    constexpr double tooLittle = 1e-9;
    if (isUpright(up, forward)) {
        return up;
    }
    Vec3d upright = up - forward * (up * forward);
    if (!(upright.length() > tooLittle * up.length())) {
        std::size_t axis = 0;
        for (std::size_t i = 1; i < 3; ++i) {
            axis = std::abs(forward[i]) < std::abs(forward[axis]) ? i : axis;
        }
        Vec3d other;
        other[axis] = 1.0;
        upright = other - forward * forward[axis];
    }
    upright = upright / upright.length();
    // When little was left, much of it are rounding errors, also along `forward`.
    upright -= forward * (upright * forward);
    return upright / upright.length();
}

double tangentOfHalf(double angle) {
    return std::tan(angle * std::numbers::pi / 360.0);
}

/// What is seen along one axis of a picture, in the plane of that axis and the line of sight: all places from
/// low - tangent * depth to high + tangent * depth.
class Strip {
public:
    /// That of a camera at the origin.
    /// @param half of the picture's length at the camera; 0 in perspective
    Strip(double tangent, double half) : m_tangent(tangent), m_low(-half), m_high(half) {}

    /// The narrowest that has this one and that of another camera, of the same tangent, in it.
    Strip with(double place, double depth, double half) const {
        Strip both = *this;
        both.m_low = std::min(m_low, place - half + m_tangent * depth);
        both.m_high = std::max(m_high, place + half - m_tangent * depth);
        return both;
    }

    double middle() const {
        return (m_low + m_high) / 2.0;
    }

    double half() const {
        return (m_high - m_low) / 2.0;
    }

    /// The depth from which it is seen in perspective.
    double apex() const {
        return -half() / m_tangent;
    }

private:
    double m_tangent;
    double m_low;
    double m_high;
};

} // namespace

Camera::Camera() = default;

void Camera::toLookAt(Vec3d* eye, Vec3d* viewReferencePoint, Vec3d* up) const {
    if (eye) {
        *eye = m_eye;
    }
    if (viewReferencePoint) {
        *viewReferencePoint = m_viewReferencePoint;
    }
    if (up) {
        *up = m_up;
    }
}

bool Camera::setFromLookAt(const Vec3d& eye, const Vec3d& viewReferencePoint, const Vec3d& up) {
    const Vec3d sight = viewReferencePoint - eye;
    if (!isPositive(sight.length()) || !isFinite(up)) {
        return false;
    }
    m_eye = eye;
    m_viewReferencePoint = viewReferencePoint;
    m_up = uprightOf(up, sight / sight.length());
    return true;
}

bool Camera::setPerspective(double angle) {
    if (!(angle > 0.0 && angle < 180.0)) {
        return false;
    }
    m_isParallel = false;
    m_angle = angle;
    return true;
}

bool Camera::setParallel(double height) {
    if (!isPositive(height)) {
        return false;
    }
    m_isParallel = true;
    m_height = height;
    return true;
}

bool Camera::isParallel() const {
    return m_isParallel;
}

double Camera::angle() const {
    return m_angle;
}

double Camera::height() const {
    return m_height;
}

void Camera::setStandardView(StandardView view, const Vec3d& center) {
    const Orientation orientation = orientationOf(view);
    const double distance = (m_viewReferencePoint - m_eye).length();
    setFromLookAt(center + orientation.toEye * (distance / orientation.toEye.length()), center, orientation.up);
}

bool Camera::fitBall(const Vec3d& center, double radius, double aspect) {
    if (!isPositive(radius) || !isPositive(aspect) || !isFinite(center)) {
        return false;
    }
    const double narrow = std::min(aspect, 1.0);
    const double ball = radius * fitMargin;
    // The ball touches the picture's edge where the line of sight along that edge is a tangent to it.
    const double distance = ball / std::sin(std::atan(tangentOfHalf(m_angle) * narrow));
    if (!setFromLookAt(center - forward() * distance, center, m_up)) {
        return false;
    }
    m_height = m_isParallel ? 2.0 * ball / narrow : m_height;
    return true;
}

bool Camera::include(const Camera& other, double aspect) {
    constexpr double rounding = 1e-9;
    if ((forward() - other.forward()).length() > rounding || (m_up - other.m_up).length() > rounding ||
        m_isParallel != other.m_isParallel || (!m_isParallel && m_angle != other.m_angle) || !isPositive(aspect)) {
        return false;
    }
    const double tangent = m_isParallel ? 0.0 : tangentOfHalf(m_angle);
    const double half = m_isParallel ? m_height / 2.0 : 0.0;
    const double otherHalf = m_isParallel ? other.m_height / 2.0 : 0.0;
    const Vec3d toOther = other.m_eye - m_eye;
    double depth = toOther * forward();
    const Strip across = Strip(tangent * aspect, half * aspect).with(toOther * right(), depth, otherHalf * aspect);
    const Strip upwards = Strip(tangent, half).with(toOther * m_up, depth, otherHalf);
    if (m_isParallel) {
        depth = std::min(0.0, depth);
        m_height = 2.0 * std::max(upwards.half(), across.half() / aspect);
    } else {
        depth = std::min(across.apex(), upwards.apex());
    }
    const Vec3d shift = forward() * depth + right() * across.middle() + m_up * upwards.middle();
    return setFromLookAt(m_eye + shift, m_viewReferencePoint + shift, m_up);
}

Ray Camera::rayThrough(double x, double y, int width, int height) const {
    return PictureRays(*this, width, height).through(x, y);
}

bool Camera::project(const Vec3d& point, int width, int height, double* x, double* y, double* depth) const {
    const Vec3d fromEye = point - m_eye;
    const double along = fromEye * forward();
    if (!(along > 0.0)) {
        return false;
    }
    const double size = pixelSize(along, height);
    *x = width / 2.0 + (fromEye * right()) / size;
    *y = height / 2.0 - (fromEye * m_up) / size;
    if (depth) {
        *depth = along;
    }
    return true;
}

double Camera::pixelSize(double depth, int height) const {
    return (m_isParallel ? m_height : 2.0 * tangentOfHalf(m_angle) * depth) / height;
}

Vec3d Camera::forward() const {
    const Vec3d sight = m_viewReferencePoint - m_eye;
    return sight / sight.length();
}

Vec3d Camera::right() const {
    return forward() ^ m_up;
}

} // namespace orv::vis
