#include "Tests/Support/TestPaths.h"
#include "Tests/Tools/FrdColumns.h"

#include "Tests/Support/ScratchFolder.h"
#include "Tests/Tools/CommandResults.h"
#include "Tests/Tools/Program.h"
#include "Tests/Tools/TinyFrd.h"

#include <gmock/gmock.h>

#include <nlohmann/json.hpp>

using Json = nlohmann::ordered_json;
using orvtest::bracketFile;
using orvtest::Outcome;
using orvtest::runOrvapp;
using testing::ElementsAre;
using testing::HasSubstr;

namespace {

Json infoOf(const std::string& file) {
    const Outcome outcome = runOrvapp({"info", file, "--json"});
    EXPECT_EQ(outcome.exitCode, 0) << outcome.messages;
    return Json::parse(outcome.output)["models"][0];
}

std::vector<std::string> keys(const Json& object) {
    std::vector<std::string> names;
    for (const auto& [key, value] : object.items()) {
        names.push_back(key);
    }
    return names;
}

std::vector<std::string> column(const Json& rows, const std::string& key) {
    std::vector<std::string> texts;
    for (const Json& row : rows) {
        texts.push_back(row[key].is_string() ? row[key].get<std::string>() : row[key].dump());
    }
    return texts;
}

/// The file up to the third line of the block that begins the second state: what a killed solver leaves.
std::string abortedBracket() {
    const std::string bracket = orvtest::readWholeFile(bracketFile());
    return bracket.substr(0, bracket.find("  100CL  102") + 300);
}

} // namespace

TEST(InfoCommand, JsonTellsWhatTheBracketHolds) {
    const Outcome outcome = runOrvapp({"info", bracketFile(), "--json"});
    ASSERT_EQ(outcome.exitCode, 0) << outcome.messages;
    EXPECT_EQ(outcome.messages, "");
    const Json all = Json::parse(outcome.output);
    EXPECT_THAT(keys(all), ElementsAre("models"));
    ASSERT_EQ(all["models"].size(), 1u);
    const Json& model = all["models"][0];
    EXPECT_THAT(keys(model), ElementsAre("file", "states", "stateGroups", "parts", "results", "warnings"));
    EXPECT_EQ(model["file"], bracketFile());
    EXPECT_EQ(model["stateGroups"], Json::array());
    EXPECT_EQ(model["warnings"], Json::array());
}

TEST(InfoCommand, JsonListsTheStates) {
    const Json states = infoOf(bracketFile())["states"];
    ASSERT_EQ(states.size(), 5u);
    EXPECT_THAT(keys(states[0]), ElementsAre("index", "id", "name", "referenceType", "referenceValue"));
    EXPECT_THAT(column(states, "index"), ElementsAre("0", "1", "2", "3", "4"));
    // The values in columns 12 to 23 of the lines 100CL.
    EXPECT_THAT(column(states, "referenceValue"), ElementsAre("0.2", "0.4", "0.6", "0.8", "1.0"));
    EXPECT_THAT(column(states, "referenceType"), ElementsAre("time", "time", "time", "time", "time"));
}

TEST(InfoCommand, RefusesAFileWithDamagedParts) {
    const orvtest::ScratchFolder folder;
    const std::string file = folder / "a.ztfx";
    ASSERT_EQ(runOrvapp({"convert", folder.write("tiny.frd", orvtest::tinyFrd()), file}).exitCode, 0);
    std::string bytes = folder.read("a.ztfx");
    // The first array holds coordinates. It lies behind its name.
    bytes[bytes.find("data/1") + 40] ^= 1;
    folder.write("a.ztfx", bytes);
    EXPECT_EQ(orvtest::failureOf({"info", file}),
              "orvapp: " + file + ", entry 'data/1': damaged: the bytes do not give the checksum of the index\n");
}

