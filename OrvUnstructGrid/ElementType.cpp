#include "OrvUnstructGrid/ElementType.h"

#include "LibCore/rvfAssert.h"

namespace orv::ug {
namespace {

constexpr std::size_t MAX_EDGES = 12;
constexpr std::size_t MAX_SURFACES = 6;

struct Surface {
    std::uint8_t cornerCount;
    std::uint8_t corners[4];
};

/// The edges and surfaces of a shape by its corners. The quadratic type of a shape follows from it.
struct Shape {
    std::uint8_t cornerCount;
    std::uint8_t edgeCount;
    std::uint8_t surfaceCount;
    std::uint8_t edges[MAX_EDGES][2];
    Surface surfaces[MAX_SURFACES];
};

constexpr Shape POINT_SHAPE = {1, 0, 0, {}, {}};

constexpr Shape BEAM_SHAPE = {2, 1, 0, {{0, 1}}, {}};

constexpr Shape TRIANGLE_SHAPE = {3, 3, 1, {{0, 1}, {1, 2}, {2, 0}}, {{3, {0, 1, 2}}}};

constexpr Shape QUADRILATERAL_SHAPE = {4, 4, 1, {{0, 1}, {1, 2}, {2, 3}, {3, 0}}, {{4, {0, 1, 2, 3}}}};

constexpr Shape TETRAHEDRON_SHAPE = {4,
                                     6,
                                     4,
                                     {{0, 1}, {1, 2}, {2, 0}, {0, 3}, {1, 3}, {2, 3}},
                                     {{3, {0, 2, 1}}, {3, {0, 1, 3}}, {3, {1, 2, 3}}, {3, {2, 0, 3}}}};

constexpr Shape PYRAMID_SHAPE = {5,
                                 8,
                                 5,
                                 {{0, 1}, {1, 2}, {2, 3}, {3, 0}, {0, 4}, {1, 4}, {2, 4}, {3, 4}},
                                 {{4, {0, 3, 2, 1}}, {3, {0, 1, 4}}, {3, {1, 2, 4}}, {3, {2, 3, 4}}, {3, {3, 0, 4}}}};

constexpr Shape WEDGE_SHAPE = {
    6,
    9,
    5,
    {{0, 1}, {1, 2}, {2, 0}, {3, 4}, {4, 5}, {5, 3}, {0, 3}, {1, 4}, {2, 5}},
    {{3, {0, 2, 1}}, {4, {0, 1, 4, 3}}, {4, {1, 2, 5, 4}}, {4, {2, 0, 3, 5}}, {3, {3, 4, 5}}}};

constexpr Shape HEXAHEDRON_SHAPE = {
    8,
    12,
    6,
    {{0, 1}, {1, 2}, {2, 3}, {3, 0}, {4, 5}, {5, 6}, {6, 7}, {7, 4}, {0, 4}, {1, 5}, {2, 6}, {3, 7}},
    {{4, {0, 3, 2, 1}}, {4, {0, 1, 5, 4}}, {4, {1, 2, 6, 5}}, {4, {2, 3, 7, 6}}, {4, {3, 0, 4, 7}}, {4, {4, 5, 6, 7}}}};

/// Everything about one type, ready to be shown as spans.
struct Topology {
    ElementTypeInfo info;
    std::uint8_t edges[MAX_EDGES][3];
    std::uint8_t surfaceSizes[MAX_SURFACES];
    std::uint8_t surfaces[MAX_SURFACES][8];
};

constexpr std::uint8_t midSideNode(const Shape& shape, std::uint8_t a, std::uint8_t b) {
    std::uint8_t edge = 0;
    while (!(shape.edges[edge][0] == a && shape.edges[edge][1] == b) &&
           !(shape.edges[edge][0] == b && shape.edges[edge][1] == a)) {
        ++edge;
    }
    return shape.cornerCount + edge;
}

consteval Topology topology(const char* name, std::uint8_t dimension, const Shape& shape, bool isQuadratic) {
    const std::uint8_t midSideCount = isQuadratic ? shape.edgeCount : 0;
    Topology result = {};
    result.info = {name,
                   static_cast<std::uint8_t>(shape.cornerCount + midSideCount),
                   shape.cornerCount,
                   shape.surfaceCount,
                   shape.edgeCount,
                   dimension,
                   isQuadratic};
    for (std::uint8_t e = 0; e < shape.edgeCount; ++e) {
        result.edges[e][0] = shape.edges[e][0];
        result.edges[e][1] = shape.edges[e][1];
        result.edges[e][2] = shape.cornerCount + e;
    }
    for (std::uint8_t s = 0; s < shape.surfaceCount; ++s) {
        const Surface& surface = shape.surfaces[s];
        const std::uint8_t corners = surface.cornerCount;
        result.surfaceSizes[s] = isQuadratic ? 2 * corners : corners;
        for (std::uint8_t c = 0; c < corners; ++c) {
            result.surfaces[s][c] = surface.corners[c];
            if (isQuadratic) {
                result.surfaces[s][corners + c] =
                    midSideNode(shape, surface.corners[c], surface.corners[(c + 1) % corners]);
            }
        }
    }
    return result;
}

/// In the order of ElementType.
constexpr Topology TOPOLOGIES[] = {
    topology("point", 0, POINT_SHAPE, false),
    topology("beam", 1, BEAM_SHAPE, false),
    topology("beam_3", 1, BEAM_SHAPE, true),
    topology("triangle", 2, TRIANGLE_SHAPE, false),
    topology("triangle_6", 2, TRIANGLE_SHAPE, true),
    topology("quadrilateral", 2, QUADRILATERAL_SHAPE, false),
    topology("quadrilateral_8", 2, QUADRILATERAL_SHAPE, true),
    topology("tetrahedron", 3, TETRAHEDRON_SHAPE, false),
    topology("tetrahedron_10", 3, TETRAHEDRON_SHAPE, true),
    topology("pyramid", 3, PYRAMID_SHAPE, false),
    topology("pyramid_13", 3, PYRAMID_SHAPE, true),
    topology("wedge", 3, WEDGE_SHAPE, false),
    topology("wedge_15", 3, WEDGE_SHAPE, true),
    topology("hexahedron", 3, HEXAHEDRON_SHAPE, false),
    topology("hexahedron_20", 3, HEXAHEDRON_SHAPE, true),
};
static_assert(std::size(TOPOLOGIES) == ELEMENT_TYPE_COUNT);

const Topology& topologyOf(ElementType type) {
    RVF_ASSERT(type < ELEMENT_TYPE_COUNT);
    return TOPOLOGIES[type < ELEMENT_TYPE_COUNT ? type : POINT];
}

} // namespace

const ElementTypeInfo& elementTypeInfo(ElementType type) {
    return topologyOf(type).info;
}

std::span<const std::uint8_t> elementSurface(ElementType type, std::size_t surfaceIndex) {
    const Topology& topology = topologyOf(type);
    if (surfaceIndex >= topology.info.surfaceCount) {
        return {};
    }
    return {topology.surfaces[surfaceIndex], topology.surfaceSizes[surfaceIndex]};
}

std::span<const std::uint8_t> elementEdge(ElementType type, std::size_t edgeIndex) {
    const Topology& topology = topologyOf(type);
    if (edgeIndex >= topology.info.edgeCount) {
        return {};
    }
    return {topology.edges[edgeIndex], topology.info.isQuadratic ? std::size_t(3) : std::size_t(2)};
}

} // namespace orv::ug
