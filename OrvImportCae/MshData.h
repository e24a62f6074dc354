#pragma once

#include "OrvImportCae/CaeFile.h"
#include "OrvImportCae/MshParts.h"
#include "OrvImportCae/MshSections.h"
#include "OrvUnstructGrid/Error.h"
#include "OrvUnstructGrid/ResultType.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace orv::imp::cae {

/// Rows of a tensor, one behind the other.
inline constexpr std::size_t MSH_TENSOR_COMPONENTS = 9;

/// What had to be left out of a section.
struct MshLeftOut {
    std::size_t count = 0; ///< Items of nodes or elements that the mesh does not have.
    std::int64_t firstTag = 0;
    std::int64_t firstOffset = 0;
    std::size_t asymmetricCount = 0; ///< Tensors that are not symmetric, now undefined.
};

/// Whether the first items of a section with nine components are symmetric.
bool startsWithSymmetricTensors(const CaeFile& file, bool isBinary, const MshDataSection& section);

/// Reads the values of a section into the parts' buffers, which have room for all items. Items that the section does
/// not have stay as they are; items of nodes that no element uses are passed over.
///
/// A section per element node tells for each element how many nodes it has values for: all, or all of our type, or the
/// corners alone, in the file's order of nodes. Others are then left as they are.
bool readMshValues(const CaeFile& file, bool isBinary, const MshDataSection& section, const MshParts& mesh,
                   ug::ResultType type, const std::vector<double*>& parts, MshLeftOut* leftOut, ug::Error* error);

/// The value of one row of a section of one number per item, without the others.
/// @param tag what the row has to be of
/// @return false when rows have no fixed size, as in text files, or the row is of another item
bool readMshValueOfRow(const CaeFile& file, bool isBinary, const MshDataSection& section, std::size_t row, int tag,
                       double* value);

} // namespace orv::imp::cae
