#include "Tests/Support/ScratchFolder.h"
#include "Tests/Tools/CommandResults.h"
#include "Tests/Tools/Program.h"
#include "Tests/Tools/TinyFrd.h"

#include <gmock/gmock.h>

#include <filesystem>

#include <nlohmann/json.hpp>

using Json = nlohmann::ordered_json;
using orvtest::bracketFile;
using orvtest::failureOf;
using orvtest::jsonOf;
using orvtest::namesIn;
using orvtest::Outcome;
using orvtest::runOrvapp;
using orvtest::ScratchFolder;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

namespace {

void convert(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), "convert");
    const Outcome outcome = runOrvapp(arguments);
    ASSERT_EQ(outcome.exitCode, 0) << outcome.messages;
    EXPECT_EQ(outcome.messages, "");
}

std::string refusalOf(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), "convert");
    return failureOf(arguments);
}

std::string allValues(const std::string& file, const std::string& result,
                      const std::vector<std::string>& options = {}) {
    std::vector<std::string> arguments = {"values", file, "--result", result, "--csv", "-"};
    arguments.insert(arguments.end(), options.begin(), options.end());
    const Outcome outcome = runOrvapp(arguments);
    EXPECT_EQ(outcome.exitCode, 0) << outcome.messages;
    return outcome.output;
}

Json modelsOf(const std::string& file) {
    return jsonOf({"info", file})["models"];
}

/// Two cases of one file: 1 "bracket" and 2 "tiny".
class TwoCases {
public:
    TwoCases() {
        convert({bracketFile(), folder.write("tiny.frd", orvtest::tinyFrd()), file});
    }

    ScratchFolder folder;
    const std::string file = folder / "two.ztfx";
};

} // namespace

TEST(ConvertCommand, NothingIsLostOnTheWay) {
    const ScratchFolder folder;
    for (const std::string name : {"bracket.ztfx", "bracket.ztf"}) {
        const std::string file = folder / name;
        convert({bracketFile(), file});
        EXPECT_EQ(namesIn(file, "states"), namesIn(bracketFile(), "states"));
        EXPECT_EQ(namesIn(file, "parts"), namesIn(bracketFile(), "parts"));
        ASSERT_EQ(namesIn(file, "results"), namesIn(bracketFile(), "results"));
        for (const std::string& result : namesIn(bracketFile(), "results")) {
            EXPECT_EQ(allValues(file, result), allValues(bracketFile(), result)) << name << ", " << result;
        }
    }
}

TEST(ConvertCommand, TellsWhatItWrote) {
    const ScratchFolder folder;
    const std::string tiny = folder.write("tiny.frd", orvtest::tinyFrd());
    const std::string file = folder / "all.ztfx";
    const Outcome outcome = runOrvapp({"convert", bracketFile(), tiny, file});
    const std::vector<std::string> lines = orvtest::lines(outcome.output);
    ASSERT_EQ(lines.size(), 4u);
    EXPECT_EQ(lines[0], file + ", " + std::to_string(std::filesystem::file_size(file)) + " bytes");
    EXPECT_THAT(lines[1], testing::MatchesRegex("  Case  Name +From +States  Results  Parts"));
    EXPECT_THAT(lines[2], testing::MatchesRegex("     1  bracket .*bracket.frd +5 +5 +2"));
    EXPECT_THAT(lines[3], testing::MatchesRegex("     2  tiny .*tiny.frd +2 +3 +1"));
}

TEST(ConvertCommand, WritesWhatIsNamedOnly) {
    const ScratchFolder folder;
    for (const std::string name : {"some.ztfx", "some.ztf"}) {
        const std::string file = folder / name;
        convert({bracketFile(), file, "--results", "DISP", "--results", "S*", "--states", "*time 1", "--states", "*0.4",
                 "--parts", "ALU*"});
        EXPECT_THAT(namesIn(file, "states"),
                    ElementsAre("Step 1, increment 2, time 0.4", "Step 1, increment 5, time 1"));
        EXPECT_THAT(namesIn(file, "parts"), ElementsAre("ALUMINIUM"));
        EXPECT_THAT(namesIn(file, "results"), testing::UnorderedElementsAre("DISP", "STRESS"));
        EXPECT_EQ(allValues(file, "STRESS", {"--state", "*time 1"}),
                  allValues(bracketFile(), "STRESS", {"--state", "*time 1", "--part", "ALUMINIUM"}));
    }
}

