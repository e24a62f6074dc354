#include "Tests/Support/ScratchFolder.h"
#include "Tests/Tools/CommandResults.h"
#include "Tests/Tools/FrdColumns.h"
#include "Tests/Tools/Program.h"

#include <gmock/gmock.h>

#include <cmath>
#include <map>

using Json = nlohmann::ordered_json;
using orvtest::bracketFile;
using orvtest::failureOf;
using orvtest::jsonOf;
using orvtest::lines;
using orvtest::namesIn;
using orvtest::Outcome;
using orvtest::runOrvapp;
using orvtest::TinyFile;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

namespace {

Json historyOf(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), "history");
    return jsonOf(std::move(arguments));
}

/// One component at a node in each of the five states, from the columns of the file.
std::vector<double> column(const std::string& block, int node, std::size_t component) {
    std::vector<double> values;
    for (int state = 1; state <= 5; ++state) {
        values.push_back(orvtest::readBlock(bracketFile(), state, block).at(node)[component]);
    }
    return values;
}

} // namespace

TEST(HistoryCommand, AResultAgreesWithThePlainColumnsOfTheFile) {
    const Json report = historyOf({bracketFile(), "--result", "PE", "--node", "13", "--node", "761"});
    EXPECT_EQ(report["result"], "PE");
    EXPECT_EQ(report["mapping"], "node");
    EXPECT_EQ(report["x"], "Time");
    ASSERT_EQ(report["curves"].size(), 2u);
    EXPECT_EQ(report["curves"][0]["name"], "node 13 (STEEL)");
    EXPECT_EQ(report["curves"][0]["y"], Json(column("PE", 13, 0)));
    EXPECT_EQ(report["curves"][1]["name"], "node 761 (ALUMINIUM)");
    EXPECT_EQ(report["curves"][1]["y"], Json(column("PE", 761, 0)));
    for (const Json& curve : report["curves"]) {
        ASSERT_EQ(curve["x"].size(), 5u);
        for (std::size_t i = 0; i < 5; ++i) {
            EXPECT_NEAR(curve["x"][i], 0.2 * double(i + 1), 1e-12);
        }
        EXPECT_FALSE(curve.contains("path"));
    }
}

TEST(HistoryCommand, AnExpressionIsComputedInEachState) {
    const Json report = historyOf({bracketFile(), "--result", "l2Norm(DISP)", "--node", "687"});
    const std::vector<double> x = column("DISP", 687, 0);
    const std::vector<double> y = column("DISP", 687, 1);
    const std::vector<double> z = column("DISP", 687, 2);
    ASSERT_EQ(report["curves"][0]["y"].size(), 5u);
    for (std::size_t i = 0; i < 5; ++i) {
        EXPECT_NEAR(report["curves"][0]["y"][i], std::hypot(x[i], y[i], z[i]), 1e-12);
    }
    EXPECT_EQ(historyOf({bracketFile(), "--result", "-PE", "--node", "1"})["result"], "-PE");
}

TEST(HistoryCommand, ElementsAreDrawnByTheirNumbers) {
    const std::string perElement = "toElementsArithmetic(PE)";
    // The values of all elements, which compute reads state by state: state, part, id and value.
    std::map<std::string, std::vector<double>> expected;
    for (const std::string& line :
         lines(runOrvapp({"compute", bracketFile(), perElement, "--name", "x", "--csv", "-"}).output)) {
        const std::vector<std::string> fields = orvtest::fieldsOf(line);
        if (fields[2] == "12" || fields[2] == "97") {
            expected["element " + fields[2] + " (" + fields[1] + ')'].push_back(std::stod(fields[3]));
        }
    }
    const Json report = historyOf({bracketFile(), "--result", perElement, "--element", "12", "--element", "97"});
    EXPECT_EQ(report["mapping"], "element");
    ASSERT_EQ(report["curves"].size(), 2u);
    ASSERT_EQ(expected.size(), 2u);
    for (const Json& curve : report["curves"]) {
        EXPECT_EQ(curve["y"], Json(expected[curve["name"]]));
    }
}

