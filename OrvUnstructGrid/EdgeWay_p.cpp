#include "OrvUnstructGrid/EdgeWay_p.h"

#include "OrvUnstructGrid/ShortestWay_p.h"
#include "OrvUnstructGrid/WaySegments_p.h"

#include <algorithm>

namespace orv::ug {
namespace {

/// Places are vertices, with themselves as keys.
class EdgeGraph {
public:
    EdgeGraph(const SurfaceTopology& topology, const SurfacePoint& from, const SurfacePoint& to)
        : m_topology(topology), m_from(from), m_to(to) {}

    template <class Visit>
    void forArcs(std::uint64_t key, const Visit& visit) const {
        if (key == WAY_START) {
            for (const SurfacePiece piece : m_from.pieces) {
                forArcsIn(piece, visit);
            }
        } else {
            m_topology.forPiecesAt(static_cast<Vertex>(key), [&](SurfacePiece piece) { forArcsIn(piece, visit); });
        }
    }

    CornerMean meanAt(std::uint64_t key) const {
        return {static_cast<Vertex>(key), static_cast<Vertex>(key), 0.0};
    }

private:
    template <class Visit>
    void forArcsIn(SurfacePiece piece, const Visit& visit) const {
        const PieceCorners corners = m_topology.corners(piece);
        const bool isWhole = std::all_of(corners.begin(), corners.end(),
                                         [this](Vertex corner) { return isSomewhere(m_topology.point(corner)); });
        if (!isWhole) {
            return;
        }
        if (isOn(m_to, piece)) {
            visit(WAY_TARGET, m_to.point, piece);
        }
        for (const Vertex corner : corners) {
            visit(corner, m_topology.point(corner), piece);
        }
    }

    const SurfaceTopology& m_topology;
    const SurfacePoint& m_from;
    const SurfacePoint& m_to;
};

} // namespace

std::vector<PathSegment> edgeWay(const SurfaceTopology& topology, const SurfacePoint& from, const SurfacePoint& to) {
    const EdgeGraph graph(topology, from, to);
    return waySegments(topology, graph, shortestWay(graph, from.point, to.point));
}

} // namespace orv::ug
