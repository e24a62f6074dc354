#include "OrvImportCae/FrdElementTypes.h"

#include <iterator>

namespace orv::imp::cae {
namespace {

constexpr std::uint8_t SAME[] = {0, 1, 2, 3, 4, 5, 6, 7, 8, 9};

// The file puts the upright mid-side nodes ahead of those of the top.
constexpr std::uint8_t HEXAHEDRON_20_ORDER[] = {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 16, 17, 18, 19, 12, 13, 14, 15};
constexpr std::uint8_t WEDGE_15_ORDER[] = {0, 1, 2, 3, 4, 5, 6, 7, 8, 12, 13, 14, 9, 10, 11};

constexpr FrdElementType TYPES[] = {
    {1, ug::HEXAHEDRON, 8, SAME},
    {2, ug::WEDGE, 6, SAME},
    {3, ug::TETRAHEDRON, 4, SAME},
    {4, ug::HEXAHEDRON_20, 20, HEXAHEDRON_20_ORDER},
    {5, ug::WEDGE_15, 15, WEDGE_15_ORDER},
    {6, ug::TETRAHEDRON_10, 10, SAME},
    {7, ug::TRIANGLE, 3, SAME},
    {8, ug::TRIANGLE_6, 6, SAME},
    {9, ug::QUADRILATERAL, 4, SAME},
    {10, ug::QUADRILATERAL_8, 8, SAME},
    {11, ug::BEAM, 2, SAME},
    {12, ug::BEAM_3, 3, SAME},
};

} // namespace

const FrdElementType* findFrdElementType(std::int64_t number) {
    // The types are numbered from 1 without gaps.
    const bool isKnown = number >= 1 && number <= std::int64_t(std::size(TYPES));
    return isKnown ? &TYPES[number - 1] : nullptr;
}

} // namespace orv::imp::cae
