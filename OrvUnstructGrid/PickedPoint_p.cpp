#include "OrvUnstructGrid/PickedPoint_p.h"

#include "OrvUnstructGrid/DataPart.h"

#include <algorithm>
#include <limits>

namespace orv::ug {
namespace {

/// The faces of an element that are outside, or its tubes.
std::vector<SurfacePiece> visiblePieces(const SurfaceTopology& topology, std::uint32_t part, std::size_t element) {
    if (element >= topology.parts()[part].data->elements()->elementCount()) {
        return {};
    }
    return topology.piecesOfElement(part, static_cast<std::uint32_t>(element));
}

std::optional<SurfacePoint> locateNode(const SurfaceTopology& topology, std::uint32_t part, std::size_t node) {
    if (node >= topology.parts()[part].data->nodes()->nodeCount()) {
        return {};
    }
    return pointAtVertex(topology, topology.vertexOf(part, static_cast<std::uint32_t>(node)));
}

/// Those of one surface of the element: the picked one where that is outside, otherwise the one nearest to where the
/// pick was.
std::vector<SurfacePiece> piecesOfFace(const SurfaceTopology& topology, std::vector<SurfacePiece> pieces,
                                       const HitItem& item) {
    auto isOf = [&](SurfacePiece piece, std::size_t surface) { return topology.elementSurface(piece) == surface; };
    std::size_t surface = item.elementLocalSurfaceIndex();
    if (std::none_of(pieces.begin(), pieces.end(), [&](SurfacePiece piece) { return isOf(piece, surface); })) {
        surface = topology.elementSurface(pieces[0]);
        double least = std::numeric_limits<double>::infinity();
        for (const SurfacePiece& piece : pieces) {
            const std::optional<SurfacePoint> nearest = nearestPoint(topology, {&piece, 1}, item.coordinate());
            const double distance = nearest ? (nearest->point - item.coordinate()).length() : least;
            if (distance < least) {
                least = distance;
                surface = topology.elementSurface(piece);
            }
        }
    }
    std::erase_if(pieces, [&](SurfacePiece piece) { return !isOf(piece, surface); });
    return pieces;
}

/// The average of some nodes of an element, where they are to be seen.
template <class LocalNodes>
Vec3d averageOf(const TopologyPart& part, std::size_t element, const LocalNodes& localNodes) {
    Vec3d sum;
    for (const std::uint8_t i : localNodes) {
        const double* x = &part.coordinates[3 * std::size_t(part.data->elements()->nodeIndexes(element)[i])];
        sum += Vec3d(x[0], x[1], x[2]);
    }
    return sum / static_cast<double>(std::size(localNodes));
}

std::optional<SurfacePoint> locateCentre(const SurfaceTopology& topology, std::uint32_t partIndex,
                                         const HitItem& item) {
    std::vector<SurfacePiece> pieces = visiblePieces(topology, partIndex, item.elementIndex());
    if (pieces.empty()) {
        return {};
    }
    const TopologyPart& part = topology.parts()[partIndex];
    const std::size_t element = item.elementIndex();
    const ElementType type = part.data->elements()->types()[element];
    if (!topology.isTriangle(pieces[0])) {
        static constexpr std::uint8_t beamNodes[] = {0, 1, 2};
        const std::span<const std::uint8_t> nodes(beamNodes, elementTypeInfo(type).nodeCount);
        return nearestPoint(topology, pieces, averageOf(part, element, nodes));
    }
    pieces = piecesOfFace(topology, std::move(pieces), item);
    const auto nodes = elementSurface(type, topology.elementSurface(pieces[0]));
    return nearestPoint(topology, pieces, averageOf(part, element, nodes));
}

std::optional<SurfacePoint> locateCoordinate(const SurfaceTopology& topology, std::uint32_t part, const HitItem& item) {
    return nearestPoint(topology, visiblePieces(topology, part, item.elementIndex()), item.coordinate());
}

} // namespace

std::optional<SurfacePoint> pickedPoint(const SurfaceTopology& topology, SurfacePathQuery::PointType type,
                                        const HitItem& item) {
    const std::span<const TopologyPart> parts = topology.parts();
    const auto found = std::find_if(parts.begin(), parts.end(), [&](const TopologyPart& part) {
        return part.geometryIndex == item.geometryIndex() && part.index == item.itemIndex();
    });
    if (found == parts.end()) {
        return {};
    }
    const auto part = static_cast<std::uint32_t>(found - parts.begin());
    switch (type) {
    case SurfacePathQuery::NODE:
        return locateNode(topology, part, item.nodeIndex());
    case SurfacePathQuery::ELEMENT:
        return locateCentre(topology, part, item);
    case SurfacePathQuery::COORDINATE:
        return locateCoordinate(topology, part, item);
    }
    return {};
}

} // namespace orv::ug
