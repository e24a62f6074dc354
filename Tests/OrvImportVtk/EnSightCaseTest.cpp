#include "OrvImportVtk/EnSightCase.h"
#include "Tests/Support/ScratchFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>

using namespace orv;
using namespace orv::imp::cae;
using orvtest::ScratchFolder;
using testing::ElementsAre;

namespace {

constexpr const char* HEAD = "FORMAT\ntype: ensight gold\nGEOMETRY\n"; // Three lines.

class EnSightCases : public testing::Test {
protected:
    // The error's text, or empty.
    std::string read(const std::string& text) {
        std::ofstream(m_folder.path() + "/a.case") << text;
        m_case = EnSightCase();
        ug::Error error;
        return m_case.read(m_folder.path() + "/a.case", &error) ? "" : error.message().toStdString();
    }

    std::string inFolder(const std::string& name) const {
        return m_folder.path() + "/" + name;
    }

    std::string variableFile(std::size_t variable, double time) const {
        const std::optional<EnSightPlace> place = m_case.place(m_case.variables[variable], time);
        return place ? place->filename.substr(m_folder.path().size() + 1) +
                           (place->step ? " step " + std::to_string(*place->step) : "")
                     : "none";
    }

    ScratchFolder m_folder;
    EnSightCase m_case;
};

TEST_F(EnSightCases, WhatDoesNotFitIsToldWithItsLine) {
    const struct {
        const char* text;
        const char* error;
    } cases[] = {
        {"", "is no EnSight Gold case"},
        {"FORMAT\n", "is no EnSight Gold case"},
        {"anything\n", "line 1: expected the section FORMAT, found \"anything\""},
        {"model: a\n", "line 1: expected the section FORMAT, found \"model: a\""},
        {"FORMAT\ntype: ensight\n", "line 2: expected \"type: ensight gold\", found \"type: ensight\""},
        {"FORMAT\ntype: ensight gold\n", "names no geometry"},
        {"FORMAT\ntype: ensight gold\nGEOMETRY\nmodel:\n",
         "line 4: expected a name or number behind \"model\", found \"model:\""},
        {"FORMAT\ntype: ensight gold\nGEOMETRY\nmodel: x y g\n",
         "line 4: expected a file of the model, found \"model: x y g\""},
        {"FORMAT\ntype: ensight gold\nGEOMETRY\nmodel: 1 2 3 g\n",
         "line 4: expected a file of the model, found \"model: 1 2 3 g\""},
        {"FORMAT\ntype: ensight gold\nGEOMETRY\nmodell: g\n", "line 4: expected \"model: file\", found \"modell: g\""},
        {"FORMAT\ntype: ensight gold\nGEOMETRY\nmodel: g changing_geometry_per_part\n",
         "line 4: meshes with parts that change by themselves (changing_geometry_per_part) cannot be read"},
        {"FORMAT\ntype: ensight gold\nGEOMETRY\nmodel: g change_coords_only -1\n",
         "line 4: expected a step behind \"change_coords_only\", found \"model: g change_coords_only -1\""},
    };
    for (const auto& [text, error] : cases) {
        EXPECT_EQ(read(text), error) << text;
    }
    const struct {
        const char* lines; ///< From line 5 on.
        const char* error;
    } sections[] = {
        {"VARIABLE\nscalar per nod: a b\n", "line 6: expected the kind of a variable, found \"scalar per nod: a b\""},
        {"VARIABLE\nscalar per node: a\n", "line 6: expected \"scalar per node: [time set] [file set] name file\", "
                                           "found \"scalar per node: a\""},
        {"VARIABLE\nscalar per node: 1 a b\n", "line 6: expected a time set that the case file has"},
        {"VARIABLE\nscalar per node: a b*\n", "line 6: expected a time set that the case file has"},
        {"VARIABLE\nscalar per node: 1 4 a b\nTIME\ntime set: 1\nnumber of steps: 1\ntime values: 0\n",
         "line 6: expected a file set that the case file has"},
        {"VARIABLE\nscalar per node: 1 a b*\nTIME\ntime set: 1\nnumber of steps: 1\ntime values: 0\n",
         "line 6: expected a time set with numbers of files"},
        {"TIME\nnumber of steps: 2\n", "line 6: expected \"time set: number\", found \"number of steps: 2\""},
        {"TIME\ntime set: x\n",
         "line 6: expected the number of a time set that has not been there, found \"time set: x\""},
        {"TIME\ntime set: 1\ntime set: 1\n",
         "line 7: expected the number of a time set that has not been there, found \"time set: 1\""},
        {"TIME\ntime set: 1\nnumber of steps: 99999999999999\n",
         "line 7: expected a whole number, found \"number of steps: 99999999999999\""},
        {"TIME\ntime set: 1\nnumber of steps: 0\n",
         "line 7: expected a line of a time set, found \"number of steps: 0\""},
        {"TIME\ntime set: 1\nnumber of steps: 2\ntime values: 0\n",
         "line 6: expected a time set of 2 steps, found 1 times and 0 numbers of files"},
        {"TIME\ntime set: 1\nnumber of steps: 1\nfilename numbers: 1 2\ntime values: 0\n",
         "line 6: expected a time set of 1 steps, found 1 times and 2 numbers of files"},
        {"TIME\ntime set: 1\nnumber of steps: 1\ntime values: now\n",
         "line 8: expected numbers, found \"time values: now\""},
        {"TIME\ntime set: 1\nnumber of steps: 1\ntime values: inf\n",
         "line 8: expected numbers, found \"time values: inf\""},
        {"TIME\ntime set: 1\nnumber of steps: 1\ntime values file: gone\n",
         "line 8: expected a file of numbers, found \"time values file: gone\""},
        {"TIME\nnothing\n", "line 6: expected a line of an EnSight Gold case, found \"nothing\""},
        {"FILE\nnumber of steps: 1\n", "line 6: expected a line of a file set, found \"number of steps: 1\""},
        {"FILE\nfile set: a\n", "line 6: expected a whole number, found \"file set: a\""},
        {"VARIABLE\nscalar per node: 1 1 a b\nTIME\ntime set: 1\nnumber of steps: 2\ntime values: 0 1\nFILE\nfile set: "
         "1\nnumber of steps: 1\n",
         "line 6: expected a file set with files for 2 steps"},
        {"VARIABLE\nscalar per node: 1 1 a b*\nTIME\ntime set: 1\nnumber of steps: 1\ntime values: 0\nFILE\nfile set: "
         "1\nnumber of steps: 1\n",
         "line 6: expected a file set with files for 1 steps"},
    };
    for (const auto& [lines, error] : sections) {
        EXPECT_EQ(read(std::string(HEAD) + "model: g\n" + lines), error) << lines;
    }
}

TEST_F(EnSightCases, WhatIsPassedOverIsTold) {
    ASSERT_EQ(read(std::string(HEAD) + "model: g\nmeasured: drops\nmatch: m\n"
                                       "VARIABLE\nconstant per case: Load 1\n2 3\nconstant per case: 1 Force 4 5\n"
                                       "constant per case file: 1 Depth depth.txt\n"
                                       "complex vector per element: 1 Wave re im 50\nscalar per measured node: Size s\n"
                                       "scalar per node: T t\nscalar per node: T other\nscalar per element: T t\n"
                                       "MATERIAL\nmaterial id numbers: 1\n2\nBLOCK_CONTINUATION\nnumber of sets: 1\n"
                                       "SCRIPTS\nmetadata: a.xml\n"),
              "");
    EXPECT_THAT(m_case.warnings,
                ElementsAre("the geometry 'measured' is left out", "the geometry 'match' is left out",
                            "variable 'Load' is left out: it is a constant per case",
                            "variable 'Force' is left out: it is a constant per case",
                            "variable 'Depth' is left out: it is a constant per case file",
                            "variable 'Wave' is left out: it is a complex vector per element",
                            "variable 'Size' is left out: it is a scalar per measured node",
                            "variable 'T' is left out: another one has its name", "the section MATERIAL is left out",
                            "the section BLOCK_CONTINUATION is left out"));
    EXPECT_EQ(m_case.variables.size(), 2u);
}

// Comments, carriage returns, blanks, quotes; and lists that go on.
TEST_F(EnSightCases, LinesAreReadAsPeopleWriteThem) {
    ASSERT_EQ(read("# a case\r\nFORMAT\r\n\r\n  type:   ensight   gold # yes\r\nGEOMETRY\r\nmodel: \"my mesh.geo\"\r\n"
                   "VARIABLE\r\ntensor asym per element: 1 \"T\" /abs/t.**\r\nTIME\r\ntime set: 1 of all\r\n"
                   "number of steps:2\r\nfilename numbers:\r\n3\r\n4\r\ntime values:\r\n 1e0 \r\n 2e0\r\n"),
              "");
    EXPECT_EQ(m_case.mesh.name, inFolder("my mesh.geo"));
    EXPECT_EQ(m_case.variables[0].name, "T");
    EXPECT_EQ(m_case.variables[0].componentCount, 9);
    EXPECT_EQ(m_case.variables[0].mapping, ug::PER_ELEMENT);
    EXPECT_EQ(m_case.place(m_case.variables[0], 2)->filename, "/abs/t.04");
    EXPECT_THAT(m_case.times(), ElementsAre(1, 2));
}

TEST_F(EnSightCases, NumbersOfFilesComeFromTheTimeSet) {
    std::ofstream(inFolder("times.txt")) << "5\n6 7\n";
    ASSERT_EQ(read(std::string(HEAD) + "model: 2 g***/m*\nVARIABLE\nscalar per node: 1 a a.*\n"
                                       "scalar per node: 3 b b**\nscalar per node: c c\nscalar per node: 3 d d\n"
                                       "TIME\ntime set: 1\nnumber of steps: 3\nfilename start number: 2\n"
                                       "filename increment: 5\ntime values: 0 1 2\n"
                                       "time set: 2\nnumber of steps: 2\nfilename numbers: 8 110\ntime values: 1 3\n"
                                       "time set: 3\nnumber of steps: 3\nfilename start number: 99\n"
                                       "time values file: times.txt\n"),
              "");
    EXPECT_THAT(m_case.times(), ElementsAre(0, 1, 2, 3, 5, 6, 7)); // Sets that nobody refers to do not count.
    EXPECT_EQ(variableFile(0, 0), "a.2");
    EXPECT_EQ(variableFile(0, 2), "a.12");
    EXPECT_EQ(variableFile(0, 3), "none");
    EXPECT_EQ(variableFile(1, 5), "b99");
    EXPECT_EQ(variableFile(1, 6), "b100");
    EXPECT_EQ(variableFile(2, 7), "c");
    EXPECT_EQ(variableFile(3, 0), "d"); // It is the same for all times.
    EXPECT_EQ(m_case.meshPlace(0).filename, inFolder("g008/m8"));
    EXPECT_EQ(m_case.meshPlace(2.5).filename, inFolder("g008/m8"));
    EXPECT_EQ(m_case.meshPlace(3).filename, inFolder("g110/m110"));
    EXPECT_EQ(m_case.meshPlace(9).filename, inFolder("g110/m110"));
    EXPECT_FALSE(m_case.hasOneMesh());
}

TEST_F(EnSightCases, FileSetsHoldSeveralStepsInAFile) {
    ASSERT_EQ(read(std::string(HEAD) + "model: 1 1 g*\nVARIABLE\nscalar per node: 1 2 a a\n"
                                       "TIME\ntime set: 1\nnumber of steps: 3\ntime values: 0 1 2\n"
                                       "FILE\nfile set: 1\nfilename index: 4\nnumber of steps: 1\nfilename index: 7\n"
                                       "number of steps: 2\nfile set: 2\nnumber of steps: 3\n"),
              "");
    EXPECT_EQ(m_case.meshPlace(0).filename, inFolder("g4"));
    EXPECT_EQ(m_case.meshPlace(0).step, 0u);
    EXPECT_EQ(m_case.meshPlace(2).filename, inFolder("g7"));
    EXPECT_EQ(m_case.meshPlace(2).step, 1u);
    EXPECT_EQ(m_case.meshPlaceOfStep(1).filename, inFolder("g7"));
    EXPECT_EQ(m_case.meshPlaceOfStep(1).step, 0u);
    EXPECT_EQ(variableFile(0, 2), "a step 2");
}

// Its time is told though nothing depends on it.
TEST_F(EnSightCases, ATimeSetThatNobodyRefersToIsThatOfTheMesh) {
    ASSERT_EQ(read(std::string(HEAD) + "model: g\nTIME\ntime set: 1\nnumber of steps: 1\ntime values: 4\n"), "");
    EXPECT_THAT(m_case.times(), ElementsAre(4));
    EXPECT_TRUE(m_case.hasOneMesh());
    ASSERT_EQ(read(std::string(HEAD) + "model: g\n"), "");
    EXPECT_TRUE(m_case.times().empty());
}

TEST_F(EnSightCases, MeshesMayChangeTheirCoordinatesOnly) {
    ASSERT_EQ(read(std::string(HEAD) + "model: g change_coords_only\n"), "");
    EXPECT_EQ(m_case.meshStepOfElements, 0u);
    ASSERT_EQ(read(std::string(HEAD) + "model: g change_coords_only 2\n"), "");
    EXPECT_EQ(m_case.meshStepOfElements, 2u);
    ASSERT_EQ(read(std::string(HEAD) + "model: g\n"), "");
    EXPECT_FALSE(m_case.meshStepOfElements);
}

} // namespace