TEST(HistoryCommand, EveryFormatTellsTheSame) {
    const orvtest::ScratchFolder folder;
    const std::string password = folder.write("password.txt", "secret\n");
    const std::string open = folder / "open.ztfx";
    const std::string closed = folder / "closed.ztfx";
    ASSERT_EQ(runOrvapp({"convert", bracketFile(), open}).exitCode, 0);
    ASSERT_EQ(runOrvapp({"convert", bracketFile(), closed, "--password-file", password}).exitCode, 0);
    for (const char* result : {"PE", "vonMises(STRESS)"}) {
        const Json report = historyOf({bracketFile(), "--result", result, "--node", "64"});
        EXPECT_EQ(historyOf({open, "--result", result, "--node", "64"}), report);
        EXPECT_EQ(historyOf({closed, "--result", result, "--node", "64", "--password-file", password}), report);
    }
    EXPECT_THAT(failureOf({"history", closed, "--result", "PE", "--node", "64"}), HasSubstr(closed));
}

TEST(HistoryCommand, TableTellsTheRangeOfEachCurve) {
    const Outcome outcome =
        runOrvapp({"history", bracketFile(), "--result", "PE", "--node", "13", "--name", "Plastic"});
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_EQ(outcome.messages, "");
    const std::vector<std::string> text = lines(outcome.output);
    ASSERT_EQ(text.size(), 3u);
    EXPECT_EQ(text[0], "Plastic (scalar, per node) over Time");
    EXPECT_THAT(text[1], testing::MatchesRegex("  Curve +Points +Minimum +at Time +Maximum +at Time"));
    EXPECT_THAT(text[2], StartsWith("  node 13 (STEEL)       5"));
}

TEST(HistoryCommand, AFileOfOnePartNeedsNoPartInTheNames) {
    const TinyFile tiny;
    const Json report = historyOf({tiny.path(), "--result", "l2Norm(DISP)", "--node", "12"});
    EXPECT_EQ(report["curves"][0]["name"], "node 12");
    // The second state has no DISP.
    EXPECT_EQ(report["curves"][0]["x"], Json({0.5}));
    EXPECT_EQ(report["curves"][0]["y"], Json({2.5}));
}

TEST(HistoryCommand, PicturesAreWrittenByTheEndOfTheirNames) {
    const orvtest::ScratchFolder folder;
    const struct {
        const char* name;
        const char* beginning;
    } rows[] = {{"p.svg", "<?xml"}, {"p.PNG", "\x89PNG"}, {"p.pdf", "%PDF"}};
    for (const auto& row : rows) {
        EXPECT_EQ(runOrvapp({"history", bracketFile(), "--result", "PE", "--node", "13", folder / row.name}).exitCode,
                  0);
        EXPECT_THAT(folder.read(row.name), StartsWith(row.beginning));
    }
}

TEST(HistoryCommand, ThePictureHasTheSizeThatIsAskedFor) {
    const orvtest::ScratchFolder folder;
    for (const auto& [size, width, height] : {std::tuple{"", 800, 600}, std::tuple{"640x480", 640, 480}}) {
        std::vector<std::string> arguments = {"history", bracketFile(), "--result",      "PE",
                                              "--node",  "13",          folder / "p.png"};
        if (*size) {
            arguments.insert(arguments.end(), {"--size", size});
        }
        EXPECT_EQ(runOrvapp(arguments).exitCode, 0);
        // The header chunk of a PNG: width and height in bytes 16 to 23, the most significant first.
        const std::string png = folder.read("p.png");
        ASSERT_GT(png.size(), 24u);
        auto number = [&](std::size_t at) {
            return int(static_cast<unsigned char>(png[at + 2])) * 256 + static_cast<unsigned char>(png[at + 3]);
        };
        EXPECT_EQ(number(16), width);
        EXPECT_EQ(number(20), height);
    }
    EXPECT_THAT(
        failureOf({"history", bracketFile(), "--result", "PE", "--node", "13", folder / "q.svg", "--size", "10x10"}),
        HasSubstr("10 x 10"));
    EXPECT_FALSE(folder.has("q.svg"));
}

TEST(HistoryCommand, CsvHasAColumnForEachCurve) {
    const orvtest::ScratchFolder folder;
    const std::string csv = folder / "pe.txt";
    const std::vector<std::string> arguments = {"history", bracketFile(), "--result", "PE",    "--node", "13",
                                                "--node",  "761",         "--name",   "Plast", "--csv"};
    auto with = [&](const std::string& path) {
        std::vector<std::string> all = arguments;
        all.push_back(path);
        return all;
    };
    EXPECT_THAT(runOrvapp(with(csv)).output, StartsWith("Plast (scalar, per node) over Time\n"));
    const std::vector<std::string> text = lines(orvtest::readWholeFile(csv));
    ASSERT_EQ(text.size(), 6u);
    EXPECT_EQ(text[0], "Time,node 13 (STEEL): Plast,node 761 (ALUMINIUM): Plast");
    EXPECT_EQ(std::stod(orvtest::fieldsOf(text[5])[1]), column("PE", 13, 0)[4]);
    EXPECT_EQ(runOrvapp(with("-")).output, orvtest::readWholeFile(csv));
    EXPECT_EQ(failureOf(with(folder / "missing/x.csv")),
              "orvapp: cannot write \"" + (folder / "missing/x.csv") + "\": No such file or directory\n");
}

