#pragma once

#include "OrvImportVtk/CgnsIndex.h"

#include <vtkSmartPointer.h>

class vtkPointSet;

namespace orv::imp::cae {

/// Reads the mesh that a zone has at a step; one without points when it has none then.
/// @param node the zone's
/// @return null on failure
vtkSmartPointer<vtkPointSet> readCgnsMesh(const CgnsTree& tree, const CgnsNode& node, const CgnsZone& zone,
                                          std::size_t step, ug::Error* error);

/// Adds an array of a solution to a mesh of its zone. Vectors in a plane get zeros for Z.
/// @param node the zone's
/// @param array one of the solution's
bool addCgnsArray(const CgnsTree& tree, const CgnsNode& node, const CgnsZone& zone, const CgnsSolution& solution,
                  const CaeArray& array, int physicalDimension, vtkPointSet* mesh, ug::Error* error);

} // namespace orv::imp::cae
