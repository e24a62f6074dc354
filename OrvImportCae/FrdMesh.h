#pragma once

#include "OrvCore/PtrRef.h"
#include "OrvImportCae/CaeFile.h"
#include "OrvImportCae/CaeIds.h"
#include "OrvImportCae/CaeParts.h"
#include "OrvImportCae/FrdIndex.h"
#include "OrvUnstructGrid/DataGeometry.h"
#include "OrvUnstructGrid/PartInfo.h"

#include <string>
#include <vector>

namespace orv::imp::cae {

/// The mesh of a file as our data model has it, with the way back to the order of the file.
struct FrdMesh {
    CaeIds nodeIds;
    PtrRef<ug::DataGeometry> geometry;
    std::vector<ug::PartInfo> parts;
    CaeNodePlaces places;
};

/// Reads the blocks of nodes and elements. Elements of the same group and material make a part, in ascending order of
/// these numbers; a part's nodes are those that its elements use, by ascending number. Elements of an unknown type are
/// left out and counted in a warning.
bool readFrdMesh(const CaeFile& file, const FrdIndex& index, FrdMesh* mesh, std::vector<std::string>* warnings,
                 ug::Error* error);

} // namespace orv::imp::cae
