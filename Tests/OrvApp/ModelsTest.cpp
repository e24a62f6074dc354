#include "OrvApp/Models.h"

#include "OrvApp/Models_p.h"
#include "OrvUnstructGrid/DataSourceInterface.h"
#include "OrvUnstructGrid/DataStateSpec.h"
#include "OrvUnstructGrid/Error.h"
#include "Tests/OrvApp/CatalogueTest.h"
#include "Tests/Support/RecordingProgress.h"
#include "Tests/Support/TestPaths.h"

using namespace orv;
using orv::app::Models;
using orv::app::Parts;
using orvtest::failed;
using orvtest::FailedAssert;

namespace {

const std::string facade = "OrvApp/Models";
const std::string inside = "OrvApp/Models_p";

class ModelsTest : public orvtest::CatalogueTest {
protected:
    /// Adds models with sources of their own, named "0", "1" and so on.
    void add(size_t count) {
        for (size_t i = 0; i < count; ++i) {
            PtrRef<ug::DataSourceMemory> source = orvtest::memorySource({{"part"}}, {{1, "state"}});
            source->setName(std::to_string(i));
            added.push_back(orvtest::modelOn(source.get(), 1));
            models->add(added.back().get());
        }
    }

    std::string names() const {
        std::string all;
        for (size_t i = 0; i < models->count(); ++i) {
            all += models->info(i).filename().toStdString();
        }
        return all;
    }

