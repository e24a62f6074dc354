#pragma once

#include "OrvImportVtk/CgnsTree.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace orv::imp::cae {

/// The layers around what belongs to a zone: before and behind it, for each dimension.
using CgnsRind = std::array<std::int64_t, 6>;

/// How many items a zone has, for each of up to three dimensions.
using CgnsCounts = std::vector<std::int64_t>;

/// All counts multiplied.
std::size_t cgnsItemCount(const CgnsCounts& counts);

/// Whether an array of numbers has so many of them, and the layers around them.
bool checkCgnsValues(const CgnsNode& node, const CgnsCounts& counts, const CgnsRind& rind, ug::Error* error);

/// Reads an array without the layers around it, the first dimension fastest.
/// @param values gets a number every `stride` numbers
bool readCgnsValues(const CgnsTree& tree, const CgnsNode& node, const CgnsCounts& counts, const CgnsRind& rind,
                    std::size_t stride, double* values, ug::Error* error);

} // namespace orv::imp::cae
