#pragma once

#include "OrvUnstructGrid/PartSurface_p.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace orv::ug {

/// Which triangles and tubes of a surface meet at each node. Two flat arrays, filled in two passes over the surface.
class NodePieces {
public:
    NodePieces(const ElementMesh& surface, std::size_t nodeCount);

    /// Ascending. Tubes are counted on behind the triangles.
    std::span<const std::uint32_t> at(std::size_t node) const {
        return std::span(m_pieces).subspan(m_offsets[node], m_offsets[node + 1] - m_offsets[node]);
    }

private:
    std::vector<std::uint32_t> m_offsets;
    std::vector<std::uint32_t> m_pieces;
};

} // namespace orv::ug
