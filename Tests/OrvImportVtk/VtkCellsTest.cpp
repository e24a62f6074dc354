#include "OrvImportVtk/VtkCells.h"

#include <gtest/gtest.h>

#include <vtkCell3D.h>
#include <vtkCellType.h>
#include <vtkGenericCell.h>
#include <vtkNew.h>

#include <array>
#include <cmath>

using namespace orv;
using imp::cae::findVtkCell;
using imp::cae::VtkCell;
using imp::cae::VtkCellPiece;

namespace {

using Place = std::array<double, 3>;

Place mean(const Place& a, const Place& b) {
    return {(a[0] + b[0]) / 2, (a[1] + b[1]) / 2, (a[2] + b[2]) / 2};
}

Place minus(const Place& a, const Place& b) {
    return {a[0] - b[0], a[1] - b[1], a[2] - b[2]};
}

double tripleProduct(const Place& a, const Place& b, const Place& c) {
    return a[0] * (b[1] * c[2] - b[2] * c[1]) + a[1] * (b[2] * c[0] - b[0] * c[2]) + a[2] * (b[0] * c[1] - b[1] * c[0]);
}

/// Where VTK has the points of its own cell of a type; of voxels and pixels as its documentation has them.
std::vector<Place> placesOf(int cellType) {
    switch (cellType) {
    case VTK_VERTEX:
        return {{0, 0, 0}};
    case VTK_PIXEL:
        return {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {1, 1, 0}};
    case VTK_VOXEL:
        return {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {1, 1, 0}, {0, 0, 1}, {1, 0, 1}, {0, 1, 1}, {1, 1, 1}};
    default:
        break;
    }
    vtkNew<vtkGenericCell> cell;
    cell->SetCellType(cellType);
    std::vector<Place> places;
    for (int i = 0; i < cell->GetNumberOfPoints(); ++i) {
        const double* at = cell->GetParametricCoords() + 3 * i;
        places.push_back({at[0], at[1], at[2]});
    }
    return places;
}

/// Six times the volume of the tetrahedra from a middle point to each surface, whose normals point outward.
double volume(ug::ElementType type, const std::vector<Place>& nodes) {
    const ug::ElementTypeInfo& info = ug::elementTypeInfo(type);
    Place middle = {0, 0, 0};
    for (std::size_t i = 0; i < info.cornerCount; ++i) {
        for (std::size_t axis = 0; axis < 3; ++axis) {
            middle[axis] += nodes[i][axis] / info.cornerCount;
        }
    }
    double sum = 0;
    for (std::size_t s = 0; s < info.surfaceCount; ++s) {
        const auto surface = ug::elementSurface(type, s);
        const double part = tripleProduct(minus(nodes[surface[0]], middle), minus(nodes[surface[1]], middle),
                                          minus(nodes[surface[2]], middle));
        EXPECT_GT(part, 0) << info.name << ", surface " << s;
        sum += part;
    }
    return sum;
}

class Cells : public testing::TestWithParam<int> {};

// VTK tells for each of its cells where the points are when it has the shape of a unit.
TEST_P(Cells, BecomeElementsOfTheSameShape) {
    const VtkCell* cell = findVtkCell(GetParam());
    ASSERT_TRUE(cell);
    const std::vector<Place> places = placesOf(GetParam());
    const ug::ElementTypeInfo& info = ug::elementTypeInfo(cell->elementType);
    ASSERT_EQ(places.size(), cell->pointCount);
    std::vector<Place> nodes;
    for (std::size_t i = 0; i < info.nodeCount; ++i) {
        nodes.push_back(places.at(cell->order[i]));
    }
    // The unit of a pyramid is a cube whose top is one point, so that only its bottom is as it seems.
    const std::size_t edgeCount = cell->elementType == ug::PYRAMID_13 ? 4 : info.edgeCount;
    for (std::size_t e = 0; info.isQuadratic && e < edgeCount; ++e) {
        const auto edge = ug::elementEdge(cell->elementType, e);
        EXPECT_EQ(nodes[edge[2]], mean(nodes[edge[0]], nodes[edge[1]])) << info.name << ", edge " << e;
    }
    if (info.dimension == 2) {
        const double area = tripleProduct(minus(nodes[1], nodes[0]), minus(nodes[2], nodes[0]), {0, 0, 1});
        EXPECT_GT(area, 0) << info.name;
    }
}

INSTANTIATE_TEST_SUITE_P(Each, Cells,
                         testing::Values(VTK_VERTEX, VTK_LINE, VTK_TRIANGLE, VTK_PIXEL, VTK_QUAD, VTK_TETRA, VTK_VOXEL,
                                         VTK_HEXAHEDRON, VTK_WEDGE, VTK_PYRAMID, VTK_QUADRATIC_EDGE,
                                         VTK_QUADRATIC_TRIANGLE, VTK_QUADRATIC_QUAD, VTK_QUADRATIC_TETRA,
                                         VTK_QUADRATIC_HEXAHEDRON, VTK_QUADRATIC_WEDGE, VTK_QUADRATIC_PYRAMID,
                                         VTK_BIQUADRATIC_QUAD, VTK_BIQUADRATIC_TRIANGLE, VTK_TRIQUADRATIC_HEXAHEDRON,
                                         VTK_BIQUADRATIC_QUADRATIC_HEXAHEDRON, VTK_BIQUADRATIC_QUADRATIC_WEDGE));

// Their units lie as ours do, so volumes are positive in the order that wedges have when they are not VTK's.
TEST(VtkCells, VolumesHaveTheirNormalsOutward) {
    for (const VTKCellType type : {VTK_TETRA, VTK_VOXEL, VTK_HEXAHEDRON, VTK_PYRAMID, VTK_QUADRATIC_TETRA,
                                   VTK_QUADRATIC_HEXAHEDRON, VTK_QUADRATIC_PYRAMID}) {
        const VtkCell* cell = findVtkCell(type);
        std::vector<Place> nodes;
        const std::vector<Place> places = placesOf(type);
        for (std::size_t i = 0; i < ug::elementTypeInfo(cell->elementType).nodeCount; ++i) {
            nodes.push_back(places.at(cell->order[i]));
        }
        EXPECT_GT(volume(cell->elementType, nodes), 0);
        EXPECT_FALSE(cell->turnedOrder);
    }
}

// VTK says that the bottom of a wedge, by the right-hand rule, points away from its top.
TEST(VtkCells, WedgesMayBeEitherWayAround) {
    for (const int type : {VTK_WEDGE, VTK_QUADRATIC_WEDGE, VTK_BIQUADRATIC_QUADRATIC_WEDGE}) {
        const VtkCell* cell = findVtkCell(type);
        ASSERT_TRUE(cell->turnedOrder);
        const ug::ElementTypeInfo& info = ug::elementTypeInfo(cell->elementType);
        const std::vector<Place> upright = placesOf(type);
        std::vector<Place> mirrored = upright;
        for (Place& place : mirrored) {
            place[2] = 1 - place[2];
        }
        std::vector<Place> nodes;
        std::vector<Place> turnedNodes;
        for (std::size_t i = 0; i < info.nodeCount; ++i) {
            nodes.push_back(mirrored.at(cell->order[i]));
            turnedNodes.push_back(upright.at(cell->turnedOrder[i]));
        }
        EXPECT_GT(volume(cell->elementType, nodes), 0);
        EXPECT_GT(volume(cell->elementType, turnedNodes), 0);
        for (std::size_t e = 0; info.isQuadratic && e < info.edgeCount; ++e) {
            const auto edge = ug::elementEdge(cell->elementType, e);
            EXPECT_EQ(turnedNodes[edge[2]], mean(turnedNodes[edge[0]], turnedNodes[edge[1]]));
        }
    }
}

TEST(VtkCells, OthersAreNotKnown) {
    for (const int type : {int(VTK_EMPTY_CELL), int(VTK_POLY_LINE), int(VTK_POLYGON), int(VTK_POLYHEDRON), -1, 999}) {
        EXPECT_FALSE(findVtkCell(type)) << type;
        if (type != VTK_POLY_LINE && type != VTK_POLYGON) {
            std::vector<VtkCellPiece> pieces(1);
            EXPECT_FALSE(imp::cae::splitVtkCell(type, 4, &pieces)) << type;
            EXPECT_TRUE(pieces.empty());
        }
    }
}

TEST(VtkCells, CellsOfAnySizeAreSplit) {
    struct Row {
        int cellType;
        std::size_t pointCount;
        ug::ElementType elementType;
        std::vector<std::vector<std::uint32_t>> points;
    };
    const Row rows[] = {
        {VTK_POLY_VERTEX, 2, ug::POINT, {{0}, {1}}},
        {VTK_POLY_LINE, 3, ug::BEAM, {{0, 1}, {1, 2}}},
        {VTK_POLY_LINE, 1, ug::BEAM, {}},
        {VTK_TRIANGLE_STRIP, 5, ug::TRIANGLE, {{0, 1, 2}, {1, 3, 2}, {2, 3, 4}}},
        {VTK_POLYGON, 3, ug::TRIANGLE, {{0, 1, 2}}},
        {VTK_POLYGON, 4, ug::QUADRILATERAL, {{0, 1, 2, 3}}},
        {VTK_POLYGON, 5, ug::TRIANGLE, {{0, 1, 2}, {0, 2, 3}, {0, 3, 4}}},
        {VTK_POLYGON, 2, ug::TRIANGLE, {}},
    };
    for (const Row& row : rows) {
        std::vector<VtkCellPiece> pieces(3);
        EXPECT_TRUE(imp::cae::splitVtkCell(row.cellType, row.pointCount, &pieces));
        ASSERT_EQ(pieces.size(), row.points.size()) << row.cellType << " of " << row.pointCount;
        for (std::size_t i = 0; i < pieces.size(); ++i) {
            EXPECT_EQ(pieces[i].elementType, row.elementType);
            for (std::size_t k = 0; k < row.points[i].size(); ++k) {
                EXPECT_EQ(pieces[i].points[k], row.points[i][k]) << row.cellType << ", piece " << i;
            }
        }
    }
}

} // namespace
