// What becomes of values: files written by hand, opened and loaded as an application does.

#include "OrvImportCae/FrdReader.h"

#include "OrvCore/Defines.h"
#include "OrvImportCae/DataSourceCae.h"
#include "OrvUnstructGrid/DataResultGroup.h"
#include "OrvUnstructGrid/DataStateSpec.h"
#include "OrvUnstructGrid/Error.h"
#include "Tests/OrvImportCae/FrdSamples.h"
#include "Tests/OrvImportCae/LoadEverything.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>
#include <string>
#include <vector>

#include <unistd.h>

using namespace orv;
using orvtest::FrdText;
using orvtest::printed;
using orvtest::ScratchFolder;

namespace {

constexpr double U = UNDEFINED_DOUBLE;
using Values = std::vector<double>;

/// A file that is open, and what its loads give.
struct Opened {
    ScratchFolder folder;
    std::string path;
    PtrRef<imp::cae::DataSourceCae> source;
    std::string message;

    explicit Opened(const std::string& content) : source(new imp::cae::DataSourceCae(1)) {
        path = folder.write("x.frd", content);
        ug::Error error;
        EXPECT_TRUE(source->openFiles({path}, &error)) << error.message();
    }

    explicit Opened(const FrdText& text) : Opened(FrdText(text).endFile().text()) {}

    ug::ResultInfo info(ug::ResultType type, const std::string& name) const {
        for (const ug::ResultInfo& candidate : source->directory()->resultInfos(type)) {
            if (candidate.name() == Str(name)) {
                return candidate;
            }
        }
        return ug::ResultInfo();
    }

    /// The values of a result in the state with that id on one part; nothing, and a message, when the load fails.
    Values load(ug::ResultType type, const std::string& name, int stateId = 1, std::size_t part = 0) {
        ug::DataStateSpec spec;
        spec.setResultIds({info(type, name)});
        ug::Error error;
        const bool isLoaded = source->loadDataState(stateId, spec, &error);
        message = without(folder, error.message());
        EXPECT_EQ(isLoaded, message.empty());
        ug::DataState* state = source->state(source->stateIndex(stateId));
        const ug::DataResult* result = state->results(state->geometry(0))->find(info(type, name));
        if (!isLoaded) {
            EXPECT_EQ(result, nullptr);
            return {};
        }
        const std::span<const double> span = result->values(part)->span();
        return Values(span.begin(), span.end());
    }

    std::string whyNotLoaded(ug::ResultType type, const std::string& name) {
        EXPECT_TRUE(load(type, name).empty());
        return message;
    }

