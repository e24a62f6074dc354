#pragma once

#include "OrvImportVtk/CgnsIndex.h"

class vtkUnstructuredGrid;

namespace orv::imp::cae {

/// Reads what a section of elements tells of itself, and not the elements.
bool readCgnsSection(const CgnsTree& tree, const CgnsNode& node, CgnsSection* section, ug::Error* error);

/// Whether the sections of an unstructured zone are its cells, number by number.
/// @param leftOut the sections behind the cells, which are of boundaries
bool checkCgnsSections(const CgnsZone& zone, CgnsLeftOut* leftOut, ug::Error* error);

/// Reads the cells of an unstructured zone. Numbers of nodes that there are not become -1. Polyhedra have no nodes, as
/// nothing is made of them.
bool readCgnsCells(const CgnsTree& tree, const CgnsNode& node, const CgnsZone& zone, vtkUnstructuredGrid* grid,
                   ug::Error* error);

} // namespace orv::imp::cae
