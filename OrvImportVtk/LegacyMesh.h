#pragma once

#include "OrvImportVtk/LegacyIndex.h"

#include <cstddef>
#include <span>

#include <vtkSmartPointer.h>

class vtkDataSet;

namespace orv::imp::cae {

/// The mesh of a legacy file with its ids, its marks of ghosts and these of LegacyIndex::arrays. Polyhedra are there,
/// but have no nodes. What it has not is not checked here: whether the cells' nodes are points, and arrays as long as
/// they should be.
/// @return null on failure
vtkSmartPointer<vtkDataSet> readLegacyMesh(CaeFile* file, const LegacyIndex& index, std::span<const std::size_t> arrays,
                                           ug::Error* error);

} // namespace orv::imp::cae
