#include "OrvApp/OrvApp.h"
#include "Tests/Support/CommandOutput.h"
#include "Tests/Support/ScratchFolder.h"
#include "Tests/Tools/CommandResults.h"
#include "Tests/Tools/Program.h"

#include <gmock/gmock.h>

#include <filesystem>

#include <nlohmann/json.hpp>

using Json = nlohmann::ordered_json;
using orvtest::failureOf;
using orvtest::Outcome;
using orvtest::outputOf;
using orvtest::runOrvapp;
using orvtest::ScratchFolder;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

namespace {

using Names = std::vector<std::string>;

/// With folders "one", "two" and "three", which hold situations of these names.
class SituationCommand : public testing::Test {
protected:
    SituationCommand() {
        for (const std::string name : {"one", "two", "three"}) {
            EXPECT_TRUE(orv::ug::SituationIo::writeFolder(situation(name).get(), folder / name));
        }
    }

    static orv::PtrRef<orv::ug::Situation> situation(const std::string& name) {
        const orv::PtrRef<orv::ug::Situation> made(new orv::ug::Situation);
        made->setName(name);
        made->setDescription("about " + name);
        made->setSourceModelFile(name + ".frd");
        made->setPropertyCollection(new orv::PropertySetCollection);
        made->setAllUserData({{"key", name}});
        return made;
    }

    static Json rowsOf(std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(), "situation");
        return orvtest::jsonOf(arguments)["situations"];
    }

    static std::string refusalOf(std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(), "situation");
        return failureOf(arguments);
    }

    static Names all(const Json& rows, const char* key) {
        Names values;
        for (const Json& row : rows) {
            values.push_back(row[key]);
        }
        return values;
    }

    Names exportAll() {
        return all(rowsOf({"export", folder / "one", folder / "two", folder / "three", archive}), "place");
    }

    ScratchFolder folder;
    const std::string archive = folder / "all.zip";
};

TEST_F(SituationCommand, ListsFoldersFilesAndArchives) {
    exportAll();
    ASSERT_TRUE(orv::ug::SituationIo::writeArchiveFile(situation("four").get(), folder / "four.sit"));
    const Json rows = rowsOf({"list", folder / "two", archive, folder / "four.sit"});
    EXPECT_THAT(all(rows, "name"), ElementsAre("two", "one", "two", "three", "four"));
    EXPECT_THAT(all(rows, "place"),
                ElementsAre(folder / "two", archive + "|1", archive + "|2", archive + "|3", folder / "four.sit"));
    EXPECT_EQ(rows[0], (Json{{"place", folder / "two"},
                             {"name", "two"},
                             {"description", "about two"},
                             {"file", "two.frd"},
                             {"userData", {{"key", "two"}}}}));
    EXPECT_THAT(all(rowsOf({"list", archive + "|3"}), "name"), ElementsAre("three"));
}

TEST_F(SituationCommand, ListsAsATable) {
    const std::string place = folder / "one";
    const Outcome outcome = runOrvapp({"situation", "list", place});
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_EQ(outcome.messages, "");
    const std::string blanks(place.size() - std::string("Situation").size(), ' ');
    EXPECT_EQ(outcome.output, "1 situation\n  Situation" + blanks + "  Name  Model    Description\n  " + place +
                                  "  one   one.frd  about one\n");
}

TEST_F(SituationCommand, TellsWhatIsNoSituation) {
    const std::string text = folder.write("text", "some text");
    const std::string zip = folder.write("bad.zip", "PK and no more");
    EXPECT_EQ(refusalOf({"list", folder / "missing"}),
              "orvapp: cannot open \"" + folder / "missing" + "\": No such file or directory\n");
    EXPECT_THAT(refusalOf({"list", text}), HasSubstr(text));
    EXPECT_EQ(refusalOf({"list", zip}), "orvapp: " + zip + ": cannot be read as an archive of situations\n");
    EXPECT_EQ(refusalOf({"list", zip + "|1"}), "orvapp: " + zip + ": cannot be read as an archive of situations\n");
    EXPECT_THAT(refusalOf({"list", folder.path()}), HasSubstr("Situation.xml"));
}

TEST_F(SituationCommand, TellsTheNumbersInAnArchive) {
    exportAll();
    for (const std::string number : {"0", "4", "x", ""}) {
        EXPECT_EQ(refusalOf({"list", archive + '|' + number}),
                  "orvapp: " + archive + '|' + number + ": the archive has the situations 1 to 3\n");
    }
}

TEST_F(SituationCommand, WarnsOfWhatElseIsInAnArchive) {
    exportAll();
    folder.write("notes", "no situation");
    ASSERT_EQ(outputOf("cd '" + folder.path() + "' && zip -q all.zip notes"), "");
    const Outcome outcome = runOrvapp({"situation", "list", archive});
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_THAT(outcome.output, StartsWith("3 situations\n"));
    EXPECT_EQ(outcome.messages, "orvapp: warning: " + archive + ": 1 of 4 entries cannot be read as situations\n");
}

TEST_F(SituationCommand, ExportsAndImports) {
    EXPECT_THAT(exportAll(), ElementsAre(archive + "|1", archive + "|2", archive + "|3"));
    EXPECT_EQ(outputOf("unzip -Z1 '" + archive + "'"), "situation_001\nsituation_002\nsituation_003\n");
    const std::string copies = folder / "copies/deep";
    EXPECT_THAT(all(rowsOf({"import", archive, copies}), "place"),
                ElementsAre(copies + "/situation_001", copies + "/situation_002", copies + "/situation_003"));
    for (const auto& [name, copy] : {std::pair("one", "situation_001"), std::pair("three", "situation_003")}) {
        EXPECT_EQ(folder.read(std::string("copies/deep/") + copy + "/Situation.xml"),
                  folder.read(std::string(name) + "/Situation.xml"));
    }
}

