#include "OrvApp/States.h"

#include "OrvApp/States_p.h"
#include "OrvUnstructGrid/DataSource.h"
#include "Tests/OrvApp/CatalogueTest.h"

using namespace orv;
using orv::app::Models;
using orv::app::States;
using orvtest::failed;
using orvtest::FailedAssert;

namespace {

const std::string inside = "OrvApp/States_p";

/// Ids that are not indexes, and names that patterns can tell apart.
const std::vector<std::pair<int, std::string>> threeStates = {{10, "step 1"}, {30, "step 2"}, {20, "mode 1"}};

class RefreshCounter : public ug::UnstructGridModel {
public:
    bool refresh(ug::Error* error, ug::Progress* progress, unsigned int options) override {
        EXPECT_EQ(error, nullptr);
        EXPECT_EQ(progress, nullptr);
        EXPECT_EQ(options, 0u);
        ++count;
        stateId = currentStateId();
        return false; // which nobody looks at
    }

    int count = 0;
    int stateId = -1;
};

class StatesTest : public orvtest::CatalogueTest {
protected:
    PtrRef<ug::UnstructGridModel> add(const std::vector<std::pair<int, std::string>>& infos, int stateId) {
        PtrRef<ug::UnstructGridModel> model = orvtest::modelOn(orvtest::memorySource({{"part"}}, infos).get(), stateId);
        Models::instance()->add(model.get());
        return model;
    }

    /// What holds whenever there are no states.
    void expectNothing() {
        EXPECT_EQ(states->count(), 0u);
        EXPECT_EQ(states->current(), nullptr);
        EXPECT_EQ(states->currentInfo().id(), -1);
        EXPECT_EQ(states->indexOf(ug::StateInfo(10, "step 1", ug::StateInfo::TIME, 0)), UNDEFINED_SIZE_T);
        EXPECT_EQ(states->indexOf(ug::StateInfo()), UNDEFINED_SIZE_T);
        EXPECT_EQ(states->info("*").id(), -1);
        EXPECT_EQ(asserts.take(), std::vector<FailedAssert>());

        EXPECT_EQ(states->info(0ul).id(), -1);
        EXPECT_EQ(asserts.take(), (std::vector<FailedAssert>{failed(inside, "index < count()")}));
    }

