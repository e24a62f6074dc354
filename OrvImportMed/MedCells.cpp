#include "OrvImportMed/MedCells.h"

#include <med.h>

namespace orv::imp::cae {
namespace {

constexpr std::uint8_t SAME[] = {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18, 19};
constexpr std::uint8_t TETRAHEDRON_ORDER[] = {0, 2, 1, 3, 6, 5, 4, 7, 9, 8};
constexpr std::uint8_t PYRAMID_ORDER[] = {0, 3, 2, 1, 4, 8, 7, 6, 5, 9, 12, 11, 10};
constexpr std::uint8_t WEDGE_ORDER[] = {0, 2, 1, 3, 5, 4, 8, 7, 6, 11, 10, 9, 12, 14, 13};
constexpr std::uint8_t HEXAHEDRON_ORDER[] = {0, 3, 2, 1, 4, 7, 6, 5, 11, 10, 9, 8, 15, 14, 13, 12, 16, 19, 18, 17};

constexpr MedCell CELLS[] = {
    {MED_POINT1, "PO1", ug::POINT, SAME},
    {MED_SEG2, "SE2", ug::BEAM, SAME},
    {MED_SEG3, "SE3", ug::BEAM_3, SAME},
    {MED_TRIA3, "TR3", ug::TRIANGLE, SAME},
    {MED_QUAD4, "QU4", ug::QUADRILATERAL, SAME},
    {MED_TRIA6, "TR6", ug::TRIANGLE_6, SAME},
    {MED_TRIA7, "TR7", ug::TRIANGLE_6, SAME},
    {MED_QUAD8, "QU8", ug::QUADRILATERAL_8, SAME},
    {MED_QUAD9, "QU9", ug::QUADRILATERAL_8, SAME},
    {MED_TETRA4, "TE4", ug::TETRAHEDRON, TETRAHEDRON_ORDER},
    {MED_PYRA5, "PY5", ug::PYRAMID, PYRAMID_ORDER},
    {MED_PENTA6, "PE6", ug::WEDGE, WEDGE_ORDER},
    {MED_HEXA8, "HE8", ug::HEXAHEDRON, HEXAHEDRON_ORDER},
    {MED_TETRA10, "T10", ug::TETRAHEDRON_10, TETRAHEDRON_ORDER},
    {MED_PYRA13, "P13", ug::PYRAMID_13, PYRAMID_ORDER},
    {MED_PENTA15, "P15", ug::WEDGE_15, WEDGE_ORDER},
    {MED_PENTA18, "P18", ug::WEDGE_15, WEDGE_ORDER},
    {MED_HEXA20, "H20", ug::HEXAHEDRON_20, HEXAHEDRON_ORDER},
    {MED_HEXA27, "H27", ug::HEXAHEDRON_20, HEXAHEDRON_ORDER},
};

// Of the volume just the sign is right: twice the area of the base, by its diagonals, times the way from the centre of
// the base to that of the top.
template <std::size_t BASE_COUNT, std::size_t TOP_COUNT>
double orientedVolume(const MedCell& cell, const double* coordinates, const int* nodes) {
    const double* corners[BASE_COUNT + TOP_COUNT];
    for (std::size_t i = 0; i < BASE_COUNT + TOP_COUNT; ++i) {
        corners[i] = coordinates + 3 * std::size_t(nodes[cell.order[i]] - 1);
    }
    double first[3];
    double second[3];
    double up[3];
    for (std::size_t k = 0; k < 3; ++k) {
        first[k] = corners[2][k] - corners[0][k];
        second[k] = corners[3 % BASE_COUNT][k] - corners[1][k];
        double base = 0.0;
        double top = 0.0;
        for (std::size_t i = 0; i < BASE_COUNT + TOP_COUNT; ++i) {
            (i < BASE_COUNT ? base : top) += corners[i][k];
        }
        up[k] = top / double(TOP_COUNT) - base / double(BASE_COUNT);
    }
    return up[0] * (first[1] * second[2] - first[2] * second[1]) +
           up[1] * (first[2] * second[0] - first[0] * second[2]) +
           up[2] * (first[0] * second[1] - first[1] * second[0]);
}

double orientedVolume(const MedCell& cell, const double* coordinates, const int* nodes) {
    switch (cell.elementType) {
    case ug::TETRAHEDRON:
    case ug::TETRAHEDRON_10:
        return orientedVolume<3, 1>(cell, coordinates, nodes);
    case ug::PYRAMID:
    case ug::PYRAMID_13:
        return orientedVolume<4, 1>(cell, coordinates, nodes);
    case ug::WEDGE:
    case ug::WEDGE_15:
        return orientedVolume<3, 3>(cell, coordinates, nodes);
    case ug::HEXAHEDRON:
    case ug::HEXAHEDRON_20:
        return orientedVolume<4, 4>(cell, coordinates, nodes);
    default:
        return 0.0; // No volume.
    }
}

} // namespace

std::span<const MedCell> medCells() {
    return CELLS;
}

const std::uint8_t* medNodeOrder(const MedCell& cell, const double* coordinates, const int* nodes) {
    return orientedVolume(cell, coordinates, nodes) < 0.0 ? SAME : cell.order;
}

} // namespace orv::imp::cae