TEST_F(SituationCommand, ExportsFromArchives) {
    exportAll();
    const std::string some = folder / "some.zip";
    rowsOf({"export", archive + "|3", archive + "|1", some});
    EXPECT_THAT(all(rowsOf({"list", some}), "name"), ElementsAre("three", "one"));
}

TEST_F(SituationCommand, ImportLeavesSituationsThatAreThere) {
    exportAll();
    rowsOf({"import", archive, folder / "copies"});
    EXPECT_EQ(refusalOf({"import", archive, folder / "copies"}),
              "orvapp: " + folder / "copies/situation_001" + ": there is a situation in it already\n");
}

TEST_F(SituationCommand, AnArchiveThatCannotBeWrittenIsTold) {
    const std::string path = folder / "missing/all.zip";
    EXPECT_EQ(refusalOf({"export", folder / "one", path}), "orvapp: cannot write \"" + path + "\"\n");
    folder.write("all.zip", "old");
    EXPECT_THAT(refusalOf({"export", folder / "missing", archive}), HasSubstr("missing"));
    EXPECT_EQ(folder.read("all.zip"), "old");
}

TEST_F(SituationCommand, TwoProcessesDoNotMeetInTemporaryFiles) {
    const std::string temp = folder / "temp";
    std::filesystem::create_directories(temp + "/temp_situation_001");
    std::filesystem::create_directories(temp + "/temp_situation_001.sitx");
    const auto inTemp = [&] { ::setenv("TMPDIR", temp.c_str(), 1); };
    EXPECT_EQ(runOrvapp({"situation", "export", folder / "one", archive}, inTemp).exitCode, 0);
    const Outcome listed = runOrvapp({"situation", "list", archive}, inTemp);
    EXPECT_THAT(listed.output, StartsWith("1 situation\n"));
    EXPECT_EQ(listed.messages, "");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(temp), {}), 2);
    const auto inNone = [&] { ::setenv("TMPDIR", (folder / "none").c_str(), 1); };
    EXPECT_THAT(runOrvapp({"situation", "list", archive}, inNone).messages,
                StartsWith("orvapp: cannot make a temporary folder"));
}

TEST_F(SituationCommand, Renames) {
    const Json row = rowsOf({"rename", folder / "one", "\u7ffc 1"})[0];
    EXPECT_EQ(row["name"], "\u7ffc 1");
    EXPECT_EQ(row["description"], "about one");
    EXPECT_EQ(rowsOf({"list", folder / "one"})[0], row);
    EXPECT_EQ(row["userData"], (Json{{"key", "one"}}));
    EXPECT_EQ(rowsOf({"rename", folder / "one", "-", "--description", ""})[0]["description"], "");
}

TEST_F(SituationCommand, RenamesFoldersOnly) {
    exportAll();
    for (const std::string& place : {archive, archive + "|1", folder / "missing", folder.path()}) {
        EXPECT_EQ(refusalOf({"rename", place, "new"}), "orvapp: " + place + ": there is no situation in it\n");
    }
}

TEST_F(SituationCommand, Recovers) {
    const std::string recovery = folder / "recovery";
    std::filesystem::copy(folder / "one", recovery);
    EXPECT_EQ(rowsOf({"recover", recovery})[0]["place"], recovery);
    const Json row = rowsOf({"recover", recovery, folder / "kept", "--remove"})[0];
    EXPECT_EQ(row["place"], folder / "kept");
    EXPECT_EQ(row["name"], "one");
    EXPECT_FALSE(std::filesystem::exists(recovery));
    EXPECT_EQ(folder.read("kept/Situation.xml"), folder.read("one/Situation.xml"));
    EXPECT_EQ(refusalOf({"recover", recovery}), "orvapp: " + recovery + ": there is nothing to recover\n");
}

TEST_F(SituationCommand, ARecoveryThatIsNotKeptIsNotRemoved) {
    const std::string recovery = folder / "recovery";
    std::filesystem::copy(folder / "one", recovery);
    EXPECT_EQ(refusalOf({"recover", recovery, folder / "two", "--remove"}),
              "orvapp: " + folder / "two" + ": there is a situation in it already\n");
    folder.write("recovery/Situation.xml", "nonsense");
    EXPECT_THAT(refusalOf({"recover", recovery, "--remove"}), HasSubstr(recovery + "/Situation.xml"));
    EXPECT_EQ(folder.read("recovery/Situation.xml"), "nonsense");
}

TEST(SituationCommandLine, TellsItsCommands) {
    const std::string commands = "capture, list, apply, rename, export, import or recover";
    EXPECT_EQ(runOrvapp({"situation"}).messages,
              "orvapp: a command is missing: " + commands + " (see orvapp situation --help)\n");
    EXPECT_EQ(runOrvapp({"situation", "lst"}).messages,
              "orvapp: there is no command \"situation lst\"; did you mean \"list\"? (see orvapp --help)\n");
    EXPECT_THAT(runOrvapp({"situation", "list"}).messages, HasSubstr("(see orvapp situation list --help)"));
    EXPECT_EQ(runOrvapp({"situation"}).exitCode, 2);
    EXPECT_THAT(runOrvapp({"situation", "--help"}).output, HasSubstr("orvapp situation recover"));
    EXPECT_THAT(runOrvapp({"situation", "export", "--help"}).output, HasSubstr("PLACE... ARCHIVE"));
}

} // namespace
