#pragma once

#include "OrvCore/Vec3d.h"
#include "OrvUnstructGrid/PartSurface_p.h"

#include <span>

namespace orv::ug {

/// A point of a section, on an edge of an element. Places are positions in the part's connectivity.
struct SectionPoint {
    std::uint32_t abovePlace;
    std::uint32_t belowPlace;
    double weight; ///< Of the node at `belowPlace`; the other one has the rest.
};

/// Where a plane cuts the elements of a part: volumes in polygons, as faces; shells in lines, as tubes; beams in
/// points, as spheres. Point indexes are those of `points`.
struct PlaneSection : ElementMesh {
    std::vector<SectionPoint> points;
    std::vector<double> coordinates; ///< x, y, z of each point.
};

/// Cuts all elements of a part, quadratic ones as if they had their corners only.
///
/// A corner is above the plane when it is on the side that the normal points to, or in the plane; an edge is cut when
/// its ends are on different sides. So of two volumes that meet in the plane it is the lower one that shows the common
/// face, and a shell or beam in the plane shows nothing. Polygons, their normals along the plane's for elements that
/// are not inverted, are exact for elements with plane faces. On a face that is not plane and cut twice, lines join as
/// the bilinear surface through its corners does; both neighbours see that alike, so that sections have neither gaps
/// nor overlaps inside a mesh. Polygons without three different points, and lines without two, are left out.
///
/// @param coordinates of the part's nodes, where they are to be cut: x, y, z of each
/// @param normal of any length but zero
/// A part that is not consistent has no section.
PlaneSection sectionOf(const DataPart& part, std::span<const double> coordinates, const Vec3d& point,
                       const Vec3d& normal);

} // namespace orv::ug
