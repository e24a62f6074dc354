#include "OrvCore/Defines.h"

#include "Tests/Support/ScratchFolder.h"
#include "Tests/Tools/CommandResults.h"
#include "Tests/Tools/FrdColumns.h"
#include "Tests/Tools/Program.h"

#include <gmock/gmock.h>

#include <cmath>
#include <fstream>
#include <utility>

#include <nlohmann/json.hpp>

using Json = nlohmann::ordered_json;
using orvtest::bracketFile;
using orvtest::fieldsOf;
using orvtest::lines;
using orvtest::namesIn;
using orvtest::NodeValues;
using orvtest::Outcome;
using orvtest::runOrvapp;
using orvtest::TinyFile;
using testing::ElementsAre;
using testing::HasSubstr;

namespace {

struct Block {
    std::string name;
    std::vector<std::string> components;
};

const std::vector<Block> BRACKET_BLOCKS = {{"DISP", {"X", "Y", "Z"}},
                                           {"FORC", {"X", "Y", "Z"}},
                                           {"STRESS", {"XX", "YY", "ZZ", "XY", "YZ", "ZX"}},
                                           {"PE", {"value"}},
                                           {"ERROR", {"value"}}};

Json valuesOf(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), "values");
    return orvtest::jsonOf(std::move(arguments));
}

std::string failureOf(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), "values");
    return orvtest::failureOf(arguments);
}

} // namespace

TEST(ValuesCommand, JsonAgreesWithThePlainColumnsOfTheFile) {
    const std::vector<std::string> states = namesIn(bracketFile(), "states");
    const std::vector<std::string> parts = namesIn(bracketFile(), "parts");
    const std::vector<std::vector<int>> nodes = {orvtest::nodesOfMaterial(bracketFile(), 1),
                                                 orvtest::nodesOfMaterial(bracketFile(), 2)};
    for (const Block& block : BRACKET_BLOCKS) {
        const Json values = valuesOf({bracketFile(), "--result", block.name});
        EXPECT_EQ(values["result"], block.name);
        ASSERT_EQ(values["rows"].size(), states.size() * parts.size() * block.components.size());
        auto row = values["rows"].begin();
        for (std::size_t state = 0; state < states.size(); ++state) {
            const NodeValues numbers = orvtest::readBlock(bracketFile(), int(state) + 1, block.name);
            for (std::size_t part = 0; part < parts.size(); ++part) {
                for (std::size_t component = 0; component < block.components.size(); ++component, ++row) {
                    const orvtest::Range range = orvtest::range(numbers, nodes[part], component);
                    EXPECT_EQ((*row)["state"], states[state]);
                    EXPECT_EQ((*row)["part"], parts[part]);
                    EXPECT_EQ((*row)["component"], block.components[component]);
                    EXPECT_EQ((*row)["count"], nodes[part].size());
                    EXPECT_EQ((*row)["undefined"], 0);
                    EXPECT_EQ((*row)["min"], range.min);
                    EXPECT_EQ((*row)["minAt"], range.minAt);
                    EXPECT_EQ((*row)["max"], range.max);
                    EXPECT_EQ((*row)["maxAt"], range.maxAt);
                    const double size = std::max(std::fabs(range.min), std::fabs(range.max));
                    EXPECT_NEAR((*row)["average"], range.average, 1e-12 * size);
                }
            }
        }
    }
}

TEST(ValuesCommand, JsonHasTheseKeysInThisOrder) {
    const Json values = valuesOf({bracketFile(), "--result", "PE"});
    std::vector<std::string> keys;
    for (const auto& [key, value] : values["rows"][0].items()) {
        keys.push_back(key);
    }
    EXPECT_THAT(keys, ElementsAre("state", "part", "component", "count", "undefined", "min", "minAt", "max", "maxAt",
                                  "average"));
}

TEST(ValuesCommand, PatternsChooseStatesAndParts) {
    const std::vector<std::string> states = namesIn(bracketFile(), "states");
    const Json rows = valuesOf({bracketFile(), "--result", "DIS?", "--state", states[4], "--part", "STEEL*"})["rows"];
    ASSERT_EQ(rows.size(), 3u);
    EXPECT_EQ(rows[2]["state"], states[4]);
    // Of the block DISP of the last state, the third column on the 741 nodes of elements with material 1, by awk.
    EXPECT_EQ(rows[2]["count"], 741);
    EXPECT_EQ(rows[2]["min"], -7.87562e-01);
    EXPECT_EQ(rows[2]["minAt"], 687);
    EXPECT_EQ(rows[2]["max"], 8.07087e-04);
    EXPECT_EQ(rows[2]["maxAt"], 13);
    EXPECT_NEAR(rows[2]["average"], -0.176936683119, 1e-12);
}

