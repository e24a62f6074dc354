// Through UnstructGridModel, which hands all of it on.

#include "OrvUnstructGrid/ModelShapes_p.h"

#include "OrvUnstructGrid/CuttingPlane.h"
#include "OrvUnstructGrid/HitItem.h"
#include "OrvUnstructGrid/UnstructGridModel.h"
#include "Tests/OrvUnstructGrid/CustomResults.h"
#include "Tests/OrvUnstructGrid/ReferenceElements.h"
#include "Tests/Support/MemoryModels.h"

#include <gmock/gmock.h>

#include <cmath>

using namespace orv::ug;
using orv::UNDEFINED_DOUBLE;
using orv::Vec3d;
using orv::vis::Shape;
using orvtest::MemoryModel;
using orvtest::modelValue;
using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

/// State 1 of the memory model. Its parts are, in this order, rows of 1, 2, 1 (geometry 0), 1 and 3 cubes (geometry 1).
class ModelShapesTest : public testing::Test {
protected:
    ModelShapesTest() : model(new UnstructGridModel) {
        model->setDataSource(memory.source.get());
        spec.setStateId(1);
    }

    std::span<const Shape> shapes() {
        orv::Str reason;
        EXPECT_TRUE(model->updateShapes(&reason)) << reason.toStdString();
        return model->shapes();
    }

    std::string failedUpdate() {
        orv::Str reason;
        EXPECT_FALSE(model->updateShapes(&reason));
        EXPECT_FALSE(model->updateShapes(nullptr));
        EXPECT_THAT(model->shapes(), IsEmpty());
        EXPECT_EQ(model->scene(), nullptr);
        EXPECT_TRUE(model->scalarTitle().isEmpty());
        return reason.toStdString();
    }

    /// Of each shape.
    std::vector<std::size_t> faceCounts() {
        std::vector<std::size_t> counts;
        for (const Shape& shape : shapes()) {
            counts.push_back(shape.faceOffsets.size() - 1);
        }
        return counts;
    }

    /// The distance along z at which a ray from far above meets the model.
    double heightAt(double x, double y) const {
        orv::Ray ray;
        ray.setOrigin({x, y, 1e5});
        ray.setDirection({0, 0, -1});
        HitItem hit;
        return model->rayIntersect(ray, &hit) ? hit.coordinate().z() : UNDEFINED_DOUBLE;
    }

    /// A scalar with the values 0, 1, 2, ... on all parts in state 1.
    ResultInfo addCounting(ResultMapping mapping) {
        const ResultInfo info = memory.source->addResult(SCALAR, "Counting", mapping);
        const DataState* state = memory.state(1);
        for (std::size_t g = 0; g < state->geometryCount(); ++g) {
            for (std::size_t p = 0; p < state->geometry(g)->partCount(); ++p) {
                std::vector<double> values(state->geometry(g)->part(p)->itemCount(mapping));
                for (std::size_t i = 0; i < values.size(); ++i) {
                    values[i] = static_cast<double>(i);
                }
                memory.source->setValues(1, info, g, p, values, nullptr);
            }
        }
        return info;
    }

    const DataPart& part(std::size_t geometryIndex, std::size_t partIndex) {
        return *memory.state(1)->geometry(geometryIndex)->part(partIndex);
    }

    MemoryModel memory;
    orv::PtrRef<UnstructGridModel> model;
    ModelSpec& spec = model->modelSpec();
};

TEST_F(ModelShapesTest, ThereAreNoneBeforeTheFirstUpdate) {
    EXPECT_THAT(model->shapes(), IsEmpty());
    EXPECT_EQ(model->scene(), nullptr);
    EXPECT_TRUE(model->scalarTitle().isEmpty());
}

