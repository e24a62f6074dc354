// Files that other programs wrote of the meshes in Tests/data/msh, see Tests/data/make_med_programs.sh, against these.

#include "OrvImportMed/MedReader.h"

#include "Tests/OrvImportMed/MedSamples.h"
#include "Tests/OrvImportMed/MedShapes.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <ostream>

using namespace orv;
using orvtest::Point;

namespace {

const imp::cae::MedCell& medCellOf(ug::ElementType type) {
    const auto cells = imp::cae::medCells();
    return *std::find_if(cells.begin(), cells.end(),
                         [type](const imp::cae::MedCell& cell) { return cell.elementType == type; });
}

struct Shape {
    std::string part;
    std::vector<Point> nodes;
    double volume;
};

/// By its type and the places of its nodes in any order.
using Shapes = std::map<std::pair<ug::ElementType, std::vector<Point>>, Shape>;

Point rounded(const Point& point) {
    return {std::round(point[0] * 1e9) / 1e9, std::round(point[1] * 1e9) / 1e9, std::round(point[2] * 1e9) / 1e9};
}

Shapes shapesOf(const std::string& path) {
    const auto source = orvtest::openMed(path);
    Shapes shapes;
    for (std::size_t p = 0; p < source->directory()->partInfos(0).size(); ++p) {
        const ug::DataPart& part = *source->state(0)->geometry(0)->part(p);
        EXPECT_TRUE(part.isConsistent());
        for (std::size_t i = 0; i < part.elements()->elementCount(); ++i) {
            const ug::ElementType type = part.elements()->elementType(i);
            const std::span<const std::uint32_t> nodes = part.elements()->nodeIndexes(i);
            Shape shape{source->directory()->partInfos(0)[p].name().toStdString(),
                        {},
                        orvtest::volume(*part.nodes(), type, nodes)};
            for (const std::uint32_t node : nodes) {
                shape.nodes.push_back(rounded(orvtest::pointOf(*part.nodes(), node)));
            }
            SCOPED_TRACE(ug::elementTypeInfo(type).name);
            orvtest::expectNodesInTheMiddleOfEdges(*part.nodes(), type, nodes);
            std::vector<Point> places = shape.nodes;
            std::sort(places.begin(), places.end());
            EXPECT_TRUE(shapes.emplace(std::pair(type, places), shape).second);
        }
    }
    return shapes;
}

enum NodeOrder { OF_MED, OURS };

struct ProgramFile {
    const char* med;
    const char* msh;
    std::size_t shapeCount;
    bool hasGroups;
    bool hasSameOrder; ///< Other programs choose another corner to begin with.
    NodeOrder order;   ///< In the file.
};

void PrintTo(const ProgramFile& file, std::ostream* out) {
    *out << file.med;
}

class MedProgram : public testing::TestWithParam<ProgramFile> {};

TEST_P(MedProgram, HasTheElementsOfTheGmshFile) {
    const Shapes expected = shapesOf(orvtest::testDataFolder() + "/msh/" + GetParam().msh);
    const Shapes shapes = shapesOf(orvtest::medFile(GetParam().med));
    EXPECT_EQ(shapes.size(), GetParam().shapeCount);
    for (const auto& [key, shape] : shapes) {
        SCOPED_TRACE(ug::elementTypeInfo(key.first).name);
        const auto found = expected.find(key);
        ASSERT_TRUE(found != expected.end());
        EXPECT_EQ(shape.volume > 0.0, ug::elementTypeInfo(key.first).dimension == 3);
        EXPECT_NEAR(shape.volume, found->second.volume, 1e-12);
        if (GetParam().hasGroups) {
            EXPECT_EQ(shape.part, found->second.part);
        }
        if (GetParam().hasSameOrder) {
            EXPECT_EQ(shape.nodes, found->second.nodes);
        }
    }
}

// Without this the test above could not tell that the fixed orders are right, as volumes turned inside out are mended.
TEST_P(MedProgram, HasTheNodesOfVolumesInItsOrder) {
    const auto source = orvtest::openMed(orvtest::medFile(GetParam().med));
    const nlohmann::json parts = orvtest::expectedOf(GetParam().med)["parts"];
    std::size_t volumeCount = 0;
    for (std::size_t p = 0; p < source->directory()->partInfos(0).size(); ++p) {
        const ug::DataPart& part = *source->state(0)->geometry(0)->part(p);
        const nlohmann::json& elements =
            parts.at(source->directory()->partInfos(0)[p].name().toStdString())["elements"];
        for (std::size_t i = 0; i < part.elements()->elementCount(); ++i) {
            const ug::ElementType type = part.elements()->elementType(i);
            if (ug::elementTypeInfo(type).dimension < 3) {
                continue;
            }
            ++volumeCount;
            const std::uint8_t* order = medCellOf(type).order;
            const nlohmann::json& inFile = elements.at(std::to_string(part.elements()->elementId(i)));
            const std::span<const std::uint32_t> nodes = part.elements()->nodeIndexes(i);
            for (std::size_t n = 0; n < nodes.size(); ++n) {
                EXPECT_EQ(part.nodes()->nodeId(nodes[n]), inFile.at(GetParam().order == OF_MED ? order[n] : n))
                    << ug::elementTypeInfo(type).name << ", node " << n;
            }
        }
    }
    EXPECT_GE(volumeCount, 3u);
}

// A hexahedron, a pyramid, a wedge, a tetrahedron, a triangle, a quadrilateral, a line and a point. Gmsh writes no
// pyramids and points to UNV files, from which FreeCAD made its own; code_saturne knows volumes only.
INSTANTIATE_TEST_SUITE_P(
    All, MedProgram,
    testing::Values(ProgramFile{"gmsh-first.med", "first22.msh", 8, true, true, OF_MED},
                    ProgramFile{"gmsh-serendipity.med", "serendipity22.msh", 8, true, true, OF_MED},
                    ProgramFile{"meshio-first.med", "first22.msh", 8, false, true, OURS},
                    ProgramFile{"meshio-serendipity.med", "serendipity22.msh", 8, false, true, OURS},
                    ProgramFile{"freecad-first.med", "first22.msh", 6, true, false, OF_MED},
                    ProgramFile{"freecad-serendipity.med", "serendipity22.msh", 6, true, false, OF_MED},
                    ProgramFile{"saturne.med", "first22.msh", 4, false, false, OF_MED}));

// What code_saturne itself finds for the cells' volumes (its field Cell_Volume when run with --quality).
TEST(MedPrograms, VolumesAreThoseOfTheSolver) {
    const std::map<ug::ElementType, double> volumes = {
        {ug::HEXAHEDRON, 1.0}, {ug::PYRAMID, 1.0 / 3.0}, {ug::WEDGE, 0.5}, {ug::TETRAHEDRON, 0.375}};
    const Shapes shapes = shapesOf(orvtest::medFile("saturne.med"));
    EXPECT_EQ(shapes.size(), volumes.size());
    for (const auto& [key, shape] : shapes) {
        EXPECT_NEAR(shape.volume, volumes.at(key.first), 1e-12) << ug::elementTypeInfo(key.first).name;
    }
}

} // namespace
