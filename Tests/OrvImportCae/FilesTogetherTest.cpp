// Several files in one open: steps of a series and pieces of a model.

#include "OrvCore/Defines.h"
#include "OrvImportCae/DataSourceCae.h"
#include "OrvUnstructGrid/DataStateSpec.h"
#include "OrvUnstructGrid/Error.h"
#include "Tests/OrvImportCae/FrdSamples.h"
#include "Tests/Support/AssertRecorder.h"
#include "Tests/Support/DescribeSource.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

using namespace orv;
using orvtest::FrdText;
using orvtest::ScratchFolder;
using orvtest::solverFile;

namespace {

constexpr double U = UNDEFINED_DOUBLE;
using Values = std::vector<double>;
using Names = std::vector<std::string>;
using imp::cae::FileRelation;

class FilesTogetherTest : public testing::Test {
protected:
    FilesTogetherTest() {
        reset();
    }

    void reset() {
        source = new imp::cae::DataSourceCae(1);
    }

    std::string write(const std::string& name, FrdText text) {
        return folder.write(name, text.endFile().text());
    }

    void open(const std::vector<Str>& paths) {
        ug::Error error;
        ASSERT_TRUE(source->openFiles(paths, &error)) << error.message();
    }

    /// Why files are refused; nothing is left of them.
    std::string whyRefused(const std::vector<Str>& paths) {
        ug::Error error;
        EXPECT_FALSE(source->openFiles(paths, &error));
        EXPECT_FALSE(source->openFiles(paths, nullptr));
        EXPECT_EQ(source->stateCount(), 0u);
        EXPECT_EQ(source->directory()->geometryCountPerState(), 0u);
        return without(folder, error.message());
    }

    ug::ResultInfo scalar(const std::string& name) const {
        for (const ug::ResultInfo& candidate : source->directory()->scalarResultInfos()) {
            if (candidate.name() == Str(name)) {
                return candidate;
            }
        }
        return ug::ResultInfo();
    }

    /// The values of a scalar on all parts of the state at that index, part after part.
    Values load(std::size_t stateIndex, const std::string& name) {
        ug::DataState* state = source->state(stateIndex);
        ug::DataStateSpec spec;
        spec.setResultIds({scalar(name)});
        ug::Error error;
        EXPECT_TRUE(source->loadDataState(state->id(), spec, &error)) << error.message();
        Values all;
        const ug::DataResult* result = state->results(state->geometry(0))->find(scalar(name));
        for (std::size_t p = 0; result && p < result->partCount(); ++p) {
            const std::span<const double> span = result->values(p)->span();
            all.insert(all.end(), span.begin(), span.end());
        }
        return all;
    }

    Names partNames() const {
        Names names;
        for (const ug::PartInfo& part : source->directory()->partInfos(0)) {
            names.push_back(std::to_string(part.id()) + " " + part.name().toStdString());
        }
        return names;
    }

    Names stateNames() const {
        Names names;
        for (const ug::StateInfo& state : source->directory()->stateInfos()) {
            names.push_back(std::to_string(state.id()) + " " + state.name().toStdString());
        }
        return names;
    }

