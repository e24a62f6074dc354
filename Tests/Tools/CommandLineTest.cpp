#include "Tests/Support/ScratchFolder.h"
#include "Tests/Tools/Program.h"
#include "Tools/ExpressionFunctions.h"

#include <gmock/gmock.h>

#include <csignal>

#include <fcntl.h>
#include <unistd.h>

using orvtest::bracketFile;
using orvtest::Outcome;
using orvtest::runOrvapp;
using testing::HasSubstr;
using testing::StartsWith;

namespace {

struct WrongUsage {
    std::vector<std::string> arguments;
    std::string message;
};

class WrongUsageTest : public testing::TestWithParam<WrongUsage> {};

} // namespace

TEST_P(WrongUsageTest, IsToldAndEndsWithTwo) {
    const Outcome outcome = runOrvapp(GetParam().arguments);
    EXPECT_EQ(outcome.exitCode, 2);
    EXPECT_EQ(outcome.output, "");
    EXPECT_EQ(outcome.messages, "orvapp: " + GetParam().message + "\n");
}

INSTANTIATE_TEST_SUITE_P(
    CommandLine, WrongUsageTest,
    testing::Values(
        WrongUsage{{},
                   "a command is missing: info, values, compute, envelope, history, length, render, pick, convert, "
                   "situation or formats (see orvapp --help)"},
        WrongUsage{{"inof", "a.frd"}, R"(there is no command "inof"; did you mean "info"? (see orvapp --help))"},
        WrongUsage{{"paint"}, R"(there is no command "paint" (see orvapp --help))"},
        WrongUsage{{"--color"},
                   "a command is missing: info, values, compute, envelope, history, length, render, pick, convert, "
                   "situation or formats (see orvapp --help)"},
        WrongUsage{{"info"}, "FILE is required (see orvapp info --help)"},
        WrongUsage{{"envelope", "a.frd", "A", "b.frd"},
                   "The following argument was not expected: b.frd (see orvapp envelope --help)"},
        WrongUsage{{"info", "a.frd", "b.frd", "--as", "steps"},
                   R"(--as: "steps" is not what files can be ("series", "pieces") (see orvapp info --help))"},
        WrongUsage{{"info", "a.frd", "--jsn"},
                   "The following argument was not expected: --jsn (see orvapp info --help)"},
        WrongUsage{{"values", "a.frd"}, "--result is required (see orvapp values --help)"},
        WrongUsage{{"values", "--result", "DISP"}, "FILE is required (see orvapp values --help)"},
        WrongUsage{{"values", "a.frd", "--result"}, "--result: 1 required PATTERN missing (see orvapp values --help)"},
        WrongUsage{{"values", "a.frd", "--result", "DISP", "--csv", ""},
                   "--csv: the name of a file is missing (see orvapp values --help)"},
        WrongUsage{{"values", "a.frd", "--result", "DISP", "--csv", "-", "--json"},
                   "--json and --csv - both want standard output (see orvapp values --help)"},
        WrongUsage{{"compute", "a.frd", "A"}, "--name is required (see orvapp compute --help)"},
        WrongUsage{{"compute", "a.frd", "--name", "x"}, "EXPRESSION is required (see orvapp compute --help)"},
        WrongUsage{{"compute", "a.frd", "A", "--name", ""}, "--name: the name is empty (see orvapp compute --help)"},
        WrongUsage{{"compute", "a.frd", "A", "B", "--name", "x"},
                   "The following argument was not expected: B (see orvapp compute --help)"},
        WrongUsage{{"compute", "a.frd", "A", "-j", "--name", "x"},
                   "The following argument was not expected: -j (see orvapp compute --help)"},
        WrongUsage{{"compute", "a.frd", "A", "--name", "x", "--csv", "-", "--json"},
                   "--json and --csv - both want standard output (see orvapp compute --help)"},
        WrongUsage{{"convert", "a.frd"}, "IN... OUT: At least 2 required but received 1 (see orvapp convert --help)"},
        WrongUsage{{"convert", "a.frd", "b.ztfx", "--compress", "10"},
                   "--compress: Value 10 not in range 0 to 9 (see orvapp convert --help)"},
        WrongUsage{{"envelope", "a.frd"}, "EXPRESSION is required (see orvapp envelope --help)"},
        WrongUsage{{"envelope", "a.frd", "A", "--json", "--csv", "-"},
                   "--json and --csv - both want standard output (see orvapp envelope --help)"},
        WrongUsage{{"history", "a.frd", "--node", "1"}, "--result is required (see orvapp history --help)"},
        WrongUsage{{"history", "a.frd", "--result", "A"},
                   "either --node or --element is required (see orvapp history --help)"},
        WrongUsage{{"history", "a.frd", "--result", "A", "--node", "1", "--element", "1"},
                   "either --node or --element is required (see orvapp history --help)"},
        WrongUsage{{"history", "a.frd", "--result", "A", "--node", "x"},
                   "Could not convert: --node = x (see orvapp history --help)"},
        WrongUsage{{"history", "a.frd", "--result", "A", "--node", "1", "--size", "10"},
                   R"(--size: "10" is not a size such as 800x600 (see orvapp history --help))"},
        WrongUsage{{"history", "a.frd", "--result", "A", "--node", "1", "--size", "10x10x10"},
                   R"(--size: "10x10x10" is not a size such as 800x600 (see orvapp history --help))"},
        WrongUsage{{"history", "a.frd", "--result", "A", "--node", "1", "--csv", "-", "--json"},
                   "--json and --csv - both want standard output (see orvapp history --help)"},
        WrongUsage{{"length", "a.frd", "--result", "A"}, "--through is required (see orvapp length --help)"},
        WrongUsage{{"length", "a.frd", "--result", "A", "--through", "1,2,3"},
                   "--through: a way needs two points or more (see orvapp length --help)"},
        WrongUsage{{"length", "a.frd", "--result", "A", "--through", "1,2", "--through", "1,2,3"},
                   R"(--through: "1,2" is not three numbers such as 1,0,-2.5 (see orvapp length --help))"},
        WrongUsage{{"length", "a.frd", "--result", "A", "--through", "1,2,3,4", "--through", "1,2,3"},
                   R"(--through: "1,2,3,4" is not three numbers such as 1,0,-2.5 (see orvapp length --help))"},
        WrongUsage{{"length", "a.frd", "--result", "A", "--through", "1,2,inf", "--through", "1,2,3"},
                   R"(--through: "1,2,inf" is not three numbers such as 1,0,-2.5 (see orvapp length --help))"},
        WrongUsage{{"length", "a.frd", "--result", "A", "--through", "0,0,-", "--through", "1,2,3"},
                   R"(--through: "0,0,-" is not three numbers such as 1,0,-2.5 (see orvapp length --help))"},
        WrongUsage{{"length", "a.frd", "--result", "A", "--through", "-1,2,3", "--through", "-1;2,3"},
                   R"(--through: "-1;2,3" is not three numbers such as 1,0,-2.5 (see orvapp length --help))"},
        WrongUsage{{"render", "a.frd"}, "OUT is required (see orvapp render --help)"},
        WrongUsage{{"render", "a.frd", "b.png", "--view", "fornt"},
                   R"(--view: "fornt" is not a view; did you mean "front"? ("iso", "front", "back", "left", "right", )"
                   R"("top", "bottom" or the direction of the eye such as 1,-2,0.5) (see orvapp render --help))"},
        WrongUsage{{"render", "a.frd", "b.png", "--view", "-1,0"},
                   R"(--view: "-1,0" is not a view ("iso", "front", "back", "left", "right", "top", "bottom" or the )"
                   "direction of the eye such as 1,-2,0.5) (see orvapp render --help)"},
        WrongUsage{{"render", "a.frd", "b.png", "--size", "0x10"},
                   "--size: a picture has from 1 to 32768 pixels on each side and at most 67108864 in all, not 0x10 "
                   "(see orvapp render --help)"},
        WrongUsage{{"render", "a.frd", "b.png", "--cut", "w=3"},
                   R"(--cut: "w=3" is not a plane such as z=2.5, or a point and a normal such as 0,0,2.5:0,0,1 )"
                   "(see orvapp render --help)"},
        WrongUsage{{"render", "a.frd", "b.png", "--deform", ""},
                   R"(--deform: "" is not a displacement and a scale such as DISPx25 (see orvapp render --help))"},
        WrongUsage{{"render", "a.frd", "b.png", "--colors", "vridis"},
                   R"(--colors: "vridis" is not a colour map; did you mean "viridis"? ("viridis", "rainbow") )"
                   "(see orvapp render --help)"},
        WrongUsage{{"render", "a.frd", "b.png", "--range", "3,2"},
                   R"(--range: "3,2" is not a range such as 0,355, the smaller number first )"
                   "(see orvapp render --help)"},
        WrongUsage{{"render", "a.frd", "b.png", "--background", "whit"},
                   R"(--background: "whit" is not a colour; did you mean "white"? ("white", "grey", "black" or )"
                   R"("#rrggbb") (see orvapp render --help))"},
        WrongUsage{{"render", "a.frd", "b.png", "--bands", "257"},
                   "--bands: Value 257 not in range 0 to 256 (see orvapp render --help)"},
        WrongUsage{{"pick", "a.frd"}, "a place is missing: --at or --ray (see orvapp pick --help)"},
        WrongUsage{{"pick", "a.frd", "--at", "1,2", "--ray", "1,2,3", "1,2,3"},
                   "--at and --ray are two places, name one (see orvapp pick --help)"},
        WrongUsage{{"pick", "a.frd", "--at", "1.5,2"},
                   R"(--at: "1.5,2" is not a pixel such as 120,45 (see orvapp pick --help))"},
        WrongUsage{{"pick", "a.frd", "--at", "800,0"},
                   "pixel 800,0 is outside of the picture, whose last one is 799,599 (see orvapp pick --help)"},
        WrongUsage{{"pick", "a.frd", "--size", "320x240", "--at", "0,240"},
                   "pixel 0,240 is outside of the picture, whose last one is 319,239 (see orvapp pick --help)"},
        WrongUsage{{"pick", "a.frd", "--at", "-1,0"},
                   "pixel -1,0 is outside of the picture, whose last one is 799,599 (see orvapp pick --help)"},
        WrongUsage{{"pick", "a.frd", "--ray", "-1,2,3", "-1,2"},
                   R"(--ray: "-1,2" is not three numbers such as 1,0,-2.5 (see orvapp pick --help))"},
        WrongUsage{{"envelop", "a.frd"},
                   R"(there is no command "envelop"; did you mean "envelope"? (see orvapp --help))"}));

TEST(CommandLine, HelpTeachesByExamples) {
    const Outcome outcome = runOrvapp({"--help"});
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_EQ(outcome.messages, "");
    EXPECT_THAT(outcome.output, HasSubstr("orvapp info bracket.frd\n"));
    EXPECT_THAT(outcome.output, HasSubstr("orvapp values bracket.frd --result DISP\n"));
    EXPECT_THAT(outcome.output, HasSubstr("--csv disp.csv"));
    EXPECT_THAT(outcome.output, HasSubstr("Exit codes:\n  0  done\n  1  "));
    EXPECT_THAT(outcome.output, HasSubstr("Readable files:\n"));
    EXPECT_THAT(outcome.output, HasSubstr("frd"));
}

TEST(CommandLine, EachCommandHasItsOwnHelp) {
    const Outcome info = runOrvapp({"info", "--help"});
    EXPECT_EQ(info.exitCode, 0);
    EXPECT_THAT(info.output, HasSubstr("orvapp info bracket.frd --json"));
    EXPECT_THAT(info.output, HasSubstr("\"referenceValue\""));

    const Outcome values = runOrvapp({"values", "-h"});
    EXPECT_EQ(values.exitCode, 0);
    for (const char* word : {"--result PATTERN", "--state PATTERN", "--part PATTERN", "--csv OUT", "--json"}) {
        EXPECT_THAT(values.output, HasSubstr(word));
    }
    EXPECT_THAT(values.output, HasSubstr("orvapp values bracket.frd --result STRESS --state "));
}

TEST(CommandLine, HelpOnExpressionsHasEveryFunction) {
    const std::string compute = runOrvapp({"compute", "-h"}).output;
    const std::string envelope = runOrvapp({"envelope", "--help"}).output;
    for (const orvapp::ExpressionFunction& function : orvapp::expressionFunctions()) {
        const std::string beginning = "\n  " + function.signature() + ' ';
        EXPECT_THAT(compute, HasSubstr(beginning));
        EXPECT_THAT(compute, HasSubstr(std::string(" ") + function.meaning + '\n'));
        EXPECT_THAT(envelope, HasSubstr(beginning));
    }
    for (const char* word : {"--name NAME", "--state PATTERN", "--part PATTERN", "--csv OUT", "--json"}) {
        EXPECT_THAT(compute, HasSubstr(word));
    }
    EXPECT_THAT(envelope, testing::Not(HasSubstr("--name")));
    EXPECT_THAT(runOrvapp({"history", "-h"}).output, HasSubstr("vonMises(TENSOR)"));
    EXPECT_THAT(runOrvapp({"length", "-h"}).output, HasSubstr("vonMises(TENSOR)"));
}

TEST(CommandLine, TellsItsVersion) {
    const Outcome outcome = runOrvapp({"--version"});
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_EQ(outcome.output, "orvapp 3.11.0\n");
}

TEST(CommandLine, AFileThatCannotBeReadEndsWithOne) {
    const orvtest::ScratchFolder folder;
    const std::vector<std::string> unreadable = {folder / "missing.frd", folder.path(), folder.write("empty.frd", ""),
                                                 folder.write("garbage.frd", "not a result\n"),
                                                 folder.write("strange.xyz", "who reads that?\n")};
    for (const std::string& file : unreadable) {
        const Outcome outcome = runOrvapp({"info", file});
        EXPECT_EQ(outcome.exitCode, 1) << file;
        EXPECT_EQ(outcome.output, "");
        EXPECT_THAT(outcome.messages, StartsWith("orvapp: "));
        EXPECT_THAT(outcome.messages, HasSubstr(file));
    }
}

TEST(CommandLine, AFileWithoutStatesEndsWithOne) {
    const orvtest::ScratchFolder folder;
    const std::string bracket = orvtest::readWholeFile(bracketFile());
    const std::string mesh = folder.write("mesh.frd", bracket.substr(0, bracket.find("    1PSTEP")) + " 9999\n");
    const Outcome outcome = runOrvapp({"info", mesh});
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_EQ(outcome.output, "");
    EXPECT_EQ(outcome.messages, "orvapp: " + mesh + ": there are no states in this file, so no results to look at\n");
}

TEST(CommandLine, AReaderThatGoesAwayIsNoError) {
    const Outcome outcome = runOrvapp({"info", bracketFile()}, [] {
        int ends[2];
        if (pipe(ends) == 0) {
            close(ends[0]);
            dup2(ends[1], STDOUT_FILENO);
        }
    });
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_EQ(outcome.messages, "");
}

TEST(CommandLine, ClosedStandardOutputIsNoError) {
    const orvtest::ScratchFolder folder;
    const std::string csv = folder / "pe.csv";
    const Outcome outcome = runOrvapp({"values", bracketFile(), "--result", "PE", "--csv", csv}, [] {
        close(STDIN_FILENO);
        close(STDOUT_FILENO);
    });
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_EQ(outcome.messages, "");
    // The table does not end up in the file that got the closed descriptor's number.
    EXPECT_THAT(orvtest::readWholeFile(csv), StartsWith("state,part,id,value\n"));
    EXPECT_THAT(orvtest::readWholeFile(csv), testing::Not(HasSubstr("Minimum")));
}

TEST(CommandLine, AFullDiskIsAnError) {
    const Outcome outcome =
        runOrvapp({"info", bracketFile()}, [] { dup2(open("/dev/full", O_WRONLY), STDOUT_FILENO); });
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_EQ(outcome.messages, "orvapp: cannot write standard output: No space left on device\n");
}