TEST(InfoCommand, JsonListsTheParts) {
    const Json parts = infoOf(bracketFile())["parts"];
    ASSERT_EQ(parts.size(), 2u);
    EXPECT_THAT(keys(parts[0]), ElementsAre("index", "geometry", "id", "name", "nodes", "elements", "elementTypes"));
    EXPECT_THAT(column(parts, "index"), ElementsAre("0", "1"));
    EXPECT_THAT(column(parts, "geometry"), ElementsAre("0", "0"));
    EXPECT_THAT(column(parts, "name"), ElementsAre(HasSubstr("STEEL"), HasSubstr("ALUMINIUM")));
    EXPECT_EQ(parts[0]["nodes"], orvtest::nodesOfMaterial(bracketFile(), 1).size());
    EXPECT_EQ(parts[1]["nodes"], orvtest::nodesOfMaterial(bracketFile(), 2).size());
    // grep -c of the element lines with material 1 and 2, all of type 4.
    EXPECT_EQ(parts[0]["elements"], 96);
    EXPECT_EQ(parts[1]["elements"], 6);
    EXPECT_EQ(parts[0]["elementTypes"], Json({{"hexahedron_20", 96}}));
    EXPECT_EQ(parts[1]["elementTypes"], Json({{"hexahedron_20", 6}}));
}

TEST(InfoCommand, JsonListsTheResultsInTheOrderOfTheCatalogue) {
    const Json results = infoOf(bracketFile())["results"];
    EXPECT_THAT(keys(results[0]), ElementsAre("index", "id", "name", "type", "mapping", "custom"));
    // Scalars, vectors, tensors, displacements.
    EXPECT_THAT(column(results, "index"), ElementsAre("0", "1", "2", "3", "4"));
    EXPECT_THAT(column(results, "name"), ElementsAre("PE", "ERROR", "FORC", "STRESS", "DISP"));
    EXPECT_THAT(column(results, "type"), ElementsAre("scalar", "scalar", "vector", "tensor", "displacement"));
    EXPECT_THAT(column(results, "mapping"), ElementsAre("node", "node", "node", "node", "node"));
    EXPECT_THAT(column(results, "custom"), ElementsAre("false", "false", "false", "false", "false"));
}

TEST(InfoCommand, TablesTellTheSame) {
    const Json model = infoOf(bracketFile());
    const Outcome outcome = runOrvapp({"info", bracketFile()});
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_EQ(outcome.messages, "");
    const std::string& text = outcome.output;
    EXPECT_THAT(text, testing::StartsWith("File   " + bracketFile() + "\nTitle  Bracket pressed at its tip\n"));
    EXPECT_THAT(text, HasSubstr("\n\n5 states\n"));
    EXPECT_THAT(text, HasSubstr("\n\n2 parts\n"));
    EXPECT_THAT(text, HasSubstr("\n\n5 results\n"));
    for (const char* list : {"states", "parts", "results"}) {
        for (const std::string& name : column(model[list], "name")) {
            EXPECT_THAT(text, HasSubstr(name));
        }
    }
    EXPECT_THAT(text, HasSubstr("96 hexahedron_20"));
}

TEST(InfoCommand, CountsTheStatesThatHaveAResult) {
    const orvtest::ScratchFolder folder;
    const Outcome outcome = runOrvapp({"info", folder.write("tiny.frd", orvtest::tinyFrd())});
    EXPECT_EQ(outcome.exitCode, 0) << outcome.messages;
    EXPECT_THAT(outcome.output, HasSubstr("\n\n2 states\n"));
    EXPECT_THAT(outcome.output, HasSubstr("\n\n1 part\n"));
    EXPECT_THAT(outcome.output, testing::ContainsRegex("NDTEMP +scalar +node +1\n"));
    EXPECT_THAT(outcome.output, testing::ContainsRegex("DISP +displacement +node +1\n"));
}

TEST(InfoCommand, TellsWhichStatesBelongTogether) {
    // A static step, and three modes behind it.
    const std::string file = orvtest::testDataFolder() + "/frd/static_then_modes.frd";
    const Json model = infoOf(file);
    const Json& states = model["states"];
    ASSERT_EQ(states.size(), 4u);
    EXPECT_EQ(model["stateGroups"], Json({{states[0]["id"]}, {states[1]["id"], states[2]["id"], states[3]["id"]}}));
    EXPECT_THAT(column(states, "referenceType"), ElementsAre("time", "frequency", "frequency", "frequency"));

    const std::string text = runOrvapp({"info", file}).output;
    EXPECT_THAT(text, testing::ContainsRegex("\n  Index +Id +Name +Kind +Value +Group\n"));
    EXPECT_THAT(text, testing::ContainsRegex(" time +[0-9.]+ +0\n"));
    EXPECT_THAT(text, testing::ContainsRegex(" frequency +[0-9.]+ +1\n"));
    EXPECT_THAT(runOrvapp({"info", bracketFile()}).output, testing::Not(HasSubstr("Group")));
}

