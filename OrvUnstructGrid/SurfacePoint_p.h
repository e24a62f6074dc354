#pragma once

#include "OrvUnstructGrid/SurfaceTopology_p.h"

#include <array>
#include <optional>
#include <span>
#include <vector>

namespace orv::ug {

/// A point of a surface, and what of the surface it is on.
struct SurfacePoint {
    Vec3d point;
    std::vector<SurfacePiece> pieces; ///< All that it is in, on the side of or at the corner of; ascending.
    Vec3d normal;                     ///< Of length 1; zero where there is no triangle with an area.
    bool isOnShell = false;           ///< Whether the normal may just as well point the other way.
};

/// False also for what is too far away to compute with.
bool isSomewhere(const Vec3d& point);

/// The weights of a triangle's corners, or a tube's ends, at the point of it that is nearest to `point`. Weights that
/// are roundings are 0.
std::array<double, 3> weightsAt(const SurfaceTopology& topology, SurfacePiece piece, const Vec3d& point);

/// @return nothing when it is on no triangle or tube
std::optional<SurfacePoint> pointAtVertex(const SurfaceTopology& topology, Vertex vertex);

/// The nearest point of some triangles and tubes, of the first of those that are as near as each other. Where it comes
/// out at a side or corner, to within 1e-10 of the triangle's size, it is put there.
/// @return nothing when there are no pieces or nothing is finite
std::optional<SurfacePoint> nearestPoint(const SurfaceTopology& topology, std::span<const SurfacePiece> pieces,
                                         const Vec3d& point);

} // namespace orv::ug
