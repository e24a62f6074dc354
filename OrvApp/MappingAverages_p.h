#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace orv::app {

/// The nodes of the elements of one part: those of element e are nodes[offsets[e]] up to nodes[offsets[e + 1]].
struct ElementNodeLists {
    std::span<const std::uint32_t> offsets; ///< One more than there are elements.
    std::span<const std::uint32_t> nodes;

    std::size_t elementCount() const {
        return offsets.size() - 1;
    }
};

/// Items of which the first `dimension` doubles count.
struct ItemsToAverage {
    const double* values;
    std::size_t stride;    ///< The doubles from one item to the next.
    std::size_t dimension; ///< 1, 3 or 6, also the doubles of an output item.
};

/// Writes the average of its nodes to each element, component by component, nodes added in the order of the list. An
/// element without nodes gets NaN.
void averageNodesOfElements(const ElementNodeLists& lists, const ItemsToAverage& nodeItems, double* elementValues);

/// Writes the average of the elements around it to each node, elements added in their order. A node without an element
/// gets 0.0.
void averageElementsAroundNodes(const ElementNodeLists& lists, const ItemsToAverage& elementItems,
                                std::size_t nodeCount, double* nodeValues);

} // namespace orv::app
