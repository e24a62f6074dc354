#include "OrvUnstructGrid/WaySegments_p.h"

#include "OrvUnstructGrid/DataPart.h"

#include <algorithm>

namespace orv::ug {
namespace {

/// The position in the part's connectivity of what is a corner of a piece of the element.
std::uint32_t placeOf(const SurfaceTopology& topology, SurfacePiece piece, std::uint32_t element, Vertex corner) {
    const DataElements& elements = *topology.parts()[piece.part].data->elements();
    const std::span<const std::uint32_t> nodes = elements.nodeIndexes(element);
    const auto found = std::find_if(nodes.begin(), nodes.end(),
                                    [&](std::uint32_t node) { return topology.vertexOf(piece.part, node) == corner; });
    return elements.offsets()[element] + static_cast<std::uint32_t>(found - nodes.begin());
}

} // namespace

bool isOn(const SurfacePoint& point, SurfacePiece piece) {
    return std::binary_search(point.pieces.begin(), point.pieces.end(), piece);
}

NodeMean meanInPiece(const SurfaceTopology& topology, SurfacePiece piece, std::uint32_t element,
                     const CornerMean& mean) {
    NodeMean nodes;
    nodes.add(placeOf(topology, piece, element, mean.first), 1.0 - mean.weightOfSecond);
    nodes.add(placeOf(topology, piece, element, mean.second), mean.weightOfSecond);
    return nodes;
}

NodeMean meanInPiece(const SurfaceTopology& topology, SurfacePiece piece, std::uint32_t element, const Vec3d& point) {
    const PieceCorners corners = topology.corners(piece);
    const std::array<double, 3> weights = weightsAt(topology, piece, point);
    NodeMean nodes;
    for (std::size_t i = 0; i < corners.size(); ++i) {
        nodes.add(placeOf(topology, piece, element, corners[i]), weights[i]);
    }
    return nodes;
}

PathSegment segmentIn(const SurfaceTopology& topology, SurfacePiece piece) {
    const TopologyPart& part = topology.parts()[piece.part];
    PathSegment segment;
    segment.geometryIndex = part.geometryIndex;
    segment.partIndex = part.index;
    segment.element = topology.element(piece);
    if (topology.isTriangle(piece)) {
        segment.surface = topology.elementSurface(piece);
    }
    return segment;
}

} // namespace orv::ug
