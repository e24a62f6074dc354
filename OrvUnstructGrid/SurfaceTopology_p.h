#pragma once

#include "OrvCore/Vec3d.h"
#include "OrvUnstructGrid/SurfaceJoints_p.h"

#include <array>
#include <compare>
#include <cstddef>
#include <cstdint>
#include <span>
#include <unordered_set>
#include <vector>

namespace orv::ug {

/// A triangle or tube. Pieces are ordered by parts, in these triangles before tubes, and these by their elements.
struct SurfacePiece {
    std::uint32_t part;  ///< Among the parts of the topology.
    std::uint32_t index; ///< Of a triangle, or of a tube behind all triangles.

    auto operator<=>(const SurfacePiece&) const = default;
};

/// The ends of a tube or the corners of a triangle.
class PieceCorners {
public:
    PieceCorners(Vertex a, Vertex b) : m_vertices{a, b, b}, m_count(2) {}
    PieceCorners(Vertex a, Vertex b, Vertex c) : m_vertices{a, b, c}, m_count(3) {}

    std::size_t size() const {
        return m_count;
    }

    Vertex operator[](std::size_t i) const {
        return m_vertices[i];
    }

    const Vertex* begin() const {
        return m_vertices.data();
    }

    const Vertex* end() const {
        return m_vertices.data() + m_count;
    }

    bool has(Vertex vertex) const {
        return m_vertices[0] == vertex || m_vertices[1] == vertex || m_vertices[2] == vertex;
    }

private:
    std::array<Vertex, 3> m_vertices;
    std::size_t m_count;
};

/// What of the surfaces of several parts hangs together: by common nodes in a part, by nodes at the same place, to
/// within 1e-6 of the diagonal of the box about all of them, between parts. Faces of volumes of different parts that
/// touch over all their corners are inside, and count for nothing.
///
/// With several parts, making it goes through all nodes; with one it costs nothing.
class SurfaceTopology {
public:
    /// @param parts to live as long as the topology; less than 2^32 nodes in all
    explicit SurfaceTopology(std::vector<TopologyPart> parts);

    std::span<const TopologyPart> parts() const {
        return m_parts;
    }

    /// The first of those that are at the same place.
    Vertex vertexOf(std::uint32_t part, std::uint32_t node) const {
        return firstOfJoint(m_firstVertices[part] + node);
    }

    /// @param vertex as vertexOf() gives it
    Vec3d point(Vertex vertex) const;

    bool isTriangle(SurfacePiece piece) const {
        return piece.index < m_triangleCounts[piece.part];
    }

    PieceCorners corners(SurfacePiece piece) const;
    std::uint32_t element(SurfacePiece piece) const;
    /// Which surface of its element a triangle is of.
    std::uint8_t elementSurface(SurfacePiece triangle) const;

    /// The triangles or tubes of an element.
    std::vector<SurfacePiece> piecesOfElement(std::uint32_t part, std::uint32_t element) const;

    /// Calls back with the pieces that a vertex is a corner of, ascending.
    template <class Visit>
    void forPiecesAt(Vertex vertex, Visit visit) const {
        auto visitMember = [&](Vertex member) {
            const std::uint32_t part = partOf(member);
            for (const std::uint32_t index : m_parts[part].pieces->at(member - m_firstVertices[part])) {
                if (!isInside({part, index})) {
                    visit(SurfacePiece{part, index});
                }
            }
        };
        const auto found = m_joints.joints.find(vertex);
        if (found == m_joints.joints.end()) {
            visitMember(vertex);
            return;
        }
        for (const Vertex member : m_joints.membersOf(found->second)) {
            visitMember(member);
        }
    }

private:
    Vertex firstOfJoint(Vertex vertex) const {
        const auto found = m_joints.joints.find(vertex);
        return found == m_joints.joints.end() ? vertex : m_joints.membersOf(found->second)[0];
    }

    std::uint32_t partOf(Vertex vertex) const;
    std::size_t faceOf(SurfacePiece triangle) const;
    bool isInside(SurfacePiece piece) const;
    void findInnerFaces();
    /// Of a face of a volume whose corners are all in joints; empty of another one.
    std::vector<Vertex> joinedCorners(std::uint32_t part, std::size_t face) const;

    std::vector<TopologyPart> m_parts;
    std::vector<Vertex> m_firstVertices;         ///< Of each part, and the count of all.
    std::vector<std::uint32_t> m_triangleCounts; ///< Of each part.
    SurfaceJoints m_joints;
    std::unordered_set<std::uint64_t> m_innerTriangles; ///< Part and index.
};

} // namespace orv::ug
