#include "Tests/OrvImportVtk/LegacySamples.h"

using namespace orv;
using namespace orv::imp::cae;
using namespace orvtest;

namespace {

using LegacyIndexes = LegacyFiles;

TEST_F(LegacyIndexes, TextsTellThePlaceAndWhatWasExpected) {
    const struct {
        std::string bytes;
        const char* error;
    } cases[] = {
        {"", "line 1: expected \"# vtk DataFile Version\" and a number, found the end of the file"},
        {"vtk\n", "line 1: expected \"# vtk DataFile Version\" and a number, found \"vtk\""},
        {"# vtk DataFile Version 3.0\ntitle\nTEXT\n", "line 3: expected \"ASCII\" or \"BINARY\", found \"text\""},
        {LEGACY_HEAD, "holds no mesh"},
        {LEGACY_HEAD + "DATASET TABLE\n", "line 4: expected one mesh, found \"table\""},
        {LEGACY_HEAD + LEGACY_POINTS + "DATASET POLYDATA\n", "line 7: expected one mesh, found \"polydata\""},
        {LEGACY_HEAD + "DATASET POLYDATA\nPOINTS 2 float\n0 0 0 1 0\n",
         "line 7: expected 6 values of points, found the end of the file"},
        {LEGACY_HEAD + "DATASET POLYDATA\nPOINTS 1 float\n0 0 zero\n",
         "line 6: expected 3 values of points, found \"zero\""},
        {LEGACY_HEAD + "DATASET POLYDATA\nPOINTS -1 float\n",
         "line 5: expected the number of points that the file has, found \"-1\""},
        {LEGACY_HEAD + "DATASET POLYDATA\nPOINTS 99999 float\n",
         "line 5: expected the number of points that the file has, found \"99999\""},
        {LEGACY_HEAD + "DATASET POLYDATA\nPOINTS 1 floats\n1 2 3\n",
         "line 5: expected a type of values, found \"floats\""},
        {LEGACY_HEAD + "DATASET POLYDATA\nPOINT 1 float\n", "line 5: expected the name of a section, found \"point\""},
        {LEGACY_HEAD + LEGACY_POINTS + "CELLS 1 4\n3 0 1\n",
         "line 9: expected 4 values of cells, found the end of the file"},
        {LEGACY_HEAD + LEGACY_POINTS + "CELLS 1 4\n3 0 1 2\n", "line 9: expected the types of 1 cells, found 0"},
        {LEGACY_HEAD + LEGACY_POINTS + LEGACY_TRIANGLE + "POINT_DATA 3\nSCALARS s int 1\n1 2 3\n",
         "line 13: expected LOOKUP_TABLE, found \"1\""},
        {LEGACY_HEAD + LEGACY_POINTS + LEGACY_TRIANGLE + "POINT_DATA 3\nSCALARS s int 5\n",
         "line 12: expected up to four components, found \"5\""},
        {LEGACY_HEAD + LEGACY_POINTS + LEGACY_TRIANGLE + "POINT_DATA 3\nVECTORS v int\n1 2 3 4 5 6 7 8\n",
         "line 14: expected 9 values of v, found the end of the file"},
        {LEGACY_HEAD + LEGACY_POINTS + LEGACY_TRIANGLE + "FIELD f 2\na 1 1 int\n7\n",
         "line 14: expected 2 arrays, found the end of the file"},
        {LEGACY_HEAD + LEGACY_POINTS + LEGACY_TRIANGLE + "FIELD f 1\na 900 900 int\n7\n",
         "line 12: expected 900 times 900 values of a, found a file of 157 bytes"},
        {LEGACY_HEAD + "DATASET STRUCTURED_GRID\nDIMENSIONS 2 2 1\nPOINTS 3 int\n0 0 0 1 0 0 0 1 0\n",
         "line 8: expected 4 points, found 3"},
        {LEGACY_HEAD + "DATASET RECTILINEAR_GRID\nDIMENSIONS 2 1 1\nX_COORDINATES 2 int\n0 1\nY_COORDINATES 1 int\n0\n",
         "line 10: expected as many coordinates as the dimensions tell, found others"},
        {LEGACY_HEAD + "DATASET STRUCTURED_POINTS\nDIMENSIONS 2 x 1\n",
         "line 5: expected three numbers of nodes, found \"x\""},
        {LEGACY_HEAD + "DATASET STRUCTURED_POINTS\nDIMENSIONS 2 0 1\n",
         "line 5: expected three numbers of nodes, found \"0\""},
        {LEGACY_HEAD + "DATASET STRUCTURED_POINTS\nDIMENSIONS 2000 2000 2000\n",
         "line 6: expected at most 33554432 nodes of a grid, found more"},
        {LEGACY_HEAD + "DATASET STRUCTURED_POINTS\nDIMENSIONS 2 2 2\nORIGIN 0 0 x\n",
         "line 6: expected 3 values of the origin, found \"x\""},
    };
    for (const auto& [bytes, error] : cases) {
        EXPECT_EQ(index(bytes), error) << bytes;
    }
}

TEST_F(LegacyIndexes, BinaryFilesTellBytes) {
    const std::string head = "# vtk DataFile Version 3.0\ntitle\nBINARY\nDATASET POLYDATA\nPOINTS 1 float\n";
    ASSERT_EQ(head.size(), 72u);
    EXPECT_EQ(index(head + std::string(11, '\0')), "line 5: expected 3 values of points, found 11 bytes");
    EXPECT_EQ(index(head + std::string(12, '\0')), "");
    EXPECT_EQ(m_index.points.offset, 72);
    EXPECT_EQ(m_index.points.count, 3);
    EXPECT_EQ(index(head + std::string(12, '\0') + "\nPOLYGONS x"),
              "byte 94: expected the number of polygons that the file has, found \"x\"");
}

TEST_F(LegacyIndexes, ListsOfVersion5HaveTwoBlocks) {
    const std::string head = "# vtk DataFile Version 5.1\ntitle\nASCII\n" + LEGACY_POINTS;
    EXPECT_EQ(index(head + "CELLS 1 4\n3 0 1 2\n"), "line 8: expected OFFSETS, found \"3\"");
    EXPECT_EQ(index(head + "CELLS 2 3\nOFFSETS vtktypeint64\n0 3\nNODES vtktypeint64\n0 1 2\n"),
              "line 10: expected CONNECTIVITY, found \"nodes\"");
    EXPECT_EQ(index(head + "CELLS 2 3\nOFFSETS int\n0 3\nCONNECTIVITY int\n0 1 2\nCELL_TYPES 1\n5\n"), "");
    EXPECT_EQ(m_index.cells[LegacyIndex::CELLS].count, 1);
    EXPECT_EQ(m_index.cells[LegacyIndex::CELLS].offsets->count, 2);
    EXPECT_EQ(m_index.cells[LegacyIndex::CELLS].nodes.count, 3);
    EXPECT_EQ(index(head + "CELLS 0 0\nOFFSETS int\nCONNECTIVITY int\nCELL_TYPES 0\n"), "");
    EXPECT_EQ(m_index.cells[LegacyIndex::CELLS].count, 0);
}

TEST_F(LegacyIndexes, AllSectionsAreKnown) {
    EXPECT_EQ(index(LEGACY_HEAD +
                    "FIELD FieldData 3\nTIME 1 1 double\n0.5\nMETADATA\nINFORMATION 0\n\nNULL_ARRAY\n"
                    "texts 1 2 string\none word\n\n" +
                    LEGACY_POINTS + "METADATA\nINFORMATION 0\n\n" + LEGACY_TRIANGLE +
                    "CELL_DATA 1\nscalars a int\nLOOKUP_TABLE default\n1\nTENSORS6 t float\n1 2 3 4 5 6\n"
                    "POINT_DATA 3\nCOLOR_SCALARS c 2\n0 0 0.5 1 1 1\nGLOBAL_IDS g vtkidtype\n4 5 6\n"
                    "LOOKUP_TABLE x 1\n0 0 0 1\nTEXTURE_COORDINATES u 2 float\n0 0 0 0 0 0\nNORMALS n float\n"
                    "0 0 1 0 0 1 0 0 1\nFIELD more 3\nvtkGhostType 1 3 unsigned_char\n0 0 1\nwords 1 3 string\n"
                    "a\nb\nc\na%20%x%5 1 3 bit\n1 0 1\n"),
              "");
    const auto array = [&](std::size_t i) { return m_index.arrays.at(i).array; };
    const struct {
        const char* name;
        ug::ResultMapping mapping;
        int componentCount;
    } expected[] = {{"a", ug::PER_ELEMENT, 1},  {"t", ug::PER_ELEMENT, 6}, {"c", ug::PER_NODE, 2},
                    {"u", ug::PER_NODE, 2},     {"n", ug::PER_NODE, 3},    {"words", ug::PER_NODE, 0},
                    {"a %x%5", ug::PER_NODE, 1}};
    ASSERT_EQ(m_index.arrays.size(), std::size(expected));
    for (std::size_t i = 0; i < std::size(expected); ++i) {
        EXPECT_EQ(array(i).name, expected[i].name);
        EXPECT_EQ(array(i).mapping, expected[i].mapping) << array(i).name;
        EXPECT_EQ(array(i).componentCount, expected[i].componentCount) << array(i).name;
        EXPECT_EQ(m_index.arrays[i].isColour, array(i).name == "c");
    }
    ASSERT_EQ(m_index.meshArrays.size(), 2u);
    EXPECT_EQ(m_index.meshArrays[0].array.name, "g");
    EXPECT_TRUE(m_index.meshArrays[0].isGlobalIds);
    EXPECT_EQ(m_index.meshArrays[1].array.name, "vtkGhostType");
    EXPECT_FALSE(m_index.meshArrays[1].isGlobalIds);
    EXPECT_EQ(m_index.title, "title");
    EXPECT_FALSE(m_index.endsWithinLine);
}

TEST_F(LegacyIndexes, OfArraysWithOneNameTheLastCounts) {
    ASSERT_EQ(index(LEGACY_HEAD + LEGACY_POINTS + LEGACY_TRIANGLE +
                    "CELL_DATA 1\nVECTORS a int\n1 2 3\nPOINT_DATA 3\nVECTORS a int\n1 2 3 4 5 6 7 8 9\nFIELD f 1\n"
                    "a 1 3 int\n1 2 3\n"),
              "");
    ASSERT_EQ(m_index.arrays.size(), 2u);
    EXPECT_EQ(m_index.arrays[0].array.componentCount, 3);
    EXPECT_EQ(m_index.arrays[1].array.componentCount, 1);
}

TEST_F(LegacyIndexes, ALastNumberWithoutALineEndIsNoted) {
    EXPECT_EQ(index(LEGACY_HEAD + LEGACY_POINTS + "CELLS 1 4\n3 0 1 2\nCELL_TYPES 1\n5"), "");
    EXPECT_TRUE(m_index.endsWithinLine);
}

} // namespace
