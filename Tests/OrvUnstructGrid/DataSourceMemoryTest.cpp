#include "OrvUnstructGrid/OrvUnstructGrid.h"

#include "Tests/Support/AssertRecorder.h"
#include "Tests/Support/MemoryModels.h"

#include <gtest/gtest.h>

using namespace orv::ug;
using orvtest::AssertRecorder;
using orvtest::FailedAssert;
using orvtest::MemoryModel;
using orvtest::modelValue;

namespace {

const std::string here = "OrvUnstructGrid/DataSourceMemory";

class DataSourceMemoryTest : public testing::Test {
protected:
    bool load(int stateId, const std::vector<ResultInfo>& results) {
        DataStateSpec spec;
        spec.setResultIds(results);
        return model.source->loadDataState(stateId, spec, &error);
    }

    std::string setValues(int stateId, const ResultInfo& info, std::size_t geometry, std::size_t part,
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

} // namespace
