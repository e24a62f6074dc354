#pragma once

#include "OrvImportCae/TecZones.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace orv::imp::cae {

/// Where the numbers of a variable go: the one of item i to values[i * stride].
struct TecTarget {
    const TecColumn* column;
    double* values;
    std::size_t stride;
};

/// Reads variables of as many items, each list of the file that they are in once. NaN becomes UNDEFINED_DOUBLE.
bool readTecColumns(const CaeFile& file, std::span<const TecTarget> targets, std::uint64_t count, ug::Error* error);

/// The elements of a zone, one for each cell. Bricks and quadrilaterals with nodes that are the same become what is
/// left: wedges, pyramids, tetrahedra and triangles. Wedges are turned so that their volume is positive, as programs
/// make bricks of theirs either way. Ordered zones are hexahedra, quadrilaterals, beams or a point.
/// @param coordinates of the zone's nodes, 3 for each
bool readTecCells(const CaeFile& file, const TecZone& zone, std::span<const double> coordinates,
                  std::vector<ug::ElementType>* types, std::vector<std::uint32_t>* connectivity, ug::Error* error);

} // namespace orv::imp::cae
