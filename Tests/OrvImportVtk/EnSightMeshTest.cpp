#include "OrvImportVtk/EnSightMesh.h"

#include "OrvImportVtk/EnSightCase.h"
#include "OrvImportVtk/EnSightFile.h"
#include "Tests/Support/ScratchFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <vtkPointSet.h>

#include <cstring>
#include <fstream>

using namespace orv;
using namespace orv::imp::cae;
using orvtest::ScratchFolder;

namespace {

// Lines 1 to 8; the ninth tells how many nodes there are, and then come x, y and z.
const std::string HEAD = "one\ntwo\nnode id off\nelement id off\npart\n1\nbody\ncoordinates\n";
const std::string TRIANGLE = "3\n0\n1\n0\n0\n0\n1\n0\n0\n0\n"; // Lines 9 to 18.

class EnSightMeshes : public testing::Test {
protected:
    // The error's text without the folder, or empty. It is the same whether the whole mesh is read or its structure.
    std::string read(const std::string& bytes, bool isWhole = true) {
        const std::string path = m_folder.path() + "/a.geo";
        std::ofstream(path, std::ios::binary) << bytes;
        ug::Error error;
        m_parts.clear();
        const std::unique_ptr<EnSightFile> file = EnSightFile::openMesh({path}, &error);
        if (file && readEnSightMesh(file.get(), isWhole, &m_parts)) {
            return "";
        }
        const std::string text = error.message().toStdString();
        return text.substr(text.find("a.geo"));
    }

