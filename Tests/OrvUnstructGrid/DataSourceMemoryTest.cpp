#include "OrvUnstructGrid/OrvUnstructGrid.h"

#include "Tests/OrvUnstructGrid/CustomResults.h"
#include "Tests/Support/AssertRecorder.h"
#include "Tests/Support/MemoryModels.h"

#include <gtest/gtest.h>

using namespace orv::ug;
using orv::UNDEFINED_DOUBLE;
using orvtest::AssertRecorder;
using orvtest::FailedAssert;
using orvtest::MemoryModel;
using orvtest::modelValue;
using orvtest::sumOf;

namespace {

const std::string here = "OrvUnstructGrid/DataSourceMemory";

class DataSourceMemoryTest : public testing::Test {
protected:
    bool load(int stateId, const std::vector<ResultInfo>& results) {
        DataStateSpec spec;
        spec.setResultIds(results);
        return model.source->loadDataState(stateId, spec, &error);
    }

    std::string failedSet(int stateId, const ResultInfo& info, std::size_t geometry, std::size_t part,
                          const std::vector<double>& values) {
        EXPECT_FALSE(model.source->setValues(stateId, info, geometry, part, values, &error));
        return error.message().toStdString();
    }

    MemoryModel model;
    Error error;
};

TEST_F(DataSourceMemoryTest, DirectoryListsWhatHasBeenAdded) {
    const DataSourceDirectory* directory = model.source->directory();
    EXPECT_EQ(directory->simulationInfo().filename(), "memory.model");
    EXPECT_EQ(directory->geometryCountPerState(), 2u);
    ASSERT_EQ(directory->partInfos(0).size(), 3u);
    EXPECT_EQ(directory->partInfos(0)[2].name(), "Roof");
    EXPECT_EQ(directory->partInfos(0)[2].id(), 3);
    ASSERT_EQ(directory->partInfos(1).size(), 2u);
    EXPECT_EQ(directory->partInfos(1)[0].id(), 1);
    EXPECT_EQ(directory->stateInfos().size(), 3u);
    EXPECT_EQ(directory->scalarResultInfos().size(), 2u);
}

TEST_F(DataSourceMemoryTest, StatesShareTheGeometries) {
    EXPECT_EQ(model.state(1)->geometry(0), model.state(3)->geometry(0));
    EXPECT_EQ(model.state(1)->geometryCount(), 2u);
    EXPECT_EQ(model.state(1)->geometry(1)->partCount(), 2u);
}

TEST_F(DataSourceMemoryTest, ValuesAreThereAtOnce) {
    DataState* state = model.state(2);
    DataResultGroup* group = state->results(state->geometry(0));
    DataPartScalar* part = group->scalar(group->scalarIndex(model.temperature.id()))->part(1);
    ASSERT_EQ(part->itemCount(), 12u); // 2 cubes in a row have 3 planes of 4 nodes.
    EXPECT_EQ(part->value(5), 12115.0);
    EXPECT_EQ(part->minimum(), 12110.0);
    EXPECT_EQ(part->maximum(), 12119.0);
}

TEST_F(DataSourceMemoryTest, LoadingWhatIsThereChangesNothing) {
    DataState* state = model.state(2);
    const DataResult* before = state->results(state->geometry(0))->find(model.stress);
    EXPECT_TRUE(load(2, {model.stress, model.temperature}));
    EXPECT_EQ(state->results(state->geometry(0))->find(model.stress), before);
    EXPECT_TRUE(error.isEmpty());
}

TEST_F(DataSourceMemoryTest, EverySetValueHasItsPlace) {
    for (int id : {2, 3}) {
        DataState* state = model.state(id);
        std::size_t partInModel = 0;
        for (std::size_t g = 0; g < state->geometryCount(); ++g) {
            for (std::size_t p = 0; p < state->geometry(g)->partCount(); ++p, ++partInModel) {
                const DataPartValues* part = state->results(state->geometry(g))->find(model.stress)->values(p);
                ASSERT_EQ(part->itemCount(), state->geometry(g)->part(p)->elements()->elementCount());
                for (std::size_t i = 0; i < part->itemCount(); ++i) {
                    for (std::size_t c = 0; c < 6; ++c) {
                        EXPECT_EQ(part->values()[6 * i + c], modelValue(id, model.stress, partInModel, i, c));
                    }
                }
            }
        }
    }
}

TEST_F(DataSourceMemoryTest, ResultsExistWhereValuesWereSet) {
    const DataSourceDirectory* directory = model.source->directory();
    EXPECT_FALSE(directory->hasResult(1, model.velocity));
    EXPECT_TRUE(directory->hasResult(2, model.velocity));
    EXPECT_FALSE(directory->hasResult(3, model.pressure));
    EXPECT_FALSE(load(1, {model.velocity}));
    EXPECT_EQ(error.message(),
              "Result 'Velocity' has no values in state 'Step 1' of 'memory.model': choose a state that has it");
}

TEST_F(DataSourceMemoryTest, ModelIsConsistent) {
    for (std::size_t g = 0; g < 2; ++g) {
        const DataGeometry* geometry = model.state(1)->geometry(g);
        for (std::size_t p = 0; p < geometry->partCount(); ++p) {
            EXPECT_TRUE(geometry->part(p)->isConsistent());
            EXPECT_EQ(geometry->part(p)->partId(), model.source->directory()->partInfos(g)[p].id());
        }
    }
}

TEST_F(DataSourceMemoryTest, PartIdsGoOnFromTheLargest) {
    orv::PtrRef<DataSourceMemory> source(new DataSourceMemory(1));
    source->addGeometry()->addPart(7);
    EXPECT_EQ(source->addPart(0, "next")->partId(), 8);
    source->addGeometry();
    EXPECT_EQ(source->addPart(1, "first")->partId(), 1);
}

TEST_F(DataSourceMemoryTest, MeshIsClosedOnceThereAreStates) {
    AssertRecorder recorder;
    EXPECT_EQ(model.source->addGeometry(), nullptr);
    EXPECT_EQ(recorder.take(), (std::vector<FailedAssert>{{here, "stateCount() == 0", {}}}));
    EXPECT_EQ(model.source->addPart(0, "late"), nullptr);
    EXPECT_EQ(recorder.take(), (std::vector<FailedAssert>{{here, "stateCount() == 0", {}}}));
    EXPECT_EQ(model.source->directory()->partInfos(0).size(), 3u);
    EXPECT_EQ(model.source->directory()->geometryCountPerState(), 2u);
}

TEST_F(DataSourceMemoryTest, PartNeedsAGeometry) {
    AssertRecorder recorder;
    orv::PtrRef<DataSourceMemory> source(new DataSourceMemory(1));
    EXPECT_EQ(source->addPart(0, "x"), nullptr);
    EXPECT_EQ(recorder.take(), (std::vector<FailedAssert>{{here, "geometryIndex < geometryCount", {}}}));
}

TEST_F(DataSourceMemoryTest, RefusesStatesWithoutAnIdOfTheirOwn) {
    EXPECT_FALSE(model.source->addState(StateInfo(2, "again", StateInfo::TIME, 9)));
    EXPECT_FALSE(model.source->addState(StateInfo()));
    EXPECT_EQ(model.source->stateCount(), 3u);
    EXPECT_TRUE(model.source->addState(StateInfo(0, "zero", StateInfo::TIME, 9)));
    EXPECT_EQ(model.source->stateCount(), 4u);
}

TEST_F(DataSourceMemoryTest, NumbersResultsByType) {
    EXPECT_EQ(model.temperature.id(), 1);
    EXPECT_EQ(model.pressure.id(), 2);
    EXPECT_EQ(model.velocity.id(), 1);
    model.source->directory()->setCustomResultInfo(sumOf("x", {model.pressure}));
    EXPECT_EQ(model.source->addResult(SCALAR, "next", PER_NODE).id(), 3);
    EXPECT_FALSE(model.source->addResult(NO_RESULT_TYPE, "x", PER_NODE).isValid());
    EXPECT_FALSE(model.source->addResult(SCALAR, "x", UNKNOWN_MAPPING).isValid());
}

TEST_F(DataSourceMemoryTest, PartsWithoutValuesAreUndefined) {
    const ResultInfo info = model.source->addResult(SCALAR, "New", PER_ELEMENT);
    ASSERT_TRUE(model.source->setValues(1, info, 0, 1, std::vector<double>{4, 5}, &error));
    DataState* state = model.state(1);
    EXPECT_TRUE(state->hasLoaded(info));
    const DataResult* first = state->results(state->geometry(0))->find(info);
    const DataResult* second = state->results(state->geometry(1))->find(info);
    EXPECT_EQ(first->values(0)->values()[0], UNDEFINED_DOUBLE);
    EXPECT_EQ(first->values(1)->values()[1], 5.0);
    ASSERT_EQ(second->values(1)->itemCount(), 3u);
    EXPECT_EQ(second->values(1)->values()[2], UNDEFINED_DOUBLE);
    // Values of one part leave those of another alone.
    ASSERT_TRUE(model.source->setValues(1, info, 0, 0, std::vector<double>{3}, &error));
    EXPECT_EQ(first->values(0)->values()[0], 3.0);
    EXPECT_EQ(first->values(1)->values()[1], 5.0);
}

TEST_F(DataSourceMemoryTest, NewValuesAreComputedWithAnew) {
    const ResultInfo sum = sumOf("x", {model.pressure});
    model.source->directory()->setCustomResultInfo(sum);
    ASSERT_TRUE(load(1, {sum}));
    ASSERT_TRUE(load(2, {sum}));
    ASSERT_TRUE(model.source->setValues(1, model.pressure, 0, 0, std::vector<double>{-7}, &error));
    EXPECT_FALSE(model.state(1)->hasLoaded(sum));
    EXPECT_TRUE(model.state(2)->hasLoaded(sum));
    ASSERT_TRUE(load(1, {sum}));
    EXPECT_EQ(model.state(1)->results(model.state(1)->geometry(0))->find(sum)->values(0)->values()[0], -7.0);
}

TEST_F(DataSourceMemoryTest, ValuesOutliveAnyBudget) {
    model.source->setResultByteBudget(0);
    for (int id : {1, 2, 3}) {
        ASSERT_TRUE(load(id, {model.temperature}));
    }
    for (int id : {1, 2, 3}) {
        EXPECT_TRUE(model.state(id)->hasLoaded(model.temperature));
    }
}

TEST_F(DataSourceMemoryTest, RefusesValuesWithoutAPlace) {
    EXPECT_EQ(failedSet(9, model.pressure, 0, 0, {1}), "There is no state 9 in 'memory.model': its states are 1, 2, 3");
    EXPECT_EQ(failedSet(1, ResultInfo(SCALAR, 9, "Flow", PER_NODE), 0, 0, {1}),
              "Result 'Flow' is not in 'memory.model': make it with addResult()");
    EXPECT_EQ(failedSet(1, sumOf("a+b", {model.pressure}), 0, 0, {1}),
              "Result 'a+b' is not in 'memory.model': make it with addResult()");
    EXPECT_EQ(failedSet(1, ResultInfo(), 0, 0, {1}), "Result '' is not in 'memory.model': make it with addResult()");
    EXPECT_EQ(failedSet(1, model.pressure, 2, 0, {1}), "There is no geometry with index 2 in 'memory.model': it has 2");
    EXPECT_EQ(failedSet(1, model.pressure, 0, 3, {1}),
              "There is no part 3 of geometry 0 in 'memory.model': the geometry has 3 parts");
    EXPECT_EQ(failedSet(1, model.stress, 0, 1, {1}),
              "Result 'Stress' needs 12 values on part 1 of geometry 0 (2 items of 6), not 1");
    EXPECT_FALSE(model.source->setValues(9, model.pressure, 0, 0, {}, nullptr));
}

TEST_F(DataSourceMemoryTest, RefusedValuesChangeNothing) {
    failedSet(1, model.velocity, 0, 0, {1});
    EXPECT_FALSE(model.source->directory()->hasResult(1, model.velocity));
    EXPECT_FALSE(model.state(1)->hasLoaded(model.velocity));
}

TEST_F(DataSourceMemoryTest, TellsWhenValuesWereTakenAway) {
    model.state(1)->removeResult(model.pressure);
    EXPECT_FALSE(load(1, {model.pressure}));
    EXPECT_EQ(error.message(),
              "Result 'Pressure' has been removed from state 'Step 1' of 'memory.model': set its values again");
}

} // namespace
