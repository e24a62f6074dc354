#include "OrvUnstructGrid/UnstructGridModel.h"

#include "OrvUnstructGrid/Error.h"
#include "OrvUnstructGrid/Progress.h"
#include "Tests/Support/MemoryModels.h"

#include <gtest/gtest.h>

using namespace orv::ug;
using orvtest::MemoryModel;

namespace {

class LastPercent : public Progress {
public:
    void setPercent(int percent) override {
        shown = percent;
    }

    int shown = -1;
};

class UnstructGridModelTest : public testing::Test {
protected:
    UnstructGridModelTest() : model(new UnstructGridModel) {}

    std::string failedRefresh() {
        Error error;
        EXPECT_FALSE(model->refresh(&error, &progress, 0));
        EXPECT_EQ(progress.shown, -1);
        return error.message().toStdString();
    }

    MemoryModel memory;
    orv::PtrRef<UnstructGridModel> model;
    LastPercent progress;
};

TEST_F(UnstructGridModelTest, HasNoSourceAtFirst) {
    const UnstructGridModel* unchanging = model.get();
    EXPECT_EQ(model->dataSource(), nullptr);
    EXPECT_EQ(unchanging->dataSource(), nullptr);
    EXPECT_EQ(model->currentStateId(), -1);
    EXPECT_EQ(model->currentFrameIndex(), 0u);
}

TEST_F(UnstructGridModelTest, HoldsItsSourceUntilItIsDetached) {
    DataSource* source = memory.source.get();
    model->setDataSource(source);
    EXPECT_EQ(model->dataSource(), source);
    EXPECT_EQ(source->refCount(), 2);
    model->setDataSource(source);
    EXPECT_EQ(source->refCount(), 2);
    model->setDataSource(nullptr);
    EXPECT_EQ(model->dataSource(), nullptr);
    EXPECT_EQ(source->refCount(), 1);
    model->setDataSource(source);
    model = nullptr;
    EXPECT_EQ(source->refCount(), 1);
}

TEST_F(UnstructGridModelTest, HasOneSpecThatASourceDoesNotChange) {
    ModelSpec* spec = &model->modelSpec();
    const UnstructGridModel* unchanging = model.get();
    EXPECT_EQ(&unchanging->modelSpec(), spec);
    spec->setStateId(2);
    model->setDataSource(memory.source.get());
    EXPECT_EQ(&model->modelSpec(), spec);
    EXPECT_EQ(model->currentStateId(), 2);
    EXPECT_EQ(memory.source->currentState(model.get()), memory.state(2));
}

TEST_F(UnstructGridModelTest, RefreshNeedsASource) {
    EXPECT_EQ(failedRefresh(), "The model has no data source: open a file into it first");
    EXPECT_FALSE(model->refresh(nullptr, nullptr, 0));
}

TEST_F(UnstructGridModelTest, RefreshNeedsAStateOfTheSource) {
    model->setDataSource(memory.source.get());
    EXPECT_EQ(failedRefresh(), "There is no state -1 in 'memory.model': its states are 1, 2, 3");
    model->modelSpec().setStateId(9);
    EXPECT_EQ(failedRefresh(), "There is no state 9 in 'memory.model': its states are 1, 2, 3");
}

TEST_F(UnstructGridModelTest, RefreshTellsWhenItIsDone) {
    model->setDataSource(memory.source.get());
    model->modelSpec().setStateId(2);
    EXPECT_TRUE(model->refresh(nullptr, nullptr, 0));
    Error error;
    EXPECT_TRUE(model->refresh(&error, &progress, 0));
    EXPECT_EQ(progress.shown, 100);
    EXPECT_TRUE(error.isEmpty());
}

} // namespace
