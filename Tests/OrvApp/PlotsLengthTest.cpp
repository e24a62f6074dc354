#include "LibCore/rvfLogger.h"
#include "OrvApp/AppComponent.h"
#include "OrvApp/Plots.h"
#include "OrvApp/Selection.h"
#include "OrvPlot2d/OverlayPlot.h"
#include "OrvUnstructGrid/CuttingPlane.h"
#include "OrvUnstructGrid/Progress.h"
#include "OrvVisualization/View.h"
#include "Tests/OrvApp/CatalogueTest.h"

#include <functional>

using namespace orv;
using orv::app::AppComponent;
using orv::app::Models;
using orv::app::Plots;
using orv::app::Selection;
using orv::app::Views;
using orv::plt::Curve;
using orv::plt::OverlayPlot;
using orvtest::failed;
using orvtest::FailedAssert;
using orvtest::LogMessage;
using ug::HitItem;

using Failures = std::vector<FailedAssert>;
using Messages = std::vector<LogMessage>;
using Numbers = std::vector<double>;
using Points = std::vector<Vec3d>;

namespace {

const std::string inside = "OrvApp/Plots_p";
const FailedAssert badPlotIndex = failed(inside, "plotIndex < count()");
const FailedAssert badIndex = failed(inside, "index < count()");
const FailedAssert noPlot = failed(inside, "plot");

LogMessage error(const std::string& message) {
    return {1,
            "orv.comp.app",
            message,
            inside,
            "orv::plt::Curve *orv::app::PlotsPrivate::addLengthCurve(size_t, const orv::ug::UnstructGridModel *, "
            "std::vector<orv::Vec3d> *)",
            "addLengthCurve"};
}

const LogMessage nothingSelected = error("No items are selected. Cannot add length curve.");
const LogMessage severalTypes =
    error("All selected items must be on the same item type (cutting plane or part). Cannot add length curve.");
const LogMessage severalPlanes =
    error("All selected items must be on the same cutting plane. Cannot add length curve.");
const LogMessage noScalar = error("Could not determine scalar to plot. Cannot add length curve.");
const LogMessage noPath =
    error("Could not create path on surface along the given selected items. Cannot add length curve.");

/// Notes what it is told, and does something at each call.
class Notes : public ug::Progress {
public:
    void setPercent(int percent) override {
        percents.push_back(percent);
        if (atEach) {
            atEach(percent);
        }
    }

    std::vector<int> percents;
    std::function<void(int)> atEach;
};

/// A row of unit squares in the plane z = 0, the first corner at (x, 0): node 2 i is at (x + i, 0), the next one at
/// (x + i, 1).
void fillWithSquares(ug::DataPart* part, unsigned int count, double x) {
    Numbers coordinates;
    std::vector<std::uint32_t> connectivity;
    for (unsigned int i = 0; i <= count; ++i) {
        coordinates.insert(coordinates.end(), {x + i, 0, 0, x + i, 1, 0});
    }
    for (unsigned int i = 0; i < count; ++i) {
        connectivity.insert(connectivity.end(), {2 * i, 2 * i + 2, 2 * i + 3, 2 * i + 1});
    }
    part->nodes()->set(std::move(coordinates), {});
    part->elements()->set(std::vector<ug::ElementType>(count, ug::QUADRILATERAL), std::move(connectivity), {});
}

/// Two strips of squares: part 0 from x = 0 to 3, part 1, which touches it, from x = 3 to 5. The scalar "X" is the x of
/// each node, "Minus" the same below zero; "Nowhere" has no values. A view, whose selection takes several items, and
/// one plot.
class PlotsLengthTest : public orvtest::CatalogueTest {
protected:
    PlotsLengthTest() {
        source->addGeometry();
        fillWithSquares(source->addPart(0, "Left"), 3, 0);
        fillWithSquares(source->addPart(0, "Right"), 2, 3);
        source->addState(ug::StateInfo(1, "", ug::StateInfo::TIME, 0));
        x = addScalar("X", 1);
        minus = addScalar("Minus", -1);
        nowhere = source->addResult(ug::SCALAR, "Nowhere", ug::PER_NODE).id();
        model = orvtest::modelOn(source.get(), 1);
        model->modelSpec().setFringesResultId(x);
        Models::instance()->add(model.get());
        Views::instance()->add();
        selection = Views::instance()->currentViewSelection();
        selection->enableMultiSelection(true);
        plot = Plots::instance()->add();
        AppComponent::setProgressInstance(&progress);
    }

