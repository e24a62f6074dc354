// The second half of the tests: values along paths, and paths in sections.

#include "OrvUnstructGrid/SurfacePathQuery.h"

#include "OrvUnstructGrid/CuttingPlane.h"
#include "Tests/OrvUnstructGrid/CustomResults.h"
#include "Tests/OrvUnstructGrid/PathCurves.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>

using namespace orv::ug;
using orv::UNDEFINED_DOUBLE;
using orv::Vec3d;
using orvtest::Curve;
using orvtest::curveOf;
using orvtest::expectLinear;
using orvtest::expectPath;
using orvtest::lengthOf;
using orvtest::linear;
using orvtest::Mesh;
using orvtest::PathModel;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

constexpr auto NODE = SurfacePathQuery::NODE;
constexpr auto ELEMENT = SurfacePathQuery::ELEMENT;
constexpr auto COORDINATE = SurfacePathQuery::COORDINATE;

// --- Values ----------------------------------------------------------------------------------------------------------

class PathValuesTest : public testing::Test {
protected:
    /// Along the middle of three squares: the diagonals are met at 0.5, 1.5 and 2.5.
    Curve curve(ResultMapping mapping) {
        return curveOf(plate, COORDINATE, items, plate.addCounting(mapping));
    }

    PathModel plate{{orvtest::plate(3, 1)}};
    const std::vector<HitItem> items = {PathModel::coordinate(0, 0, {0, 0.5, 0}),
                                        PathModel::coordinate(0, 2, {3, 0.5, 0})};
};

TEST_F(PathValuesTest, ValuesPerNodeAreInterpolated) {
    // At whole x between nodes x and x + 4; on the diagonals between x - 0.5 and x + 4.5.
    EXPECT_THAT(curve(PER_NODE).x, ElementsAre(0, 0.5, 1, 1.5, 2, 2.5, 3));
    EXPECT_THAT(curve(PER_NODE).y, ElementsAre(2, 2.5, 3, 3.5, 4, 4.5, 5));
}

TEST_F(PathValuesTest, ValuesPerElementMakeSteps) {
    EXPECT_THAT(curve(PER_ELEMENT).x, ElementsAre(0, 0.5, 1, 1, 1.5, 2, 2, 2.5, 3));
    EXPECT_THAT(curve(PER_ELEMENT).y, ElementsAre(0, 0, 0, 1, 1, 1, 2, 2, 2));
}

TEST_F(PathValuesTest, ValuesPerElementNodeAreEachElementsOwn) {
    // Element e has the values 4 e to 4 e + 3 around it: 0 and 3 on its left side, 0 and 2 on the diagonal, 1 and 2 on
    // the right side.
    EXPECT_THAT(curve(PER_ELEMENT_NODE).x, ElementsAre(0, 0.5, 1, 1, 1.5, 2, 2, 2.5, 3));
    EXPECT_THAT(curve(PER_ELEMENT_NODE).y, ElementsAre(1.5, 1, 1.5, 5.5, 5, 5.5, 9.5, 9, 9.5));
}

TEST_F(PathValuesTest, ValuesPerElementSurfaceAreThoseOfTheFace) {
    EXPECT_THAT(curve(PER_ELEMENT_SURFACE).y, ElementsAre(0, 0, 0, 1, 1, 1, 2, 2, 2));
    PathModel box({orvtest::block(2, 1, 1)});
    // From the top of the first cube to the right side of the second: items 5, then 6 + 5 and 6 + that side's.
    const Curve over = curveOf(box, COORDINATE,
                               {PathModel::coordinate(0, 0, {0.5, 0.5, 1}), PathModel::coordinate(0, 1, {2, 0.5, 0.5})},
                               box.addCounting(PER_ELEMENT_SURFACE));
    ASSERT_FALSE(over.y.empty());
    EXPECT_EQ(over.y.front(), 5.0);
    EXPECT_EQ(std::count(over.y.begin(), over.y.end(), 11.0), 3);
    double right = 0;
    for (std::size_t s = 0; s < 6; ++s) {
        const auto nodes = elementSurface(HEXAHEDRON, s);
        if (testing::Value(std::vector<int>(nodes.begin(), nodes.end()), testing::UnorderedElementsAre(1, 2, 5, 6))) {
            right = 6.0 + static_cast<double>(s);
        }
    }
    EXPECT_EQ(over.y.back(), right);
}

