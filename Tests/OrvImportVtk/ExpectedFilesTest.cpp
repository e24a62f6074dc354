#include "OrvUnstructGrid/DataResultGroup.h"
#include "OrvUnstructGrid/ElementType.h"
#include "Tests/OrvImportVtk/VtkSamples.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <cmath>
#include <fstream>
#include <map>

using namespace orv;
using Json = nlohmann::json;
using orvtest::testDataFolder;

namespace {

// Of Tests/data; each has its expected.json, and the script that wrote it.
constexpr const char* FOLDERS[] = {"cgns", "ensight", "exodus", "foam", "grids", "tecplot", "vtk", "vtkhdf"};

/// What is expected of each file, by its path in Tests/data.
const std::map<std::string, Json>& expectedFiles() {
    static const std::map<std::string, Json> all = [] {
        std::map<std::string, Json> files;
        for (const std::string folder : FOLDERS) {
            std::ifstream file(testDataFolder() + "/" + folder + "/expected.json");
            const Json entries = Json::parse(file);
            for (const auto& [name, states] : entries.items()) {
                files[folder + "/" + name] = states.is_string() ? entries[states.get<std::string>()] : states;
            }
        }
        return files;
    }();
    return all;
}

const std::map<std::string, ug::ResultType> TYPES = {{"scalar", ug::SCALAR},
                                                     {"vector", ug::VECTOR},
                                                     {"displacement", ug::DISPLACEMENT},
                                                     {"tensor", ug::SYMMETRIC_TENSOR}};
const std::map<std::string, ug::ResultMapping> MAPPINGS = {{"node", ug::PER_NODE}, {"element", ug::PER_ELEMENT}};

// EnSight's files have numbers of 5 digits, which VTK keeps as floats.
constexpr double TOLERANCE = 1e-6;

bool isSame(double value, const Json& expected) {
    return expected.is_null() ? value == UNDEFINED_DOUBLE
                              : std::abs(value - expected.get<double>()) <= TOLERANCE * (1 + std::abs(value));
}

/// What is expected of a list. Of long ones only every so many items are told.
struct ExpectedList {
    explicit ExpectedList(const Json& json)
        : count(json.is_object() ? json["count"].get<std::size_t>() : json.size()),
          every(json.is_object() ? json["every"].get<std::size_t>() : 1),
          items(json.is_object() ? json["items"] : json) {}

