#include "OrvImportVtk/XmlSource.h"

#include "Tests/OrvImportVtk/VtkSamples.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

using namespace orv;
using orvtest::ScratchFolder;
using testing::HasSubstr;

namespace {

// The text of the error after a word of a sample in ASCII, behind some place in it, has been replaced.
std::string errorOf(const std::string& name, const std::string& place, const std::string& word,
                    const std::string& other) {
    std::ifstream file(orvtest::testDataFolder() + "/grids/" + name);
    std::ostringstream whole;
    whole << file.rdbuf();
    std::string text = whole.str();
    text.replace(text.find(word, text.find(place)), word.size(), other);
    const ScratchFolder folder;
    std::ofstream(folder.path() + "/" + name) << text;
    const auto source = orvtest::openVtk(folder.path() + "/" + name);
    ug::Error error;
    EXPECT_FALSE(source->state(0)->geometry(0)->part(0)->read(&error));
    return error.message().toStdString();
}

// VTK would make room for as many nodes as the last offset tells: with 2^61 of them for none at all.
TEST(XmlSource, OffsetsThatCannotBeAreRefused) {
    const std::string place = "Name=\"offsets\"";
    EXPECT_THAT(errorOf("solids.vtu", place, " 17", " 2305843009213693952"),
                HasSubstr("offsets of the cells are damaged"));
    EXPECT_THAT(errorOf("solids.vtu", place, " 12", " 2"), HasSubstr("offsets of the cells are damaged"));
    EXPECT_THAT(errorOf("solids.vtu", place, " 8 ", " -8 "), HasSubstr("offsets of the cells are damaged"));
    EXPECT_THAT(errorOf("surface.vtp", place, " 1", " 2305843009213693952"),
                HasSubstr("offsets of the cells are damaged"));
}

TEST(XmlSource, EmptyCellsOfSurfacesAreRefused) {
    EXPECT_THAT(errorOf("surface.vtp", "Name=\"offsets\"", " 1", " 0"),
                HasSubstr("lists of cells that do not fit together"));
}

// Polyhedra are left out, whatever their faces are.
TEST(XmlSource, FacesArePassedOver) {
    const auto source = orvtest::openVtk(orvtest::testDataFolder() + "/grids/polyhedron.vtu");
    EXPECT_EQ(source->state(0)->geometry(0)->part(0)->elements()->elementCount(), 3u);
}

} // namespace