    std::vector<std::string> warnings() const {
        std::vector<std::string> texts;
        for (const Str& warning : source->directory()->warnings()) {
            texts.push_back(without(folder, warning));
        }
        return texts;
    }
};

FrdText displacementBlock(int rowCount) {
    FrdText text;
    text.tetrahedron().resultHeader(1, 1.0, rowCount, 0).blockName("DISP", 4);
    text.component("D1", 2, 1, 0).component("D2", 2, 2, 0).component("D3", 2, 3, 0).computedComponent("ALL");
    return text;
}

FrdText temperatureBlock(int rowCount) {
    FrdText text;
    text.tetrahedron().resultHeader(1, 1.0, rowCount, 0).blockName("NDTEMP", 1).component("T", 1, 0, 0);
    return text;
}

TEST(FrdReader, LoadsRowsInTheOrderOfTheMesh) {
    FrdText text = displacementBlock(4);
    text.row(1, {1, 2, 3}).row(2, {-4, 5, 6}).row(3, {7e-10, 8, 9}).row(4, {0, 0, 1e30}).endBlock();
    Opened opened(text);
    EXPECT_EQ(opened.load(ug::DISPLACEMENT, "DISP"), (Values{1, 2, 3, -4, 5, 6, 7e-10, 8, 9, 0, 0, 1e30}));
    EXPECT_TRUE(opened.warnings().empty());
}

TEST(FrdReader, LoadsRowsInAnyOrderAndLeavesGaps) {
    FrdText text = temperatureBlock(3);
    EXPECT_EQ(Opened(FrdText(text).row(4, {4}).row(1, {1}).row(3, {3}).endBlock()).load(ug::SCALAR, "NDTEMP"),
              (Values{1, U, 3, 4}));
    EXPECT_EQ(Opened(FrdText(text).row(1, {1}).row(2, {2}).row(4, {4}).endBlock()).load(ug::SCALAR, "NDTEMP"),
              (Values{1, 2, U, 4}));
    EXPECT_EQ(Opened(FrdText(text).row(1, {1}).row(2, {2}).row(3, {3}).endBlock()).load(ug::SCALAR, "NDTEMP"),
              (Values{1, 2, 3, U}));
    EXPECT_EQ(Opened(FrdText(text).row(1, {1}).row(3, {3}).row(2, {2}).endBlock()).load(ug::SCALAR, "NDTEMP"),
              (Values{1, 2, 3, U}));
}

TEST(FrdReader, ABlockWithoutRowsIsUndefined) {
    EXPECT_EQ(Opened(temperatureBlock(84).endBlock()).load(ug::SCALAR, "NDTEMP"), (Values{U, U, U, U}));
}

TEST(FrdReader, LoadsIntoAllPartsOfANode) {
    FrdText text;
    text.nodeHeader(4).node(9, 0, 0, 0).node(2, 1, 0, 0).node(3, 2, 0, 0).node(4, 3, 0, 0).endBlock();
    text.elementHeader(2).element(1, 11, 0, 2, {9, 2}).element(2, 11, 0, 1, {2, 3}).endBlock();
    text.resultHeader(1, 1.0, 4, 0).blockName("FORC", 3);
    text.component("F1", 2, 1, 0).component("F2", 2, 2, 0).component("F3", 2, 3, 0);
    text.row(9, {9, 90, 900}).row(2, {2, 20, 200}).row(4, {4, 4, 4}).endBlock();
    Opened opened(text);
    // Part 0 is material 1 with nodes 2 and 3, part 1 is material 2 with nodes 2 and 9. Node 4 is in neither.
    EXPECT_EQ(opened.load(ug::VECTOR, "FORC", 1, 0), (Values{2, 20, 200, U, U, U}));
    EXPECT_EQ(opened.load(ug::VECTOR, "FORC", 1, 1), (Values{2, 20, 200, 9, 90, 900}));
    EXPECT_TRUE(opened.warnings().empty());
}

TEST(FrdReader, LoadsSingleColumns) {
    FrdText text;
    text.tetrahedron().resultHeader(1, 1.0, 4, 0).blockName("SDV", 8);
    for (int i = 1; i <= 8; ++i) {
        text.component(printed("SDV%d", i), 1, 0, 0);
    }
    for (int node = 1; node <= 4; ++node) {
        const double n = node;
        text.row(node, {n, 10 * n, 20 * n, 30 * n, 40 * n, 50 * n, 60 * n, -70 * n});
    }
    Opened opened(text.endBlock());
    EXPECT_EQ(opened.load(ug::SCALAR, "SDV.SDV1"), (Values{1, 2, 3, 4}));
    EXPECT_EQ(opened.load(ug::SCALAR, "SDV.SDV6"), (Values{50, 100, 150, 200}));
    EXPECT_EQ(opened.load(ug::SCALAR, "SDV.SDV7"), (Values{60, 120, 180, 240}));
    EXPECT_EQ(opened.load(ug::SCALAR, "SDV.SDV8"), (Values{-70, -140, -210, -280}));
}

TEST(FrdReader, BringsTensorsIntoOurOrder) {
    FrdText text;
    text.tetrahedron().resultHeader(1, 1.0, 1, 0).blockName("STRESS", 6);
    text.component("SXX", 4, 1, 1).component("SYY", 4, 2, 2).component("SZZ", 4, 3, 3);
    text.component("SXY", 4, 1, 2).component("SXZ", 4, 1, 3).component("SYZ", 4, 2, 3);
    Opened opened(text.row(2, {1, 2, 3, 12, 13, 23}).endBlock());
    EXPECT_EQ(opened.load(ug::SYMMETRIC_TENSOR, "STRESS"), (Values{U, U, U, U, U, U, 1, 2, 3, 12, 23, 13, //
                                                                   U, U, U, U, U, U, U, U, U, U,  U,  U}));
}

TEST(FrdReader, LooksUpColumnsInEachBlock) {
    FrdText text;
    text.tetrahedron().resultHeader(1, 1.0, 1, 0).blockName("SDV", 2).component("A", 1, 0, 0).component("B", 1, 0, 0);
    text.row(1, {1, 2}).endBlock();
    text.resultHeader(2, 2.0, 1, 0).blockName("SDV", 2).component("B", 1, 0, 0).component("A", 1, 0, 0);
    text.row(1, {20, 10}).endBlock();
    Opened opened(text);
    EXPECT_EQ(opened.load(ug::SCALAR, "SDV.A", 1).at(0), 1.0);
    EXPECT_EQ(opened.load(ug::SCALAR, "SDV.B", 1).at(0), 2.0);
    EXPECT_EQ(opened.load(ug::SCALAR, "SDV.A", 2).at(0), 10.0);
    EXPECT_EQ(opened.load(ug::SCALAR, "SDV.B", 2).at(0), 20.0);
}

TEST(FrdReader, ResultSetsDifferBetweenStates) {
    FrdText text;
    text.tetrahedron().temperatures(1, 0.5, {1, 2, 3, 4}).temperatures(2, 1.0, {1});
    text.resultHeader(2, 1.0, 0, 1).blockName("PE", 1).component("PE", 1, 0, 0).endBlock();
    Opened opened(text);
    const ug::DataSourceDirectory& directory = *opened.source->directory();
    EXPECT_TRUE(directory.hasResult(1, opened.info(ug::SCALAR, "NDTEMP")));
    EXPECT_FALSE(directory.hasResult(1, opened.info(ug::SCALAR, "PE")));
    EXPECT_TRUE(directory.hasResult(2, opened.info(ug::SCALAR, "PE")));
    EXPECT_EQ(opened.load(ug::SCALAR, "NDTEMP", 1), (Values{11, 21, 31, 41}));
    EXPECT_EQ(opened.load(ug::SCALAR, "NDTEMP", 2), (Values{12, U, U, U}));
}

TEST(FrdReader, KnowsTheRangeOfScalars) {
    FrdText text = temperatureBlock(2);
    Opened opened(text.row(1, {5}).row(3, {-7}).endBlock());
    opened.load(ug::SCALAR, "NDTEMP");
    ug::DataState* state = opened.source->state(0);
    const ug::DataPartScalar* part = state->results(state->geometry(0))->scalar(0)->part(0);
    EXPECT_EQ(part->minimum(), -7.0);
    EXPECT_EQ(part->maximum(), 5.0);
}

// Numbers that are not usual.

TEST(FrdReader, TakesNumbersOfAllKinds) {
    FrdText text = temperatureBlock(4);
    text.line(" -1         1     1.5-105").line(" -1         2         NaN").line(" -1         3        -Inf");
    Opened opened(text.line(" -1         4            ").endBlock());
    const Values values = opened.load(ug::SCALAR, "NDTEMP");
    ASSERT_EQ(values.size(), 4u) << opened.message;
    EXPECT_EQ(values[0], 1.5e-105);
    EXPECT_TRUE(std::isnan(values[1]));
    EXPECT_EQ(values[2], -std::numeric_limits<double>::infinity());
    EXPECT_EQ(values[3], U);
}

TEST(FrdReader, TakesWideExponents) {
    // Three digits throughout: negative numbers are 13 characters wide, so rows differ in width.
    FrdText text = displacementBlock(4);
    text.line(" -1         11.00000E+0002.00000E-0013.00000E+002");
    text.line(" -1         2-1.00000E+000-2.00000E-001-3.00000E+002");
    text.line(" -1         31.00000E-100-2.00000E-0013.00000E+002");
    text.line(" -1         4 1.00000E+000 2.00000E+000 3.00000E+000").endBlock();
    Opened opened(text);
    EXPECT_EQ(opened.load(ug::DISPLACEMENT, "DISP"), (Values{1, 0.2, 300, -1, -0.2, -300, 1e-100, -0.2, 300, 1, 2, 3}));
}

TEST(FrdReader, TakesCarriageReturns) {
    FrdText text = displacementBlock(4);
    text.row(1, {1, 2, 3}).row(2, {4, 5, 6}).row(3, {7, 8, 9}).row(4, {10, 11, 12}).endBlock();
    text.resultHeader(2, 2.0, 4, 0).blockName("SDV", 7);
    for (int i = 1; i <= 7; ++i) {
        text.component(printed("SDV%d", i), 1, 0, 0);
    }
    for (int node = 1; node <= 4; ++node) {
        text.row(node, {1, 2, 3, 4, 5, 6, 7.0 * node});
    }
    text.endBlock().endFile();
    std::string content;
    for (const char c : text.text()) {
        content += c == '\n' ? "\r\n" : std::string(1, c);
    }
    Opened opened(content);
    EXPECT_EQ(opened.load(ug::DISPLACEMENT, "DISP"), (Values{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12}));
    EXPECT_EQ(opened.load(ug::SCALAR, "SDV.SDV7", 2), (Values{7, 14, 21, 28}));
}

TEST(FrdReader, TakesShortNumbers) {
    std::string content = FrdText().tetrahedron().text();
    content += printed("  100CL%5d%12.5E%12d%20s%2d%5d%10s%2d\n", 101, 1.0, 2, "", 0, 1, "", 0);
    content += " -4  NDTEMP      1    1\n -5  T           1    1    0    0\n";
    content += " -1    1 1.00000E+00\n -1    3-3.00000E+00\n -3\n 9999\n";
    EXPECT_EQ(Opened(content).load(ug::SCALAR, "NDTEMP"), (Values{1, U, -3, U}));
}

TEST(FrdReader, TakesNumbersOfNineAndTenDigits) {
    FrdText text;
    text.nodeHeader(3).node(99999999, 0, 0, 0).node(100000000, 0, 0, 0).node(2147483647, 0, 0, 0).endBlock();
    text.elementHeader(1).element(2147483647, 7, 0, 1, {99999999, 100000000, 2147483647}).endBlock();
    text.temperatures(1, 1.0, {});
    std::string content = text.text();
    content.insert(content.size() - 4, printed(" -1%10d%12.5E\n -1%10d%12.5E\n -1%10d%12.5E\n", 99999999, 1.0,
                                               100000000, 2.0, 2147483647, 3.0));
    EXPECT_EQ(Opened(content + " 9999\n").load(ug::SCALAR, "NDTEMP"), (Values{1, 2, 3}));
}

TEST(FrdReader, TakesTrailingBlanks) {
    FrdText text = temperatureBlock(2);
    text.line(" -1         1 1.00000E+00   ").line(" -1         2 2.00000E+00   ").endBlock();
    EXPECT_EQ(Opened(text).load(ug::SCALAR, "NDTEMP"), (Values{1, 2, U, U}));
}

TEST(FrdReader, TakesBinaryDoubles) {
    std::string content = FrdText().tetrahedron().text();
    content += printed("  100CL%5d%12.5E%12d%20s%2d%5d%10s%2d\n", 101, 1.0, 2, "", 0, 1, "", 3);
    content += " -4  SDV         2    1\n -5  SDV1        1    1    0    0\n -5  SDV2        1    1    0    0\n";
    for (const int node : {4, 2}) {
        const double values[] = {0.1 * node, -1e-300};
        char row[20];
        std::memcpy(row, &node, 4);
        std::memcpy(row + 4, values, 16);
        content.append(row, 20);
    }
    Opened opened(content + " 9999\n");
    EXPECT_EQ(opened.load(ug::SCALAR, "SDV.SDV1"), (Values{U, 0.1 * 2, U, 0.1 * 4}));
    EXPECT_EQ(opened.load(ug::SCALAR, "SDV.SDV2"), (Values{U, -1e-300, U, -1e-300}));
}

// Rows that are not what they should be.

TEST(FrdReader, RefusesBadRows) {
    // Lines 1 to 11 are the mesh, 12 to 17 the headers of the block.
    const auto why = [](const std::string& row) {
        FrdText text = displacementBlock(2);
        return Opened(text.row(1, {1, 2, 3}).line(row).endBlock()).whyNotLoaded(ug::DISPLACEMENT, "DISP");
    };
    const std::string expected = "x.frd, line 19: expected \" -1\", a node and 3 values in 12 characters each, found ";
    EXPECT_EQ(why(" -1         2 1.00000E+00 1.00000E+00 1.00000E+0"),
              expected + "\" -1         2 1.00000E+00 1.00000E+00 1....\"");
    EXPECT_EQ(why(" -1         2"), expected + "\" -1         2\"");
    EXPECT_EQ(why(" -1"), expected + "\" -1\"");
    for (const char* row :
         {" -1         x 1.00000E+00 1.00000E+00 1.00000E+00", " -1        -2 1.00000E+00 1.00000E+00 1.00000E+00",
          " -19999999999 1.00000E+00 1.00000E+00 1.00000E+00", " -1       1 2 1.00000E+00 1.00000E+00 1.00000E+00",
          " -1           1.00000E+00 1.00000E+00 1.00000E+00", " -1         2 1.00000E+00 1.0x000E+00 1.00000E+00",
          " -1         2 1.00000E+00************ 1.00000E+00",
          " -1         2 1.00000E+00 1.00000E+00 1.00000E+00 1.00000E+00",
          " -2         2 1.00000E+00 1.00000E+00 1.00000E+00"}) {
        EXPECT_TRUE(why(row).starts_with(expected)) << why(row);
    }
}

TEST(FrdReader, RefusesRowsThatEvenOut) {
    // One row is too short, the next one too long by the same: the sum is as expected.
    FrdText text;
    text.tetrahedron().resultHeader(1, 1.0, 2, 0).blockName("SDV", 2);
    text.component("A", 1, 0, 0).component("B", 1, 0, 0);
    text.line(" -1         1 1.00000E+00 1.00000E").line(" -1         2 1.00000E+00 1.00000E+00+00").endBlock();
    Opened opened(text);
    EXPECT_EQ(opened.whyNotLoaded(ug::SCALAR, "SDV.A"),
              "x.frd, line 16: expected \" -1\", a node and 2 values in 12 characters each, found \" -1         1 "
              "1.00000E+00 1.00000E\"");
}

TEST(FrdReader, RefusesRowsThatDoNotGoOn) {
    FrdText text;
    text.tetrahedron().resultHeader(1, 1.0, 2, 0).blockName("SDV", 7);
    for (int i = 1; i <= 7; ++i) {
        text.component(printed("SDV%d", i), 1, 0, 0);
    }
    text.row(1, {1, 2, 3, 4, 5, 6, 7});
    FrdText wrongMark = text;
    wrongMark.row(2, {1, 2, 3, 4, 5, 6}).line(" -1           7.00000E+00").endBlock();
    EXPECT_EQ(Opened(wrongMark).whyNotLoaded(ug::SCALAR, "SDV.SDV1"),
              "x.frd, line 24: expected \" -2\" and 1 values in 12 characters each, found \" -1           "
              "7.00000E+00\"");
    EXPECT_EQ(Opened(text.row(2, {1, 2, 3, 4, 5, 6}).endBlock()).whyNotLoaded(ug::SCALAR, "SDV.SDV1"),
              "x.frd, line 24: expected \" -2\" and 1 values in 12 characters each, found \" -1         2 1.00000E+00 "
              "2.00000E+00 3....\"");
}

TEST(FrdReader, RefusesNodesThatComeTwice) {
    FrdText text = temperatureBlock(3);
    const std::string expected = " stands here for the second time in its block";
    EXPECT_EQ(Opened(FrdText(text).row(1, {1}).row(2, {2}).row(1, {1}).endBlock()).whyNotLoaded(ug::SCALAR, "NDTEMP"),
              "x.frd, line 17: node 1" + expected);
    EXPECT_EQ(Opened(FrdText(text).row(3, {1}).row(2, {2}).row(3, {1}).endBlock()).whyNotLoaded(ug::SCALAR, "NDTEMP"),
              "x.frd, line 17: node 3" + expected);
}

TEST(FrdReader, RefusesABlockForUnknownNodes) {
    FrdText text = temperatureBlock(2);
    EXPECT_EQ(Opened(text.row(7, {1}).row(8, {2}).endBlock()).whyNotLoaded(ug::SCALAR, "NDTEMP"),
              "x.frd, line 15: expected values of the file's nodes, found those of node 7 and others that the file "
              "does not have");
}

TEST(FrdReader, PassesOverUnknownNodesAmongOthersAndTellsOnce) {
    FrdText text = temperatureBlock(4);
    Opened opened(text.row(1, {1}).row(7, {1}).row(3, {3}).row(8, {2}).endBlock());
    EXPECT_TRUE(opened.warnings().empty());
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(opened.load(ug::SCALAR, "NDTEMP"), (Values{1, U, 3, U}));
        opened.source->dropResult(opened.info(ug::SCALAR, "NDTEMP"));
        EXPECT_EQ(opened.warnings(),
                  (std::vector<std::string>{"x.frd, line 16: values of 2 nodes that the file does not have are left "
                                            "out, the first, node 7, here"}));
    }
    FrdText one = temperatureBlock(2);
    Opened other(one.row(1, {1}).row(7, {1}).endBlock());
    other.load(ug::SCALAR, "NDTEMP");
    EXPECT_EQ(other.warnings(), (std::vector<std::string>{
                                    "x.frd, line 16: values of node 7, which the file does not have, are left out"}));
}