    ScratchFolder folder;
    PtrRef<imp::cae::DataSourceCae> source;
};

/// A tetrahedron whose corner is at x.
FrdText tetrahedronAt(double x) {
    FrdText text;
    text.nodeHeader(4).node(1, x, 0, 0).node(2, x + 1, 0, 0).node(3, x, 1, 0).node(4, x, 0, 1).endBlock();
    return text.elementHeader(1).element(1, 3, 0, 1, {1, 2, 3, 4}).endBlock();
}

/// Two beams of two materials on nodes 1 to 3.
FrdText twoBeams(double time) {
    FrdText text;
    text.nodeHeader(3).node(1, 5, 0, 0).node(2, 6, 0, 0).node(3, 7, 0, 0).endBlock();
    text.elementHeader(2).element(1, 11, 0, 1, {1, 2}).element(2, 11, 0, 2, {2, 3}).endBlock();
    return text.temperatures(1, time, {1, 2, 3});
}

FrdText& scalarBlock(FrdText& text, int state, double time, const std::string& name) {
    text.resultHeader(state, time, 4, 1).blockName(name, 1).component("C", 1, 0, 0);
    for (int node = 1; node <= 4; ++node) {
        text.row(node, {100.0 * node});
    }
    return text.endBlock();
}

TEST_F(FilesTogetherTest, OtherMeshesWithTheSameStatesArePieces) {
    FrdText first = tetrahedronAt(0).temperatures(1, 0.5, {1, 2, 3, 4}).temperatures(3, 0.75, {1});
    FrdText second = tetrahedronAt(1).temperatures(7, 0.5, {1, 2, 3, 4}).temperatures(9, 0.75, {4});
    open({write("rank0.frd", first), write("rank1.frd", second)});
    EXPECT_EQ(stateNames(), (Names{"1 State 1, time 0.5", "3 State 3, time 0.75"}));
    EXPECT_EQ(partNames(), (Names{"1 rank0.frd", "2 rank1.frd"}));
    ASSERT_EQ(source->directory()->geometryCountPerState(), 1u);
    EXPECT_EQ(source->directory()->simulationInfo().filename(), Str(folder / "rank0.frd"));
    ug::DataGeometry* geometry = source->state(0)->geometry(0);
    EXPECT_EQ(source->state(1)->geometry(0), geometry);
    ASSERT_EQ(geometry->partCount(), 2u);
    EXPECT_EQ(geometry->part(0)->partId(), 1);
    EXPECT_EQ(geometry->part(1)->partId(), 2);
    EXPECT_EQ(geometry->part(1)->nodes()->node(1), Vec3d(2, 0, 0));
    // 10 times the node's number plus the state's in its file.
    EXPECT_EQ(load(0, "NDTEMP"), (Values{11, 21, 31, 41, 17, 27, 37, 47}));
    EXPECT_EQ(load(1, "NDTEMP"), (Values{13, U, U, U, U, U, U, 49}));
    const ug::DataResultScalar* loaded = source->state(0)->results(geometry)->scalar(0);
    EXPECT_EQ(loaded->part(1)->maximum(), 47.0);
}

TEST_F(FilesTogetherTest, ResultsOfSomePiecesAreUndefinedElsewhere) {
    FrdText first = tetrahedronAt(0).temperatures(1, 0.5, {1, 2, 3, 4});
    FrdText second = tetrahedronAt(1);
    scalarBlock(second, 1, 0.5, "ERROR");
    open({write("a.frd", first), write("b.frd", second)});
    const ug::DataSourceDirectory& directory = *source->directory();
    ASSERT_EQ(directory.scalarResultInfos().size(), 2u);
    EXPECT_TRUE(directory.hasResult(1, scalar("NDTEMP")) && directory.hasResult(1, scalar("C")) == false);
    EXPECT_EQ(load(0, "NDTEMP"), (Values{11, 21, 31, 41, U, U, U, U}));
    EXPECT_EQ(load(0, "ERROR"), (Values{U, U, U, U, 100, 200, 300, 400}));
}

TEST_F(FilesTogetherTest, APieceMayHaveAResultInSomeStatesOnly) {
    FrdText first = tetrahedronAt(0).temperatures(1, 0.5, {1, 2, 3, 4});
    scalarBlock(first, 2, 0.75, "ERROR");
    FrdText second = tetrahedronAt(1);
    scalarBlock(second, 1, 0.5, "ERROR").temperatures(2, 0.75, {1, 2, 3, 4});
    open({write("a.frd", first), write("b.frd", second)});
    EXPECT_EQ(load(0, "NDTEMP"), (Values{11, 21, 31, 41, U, U, U, U}));
    EXPECT_EQ(load(1, "NDTEMP"), (Values{U, U, U, U, 12, 22, 32, 42}));
    EXPECT_EQ(load(0, "ERROR"), (Values{U, U, U, U, 100, 200, 300, 400}));
}

TEST_F(FilesTogetherTest, SingleValuesComeFromTheirPiece) {
    FrdText first = tetrahedronAt(0).temperatures(1, 0.5, {1, 2, 3, 4});
    scalarBlock(first, 1, 0.5, "ERROR");
    FrdText second = tetrahedronAt(1).temperatures(4, 0.5, {1, 2, 3, 4});
    open({write("a.frd", first), write("b.frd", second)});
    Values values(2);
    ASSERT_TRUE(source->copyScalars(1, scalar("NDTEMP"), {0, 1, 2}, values, nullptr));
    EXPECT_EQ(values, (Values{34, 44}));
    ASSERT_TRUE(source->copyScalars(1, scalar("NDTEMP"), {0, 0, 1}, values, nullptr));
    EXPECT_EQ(values, (Values{21, 31}));
    ASSERT_TRUE(source->copyScalars(1, scalar("ERROR"), {0, 1, 0}, values, nullptr));
    EXPECT_EQ(values, (Values{U, U}));
    EXPECT_EQ(source->state(0)->resultByteCount(), 0u);
}

TEST_F(FilesTogetherTest, SeveralPartsOfAPieceBearTheNameOfTheFileToo) {
    open({write("a.frd", twoBeams(0.5)), write("b.frd", tetrahedronAt(0).temperatures(1, 0.5, {1, 2, 3, 4}))});
    EXPECT_EQ(partNames(), (Names{"1 a.frd: Material 1", "2 a.frd: Material 2", "3 b.frd"}));
    EXPECT_EQ(load(0, "NDTEMP"), (Values{11, 21, 21, 31, 11, 21, 31, 41}));
    double value = 0;
    ASSERT_TRUE(source->copyScalars(1, scalar("NDTEMP"), {0, 1, 1}, {&value, 1}, nullptr));
    EXPECT_EQ(value, 31.0);
}

TEST_F(FilesTogetherTest, PiecesOfOneNameAreToldByTheirFolders) {
    std::filesystem::create_directory(folder / "p0");
    std::filesystem::create_directory(folder / "p1");
    open({write("p0/x.frd", tetrahedronAt(0).temperatures(1, 0.5, {1})),
          write("p1/x.frd", tetrahedronAt(1).temperatures(1, 0.5, {1}))});
    EXPECT_EQ(partNames(), (Names{"1 " + (folder / "p0/x.frd"), "2 " + (folder / "p1/x.frd")}));
}

TEST_F(FilesTogetherTest, PiecesKeepTheWarningsOfAllFiles) {
    const std::string a = folder.write("a.frd", tetrahedronAt(0).temperatures(1, 0.5, {1}).text());
    open({a, write("b.frd", tetrahedronAt(1).temperatures(1, 0.5, {1, 9}))});
    ASSERT_EQ(source->directory()->warnings().size(), 1u);
    EXPECT_TRUE(without(folder, source->directory()->warnings()[0]).starts_with("a.frd ends without"));
    load(0, "NDTEMP");
    ASSERT_EQ(source->directory()->warnings().size(), 2u);
    EXPECT_TRUE(without(folder, source->directory()->warnings()[1]).starts_with("b.frd, line "));
}

TEST_F(FilesTogetherTest, AFurtherFileOfAllPiecesCanBeAdded) {
    const std::string a = write("a.frd", tetrahedronAt(0).temperatures(1, 0.5, {1}));
    open({a, write("b.frd", tetrahedronAt(1).temperatures(1, 0.5, {1}))});
    ug::Error error;
    EXPECT_FALSE(source->openSecondaryFile(a, &error));
    EXPECT_EQ(without(folder, error.message()), "cannot add \"a.frd\" to \"a.frd\": its mesh is another one, as there "
                                                "are 1 parts in \"a.frd\" and 2 in \"a.frd\"");
    FrdText both;
    both.nodeHeader(8);
    for (int i = 0; i < 2; ++i) {
        both.node(4 * i + 1, i, 0, 0).node(4 * i + 2, i + 1, 0, 0).node(4 * i + 3, i, 1, 0).node(4 * i + 4, i, 0, 1);
    }
    both.endBlock().elementHeader(2).element(1, 3, 0, 1, {1, 2, 3, 4}).element(2, 3, 0, 2, {5, 6, 7, 8}).endBlock();
    EXPECT_FALSE(source->openSecondaryFile(write("c.frd", both), &error)); // Its nodes have other numbers.
}

TEST_F(FilesTogetherTest, APieceThatCannotBeReadFailsTheLoad) {
    FrdText bad = tetrahedronAt(1);
    bad.resultHeader(1, 0.5, 2, 1).blockName("NDTEMP", 1).component("T", 1, 0, 0).row(1, {1});
    bad.line(" -1         2         abc").endBlock();
    open({write("a.frd", tetrahedronAt(0).temperatures(1, 0.5, {1})), write("b.frd", bad)});
    ug::DataStateSpec spec;
    spec.setResultIds({scalar("NDTEMP")});
    ug::Error error;
    EXPECT_FALSE(source->loadDataState(1, spec, &error));
    EXPECT_TRUE(without(folder, error.message()).starts_with("b.frd, line ")) << error.message();
    EXPECT_EQ(source->state(0)->resultByteCount(), 0u);
}

TEST_F(FilesTogetherTest, OtherMeshesWithStatesOfTheirOwnAreSteps) {
    const std::string a = write("a.frd", tetrahedronAt(0).temperatures(1, 0.5, {1, 2, 3, 4}));
    const std::string b = write("b.frd", tetrahedronAt(3).temperatures(1, 0.6, {1, 2, 3, 4}));
    const std::string c = write("c.frd", tetrahedronAt(3).temperatures(5, 0.7, {1}));
    open({a, b, c});
    EXPECT_EQ(stateNames(), (Names{"1 State 1, time 0.5", "2 State 1, time 0.6", "3 State 5, time 0.7"}));
    EXPECT_EQ(partNames(), Names{"1 Material 1"});
    EXPECT_EQ(source->state(0)->geometry(0)->part(0)->nodes()->node(0), Vec3d(0, 0, 0));
    EXPECT_EQ(source->state(1)->geometry(0)->part(0)->nodes()->node(0), Vec3d(3, 0, 0));
    EXPECT_EQ(source->state(2)->geometry(0), source->state(1)->geometry(0)); // A mesh that stays is there once.
    EXPECT_EQ(load(0, "NDTEMP"), (Values{11, 21, 31, 41}));
    EXPECT_EQ(load(1, "NDTEMP"), (Values{11, 21, 31, 41}));
    EXPECT_EQ(load(2, "NDTEMP"), (Values{15, U, U, U}));
    // The mesh of further files is that of the first.
    ug::Error error;
    EXPECT_FALSE(source->openSecondaryFile(b, &error));
    EXPECT_TRUE(source->openSecondaryFile(a, &error)) << error.message();
}

TEST_F(FilesTogetherTest, StatesThatAreNeitherTheSameNorAllOthersAreRefused) {
    const std::string a = write("a.frd", tetrahedronAt(0).temperatures(1, 0.5, {1}).temperatures(2, 0.6, {1}));
    const std::string b = write("b.frd", tetrahedronAt(1).temperatures(1, 0.5, {1}));
    const std::string c = write("c.frd", tetrahedronAt(1).temperatures(1, 0.5, {1}).temperatures(2, 0.7, {1}));
    const std::string meshes = "their meshes are not the same, as node 1 is at (1, 0, 0) in \"";
    EXPECT_EQ(whyRefused({a, b}),
              "cannot open \"a.frd\" together with \"b.frd\": " + meshes +
                  "b.frd\" and at (0, 0, 0) in \"a.frd\"; nor are they pieces with the same states, as there are 1 "
                  "states in \"b.frd\" and 2 in \"a.frd\"; nor steps with states of their own, as the time 0.5 is in "
                  "\"b.frd\" and in \"a.frd\"");
    EXPECT_EQ(whyRefused({a, c}),
              "cannot open \"a.frd\" together with \"c.frd\": " + meshes +
                  "c.frd\" and at (0, 0, 0) in \"a.frd\"; nor are they pieces with the same states, as state 2 has the "
                  "time 0.7 in \"c.frd\" and the time 0.6 in \"a.frd\"; nor steps with states of their own, as the "
                  "time 0.5 is in \"c.frd\" and in \"a.frd\"");
    EXPECT_EQ(whyRefused({b, write("d.frd", tetrahedronAt(0))}),
              "cannot open \"b.frd\" together with \"d.frd\": their meshes are not the same, as node 1 is at (0, 0, 0) "
              "in \"d.frd\" and at (1, 0, 0) in \"b.frd\"; nor are they pieces with the same states, as there are 0 "
              "states in \"d.frd\" and 1 in \"b.frd\"; nor steps with states of their own, as there are no states in "
              "\"d.frd\"");
}

TEST_F(FilesTogetherTest, ReferenceTypesTellStatesApart) {
    FrdText modes = tetrahedronAt(1);
    modes.resultHeader(1, 0.5, 1, 2).blockName("NDTEMP", 1).component("T", 1, 0, 0).row(1, {1}).endBlock();
    const std::string a = write("a.frd", tetrahedronAt(0).temperatures(1, 0.5, {1}));
    const std::string b = write("b.frd", modes);
    source->setFileRelation(FileRelation::PIECES);
    EXPECT_EQ(whyRefused({a, b}), "cannot add \"b.frd\" to \"a.frd\" as a piece: state 1 has the frequency 0.5 in "
                                  "\"b.frd\" and the time 0.5 in \"a.frd\"");
    source->setFileRelation(FileRelation::FROM_CONTENTS);
    open({a, b});
    EXPECT_EQ(source->stateCount(), 2u);
}

TEST_F(FilesTogetherTest, StepsNeedTheSameParts) {
    EXPECT_EQ(whyRefused({write("a.frd", tetrahedronAt(0).temperatures(1, 0.5, {1})), write("b.frd", twoBeams(0.6))}),
              "cannot add \"b.frd\" to \"a.frd\" as a further step: there are 2 parts in \"b.frd\" and 1 in \"a.frd\"");
    FrdText other;
    other.nodeHeader(2).node(1, 0, 0, 0).node(2, 1, 0, 0).endBlock();
    other.elementHeader(2).element(1, 11, 0, 1, {1, 2}).element(2, 11, 0, 4, {1, 2}).endBlock();
    EXPECT_EQ(whyRefused({write("c.frd", twoBeams(0.5)), write("d.frd", other.temperatures(1, 0.6, {1}))}),
              "cannot add \"d.frd\" to \"c.frd\" as a further step: part 2 is 'Material 4' in \"d.frd\" and "
              "'Material 2' in \"c.frd\"");
    open({folder / "c.frd", write("e.frd", twoBeams(0.6)), write("f.frd", twoBeams(0.7))});
}

// Two neighbours with one mesh cannot be pieces, whatever their states.
TEST_F(FilesTogetherTest, TheSameMeshTwiceMakesSteps) {
    const std::string a = write("a.frd", tetrahedronAt(0).temperatures(1, 0.5, {1}));
    const std::string b = write("b.frd", tetrahedronAt(5).temperatures(1, 0.5, {2}));
    open({a, b, b});
    EXPECT_EQ(source->stateCount(), 3u);
    reset();
    open({a, b, a});
    EXPECT_EQ(source->stateCount(), 3u);
    EXPECT_EQ(source->state(2)->geometry(0), source->state(0)->geometry(0));
}

TEST_F(FilesTogetherTest, WhoKnowsBetterCanSaySo) {
    const std::string a = write("a.frd", tetrahedronAt(0).temperatures(1, 0.5, {1}));
    const std::string b = write("b.frd", tetrahedronAt(1).temperatures(1, 0.5, {2}));
    source->setFileRelation(FileRelation::STEPS);
    open({a, b});
    EXPECT_EQ(source->stateCount(), 2u);
    EXPECT_EQ(load(1, "NDTEMP"), (Values{U, 21, U, U}));
    reset();
    source->setFileRelation(FileRelation::PIECES);
    open({a, a});
    EXPECT_EQ(source->stateCount(), 1u);
    EXPECT_EQ(load(0, "NDTEMP"), (Values{11, U, U, U, 11, U, U, U}));
    reset();
    source->setFileRelation(FileRelation::PIECES);
    open({a});
    EXPECT_EQ(partNames(), Names{"1 Material 1"});
}

// Two runs of the solver that have nothing in common but their time.
TEST_F(FilesTogetherTest, PiecesOfTheSolverHaveTheValuesThatTheyHaveAlone) {
    orvtest::AssertRecorder asserts;
    const Names files = {"cube_static.frd", "contact.frd"};
    open({solverFile(files[0]), solverFile(files[1])});
    ASSERT_EQ(source->stateCount(), 1u);
    EXPECT_EQ(orvtest::described(source.get()).find("FAILED"), std::string::npos);
    std::size_t firstPart = 0;
    int compared = 0;
    for (const std::string& file : files) {
        const PtrRef<imp::cae::DataSourceCae> alone(new imp::cae::DataSourceCae(1));
        ASSERT_TRUE(alone->openFiles({solverFile(file)}, nullptr));
        ug::DataState* there = alone->state(0);
        for (const ug::ResultType type : {ug::SCALAR, ug::DISPLACEMENT, ug::SYMMETRIC_TENSOR}) {
            for (const ug::ResultInfo& own : alone->directory()->resultInfos(type)) {
                ug::ResultInfo merged;
                for (const ug::ResultInfo& candidate : source->directory()->resultInfos(type)) {
                    merged = candidate.name() == own.name() ? candidate : merged;
                }
                ug::DataStateSpec spec;
                spec.setResultIds({own});
                ASSERT_TRUE(alone->loadDataState(there->id(), spec, nullptr));
                spec.setResultIds({merged});
                ug::DataState* state = source->state(0);
                ASSERT_TRUE(source->loadDataState(state->id(), spec, nullptr));
                for (std::size_t p = 0; p < there->geometry(0)->partCount(); ++p) {
                    const auto expected = there->results(there->geometry(0))->find(own)->values(p)->span();
                    const auto found = state->results(state->geometry(0))->find(merged)->values(firstPart + p)->span();
                    EXPECT_TRUE(std::ranges::equal(expected, found)) << own.name();
                    ++compared;
                }
            }
        }
        firstPart += there->geometry(0)->partCount();
    }
    EXPECT_GE(compared, 10);
    EXPECT_TRUE(asserts.take().empty());
}

} // namespace