    ~PlotsLengthTest() override {
        AppComponent::setProgressInstance(nullptr);
    }

    int addScalar(const char* name, double sign) {
        const ug::ResultInfo info = source->addResult(ug::SCALAR, name, ug::PER_NODE);
        for (size_t part = 0; part < 2; ++part) {
            const ug::DataNodes* nodes = source->state(0)->geometry(0)->part(part)->nodes();
            Numbers values;
            for (size_t i = 0; i < nodes->nodeCount(); ++i) {
                values.push_back(sign * nodes->node(i).x());
            }
            EXPECT_TRUE(source->setValues(1, info, 0, part, values, nullptr));
        }
        return info.id();
    }

    /// What a pick on a part fills in. The coordinate is on neither the node nor the centre of the element.
    static HitItem partHit(size_t part, size_t node, size_t element, const Vec3d& coordinate) {
        HitItem item;
        item.setStateId(1);
        item.setGeometryIndex(0);
        item.setPartId(int(part) + 1);
        item.setItemIndex(part);
        item.setNodeIndex(node);
        item.setElementIndex(element);
        item.setElementLocalSurfaceIndex(0);
        item.setCoordinate(coordinate);
        return item;
    }

    /// On the square at the left end of all, and on the one at the right end.
    static HitItem leftHit() {
        return partHit(0, 0, 0, {0.25, 0.75, 0});
    }

    static HitItem rightHit() {
        return partHit(1, 4, 1, {4.25, 0.75, 0});
    }

    static HitItem planeHit(size_t plane, const Vec3d& coordinate) {
        HitItem item = partHit(0, UNDEFINED_SIZE_T, UNDEFINED_SIZE_T, coordinate);
        item.setItemType(HitItem::CUTTING_PLANE);
        item.setItemIndex(plane);
        return item;
    }

    void select(const std::vector<HitItem>& items) {
        selection->removeAll();
        for (const HitItem& item : items) {
            selection->add(item);
        }
    }

    Curve* add(size_t plotIndex = 0) {
        return Plots::instance()->addLengthCurve(plotIndex, model.get(), &path);
    }

    void expectError(const LogMessage& message) {
        EXPECT_EQ(add(), nullptr);
        EXPECT_EQ(logs.take(), Messages{message});
        EXPECT_EQ(plot->curveCount(), 0u);
    }

    /// Neither the plot nor the path has been written to, and nobody has been told of progress.
    void expectUntouched() const {
        EXPECT_EQ(plot->title(), Str());
        EXPECT_EQ(plot->axisSettings()->xAxis().title, Str());
        EXPECT_EQ(plot->axisSettings()->yAxis().title, Str());
        EXPECT_EQ(path, earlierPath);
        EXPECT_EQ(progress.percents, std::vector<int>());
    }

    void expectPathEnds(const Vec3d& first, const Vec3d& last) {
        ASSERT_GE(path.size(), 2u);
        EXPECT_NEAR((path.front() - first).length(), 0.0, 1e-12);
        EXPECT_NEAR((path.back() - last).length(), 0.0, 1e-12);
    }

    const Points earlierPath = {{7, 7, 7}};

