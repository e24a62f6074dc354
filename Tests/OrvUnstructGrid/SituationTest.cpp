#include "OrvUnstructGrid/Situation.h"

#include "OrvCore/Defines.h"
#include "OrvUnstructGrid/CuttingPlane.h"
#include "OrvUnstructGrid/Error.h"
#include "OrvUnstructGrid/SituationIo.h"
#include "OrvUnstructGrid/UnstructGridModel.h"
#include "OrvVisualization/Image.h"
#include "OrvVisualization/View.h"
#include "Tests/OrvUnstructGrid/CustomResults.h"
#include "Tests/OrvUnstructGrid/Situations.h"
#include "Tests/Support/AssertRecorder.h"
#include "Tests/Support/MemoryModels.h"
#include "Tests/Support/ScratchFolder.h"
#include "Tests/Support/TestPaths.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <limits>
#include <tuple>
#include <vector>

using namespace orv;
using namespace orv::ug;
using orvtest::described;
using orvtest::MemoryModel;

namespace {

std::string textOf(const Vec3d& v) {
    return orvtest::PropertyDescription()(v) + "\n";
}

/// All that a ModelSpec and the cutting planes say, numbers bit by bit.
std::string shownBy(const UnstructGridModel& model) {
    const ModelSpec& spec = model.modelSpec();
    std::ostringstream out;
    out << "state " << spec.stateId() << " fringes " << spec.fringesResultId() << " vectors " << spec.vectorResultId()
        << " displacement " << spec.displacementResultId() << " displaced " << spec.isDisplaced() << " "
        << orvtest::PropertyDescription()(spec.displacementScale()) << "\n";
    for (const auto& [part, result] : spec.partFringesResultIds()) {
        out << "part " << part.first << " " << part.second << " fringes " << result << "\n";
    }
    for (const auto& part : spec.hiddenParts()) {
        out << "hidden " << part.first << " " << part.second << "\n";
    }
    for (std::size_t i = 0; i < model.cuttingPlaneCount(); ++i) {
        const CuttingPlane& plane = *model.cuttingPlane(i);
        out << "plane " << plane.mapScalarResultId() << " " << plane.isVisible() << " " << textOf(plane.point())
            << textOf(plane.normal());
    }
    return out.str();
}

std::string shownBy(const vis::View& view) {
    Vec3d eye;
    Vec3d point;
    Vec3d up;
    view.camera()->toLookAt(&eye, &point, &up);
    std::ostringstream out;
    const orvtest::PropertyDescription describe;
    out << textOf(eye) << textOf(point) << textOf(up) << view.camera()->isParallel() << " "
        << describe(view.camera()->angle()) << " " << describe(view.camera()->height()) << "\n";
    const vis::ColorMap& map = view.colorMap();
    out << int(map.kind()) << " " << map.bandCount() << " " << map.hasFixedRange() << " " << describe(map.minimum())
        << " " << describe(map.maximum()) << "\n";
    for (const rvf::Color3f& color : {view.backgroundTop(), view.backgroundBottom(), map.undefinedColor()}) {
        out << textOf({color.r(), color.g(), color.b()});
    }
    out << view.areEdgesShown() << view.isLegendShown() << view.isLit() << view.antialiasing();
    return out.str();
}

/// The same parts, states and results as in MemoryModel, with other ids, and no values.
PtrRef<DataSourceMemory> renumberedSource() {
    const PtrRef<DataSourceMemory> source(new DataSourceMemory(1));
    const std::vector<std::vector<std::string>> parts = {{"Roof", "Column", "Base"}, {"Nut", "Bolt"}};
    for (std::size_t g = 0; g < parts.size(); ++g) {
        source->addGeometry();
        for (const std::string& name : parts[g]) {
            orvtest::fillWithCubes(source->addPart(g, name), 1, 0);
        }
    }
    for (int id = 3; id >= 1; --id) {
        source->addState(StateInfo(10 * id, "Step " + std::to_string(id), StateInfo::TIME, 0.5 * id));
    }
    source->addResult(SCALAR, "Pressure", PER_ELEMENT);
    source->addResult(SCALAR, "Temperature", PER_ELEMENT); // Another mapping: another result.
    source->addResult(SCALAR, "Temperature", PER_NODE);
    source->addResult(VECTOR, "Heat flow", PER_NODE);
    source->addResult(VECTOR, "Velocity", PER_NODE);
    source->addResult(DISPLACEMENT, "Shift", PER_NODE);
    source->addResult(DISPLACEMENT, "Motion", PER_NODE);
    return source;
}

class SituationTest : public testing::Test {
protected:
    SituationTest() {
        model->setDataSource(memory.source.get());
        ModelSpec& spec = model->modelSpec();
        spec.setStateId(2);
        spec.setFringesResultId(memory.temperature.id());
        spec.setVectorResultId(memory.velocity.id());
        spec.setDisplacementResultId(memory.displacement.id());
        spec.setDisplaced(true);
        spec.setDisplacementScale(1.0 / 3.0);
        spec.setPartFringesResultId(0, 2, memory.pressure.id());
        spec.setPartFringesResultId(1, 1, -1);
        spec.setPartVisible(0, 3, false);
        spec.setPartVisible(1, 2, false);
        CuttingPlane* plane = model->addCuttingPlane();
        plane->setPlane({0.1, 0.2, 0.3}, {1, 2, 3});
        plane->setMapScalarResultId(memory.pressure.id());
        model->addCuttingPlane()->setVisible(false);

        view->camera()->setParallel(7.5);
        view->camera()->setPerspective(42.0);
        view->camera()->setFromLookAt({10, 0.3, 1.0 / 7.0}, {0.1, 0.2, 0.7}, {0, 0.1, 1});
        view->setBackground({0.1F, 0.2F, 0.3F}, {1.0F, 0.0F, 0.5F});
        view->setEdgesShown(false);
        view->setLegendShown(false);
        view->setLit(false);
        view->setAntialiasing(7);
        vis::ColorMap map(vis::ColorMap::Kind::RAINBOW);
        map.setBandCount(12);
        map.setFixedRange(-0.1, 1.0 / 3.0);
        map.setUndefinedColor({0.7F, 0.1F, 0.3F});
        view->setColorMap(map);
    }

