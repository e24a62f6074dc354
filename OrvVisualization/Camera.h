#pragma once

#include "LibCore/rvfExport.h"
#include "OrvCore/Ray.h"
#include "OrvCore/Vec3d.h"

namespace orv::vis {

/// The views that every drawing office knows. Looking along an axis, the model's z is up, except from above and below,
/// where its y is.
enum class StandardView {
    FRONT,    ///< Against y: x to the right, z up.
    BACK,     ///< Along -y.
    LEFT,     ///< Along x: -y to the right.
    RIGHT,    ///< Along -x.
    TOP,      ///< Along -z: x to the right, y up.
    BOTTOM,   ///< Along z.
    ISOMETRIC ///< From (1, -1, 1): all three axes equally long, z up.
};

/// Where a picture is taken from. A value.
///
/// Pixels are counted from the upper left corner of the picture, which is (0, 0); the first pixel's middle is
/// (0.5, 0.5). A picture of any aspect shows the same height; its width follows.
class ORV_API Camera {
public:
    /// At (0, 0, 1), looking at the origin with y up, in perspective with an angle of 30 degrees.
    Camera();

    /// Each pointer may be null.
    /// @param up of length 1 and at right angles to the line of sight
    void toLookAt(Vec3d* eye, Vec3d* viewReferencePoint, Vec3d* up) const;

    /// @param up need be neither of length 1 nor at right angles; when it is zero or along the line of sight another
    ///           one is chosen; what toLookAt() gave comes back bit by bit
    /// @return false, and nothing changes, when the two points are one or a coordinate is not finite
    bool setFromLookAt(const Vec3d& eye, const Vec3d& viewReferencePoint, const Vec3d& up);

    /// @param angle of the picture's height, in degrees
    /// @return false, and nothing changes, when it is not above 0 and below 180
    bool setPerspective(double angle);

    /// Without foreshortening: everything in the model has the same scale.
    /// @param height of what the picture shows, in the model's units
    /// @return false, and nothing changes, when it is not above 0 and finite
    bool setParallel(double height);

    bool isParallel() const;
    /// The angle of the picture's height, in degrees; as it was last set.
    double angle() const;
    /// The height of a parallel picture, in the model's units; as it was last set.
    double height() const;

    /// Turns to a standard view of the middle of a box, as far away as before.
    void setStandardView(StandardView view, const Vec3d& center);

    /// Moves along the line of sight until a ball just fits into the picture, with a margin of a twentieth, and looks
    /// at its middle.
    /// @param aspect width by height of the picture
    /// @return false, and nothing changes, when the radius or the aspect is not above 0 and finite, or when the radius
    ///         is lost in the digits of the center
    bool fitBall(const Vec3d& center, double radius, double aspect);

    /// Moves, without turning, so that the picture shows all that it shows and all that another camera's picture shows:
    /// for a series of pictures of something that moves, from the cameras that each of them would have.
    /// @param aspect width by height of the picture
    /// @return false, and nothing changes, unless the other one looks in the same direction, with the same up and, in
    ///         perspective, the same angle, and the aspect is above 0 and finite
    bool include(const Camera& other, double aspect);

    /// The ray through a point of a picture. Its direction is of length 1. In a parallel picture it begins in the plane
    /// of the eye.
    Ray rayThrough(double x, double y, int width, int height) const;

    /// Where a point of the model is in a picture.
    /// @param depth along the line of sight; may be null
    /// @return false when it is not before the eye; x and y are then not written
    bool project(const Vec3d& point, int width, int height, double* x, double* y, double* depth) const;

    /// The size of a pixel at a depth, in the model's units.
    double pixelSize(double depth, int height) const;

private:
    Vec3d right() const;
    Vec3d forward() const;

    Vec3d m_eye = {0, 0, 1};
    Vec3d m_viewReferencePoint;
    Vec3d m_up = {0, 1, 0};
    bool m_isParallel = false;
    double m_angle = 30.0;
    double m_height = 1.0;
};

} // namespace orv::vis
