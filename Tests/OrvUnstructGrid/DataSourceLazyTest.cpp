#include "OrvUnstructGrid/DataSourceLazy.h"

#include "OrvCore/Defines.h"
#include "OrvCore/Ray.h"
#include "OrvUnstructGrid/DataStateSpec.h"
#include "OrvUnstructGrid/Error.h"
#include "OrvUnstructGrid/HitItem.h"
#include "OrvUnstructGrid/UnstructGridModel.h"
#include "Tests/OrvUnstructGrid/CustomResults.h"

#include <gtest/gtest.h>

#include <algorithm>

using namespace orv::ug;
using orv::UNDEFINED_DOUBLE;
using orvtest::CountingGenerator;
using orvtest::doubled;
using orvtest::sumOf;

namespace {

/// Reads 10 * state + id for each of the scalars 1, 2 and 3, on two geometries with one part of 4 nodes each, so a
/// loaded result takes 64 bytes. The file has no values of scalar 3 in state 1.
class CountingSource : public DataSourceLazy {
public:
    explicit CountingSource(bool readsAgain = true) : DataSourceLazy(1), m_readsAgain(readsAgain) {
        directory()->setSimulationInfo(SimulationInfo("beam.frd"));
        std::vector<orv::PtrRef<DataGeometry>> geometries = {orv::PtrRef(new DataGeometry),
                                                             orv::PtrRef(new DataGeometry)};
        for (const orv::PtrRef<DataGeometry>& geometry : geometries) {
            geometry->addPart(1)->nodes()->set(std::vector<double>(12), {});
        }
        for (int id = 1; id <= 5; ++id) {
            addState(StateInfo(id, "Step " + std::to_string(id), StateInfo::TIME, id), geometries);
        }
        for (int id = 1; id <= 3; ++id) {
            const ResultInfo info(SCALAR, id, "r" + std::to_string(id), PER_NODE);
            directory()->addResultInfo(info);
            for (int state = 1; state <= 5; ++state) {
                if (id < 3 || state > 1) {
                    directory()->setHasResult(state, info);
                }
            }
        }
    }

    DataState* stateOfId(int id) {
        return state(stateIndex(id));
    }

    bool load(int stateId, const std::vector<ResultInfo>& infos, Error* error = nullptr) {
        DataStateSpec spec;
        spec.setResultIds(infos);
        return loadDataState(stateId, spec, error);
    }

    double valueIn(int stateId, const ResultInfo& info) {
        DataResultGroup* group = stateOfId(stateId)->results(stateOfId(stateId)->geometry(1));
        return group->find(info)->values(0)->values()[3];
    }

    std::string reads;               ///< "state:id " for each read.
    int failingId = -1;              ///< The result whose reading fails half-way.
    orv::Str failingText = "line 7"; ///< What it says then.
    int sparseId = -1;               ///< The result that is there in the first geometry only.
    bool seeksIn = false;            ///< Whether single values can be read: 100 * geometry + item.
    int seeks = 0;                   ///< How often that was tried.
    std::string loads;               ///< "begin state:id id , reads end " for each load.

protected:
    void beginLoad(const std::vector<ResultInfo>& infos, const DataState& state) override {
        DataSourceLazy::beginLoad(infos, state);
        loads += "begin " + std::to_string(state.id()) + ":";
        for (const ResultInfo& info : infos) {
            loads += std::to_string(info.id()) + " ";
        }
        m_readsBefore = reads.size();
    }

    void endLoad(const DataState& state) override {
        DataSourceLazy::endLoad(state);
        loads += "reads " + reads.substr(m_readsBefore) + "end " + std::to_string(state.id()) + " ";
    }

    bool readResult(const ResultInfo& info, DataState* state, Error* error) override {
        reads += std::to_string(state->id()) + ":" + std::to_string(info.id()) + " ";
        for (std::size_t g = 0; g < 2; ++g) {
            DataPartValues* values = state->results(state->geometry(g))->findOrAdd(info)->values(0);
            values->allocate(4);
            std::fill_n(values->values(), 4, 10.0 * state->id() + info.id());
            if (info.id() == failingId) {
                return failingText.isEmpty() ? false : fail(error, failingText);
            }
            if (info.id() == sparseId) {
                return true;
            }
        }
        return true;
    }

