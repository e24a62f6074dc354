#include "Tools/EnvelopeCommand.h"

#include "Tests/OrvApp/CatalogueTest.h"
#include "Tests/Support/ScratchFolder.h"
#include "Tests/Tools/CommandResults.h"
#include "Tests/Tools/FrdColumns.h"
#include "Tests/Tools/Program.h"
#include "Tools/Expression.h"
#include "Tools/ExpressionResult.h"
#include "Tools/ResultFile.h"
#include "Tools/ValuesSelection.h"
#include "Tools/ValuesWalk.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>

using Json = nlohmann::ordered_json;
using orvtest::bracketFile;
using orvtest::failureOf;
using orvtest::fieldsOf;
using orvtest::jsonOf;
using orvtest::lines;
using orvtest::namesIn;
using orvtest::NodeValues;
using orvtest::Outcome;
using orvtest::runOrvapp;
using orvtest::TinyFile;
using testing::ElementsAre;

namespace {

Json envelopeOf(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), "envelope");
    return jsonOf(std::move(arguments));
}

/// What an extreme is to be, found over all states and parts in the columns of the file.
struct Found {
    double value;
    std::size_t state;
    std::size_t part;
    int node;
};

struct Extremes {
    Found min{HUGE_VAL, 0, 0, 0};
    Found max{-HUGE_VAL, 0, 0, 0};
};

Extremes extremesOf(const std::string& block, std::size_t component) {
    const std::vector<int> nodes[] = {orvtest::nodesOfMaterial(bracketFile(), 1),
                                      orvtest::nodesOfMaterial(bracketFile(), 2)};
    Extremes extremes;
    for (std::size_t state = 0; state < 5; ++state) {
        const NodeValues values = orvtest::readBlock(bracketFile(), int(state) + 1, block);
        for (std::size_t part = 0; part < 2; ++part) {
            for (const int node : nodes[part]) {
                const double value = values.at(node)[component];
                if (value < extremes.min.value) {
                    extremes.min = {value, state, part, node};
                }
                if (value > extremes.max.value) {
                    extremes.max = {value, state, part, node};
                }
            }
        }
    }
    return extremes;
}

void expectExtreme(const Json& json, const Found& found) {
    static const std::vector<std::string> states = namesIn(bracketFile(), "states");
    EXPECT_EQ(json["value"], found.value);
    EXPECT_EQ(json["state"], states[found.state]);
    EXPECT_EQ(json["referenceType"], "time");
    EXPECT_NEAR(json["referenceValue"], 0.2 * double(found.state + 1), 1e-12);
    EXPECT_EQ(json["part"], found.part == 0 ? "STEEL" : "ALUMINIUM");
    EXPECT_EQ(json["at"], found.node);
}

std::size_t bytesInStates(orv::ug::DataSource& source) {
    std::size_t bytes = 0;
    for (std::size_t i = 0; i < source.stateCount(); ++i) {
        bytes += source.state(i)->resultByteCount();
    }
    return bytes;
}

class EnvelopeMemoryTest : public orvtest::CatalogueTest {};

} // namespace

TEST(EnvelopeCommand, AgreesWithThePlainColumnsOfTheFile) {
    struct Block {
        std::string name;
        std::vector<std::string> components;
    };
    const Block blocks[] = {
        {"DISP", {"X", "Y", "Z"}}, {"STRESS", {"XX", "YY", "ZZ", "XY", "YZ", "ZX"}}, {"PE", {"value"}}};
    for (const Block& block : blocks) {
        const Json report = envelopeOf({bracketFile(), block.name});
        EXPECT_EQ(report["expression"], block.name);
        EXPECT_EQ(report["states"], 5);
        ASSERT_EQ(report["rows"].size(), block.components.size());
        for (std::size_t i = 0; i < block.components.size(); ++i) {
            const Json& row = report["rows"][i];
            EXPECT_EQ(row["component"], block.components[i]);
            EXPECT_EQ(row["count"], 5 * (741 + 70));
            EXPECT_EQ(row["undefined"], 0);
            const Extremes extremes = extremesOf(block.name, i);
            expectExtreme(row["min"], extremes.min);
            expectExtreme(row["max"], extremes.max);
        }
    }
}

