// Files of VTK and Exodus that are opened several at a time; Tests/data/together/make.py tells what they hold.

#include "OrvUnstructGrid/DataResultGroup.h"
#include "Tests/OrvImportVtk/VtkSamples.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace orv;
using testing::ElementsAre;

namespace {

constexpr double U = UNDEFINED_DOUBLE;
using Source = PtrRef<imp::cae::DataSourceCae>;

std::string file(const std::string& name) {
    return orvtest::testDataFolder() + "/together/" + name;
}

Source openAll(const std::vector<std::string>& names,
               imp::cae::FileRelation relation = imp::cae::FileRelation::FROM_CONTENTS) {
    Source source(new imp::cae::DataSourceCae(1));
    source->setFileRelation(relation);
    std::vector<Str> paths;
    for (const std::string& name : names) {
        paths.emplace_back(file(name));
    }
    ug::Error error;
    EXPECT_TRUE(source->openFiles(paths, &error)) << error.message();
    return source;
}

std::vector<std::string> partNames(const Source& source) {
    std::vector<std::string> names;
    for (const ug::PartInfo& part : source->directory()->partInfos(0)) {
        names.push_back(part.name().toStdString());
    }
    return names;
}

std::vector<double> load(const Source& source, std::size_t stateIndex, const std::string& name, std::size_t part,
                         ug::ResultMapping mapping = ug::PER_NODE) {
    ug::DataState* state = source->state(stateIndex);
    const ug::ResultInfo info = orvtest::findResult(source.get(), name, mapping);
    ug::Error error;
    EXPECT_TRUE(orvtest::load(source.get(), state->id(), {info}, &error)) << error.message();
    const std::span<const double> span = state->results(state->geometry(0))->find(info)->values(part)->span();
    return {span.begin(), span.end()};
}

TEST(VtkFilesTogether, PiecesOfOneTimeAreOneModel) {
    const Source source = openAll({"rank0.vtu", "rank1.vtu"});
    ASSERT_EQ(source->stateCount(), 1u);
    EXPECT_EQ(source->directory()->stateInfo(0).name(), Str("Time 0.5"));
    EXPECT_EQ(source->directory()->stateInfo(0).referenceValue(), 0.5);
    EXPECT_THAT(partNames(source), ElementsAre("rank0.vtu", "rank1.vtu"));
    EXPECT_THAT(load(source, 0, "p", 0), ElementsAre(0, 1, 2, 3, 4, 5, 6, 7));
    EXPECT_THAT(load(source, 0, "p", 1), ElementsAre(100, 101, 102, 103, 104, 105, 106, 107));
    EXPECT_THAT(load(source, 0, "damage", 0, ug::PER_ELEMENT), ElementsAre(U));
    EXPECT_THAT(load(source, 0, "damage", 1, ug::PER_ELEMENT), ElementsAre(7.5));
}

// One hexahedron, one time: without the time the same pieces are found, as they merely touch.
TEST(VtkFilesTogether, NeighboursWithoutTimesArePieces) {
    const Source source(new imp::cae::DataSourceCae(1));
    ug::Error error;
    ASSERT_TRUE(source->openFiles({orvtest::vtkFile("series_a0.vtu"), orvtest::vtkFile("series_a1.vtu")}, &error));
    EXPECT_EQ(source->stateCount(), 1u);
    EXPECT_THAT(partNames(source), ElementsAre("series_a0.vtu", "series_a1.vtu"));
}

// Half of each box is in the other one, whose elements are others.
TEST(VtkFilesTogether, OtherElementsWithoutTimesArePieces) {
    const Source source(new imp::cae::DataSourceCae(1));
    ug::Error error;
    ASSERT_TRUE(source->openFiles({orvtest::vtkFile("row_0.vtu"), orvtest::vtkFile("series_a0.vtu")}, &error));
    EXPECT_EQ(source->stateCount(), 1u);
}

TEST(VtkFilesTogether, ATimeForEachMeshMakesSteps) {
    const Source source = openAll({"rank0.vtu", "late.vtu"});
    ASSERT_EQ(source->stateCount(), 2u);
    EXPECT_EQ(source->directory()->stateInfo(1).referenceValue(), 2.0);
    EXPECT_THAT(partNames(source), ElementsAre("rank0.vtu"));
    EXPECT_EQ(source->state(0)->geometry(0)->part(0)->elements()->elementType(0), ug::HEXAHEDRON);
    EXPECT_EQ(source->state(1)->geometry(0)->part(0)->elements()->elementType(0), ug::TETRAHEDRON);
    EXPECT_EQ(source->state(1)->geometry(0)->part(0)->partId(), 1);
    EXPECT_THAT(load(source, 1, "p", 0), ElementsAre(0, 1, 2, 3));
    EXPECT_THAT(load(source, 0, "p", 0), ElementsAre(0, 1, 2, 3, 4, 5, 6, 7));
}

TEST(VtkFilesTogether, AMeshThatMovesWithoutTimesIsASeries) {
    const Source source = openAll({"move_1.vtu", "move_2.vtu", "move_3.vtu"});
    ASSERT_EQ(source->stateCount(), 3u);
    EXPECT_EQ(source->directory()->stateInfo(2).referenceValue(), U);
    EXPECT_EQ(source->directory()->stateInfo(2).name(), Str("State 1 (move_3.vtu, state 3)"));
    EXPECT_THAT(load(source, 2, "T", 0), ElementsAre(30, 31, 32, 33));
    EXPECT_THAT(load(source, 0, "T", 0), ElementsAre(10, 11, 12, 13));
    EXPECT_EQ(source->state(2)->geometry(0)->part(0)->nodes()->node(1).x(), 1.2);
    double value = 0;
    ASSERT_TRUE(source->copyScalars(2, orvtest::findResult(source.get(), "T"), {0, 0, 3}, {&value, 1}, nullptr));
    EXPECT_EQ(value, 23.0);
}

TEST(VtkFilesTogether, AMovedMeshCanBeCalledAPiece) {
    EXPECT_EQ(openAll({"move_1.vtu", "move_2.vtu"}, imp::cae::FileRelation::PIECES)->stateCount(), 1u);
    EXPECT_EQ(openAll({"rank0.vtu", "rank1.vtu"}, imp::cae::FileRelation::STEPS)->stateCount(), 2u);
}

TEST(VtkFilesTogether, SpreadFilesOfExodusAreOneModel) {
    const Source source = openAll({"bar.e.2.0", "bar.e.2.1"});
    ASSERT_EQ(source->stateCount(), 2u);
    EXPECT_THAT(partNames(source),
                ElementsAre("bar.e.2.0: core", "bar.e.2.0: tip", "bar.e.2.1: core", "bar.e.2.1: tip"));
    EXPECT_EQ(source->directory()->stateInfo(1).referenceValue(), 0.25);
    // The nodes of "tip" are 5 to 12 of their file.
    EXPECT_THAT(load(source, 1, "TEMP", 3), ElementsAre(1104, 1105, 1106, 1107, 1108, 1109, 1110, 1111));
    EXPECT_THAT(load(source, 0, "TEMP", 0), ElementsAre(0, 1, 2, 3, 4, 5, 6, 7));
    EXPECT_THAT(load(source, 1, "Damage", 0, ug::PER_ELEMENT), ElementsAre(10));
    EXPECT_THAT(load(source, 1, "Damage", 2, ug::PER_ELEMENT), ElementsAre(U));
    EXPECT_THAT(load(source, 1, "Damage", 3, ug::PER_ELEMENT), ElementsAre(11));
    EXPECT_EQ(source->state(0)->geometry(0)->part(3)->nodes()->nodeId(0), 17);
    EXPECT_EQ(source->state(0)->geometry(0)->part(3)->elements()->elementId(0), 4);
}

TEST(VtkFilesTogether, ASpreadFileOpensAlone) {
    EXPECT_THAT(partNames(openAll({"bar.e.2.1"})), ElementsAre("core", "tip"));
}

TEST(VtkFilesTogether, ProgramsMayDiffer) {
    const Source source(new imp::cae::DataSourceCae(1));
    ug::Error error;
    ASSERT_TRUE(source->openFiles({orvtest::vtkFile("series_a0.vtu"), orvtest::vtkFile("static.exo")}, &error))
        << error.message();
}

} // namespace
