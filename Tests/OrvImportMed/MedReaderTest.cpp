// Files against what an independent reader finds in them, by the numbers of nodes and elements: see
// Tests/data/make_med.sh.

#include "OrvImportMed/MedReader.h"

#include "OrvCore/Defines.h"
#include "Tests/OrvImportMed/MedSamples.h"
#include "Tests/OrvImportMed/MedShapes.h"
#include "Tests/Support/DescribeSource.h"
#include "Tests/Support/RecordingProgress.h"
#include "Tests/Support/ScratchFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <set>

using namespace orv;
using nlohmann::json;
using orvtest::allResults;
using orvtest::expectedOf;
using orvtest::loadMed;
using orvtest::medFile;
using orvtest::openMed;

namespace {

const char* mappingText(ug::ResultMapping mapping) {
    switch (mapping) {
    case ug::PER_NODE:
        return " per node";
    case ug::PER_ELEMENT:
        return " per element";
    default:
        return " per element node";
    }
}

void expectPart(const json& expected, const ug::DataPart& part) {
    EXPECT_TRUE(part.isConsistent());
    ASSERT_EQ(part.nodes()->nodeCount(), expected["nodes"].size());
    for (std::size_t i = 0; i < part.nodes()->nodeCount(); ++i) {
        const Vec3d node = part.nodes()->node(i);
        const json& wanted = expected["nodes"].at(std::to_string(part.nodes()->nodeId(i)));
        EXPECT_EQ(json({node.x(), node.y(), node.z()}), wanted) << "node " << part.nodes()->nodeId(i);
    }
    ASSERT_EQ(part.elements()->elementCount(), expected["elements"].size());
    for (std::size_t i = 0; i < part.elements()->elementCount(); ++i) {
        std::multiset<int> nodes;
        for (const std::uint32_t node : part.elements()->nodeIndexes(i)) {
            nodes.insert(part.nodes()->nodeId(node));
        }
        const json& wanted = expected["elements"].at(std::to_string(part.elements()->elementId(i)));
        EXPECT_EQ(nodes, wanted.get<std::multiset<int>>()) << "element " << part.elements()->elementId(i);
    }
}

/// The values that one item of each node, element or node of an element should have, in the part's order.
std::vector<json> expectedItems(const json& values, ug::ResultMapping mapping, const ug::DataPart& part) {
    std::vector<json> items;
    const auto find = [&items](const json& in, int id) {
        const auto found = in.find(std::to_string(id));
        items.push_back(found == in.end() ? json() : *found);
    };
    if (mapping == ug::PER_NODE) {
        for (std::size_t i = 0; i < part.nodes()->nodeCount(); ++i) {
            find(values, part.nodes()->nodeId(i));
        }
        return items;
    }
    for (std::size_t i = 0; i < part.elements()->elementCount(); ++i) {
        find(values, part.elements()->elementId(i));
        if (mapping == ug::PER_ELEMENT) {
            continue;
        }
        const json ofElement = items.back();
        items.pop_back();
        for (const std::uint32_t node : part.elements()->nodeIndexes(i)) {
            ofElement.is_null() ? items.push_back(json()) : find(ofElement, part.nodes()->nodeId(node));
        }
    }
    return items;
}

void expectValues(const json& expected, const json& parts, imp::cae::DataSourceCae& source, ug::DataState& state,
                  const ug::ResultInfo& info) {
    SCOPED_TRACE(info.name().toStdString() + mappingText(info.resultMapping()));
    ug::Error error;
    const ug::DataResult* result = loadMed(source, state, info, &error);
    ASSERT_TRUE(result) << error.message();
    std::size_t definedCount = 0;
    for (std::size_t p = 0; p < result->partCount(); ++p) {
        const ug::DataPart& part = *state.geometry(0)->part(p);
        const bool isOfMesh =
            parts.at(source.directory()->partInfos(0)[p].name().toStdString())["mesh"] == expected["mesh"];
        const std::vector<json> wanted =
            expectedItems(isOfMesh ? expected["values"] : json::object(), info.resultMapping(), part);
        const ug::DataPartValues& values = *result->values(p);
        ASSERT_EQ(values.itemCount(), wanted.size());
        for (std::size_t i = 0; i < wanted.size(); ++i) {
            for (std::size_t d = 0; d < values.dimension(); ++d) {
                const double value = values.values()[i * values.dimension() + d];
                EXPECT_EQ(value, wanted[i].is_null() ? UNDEFINED_DOUBLE : wanted[i].at(d).get<double>())
                    << "part " << p << ", item " << i << ", component " << d;
                definedCount += value != UNDEFINED_DOUBLE;
            }
            EXPECT_TRUE(wanted[i].is_null() || wanted[i].size() == values.dimension());
        }
    }
    EXPECT_GT(definedCount, 0u);
}

void expectAgreement(const std::string& file) {
    SCOPED_TRACE(file);
    const json expected = expectedOf(file);
    const auto source = openMed(medFile(file));
    const std::vector<ug::PartInfo> parts = source->directory()->partInfos(0);
    ASSERT_EQ(parts.size(), expected["parts"].size());
    for (std::size_t p = 0; p < parts.size(); ++p) {
        SCOPED_TRACE(parts[p].name().toStdString());
        expectPart(expected["parts"].at(parts[p].name().toStdString()), *source->state(0)->geometry(0)->part(p));
    }
    ASSERT_EQ(source->stateCount(), expected["states"].size());
    for (std::size_t s = 0; s < source->stateCount(); ++s) {
        const std::string name = source->directory()->stateInfo(s).name().toStdString();
        SCOPED_TRACE(name);
        const json& results = expected["states"].at(name);
        std::size_t count = 0;
        for (const ug::ResultInfo& info : allResults(*source)) {
            if (source->directory()->hasResult(source->state(s)->id(), info)) {
                ++count;
                expectValues(results.at(info.name().toStdString() + mappingText(info.resultMapping())),
                             expected["parts"], *source, *source->state(s), info);
            }
        }
        EXPECT_EQ(count, results.size());
    }
}

std::vector<std::string> warningsOf(imp::cae::DataSourceCae& source) {
    std::vector<std::string> warnings;
    for (const Str& warning : source.directory()->warnings()) {
        const std::string text = warning.toStdString();
        warnings.push_back(text.substr(text.find(": ") + 2));
    }
    return warnings;
}

std::vector<std::string> partNames(imp::cae::DataSourceCae& source) {
    std::vector<std::string> names;
    for (const ug::PartInfo& info : source.directory()->partInfos(0)) {
        names.push_back(info.name().toStdString());
    }
    return names;
}

using Texts = std::vector<std::string>;

} // namespace

