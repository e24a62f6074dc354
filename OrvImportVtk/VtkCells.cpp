#include "OrvImportVtk/VtkCells.h"

#include <vtkCellType.h>

#include <algorithm>
#include <iterator>

namespace orv::imp::cae {
namespace {

constexpr std::uint8_t SAME[] = {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18, 19};

constexpr std::uint8_t PIXEL_ORDER[] = {0, 1, 3, 2};
constexpr std::uint8_t VOXEL_ORDER[] = {0, 1, 3, 2, 4, 5, 7, 6};

// VTK's wedges run clockwise around their bottom when that is seen from the top, ours the other way. Many programs
// write theirs into VTK's files as they are.
constexpr std::uint8_t WEDGE_ORDER[] = {0, 2, 1, 3, 5, 4};
constexpr std::uint8_t WEDGE_15_ORDER[] = {0, 2, 1, 3, 5, 4, 8, 7, 6, 11, 10, 9, 12, 14, 13};

constexpr VtkCell CELLS[] = {
    {VTK_VERTEX, ug::POINT, 1, SAME},
    {VTK_LINE, ug::BEAM, 2, SAME},
    {VTK_TRIANGLE, ug::TRIANGLE, 3, SAME},
    {VTK_PIXEL, ug::QUADRILATERAL, 4, PIXEL_ORDER},
    {VTK_QUAD, ug::QUADRILATERAL, 4, SAME},
    {VTK_TETRA, ug::TETRAHEDRON, 4, SAME},
    {VTK_VOXEL, ug::HEXAHEDRON, 8, VOXEL_ORDER},
    {VTK_HEXAHEDRON, ug::HEXAHEDRON, 8, SAME},
    {VTK_WEDGE, ug::WEDGE, 6, WEDGE_ORDER, SAME},
    {VTK_PYRAMID, ug::PYRAMID, 5, SAME},
    {VTK_QUADRATIC_EDGE, ug::BEAM_3, 3, SAME},
    {VTK_QUADRATIC_TRIANGLE, ug::TRIANGLE_6, 6, SAME},
    {VTK_QUADRATIC_QUAD, ug::QUADRILATERAL_8, 8, SAME},
    {VTK_QUADRATIC_TETRA, ug::TETRAHEDRON_10, 10, SAME},
    {VTK_QUADRATIC_HEXAHEDRON, ug::HEXAHEDRON_20, 20, SAME},
    {VTK_QUADRATIC_WEDGE, ug::WEDGE_15, 15, WEDGE_15_ORDER, SAME},
    {VTK_QUADRATIC_PYRAMID, ug::PYRAMID_13, 13, SAME, nullptr, 14}, // One in the middle of its base, in CGNS.
    {VTK_BIQUADRATIC_QUAD, ug::QUADRILATERAL_8, 9, SAME},
    {VTK_BIQUADRATIC_TRIANGLE, ug::TRIANGLE_6, 7, SAME},
    {VTK_TRIQUADRATIC_HEXAHEDRON, ug::HEXAHEDRON_20, 27, SAME},
    {VTK_BIQUADRATIC_QUADRATIC_HEXAHEDRON, ug::HEXAHEDRON_20, 24, SAME},
    {VTK_BIQUADRATIC_QUADRATIC_WEDGE, ug::WEDGE_15, 18, WEDGE_15_ORDER, SAME},
};

} // namespace

const VtkCell* findVtkCell(int cellType) {
    const auto found = std::find_if(std::begin(CELLS), std::end(CELLS),
                                    [cellType](const VtkCell& cell) { return cell.cellType == cellType; });
    return found == std::end(CELLS) ? nullptr : found;
}

bool splitVtkCell(int cellType, std::size_t pointCount, std::vector<VtkCellPiece>* pieces) {
    pieces->clear();
    const auto count = std::uint32_t(pointCount);
    switch (cellType) {
    case VTK_POLY_VERTEX:
        for (std::uint32_t i = 0; i < count; ++i) {
            pieces->push_back({ug::POINT, {i}});
        }
        return true;
    case VTK_POLY_LINE:
        for (std::uint32_t i = 1; i < count; ++i) {
            pieces->push_back({ug::BEAM, {i - 1, i}});
        }
        return true;
    case VTK_TRIANGLE_STRIP: // Every other triangle is the other way around.
        for (std::uint32_t i = 2; i < count; ++i) {
            pieces->push_back({ug::TRIANGLE, {i - 2, i % 2 == 0 ? i - 1 : i, i % 2 == 0 ? i : i - 1}});
        }
        return true;
    case VTK_POLYGON:
        if (count == 4) {
            pieces->push_back({ug::QUADRILATERAL, {0, 1, 2, 3}});
            return true;
        }
        for (std::uint32_t i = 2; i < count; ++i) {
            pieces->push_back({ug::TRIANGLE, {0, i - 1, i}});
        }
        return true;
    default:
        return false;
    }
}

} // namespace orv::imp::cae
