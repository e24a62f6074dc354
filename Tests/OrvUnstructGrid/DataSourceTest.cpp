#include "OrvUnstructGrid/DataSource.h"

#include "OrvCore/Defines.h"
#include "OrvUnstructGrid/DataSourceMemory.h"
#include "OrvUnstructGrid/UnstructGridModel.h"
#include "Tests/Support/AssertRecorder.h"

#include <gtest/gtest.h>

using namespace orv::ug;
using orvtest::AssertRecorder;

namespace {

class TwoStates : public DataSource {
public:
    TwoStates() : DataSource(4), geometry(new DataGeometry) {
        geometry->addPart(1);
        addState(StateInfo(7, "seven", StateInfo::TIME, 0), {geometry});
        addState(StateInfo(3, "three", StateInfo::TIME, 1), {geometry});
    }

    using DataSource::addState;
    using DataSource::isCurrentForAModel;

    orv::PtrRef<DataGeometry> geometry;
};

class DataSourceTest : public testing::Test {
protected:
    DataSourceTest() : source(new TwoStates), model(new UnstructGridModel) {}

    orv::PtrRef<TwoStates> source;
    orv::PtrRef<UnstructGridModel> model;
};

TEST_F(DataSourceTest, HasItsIdAndADirectory) {
    EXPECT_EQ(source->id(), 4);
    ASSERT_NE(source->directory(), nullptr);
    const DataSource* unchanging = source.get();
    EXPECT_EQ(unchanging->directory(), source->directory());
}

TEST_F(DataSourceTest, StatesStandBesideTheDirectorysRecords) {
    EXPECT_EQ(source->stateCount(), 2u);
    for (std::size_t i = 0; i < 2; ++i) {
        EXPECT_EQ(source->state(i)->id(), source->directory()->stateInfos()[i].id());
    }
    EXPECT_EQ(source->stateIndex(7), 0u);
    EXPECT_EQ(source->stateIndex(3), 1u);
    EXPECT_EQ(source->state(1)->geometry(0), source->geometry.get());
}

TEST_F(DataSourceTest, MissingStateIsNull) {
    const DataSource* unchanging = source.get();
    EXPECT_EQ(source->stateIndex(1), orv::UNDEFINED_SIZE_T);
    EXPECT_EQ(source->stateIndex(-1), orv::UNDEFINED_SIZE_T);
    EXPECT_EQ(source->state(2), nullptr);
    EXPECT_EQ(source->state(orv::UNDEFINED_SIZE_T), nullptr);
    EXPECT_EQ(unchanging->state(2), nullptr);
    EXPECT_EQ(unchanging->state(0), source->state(0));
}

TEST_F(DataSourceTest, AddsNoStateThatTheDirectoryRefuses) {
    AssertRecorder recorder;
    EXPECT_EQ(source->addState(StateInfo(7, "again", StateInfo::TIME, 2), {source->geometry}), nullptr);
    EXPECT_EQ(recorder.take().size(), 1u);
    EXPECT_EQ(source->stateCount(), 2u);
    EXPECT_EQ(source->directory()->stateCount(), 2u);
}

TEST_F(DataSourceTest, CurrentStateIsWhatTheModelsSpecNames) {
    EXPECT_EQ(source->currentState(nullptr), nullptr);
    EXPECT_EQ(source->currentState(model.get()), nullptr);
    model->modelSpec().setStateId(3);
    EXPECT_EQ(source->currentState(model.get()), source->state(1));
    model->modelSpec().setStateId(4);
    EXPECT_EQ(source->currentState(model.get()), nullptr);
}

TEST_F(DataSourceTest, KnowsTheCurrentStatesOfItsModels) {
    orv::PtrRef<UnstructGridModel> other(new UnstructGridModel);
    model->setDataSource(source.get());
    other->setDataSource(source.get());
    model->modelSpec().setStateId(3);
    EXPECT_TRUE(source->isCurrentForAModel(3));
    EXPECT_FALSE(source->isCurrentForAModel(7));
    other->modelSpec().setStateId(7);
    EXPECT_TRUE(source->isCurrentForAModel(3));
    EXPECT_TRUE(source->isCurrentForAModel(7));
    other = nullptr;
    EXPECT_FALSE(source->isCurrentForAModel(7));
    model->setDataSource(nullptr);
    EXPECT_FALSE(source->isCurrentForAModel(3));
}

TEST_F(DataSourceTest, DropsAResultInEveryState) {
    const ResultInfo gone(SCALAR, 1, "gone", PER_NODE);
    const ResultInfo kept(SCALAR, 2, "kept", PER_NODE);
    for (std::size_t i = 0; i < 2; ++i) {
        source->state(i)->results(source->geometry.get())->findOrAdd(gone);
        source->state(i)->results(source->geometry.get())->findOrAdd(kept);
    }
    source->dropResult(gone);
    for (std::size_t i = 0; i < 2; ++i) {
        EXPECT_FALSE(source->state(i)->hasLoaded(gone));
        EXPECT_TRUE(source->state(i)->hasLoaded(kept));
    }
}

TEST_F(DataSourceTest, LoadsOnDemandOnlyWhereTheCastSaysSo) {
    DataSource* plain = source.get();
    EXPECT_EQ(dynamic_cast<DataSourceInterface*>(plain), nullptr);
    orv::PtrRef<DataSource> memory(new DataSourceMemory(1));
    EXPECT_NE(dynamic_cast<DataSourceInterface*>(memory.get()), nullptr);
}

} // namespace