TEST(MedReader, AgreesWithAnIndependentReader) {
    expectAgreement("cells.med");
    expectAgreement("beam.rmed");
    expectAgreement("planes.med");
    expectAgreement("meshio.med");
    expectAgreement("saturne.med");
}

// The second brick of the file has the nodes 5 8 7 6 9 12 11 10. Here it has them in our order, not in that of MED.
TEST(MedReader, ValuesFollowTheNodesOfVolumesThatAreNotTurned) {
    const orvtest::ScratchFolder folder;
    const std::string path = folder.write("a.rmed", orvtest::readWholeFile(medFile("beam.rmed")));
    const hid_t file = H5Fopen(path.c_str(), H5F_ACC_RDWR, H5P_DEFAULT);
    const hid_t set = H5Dopen2(file, "/ENS_MAA/BEAM/-0000000000000000001-0000000000000000001/MAI/HE8/NOD", H5P_DEFAULT);
    const int nodes[] = {1, 5, 4, 6, 3, 7, 2, 8, 5, 9, 8, 10, 7, 11, 6, 12}; // Both first ones, both second ones, ...
    ASSERT_GE(H5Dwrite(set, H5T_NATIVE_INT, H5S_ALL, H5S_ALL, H5P_DEFAULT, nodes), 0);
    H5Dclose(set);
    H5Fclose(file);
    const auto source = openMed(path);
    ug::DataState& state = *source->state(1);
    const ug::DataResult* result =
        loadMed(*source, state, source->directory()->resultInfos(ug::SYMMETRIC_TENSOR).at(0), nullptr);
    ASSERT_TRUE(result);
    // SIXX of node after node of brick after brick in the file is 1200 and 0.6 more each time.
    const std::vector<std::vector<int>> inFile = {{101, 104, 103, 102, 105, 108, 107, 106},
                                                  {105, 106, 107, 108, 109, 110, 111, 112}};
    for (std::size_t brick = 0; brick < 2; ++brick) {
        const ug::DataPart& part = *state.geometry(0)->part(2 + brick);
        const std::span<const std::uint32_t> element = part.elements()->nodeIndexes(0);
        EXPECT_GT(orvtest::volume(*part.nodes(), ug::HEXAHEDRON, element), 0.0);
        for (std::size_t i = 0; i < 8; ++i) {
            const auto place = std::find(inFile[brick].begin(), inFile[brick].end(), part.nodes()->nodeId(element[i]));
            EXPECT_NEAR(result->values(2 + brick)->values()[6 * i],
                        1200.0 + 0.6 * double(8 * brick + std::size_t(place - inFile[brick].begin())), 1e-9);
        }
    }
}

