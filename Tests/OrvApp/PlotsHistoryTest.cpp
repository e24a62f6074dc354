// History curves are drawn from a source whose values tell where they come from: state * 1000 + part * 100 + item,
// where item counts what the result's mapping has an item for.

#include "LibCore/rvfLogger.h"
#include "OrvApp/Plots.h"
#include "OrvApp/ResultOperators.h"
#include "OrvApp/Results.h"
#include "OrvApp/States.h"
#include "OrvPlot2d/OverlayPlot.h"
#include "OrvUnstructGrid/CustomResultGenerator.h"
#include "OrvUnstructGrid/Error.h"
#include "OrvUnstructGrid/HitItem.h"
#include "Tests/OrvApp/CatalogueTest.h"
#include "Tests/Support/MemoryModels.h"
#include "Tests/Support/TestPaths.h"

using namespace orv;
using orv::app::Models;
using orv::app::Plots;
using orv::app::Results;
using orv::app::States;
using orv::plt::Curve;
using orv::plt::OverlayPlot;
using orvtest::failed;
using orvtest::FailedAssert;
using orvtest::LogMessage;
using ug::ResultInfo;
using ug::StateGroupInfo;
using ug::StateInfo;

using Failures = std::vector<FailedAssert>;
using Messages = std::vector<LogMessage>;
using Numbers = std::vector<double>;

namespace {

const std::string inside = "OrvApp/Plots_p";
const FailedAssert badIndex = failed(inside, "index < count()");
const FailedAssert noPlot = failed(inside, "plot");

LogMessage error(const std::string& message) {
    return {1,
            "orv.comp.app",
            message,
            inside,
            "orv::plt::Curve *orv::app::PlotsPrivate::addHistoryCurve(size_t, const orv::ug::HitItem &, "
            "const orv::ug::UnstructGridModel *, int)",
            "addHistoryCurve"};
}

const LogMessage undefinedItem = error("Hit item is undefined, cannot add scalar evolution curve to plot");
const LogMessage undefinedId = error("Scalar id is undefined (equal to -1), cannot add scalar evolution curve to plot");

LogMessage unknownId(int id) {
    return error("Scalar with id " + std::to_string(id) +
                 " not found in results, cannot add scalar evolution curve to plot");
}

LogMessage unknownMapping(int id) {
    return error("Scalar with id " + std::to_string(id) +
                 " has unknown mapping, cannot add scalar evolution curve to plot");
}

ug::HitItem hitOn(size_t geometry, size_t part, size_t node, size_t element) {
    ug::HitItem item;
    item.setGeometryIndex(geometry);
    item.setItemIndex(part);
    item.setNodeIndex(node);
    item.setElementIndex(element);
    return item;
}

ug::HitItem nodeHit(size_t node) {
    return hitOn(0, 0, node, UNDEFINED_SIZE_T);
}

ug::HitItem elementHit(size_t element) {
    return hitOn(0, 0, UNDEFINED_SIZE_T, element);
}

/// Two parts, "A" of two cubes and "B" of one, in one geometry, and one plot.
class PlotsHistoryTest : public orvtest::CatalogueTest {
protected:
    PlotsHistoryTest() {
        source->addGeometry();
        orvtest::fillWithCubes(source->addPart(0, "A"), 2, 0);
        orvtest::fillWithCubes(source->addPart(0, "B"), 1, 10);
        model = orvtest::modelOn(source.get(), -1);
        plot = Plots::instance()->add();
    }

    void addState(int id, double referenceValue, StateInfo::ReferenceType type = StateInfo::TIME) {
        source->addState(StateInfo(id, "", type, referenceValue));
    }

    void addStates(std::initializer_list<int> ids) {
        for (const int id : ids) {
            addState(id, 0.5 * id);
        }
    }

    /// A scalar with values in those of the states.
    ResultInfo addScalar(ug::ResultMapping mapping, std::initializer_list<int> states) {
        const ResultInfo info = source->addResult(ug::SCALAR, "Heat", mapping);
        for (const int state : states) {
            for (size_t part = 0; part < 2; ++part) {
                setValues(info, state, part);
            }
        }
        return info;
    }

    void setValues(const ResultInfo& info, int state, size_t part) {
        const size_t count = source->state(0)->geometry(0)->part(part)->itemCount(info.resultMapping());
        Numbers values;
        for (size_t i = 0; i < count; ++i) {
            values.push_back(1000.0 * state + 100.0 * double(part) + double(i));
        }
        EXPECT_TRUE(source->setValues(state, info, 0, part, values, nullptr));
    }