    std::size_t count;
    std::size_t every;
    const Json& items;
};

void compareNumbers(std::span<const double> values, const Json& expected, const std::string& what) {
    const ExpectedList list(expected);
    ASSERT_EQ(values.size(), list.count) << what;
    for (std::size_t i = 0; i < list.items.size(); ++i) {
        const double value = values[i * list.every];
        ASSERT_TRUE(isSame(value, list.items[i]))
            << what << ": number " << i * list.every << " is " << value << ", expected " << list.items[i];
    }
}

void compareMesh(const ug::DataPart& part, const Json& expected, const std::string& what) {
    const ug::DataNodes& nodes = *part.nodes();
    compareNumbers(nodes.coordinates(), expected["nodes"], what + ", nodes");
    const ug::DataElements& elements = *part.elements();
    const ExpectedList list(expected["elements"]);
    ASSERT_EQ(elements.elementCount(), list.count) << what;
    for (std::size_t i = 0; i < list.items.size(); ++i) {
        const std::size_t e = i * list.every;
        Json element = {ug::elementTypeInfo(elements.elementType(e)).name};
        for (const std::uint32_t node : elements.nodeIndexes(e)) {
            element.push_back(node);
        }
        EXPECT_EQ(element, list.items[i]) << what << ", element " << e;
    }
    for (std::size_t i = 0; expected.contains("nodeIds") && i < nodes.nodeCount(); ++i) {
        EXPECT_EQ(nodes.nodeId(i), expected["nodeIds"][i]) << what;
    }
    for (std::size_t i = 0; expected.contains("elementIds") && i < elements.elementCount(); ++i) {
        EXPECT_EQ(elements.elementId(i), expected["elementIds"][i]) << what;
    }
}

class ExpectedFiles : public testing::TestWithParam<std::string> {
protected:
    void compareResults(imp::cae::DataSourceCae* source, int stateId, std::size_t p, const Json& expected,
                        const std::string& what) {
        const ug::DataState* state = source->state(std::size_t(stateId - 1));
        std::size_t count = 0;
        for (const ug::ResultType type : {ug::SCALAR, ug::VECTOR, ug::DISPLACEMENT, ug::SYMMETRIC_TENSOR}) {
            for (const ug::ResultInfo& info : source->directory()->resultInfos(type)) {
                count += source->directory()->hasResult(stateId, info);
            }
        }
        // A part without nodes says nothing of what there is.
        EXPECT_TRUE(count == expected["results"].size() || expected["nodes"].empty())
            << what << " has " << count << " results, expected " << expected["results"].size();
        for (const auto& [key, result] : expected["results"].items()) {
            const ug::ResultMapping mapping = MAPPINGS.at(result[1]);
            const ug::ResultInfo info = orvtest::findResult(source, key.substr(0, key.find('/')), mapping);
            ASSERT_TRUE(info.isValid()) << what << ", " << key;
            EXPECT_EQ(info.type(), TYPES.at(result[0])) << what << ", " << key;
            ug::Error error;
            ASSERT_TRUE(orvtest::load(source, stateId, {info}, &error)) << error.message();
            compareNumbers(state->results(state->geometry(0))->find(info)->values(p)->span(), result[2],
                           what + ", " + key);
        }
    }
};

TEST_P(ExpectedFiles, HoldWhatAnotherReaderFinds) {
    const Json& states = expectedFiles().at(GetParam());
    const std::string nameOfFile = GetParam().substr(GetParam().find('/') + 1);
    const auto source = orvtest::openVtk(testDataFolder() + "/" + GetParam());
    ASSERT_EQ(source->stateCount(), states.size());
    for (std::size_t s = 0; s < states.size(); ++s) {
        const ug::StateInfo info = source->directory()->stateInfo(s);
        const std::string stateText = GetParam() + ", state " + std::to_string(s);
        EXPECT_TRUE(isSame(info.referenceValue(), states[s]["time"])) << stateText;
        EXPECT_EQ(info.referenceType(), ug::StateInfo::TIME);
        const Json& parts = states[s]["parts"];
        const ug::DataGeometry* geometry = source->state(s)->geometry(0);
        ASSERT_EQ(geometry->partCount(), parts.size()) << stateText;
        for (std::size_t p = 0; p < parts.size(); ++p) {
            const std::string name = parts[p]["name"] == "" ? nameOfFile : parts[p]["name"].get<std::string>();
            EXPECT_EQ(source->directory()->partInfos(0)[p].name(), Str(name));
            ug::Error error;
            ASSERT_TRUE(geometry->part(p)->read(&error)) << error.message();
            EXPECT_TRUE(geometry->part(p)->isConsistent());
            compareMesh(*geometry->part(p), parts[p], stateText + ", part " + name);
            compareResults(source.get(), info.id(), p, parts[p], stateText + ", part " + name);
        }
    }
}

std::vector<std::string> fileNames() {
    std::vector<std::string> names;
    for (const auto& [name, states] : expectedFiles()) {
        names.push_back(name);
    }
    return names;
}

INSTANTIATE_TEST_SUITE_P(Each, ExpectedFiles, testing::ValuesIn(fileNames()),
                         [](const testing::TestParamInfo<std::string>& file) {
                             std::string name = file.param;
                             std::replace_if(
                                 name.begin(), name.end(), [](char c) { return c == '.' || c == '/'; }, '_');
                             return name;
                         });

} // namespace
