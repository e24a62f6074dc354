#include "OrvImportVtk/ExodusCells.h"

#include "OrvCore/Str.h"
#include "OrvImportVtk/VtkCells.h"

#include <vtkCellType.h>

#include <string_view>

namespace orv::imp::cae {
namespace {

enum class Family { POINT, LINE, TRIANGLE, QUADRILATERAL, SHELL, TETRAHEDRON, PYRAMID, WEDGE, HEXAHEDRON };

struct Name {
    std::string_view beginning;
    Family family;
};

constexpr Name NAMES[] = {
    {"cir", Family::POINT},         {"sph", Family::POINT},     {"bar", Family::LINE},
    {"bea", Family::LINE},          {"tru", Family::LINE},      {"edg", Family::LINE},
    {"rod", Family::LINE},          {"straight", Family::LINE}, {"tri", Family::TRIANGLE},
    {"qua", Family::QUADRILATERAL}, {"she", Family::SHELL},     {"tet", Family::TETRAHEDRON},
    {"pyr", Family::PYRAMID},       {"wed", Family::WEDGE},     {"hex", Family::HEXAHEDRON},
};

struct Cell {
    Family family;
    std::size_t nodeCount;
    int cellType;
};

constexpr Cell CELLS[] = {
    {Family::POINT, 1, VTK_VERTEX},
    {Family::LINE, 2, VTK_LINE},
    {Family::LINE, 3, VTK_QUADRATIC_EDGE},
    {Family::TRIANGLE, 3, VTK_TRIANGLE},
    {Family::TRIANGLE, 4, VTK_TRIANGLE},
    {Family::TRIANGLE, 6, VTK_QUADRATIC_TRIANGLE},
    {Family::TRIANGLE, 7, VTK_QUADRATIC_TRIANGLE},
    {Family::QUADRILATERAL, 4, VTK_QUAD},
    {Family::QUADRILATERAL, 5, VTK_QUAD},
    {Family::QUADRILATERAL, 8, VTK_QUADRATIC_QUAD},
    {Family::QUADRILATERAL, 9, VTK_QUADRATIC_QUAD},
    {Family::SHELL, 2, VTK_LINE},
    {Family::SHELL, 3, VTK_TRIANGLE},
    {Family::SHELL, 4, VTK_QUAD},
    {Family::SHELL, 6, VTK_QUADRATIC_TRIANGLE},
    {Family::SHELL, 7, VTK_QUADRATIC_TRIANGLE},
    {Family::SHELL, 8, VTK_QUADRATIC_QUAD},
    {Family::SHELL, 9, VTK_QUADRATIC_QUAD},
    {Family::TETRAHEDRON, 4, VTK_TETRA},
    {Family::TETRAHEDRON, 5, VTK_TETRA},
    {Family::TETRAHEDRON, 8, VTK_TETRA},
    {Family::TETRAHEDRON, 10, VTK_QUADRATIC_TETRA},
    {Family::TETRAHEDRON, 11, VTK_QUADRATIC_TETRA},
    {Family::TETRAHEDRON, 14, VTK_QUADRATIC_TETRA},
    {Family::TETRAHEDRON, 15, VTK_QUADRATIC_TETRA},
    {Family::PYRAMID, 5, VTK_PYRAMID},
    {Family::PYRAMID, 13, VTK_QUADRATIC_PYRAMID},
    {Family::PYRAMID, 14, VTK_QUADRATIC_PYRAMID},
    {Family::PYRAMID, 18, VTK_QUADRATIC_PYRAMID},
    {Family::PYRAMID, 19, VTK_QUADRATIC_PYRAMID},
    {Family::WEDGE, 6, VTK_WEDGE},
    {Family::WEDGE, 15, VTK_QUADRATIC_WEDGE},
    {Family::WEDGE, 16, VTK_QUADRATIC_WEDGE},
    {Family::WEDGE, 18, VTK_QUADRATIC_WEDGE},
    {Family::WEDGE, 20, VTK_QUADRATIC_WEDGE},
    {Family::WEDGE, 21, VTK_QUADRATIC_WEDGE},
    {Family::HEXAHEDRON, 8, VTK_HEXAHEDRON},
    {Family::HEXAHEDRON, 9, VTK_HEXAHEDRON},
    {Family::HEXAHEDRON, 20, VTK_QUADRATIC_HEXAHEDRON},
    {Family::HEXAHEDRON, 21, VTK_QUADRATIC_HEXAHEDRON},
    {Family::HEXAHEDRON, 27, VTK_QUADRATIC_HEXAHEDRON},
};

// Exodus has the nodes in the middle of upright edges before those of the top.
constexpr std::uint8_t WEDGE_15_NODES[] = {0, 1, 2, 3, 4, 5, 6, 7, 8, 12, 13, 14, 9, 10, 11};
constexpr std::uint8_t HEX_20_NODES[] = {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 16, 17, 18, 19, 12, 13, 14, 15};

const std::uint8_t* orderOf(int cellType) {
    return cellType == VTK_QUADRATIC_WEDGE        ? WEDGE_15_NODES
           : cellType == VTK_QUADRATIC_HEXAHEDRON ? HEX_20_NODES
                                                  : nullptr;
}

} // namespace

bool findExodusCells(const std::string& typeName, std::size_t nodeCount, ExodusCells* cells) {
    const std::string type = Str(typeName).toLower().toStdString();
    if (type.starts_with(nodeCount > 0 ? "sup" : "nsi")) {
        *cells = {nodeCount > 0 ? VTK_POLY_VERTEX : VTK_POLYGON, 0, nullptr};
        return true;
    }
    for (const Name& name : NAMES) {
        for (const Cell& cell : CELLS) {
            if (type.starts_with(name.beginning) && cell.family == name.family && cell.nodeCount == nodeCount) {
                *cells = {cell.cellType, findVtkCell(cell.cellType)->pointCount, orderOf(cell.cellType)};
                return true;
            }
        }
    }
    return false;
}

} // namespace orv::imp::cae
