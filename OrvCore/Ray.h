#pragma once

#include "OrvCore/Vec3d.h"

namespace orv {

/// A half line from a point, such as the one from the eye through the mouse. A value.
class Ray {
public:
    /// At the origin, with the direction (0, 0, 0), which hits nothing.
    constexpr Ray() = default;

    constexpr const Vec3d& origin() const {
        return m_origin;
    }

    constexpr void setOrigin(const Vec3d& origin) {
        m_origin = origin;
    }

    /// As it was set.
    constexpr const Vec3d& direction() const {
        return m_direction;
    }

    /// Any length but zero will do; it is not normalised.
    constexpr void setDirection(const Vec3d& direction) {
        m_direction = direction;
    }

private:
    Vec3d m_origin;
    Vec3d m_direction;
};

} // namespace orv