TEST(ConvertCommand, InfoTellsAllCases) {
    const TwoCases two;
    const Json models = modelsOf(two.file);
    ASSERT_EQ(models.size(), 2u);
    EXPECT_EQ(models[0]["file"], two.file + "|1");
    EXPECT_EQ(models[0]["case"], Json({{"id", 1}, {"name", "bracket"}}));
    EXPECT_EQ(models[0]["states"].size(), 5u);
    EXPECT_EQ(models[1]["file"], two.file + "|2");
    EXPECT_EQ(models[1]["case"], Json({{"id", 2}, {"name", "tiny"}}));
    EXPECT_EQ(models[1]["parts"][0]["name"], "STEEL, hard");

    const std::string text = runOrvapp({"info", two.file}).output;
    EXPECT_THAT(text, StartsWith("File   " + two.file + "|1\nCase   1  bracket\n"));
    EXPECT_THAT(text, HasSubstr("\n\nFile   " + two.file + "|2\nCase   2  tiny\n"));
}

TEST(ConvertCommand, InfoTellsTheCaseThatIsNamed) {
    const TwoCases two;
    const Json models = modelsOf(two.file + "|2");
    ASSERT_EQ(models.size(), 1u);
    EXPECT_EQ(models[0]["case"]["name"], "tiny");
    EXPECT_THAT(failureOf({"info", two.file + "|7"}), HasSubstr("1 (bracket), 2 (tiny)"));
}

TEST(ConvertCommand, InfoOfOneCaseKeepsTheNameOfTheFile) {
    const ScratchFolder folder;
    convert({bracketFile(), folder / "one.ztfx"});
    const Json models = modelsOf(folder / "one.ztfx");
    ASSERT_EQ(models.size(), 1u);
    EXPECT_EQ(models[0]["file"], folder / "one.ztfx");
    EXPECT_EQ(models[0]["case"], Json({{"id", 1}, {"name", "bracket"}}));
}

TEST(ConvertCommand, ValuesOfACaseAreReadByItsName) {
    const TwoCases two;
    EXPECT_EQ(allValues(two.file + "|1", "PE"), allValues(bracketFile(), "PE"));
    EXPECT_EQ(allValues(two.file, "PE"), allValues(bracketFile(), "PE")) << "the first case";
    EXPECT_EQ(allValues(two.file + "|2", "DISP"), allValues(two.folder / "tiny.frd", "DISP"));
}

TEST(ConvertCommand, CasesKeepTheirIdsAndNames) {
    const TwoCases two;
    const std::string tail = two.folder / "tail.ztfx";
    convert({two.file + "|2", tail});
    EXPECT_EQ(modelsOf(tail)[0]["case"], Json({{"id", 2}, {"name", "tiny"}}));

    // 2 is taken, then 1 and 2 are.
    const std::string all = two.folder / "all.ztfx";
    convert({tail, two.file, all});
    const Json models = modelsOf(all);
    ASSERT_EQ(models.size(), 3u);
    EXPECT_EQ(models[0]["case"], Json({{"id", 2}, {"name", "tiny"}}));
    EXPECT_EQ(models[1]["case"], Json({{"id", 1}, {"name", "bracket"}}));
    EXPECT_EQ(models[2]["case"], Json({{"id", 3}, {"name", "tiny"}}));
}

TEST(ConvertCommand, AFileMayTakeItsOwnPlace) {
    const TwoCases two;
    convert({two.file, two.file, "--results", "DISP"});
    EXPECT_EQ(modelsOf(two.file).size(), 2u);
    EXPECT_THAT(namesIn(two.file + "|1", "results"), ElementsAre("DISP"));
    EXPECT_EQ(allValues(two.file + "|1", "DISP"), allValues(bracketFile(), "DISP"));
}

TEST(ConvertCommand, ATextFileTakesOneCase) {
    const TwoCases two;
    const std::string out = two.folder / "x.ztf";
    EXPECT_EQ(refusalOf({two.file, out}), "orvapp: " + out + ": a .ztf file holds one case, choose one of \"" +
                                              two.file + "|1\", \"" + two.file + "|2\"\n");
    EXPECT_FALSE(two.folder.has("x.ztf"));
    convert({two.file + "|2", out});
    EXPECT_EQ(allValues(out, "DISP"), allValues(two.folder / "tiny.frd", "DISP"));
}