    bool readScalars(const ResultInfo& info, const DataState& state, const ScalarPlace& place,
                     std::span<double> values) override {
        ++seeks;
        if (!seeksIn) {
            return DataSourceLazy::readScalars(info, state, place, values);
        }
        for (std::size_t i = 0; i < values.size(); ++i) {
            values[i] = 100.0 * double(place.geometryIndex) + double(place.firstItem + i);
        }
        return true;
    }

    bool canReadAgain() const override {
        return m_readsAgain ? DataSourceLazy::canReadAgain() : false;
    }

private:
    bool m_readsAgain;
    std::size_t m_readsBefore = 0;
};

class DataSourceLazyTest : public testing::Test {
protected:
    DataSourceLazyTest() : source(new CountingSource) {}

    std::string failedLoad(int stateId, const std::vector<ResultInfo>& infos) {
        Error error;
        EXPECT_FALSE(source->load(stateId, infos, &error));
        return error.message().toStdString();
    }

    ResultInfo added(ResultInfo info) {
        source->directory()->setCustomResultInfo(info);
        return info;
    }

    bool isLoaded(int stateId, const ResultInfo& info) {
        return source->stateOfId(stateId)->hasLoaded(info);
    }

    /// The ids of the states that hold values.
    std::string statesWithValues() {
        std::string ids;
        for (std::size_t i = 0; i < source->stateCount(); ++i) {
            ids += source->state(i)->resultByteCount() > 0 ? std::to_string(source->state(i)->id()) : "";
        }
        return ids;
    }