    Models* models = Models::instance();
    std::vector<PtrRef<ug::UnstructGridModel>> added;
};

TEST_F(ModelsTest, InstanceIsOneObject) {
    EXPECT_EQ(Models::instance(), models);
    EXPECT_EQ(models->refCount(), 1);
}

TEST_F(ModelsTest, EmptyCatalogue) {
    EXPECT_EQ(models->count(), 0u);
    EXPECT_EQ(models->current(), nullptr);
    EXPECT_EQ(models->currentIndex(), UNDEFINED_SIZE_T);
    EXPECT_EQ(models->currentInfo().filename(), "");
    EXPECT_TRUE(models->closeCurrent());
    EXPECT_EQ(models->count(), 0u);
}

TEST_F(ModelsTest, AddAppendsTakesAReferenceAndMakesCurrent) {
    PtrRef<ug::UnstructGridModel> first = orvtest::modelOn(nullptr, -1);
    PtrRef<ug::UnstructGridModel> second = orvtest::modelOn(nullptr, -1);
    EXPECT_EQ(models->add(first.get()), 0u);
    EXPECT_EQ(models->add(second.get()), 1u);
    EXPECT_EQ(models->count(), 2u);
    EXPECT_EQ(models->get(0), first.get());
    EXPECT_EQ(models->get(1), second.get());
    EXPECT_EQ(models->current(), second.get());
    EXPECT_EQ(models->currentIndex(), 1u);
    EXPECT_EQ(first->refCount(), 2);
}

TEST_F(ModelsTest, AddResetsThePartsIndex) {
    PtrRef<ug::UnstructGridModel> withParts =
        orvtest::modelOn(orvtest::memorySource({{"a", "b"}}, {{1, "state"}}).get(), 1);
    PtrRef<ug::UnstructGridModel> withoutParts = orvtest::modelOn(orvtest::memorySource({}, {{1, "state"}}).get(), 1);
    models->add(withParts.get());
    EXPECT_EQ(Parts::instance()->currentIndex(), 0u);
    Parts::instance()->setCurrentIndex(1);
    models->add(withParts.get());
    EXPECT_EQ(Parts::instance()->currentIndex(), 0u);
    models->add(withoutParts.get());
    EXPECT_EQ(Parts::instance()->currentIndex(), UNDEFINED_SIZE_T);
}

TEST_F(ModelsTest, ANullModelIsNotRefused) {
    EXPECT_EQ(models->add(nullptr), 0u);
    EXPECT_EQ(models->count(), 1u);
    EXPECT_EQ(models->current(), nullptr);
    EXPECT_EQ(models->currentIndex(), 0u);
    EXPECT_EQ(models->indexOf(nullptr), 0u);
    ug::Error error;
    EXPECT_FALSE(models->reopen(0ul, "any.frd", &error));
    EXPECT_TRUE(error.isEmpty());

    add(1);
    models->close(0ul);
    EXPECT_EQ(names(), "0");
}

TEST_F(ModelsTest, IndexOfGivesTheFirstPositionOfThePointer) {
    add(2);
    models->add(added[0].get());
    EXPECT_EQ(models->indexOf(added[0].get()), 0u);
    EXPECT_EQ(models->indexOf(added[1].get()), 1u);
    EXPECT_EQ(models->indexOf(nullptr), UNDEFINED_SIZE_T);
    ug::UnstructGridModel stranger;
    EXPECT_EQ(models->indexOf(&stranger), UNDEFINED_SIZE_T);
}

TEST_F(ModelsTest, InfoIsTheSimulationRecordOfTheDirectory) {
    add(3);
    EXPECT_EQ(models->info(1).filename(), "1");
    EXPECT_EQ(models->info(added[0].get()).filename(), "0");
    EXPECT_EQ(models->currentInfo().filename(), "2");
}

TEST_F(ModelsTest, InfoNeedsAModelAndASource) {
    ug::UnstructGridModel stranger;
    EXPECT_EQ(asserts.takeUntil(1, [&] { models->info(0ul); }),
              (std::vector<FailedAssert>{failed(inside, "index < count()")}));
    EXPECT_EQ(asserts.takeUntil(1, [&] { models->info(&stranger); }),
              (std::vector<FailedAssert>{failed(inside, "index < count()")}));

    models->add(nullptr);
    EXPECT_EQ(asserts.takeUntil(1, [&] { models->info(0ul); }), (std::vector<FailedAssert>{failed(inside, "model")}));
    EXPECT_EQ(asserts.takeUntil(1, [&] { models->currentInfo(); }),
              (std::vector<FailedAssert>{failed(inside, "currentModel")}));

    PtrRef<ug::UnstructGridModel> withoutSource = orvtest::modelOn(nullptr, -1);
    models->add(withoutSource.get());
    EXPECT_EQ(asserts.takeUntil(1, [&] { models->info(1); }), (std::vector<FailedAssert>{failed(inside, "source")}));
    EXPECT_EQ(asserts.takeUntil(1, [&] { models->currentInfo(); }),
              (std::vector<FailedAssert>{failed(inside, "source")}));
}

TEST_F(ModelsTest, GetAndCloseNeedAnIndexBelowTheCount) {
    add(1);
    EXPECT_EQ(asserts.takeUntil(1, [&] { models->get(1); }),
              (std::vector<FailedAssert>{failed(inside, "index < count()")}));
    EXPECT_EQ(asserts.takeUntil(1, [&] { models->close(1); }),
              (std::vector<FailedAssert>{failed(inside, "index < count()")}));
    EXPECT_EQ(asserts.takeUntil(1, [&] { models->reopen(1, "any.frd", nullptr); }),
              (std::vector<FailedAssert>{failed(inside, "index < count()")}));
    ug::UnstructGridModel stranger;
    EXPECT_EQ(asserts.takeUntil(1, [&] { models->reopen(&stranger, "any.frd", nullptr); }),
              (std::vector<FailedAssert>{failed(inside, "index < count()")}));
    EXPECT_EQ(models->count(), 1u);
}

TEST_F(ModelsTest, SetCurrentFindsTheModel) {
    add(3);
    Parts::instance()->setCurrentIndex(UNDEFINED_SIZE_T);
    models->setCurrent(added[1].get());
    EXPECT_EQ(models->currentIndex(), 1u);
    EXPECT_EQ(models->current(), added[1].get());
    EXPECT_EQ(Parts::instance()->currentIndex(), UNDEFINED_SIZE_T);
}

TEST_F(ModelsTest, SetCurrentOfNullSelectsNothing) {
    add(2);
    models->setCurrent(nullptr);
    EXPECT_EQ(models->count(), 2u);
    EXPECT_EQ(models->current(), nullptr);
    EXPECT_EQ(models->currentIndex(), UNDEFINED_SIZE_T);
    EXPECT_EQ(models->currentInfo().filename(), "");
    EXPECT_TRUE(models->closeCurrent());
    EXPECT_EQ(models->count(), 2u);
}

TEST_F(ModelsTest, SetCurrentOfAStrangerAssertsAndSelectsNothing) {
    add(2);
    ug::UnstructGridModel stranger;
    models->setCurrent(&stranger);
    EXPECT_EQ(asserts.take(), (std::vector<FailedAssert>{failed(inside, "index != orv::UNDEFINED_SIZE_T",
                                                                "Model not found : cannot set it as current.")}));
    EXPECT_EQ(models->currentIndex(), UNDEFINED_SIZE_T);
}

TEST_F(ModelsTest, SetCurrentIndexStoresAlsoWhatIsOutOfRange) {
    add(2);
    Parts::instance()->setCurrentIndex(UNDEFINED_SIZE_T);
    models->setCurrentIndex(0);
    EXPECT_EQ(models->current(), added[0].get());
    EXPECT_EQ(Parts::instance()->currentIndex(), UNDEFINED_SIZE_T);
    models->setCurrentIndex(UNDEFINED_SIZE_T);
    EXPECT_EQ(models->current(), nullptr);
    EXPECT_TRUE(asserts.take().empty());

    models->setCurrentIndex(2);
    EXPECT_EQ(asserts.take(),
              (std::vector<FailedAssert>{failed(inside, "index < count() || index == orv::UNDEFINED_SIZE_T")}));
    EXPECT_EQ(models->currentIndex(), 2u);
    models->setCurrentIndex(1);
}

TEST_F(ModelsTest, CloseOnlyClampsTheCurrentIndex) {
    struct Case {
        size_t count, current, closed, expectedIndex;
        std::string expectedNames;
    };
    const Case cases[] = {
        {4, 2, 0, 2, "123"},               // one in front: the successor becomes current
        {4, 2, 3, 2, "012"},               // one behind: stays
        {4, 1, 1, 1, "023"},               // the current one in the middle: its successor
        {3, 2, 2, 1, "01"},                // the last one: the new last
        {3, UNDEFINED_SIZE_T, 0, 1, "12"}, // none was current: the last remaining
        {1, 0, 0, UNDEFINED_SIZE_T, ""},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.expectedNames);
        models->closeAll();
        add(c.count);
        models->setCurrentIndex(c.current);
        Parts::instance()->setCurrentIndex(UNDEFINED_SIZE_T);
        models->close(c.closed);
        EXPECT_EQ(models->currentIndex(), c.expectedIndex);
        EXPECT_EQ(names(), c.expectedNames);
        EXPECT_EQ(Parts::instance()->currentIndex(), UNDEFINED_SIZE_T);
    }
}

