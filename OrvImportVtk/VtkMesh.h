#pragma once

#include "OrvUnstructGrid/DataPart.h"
#include "OrvUnstructGrid/Error.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <vector>

class vtkDataSet;

namespace orv::imp::cae {

/// How the values of a mesh's cells go to the elements of a part.
struct VtkPartMap {
    std::size_t pointCount = 0;
    std::size_t cellCount = 0;
    std::vector<std::int64_t>
        elementCells; ///< The cell of each element; empty when each cell is the element of its index.

    bool operator==(const VtkPartMap&) const = default;
};

/// The cells of each type of VTK that no element could be made of.
using VtkUnknownCells = std::map<int, std::size_t>;

/// Fills empty nodes and elements with a mesh. All points become nodes, with their global ids when the mesh has ids
/// that fit. Cells that are ghosts of another piece's, and hidden ones, are left out.
bool fillVtkPart(vtkDataSet* mesh, ug::DataNodes* nodes, ug::DataElements* elements, VtkPartMap* map,
                 VtkUnknownCells* unknown, ug::Error* error);

/// "vtk cell type 42 (polyhedron)"
std::string vtkCellTypeText(int cellType);

} // namespace orv::imp::cae