    orv::PtrRef<CountingSource> source;
    const ResultInfo r1 = ResultInfo(SCALAR, 1, "r1", PER_NODE);
    const ResultInfo r2 = ResultInfo(SCALAR, 2, "r2", PER_NODE);
    const ResultInfo r3 = ResultInfo(SCALAR, 3, "r3", PER_NODE);
};

TEST_F(DataSourceLazyTest, ReadsNothingUntilAsked) {
    EXPECT_EQ(source->reads, "");
    EXPECT_EQ(statesWithValues(), "");
}

TEST_F(DataSourceLazyTest, ReadsWhatIsNamedOnce) {
    ASSERT_TRUE(source->load(2, {r2, r1, r2}));
    EXPECT_EQ(source->reads, "2:2 2:1 ");
    EXPECT_EQ(source->valueIn(2, r1), 21.0);
    EXPECT_FALSE(isLoaded(2, r3));
    EXPECT_EQ(statesWithValues(), "2");
    ASSERT_TRUE(source->load(2, {r1, r3}));
    EXPECT_EQ(source->reads, "2:2 2:1 2:3 ");
}

TEST_F(DataSourceLazyTest, NamingNothingLoadsNothing) {
    Error error;
    EXPECT_TRUE(source->load(2, {}, &error));
    EXPECT_TRUE(error.isEmpty());
    EXPECT_EQ(source->reads, "");
}

TEST_F(DataSourceLazyTest, KeepsWhatIsThere) {
    ASSERT_TRUE(source->load(2, {r1}));
    const DataResult* before = source->stateOfId(2)->results(source->stateOfId(2)->geometry(0))->find(r1);
    ASSERT_TRUE(source->load(2, {r1, r2}));
    EXPECT_EQ(source->stateOfId(2)->results(source->stateOfId(2)->geometry(0))->find(r1), before);
}

TEST_F(DataSourceLazyTest, AResultIsKnownByItsIdentityNotByItsName) {
    ResultInfo renamed = r1;
    renamed.setName("renamed");
    ASSERT_TRUE(source->load(2, {renamed, r1}));
    EXPECT_EQ(source->reads, "2:1 ");
}

TEST_F(DataSourceLazyTest, ComputesACustomResultFromWhatItRestsOn) {
    const ResultInfo sum = added(sumOf("r1+r2", {r1, r2}));
    ASSERT_TRUE(source->load(2, {sum}));
    EXPECT_EQ(source->valueIn(2, sum), 43.0);
    EXPECT_TRUE(isLoaded(2, r1));
    EXPECT_TRUE(isLoaded(2, r2));
}

TEST_F(DataSourceLazyTest, LoadsThroughTheCallersOwnCopy) {
    const ResultInfo own = sumOf("r1+r2", {r1, r2});
    ResultInfo renamed = own;
    renamed.setName("Sum");
    added(renamed);
    ASSERT_TRUE(source->load(2, {own}));
    EXPECT_TRUE(isLoaded(2, renamed));
}

TEST_F(DataSourceLazyTest, DropsIntermediatesAndKeepsRegisteredOnes) {
    const ResultInfo middle = sumOf("r1+r2", {r1, r2});
    const ResultInfo registered = added(sumOf("r2+r2", {r2, r2}));
    const ResultInfo top = added(sumOf("top", {middle, registered, middle}));
    ASSERT_TRUE(source->load(2, {top}));
    EXPECT_EQ(source->valueIn(2, top), 43.0 + 44.0 + 43.0);
    EXPECT_FALSE(isLoaded(2, middle));
    EXPECT_TRUE(isLoaded(2, registered));
}

TEST_F(DataSourceLazyTest, KeepsAnIntermediateUntilItsLastUse) {
    orv::PtrRef<CountingGenerator> generator(new CountingGenerator(2));
    const ResultInfo middle = sumOf("r1+r2", {r1, r2}, generator);
    const ResultInfo first = added(sumOf("first", {middle}));
    const ResultInfo second = added(sumOf("second", {first, middle}));
    ASSERT_TRUE(source->load(2, {first, second}));
    EXPECT_EQ(source->valueIn(2, second), 86.0);
    EXPECT_EQ(generator->runs, 1);
    EXPECT_FALSE(isLoaded(2, middle));
}

TEST_F(DataSourceLazyTest, KeepsAnIntermediateThatWasThereBefore) {
    const ResultInfo middle = sumOf("r1+r2", {r1, r2});
    ASSERT_TRUE(source->load(2, {r1, r2}));
    ASSERT_TRUE(CustomResultGenerator::compute(source.get(), middle, source->stateOfId(2)));
    ASSERT_TRUE(source->load(2, {added(sumOf("top", {middle}))}));
    EXPECT_TRUE(isLoaded(2, middle));
}

TEST_F(DataSourceLazyTest, SharedArgumentsAreComputedOnce) {
    const ResultInfo top = added(doubled(r1, 60));
    ASSERT_TRUE(source->load(1, {top}));
    EXPECT_EQ(source->valueIn(1, top), 11.0 * 1152921504606846976.0); // 2 to the power of 60.
    EXPECT_EQ(source->stateOfId(1)->resultByteCount(), 2u * 64u);     // Of r1 and top: the others went on the way.
}

TEST_F(DataSourceLazyTest, DepthNeedsNoStack) {
    const ResultInfo top = added(doubled(r1, 50000));
    ASSERT_TRUE(source->load(1, {top}));
    EXPECT_TRUE(isLoaded(1, top));
    EXPECT_EQ(source->stateOfId(1)->resultByteCount(), 2u * 64u);
}

TEST_F(DataSourceLazyTest, FillsUndefinedWhatTheFileLeavesOut) {
    source->sparseId = 1;
    ASSERT_TRUE(source->load(1, {r1}));
    DataResultGroup* group = source->stateOfId(1)->results(source->stateOfId(1)->geometry(1));
    ASSERT_TRUE(isLoaded(1, r1));
    ASSERT_EQ(group->find(r1)->values(0)->itemCount(), 4u);
    EXPECT_EQ(source->valueIn(1, r1), UNDEFINED_DOUBLE);
}

TEST_F(DataSourceLazyTest, FillsUndefinedWhatAGeneratorLeavesOut) {
    class Idle : public CustomResultGenerator {
    public:
        Idle() : CustomResultGenerator(1) {}
        bool generate(const DataSource*, const ResultInfo&, const std::vector<ResultInfo>&, DataState*) override {
            return true;
        }
    };
    const ResultInfo idle = added(sumOf("idle", {r1}, orv::PtrRef<CustomResultGenerator>(new Idle)));
    ASSERT_TRUE(source->load(1, {idle}));
    ASSERT_TRUE(isLoaded(1, idle));
    EXPECT_EQ(source->valueIn(1, idle), UNDEFINED_DOUBLE);
}

TEST_F(DataSourceLazyTest, RefusesAnUnknownState) {
    EXPECT_EQ(failedLoad(9, {r1}), "There is no state 9 in 'beam.frd': its states are 1, 2, 3, 4, 5");
    EXPECT_FALSE(source->load(9, {r1}, nullptr));
}

TEST_F(DataSourceLazyTest, RefusesAnUnregisteredCustomResult) {
    EXPECT_EQ(failedLoad(2, {sumOf("a+b", {r1, r2})}),
              "Result 'a+b' is custom and not registered in 'beam.frd': add it first");
    EXPECT_EQ(source->reads, "");
}

TEST_F(DataSourceLazyTest, RefusesAStrangerAndAnInvalidResult) {
    EXPECT_EQ(failedLoad(2, {ResultInfo(VECTOR, 1, "Flow", PER_NODE)}),
              "Result 'Flow' is not in 'beam.frd': take one from its directory");
    EXPECT_EQ(failedLoad(2, {ResultInfo()}),
              "An invalid result was asked for: take one from the directory of 'beam.frd'");
}

TEST_F(DataSourceLazyTest, RefusesAResultWithoutValuesInTheState) {
    EXPECT_EQ(failedLoad(1, {r3}),
              "Result 'r3' has no values in state 'Step 1' of 'beam.frd': choose a state that has it");
    EXPECT_EQ(failedLoad(1, {added(sumOf("a", {r1, sumOf("b", {r3})}))}),
              "Result 'a' rests on 'r3', which has no values in state 'Step 1' of 'beam.frd': choose a state that has "
              "it");
    EXPECT_EQ(source->reads, "");
}

TEST_F(DataSourceLazyTest, RefusesACustomResultThatRestsOnAStranger) {
    EXPECT_EQ(failedLoad(2, {added(sumOf("a", {r1, ResultInfo(SCALAR, 8, "strange", PER_NODE)}))}),
              "Result 'a' rests on 'strange', which is not in 'beam.frd': build it from results that are");
}

TEST_F(DataSourceLazyTest, TellsWhatTheReaderSays) {
    source->failingId = 2;
    EXPECT_EQ(failedLoad(2, {r2}), "line 7");
    source->failingText = "";
    EXPECT_EQ(failedLoad(2, {r2}),
              "Result 'r2' could not be read for state 'Step 2' of 'beam.frd': see whether the file is intact");
    EXPECT_FALSE(source->load(2, {r2}, nullptr));
}

TEST_F(DataSourceLazyTest, TellsWhenAGeneratorGivesUp) {
    std::vector<ResultInfo> arguments = {r1};
    EXPECT_EQ(failedLoad(2, {added(ResultInfo(SCALAR, "none", PER_NODE, arguments, nullptr))}),
              "Result 'none' could not be computed for state 'Step 2' of 'beam.frd': it was made without a generator");
    orv::PtrRef<CustomResultGenerator> generator(new CustomResultGenerator(1));
    generator->setArgumentType(0, VECTOR);
    EXPECT_EQ(failedLoad(2, {added(sumOf("wrong", {r1}, generator))}),
              "Result 'wrong' could not be computed for state 'Step 2' of 'beam.frd': see whether types, mappings and "
              "parts of its arguments fit together, which are 'r1'");
}

TEST_F(DataSourceLazyTest, FailureBringsNothing) {
    ASSERT_TRUE(source->load(2, {r1}));
    orv::PtrRef<CustomResultGenerator> generator(new CustomResultGenerator(1));
    generator->setArgumentType(0, VECTOR);
    const ResultInfo good = added(sumOf("good", {r1, r2}));
    const ResultInfo bad = added(sumOf("bad", {r2}, generator));
    failedLoad(2, {good, r3, bad});
    EXPECT_TRUE(isLoaded(2, r1));
    EXPECT_EQ(source->stateOfId(2)->resultByteCount(), 64u);
    for (std::size_t g = 0; g < 2; ++g) {
        EXPECT_EQ(source->stateOfId(2)->results(source->stateOfId(2)->geometry(g))->all().size(), 1u);
    }
}

TEST_F(DataSourceLazyTest, AHalfReadResultGoesToo) {
    source->failingId = 2;
    failedLoad(2, {r1, r2});
    EXPECT_EQ(statesWithValues(), "");
    EXPECT_TRUE(source->stateOfId(2)->results(source->stateOfId(2)->geometry(0))->all().empty());
}

TEST_F(DataSourceLazyTest, BudgetIsOneGibibyteUntilSet) {
    EXPECT_EQ(source->resultByteBudget(), 1073741824u);
    source->setResultByteBudget(100);
    EXPECT_EQ(source->resultByteBudget(), 100u);
}

TEST_F(DataSourceLazyTest, DropsTheLongestUnusedStatesBeyondTheBudget) {
    source->setResultByteBudget(2 * 64);
    ASSERT_TRUE(source->load(1, {r1}));
    ASSERT_TRUE(source->load(2, {r1}));
    EXPECT_EQ(statesWithValues(), "12");
    ASSERT_TRUE(source->load(3, {r1}));
    EXPECT_EQ(statesWithValues(), "23");
    ASSERT_TRUE(source->load(2, {r1})); // Brings nothing, but is a use.
    ASSERT_TRUE(source->load(4, {r1}));
    EXPECT_EQ(statesWithValues(), "24");
    ASSERT_TRUE(source->load(3, {r1}));
    EXPECT_EQ(statesWithValues(), "34");
    EXPECT_EQ(source->reads, "1:1 2:1 3:1 4:1 3:1 ");
}

TEST_F(DataSourceLazyTest, DropsAsManyStatesAsItTakes) {
    source->setResultByteBudget(3 * 64);
    for (int id : {1, 2, 3}) {
        ASSERT_TRUE(source->load(id, {r1}));
    }
    ASSERT_TRUE(source->load(4, {r1, r2, r3}));
    EXPECT_EQ(statesWithValues(), "4");
}

TEST_F(DataSourceLazyTest, ALoadIsNeverDroppedByItself) {
    source->setResultByteBudget(0);
    ASSERT_TRUE(source->load(1, {r1, r2}));
    EXPECT_EQ(statesWithValues(), "1");
    ASSERT_TRUE(source->load(2, {r1}));
    EXPECT_EQ(statesWithValues(), "2");
}

TEST_F(DataSourceLazyTest, CurrentStatesOfModelsAreNeverDropped) {
    orv::PtrRef<UnstructGridModel> model(new UnstructGridModel);
    model->setDataSource(source.get());
    model->modelSpec().setStateId(1);
    source->setResultByteBudget(64);
    for (int id : {1, 2, 3}) {
        ASSERT_TRUE(source->load(id, {r1}));
    }
    EXPECT_EQ(statesWithValues(), "13");
    model->modelSpec().setStateId(3);
    ASSERT_TRUE(source->load(4, {r1}));
    EXPECT_EQ(statesWithValues(), "34");
}

TEST_F(DataSourceLazyTest, RemovedResultsLeaveTheAccount) {
    source->setResultByteBudget(4 * 64);
    const ResultInfo sum = added(sumOf("x", {r1}));
    ASSERT_TRUE(source->load(1, {sum}));
    ASSERT_TRUE(source->load(2, {sum}));
    source->directory()->removeCustomResultInfo(sum);
    ASSERT_TRUE(source->load(3, {r1, r2}));
    EXPECT_EQ(statesWithValues(), "123");
    ASSERT_TRUE(source->load(4, {r1}));
    EXPECT_EQ(statesWithValues(), "234");
}

TEST_F(DataSourceLazyTest, WhatCannotBeReadAgainIsNeitherDroppedNorCounted) {
    source = new CountingSource(false);
    source->setResultByteBudget(64);
    const ResultInfo sum = added(sumOf("x", {r1}));
    ASSERT_TRUE(source->load(1, {sum}));
    ASSERT_TRUE(source->load(2, {r1, r2}));
    EXPECT_TRUE(isLoaded(1, sum));
    ASSERT_TRUE(source->load(2, {sum}));
    EXPECT_FALSE(isLoaded(1, sum));
    EXPECT_TRUE(isLoaded(1, r1));
    EXPECT_EQ(statesWithValues(), "12");
}

TEST_F(DataSourceLazyTest, AFailedLoadIsNoUse) {
    source->setResultByteBudget(2 * 64);
    ASSERT_TRUE(source->load(1, {r1}));
    ASSERT_TRUE(source->load(2, {r1}));
    failedLoad(1, {r3});
    ASSERT_TRUE(source->load(3, {r1}));
    EXPECT_EQ(statesWithValues(), "23");
}

class UnreadMeshTest : public DataSourceLazyTest {
protected:
    /// Makes the part of the second geometry, which all states share, one that is still to be read.
    void leaveUnread(bool isGood) {
        source->state(0)->geometry(1)->part(0)->readLater(
            {4, 0, 0}, [this, isGood](DataNodes* nodes, DataElements*, Error* problem) {
                source->reads += "mesh ";
                nodes->set(std::vector<double>(12), {});
                return isGood || fail(problem, "damaged");
            });
    }
};

TEST_F(UnreadMeshTest, IsReadBeforeValues) {
    leaveUnread(true);
    ASSERT_TRUE(source->load(2, {r1}));
    ASSERT_TRUE(source->load(2, {r2}));
    EXPECT_EQ(source->reads, "mesh 2:1 2:2 ");
}

// Custom results are not read, and a failure ends a load too.
TEST_F(UnreadMeshTest, ALoadBeginsAndEndsAroundWhatIsRead) {
    leaveUnread(true);
    ASSERT_TRUE(source->load(2, {added(sumOf("a", {r1, r2})), r3}));
    EXPECT_EQ(source->loads, "begin 2:1 2 3 reads mesh 2:1 2:2 2:3 end 2 ");
    source->loads.clear();
    source->failingId = 2;
    EXPECT_FALSE(source->load(3, {r2, r1}));
    EXPECT_EQ(source->loads, "begin 3:2 1 reads 3:2 end 3 ");
    source->loads.clear();
    failedLoad(1, {r3});
    EXPECT_EQ(source->loads, "");
}

TEST_F(UnreadMeshTest, IsReadWhenNothingElseIsLoaded) {
    leaveUnread(true);
    EXPECT_TRUE(source->load(2, {}));
    EXPECT_EQ(source->reads, "mesh ");
}

TEST_F(UnreadMeshTest, HasNoValuesWhenItCannotBeRead) {
    leaveUnread(false);
    EXPECT_EQ(failedLoad(2, {r1}), "damaged");
    EXPECT_EQ(failedLoad(3, {r1}), "damaged");
    EXPECT_EQ(source->reads, "mesh ");
    EXPECT_EQ(statesWithValues(), "");
    // What is wrong with the question comes first.
    EXPECT_EQ(failedLoad(9, {r1}), "There is no state 9 in 'beam.frd': its states are 1, 2, 3, 4, 5");
    EXPECT_EQ(failedLoad(1, {r3}),
              "Result 'r3' has no values in state 'Step 1' of 'beam.frd': choose a state that has it");
}

TEST_F(UnreadMeshTest, IsNotNeededForSingleValuesUntilItIsDamaged) {
    leaveUnread(false);
    source->seeksIn = true;
    double value = 0;
    Error error;
    EXPECT_TRUE(source->copyScalars(2, r1, {1, 0, 3}, {&value, 1}, &error));
    EXPECT_EQ(value, 103);
    EXPECT_EQ(source->reads, "");
    EXPECT_EQ(failedLoad(2, {r1}), "damaged");
    EXPECT_FALSE(source->copyScalars(2, r1, {1, 0, 3}, {&value, 1}, &error));
    EXPECT_EQ(error.message(), "damaged");
}

/// Four states, each with a mesh of its own: a triangle at z = id, and a scalar on its nodes.
class MovingSource : public DataSourceLazy {
public:
    MovingSource() : DataSourceLazy(1) {
        directory()->addGeometryPartInfos({PartInfo(1, "plate")});
        directory()->addResultInfo(r1);
        for (int id = 1; id <= 4; ++id) {
            const orv::PtrRef<DataGeometry> geometry(new DataGeometry);
            geometry->addPart(1)->readLater([this, id](DataNodes* nodes, DataElements* elements, Error*) {
                reads += "mesh " + std::to_string(id) + " ";
                const double z = id;
                nodes->set({0, 0, z, 1, 0, z, 0, 1, z}, {});
                elements->set({TRIANGLE}, {0, 1, 2}, {});
                return true;
            });
            addState(StateInfo(id, "Step " + std::to_string(id), StateInfo::TIME, id), {geometry});
            directory()->setHasResult(id, r1);
        }
    }

