#include "OrvImportVtk/FoamCase.h"
#include "Tests/Support/ScratchFolder.h"
#include "Tests/Support/TestPaths.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

using namespace orv::imp::cae;
using orv::ug::Error;
using testing::ElementsAre;

namespace {

namespace fs = std::filesystem;

/// A copy of a case that may be changed.
class FoamCaseTest : public testing::Test {
protected:
    void copy(const std::string& name) {
        fs::remove_all(m_folder.path());
        fs::copy(orvtest::testDataFolder() + "/foam/" + name, m_folder.path(), fs::copy_options::recursive);
    }

    void write(const std::string& name, const std::string& contents) {
        fs::create_directories(fs::path(m_folder / name).parent_path());
        std::ofstream(m_folder / name, std::ios::binary) << contents;
    }

    void replace(const std::string& name, const std::string& from, const std::string& to) {
        std::string text = orvtest::readWholeFile(m_folder / name);
        ASSERT_NE(text.find(from), std::string::npos);
        write(name, text.replace(text.find(from), from.size(), to));
    }

    // Opens it anew; the error, or empty.
    std::string open() {
        m_case = FoamCase();
        Error error;
        const bool isOpen = m_case.open(m_folder.path() + "/", &error);
        EXPECT_EQ(isOpen, error.isEmpty());
        return error.message().toStdString();
    }

    // Of the meshes at a time.
    std::string check(std::size_t time = 0) {
        Error error;
        const bool isGood = m_case.checkMeshes(time, &error);
        EXPECT_EQ(isGood, error.isEmpty());
        return error.message().toStdString();
    }

    // Of a field, by its path.
    std::string checkField(const std::string& path) {
        for (const FoamTime& time : m_case.times()) {
            for (const FoamFieldFile& field : time.fields) {
                if (field.path == path) {
                    Error error;
                    m_uniform.clear();
                    const bool isGood = m_case.checkField(field, &m_uniform, &error);
                    EXPECT_EQ(isGood, error.isEmpty());
                    return error.message().toStdString();
                }
            }
        }
        return "is not listed";
    }

    std::vector<std::string> fieldsAt(std::size_t time) const {
        std::vector<std::string> objects;
        for (const FoamFieldFile& field : m_case.times()[time].fields) {
            objects.push_back(field.object);
        }
        return objects;
    }

