#pragma once

#include "OrvImportMed/MedCells.h"
#include "OrvImportMed/MedFile.h"
#include "OrvUnstructGrid/DataGeometry.h"
#include "OrvUnstructGrid/PartInfo.h"

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace orv::imp::cae {

/// What is kept of a mesh to find the values of its nodes and cells.
struct MedMesh {
    std::string name;
    std::size_t nodeCount = 0;
    std::vector<std::pair<const MedCell*, std::size_t>> cells; ///< The types that it has, and how many of each.

    /// 0 for a type that the mesh does not have.
    std::size_t cellCount(int type) const;
};

/// Elements that follow each other in a part, all of one type and one order of nodes.
struct MedRun {
    const MedCell* cell;
    const std::uint8_t* order;           ///< For each node of an element its place in the cell, from 0.
    std::vector<std::uint32_t> elements; ///< For each element which of its type's in the mesh it is, from 0.
};

/// Where nodes and elements of a part are in the file.
struct MedPart {
    std::size_t mesh;
    std::vector<std::uint32_t> nodes; ///< For each node which of the mesh's it is, from 0.
    std::vector<MedRun> runs;
};

struct MedMeshes {
    std::vector<MedMesh> meshes;
    std::vector<MedPart> parts; ///< As many as the geometry has.
    std::vector<ug::PartInfo> infos;
};

/// Reads all unstructured meshes into one geometry.
///
/// In a mesh each cell is of one family, and the groups that name the family make the part: the cells that are in the
/// same groups. A part is called by its groups, separated by ", "; the cells in no group are the first part, called by
/// the mesh. With several meshes "MESH: " stands before the groups. Groups of nodes make no parts. A part has the
/// nodes that its cells use. The first computation step of a mesh is taken; a missing axis is 0.
/// @param warnings told what is left out: other kinds of meshes, cells of unknown types, nodes of no cell
bool readMedMeshes(const MedFile& file, MedMeshes* meshes, ug::DataGeometry* geometry,
                   std::vector<std::string>* warnings, ug::Error* error);

} // namespace orv::imp::cae
