#pragma once

#include "OrvCore/Ray.h"
#include "OrvCore/Vec3d.h"

#include <cstddef>

namespace orv::vis {

/// A ray made ready for many tests. All arithmetic is in doubles and relative to the ray's origin, so a model far from
/// the origin of coordinates loses nothing.
///
/// Triangles are tested after S. Woop, C. Benthin, I. Wald, "Watertight Ray/Triangle Intersection", Journal of Computer
/// Graphics Techniques 2 (2013): the space is sheared so that the ray becomes the z axis, and what remains is on which
/// side of each edge the origin lies. Two triangles with an edge in common compute the same number for it, so no ray
/// slips between them.
class RayTest {
public:
    /// The direction must not be zero and its components must be finite.
    explicit RayTest(const Ray& ray);

    /// Whether a triangle is met, from either side. A ray aimed at a corner or an edge meets it, within the rounding of
    /// a direction that was computed as target minus origin. A triangle seen exactly edge-on, or without an area, is
    /// not met.
    /// @param t where, in units of the ray's direction; never below 0
    /// @param weights of the three corners; none is negative and their sum is 1
    bool meetsTriangle(const double* a, const double* b, const double* c, double* t, double weights[3]) const;

    /// Whether a tube with round ends about the line from `a` to `b` is met; a sphere when the two are one point. From
    /// inside, the wall is met where the ray leaves.
    /// @param position of the hit along the line, from 0 at `a` to 1 at `b`
    bool meetsTube(const double* a, const double* b, double radius, double* t, double* position) const;

private:
    Vec3d m_origin;
    Vec3d m_direction;
    std::size_t m_x; ///< The axis that becomes x, and so on; z is the one that the ray follows most.
    std::size_t m_y;
    std::size_t m_z;
    double m_shearX;
    double m_shearY;
};

} // namespace orv::vis