    States* states = States::instance();
};

TEST_F(StatesTest, InstanceIsOneObject) {
    EXPECT_EQ(States::instance(), states);
    EXPECT_EQ(states->refCount(), 1);
}

TEST_F(StatesTest, WithoutAModel) {
    expectNothing();
    EXPECT_EQ(states->currentIndex(), UNDEFINED_SIZE_T);

    states->setCurrentIndex(0);
    EXPECT_EQ(asserts.take(), (std::vector<FailedAssert>{failed(inside, "index < count()")}));

    states->setCurrentInfo(ug::StateInfo());
    EXPECT_EQ(asserts.take(), (std::vector<FailedAssert>{failed(inside, "index != orv::UNDEFINED_SIZE_T",
                                                                "View not found : cannot set it as current."),
                                                         failed(inside, "index < count()")}));
}

TEST_F(StatesTest, WithAModelWithoutASource) {
    PtrRef<ug::UnstructGridModel> model = orvtest::modelOn(nullptr, -1);
    Models::instance()->add(model.get());
    expectNothing();
    EXPECT_EQ(asserts.takeUntil(1, [&] { states->currentIndex(); }),
              (std::vector<FailedAssert>{failed(inside, "dataSource")}));
}

TEST_F(StatesTest, WithADirectoryWithoutStates) {
    PtrRef<ug::UnstructGridModel> model = add({}, -1);
    expectNothing();
    EXPECT_EQ(states->currentIndex(), UNDEFINED_SIZE_T);

    // With a model the call goes on: the state that it finds is the undefined one.
    model->modelSpec().setStateId(7);
    states->setCurrentIndex(0);
    EXPECT_EQ(asserts.take(),
              (std::vector<FailedAssert>{failed(inside, "index < count()"), failed(inside, "index < count()")}));
    EXPECT_EQ(model->currentStateId(), -1);
}

TEST_F(StatesTest, ListsTheStatesInTheSourcesOrder) {
    add(threeStates, 10);
    EXPECT_EQ(states->count(), 3u);
    EXPECT_EQ(states->info(0ul).id(), 10);
    EXPECT_EQ(states->info(1).id(), 30);
    EXPECT_EQ(states->info(2).id(), 20);
    EXPECT_EQ(states->info(2).name(), "mode 1");
    EXPECT_EQ(states->info(2).referenceValue(), 20.0);
}

TEST_F(StatesTest, IndexesMustBeBelowTheCount) {
    PtrRef<ug::UnstructGridModel> model = add(threeStates, 10);
    EXPECT_EQ(asserts.takeUntil(1, [&] { states->info(3); }),
              (std::vector<FailedAssert>{failed(inside, "index < count()")}));
    // The check stands in setCurrentIndex() and again in the look-up behind it.
    EXPECT_EQ(asserts.takeUntil(2, [&] { states->setCurrentIndex(3); }),
              (std::vector<FailedAssert>{failed(inside, "index < count()"), failed(inside, "index < count()")}));
    EXPECT_EQ(model->currentStateId(), 10);
}

TEST_F(StatesTest, CurrentStateIsTheOneOfTheModelsSpec) {
    PtrRef<ug::UnstructGridModel> model = add(threeStates, 20);
    EXPECT_EQ(states->currentIndex(), 2u);
    EXPECT_EQ(states->currentInfo().name(), "mode 1");
    ASSERT_NE(states->current(), nullptr);
    EXPECT_EQ(states->current()->id(), 20);
    EXPECT_EQ(states->current(), model->dataSource()->state(2));
}

TEST_F(StatesTest, NoStateMayBeCurrent) {
    add(threeStates, -1);
    EXPECT_EQ(states->count(), 3u);
    EXPECT_EQ(states->current(), nullptr);
    EXPECT_EQ(states->currentInfo().id(), -1);
    EXPECT_EQ(states->currentIndex(), UNDEFINED_SIZE_T);
}

TEST_F(StatesTest, SetCurrentIndexReachesTheCurrentModelOnly) {
    PtrRef<ug::UnstructGridModel> first = add(threeStates, 10);
    PtrRef<ug::UnstructGridModel> second = orvtest::modelOn(first->dataSource(), 10);
    Models::instance()->add(second.get());

    states->setCurrentIndex(1);
    EXPECT_EQ(states->currentIndex(), 1u);
    EXPECT_EQ(states->current()->id(), 30);
    EXPECT_EQ(second->currentStateId(), 30);
    EXPECT_EQ(first->currentStateId(), 10);

    // Each model remembers its own.
    Models::instance()->setCurrent(first.get());
    EXPECT_EQ(states->currentIndex(), 0u);
    Models::instance()->setCurrent(second.get());
    EXPECT_EQ(states->currentIndex(), 1u);
    Models::instance()->close(first.get());
    EXPECT_EQ(states->currentIndex(), 1u);
}

TEST_F(StatesTest, SetCurrentIndexBringsTheModelUpToDate) {
    PtrRef<RefreshCounter> model = new RefreshCounter;
    model->setDataSource(orvtest::memorySource({}, threeStates).get());
    Models::instance()->add(model.get());
    states->setCurrentIndex(2);
    EXPECT_EQ(model->count, 1);
    EXPECT_EQ(model->stateId, 20); // the new state was set before
}

TEST_F(StatesTest, SetCurrentInfoGoesByTheId) {
    add(threeStates, 10);
    states->setCurrentInfo(ug::StateInfo(20, "another name", ug::StateInfo::LOAD_CASE, 0));
    EXPECT_EQ(states->currentIndex(), 2u);
}

TEST_F(StatesTest, SetCurrentInfoOfAStrangerAsserts) {
    add(threeStates, 10);
    EXPECT_EQ(asserts.takeUntil(1, [&] { states->setCurrentInfo(ug::StateInfo()); }),
              (std::vector<FailedAssert>{
                  failed(inside, "index != orv::UNDEFINED_SIZE_T", "View not found : cannot set it as current.")}));
}

TEST_F(StatesTest, IndexOfComparesTheIdAlone) {
    add(threeStates, 10);
    EXPECT_EQ(states->indexOf(states->info(1)), 1u);
    EXPECT_EQ(states->indexOf(ug::StateInfo(20, "step 1", ug::StateInfo::FREQUENCY, 5)), 2u);
    EXPECT_EQ(states->indexOf(ug::StateInfo(40, "step 1", ug::StateInfo::TIME, 10)), UNDEFINED_SIZE_T);
}

TEST_F(StatesTest, PatternsFindTheOneStateThatMatches) {
    add(threeStates, 10);
    EXPECT_EQ(states->info("step 2").id(), 30);
    EXPECT_EQ(states->info("mode*").id(), 20);
    EXPECT_EQ(states->info("Step 2").id(), -1);
    EXPECT_EQ(states->info("step").id(), -1);
}

TEST_F(StatesTest, PatternsThatMatchSeveralStatesFindNone) {
    add({{1, "a"}, {2, "b"}, {3, "a"}}, 1);
    for (const char* pattern : {"*", "a"}) {
        EXPECT_EQ(states->info(pattern).id(), -1);
        EXPECT_EQ(asserts.take(), (std::vector<FailedAssert>{failed(
                                      inside, "foundCount < 2", "Found multiple states sharing the given pattern.")}));
    }
}

TEST_F(StatesTest, AMatchWithoutAnIdDoesNotCountAsAFirstOne) {
    // No directory lists such states, so the look-up is asked directly.
    const ug::StateInfo nameless(-1, "a", ug::StateInfo::TIME, 1);
    const ug::StateInfo real(5, "a", ug::StateInfo::TIME, 2);
    EXPECT_EQ(app::StatesPrivate().wildCardInfo({nameless, nameless, real}, "a").id(), 5);
    EXPECT_EQ(app::StatesPrivate().wildCardInfo({nameless}, "a").referenceValue(), 1.0);
}

} // namespace
