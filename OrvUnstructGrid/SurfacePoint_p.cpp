#include "OrvUnstructGrid/SurfacePoint_p.h"

#include "OrvUnstructGrid/DataPart.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace orv::ug {
namespace {

/// Weights below are roundings.
constexpr double leastWeight = 1e-10;

/// The sum of unit normals times angles; what is left below, when they cancel out, has no direction.
constexpr double leastNormal = 1e-6;

using Weights = std::array<double, 3>;

bool isFinite(const Vec3d& point) {
    return std::isfinite(point * point);
}

/// Of a and b at the point between them that is nearest to p.
Weights weightsBetween(const Vec3d& a, const Vec3d& b, const Vec3d& p) {
    const Vec3d side = b - a;
    const double square = side * side;
    const double share = square > 0.0 ? std::clamp(((p - a) * side) / square, 0.0, 1.0) : 0.0;
    return {1.0 - share, share, 0.0};
}

/// Puts the weights of the two corners of a side where they belong among the three.
Weights onSide(const std::array<Vec3d, 3>& corners, std::size_t side, const Vec3d& p) {
    const std::size_t next = (side + 1) % 3;
    const Weights pair = weightsBetween(corners[side], corners[next], p);
    Weights weights = {};
    weights[side] = pair[0];
    weights[next] = pair[1];
    return weights;
}

Vec3d weighted(const std::array<Vec3d, 3>& corners, const Weights& weights) {
    // Counted from a corner, so that what is at a corner stays there.
    const std::size_t origin = static_cast<std::size_t>(
        std::find_if(weights.begin(), weights.end(), [](double weight) { return weight != 0.0; }) - weights.begin());
    Vec3d sum = corners[origin];
    for (std::size_t i = origin + 1; i < 3; ++i) {
        if (weights[i] != 0.0) {
            sum += (corners[i] - corners[origin]) * weights[i];
        }
    }
    return sum;
}

Weights weightsInside(const std::array<Vec3d, 3>& corners, const Vec3d& p) {
    const Vec3d normal = (corners[1] - corners[0]) ^ (corners[2] - corners[0]);
    const double square = normal * normal;
    Weights weights = {};
    bool isInside = square > 0.0;
    for (std::size_t i = 0; i < 3 && isInside; ++i) {
        const Vec3d& a = corners[(i + 1) % 3];
        const Vec3d& b = corners[(i + 2) % 3];
        weights[i] = (((b - a) ^ (p - a)) * normal) / square;
        isInside = weights[i] >= 0.0;
    }
    if (isInside) {
        return weights;
    }
    double least = std::numeric_limits<double>::infinity();
    for (std::size_t side = 0; side < 3; ++side) {
        const Weights candidate = onSide(corners, side, p);
        const double distance = (weighted(corners, candidate) - p).length();
        if (distance < least) {
            least = distance;
            weights = candidate;
        }
    }
    return weights;
}

void dropRoundings(Weights* weights) {
    double sum = 0.0;
    for (double& weight : *weights) {
        weight = weight < leastWeight ? 0.0 : weight;
        sum += weight;
    }
    for (double& weight : *weights) {
        weight /= sum;
    }
}

std::array<Vec3d, 3> pointsOf(const SurfaceTopology& topology, const PieceCorners& corners) {
    return {topology.point(corners[0]), topology.point(corners[1]),
            topology.point(corners[corners.size() == 3 ? 2 : 1])};
}

double angleBetween(const Vec3d& a, const Vec3d& b) {
    return std::atan2((a ^ b).length(), a * b);
}

/// How much of the surface about the point the triangle is.
double angleAt(const PieceCorners& corners, const std::array<Vec3d, 3>& points, const Weights& weights) {
    constexpr double straight = 3.14159265358979323846;
    for (std::size_t i = 0; i < corners.size(); ++i) {
        if (weights[i] == 1.0) {
            return angleBetween(points[(i + 1) % 3] - points[i], points[(i + 2) % 3] - points[i]);
        }
    }
    return straight;
}

bool isShell(const SurfaceTopology& topology, SurfacePiece triangle) {
    const DataElements& elements = *topology.parts()[triangle.part].data->elements();
    return elementTypeInfo(elements.types()[topology.element(triangle)]).dimension == 2;
}

/// Of a triangle, times how much of the surface about the point it is; zero when it has no area.
Vec3d weightedNormal(const SurfaceTopology& topology, SurfacePiece triangle, const Vec3d& point) {
    const PieceCorners corners = topology.corners(triangle);
    const std::array<Vec3d, 3> points = pointsOf(topology, corners);
    const Vec3d normal = (points[1] - points[0]) ^ (points[2] - points[0]);
    const double length = normal.length();
    if (!(length > 0.0) || !std::isfinite(length)) {
        return {};
    }
    return normal * (angleAt(corners, points, weightsAt(topology, triangle, point)) / length);
}

/// Shells follow the volumes that are there, or else the first of them.
void setNormal(const SurfaceTopology& topology, SurfacePoint* surfacePoint) {
    Vec3d ofVolumes;
    std::vector<Vec3d> ofShells;
    for (const SurfacePiece piece : surfacePoint->pieces) {
        if (topology.isTriangle(piece)) {
            const Vec3d normal = weightedNormal(topology, piece, surfacePoint->point);
            if (!isShell(topology, piece)) {
                ofVolumes += normal;
            } else if (normal != Vec3d()) {
                ofShells.push_back(normal);
            }
        }
    }
    surfacePoint->isOnShell = ofVolumes == Vec3d() && !ofShells.empty();
    const Vec3d guide = surfacePoint->isOnShell ? ofShells[0] : ofVolumes;
    Vec3d sum = ofVolumes;
    for (const Vec3d& normal : ofShells) {
        sum += guide * normal < 0.0 ? -normal : normal;
    }
    const double length = sum.length();
    surfacePoint->normal = length > leastNormal ? sum / length : Vec3d();
}

/// All pieces that have these corners.
std::vector<SurfacePiece> piecesWith(const SurfaceTopology& topology, std::span<const Vertex> vertices) {
    std::vector<SurfacePiece> pieces;
    topology.forPiecesAt(vertices[0], [&](SurfacePiece piece) {
        const PieceCorners corners = topology.corners(piece);
        if (std::all_of(vertices.begin(), vertices.end(), [&](Vertex vertex) { return corners.has(vertex); })) {
            pieces.push_back(piece);
        }
    });
    return pieces;
}

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

std::array<double, 3> weightsAt(const SurfaceTopology& topology, SurfacePiece piece, const Vec3d& point) {
    const PieceCorners corners = topology.corners(piece);
    const std::array<Vec3d, 3> points = pointsOf(topology, corners);
    Weights weights = corners.size() == 3 ? weightsInside(points, point) : weightsBetween(points[0], points[1], point);
    dropRoundings(&weights);
    return weights;
}

std::optional<SurfacePoint> pointAtVertex(const SurfaceTopology& topology, Vertex vertex) {
    SurfacePoint surfacePoint;
    surfacePoint.point = topology.point(vertex);
    topology.forPiecesAt(vertex, [&](SurfacePiece piece) { surfacePoint.pieces.push_back(piece); });
    if (surfacePoint.pieces.empty() || !isFinite(surfacePoint.point)) {
        return {};
    }
    setNormal(topology, &surfacePoint);
    return surfacePoint;
}

std::optional<SurfacePoint> nearestPoint(const SurfaceTopology& topology, std::span<const SurfacePiece> pieces,
                                         const Vec3d& point) {
    SurfacePoint nearest;
    std::vector<Vertex> vertices;
    double least = std::numeric_limits<double>::infinity();
    SurfacePiece leastPiece = {};
    for (const SurfacePiece piece : pieces) {
        const PieceCorners corners = topology.corners(piece);
        const Weights weights = weightsAt(topology, piece, point);
        const Vec3d candidate = weighted(pointsOf(topology, corners), weights);
        const double distance = (candidate - point).length();
        if (distance < least) {
            least = distance;
            leastPiece = piece;
            nearest.point = candidate;
            vertices.clear();
            for (std::size_t i = 0; i < corners.size(); ++i) {
                if (weights[i] > 0.0) {
                    vertices.push_back(corners[i]);
                }
            }
        }
    }
    if (vertices.empty()) {
        return {};
    }
    if (vertices.size() == 1) {
        return pointAtVertex(topology, vertices[0]);
    }
    nearest.pieces = vertices.size() == 3 ? std::vector{leastPiece} : piecesWith(topology, vertices);
    setNormal(topology, &nearest);
    return nearest;
}

std::optional<SurfacePoint> locate(const SurfaceTopology& topology, SurfacePathQuery::PointType type,
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
