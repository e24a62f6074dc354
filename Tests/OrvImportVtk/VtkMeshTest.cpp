#include "OrvImportVtk/VtkMesh.h"

#include "OrvImportVtk/VtkVectorArray.h"

#include <gtest/gtest.h>

#include <vtkCellArray.h>
#include <vtkCellData.h>
#include <vtkCellType.h>
#include <vtkDataSetAttributes.h>
#include <vtkIdTypeArray.h>
#include <vtkImageData.h>
#include <vtkNew.h>
#include <vtkPointData.h>
#include <vtkPoints.h>
#include <vtkPolyData.h>
#include <vtkUnsignedCharArray.h>
#include <vtkUnstructuredGrid.h>

#include <limits>
#include <utility>

using namespace orv;
using namespace orv::imp::cae;

namespace {

class VtkMesh : public testing::Test {
protected:
    VtkMesh() {
        for (const auto& place : PLACES) {
            points->InsertNextPoint(place[0], place[1], place[2]);
        }
        grid->SetPoints(points);
    }

    void addCell(int type, const std::vector<vtkIdType>& ids) {
        grid->InsertNextCell(type, vtkIdType(ids.size()), ids.data());
    }

    bool fill(vtkDataSet* mesh) {
        return fillVtkPart(mesh, &nodes, &elements, &map, &unknown, &error);
    }

    std::vector<std::uint32_t> nodesOf(std::size_t element) const {
        const auto indexes = elements.nodeIndexes(element);
        return {indexes.begin(), indexes.end()};
    }

    // A wedge, whose bottom runs counter-clockwise from above.
    static constexpr double PLACES[6][3] = {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}, {1, 0, 1}, {0, 1, 1}};

    vtkNew<vtkPoints> points;
    vtkNew<vtkUnstructuredGrid> grid;
    ug::DataNodes nodes;
    ug::DataElements elements;
    VtkPartMap map;
    VtkUnknownCells unknown;
    ug::Error error;
};

using Nodes = std::vector<std::uint32_t>;

TEST_F(VtkMesh, PointsAndCellsBecomeNodesAndElements) {
    addCell(VTK_TETRA, {0, 1, 2, 3});
    addCell(VTK_LINE, {5, 4});
    ASSERT_TRUE(fill(grid)) << error.message();
    ASSERT_EQ(nodes.nodeCount(), 6u);
    EXPECT_EQ(nodes.node(4), Vec3d(1, 0, 1));
    EXPECT_EQ(nodes.nodeId(5), 6);
    ASSERT_EQ(elements.elementCount(), 2u);
    EXPECT_EQ(elements.elementType(0), ug::TETRAHEDRON);
    EXPECT_EQ(nodesOf(1), (Nodes{5, 4}));
    EXPECT_EQ(map, (VtkPartMap{6, 2, {}}));
}

TEST_F(VtkMesh, WedgesComeOutUprightHoweverTheyWere) {
    addCell(VTK_WEDGE, {0, 1, 2, 3, 4, 5});
    addCell(VTK_WEDGE, {0, 2, 1, 3, 5, 4});
    addCell(VTK_WEDGE, {3, 4, 5, 0, 1, 2});
    ASSERT_TRUE(fill(grid));
    EXPECT_EQ(nodesOf(0), (Nodes{0, 1, 2, 3, 4, 5}));
    EXPECT_EQ(nodesOf(1), (Nodes{0, 1, 2, 3, 4, 5}));
    EXPECT_EQ(nodesOf(2), (Nodes{3, 5, 4, 0, 2, 1}));
}

TEST_F(VtkMesh, IdsAreThoseOfTheMesh) {
    addCell(VTK_LINE, {0, 1});
    vtkNew<vtkIdTypeArray> pointIds;
    for (vtkIdType i = 0; i < 6; ++i) {
        pointIds->InsertNextValue(i == 2 ? 0 : 100 + i);
    }
    grid->GetPointData()->SetGlobalIds(pointIds);
    vtkNew<vtkIdTypeArray> cellIds;
    cellIds->InsertNextValue(std::numeric_limits<int>::max());
    grid->GetCellData()->SetGlobalIds(cellIds);
    ASSERT_TRUE(fill(grid));
    EXPECT_EQ(nodes.nodeId(2), 0);
    EXPECT_EQ(nodes.nodeId(5), 105);
    EXPECT_EQ(elements.elementId(0), std::numeric_limits<int>::max());
}

