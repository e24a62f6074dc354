#pragma once

#include "OrvImportVtk/CgnsIndex.h"

namespace orv::imp::cae {

/// Reads a zone of a base whose dimensions and times are known. Errors name the zone.
bool readCgnsZone(const CgnsTree& tree, const CgnsNode& node, const CgnsBase& base, CgnsZone* zone,
                  CgnsLeftOut* leftOut, ug::Error* error);

} // namespace orv::imp::cae
