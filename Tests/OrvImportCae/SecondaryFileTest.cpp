// Further result files on the mesh of the one that is open.

#include "OrvCore/Defines.h"
#include "OrvImportCae/DataSourceCae.h"
#include "OrvUnstructGrid/DataStateSpec.h"
#include "OrvUnstructGrid/Error.h"
#include "Tests/OrvImportCae/FrdSamples.h"
#include "Tests/OrvUnstructGrid/CustomResults.h"
#include "Tests/Support/AssertRecorder.h"
#include "Tests/Support/DescribeSource.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace orv;
using orvtest::described;
using orvtest::FrdText;
using orvtest::ScratchFolder;
using orvtest::solverFile;
using orvtest::SUPPORTED_FORMATS;

namespace {

constexpr double U = UNDEFINED_DOUBLE;
using Values = std::vector<double>;
using Names = std::vector<std::string>;

class SecondaryFileTest : public testing::Test {
protected:
    SecondaryFileTest() : source(new imp::cae::DataSourceCae(1)) {}

    std::string write(const std::string& name, FrdText text) {
        return folder.write(name, text.endFile().text());
    }

    void open(const std::vector<Str>& paths) {
        ug::Error error;
        ASSERT_TRUE(source->openFiles(paths, &error)) << error.message();
    }

    void add(const std::string& path) {
        ug::Error error;
        ASSERT_TRUE(source->openSecondaryFile(path, &error)) << error.message();
    }

    /// Why a file is refused; the source must be as it was.
    std::string whyRefused(const std::string& path) {
        const std::string before = described(source.get());
        const std::size_t warnings = source->directory()->warnings().size();
        ug::Error error;
        EXPECT_FALSE(source->openSecondaryFile(path, &error));
        EXPECT_FALSE(source->openSecondaryFile(path, nullptr));
        EXPECT_EQ(described(source.get()), before);
        EXPECT_EQ(source->directory()->warnings().size(), warnings);
        return without(folder, error.message());
    }

    ug::ResultInfo info(ug::ResultType type, const std::string& name) const {
        for (const ug::ResultInfo& candidate : source->directory()->resultInfos(type)) {
            if (candidate.name() == Str(name)) {
                return candidate;
            }
        }
        return ug::ResultInfo();
    }

    Values load(int stateId, const ug::ResultInfo& result) {
        ug::DataStateSpec spec;
        spec.setResultIds({result});
        ug::Error error;
        EXPECT_TRUE(source->loadDataState(stateId, spec, &error)) << error.message();
        ug::DataState* state = source->state(source->stateIndex(stateId));
        const std::span<const double> span = state->results(state->geometry(0))->find(result)->values(0)->span();
        return Values(span.begin(), span.end());
    }

    Names stateNames() const {
        Names names;
        for (const ug::StateInfo& state : source->directory()->stateInfos()) {
            names.push_back(std::to_string(state.id()) + " " + state.name().toStdString());
        }
        return names;
    }

    Names warnings() const {
        Names texts;
        for (const Str& warning : source->directory()->warnings()) {
            texts.push_back(without(folder, warning));
        }
        return texts;
    }

