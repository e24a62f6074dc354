#pragma once

#include "OrvUnstructGrid/ElementType.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace orv::imp::cae {

/// How a cell of VTK becomes an element of ours: which of its points are the element's nodes, in our order. Points in
/// the middle of faces and volumes, which our elements do not have, are left out.
struct VtkCell {
    int cellType; ///< VTK's number.
    ug::ElementType elementType;
    std::uint8_t pointCount;
    const std::uint8_t* order; ///< For each node of the element the point of the cell.

    /// The same for a cell that is the other way around, as programs do not agree on which way wedges go. Null where
    /// they do.
    const std::uint8_t* turnedOrder = nullptr;

    /// How many points the cell may have, too, in files of programs that VTK reads; 0 when there is no such number.
    std::uint8_t otherPointCount = 0;

    bool mayHave(std::int64_t points) const {
        return points == pointCount || (points == otherPointCount && otherPointCount != 0);
    }
};

/// The cells with a fixed number of points. Null for a type that is not among them.
const VtkCell* findVtkCell(int cellType);

/// An element that is a piece of a larger cell.
struct VtkCellPiece {
    ug::ElementType elementType;
    std::array<std::uint32_t, 4> points; ///< Of the cell, as many as the element has nodes.
};

/// Cells of any number of points become several elements: poly-vertices, poly-lines, strips of triangles, and polygons,
/// which are triangles from their first point on when they have more than four. Replaces the list; false, with an empty
/// one, when the type is none of these.
bool splitVtkCell(int cellType, std::size_t pointCount, std::vector<VtkCellPiece>* pieces);

} // namespace orv::imp::cae
