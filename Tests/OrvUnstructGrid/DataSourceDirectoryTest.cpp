#include "OrvUnstructGrid/DataSourceDirectory.h"

#include "OrvUnstructGrid/DataStateSpec.h"
#include "Tests/OrvUnstructGrid/CustomResults.h"
#include "Tests/Support/AssertRecorder.h"
#include "Tests/Support/MemoryModels.h"

#include <gtest/gtest.h>

using namespace orv::ug;
using orvtest::AssertRecorder;
using orvtest::doubled;
using orvtest::FailedAssert;
using orvtest::MemoryModel;
using orvtest::sumOf;

namespace {

const std::string here = "OrvUnstructGrid/DataSourceDirectory";

std::vector<std::string> names(const std::vector<ResultInfo>& infos) {
    std::vector<std::string> list;
    for (const ResultInfo& info : infos) {
        list.push_back(info.name().toStdString());
    }
    return list;
}

using Names = std::vector<std::string>;

/// States 10 and 20; scalars a (in both) and b (in 20), a vector v and a stranger that is not in the directory.
class DataSourceDirectoryTest : public testing::Test {
protected:
    DataSourceDirectoryTest() {
        directory.addStateInfo(StateInfo(10, "ten", StateInfo::TIME, 1.0));
        directory.addStateInfo(StateInfo(20, "twenty", StateInfo::TIME, 2.0));
        directory.addResultInfo(a);
        directory.addResultInfo(b);
        directory.addResultInfo(v);
        directory.setHasResult(10, a);
        directory.setHasResult(20, a);
        directory.setHasResult(20, b);
        directory.setHasResult(20, v);
    }

    Names dependencies(const ResultInfo& info) const {
        return names(directory.customResultBaseDependencies(info));
    }