    bool load(int stateId) {
        DataStateSpec spec;
        spec.setResultIds({r1});
        return loadDataState(stateId, spec, nullptr);
    }

    DataPart* partOf(int stateId) {
        return state(stateIndex(stateId))->geometry(0)->part(0);
    }

    /// The ids of the states whose meshes are in memory.
    std::string statesWithMeshes() {
        std::string ids;
        for (int id = 1; id <= 4; ++id) {
            ids += partOf(id)->bytesToGiveBack() > 0 ? std::to_string(id) : "";
        }
        return ids;
    }

    std::string reads;
    const ResultInfo r1 = ResultInfo(SCALAR, 1, "r1", PER_NODE);

protected:
    bool readResult(const ResultInfo& info, DataState* state, Error*) override {
        DataPartValues* values = state->results(state->geometry(0))->findOrAdd(info)->values(0);
        values->allocate(3);
        std::fill_n(values->values(), 3, 10.0 * state->id());
        return true;
    }
};

class MovingMeshTest : public testing::Test {
protected:
    MovingMeshTest() : source(new MovingSource) {}

    orv::PtrRef<MovingSource> source;
};

TEST_F(MovingMeshTest, GoesWithTheValuesOfItsStateAndIsReadAgain) {
    source->setResultByteBudget(0);
    ASSERT_TRUE(source->load(1));
    const DataNodes* nodes = source->partOf(1)->nodes();
    ASSERT_TRUE(source->load(2));
    EXPECT_EQ(source->statesWithMeshes(), "2");
    EXPECT_EQ(source->partOf(1)->byteCount(), DataPart(1).byteCount());
    EXPECT_EQ(source->partOf(1)->itemCount(PER_NODE), 3u);
    EXPECT_EQ(source->reads, "mesh 1 mesh 2 ");
    EXPECT_EQ(source->partOf(1)->nodes(), nodes);
    EXPECT_EQ(nodes->node(2), orv::Vec3d(0, 1, 1));
    ASSERT_TRUE(source->load(1));
    EXPECT_EQ(source->reads, "mesh 1 mesh 2 mesh 1 ");
    EXPECT_EQ(source->statesWithMeshes(), "1");
}

TEST_F(MovingMeshTest, CountsLikeValues) {
    ASSERT_TRUE(source->load(1));
    const std::size_t bytes = source->partOf(1)->byteCount() + 3 * sizeof(double);
    source->setResultByteBudget(2 * bytes);
    ASSERT_TRUE(source->load(2));
    EXPECT_EQ(source->statesWithMeshes(), "12");
    ASSERT_TRUE(source->load(3));
    EXPECT_EQ(source->statesWithMeshes(), "23");
    source->setResultByteBudget(2 * bytes - 1);
    ASSERT_TRUE(source->load(3));
    EXPECT_EQ(source->statesWithMeshes(), "3");
}

TEST_F(MovingMeshTest, GoesFirstWhenItsStateWasNeverLoaded) {
    ASSERT_TRUE(source->load(1));
    const std::size_t bytes = source->partOf(1)->byteCount() + 3 * sizeof(double);
    source->setResultByteBudget(2 * bytes);
    source->partOf(4)->nodes();
    source->partOf(3)->nodes();
    ASSERT_TRUE(source->load(2));
    EXPECT_EQ(source->statesWithMeshes(), "12");
}

TEST_F(MovingMeshTest, StaysWhileAModelShowsIt) {
    orv::PtrRef<UnstructGridModel> model(new UnstructGridModel);
    model->setDataSource(source.get());
    model->modelSpec().setStateId(1);
    orv::Ray ray;
    ray.setOrigin({0.2, 0.2, 9});
    ray.setDirection({0, 0, -1});
    HitItem hit;
    ASSERT_TRUE(model->rayIntersect(ray, &hit));
    source->setResultByteBudget(0);
    model->modelSpec().setStateId(2);
    ASSERT_TRUE(source->load(3));
    EXPECT_EQ(source->statesWithMeshes(), "13"); // It is shown until the model is looked at again.
    ASSERT_TRUE(model->rayIntersect(ray, &hit));
    ASSERT_TRUE(source->load(4));
    EXPECT_EQ(source->statesWithMeshes(), "24");
}

class CopyScalarsTest : public DataSourceLazyTest {
protected:
    /// Empty, and a message, when it fails.
    std::vector<double> copy(int stateId, const ResultInfo& info, const ScalarPlace& place, std::size_t count) {
        std::vector<double> values(count);
        Error error;
        const bool isCopied = source->copyScalars(stateId, info, place, values, &error);
        message = error.message().toStdString();
        EXPECT_EQ(isCopied, message.empty());
        return isCopied ? values : std::vector<double>();
    }

