#pragma once

#include "OrvUnstructGrid/ElementType.h"

#include <cstdint>
#include <span>

namespace orv::imp::cae {

/// How one of MED's types of cells becomes an element. Its number tells the nodes: the last two digits.
struct MedCell {
    int type;                    ///< MED's number of it, such as MED_HEXA8.
    const char* name;            ///< As groups in the file are called, such as "HE8".
    ug::ElementType elementType; ///< Has fewer nodes than the cell when the cell has nodes in its faces and its middle.
    const std::uint8_t* order;   ///< For each node of the element its place in the cell, from 0, as MED has it.

    std::size_t nodeCount() const {
        return std::size_t(type % 100);
    }
};

/// All cells that become elements, in the order of MED's numbers, which is the one in which they are read.
///
/// MED turns volumes the other way than we do: the base 1 2 3 (4) of a tetrahedron or pyramid seen from its apex runs
/// clockwise, and the bottom of a wedge or hexahedron seen from its top does. Nodes between corners follow the same
/// list of edges as ours, by MED's corners. Points, lines and surfaces have the same order in both.
std::span<const MedCell> medCells();

/// The order of the nodes of a cell: that of MED, but for volumes that would be turned inside out by it. Programs write
/// those that, like meshio, do not know that MED turns volumes; they have our order. Flat ones have that of MED.
/// @param coordinates x, y and z of the mesh's nodes
/// @param nodes the cell's, from 1
const std::uint8_t* medNodeOrder(const MedCell& cell, const double* coordinates, const int* nodes);

} // namespace orv::imp::cae