TEST(ValuesCommand, TableShowsTheSameRounded) {
    const std::vector<std::string> states = namesIn(bracketFile(), "states");
    const Outcome outcome =
        runOrvapp({"values", bracketFile(), "--result", "DISP", "--state", states[4], "--part", "STEEL*"});
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_EQ(outcome.messages, "");
    const std::vector<std::string> text = lines(outcome.output);
    ASSERT_EQ(text.size(), 5u);
    EXPECT_EQ(text[0], "DISP (displacement, per node)");
    EXPECT_THAT(text[1], testing::MatchesRegex("  State +Part +Component +Count +Undefined +Minimum +at node +Maximum "
                                               "+at node +Average"));
    EXPECT_THAT(text[4], testing::ContainsRegex(" Z +741 +0 +-0.787562 +687 +0.000807087 +13 +-0.176937$"));
}

TEST(ValuesCommand, NodesWithoutAValueAreCountedAndLeftOut) {
    const TinyFile tiny;
    const Json rows = valuesOf({tiny.path(), "--result", "DISP"})["rows"];
    // Only the first state has DISP; node 13 has none there. The average is (-1 + 2.5 + 1.5) / 3.
    ASSERT_EQ(rows.size(), 3u);
    EXPECT_EQ(rows[0]["count"], 4);
    EXPECT_EQ(rows[0]["undefined"], 1);
    EXPECT_EQ(rows[0]["min"], -1);
    EXPECT_EQ(rows[0]["minAt"], 11);
    EXPECT_EQ(rows[0]["max"], 2.5);
    EXPECT_EQ(rows[0]["maxAt"], 12);
    EXPECT_EQ(rows[0]["average"], 1);
}

TEST(ValuesCommand, WithoutAnyValueThereIsNoRange) {
    const TinyFile tiny;
    const Json row = valuesOf({tiny.path(), "--result", "ERROR"})["rows"][0];
    EXPECT_EQ(row["count"], 4);
    EXPECT_EQ(row["undefined"], 4);
    for (const char* key : {"min", "minAt", "max", "maxAt", "average"}) {
        EXPECT_TRUE(row[key].is_null()) << key;
    }
    const Outcome table = runOrvapp({"values", tiny.path(), "--result", "ERROR"});
    EXPECT_THAT(table.output, testing::ContainsRegex(" value +4 +4 +- +- +- +- +-\n"));
}

TEST(ValuesCommand, CsvHoldsEveryNumberOfTheFile) {
    const orvtest::ScratchFolder folder;
    const std::string csv = folder / "stress.csv";
    const Outcome outcome = runOrvapp({"values", bracketFile(), "--result", "STRESS", "--csv", csv});
    EXPECT_EQ(outcome.exitCode, 0) << outcome.messages;
    EXPECT_THAT(folder.names(), ElementsAre("stress.csv"));

    const std::vector<std::string> text = lines(orvtest::readWholeFile(csv));
    const std::vector<std::string> states = namesIn(bracketFile(), "states");
    const std::vector<std::string> parts = namesIn(bracketFile(), "parts");
    ASSERT_EQ(text.size(), 1 + states.size() * (741 + 70));
    EXPECT_EQ(text[0], "state,part,id,XX,YY,ZZ,XY,YZ,ZX");
    auto line = text.begin() + 1;
    for (std::size_t state = 0; state < states.size(); ++state) {
        const NodeValues numbers = orvtest::readBlock(bracketFile(), int(state) + 1, "STRESS");
        for (int part = 0; part < 2; ++part) {
            for (const int node : orvtest::nodesOfMaterial(bracketFile(), part + 1)) {
                std::vector<std::string> expected = {states[state], parts[std::size_t(part)], std::to_string(node)};
                const std::vector<std::string> fields = fieldsOf(*line++);
                ASSERT_EQ(fields.size(), 9u);
                EXPECT_THAT(std::vector<std::string>(fields.begin(), fields.begin() + 3), testing::Eq(expected));
                for (std::size_t i = 0; i < 6; ++i) {
                    EXPECT_EQ(std::strtod(fields[3 + i].c_str(), nullptr), numbers.at(node)[i]);
                }
            }
        }
    }
}

