#include "OrvApp/Parts.h"

#include "OrvUnstructGrid/DataSource.h"
#include "Tests/OrvApp/CatalogueTest.h"

using namespace orv;
using orv::app::Models;
using orv::app::Parts;
using orvtest::failed;
using orvtest::FailedAssert;

namespace {

const std::string inside = "OrvApp/Parts_p";
const FailedAssert badIndex = failed(inside, "index < count()");

class PartsTest : public orvtest::CatalogueTest {
protected:
    PtrRef<ug::UnstructGridModel> add(const std::vector<std::vector<std::string>>& names, int stateId = 1) {
        PtrRef<ug::UnstructGridModel> model =
            orvtest::modelOn(orvtest::memorySource(names, {{1, "state"}}).get(), stateId);
        Models::instance()->add(model.get());
        return model;
    }

    /// Two geometries of 3 and 2 parts.
    ug::DataState* addFiveParts() {
        return add({{"a", "b", "c"}, {"d", "e"}})->dataSource()->state(0);
    }

    /// What holds whenever no state is current.
    void expectNothing() {
        ug::DataPart stranger(1);
        EXPECT_EQ(parts->count(), 0u);
        EXPECT_EQ(parts->current(), nullptr);
        EXPECT_EQ(parts->currentInfo().id(), -1);
        EXPECT_EQ(parts->get("*"), nullptr);
        EXPECT_EQ(parts->indexOf(&stranger), 0u);
        EXPECT_EQ(parts->indexOf(nullptr), 0u);
        EXPECT_EQ(parts->geometryIndex(&stranger), UNDEFINED_SIZE_T);
        EXPECT_EQ(asserts.take(), std::vector<FailedAssert>());

        EXPECT_EQ(parts->get(0), nullptr);
        EXPECT_EQ(asserts.take(), std::vector<FailedAssert>{badIndex});
        EXPECT_EQ(parts->geometryIndex(0ul), UNDEFINED_SIZE_T);
        EXPECT_EQ(asserts.take(), std::vector<FailedAssert>{badIndex});
        EXPECT_EQ(asserts.takeUntil(3, [&] { parts->info(0ul); }),
                  (std::vector<FailedAssert>{badIndex, badIndex, failed(inside, "part")}));

        // Whatever it holds.
        parts->setCurrentIndex(3);
        EXPECT_EQ(asserts.take(),
                  (std::vector<FailedAssert>{failed(inside, "index < count() || index == orv::UNDEFINED_SIZE_T")}));
        EXPECT_EQ(parts->currentIndex(), 3u);
        EXPECT_EQ(parts->current(), nullptr);
    }

