#include "OrvImportVtk/EnSightValues.h"

#include "OrvImportVtk/EnSightCase.h"
#include "OrvImportVtk/EnSightFile.h"
#include "OrvImportVtk/EnSightMesh.h"
#include "Tests/Support/ScratchFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <vtkCellData.h>
#include <vtkDataArray.h>
#include <vtkPointData.h>
#include <vtkPointSet.h>

#include <cmath>
#include <fstream>

using namespace orv;
using namespace orv::imp::cae;
using orvtest::ScratchFolder;
using testing::ElementsAre;

namespace {

// Part 2 has three nodes, a triangle and then three points of two sections.
constexpr const char* MESH =
    "one\ntwo\nnode id off\nelement id off\npart\n2\nbody\ncoordinates\n3\n0 1 0\n0 0 1\n0 0 0\n"
    "point\n1\n1\ntria3\n1\n1 2 3\npoint\n2\n2\n3\n";

class EnSightValuesOf : public testing::Test {
protected:
    EnSightValuesOf() {
        std::ofstream(m_folder.path() + "/a.geo") << MESH;
        const std::unique_ptr<EnSightFile> file = EnSightFile::openMesh({m_folder.path() + "/a.geo"}, nullptr);
        EXPECT_TRUE(file && readEnSightMesh(file.get(), true, &m_parts));
    }

    // The error's text without the folder, or empty.
    std::string read(const std::string& text, ug::ResultMapping mapping, int componentCount = 1) {
        std::ofstream(m_folder.path() + "/a.val") << text;
        for (vtkDataSetAttributes* attributes : attributesOf()) {
            attributes->RemoveArray("v");
        }
        ug::Error error;
        const std::unique_ptr<EnSightFile> file =
            EnSightFile::openVariable({m_folder.path() + "/a.val"}, EnSightFile::ASCII, &error);
        if (file && readEnSightValues(file.get(), {"v", mapping, componentCount, {}}, m_parts)) {
            return "";
        }
        const std::string message = error.message().toStdString();
        return message.substr(message.find("a.val"));
    }

    // Of the part; -1 for what has none.
    std::vector<double> values(ug::ResultMapping mapping) {
        vtkDataArray* array = attributesOf()[mapping == ug::PER_NODE ? 0 : 1]->GetArray("v");
        std::vector<double> all;
        for (vtkIdType i = 0; array && i < array->GetNumberOfTuples(); ++i) {
            for (int c = 0; c < array->GetNumberOfComponents(); ++c) {
                const double value = array->GetComponent(i, c);
                all.push_back(std::isnan(value) ? -1 : value);
            }
        }
        return all;
    }

    std::vector<vtkDataSetAttributes*> attributesOf() {
        return {m_parts[0].data->GetPointData(), m_parts[0].data->GetCellData()};
    }