TEST(EnvelopeCommand, ComputesAnExpressionInEachState) {
    // Less the state's own largest plastic strain, the smallest value is that of the state where they are farthest
    // apart: each state has its own largest one.
    double widest = 0;
    for (int state = 1; state <= 5; ++state) {
        const NodeValues values = orvtest::readBlock(bracketFile(), state, "PE");
        auto byValue = [](const auto& a, const auto& b) { return a.second[0] < b.second[0]; };
        const auto [min, max] = std::minmax_element(values.begin(), values.end(), byValue);
        widest = std::max(widest, max->second[0] - min->second[0]);
    }
    const Json row = envelopeOf({bracketFile(), "PE - maxValue(PE)"})["rows"][0];
    EXPECT_GT(widest, extremesOf("PE", 0).max.value);
    EXPECT_EQ(row["min"]["value"], -widest);
    EXPECT_EQ(row["min"]["state"], namesIn(bracketFile(), "states")[4]);
    EXPECT_EQ(row["max"]["value"], 0);
}

TEST(EnvelopeCommand, StatesAndPartsCanBeChosen) {
    const std::vector<std::string> states = namesIn(bracketFile(), "states");
    const Json report = envelopeOf({bracketFile(), "DISP", "--state", states[4], "--part", "STEEL*"});
    EXPECT_EQ(report["states"], 1);
    // The numbers of the test of values.
    EXPECT_EQ(report["rows"][2]["min"]["value"], -7.87562e-01);
    EXPECT_EQ(report["rows"][2]["min"]["at"], 687);
    EXPECT_EQ(report["rows"][2]["max"]["value"], 8.07087e-04);
    EXPECT_EQ(report["rows"][2]["max"]["at"], 13);
    EXPECT_EQ(failureOf({"envelope", bracketFile(), "DISP", "--part", "STEL"}),
              "orvapp: " + bracketFile() +
                  ": there is no part \"STEL\"; did you mean \"STEEL\"? (parts: \"STEEL\", \"ALUMINIUM\")\n");
}

TEST(EnvelopeCommand, TableShowsTheSameRounded) {
    const Outcome outcome = runOrvapp({"envelope", bracketFile(), "DISP"});
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_EQ(outcome.messages, "");
    const std::vector<std::string> text = lines(outcome.output);
    ASSERT_EQ(text.size(), 8u);
    EXPECT_EQ(text[0], "DISP (displacement, per node) over 5 states");
    EXPECT_THAT(text[1], testing::MatchesRegex("  Component +Extreme +Value +State +Reference +Part +at node"));
    // By awk over the third column of all blocks DISP.
    EXPECT_THAT(text[6], testing::MatchesRegex("  Z +minimum +-0.788706 +.*time 1 +time 1 +ALUMINIUM +761"));
    EXPECT_THAT(text[7], testing::MatchesRegex("  Z +maximum +0.000807087 +.*time 1 +time 1 +STEEL +13"));
}

TEST(EnvelopeCommand, MissingValuesAreCountedAndLeftOut) {
    const TinyFile tiny;
    const Json row = envelopeOf({tiny.path(), "l2Norm(DISP)"})["rows"][0];
    EXPECT_EQ(row["count"], 4);
    EXPECT_EQ(row["undefined"], 1); // node 13
    EXPECT_EQ(row["min"]["value"], 1);
    EXPECT_EQ(row["min"]["at"], 11);
    EXPECT_EQ(row["max"]["value"], 2.5);
    EXPECT_EQ(row["max"]["at"], 12);
    const Outcome table = runOrvapp({"envelope", tiny.path(), "DISP"});
    EXPECT_THAT(table.output, testing::EndsWith("\n3 of 12 values undefined\n"));
    // The square root of -1 at node 11 is not a number.
    const Json root = envelopeOf({tiny.path(), "sqrt(extractComponent(DISP, 0))"})["rows"][0];
    EXPECT_EQ(root["undefined"], 2);
    EXPECT_EQ(root["min"]["at"], 14);
}

TEST(EnvelopeCommand, WithoutAnyValueThereIsNoRange) {
    const TinyFile tiny;
    const Json row = envelopeOf({tiny.path(), "ERROR*2"})["rows"][0];
    EXPECT_EQ(row["count"], 4);
    EXPECT_EQ(row["undefined"], 4);
    EXPECT_TRUE(row["min"].is_null());
    EXPECT_TRUE(row["max"].is_null());
    const std::vector<std::string> table = lines(runOrvapp({"envelope", tiny.path(), "ERROR*2"}).output);
    EXPECT_THAT(table[2], testing::MatchesRegex("  value +minimum +- +- +- +- +-"));
    EXPECT_THAT(lines(runOrvapp({"envelope", tiny.path(), "ERROR*2", "--csv", "-"}).output),
                ElementsAre("component,extreme,value,state,referenceType,referenceValue,part,id", "value,minimum,,,,,,",
                            "value,maximum,,,,,,"));
}

