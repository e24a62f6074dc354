#include "OrvUnstructGrid/SurfaceTopology_p.h"

#include "OrvUnstructGrid/DataPart.h"

#include <algorithm>
#include <map>
#include <utility>

namespace orv::ug {
namespace {

/// The corners around a face from the least on, which tells apart how it is turned.
using FaceRing = std::vector<Vertex>;

FaceRing canonicalRing(FaceRing ring) {
    std::rotate(ring.begin(), std::min_element(ring.begin(), ring.end()), ring.end());
    ring.erase(std::unique(ring.begin(), ring.end()), ring.end());
    while (ring.size() > 1 && ring.back() == ring.front()) {
        ring.pop_back();
    }
    return ring;
}

FaceRing opposite(FaceRing ring) {
    std::reverse(ring.begin() + 1, ring.end());
    return ring;
}

std::uint64_t keyOf(SurfacePiece piece) {
    return std::uint64_t(piece.part) << 32 | piece.index;
}

/// Where the pieces of an element are in a list that ascends.
std::pair<std::size_t, std::size_t> rangeOf(const std::vector<std::uint32_t>& elements, std::uint32_t element) {
    const auto [first, last] = std::equal_range(elements.begin(), elements.end(), element);
    return {static_cast<std::size_t>(first - elements.begin()), static_cast<std::size_t>(last - elements.begin())};
}

} // namespace

SurfaceTopology::SurfaceTopology(std::vector<TopologyPart> parts) : m_parts(std::move(parts)), m_firstVertices{0} {
    for (const TopologyPart& part : m_parts) {
        m_firstVertices.push_back(m_firstVertices.back() + static_cast<Vertex>(part.coordinates.size() / 3));
        m_triangleCounts.push_back(static_cast<std::uint32_t>(part.surface->edges.size()));
    }
    m_joints = joinParts(m_parts, m_firstVertices);
    findInnerFaces();
}

std::uint32_t SurfaceTopology::partOf(Vertex vertex) const {
    const auto next = std::upper_bound(m_firstVertices.begin(), m_firstVertices.end(), vertex);
    return static_cast<std::uint32_t>(next - m_firstVertices.begin() - 1);
}

Vec3d SurfaceTopology::point(Vertex vertex) const {
    const std::uint32_t part = partOf(vertex);
    const double* x = &m_parts[part].coordinates[3 * std::size_t(vertex - m_firstVertices[part])];
    return {x[0], x[1], x[2]};
}

PieceCorners SurfaceTopology::corners(SurfacePiece piece) const {
    const PartSurface& surface = *m_parts[piece.part].surface;
    if (isTriangle(piece)) {
        const std::uint32_t* nodes = &surface.corners[3 * std::size_t(piece.index)];
        return {vertexOf(piece.part, nodes[0]), vertexOf(piece.part, nodes[1]), vertexOf(piece.part, nodes[2])};
    }
    const std::uint32_t* nodes = &surface.tubeEnds[2 * std::size_t(piece.index - m_triangleCounts[piece.part])];
    return {vertexOf(piece.part, nodes[0]), vertexOf(piece.part, nodes[1])};
}

std::size_t SurfaceTopology::faceOf(SurfacePiece triangle) const {
    const std::vector<std::uint32_t>& offsets = m_parts[triangle.part].surface->faceOffsets;
    const auto next = std::upper_bound(offsets.begin(), offsets.end(), triangle.index);
    return static_cast<std::size_t>(next - offsets.begin()) - 1;
}

std::uint32_t SurfaceTopology::element(SurfacePiece piece) const {
    const PartSurface& surface = *m_parts[piece.part].surface;
    return isTriangle(piece) ? surface.faceElements[faceOf(piece)]
                             : surface.tubeElements[piece.index - m_triangleCounts[piece.part]];
}

std::uint8_t SurfaceTopology::elementSurface(SurfacePiece triangle) const {
    return m_parts[triangle.part].surface->faceSurfaces[faceOf(triangle)];
}

std::vector<SurfacePiece> SurfaceTopology::piecesOfElement(std::uint32_t part, std::uint32_t element) const {
    const PartSurface& surface = *m_parts[part].surface;
    std::vector<SurfacePiece> pieces;
    const auto [firstFace, lastFace] = rangeOf(surface.faceElements, element);
    for (std::uint32_t i = surface.faceOffsets[firstFace]; i < surface.faceOffsets[lastFace]; ++i) {
        if (!isInside({part, i})) {
            pieces.push_back({part, i});
        }
    }
    const auto [firstTube, lastTube] = rangeOf(surface.tubeElements, element);
    for (std::size_t i = firstTube; i < lastTube; ++i) {
        pieces.push_back({part, static_cast<std::uint32_t>(m_triangleCounts[part] + i)});
    }
    return pieces;
}

bool SurfaceTopology::isInside(SurfacePiece piece) const {
    return !m_innerTriangles.empty() && m_innerTriangles.contains(keyOf(piece));
}

void SurfaceTopology::findInnerFaces() {
    struct Face {
        std::uint32_t part;
        std::size_t index;
    };
    std::map<FaceRing, Face> faces;
    auto markInner = [this](const Face& face) {
        const std::vector<std::uint32_t>& offsets = m_parts[face.part].surface->faceOffsets;
        for (std::uint32_t i = offsets[face.index]; i < offsets[face.index + 1]; ++i) {
            m_innerTriangles.insert(keyOf({face.part, i}));
        }
    };
    for (const Vertex vertex : m_joints.members) {
        const std::uint32_t part = partOf(vertex);
        for (const std::uint32_t index : m_parts[part].pieces->at(vertex - m_firstVertices[part])) {
            if (index >= m_triangleCounts[part]) {
                break;
            }
            const Face face = {part, faceOf({part, index})};
            const FaceRing ring = canonicalRing(joinedCorners(face.part, face.index));
            if (ring.size() < 3 || !faces.emplace(ring, face).second) {
                continue;
            }
            const auto other = faces.find(opposite(ring));
            if (other != faces.end()) {
                markInner(face);
                markInner(other->second);
            }
        }
    }
}

std::vector<Vertex> SurfaceTopology::joinedCorners(std::uint32_t part, std::size_t face) const {
    const PartSurface& surface = *m_parts[part].surface;
    const DataElements& elements = *m_parts[part].data->elements();
    const std::uint32_t element = surface.faceElements[face];
    const ElementTypeInfo& type = elementTypeInfo(elements.types()[element]);
    if (type.dimension != 3) {
        return {};
    }
    const auto local = orv::ug::elementSurface(elements.types()[element], surface.faceSurfaces[face]);
    std::vector<Vertex> corners;
    for (const std::uint8_t i : local.first(type.isQuadratic ? local.size() / 2 : local.size())) {
        const Vertex vertex = m_firstVertices[part] + elements.nodeIndexes(element)[i];
        const auto joint = m_joints.joints.find(vertex);
        if (joint == m_joints.joints.end()) {
            return {};
        }
        corners.push_back(m_joints.membersOf(joint->second)[0]);
    }
    return corners;
}

} // namespace orv::ug
