#pragma once

#include "OrvCore/Vec3d.h"
#include "OrvUnstructGrid/DataPart.h"

#include <cstdint>
#include <utility>
#include <vector>

namespace orvtest {

/// The corners of an element of that type: the unit square, the unit cube, their halves along a diagonal, the corner of
/// the cube, and a pyramid of height 1 on the unit square.
inline std::vector<orv::Vec3d> referenceCorners(orv::ug::ElementType type) {
    using namespace orv::ug;
    switch (type) {
    case POINT:
        return {{0, 0, 0}};
    case BEAM:
    case BEAM_3:
        return {{0, 0, 0}, {1, 0, 0}};
    case TRIANGLE:
    case TRIANGLE_6:
        return {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}};
    case QUADRILATERAL:
    case QUADRILATERAL_8:
        return {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}};
    case TETRAHEDRON:
    case TETRAHEDRON_10:
        return {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}};
    case PYRAMID:
    case PYRAMID_13:
        return {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}, {0.5, 0.5, 1}};
    case WEDGE:
    case WEDGE_15:
        return {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}, {1, 0, 1}, {0, 1, 1}};
    default:
        return {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}, {0, 0, 1}, {1, 0, 1}, {1, 1, 1}, {0, 1, 1}};
    }
}

/// The same with mid-side nodes in the middle of the edges, where the type has them.
inline std::vector<orv::Vec3d> referenceNodes(orv::ug::ElementType type) {
    std::vector<orv::Vec3d> nodes = referenceCorners(type);
    const orv::ug::ElementTypeInfo& info = orv::ug::elementTypeInfo(type);
    for (std::size_t e = 0; info.isQuadratic && e < info.edgeCount; ++e) {
        const auto edge = orv::ug::elementEdge(type, e);
        nodes.push_back((nodes[edge[0]] + nodes[edge[1]]) * 0.5);
    }
    return nodes;
}

/// How much of the reference element there is: 1 for a point, otherwise a length, an area or a volume.
inline double referenceSize(orv::ug::ElementType type) {
    using namespace orv::ug;
    switch (type) {
    case TRIANGLE:
    case TRIANGLE_6:
    case WEDGE:
    case WEDGE_15:
        return 1.0 / 2;
    case TETRAHEDRON:
    case TETRAHEDRON_10:
        return 1.0 / 6;
    case PYRAMID:
    case PYRAMID_13:
        return 1.0 / 3;
    default:
        return 1;
    }
}

inline void setNodes(orv::ug::DataPart* part, const std::vector<orv::Vec3d>& nodes) {
    std::vector<double> coordinates;
    for (const orv::Vec3d& node : nodes) {
        coordinates.insert(coordinates.end(), {node.x(), node.y(), node.z()});
    }
    part->nodes()->set(std::move(coordinates), {});
}

struct Element {
    orv::ug::ElementType type;
    std::vector<std::uint32_t> nodes;
};

inline void setElements(orv::ug::DataPart* part, const std::vector<Element>& elements) {
    std::vector<orv::ug::ElementType> types;
    std::vector<std::uint32_t> connectivity;
    for (const Element& element : elements) {
        types.push_back(element.type);
        connectivity.insert(connectivity.end(), element.nodes.begin(), element.nodes.end());
    }
    part->elements()->set(std::move(types), std::move(connectivity), {});
}

/// A part that is one reference element.
inline void fillWithReference(orv::ug::DataPart* part, orv::ug::ElementType type) {
    const std::vector<orv::Vec3d> nodes = referenceNodes(type);
    setNodes(part, nodes);
    Element element{type, {}};
    for (std::uint32_t i = 0; i < nodes.size(); ++i) {
        element.nodes.push_back(i);
    }
    setElements(part, {element});
}

} // namespace orvtest