TEST_F(ModelShapesTest, EachPartIsAShape) {
    EXPECT_THAT(faceCounts(), ElementsAre(6, 10, 6, 6, 14));
    EXPECT_NE(model->scene(), nullptr);
    const Shape& column = shapes()[1];
    EXPECT_EQ(column.kind, Shape::FACES);
    EXPECT_EQ(column.coordinates.data(), part(0, 1).nodes()->coordinates().data());
    EXPECT_EQ(column.corners.size(), 60u);
    EXPECT_EQ(column.edges.size(), 20u);
    EXPECT_EQ(column.radius, 0.0);
    EXPECT_THAT(column.pointScalars, IsEmpty());
    EXPECT_THAT(column.primitiveScalars, IsEmpty());
    EXPECT_TRUE(model->scalarTitle().isEmpty());
    // Told apart in a geometry, at least next to each other.
    auto red = [this](std::size_t i) { return shapes()[i].color.r(); };
    EXPECT_NE(red(0), red(1));
    EXPECT_NE(red(1), red(2));
    EXPECT_EQ(red(0), red(3));
}

TEST_F(ModelShapesTest, WithoutASourceOrStateNothingIsShown) {
    shapes();
    spec.setStateId(9);
    EXPECT_EQ(failedUpdate(), "There is no state 9 in 'memory.model': its states are 1, 2, 3");
    spec.setStateId(1);
    EXPECT_EQ(shapes().size(), 5u);
    model->setDataSource(nullptr);
    EXPECT_THAT(model->shapes(), IsEmpty());
    EXPECT_EQ(model->scene(), nullptr);
    EXPECT_EQ(failedUpdate(), "The model has no data source: open a file into it first");
}

TEST_F(ModelShapesTest, ASurfaceStaysAsLongAsTheGeometry) {
    const std::uint32_t* corners = shapes()[0].corners.data();
    const orv::vis::RayScene* scene = model->scene();
    spec.setStateId(2);
    spec.setFringesResultId(memory.temperature.id());
    EXPECT_EQ(shapes()[0].corners.data(), corners);
    EXPECT_EQ(model->scene(), scene);
    // Another look makes another scene, but no other surface.
    model->addCuttingPlane();
    EXPECT_EQ(shapes()[0].corners.data(), corners);
    MemoryModel other;
    model->setDataSource(other.source.get());
    EXPECT_EQ(shapes()[0].coordinates.data(), other.state(2)->geometry(0)->part(0)->nodes()->coordinates().data());
}

TEST_F(ModelShapesTest, AGeometryLivesAsLongAsItIsShown) {
    DataGeometry* geometry = memory.state(1)->geometry(0);
    const int references = geometry->refCount();
    shapes();
    EXPECT_EQ(geometry->refCount(), references + 1);
    model->setDataSource(nullptr);
    EXPECT_EQ(geometry->refCount(), references);
}

TEST_F(ModelShapesTest, HiddenPartsAreLeftOut) {
    spec.setPartVisible(0, 2, false);
    spec.setPartVisible(1, 1, false);
    EXPECT_THAT(faceCounts(), ElementsAre(6, 6, 14));
    EXPECT_EQ(heightAt(10.5, 0.5), 1.0); // The nut, in the place of the column.
    spec.setPartVisible(1, 2, false);
    EXPECT_EQ(heightAt(10.5, 0.5), UNDEFINED_DOUBLE);
    spec.setPartVisible(0, 2, true);
    EXPECT_THAT(faceCounts(), ElementsAre(6, 10, 6));
    EXPECT_EQ(heightAt(10.5, 0.5), 1.0);
}

TEST_F(ModelShapesTest, TheShapeIsDisplacedWhenThatIsSwitchedOn) {
    spec.setDisplacementResultId(memory.displacement.id());
    EXPECT_EQ(shapes()[1].coordinates.data(), part(0, 1).nodes()->coordinates().data());
    spec.setDisplaced(true);
    spec.setDisplacementScale(-2);
    for (int state : {1, 3}) {
        spec.setStateId(state);
        const std::span<const double> displaced = shapes()[1].coordinates;
        ASSERT_EQ(displaced.size(), 36u);
        for (std::size_t i = 0; i < 36; ++i) {
            EXPECT_EQ(displaced[i], part(0, 1).nodes()->coordinates()[i] -
                                        2 * modelValue(state, memory.displacement, 1, i / 3, i % 3));
        }
    }
    spec.setDisplacementScale(0);
    EXPECT_EQ(shapes()[1].coordinates[0], 10.0);
    spec.setDisplaced(false);
    EXPECT_EQ(shapes()[1].coordinates.data(), part(0, 1).nodes()->coordinates().data());
}