    /// A custom scalar that nothing computes.
    ResultInfo addCustomScalar(ug::ResultMapping mapping) {
        std::vector<ResultInfo> none;
        const ResultInfo info(ug::SCALAR, "Custom", mapping, none, new ug::CustomResultGenerator(0));
        source->directory()->setCustomResultInfo(info);
        return info;
    }

    Curve* add(const ug::HitItem& item, int scalarId) {
        return Plots::instance()->addHistoryCurve(0, item, model.get(), scalarId);
    }

    /// Nothing has been written to the plot.
    void expectBare() const {
        EXPECT_EQ(plot->title(), Str());
        EXPECT_EQ(plot->axisSettings()->xAxis().title, Str());
        EXPECT_EQ(plot->axisSettings()->yAxis().title, Str());
        EXPECT_EQ(plot->curveCount(), 0u);
    }

    void expectSilentNull(const ug::HitItem& item, int scalarId) {
        EXPECT_EQ(add(item, scalarId), nullptr);
        EXPECT_EQ(logs.take(), Messages());
        expectBare();
    }

    void expectError(const ug::HitItem& item, int scalarId, const LogMessage& message) {
        EXPECT_EQ(add(item, scalarId), nullptr);
        EXPECT_EQ(logs.take(), Messages{message});
        expectBare();
    }

