#pragma once

#include "OrvUnstructGrid/PathSamples_p.h"
#include "OrvUnstructGrid/ShortestWay_p.h"
#include "OrvUnstructGrid/SurfacePoint_p.h"

#include <vector>

namespace orv::ug {

/// A point between two vertices, or at the first.
struct CornerMean {
    Vertex first;
    Vertex second;
    double weightOfSecond;
};

bool isOn(const SurfacePoint& point, SurfacePiece piece);

/// How a point between corners of a piece is interpolated in the piece's element.
NodeMean meanInPiece(const SurfaceTopology& topology, SurfacePiece piece, std::uint32_t element,
                     const CornerMean& mean);
/// The same for any point of the piece.
NodeMean meanInPiece(const SurfaceTopology& topology, SurfacePiece piece, std::uint32_t element, const Vec3d& point);

/// Of the element of a piece, without places.
PathSegment segmentIn(const SurfaceTopology& topology, SurfacePiece piece);

/// Steps that have a length as segments. Graph::meanAt(key) tells where places other than the start and the target are.
template <class Graph>
std::vector<PathSegment> waySegments(const SurfaceTopology& topology, const Graph& graph,
                                     const std::vector<WayStep>& way) {
    std::vector<PathSegment> segments;
    for (std::size_t i = 1; i < way.size(); ++i) {
        if (way[i - 1].point == way[i].point) {
            continue;
        }
        const SurfacePiece piece = way[i].piece;
        PathSegment segment = segmentIn(topology, piece);
        auto meanAt = [&](const WayStep& step) {
            const bool isEnd = step.key == WAY_START || step.key == WAY_TARGET;
            return isEnd ? meanInPiece(topology, piece, segment.element, step.point)
                         : meanInPiece(topology, piece, segment.element, graph.meanAt(step.key));
        };
        segment.begin = way[i - 1].point;
        segment.end = way[i].point;
        segment.atBegin = meanAt(way[i - 1]);
        segment.atEnd = meanAt(way[i]);
        segments.push_back(segment);
    }
    return segments;
}

} // namespace orv::ug