TEST_F(ModelShapesTest, NodesWithoutADisplacementStay) {
    std::vector<double> values(24, 5.0);
    values[4] = UNDEFINED_DOUBLE; // The y of node 1.
    memory.source->setValues(1, memory.displacement, 0, 0, values, nullptr);
    spec.setDisplacementResultId(memory.displacement.id());
    spec.setDisplaced(true);
    const std::span<const double> displaced = shapes()[0].coordinates;
    EXPECT_THAT(std::vector<double>(displaced.begin(), displaced.begin() + 9), ElementsAre(5, 5, 5, 0, 1, 0, 5, 6, 6));
}

TEST_F(ModelShapesTest, DisplacementsThatCannotBeShownAreNot) {
    const ResultInfo elsewhere = memory.source->addResult(DISPLACEMENT, "Elsewhere", PER_NODE);
    memory.setAllValues(2, elsewhere);
    const ResultInfo perElement = memory.source->addResult(DISPLACEMENT, "Blocks", PER_ELEMENT);
    memory.setAllValues(1, perElement);
    spec.setDisplaced(true);
    for (int id : {-1, 99, elsewhere.id(), perElement.id()}) {
        spec.setDisplacementResultId(id);
        EXPECT_EQ(shapes()[1].coordinates.data(), part(0, 1).nodes()->coordinates().data()) << id;
    }
}

TEST_F(ModelShapesTest, RefreshShowsDisplacementsThatWereWrittenAnew) {
    spec.setDisplacementResultId(memory.displacement.id());
    spec.setDisplaced(true);
    shapes();
    memory.source->setValues(1, memory.displacement, 0, 0, std::vector<double>(24, 0.25), nullptr);
    EXPECT_NE(shapes()[0].coordinates[0], 0.25);
    EXPECT_TRUE(model->refresh(nullptr, nullptr, 0));
    EXPECT_EQ(shapes()[0].coordinates[0], 0.25);
    EXPECT_EQ(heightAt(0.5, 0.5), 1.25);
}

TEST_F(ModelShapesTest, WhatCannotBeLoadedIsTold) {
    for (ResultType type : {SCALAR, DISPLACEMENT}) {
        std::vector<ResultInfo> arguments = {type == SCALAR ? memory.temperature : memory.displacement};
        const ResultInfo broken(type, "Broken", PER_NODE, arguments, nullptr);
        memory.source->directory()->setCustomResultInfo(broken);
        spec.clear();
        spec.setStateId(1);
        EXPECT_EQ(shapes().size(), 5u);
        spec.setDisplaced(true);
        (type == SCALAR ? spec.setFringesResultId(broken.id()) : spec.setDisplacementResultId(broken.id()));
        EXPECT_THAT(failedUpdate(), testing::HasSubstr("'Broken'"));
        // A ray needs no scalars.
        EXPECT_EQ(heightAt(0.5, 0.5), type == SCALAR ? 1.0 : UNDEFINED_DOUBLE);
    }
}

TEST_F(ModelShapesTest, CustomResultsAreComputedToBeShown) {
    const ResultInfo twice = orvtest::sumOf("Twice", {memory.temperature, memory.temperature});
    const ResultInfo moved = orvtest::sumOf("Moved", {memory.displacement, memory.displacement});
    memory.source->directory()->setCustomResultInfo(twice);
    memory.source->directory()->setCustomResultInfo(moved);
    spec.setFringesResultId(twice.id());
    spec.setDisplacementResultId(moved.id());
    spec.setDisplaced(true);
    EXPECT_EQ(shapes()[1].pointScalars[3], 2 * modelValue(1, memory.temperature, 1, 3, 0));
    EXPECT_EQ(shapes()[1].coordinates[1], 2 * modelValue(1, memory.displacement, 1, 0, 1));
    EXPECT_EQ(model->scalarTitle(), orv::Str("Twice"));
}

