#include "OrvImportVtk/XmlSource.h"

#include "Tests/OrvImportVtk/VtkSamples.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <fstream>

using namespace orv;
using orvtest::ScratchFolder;
using testing::HasSubstr;

namespace {

std::string sample(const std::string& name) {
    return orvtest::readWholeFile(orvtest::testDataFolder() + "/grids/" + name);
}

// A text after a word of it, behind some place in it, has been replaced.
std::string replaced(std::string text, const std::string& place, const std::string& word, const std::string& other) {
    return text.replace(text.find(word, text.find(place)), word.size(), other);
}

// Behind the mark that the appended arrays of a file begin with.
std::size_t appendedBegin(const std::string& file) {
    return file.find('_', file.find("<AppendedData")) + 1;
}

// Where the values of an array of 64-bit numbers begin, in a file that is neither packed nor in base64.
std::size_t valuesBegin(const std::string& file, const std::string& array) {
    const std::string word = "offset=\"";
    const std::size_t place = file.find(word, file.find("Name=\"" + array + '"')) + word.size();
    return appendedBegin(file) + std::stoul(file.substr(place)) + sizeof(std::uint64_t);
}

// One of them is another one.
std::string withNumber(std::string file, const std::string& array, std::size_t index, std::int64_t number) {
    std::memcpy(&file[valuesBegin(file, array) + index * sizeof number], &number, sizeof number);
    return file;
}

// They are of 32 bits.
std::string narrowed(std::string file, const std::string& array) {
    const std::size_t begin = valuesBegin(file, array);
    std::uint64_t size = 0;
    std::memcpy(&size, &file[begin - sizeof size], sizeof size);
    size /= 2;
    std::memcpy(&file[begin - sizeof size], &size, sizeof size);
    for (std::size_t at = 0; at < size; at += sizeof(std::int32_t)) {
        std::memcpy(&file[begin + at], &file[begin + 2 * at], sizeof(std::int32_t));
    }
    const std::string wide = "Int64\" Name=\"" + array;
    return file.replace(file.find(wide), wide.size(), "Int32\" Name=\"" + array);
}

class XmlSource : public testing::Test {
protected:
    // The text of the error of opening a file with such contents, or of reading its mesh, and then a result.
    std::string errorOf(const std::string& name, const std::string& contents, const std::string& result = "") {
        const std::string path = m_folder / name;
        std::ofstream(path, std::ios::binary) << contents;
        m_source = new imp::cae::DataSourceCae(1);
        ug::Error error;
        if (m_source->openFiles({Str(path)}, &error) && m_source->state(0)->geometry(0)->part(0)->read(&error) &&
            !result.empty()) {
            orvtest::load(m_source.get(), 1, {orvtest::findResult(m_source.get(), result)}, &error);
        }
        return error.message().toStdString();
    }

    // The same for a sample in which a word is another one.
    std::string errorOf(const std::string& name, const std::string& place, const std::string& word,
                        const std::string& other) {
        return errorOf(name, replaced(sample(name), place, word, other));
    }

