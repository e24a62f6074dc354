// Files that gmsh and meshio wrote, see Tests/data/make_msh.py, against what meshio reads in them.

#include "Tests/OrvImportCae/MshOpened.h"
#include "Tests/Support/TestPaths.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include <algorithm>
#include <fstream>

using namespace orv;
using orvtest::MshOpened;

namespace {

using Rows = std::vector<std::vector<double>>;

std::string pathOf(const std::string& name) {
    return orvtest::testDataFolder() + "/msh/" + name;
}

nlohmann::json expectedOf(const std::string& name) {
    std::ifstream file(pathOf(name));
    return nlohmann::json::parse(file);
}

/// Each element as the coordinates of its nodes, sorted.
Rows elementRows(const ug::DataPart& part) {
    Rows rows;
    for (std::size_t i = 0; i < part.elements()->elementCount(); ++i) {
        rows.emplace_back();
        for (const std::uint32_t node : part.elements()->nodeIndexes(i)) {
            const double* xyz = &part.nodes()->coordinates()[3 * std::size_t(node)];
            rows.back().insert(rows.back().end(), xyz, xyz + 3);
        }
    }
    std::sort(rows.begin(), rows.end());
    return rows;
}

struct MeshCase {
    const char* file;
    const char* expected;
};

void PrintTo(const MeshCase& mesh, std::ostream* out) {
    *out << mesh.file;
}

class MshFile : public testing::TestWithParam<MeshCase> {};

TEST_P(MshFile, HasTheElementsThatAnotherReaderFinds) {
    const MshOpened opened(pathOf(GetParam().file));
    const nlohmann::json expected = expectedOf(GetParam().expected);
    const std::vector<std::string> names = opened.partNames();
    EXPECT_EQ(names.size(), expected.size());
    EXPECT_EQ(opened.warnings(), std::vector<std::string>());
    for (std::size_t i = 0; i < names.size(); ++i) {
        ASSERT_TRUE(expected.contains(names[i])) << names[i];
        const Rows rows = elementRows(*opened.part(i));
        const Rows expectedRows = expected[names[i]]["elements"].get<Rows>();
        ASSERT_EQ(rows.size(), expectedRows.size()) << names[i];
        for (std::size_t row = 0; row < rows.size(); ++row) {
            ASSERT_EQ(rows[row].size(), expectedRows[row].size());
            for (std::size_t k = 0; k < rows[row].size(); ++k) {
                EXPECT_NEAR(rows[row][k], expectedRows[row][k], 1e-12) << names[i] << ", element " << row;
            }
        }
    }
}

// The same shapes and the same box in all forms: where meshio cannot read one, what it reads in another is expected.
INSTANTIATE_TEST_SUITE_P(
    All, MshFile,
    testing::Values(MeshCase{"first22.msh", "first22.json"}, MeshCase{"first41bin.msh", "first41bin.json"},
                    MeshCase{"serendipity22.msh", "serendipity22.json"},
                    MeshCase{"serendipity41bin.msh", "serendipity41bin.json"},
                    MeshCase{"complete22bin.msh", "serendipity22.json"},
                    MeshCase{"complete40.msh", "serendipity22.json"}, MeshCase{"complete41.msh", "serendipity22.json"},
                    MeshCase{"box41.msh", "box41.json"}, MeshCase{"parametric22.msh", "box41.json"},
                    MeshCase{"parametric22bin.msh", "box41.json"}, MeshCase{"parametric40.msh", "box41.json"},
                    MeshCase{"parametric41.msh", "box41.json"}, MeshCase{"parametric41bin.msh", "box41.json"},
                    MeshCase{"box22bin.msh", "box22bin.json"}, MeshCase{"box41bin.msh", "box22bin.json"}));

TEST(MshFiles, MidSideNodesLieBetweenTheirCorners) {
    for (const char* name : {"serendipity22.msh", "serendipity41bin.msh", "complete22bin.msh", "complete40.msh",
                             "complete41.msh", "box41bin.msh"}) {
        const MshOpened opened(pathOf(name));
        std::size_t edgeCount = 0;
        for (std::size_t p = 0; p < opened.geometry()->partCount(); ++p) {
            const ug::DataElements* elements = opened.part(p)->elements();
            for (std::size_t i = 0; i < elements->elementCount(); ++i) {
                const std::span<const std::uint32_t> nodes = elements->nodeIndexes(i);
                const ug::ElementType type = elements->elementType(i);
                EXPECT_TRUE(type == ug::POINT || ug::elementTypeInfo(type).isQuadratic) << name;
                for (std::size_t e = 0; e < ug::elementTypeInfo(type).edgeCount; ++e) {
                    const std::span<const std::uint8_t> edge = ug::elementEdge(type, e);
                    for (std::size_t k = 0; k < 3; ++k) {
                        const auto coordinate = [&](std::size_t node) {
                            return opened.part(p)->nodes()->coordinates()[3 * std::size_t(nodes[edge[node]]) + k];
                        };
                        EXPECT_NEAR(coordinate(2), (coordinate(0) + coordinate(1)) / 2, 1e-12)
                            << name << ", type " << int(type) << ", edge " << e;
                    }
                    ++edgeCount;
                }
            }
        }
        EXPECT_GT(edgeCount, 30u);
    }
}

TEST(MshFiles, PartsComeFromVolumesToPoints) {
    EXPECT_EQ(MshOpened(pathOf("first22.msh")).partNames(),
              (std::vector<std::string>{"Solids", "Faces", "Edge", "Corner"}));
    // Within a dimension by number: the right side is group 2, the left one group 3.
    EXPECT_EQ(MshOpened(pathOf("box41.msh")).partNames(), (std::vector<std::string>{"Body", "Right", "Left"}));
}

TEST(MshFiles, PartitionsOfAGroupAreOnePart) {
    const MshOpened whole(pathOf("box41.msh"));
    for (const char* name : {"partitioned41.msh", "partitioned41bin.msh", "partitioned22.msh"}) {
        const MshOpened opened(pathOf(name));
        const std::vector<std::string> names = opened.partNames();
        for (std::size_t i = 0; i < 3; ++i) {
            const auto found = std::find(names.begin(), names.end(), whole.partNames()[i]);
            ASSERT_NE(found, names.end()) << name;
            const ug::DataPart* part = opened.part(std::size_t(found - names.begin()));
            EXPECT_EQ(part->elements()->elementCount(), whole.part(i)->elements()->elementCount()) << name;
        }
        EXPECT_EQ(opened.warnings(), std::vector<std::string>()) << name;
    }
}

// What the values are is told by the functions in make_msh.py.
TEST(MshFiles, ValuesOfMeshioAreThoseOfThePlaces) {
    for (const char* name : {"data22.msh", "data22bin.msh", "data41.msh", "data41bin.msh"}) {
        MshOpened opened(pathOf(name));
        EXPECT_EQ(opened.stateNames(), (std::vector<std::string>{"Step 0, time 0"})) << name;
        EXPECT_EQ(opened.info(ug::SCALAR, "Density").resultMapping(), ug::PER_ELEMENT);
        for (std::size_t p = 0; p < opened.geometry()->partCount(); ++p) {
            const std::vector<double> heat = opened.load(ug::SCALAR, "Temperature", 1, p);
            const std::vector<double> moved = opened.load(ug::DISPLACEMENT, "Displacement", 1, p);
            const std::vector<double> flow = opened.load(ug::VECTOR, "Flow", 1, p);
            const std::vector<double> stress = opened.load(ug::SYMMETRIC_TENSOR, "Stress", 1, p);
            const std::vector<double> density = opened.load(ug::SCALAR, "Density", 1, p);
            const std::vector<double> normal = opened.load(ug::VECTOR, "Normal", 1, p);
            const ug::DataPart* part = opened.part(p);
            ASSERT_EQ(heat.size(), part->nodes()->nodeCount());
            ASSERT_EQ(stress.size(), 6 * heat.size());
            for (std::size_t i = 0; i < heat.size(); ++i) {
                const Vec3d at = part->nodes()->node(i);
                const double x = at.x(), y = at.y(), z = at.z();
                EXPECT_NEAR(heat[i], 20 + x * y + z, 1e-9);
                const double expected[] = {x, y, 3 + z, 2 + y, x * z, z};
                for (std::size_t k = 0; k < 6; ++k) {
                    EXPECT_NEAR(stress[6 * i + k], expected[k], 1e-9) << name << ", component " << k;
                }
                const double moves[] = {0.1 * x, 0.1 * y, 0.1 * z, y, z, x};
                for (std::size_t k = 0; k < 3; ++k) {
                    EXPECT_NEAR(moved[3 * i + k], moves[k], 1e-9);
                    EXPECT_NEAR(flow[3 * i + k], moves[3 + k], 1e-9);
                }
            }
            ASSERT_EQ(density.size(), part->elements()->elementCount());
            for (std::size_t i = 0; i < density.size(); ++i) {
                const std::span<const std::uint32_t> nodes = part->elements()->nodeIndexes(i);
                double centre[3] = {};
                for (const std::uint32_t node : nodes) {
                    for (std::size_t k = 0; k < 3; ++k) {
                        centre[k] += part->nodes()->coordinates()[3 * std::size_t(node) + k] / double(nodes.size());
                    }
                }
                EXPECT_NEAR(density[i], centre[0] - centre[1], 1e-9) << name;
                for (std::size_t k = 0; k < 3; ++k) {
                    EXPECT_NEAR(normal[3 * i + k], centre[k], 1e-9) << name;
                }
            }
        }
    }
}

TEST(MshFiles, ValuesPerElementNodeComeInSeveralSteps) {
    for (const char* name : {"view.msh", "viewbin.msh", "view41bin.msh"}) {
        MshOpened opened(pathOf(name));
        EXPECT_EQ(opened.partNames(), (std::vector<std::string>{"Physical volume 1"})) << name;
        EXPECT_EQ(opened.stateNames(), (std::vector<std::string>{"Step 0, time 0.5", "Step 1, time 1.5"})) << name;
        EXPECT_EQ(opened.info(ug::SCALAR, "Shear").resultMapping(), ug::PER_ELEMENT_NODE);
        EXPECT_EQ(opened.load(ug::SCALAR, "Shear", 1), (std::vector<double>{1, 2, 3, 4, 1, 2, 3, 4, 5, 6, 7, 8}));
        EXPECT_EQ(opened.load(ug::SCALAR, "Shear", 2),
                  (std::vector<double>{10, 20, 30, 40, 11, 12, 13, 14, 15, 16, 17, 18}));
        EXPECT_EQ(opened.warnings(), std::vector<std::string>()) << name;
    }
}

TEST(MshFiles, StepsOfAViewAreStates) {
    for (const char* name : {"steps41.msh", "steps41bin.msh"}) {
        MshOpened opened(pathOf(name));
        const std::vector<ug::StateInfo> states = opened.source->directory()->stateInfos();
        ASSERT_EQ(states.size(), 3u);
        for (int step = 0; step < 3; ++step) {
            EXPECT_EQ(states[std::size_t(step)].referenceType(), ug::StateInfo::TIME);
            EXPECT_EQ(states[std::size_t(step)].referenceValue(), 0.25 * step);
            for (std::size_t p = 0; p < opened.geometry()->partCount(); ++p) {
                const std::vector<double> heat = opened.load(ug::SCALAR, "Heat", step + 1, p);
                ASSERT_EQ(heat.size(), opened.part(p)->nodes()->nodeCount());
                for (std::size_t i = 0; i < heat.size(); ++i) {
                    const Vec3d at = opened.part(p)->nodes()->node(i);
                    EXPECT_NEAR(heat[i], at.x() + 10 * at.y() + 100 * at.z() + 1000 * step, 1e-6) << name;
                }
            }
        }
    }
}

/// Compares each value that is had alone with that of a load. Returns how many were had without one.
std::size_t compareSingleValues(const std::string& file) {
    orvtest::MshOpened one(file);
    orvtest::MshOpened all(file);
    std::size_t count = 0;
    for (const ug::ResultInfo& info : one.source->directory()->scalarResultInfos()) {
        for (std::size_t s = 0; s < one.source->stateCount(); ++s) {
            const int id = one.source->state(s)->id();
            if (!one.source->directory()->hasResult(id, info)) {
                continue;
            }
            for (std::size_t part = 0; part < one.geometry()->partCount(); ++part) {
                const std::vector<double> expected = all.load(ug::SCALAR, info.name().toStdString(), id, part);
                for (std::size_t i = 0; i < expected.size(); ++i) {
                    double value = 0;
                    EXPECT_TRUE(one.source->copyScalars(id, info, {0, part, i}, {&value, 1}, nullptr));
                    EXPECT_EQ(value, expected[i]) << file << " part " << part << " item " << i;
                    count += one.source->state(s)->resultByteCount() == 0;
                    one.source->dropResult(info);
                }
            }
        }
    }
    return count;
}

TEST(MshFiles, SingleValuesOfBinaryFilesAreReadAlone) {
    std::size_t count = 0;
    for (const char* name : {"data22bin.msh", "data41bin.msh", "steps41bin.msh", "viewbin.msh", "view41bin.msh"}) {
        count += compareSingleValues(orvtest::testDataFolder() + "/msh/" + name);
    }
    EXPECT_GT(count, 100u);
}

TEST(MshFiles, SingleValuesOfTextFilesComeWithTheOthers) {
    EXPECT_EQ(compareSingleValues(orvtest::testDataFolder() + "/msh/data41.msh"), 0u);
}

} // namespace
