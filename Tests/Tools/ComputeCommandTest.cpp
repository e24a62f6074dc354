#include "Tests/Support/ScratchFolder.h"
#include "Tests/Tools/CommandResults.h"
#include "Tests/Tools/Eigenvalues.h"
#include "Tests/Tools/FrdColumns.h"
#include "Tests/Tools/Program.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>
#include <functional>

using Json = nlohmann::ordered_json;
using orvtest::bracketFile;
using orvtest::failureOf;
using orvtest::fieldsOf;
using orvtest::jsonOf;
using orvtest::lines;
using orvtest::namesIn;
using orvtest::Outcome;
using orvtest::runOrvapp;
using orvtest::TinyFile;
using testing::ElementsAre;
using testing::HasSubstr;

namespace {

/// One number of each node, or several, from the six stored components of its stress.
using OfStress = std::function<std::vector<double>(const std::vector<double>&)>;

enum Scale { VALUE, TENSOR };

std::array<double, 3> principal(const std::vector<double>& stress) {
    return orvtest::eigenvalues(stress.data());
}

double largestMagnitude(const std::array<double, 3>& principal) {
    return std::max(std::fabs(principal.front()), std::fabs(principal.back()));
}

/// One node in one state: the six stored components of its stress, and what the CSV says of the expression.
using VisitNode = std::function<void(const std::vector<double>& stress, const std::vector<double>& values)>;

/// Goes through the CSV of an expression on the shipped result: all nodes in all states.
void forEachNode(const std::string& expression, const VisitNode& visit) {
    const std::vector<std::string> text =
        lines(runOrvapp({"compute", bracketFile(), expression, "--name", "x", "--csv", "-"}).output);
    const std::vector<std::string> states = namesIn(bracketFile(), "states");
    ASSERT_EQ(text.size(), 1 + 5 * (741 + 70));
    const std::vector<int> nodes[] = {orvtest::nodesOfMaterial(bracketFile(), 1),
                                      orvtest::nodesOfMaterial(bracketFile(), 2)};
    auto line = text.begin() + 1;
    for (int state = 0; state < 5; ++state) {
        const orvtest::NodeValues stresses = orvtest::readBlock(bracketFile(), state + 1, "STRESS");
        for (const std::vector<int>& nodesOfPart : nodes) {
            for (const int node : nodesOfPart) {
                const std::vector<std::string> fields = fieldsOf(*line++);
                ASSERT_EQ(fields[0], states[std::size_t(state)]);
                ASSERT_EQ(fields[2], std::to_string(node));
                std::vector<double> values;
                for (std::size_t i = 3; i < fields.size(); ++i) {
                    values.push_back(std::strtod(fields[i].c_str(), nullptr));
                }
                visit(stresses.at(node), values);
            }
        }
    }
}

/// Compares with what is computed from the columns of the file. The difference may be `precision` of the value, or of
/// the largest principal value when `scale` says so.
void expectOfStress(const std::string& expression, const OfStress& expected, double precision, Scale scale = VALUE) {
    forEachNode(expression, [&](const std::vector<double>& stress, const std::vector<double>& values) {
        const std::vector<double> wanted = expected(stress);
        ASSERT_EQ(values.size(), wanted.size());
        for (std::size_t i = 0; i < values.size(); ++i) {
            const double size = scale == VALUE ? std::fabs(wanted[i]) : largestMagnitude(principal(stress));
            ASSERT_NEAR(values[i], wanted[i], precision * size) << expression;
        }
    });
}

} // namespace

// The file has the stresses as SXX, SYY, SZZ, SXY, SYZ, SZX, printed with six digits; all is computed from these. A
// principal value that is small beside the others cannot be had to a precision of its own.
TEST(ComputeCommand, VonMisesAgreesWithTheEigenvaluesOfThePrintedTensors) {
    expectOfStress(
        "vonMises(STRESS)",
        [](const std::vector<double>& stress) {
            return std::vector<double>{orvtest::equivalentStress(principal(stress))};
        },
        1e-6);
}

TEST(ComputeCommand, VonMisesAgreesWithTheFormulaOfComponents) {
    expectOfStress(
        "vonMises(STRESS)",
        [](const std::vector<double>& s) {
            const double normal = std::pow(s[0] - s[1], 2) + std::pow(s[1] - s[2], 2) + std::pow(s[2] - s[0], 2);
            const double shear = s[3] * s[3] + s[4] * s[4] + s[5] * s[5];
            return std::vector<double>{std::sqrt(normal / 2 + 3 * shear)};
        },
        1e-6);
}

