// What a Progress is told while files are opened and states are loaded.

#include "OrvImportCae/DataSourceCae.h"
#include "OrvUnstructGrid/DataStateSpec.h"
#include "OrvUnstructGrid/Error.h"
#include "OrvUnstructGrid/UnstructGridModel.h"
#include "Tests/OrvImportCae/FrdSamples.h"
#include "Tests/Support/RecordingProgress.h"

#include <gtest/gtest.h>

using namespace orv;
using orvtest::FrdText;
using orvtest::isRising;
using orvtest::RecordingProgress;
using orvtest::ScratchFolder;
using Percents = std::vector<int>;

namespace {

constexpr int NODES = 20000; // Files are read in pieces of 32 KiB, these rows are 500 KiB and more.

std::vector<int> allNodes() {
    std::vector<int> nodes(NODES);
    for (int i = 0; i < NODES; ++i) {
        nodes[std::size_t(i)] = i + 1;
    }
    return nodes;
}

/// Points in a row, and temperatures at two times.
FrdText longText(double x = 0) {
    FrdText text;
    text.nodeHeader(NODES);
    for (int i = 1; i <= NODES; ++i) {
        text.node(i, x + i, 0, 0);
    }
    text.endBlock().elementHeader(NODES - 1);
    for (int i = 1; i < NODES; ++i) {
        text.element(i, 11, 0, 1, {i, i + 1});
    }
    return text.endBlock().temperatures(1, 0.5, allNodes()).temperatures(2, 0.75, allNodes());
}

/// The same as points of Gmsh.
std::string longMsh() {
    std::string text = "$MeshFormat\n2.2 0 8\n$EndMeshFormat\n$Nodes\n" + std::to_string(NODES) + "\n";
    std::string elements, values;
    for (int i = 1; i <= NODES; ++i) {
        const std::string number = std::to_string(i);
        text += number + " " + number + " 0 0\n";
        elements += number + " 15 2 1 1 " + number + "\n";
        values += number + " 0.5\n";
    }
    const std::string count = std::to_string(NODES);
    return text + "$EndNodes\n$Elements\n" + count + "\n" + elements +
           "$EndElements\n$NodeData\n1\n\"p\"\n1\n0\n3\n0\n1\n" + count + "\n" + values + "$EndNodeData\n";
}

class ReadProgressTest : public testing::Test {
protected:
    ReadProgressTest() : source(new imp::cae::DataSourceCae(1)) {
        source->setProgress(&progress);
    }

    std::string write(const std::string& name, FrdText text) {
        return folder.write(name, text.endFile().text());
    }

    bool load(int stateId) {
        ug::DataStateSpec spec;
        spec.setResultIds(source->directory()->scalarResultInfos());
        return source->loadDataState(stateId, spec, nullptr);
    }

    void expectWhole(std::size_t atLeast = 10) {
        const Percents percents = progress.take();
        EXPECT_TRUE(isRising(percents)) << testing::PrintToString(percents);
        EXPECT_EQ(percents.front(), 0);
        EXPECT_EQ(percents.back(), 100);
        EXPECT_GE(percents.size(), atLeast) << testing::PrintToString(percents);
    }

    ScratchFolder folder;
    RecordingProgress progress;
    PtrRef<imp::cae::DataSourceCae> source;
};

TEST_F(ReadProgressTest, OpensAndLoadsAreTold) {
    ASSERT_TRUE(source->openFiles({write("a.frd", longText())}, nullptr));
    expectWhole();
    ASSERT_TRUE(load(1));
    expectWhole();
    ASSERT_TRUE(load(1)); // There is nothing left to do.
    EXPECT_EQ(progress.take(), (Percents{0, 100}));
}

TEST_F(ReadProgressTest, MeshesAndValuesOfGmshAreTold) {
    ASSERT_TRUE(source->openFiles({folder.write("a.msh", longMsh())}, nullptr));
    expectWhole(5); // It is read in larger pieces.
    ASSERT_TRUE(load(1));
    expectWhole(3);
}

TEST_F(ReadProgressTest, FilesOfASeriesShareThePercents) {
    const std::string a = write("a.frd", longText());
    ASSERT_TRUE(source->openFiles({a, a}, nullptr));
    expectWhole();
    ASSERT_TRUE(source->openSecondaryFile(a, nullptr));
    expectWhole();
}

TEST_F(ReadProgressTest, PiecesShareThePercents) {
    ASSERT_TRUE(source->openFiles({write("a.frd", longText()), write("b.frd", longText(1e6))}, nullptr));
    ASSERT_EQ(source->stateCount(), 2u);
    expectWhole();
    ASSERT_TRUE(load(2));
    expectWhole();
}

TEST_F(ReadProgressTest, AFailureIsNotDone) {
    FrdText bad = longText();
    EXPECT_FALSE(source->openFiles({folder.write("a.frd", bad.line("garbage").text())}, nullptr));
    Percents percents = progress.take();
    EXPECT_TRUE(isRising(percents));
    EXPECT_LT(percents.back(), 100);
    FrdText text = FrdText().tetrahedron();
    text.resultHeader(1, 0.5, 2, 1).blockName("NDTEMP", 1).component("T", 1, 0, 0).row(1, {1});
    ASSERT_TRUE(source->openFiles({write("b.frd", text.line(" -1         2         abc").endBlock())}, nullptr));
    progress.take();
    EXPECT_FALSE(load(1));
    percents = progress.take();
    EXPECT_TRUE(isRising(percents));
    EXPECT_LT(percents.back(), 100);
}

TEST_F(ReadProgressTest, NobodyIsToldAnyMore) {
    source->setProgress(nullptr);
    ASSERT_TRUE(source->openFiles({write("a.frd", FrdText().tetrahedron().temperatures(1, 0.5, {1}))}, nullptr));
    ASSERT_TRUE(load(1));
    EXPECT_EQ(progress.take(), Percents());
}

TEST_F(ReadProgressTest, ARefreshLoadsWhatIsShown) {
    ASSERT_TRUE(source->openFiles({write("a.frd", longText())}, nullptr));
    progress.take();
    const PtrRef<ug::UnstructGridModel> model(new ug::UnstructGridModel);
    model->setDataSource(source.get());
    model->modelSpec().setStateId(1);
    model->modelSpec().setDefaultResults();
    ASSERT_TRUE(model->refresh(nullptr, nullptr, 0));
    EXPECT_EQ(source->state(0)->resultByteCount(), 0u);
    RecordingProgress own;
    ug::Error error;
    ASSERT_TRUE(model->refresh(&error, &own, 0)) << error.message();
    EXPECT_TRUE(isRising(own.percents)) << testing::PrintToString(own.percents);
    EXPECT_GE(own.percents.size(), 10u);
    EXPECT_EQ(own.percents.back(), 100);
    EXPECT_GT(source->state(0)->resultByteCount(), 0u);
    EXPECT_EQ(progress.take(), Percents());
    ASSERT_TRUE(load(2)); // The source's own is back.
    expectWhole();
}

} // namespace