TEST(FrdReader, AFailedLoadLeavesOthersAlone) {
    FrdText text = temperatureBlock(2);
    text.row(1, {1}).line(" -1         2 x").endBlock().temperatures(2, 2.0, {1, 2, 3, 4});
    Opened opened(text);
    EXPECT_TRUE(opened.load(ug::SCALAR, "NDTEMP", 1).empty());
    EXPECT_EQ(opened.load(ug::SCALAR, "NDTEMP", 2), (Values{12, 22, 32, 42}));
}

// Files that change while they are open.

TEST(FrdReader, RefusesToLoadFromAFileThatHasChanged) {
    FrdText text;
    text.tetrahedron().temperatures(1, 1.0, {1, 2, 3, 4}).endFile();
    Opened opened(text.text());
    ASSERT_EQ(::truncate(opened.path.c_str(), off_t(text.text().size() - 40)), 0);
    EXPECT_EQ(opened.whyNotLoaded(ug::SCALAR, "NDTEMP"), "x.frd has changed since it was opened; open it again");
}

TEST(FrdReader, ReadsOnFromAFileThatHasBeenRemoved) {
    FrdText text;
    text.tetrahedron().temperatures(1, 1.0, {1, 2, 3, 4}).endFile();
    Opened opened(text.text());
    ASSERT_EQ(::unlink(opened.path.c_str()), 0);
    EXPECT_EQ(opened.load(ug::SCALAR, "NDTEMP"), (Values{11, 21, 31, 41}));
}

