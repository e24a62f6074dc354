#pragma once

#include "OrvUnstructGrid/PathSamples_p.h"
#include "OrvUnstructGrid/PlaneSection_p.h"

#include <span>
#include <vector>

namespace orv::ug {

/// The section of a part, as a cutting plane shows it.
struct ShownSection {
    std::size_t geometryIndex;
    std::size_t partIndex; ///< In the geometry.
    const DataPart* part;
    const PlaneSection* section;
};

/// The straight way from one point to another through sections in one plane, split at each side of their triangles; on
/// lines where these run along it. Where nothing is there is a gap; where sections overlap the one that begins first
/// is taken. Looks at all triangles and lines.
/// @param normal of the plane, of length 1
/// @param from in the plane, as is `to`
/// @return empty when there is nothing but a gap
std::vector<PathSegment> sectionWay(std::span<const ShownSection> sections, const Vec3d& normal, const Vec3d& from,
                                    const Vec3d& to);

} // namespace orv::ug