TEST_F(ModelShapesTest, ValuesOfNodesAreUsedAsTheyAre) {
    spec.setFringesResultId(memory.temperature.id());
    const DataState* state = memory.state(1);
    const DataResult* result = state->results(state->geometry(1))->find(memory.temperature);
    EXPECT_EQ(shapes()[4].pointScalars.data(), result->values(1)->values());
    EXPECT_EQ(shapes()[4].pointScalars.size(), 16u);
    EXPECT_THAT(shapes()[4].primitiveScalars, IsEmpty());
    EXPECT_EQ(model->scalarTitle(), orv::Str("Temperature"));
}

TEST_F(ModelShapesTest, ValuesThatAreTooFewAreNotShown) {
    DataState* state = memory.state(1);
    for (const ResultInfo& info : {memory.temperature, memory.displacement}) {
        state->results(state->geometry(0))->find(info)->values(0)->allocate(3);
    }
    spec.setFringesResultId(memory.temperature.id());
    spec.setDisplacementResultId(memory.displacement.id());
    spec.setDisplaced(true);
    EXPECT_THAT(shapes()[0].pointScalars, IsEmpty());
    EXPECT_EQ(shapes()[0].coordinates.data(), part(0, 0).nodes()->coordinates().data());
    EXPECT_EQ(shapes()[1].pointScalars.size(), 12u);
    EXPECT_NE(shapes()[1].coordinates.data(), part(0, 1).nodes()->coordinates().data());
}

TEST_F(ModelShapesTest, EachPartShowsItsOwnScalar) {
    spec.setFringesResultId(memory.temperature.id());
    spec.setPartFringesResultId(0, 1, -1);
    spec.setPartFringesResultId(0, 2, memory.pressure.id());
    EXPECT_THAT(shapes()[0].pointScalars, IsEmpty());
    EXPECT_THAT(shapes()[0].primitiveScalars, IsEmpty());
    EXPECT_THAT(shapes()[1].pointScalars, IsEmpty());
    // Of the column's two cubes the first shows its surfaces 0 to 4, the second all but surface 0.
    const double first = modelValue(1, memory.pressure, 1, 0, 0);
    EXPECT_THAT(shapes()[1].primitiveScalars,
                ElementsAre(first, first, first, first, first, first + 1, first + 1, first + 1, first + 1, first + 1));
    EXPECT_EQ(shapes()[2].pointScalars.size(), 8u);
    EXPECT_EQ(model->scalarTitle(), orv::Str("Pressure"));
}

TEST_F(ModelShapesTest, ScalarsFollowTheState) {
    spec.setFringesResultId(memory.pressure.id());
    EXPECT_EQ(shapes()[0].primitiveScalars[0], modelValue(1, memory.pressure, 0, 0, 0));
    spec.setStateId(2);
    EXPECT_EQ(shapes()[0].primitiveScalars[0], modelValue(2, memory.pressure, 0, 0, 0));
    spec.setStateId(3); // Which has no pressure.
    EXPECT_THAT(shapes()[0].primitiveScalars, IsEmpty());
    EXPECT_TRUE(model->scalarTitle().isEmpty());
    spec.setStateId(2);
    spec.setFringesResultId(99);
    EXPECT_THAT(shapes()[0].primitiveScalars, IsEmpty());
}

TEST_F(ModelShapesTest, OtherMappingsAreBroughtOnTheShape) {
    spec.setFringesResultId(addCounting(PER_ELEMENT_NODE).id());
    // The column's cubes have the items 0 to 7 and 8 to 15; nodes 4 to 7 belong to both, as their 5th and 1st.
    EXPECT_THAT(shapes()[1].pointScalars, ElementsAre(0, 1, 2, 3, 6, 7, 8, 9, 12, 13, 14, 15));
    spec.setFringesResultId(addCounting(PER_ELEMENT_SURFACE).id());
    EXPECT_THAT(shapes()[1].pointScalars, IsEmpty());
    EXPECT_THAT(shapes()[1].primitiveScalars, ElementsAre(0, 1, 2, 3, 4, 7, 8, 9, 10, 11));
}

