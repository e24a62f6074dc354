#pragma once

#include "LibCore/rvfExport.h"

#include <cstddef>
#include <cstdint>
#include <span>

namespace orv::ug {

/// The shapes of elements. Local nodes are numbered from 0: corners first, then mid-side nodes.
///
/// Quadratic types append one node for each edge, in the order of elementEdges(). Surfaces of volumes are listed with
/// their normal pointing outward by the right-hand rule; a shell has one surface with the normal of its node order;
/// points and beams have none.
///
/// @verbatim
///   TRIANGLE        QUADRILATERAL     TETRAHEDRON          PYRAMID
///       2             3-----2              3                  4
///      / \            |     |             /|\               // \\ .
///     /   \           |     |            / | \             / | | \ .
///    0-----1          0-----1           0--|--2           0--|-|--3
///                                        \ | /            | /   \ |
///   WEDGE           HEXAHEDRON            \|/             1-------2
///       5              7-----6             1
///     / | \           /|    /|
///    3-----4         4-----5 |
///    |  2  |         | 3---|-2
///    | / \ |         |/    |/
///    0-----1         0-----1
///
///   TRIANGLE_6: 3 on 0-1, 4 on 1-2, 5 on 2-0          BEAM_3: 2 between 0 and 1
///   HEXAHEDRON_20: 8..11 bottom (0-1 1-2 2-3 3-0), 12..15 top (4-5 5-6 6-7 7-4), 16..19 upright (0-4 1-5 2-6 3-7)
///   WEDGE_15: 6..8 bottom (0-1 1-2 2-0), 9..11 top (3-4 4-5 5-3), 12..14 upright (0-3 1-4 2-5)
///   TETRAHEDRON_10: 4..9 on 0-1 1-2 2-0 0-3 1-3 2-3   PYRAMID_13: 5..8 base, 9..12 upright (0-4 1-4 2-4 3-4)
/// @endverbatim
///
/// In TETRAHEDRON and PYRAMID the base 0 1 2 (3) seen from the apex runs counter-clockwise; in WEDGE and HEXAHEDRON
/// the bottom 0 1 2 (3) seen from the top does.
enum ElementType : std::uint8_t {
    POINT = 0,
    BEAM = 1,
    BEAM_3 = 2,
    TRIANGLE = 3,
    TRIANGLE_6 = 4,
    QUADRILATERAL = 5,
    QUADRILATERAL_8 = 6,
    TETRAHEDRON = 7,
    TETRAHEDRON_10 = 8,
    PYRAMID = 9,
    PYRAMID_13 = 10,
    WEDGE = 11,
    WEDGE_15 = 12,
    HEXAHEDRON = 13,
    HEXAHEDRON_20 = 14,
    ELEMENT_TYPE_COUNT = 15 ///< Not a type.
};

/// The facts about one element type.
struct ElementTypeInfo {
    const char* name;          ///< As tables and JSON show it, such as "hexahedron_20".
    std::uint8_t nodeCount;    ///< Corners and mid-side nodes.
    std::uint8_t cornerCount;  ///< Nodes without the mid-side ones.
    std::uint8_t surfaceCount; ///< 0 for points and beams, 1 for shells.
    std::uint8_t edgeCount;    ///< 0 for points.
    std::uint8_t dimension;    ///< 0 point, 1 beam, 2 shell, 3 volume.
    bool isQuadratic;          ///< Has a mid-side node on every edge.
};

/// Asserts "type < ELEMENT_TYPE_COUNT"; the facts about POINT behind a failed assertion.
ORV_API const ElementTypeInfo& elementTypeInfo(ElementType type);

/// The local nodes of one surface: the corners around it, then its mid-side nodes in the same order. Empty when there
/// is no such surface.
ORV_API std::span<const std::uint8_t> elementSurface(ElementType type, std::size_t surfaceIndex);

/// The two corners of one edge and, on quadratic types, the node between them. Empty when there is no such edge.
ORV_API std::span<const std::uint8_t> elementEdge(ElementType type, std::size_t edgeIndex);

} // namespace orv::ug