TEST(EnvelopeCommand, OfEqualValuesTheFirstCounts) {
    const TinyFile tiny;
    const Json row = envelopeOf({tiny.path(), "NDTEMP"})["rows"][0];
    EXPECT_EQ(row["min"]["at"], 11);
    EXPECT_EQ(row["max"]["at"], 11);
    const Json zero = envelopeOf({bracketFile(), "DISP*0"})["rows"][0];
    EXPECT_EQ(zero["min"]["state"], namesIn(bracketFile(), "states")[0]);
    EXPECT_EQ(zero["max"]["state"], namesIn(bracketFile(), "states")[0]);
}

TEST(EnvelopeCommand, CsvHasTheTableWithAllDigits) {
    const orvtest::ScratchFolder folder;
    const std::string csv = folder / "pe.csv";
    const TinyFile tiny;
    const Outcome outcome = runOrvapp({"envelope", tiny.path(), "DISP/3", "--csv", csv});
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_THAT(outcome.output, testing::StartsWith("DISP/3 (displacement, per node) over 1 state\n"));
    const std::vector<std::string> text = lines(orvtest::readWholeFile(csv));
    ASSERT_EQ(text.size(), 7u);
    const std::string state = namesIn(tiny.path(), "states")[0];
    const std::string part = namesIn(tiny.path(), "parts")[0];
    EXPECT_EQ(text[0], "component,extreme,value,state,referenceType,referenceValue,part,id");
    EXPECT_THAT(fieldsOf(text[1]),
                ElementsAre("X", "minimum", "-0.3333333333333333", state, "time", "0.5", part, "11"));
    EXPECT_THAT(fieldsOf(text[2]), ElementsAre("X", "maximum", "0.8333333333333334", state, "time", "0.5", part, "12"));
    EXPECT_EQ(runOrvapp({"envelope", tiny.path(), "DISP/3", "--csv", "-"}).output, orvtest::readWholeFile(csv));
    EXPECT_EQ(failureOf({"envelope", tiny.path(), "DISP", "--csv", folder / "missing/x.csv"}),
              "orvapp: cannot write \"" + (folder / "missing/x.csv") + "\": No such file or directory\n");
}

TEST(EnvelopeCommand, AnExpressionWithoutStatesIsAnError) {
    const TinyFile tiny;
    EXPECT_EQ(failureOf({"envelope", tiny.path(), "l2Norm(DISP)*NDTEMP"}),
              "orvapp: " + tiny.path() + ": \"l2Norm(DISP)*NDTEMP\" has no values in any state\n");
}

TEST_F(EnvelopeMemoryTest, OneStateAtATimeIsInMemory) {
    const orvapp::ResultFile file(bracketFile());
    orv::ug::DataSource& source = *orv::app::Models::instance()->current()->dataSource();
    const orvapp::ExpressionResult built =
        buildResult(orvapp::parseExpression("l2Norm(DISP) + vonMises(STRESS)*PE"), file.results());
    orvapp::ValuesOptions options;
    const orvapp::ValuesSelection selection = selectValues(file, file.add(built.info, "x"), options);
    ASSERT_EQ(selection.states.size(), 5u);
    std::vector<std::size_t> bytes;
    walkValues(file, selection, [&](const orvapp::PartValues& part) {
        // No other state has values than the one that is visited.
        EXPECT_EQ(source.state(source.stateIndex(part.state.id()))->resultByteCount(), bytesInStates(source));
        bytes.push_back(bytesInStates(source));
    });
    // On both parts, 811 nodes: the three results of the file and what was computed from them, 3 + 6 + 1 + 1 doubles.
    EXPECT_THAT(bytes, testing::AllOf(testing::SizeIs(10), testing::Each(811 * 11 * sizeof(double))));
    EXPECT_EQ(bytesInStates(source), 0u);

    const orvapp::EnvelopeReport report = envelopeOf(file, selection);
    EXPECT_EQ(report.expression, "x");
    EXPECT_EQ(bytesInStates(source), 0u);
}

TEST_F(EnvelopeMemoryTest, AResultOfTheFileIsDroppedToo) {
    const orvapp::ResultFile file(bracketFile());
    orv::ug::DataSource& source = *orv::app::Models::instance()->current()->dataSource();
    const orvapp::ExpressionResult built = buildResult(orvapp::parseExpression("STRESS"), file.results());
    EXPECT_EQ(file.add(built.info, "x"), built.info);
    envelopeOf(file, selectValues(file, built.info, {}));
    EXPECT_EQ(bytesInStates(source), 0u);
}