TEST(ValuesCommand, CsvOnStandardOutputReplacesTheTable) {
    const TinyFile tiny;
    const std::string state = namesIn(tiny.path(), "states")[0];
    const Outcome outcome = runOrvapp({"values", tiny.path(), "--result", "DISP", "--csv", "-"});
    EXPECT_EQ(outcome.exitCode, 0);
    const std::vector<std::string> text = lines(outcome.output);
    ASSERT_EQ(text.size(), 5u);
    EXPECT_EQ(text[0], "state,part,id,X,Y,Z");
    const std::string part = namesIn(tiny.path(), "parts")[0];
    EXPECT_THAT(part, HasSubstr("STEEL, hard"));
    EXPECT_THAT(fieldsOf(text[1]), ElementsAre(state, part, "11", "-1", "0", "0"));
    EXPECT_THAT(fieldsOf(text[3]), ElementsAre(state, part, "13", "", "", "")); // the node without a value
    EXPECT_THAT(fieldsOf(text[4]), ElementsAre(state, part, "14", "1.5", "0", "0"));
}

TEST(ValuesCommand, ACsvThatCannotBeWrittenEndsWithOne) {
    const orvtest::ScratchFolder folder;
    const std::string csv = folder / "missing/pe.csv";
    EXPECT_EQ(failureOf({bracketFile(), "--result", "PE", "--csv", csv}),
              "orvapp: cannot write \"" + csv + "\": No such file or directory\n");
    EXPECT_EQ(failureOf({bracketFile(), "--result", "PE", "--csv", "/dev/full"}),
              "orvapp: cannot write \"/dev/full\": No space left on device\n");
}

TEST(ValuesCommand, AnUnknownResultIsToldWithWhatThereIs) {
    const std::string beginning = "orvapp: " + bracketFile() + ": ";
    EXPECT_EQ(failureOf({bracketFile(), "--result", "stres"}),
              beginning + R"(there is no result "stres"; did you mean "STRESS"? )"
                          R"((results: "PE", "ERROR", "FORC", "STRESS", "DISP"))"
                          "\n");
    EXPECT_EQ(failureOf({bracketFile(), "--result", "NDTEMP"}),
              beginning + R"(there is no result "NDTEMP" (results: "PE", "ERROR", "FORC", "STRESS", "DISP"))"
                          "\n");
}

TEST(ValuesCommand, APatternForSeveralResultsIsToldWithAllOfThem) {
    EXPECT_EQ(failureOf({bracketFile(), "--result", "*R*"}),
              "orvapp: " + bracketFile() +
                  R"(: "*R*" names 3 results, name one of them: "ERROR", "FORC", "STRESS")"
                  "\n");
}

// Many programs write one name at nodes and in elements.
TEST(ValuesCommand, WordsBehindANameChooseAmongResultsThatShareIt) {
    const orvtest::ScratchFolder folder;
    const std::string file = folder / "shared.ztf";
    std::ofstream(file) << R"(ztf 1
result scalar 1 "T" node
result scalar 2 "T" element
result vector 1 "T" node
result scalar 3 "a:node" node
geometry 1
part 1 "p"
nodes 2
  0 0 0
  1 0 0
elements 1
  beam 1 2
state 1 "s" time 0
geometries 1
  1
field scalar 1
values 1 1
  1 2
field scalar 2
values 1 1
  3
field vector 1
values 1 1
  4 5 6 4 5 6
field scalar 3
values 1 1
  7 7
end
)";
    const auto smallest = [&](const std::string& result) {
        return valuesOf({file, "--result", result})["rows"][0]["min"].get<double>();
    };
    EXPECT_EQ(smallest("T:scalar:node"), 1.0);
    EXPECT_EQ(smallest("T:node:scalar"), 1.0);
    EXPECT_EQ(smallest("T:element"), 3.0);
    EXPECT_EQ(smallest("T:vector"), 4.0);
    EXPECT_EQ(smallest("[T]:vector"), 4.0);
    EXPECT_EQ(smallest("a:node"), 7.0); // A name as it stands.
    EXPECT_EQ(smallest("a:node:scalar"), 7.0);
    // Scalars come before vectors in all lists.
    const std::string beginning = "orvapp: " + file + ": ";
    EXPECT_EQ(failureOf({file, "--result", "T"}),
              beginning +
                  R"("T" names 3 results, name one of them: "T:scalar:node", "T:scalar:element", "T:vector:node")"
                  "\n");
    EXPECT_EQ(failureOf({file, "--result", "T:node"}),
              beginning + R"("T:node" names 2 results, name one of them: "T:scalar:node", "T:vector:node")"
                          "\n");
    EXPECT_EQ(failureOf({file, "--result", "T:tensor"}),
              beginning + R"(there is no result "T:tensor", only: "T:scalar:node", "T:scalar:element", "T:vector:node")"
                          "\n");
    EXPECT_EQ(failureOf({file, "--result", "U:node"}),
              beginning + R"(there is no result "U"; did you mean "T"? (results: "T", "a:node"))"
                          "\n");
}

