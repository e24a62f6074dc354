#include "Tests/OrvImportVtk/LegacySamples.h"

#include <vtkCellData.h>
#include <vtkPointData.h>
#include <vtkUnsignedCharArray.h>

using namespace orv;
using namespace orv::imp::cae;
using namespace orvtest;

namespace {

using LegacyMeshes = LegacyFiles;

/// Whole numbers of 32 bits as they are in binary files.
std::string bigEndian(const std::vector<int>& numbers) {
    std::string bytes;
    for (const int number : numbers) {
        for (const int shift : {24, 16, 8, 0}) {
            bytes += char(number >> shift);
        }
    }
    return bytes;
}

std::vector<vtkIdType> nodesOf(vtkDataSet* mesh, vtkIdType cell) {
    vtkNew<vtkIdList> nodes;
    mesh->GetCellPoints(cell, nodes);
    return {nodes->begin(), nodes->end()};
}

TEST_F(LegacyMeshes, TextsTellThePlaceAndWhatWasExpected) {
    const std::string head = LEGACY_HEAD + LEGACY_POINTS;
    const struct {
        std::string bytes;
        const char* error;
    } cases[] = {
        {head + "CELLS 1 4\n4 0 1 2\nCELL_TYPES 1\n5\n", "line 8: expected 1 cells in 4 numbers of cells, found 0"},
        {head + "CELLS 2 4\n3 0 1 2\nCELL_TYPES 2\n5 5\n", "line 8: expected 2 cells in 4 numbers of cells, found 1"},
        {head + "CELLS 1 4\n-1 0 1 2\nCELL_TYPES 1\n5\n", "line 8: expected 1 cells in 4 numbers of cells, found 0"},
        {head + "CELLS 1 4\n2 0 1 2\nCELL_TYPES 1\n5\n",
         "line 8: expected 4 numbers of cells, found cells in 3 of them"},
        {head + "CELLS 1 4\n3 0 1 2.5\nCELL_TYPES 1\n5\n", "line 8: expected 4 values of cells, found \"2.5\""},
        {head + "CELLS 1 4\n3 0 1 2\nCELL_TYPES 1\n99\n", "line 10: expected types of cells, found 99"},
        {head + "CELLS 1 4\n3 0 1 2\nCELL_TYPES 1\n-1\n",
         "line 10: expected numbers of cell types, found one that is out of bounds"},
        {head + LEGACY_TRIANGLE + "POINT_DATA 3\nVECTORS v int\n1 2 3 4 5 6 7 8 9a\n",
         "line 13: expected 9 values of v, found \"9a\""},
        {LEGACY_HEAD + "DATASET POLYDATA\nPOINTS 1 string\na\nb\nc\n",
         "line 6: expected numbers of points, found values of another type"},
    };
    for (const auto& [bytes, error] : cases) {
        EXPECT_EQ(read(bytes), error) << bytes;
    }
}

// Where the nodes of each cell begin, and where those of the last one end.
TEST_F(LegacyMeshes, OffsetsLeadThroughTheNodes) {
    const auto cells = [&](const std::string& offsets, const std::string& type = "vtktypeint64") {
        return "# vtk DataFile Version 5.1\ntitle\nASCII\n" + LEGACY_POINTS + "CELLS 2 3\nOFFSETS " + type + "\n" +
               offsets + "\nCONNECTIVITY vtktypeint64\n0 1 2\nCELL_TYPES 1\n5\n";
    };
    EXPECT_EQ(read(cells("0 3")), "");
    EXPECT_EQ(nodesOf(m_mesh, 0), (std::vector<vtkIdType>{0, 1, 2}));
    EXPECT_EQ(read(cells("0 2")), "line 9: expected offsets from 0 to 3 of cells, found others");
    EXPECT_EQ(read(cells("1 3")), "line 9: expected offsets from 0 to 3 of cells, found others");
    EXPECT_EQ(read(cells("3 0")), "line 9: expected offsets from 0 to 3 of cells, found others");
}

TEST_F(LegacyMeshes, NodesOfBinaryFilesComeInBothWays) {
    const std::string points = "DATASET UNSTRUCTURED_GRID\nPOINTS 3 float\n" + std::string(36, '\0');
    const std::string types = "\nCELL_TYPES 2\n" + bigEndian({3, 5});
    EXPECT_EQ(read("# vtk DataFile Version 3.0\ntitle\nBINARY\n" + points + "\nCELLS 2 7\n" +
                   bigEndian({2, 1, 0, 3, 0, 1, 2}) + types),
              "");
    EXPECT_EQ(nodesOf(m_mesh, 0), (std::vector<vtkIdType>{1, 0}));
    EXPECT_EQ(nodesOf(m_mesh, 1), (std::vector<vtkIdType>{0, 1, 2}));
    const auto withOffsets = [&](const std::string& type) {
        return "# vtk DataFile Version 5.1\ntitle\nBINARY\n" + points + "\nCELLS 3 5\nOFFSETS " + type + "\n" +
               bigEndian({0, 2, 5}) + "\nCONNECTIVITY int\n" + bigEndian({1, 0, 0, 1, 2}) + types;
    };
    EXPECT_EQ(read(withOffsets("int")), "");
    EXPECT_EQ(nodesOf(m_mesh, 0), (std::vector<vtkIdType>{1, 0}));
    EXPECT_EQ(nodesOf(m_mesh, 1), (std::vector<vtkIdType>{0, 1, 2}));
    EXPECT_EQ(m_mesh->GetCellType(1), 5);
    EXPECT_EQ(read(withOffsets("float")), "byte 142: expected whole numbers of offsets, found values of another type");
}

// Two triangles and a tetrahedron in terms of faces between them.
TEST_F(LegacyMeshes, PolyhedraHaveNoNodes) {
    EXPECT_EQ(read(LEGACY_HEAD + "DATASET UNSTRUCTURED_GRID\nPOINTS 4 float\n0 0 0 1 0 0 0 1 0 0 0 1\nCELLS 3 26\n"
                                 "3 0 1 2\n17 4 3 0 1 2 3 0 1 3 3 1 2 3 3 0 2 3\n3 1 2 3\nCELL_TYPES 3\n5 42 5\n"),
              "");
    EXPECT_EQ(nodesOf(m_mesh, 0), (std::vector<vtkIdType>{0, 1, 2}));
    EXPECT_EQ(nodesOf(m_mesh, 1), std::vector<vtkIdType>());
    EXPECT_EQ(nodesOf(m_mesh, 2), (std::vector<vtkIdType>{1, 2, 3}));
}

TEST_F(LegacyMeshes, ArraysComeWithTheirNames) {
    ASSERT_EQ(read(LEGACY_HEAD + LEGACY_POINTS + LEGACY_TRIANGLE +
                   "CELL_DATA 1\nFIELD f 2\nvtkGhostType 1 1 unsigned_char\n1\nflag 1 1 bit\n1\n"
                   "POINT_DATA 3\nCOLOR_SCALARS c 1\n0 0.5 1\nGLOBAL_IDS g vtkidtype\n4 5 6\n"),
              "");
    ASSERT_TRUE(m_mesh->GetCellGhostArray());
    EXPECT_EQ(m_mesh->GetCellGhostArray()->GetValue(0), 1);
    EXPECT_EQ(m_mesh->GetCellData()->GetArray("flag")->GetTuple1(0), 1.0);
    ASSERT_TRUE(m_mesh->GetPointData()->GetGlobalIds());
    EXPECT_EQ(m_mesh->GetPointData()->GetGlobalIds()->GetTuple1(2), 6.0);
    const double colours[] = {0.0, 128.0, 255.0}; // 127.5 is rounded up.
    for (vtkIdType i = 0; i < 3; ++i) {
        EXPECT_EQ(m_mesh->GetPointData()->GetArray("c")->GetTuple1(i), colours[i]);
    }
}

} // namespace
