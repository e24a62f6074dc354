#pragma once

#include "OrvImportVtk/CgnsIndex.h"

namespace orv::imp::cae {

/// What VTK goes by in all zones of a base, though it looks for it in the first one only.
struct CgnsZoneRules {
    bool haveGridPointers = false; ///< Coordinates have a name for each time.
    bool haveFlowPointers = false; ///< Solutions have.
};

bool readCgnsZoneRules(const CgnsTree& tree, const CgnsNode& firstZone, CgnsZoneRules* rules, ug::Error* error);

/// Reads a zone of a base whose dimensions and times are known. Errors name the zone.
bool readCgnsZone(const CgnsTree& tree, const CgnsNode& node, const CgnsBase& base, const CgnsZoneRules& rules,
                  CgnsZone* zone, CgnsLeftOut* leftOut, ug::Error* error);

} // namespace orv::imp::cae
