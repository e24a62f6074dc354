#include "OrvImportVtk/CgnsCells.h"

#include <vtkCellType.h>

#include <iterator>

namespace orv::imp::cae {
namespace {

constexpr std::uint8_t SAME[] = {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12};

// CGNS has the nodes in the middle of upright edges before those of the top.
constexpr std::uint8_t PENTA[] = {0, 1, 2, 3, 4, 5, 6, 7, 8, 12, 13, 14, 9, 10, 11};
constexpr std::uint8_t HEXA[] = {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 16, 17, 18, 19, 12, 13, 14, 15};

constexpr CgnsCell same(std::uint8_t nodeCount, int cellType) {
    return {nodeCount, cellType, nodeCount, nullptr};
}

constexpr CgnsCell nameless(std::uint8_t nodeCount) {
    return same(nodeCount, VTK_EMPTY_CELL);
}

constexpr CgnsCell NONE = nameless(0);

// By their numbers.
constexpr CgnsCell CELLS[] = {
    NONE,
    NONE,
    same(1, VTK_VERTEX),
    same(2, VTK_LINE),
    same(3, VTK_QUADRATIC_EDGE),
    same(3, VTK_TRIANGLE), // 5
    same(6, VTK_QUADRATIC_TRIANGLE),
    same(4, VTK_QUAD),
    same(8, VTK_QUADRATIC_QUAD),
    {9, VTK_QUADRATIC_QUAD, 8, SAME},
    same(4, VTK_TETRA), // 10
    same(10, VTK_QUADRATIC_TETRA),
    same(5, VTK_PYRAMID),
    {14, VTK_QUADRATIC_PYRAMID, 13, SAME},
    same(6, VTK_WEDGE),
    {15, VTK_QUADRATIC_WEDGE, 15, PENTA}, // 15
    {18, VTK_QUADRATIC_WEDGE, 15, PENTA},
    same(8, VTK_HEXAHEDRON),
    {20, VTK_QUADRATIC_HEXAHEDRON, 20, HEXA},
    {27, VTK_QUADRATIC_HEXAHEDRON, 20, HEXA},
    NONE, // CGNS_MIXED, 20
    same(13, VTK_QUADRATIC_PYRAMID),
    NONE, // CGNS_POLYGONS
    NONE, // CGNS_POLYHEDRA
    same(4, VTK_CUBIC_LINE),
    nameless(9), // 25
    same(10, VTK_LAGRANGE_TRIANGLE),
    nameless(12),
    same(16, VTK_LAGRANGE_QUADRILATERAL),
    nameless(16),
    same(20, VTK_LAGRANGE_TETRAHEDRON), // 30
    nameless(21),
    nameless(29),
    same(30, VTK_LAGRANGE_PYRAMID),
    nameless(24),
    nameless(38), // 35
    same(40, VTK_LAGRANGE_WEDGE),
    nameless(32),
    nameless(56),
    same(64, VTK_LAGRANGE_HEXAHEDRON),
    nameless(5), // 40
    nameless(12),
    nameless(15),
    nameless(16),
    nameless(25),
    nameless(22), // 45
    nameless(34),
    nameless(35),
    nameless(29),
    nameless(50),
    nameless(55), // 50
    nameless(33),
    nameless(66),
    nameless(75),
    nameless(44),
    nameless(98), // 55
    nameless(125),
};

} // namespace

const CgnsCell* findCgnsCell(std::int64_t type) {
    const bool isKnown = type >= 0 && type < std::int64_t(std::size(CELLS)) && CELLS[type].nodeCount > 0;
    return isKnown ? &CELLS[type] : nullptr;
}

} // namespace orv::imp::cae