TEST(ValuesCommand, UnknownStatesAndPartsAreToldWithWhatThereIs) {
    const std::string state = failureOf({bracketFile(), "--result", "PE", "--state", "nowhere"});
    EXPECT_THAT(state, testing::StartsWith("orvapp: " + bracketFile() + ": there is no state \"nowhere\" (states: "));
    for (const std::string& name : namesIn(bracketFile(), "states")) {
        EXPECT_THAT(state, HasSubstr('"' + name + '"'));
    }
    EXPECT_EQ(failureOf({bracketFile(), "--result", "PE", "--part", "STEL"}),
              "orvapp: " + bracketFile() +
                  R"(: there is no part "STEL"; did you mean "STEEL"? (parts: "STEEL", "ALUMINIUM"))"
                  "\n");
}

TEST(ValuesCommand, AResultThatTheChosenStatesLackIsAnError) {
    const TinyFile tiny;
    const std::vector<std::string> states = namesIn(tiny.path(), "states");
    EXPECT_EQ(failureOf({tiny.path(), "--result", "DISP", "--state", states[1]}),
              "orvapp: " + tiny.path() + ": \"DISP\" has no values in state \"" + states[1] + "\", only in: \"" +
                  states[0] + "\"\n");
}

TEST(ValuesCommand, WarningsComeInFrontOfTheError) {
    const orvtest::ScratchFolder folder;
    const std::string bracket = orvtest::readWholeFile(bracketFile());
    // Cut off in the first block of stresses.
    const std::string aborted = folder.write("aborted.frd", bracket.substr(0, bracket.find(" -4  STRESS") + 1000));
    const std::string messages = failureOf({aborted, "--result", "STRESS"});
    EXPECT_THAT(lines(messages), ElementsAre(testing::StartsWith("orvapp: warning: "),
                                             testing::HasSubstr("there is no result \"STRESS\" (results: \"DISP\")")));
    EXPECT_THAT(runOrvapp({"values", aborted, "--result", "DISP"}).messages, testing::StartsWith("orvapp: warning: "));
}

TEST(ValuesCommand, AFailedLoadTellsWhyAndLeavesNoFile) {
    const orvtest::ScratchFolder folder;
    std::string bracket = orvtest::readWholeFile(bracketFile());
    // A value in the second state's stresses that is no number: the index does not look at it, loading does.
    const std::size_t state = bracket.find("  100CL  102", bracket.find("  100CL  102") + 1);
    const std::size_t row = bracket.find(" -1         1", state);
    bracket.replace(row + 13, 12, "  1.2345X+00");
    const std::string broken = folder.write("broken.frd", bracket);
    const std::string message = failureOf({broken, "--result", "STRESS", "--csv", folder / "stress.csv"});
    EXPECT_THAT(message, testing::StartsWith("orvapp: "));
    EXPECT_THAT(message, HasSubstr(broken));
    EXPECT_THAT(folder.names(), ElementsAre("broken.frd"));
}

TEST(ValuesCommand, LeavesNothingOnATerminal) {
    const Outcome outcome = orvtest::runOrvappOnTerminal({"values", bracketFile(), "--result", "DISP"});
    EXPECT_EQ(outcome.exitCode, 0);
    // Short work shows no bar; on a machine where it takes long, the last thing sent erases it.
    EXPECT_THAT(outcome.messages, testing::AnyOf("", testing::EndsWith("\r\x1b[K")));
}