TEST(HistoryCommand, ThePlotTellsTheFileAndWhatIsDrawn) {
    // CSV names a column by the curve and the axis; the title is in the pictures only, as outlines. So what is left to
    // see is that it has an influence.
    const orvtest::ScratchFolder folder;
    const std::vector<std::string> plain = {"history", bracketFile(), "--result", "PE", "--node", "13"};
    auto picture = [&](std::vector<std::string> more) {
        std::vector<std::string> arguments = plain;
        arguments.insert(arguments.end(), more.begin(), more.end());
        arguments.push_back(folder / "p.svg");
        EXPECT_EQ(runOrvapp(arguments).exitCode, 0);
        return folder.read("p.svg");
    };
    const std::string usual = picture({});
    EXPECT_EQ(picture({}), usual);
    EXPECT_EQ(picture({"--title", "bracket.frd, node 13 (STEEL)"}), usual);
    EXPECT_NE(picture({"--title", "Mine"}), usual);
    EXPECT_NE(picture({"--name", "Mine"}), usual);
    EXPECT_NE(picture({"--log-x"}), usual);
    EXPECT_NE(picture({"--log-y"}), usual);
    EXPECT_NE(picture({"--log-y"}), picture({"--log-x"}));
    EXPECT_EQ(picture({"--node", "761"}), picture({"--node", "761", "--title", "bracket.frd, 2 nodes"}));
}

TEST(HistoryCommand, ANodeOfSeveralPartsIsTakenFromTheFirstOrFromTheOneChosen) {
    auto nameOf = [](std::vector<std::string> more) {
        more.insert(more.begin(), {bracketFile(), "--result", "PE", "--node", "687"});
        return historyOf(more)["curves"][0]["name"];
    };
    EXPECT_EQ(nameOf({}), "node 687 (STEEL)");
    EXPECT_EQ(nameOf({"--part", "ALU*"}), "node 687 (ALUMINIUM)");
    EXPECT_EQ(failureOf({"history", bracketFile(), "--result", "PE", "--node", "1", "--part", "ALUMINIUM"}),
              "orvapp: " + bracketFile() + ": there is no node 1 in part \"ALUMINIUM\", only in: \"STEEL\"\n");
    EXPECT_EQ(failureOf({"history", bracketFile(), "--result", "PE", "--node", "1", "--part", "STEL"}),
              "orvapp: " + bracketFile() +
                  ": there is no part \"STEL\"; did you mean \"STEEL\"? (parts: \"STEEL\", \"ALUMINIUM\")\n");
}

TEST(HistoryCommand, OfSeveralGroupsOfStatesOneIsDrawn) {
    // The last two increments made modes: the kind of a block stands behind its number, value, rows and text, which
    // take 7 + 5 + 12 + 12 + 20 columns, in two more.
    const orvtest::ScratchFolder folder;
    std::string bracket = orvtest::readWholeFile(bracketFile());
    for (const char* header : {"\n  100CL  104", "\n  100CL  105"}) {
        for (std::size_t at = bracket.find(header); at != std::string::npos; at = bracket.find(header, at + 1)) {
            bracket[at + 1 + 56 + 1] = '2';
        }
    }
    const std::string file = folder.write("modes.frd", bracket);
    const std::vector<double> all = column("PE", 45, 0);
    const Json steps = historyOf({file, "--result", "PE", "--node", "45"});
    EXPECT_EQ(steps["x"], "Time");
    EXPECT_EQ(steps["curves"][0]["y"], Json({all[0], all[1], all[2]}));
    const Json modes = historyOf({file, "--result", "PE", "--node", "45", "--state", namesIn(file, "states")[4]});
    EXPECT_EQ(modes["x"], "Frequency");
    EXPECT_EQ(modes["curves"][0]["y"], Json({all[3], all[4]}));
}