    PtrRef<ug::DataSourceMemory> source = new ug::DataSourceMemory(1);
    PtrRef<ug::UnstructGridModel> model;
    OverlayPlot* plot;
};

TEST_F(PlotsHistoryTest, ANodesValuesStandOverTheStatesReferenceValues) {
    addStates({1, 2, 3});
    const ResultInfo info = addScalar(ug::PER_NODE, {1, 2, 3});
    const Curve* curve = add(nodeHit(7), info.id());
    ASSERT_NE(curve, nullptr);
    EXPECT_EQ(plot->curveCount(), 1u);
    EXPECT_EQ(plot->curve(0), curve);
    EXPECT_EQ(curve->name(), "Heat");
    EXPECT_EQ(curve->x(), (Numbers{0.5, 1.0, 1.5}));
    EXPECT_EQ(curve->y(), (Numbers{1007, 2007, 3007}));
    EXPECT_EQ(plot->axisSettings()->xAxis().title, "Time");
    EXPECT_EQ(plot->axisSettings()->yAxis().title, "Heat");
    EXPECT_EQ(plot->title(), Str());
}

TEST_F(PlotsHistoryTest, TheResultsMappingChoosesNodeOrElement) {
    addStates({1});
    const ResultInfo perNode = addScalar(ug::PER_NODE, {1});
    const ResultInfo perElement = addScalar(ug::PER_ELEMENT, {1});
    const ug::HitItem item = hitOn(0, 0, 5, 1);
    EXPECT_EQ(add(item, perNode.id())->y(), Numbers{1005});
    EXPECT_EQ(add(item, perElement.id())->y(), Numbers{1001});
    EXPECT_EQ(add(hitOn(0, 1, 5, 0), perElement.id())->y(), Numbers{1100});
}

TEST_F(PlotsHistoryTest, OfAnElementsOwnValuesTheAverageIsDrawn) {
    addStates({1});
    // The second of two cubes: 8 nodes from item 8 on, 6 surfaces from item 6 on.
    EXPECT_EQ(add(elementHit(1), addScalar(ug::PER_ELEMENT_NODE, {1}).id())->y(), Numbers{1000 + (8 + 15) / 2.0});
    EXPECT_EQ(add(elementHit(1), addScalar(ug::PER_ELEMENT_SURFACE, {1}).id())->y(), Numbers{1000 + (6 + 11) / 2.0});
}

TEST_F(PlotsHistoryTest, WhatIsUndefinedOfAnElementsValuesDoesNotCount) {
    addStates({1, 2});
    const ResultInfo info = source->addResult(ug::SCALAR, "Heat", ug::PER_ELEMENT_SURFACE);
    Numbers values(12, 5.0);
    values[6] = 1.0;
    values[7] = UNDEFINED_DOUBLE;
    values[8] = 3.0;
    values[9] = values[10] = values[11] = UNDEFINED_DOUBLE;
    ASSERT_TRUE(source->setValues(1, info, 0, 0, values, nullptr));
    std::fill(values.begin() + 6, values.end(), UNDEFINED_DOUBLE);
    ASSERT_TRUE(source->setValues(2, info, 0, 0, values, nullptr));
    const Curve* curve = add(elementHit(1), info.id());
    // In the second state the element has no value at all, so that state has no point.
    EXPECT_EQ(curve->x(), Numbers{0.5});
    EXPECT_EQ(curve->y(), Numbers{2.0});
}

TEST_F(PlotsHistoryTest, ThePartAndTheGeometryAreTheItems) {
    orvtest::MemoryModel memory;
    model = orvtest::modelOn(memory.source.get(), 2);
    // Geometry 1, part 1 is the fifth part of the model.
    const Curve* curve = add(hitOn(1, 1, 6, UNDEFINED_SIZE_T), memory.temperature.id());
    EXPECT_EQ(curve->x(), (Numbers{0.5, 1.0, 1.5}));
    EXPECT_EQ(curve->y(), (Numbers{orvtest::modelValue(1, memory.temperature, 4, 6, 0),
                                   orvtest::modelValue(2, memory.temperature, 4, 6, 0),
                                   orvtest::modelValue(3, memory.temperature, 4, 6, 0)}));
}

TEST_F(PlotsHistoryTest, NeitherTheItemsStateNorTheModelsChoosesWhatIsDrawn) {
    addStates({1, 2});
    const ResultInfo info = addScalar(ug::PER_NODE, {1, 2});
    ug::HitItem item = nodeHit(0);
    for (const int state : {-1, 2, 77}) {
        item.setStateId(state);
        model->modelSpec().setStateId(state);
        EXPECT_EQ(add(item, info.id())->y(), (Numbers{1000, 2000}));
        EXPECT_EQ(model->currentStateId(), state);
    }
}

TEST_F(PlotsHistoryTest, TheModelNeedNotBeTheCurrentOne) {
    addStates({1});
    const ResultInfo info = addScalar(ug::PER_NODE, {1});
    orvtest::MemoryModel other;
    Models::instance()->add(orvtest::modelOn(other.source.get(), 1).get());
    EXPECT_EQ(add(nodeHit(0), info.id())->y(), Numbers{1000});
}

TEST_F(PlotsHistoryTest, ThePlotIsTheOneAtTheIndex) {
    addStates({1});
    const ResultInfo info = addScalar(ug::PER_NODE, {1});
    OverlayPlot* second = Plots::instance()->add();
    const Curve* curve = Plots::instance()->addHistoryCurve(1, nodeHit(0), model.get(), info.id());
    EXPECT_EQ(second->curve(0), curve);
    expectBare();
}

TEST_F(PlotsHistoryTest, TheLatestCurveTitlesTheAxesAndNoneTheCurves) {
    addState(1, 3.0, StateInfo::FREQUENCY);
    const ResultInfo heat = addScalar(ug::PER_NODE, {1});
    plot->setTitle("mine");
    plot->axisSettings()->setXAxisTitle("mine");
    plot->axisSettings()->setYAxisTitle("mine");
    add(nodeHit(0), heat.id());
    EXPECT_EQ(plot->axisSettings()->xAxis().title, "Frequency");
    EXPECT_EQ(plot->axisSettings()->yAxis().title, "Heat");

    orvtest::MemoryModel memory;
    model = orvtest::modelOn(memory.source.get(), 1);
    add(nodeHit(1), memory.temperature.id());
    add(nodeHit(2), memory.temperature.id());
    EXPECT_EQ(plot->axisSettings()->xAxis().title, "Time");
    EXPECT_EQ(plot->axisSettings()->yAxis().title, "Temperature");
    EXPECT_EQ(plot->title(), "mine");
    ASSERT_EQ(plot->curveCount(), 3u);
    EXPECT_EQ(plot->curve(0)->name(), "Heat");
    EXPECT_EQ(plot->curve(1)->name(), "Temperature");
    EXPECT_EQ(plot->curve(2)->name(), "Temperature");
}

TEST_F(PlotsHistoryTest, AnIndexOutOfRangeHasNoPlotToDrawInto) {
    addStates({1});
    const ResultInfo info = addScalar(ug::PER_NODE, {1});
    EXPECT_EQ(Plots::instance()->addHistoryCurve(1, nodeHit(0), model.get(), info.id()), nullptr);
    EXPECT_EQ(asserts.take(), (Failures{badIndex, noPlot}));
    expectBare();
}

TEST_F(PlotsHistoryTest, ANullPlotCannotBeDrawnInto) {
    addStates({1});
    const ResultInfo info = addScalar(ug::PER_NODE, {1});
    Plots::instance()->add(nullptr);
    EXPECT_EQ(Plots::instance()->addHistoryCurve(1, nodeHit(0), model.get(), info.id()), nullptr);
    EXPECT_EQ(asserts.take(), Failures{noPlot});
}

TEST_F(PlotsHistoryTest, TheChecksGoOnBehindTheFailedAssertions) {
    EXPECT_EQ(Plots::instance()->addHistoryCurve(1, ug::HitItem(), model.get(), -1), nullptr);
    EXPECT_EQ(asserts.take(), (Failures{badIndex, noPlot}));
    EXPECT_EQ(logs.take(), Messages{undefinedItem});
}

TEST_F(PlotsHistoryTest, TheItemIsLookedAtFirst) {
    expectError(ug::HitItem(), -1, undefinedItem);
    expectError(ug::HitItem(), 99, undefinedItem);
}

TEST_F(PlotsHistoryTest, AnIdOfMinusOneIsRefusedBeforeTheLookUp) {
    expectError(nodeHit(0), -1, undefinedId);
    expectError(elementHit(0), -1, undefinedId);
}

TEST_F(PlotsHistoryTest, AnUnknownIdIsToldWithItsNumber) {
    addStates({1});
    const ResultInfo info = addScalar(ug::PER_NODE, {1});
    expectError(nodeHit(0), info.id() + 17, unknownId(info.id() + 17));
    expectError(nodeHit(0), -2, unknownId(-2));
}

TEST_F(PlotsHistoryTest, AVectorsIdIsNoScalars) {
    addStates({1});
    const ResultInfo vector = source->addResult(ug::VECTOR, "Flow", ug::PER_NODE);
    expectError(nodeHit(0), vector.id(), unknownId(vector.id()));
}

TEST_F(PlotsHistoryTest, AModelWithoutASourceHasNoScalars) {
    model->setDataSource(nullptr);
    expectError(nodeHit(0), 1, unknownId(1));
}

TEST_F(PlotsHistoryTest, AnUnknownMappingIsTold) {
    addStates({1});
    const ResultInfo info = addCustomScalar(ug::UNKNOWN_MAPPING);
    expectError(nodeHit(0), info.id(), unknownMapping(info.id()));
}

TEST_F(PlotsHistoryTest, AMappingThatNobodyKnowsOfGivesNoCurveInSilence) {
    addStates({1});
    const ResultInfo info = addCustomScalar(static_cast<ug::ResultMapping>(7));
    expectSilentNull(hitOn(0, 0, 0, 0), info.id());
}

TEST_F(PlotsHistoryTest, AnItemWithoutTheIndexThatIsNeededGivesNoCurveInSilence) {
    addStates({1});
    expectSilentNull(elementHit(0), addScalar(ug::PER_NODE, {1}).id());
    for (const ug::ResultMapping mapping : {ug::PER_ELEMENT, ug::PER_ELEMENT_NODE, ug::PER_ELEMENT_SURFACE}) {
        expectSilentNull(nodeHit(0), addScalar(mapping, {1}).id());
    }
}

TEST_F(PlotsHistoryTest, ANodeThatIsNotThereGivesNoCurveInSilence) {
    addStates({1});
    const ResultInfo info = addScalar(ug::PER_NODE, {1});
    expectSilentNull(nodeHit(12), info.id());
    expectSilentNull(hitOn(0, 2, 0, 0), info.id());
    expectSilentNull(hitOn(1, 0, 0, 0), info.id());
}

TEST_F(PlotsHistoryTest, WithoutStatesThereIsNoCurveInSilence) {
    expectSilentNull(nodeHit(0), source->addResult(ug::SCALAR, "Heat", ug::PER_NODE).id());
}

TEST_F(PlotsHistoryTest, WithoutValuesThereIsNoCurveInSilence) {
    addStates({1, 2});
    expectSilentNull(nodeHit(0), addScalar(ug::PER_NODE, {}).id());
}

TEST_F(PlotsHistoryTest, NoMessageIsMadeWhenErrorsAreNotLogged) {
    rvf::Logger* logger = rvf::LogManager::instance()->logger("orv.comp.app");
    const int level = logger->level();
    logger->setLevel(rvf::Logger::LEVEL_NONE);
    EXPECT_EQ(add(ug::HitItem(), -1), nullptr);
    EXPECT_EQ(add(nodeHit(0), -1), nullptr);
    EXPECT_EQ(add(nodeHit(0), 5), nullptr);
    logger->setLevel(level);
    EXPECT_EQ(logs.take(), Messages());
}

TEST_F(PlotsHistoryTest, TheFirstStateSaysWhatXMeasures) {
    const struct {
        StateInfo::ReferenceType type;
        const char* title;
    } rows[] = {
        {StateInfo::TIME, "Time"},
        {StateInfo::FREQUENCY, "Frequency"},
        {StateInfo::LOAD_CASE, "LoadCase"},
        {static_cast<StateInfo::ReferenceType>(3), "State"},
    };
    for (const auto& row : rows) {
        orvtest::MemoryModel memory;
        source = new ug::DataSourceMemory(1);
        source->addGeometry();
        orvtest::fillWithCubes(source->addPart(0, "A"), 1, 0);
        orvtest::fillWithCubes(source->addPart(0, "B"), 1, 0);
        addState(1, 1.0, row.type);
        addState(2, 2.0, StateInfo::FREQUENCY);
        addState(3, 3.0, StateInfo::LOAD_CASE);
        model = orvtest::modelOn(source.get(), -1);
        // The first state says it also when it has no value itself.
        add(nodeHit(0), addScalar(ug::PER_NODE, {2, 3}).id());
        EXPECT_EQ(plot->axisSettings()->xAxis().title, row.title);
    }
}

TEST_F(PlotsHistoryTest, StatesWithoutAReferenceValueAreNumbered) {
    for (const int id : {1, 2, 3}) {
        addState(id, UNDEFINED_DOUBLE);
    }
    const ResultInfo info = addScalar(ug::PER_NODE, {1, 2, 3});
    EXPECT_EQ(add(nodeHit(0), info.id())->x(), (Numbers{0, 1, 2}));
}

TEST_F(PlotsHistoryTest, NumberingGoesOnFromTheLastPoint) {
    addState(1, 10.0);
    addState(2, UNDEFINED_DOUBLE);
    addState(3, -4.0);
    addState(4, UNDEFINED_DOUBLE);
    const ResultInfo info = addScalar(ug::PER_NODE, {1, 2, 3, 4});
    EXPECT_EQ(add(nodeHit(0), info.id())->x(), (Numbers{10, 11, -4, -3}));
}

TEST_F(PlotsHistoryTest, ASkippedStateLeavesNoGapInTheNumbering) {
    for (const int id : {1, 2, 3, 4}) {
        addState(id, UNDEFINED_DOUBLE);
    }
    const ResultInfo info = addScalar(ug::PER_NODE, {2, 4});
    const Curve* curve = add(nodeHit(0), info.id());
    EXPECT_EQ(curve->x(), (Numbers{0, 1}));
    EXPECT_EQ(curve->y(), (Numbers{2000, 4000}));
}

TEST_F(PlotsHistoryTest, AStateWhereTheNodeHasNoValueIsSkipped) {
    addStates({1, 2, 3});
    const ResultInfo info = addScalar(ug::PER_NODE, {1, 3});
    setValues(info, 2, 1); // of the other part, so that this one is undefined
    const Curve* curve = add(nodeHit(0), info.id());
    EXPECT_EQ(curve->x(), (Numbers{0.5, 1.5}));
    EXPECT_EQ(curve->y(), (Numbers{1000, 3000}));
}

/// States 1 to 6, of which 2 and 5, 4 and 3 and once more 5 belong together, and 6 to none.
class PlotsHistoryOfGroupsTest : public PlotsHistoryTest {
protected:
    PlotsHistoryOfGroupsTest() {
        addState(2, 2.0, StateInfo::FREQUENCY);
        addState(1, 1.0);
        addState(3, 3.0);
        addState(4, 4.0, StateInfo::LOAD_CASE);
        addState(5, 5.0);
        addState(6, 6.0);
        info = addScalar(ug::PER_NODE, {1, 2, 3, 4, 5, 6});
        source->directory()->setStateGroupInfos(
            {StateGroupInfo({2, 5}), StateGroupInfo({4, 3, 5}), StateGroupInfo({1})});
    }

