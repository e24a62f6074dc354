#include "OrvImportVtk/LegacyCheck.h"

#include "Tests/Support/ScratchFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>

using namespace orv;
using namespace orv::imp::cae;
using orvtest::ScratchFolder;
using testing::ElementsAre;

namespace {

const std::string HEAD = "# vtk DataFile Version 3.0\ntitle\nASCII\n"; // Three lines.
const std::string POINTS = "DATASET UNSTRUCTURED_GRID\nPOINTS 3 float\n0 0 0 1 0 0 0 1 0\n";
const std::string TRIANGLE = "CELLS 1 4\n3 0 1 2\nCELL_TYPES 1\n5\n"; // Lines 7 to 10.

class LegacyChecks : public testing::Test {
protected:
    // The error's text, or empty.
    std::string check(const std::string& bytes) {
        const std::string path = m_folder.path() + "/a.vtk";
        std::ofstream(path, std::ios::binary) << bytes;
        m_warnings.clear();
        ug::Error error;
        return checkLegacyFile(path, &m_warnings, &error) ? "" : error.message().toStdString();
    }

    ScratchFolder m_folder;
    std::vector<std::string> m_warnings;
};

TEST_F(LegacyChecks, TextsTellThePlaceAndWhatWasExpected) {
    const struct {
        std::string bytes;
        const char* error;
    } cases[] = {
        {"", "line 1: expected \"# vtk DataFile Version\" and a number, found the end of the file"},
        {"vtk\n", "line 1: expected \"# vtk DataFile Version\" and a number, found \"vtk\""},
        {"# vtk DataFile Version 3.0\ntitle\nTEXT\n", "line 3: expected \"ASCII\" or \"BINARY\", found \"text\""},
        {HEAD, "holds no mesh"},
        {HEAD + "DATASET TABLE\n", "line 4: expected one mesh, found \"table\""},
        {HEAD + POINTS + "DATASET POLYDATA\n", "line 7: expected one mesh, found \"polydata\""},
        {HEAD + "DATASET POLYDATA\nPOINTS 2 float\n0 0 0 1 0\n",
         "line 7: expected 6 values of points, found the end of the file"},
        {HEAD + "DATASET POLYDATA\nPOINTS 1 float\n0 0 zero\n", "line 6: expected 3 values of points, found \"zero\""},
        {HEAD + "DATASET POLYDATA\nPOINTS -1 float\n",
         "line 5: expected the number of points that the file has, found \"-1\""},
        {HEAD + "DATASET POLYDATA\nPOINTS 99999 float\n",
         "line 5: expected the number of points that the file has, found \"99999\""},
        {HEAD + "DATASET POLYDATA\nPOINTS 1 floats\n1 2 3\n", "line 5: expected a type of values, found \"floats\""},
        {HEAD + "DATASET POLYDATA\nPOINT 1 float\n", "line 5: expected the name of a section, found \"point\""},
        {HEAD + POINTS + "CELLS 1 4\n3 0 1\n", "line 9: expected 4 values of cells, found the end of the file"},
        {HEAD + POINTS + "CELLS 1 4\n4 0 1 2\n", "line 8: expected 1 cells in 4 numbers of cells, found 0"},
        {HEAD + POINTS + "CELLS 1 4\n2 0 1 2\n", "line 8: expected 4 numbers of cells, found cells in 3 of them"},
        {HEAD + POINTS + "CELLS 1 4\n3 0 1 3\nCELL_TYPES 1\n5\n",
         "line 10: expected cells of points below 3, found another one: 0"},
        {HEAD + POINTS + "CELLS 1 4\n3 0 1 2\n", "line 9: expected the types of 1 cells, found 0"},
        {HEAD + POINTS + "CELLS 1 4\n3 0 1 2\nCELL_TYPES 1\n99\n", "line 10: expected types of cells, found 99"},
        // A polyhedron of two faces, of which the second one is not there.
        {HEAD + POINTS + "CELLS 1 6\n5 2 3 0 1 2\nCELL_TYPES 1\n42\n",
         "line 10: expected cells of points below 3, found another one: 0"},
        {HEAD + POINTS + TRIANGLE + "POINT_DATA 3\nSCALARS s int 1\n1 2 3\n",
         "line 13: expected LOOKUP_TABLE, found \"1\""},
        {HEAD + POINTS + TRIANGLE + "POINT_DATA 3\nSCALARS s int 5\n",
         "line 12: expected up to four components, found \"5\""},
        {HEAD + POINTS + TRIANGLE + "POINT_DATA 3\nVECTORS v int\n1 2 3 4 5 6 7 8\n",
         "line 14: expected 9 values of v, found the end of the file"},
        {HEAD + POINTS + TRIANGLE + "FIELD f 2\na 1 1 int\n7\n",
         "line 14: expected 2 arrays, found the end of the file"},
        {HEAD + POINTS + TRIANGLE + "FIELD f 1\na 900 900 int\n7\n",
         "line 12: expected 900 times 900 values of a, found a file of 157 bytes"},
        {HEAD + "DATASET STRUCTURED_GRID\nDIMENSIONS 2 2 1\nPOINTS 3 int\n0 0 0 1 0 0 0 1 0\n",
         "line 8: expected 4 points, found 3"},
        {HEAD + "DATASET RECTILINEAR_GRID\nDIMENSIONS 2 1 1\nX_COORDINATES 2 int\n0 1\nY_COORDINATES 1 int\n0\n",
         "line 10: expected as many coordinates as the dimensions tell, found others"},
        {HEAD + "DATASET STRUCTURED_POINTS\nDIMENSIONS 2 x 1\n",
         "line 5: expected three numbers of nodes, found \"x\""},
        {HEAD + "DATASET STRUCTURED_POINTS\nDIMENSIONS 2 0 1\n",
         "line 5: expected three numbers of nodes, found \"0\""},
        {HEAD + "DATASET STRUCTURED_POINTS\nDIMENSIONS 2000 2000 2000\n",
         "line 6: expected at most 33554432 nodes of a grid, found more"},
        {HEAD + "DATASET STRUCTURED_POINTS\nDIMENSIONS 2 2 2\nORIGIN 0 0 x\n",
         "line 6: expected 3 values of the origin, found \"x\""},
    };
    for (const auto& [bytes, error] : cases) {
        EXPECT_EQ(check(bytes), error) << bytes;
    }
}

TEST_F(LegacyChecks, BinaryFilesTellBytes) {
    const std::string head = "# vtk DataFile Version 3.0\ntitle\nBINARY\nDATASET POLYDATA\nPOINTS 1 float\n";
    ASSERT_EQ(head.size(), 72u);
    EXPECT_EQ(check(head + std::string(11, '\0')), "line 5: expected 3 values of points, found 11 bytes");
    EXPECT_EQ(check(head + std::string(12, '\0')), "");
    EXPECT_EQ(check(head + std::string(12, '\0') + "\nPOLYGONS x"),
              "byte 94: expected the number of polygons that the file has, found \"x\"");
    const std::string polygons = head + std::string(12, '\0') + "\nPOLYGONS 1 2\n" + std::string(3, '\0') + '\1';
    EXPECT_EQ(check(polygons + std::string(4, '\0')), "");
    // Point 1 is one too many.
    EXPECT_EQ(check(polygons + std::string(3, '\0') + '\1'), "byte 97: expected points below 1 in polygons, found 1");
}

// Since version 5: where the nodes of each cell begin, and where those of the last one end.
TEST_F(LegacyChecks, OffsetsLeadThroughTheNodes) {
    const std::string head = "# vtk DataFile Version 5.1\ntitle\nASCII\n" + POINTS;
    const auto cells = [&](const std::string& offsets) {
        return head + "CELLS 2 3\nOFFSETS vtktypeint64\n" + offsets +
               "\nCONNECTIVITY vtktypeint64\n0 1 2\nCELL_TYPES 1\n5\n";
    };
    EXPECT_EQ(check(cells("0 3")), "");
    EXPECT_EQ(check(cells("0 2")), "line 9: expected offsets from 0 to 3 of cells, found others");
    EXPECT_EQ(check(cells("1 3")), "line 9: expected offsets from 0 to 3 of cells, found others");
    EXPECT_EQ(check(cells("3 0")), "line 9: expected offsets from 0 to 3 of cells, found others");
    EXPECT_EQ(check(head + "CELLS 1 4\n3 0 1 2\n"), "line 8: expected OFFSETS, found \"3\"");
}

TEST_F(LegacyChecks, AllSectionsAreKnown) {
    EXPECT_EQ(check(HEAD +
                    "FIELD FieldData 3\nTIME 1 1 double\n0.5\nMETADATA\nINFORMATION 0\n\nNULL_ARRAY\n"
                    "texts 1 2 string\none word\n\n" +
                    POINTS + "METADATA\nINFORMATION 0\n\n" + TRIANGLE +
                    "CELL_DATA 1\nscalars a int\nLOOKUP_TABLE default\n1\nTENSORS6 t float\n1 2 3 4 5 6\n"
                    "POINT_DATA 3\nCOLOR_SCALARS c 2\n0 0 0.5 1 1 1\nGLOBAL_IDS g vtkidtype\n4 5 6\n"
                    "LOOKUP_TABLE x 1\n0 0 0 1\nTEXTURE_COORDINATES u 2 float\n0 0 0 0 0 0\nNORMALS n float\n"
                    "0 0 1 0 0 1 0 0 1\n"),
              "");
    EXPECT_THAT(m_warnings, testing::IsEmpty());
}

TEST_F(LegacyChecks, ALastNumberWithoutALineEndIsTold) {
    EXPECT_EQ(check(HEAD + POINTS + "CELLS 1 4\n3 0 1 2\nCELL_TYPES 1\n5"), "");
    EXPECT_THAT(m_warnings,
                ElementsAre("the file ends without a line end; if it has been cut, its last number may be wrong"));
}

} // namespace