TEST_F(VtkMesh, IdsThatDoNotFitAreLeft) {
    addCell(VTK_LINE, {0, 1});
    vtkNew<vtkIdTypeArray> pointIds;
    for (vtkIdType i = 0; i < 6; ++i) {
        pointIds->InsertNextValue(i == 3 ? -1 : i);
    }
    grid->GetPointData()->SetGlobalIds(pointIds);
    vtkNew<vtkIdTypeArray> cellIds;
    cellIds->InsertNextValue(vtkIdType(std::numeric_limits<int>::max()) + 1);
    grid->GetCellData()->SetGlobalIds(cellIds);
    ASSERT_TRUE(fill(grid));
    EXPECT_EQ(nodes.nodeId(3), 4);
    EXPECT_EQ(elements.elementId(0), 1);
}

TEST_F(VtkMesh, GhostsAreLeftOut) {
    addCell(VTK_LINE, {0, 1});
    addCell(VTK_LINE, {1, 2});
    addCell(VTK_LINE, {2, 3});
    addCell(VTK_LINE, {3, 4});
    vtkNew<vtkUnsignedCharArray> marks;
    marks->SetName(vtkDataSetAttributes::GhostArrayName());
    for (const int mark : {0, int(vtkDataSetAttributes::DUPLICATECELL), int(vtkDataSetAttributes::HIDDENCELL),
                           int(vtkDataSetAttributes::REFINEDCELL)}) {
        marks->InsertNextValue(static_cast<unsigned char>(mark));
    }
    grid->GetCellData()->AddArray(marks);
    ASSERT_TRUE(fill(grid));
    ASSERT_EQ(elements.elementCount(), 2u);
    EXPECT_EQ(nodesOf(1), (Nodes{3, 4}));
    EXPECT_EQ(map, (VtkPartMap{6, 4, {0, 3}}));
}

TEST_F(VtkMesh, SplitCellsGiveTheirValuesToAllPieces) {
    addCell(VTK_POLY_LINE, {0, 1, 2});
    addCell(VTK_EMPTY_CELL, {});
    addCell(VTK_TRIANGLE, {0, 1, 2});
    ASSERT_TRUE(fill(grid));
    EXPECT_EQ(elements.elementCount(), 3u);
    EXPECT_EQ(map, (VtkPartMap{6, 3, {0, 0, 2}}));
    EXPECT_TRUE(unknown.empty());
}

TEST_F(VtkMesh, UnknownCellsAreCounted) {
    addCell(VTK_PENTAGONAL_PRISM, {0, 1, 2, 3, 4, 5, 0, 1, 2, 3});
    addCell(VTK_TRIANGLE, {0, 1, 2});
    addCell(VTK_PENTAGONAL_PRISM, {0, 1, 2, 3, 4, 5, 0, 1, 2, 3});
    addCell(VTK_TETRA, {0, 1, 2});
    ASSERT_TRUE(fill(grid));
    EXPECT_EQ(elements.elementCount(), 1u);
    EXPECT_EQ(unknown, (VtkUnknownCells{{VTK_PENTAGONAL_PRISM, 2}, {VTK_TETRA, 1}}));
    EXPECT_EQ(map.elementCells, std::vector<std::int64_t>{1});
    EXPECT_EQ(vtkCellTypeText(VTK_PENTAGONAL_PRISM), "VTK cell type 15 (vtkPentagonalPrism)");
}

// As CGNS has them, with a node in the middle of the base; and what VTK's reader has no name for.
TEST_F(VtkMesh, PyramidsMayHaveOnePointMore) {
    addCell(VTK_QUADRATIC_PYRAMID, {0, 1, 2, 3, 4, 5, 0, 1, 2, 3, 4, 5, 0, 1});
    addCell(VTK_QUADRATIC_PYRAMID, {0, 1, 2, 3, 4, 5, 0, 1, 2, 3, 4, 5, 0, 1, 2});
    addCell(VTK_EMPTY_CELL, {0, 1});
    ASSERT_TRUE(fill(grid));
    ASSERT_EQ(elements.elementCount(), 1u);
    EXPECT_EQ(nodesOf(0), (Nodes{0, 1, 2, 3, 4, 5, 0, 1, 2, 3, 4, 5, 0}));
    EXPECT_EQ(unknown, (VtkUnknownCells{{VTK_QUADRATIC_PYRAMID, 1}, {VTK_EMPTY_CELL, 1}}));
}

