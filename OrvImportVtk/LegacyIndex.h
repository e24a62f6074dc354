#pragma once

#include "OrvImportCae/CaeFields.h"
#include "OrvImportVtk/LegacyInput.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace orv::imp::cae {

enum class LegacyMeshType { UNSTRUCTURED_GRID, POLYDATA, STRUCTURED_GRID, STRUCTURED_POINTS, RECTILINEAR_GRID };

/// A list of cells.
struct LegacyCells {
    std::int64_t count = 0;
    std::optional<LegacyValues> offsets; ///< Where the nodes of each begin and the last one's end; since version 5.
    LegacyValues nodes;                  ///< Without offsets each cell has the number of its nodes in front of them.
};

/// An array of points or cells.
struct LegacyArray {
    CaeArray array;
    LegacyValues values;
    bool isColour = false;    ///< From 0 to 1 in the file, for 0 to 255.
    bool isGlobalIds = false; ///< Of nodes or cells.
};

/// Where all things are in a legacy file of VTK.
struct LegacyIndex {
    enum List { CELLS, VERTICES, LINES, POLYGONS, TRIANGLE_STRIPS, LIST_COUNT };

    std::string title;
    bool isBinary = false;
    LegacyMeshType meshType = LegacyMeshType::UNSTRUCTURED_GRID;
    LegacyValues points; ///< Three numbers for each.
    std::array<LegacyCells, LIST_COUNT> cells;
    LegacyValues cellTypes; ///< Of CELLS.
    std::array<std::int64_t, 3> dimensions = {};
    std::array<double, 3> origin = {};
    std::array<double, 3> spacing = {1.0, 1.0, 1.0};
    std::array<LegacyValues, 3> planes;  ///< Of rectilinear grids: the places along each axis.
    std::vector<LegacyArray> arrays;     ///< Without those that belong to the mesh.
    std::vector<LegacyArray> meshArrays; ///< Ids and marks of ghosts.
    bool endsWithinLine = false;         ///< If the file has been cut, its last number may be wrong.
};

/// Goes through a file, from its beginning to its end, passing over all values. A file that has been cut is refused,
/// and so is one whose counts do not fit to each other.
bool indexLegacyFile(CaeFile* file, LegacyIndex* index, ug::Error* error);

} // namespace orv::imp::cae