TEST_F(PathValuesTest, BeamsHaveNoSurfaces) {
    Mesh mesh;
    mesh.nodes = {{0, 0, 0}, {1, 0, 0}, {3, 0, 0}};
    mesh.addElement(BEAM, {0, 1});
    mesh.addElement(BEAM, {1, 2});
    PathModel frame({mesh});
    const std::vector<HitItem> ends = {PathModel::node(0, 0), PathModel::node(0, 2)};
    const auto valuesOf = [&](ResultMapping mapping) { return curveOf(frame, NODE, ends, frame.addCounting(mapping)); };
    EXPECT_THAT(valuesOf(PER_NODE).x, ElementsAre(0, 1, 3));
    EXPECT_THAT(valuesOf(PER_NODE).y, ElementsAre(0, 1, 2));
    EXPECT_THAT(valuesOf(PER_ELEMENT).x, ElementsAre(0, 1, 1, 3));
    EXPECT_THAT(valuesOf(PER_ELEMENT).y, ElementsAre(0, 0, 1, 1));
    EXPECT_THAT(valuesOf(PER_ELEMENT_NODE).y, ElementsAre(0, 1, 2, 3));
    EXPECT_THAT(valuesOf(PER_ELEMENT_SURFACE).y, IsEmpty());
}

TEST_F(PathValuesTest, UndefinedValuesStayUndefined) {
    const ResultInfo info = plate.source->addResult(SCALAR, "holey", PER_NODE);
    std::vector<double> values(8, 2.0);
    values[1] = UNDEFINED_DOUBLE; // At (1, 0): on the side at x = 1, on the diagonal of the second square.
    EXPECT_TRUE(plate.source->setValues(1, info, 0, 0, values, nullptr));
    const Curve holey = curveOf(plate, COORDINATE, items, info);
    EXPECT_THAT(holey.y, ElementsAre(2, 2, UNDEFINED_DOUBLE, UNDEFINED_DOUBLE, 2, 2, 2));
    // Through a node nothing else counts: along y = 1 all is defined.
    EXPECT_THAT(curveOf(plate, NODE, {PathModel::node(0, 4), PathModel::node(0, 7)}, info).y, ElementsAre(2, 2, 2, 2));
    values.assign(8, UNDEFINED_DOUBLE);
    EXPECT_TRUE(plate.source->setValues(1, info, 0, 0, values, nullptr));
    EXPECT_THAT(curveOf(plate, COORDINATE, items, info).y, IsEmpty());
}

TEST_F(PathValuesTest, AStepToAndFromNothingIsAStep) {
    const ResultInfo info = plate.source->addResult(SCALAR, "holey", PER_ELEMENT);
    EXPECT_TRUE(plate.source->setValues(1, info, 0, 0, std::vector<double>{1, UNDEFINED_DOUBLE, 1}, nullptr));
    const Curve holey = curveOf(plate, COORDINATE, items, info);
    EXPECT_THAT(holey.x, ElementsAre(0, 0.5, 1, 1, 1.5, 2, 2, 2.5, 3));
    EXPECT_THAT(holey.y, ElementsAre(1, 1, 1, UNDEFINED_DOUBLE, UNDEFINED_DOUBLE, UNDEFINED_DOUBLE, 1, 1, 1));
}

TEST_F(PathValuesTest, APartWithoutValuesIsUndefined) {
    const auto beside = [](const Vec3d& p) { return p + Vec3d(1, 0, 0); };
    PathModel two({orvtest::plate(1, 1), orvtest::plate(1, 1).mapped(beside)});
    const ResultInfo info = two.source->addResult(SCALAR, "left", PER_NODE);
    EXPECT_TRUE(two.source->setValues(1, info, 0, 0, std::vector<double>(4, 3.0), nullptr));
    const Curve curve = curveOf(two, ELEMENT, {PathModel::element(0, 0), PathModel::element(1, 0)}, info);
    EXPECT_THAT(curve.x, ElementsAre(0, 0.5, 0.5, 1));
    EXPECT_THAT(curve.y, ElementsAre(3, 3, UNDEFINED_DOUBLE, UNDEFINED_DOUBLE));
}