    ScratchFolder folder;
    PtrRef<imp::cae::DataSourceCae> source;
};

FrdText tetrahedron() {
    return FrdText().tetrahedron();
}

/// A block with one column under that name: 100 times the node's number.
FrdText& scalarBlock(FrdText& text, int state, double time, const std::string& name) {
    text.resultHeader(state, time, 4, 1).blockName(name, 1).component("C", 1, 0, 0);
    for (int node = 1; node <= 4; ++node) {
        text.row(node, {100.0 * node});
    }
    return text.endBlock();
}

TEST_F(SecondaryFileTest, StatesComeBehindTheOthersWithIdsOfTheirOwn) {
    open({write("a.frd", tetrahedron().temperatures(2, 0.2, {1, 2, 3, 4}).temperatures(5, 0.5, {1, 2, 3, 4}))});
    add(write("b.frd", tetrahedron().temperatures(5, 0.7, {1, 2, 3, 4}).temperatures(1, 0.8, {4})));
    EXPECT_EQ(stateNames(),
              (Names{"2 State 2, time 0.2", "5 State 5, time 0.5", "6 State 5, time 0.7", "7 State 1, time 0.8"}));
    EXPECT_EQ(source->directory()->simulationInfo().filename(), Str(folder / "a.frd"));
    const ug::ResultInfo temperature = info(ug::SCALAR, "NDTEMP");
    // 10 times the node's number, plus the state's in its file.
    EXPECT_EQ(load(5, temperature), (Values{15, 25, 35, 45}));
    EXPECT_EQ(load(6, temperature), (Values{15, 25, 35, 45}));
    EXPECT_EQ(load(7, temperature), (Values{U, U, U, 41}));
    EXPECT_EQ(load(2, temperature), (Values{12, 22, 32, 42}));
    for (std::size_t i = 1; i < 4; ++i) {
        EXPECT_EQ(source->state(i)->geometry(0), source->state(0)->geometry(0));
    }
    EXPECT_TRUE(warnings().empty());
}

TEST_F(SecondaryFileTest, SingleValuesComeFromTheFileOfTheirState) {
    open({write("a.frd", tetrahedron().temperatures(1, 0.2, {1, 2, 3, 4}))});
    FrdText text = tetrahedron();
    scalarBlock(text, 1, 0.9, "OTHER");
    add(write("b.frd", text.temperatures(1, 0.9, {1, 2, 3, 4})));
    double value = 0;
    ASSERT_TRUE(source->copyScalars(2, info(ug::SCALAR, "OTHER"), {0, 0, 3}, {&value, 1}, nullptr));
    EXPECT_EQ(value, 400.0);
    ASSERT_TRUE(source->copyScalars(2, info(ug::SCALAR, "NDTEMP"), {0, 0, 1}, {&value, 1}, nullptr));
    EXPECT_EQ(value, 21.0);
    EXPECT_EQ(source->state(1)->resultByteCount(), 0u);
}

TEST_F(SecondaryFileTest, ResultsAreMergedByNameAndType) {
    FrdText first = tetrahedron();
    scalarBlock(scalarBlock(first, 1, 0.1, "P"), 1, 0.1, "Q");
    FrdText second = tetrahedron();
    scalarBlock(scalarBlock(second, 1, 0.2, "R"), 1, 0.2, "Q");
    open({write("a.frd", first)});
    ug::ResultInfo custom = orvtest::sumOf("R", {info(ug::SCALAR, "Q")});
    source->directory()->setCustomResultInfo(custom);
    add(write("b.frd", second));
    Names names;
    for (const ug::ResultInfo& result : source->directory()->scalarResultInfos()) {
        names.push_back(result.name().toStdString() + (result.isCustom() ? "" : std::to_string(result.id())));
    }
    EXPECT_EQ(names, (Names{"P1", "Q2", "R3", "R"}));
    const ug::DataSourceDirectory& directory = *source->directory();
    const ug::ResultInfo p = info(ug::SCALAR, "P"), q = info(ug::SCALAR, "Q"), r = info(ug::SCALAR, "R");
    EXPECT_TRUE(directory.hasResult(1, p) && directory.hasResult(1, q) && !directory.hasResult(1, r));
    EXPECT_TRUE(!directory.hasResult(2, p) && directory.hasResult(2, q) && directory.hasResult(2, r));
    EXPECT_EQ(load(2, r), (Values{100, 200, 300, 400}));
    EXPECT_EQ(load(2, custom), (Values{100, 200, 300, 400}));
    EXPECT_TRUE(warnings().empty());
}

TEST_F(SecondaryFileTest, ANameOfAnotherTypeIsTold) {
    FrdText first = tetrahedron();
    open({write("a.frd", scalarBlock(first, 1, 0.1, "DISP"))});
    FrdText second = tetrahedron();
    second.resultHeader(1, 0.2, 1, 0).blockName("DISP", 3);
    second.component("D1", 2, 1, 0).component("D2", 2, 2, 0).component("D3", 2, 3, 0).row(2, {7, 8, 9}).endBlock();
    add(write("b.frd", second));
    EXPECT_EQ(warnings(), Names{"\"b.frd\" has a displacement 'DISP', which is a scalar in what was open; both are "
                                "kept"});
    EXPECT_EQ(load(2, info(ug::DISPLACEMENT, "DISP")), (Values{U, U, U, 7, 8, 9, U, U, U, U, U, U}));
    EXPECT_EQ(load(1, info(ug::SCALAR, "DISP")), (Values{100, 200, 300, 400}));
    EXPECT_FALSE(source->directory()->hasResult(2, info(ug::SCALAR, "DISP")));
}

TEST_F(SecondaryFileTest, NamesOfStatesStayUnique) {
    const std::string path = write("a.frd", tetrahedron().temperatures(3, 0.5, {1}));
    open({path});
    add(path);
    add(path);
    EXPECT_EQ(stateNames(), (Names{"3 State 3, time 0.5", "4 State 3, time 0.5 (a.frd, state 4)",
                                   "5 State 3, time 0.5 (a.frd, state 5)"}));
    EXPECT_EQ(load(5, info(ug::SCALAR, "NDTEMP")), (Values{13, U, U, U}));
}

TEST_F(SecondaryFileTest, StatesOfSeveralTypesAreGroups) {
    open({write("a.frd", tetrahedron().temperatures(1, 0.5, {1}))});
    FrdText modes = tetrahedron();
    modes.resultHeader(1, 440.0, 1, 2).blockName("NDTEMP", 1).component("T", 1, 0, 0).row(1, {1}).endBlock();
    add(write("b.frd", modes));
    const std::vector<ug::StateGroupInfo> two = source->directory()->stateGroupInfos();
    ASSERT_EQ(two.size(), 2u);
    EXPECT_TRUE(two[0].hasStateId(1));
    EXPECT_TRUE(two[1].hasStateId(2));
    add(write("c.frd", tetrahedron().temperatures(1, 0.7, {1})));
    const std::vector<ug::StateGroupInfo> again = source->directory()->stateGroupInfos();
    ASSERT_EQ(again.size(), 2u);
    EXPECT_TRUE(again[0].hasStateId(1) && again[0].hasStateId(3));
    EXPECT_EQ(again[1].stateCount(), 1u);
}

TEST_F(SecondaryFileTest, WarningsOfTheFileAreKept) {
    open({write("a.frd", tetrahedron())});
    EXPECT_EQ(source->stateCount(), 0u);
    add(folder.write("b.frd", tetrahedron().temperatures(1, 0.5, {1, 9}).text()));
    EXPECT_EQ(warnings(), Names{"b.frd ends without its end line \"9999\"; the run was broken off or is not over yet"});
    load(1, info(ug::SCALAR, "NDTEMP"));
    ASSERT_EQ(warnings().size(), 2u);
    EXPECT_TRUE(warnings()[1].starts_with("b.frd, line ")) << warnings()[1];
}

TEST_F(SecondaryFileTest, AListOpensAllOfItsFilesOrNone) {
    const std::string a = write("a.frd", tetrahedron().temperatures(1, 0.5, {1}));
    const std::string b = write("b.frd", tetrahedron().temperatures(1, 0.6, {2}));
    FrdText other;
    other.nodeHeader(1).node(1, 0, 0, 0).endBlock();
    const std::string c = write("c.frd", other);
    ug::Error error;
    EXPECT_FALSE(source->openFiles({a, b, c}, &error));
    EXPECT_EQ(without(folder, error.message()),
              "cannot open \"a.frd\" together with \"b.frd\": their meshes are not the same, as there are 0 parts in "
              "\"c.frd\" and 1 in \"a.frd\"; nor are they pieces with the same states, as state 1 has the time 0.6 in "
              "\"b.frd\" and the time 0.5 in \"a.frd\"; nor steps with states of their own, as there are no states in "
              "\"c.frd\"");
    EXPECT_EQ(source->stateCount(), 0u);
    EXPECT_EQ(source->directory()->geometryCountPerState(), 0u);
    EXPECT_TRUE(source->directory()->scalarResultInfos().empty());
    EXPECT_FALSE(source->openFiles({a, folder / "none.frd"}, &error));
    EXPECT_EQ(without(folder, error.message()), "cannot open \"none.frd\": No such file or directory");
    open({a, b});
    EXPECT_EQ(stateNames(), (Names{"1 State 1, time 0.5", "2 State 1, time 0.6"}));
    EXPECT_EQ(load(2, info(ug::SCALAR, "NDTEMP")), (Values{U, 21, U, U}));
}

TEST_F(SecondaryFileTest, RefusesFilesThatCannotBeRead) {
    open({write("a.frd", tetrahedron().temperatures(1, 0.5, {1}))});
    EXPECT_EQ(whyRefused(folder / "none.frd"), "cannot open \"none.frd\": No such file or directory");
    EXPECT_EQ(whyRefused(folder / "b.txt"),
              "cannot open \"b.txt\": no reader for the extension \"txt\"; " + SUPPORTED_FORMATS);
    EXPECT_EQ(whyRefused(folder.write("c.frd", "garbage\n")),
              "c.frd, line 1: not a result file of CalculiX: expected \"    1C\" at its beginning, found \"garbage\"");
}

/// Two beams in two parts: nodes 9 and 2, and nodes 2 and 3.
FrdText twoBeams() {
    FrdText text;
    text.nodeHeader(3).node(9, 0, 0, 0).node(2, 1, 0, 0).node(3, 2, 0.5, 1e-7).endBlock();
    return text.elementHeader(2).element(7, 11, 0, 1, {9, 2}).element(8, 11, 0, 2, {2, 3}).endBlock();
}

TEST_F(SecondaryFileTest, NamesTheFirstDifferenceOfTheMeshes) {
    open({write("a.frd", twoBeams().temperatures(1, 0.5, {2}))});
    const auto difference = [&](const FrdText& text) {
        const std::string why = whyRefused(write("b.frd", text));
        const std::string start = "cannot add \"b.frd\" to \"a.frd\": its mesh is another one, as ";
        EXPECT_TRUE(why.starts_with(start)) << why;
        return why.substr(std::min(start.size(), why.size()));
    };
    const auto nodes = [](int last, double x, double z) {
        FrdText text;
        return text.nodeHeader(3).node(9, 0, 0, 0).node(2, 1, 0, 0).node(last, x, 0.5, z).endBlock();
    };
    EXPECT_EQ(difference(nodes(3, 2, 1e-7).elementHeader(1).element(7, 11, 0, 1, {9, 2}).endBlock()),
              "there are 1 parts in \"b.frd\" and 2 in \"a.frd\"");
    FrdText more;
    more.nodeHeader(3).node(9, 0, 0, 0).node(2, 1, 0, 0).node(3, 2, 0.5, 1e-7).endBlock();
    more.elementHeader(3).element(7, 11, 0, 1, {9, 2}).element(8, 11, 0, 2, {2, 3}).element(6, 11, 0, 2, {2, 9});
    EXPECT_EQ(difference(more.endBlock()), "part 'Material 2' has 3 nodes in \"b.frd\" and 2 in \"a.frd\"");
    EXPECT_EQ(
        difference(
            nodes(4, 2, 1e-7).elementHeader(2).element(7, 11, 0, 1, {9, 2}).element(8, 11, 0, 2, {2, 4}).endBlock()),
        "node 2 of part 'Material 2' bears the number 4 in \"b.frd\" and 3 in \"a.frd\"");
    const auto beams = [](FrdText text) {
        return text.elementHeader(2).element(7, 11, 0, 1, {9, 2}).element(8, 11, 0, 2, {2, 3}).endBlock();
    };
    EXPECT_EQ(difference(beams(nodes(3, 2.001, 1e-7))),
              "node 3 is at (2.001, 0.5, 1e-07) in \"b.frd\" and at (2, 0.5, 1e-07) in \"a.frd\"");
    EXPECT_EQ(difference(beams(nodes(3, 2, 0))),
              "node 3 is at (2, 0.5, 0) in \"b.frd\" and at (2, 0.5, 1e-07) in \"a.frd\"");
    const auto elements = [&](const std::vector<int>& ids, const std::vector<int>& secondNodes) {
        FrdText text = nodes(3, 2, 1e-7);
        text.elementHeader(int(ids.size())).element(7, 11, 0, 1, {9, 2});
        for (const int id : ids) {
            text.element(id, 11, 0, 2, secondNodes);
        }
        return text.endBlock();
    };
    EXPECT_EQ(difference(elements({8, 10}, {2, 3})),
              "part 'Material 2' has 2 elements in \"b.frd\" and 1 in \"a.frd\"");
    EXPECT_EQ(difference(elements({5}, {2, 3})),
              "element 1 of part 'Material 2' bears the number 5 in \"b.frd\" and 8 in \"a.frd\"");
    EXPECT_EQ(difference(elements({8}, {3, 2})), "element 8 has as its node 1 3 in \"b.frd\" and 2 in \"a.frd\"");
}

TEST_F(SecondaryFileTest, NamesElementsOfAnotherType) {
    FrdText tet =
        FrdText().nodeHeader(4).node(1, 0, 0, 0).node(2, 1, 0, 0).node(3, 0, 1, 0).node(4, 0, 0, 1).endBlock();
    open({write("a.frd", FrdText(tet).elementHeader(1).element(5, 3, 0, 1, {1, 2, 3, 4}).endBlock())});
    EXPECT_EQ(
        whyRefused(write("b.frd", tet.elementHeader(1).element(5, 9, 0, 1, {1, 2, 3, 4}).endBlock())),
        "cannot add \"b.frd\" to \"a.frd\": its mesh is another one, as element 5 is of the type quadrilateral in "
        "\"b.frd\" and tetrahedron in \"a.frd\"");
}

TEST_F(SecondaryFileTest, CoordinatesMayDifferByWhatTextLoses) {
    open({write("a.frd", twoBeams())});
    const auto at = [](double x) {
        FrdText text;
        text.nodeHeader(3).node(9, 0, 0, 0).node(2, 1, 0, 0).node(3, x, 0.5, 1e-7).endBlock();
        return text.elementHeader(2).element(7, 11, 0, 1, {9, 2}).element(8, 11, 0, 2, {2, 3}).endBlock();
    };
    add(write("b.frd", at(2.00001)));
    EXPECT_NE(whyRefused(write("c.frd", at(2.00003))), "");
}

// Real runs: heat and increments of one beam, the same in binary, and modes of another one.
TEST_F(SecondaryFileTest, CombinesTheFilesOfTheSolver) {
    open({solverFile("beam_increments.frd")});
    const std::size_t first = source->stateCount();
    add(solverFile("heat.frd"));
    const PtrRef<imp::cae::DataSourceCae> alone(new imp::cae::DataSourceCae(1));
    ASSERT_TRUE(alone->openFiles({solverFile("heat.frd")}, nullptr));
    ASSERT_EQ(source->stateCount(), first + alone->stateCount());
    int compared = 0;
    for (const ug::ResultType type : {ug::SCALAR, ug::VECTOR, ug::DISPLACEMENT, ug::SYMMETRIC_TENSOR}) {
        for (const ug::ResultInfo& own : alone->directory()->resultInfos(type)) {
            for (std::size_t i = 0; i < alone->stateCount(); ++i) {
                ug::DataState* state = alone->state(i);
                if (!alone->directory()->hasResult(state->id(), own)) {
                    continue;
                }
                ug::DataStateSpec spec;
                spec.setResultIds({own});
                ASSERT_TRUE(alone->loadDataState(state->id(), spec, nullptr));
                const std::span<const double> span = state->results(state->geometry(0))->find(own)->values(0)->span();
                const ug::ResultInfo merged = info(type, own.name().toStdString());
                EXPECT_EQ(load(source->state(first + i)->id(), merged), Values(span.begin(), span.end()));
                ++compared;
            }
        }
    }
    EXPECT_GE(compared, 10);
}

TEST_F(SecondaryFileTest, CombinesModesWithLoads) {
    orvtest::AssertRecorder asserts;
    open({solverFile("static_then_modes.frd"), solverFile("harmonic.frd")});
    EXPECT_FALSE(source->directory()->stateGroupInfos().empty());
    EXPECT_EQ(described(source.get()).find("FAILED"), std::string::npos);
    EXPECT_TRUE(asserts.take().empty());
}

TEST_F(SecondaryFileTest, TextAndBinaryFilesOfOneRunFitTogether) {
    open({solverFile("beam_increments.frd")});
    add(solverFile("beam_binary.frd"));
}

TEST_F(SecondaryFileTest, TellsMeshesOfTheSolverApart) {
    open({solverFile("beam_modes.frd")});
    const std::string why = whyRefused(solverFile("buckling.frd"));
    EXPECT_NE(why.find("its mesh is another one, as node "), std::string::npos) << why;
    EXPECT_NE(whyRefused(solverFile("contact.frd")).find("there are 2 parts in"), std::string::npos);
}

} // namespace
