#pragma once

#include "LibCore/rvfExport.h"

#include <cstddef>

namespace orv::ug {

/// A node or element to ask for. Which of the two is the mapping's affair: of a result PER_NODE it is a node, of any
/// other one an element.
class ORV_API ResultsQueryItem {
public:
    /// @param itemIndex the index of the part in its geometry
    /// @param index the index of the node or element in the part
    ResultsQueryItem(std::size_t itemIndex, std::size_t index);

    std::size_t itemIndex() const;
    std::size_t index() const;

private:
    std::size_t m_itemIndex;
    std::size_t m_index;
};

} // namespace orv::ug