TEST_F(PathValuesTest, AResultIsLoadedWhenItIsNotThere) {
    const ResultInfo info = plate.addField(linear);
    const ResultInfo twice = orvtest::doubled(info, 1);
    plate.source->directory()->setCustomResultInfo(twice);
    ASSERT_FALSE(plate.source->state(0)->hasLoaded(twice));
    const Curve curve = curveOf(plate, NODE, {PathModel::node(0, 0), PathModel::node(0, 1)}, twice);
    EXPECT_THAT(curve.y, ElementsAre(2 * 4.0, 2 * 7.0));
}

TEST_F(PathValuesTest, WithoutAResultThereAreNoValues) {
    const ResultInfo info = plate.addField(linear);
    SurfacePathQuery query(plate.model.get(), 0, COORDINATE, items);
    std::vector<Vec3d> path;
    std::vector<double> x = {1};
    std::vector<double> y = {1};
    ASSERT_TRUE(query.generatePath(&path));
    EXPECT_FALSE(query.getScalarResultValues(-1, &x, &y));
    EXPECT_THAT(x, IsEmpty());
    EXPECT_THAT(y, IsEmpty());
    EXPECT_FALSE(query.getScalarResultValues(info.id() + 1, &x, &y));
    EXPECT_TRUE(query.getScalarResultValues(info.id(), &x, &y));
    // In the other state there is none.
    plate.model->modelSpec().setStateId(2);
    EXPECT_TRUE(query.getScalarResultValues(info.id(), &x, &y)); // The path is one of state 1.
    ASSERT_TRUE(query.generatePath(&path));
    EXPECT_FALSE(query.getScalarResultValues(info.id(), &x, &y));
    EXPECT_THAT(x, IsEmpty());
    // The same ids in another source are not the same.
    plate.model->modelSpec().setStateId(1);
    ASSERT_TRUE(query.generatePath(&path));
    PathModel other({orvtest::plate(1, 1)});
    other.addField(linear);
    plate.model->setDataSource(other.source.get());
    EXPECT_FALSE(query.getScalarResultValues(info.id(), &x, &y));
    plate.model->setDataSource(nullptr);
    EXPECT_FALSE(query.getScalarResultValues(info.id(), &x, &y));
}

// --- On cutting planes -----------------------------------------------------------------------------------------------

class SectionPathTest : public testing::Test {
protected:
    SectionPathTest() {
        box.model->addCuttingPlane()->setPlane({0, 0, 0.25}, {0, 0, 3});
    }

    /// The lower of two layers is cut at a quarter of its height. Without the block in the middle.
    PathModel box{
        {orvtest::block(3, 3, 1), orvtest::block(1, 1, 1).mapped([](const Vec3d& p) { return p + Vec3d(5, 1, 0); })}};
    const std::vector<HitItem> items = {PathModel::onPlane(0, {0.25, 1.5, 0.25}),
                                        PathModel::onPlane(0, {5.5, 1.5, 0.25})};
};

TEST_F(SectionPathTest, APathInASectionIsStraight) {
    const std::vector<HitItem> across = {PathModel::onPlane(0, {0.5, 0.25, 0.25}),
                                         PathModel::onPlane(0, {2.5, 2.25, 0.25})};
    for (const auto type : {NODE, ELEMENT, COORDINATE}) {
        const std::vector<Vec3d> path = box.path(type, across);
        ASSERT_FALSE(path.empty());
        EXPECT_NEAR((path.front() - Vec3d(0.5, 0.25, 0.25)).length(), 0.0, 1e-12);
        EXPECT_NEAR((path.back() - Vec3d(2.5, 2.25, 0.25)).length(), 0.0, 1e-12);
        EXPECT_NEAR(lengthOf(path), std::sqrt(8.0), 1e-9);
        // Two sides along x, two along y, none of which meet on the way.
        for (const Vec3d& side :
             {Vec3d(1, 0.75, 0.25), Vec3d(1.25, 1, 0.25), Vec3d(2, 1.75, 0.25), Vec3d(2.25, 2, 0.25)}) {
            EXPECT_TRUE(
                std::any_of(path.begin(), path.end(), [&](const Vec3d& p) { return (p - side).length() < 1e-12; }));
        }
    }
    expectLinear(box, NODE, across);
}