    ScratchFolder m_folder;
    std::vector<EnSightPart> m_parts;
};

TEST_F(EnSightValuesOf, TextsTellFilePlaceAndExpectation) {
    const struct {
        const char* text;
        const char* error;
    } cases[] = {
        {"", "a.val, line 1: expected a description, found the end of the file"},
        {"d\nparts\n", "a.val, line 2: expected \"part\", found \"parts\""},
        {"d\npart\n1\ncoordinates\n1 2 3\n", "a.val, line 2: expected a part of the mesh, found part 1"},
        {"d\npart\n2\nblock\n1 2 3\n",
         "a.val, line 4: expected \"coordinates\", alone or with \"undef\" or \"partial\", found \"block\""},
        {"d\npart\n2\n", "a.val, line 2: expected \"coordinates\", alone or with \"undef\" or \"partial\", found \"\""},
        {"d\npart\n2\ncoordinates\n1 2\n",
         "a.val, line 4: expected 3 numbers of values, found room for 2 numbers in the file"},
        {"d\npart\n2\ncoordinates\n1 2\npart\n2\n", "a.val, line 6: expected 3 numbers of values, found \"part\""},
        {"d\npart\n2\ncoordinates\n1 2 3 4\n", "a.val, line 5: expected the end of the line, found \"4\""},
        {"d\npart\n2\ncoordinates\n1 2 3\n4\n", "a.val, line 6: expected \"part\", found \"4\""},
        {"d\npart\n2\ncoordinates\n1 2 3\npart\n2\ncoordinates\n1 2 3\n",
         "a.val, line 6: expected each part once, found part 2 again"},
        {"d\npart\n2\ncoordinates partial\n1\n4\n7\n", "a.val, line 6: expected 1 numbers of indexes, found \"4\""},
        {"d\npart\n2\ncoordinates partial\n9\n1\n7\n",
         "a.val, line 5: expected 9 numbers of indexes, found room for 2 numbers in the file"},
    };
    for (const auto& [text, error] : cases) {
        EXPECT_EQ(read(text, ug::PER_NODE), error);
    }
    EXPECT_EQ(read("d\npart\n2\nquad4\n1\n", ug::PER_ELEMENT),
              "a.val, line 4: expected elements that part 2 has, found \"quad4\"");
    EXPECT_EQ(read("d\npart\n2\ntria3\n1\ntria3\n1\n", ug::PER_ELEMENT),
              "a.val, line 6: expected elements that part 2 has, found \"tria3\"");
}

TEST_F(EnSightValuesOf, NodesAllOrSome) {
    ASSERT_EQ(read("d\n\npart\n2\ncoordinates\n1\n2\n3\n", ug::PER_NODE), "");
    EXPECT_THAT(values(ug::PER_NODE), ElementsAre(1, 2, 3));
    ASSERT_EQ(read("d\npart\n2\ncoordinates undef\n9\n1\n9\n3\n", ug::PER_NODE), "");
    EXPECT_THAT(values(ug::PER_NODE), ElementsAre(1, -1, 3));
    ASSERT_EQ(read("d\npart\n2\ncoordinates partial\n2\n3\n1\n7\n8\n", ug::PER_NODE), "");
    EXPECT_THAT(values(ug::PER_NODE), ElementsAre(8, -1, 7));
    ASSERT_EQ(read("d\n", ug::PER_NODE), "");
    EXPECT_THAT(values(ug::PER_NODE), ElementsAre());
}

// One component after the other, and XX YY ZZ XY XZ YZ.
TEST_F(EnSightValuesOf, ComponentsFollowOneAnother) {
    ASSERT_EQ(read("d\npart\n2\ncoordinates\n1 2 3\n4 5 6\n7 8 9\n", ug::PER_NODE, 3), "");
    EXPECT_THAT(values(ug::PER_NODE), ElementsAre(1, 4, 7, 2, 5, 8, 3, 6, 9));
    ASSERT_EQ(read("d\npart\n2\ntria3\n1\n2\n3\n4\n5\n6\n", ug::PER_ELEMENT, 6), "");
    const std::vector<double> all = values(ug::PER_ELEMENT);
    EXPECT_THAT(std::vector<double>(all.begin() + 6, all.begin() + 12), ElementsAre(1, 2, 3, 4, 6, 5));
}

// The cells are the point, the triangle and the other points, whatever the order of the values.
TEST_F(EnSightValuesOf, SectionsOfElementsInAnyOrder) {
    ASSERT_EQ(read("d\npart\n2\ntria3\n5\npoint\n6\npoint partial\n1\n2\n7\n", ug::PER_ELEMENT), "");
    EXPECT_THAT(values(ug::PER_ELEMENT), ElementsAre(6, 5, -1, 7));
    ASSERT_EQ(read("d\npart\n2\npoint\n6\n", ug::PER_ELEMENT), "");
    EXPECT_THAT(values(ug::PER_ELEMENT), ElementsAre(6, -1, -1, -1));
}

} // namespace