    PtrRef<ug::DataSourceMemory> source = new ug::DataSourceMemory(1);
    PtrRef<ug::UnstructGridModel> model;
    PtrRef<Selection> selection;
    OverlayPlot* plot;
    Notes progress;
    Points path = earlierPath;
    int x;
    int minus;
    int nowhere;
};

TEST_F(PlotsLengthTest, TheScalarStandsOverTheLengthOfTheWay) {
    select({partHit(0, 0, 0, {}), partHit(0, 4, 0, {})});
    const Curve* curve = add();
    ASSERT_NE(curve, nullptr);
    EXPECT_EQ(plot->curveCount(), 1u);
    EXPECT_EQ(plot->curve(0), curve);
    EXPECT_EQ(curve->name(), "Scalar vs. Length");
    // Along the lower side of two squares: three nodes.
    EXPECT_EQ(path, (Points{{0, 0, 0}, {1, 0, 0}, {2, 0, 0}}));
    EXPECT_EQ(curve->x(), (Numbers{0, 1, 2}));
    EXPECT_EQ(curve->y(), (Numbers{0, 1, 2}));
    EXPECT_EQ(plot->title(), "Plot 1");
    EXPECT_EQ(plot->axisSettings()->xAxis().title, "Length");
    EXPECT_EQ(plot->axisSettings()->yAxis().title, "X");
    EXPECT_EQ(progress.percents, (std::vector<int>{20, 50, 100}));
}

TEST_F(PlotsLengthTest, ThePathIsGivenToThoseWhoWantIt) {
    select({leftHit(), rightHit()});
    EXPECT_NE(Plots::instance()->addLengthCurve(0, model.get(), nullptr), nullptr);
    EXPECT_EQ(plot->curveCount(), 1u);
}

TEST_F(PlotsLengthTest, TheWayGoesFromPartToPart) {
    selection->setItemType(Selection::COORDINATE);
    select({leftHit(), rightHit()});
    const Curve* curve = add();
    expectPathEnds({0.25, 0.75, 0}, {4.25, 0.75, 0});
    EXPECT_NEAR(curve->x().back(), 4.0, 1e-12);
    EXPECT_NEAR(curve->y().front(), 0.25, 1e-12);
    EXPECT_NEAR(curve->y().back(), 4.25, 1e-12);
}

TEST_F(PlotsLengthTest, AllItemsAreOnTheWayInTheirOrder) {
    select({partHit(0, 0, 0, {}), partHit(0, 4, 0, {}), partHit(0, 2, 0, {})});
    const Curve* curve = add();
    EXPECT_EQ(path, (Points{{0, 0, 0}, {1, 0, 0}, {2, 0, 0}, {1, 0, 0}}));
    EXPECT_EQ(curve->x(), (Numbers{0, 1, 2, 3}));
    EXPECT_EQ(curve->y(), (Numbers{0, 1, 2, 1}));
}

TEST_F(PlotsLengthTest, TheSelectionsTypeChoosesThePoints) {
    const struct {
        Selection::ItemType type;
        Vec3d first;
        Vec3d last;
    } rows[] = {
        {Selection::UNDEFINED, {0, 0, 0}, {5, 0, 0}},
        {Selection::ELEMENT, {0.5, 0.5, 0}, {4.5, 0.5, 0}},
        {Selection::NODE, {0, 0, 0}, {5, 0, 0}},
        {Selection::ELEMENT_NODE, {0, 0, 0}, {5, 0, 0}},
        {Selection::ELEMENT_SURFACE, {0, 0, 0}, {5, 0, 0}},
        {Selection::COORDINATE, {0.25, 0.75, 0}, {4.25, 0.75, 0}},
    };
    for (const auto& row : rows) {
        selection->setItemType(row.type);
        select({leftHit(), rightHit()});
        EXPECT_NE(add(), nullptr);
        expectPathEnds(row.first, row.last);
    }
}

TEST_F(PlotsLengthTest, WithoutAViewNothingIsSelected) {
    Views::instance()->removeCurrent();
    expectError(nothingSelected);
    expectUntouched();
}

TEST_F(PlotsLengthTest, AnEmptySelectionIsToldWhateverThePlot) {
    expectError(nothingSelected);
    expectUntouched();
    EXPECT_EQ(add(1), nullptr);
    EXPECT_EQ(asserts.take(), Failures{badPlotIndex});
    EXPECT_EQ(logs.take(), Messages{nothingSelected});
}

TEST_F(PlotsLengthTest, TheSelectionIsThatOfTheCurrentView) {
    select({leftHit(), rightHit()});
    Views::instance()->add();
    expectError(nothingSelected);
    Views::instance()->setCurrentIndex(0);
    EXPECT_NE(add(), nullptr);
}

TEST_F(PlotsLengthTest, AllItemsLieOnOneKindOfThing) {
    select({leftHit(), rightHit(), planeHit(0, {})});
    expectError(severalTypes);
    select({planeHit(0, {}), leftHit()});
    expectError(severalTypes);
    // The kinds are looked at before the planes.
    select({planeHit(0, {}), planeHit(1, {}), leftHit()});
    expectError(severalTypes);
    expectUntouched();
}

TEST_F(PlotsLengthTest, OnPlanesAllItemsLieOnOne) {
    select({planeHit(1, {}), planeHit(0, {})});
    expectError(severalPlanes);
    select({planeHit(1, {}), planeHit(1, {}), planeHit(0, {})});
    expectError(severalPlanes);
    expectUntouched();
}

TEST_F(PlotsLengthTest, TheFirstItemsPartSaysWhichScalar) {
    model->modelSpec().setPartFringesResultId(0, 2, minus);
    select({leftHit(), rightHit()});
    EXPECT_EQ(add()->y().back(), 5);
    EXPECT_EQ(plot->axisSettings()->yAxis().title, "X");
    select({rightHit(), leftHit()});
    EXPECT_EQ(add()->y().front(), -5);
    EXPECT_EQ(plot->axisSettings()->yAxis().title, "Minus");
}

TEST_F(PlotsLengthTest, APartThatShowsNoScalarGivesNoCurve) {
    model->modelSpec().setPartFringesResultId(0, 1, -1);
    select({leftHit(), rightHit()});
    expectError(noScalar);
    expectUntouched();
    // The plot is looked for behind that.
    EXPECT_EQ(add(1), nullptr);
    EXPECT_EQ(asserts.take(), Failures{badPlotIndex});
    EXPECT_EQ(logs.take(), Messages{noScalar});
}

TEST_F(PlotsLengthTest, ThePlotMustBeListed) {
    select({leftHit(), rightHit()});
    EXPECT_EQ(add(1), nullptr);
    EXPECT_EQ(asserts.take(), (Failures{badPlotIndex, badIndex, noPlot}));
    Plots::instance()->add(nullptr);
    EXPECT_EQ(add(1), nullptr);
    EXPECT_EQ(asserts.take(), Failures{noPlot});
    expectUntouched();
}

TEST_F(PlotsLengthTest, TheTitleCountsThePlotsOfTheList) {
    select({leftHit(), rightHit()});
    plot->setTitle("mine");
    add();
    EXPECT_EQ(plot->title(), "Plot 1");
    OverlayPlot* second = Plots::instance()->add();
    Plots::instance()->add();
    add(1);
    EXPECT_EQ(second->title(), "Plot 3");
    EXPECT_EQ(plot->title(), "Plot 1");
    add();
    EXPECT_EQ(plot->title(), "Plot 3");
    EXPECT_EQ(plot->curveCount(), 2u);
}

TEST_F(PlotsLengthTest, WithoutAWayThePlotKeepsItsNewTitles) {
    select({leftHit()}); // One item is no mistake of the selection, but there is no way from it.
    expectError(noPath);
    EXPECT_EQ(plot->title(), "Plot 1");
    EXPECT_EQ(plot->axisSettings()->xAxis().title, "Length");
    EXPECT_EQ(plot->axisSettings()->yAxis().title, "X");
    EXPECT_EQ(path, earlierPath);
    EXPECT_EQ(progress.percents, std::vector<int>{20});
}

TEST_F(PlotsLengthTest, AWayWithoutValuesIsACurveWithoutPoints) {
    model->modelSpec().setFringesResultId(nowhere);
    select({leftHit(), rightHit()});
    const Curve* curve = add();
    ASSERT_NE(curve, nullptr);
    EXPECT_EQ(curve->pointCount(), 0u);
    EXPECT_EQ(plot->axisSettings()->yAxis().title, "Nowhere");
    EXPECT_EQ(progress.percents, (std::vector<int>{20, 50, 100}));
    expectPathEnds({0, 0, 0}, {5, 0, 0});
}

TEST_F(PlotsLengthTest, AScalarThatIsNotThereHasNoName) {
    model->modelSpec().setFringesResultId(99);
    select({leftHit(), rightHit()});
    plot->axisSettings()->setYAxisTitle("mine");
    const Curve* curve = add();
    ASSERT_NE(curve, nullptr);
    EXPECT_EQ(curve->pointCount(), 0u);
    EXPECT_EQ(plot->axisSettings()->yAxis().title, Str());
}

TEST_F(PlotsLengthTest, NobodyNeedsToListenToProgress) {
    AppComponent::setProgressInstance(nullptr);
    select({leftHit(), rightHit()});
    EXPECT_NE(add(), nullptr);
    EXPECT_EQ(progress.percents, std::vector<int>());
}

TEST_F(PlotsLengthTest, WhatIsWrittenComesInOrder) {
    select({leftHit(), rightHit()});
    progress.atEach = [this](int) {
        EXPECT_EQ(plot->title(), "Plot 1");
        EXPECT_EQ(plot->axisSettings()->xAxis().title, "Length");
        EXPECT_EQ(plot->axisSettings()->yAxis().title, "X");
        EXPECT_EQ(path, earlierPath);
        EXPECT_EQ(plot->curveCount(), 0u);
    };
    EXPECT_NE(add(), nullptr);
    EXPECT_EQ(progress.percents.size(), 3u);
}

TEST_F(PlotsLengthTest, ItemsAreTakenWhenTheWayIsLookedFor) {
    select({partHit(0, 0, 0, {}), partHit(0, 4, 0, {})});
    progress.atEach = [this](int percent) {
        if (percent == 20) {
            selection->add(partHit(0, 6, 0, {}));
        }
    };
    add();
    EXPECT_EQ(path.back(), Vec3d(3, 0, 0));
}

TEST_F(PlotsLengthTest, ASelectionForOneItemIsReadAsFarAsItGoes) {
    select({leftHit(), rightHit()});
    selection->enableMultiSelection(false);
    EXPECT_NE(add(), nullptr);
    // The second item is read to compare it, and once more for the way.
    const FailedAssert notTheFirst = failed("OrvApp/Selection_p", "m_multiSelect || index == 0");
    EXPECT_EQ(asserts.take(), (Failures{notTheFirst, notTheFirst}));
}

TEST_F(PlotsLengthTest, NoMessageIsMadeWhenErrorsAreNotLogged) {
    rvf::Logger* logger = rvf::LogManager::instance()->logger("orv.comp.app");
    const int level = logger->level();
    logger->setLevel(rvf::Logger::LEVEL_NONE);
    EXPECT_EQ(add(), nullptr);
    select({leftHit()});
    EXPECT_EQ(add(), nullptr);
    logger->setLevel(level);
    EXPECT_EQ(logs.take(), Messages());
}

/// A cutting plane at x = 1.5 through a cube of 3 x 1 x 1, which shows "X".
class PlotsLengthOnPlaneTest : public PlotsLengthTest {
protected:
    PlotsLengthOnPlaneTest() {
        source = new ug::DataSourceMemory(1);
        source->addGeometry();
        ug::DataPart* part = source->addPart(0, "Box");
        part->nodes()->set({0, 0, 0, 3, 0, 0, 3, 1, 0, 0, 1, 0, 0, 0, 1, 3, 0, 1, 3, 1, 1, 0, 1, 1}, {});
        part->elements()->set({ug::HEXAHEDRON}, {0, 1, 2, 3, 4, 5, 6, 7}, {});
        source->addState(ug::StateInfo(1, "", ug::StateInfo::TIME, 0));
        const ug::ResultInfo info = source->addResult(ug::SCALAR, "Y", ug::PER_NODE);
        const Numbers values = {0, 0, 1, 1, 0, 0, 1, 1};
        EXPECT_TRUE(source->setValues(1, info, 0, 0, values, nullptr));
        model = orvtest::modelOn(source.get(), 1);
        Models::instance()->add(model.get());
        plane = model->addCuttingPlane();
        plane->setPlane({1.5, 0, 0}, {1, 0, 0});
        scalar = info.id();
    }