    void capture() {
        situation->capture(*model, *view);
    }

    std::string failedApply() {
        EXPECT_FALSE(situation->applyTo(model.get(), view.get(), &error));
        return error.message().toStdString();
    }

    MemoryModel memory;
    PtrRef<UnstructGridModel> model{new UnstructGridModel};
    PtrRef<vis::View> view{new vis::View};
    PtrRef<Situation> situation{new Situation};
    Error error;
};

TEST(Situation, IsEmptyAtFirst) {
    const PtrRef<Situation> situation(new Situation);
    EXPECT_TRUE(situation->name().isEmpty());
    EXPECT_TRUE(situation->description().isEmpty());
    EXPECT_TRUE(situation->sourceModelFile().isEmpty());
    EXPECT_EQ(situation->propertyCollection(), nullptr);
    EXPECT_TRUE(situation->allUserData().empty());
    EXPECT_TRUE(situation->unknownXml().empty());
    EXPECT_TRUE(situation->selection().items.empty());
}

TEST(Situation, HoldsItsPropertyCollection) {
    PtrRef<Situation> situation(new Situation);
    const PtrRef<PropertySetCollection> collection(new PropertySetCollection);
    situation->setPropertyCollection(collection.get());
    EXPECT_EQ(situation->propertyCollection(), collection.get());
    EXPECT_EQ(collection->refCount(), 2);
    situation->setPropertyCollection(nullptr);
    EXPECT_EQ(collection->refCount(), 1);
    situation->setPropertyCollection(collection.get());
    situation = nullptr;
    EXPECT_EQ(collection->refCount(), 1);
}

TEST(Situation, GivesItsUserDataByReference) {
    const PtrRef<Situation> situation(new Situation);
    const std::map<Str, Str>& data = situation->allUserData();
    situation->setAllUserData({{"a", "b"}});
    EXPECT_EQ(&situation->allUserData(), &data);
    EXPECT_EQ(data, (std::map<Str, Str>{{"a", "b"}}));
    situation->setAllUserData({});
    EXPECT_TRUE(data.empty());
}

TEST_F(SituationTest, CaptureKeepsWhatIsTheApplications) {
    situation->setName("name");
    situation->setDescription("description");
    situation->setSourceModelFile("an older file");
    situation->setAllUserData({{"a", "b"}});
    const PtrRef<PropertySetCollection> collection(new PropertySetCollection);
    const PtrRef<PropertySet> own(new PropertySet("situationist"));
    collection->append(own.get());
    situation->setPropertyCollection(collection.get());
    situation->setUnknownXml("<situation/>");
    capture();
    EXPECT_EQ(situation->name(), "name");
    EXPECT_EQ(situation->description(), "description");
    EXPECT_EQ(situation->sourceModelFile(), "memory.model");
    EXPECT_EQ(situation->allUserData().size(), 1u);
    EXPECT_EQ(situation->propertyCollection(), collection.get());
    EXPECT_EQ(collection->propertySet(0), own.get());
    EXPECT_GT(collection->count(), 1u);
    EXPECT_TRUE(situation->unknownXml().empty());
}

TEST_F(SituationTest, CaptureTakesThePlaceOfAnEarlierOne) {
    capture();
    const std::string once = described(*situation);
    situation->setSelection({{HitItem()}, 2, true});
    capture();
    EXPECT_EQ(described(*situation), once);
    EXPECT_TRUE(situation->selection().items.empty());
}

TEST_F(SituationTest, ShowsAgainInAnotherModelAndView) {
    capture();
    const orvtest::ScratchFolder folder;
    ASSERT_TRUE(SituationIo::writeFolder(situation.get(), folder.path()));
    const PtrRef<Situation> read(new Situation);
    ASSERT_TRUE(SituationIo::readFolder(read.get(), folder.path()));

    const PtrRef<UnstructGridModel> other(new UnstructGridModel);
    other->setDataSource(memory.source.get());
    // All of this goes.
    other->modelSpec().setPartVisible(0, 1, false);
    other->modelSpec().setPartFringesResultId(0, 1, 1);
    other->addCuttingPlane();
    other->addCuttingPlane();
    other->addCuttingPlane();
    const PtrRef<vis::View> otherView(new vis::View);
    ASSERT_TRUE(read->applyTo(other.get(), otherView.get(), &error)) << error.message();
    EXPECT_EQ(shownBy(*other), shownBy(*model));
    EXPECT_EQ(shownBy(*otherView), shownBy(*view));
    EXPECT_EQ(otherView->modelCount(), 0u);
}

// Which any later version must be able to read.
TEST_F(SituationTest, KeepsToTheFormatOfTheFirstVersion) {
    capture();
    situation->setName("Wing");
    situation->setDescription("Two\nlines");
    situation->setAllUserData({{"author", "A. N. Other"}});
    HitItem item;
    item.setStateId(2);
    item.setGeometryIndex(0);
    item.setPartId(1);
    item.setItemIndex(0);
    item.setNodeIndex(5);
    item.setCoordinate({0.5, 1, 0});
    situation->setSelection({{item}, 2, false});
    const std::string expected = orvtest::testDataFolder() + "/situation/captured.xml";
    const orvtest::ScratchFolder folder;
    ASSERT_TRUE(SituationIo::writeFolder(situation.get(), folder.path()));
    if (folder.read("Situation.xml") != orvtest::readWholeFile(expected)) {
        SituationIo::writeArchiveFile(situation.get(), testing::TempDir() + "captured.xml");
        FAIL() << "compare " << expected << " with " << testing::TempDir() + "captured.xml";
    }
    const PtrRef<Situation> read(new Situation);
    ASSERT_TRUE(SituationIo::readArchiveFile(read.get(), expected, &error)) << error.message();
    const PtrRef<UnstructGridModel> other(new UnstructGridModel);
    other->setDataSource(memory.source.get());
    const PtrRef<vis::View> otherView(new vis::View);
    ASSERT_TRUE(read->applyTo(other.get(), otherView.get(), &error)) << error.message();
    EXPECT_EQ(shownBy(*other) + shownBy(*otherView), shownBy(*model) + shownBy(*view));
}

std::vector<std::uint8_t> pictureOf(const vis::View& view) {
    vis::Image image;
    Str reason;
    EXPECT_TRUE(view.render(160, 120, &image, &reason)) << reason;
    return {image.bytes().begin(), image.bytes().end()};
}

TEST_F(SituationTest, GivesTheSamePicturePixelForPixel) {
    view->addModel(model.get());
    ASSERT_TRUE(view->fit(160, 120));
    capture();
    const std::vector<std::uint8_t> picture = pictureOf(*view);
    const orvtest::ScratchFolder folder;
    ASSERT_TRUE(SituationIo::writeFolder(situation.get(), folder.path()));
    const PtrRef<Situation> read(new Situation);
    ASSERT_TRUE(SituationIo::readFolder(read.get(), folder.path()));

    const MemoryModel reopened;
    const PtrRef<UnstructGridModel> other(new UnstructGridModel);
    other->setDataSource(reopened.source.get());
    other->modelSpec().setStateId(1);
    const PtrRef<vis::View> otherView(new vis::View);
    otherView->addModel(other.get());
    ASSERT_TRUE(otherView->fit(160, 120));
    EXPECT_FALSE(pictureOf(*otherView) == picture);
    ASSERT_TRUE(read->applyTo(other.get(), otherView.get(), &error)) << error.message();
    EXPECT_TRUE(pictureOf(*otherView) == picture);
    // The parts that were hidden matter to it, and so does the shape.
    other->modelSpec().setPartVisible(0, 3, true);
    EXPECT_FALSE(pictureOf(*otherView) == picture);
    other->modelSpec().setPartVisible(0, 3, false);
    other->modelSpec().setDisplaced(false);
    EXPECT_FALSE(pictureOf(*otherView) == picture);
}

TEST_F(SituationTest, KeepsAParallelPicturesAngle) {
    view->camera()->setParallel(3.25);
    capture();
    const PtrRef<vis::View> otherView(new vis::View);
    ASSERT_TRUE(situation->applyTo(model.get(), otherView.get(), nullptr));
    EXPECT_TRUE(otherView->camera()->isParallel());
    EXPECT_EQ(otherView->camera()->height(), 3.25);
    EXPECT_EQ(otherView->camera()->angle(), 42.0);
}

TEST_F(SituationTest, FindsByNameWhatHasOtherIds) {
    capture();
    const PtrRef<DataSourceMemory> source = renumberedSource();
    const PtrRef<UnstructGridModel> other(new UnstructGridModel);
    other->setDataSource(source.get());
    ASSERT_TRUE(situation->applyTo(other.get(), view.get(), &error)) << error.message();
    const ModelSpec& spec = other->modelSpec();
    EXPECT_EQ(spec.stateId(), 20);
    EXPECT_EQ(spec.fringesResultId(), 3);
    EXPECT_EQ(spec.vectorResultId(), 2);
    EXPECT_EQ(spec.displacementResultId(), 2);
    // "Column" keeps its id, "Bolt" and "Nut" exchange theirs, and "Roof" has got that of "Base".
    EXPECT_EQ(spec.partFringesResultIds(), (std::map<std::pair<std::size_t, int>, int>{{{0, 2}, 1}, {{1, 2}, -1}}));
    EXPECT_EQ(spec.hiddenParts(), (std::set<std::pair<std::size_t, int>>{{0, 1}, {1, 1}}));
    EXPECT_EQ(other->cuttingPlane(0)->mapScalarResultId(), 1);
    EXPECT_EQ(other->cuttingPlane(1)->mapScalarResultId(), -1);
}

// The states of the source, and the id of the one that is taken for state 2, "Step 2" at the time 1.
TEST_F(SituationTest, FindsTheStateByItsNameOrItsReference) {
    struct Case {
        const char* what;
        std::vector<StateInfo> states;
        int found;
    };
    using S = StateInfo;
    const Case cases[] = {
        {"all the same", {S(1, "Step 2", S::TIME, 1.0), S(2, "Step 2", S::TIME, 1.0)}, 2},
        {"another id", {S(2, "Step 1", S::TIME, 0.5), S(4, "Step 2", S::TIME, 1.0)}, 4},
        {"name before reference", {S(2, "Step 9", S::TIME, 1.0), S(4, "Step 2", S::TIME, 3.0)}, 4},
        {"the one of two names", {S(2, "Step 2", S::TIME, 7.0), S(4, "Step 2", S::TIME, 1.0)}, 4},
        {"reference alone", {S(1, "Step 2b", S::TIME, 1.0), S(2, "x", S::FREQUENCY, 1.0)}, 1},
        {"two names", {S(1, "Step 2", S::TIME, 3.0), S(3, "Step 2", S::TIME, 4.0)}, 5},
        {"two references", {S(1, "a", S::TIME, 1.0), S(3, "b", S::TIME, 1.0)}, 5},
        {"the id alone", {S(2, "Step 20", S::TIME, 20.0)}, 5},
        {"another kind of reference", {S(3, "a", S::LOAD_CASE, 1.0)}, 5},
    };
    capture();
    for (const Case& c : cases) {
        const PtrRef<DataSourceMemory> source(new DataSourceMemory(1));
        source->addState(StateInfo(5, "shown", StateInfo::TIME, 100.0));
        for (const StateInfo& info : c.states) {
            source->addState(info);
        }
        const PtrRef<UnstructGridModel> other(new UnstructGridModel);
        other->setDataSource(source.get());
        other->modelSpec().setStateId(5);
        EXPECT_FALSE(situation->applyTo(other.get(), view.get(), &error)); // It has no parts.
        EXPECT_EQ(other->modelSpec().stateId(), c.found) << c.what;
        EXPECT_EQ(error.message().find("state 'Step 2'") != Str::npos, c.found == 5) << error.message();
    }
}

TEST_F(SituationTest, ANamelessStateGoesByItsReference) {
    const PtrRef<DataSourceMemory> source(new DataSourceMemory(1));
    source->addState(StateInfo(1, "", StateInfo::TIME, 1.0));
    source->addState(StateInfo(2, "", StateInfo::TIME, 2.0));
    model->modelSpec().clear();
    model->modelSpec().setStateId(2);
    model->setDataSource(source.get());
    capture();
    const PtrRef<DataSourceMemory> later(new DataSourceMemory(1));
    later->addState(StateInfo(2, "", StateInfo::TIME, 1.0));
    later->addState(StateInfo(3, "", StateInfo::TIME, 2.0));
    model->setDataSource(later.get());
    situation->applyTo(model.get(), view.get(), nullptr);
    EXPECT_EQ(model->modelSpec().stateId(), 3);
    // Two that are alike in every respect: only the id can tell them apart.
    const PtrRef<DataSourceMemory> twins(new DataSourceMemory(1));
    twins->addState(StateInfo(4, "", StateInfo::TIME, 2.0));
    twins->addState(StateInfo(5, "", StateInfo::TIME, 2.0));
    model->setDataSource(twins.get());
    EXPECT_EQ(failedApply(), "cannot show again: state with the id 2; the rest of the situation is shown");
    EXPECT_EQ(model->modelSpec().stateId(), 3);
}

TEST_F(SituationTest, AModelWithoutAStateIsShownWithoutOne) {
    model->modelSpec().clear();
    capture();
    const PtrRef<DataSourceMemory> source(new DataSourceMemory(1));
    source->addState(StateInfo(7, "", StateInfo::TIME, UNDEFINED_DOUBLE)); // As alike to no state as can be.
    model->setDataSource(source.get());
    model->modelSpec().setStateId(7);
    situation->applyTo(model.get(), view.get(), nullptr);
    EXPECT_EQ(model->modelSpec().stateId(), -1);
}

TEST_F(SituationTest, ShowsTheRestWhenThingsAreMissing) {
    capture();
    const PtrRef<DataSourceMemory> source(new DataSourceMemory(1));
    source->addGeometry();
    source->addPart(0, "Roof");
    source->addPart(0, "Roof");
    source->addState(StateInfo(1, "Step 2", StateInfo::TIME, 1.0));
    source->addResult(SCALAR, "Temperature", PER_NODE);
    source->addResult(SCALAR, "Pressure", PER_NODE); // Another mapping.
    source->addResult(DISPLACEMENT, "Velocity", PER_NODE);
    source->addResult(DISPLACEMENT, "Motion", PER_NODE);
    const PtrRef<UnstructGridModel> other(new UnstructGridModel);
    other->setDataSource(source.get());
    other->modelSpec().setVectorResultId(4);
    const PtrRef<vis::View> otherView(new vis::View);
    EXPECT_FALSE(situation->applyTo(other.get(), otherView.get(), &error));
    EXPECT_EQ(error.message(), "cannot show again: vector 'Velocity', part 'Column', part 'Bolt', part 'Roof', part "
                               "'Nut', scalar 'Pressure'; the rest of the situation is shown");
    EXPECT_FALSE(situation->applyTo(other.get(), otherView.get(), nullptr));
    EXPECT_EQ(other->modelSpec().stateId(), 1);
    EXPECT_EQ(other->modelSpec().fringesResultId(), 1);
    EXPECT_EQ(other->modelSpec().vectorResultId(), -1);
    EXPECT_EQ(other->modelSpec().displacementResultId(), 2);
    EXPECT_TRUE(other->modelSpec().isDisplaced());
    EXPECT_TRUE(other->modelSpec().hiddenParts().empty());
    EXPECT_EQ(other->cuttingPlaneCount(), 2u);
    EXPECT_EQ(other->cuttingPlane(0)->mapScalarResultId(), -1);
    EXPECT_EQ(shownBy(*otherView), shownBy(*view));
}

TEST_F(SituationTest, NamesTenOfManyThatAreMissing) {
    const PtrRef<DataSourceMemory> source(new DataSourceMemory(1));
    source->addGeometry();
    for (int id = 1; id <= 12; ++id) {
        source->addPart(0, "P" + std::to_string(id));
        model->modelSpec().setPartVisible(0, id, false);
    }
    model->setDataSource(source.get());
    model->modelSpec().setStateId(-1);
    capture();
    model->setDataSource(PtrRef<DataSourceMemory>(new DataSourceMemory(1)).get());
    // The first is the part of the fixture that has fringes of its own and here is called P2.
    EXPECT_EQ(failedApply(),
              "cannot show again: part 'P2', part 'P1', part 'P2', part 'P3', part 'P4', part 'P5', part "
              "'P6', part 'P7', part 'P8', part 'P9' and 3 more; the rest of the situation is shown");
}

TEST_F(SituationTest, CustomResultsAreFoundWhenTheyAreRegistered) {
    const ResultInfo sum = orvtest::sumOf("Sum", {memory.temperature, memory.temperature});
    memory.source->directory()->setCustomResultInfo(sum);
    model->modelSpec().setFringesResultId(sum.id());
    capture();
    ASSERT_TRUE(situation->applyTo(model.get(), view.get(), &error)) << error.message();
    EXPECT_EQ(model->modelSpec().fringesResultId(), sum.id());

    memory.source->directory()->removeCustomResultInfo(sum);
    memory.source->addResult(SCALAR, "Sum", PER_NODE); // Of the file: not the one.
    EXPECT_EQ(failedApply(), "cannot show again: custom scalar 'Sum' (to be registered first); the rest of the "
                             "situation is shown");
    EXPECT_EQ(model->modelSpec().fringesResultId(), -1);

    // As in another process: the same name, another id.
    const ResultInfo again = orvtest::sumOf("Sum", {memory.temperature, memory.temperature});
    memory.source->directory()->setCustomResultInfo(again);
    ASSERT_TRUE(situation->applyTo(model.get(), view.get(), &error)) << error.message();
    EXPECT_EQ(model->modelSpec().fringesResultId(), again.id());

    const ResultInfo third = orvtest::sumOf("Sum", {memory.temperature});
    memory.source->directory()->setCustomResultInfo(third);
    EXPECT_FALSE(situation->applyTo(model.get(), view.get(), nullptr)); // Which of the two?
}

TEST_F(SituationTest, WhatTheDataSourceDoesNotKnowIsNotCaptured) {
    ModelSpec& spec = model->modelSpec();
    spec.clear();
    spec.setStateId(77);
    spec.setFringesResultId(99);
    spec.setPartFringesResultId(0, 2, 99);
    spec.setPartFringesResultId(5, 1, 1);
    spec.setPartVisible(0, 88, false);
    capture();
    ASSERT_TRUE(situation->applyTo(model.get(), view.get(), &error)) << error.message();
    EXPECT_EQ(spec.stateId(), -1);
    EXPECT_EQ(spec.fringesResultId(), -1);
    EXPECT_EQ(spec.partFringesResultIds(), (std::map<std::pair<std::size_t, int>, int>{{{0, 2}, -1}}));
    EXPECT_TRUE(spec.hiddenParts().empty());
}

TEST_F(SituationTest, AModelWithoutADataSourceIsLeftAlone) {
    const PtrRef<UnstructGridModel> empty(new UnstructGridModel);
    situation->capture(*empty, *view);
    EXPECT_TRUE(situation->sourceModelFile().isEmpty());
    const std::string before = shownBy(*model);
    const PtrRef<vis::View> otherView(new vis::View);
    EXPECT_TRUE(situation->applyTo(model.get(), otherView.get(), &error)) << error.message();
    EXPECT_EQ(shownBy(*model), before);
    EXPECT_EQ(shownBy(*otherView), shownBy(*view));

    capture();
    const PtrRef<vis::View> third(new vis::View);
    EXPECT_FALSE(situation->applyTo(empty.get(), third.get(), &error));
    EXPECT_EQ(error.message(), "cannot show again: the model, as it has no data source; the rest of the situation is "
                               "shown");
    EXPECT_EQ(shownBy(*third), shownBy(*view));
}

TEST_F(SituationTest, NothingHappensWithoutACapture) {
    const std::string before = shownBy(*model) + shownBy(*view);
    EXPECT_EQ(failedApply(), "nothing has been captured in this situation");
    const PtrRef<PropertySetCollection> collection(new PropertySetCollection);
    collection->append(PtrRef<PropertySet>(new PropertySet("the application's")).get());
    situation->setPropertyCollection(collection.get());
    EXPECT_EQ(failedApply(), "nothing has been captured in this situation");
    EXPECT_EQ(shownBy(*model) + shownBy(*view), before);
}

TEST_F(SituationTest, ApplyNeedsAModelAndAView) {
    capture();
    orvtest::AssertRecorder recorder;
    EXPECT_FALSE(situation->applyTo(nullptr, view.get(), nullptr));
    EXPECT_EQ(recorder.take(),
              (std::vector<orvtest::FailedAssert>{{"OrvUnstructGrid/Situation", "model", std::nullopt}}));
    EXPECT_FALSE(situation->applyTo(model.get(), nullptr, nullptr));
    EXPECT_EQ(recorder.take(),
              (std::vector<orvtest::FailedAssert>{{"OrvUnstructGrid/Situation", "view", std::nullopt}}));
}

// A file may say anything, and an application too.
TEST_F(SituationTest, SetsThatMakeNoSenseDoNoHarm) {
    const double infinity = std::numeric_limits<double>::infinity();
    const PropertyValue oddities[] = {1e300,
                                      -infinity,
                                      std::numeric_limits<double>::quiet_NaN(),
                                      std::numeric_limits<int>::max(),
                                      std::numeric_limits<int>::min(),
                                      false,
                                      Str("odd"),
                                      Vec3d(),
                                      Vec3d(0, infinity, 1e300),
                                      std::vector<double>{1e18, -1}};
    situation->capture(*model, *view);
    const std::size_t count = situation->propertyCollection()->count();
    for (std::size_t i = 0; i < count; ++i) {
        const std::map<Str, PropertyValue> values = situation->propertyCollection()->propertySet(i)->values();
        for (const auto& [key, value] : values) {
            for (const PropertyValue& odd : oddities) {
                situation->propertyCollection()->propertySet(i)->setValue(key, odd);
                situation->applyTo(model.get(), view.get(), nullptr);
                situation->selection();
                EXPECT_TRUE(std::isfinite(model->modelSpec().displacementScale()));
            }
            situation->propertyCollection()->propertySet(i)->setValue(key, value);
        }
    }
    ASSERT_TRUE(situation->applyTo(model.get(), view.get(), &error)) << error.message();
}

TEST_F(SituationTest, TellsOfACameraThatIsNone) {
    capture();
    const std::string before = shownBy(*view);
    PropertySet* camera = situation->propertyCollection()->find("situation.camera");
    camera->setValue("eye", *std::get_if<Vec3d>(camera->value("viewReferencePoint")));
    EXPECT_EQ(failedApply(), "cannot show again: the camera; the rest of the situation is shown");
    EXPECT_EQ(shownBy(*view), before);
}

TEST_F(SituationTest, KeepsAColorMapWithoutAFixedRange) {
    view->setColorMap(vis::ColorMap());
    capture();
    const PtrRef<vis::View> otherView(new vis::View);
    vis::ColorMap fixed;
    fixed.setFixedRange(1, 2);
    otherView->setColorMap(fixed);
    ASSERT_TRUE(situation->applyTo(model.get(), otherView.get(), nullptr));
    EXPECT_EQ(shownBy(*otherView), shownBy(*view));
}

TEST_F(SituationTest, TellsOfWhatTheViewCannotDo) {
    const std::tuple<const char*, const char*, PropertyValue, const char*> cases[] = {
        {"situation.drawing", "antialiasing", 9, "how the view is drawn"},
        {"situation.colorMap", "kind", Str("magma"), "the colour map"},
        {"situation.colorMap", "bandCount", 257, "the colour map"},
        {"situation.colorMap", "bandCount", -1, "the colour map"},
        {"situation.colorMap", "maximum", -0.1, "the colour map"},
        {"situation.camera", "angle", 180.0, "the camera"},
        {"situation.camera", "height", 0.0, "the camera"},
        {"situation.camera", "up", Vec3d(0, std::numeric_limits<double>::infinity(), 0), "the camera"},
    };
    for (const auto& [classType, key, value, what] : cases) {
        capture();
        situation->propertyCollection()->find(classType)->setValue(key, value);
        const std::string before = shownBy(*view);
        EXPECT_EQ(failedApply(), "cannot show again: " + std::string(what) + "; the rest of the situation is shown");
        EXPECT_EQ(shownBy(*view), before) << key;
    }
}

TEST_F(SituationTest, TellsOfAPlaneThatIsNone) {
    capture();
    situation->propertyCollection()->find("situation.cuttingPlane")->setValue("normal", Vec3d());
    EXPECT_EQ(failedApply(),
              "cannot show again: a cutting plane, which has no normal; the rest of the situation is shown");
    EXPECT_EQ(model->cuttingPlaneCount(), 2u);
}

HitItem itemWith(int id, std::size_t index, const Vec3d& coordinate) {
    HitItem item;
    item.setStateId(id);
    item.setPartId(id + 1);
    item.setItemType(HitItem::CUTTING_PLANE);
    item.setGeometryIndex(index);
    item.setItemIndex(index + 1);
    item.setNodeIndex(index + 2);
    item.setElementIndex(index + 3);
    item.setElementLocalSurfaceIndex(index + 4);
    item.setCoordinate(coordinate);
    return item;
}

void expectEqual(const HitItem& a, const HitItem& b) {
    EXPECT_EQ(a.stateId(), b.stateId());
    EXPECT_EQ(a.partId(), b.partId());
    EXPECT_EQ(a.itemType(), b.itemType());
    EXPECT_EQ(a.geometryIndex(), b.geometryIndex());
    EXPECT_EQ(a.itemIndex(), b.itemIndex());
    EXPECT_EQ(a.nodeIndex(), b.nodeIndex());
    EXPECT_EQ(a.elementIndex(), b.elementIndex());
    EXPECT_EQ(a.elementLocalSurfaceIndex(), b.elementLocalSurfaceIndex());
    EXPECT_EQ(a.coordinate(), b.coordinate());
}

TEST_F(SituationTest, KeepsASelectionWithinItsProperties) {
    const std::vector<HitItem> items = {itemWith(3, 5000000000, {1.0 / 3.0, -1e-300, 7}), HitItem(),
                                        itemWith(-2000000000, 0, UNDEFINED_VECTOR)};
    situation->setSelection({items, 4, true});
    situation->setSelection({items, 3, true});
    EXPECT_EQ(situation->propertyCollection()->count(), 1u);
    const orvtest::ScratchFolder folder;
    ASSERT_TRUE(SituationIo::writeFolder(situation.get(), folder.path()));
    const PtrRef<Situation> read(new Situation);
    ASSERT_TRUE(SituationIo::readFolder(read.get(), folder.path()));
    const SituationSelection selection = read->selection();
    EXPECT_EQ(selection.itemType, 3);
    EXPECT_TRUE(selection.isMultiSelectionEnabled);
    ASSERT_EQ(selection.items.size(), items.size());
    for (std::size_t i = 0; i < items.size(); ++i) {
        expectEqual(selection.items[i], items[i]);
    }
}

TEST_F(SituationTest, KeepsAnEmptySelection) {
    situation->setSelection({{}, 2, true});
    EXPECT_TRUE(situation->selection().items.empty());
    EXPECT_EQ(situation->selection().itemType, 2);
    EXPECT_TRUE(situation->selection().isMultiSelectionEnabled);
}

TEST_F(SituationTest, ASelectionOfNonsenseIsEmpty) {
    using Numbers = std::vector<double>;
    const std::pair<const char*, PropertyValue> nonsense[] = {
        {"coordinates", Numbers{1, 2}},
        {"coordinates", Numbers{1, 2, 3, 4, 5, 6}},
        {"coordinates", 3.0},
        {"nodeIndexes", Numbers{}},
        {"nodeIndexes", Numbers{0.5}},
        {"nodeIndexes", Numbers{-1}},
        {"nodeIndexes", Numbers{9007199254740992.0}}, // 2^53
        {"nodeIndexes", Numbers{std::numeric_limits<double>::quiet_NaN()}},
        {"stateIds", Numbers{2147483648.0}},
        {"stateIds", Numbers{-2147483649.0}},
        {"stateIds", Numbers{1.5}},
        {"stateIds", Numbers{std::numeric_limits<double>::quiet_NaN()}},
        {"partIds", Str("1")},
        {"itemTypes", Numbers{2}},
        {"itemTypes", Numbers{-1}},
    };
    for (const auto& [key, value] : nonsense) {
        situation->setSelection({{HitItem()}, 2, true});
        ASSERT_EQ(situation->selection().items.size(), 1u);
        situation->propertyCollection()->find("situation.selection")->setValue(key, value);
        EXPECT_TRUE(situation->selection().items.empty()) << key;
        EXPECT_EQ(situation->selection().itemType, 0);
        EXPECT_FALSE(situation->selection().isMultiSelectionEnabled);
    }
}

} // namespace
