#pragma once

#include "OrvUnstructGrid/NodePieces_p.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <unordered_map>
#include <vector>

namespace orv::ug {

class DataPart;

/// One of the parts whose surfaces make up a topology.
struct TopologyPart {
    std::size_t geometryIndex;
    std::size_t index; ///< In the geometry.
    const DataPart* data;
    const PartSurface* surface;
    const NodePieces* pieces;
    std::span<const double> coordinates; ///< x, y, z of each node, where it is to be seen.
};

/// A node of a surface, or nodes of several parts at the same place.
using Vertex = std::uint32_t;

/// The vertices of several parts that are at one place.
struct SurfaceJoints {
    std::unordered_map<Vertex, std::uint32_t> joints; ///< Of each vertex in one.
    std::vector<std::uint32_t> offsets = {0};         ///< Where each joint begins among the members, and their count.
    std::vector<Vertex> members;                      ///< In a joint ascending; the first stands for all.

    std::span<const Vertex> membersOf(std::uint32_t joint) const {
        return std::span(members).subspan(offsets[joint], offsets[joint + 1] - offsets[joint]);
    }
};

/// Joins nodes of the surfaces of different parts that are at the same place, to within 1e-6 of the diagonal of the box
/// about all of these surfaces. Nodes of one part are never joined by themselves, wherever they are. Goes through all
/// nodes, and looks closer at those that have another part within a hundredth of the diagonal.
/// @param firstVertices of each part: which vertex its first node is
SurfaceJoints joinParts(std::span<const TopologyPart> parts, std::span<const Vertex> firstVertices);

} // namespace orv::ug
