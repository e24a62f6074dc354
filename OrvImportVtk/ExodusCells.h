#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace orv::imp::cae {

/// The cells of VTK that the elements of an Exodus block are.
struct ExodusCells {
    int cellType = 0;
    std::size_t pointCount = 0;          ///< Of each cell; 0 when they have all of an element's nodes.
    const std::uint8_t* order = nullptr; ///< For each point of the cell the node of the element; null when the same.
};

/// Goes by the beginning of the type's name, in any case, and by the nodes that an element has. Nodes in the middle of
/// faces and volumes are left out.
/// @param nodeCount 0 when the elements have different ones
/// @return false when there is no such cell
bool findExodusCells(const std::string& typeName, std::size_t nodeCount, ExodusCells* cells);

} // namespace orv::imp::cae