    Parts* parts = Parts::instance();
};

TEST_F(PartsTest, InstanceIsOneObject) {
    EXPECT_EQ(Parts::instance(), parts);
    EXPECT_EQ(parts->refCount(), 1);
}

TEST_F(PartsTest, WithoutAModel) {
    expectNothing();
}

TEST_F(PartsTest, WithAModelWithoutASource) {
    PtrRef<ug::UnstructGridModel> model = orvtest::modelOn(nullptr, -1);
    Models::instance()->add(model.get());
    expectNothing();
}

TEST_F(PartsTest, WithoutACurrentState) {
    add({{"a", "b"}}, -1);
    expectNothing();
}

TEST_F(PartsTest, OneListRunsAcrossTheGeometries) {
    ug::DataState* state = addFiveParts();
    ASSERT_EQ(parts->count(), 5u);
    const size_t geometries[] = {0, 0, 0, 1, 1};
    const size_t positions[] = {0, 1, 2, 0, 1};
    for (size_t i = 0; i < 5; ++i) {
        ug::DataPart* part = state->geometry(geometries[i])->part(positions[i]);
        EXPECT_EQ(parts->get(i), part);
        EXPECT_EQ(parts->indexOf(part), i);
        EXPECT_EQ(parts->geometryIndex(i), geometries[i]);
        EXPECT_EQ(parts->geometryIndex(part), geometries[i]);
        EXPECT_EQ(parts->info(i).name(), std::string(1, char('a' + i)));
        EXPECT_EQ(parts->info(part).name(), std::string(1, char('a' + i)));
    }
}

TEST_F(PartsTest, GeometriesWithoutPartsArePassedOver) {
    add({{}, {"a"}, {}, {"b"}});
    EXPECT_EQ(parts->count(), 2u);
    EXPECT_EQ(parts->geometryIndex(0ul), 1u);
    EXPECT_EQ(parts->geometryIndex(1), 3u);
    EXPECT_EQ(parts->info(1).name(), "b");
}

TEST_F(PartsTest, IndexesMustBeBelowTheCount) {
    addFiveParts();
    EXPECT_EQ(parts->get(5), nullptr);
    EXPECT_EQ(asserts.take(), std::vector<FailedAssert>{badIndex});
    EXPECT_EQ(parts->geometryIndex(5), UNDEFINED_SIZE_T);
    EXPECT_EQ(asserts.take(), std::vector<FailedAssert>{badIndex});
    EXPECT_EQ(asserts.takeUntil(3, [&] { parts->info(5); }),
              (std::vector<FailedAssert>{badIndex, badIndex, failed(inside, "part")}));
}

TEST_F(PartsTest, AnAlienPartIsNowhere) {
    addFiveParts();
    ug::DataPart stranger(1);
    EXPECT_EQ(parts->indexOf(&stranger), UNDEFINED_SIZE_T);
    EXPECT_EQ(parts->geometryIndex(&stranger), UNDEFINED_SIZE_T);
    EXPECT_EQ(asserts.takeUntil(1, [&] { parts->info(&stranger); }), std::vector<FailedAssert>{badIndex});
}

TEST_F(PartsTest, CurrentFollowsTheIndex) {
    addFiveParts();
    EXPECT_EQ(parts->currentIndex(), 0u);
    EXPECT_EQ(parts->currentInfo().name(), "a");
    parts->setCurrentIndex(3);
    EXPECT_EQ(parts->current(), parts->get(3));
    EXPECT_EQ(parts->currentInfo().name(), "d");
}

TEST_F(PartsTest, NothingMayBeCurrent) {
    addFiveParts();
    parts->setCurrentIndex(UNDEFINED_SIZE_T);
    EXPECT_EQ(parts->currentIndex(), UNDEFINED_SIZE_T);
    EXPECT_EQ(parts->current(), nullptr);
    EXPECT_EQ(asserts.take(),
              (std::vector<FailedAssert>{failed(inside, "m_currentIndex != orv::UNDEFINED_SIZE_T"), badIndex}));
    EXPECT_EQ(asserts.takeUntil(3, [&] { parts->currentInfo(); }),
              (std::vector<FailedAssert>{badIndex, badIndex, failed(inside, "part")}));
}

TEST_F(PartsTest, SetCurrentFindsThePart) {
    ug::DataState* state = addFiveParts();
    parts->setCurrent(state->geometry(1)->part(1));
    EXPECT_EQ(parts->currentIndex(), 4u);
}

TEST_F(PartsTest, SetCurrentOfWhatIsNotThereAssertsAndSelectsNothing) {
    addFiveParts();
    ug::DataPart stranger(1);
    for (ug::DataPart* part : {&stranger, static_cast<ug::DataPart*>(nullptr)}) {
        parts->setCurrentIndex(1);
        parts->setCurrent(part);
        EXPECT_EQ(asserts.take(), (std::vector<FailedAssert>{failed(inside, "index != orv::UNDEFINED_SIZE_T",
                                                                    "Part not found : cannot set it as current.")}));
        EXPECT_EQ(parts->currentIndex(), UNDEFINED_SIZE_T);
    }
}

TEST_F(PartsTest, SetCurrentWithoutAStateTakesAnyPartForTheFirst) {
    ug::DataPart stranger(1);
    parts->setCurrent(&stranger);
    EXPECT_EQ(asserts.take(),
              (std::vector<FailedAssert>{failed(inside, "index < count() || index == orv::UNDEFINED_SIZE_T")}));
    EXPECT_EQ(parts->currentIndex(), 0u);
}

TEST_F(PartsTest, SetCurrentIndexStoresAlsoWhatIsOutOfRange) {
    addFiveParts();
    parts->setCurrentIndex(5);
    EXPECT_EQ(asserts.take(),
              (std::vector<FailedAssert>{failed(inside, "index < count() || index == orv::UNDEFINED_SIZE_T")}));
    EXPECT_EQ(parts->currentIndex(), 5u);
}

TEST_F(PartsTest, TheIndexStaysBehindWhenTheModelChanges) {
    PtrRef<ug::UnstructGridModel> small = add({{"x", "y"}});
    PtrRef<ug::UnstructGridModel> large = add({{"a", "b", "c"}, {"d", "e"}});
    parts->setCurrentIndex(1);
    Models::instance()->setCurrent(small.get());
    EXPECT_EQ(parts->currentInfo().name(), "y");

    Models::instance()->setCurrent(large.get());
    parts->setCurrentIndex(4);
    Models::instance()->close(large.get());
    EXPECT_EQ(parts->currentIndex(), 4u);
    EXPECT_EQ(parts->current(), nullptr);
    EXPECT_EQ(asserts.take(), std::vector<FailedAssert>{badIndex});
}

TEST_F(PartsTest, CloseAllLeavesTheIndex) {
    addFiveParts();
    Models::instance()->closeAll();
    EXPECT_EQ(parts->currentIndex(), 0u);
    EXPECT_EQ(parts->current(), nullptr);
}

TEST_F(PartsTest, PatternsFindTheOnePartThatMatches) {
    ug::DataState* state = add({{"wall", "floor"}, {"roof"}})->dataSource()->state(0);
    EXPECT_EQ(parts->get("floor"), state->geometry(0)->part(1));
    EXPECT_EQ(parts->get("r*"), state->geometry(1)->part(0));
    EXPECT_EQ(parts->get("Floor"), nullptr);
    EXPECT_EQ(parts->get("door"), nullptr);
}

TEST_F(PartsTest, OnePartMatchesEverything) {
    ug::DataState* state = add({{"only"}})->dataSource()->state(0);
    EXPECT_EQ(parts->get("*"), state->geometry(0)->part(0));
}

TEST_F(PartsTest, PatternsThatMatchSeveralPartsFindNone) {
    // "twin" stands in two geometries, and "wall*" matches two of the first.
    add({{"wall 1", "wall 2", "twin"}, {"twin"}});
    for (const char* pattern : {"*", "twin", "wall*"}) {
        EXPECT_EQ(parts->get(pattern), nullptr);
        EXPECT_EQ(asserts.take(),
                  (std::vector<FailedAssert>{
                      failed(inside, "foundCount < 2", "Found multiple part names sharing the given pattern.")}));
    }
}

/// One state whose geometries are the ones given, null and odd ones included.
class SourceOfGeometries : public ug::DataSource {
public:
    explicit SourceOfGeometries(std::vector<PtrRef<ug::DataGeometry>> geometries) : DataSource(1) {
        addState(ug::StateInfo(1, "state", ug::StateInfo::TIME, 0), std::move(geometries));
    }
};

TEST_F(PartsTest, APartWithANegativeIdHasNoRecord) {
    PtrRef<ug::DataGeometry> geometry = new ug::DataGeometry;
    geometry->addPart(-3);
    PtrRef<SourceOfGeometries> source = new SourceOfGeometries({geometry});
    source->directory()->addGeometryPartInfos({ug::PartInfo(-3, "nameless")});
    PtrRef<ug::UnstructGridModel> model = orvtest::modelOn(source.get(), 1);
    Models::instance()->add(model.get());
    EXPECT_EQ(parts->info(0ul).id(), -1);
    EXPECT_EQ(parts->info(0ul).name(), "");
}

TEST_F(PartsTest, AMissingGeometryIsAssertedInAllWalksButOne) {
    PtrRef<ug::DataGeometry> geometry = new ug::DataGeometry;
    ug::DataPart* part = geometry->addPart(1);
    PtrRef<ug::UnstructGridModel> model = orvtest::modelOn(new SourceOfGeometries({nullptr, geometry}), 1);
    EXPECT_EQ(asserts.takeUntil(1, [&] { Models::instance()->add(model.get()); }),
              (std::vector<FailedAssert>{failed(inside, "geo")}));
    EXPECT_EQ(asserts.takeUntil(1, [&] { parts->count(); }), (std::vector<FailedAssert>{failed(inside, "geo")}));
    EXPECT_EQ(asserts.takeUntil(1, [&] { parts->indexOf(part); }), (std::vector<FailedAssert>{failed(inside, "geo")}));

    EXPECT_EQ(parts->geometryIndex(part), 1u);
}

} // namespace