TEST(HistoryCommand, WhatIsNotThereIsTold) {
    EXPECT_EQ(failureOf({"history", bracketFile(), "--result", "PE", "--node", "99999"}),
              "orvapp: " + bracketFile() + ": there is no node 99999 (nodes: 1 to 782)\n");
    EXPECT_EQ(failureOf({"history", bracketFile(), "--result", "toElementsArithmetic(PE)", "--element", "0"}),
              "orvapp: " + bracketFile() + ": there is no element 0 (elements: 1 to 102)\n");
    const TinyFile tiny;
    EXPECT_EQ(failureOf({"history", tiny.path(), "--result", "l2Norm(DISP)", "--node", "13"}),
              "orvapp: " + tiny.path() + ": \"l2Norm(DISP)\" has no values at node 13\n");
    EXPECT_EQ(failureOf({"history", tiny.path(), "--result", "l2Norm(DISP)*NDTEMP", "--node", "11"}),
              "orvapp: " + tiny.path() + ": \"l2Norm(DISP)*NDTEMP\" has no values in any state\n");
    EXPECT_THAT(failureOf({"history", bracketFile(), "--result", "PE", "--node", "1", "--state", "time 7"}),
                StartsWith("orvapp: " + bracketFile() + ": there is no state \"time 7\""));
    EXPECT_THAT(failureOf({"history", bracketFile(), "--result", "PEE", "--node", "1"}),
                HasSubstr("there is no result \"PEE\"; did you mean \"PE\"?"));
}

TEST(HistoryCommand, OnlyScalarsAreDrawn) {
    EXPECT_EQ(failureOf({"history", bracketFile(), "--result", "STRESS", "--node", "1"}),
              "orvapp: STRESS is a tensor, and a curve shows a scalar: take vonMises(STRESS) or "
              "extractComponent(STRESS, 0)\n");
    EXPECT_EQ(failureOf({"history", bracketFile(), "--result", "DISP", "--node", "1"}),
              "orvapp: DISP is a displacement, and a curve shows a scalar: take l2Norm(DISP) or "
              "extractComponent(DISP, 0)\n");
}

TEST(HistoryCommand, ValuesAtNodesAreNotAskedForByElement) {
    EXPECT_EQ(failureOf({"history", bracketFile(), "--result", "PE", "--element", "1"}),
              "orvapp: " + bracketFile() +
                  ": \"PE\" has values at nodes: ask with --node, or toElementsArithmetic(PE)\n");
    EXPECT_EQ(failureOf({"history", bracketFile(), "--result", "toElementsArithmetic(PE)", "--node", "1"}),
              "orvapp: " + bracketFile() +
                  ": \"toElementsArithmetic(PE)\" has values at elements: ask with --element, or "
                  "toNodesArithmetic(toElementsArithmetic(PE))\n");
}

TEST(HistoryCommand, AWrongPictureIsToldBeforeAFileIsOpened) {
    EXPECT_EQ(failureOf({"history", "missing.frd", "--result", "PE", "--node", "1", "out.jpg"}),
              "orvapp: out.jpg: the name of the picture has to end in .svg, .png or .pdf\n");
}

TEST(HistoryCommand, AStateThatCannotBeReadIsNoGapButAnError) {
    const orvtest::ScratchFolder folder;
    std::string bracket = orvtest::readWholeFile(bracketFile());
    const std::size_t state = bracket.find("  100CL  102", bracket.find("  100CL  102") + 1);
    bracket.replace(bracket.find(" -1         1", bracket.find("PE  ", state)) + 13, 12, "  1.2345X+00");
    const std::string broken = folder.write("broken.frd", bracket);
    EXPECT_THAT(failureOf({"history", broken, "--result", "PE", "--node", "1", "--csv", folder / "pe.csv"}),
                HasSubstr(broken));
    EXPECT_THAT(folder.names(), ElementsAre("broken.frd"));
}

TEST(HistoryCommand, ADamagedMeshHasNoNodesToMiss) {
    const orvtest::ScratchFolder folder;
    const TinyFile tiny;
    const std::string file = folder / "a.ztfx";
    ASSERT_EQ(runOrvapp({"convert", tiny.path(), file}).exitCode, 0);
    std::string bytes = folder.read("a.ztfx");
    // The first array holds coordinates. It lies behind its name.
    bytes[bytes.find("data/1") + 40] ^= 1;
    folder.write("a.ztfx", bytes);
    EXPECT_EQ(failureOf({"history", file, "--result", "l2Norm(DISP)", "--node", "12"}),
              "orvapp: " + file + ", entry 'data/1': damaged: the bytes do not give the checksum of the index\n");
}