TEST(ComputeCommand, PrincipalValuesAgreeWithTheEigenvaluesOfThePrintedTensors) {
    for (std::size_t i = 0; i < 3; ++i) {
        expectOfStress(
            "principals(STRESS)[" + std::to_string(3 + i) + "]",
            [i](const std::vector<double>& stress) { return std::vector<double>{principal(stress)[i]}; }, 1e-6, TENSOR);
    }
}

TEST(ComputeCommand, PrincipalDirectionsTurnThePrintedTensorsIntoTheirValues) {
    for (std::size_t i = 0; i < 3; ++i) {
        auto expectDirection = [i](const std::vector<double>& s, const std::vector<double>& n) {
            const double turned[] = {s[0] * n[0] + s[3] * n[1] + s[5] * n[2], s[3] * n[0] + s[1] * n[1] + s[4] * n[2],
                                     s[5] * n[0] + s[4] * n[1] + s[2] * n[2]};
            ASSERT_NEAR(n[0] * n[0] + n[1] * n[1] + n[2] * n[2], 1, 1e-6);
            for (std::size_t c = 0; c < 3; ++c) {
                ASSERT_NEAR(turned[c], principal(s)[i] * n[c], 1e-6 * largestMagnitude(principal(s)));
            }
        };
        forEachNode("principals(STRESS)[" + std::to_string(i) + "]", expectDirection);
    }
}

TEST(ComputeCommand, ArithmeticIsExact) {
    expectOfStress(
        "(STRESS*2 - STRESS)/4",
        [](std::vector<double> stress) {
            std::for_each(stress.begin(), stress.end(), [](double& s) { s = (s * 2 - s) / 4; });
            return stress;
        },
        0);
    expectOfStress(
        "extractComponent(STRESS, 4) - 0.5",
        [](const std::vector<double>& stress) { return std::vector<double>{stress[4] - 0.5}; }, 0);
}

TEST(ComputeCommand, TellsWhatValuesTells) {
    // DISP times one is DISP.
    for (const char* format : {"--json", "--csv=-"}) {
        const Outcome values =
            runOrvapp({"values", bracketFile(), "--result", "DISP", "--state", "*time 1", "--part", "S*", format});
        const Outcome computed = runOrvapp(
            {"compute", bracketFile(), "DISP*1", "--name", "DISP", "--state", "*time 1", "--part", "S*", format});
        EXPECT_EQ(computed.exitCode, 0);
        EXPECT_EQ(computed.messages, "");
        EXPECT_EQ(computed.output, values.output);
    }
    EXPECT_EQ(runOrvapp({"compute", bracketFile(), "DISP*1", "--name", "DISP"}).output,
              runOrvapp({"values", bracketFile(), "--result", "DISP"}).output);
}

TEST(ComputeCommand, JustANameGetsTheOtherName) {
    const Json report = jsonOf({"compute", bracketFile(), "DISP", "--name", "Moved"});
    EXPECT_EQ(report["result"], "Moved");
    EXPECT_EQ(report["rows"], jsonOf({"values", bracketFile(), "--result", "DISP"})["rows"]);
}

TEST(ComputeCommand, TheNameIsTakenAsItIs) {
    const Outcome outcome = runOrvapp({"compute", bracketFile(), "PE*100", "--name", "Plastic strain, *%1*"});
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_THAT(outcome.output, testing::StartsWith("Plastic strain, *%1* (scalar, per node)\n"));
}

TEST(ComputeCommand, WritesAllValues) {
    const TinyFile tiny;
    const orvtest::ScratchFolder folder;
    const std::string csv = folder / "moved.csv";
    const Outcome outcome = runOrvapp({"compute", tiny.path(), "l2Norm(DISP)*2", "--name", "Moved", "--csv", csv});
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_THAT(outcome.output, testing::StartsWith("Moved (scalar, per node)\n"));
    const std::vector<std::string> text = lines(orvtest::readWholeFile(csv));
    ASSERT_EQ(text.size(), 5u);
    EXPECT_EQ(text[0], "state,part,id,value");
    EXPECT_THAT(fieldsOf(text[1]), ElementsAre(testing::_, testing::_, "11", "2"));
    EXPECT_THAT(fieldsOf(text[2]), ElementsAre(testing::_, testing::_, "12", "5"));
    EXPECT_THAT(fieldsOf(text[3]), ElementsAre(testing::_, testing::_, "13", "")); // the node without a value
    EXPECT_THAT(fieldsOf(text[4]), ElementsAre(testing::_, testing::_, "14", "3"));
}