TEST_F(VtkMesh, PointsThatAreNotThereAreRefused) {
    using Limits = std::numeric_limits<vtkIdType>;
    using ShortLimits = std::numeric_limits<vtkTypeInt32>;
    for (const vtkIdType bad : {vtkIdType(6), vtkIdType(-1), vtkIdType(ShortLimits::max()),
                                vtkIdType(ShortLimits::min()), Limits::max(), Limits::min()}) {
        grid->Reset();
        grid->GetCells()->ConvertTo64BitStorage();
        addCell(VTK_TRIANGLE, {0, 1, 2});
        addCell(VTK_LINE, {0, bad});
        if (bad >= ShortLimits::min() && bad <= ShortLimits::max()) {
            EXPECT_FALSE(fill(grid));
            grid->GetCells()->ConvertTo32BitStorage();
        }
        EXPECT_FALSE(fill(grid));
        EXPECT_EQ(error.message(), Str("cell 1 has a point that is not one of the 6 points of its mesh"));
    }
}

// Cells of one type are taken many at a time.
TEST_F(VtkMesh, RunsOfCellsAreTakenWithWhatIsBetweenThem) {
    addCell(VTK_TETRA, {0, 1, 2, 3});
    addCell(VTK_TETRA, {1, 2, 3, 4});
    addCell(VTK_POLYGON, {0, 1, 4, 5, 3});
    addCell(VTK_TRIANGLE, {0, 1, 2});
    addCell(VTK_HEXAGONAL_PRISM, {0, 1, 2, 3, 4, 5, 0, 1, 2, 3, 4, 5});
    addCell(VTK_TRIANGLE, {3, 4, 5});
    addCell(VTK_TRIANGLE, {1, 2, 5});
    for (const bool hasWideNumbers : {true, false}) {
        hasWideNumbers ? grid->GetCells()->ConvertTo64BitStorage() : grid->GetCells()->ConvertTo32BitStorage();
        ug::DataNodes ownNodes;
        ug::DataElements own;
        ASSERT_TRUE(fillVtkPart(grid, &ownNodes, &own, &map, &unknown, &error)) << error.message();
        ASSERT_EQ(own.elementCount(), 8u);
        EXPECT_EQ(map.elementCells, (std::vector<std::int64_t>{0, 1, 2, 2, 2, 3, 5, 6}));
        const auto indexes = own.nodeIndexes(1);
        EXPECT_EQ(Nodes(indexes.begin(), indexes.end()), (Nodes{1, 2, 3, 4}));
        const auto last = own.nodeIndexes(7);
        EXPECT_EQ(Nodes(last.begin(), last.end()), (Nodes{1, 2, 5}));
    }
}

// Places and points of cells that can be taken out of the mesh are not copied.
TEST_F(VtkMesh, ListsOfOursAreTakenAsTheyAre) {
    const auto places = VtkPlaces::make(3, 18);
    const auto indexes = VtkIndexes::make(1, 8);
    vtkNew<vtkTypeInt32Array> offsets;
    for (int i = 0; i < 6; ++i) {
        places->SetTuple(i, PLACES[i]);
    }
    for (int i = 0; i < 8; ++i) {
        indexes->SetValue(i, i % 4 + i / 4);
    }
    for (const int offset : {0, 4, 8}) {
        offsets->InsertNextValue(offset);
    }
    points->SetData(places);
    vtkNew<vtkCellArray> cells;
    cells->SetData(offsets.Get(), indexes.Get());
    grid->SetCells(VTK_TETRA, cells);
    const double* coordinates = places->GetPointer(0);
    const int* connectivity = indexes->GetPointer(0);
    ASSERT_TRUE(fill(grid)) << error.message();
    EXPECT_EQ(nodes.coordinates().data(), coordinates);
    EXPECT_EQ(static_cast<const void*>(elements.connectivity().data()), connectivity);
    EXPECT_EQ(nodes.node(4), Vec3d(1, 0, 1));
    EXPECT_EQ(nodesOf(1), (Nodes{1, 2, 3, 4}));
    EXPECT_EQ(map, (VtkPartMap{6, 2, {}}));
}

