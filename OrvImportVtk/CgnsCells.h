#pragma once

#include <cstdint>

namespace orv::imp::cae {

/// What elements of one of CGNS' types are, and the cells of VTK that they make. Nodes in the middle of faces and
/// volumes are left out.
struct CgnsCell {
    std::uint8_t nodeCount;
    int cellType; ///< VTK's number; one that no element is made of for higher orders.
    std::uint8_t pointCount;
    const std::uint8_t* order; ///< For each point of the cell the node of the element; null when all are the same.
};

/// Types of elements that tell themselves how many nodes, or faces, they have.
/// @{
constexpr int CGNS_MIXED = 20;
constexpr int CGNS_POLYGONS = 22;  ///< NGON_n: faces.
constexpr int CGNS_POLYHEDRA = 23; ///< NFACE_n: cells of faces.
/// @}

/// The elements of a type that all have as many nodes. Null for all other types.
const CgnsCell* findCgnsCell(std::int64_t type);

} // namespace orv::imp::cae
