#pragma once

#include "OrvCore/PtrRef.h"
#include "OrvImportCae/CaeIds.h"
#include "OrvImportCae/CaeParts.h"
#include "OrvImportCae/MshSections.h"
#include "OrvUnstructGrid/DataGeometry.h"
#include "OrvUnstructGrid/PartInfo.h"

#include <cstdint>
#include <vector>

namespace orv::imp::cae {

/// The mesh of a file as our data model has it, with the way back to the numbers of the file.
struct MshParts {
    struct Place {
        std::uint32_t part = 0;
        std::uint32_t element = 0; ///< The element's index in that part.
    };

    PtrRef<ug::DataGeometry> geometry;
    std::vector<ug::PartInfo> infos;
    CaeIds nodeIds;
    CaeNodePlaces nodePlaces;
    CaeIds elementIds;
    std::vector<Place> elementPlaces; ///< For each of `elementIds`.
};

/// Makes parts out of elements, whose memory in `sections` is taken over.
///
/// The elements of a physical group are a part, named as the group is. An element in several groups belongs to the
/// first that its entity names. Elements without a group make a part for each entity ("Volume 3"); what a partition cut
/// out of an entity counts as that entity. Elements that name no entity either are the part "Elements". Volumes come
/// first, then surfaces, curves and points; groups ahead of entities; then by number.
MshParts makeMshParts(MshSections* sections);

} // namespace orv::imp::cae