    ResultInfo info;
};

TEST_F(PlotsHistoryOfGroupsTest, TheGroupOfTheCurrentStateIsDrawnInItsOrder) {
    model->modelSpec().setStateId(3);
    const Curve* curve = add(nodeHit(0), info.id());
    EXPECT_EQ(curve->x(), (Numbers{4, 3, 5}));
    EXPECT_EQ(curve->y(), (Numbers{4000, 3000, 5000}));
    EXPECT_EQ(plot->axisSettings()->xAxis().title, "LoadCase");
}

TEST_F(PlotsHistoryOfGroupsTest, AStateInSeveralGroupsCountsForTheFirst) {
    model->modelSpec().setStateId(5);
    EXPECT_EQ(add(nodeHit(0), info.id())->x(), (Numbers{2, 5}));
}

TEST_F(PlotsHistoryOfGroupsTest, TheFirstStateStandsInForANegativeCurrentOne) {
    model->modelSpec().setStateId(-1);
    EXPECT_EQ(add(nodeHit(0), info.id())->x(), (Numbers{2, 5}));
    EXPECT_EQ(plot->axisSettings()->xAxis().title, "Frequency");
}

TEST_F(PlotsHistoryOfGroupsTest, ACurrentStateInNoGroupGivesNoCurveInSilence) {
    for (const int state : {6, 77}) {
        model->modelSpec().setStateId(state);
        expectSilentNull(nodeHit(0), info.id());
    }
}

TEST_F(PlotsHistoryOfGroupsTest, WhatAGroupNamesInVainIsSkipped) {
    source->directory()->setStateGroupInfos({StateGroupInfo({77, 2})});
    model->modelSpec().setStateId(2);
    EXPECT_EQ(add(nodeHit(0), info.id())->x(), Numbers{2});
}

TEST_F(PlotsHistoryTest, AStateMayHaveTheNumberZero) {
    addStates({1, 0});
    const ResultInfo info = addScalar(ug::PER_NODE, {1, 0});
    source->directory()->setStateGroupInfos({StateGroupInfo({1}), StateGroupInfo({0})});
    model->modelSpec().setStateId(0);
    EXPECT_EQ(add(nodeHit(3), info.id())->y(), Numbers{3});
}

TEST_F(PlotsHistoryTest, GroupsWithoutStatesAreAMistake) {
    source->directory()->addStateGroupInfo(StateGroupInfo({1}));
    const ResultInfo info = source->addResult(ug::SCALAR, "Heat", ug::PER_NODE);
    expectSilentNull(nodeHit(0), info.id());
    EXPECT_EQ(asserts.take(), Failures{failed(inside, "currentStateId >= 0")});
}

/// The bracket's five states, through the catalogues.
class PlotsHistoryOfAFileTest : public orvtest::CatalogueTest {
protected:
    void SetUp() override {
        ug::Error error;
        ASSERT_TRUE(Models::instance()->open(orvtest::exampleDataFolder() + "/bracket.frd", &error));
        Plots::instance()->add();
    }