TEST(MedReader, CellsOfTheSameGroupsAreAPart) {
    // The cells of no group first, also those of a family without groups; then by family.
    EXPECT_EQ(partNames(*openMed(medFile("beam.rmed"))), (Texts{"BEAM", "CLAMP", "STEEL, FINE", "STEEL"}));
    EXPECT_EQ(partNames(*openMed(medFile("planes.med"))), (Texts{"left", "left: LOWER", "right"}));
    EXPECT_EQ(partNames(*openMed(medFile("cells.med"))), (Texts{"cells"}));
}

TEST(MedReader, TellsWhatIsLeftOut) {
    EXPECT_EQ(
        warningsOf(*openMed(medFile("beam.rmed"))),
        (Texts{"mesh 'BEAM': nodes that are no corner and on no edge of an element are left out: 1",
               "field 'RESU____SIEF_ELGA': the values at the 8 integration points of its cells HE8 are left out"}));
    // 1 centre in TR7 and QU9, 3 in P18, 7 in H27.
    EXPECT_EQ(warningsOf(*openMed(medFile("cells.med"))),
              (Texts{"mesh 'cells': cells of the type SE4 are left out: 2",
                     "mesh 'cells': cells of the type POG are left out: 1",
                     "mesh 'cells': nodes that are no corner and on no edge of an element are left out: 12"}));
    EXPECT_EQ(warningsOf(*openMed(medFile("planes.med"))),
              (Texts{"mesh 'grid' is left out: it is a structured mesh",
                     "field 'GRID' is left out: its mesh 'grid' is not there"}));
    EXPECT_EQ(warningsOf(*openMed(medFile("meshio.med"))), Texts());
}

TEST(MedReader, StepsAreStates) {
    const auto beam = openMed(medFile("beam.rmed"));
    ASSERT_EQ(beam->stateCount(), 4u);
    EXPECT_EQ(beam->directory()->stateInfo(0).name(), "Without step");
    EXPECT_EQ(beam->directory()->stateInfo(0).referenceValue(), UNDEFINED_DOUBLE);
    EXPECT_EQ(beam->directory()->stateInfo(3).name(), "Step 3, time 0.75");
    EXPECT_EQ(beam->directory()->stateInfo(3).referenceValue(), 0.75);
    EXPECT_EQ(beam->directory()->stateInfo(3).referenceType(), ug::StateInfo::TIME);
    const auto modes = openMed(medFile("planes.med"));
    ASSERT_EQ(modes->stateCount(), 2u);
    EXPECT_EQ(modes->directory()->stateInfo(1).name(), "Step 2, frequency 25");
    EXPECT_EQ(modes->directory()->stateInfo(1).referenceValue(), 25.0);
    EXPECT_EQ(modes->directory()->stateInfo(1).referenceType(), ug::StateInfo::FREQUENCY);
}

