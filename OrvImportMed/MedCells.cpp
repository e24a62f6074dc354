#include "OrvImportMed/MedCells.h"

#include <med.h>

namespace orv::imp::cae {
namespace {

constexpr std::uint8_t SAME[] = {0, 1, 2, 3, 4, 5, 6, 7};
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

} // namespace

std::span<const MedCell> medCells() {
    return CELLS;
}

} // namespace orv::imp::cae