// Every place where a file can end. What the loads give must be what the whole file gives.
void expectPrefixesToHold(const std::string& content, std::size_t step) {
    ScratchFolder folder;
    std::size_t mostLoads = 0;
    for (std::size_t size = 0; size <= content.size(); size += step) {
        // Files of their own: some file systems are slow to write one anew.
        const std::string name = std::to_string(size) + ".frd";
        const std::string path = folder.write(name, content.substr(0, size));
        const PtrRef<imp::cae::DataSourceCae> source(new imp::cae::DataSourceCae(1));
        ug::Error error;
        const bool isOpen = source->openFiles({path}, &error);
        ASSERT_EQ(::unlink(path.c_str()), 0);
        if (!isOpen) {
            EXPECT_TRUE(without(folder, error.message()).starts_with(name)) << error.message();
            EXPECT_EQ(source->stateCount(), 0u);
            continue;
        }
        const orvtest::Everything sum = orvtest::loadEverything(*source, [](auto&...) {});
        EXPECT_EQ(sum.failures, 0u) << size;
        EXPECT_GE(sum.loads, mostLoads) << size;
        EXPECT_EQ(source->directory()->warnings().empty(), size + 1 >= content.size()) << size;
        mostLoads = sum.loads;
    }
    EXPECT_GT(mostLoads, 0u);
}