TEST(ComputeCommand, StatesThatLackAResultAreLeftOut) {
    const TinyFile tiny;
    const std::vector<std::string> states = namesIn(tiny.path(), "states");
    const Json rows = jsonOf({"compute", tiny.path(), "NDTEMP - 5", "--name", "Colder"})["rows"];
    ASSERT_EQ(rows.size(), 1u);
    EXPECT_EQ(rows[0]["state"], states[1]);
    EXPECT_EQ(rows[0]["average"], 15);
    EXPECT_EQ(failureOf({"compute", tiny.path(), "NDTEMP - 5", "--name", "Colder", "--state", states[0]}),
              "orvapp: " + tiny.path() + ": \"Colder\" has no values in state \"" + states[0] + "\", only in: \"" +
                  states[1] + "\"\n");
    EXPECT_EQ(failureOf({"compute", tiny.path(), "l2Norm(DISP) + NDTEMP", "--name", "Sum"}),
              "orvapp: " + tiny.path() + ": \"Sum\" has no values in any state\n");
}

TEST(ComputeCommand, AFailedLoadTellsWhyAndLeavesNoFile) {
    const orvtest::ScratchFolder folder;
    std::string bracket = orvtest::readWholeFile(bracketFile());
    const std::size_t state = bracket.find("  100CL  102", bracket.find("  100CL  102") + 1);
    bracket.replace(bracket.find(" -1         1", state) + 13, 12, "  1.2345X+00");
    const std::string broken = folder.write("broken.frd", bracket);
    const std::string message =
        failureOf({"compute", broken, "vonMises(STRESS)", "--name", "Mises", "--csv", folder / "mises.csv"});
    EXPECT_THAT(message, testing::StartsWith("orvapp: "));
    EXPECT_THAT(message, HasSubstr(broken));
    EXPECT_THAT(folder.names(), ElementsAre("broken.frd"));
}

TEST(ComputeCommand, AWrongExpressionPointsAtItsColumn) {
    EXPECT_EQ(failureOf({"compute", bracketFile(), "2 * vonMises(DISP)", "--name", "x"}),
              "orvapp: column 14 of the expression: vonMises takes a tensor, and DISP is a displacement\n"
              "  2 * vonMises(DISP)\n"
              "               ^\n");
    EXPECT_EQ(failureOf({"envelope", bracketFile(), "l2Norm(DIPS)"}),
              "orvapp: column 8 of the expression: there is no result \"DIPS\"; did you mean \"DISP\"? "
              "(results: \"PE\", \"ERROR\", \"FORC\", \"STRESS\", \"DISP\")\n"
              "  l2Norm(DIPS)\n"
              "         ^\n");
}

TEST(ComputeCommand, AWrongExpressionIsToldBeforeAFileIsOpened) {
    EXPECT_EQ(failureOf({"compute", "missing.frd", "(A", "--name", "x"}),
              "orvapp: column 3 of the expression: expected \")\" for the \"(\" in column 1, found the end\n"
              "  (A\n"
              "    ^\n");
    EXPECT_EQ(failureOf({"envelope", "missing.frd", ""}),
              "orvapp: column 1 of the expression: it is empty; name a result, as in l2Norm(DISP)\n");
}

TEST(ComputeCommand, HostileNestingIsAnError) {
    const std::string message = failureOf({"compute", bracketFile(), std::string(100000, '('), "--name", "x"});
    EXPECT_THAT(message, HasSubstr("column 201 of the expression: parentheses are nested more than 200 deep\n"));
    EXPECT_THAT(lines(message)[1], testing::EndsWith("((((((((((..."));
}

TEST(ComputeCommand, AThousandTermsAreASum) {
    std::string sum = "PE";
    for (int i = 1; i < 1000; ++i) {
        sum += "+PE";
    }
    const Json whole = jsonOf({"compute", bracketFile(), sum, "--name", "Sum", "--state", "*time 1"})["rows"][0];
    const Json single = jsonOf({"values", bracketFile(), "--result", "PE", "--state", "*time 1"})["rows"][0];
    EXPECT_NEAR(whole["max"], 1000 * double(single["max"]), 1e-9 * double(whole["max"]));
    EXPECT_EQ(whole["maxAt"], single["maxAt"]);
}

TEST(ComputeCommand, AnExpressionMayBeginWithAMinusSign) {
    const Json moved = jsonOf({"compute", bracketFile(), "-DISP", "--name", "-x", "--state", "*time 1"});
    EXPECT_EQ(moved["result"], "-x");
    EXPECT_EQ(moved["rows"][2]["max"], 7.87562e-01); // the negative of the smallest Z in the test of values
    EXPECT_EQ(jsonOf({"envelope", bracketFile(), "-2*PE"})["expression"], "-2*PE");
    EXPECT_EQ(failureOf({"envelope", bracketFile(), "-DIPS"}),
              "orvapp: column 2 of the expression: there is no result \"DIPS\"; did you mean \"DISP\"? "
              "(results: \"PE\", \"ERROR\", \"FORC\", \"STRESS\", \"DISP\")\n"
              "  -DIPS\n"
              "   ^\n");
}