TEST_F(ModelShapesTest, AVisiblePlaneShowsItsSectionOfEveryPart) {
    CuttingPlane* plane = model->addCuttingPlane();
    plane->setPlane({0, 0, 0.5}, {0, 0, 1});
    EXPECT_THAT(faceCounts(), ElementsAre(6, 10, 6, 6, 14, 1, 2, 1, 1, 3));
    spec.setPartVisible(0, 1, false);
    spec.setPartVisible(1, 1, false);
    EXPECT_THAT(faceCounts(), ElementsAre(10, 6, 14, 1, 2, 1, 1, 3)); // Also of the hidden parts.
    EXPECT_EQ(heightAt(0.5, 0.5), 0.5);
    plane->setPlane({0, 0, 0.25}, {0, 0, 1});
    EXPECT_EQ(heightAt(0.5, 0.5), 0.25);
    plane->setPlane({0, 0, 0.25}, {0, 1, 1});
    EXPECT_EQ(heightAt(0.5, 0.125), 0.125);
    plane->setVisible(false);
    EXPECT_THAT(faceCounts(), ElementsAre(10, 6, 14));
    EXPECT_EQ(heightAt(0.5, 0.5), UNDEFINED_DOUBLE);
    model->removeCuttingPlane(0);
    EXPECT_THAT(faceCounts(), ElementsAre(10, 6, 14));
}

TEST_F(ModelShapesTest, SectionsShowTheScalarOfTheirPlane) {
    spec.setFringesResultId(memory.pressure.id());
    CuttingPlane* plane = model->addCuttingPlane();
    plane->setPlane({0.5, 0, 0}, {1, 0, 0}); // Through the base and the bolt alone.
    ASSERT_EQ(shapes().size(), 7u);
    EXPECT_THAT(shapes()[5].pointScalars, IsEmpty());
    EXPECT_THAT(shapes()[5].primitiveScalars, IsEmpty());
    plane->setMapScalarResultId(memory.temperature.id());
    // Between the nodes 0 to 3 and 4 to 7 of the first part of the model.
    const double first = modelValue(1, memory.temperature, 0, 0, 0) + 2;
    EXPECT_THAT(shapes()[5].pointScalars, testing::UnorderedElementsAre(first, first + 1, first + 2, first + 3));
    EXPECT_EQ(model->scalarTitle(), orv::Str("Pressure"));
    plane->setMapScalarResultId(memory.pressure.id());
    EXPECT_THAT(shapes()[6].primitiveScalars, ElementsAre(modelValue(1, memory.pressure, 3, 0, 0)));
    spec.setFringesResultId(-1);
    plane->setMapScalarResultId(addCounting(PER_ELEMENT_SURFACE).id());
    EXPECT_THAT(shapes()[6].primitiveScalars, ElementsAre(2.5));
    EXPECT_EQ(model->scalarTitle(), orv::Str("Counting"));
}

TEST_F(ModelShapesTest, SectionsAreThroughTheDisplacedShape) {
    memory.source->setValues(1, memory.displacement, 0, 0, std::vector<double>(24, 0.5), nullptr);
    spec.setDisplacementResultId(memory.displacement.id());
    spec.setDisplaced(true);
    model->addCuttingPlane()->setPlane({0, 0, 1.25}, {0, 0, 1});
    const std::span<const double> coordinates = shapes()[5].coordinates;
    ASSERT_EQ(coordinates.size(), 12u);
    for (std::size_t i = 0; i < 12; i += 3) {
        EXPECT_THAT(coordinates[i], testing::AnyOf(0.5, 1.5));
        EXPECT_EQ(coordinates[i + 2], 1.25);
    }
}