TEST(FrdReader, OpensWhatIsWholeOfAFileThatEndsAnywhere) {
    expectPrefixesToHold(orvtest::readWholeFile(orvtest::solverFile("cube_static.frd")), 1);
}

TEST(FrdReader, OpensWhatIsWholeOfABinaryFileThatEndsAnywhere) {
    const std::string content = orvtest::readWholeFile(orvtest::solverFile("beam_binary.frd"));
    // A step that divides the size, so that the whole file is among them: 15862 = 2 * 7 * 11 * 103.
    ASSERT_EQ(content.size() % 11, 0u);
    expectPrefixesToHold(content, 11);
}

/// One value of NDTEMP in state 1, and whether the whole result had to be loaded for it. -1 when there is none.
struct Single {
    double value = -1.0;
    bool isLoaded = false;

    bool operator==(const Single&) const = default;
};

Single readSingle(Opened& opened, const std::string& name, std::size_t node, std::size_t part = 0, int stateId = 1) {
    const ug::ResultInfo info = opened.info(ug::SCALAR, name);
    double value = -1.0;
    ug::Error error;
    const bool isRead = opened.source->copyScalars(stateId, info, {0, part, node}, {&value, 1}, &error);
    opened.message = without(opened.folder, error.message());
    return {isRead ? value : -1.0, opened.source->state(opened.source->stateIndex(stateId))->hasLoaded(info)};
}