TEST_F(VtkMesh, ListsOfOursWithOtherCellsAreCopied) {
    const auto indexes = VtkIndexes::make(1, 7);
    vtkNew<vtkTypeInt32Array> offsets;
    for (int i = 0; i < 7; ++i) {
        indexes->SetValue(i, i % 4);
    }
    for (const int offset : {0, 4, 7}) {
        offsets->InsertNextValue(offset);
    }
    vtkNew<vtkCellArray> cells;
    cells->SetData(offsets.Get(), indexes.Get());
    int types[] = {VTK_TETRA, VTK_TRIANGLE};
    grid->SetCells(types, cells);
    ASSERT_TRUE(fill(grid)) << error.message();
    EXPECT_EQ(nodesOf(0), (Nodes{0, 1, 2, 3}));
    EXPECT_EQ(nodesOf(1), (Nodes{0, 1, 2}));
    indexes->SetValue(6, 9);
    EXPECT_FALSE(fill(grid));
    EXPECT_EQ(error.message(), Str("cell 1 has a point that is not one of the 6 points of its mesh"));
}

TEST_F(VtkMesh, TheCellOfARunThatIsWrongIsTold) {
    addCell(VTK_TETRA, {0, 1, 2, 3});
    addCell(VTK_TETRA, {1, 2, 3, 4});
    addCell(VTK_TETRA, {1, 2, 3, 6});
    EXPECT_FALSE(fill(grid));
    EXPECT_EQ(error.message(), Str("cell 2 has a point that is not one of the 6 points of its mesh"));
}

TEST_F(VtkMesh, CellsOutsideOfTheirListAreRefused) {
    addCell(VTK_TETRA, {0, 1, 2, 3});
    addCell(VTK_TETRA, {1, 2, 3, 4});
    vtkDataArray* offsets = grid->GetCells()->GetOffsetsArray();
    for (const auto& [place, offset] : {std::pair<vtkIdType, double>{2, 12}, {1, -4}, {0, -4}, {1, 9}}) {
        const double before = offsets->GetComponent(place, 0);
        offsets->SetComponent(place, 0, offset);
        EXPECT_FALSE(fill(grid)) << place << ' ' << offset;
        offsets->SetComponent(place, 0, before);
    }
    grid->GetCellTypesArray()->SetNumberOfValues(1);
    error.clear();
    EXPECT_FALSE(fill(grid));
    EXPECT_EQ(error.message(), Str("has no types for all of its cells"));
}

// Nodes in the middle of faces are left out of each.
TEST_F(VtkMesh, CellsWithMorePointsThanTheirElementsMayFollowEachOther) {
    for (int i = 0; i < 2; ++i) {
        addCell(VTK_BIQUADRATIC_TRIANGLE, {0, 1, 2, 3, 4, 5, 1});
    }
    ASSERT_TRUE(fill(grid));
    EXPECT_EQ(nodesOf(0), (Nodes{0, 1, 2, 3, 4, 5}));
    EXPECT_EQ(nodesOf(1), (Nodes{0, 1, 2, 3, 4, 5}));
}

TEST_F(VtkMesh, SurfacesWithListsThatDoNotFitAreRefused) {
    vtkNew<vtkPolyData> surface;
    surface->SetPoints(points);
    vtkNew<vtkCellArray> triangles;
    const vtkIdType corners[] = {0, 1, 2};
    triangles->InsertNextCell(3, corners);
    surface->SetPolys(triangles);
    ASSERT_TRUE(fill(surface));
    triangles->GetOffsetsArray()->SetComponent(1, 0, 4);
    EXPECT_FALSE(fill(surface));
    EXPECT_EQ(error.message(), Str("has lists of cells that do not fit together"));
}

TEST_F(VtkMesh, MeshesOfOtherKindsAreTakenToo) {
    vtkNew<vtkImageData> image;
    image->SetDimensions(3, 2, 2);
    ASSERT_TRUE(fill(image));
    EXPECT_EQ(nodes.nodeCount(), 12u);
    EXPECT_EQ(nodes.node(11), Vec3d(2, 1, 1));
    ASSERT_EQ(elements.elementCount(), 2u);
    EXPECT_EQ(nodesOf(0), (Nodes{0, 1, 4, 3, 6, 7, 10, 9}));
}

} // namespace
