// Files of real solver runs against the print-outs of the same runs. Both have six digits, the print-out seven.

#include "OrvImportCae/DataSourceCae.h"
#include "OrvUnstructGrid/DataResultGroup.h"
#include "OrvUnstructGrid/DataStateSpec.h"
#include "OrvUnstructGrid/Error.h"
#include "Tests/OrvImportCae/DatFile.h"
#include "Tests/OrvImportCae/FrdSamples.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <string>
#include <vector>

using namespace orv;
using orvtest::DatTable;
using orvtest::readDat;
using orvtest::solverFile;

namespace {

PtrRef<imp::cae::DataSourceCae> openSolverFile(const std::string& name) {
    PtrRef<imp::cae::DataSourceCae> source(new imp::cae::DataSourceCae(1));
    ug::Error error;
    EXPECT_TRUE(source->openFiles({solverFile(name)}, &error)) << error.message();
    return source;
}

/// The values of a result in a state, by the node's number. A node in several parts must have the same values in all.
std::map<int, std::vector<double>> valuesByNode(imp::cae::DataSourceCae& source, std::size_t stateIndex,
                                                ug::ResultType type, const std::string& name) {
    ug::ResultInfo wanted;
    for (const ug::ResultInfo& info : source.directory()->resultInfos(type)) {
        wanted = info.name() == Str(name) ? info : wanted;
    }
    EXPECT_TRUE(wanted.isValid()) << name;
    ug::DataState* state = source.state(stateIndex);
    ug::DataStateSpec spec;
    spec.setResultIds({wanted});
    ug::Error error;
    EXPECT_TRUE(source.loadDataState(state->id(), spec, &error)) << error.message();
    const ug::DataGeometry* geometry = state->geometry(0);
    const ug::DataResult* result = state->results(geometry)->find(wanted);
    std::map<int, std::vector<double>> byNode;
    for (std::size_t p = 0; result && p < geometry->partCount(); ++p) {
        const ug::DataPartValues* values = result->values(p);
        EXPECT_EQ(values->itemCount(), geometry->part(p)->nodes()->nodeCount());
        for (std::size_t n = 0; n < values->itemCount(); ++n) {
            const double* item = values->values() + n * values->dimension();
            const auto [found, isNew] =
                byNode.try_emplace(geometry->part(p)->nodes()->nodeId(n), item, item + values->dimension());
            EXPECT_TRUE(isNew || std::equal(found->second.begin(), found->second.end(), item));
        }
    }
    return byNode;
}

double largest(const DatTable& table) {
    double size = 0.0;
    for (const DatTable::Row& row : table.rows) {
        for (const double value : row.values) {
            size = std::max(size, std::abs(value));
        }
    }
    return size;
}

void expectAgreement(const DatTable& table, const std::map<int, std::vector<double>>& byNode) {
    const double tolerance = 1e-5 * largest(table);
    ASSERT_FALSE(table.rows.empty());
    for (const DatTable::Row& row : table.rows) {
        const auto found = byNode.find(row.id);
        ASSERT_NE(found, byNode.end()) << "node " << row.id;
        ASSERT_EQ(found->second.size(), row.values.size());
        for (std::size_t i = 0; i < row.values.size(); ++i) {
            EXPECT_NEAR(found->second[i], row.values[i], tolerance) << "node " << row.id << ", component " << i;
        }
    }
}

struct Printed {
    const char* job;
    const char* title; ///< In the print-out.
    ug::ResultType type;
    const char* result;
    std::size_t tableCount; ///< The tables of that title in the print-out.
    std::size_t firstState; ///< The index of the state that the first table belongs to.
};

std::ostream& operator<<(std::ostream& out, const Printed& printed) {
    return out << printed.job << " " << printed.result;
}

class SolverFile : public testing::TestWithParam<Printed> {};

TEST_P(SolverFile, AgreesWithThePrintOut) {
    const Printed& printed = GetParam();
    const PtrRef<imp::cae::DataSourceCae> source = openSolverFile(std::string(printed.job) + ".frd");
    const std::vector<DatTable> tables = readDat(solverFile(std::string(printed.job) + ".dat"), printed.title);
    ASSERT_EQ(tables.size(), printed.tableCount);
    for (std::size_t i = 0; i < tables.size(); ++i) {
        SCOPED_TRACE(i);
        expectAgreement(tables[i], valuesByNode(*source, printed.firstState + i, printed.type, printed.result));
    }
}

INSTANTIATE_TEST_SUITE_P(All, SolverFile,
                         testing::Values(Printed{"cube_static", "displacements", ug::DISPLACEMENT, "DISP", 1, 0},
                                         Printed{"cube_strained", "displacements", ug::DISPLACEMENT, "DISP", 1, 0},
                                         Printed{"cube_static", "forces", ug::VECTOR, "FORC", 1, 0},
                                         Printed{"beam_increments", "displacements", ug::DISPLACEMENT, "DISP", 6, 0},
                                         Printed{"beam_binary", "displacements", ug::DISPLACEMENT, "DISP", 6, 0},
                                         Printed{"beam_modes", "displacements", ug::DISPLACEMENT, "DISP", 6, 0},
                                         Printed{"static_then_modes", "displacements", ug::DISPLACEMENT, "DISP", 4, 0},
                                         Printed{"heat", "temperatures", ug::SCALAR, "NDTEMP", 5, 0},
                                         Printed{"mixed", "displacements", ug::DISPLACEMENT, "DISP", 1, 0},
                                         Printed{"mixed_quadratic", "displacements", ug::DISPLACEMENT, "DISP", 1, 0},
                                         Printed{"shell_2d", "displacements", ug::DISPLACEMENT, "DISP", 1, 0},
                                         Printed{"beam_2d", "displacements", ug::DISPLACEMENT, "DISP", 1, 0},
                                         Printed{"plane", "displacements", ug::DISPLACEMENT, "DISP", 1, 0},
                                         Printed{"truss", "displacements", ug::DISPLACEMENT, "DISP", 1, 0},
                                         Printed{"buckling", "displacements", ug::DISPLACEMENT, "DISP", 3, 0},
                                         Printed{"plastic", "displacements", ug::DISPLACEMENT, "DISP", 2, 0},
                                         Printed{"contact", "displacements", ug::DISPLACEMENT, "DISP", 1, 0}));

std::vector<double> meanOverPoints(const DatTable& table) {
    std::vector<double> mean(table.rows.at(0).values.size());
    for (const DatTable::Row& row : table.rows) {
        for (std::size_t i = 0; i < mean.size(); ++i) {
            mean[i] += row.values[i] / double(table.rows.size());
        }
    }
    return mean;
}

// Where stress is the same everywhere, nodes have what integration points have; the solver's extrapolation costs 4e-5.
// The print-out has XZ ahead of YZ, we have YZ ahead of ZX.
TEST(SolverFiles, TensorsAgreeWhereTheyAreTheSameEverywhere) {
    struct Tensor {
        const char* job;
        const char* title;
        const char* result;
    };
    for (const Tensor& test :
         {Tensor{"cube_static", "stresses", "STRESS"}, Tensor{"cube_static", "strains", "TOSTRAIN"},
          Tensor{"cube_strained", "stresses", "STRESS"}, Tensor{"cube_strained", "strains", "TOSTRAIN"}}) {
        SCOPED_TRACE(std::string(test.job) + " " + test.result);
        const auto tables = readDat(solverFile(std::string(test.job) + ".dat"), test.title, true);
        ASSERT_EQ(tables.size(), 1u);
        const std::vector<double> printed = meanOverPoints(tables[0]);
        const double expected[] = {printed[0], printed[1], printed[2], printed[3], printed[5], printed[4]};
        const PtrRef<imp::cae::DataSourceCae> source = openSolverFile(std::string(test.job) + ".frd");
        const auto byNode = valuesByNode(*source, 0, ug::SYMMETRIC_TENSOR, test.result);
        ASSERT_EQ(byNode.size(), 8u);
        for (const auto& [node, values] : byNode) {
            ASSERT_EQ(values.size(), 6u);
            for (std::size_t i = 0; i < 6; ++i) {
                EXPECT_NEAR(values[i], expected[i], 1e-4 * largest(tables[0])) << "node " << node << " item " << i;
            }
        }
    }
}

// Amplitudes belong to real and imaginary parts, which the print-out has one after the other.
TEST(SolverFiles, HarmonicResultsAgree) {
    const PtrRef<imp::cae::DataSourceCae> source = openSolverFile("harmonic.frd");
    const std::vector<DatTable> tables = readDat(solverFile("harmonic.dat"), "displacements");
    ASSERT_EQ(tables.size(), 10u);
    for (std::size_t state = 0; state < 5; ++state) {
        SCOPED_TRACE(state);
        const auto real = valuesByNode(*source, state, ug::DISPLACEMENT, "DISP");
        const auto imaginary = valuesByNode(*source, state, ug::VECTOR, "DISPI");
        const auto amplitude = valuesByNode(*source, state, ug::SCALAR, "PDISP.MAG3");
        expectAgreement(tables[2 * state], real);
        expectAgreement(tables[2 * state + 1], imaginary);
        for (const auto& [node, values] : amplitude) {
            const double expected = std::hypot(real.at(node)[2], imaginary.at(node)[2]);
            EXPECT_NEAR(values[0], expected, 2e-5 * expected) << node;
        }
    }
}

struct StatesOfFile {
    const char* job;
    std::vector<int> ids;
    std::vector<double> values;
    ug::StateInfo::ReferenceType lastType;
    std::vector<std::string> someNames; ///< Of the first state and of the last one.
};

TEST(SolverFiles, EveryIncrementAndModeIsAState) {
    for (const StatesOfFile& test : {
             StatesOfFile{"beam_increments",
                          {1, 2, 3, 4, 5, 6},
                          {0.25, 0.5, 0.75, 1, 1.5, 2},
                          ug::StateInfo::TIME,
                          {"Step 1, increment 1, time 0.25", "Step 2, increment 2, time 2"}},
             StatesOfFile{"beam_binary",
                          {1, 2, 3, 4, 5, 6},
                          {0.25, 0.5, 0.75, 1, 1.5, 2},
                          ug::StateInfo::TIME,
                          {"Step 1, increment 1, time 0.25", "Step 2, increment 2, time 2"}},
             StatesOfFile{"beam_modes",
                          {1, 2, 3, 4, 5, 6},
                          {23807.00017, 23807.00017, 134087.0321, 138226.0875, 138226.0875, 219012.7018},
                          ug::StateInfo::FREQUENCY,
                          {"Mode 1, frequency 23807", "Mode 6, frequency 219012.7"}},
             StatesOfFile{"heat",
                          {1, 2, 3, 4, 5},
                          {0.01, 0.02, 0.03, 0.04, 1.04},
                          ug::StateInfo::TIME,
                          {"Step 1, increment 1, time 0.01", "Step 2, increment 1, time 1.04"}},
             StatesOfFile{
                 "buckling",
                 {1, 2, 3},
                 {0, 314.3603091, 314.3603098},
                 ug::StateInfo::LOAD_CASE,
                 {"Step 1, increment 1, buckling factor 0", "Step 1, increment 1, buckling factor 314.3603 (state 3)"}},
             StatesOfFile{"harmonic",
                          {5, 6, 7, 8, 9},
                          {20000, 28747.55359, 37495.10718, 48747.55359, 60000},
                          ug::StateInfo::TIME,
                          {"Step 2, time 20000", "Step 2, time 60000"}},
             StatesOfFile{"static_then_modes",
                          {1, 2, 3, 4},
                          {1, 53327.74151, 53327.74151, 135845.2575},
                          ug::StateInfo::FREQUENCY,
                          {"Step 1, increment 1, time 1", "Mode 3, frequency 135845.3"}},
         }) {
        SCOPED_TRACE(test.job);
        const PtrRef<imp::cae::DataSourceCae> source = openSolverFile(std::string(test.job) + ".frd");
        const std::vector<ug::StateInfo> states = source->directory()->stateInfos();
        ASSERT_EQ(states.size(), test.ids.size());
        for (std::size_t i = 0; i < states.size(); ++i) {
            EXPECT_EQ(states[i].id(), test.ids[i]);
            EXPECT_EQ(states[i].referenceValue(), test.values[i]);
        }
        EXPECT_EQ(states.back().referenceType(), test.lastType);
        EXPECT_EQ(states.front().name(), Str(test.someNames[0]));
        EXPECT_EQ(states.back().name(), Str(test.someNames[1]));
        EXPECT_TRUE(source->directory()->warnings().empty());
    }
}

TEST(SolverFiles, TimesAndModesInOneFileAreGroups) {
    const PtrRef<imp::cae::DataSourceCae> source = openSolverFile("static_then_modes.frd");
    const std::vector<ug::StateGroupInfo> groups = source->directory()->stateGroupInfos();
    ASSERT_EQ(groups.size(), 2u);
    ASSERT_EQ(groups[0].stateCount(), 1u);
    EXPECT_EQ(groups[0].stateId(0), 1);
    ASSERT_EQ(groups[1].stateCount(), 3u);
    EXPECT_EQ(groups[1].stateId(0), 2);
    EXPECT_EQ(groups[1].stateId(2), 4);
    EXPECT_TRUE(openSolverFile("beam_modes.frd")->directory()->stateGroupInfos().empty());
}

// Meshes. The sizes are those of the decks.

Vec3d minus(const Vec3d& a, const Vec3d& b) {
    return Vec3d(a.x() - b.x(), a.y() - b.y(), a.z() - b.z());
}

Vec3d cross(const Vec3d& a, const Vec3d& b) {
    return Vec3d(a.y() * b.z() - a.z() * b.y(), a.z() * b.x() - a.x() * b.z(), a.x() * b.y() - a.y() * b.x());
}

double dot(const Vec3d& a, const Vec3d& b) {
    return a.x() * b.x() + a.y() * b.y() + a.z() * b.z();
}

/// One element's corners and mid-side nodes.
struct Element {
    ug::ElementType type;
    std::vector<Vec3d> nodes;
};

std::vector<Element> elementsOf(const ug::DataPart& part) {
    std::vector<Element> elements;
    for (std::size_t i = 0; i < part.elements()->elementCount(); ++i) {
        elements.push_back({part.elements()->elementType(i), {}});
        for (const unsigned int node : part.elements()->elementNodes(i)) {
            elements.back().nodes.push_back(part.nodes()->node(node));
        }
    }
    return elements;
}

// Twice the area of a surface as a vector along its normal, by its corners.
Vec3d surfaceVector(const Element& element, std::size_t surface) {
    const std::span<const std::uint8_t> local = ug::elementSurface(element.type, surface);
    const std::size_t corners = ug::elementTypeInfo(element.type).isQuadratic ? local.size() / 2 : local.size();
    const Vec3d& first = element.nodes[local[0]];
    const Vec3d diagonal = minus(element.nodes[local[2]], first);
    const Vec3d half = cross(minus(element.nodes[local[1]], first), diagonal);
    if (corners == 3) {
        return half;
    }
    const Vec3d other = cross(diagonal, minus(element.nodes[local[3]], first));
    return Vec3d(half.x() + other.x(), half.y() + other.y(), half.z() + other.z());
}

// By the divergence theorem, for flat outward surfaces: positive only when the node order is right.
double volumeOf(const Element& element) {
    double volume = 0.0;
    for (std::size_t s = 0; s < ug::elementTypeInfo(element.type).surfaceCount; ++s) {
        const Vec3d& corner = element.nodes[ug::elementSurface(element.type, s)[0]];
        volume += dot(corner, surfaceVector(element, s)) / 6.0;
    }
    return volume;
}

struct Sized {
    const char* job;
    double volume;
};

TEST(SolverFiles, VolumesArePositiveAndAddUp) {
    for (const Sized& test : {Sized{"cube_static", 1.0}, Sized{"beam_increments", 4.0}, Sized{"beam_binary", 4.0},
                              Sized{"beam_modes", 6.0}, Sized{"mixed", 3.0}, Sized{"mixed_quadratic", 3.0},
                              Sized{"shell_expanded", 2 * 0.05}, Sized{"contact", 4.0 + 1.0}}) {
        SCOPED_TRACE(test.job);
        const PtrRef<imp::cae::DataSourceCae> source = openSolverFile(std::string(test.job) + ".frd");
        const ug::DataGeometry& geometry = *source->state(0)->geometry(0);
        double sum = 0.0;
        for (std::size_t p = 0; p < geometry.partCount(); ++p) {
            EXPECT_TRUE(geometry.part(p)->isConsistent());
            for (const Element& element : elementsOf(*geometry.part(p))) {
                EXPECT_GT(volumeOf(element), 0.0);
                sum += volumeOf(element);
            }
        }
        EXPECT_NEAR(sum, test.volume, 1e-5 * test.volume);
    }
}

TEST(SolverFiles, MidSideNodesLieBetweenTheirCorners) {
    for (const char* job :
         {"beam_modes", "mixed_quadratic", "shell_expanded", "shell_2d", "beam_expanded", "beam_2d"}) {
        SCOPED_TRACE(job);
        const PtrRef<imp::cae::DataSourceCae> source = openSolverFile(std::string(job) + ".frd");
        const ug::DataGeometry& geometry = *source->state(0)->geometry(0);
        for (std::size_t p = 0; p < geometry.partCount(); ++p) {
            for (const Element& element : elementsOf(*geometry.part(p))) {
                ASSERT_TRUE(ug::elementTypeInfo(element.type).isQuadratic);
                for (std::size_t e = 0; e < ug::elementTypeInfo(element.type).edgeCount; ++e) {
                    const std::span<const std::uint8_t> edge = ug::elementEdge(element.type, e);
                    const Vec3d& a = element.nodes[edge[0]];
                    const Vec3d& b = element.nodes[edge[1]];
                    const Vec3d& mid = element.nodes[edge[2]];
                    EXPECT_NEAR(mid.x(), (a.x() + b.x()) / 2, 1e-5);
                    EXPECT_NEAR(mid.y(), (a.y() + b.y()) / 2, 1e-5);
                    EXPECT_NEAR(mid.z(), (a.z() + b.z()) / 2, 1e-5);
                }
            }
        }
    }
}

struct Typed {
    const char* job;
    std::map<ug::ElementType, int> counts;
};

TEST(SolverFiles, ElementsHaveTheirTypes) {
    for (const Typed& test :
         {Typed{"cube_static", {{ug::HEXAHEDRON, 1}}}, Typed{"beam_modes", {{ug::HEXAHEDRON_20, 3}}},
          Typed{"mixed", {{ug::HEXAHEDRON, 1}, {ug::WEDGE, 2}, {ug::TETRAHEDRON, 5}}},
          Typed{"mixed_quadratic", {{ug::HEXAHEDRON_20, 1}, {ug::WEDGE_15, 2}, {ug::TETRAHEDRON_10, 5}}},
          Typed{"shell_expanded", {{ug::HEXAHEDRON_20, 1}, {ug::WEDGE_15, 2}}},
          Typed{"shell_2d", {{ug::QUADRILATERAL_8, 1}, {ug::TRIANGLE_6, 2}}},
          Typed{"beam_expanded", {{ug::HEXAHEDRON_20, 2}}}, Typed{"beam_2d", {{ug::BEAM_3, 2}}},
          Typed{"truss", {{ug::BEAM, 3}}}, Typed{"plane", {{ug::QUADRILATERAL, 2}, {ug::TRIANGLE, 2}}}}) {
        SCOPED_TRACE(test.job);
        const PtrRef<imp::cae::DataSourceCae> source = openSolverFile(std::string(test.job) + ".frd");
        const ug::DataGeometry& geometry = *source->state(0)->geometry(0);
        std::map<ug::ElementType, int> counts;
        for (std::size_t p = 0; p < geometry.partCount(); ++p) {
            for (const ug::ElementType type : geometry.part(p)->elements()->types()) {
                ++counts[type];
            }
        }
        EXPECT_EQ(counts, test.counts);
    }
}

TEST(SolverFiles, PlaneElementsFaceOneWay) {
    // 3 square units of sheet, 2 of plate, all with the normal along z.
    for (const Sized& test : {Sized{"plane", 3.0}, Sized{"shell_2d", 2.0}}) {
        const PtrRef<imp::cae::DataSourceCae> source = openSolverFile(std::string(test.job) + ".frd");
        double sum = 0.0;
        for (const Element& element : elementsOf(*source->state(0)->geometry(0)->part(0))) {
            EXPECT_GT(surfaceVector(element, 0).z(), 0.0);
            sum += surfaceVector(element, 0).z() / 2;
        }
        EXPECT_NEAR(sum, test.volume, 1e-5);
    }
}

// What the solver expands to solids bends as what it does not: the mean over the thickness is the shell's or beam's.
TEST(SolverFiles, ExpandedPlateMovesAsTheFlatOne) {
    const PtrRef<imp::cae::DataSourceCae> flat = openSolverFile("shell_2d.frd");
    const PtrRef<imp::cae::DataSourceCae> expanded = openSolverFile("shell_expanded.frd");
    const auto flatValues = valuesByNode(*flat, 0, ug::DISPLACEMENT, "DISP");
    const auto expandedValues = valuesByNode(*expanded, 0, ug::DISPLACEMENT, "DISP");
    const ug::DataNodes& flatNodes = *flat->state(0)->geometry(0)->part(0)->nodes();
    const ug::DataNodes& expandedNodes = *expanded->state(0)->geometry(0)->part(0)->nodes();
    EXPECT_EQ(flatNodes.nodeCount(), 14u);
    for (std::size_t i = 0; i < flatNodes.nodeCount(); ++i) {
        double low = 0.0;
        double high = 0.0;
        for (std::size_t j = 0; j < expandedNodes.nodeCount(); ++j) {
            const Vec3d offset = minus(expandedNodes.node(j), flatNodes.node(i));
            if (std::hypot(offset.x(), offset.y()) < 1e-5 && std::abs(offset.z()) > 0.02) {
                (offset.z() < 0 ? low : high) = expandedValues.at(expandedNodes.nodeId(j))[2];
            }
        }
        // The tip moves by 1.03; faces move a little apart.
        EXPECT_NEAR((low + high) / 2, flatValues.at(flatNodes.nodeId(i))[2], 1e-4) << flatNodes.nodeId(i);
    }
}

TEST(SolverFiles, ExpandedBeamMovesAsTheLine) {
    const PtrRef<imp::cae::DataSourceCae> line = openSolverFile("beam_2d.frd");
    const PtrRef<imp::cae::DataSourceCae> expanded = openSolverFile("beam_expanded.frd");
    const double tip = valuesByNode(*line, 0, ug::DISPLACEMENT, "DISP").at(5)[2];
    // F L^3 / (3 E I) = 1 * 64 / (3 * 210000 * 0.1^4 / 12) = 12.19, of which two elements reach nine tenths.
    EXPECT_NEAR(tip, -12.19, 1.5);
    double lowest = 0.0;
    for (const auto& [node, values] : valuesByNode(*expanded, 0, ug::DISPLACEMENT, "DISP")) {
        lowest = std::min(lowest, values[2]);
    }
    EXPECT_NEAR(lowest, tip, 1e-3);
}

TEST(SolverFiles, NodesThatABlockLeavesOutAreUndefined) {
    // The deck asks for displacements of 4 of 12 nodes; contact results are those of the 4 slave nodes, 11 to 14.
    const PtrRef<imp::cae::DataSourceCae> plastic = openSolverFile("plastic.frd");
    for (const auto& [node, values] : valuesByNode(*plastic, 1, ug::DISPLACEMENT, "DISP")) {
        EXPECT_EQ(values[0] == UNDEFINED_DOUBLE, node % 3 != 0) << node;
    }
    const PtrRef<imp::cae::DataSourceCae> contact = openSolverFile("contact.frd");
    for (const auto& [node, values] : valuesByNode(*contact, 0, ug::SCALAR, "CONTACT.CPRESS")) {
        const bool isSlave = node >= 11 && node <= 14;
        EXPECT_EQ(values[0], isSlave ? 102.8 : UNDEFINED_DOUBLE) << node;
    }
}

TEST(SolverFiles, BinaryValuesAreThoseOfText) {
    const PtrRef<imp::cae::DataSourceCae> text = openSolverFile("beam_increments.frd");
    const PtrRef<imp::cae::DataSourceCae> binary = openSolverFile("beam_binary.frd");
    for (std::size_t state = 0; state < 6; ++state) {
        const auto expected = valuesByNode(*text, state, ug::DISPLACEMENT, "DISP");
        for (const auto& [node, values] : valuesByNode(*binary, state, ug::DISPLACEMENT, "DISP")) {
            for (std::size_t i = 0; i < 3; ++i) {
                // Six digits here, 24 bits there.
                EXPECT_NEAR(values[i], expected.at(node)[i], 6e-6 * std::abs(values[i])) << node;
            }
        }
    }
}

} // namespace
