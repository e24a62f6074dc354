#pragma once

#include "OrvCore/Ray.h"
#include "OrvVisualization/Camera.h"

namespace orv::vis {

/// How far a point of a surface is from the one that is seen a pixel further to the right, and a pixel further up.
struct PixelSteps {
    Vec3d right;
    Vec3d up;
    Vec3d sight; ///< The direction of the ray to the point.
};

/// The rays of a picture, with all that is the same for each of them computed once.
class PictureRays {
public:
    PictureRays(const Camera& camera, int width, int height);

    /// See Camera::rayThrough().
    Ray through(double x, double y) const;

    /// The size of a pixel at the depth of a point.
    double pixelSize(const Vec3d& point) const;

    /// @param normal of the plane in which the point is moved
    /// @param direction of the ray that met the point
    PixelSteps stepsOn(const Vec3d& point, const Vec3d& normal, const Vec3d& direction) const;

    int width() const;
    int height() const;
    const Vec3d& forward() const;
    const Vec3d& right() const;
    const Vec3d& up() const;

private:
    int m_width;
    int m_height;
    bool m_isParallel;
    double m_unitsPerPixel; ///< In a parallel picture; in perspective at a depth of 1.
    Vec3d m_eye;
    Vec3d m_forward;
    Vec3d m_right;
    Vec3d m_up;
};

} // namespace orv::vis
