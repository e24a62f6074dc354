#include "OrvImportCae/MshElementTypes.h"

#include <algorithm>
#include <iterator>

namespace orv::imp::cae {
namespace {

constexpr std::uint8_t SAME[] = {0, 1, 2, 3, 4, 5, 6, 7};

// The file goes through the edges by their lower corner: 0-1 0-3 0-4 1-2 1-5 and so on.
constexpr std::uint8_t TETRAHEDRON_10_ORDER[] = {0, 1, 2, 3, 4, 5, 6, 7, 9, 8};
constexpr std::uint8_t HEXAHEDRON_20_ORDER[] = {0, 1, 2, 3, 4, 5, 6, 7, 8, 11, 13, 9, 16, 18, 19, 17, 10, 12, 14, 15};
constexpr std::uint8_t WEDGE_15_ORDER[] = {0, 1, 2, 3, 4, 5, 6, 9, 7, 12, 14, 13, 8, 10, 11};
constexpr std::uint8_t PYRAMID_13_ORDER[] = {0, 1, 2, 3, 4, 5, 8, 10, 6, 7, 9, 11, 12};

constexpr MshElementType passedOver(std::int64_t number, std::uint8_t nodeCount) {
    return {number, nodeCount, false, ug::POINT, SAME};
}

constexpr MshElementType TYPES[] = {
    {1, 2, true, ug::BEAM, SAME},
    {2, 3, true, ug::TRIANGLE, SAME},
    {3, 4, true, ug::QUADRILATERAL, SAME},
    {4, 4, true, ug::TETRAHEDRON, SAME},
    {5, 8, true, ug::HEXAHEDRON, SAME},
    {6, 6, true, ug::WEDGE, SAME},
    {7, 5, true, ug::PYRAMID, SAME},
    {8, 3, true, ug::BEAM_3, SAME},
    {9, 6, true, ug::TRIANGLE_6, SAME},
    {10, 9, true, ug::QUADRILATERAL_8, SAME},
    {11, 10, true, ug::TETRAHEDRON_10, TETRAHEDRON_10_ORDER},
    {12, 27, true, ug::HEXAHEDRON_20, HEXAHEDRON_20_ORDER},
    {13, 18, true, ug::WEDGE_15, WEDGE_15_ORDER},
    {14, 14, true, ug::PYRAMID_13, PYRAMID_13_ORDER},
    {15, 1, true, ug::POINT, SAME},
    {16, 8, true, ug::QUADRILATERAL_8, SAME},
    {17, 20, true, ug::HEXAHEDRON_20, HEXAHEDRON_20_ORDER},
    {18, 15, true, ug::WEDGE_15, WEDGE_15_ORDER},
    {19, 13, true, ug::PYRAMID_13, PYRAMID_13_ORDER},
    // Third order and above.
    passedOver(20, 9),
    passedOver(21, 10),
    passedOver(22, 12),
    passedOver(23, 15),
    passedOver(24, 15),
    passedOver(25, 21),
    passedOver(26, 4),
    passedOver(27, 5),
    passedOver(28, 6),
    passedOver(29, 20),
    passedOver(30, 35),
    passedOver(31, 56),
    passedOver(36, 16),
    passedOver(37, 25),
    passedOver(38, 36),
    passedOver(92, 64),
    passedOver(93, 125),
};

} // namespace

const MshElementType* findMshElementType(std::int64_t number) {
    const auto found = std::find_if(std::begin(TYPES), std::end(TYPES),
                                    [number](const MshElementType& type) { return type.number == number; });
    return found == std::end(TYPES) ? nullptr : found;
}

const std::uint8_t* mshNodeOrder(ug::ElementType type) {
    return std::find_if(std::begin(TYPES), std::end(TYPES),
                        [type](const MshElementType& candidate) { return candidate.isKnown && candidate.type == type; })
        ->order;
}

} // namespace orv::imp::cae