TEST(ConvertCommand, APasswordProtectsAndOpens) {
    const ScratchFolder folder;
    const std::string secret = folder.write("secret", "open sesame\n");
    const std::string wrong = folder.write("wrong", "close sesame\n");
    const std::string file = folder / "safe.ztfx";
    convert({bracketFile(), file, "--password-file", secret});
    EXPECT_THAT(folder.read("safe.ztfx"), Not(HasSubstr("STRESS")));
    EXPECT_THAT(folder.read("safe.ztfx"), Not(HasSubstr("sesame")));

    const std::string missing = failureOf({"info", file});
    EXPECT_EQ(missing, "orvapp: " + file + ": the file is protected: a password is needed\n");
    const std::string refused = failureOf({"info", file, "--password-file", wrong});
    EXPECT_THAT(refused, HasSubstr("password"));
    EXPECT_THAT(refused, Not(HasSubstr("sesame")));

    EXPECT_EQ(runOrvapp({"info", file, "--password-file", secret}).exitCode, 0);
    EXPECT_EQ(allValues(file, "STRESS", {"--password-file", secret}), allValues(bracketFile(), "STRESS"));
    EXPECT_EQ(runOrvapp({"compute", file, "vonMises(STRESS)", "--name", "M", "--password-file", secret}).output,
              runOrvapp({"compute", bracketFile(), "vonMises(STRESS)", "--name", "M"}).output);
    EXPECT_EQ(runOrvapp({"envelope", file, "l2Norm(DISP)", "--password-file", secret}).output,
              runOrvapp({"envelope", bracketFile(), "l2Norm(DISP)"}).output);

    // What was protected stays so, unless it becomes text.
    convert({file, folder / "again.ztfx", "--password-file", secret});
    EXPECT_THAT(failureOf({"info", folder / "again.ztfx"}), HasSubstr("protected"));
    convert({file, folder / "plain.ztf", "--password-file", secret});
    EXPECT_EQ(allValues(folder / "plain.ztf", "PE"), allValues(bracketFile(), "PE"));
}

TEST(ConvertCommand, DeflatingMakesTheFileSmaller) {
    const ScratchFolder folder;
    convert({bracketFile(), folder / "stored.ztfx"});
    convert({bracketFile(), folder / "zero.ztfx", "--compress", "0"});
    convert({bracketFile(), folder / "one.ztfx", "--compress", "1"});
    convert({bracketFile(), folder / "nine.ztfx", "--compress", "9"});
    auto sizeOf = [&](const std::string& name) { return std::filesystem::file_size(folder / name); };
    EXPECT_EQ(sizeOf("zero.ztfx"), sizeOf("stored.ztfx"));
    EXPECT_LT(sizeOf("one.ztfx"), sizeOf("stored.ztfx"));
    EXPECT_LT(sizeOf("nine.ztfx"), sizeOf("one.ztfx"));
    EXPECT_EQ(allValues(folder / "nine.ztfx", "STRESS"), allValues(bracketFile(), "STRESS"));
}

TEST(ConvertCommand, WhatIsRefusedLeavesTheOldFile) {
    const ScratchFolder folder;
    const std::string old = folder.write("old.ztfx", "precious");
    EXPECT_THAT(refusalOf({bracketFile(), folder / "missing.frd", old}), HasSubstr("missing.frd"));
    EXPECT_THAT(refusalOf({bracketFile(), old, "--states", "nix"}), HasSubstr("there is no state \"nix\" (states: "));
    EXPECT_THAT(refusalOf({bracketFile(), old, "--results", "DISP", "--results", "DIPS"}),
                HasSubstr("there is no result \"DIPS\"; did you mean \"DISP\"? (results: "));
    EXPECT_THAT(refusalOf({bracketFile(), old, "--parts", "STEL"}), HasSubstr("did you mean \"STEEL\"?"));
    EXPECT_THAT(refusalOf({bracketFile(), old, "--password-file", folder / "none"}), HasSubstr("password file"));
    EXPECT_EQ(folder.read("old.ztfx"), "precious");
    EXPECT_THAT(folder.names(), ElementsAre("old.ztfx"));
}

TEST(ConvertCommand, OnlyFormatsThatCanBeWrittenAre) {
    const ScratchFolder folder;
    for (const std::string name : {"x.frd", "x", "ztfx", "x.ztfx.bak"}) {
        EXPECT_EQ(refusalOf({bracketFile(), folder / name}),
                  "orvapp: " + (folder / name) + ": the name of the file to write has to end in .ztfx or .ztf\n");
    }
    convert({bracketFile(), folder / "UPPER.ZTFX"});
    EXPECT_EQ(modelsOf(folder / "UPPER.ZTFX").size(), 1u);
}