TEST(MedReader, AStepMayLackAField) {
    const auto source = openMed(medFile("beam.rmed"));
    const ug::ResultInfo depl = source->directory()->resultInfos(ug::DISPLACEMENT).at(0);
    EXPECT_EQ(depl.name(), "RESU____DEPL");
    EXPECT_TRUE(source->directory()->hasResult(2, depl));
    EXPECT_FALSE(source->directory()->hasResult(3, depl));
    EXPECT_TRUE(source->directory()->hasResult(4, depl));
}

TEST(MedReader, OpeningReadsNoValuesAndALoadOnlyThoseNamed) {
    const auto source = openMed(medFile("beam.rmed"));
    ug::DataState& state = *source->state(1);
    EXPECT_EQ(state.resultByteCount(), 0u);
    const ug::ResultInfo temperature = source->directory()->resultInfos(ug::SCALAR).at(4);
    ASSERT_EQ(temperature.name(), "RESU____TEMP");
    const auto* values = dynamic_cast<ug::DataResultScalar*>(loadMed(*source, state, temperature, nullptr));
    ASSERT_TRUE(values);
    // One double for each node of the four parts: 8 + 4 + 8 + 8.
    EXPECT_EQ(state.resultByteCount(), 28 * sizeof(double));
    // The clamped face has two of the three nodes with values: the first three of the nodes 103, 101, 112.
    EXPECT_EQ(values->part(1)->minimum(), 1400.0);
    EXPECT_EQ(values->part(1)->maximum(), 1400.1);
}

// The meshes and the result are halves of the load.
TEST(MedReader, ALoadTellsEachTypeOfCells) {
    const auto source = openMed(medFile("cells.med"));
    orvtest::RecordingProgress progress;
    source->setProgress(&progress);
    std::size_t loads = 0;
    for (const ug::ResultInfo& info : allResults(*source)) {
        if (info.resultMapping() != ug::PER_ELEMENT || !source->directory()->hasResult(1, info)) {
            continue;
        }
        ++loads;
        ASSERT_TRUE(loadMed(*source, *source->state(0), info, nullptr));
        const std::vector<int> percents = progress.take();
        EXPECT_TRUE(orvtest::isRising(percents)) << testing::PrintToString(percents);
        EXPECT_EQ(percents.back(), 100);
        EXPECT_TRUE(std::ranges::any_of(percents, [](int p) { return p > 50 && p < 99; }))
            << testing::PrintToString(percents);
    }
    EXPECT_GT(loads, 0u);
}

TEST(MedReader, OpensAgainBesideItself) {
    const auto first = openMed(medFile("beam.rmed"));
    const auto second = openMed(medFile("beam.rmed"));
    EXPECT_EQ(orvtest::described(first.get()), orvtest::described(second.get()));
}

TEST(MedReader, AddsASecondFileOnTheSameMesh) {
    const auto source = openMed(medFile("beam.rmed"));
    ug::Error error;
    ASSERT_TRUE(source->openSecondaryFile(Str(medFile("beam.rmed")), &error)) << error.message();
    ASSERT_EQ(source->stateCount(), 8u);
    const ug::ResultInfo depl = source->directory()->resultInfos(ug::DISPLACEMENT).at(0);
    const ug::DataResult* result = loadMed(*source, *source->state(7), depl, &error);
    ASSERT_TRUE(result) << error.message();
    EXPECT_EQ(result->values(1)->values()[0], 3000.0);
}

TEST(MedReader, AFileThatChangesIsNotReadFurther) {
    const orvtest::ScratchFolder folder;
    const std::string path = folder.write("a.rmed", orvtest::readWholeFile(medFile("beam.rmed")));
    const auto source = openMed(path);
    std::ofstream(path, std::ios::app) << "more";
    ug::Error error;
    EXPECT_FALSE(loadMed(*source, *source->state(1), source->directory()->resultInfos(ug::DISPLACEMENT).at(0), &error));
    EXPECT_EQ(error.message().toStdString(), path + " has changed since it was opened");
}