TEST(InfoCommand, WarningsComeLastAndInJsonToo) {
    const orvtest::ScratchFolder folder;
    const std::string aborted = folder.write("aborted.frd", abortedBracket());
    const Outcome tables = runOrvapp({"info", aborted});
    EXPECT_EQ(tables.exitCode, 0);
    EXPECT_THAT(tables.output, HasSubstr("\n\n1 state\n"));
    EXPECT_THAT(tables.messages, testing::StartsWith("orvapp: warning: "));

    const Outcome json = runOrvapp({"info", aborted, "--json"});
    const Json warnings = Json::parse(json.output)["models"][0]["warnings"];
    ASSERT_EQ(warnings.size(), 1u);
    EXPECT_EQ(tables.messages, "orvapp: warning: " + warnings[0].get<std::string>() + "\n");
    EXPECT_EQ(json.messages, tables.messages);
}

// The states of both follow one another, as the mesh is the same.
TEST(InfoCommand, TellsSeveralFilesAsOne) {
    const orvtest::ScratchFolder folder;
    const std::string a = folder.write("a.frd", orvtest::tinyFrd());
    const std::string b = folder.write("b.frd", orvtest::tinyFrd());
    const Json all = orvtest::jsonOf({"info", a, b});
    ASSERT_EQ(all["models"].size(), 1u);
    const Json& series = all["models"][0];
    EXPECT_EQ(series["file"], a);
    EXPECT_THAT(series["furtherFiles"], ElementsAre(b));
    EXPECT_THAT(column(series["states"], "id"), ElementsAre("1", "2", "3", "4"));
    EXPECT_EQ(series["parts"].size(), 1u);
    const Json pieces = orvtest::jsonOf({"info", a, b, "--as", "pieces"})["models"][0];
    EXPECT_THAT(column(pieces["states"], "id"), ElementsAre("1", "2"));
    EXPECT_THAT(column(pieces["parts"], "name"), ElementsAre("a.frd", "b.frd"));
    const Outcome text = runOrvapp({"info", "--as", "series", a, b});
    EXPECT_EQ(text.exitCode, 0);
    EXPECT_THAT(text.output, testing::StartsWith("File   " + a + " and 1 more\n"));
}

TEST(InfoCommand, RefusesFilesThatDoNotGoTogether) {
    const orvtest::ScratchFolder folder;
    const std::string a = folder.write("a.frd", orvtest::tinyFrd());
    EXPECT_THAT(orvtest::failureOf({"info", a, bracketFile()}), HasSubstr("cannot open \"" + a + "\" together with"));
    EXPECT_THAT(orvtest::failureOf({"info", a, bracketFile(), "--as", "pieces"}),
                HasSubstr("cannot add \"" + bracketFile() + "\" to \"" + a + "\" as a piece: there are 5 states"));
    EXPECT_EQ(orvtest::failureOf({"info", "a.ztfx", a}),
              "orvapp: a.ztfx: a file of OrvApp is opened alone; only those of other programs go together\n");
    EXPECT_EQ(orvtest::failureOf({"info", "a.ZTF", a}),
              "orvapp: a.ZTF: a file of OrvApp is opened alone; only those of other programs go together\n");
}

TEST(InfoCommand, OtherCommandsTakeFurtherFilesToo) {
    const orvtest::ScratchFolder folder;
    const std::string a = folder.write("a.frd", orvtest::tinyFrd());
    const std::string b = folder.write("b.frd", orvtest::tinyFrd());
    const Json values = orvtest::jsonOf({"values", a, b, "--result", "NDTEMP"});
    EXPECT_EQ(values["rows"].size(), 2u); // One state of each file has it.
    const Json computed = orvtest::jsonOf({"compute", a, "NDTEMP+1", "--name", "x", "--as", "pieces", "--with", b});
    EXPECT_THAT(column(computed["rows"], "part"), ElementsAre("a.frd", "b.frd"));
    const Json curves = orvtest::jsonOf({"history", a, "--result", "NDTEMP", "--node", "11", "--with", b});
    EXPECT_EQ(curves["curves"][0]["y"].size(), 2u);
}