    ScratchFolder m_folder;
    PtrRef<imp::cae::DataSourceCae> m_source;
};

// VTK would make room for as many nodes as the last offset tells: with 2^61 of them for none at all.
TEST_F(XmlSource, OffsetsThatCannotBeAreRefused) {
    const std::string place = "Name=\"offsets\"";
    EXPECT_THAT(errorOf("solids.vtu", place, " 17", " 2305843009213693952"),
                HasSubstr("offsets of the cells are damaged"));
    EXPECT_THAT(errorOf("solids.vtu", place, " 12", " 2"), HasSubstr("offsets of the cells are damaged"));
    EXPECT_THAT(errorOf("solids.vtu", place, " 8 ", " -8 "), HasSubstr("offsets of the cells are damaged"));
    EXPECT_THAT(errorOf("surface.vtp", place, " 1", " 2305843009213693952"),
                HasSubstr("offsets of the cells are damaged"));
}

TEST_F(XmlSource, EmptyCellsOfSurfacesAreRefused) {
    EXPECT_THAT(errorOf("surface.vtp", "Name=\"offsets\"", " 1", " 0"),
                HasSubstr("lists of cells that do not fit together"));
}

// Polyhedra are left out, whatever their faces are.
TEST_F(XmlSource, FacesArePassedOver) {
    const auto source = orvtest::openVtk(orvtest::testDataFolder() + "/grids/polyhedron.vtu");
    EXPECT_EQ(source->state(0)->geometry(0)->part(0)->elements()->elementCount(), 3u);
}

// A mesh of 13 points and 3 cells, one of 7 points and 5 cells, and grids of 12, 9 and 18 nodes.
TEST_F(XmlSource, CountsThatTheFileCannotHaveAreRefused) {
    const struct {
        const char* file;
        const char* place;
        const char* word;
        const char* other;
        const char* error;
    } cases[] = {
        {"solids.vtu", "<Piece", "\"13\"", "\"999999999999\"",
         "array 'Points', expected 999999999999 times 3 values, found room for "},
        {"solids.vtu", "<Piece", "\"13\"", "\"-1\"", "array 'Points', expected -1 times 3 values, found room for "},
        {"solids.vtu", "<Piece", "\"3\"", "\"999999999999\"",
         "array 'offsets', expected 999999999999 times 1 values, found room for "},
        {"solids_raw64.vtu", "<Piece", "\"13\"", "\"14\"",
         "array 'Points', expected 14 times 3 values, found room for 39"},
        {"solids_zlib.vtu", "<Piece", "\"3\"", "\"4\"", "array 'offsets', expected 4 times 1 values, found room for 3"},
        {"solids_lz4.vtu", "<Piece", "\"13\"", "\"14\"",
         "array 'Points', expected 14 times 3 values, found room for 39"},
        {"surface_raw64.vtp", "<Piece", "NumberOfPolys=\"2\"", "NumberOfPolys=\"3\"",
         "array 'offsets', expected 3 times 1 values, found room for 2"},
        {"surface.vtp", "<Piece", "NumberOfLines=\"1\"", "NumberOfLines=\"99999999999\"",
         "array 'offsets', expected 99999999999 times 1 values, found room for "},
        {"curved_zlib.vts", "<Piece", "0 2 0 1 0 1", "0 2 0 1 0 2",
         "array 'Points', expected 18 times 3 values, found room for 36"},
        {"curved.vts", "WholeExtent", "0 2 0 1 0 1", "0 2 0 1 0 9", "expected 60 nodes of a grid, found pieces of 12"},
        {"planes_raw64.vtr", "<Piece", "0 2 0 2 0 0", "0 2 0 3 0 0", "expected 4 times 1 values, found room for 3"},
        {"image_zlib.vti", "WholeExtent", "0 2 0 1 0 2", "0 2 0 1 -2147483648 2147483647",
         "expected 25769803776 nodes of a grid, found pieces of 18"},
        {"solids.vtu", "Name=\"Flux\"", "\"3\"", "\"2000000000\"",
         "array 'Flux', expected at most 65536 components, found 2000000000"},
        {"solids.vtu", "<Points", "Components", "Numbers", "expected points of three components, found none"},
        {"curved.vts", "<Points", "\"3\"", "\"2\"", "expected points of three components, found none"},
        {"solids.vtu", "type=\"UInt8\"", "UInt8", "Float32",
         "expected the types of cells as whole numbers, found none"},
        {"solids.vtu", "Name=\"offsets\"", "offsets", "offset", "expected the offsets of cells as whole numbers"},
    };
    for (const auto& [file, place, word, other, error] : cases) {
        EXPECT_THAT(errorOf(file, place, word, other), HasSubstr(error)) << file;
    }
}

// Where nothing shows that a grid is as large as it tells, only so much is believed: 2^25 nodes.
TEST_F(XmlSource, GridsWithoutValuesMayNotBeHuge) {
    const auto image = [](const std::string& extent) {
        return "<VTKFile type=\"ImageData\" version=\"0.1\"><ImageData WholeExtent=\"" + extent +
               "\" Origin=\"0 0 0\" Spacing=\"1 1 1\"><Piece Extent=\"" + extent + "\"></Piece></ImageData></VTKFile>";
    };
    EXPECT_EQ(errorOf("small.vti", image("0 9 0 9 0 9")), "");
    EXPECT_THAT(errorOf("large.vti", image("0 33554432 0 0 0 0")),
                HasSubstr("expected at most 33554432 nodes of a grid without values, found 33554433"));
}

TEST_F(XmlSource, SizesInFrontOfArraysAreLookedAt) {
    for (const char* name : {"image_raw64.vti", "planes_raw64.vtr", "surface_raw64.vtp", "solids_raw64.vtu"}) {
        std::string file = sample(name);
        const std::size_t begin = appendedBegin(file);
        file.replace(begin, 8, 8, '\x7f');
        const std::string error = errorOf(name, file, "Temperature");
        EXPECT_THAT(error, HasSubstr("array 'Temperature', byte " + std::to_string(begin) +
                                     ": expected 9187201950435737471 bytes, found the end of the file before"));
    }
    for (const char* name : {"image_zlib.vti", "planes_zlib.vtr", "surface_zlib.vtp", "curved_zlib.vts"}) {
        std::string file = sample(name);
        file.replace(appendedBegin(file), 5, "/////"); // All 30 bits are set.
        EXPECT_THAT(errorOf(name, file, "Temperature"), HasSubstr("sizes of packed blocks, found the end of the file"));
    }
}

TEST_F(XmlSource, PlacesOfArraysAreLookedAt) {
    const std::string file = sample("image_raw64.vti");
    for (const std::string place : {"99999999999", "-1", "nothing"}) {
        EXPECT_THAT(errorOf("image.vti", replaced(file, "Temperature", "\"0\"", '"' + place + '"'), "Temperature"),
                    HasSubstr("array 'Temperature', expected a place in the appended data, found \"" + place + '"'));
    }
}

// VTK is let go on after a failure; what it makes then is not for use, not even the next time.
TEST_F(XmlSource, AFailureIsToldEachTimeAndOtherArraysCanBeRead) {
    std::string file = sample("surface_raw64.vtp");
    file[appendedBegin(file)] ^= 8; // 48 bytes, not 56.
    EXPECT_THAT(errorOf("surface.vtp", file, "Temperature"), HasSubstr("array 'Temperature'"));
    ug::Error error;
    EXPECT_FALSE(orvtest::load(m_source.get(), 1, {orvtest::findResult(m_source.get(), "Temperature")}, &error));
    EXPECT_THAT(error.message().toStdString(), HasSubstr("array 'Temperature'"));
    EXPECT_TRUE(orvtest::load(m_source.get(), 1, {orvtest::findResult(m_source.get(), "Number")}));
}

// Cells of 8, 4 and 5 of 13 points. The low 32 bits of the large numbers are those of good ones.
TEST_F(XmlSource, NumbersThatHaveNoRoomIn32BitsAreNoPointsAndOffsets) {
    const std::string file = sample("solids_raw64.vtu");
    constexpr std::int64_t LARGE = std::int64_t(1) << 32;
    for (const std::int64_t point : {std::int64_t(-5), std::int64_t(13), LARGE + 1, -LARGE + 1}) {
        EXPECT_THAT(errorOf("solids.vtu", withNumber(file, "connectivity", 9, point)),
                    HasSubstr("cell 1 has a point that is not one of the 13 points of its mesh"));
    }
    for (const std::int64_t offset : {std::int64_t(7), std::int64_t(18), LARGE + 12, -LARGE + 12}) {
        EXPECT_THAT(errorOf("solids.vtu", withNumber(file, "offsets", 1, offset)),
                    HasSubstr("array 'offsets', the offsets of the cells are damaged"));
    }
    EXPECT_THAT(errorOf("solids.vtu", withNumber(file, "offsets", 2, 18)),
                HasSubstr("array 'offsets', the offsets of the cells are damaged"));
}

TEST_F(XmlSource, PointsAndOffsetsMayBeOf32Bits) {
    const std::string file = sample("solids_raw64.vtu");
    EXPECT_EQ(errorOf("solids.vtu", file), "");
    const ug::DataElements expected = *m_source->state(0)->geometry(0)->part(0)->elements();
    for (const std::string& other : {narrowed(file, "offsets"), narrowed(file, "connectivity")}) {
        EXPECT_EQ(errorOf("solids.vtu", other), "");
        const ug::DataElements& elements = *m_source->state(0)->geometry(0)->part(0)->elements();
        EXPECT_THAT(elements.connectivity(), testing::ElementsAreArray(expected.connectivity()));
    }
    EXPECT_THAT(errorOf("solids.vtu", withNumber(narrowed(file, "offsets"), "offsets", 0, -1)),
                HasSubstr("the offsets of the cells are damaged"));
}

// VTK takes the arrays of a piece by their order.
TEST_F(XmlSource, ArraysOfPiecesMustBeTheSame) {
    EXPECT_THAT(errorOf("solids.vtu", replaced(sample("solids.vtu"), "Number\"", "Number", "Stress"), "Stress"),
                HasSubstr("array 'Stress', expected another name, found that of two arrays"));
    std::string piece = sample("solids.vtu");
    const std::size_t end = piece.find("</UnstructuredGrid>");
    piece = piece.substr(piece.find("<Piece"), end - piece.find("<Piece"));
    const auto twice = [&](const std::string& other) { return sample("solids.vtu").insert(end, other); };
    EXPECT_EQ(errorOf("solids.vtu", twice(piece), "Stress"), "");
    EXPECT_EQ(m_source->state(0)->geometry(0)->part(0)->elements()->elementCount(), 6u);
    EXPECT_THAT(errorOf("solids.vtu", twice(replaced(piece, "Stress", "6", "3")), "Stress"),
                HasSubstr("array 'Stress', expected the arrays of the first piece, found another one"));
    EXPECT_THAT(errorOf("solids.vtu", twice(replaced(piece, "\"Stress", "Stress", "Strain")), "Stress"),
                HasSubstr("array 'Stress', not found in a piece"));
}

// Files of old have levels, 0 being the piece's own cells.
TEST_F(XmlSource, GhostLevelsAreGhosts) {
    const std::string tag = "<CellData>";
    EXPECT_EQ(errorOf("solids.vtu", tag, tag,
                      tag + "<DataArray type=\"UInt8\" Name=\"vtkGhostLevels\" format=\"ascii\">0 2 0</DataArray>"),
              "");
    EXPECT_EQ(m_source->state(0)->geometry(0)->part(0)->elements()->elementCount(), 2u);
}

// Of all fields only the time is looked at.
TEST_F(XmlSource, TheTimeIsAField) {
    const auto withField = [](const std::string& name, const std::string& count, const std::string& values) {
        const std::string tag = "<UnstructuredGrid>";
        return replaced(sample("solids.vtu"), tag, tag,
                        tag +
                            "<FieldData><DataArray type=\"Float64\" Name=\"Other\" NumberOfTuples=\"888888888888\"/>" +
                            "<DataArray type=\"Float64\" Name=\"" + name + "\" NumberOfTuples=\"" + count +
                            "\" format=\"ascii\">" + values + "</DataArray></FieldData>");
    };
    EXPECT_EQ(errorOf("time.vtu", withField("TimeValue", "1", "2.5")), "");
    EXPECT_EQ(m_source->directory()->stateInfo(0).referenceValue(), 2.5);
    EXPECT_EQ(errorOf("other.vtu", withField("Another", "888888888888", "2.5")), "");
    EXPECT_EQ(m_source->directory()->stateInfo(0).referenceValue(), UNDEFINED_DOUBLE);
    EXPECT_THAT(errorOf("many.vtu", withField("TimeValue", "888888888888", "2.5")),
                HasSubstr("array 'TimeValue', expected 888888888888 times 1 values, found room for "));
    EXPECT_THAT(errorOf("none.vtu", withField("TimeValue", "1", "none")), HasSubstr("array 'TimeValue', byte "));
}

} // namespace