    orvtest::ScratchFolder m_folder;
    FoamCase m_case;
    std::set<std::string> m_uniform;
};

TEST_F(FoamCaseTest, FoldersOfTimesAreInTheOrderOfTheirNumbers) {
    copy("cavity");
    write("10/readme", "no field");
    write("1e-3/nothing", "");
    write("-1/nothing", "");
    write("0.orig/p", "");
    write("5", "no folder");
    ASSERT_EQ(open(), "");
    std::vector<std::string> names;
    for (const FoamTime& time : m_case.times()) {
        names.push_back(time.name);
    }
    EXPECT_THAT(names, ElementsAre("-1", "0", "1e-3", "0.25", "0.5", "10"));
    EXPECT_EQ(m_case.times()[3].value, 0.25);
    EXPECT_THAT(fieldsAt(3), ElementsAre("U", "grad(U)", "p"));
    EXPECT_THAT(fieldsAt(1), ElementsAre("U", "p"));
}

TEST_F(FoamCaseTest, TwoFoldersOfATimeAreRefused) {
    copy("cavity");
    write("0.0/nothing", "");
    EXPECT_EQ(open(), "has two folders for one time, 0 and 0.0");
}

TEST_F(FoamCaseTest, CasesWithoutMeshesAreRefused) {
    EXPECT_EQ(open(), "is beside no mesh: there is no constant/polyMesh/faces in its folder");
    write("processor0/constant/polyMesh/faces", "");
    EXPECT_EQ(open(), "is a case that has been decomposed, with meshes only in the folders of its processors; put it "
                      "together by reconstructParMesh and reconstructPar");
}

TEST_F(FoamCaseTest, RegionsHaveTheirNamesInFrontOfTheirParts) {
    copy("regions");
    ASSERT_EQ(open(), "");
    ASSERT_EQ(m_case.regions().size(), 2u);
    EXPECT_EQ(m_case.regions()[0].partPrefix, "air/");
    EXPECT_THAT(m_case.regions()[1].patches, ElementsAre("right", "others", "wall_to_air"));
    fs::copy(m_folder / "constant/air/polyMesh", m_folder / "constant/polyMesh", fs::copy_options::recursive);
    ASSERT_EQ(open(), "");
    EXPECT_EQ(m_case.regions()[0].partPrefix, "defaultRegion/");
}

TEST_F(FoamCaseTest, WhatIsLeftOutIsTold) {
    copy("cavity");
    const std::string header = "FoamFile { format ascii; object ";
    write("0/phi", header + "phi; class surfaceScalarField; }");
    write("0.5/phi", header + "phi; class surfaceScalarField; }");
    write("0/p.orig", header + "p; class volScalarField; }");
    write("0.5/U.bak", header + "U; class volVectorField; }");
    write("0.5/properties", header + "properties; class dictionary; }");
    write("0.5/lagrangian/spray/d", header + "d; class scalarField; }");
    ASSERT_EQ(open(), "");
    EXPECT_THAT(m_case.warnings(), ElementsAre("'phi' is left out: it is a surfaceScalarField",
                                               "'p' is left out at the time 0: it is in 0/p and in 0/p.orig",
                                               "the particles 'spray' are left out"));
    EXPECT_THAT(fieldsAt(0), ElementsAre("U"));
    EXPECT_THAT(fieldsAt(2), ElementsAre("U", "grad(U)", "p"));
    EXPECT_THAT(m_case.clouds(), ElementsAre("lagrangian/spray"));
}

TEST_F(FoamCaseTest, DamagedHeadersAreRefused) {
    copy("cavity");
    replace("0.5/p", "format      ascii", "format      asci");
    EXPECT_EQ(open(), "0.5/p, line 15: expected class, object and format (ascii or binary) in the dictionary FoamFile");
}

TEST_F(FoamCaseTest, DamagedBoundariesAreRefused) {
    const std::string missing = ": expected type, nFaces and startFace of the patch 'lid'";
    const std::tuple<std::string, std::string, std::string> table[] = {
        {"nFaces          3", "nFaces          4", ": the patch 'left' begins with the face 10, expected 11"},
        {"nFaces          3", "nFaces          3.5", missing},
        {"nFaces          3", "nFaces          -3", missing},
        {"nFaces          3", "nFaces          2147483648", missing},
        {"startFace       7", "startFaces      7", missing},
        {"type            wall", "sort            wall", missing},
        {"5\n(\n", "6\n(\nin 1;\n", ": expected type, nFaces and startFace of the patch 'in'"},
    };
    for (const auto& [from, to, text] : table) {
        copy("cavity");
        replace("constant/polyMesh/boundary", from, to);
        EXPECT_THAT(open(), testing::HasSubstr(text)) << to;
    }
    copy("cavity");
    replace("constant/polyMesh/boundary", "nFaces          12", "nFaces          13");
    EXPECT_EQ(open(), "");
    EXPECT_EQ(check(), "constant/polyMesh/boundary has 30 faces, but the mesh has 29");
}

TEST_F(FoamCaseTest, MeshesOfMoreCellsThanFacesCanHaveAreRefused) {
    copy("cavity");
    ASSERT_EQ(open(), "");
    EXPECT_EQ(check(), "");
    replace("constant/polyMesh/owner", "\n5\n", "\n58\n"); // 29 faces have 58 sides.
    EXPECT_THAT(check(), testing::HasSubstr("has 29 faces and the cell 58, but the mesh has 29 faces"));
    copy("cavity");
    replace("constant/polyMesh/points", "24\n", "24000\n");
    EXPECT_THAT(check(), testing::HasSubstr("points, line 20: a list of 24000 items has no room in the file"));
    copy("cavity");
    replace("constant/polyMesh/faces", "4(1 5 17 13)", "400(1 5 17 13)");
    EXPECT_THAT(check(), testing::HasSubstr("faces, line 21: a list of 400 items has no room in the file"));
}

TEST_F(FoamCaseTest, MeshesAreThoseOfTheLatestTime) {
    copy("moving");
    ASSERT_EQ(open(), "");
    EXPECT_TRUE(m_case.times()[0].newPoints.empty());
    EXPECT_EQ(m_case.times()[1].newPoints.size(), 1u);
    EXPECT_TRUE(m_case.times()[1].newFaces.empty());
    write("1/polyMesh/points", "damaged");
    EXPECT_EQ(check(0), "");
    EXPECT_EQ(check(1), "1/polyMesh/points, line 1: expected the dictionary FoamFile that begins OpenFOAM's files");
    EXPECT_EQ(check(2), "");
    fs::remove_all(m_folder / "2/polyMesh");
    ASSERT_EQ(open(), "");
    EXPECT_EQ(check(2), check(1));
    EXPECT_NE(check(2), "");
}

TEST_F(FoamCaseTest, PatchesOfAllMeshesAreListed) {
    copy("cavity");
    fs::copy(m_folder / "constant/polyMesh", m_folder / "0.5/polyMesh", fs::copy_options::recursive);
    replace("0.5/polyMesh/boundary", "lid", "cover");
    ASSERT_EQ(open(), "");
    EXPECT_THAT(m_case.regions()[0].patches, ElementsAre("lid", "left", "right", "bottom", "frontAndBack", "cover"));
    EXPECT_EQ(m_case.times()[2].newFaces.size(), 1u);
}

TEST_F(FoamCaseTest, FieldsTellWhereTheyHaveOneValue) {
    copy("plate");
    ASSERT_EQ(open(), "");
    EXPECT_EQ(checkField("0/sigma"), "");
    EXPECT_THAT(m_uniform, ElementsAre("boundary/left", "boundary/right", "internalMesh"));
    EXPECT_EQ(checkField("10/sigma"), "");
    EXPECT_TRUE(m_uniform.empty());
    EXPECT_EQ(checkField("0/V"), "");
    EXPECT_TRUE(m_uniform.empty());
    EXPECT_EQ(checkField("0/I"), "");
    EXPECT_EQ(m_uniform.size(), 4u);
}

TEST_F(FoamCaseTest, FieldsWithoutWhatTheyNeedAreRefused) {
    const std::tuple<std::string, std::string, std::string> table[] = {
        {"internalField", "inside", "has no internalField"},
        {"boundaryField", "outside", "has no boundaryField"},
        {"internalField uniform (1 2 3 4 5 6)", "internalField", "has no internalField"},
        {"left", "\"(?i)left\"", "the regular expression \"(?i)left\" of patches is not understood"},
        {"uniform (7 8 9.5 10 11 12)", "", "the patch \"right\" has no value"},
    };
    for (const auto& [from, to, text] : table) {
        copy("plate");
        ASSERT_EQ(open(), "");
        replace("0/sigma", from, to);
        EXPECT_THAT(checkField("0/sigma"), testing::HasSubstr(text)) << to;
    }
}

} // namespace