    ScratchFolder m_folder;
    std::vector<EnSightPart> m_parts;
};

TEST_F(EnSightMeshes, TextsTellFilePlaceAndExpectation) {
    const struct {
        std::string text;
        const char* error;
    } cases[] = {
        {"", "a.geo, line 1: expected a description, found the end of the file"},
        {"one\n", "a.geo, line 2: expected a description, found the end of the file"},
        {"one\ntwo\nnode ids\n",
         "a.geo, line 3: expected \"node id\" with \"off\", \"given\", \"assign\" or \"ignore\", found \"node ids\""},
        {"one\ntwo\nnode id off\nelement id none\n",
         "a.geo, line 4: expected \"element id\" with \"off\", \"given\", \"assign\" or \"ignore\", found \"element id "
         "none\""},
        {"one\ntwo\nnode id off\nelement id off\n", "a.geo, line 4: expected a part, found none"},
        {"one\ntwo\nnode id off\nelement id off\nparts\n", "a.geo, line 5: expected \"part\", found \"parts\""},
        {"one\ntwo\nnode id off\nelement id off\npart\n0\n",
         "a.geo, line 6: expected 1 numbers of a part, found \"0\""},
        {"one\ntwo\nnode id off\nelement id off\npart\n",
         "a.geo, line 5: expected 1 numbers of a part, found room for 0 numbers in the file"},
        {"one\ntwo\nnode id off\nelement id off\npart\n1\nbody\ncoordinate\n",
         "a.geo, line 8: expected \"coordinates\" or \"block\", found \"coordinate\""},
        {HEAD + "-1\n", "a.geo, line 9: expected 1 numbers of number of coordinates, found \"-1\""},
        {HEAD + "99999999999\n", "a.geo, line 9: expected 1 numbers of number of coordinates, found \"99999999999\""},
        {HEAD + "2147483647\n0\n",
         "a.geo, line 9: expected 6442450941 numbers of coordinates, found room for 1 numbers in the file"},
        {HEAD + "1\n0\n0\nzero\n", "a.geo, line 12: expected 1 numbers of z coordinates, found \"zero\""},
        {HEAD + TRIANGLE + "tria4\n1\n1 2 3\n",
         "a.geo, line 19: expected a type of elements, or \"part\", found \"tria4\""},
        {HEAD + TRIANGLE + "tria3\n1\n1 2 3\npart\n1\nagain\n",
         "a.geo, line 22: expected each part once, found part 1 again"},
        {HEAD + TRIANGLE + "tria3\n2\n1 2 3\n",
         "a.geo, line 20: expected 6 numbers of tria3, found room for 3 numbers in "
         "the file"},
        {HEAD + TRIANGLE + "nsided\n1\n900000000\n1 2 3\n",
         "a.geo, line 21: expected 900000000 numbers of nsided, found room for 3 numbers in the file"},
    };
    for (const auto& [text, error] : cases) {
        EXPECT_EQ(read(text, true), error);
        if (text.find("zero") == std::string::npos) {
            EXPECT_EQ(read(text, false), error);
        }
    }
    EXPECT_EQ(read(HEAD + TRIANGLE + "tria3\n1\n1 2 4\n"), "a.geo, line 21: expected 3 numbers of tria3, found \"4\"");
    EXPECT_EQ(read(HEAD + TRIANGLE + "tria3\n1\n1 2 3 3\n"),
              "a.geo, line 21: expected the end of the line, found \"3\"");
    EXPECT_EQ(read(HEAD + TRIANGLE + "tria3\n1\n1 2 3"),
              "a.geo, line 21: expected 3 numbers of tria3, found \"3\" without a line end");
}

TEST_F(EnSightMeshes, BlocksAreBounded) {
    const std::string head = "one\ntwo\nnode id off\nelement id off\npart\n1\nbody\nblock ";
    EXPECT_EQ(read(head + "uniform\n2000 2000 2000\n0\n0\n0\n1\n1\n1\n"),
              "a.geo, line 8: expected a block of at most 2147483647 nodes, found more");
    EXPECT_EQ(read(head + "uniform\n1000 1000 1000\n0\n0\n0\n1\n1\n1\n"),
              "a.geo, line 8: expected a block of at most 33554432 nodes that are not listed, found 1000000000");
    EXPECT_EQ(read(head + "curvilinear\n100 100 100\n0\n0\n0\n1\n1\n1\n"),
              "a.geo, line 9: expected 1000000 numbers of x coordinates, found room for 6 numbers in the file");
    EXPECT_EQ(read(head + "range\n3 3 3\n1 2 1 4 1 1\n"),
              "a.geo, line 8: expected ranges within the block, found 1 to 4 of 3");
    EXPECT_EQ(read(head + "uniform\n2 0 2\n"), "a.geo, line 9: expected 3 numbers of nodes in i, j and k, found \"0\"");
    EXPECT_EQ(read(head + "uniform\n2 2 2\n0\n0\n0\n1\n1\n1\n"), "");
    EXPECT_EQ(m_parts[0].data->GetNumberOfCells(), 1);
}

// Blank lines and comments between numbers, several numbers on a line, a name of nothing.
TEST_F(EnSightMeshes, LinesAreReadAsPeopleWriteThem) {
    ASSERT_EQ(
        read("one\r\ntwo\r\nnode id off\r\nelement id assign\r\npart\r\n  7\r\n\r\ncoordinates\r\n3\r\n0 1 0\r\n\r\n"
             "# y\r\n0 0 1\r\n0 0 0\r\n\r\ntria3\r\n1\r\n1 2 3\r\n"),
        "");
    ASSERT_EQ(m_parts.size(), 1u);
    EXPECT_EQ(m_parts[0].number, 7);
    EXPECT_EQ(m_parts[0].name, "part 7");
    EXPECT_EQ(m_parts[0].data->GetNumberOfPoints(), 3);
    EXPECT_EQ(m_parts[0].data->GetNumberOfCells(), 1);
}

TEST_F(EnSightMeshes, TheStructureAloneHasNoData) {
    ASSERT_EQ(read(HEAD + TRIANGLE + "tria3\n1\n1 2 3\n", false), "");
    EXPECT_EQ(m_parts[0].data, nullptr);
    ASSERT_EQ(m_parts[0].sections.size(), 1u);
    EXPECT_EQ(m_parts[0].sections[0].type, "tria3");
    EXPECT_EQ(m_parts[0].sections[0].elementCount, 1u);
}

std::string text80(std::string text) {
    text.resize(80);
    return text;
}

std::string int32(int number) {
    std::string bytes(4, '\0');
    std::memcpy(bytes.data(), &number, 4);
    return bytes;
}

std::string record(const std::string& bytes) {
    return int32(int(bytes.size())) + bytes + int32(int(bytes.size()));
}

TEST_F(EnSightMeshes, BinaryFilesTellBytes) {
    const std::string head = text80("C Binary") + text80("one") + text80("two") + text80("node id off") +
                             text80("element id off") + text80("part") + int32(1) + text80("body") +
                             text80("coordinates");
    EXPECT_EQ(read(head.substr(0, 200)), "a.geo, byte 160: expected a description, found the end of the file");
    // Eight texts and a number of four bytes come before the count.
    EXPECT_EQ(read(head + int32(5)),
              "a.geo, byte 648: expected 15 numbers of coordinates, found room for 0 numbers in the file");
    EXPECT_EQ(read(head + int32(-1)),
              "a.geo, byte 648: expected 1 numbers of number of coordinates, found -1 where 0 to 2147483647 are");
    const std::string point = int32(1) + int32(0) + int32(0) + int32(0);
    EXPECT_EQ(read(head + point + text80("point") + int32(1) + int32(2)),
              "a.geo, byte 748: expected 1 numbers of point, found 2 where 1 to 1 are");
    EXPECT_EQ(read(head + point + text80("point") + int32(1) + int32(1) + "more"),
              "a.geo, byte 748: expected a part or elements, found the end of the file");
    EXPECT_EQ(read(head + point + text80("point") + int32(1) + int32(1)), "");
}

TEST_F(EnSightMeshes, RecordsOfFortranHaveTheirSizeTwice) {
    const std::string head = record(text80("Fortran Binary")) + record(text80("one")) + record(text80("two")) +
                             record(text80("node id off")) + record(text80("element id off")) + record(text80("part")) +
                             record(int32(1)) + record(text80("body")) + record(text80("coordinates"));
    EXPECT_EQ(read(head + record(int32(1)) + record(int32(0)) + record(int32(0)) + record(int32(0))), "");
    // A list may be in any number of records, also with others.
    EXPECT_EQ(read(head + record(int32(1)) + record(int32(0) + int32(0) + int32(0))), "");
    EXPECT_EQ(read(head + record(int32(2)) + record(int32(0)) + record(int32(0) + int32(0) + int32(0) + int32(0)) +
                   record(int32(0)) + record("")),
              "a.geo, byte 784: expected a part or elements, found the end of the file");
    EXPECT_EQ(read(head + int32(4) + int32(1) + int32(5)), "a.geo, byte 724: expected 3 numbers of coordinates, found "
                                                           "room for 1 numbers in the file");
    EXPECT_EQ(read(record(text80("Fortran Binary")) + record("one")),
              "a.geo, byte 88: expected a description of 80 bytes, found a record of 3");
    EXPECT_EQ(read(record(text80("Fortran Binary")) + int32(80) + text80("one") + int32(81)),
              "a.geo, byte 172: expected the end of a record of 80 bytes");
    EXPECT_EQ(read(record(text80("Fortran Binary")) + int32(900) + text80("one")),
              "a.geo, byte 88: expected a description, found a record of 900 bytes where the file has less");
}

} // namespace
