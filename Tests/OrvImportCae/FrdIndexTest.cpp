#include "OrvImportCae/FrdIndex.h"

#include "OrvCore/Defines.h"
#include "Tests/OrvImportCae/FrdSamples.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

using namespace orv;
using namespace orv::imp::cae;
using orvtest::FrdText;
using orvtest::printed;
using orvtest::ScratchFolder;

namespace {

struct Path {
    std::string name;
};

/// A file's index, or why there is none.
struct Indexed {
    ScratchFolder folder;
    CaeFile file;
    FrdIndex index;
    bool isGood = false;
    std::string message;

    explicit Indexed(const std::string& content) {
        open(folder.write("x.frd", content));
    }

    explicit Indexed(const Path& path) {
        open(path.name);
    }

    std::vector<std::string> warnings() const {
        std::vector<std::string> texts;
        for (const std::string& warning : index.warnings) {
            texts.push_back(without(folder, Str(warning)));
        }
        return texts;
    }

private:
    void open(const std::string& path) {
        ug::Error error;
        isGood = file.open(path, &error) && readFrdIndex(file, &index, &error);
        message = without(folder, error.message());
    }
};

std::string whyRefused(const std::string& content) {
    const Indexed indexed(content);
    EXPECT_FALSE(indexed.isGood);
    return indexed.message;
}

std::string withCarriageReturns(const std::string& text) {
    std::string result;
    for (const char c : text) {
        result += c == '\n' ? "\r\n" : std::string(1, c);
    }
    return result;
}

std::string textBetween(const std::string& content, const FrdRows& rows) {
    return content.substr(std::size_t(rows.begin), std::size_t(rows.end - rows.begin));
}

TEST(FrdIndex, TellsWhatTheSolverWrote) {
    const Indexed indexed(Path{orvtest::solverFile("cube_static.frd")});
    ASSERT_TRUE(indexed.isGood) << indexed.message;
    const FrdIndex& index = indexed.index;
    EXPECT_EQ(index.title, "one hexahedron pulled along x, homogeneous stress of 100");
    ASSERT_EQ(index.materials.size(), 1u);
    EXPECT_EQ(index.materials[0], std::pair(1, std::string("STEEL")));
    EXPECT_EQ(index.nodes.count, 8);
    EXPECT_EQ(index.nodes.rowSize, 50); // 3 + 10 + 3 * 12 and the line's end.
    EXPECT_EQ(index.elements.count, 1);
    EXPECT_EQ(index.elements.rowSize, 29 + 84); // " -1" with four numbers, " -2" with eight.
    EXPECT_TRUE(index.warnings.empty());

    std::vector<std::string> names;
    for (const FrdResultBlock& block : index.blocks) {
        names.push_back(index.layouts[block.layout].name);
        EXPECT_EQ(block.stateNumber, 1);
        EXPECT_EQ(block.kind, 0);
        EXPECT_EQ(block.value, 1.0);
        EXPECT_EQ(block.step, 1);
        EXPECT_EQ(block.increment, 1);
        EXPECT_EQ(block.mode, 0);
        EXPECT_EQ(block.nodalDiameter, -1);
        EXPECT_EQ(block.rows.count, 8);
        EXPECT_TRUE(block.rows.isRegular());
    }
    EXPECT_EQ(names, (std::vector<std::string>{"DISP", "STRESS", "TOSTRAIN", "FORC", "ERROR"}));
    const FrdLayout& disp = index.layouts[index.blocks[0].layout];
    EXPECT_EQ(disp.components, (std::vector<FrdComponent>{{"D1", 2, 1}, {"D2", 2, 2}, {"D3", 2, 3}}));
    const FrdLayout& stress = index.layouts[index.blocks[1].layout];
    EXPECT_EQ(stress.components,
              (std::vector<FrdComponent>{
                  {"SXX", 4, 1}, {"SYY", 4, 2}, {"SZZ", 4, 3}, {"SXY", 4, 1}, {"SYZ", 4, 2}, {"SZX", 4, 3}}));
    EXPECT_EQ(index.blocks[1].rows.rowSize, 86);
}

TEST(FrdIndex, TellsModes) {
    const Indexed indexed(Path{orvtest::solverFile("beam_modes.frd")});
    ASSERT_TRUE(indexed.isGood) << indexed.message;
    ASSERT_EQ(indexed.index.blocks.size(), 6u);
    for (std::size_t i = 0; i < 6; ++i) {
        const FrdResultBlock& block = indexed.index.blocks[i];
        EXPECT_EQ(block.mode, int(i) + 1);
        EXPECT_EQ(block.stateNumber, int(i) + 1);
        EXPECT_EQ(block.kind, 2);
        EXPECT_EQ(block.nodalDiameter, -1);
        EXPECT_EQ(block.layout, 0u);
    }
    EXPECT_EQ(indexed.index.blocks[2].value, 134087.0321);
}

TEST(FrdIndex, FindsBinaryBlocks) {
    const std::string path = orvtest::solverFile("beam_binary.frd");
    const Indexed text(Path{orvtest::solverFile("beam_increments.frd")});
    const Indexed binary(Path{path});
    ASSERT_TRUE(binary.isGood) << binary.message;
    EXPECT_EQ(binary.index.nodes.form, FrdForm::BINARY_DOUBLE);
    EXPECT_EQ(binary.index.nodes.end - binary.index.nodes.begin, 20 * 28);
    EXPECT_EQ(binary.index.elements.count, 4);
    EXPECT_EQ(binary.index.elements.end - binary.index.elements.begin, 4 * (16 + 8 * 4));
    ASSERT_EQ(binary.index.blocks.size(), text.index.blocks.size());
    EXPECT_EQ(binary.index.layouts, text.index.layouts);
    EXPECT_EQ(binary.index.blocks[1].rows.form, FrdForm::BINARY_FLOAT);
    EXPECT_EQ(binary.index.blocks[1].rows.rowSize, 4 + 6 * 4);
    EXPECT_TRUE(binary.warnings().empty());
}

TEST(FrdIndex, JumpsOverRowsOfTheExpectedWidth) {
    // Nobody looks at the second of three rows while the block begins and ends where it should.
    FrdText text;
    text.tetrahedron().resultHeader(1, 0.5, 3, 1).blockName("NDTEMP", 1).component("T", 1, 0, 0);
    const std::string content = text.row(1, {1}).line(std::string(25, '#')).row(3, {3}).endBlock().endFile().text();
    const Indexed indexed(content);
    ASSERT_TRUE(indexed.isGood) << indexed.message;
    EXPECT_EQ(indexed.index.blocks.at(0).rows.count, 3);
    EXPECT_TRUE(indexed.index.blocks[0].rows.isRegular());
}

TEST(FrdIndex, WalksLinesWhereTheCountLies) {
    for (const int announced : {0, 1, 2, 4, 100, 99999999}) {
        FrdText text;
        text.tetrahedron().resultHeader(1, 0.5, announced, 1).blockName("NDTEMP", 1).component("T", 1, 0, 0);
        text.row(1, {1}).row(2, {2}).row(3, {3}).endBlock();
        const std::string content = text.temperatures(2, 1.0, {1, 2, 3, 4}).endFile().text();
        const Indexed indexed(content);
        ASSERT_TRUE(indexed.isGood) << indexed.message;
        ASSERT_EQ(indexed.index.blocks.size(), 2u) << announced;
        EXPECT_EQ(indexed.index.blocks[0].rows.count, 3) << announced;
        EXPECT_EQ(textBetween(content, indexed.index.blocks[0].rows), printed(" -1%10d%12.5E\n", 1, 1.0) +
                                                                          printed(" -1%10d%12.5E\n", 2, 2.0) +
                                                                          printed(" -1%10d%12.5E\n", 3, 3.0));
        EXPECT_TRUE(indexed.warnings().empty());
    }
}

TEST(FrdIndex, TakesBlocksThatAnnounceRowsAndHaveNone) {
    FrdText text;
    text.tetrahedron().resultHeader(1, 0.5, 84, 1).blockName("NDTEMP", 1).component("T", 1, 0, 0).endBlock();
    const Indexed indexed(text.temperatures(2, 1.0, {1}).endFile().text());
    ASSERT_TRUE(indexed.isGood) << indexed.message;
    ASSERT_EQ(indexed.index.blocks.size(), 2u);
    EXPECT_EQ(indexed.index.blocks[0].rows.count, 0);
    EXPECT_EQ(indexed.index.blocks[1].rows.count, 1);
}

TEST(FrdIndex, TakesMeshesWhoseCountsLieOrAreLeftOut) {
    FrdText mesh;
    mesh.tetrahedron();
    for (const char* count : {"           7", "           3", "           0", "            ", "999999999999"}) {
        std::string content = mesh.text() + " 9999\n";
        content.replace(content.find("    2C") + 24, 12, count);
        content.replace(content.find("    3C") + 24, 12, count);
        const Indexed indexed(content);
        ASSERT_TRUE(indexed.isGood) << indexed.message;
        EXPECT_EQ(indexed.index.nodes.count, 4) << count;
        EXPECT_EQ(indexed.index.elements.count, 1) << count;
    }
}

TEST(FrdIndex, CountsElementsOfSeveralTypes) {
    const Indexed indexed(Path{orvtest::solverFile("mixed.frd")});
    ASSERT_TRUE(indexed.isGood) << indexed.message;
    EXPECT_EQ(indexed.index.elements.count, 8);
    EXPECT_FALSE(indexed.index.elements.isRegular());
    EXPECT_EQ(indexed.index.materials, (std::vector<std::pair<int, std::string>>{{1, "STEEL"}, {2, "RUBBER"}}));
}

TEST(FrdIndex, TakesCarriageReturns) {
    FrdText text;
    text.tetrahedron().temperatures(1, 0.5, {1, 2, 3, 4}).endFile();
    const Indexed indexed(withCarriageReturns(text.text()));
    ASSERT_TRUE(indexed.isGood) << indexed.message;
    ASSERT_EQ(indexed.index.blocks.size(), 1u);
    EXPECT_EQ(indexed.index.blocks[0].rows.lineEndSize, 2);
    EXPECT_EQ(indexed.index.blocks[0].rows.rowSize, 27);
    EXPECT_TRUE(indexed.index.blocks[0].rows.isRegular());
    EXPECT_EQ(indexed.index.nodes.count, 4);
    EXPECT_TRUE(indexed.warnings().empty());
}

TEST(FrdIndex, CountsRowsThatGoOn) {
    FrdText text;
    text.tetrahedron().resultHeader(1, 0.5, 2, 1).blockName("SDV", 8);
    for (int i = 1; i <= 8; ++i) {
        text.component(printed("SDV%d", i), 1, 0, 0);
    }
    text.row(1, {1, 2, 3, 4, 5, 6, 7, 8}).row(2, {1, 2, 3, 4, 5, 6, 7, 8}).endBlock().endFile();
    const Indexed indexed(text.text());
    ASSERT_TRUE(indexed.isGood) << indexed.message;
    EXPECT_EQ(indexed.index.blocks.at(0).rows.rowSize, 86 + 38);
    EXPECT_TRUE(indexed.index.blocks[0].rows.isRegular());
    EXPECT_EQ(indexed.index.layouts.at(0).components.size(), 8u);
}

TEST(FrdIndex, LeavesOutColumnsThatAreToBeComputed) {
    FrdText text;
    text.tetrahedron().resultHeader(1, 0.5, 0, 1).blockName("DISP", 4);
    text.component("D1", 2, 1, 0).component("D2", 2, 2, 0).component("D3", 2, 3, 0).computedComponent("ALL");
    const Indexed indexed(text.endBlock().endFile().text());
    ASSERT_TRUE(indexed.isGood) << indexed.message;
    EXPECT_EQ(indexed.index.layouts.at(0).components.size(), 3u);
}

TEST(FrdIndex, KeepsOneLayoutForEqualBlocks) {
    FrdText text;
    text.tetrahedron().temperatures(1, 0.5, {1}).temperatures(2, 0.5, {1});
    text.resultHeader(2, 0.5, 0, 1).blockName("NDTEMP", 1).component("U", 1, 0, 0).endBlock();
    const Indexed indexed(text.endFile().text());
    ASSERT_TRUE(indexed.isGood) << indexed.message;
    EXPECT_EQ(indexed.index.layouts.size(), 2u);
    EXPECT_EQ(indexed.index.blocks.at(1).layout, 0u);
    EXPECT_EQ(indexed.index.blocks.at(2).layout, 1u);
}

TEST(FrdIndex, ReadsParametersForTheNextBlockOnly) {
    FrdText text;
    text.tetrahedron();
    text.line(printed("    1PSTEP%26d%12d%12d", 1, 7, 3)).line(printed("    1PHID%27d", 2));
    text.line(printed("    1PMODE%26d", 5));
    text.temperatures(1, 0.5, {1}).temperatures(2, 0.5, {1});
    const Indexed indexed(text.endFile().text());
    ASSERT_TRUE(indexed.isGood) << indexed.message;
    const FrdResultBlock& first = indexed.index.blocks.at(0);
    EXPECT_EQ(first.increment, 7);
    EXPECT_EQ(first.step, 3);
    EXPECT_EQ(first.mode, 5);
    EXPECT_EQ(first.nodalDiameter, 2);
    const FrdResultBlock& second = indexed.index.blocks.at(1);
    EXPECT_EQ(second.increment, 0);
    EXPECT_EQ(second.step, 0);
    EXPECT_EQ(second.mode, 0);
    EXPECT_EQ(second.nodalDiameter, -1);
}

TEST(FrdIndex, TakesTheTitleOfTheModelHeaderFirst) {
    const Indexed indexed("    1Cbridge\n    1Uheading\n" + FrdText().tetrahedron().endFile().text().substr(7));
    ASSERT_TRUE(indexed.isGood) << indexed.message;
    EXPECT_EQ(indexed.index.title, "bridge");
}

TEST(FrdIndex, HasNoTitleWhereOnlyKeysStand) {
    // The first user line is the heading; any later one bears a key.
    const Indexed indexed("    1C\n    1U    \n    1UUSER someone\n" +
                          FrdText().tetrahedron().endFile().text().substr(7));
    ASSERT_TRUE(indexed.isGood) << indexed.message;
    EXPECT_EQ(indexed.index.title, "");
}

TEST(FrdIndex, TakesBlankValues) {
    std::string content = FrdText().tetrahedron().temperatures(1, 0.5, {1}).endFile().text();
    content.replace(content.find("  100C") + 12, 12, 12, ' ');
    const Indexed indexed(content);
    ASSERT_TRUE(indexed.isGood) << indexed.message;
    EXPECT_EQ(indexed.index.blocks.at(0).value, UNDEFINED_DOUBLE);
}

TEST(FrdIndex, ReachesBeyondFourGigabytes) {
    // Rows of zeros, as a hole in the file: walking them would fail.
    constexpr std::int64_t ROWS = 110000000;
    constexpr std::int64_t ROW_SIZE = 50;
    FrdText text;
    text.tetrahedron().resultHeader(1, 0.5, int(ROWS), 1).blockName("DISP", 3);
    text.component("D1", 2, 1, 0).component("D2", 2, 2, 0).component("D3", 2, 3, 0);
    const std::int64_t begin = std::int64_t(text.text().size());
    const std::string firstRow = printed(" -1%10d%12.5E%12.5E%12.5E\n", 1, 0.0, 0.0, 0.0);
    const std::string end = "\n" + FrdText().endBlock().temperatures(2, 1.0, {1, 2}).endFile().text().substr(7);
    ScratchFolder folder;
    const std::string path = folder.write("x.frd", text.text() + firstRow);
    {
        std::ofstream file(path, std::ios::binary | std::ios::in);
        file.seekp(begin + ROWS * ROW_SIZE - 1);
        file << end;
    }
    const Indexed indexed(Path{path});
    ASSERT_TRUE(indexed.isGood) << indexed.message;
    ASSERT_EQ(indexed.index.blocks.size(), 2u);
    EXPECT_EQ(indexed.index.blocks[0].rows.count, ROWS);
    EXPECT_EQ(indexed.index.blocks[0].rows.end, begin + ROWS * ROW_SIZE);
    EXPECT_EQ(indexed.index.blocks[1].stateNumber, 2);
    EXPECT_EQ(indexed.index.blocks[1].rows.count, 2);
}

// Files that end too early.

TEST(FrdIndex, WarnsWhereTheEndLineIsMissing) {
    const Indexed indexed(FrdText().tetrahedron().temperatures(1, 0.5, {1, 2}).text());
    ASSERT_TRUE(indexed.isGood) << indexed.message;
    EXPECT_EQ(indexed.index.blocks.size(), 1u);
    EXPECT_EQ(indexed.warnings(),
              (std::vector<std::string>{
                  "x.frd ends without its end line \"9999\"; the run was broken off or is not over yet"}));
}

TEST(FrdIndex, LeavesOutTheBlockThatTheFileEndsWithin) {
    // The block of state 2 begins at line 18: 1 + 6 of the nodes, 4 of the elements, 6 of state 1 go before.
    FrdText text;
    text.tetrahedron().temperatures(1, 0.5, {1, 2});
    const std::size_t whole = text.text().size();
    text.temperatures(2, 1.0, {1, 2});
    const std::size_t withoutEnd = text.text().size() - 4;
    for (std::size_t size = withoutEnd; size > whole + 76 + 2; --size) {
        const Indexed indexed(text.text().substr(0, size));
        ASSERT_TRUE(indexed.isGood) << indexed.message;
        ASSERT_EQ(indexed.index.blocks.size(), 1u) << size;
        ASSERT_EQ(indexed.warnings().size(), 1u);
        EXPECT_TRUE(indexed.warnings()[0].starts_with("x.frd, line 18: the file ends within ")) << size;
    }
    EXPECT_EQ(Indexed(text.text().substr(0, withoutEnd)).warnings().at(0),
              "x.frd, line 18: the file ends within block NDTEMP of state 2, which is left out; the run was broken off "
              "or is not over yet");
    EXPECT_EQ(Indexed(text.text().substr(0, whole + 20)).warnings().at(0),
              "x.frd, line 18: the file ends within this line, which is left out; the run was broken off or is not "
              "over yet");
}

TEST(FrdIndex, LeavesOutABinaryBlockThatTheFileEndsWithin) {
    const std::string content = orvtest::readWholeFile(orvtest::solverFile("beam_binary.frd"));
    const Indexed whole(content);
    ASSERT_EQ(whole.index.blocks.size(), 22u);
    const Indexed cut(content.substr(0, std::size_t(whole.index.blocks[21].rows.end) - 1));
    ASSERT_TRUE(cut.isGood) << cut.message;
    EXPECT_EQ(cut.index.blocks.size(), 21u);
    EXPECT_EQ(cut.warnings().at(0), "x.frd, byte " + std::to_string(whole.index.blocks[21].rows.header) +
                                        ": the file ends within block ERROR of state 6, which is left out; the run "
                                        "was broken off or is not over yet");
}

TEST(FrdIndex, TakesAnEndLineWithoutItsEnd) {
    const std::string content = FrdText().tetrahedron().endFile().text();
    const Indexed indexed(content.substr(0, content.size() - 1));
    ASSERT_TRUE(indexed.isGood) << indexed.message;
    EXPECT_TRUE(indexed.warnings().empty());
}

TEST(FrdIndex, WarnsOfWhatFollowsTheEndLine) {
    FrdText text;
    text.tetrahedron().endFile().line("").line("   ");
    EXPECT_TRUE(Indexed(text.text()).warnings().empty());
    EXPECT_EQ(Indexed(text.line("    1C").text()).warnings(),
              (std::vector<std::string>{"x.frd, line 15: what follows the end line \"9999\" is not read"}));
}

TEST(FrdIndex, RefusesAFileThatEndsBeforeOrWithinItsMesh) {
    EXPECT_EQ(whyRefused(""), "x.frd is empty; expected the results of CalculiX, which begin with \"    1C\"");
    const std::string noNodes = ": the file ends without a block of nodes (2C); the run was broken off before the mesh";
    EXPECT_EQ(whyRefused("    1C"), "x.frd, line 1" + noNodes);
    EXPECT_EQ(whyRefused("    1C\n"), "x.frd, line 2" + noNodes);
    EXPECT_EQ(whyRefused("    1C\n 9999\n"), "x.frd, line 3" + noNodes);
    FrdText text;
    text.nodeHeader(2).node(1, 0, 0, 0);
    EXPECT_EQ(whyRefused(text.text()), "x.frd, line 2: the file ends within this block of nodes");
    text.node(2, 1, 0, 0).endBlock().elementHeader(1).line(" -1         1   11    0    1");
    EXPECT_EQ(whyRefused(text.text()), "x.frd, line 6: the file ends within this block of elements");
    EXPECT_EQ(whyRefused(text.text() + " -2         1"), "x.frd, line 6: the file ends within this block of elements");
}

// Files that are not what they should be.

TEST(FrdIndex, RefusesGarbage) {
    const std::string expected =
        "x.frd, line 1: not a result file of CalculiX: expected \"    1C\" at its beginning, found ";
    EXPECT_EQ(whyRefused("garbage\n"), expected + "\"garbage\"");
    EXPECT_EQ(whyRefused("\n\n"), expected + "\"\"");
    EXPECT_EQ(whyRefused(std::string("\x7F"
                                     "ELF\0\0",
                                     6)),
              expected + "\"?ELF??\"");
    EXPECT_EQ(whyRefused(std::string(100000, 'x')), expected + '"' + std::string(40, 'x') + "...\"");
}

TEST(FrdIndex, RefusesUnknownBlocks) {
    EXPECT_EQ(whyRefused(FrdText().tetrahedron().line("    5C").text()),
              "x.frd, line 12: expected the header of a block (1U, 1P, 2C, 3C, 100C or 9999), found \"    5C\"");
}

TEST(FrdIndex, PassesOverBlankLinesAndRepeatedModelHeaders) {
    FrdText text;
    text.line("").line("    1C").tetrahedron().line("   ").temperatures(1, 0.5, {1}).endFile();
    const Indexed indexed(text.text());
    EXPECT_TRUE(indexed.isGood) << indexed.message;
    EXPECT_EQ(indexed.index.blocks.size(), 1u);
}

TEST(FrdIndex, RefusesASecondMesh) {
    FrdText text;
    text.tetrahedron();
    EXPECT_EQ(whyRefused(FrdText(text).nodeHeader(0).text()),
              "x.frd, line 12: a second block of nodes: a mesh that changes within the file is not understood, found "
              "\"    2C                             0    ...\"");
    EXPECT_EQ(whyRefused(FrdText(text).elementHeader(0).text()),
              "x.frd, line 12: a second block of elements: a mesh that changes within the file is not understood, "
              "found \"    3C                             0    ...\"");
}

TEST(FrdIndex, RefusesHeadersWithWrongFields) {
    const std::string content = FrdText().tetrahedron().temperatures(1, 0.5, {1}).endFile().text();
    const std::size_t nodes = content.find("    2C");
    const std::size_t elements = content.find("    3C");
    const std::size_t results = content.find("  100C");
    struct Case {
        std::size_t at;
        const char* replacement;
        const char* expected;
    };
    for (const Case& test : {
             Case{nodes + 24, "           x", "line 2: expected the number of nodes in columns 25 to 36, found "},
             Case{nodes + 24, "          -4", "line 2: expected the number of nodes in columns 25 to 36, found "},
             Case{nodes + 73, " 4", "line 2: expected the format, 0 to 3, in columns 74 to 75, found "},
             Case{nodes + 73, "  ", "line 2: expected the format, 0 to 3, in columns 74 to 75, found "},
             Case{elements + 24, "   one", "line 8: expected the number of elements in columns 25 to 36, found "},
             Case{results + 12, "         xyz", "line 12: expected the state's value in columns 13 to 24, found "},
             Case{results + 24, "           x", "line 12: expected the number of nodes in columns 25 to 36, found "},
             Case{results + 56, "  ", "line 12: expected the kind of analysis in columns 57 to 58, found "},
             Case{results + 58, "   -1", "line 12: expected the state's number in columns 59 to 63, found "},
             Case{results + 58, "*****", "line 12: expected the state's number in columns 59 to 63, found "},
             Case{results + 73, " 7", "line 12: expected the format, 0 to 3, in columns 74 to 75, found "},
         }) {
        std::string wrong = content;
        wrong.replace(test.at, std::string(test.replacement).size(), test.replacement);
        const std::string message = whyRefused(wrong);
        EXPECT_TRUE(message.starts_with("x.frd, " + std::string(test.expected))) << message;
    }
}

TEST(FrdIndex, RefusesABlockWithoutItsName) {
    FrdText text;
    text.tetrahedron().resultHeader(1, 0.5, 1, 1);
    EXPECT_EQ(whyRefused(FrdText(text).row(1, {1}).text()),
              "x.frd, line 13: expected \" -4\" and the name of the result in columns 6 to 13, found \" -1         1 "
              "1.00000E+00\"");
    EXPECT_EQ(whyRefused(FrdText(text).line(" -4").text()),
              "x.frd, line 13: expected \" -4\" and the name of the result in columns 6 to 13, found \" -4\"");
}

TEST(FrdIndex, RefusesStrangersAmongRows) {
    FrdText text;
    text.tetrahedron().resultHeader(1, 0.5, 9, 1).blockName("NDTEMP", 1).component("T", 1, 0, 0);
    EXPECT_EQ(whyRefused(text.row(1, {1}).line("#").endBlock().text()),
              "x.frd, line 16: expected a row (\" -1\" or \" -2\") or the end of the block (\" -3\"), found \"#\"");
}

TEST(FrdIndex, WalksBinaryRowsWhereTheCountLies) {
    const std::string path = orvtest::solverFile("beam_binary.frd");
    const std::string content = orvtest::readWholeFile(path);
    const Indexed whole(Path{path});
    for (const char* announced : {"          21", "         900", "999999999999"}) {
        std::string lying = content;
        lying.replace(std::size_t(whole.index.blocks.at(3).rows.header) + 24, 12, announced);
        lying.replace(std::size_t(whole.index.nodes.header) + 24, 12, announced);
        lying.replace(std::size_t(whole.index.elements.header) + 24, 12, announced);
        const Indexed indexed(lying);
        ASSERT_TRUE(indexed.isGood) << indexed.message;
        EXPECT_EQ(indexed.index.nodes.count, 20);
        EXPECT_EQ(indexed.index.elements.count, 4);
        ASSERT_EQ(indexed.index.blocks.size(), 22u);
        EXPECT_EQ(indexed.index.blocks[3].rows.count, 20);
        EXPECT_EQ(indexed.index.blocks[3].rows.end, whole.index.blocks[3].rows.end);
        EXPECT_TRUE(indexed.warnings().empty());
    }
}

TEST(FrdIndex, TakesBinaryBlocksThatAnnounceRowsAndHaveNone) {
    const std::string path = orvtest::solverFile("beam_binary.frd");
    std::string content = orvtest::readWholeFile(path);
    const Indexed whole(Path{path});
    const FrdRows& rows = whole.index.blocks.at(3).rows;
    content.erase(std::size_t(rows.begin), std::size_t(rows.end - rows.begin));
    const Indexed indexed(content);
    ASSERT_TRUE(indexed.isGood) << indexed.message;
    ASSERT_EQ(indexed.index.blocks.size(), 22u);
    EXPECT_EQ(indexed.index.blocks[3].rows.count, 0);
    EXPECT_EQ(indexed.index.blocks[21].rows.count, 20);
}

TEST(FrdIndex, RefusesBinaryBlocksThatNoHeaderFollows) {
    const std::string path = orvtest::solverFile("beam_binary.frd");
    const std::string content = orvtest::readWholeFile(path);
    const Indexed whole(Path{path});
    const FrdRows& rows = whole.index.blocks.at(0).rows;
    const auto expected = [&](std::int64_t at, int count) {
        return "x.frd, byte " + std::to_string(at) + ": expected the header of a block behind " +
               std::to_string(count) + " binary rows of 16 bytes, found ";
    };
    std::string lying = content;
    lying.replace(std::size_t(rows.header) + 24, 12, "          19");
    std::string message = whyRefused(lying);
    EXPECT_TRUE(message.starts_with(expected(rows.end - 16, 19))) << message;

    std::string lacking = content;
    lacking.erase(std::size_t(rows.begin), 1);
    message = whyRefused(lacking);
    EXPECT_TRUE(message.starts_with(expected(rows.end, 20))) << message;
}

TEST(FrdIndex, RefusesBinaryElementsOfUnknownType) {
    const std::string path = orvtest::solverFile("beam_binary.frd");
    std::string content = orvtest::readWholeFile(path);
    const std::size_t type = std::size_t(Indexed(Path{path}).index.elements.begin) + 4;
    content[type] = 13;
    EXPECT_EQ(whyRefused(content),
              "x.frd, byte " + std::to_string(type) + ": expected the type of an element, 1 to 12, found 13");
}

} // namespace