const Single NOT_LOADED_30 = {30.0, false};

TEST(FrdReader, ReadsSingleValues) {
    FrdText text = temperatureBlock(4).row(1, {10}).row(2, {20}).row(3, {30}).row(4, {40}).endBlock();
    Opened opened(text.temperatures(2, 2.0, {1, 2, 3, 4}));
    EXPECT_EQ(readSingle(opened, "NDTEMP", 0), (Single{10.0, false}));
    EXPECT_EQ(readSingle(opened, "NDTEMP", 2), NOT_LOADED_30);
    EXPECT_EQ(readSingle(opened, "NDTEMP", 3), (Single{40.0, false}));
    EXPECT_EQ(readSingle(opened, "NDTEMP", 3, 0, 2), (Single{42.0, false}));
    EXPECT_TRUE(opened.message.empty());
}

TEST(FrdReader, ReadsSingleValuesOfAnyColumnOfLongRows) {
    FrdText text;
    text.tetrahedron().resultHeader(1, 1.0, 4, 0).blockName("ZZ", 8);
    for (int i = 1; i <= 8; ++i) {
        text.component("C" + std::to_string(i), 1, 0, 0);
    }
    for (int node = 1; node <= 4; ++node) {
        Values values;
        for (int i = 1; i <= 8; ++i) {
            values.push_back(10.0 * node + i);
        }
        text.row(node, values);
    }
    Opened opened(text.endBlock());
    EXPECT_EQ(readSingle(opened, "ZZ.C1", 2), (Single{31.0, false}));
    EXPECT_EQ(readSingle(opened, "ZZ.C6", 0), (Single{16.0, false}));
    EXPECT_EQ(readSingle(opened, "ZZ.C8", 3), (Single{48.0, false}));
}

