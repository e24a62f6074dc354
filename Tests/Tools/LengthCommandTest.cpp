// The bracket stands on the plane z = 0, where its foot is 10 x 10: node 1 is at (0, 0, 0), node 45 at (10, 10, 0), and
// the squares there are 5 x 5, with nodes half way.

#include "Tests/Support/ScratchFolder.h"
#include "Tests/Tools/CommandResults.h"
#include "Tests/Tools/FrdColumns.h"
#include "Tests/Tools/Program.h"

#include <gmock/gmock.h>

#include <cmath>

using Json = nlohmann::ordered_json;
using orvtest::bracketFile;
using orvtest::failureOf;
using orvtest::jsonOf;
using orvtest::lines;
using orvtest::namesIn;
using orvtest::Outcome;
using orvtest::runOrvapp;
using testing::HasSubstr;
using testing::StartsWith;

namespace {

Json lengthOf(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), {"length", bracketFile()});
    return jsonOf(std::move(arguments));
}

/// What is in the file at a node in a state, from its columns.
double valueAt(const std::string& block, int state, int node) {
    return orvtest::readBlock(bracketFile(), state, block).at(node)[0];
}

std::string failureThrough(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), {"length", bracketFile(), "--result", "ERROR"});
    return failureOf(arguments);
}

} // namespace

TEST(LengthCommand, AWayOverThePlaneHasTheNodesValuesAtItsEnds) {
    const Json report = lengthOf({"--result", "ERROR", "--through", "0,0,0", "--through", "10,10,0"});
    EXPECT_EQ(report["result"], "ERROR");
    EXPECT_EQ(report["mapping"], "node");
    EXPECT_EQ(report["x"], "Length");
    ASSERT_EQ(report["curves"].size(), 1u);
    const Json& curve = report["curves"][0];
    EXPECT_EQ(curve["name"], namesIn(bracketFile(), "states")[4]);
    EXPECT_EQ(curve["x"].front(), 0);
    EXPECT_NEAR(curve["x"].back(), std::sqrt(200.0), 1e-9);
    EXPECT_EQ(curve["y"].front(), valueAt("ERROR", 5, 1));
    EXPECT_EQ(curve["y"].back(), valueAt("ERROR", 5, 45));
    EXPECT_EQ(curve["path"].front(), Json({0.0, 0.0, 0.0}));
    EXPECT_EQ(curve["path"].back(), Json({10.0, 10.0, 0.0}));
    EXPECT_EQ(curve["x"].size(), curve["y"].size());
    EXPECT_EQ(curve["x"].size(), curve["path"].size());
}

TEST(LengthCommand, TheWayGoesThroughAllPoints) {
    // Twice along the sides of the foot.
    const Json curve = lengthOf(
        {"--result", "ERROR", "--through", "0,0,0", "--through", "10,0,0", "--through", "10,10,0"})["curves"][0];
    EXPECT_NEAR(curve["x"].back(), 20, 1e-9);
    EXPECT_EQ(curve["y"].back(), valueAt("ERROR", 5, 45));
    EXPECT_THAT(curve["path"].get<std::vector<std::vector<double>>>(),
                testing::Contains(testing::ElementsAre(10, 0, 0)));
}

TEST(LengthCommand, EachStateMakesACurve) {
    const std::vector<std::string> points = {"--through", "0,0,0", "--through", "10,10,0"};
    auto curves = [&](const std::string& state) {
        std::vector<std::string> arguments = {"--result", "-ERROR", "--state", state};
        arguments.insert(arguments.end(), points.begin(), points.end());
        return lengthOf(arguments)["curves"];
    };
    const std::vector<std::string> states = namesIn(bracketFile(), "states");
    const Json all = curves("*");
    ASSERT_EQ(all.size(), 5u);
    for (int i = 0; i < 5; ++i) {
        EXPECT_EQ(all[std::size_t(i)]["name"], states[std::size_t(i)]);
        EXPECT_EQ(all[std::size_t(i)]["y"].back(), -valueAt("ERROR", i + 1, 45));
    }
    EXPECT_EQ(curves("*time 0.4"), Json({all[1]}));
    EXPECT_THAT(failureThrough({"--through", "0,0,0", "--through", "10,10,0", "--state", "time 7"}),
                StartsWith("orvapp: " + bracketFile() + ": there is no state \"time 7\""));
}

TEST(LengthCommand, PointsNearTheSurfaceAreMovedOntoIt) {
    // A hundredth of the diagonal of 70 x 10 x 60 is 0.927.
    const Json curve = lengthOf({"--result", "ERROR", "--through", "-0.5,0,0", "--through", "10,10,-0.9"})["curves"][0];
    EXPECT_EQ(curve["path"].front(), Json({0.0, 0.0, 0.0}));
    EXPECT_EQ(curve["path"].back(), Json({10.0, 10.0, 0.0}));
    EXPECT_EQ(
        failureThrough({"--through", "0,0,-1", "--through", "10,10,0"}),
        "orvapp: " + bracketFile() +
            ": the point 0,0,-1 is 1 off the surface, whose nearest point is 0,0,0; allowed is 0.927362, and more "
            "with --tolerance\n");
    EXPECT_EQ(lengthOf({"--result", "ERROR", "--through", "0,0,-1", "--through", "10,10,0", "--tolerance",
                        "1"})["curves"][0]["path"],
              lengthOf({"--result", "ERROR", "--through", "0,0,0", "--through", "10,10,0"})["curves"][0]["path"]);
    EXPECT_THAT(failureThrough({"--through", "0,0,-0.5", "--through", "10,10,0", "--tolerance", "0.4"}),
                HasSubstr("allowed is 0.4"));
}

