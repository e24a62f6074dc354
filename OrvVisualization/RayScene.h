#pragma once

#include "LibCore/rvfExport.h"
#include "OrvCore/Defines.h"
#include "OrvCore/PimplPointerHolder.h"
#include "OrvCore/Ray.h"
#include "OrvCore/Str.h"
#include "OrvCore/Vec3d.h"

#include <cstddef>
#include <cstdint>
#include <span>

namespace orv::vis {

class RayScenePrivate;

/// What a ray met first.
struct RayHit {
    std::size_t mesh = UNDEFINED_SIZE_T;      ///< What the add operation answered.
    std::size_t primitive = UNDEFINED_SIZE_T; ///< The face, tube or sphere in the mesh.
    std::size_t triangle = UNDEFINED_SIZE_T;  ///< The triangle in the mesh; undefined when it has none.
    /// How much each corner of the triangle, or each of the two ends of the tube, has of the point; the sum is 1.
    double weights[3] = {0.0, 0.0, 0.0};
    double distance = 0.0; ///< In units of the ray's direction.
    Vec3d point;
    Vec3d normal; ///< Of length 1; of a triangle by the right-hand rule of its corners.
};

/// The one thing that pictures and picking look into: faces, tubes and spheres, and which of them a ray meets first.
///
/// Candidates are found in single precision, in boxes that are wide enough; whether and where they are met is decided
/// in doubles. A ray aimed at a corner of a triangle, or at any point of it, meets that triangle unless something is
/// before it, however far the eye or the model's origin is away.
///
/// Arrays are not copied: they must stay, and stay as they are, as long as the scene is asked. Indexes must be below
/// the number of points; this is not checked. Primitives with a coordinate that is not finite, or beyond 1e100, are
/// left out. One thread.
class ORV_API RayScene {
public:
    RayScene();
    ~RayScene();

    RayScene(const RayScene&) = delete;
    RayScene& operator=(const RayScene&) = delete;

    /// @param coordinates x, y, z of each point
    /// @param corners the points of the triangles, three for each
    /// @param faceOffsets where each face begins among the triangles, and the total as one more entry; empty when each
    ///                    triangle is a face of its own. Fewer, larger faces make a scene that is ready sooner.
    /// @return the number of the mesh in this scene
    std::size_t addFaces(std::span<const double> coordinates, std::span<const std::uint32_t> corners,
                         std::span<const std::uint32_t> faceOffsets);

    /// Lines drawn thick, with round ends.
    /// @param ends the points of the tubes, two for each
    std::size_t addTubes(std::span<const double> coordinates, std::span<const std::uint32_t> ends, double radius);

    /// @param points the centres
    std::size_t addSpheres(std::span<const double> coordinates, std::span<const std::uint32_t> points, double radius);

    /// Makes the scene ready for rays; nothing is met before. Called once, behind the last mesh.
    /// @param reason told when it fails, which is for want of memory; may be null
    bool commit(Str* reason);

    /// Finds what a ray meets first; of things at the same distance, what was added first. A ray without a direction
    /// meets nothing. `hit` is written only when something is met.
    bool intersect(const Ray& ray, RayHit* hit) const;

private:
    internal::PimplPointerHolder<RayScenePrivate> m_private;
};

} // namespace orv::vis