TEST(FrdReader, ReadsSingleValuesOfTheNodesOfSeveralParts) {
    FrdText text;
    text.nodeHeader(4).node(9, 0, 0, 0).node(2, 1, 0, 0).node(3, 2, 0, 0).node(4, 3, 0, 0).endBlock();
    text.elementHeader(2).element(1, 11, 0, 2, {9, 2}).element(2, 11, 0, 1, {2, 3}).endBlock();
    text.temperatures(1, 1.0, {9, 2, 3, 4});
    Opened opened(text);
    // Part 0 is material 1 with nodes 2 and 3, part 1 is material 2 with nodes 2 and 9.
    EXPECT_EQ(readSingle(opened, "NDTEMP", 0, 0), (Single{21.0, false}));
    EXPECT_EQ(readSingle(opened, "NDTEMP", 1, 0), (Single{31.0, false}));
    EXPECT_EQ(readSingle(opened, "NDTEMP", 1, 1), (Single{91.0, false}));
}

TEST(FrdReader, ReadsSingleValuesOfBinaryBlocks) {
    for (const int form : {2, 3}) {
        std::string content = FrdText().tetrahedron().text();
        content += printed("  100CL%5d%12.5E%12d%20s%2d%5d%10s%2d\n", 101, 1.0, 4, "", 0, 1, "", form);
        content += " -4  SDV         2    1\n -5  SDV1        1    1    0    0\n -5  SDV2        1    1    0    0\n";
        for (int node = 1; node <= 4; ++node) {
            const double doubles[] = {0.5 * node, 0.25 * node};
            const float floats[] = {0.5f * float(node), 0.25f * float(node)};
            content.append(reinterpret_cast<const char*>(&node), 4);
            content.append(form == 2 ? reinterpret_cast<const char*>(floats) : reinterpret_cast<const char*>(doubles),
                           form == 2 ? 8 : 16);
        }
        Opened opened(content + " 9999\n");
        EXPECT_EQ(readSingle(opened, "SDV.SDV1", 2), (Single{1.5, false}));
        EXPECT_EQ(readSingle(opened, "SDV.SDV2", 3), (Single{1.0, false}));
    }
}