TEST_F(ModelsTest, CloseLetsGoOfTheModel) {
    add(2);
    EXPECT_EQ(added[0]->refCount(), 2);
    models->close(0ul);
    EXPECT_EQ(added[0]->refCount(), 1);
    EXPECT_EQ(added[1]->refCount(), 2);
}

TEST_F(ModelsTest, ClosingTheOnlyModelWhileNoneIsCurrentAssertsHarmlessly) {
    add(1);
    models->setCurrent(nullptr);
    models->close(0ul);
    EXPECT_EQ(asserts.take(), (std::vector<FailedAssert>{failed(inside, "m_currentIndex == 0")}));
    EXPECT_EQ(models->count(), 0u);
    EXPECT_EQ(models->currentIndex(), UNDEFINED_SIZE_T);
}

TEST_F(ModelsTest, CloseByModel) {
    add(3);
    models->close(added[1].get());
    EXPECT_EQ(names(), "02");

    ug::UnstructGridModel stranger;
    EXPECT_EQ(asserts.takeUntil(2, [&] { models->close(&stranger); }),
              (std::vector<FailedAssert>{
                  failed(facade, "index != orv::UNDEFINED_SIZE_T", "Model not found : cannot remove it"),
                  failed(inside, "index < count()")}));
    EXPECT_EQ(names(), "02");
}