    using Values = std::vector<double>;
    std::string message;
};

TEST_F(CopyScalarsTest, ReadsTheValuesAlone) {
    source->seeksIn = true;
    EXPECT_EQ(copy(2, r1, {1, 0, 2}, 2), (Values{102, 103}));
    EXPECT_EQ(source->reads, "");
    EXPECT_EQ(statesWithValues(), "");
}

TEST_F(CopyScalarsTest, LoadsWhereItCannotSeek) {
    EXPECT_EQ(copy(2, r1, {1, 0, 3}, 1), Values{21});
    EXPECT_EQ(source->seeks, 1);
    EXPECT_EQ(source->reads, "2:1 ");
    EXPECT_TRUE(isLoaded(2, r1));
}

TEST_F(CopyScalarsTest, TakesWhatIsLoadedFromMemory) {
    source->seeksIn = true;
    ASSERT_TRUE(source->load(2, {r1}));
    EXPECT_EQ(copy(2, r1, {0, 0, 0}, 4), (Values{21, 21, 21, 21}));
    EXPECT_EQ(source->seeks, 0);
    EXPECT_EQ(source->reads, "2:1 ");
}

TEST_F(CopyScalarsTest, ComputesCustomResults) {
    source->seeksIn = true;
    const ResultInfo sum = added(sumOf("sum", {r1, r2}));
    EXPECT_EQ(copy(2, sum, {0, 0, 1}, 1), Values{43});
    EXPECT_EQ(source->seeks, 0);
}

TEST_F(CopyScalarsTest, StaysWithinTheBudget) {
    source->setResultByteBudget(64);
    copy(1, r1, {0, 0, 0}, 1);
    copy(2, r1, {0, 0, 0}, 1);
    EXPECT_EQ(statesWithValues(), "2");
}

TEST_F(CopyScalarsTest, RefusesWhatDoesNotExist) {
    source->seeksIn = true;
    const std::string noItem = "Result 'r1' has no such item in state 'Step 2' of 'beam.frd'";
    EXPECT_EQ(copy(9, r1, {0, 0, 0}, 1), Values());
    EXPECT_EQ(message, "There is no state 9 in 'beam.frd': its states are 1, 2, 3, 4, 5");
    EXPECT_EQ(copy(2, ResultInfo(SCALAR, 9, "r9", PER_NODE), {0, 0, 0}, 1), Values());
    EXPECT_EQ(message, "Result 'r9' is not in 'beam.frd': take one from its directory");
    EXPECT_EQ(copy(2, sumOf("sum", {r1}), {0, 0, 0}, 1), Values());
    EXPECT_EQ(message, "Result 'sum' is custom and not registered in 'beam.frd': add it first");
    EXPECT_EQ(copy(1, r3, {0, 0, 0}, 1), Values());
    EXPECT_EQ(message, "Result 'r3' has no values in state 'Step 1' of 'beam.frd': choose a state that has it");
    const std::size_t none = orv::UNDEFINED_SIZE_T;
    for (const ScalarPlace& place :
         {ScalarPlace{2, 0, 0}, ScalarPlace{none, 0, 0}, ScalarPlace{0, 1, 0}, ScalarPlace{0, none, 0},
          ScalarPlace{0, 0, 4}, ScalarPlace{0, 0, 5}, ScalarPlace{0, 0, none}}) {
        EXPECT_EQ(copy(2, r1, place, 1), Values());
        EXPECT_EQ(message, noItem);
    }
    EXPECT_EQ(copy(2, r1, {0, 0, 1}, 4), Values());
    EXPECT_EQ(message, noItem);
    EXPECT_EQ(source->seeks, 0);
    EXPECT_FALSE(source->copyScalars(9, r1, {0, 0, 0}, {}, nullptr));
}

TEST_F(CopyScalarsTest, RefusesResultsThatAreNoScalars) {
    const ResultInfo vector(VECTOR, 1, "v", PER_NODE);
    source->directory()->addResultInfo(vector);
    source->directory()->setHasResult(2, vector);
    EXPECT_EQ(copy(2, vector, {0, 0, 0}, 1), Values());
    EXPECT_EQ(message, "Result 'v' is no scalar: only scalars can be had one by one");
    EXPECT_EQ(source->reads, "");
}

TEST_F(CopyScalarsTest, TellsWhatTheReaderTells) {
    source->failingId = 1;
    EXPECT_EQ(copy(2, r1, {0, 0, 0}, 1), Values());
    EXPECT_EQ(message, "line 7");
    EXPECT_EQ(statesWithValues(), "");
}

} // namespace