    /// The curve at a node must show what the states themselves hold there.
    void expectAgreement(const ResultInfo& scalar, size_t node) {
        const Curve* curve =
            Plots::instance()->addHistoryCurve(0, nodeHit(node), Models::instance()->current(), scalar.id());
        ASSERT_NE(curve, nullptr);
        Numbers x;
        Numbers y;
        for (size_t i = 0; i < States::instance()->count(); ++i) {
            States::instance()->setCurrentIndex(i);
            app::Parts::instance()->setCurrentIndex(0);
            const ug::DataPartScalar* values = Results::instance()->currentDataPartScalar(scalar);
            ASSERT_NE(values, nullptr);
            x.push_back(States::instance()->currentInfo().referenceValue());
            y.push_back(values->value(node));
        }
        EXPECT_EQ(x.size(), 5u);
        EXPECT_EQ(curve->x(), x);
        EXPECT_EQ(curve->y(), y);
    }

    ResultInfo custom(const ResultInfo& scalar, const Str& name) {
        Results::instance()->add(scalar, name);
        return Results::instance()->scalarInfo(name);
    }
};

TEST_F(PlotsHistoryOfAFileTest, AScalarOfTheFileAgreesWithWhatTheStatesHold) {
    for (const char* name : {"PE", "ERROR"}) {
        for (const size_t node : {0, 1, 100}) {
            expectAgreement(Results::instance()->scalarInfo(name), node);
        }
    }
}

TEST_F(PlotsHistoryOfAFileTest, AComputedScalarAgreesWithWhatTheStatesHold) {
    const ResultInfo motion = Results::instance()->displacementInfo("DISP");
    const ResultInfo stress = Results::instance()->tensorInfo("STRESS");
    const ResultInfo scalars[] = {custom(l2Norm(motion), "Length"), custom(vonMises(stress), "Mises")};
    for (const ResultInfo& scalar : scalars) {
        for (const size_t node : {0, 1, 100}) {
            expectAgreement(scalar, node);
        }
    }
}

} // namespace