TEST_F(ModelsTest, CloseCurrentClosesTheCurrentModel) {
    add(3);
    models->setCurrentIndex(0);
    EXPECT_TRUE(models->closeCurrent());
    EXPECT_EQ(names(), "12");
    EXPECT_EQ(models->currentIndex(), 0u);
}

TEST_F(ModelsTest, CloseAllForgetsModelsAndLeavesThePartsIndex) {
    add(2);
    Parts::instance()->setCurrentIndex(0);
    models->closeAll();
    EXPECT_EQ(models->count(), 0u);
    EXPECT_EQ(models->currentIndex(), UNDEFINED_SIZE_T);
    EXPECT_EQ(added[0]->refCount(), 1);
    EXPECT_EQ(Parts::instance()->currentIndex(), 0u);
    EXPECT_EQ(Parts::instance()->current(), nullptr);
}

TEST_F(ModelsTest, ModelsWithoutASourceCloseToo) {
    PtrRef<ug::UnstructGridModel> a = orvtest::modelOn(nullptr, -1);
    PtrRef<ug::UnstructGridModel> b = orvtest::modelOn(nullptr, -1);
    models->add(a.get());
    models->add(b.get());
    models->close(0ul);
    EXPECT_EQ(models->get(0), b.get());
    models->close(0ul);
    EXPECT_EQ(models->count(), 0u);
}

TEST_F(ModelsTest, PrivateSetReplacesOneEntryAndNothingElse) {
    app::ModelsPrivate list;
    PtrRef<ug::UnstructGridModel> a = orvtest::modelOn(nullptr, -1);
    PtrRef<ug::UnstructGridModel> b = orvtest::modelOn(nullptr, -1);
    list.add(a.get());
    list.add(a.get());
    list.setCurrentIndex(1);
    list.set(0, b.get());
    EXPECT_EQ(list.get(0), b.get());
    EXPECT_EQ(list.get(1), a.get());
    EXPECT_EQ(list.currentIndex(), 1u);
    EXPECT_EQ(b->refCount(), 2);
    EXPECT_EQ(asserts.takeUntil(1, [&] { list.set(2, b.get()); }),
              (std::vector<FailedAssert>{failed(inside, "index < count()")}));
}

TEST_F(ModelsTest, OpensAndLoadsOfItsSourcesAreTold) {
    const std::string file = orvtest::testDataFolder() + "/frd/heat.frd";
    orvtest::RecordingProgress progress;
    models->setProgress(&progress);
    ug::UnstructGridModel* model = models->open(file, nullptr);
    ASSERT_NE(model, nullptr);
    EXPECT_TRUE(orvtest::isRising(progress.percents));
    EXPECT_EQ(progress.take().back(), 100);
    const PtrRef<ug::DataSource> source(model->dataSource());
    const auto load = [&](int stateId) {
        ug::DataStateSpec spec;
        spec.setResultIds({source->directory()->scalarResultInfos()[0]});
        EXPECT_TRUE(dynamic_cast<ug::DataSourceInterface&>(*source).loadDataState(stateId, spec, nullptr));
        return progress.take();
    };
    EXPECT_EQ(load(1).back(), 100);
    models->setProgress(nullptr);
    EXPECT_TRUE(load(2).empty());
    models->setProgress(&progress);
    EXPECT_FALSE(load(3).empty());
    models->closeAll();
    EXPECT_TRUE(load(4).empty());
    models->setProgress(nullptr);
}

} // namespace
