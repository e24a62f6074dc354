#pragma once

#include "OrvImportVtk/CgnsIndex.h"

namespace orv::imp::cae {

/// Reads what a section of elements tells of itself, and not the elements.
bool readCgnsSection(const CgnsTree& tree, const CgnsNode& node, CgnsSection* section, ug::Error* error);

/// Whether the sections of an unstructured zone are its cells, number by number, as VTK needs them.
/// @param leftOut the sections behind the cells, which are of boundaries
bool checkCgnsSections(const CgnsZone& zone, CgnsLeftOut* leftOut, ug::Error* error);

/// Looks at the elements themselves where they tell how many nodes they have, polygons and polyhedra included. Does not
/// even open the file when there are none.
bool checkCgnsElements(const std::string& filename, const std::vector<CgnsBase>& bases, ug::Error* error);

} // namespace orv::imp::cae