TEST_F(SectionPathTest, AGapHasUndefinedValues) {
    const Curve curve = curveOf(box, NODE, items, box.addField(linear));
    // From x = 3 to x = 5 there is nothing; both ends of the gap are there twice.
    ASSERT_GE(curve.x.size(), 6u);
    std::vector<double> undefinedAt;
    for (std::size_t i = 0; i < curve.x.size(); ++i) {
        if (curve.y[i] == UNDEFINED_DOUBLE) {
            undefinedAt.push_back(curve.x[i]);
        } else {
            EXPECT_NEAR(curve.y[i], linear({0.25 + curve.x[i], 1.5, 0.25}), 1e-9);
        }
    }
    EXPECT_THAT(undefinedAt, ElementsAre(2.75, 4.75));
    EXPECT_EQ(std::count(curve.x.begin(), curve.x.end(), 2.75), 2);
    EXPECT_EQ(std::count(curve.x.begin(), curve.x.end(), 4.75), 2);
    EXPECT_NEAR(curve.x.back(), 5.25, 1e-12);
    EXPECT_NEAR(lengthOf(box.path(NODE, items)), 5.25, 1e-9);
}

TEST_F(SectionPathTest, ValuesPerElementMakeStepsInSections) {
    const Curve curve = curveOf(box, NODE, items, box.addCounting(PER_ELEMENT));
    // Elements 3, 4, 5 are the middle row of the block, 1000 is the other part.
    std::vector<double> levels = curve.y;
    levels.erase(std::unique(levels.begin(), levels.end()), levels.end());
    EXPECT_THAT(levels, ElementsAre(3, 4, 5, UNDEFINED_DOUBLE, 1000));
    for (const double step : {0.75, 1.75, 2.75, 4.75}) {
        EXPECT_EQ(std::count(curve.x.begin(), curve.x.end(), step), 2) << step;
    }
}

TEST_F(SectionPathTest, ValuesPerElementNodeAndPerSurfaceAreTheElementsOwn) {
    // Between the nodes 8 e to 8 e + 3 of the bottom and those of the top, 4 more, at a quarter of the height: at the
    // left end of element 3 between 0 and 3 of the bottom, at its right end between 1 and 2.
    const std::vector<HitItem> inOne = {PathModel::onPlane(0, {0, 1.5, 0.25}), PathModel::onPlane(0, {1, 1.5, 0.25})};
    const Curve nodes = curveOf(box, NODE, inOne, box.addCounting(PER_ELEMENT_NODE));
    ASSERT_FALSE(nodes.y.empty());
    EXPECT_NEAR(nodes.y.front(), 24 + 1.5 + 1, 1e-12);
    EXPECT_NEAR(nodes.y.back(), 24 + 1.5 + 1, 1e-12);
    // The average of 6 e to 6 e + 5.
    const Curve surfaces = curveOf(box, NODE, inOne, box.addCounting(PER_ELEMENT_SURFACE));
    EXPECT_THAT(surfaces.y, testing::Each(18 + 2.5));
}

TEST_F(SectionPathTest, AlongTheSidesOfASection) {
    // On the line between two rows of elements, and on both rims.
    for (const double y : {0.0, 1.0, 3.0}) {
        const std::vector<HitItem> along = {PathModel::onPlane(0, {0, y, 0.25}), PathModel::onPlane(0, {3, y, 0.25})};
        const std::vector<Vec3d> path = box.path(NODE, along);
        expectPath(path, {{0, y, 0.25}, {1, y, 0.25}, {2, y, 0.25}, {3, y, 0.25}});
        expectLinear(box, NODE, along);
    }
}

