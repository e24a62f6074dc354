#include "OrvUnstructGrid/NodePieces_p.h"

namespace orv::ug {

NodePieces::NodePieces(const ElementMesh& surface, std::size_t nodeCount) : m_offsets(nodeCount + 1, 0) {
    m_pieces.resize(surface.corners.size() + surface.tubeEnds.size());
    for (const auto* nodes : {&surface.corners, &surface.tubeEnds}) {
        for (const std::uint32_t node : *nodes) {
            ++m_offsets[node];
        }
    }
    for (std::size_t node = 1; node <= nodeCount; ++node) {
        m_offsets[node] += m_offsets[node - 1];
    }
    // From behind, so that each end becomes a begin when all is written, and pieces ascend.
    const std::size_t triangleCount = surface.corners.size() / 3;
    for (std::size_t i = surface.tubeEnds.size(); i-- > 0;) {
        m_pieces[--m_offsets[surface.tubeEnds[i]]] = static_cast<std::uint32_t>(triangleCount + i / 2);
    }
    for (std::size_t triangle = triangleCount; triangle-- > 0;) {
        for (std::size_t i = 3; i-- > 0;) {
            m_pieces[--m_offsets[surface.corners[3 * triangle + i]]] = static_cast<std::uint32_t>(triangle);
        }
    }
}

} // namespace orv::ug