    ug::CuttingPlane* plane;
    int scalar;
};

TEST_F(PlotsLengthOnPlaneTest, ThePlanesScalarStandsOverTheStraightWay) {
    plane->setMapScalarResultId(scalar);
    // Whatever the selection is for: there are no nodes and no elements to go through on a plane.
    for (const Selection::ItemType type : {Selection::NODE, Selection::ELEMENT, Selection::COORDINATE}) {
        selection->setItemType(type);
        select({planeHit(0, {1.5, 0.25, 0.5}), planeHit(0, {1.5, 0.75, 0.5})});
        const Curve* curve = add();
        ASSERT_NE(curve, nullptr);
        expectPathEnds({1.5, 0.25, 0.5}, {1.5, 0.75, 0.5});
        EXPECT_NEAR(curve->x().back(), 0.5, 1e-12);
        EXPECT_NEAR(curve->y().front(), 0.25, 1e-12);
        EXPECT_NEAR(curve->y().back(), 0.75, 1e-12);
        EXPECT_EQ(plot->axisSettings()->yAxis().title, "Y");
    }
}

TEST_F(PlotsLengthOnPlaneTest, APlaneWithoutAScalarGivesNoCurveWhateverThePartShows) {
    model->modelSpec().setFringesResultId(scalar);
    select({planeHit(0, {1.5, 0.25, 0.5}), planeHit(0, {1.5, 0.75, 0.5})});
    expectError(noScalar);
    expectUntouched();
}

TEST_F(PlotsLengthOnPlaneTest, APlaneThatIsNotThereHasNoScalar) {
    select({planeHit(1, {}), planeHit(1, {})});
    expectError(noScalar);
    EXPECT_EQ(asserts.take(), Failures{failed("OrvUnstructGrid/UnstructGridModel", "index < cuttingPlaneCount()")});
}

TEST_F(PlotsLengthOnPlaneTest, OneItemIsOnOnePlane) {
    plane->setMapScalarResultId(scalar);
    select({planeHit(0, {1.5, 0.25, 0.5})});
    expectError(noPath);
}

} // namespace