// A beam along x, a quadratic one along y and a point, cut by two planes: nodes in a box of 6 by 8 by 0, so the radius
// is 0.02.
TEST(ModelLineShapes, BeamsAndPointsAreThick) {
    orv::PtrRef<DataSourceMemory> source(new DataSourceMemory(1));
    source->addGeometry();
    DataPart* part = source->addPart(0, "frame");
    orvtest::setNodes(part, {{0, 0, 0}, {6, 0, 0}, {6, 8, 0}, {6, 4, 0}, {0, 8, 0}});
    orvtest::setElements(part, {{BEAM, {0, 1}}, {BEAM_3, {1, 2, 3}}, {POINT, {4}}, {TRIANGLE, {0, 1, 4}}});
    source->addState(StateInfo(1, "", StateInfo::TIME, 0));
    const ResultInfo scalar = source->addResult(SCALAR, "s", PER_ELEMENT);
    source->setValues(1, scalar, 0, 0, std::vector<double>{10, 11, 12, 13}, nullptr);
    orv::PtrRef<UnstructGridModel> model(new UnstructGridModel);
    model->setDataSource(source.get());
    model->modelSpec().setStateId(1);
    model->modelSpec().setFringesResultId(scalar.id());
    CuttingPlane* plane = model->addCuttingPlane();
    plane->setPlane({0, 2, 0}, {0, 1, 0});
    plane->setMapScalarResultId(scalar.id());
    ASSERT_TRUE(model->updateShapes(nullptr));

    const std::span<const Shape> shapes = model->shapes();
    ASSERT_EQ(shapes.size(), 5u);
    const Shape::Kind kinds[] = {Shape::FACES, Shape::TUBES, Shape::SPHERES, Shape::TUBES, Shape::SPHERES};
    for (std::size_t i = 0; i < 5; ++i) {
        EXPECT_EQ(shapes[i].kind, kinds[i]);
        EXPECT_EQ(shapes[i].radius, i == 0 ? 0.0 : 0.002 * 10);
        EXPECT_EQ(shapes[i].faceOffsets.empty(), i > 0);
        EXPECT_EQ(shapes[i].edges.empty(), i > 0);
    }
    EXPECT_THAT(shapes[1].corners, ElementsAre(0, 1, 1, 3, 3, 2));
    EXPECT_THAT(shapes[1].primitiveScalars, ElementsAre(10, 11, 11));
    EXPECT_THAT(shapes[2].corners, ElementsAre(4));
    EXPECT_THAT(shapes[2].primitiveScalars, ElementsAre(12));
    EXPECT_THAT(shapes[3].primitiveScalars, ElementsAre(13)); // The line across the triangle.
    EXPECT_THAT(shapes[4].primitiveScalars, ElementsAre(11)); // The point in the upright beam.
    ASSERT_THAT(shapes[4].corners, ElementsAre(0));
    EXPECT_THAT(std::vector<double>(shapes[4].coordinates.begin(), shapes[4].coordinates.begin() + 3),
                ElementsAre(6, 2, 0));
}

TEST(ModelLineShapes, APointAloneCanBeSeen) {
    orv::PtrRef<DataSourceMemory> source(new DataSourceMemory(1));
    source->addGeometry();
    orvtest::setNodes(source->addPart(0, "mass"), {{5, 5, 5}});
    DataPart* nowhere = source->addPart(0, "nowhere");
    orvtest::setNodes(nowhere, {{NAN, INFINITY, 0}});
    source->addState(StateInfo(1, "", StateInfo::TIME, 0));
    orvtest::setElements(source->state(0)->geometry(0)->part(0), {{POINT, {0}}});
    orv::PtrRef<UnstructGridModel> model(new UnstructGridModel);
    model->setDataSource(source.get());
    model->modelSpec().setStateId(1);
    ASSERT_TRUE(model->updateShapes(nullptr));
    ASSERT_EQ(model->shapes().size(), 1u);
    EXPECT_EQ(model->shapes()[0].radius, 0.002 * 5); // The node that is nowhere still has a z.
    orvtest::setNodes(nowhere, {});
    model->modelSpec().setPartVisible(0, 2, false);
    ASSERT_TRUE(model->updateShapes(nullptr));
    EXPECT_EQ(model->shapes()[0].radius, 0.002);
}

} // namespace
