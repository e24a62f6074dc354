#pragma once

#include "OrvCore/Str.h"
#include "OrvUnstructGrid/DataGeometry.h"
#include "OrvUnstructGrid/PartInfo.h"

#include <vector>

namespace orv::imp::cae {

/// A file's mesh.
struct CaeMesh {
    Str filename;
    const ug::DataGeometry* geometry;
    std::vector<ug::PartInfo> parts;
};

/// The first difference between the mesh of a further file and the one that is open, in words that name both files;
/// empty when they are the same: parts, then for each part nodes, their numbers and places, elements, their numbers,
/// types and nodes. The names of parts do not count. Places are the same when each coordinate is up to a part in
/// 100,000, as text files have six digits and binary ones more.
Str tellMeshDifference(const CaeMesh& further, const CaeMesh& open);

} // namespace orv::imp::cae