TEST(FrdReader, LoadsForSingleValuesOfUnusualBlocks) {
    // Node 3 where node 2 should be; gaps; a row that is wider than the others.
    Opened disordered(temperatureBlock(4).row(1, {10}).row(3, {30}).row(2, {20}).row(4, {40}).endBlock());
    EXPECT_EQ(readSingle(disordered, "NDTEMP", 1), (Single{20.0, true}));
    Opened first(temperatureBlock(2).row(1, {10}).row(3, {30}).endBlock());
    EXPECT_EQ(readSingle(first, "NDTEMP", 0), (Single{10.0, false}));
    Opened gap(temperatureBlock(2).row(1, {10}).row(3, {30}).endBlock());
    EXPECT_EQ(readSingle(gap, "NDTEMP", 1), (Single{U, true}));
    Opened beyond(temperatureBlock(2).row(1, {10}).row(3, {30}).endBlock());
    EXPECT_EQ(readSingle(beyond, "NDTEMP", 2), (Single{30.0, true}));
    Opened wide(
        temperatureBlock(4).row(1, {10}).row(2, {20}).line(" -1         3 3.0000000E+01").row(4, {40}).endBlock());
    EXPECT_EQ(readSingle(wide, "NDTEMP", 0), (Single{10.0, true}));
}

TEST(FrdReader, ABadSingleValueIsToldLikeABadBlock) {
    Opened opened(temperatureBlock(3).row(1, {10}).line(" -1         2 2.0000xE+01").row(3, {30}).endBlock());
    EXPECT_EQ(readSingle(opened, "NDTEMP", 2), NOT_LOADED_30);
    EXPECT_EQ(readSingle(opened, "NDTEMP", 1), (Single{-1.0, false}));
    EXPECT_EQ(opened.message, opened.whyNotLoaded(ug::SCALAR, "NDTEMP"));
    EXPECT_NE(opened.message, "");
}

// Of the same size, so that only the time tells.
TEST(FrdReader, NoSingleValueComesFromAFileThatHasChanged) {
    Opened opened(temperatureBlock(4).row(1, {10}).row(2, {20}).row(3, {30}).row(4, {40}).endBlock());
    std::string content = opened.folder.read("x.frd");
    content.replace(content.find("3.00000E+01"), 1, "7");
    opened.folder.write("x.frd", content);
    EXPECT_EQ(readSingle(opened, "NDTEMP", 2), (Single{-1.0, false}));
    EXPECT_EQ(opened.message, "x.frd has changed since it was opened; open it again");
}

} // namespace