TEST_F(SectionPathTest, CoordinatesAreMovedIntoThePlane) {
    box.model->cuttingPlane(0)->setPlane({0, 0, 0.75}, {0, 0, -1});
    const std::vector<Vec3d> path = box.path(NODE, items);
    ASSERT_FALSE(path.empty());
    EXPECT_EQ(path.front(), Vec3d(0.25, 1.5, 0.75));
    EXPECT_EQ(path.back(), Vec3d(5.5, 1.5, 0.75));
}

TEST_F(SectionPathTest, HiddenPartsAreCutAndHiddenPlanesAreNot) {
    box.model->modelSpec().setPartVisible(0, 1, false);
    box.model->modelSpec().setPartVisible(0, 2, false);
    EXPECT_FALSE(box.path(NODE, items).empty());
    box.model->cuttingPlane(0)->setVisible(false);
    EXPECT_THAT(box.path(NODE, items), IsEmpty());
}

TEST_F(SectionPathTest, AllItemsAreOnOnePlaneAndItIsThere) {
    box.model->addCuttingPlane()->setPlane({0, 0, 0.75}, {0, 0, 1});
    const HitItem onFirst = items[0];
    HitItem onOther = items[1];
    onOther.setItemIndex(1);
    EXPECT_THAT(box.path(NODE, {onFirst, onOther}), IsEmpty());
    EXPECT_THAT(box.path(NODE, {onFirst, PathModel::node(0, 0)}), IsEmpty());
    EXPECT_THAT(box.path(NODE, {PathModel::node(0, 0), onFirst}), IsEmpty());
    EXPECT_THAT(box.path(NODE, {PathModel::onPlane(2, {1, 1, 0}), PathModel::onPlane(2, {2, 1, 0})}), IsEmpty());
    EXPECT_THAT(box.path(NODE, {onFirst, PathModel::onPlane(0, orv::UNDEFINED_VECTOR)}), IsEmpty());
    // Where nothing is cut.
    EXPECT_THAT(box.path(NODE, {PathModel::onPlane(0, {3.5, 1, 0}), PathModel::onPlane(0, {4.5, 1, 0})}), IsEmpty());
}

TEST_F(SectionPathTest, OverlappingSectionsTakeTurns) {
    // The second reaches from 2.5 to 3.5 into the first, which ends at 3, and beyond.
    const auto into = [](const Vec3d& p) { return p + Vec3d(2.5, 1, 0); };
    PathModel both({orvtest::block(3, 3, 1), orvtest::block(1, 1, 1).mapped(into)});
    both.model->addCuttingPlane()->setPlane({0, 0, 0.5}, {0, 0, 1});
    const std::vector<HitItem> way = {PathModel::onPlane(0, {2.25, 1.75, 0.5}),
                                      PathModel::onPlane(0, {3.5, 1.75, 0.5})};
    const Curve curve = curveOf(both, NODE, way, both.addCounting(PER_ELEMENT));
    std::vector<double> levels = curve.y;
    levels.erase(std::unique(levels.begin(), levels.end()), levels.end());
    ASSERT_FALSE(levels.empty());
    EXPECT_EQ(levels.front(), 5);
    EXPECT_EQ(levels.back(), 1000);
    EXPECT_THAT(levels, testing::Not(testing::Contains(UNDEFINED_DOUBLE)));
    EXPECT_NEAR(curve.x.back(), 1.25, 1e-12);
}

TEST_F(SectionPathTest, ShellsAreLinesInASection) {
    PathModel plate({orvtest::plate(3, 2)});
    plate.model->addCuttingPlane()->setPlane({0, 0.5, 0}, {0, 1, 0});
    const std::vector<HitItem> along = {PathModel::onPlane(0, {2.5, 0.5, 0}), PathModel::onPlane(0, {0.5, 0.5, 0})};
    expectPath(plate.path(NODE, along), {{2.5, 0.5, 0}, {2, 0.5, 0}, {1, 0.5, 0}, {0.5, 0.5, 0}});
    expectLinear(plate, NODE, along);
    // Across the line there is nothing but a point.
    EXPECT_THAT(plate.path(NODE, {PathModel::onPlane(0, {1, 0.5, -1}), PathModel::onPlane(0, {1, 0.5, 1})}), IsEmpty());
}

} // namespace
