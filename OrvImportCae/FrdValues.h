#pragma once

#include "OrvImportCae/CaeFile.h"
#include "OrvImportCae/FrdIndex.h"
#include "OrvImportCae/FrdMesh.h"
#include "OrvUnstructGrid/Error.h"

#include <cstddef>
#include <cstdint>
#include <span>

namespace orv::imp::cae {

/// Rows that have no place.
struct FrdLeftOut {
    std::size_t count = 0;
    std::int64_t firstOffset = 0;
    int firstNode = 0;
};

/// Reads some columns of a block of results into the parts.
///
/// Rows are taken in large pieces. Where they have the expected width each is read at its columns; a block in which
/// one has not is read again line by line. Nodes that come in the order of the mesh are not looked up.
///
/// @param storedCount the columns that the block has
/// @param columns those that are wanted, 1, 3 or 6, in the order of an item
/// @param parts for each part its values: an item for each of its nodes. Nodes that the block leaves out become
///        UNDEFINED_DOUBLE. After a failure the values are anything.
/// @param leftOut filled when the block has nodes that the mesh has not, as when elements come to life in a later step
///        than the one that wrote the mesh: their values have no place
/// @return false with a text when a row is not as it should be, a node comes twice, or not one of the nodes is known
bool readFrdValues(const CaeFile& file, const FrdRows& rows, std::size_t storedCount,
                   std::span<const std::uint32_t> columns, const FrdMesh& mesh, std::span<double* const> parts,
                   FrdLeftOut* leftOut, ug::Error* error);

/// Reads one column of one row of a block of results, and nothing else.
/// @param row counted from 0
/// @param nodeId the node that this row should be of
/// @return false when rows are not all of the same size, there is no such row, it is another node's, or not as it
///         should be
bool readFrdValueOfRow(const CaeFile& file, const FrdRows& rows, std::size_t storedCount, std::uint32_t column,
                       std::uint32_t row, int nodeId, double* value);

} // namespace orv::imp::cae