TEST(LengthCommand, PartsThatAreNotChosenAreNotThere) {
    // The aluminium lies on the end of the arm, from x = 55.
    EXPECT_EQ(failureThrough({"--through", "0,0,0", "--through", "10,10,0", "--part", "ALU*"}),
              "orvapp: " + bracketFile() +
                  ": the point 0,0,0 is 55.9017 off the surface, whose nearest point is 55,0,10; allowed is 0.187083, "
                  "and more with --tolerance\n");
    const Json report =
        lengthOf({"--result", "ERROR", "--through", "55,0,15", "--through", "70,0,15", "--part", "ALUMINIUM"});
    EXPECT_NEAR(report["curves"][0]["x"].back(), 15, 1e-9);
    EXPECT_THAT(failureThrough({"--through", "0,0,0", "--through", "10,10,0", "--part", "STEL"}),
                HasSubstr("did you mean \"STEEL\"?"));
}

TEST(LengthCommand, ValuesPerElementMakeSteps) {
    const Json curve =
        lengthOf({"--result", "toElementsArithmetic(ERROR)", "--through", "0,2,0", "--through", "10,2,0"})["curves"][0];
    // Two elements: constant in each, and a step where they meet, 5 from either end.
    const std::vector<double> x = curve["x"];
    const std::vector<double> y = curve["y"];
    const auto step = std::adjacent_find(x.begin(), x.end());
    ASSERT_NE(step, x.end());
    EXPECT_NEAR(*step, 5, 1e-9);
    for (std::size_t i = 0; i < x.size(); ++i) {
        EXPECT_EQ(y[i], i <= std::size_t(step - x.begin()) ? y.front() : y.back());
    }
    EXPECT_NE(y.front(), y.back());
}

TEST(LengthCommand, TableAndCsvTellTheSame) {
    const orvtest::ScratchFolder folder;
    const Outcome outcome = runOrvapp({"length", bracketFile(), "--result", "ERROR", "--through", "0,0,0", "--through",
                                       "10,10,0", "--csv", folder / "e.csv", folder / "e.svg"});
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_EQ(outcome.messages, "");
    const std::vector<std::string> text = lines(outcome.output);
    ASSERT_EQ(text.size(), 3u);
    EXPECT_EQ(text[0], "ERROR (scalar, per node) over Length");
    EXPECT_THAT(text[1], testing::MatchesRegex("  Curve +Points +Minimum +at Length +Maximum +at Length"));
    EXPECT_THAT(text[2], StartsWith("  Step 1, increment 5, time 1 "));
    const std::vector<std::string> csv = lines(folder.read("e.csv"));
    EXPECT_EQ(csv[0], "Length,\"Step 1, increment 5, time 1: ERROR\"");
    EXPECT_EQ(std::stod(orvtest::fieldsOf(csv[1])[1]), valueAt("ERROR", 5, 1));
    EXPECT_THAT(folder.read("e.svg"), StartsWith("<?xml"));
}

TEST(LengthCommand, TheTitleTellsTheFileAndTheState) {
    const orvtest::ScratchFolder folder;
    auto picture = [&](const std::vector<std::string>& more) {
        std::vector<std::string> arguments = {"length", bracketFile(), "--result", "ERROR",         "--through",
                                              "0,0,0",  "--through",   "10,10,0",  folder / "p.svg"};
        arguments.insert(arguments.end(), more.begin(), more.end());
        EXPECT_EQ(runOrvapp(arguments).exitCode, 0);
        return folder.read("p.svg");
    };
    EXPECT_EQ(picture({}), picture({"--title", "bracket.frd, Step 1, increment 5, time 1"}));
    EXPECT_EQ(picture({"--state", "*"}), picture({"--state", "*", "--title", "bracket.frd, 5 states"}));
    EXPECT_NE(picture({}), picture({"--title", "Plot 1"}));
}

TEST(LengthCommand, PointsWithoutAWayAreTold) {
    const std::string noWay = "orvapp: " + bracketFile() +
                              ": there is no way along the surface through these points: they are all the same, or lie "
                              "on parts that do not touch\n";
    EXPECT_EQ(failureThrough({"--through", "0,0,0", "--through", "0,0,0"}), noWay);
}

TEST(LengthCommand, AWayWithoutValuesIsTold) {
    // One tetrahedron, whose second state has ERROR without a row.
    const orvtest::TinyFile tiny;
    const Json nodes = jsonOf({"info", tiny.path()})["models"][0]["parts"];
    ASSERT_EQ(nodes[0]["nodes"], 4);
    const std::string message = failureOf(
        {"length", tiny.path(), "--result", "ERROR", "--through", "0,0,0", "--through", "1,0,0", "--tolerance", "10"});
    EXPECT_EQ(message, "orvapp: " + tiny.path() + ": \"ERROR\" has no values along the way in state \"" +
                           namesIn(tiny.path(), "states")[1] + "\"\n");
}

TEST(LengthCommand, AFailedLoadTellsWhyAndLeavesNoFile) {
    const orvtest::ScratchFolder folder;
    std::string bracket = orvtest::readWholeFile(bracketFile());
    const std::size_t state = bracket.find("  100CL  102", bracket.find("  100CL  102") + 1);
    bracket.replace(bracket.find(" -1         1", bracket.find("ERROR  ", state)) + 13, 12, "  1.2345X+00");
    const std::string broken = folder.write("broken.frd", bracket);
    EXPECT_THAT(failureOf({"length", broken, "--result", "ERROR", "--through", "0,0,0", "--through", "10,10,0",
                           "--state", "*", "--csv", folder / "e.csv", folder / "e.png"}),
                HasSubstr(broken));
    EXPECT_THAT(folder.names(), testing::ElementsAre("broken.frd"));
}
