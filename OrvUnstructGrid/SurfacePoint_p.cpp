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

Weights weightsOfNearest(const std::array<Vec3d, 3>& corners, const Vec3d& p) {
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
double angleAt(const std::array<Vec3d, 3>& points, const Weights& weights) {
    constexpr double straight = 3.14159265358979323846;
    for (std::size_t i = 0; i < 3; ++i) {
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
    const std::array<Vec3d, 3> points = pointsOf(topology, topology.corners(triangle));
    const Vec3d normal = (points[1] - points[0]) ^ (points[2] - points[0]);
    const double length = normal.length();
    if (!(length > 0.0) || !std::isfinite(length)) {
        return {};
    }
    return normal * (angleAt(points, weightsAt(topology, triangle, point)) / length);
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

} // namespace

bool isSomewhere(const Vec3d& point) {
    return std::isfinite(point * point);
}

std::array<double, 3> weightsAt(const SurfaceTopology& topology, SurfacePiece piece, const Vec3d& point) {
    const PieceCorners corners = topology.corners(piece);
    const std::array<Vec3d, 3> points = pointsOf(topology, corners);
    Weights weights =
        corners.size() == 3 ? weightsOfNearest(points, point) : weightsBetween(points[0], points[1], point);
    dropRoundings(&weights);
    return weights;
}

std::optional<SurfacePoint> pointAtVertex(const SurfaceTopology& topology, Vertex vertex) {
    SurfacePoint surfacePoint;
    surfacePoint.point = topology.point(vertex);
    topology.forPiecesAt(vertex, [&](SurfacePiece piece) { surfacePoint.pieces.push_back(piece); });
    if (surfacePoint.pieces.empty() || !isSomewhere(surfacePoint.point)) {
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

} // namespace orv::ug