    DataSourceDirectory directory{nullptr};
    const ResultInfo a = ResultInfo(SCALAR, 1, "a", PER_NODE);
    const ResultInfo b = ResultInfo(SCALAR, 2, "b", PER_NODE);
    const ResultInfo v = ResultInfo(VECTOR, 1, "v", PER_NODE);
    const ResultInfo stranger = ResultInfo(SCALAR, 9, "stranger", PER_NODE);
};

TEST_F(DataSourceDirectoryTest, IsEmptyAtFirst) {
    const DataSourceDirectory empty(nullptr);
    EXPECT_TRUE(empty.stateInfos().empty());
    EXPECT_EQ(empty.stateCount(), 0u);
    EXPECT_TRUE(empty.stateGroupInfos().empty());
    EXPECT_EQ(empty.geometryCountPerState(), 0u);
    EXPECT_TRUE(empty.partInfos(0).empty());
    EXPECT_EQ(empty.findPartInfo(0, 1).id(), -1);
    EXPECT_EQ(empty.simulationInfo().filename(), "");
    EXPECT_TRUE(empty.warnings().empty());
    EXPECT_TRUE(empty.scalarResultInfos().empty());
}

TEST_F(DataSourceDirectoryTest, ListsStatesInOrderAndFindsThem) {
    ASSERT_EQ(directory.stateInfos().size(), 2u);
    EXPECT_EQ(directory.stateCount(), 2u);
    EXPECT_EQ(directory.stateInfos()[1].name(), "twenty");
    EXPECT_EQ(directory.stateInfo(1).name(), "twenty");
    EXPECT_EQ(directory.stateInfo(2).id(), -1);
    EXPECT_EQ(directory.stateInfo(orv::UNDEFINED_SIZE_T).id(), -1);
    EXPECT_EQ(directory.findStateInfo(10).name(), "ten");
    EXPECT_EQ(directory.findStateInfo(11).id(), -1);
    EXPECT_EQ(directory.stateIndex(20), 1u);
    EXPECT_EQ(directory.stateIndex(1), orv::UNDEFINED_SIZE_T);
}

TEST_F(DataSourceDirectoryTest, RefusesAStateIdTwice) {
    AssertRecorder recorder;
    directory.addStateInfo(StateInfo(10, "again", StateInfo::TIME, 3.0));
    EXPECT_EQ(recorder.take(), (std::vector<FailedAssert>{{here, "findStateInfo(info.id()).id() == -1", {}}}));
    EXPECT_EQ(directory.stateCount(), 2u);
    EXPECT_EQ(directory.findStateInfo(10).name(), "ten");
}

TEST_F(DataSourceDirectoryTest, RefusesAStateWithoutAnId) {
    AssertRecorder recorder;
    directory.addStateInfo(StateInfo());
    EXPECT_EQ(recorder.take(), (std::vector<FailedAssert>{{here, "info.id() >= 0", {}}}));
    EXPECT_EQ(directory.stateCount(), 2u);
}

TEST_F(DataSourceDirectoryTest, KeepsGroupsSimulationAndWarnings) {
    directory.addStateGroupInfo(StateGroupInfo({10}));
    directory.addStateGroupInfo(StateGroupInfo({20}));
    ASSERT_EQ(directory.stateGroupInfos().size(), 2u);
    EXPECT_TRUE(directory.stateGroupInfos()[1].hasStateId(20));
    directory.setStateGroupInfos({StateGroupInfo({10, 20})});
    ASSERT_EQ(directory.stateGroupInfos().size(), 1u);
    EXPECT_EQ(directory.stateGroupInfos()[0].stateCount(), 2u);
    directory.setSimulationInfo(SimulationInfo("beam.frd", "Cantilever"));
    EXPECT_EQ(directory.simulationInfo().filename(), "beam.frd");
    directory.addWarning("first");
    directory.addWarning("second");
    ASSERT_EQ(directory.warnings().size(), 2u);
    EXPECT_EQ(directory.warnings()[1], "second");
}

TEST_F(DataSourceDirectoryTest, ListsPartsByGeometry) {
    directory.addGeometryPartInfos({PartInfo(3, "Roof"), PartInfo(1, "Base")});
    directory.addGeometryPartInfos({});
    directory.addPartInfo(1, PartInfo(3, "Bolt"));
    EXPECT_EQ(directory.geometryCountPerState(), 2u);
    ASSERT_EQ(directory.partInfos(0).size(), 2u);
    EXPECT_EQ(directory.partInfos(0)[1].name(), "Base");
    EXPECT_EQ(directory.findPartInfo(0, 3).name(), "Roof");
    EXPECT_EQ(directory.findPartInfo(1, 3).name(), "Bolt");
    EXPECT_EQ(directory.findPartInfo(1, 1).id(), -1);
    EXPECT_TRUE(directory.partInfos(2).empty());
    EXPECT_EQ(directory.findPartInfo(2, 3).id(), -1);
}

TEST_F(DataSourceDirectoryTest, RefusesAPartOfAMissingGeometry) {
    AssertRecorder recorder;
    directory.addPartInfo(0, PartInfo(1, "Base"));
    EXPECT_EQ(recorder.take(), (std::vector<FailedAssert>{{here, "geometryIndex < geometryCountPerState()", {}}}));
    EXPECT_EQ(directory.geometryCountPerState(), 0u);
}

TEST_F(DataSourceDirectoryTest, ListsResultsByType) {
    directory.addResultInfo(ResultInfo(DISPLACEMENT, 1, "d", PER_NODE));
    directory.addResultInfo(ResultInfo(SYMMETRIC_TENSOR, 1, "t", PER_NODE));
    EXPECT_EQ(names(directory.scalarResultInfos()), (Names{"a", "b"}));
    EXPECT_EQ(names(directory.vectorResultInfos()), (Names{"v"}));
    EXPECT_EQ(names(directory.displacementResultInfos()), (Names{"d"}));
    EXPECT_EQ(names(directory.symmetricTensorResultInfos()), (Names{"t"}));
    EXPECT_EQ(names(directory.resultInfos(SCALAR)), (Names{"a", "b"}));
    EXPECT_EQ(names(directory.resultInfos(SYMMETRIC_TENSOR)), (Names{"t"}));
    EXPECT_TRUE(directory.resultInfos(NO_RESULT_TYPE).empty());
    EXPECT_TRUE(directory.resultInfos(static_cast<ResultType>(5)).empty());
}

TEST_F(DataSourceDirectoryTest, FindsAResultByTypeAndId) {
    EXPECT_EQ(directory.findResultInfo(VECTOR, 1).name(), "v");
    EXPECT_EQ(directory.findResultInfo(SCALAR, 1).name(), "a");
    EXPECT_FALSE(directory.findResultInfo(VECTOR, 2).isValid());
    EXPECT_FALSE(directory.findResultInfo(NO_RESULT_TYPE, 1).isValid());
    EXPECT_EQ(directory.findScalarResultInfo(2).name(), "b");
    EXPECT_FALSE(directory.findScalarResultInfo(9).isValid());
}

TEST_F(DataSourceDirectoryTest, RefusesWhatIsNoNewResultOfAFile) {
    AssertRecorder recorder;
    const FailedAssert notOfAFile = {here, "info.isValid() && !info.isCustom()", {}};
    directory.addResultInfo(ResultInfo(SCALAR, 2, "again", PER_NODE));
    EXPECT_EQ(recorder.take(),
              (std::vector<FailedAssert>{{here, "!findResultInfo(info.type(), info.id()).isValid()", {}}}));
    directory.addResultInfo(ResultInfo(NO_RESULT_TYPE, 2, "untyped", PER_NODE));
    EXPECT_EQ(recorder.take(), (std::vector<FailedAssert>{{here, "isResultType(info.type())", {}}}));
    directory.addResultInfo(ResultInfo(SCALAR, -1, "unnumbered", PER_NODE));
    EXPECT_EQ(recorder.take(), (std::vector<FailedAssert>{notOfAFile}));
    directory.addResultInfo(sumOf("custom", {a}));
    EXPECT_EQ(recorder.take(), (std::vector<FailedAssert>{notOfAFile}));
    EXPECT_EQ(names(directory.scalarResultInfos()), (Names{"a", "b"}));
}

TEST_F(DataSourceDirectoryTest, KnowsWhereAFilesResultHasValues) {
    EXPECT_TRUE(directory.hasResult(10, a));
    EXPECT_FALSE(directory.hasResult(10, b));
    EXPECT_TRUE(directory.hasResult(20, b));
    EXPECT_FALSE(directory.hasResult(30, a));
    EXPECT_FALSE(directory.hasResult(20, stranger));
    EXPECT_FALSE(directory.hasResult(20, ResultInfo()));
    EXPECT_FALSE(directory.hasResult(-1, a));
}

TEST_F(DataSourceDirectoryTest, KnowsValuesInStatesAddedLater) {
    directory.addStateInfo(StateInfo(5, "five", StateInfo::TIME, 3.0));
    EXPECT_FALSE(directory.hasResult(5, a));
    directory.setHasResult(5, a);
    EXPECT_TRUE(directory.hasResult(5, a));
    EXPECT_TRUE(directory.hasResult(10, a));
    EXPECT_FALSE(directory.hasResult(5, b));
}

TEST_F(DataSourceDirectoryTest, ValuesAreNotedOfKnownStatesAndFilesResultsOnly) {
    AssertRecorder recorder;
    directory.setHasResult(30, a);
    EXPECT_EQ(recorder.take(), (std::vector<FailedAssert>{{here, "stateIsKnown", {}}}));
    directory.setHasResult(10, stranger);
    EXPECT_EQ(recorder.take(), (std::vector<FailedAssert>{{here, "resultIsKnown", {}}}));
    const ResultInfo custom = sumOf("custom", {b});
    directory.setCustomResultInfo(custom);
    directory.setHasResult(10, custom);
    EXPECT_EQ(recorder.take(), (std::vector<FailedAssert>{{here, "resultIsKnown", {}}}));
    EXPECT_FALSE(directory.hasResult(10, custom));
}

TEST_F(DataSourceDirectoryTest, HasACustomResultWhereEverythingUnderItHasValues) {
    const ResultInfo middle = sumOf("a+b", {a, b});
    const ResultInfo onBoth = sumOf("x", {middle, a});
    const ResultInfo onA = sumOf("y", {a});
    directory.setCustomResultInfo(onBoth);
    directory.setCustomResultInfo(onA);
    EXPECT_FALSE(directory.hasResult(10, onBoth));
    EXPECT_TRUE(directory.hasResult(20, onBoth));
    EXPECT_TRUE(directory.hasResult(10, onA));
    EXPECT_FALSE(directory.hasResult(30, onA));
}

TEST_F(DataSourceDirectoryTest, HasNoCustomResultThatIsNotRegisteredOrRestsOnAStranger) {
    EXPECT_FALSE(directory.hasResult(20, sumOf("x", {a})));
    const ResultInfo strange = sumOf("y", {a, stranger});
    directory.setCustomResultInfo(strange);
    EXPECT_FALSE(directory.hasResult(20, strange));
}

TEST_F(DataSourceDirectoryTest, HasACustomResultThatRestsOnNothingEverywhere) {
    std::vector<ResultInfo> none;
    const ResultInfo constant(SCALAR, "7", PER_NODE, none, nullptr);
    directory.setCustomResultInfo(constant);
    EXPECT_TRUE(directory.hasResult(10, constant));
    EXPECT_TRUE(directory.hasResult(20, constant));
    EXPECT_FALSE(directory.hasResult(30, constant));
}

TEST_F(DataSourceDirectoryTest, DependenciesOfAFilesResultAreNone) {
    EXPECT_EQ(dependencies(a), Names());
    EXPECT_EQ(dependencies(ResultInfo()), Names());
}

TEST_F(DataSourceDirectoryTest, DependenciesAreFilesResultsOnceInOrder) {
    EXPECT_EQ(dependencies(sumOf("x", {b, a, b})), (Names{"b", "a"}));
}

TEST_F(DataSourceDirectoryTest, DependenciesPassOverAnUnregisteredMiddle) {
    const ResultInfo middle = sumOf("a+b", {a, b});
    EXPECT_EQ(dependencies(sumOf("(a+b)*v", {middle, v})), (Names{"a", "b", "v"}));
}

TEST_F(DataSourceDirectoryTest, DependenciesStopAtARegisteredArgumentUnderTheNameItHasHere) {
    const ResultInfo middle = sumOf("a+b", {a, b});
    ResultInfo renamed = middle;
    renamed.setName("Sum");
    directory.setCustomResultInfo(renamed);
    EXPECT_EQ(dependencies(sumOf("x", {middle, v})), (Names{"Sum", "v"}));
}

TEST_F(DataSourceDirectoryTest, DependenciesOfARegisteredResultAreThoseOfItsArguments) {
    const ResultInfo sum = sumOf("a+b", {a, b});
    directory.setCustomResultInfo(sum);
    EXPECT_EQ(dependencies(sum), (Names{"a", "b"}));
}

TEST_F(DataSourceDirectoryTest, DependenciesReportStrangers) {
    EXPECT_EQ(dependencies(sumOf("x", {stranger, a})), (Names{"stranger", "a"}));
    EXPECT_EQ(dependencies(sumOf("x", {sumOf("y", {stranger})})), (Names{"stranger"}));
    EXPECT_FALSE(directory.customResultBaseDependencies(sumOf("x", {a, ResultInfo()})).at(1).isValid());
}

// Ids of two sources may coincide: the name is then all that tells the other one's result from ours.
TEST_F(DataSourceDirectoryTest, DependenciesReportAStrangerBesideOurResultOfTheSameId) {
    const ResultInfo namesake(SCALAR, 1, "not a", PER_NODE);
    EXPECT_EQ(dependencies(sumOf("x", {a, namesake})), (Names{"a", "not a"}));
}

TEST_F(DataSourceDirectoryTest, DependenciesOfSharedAndDeepExpressions) {
    EXPECT_EQ(dependencies(doubled(a, 60)), (Names{"a"}));
    EXPECT_EQ(dependencies(doubled(a, 100000)), (Names{"a"}));
    const ResultInfo deep = doubled(a, 60);
    directory.setCustomResultInfo(deep);
    EXPECT_TRUE(directory.hasResult(10, deep));
}

TEST_F(DataSourceDirectoryTest, RegistersCustomResultsBehindTheFiles) {
    const ResultInfo sum = sumOf("a+b", {a, b});
    directory.setCustomResultInfo(sum);
    directory.addResultInfo(ResultInfo(SCALAR, 3, "late", PER_NODE));
    EXPECT_EQ(names(directory.scalarResultInfos()), (Names{"a", "b", "late", "a+b"}));
    EXPECT_EQ(directory.findResultInfo(SCALAR, sum.id()), sum);
    EXPECT_EQ(directory.findResultInfo(SCALAR, 3).name(), "late");
    directory.setHasResult(10, ResultInfo(SCALAR, 3, "late", PER_NODE));
    EXPECT_TRUE(directory.hasResult(10, ResultInfo(SCALAR, 3, "late", PER_NODE)));
    EXPECT_TRUE(directory.hasResult(20, b));
}

TEST_F(DataSourceDirectoryTest, RenamingKeepsThePlace) {
    ResultInfo first = sumOf("first", {a});
    directory.setCustomResultInfo(first);
    directory.setCustomResultInfo(sumOf("second", {b}));
    first.setName("renamed");
    directory.setCustomResultInfo(first);
    EXPECT_EQ(names(directory.scalarResultInfos()), (Names{"a", "b", "renamed", "second"}));
}

TEST_F(DataSourceDirectoryTest, FindsARegisteredResultThroughTheCallersOwnCopy) {
    const ResultInfo own = sumOf("a+b", {a, b});
    ResultInfo renamed = own;
    renamed.setName("Sum");
    directory.setCustomResultInfo(renamed);
    EXPECT_EQ(directory.findResultInfo(own.type(), own.id()).name(), "Sum");
    EXPECT_TRUE(directory.hasResult(20, own));
}

TEST_F(DataSourceDirectoryTest, AFilesResultOfItsIdDoesNotRegisterACustomResult) {
    const ResultInfo sum = sumOf("a+b", {a, b});
    directory.addResultInfo(ResultInfo(SCALAR, sum.id(), "file", PER_NODE));
    EXPECT_FALSE(directory.hasResult(20, sum));
    EXPECT_EQ(dependencies(sumOf("x", {sum})), (Names{"a", "b"}));
}

TEST_F(DataSourceDirectoryTest, RegistersOnlyCustomResultsOfAType) {
    AssertRecorder recorder;
    directory.setCustomResultInfo(stranger);
    EXPECT_EQ(names(directory.scalarResultInfos()), (Names{"a", "b"}));
    std::vector<ResultInfo> none;
    const ResultInfo untyped(NO_RESULT_TYPE, "x", PER_NODE, none, nullptr);
    directory.setCustomResultInfo(untyped);
    EXPECT_FALSE(directory.findResultInfo(NO_RESULT_TYPE, untyped.id()).isValid());
    EXPECT_TRUE(recorder.take().empty());
}

TEST_F(DataSourceDirectoryTest, RemovesACustomResultAndNothingElse) {
    const ResultInfo first = sumOf("first", {a});
    const ResultInfo second = sumOf("second", {b});
    const ResultInfo third = sumOf("third", {b});
    const ResultInfo fourth = sumOf("fourth", {b});
    for (const ResultInfo& info : {first, second, third, fourth}) {
        directory.setCustomResultInfo(info);
    }
    directory.removeCustomResultInfo(second);
    EXPECT_EQ(names(directory.scalarResultInfos()), (Names{"a", "b", "first", "third", "fourth"}));
    EXPECT_FALSE(directory.findResultInfo(SCALAR, second.id()).isValid());
    EXPECT_EQ(directory.findResultInfo(SCALAR, third.id()).name(), "third");
    EXPECT_FALSE(directory.hasResult(20, second));
    directory.removeCustomResultInfo(second);
    directory.removeCustomResultInfo(a);
    directory.removeCustomResultInfo(ResultInfo());
    EXPECT_EQ(names(directory.scalarResultInfos()), (Names{"a", "b", "first", "third", "fourth"}));
}

TEST_F(DataSourceDirectoryTest, RemovingDropsTheValuesInAllStates) {
    MemoryModel model;
    const ResultInfo sum = sumOf("x", {model.temperature});
    model.source->directory()->setCustomResultInfo(sum);
    DataStateSpec spec;
    spec.setResultIds({sum});
    for (int id : {1, 3}) {
        ASSERT_TRUE(model.source->loadDataState(id, spec, nullptr));
        EXPECT_TRUE(model.state(id)->hasLoaded(sum));
    }
    model.source->directory()->removeCustomResultInfo(sum);
    for (int id : {1, 3}) {
        EXPECT_EQ(model.state(id)->results(model.state(id)->geometry(0))->find(sum), nullptr);
        EXPECT_TRUE(model.state(id)->hasLoaded(model.temperature));
    }
}

} // namespace
