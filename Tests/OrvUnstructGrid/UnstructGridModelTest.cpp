#include "OrvUnstructGrid/UnstructGridModel.h"

#include "OrvUnstructGrid/CuttingPlane.h"
#include "OrvUnstructGrid/Error.h"
#include "OrvUnstructGrid/HitItem.h"
#include "OrvUnstructGrid/Progress.h"
#include "Tests/OrvUnstructGrid/ReferenceElements.h"
#include "Tests/Support/AssertRecorder.h"
#include "Tests/Support/MemoryModels.h"

#include <gtest/gtest.h>

using namespace orv::ug;
using orv::Ray;
using orv::UNDEFINED_SIZE_T;
using orv::Vec3d;
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

TEST_F(UnstructGridModelTest, OwnsItsCuttingPlanes) {
    EXPECT_EQ(model->cuttingPlaneCount(), 0u);
    CuttingPlane* first = model->addCuttingPlane();
    CuttingPlane* second = model->addCuttingPlane();
    EXPECT_EQ(model->cuttingPlaneCount(), 2u);
    EXPECT_EQ(first->normal(), Vec3d(0, 0, 1));
    EXPECT_EQ(model->cuttingPlane(0), first);
    EXPECT_EQ(model->cuttingPlane(1), second);
    model->removeCuttingPlane(0);
    EXPECT_EQ(model->cuttingPlaneCount(), 1u);
    EXPECT_EQ(model->cuttingPlane(0), second);
}

TEST_F(UnstructGridModelTest, HasNoOtherCuttingPlanes) {
    const std::vector<orvtest::FailedAssert> failed = {
        {"OrvUnstructGrid/UnstructGridModel", "index < cuttingPlaneCount()", std::nullopt}};
    orvtest::AssertRecorder recorder;
    model->addCuttingPlane();
    EXPECT_EQ(model->cuttingPlane(1), nullptr);
    EXPECT_EQ(recorder.take(), failed);
    model->removeCuttingPlane(1);
    EXPECT_EQ(recorder.take(), failed);
    EXPECT_EQ(model->cuttingPlaneCount(), 1u);
}

/// Shoots at a model.
class RayIntersectTest : public testing::Test {
protected:
    RayIntersectTest() : model(new UnstructGridModel) {}

    void show(DataSource* source, int stateId) {
        model->setDataSource(source);
        model->modelSpec().setStateId(stateId);
    }

    /// A source of one part, 7 in its one state 3.
    void show(const std::vector<Vec3d>& nodes, const std::vector<orvtest::Element>& elements) {
        own = new DataSourceMemory(1);
        own->addGeometry();
        DataPart* part = own->addPart(0, "part");
        orvtest::setNodes(part, nodes);
        orvtest::setElements(part, elements);
        own->addState(StateInfo(3, "", StateInfo::TIME, 0));
        show(own.get(), 3);
    }

    /// From `eye` at `target`; a default item when nothing is hit.
    HitItem shoot(const Vec3d& eye, const Vec3d& target) const {
        Ray ray;
        ray.setOrigin(eye);
        ray.setDirection(target - eye);
        HitItem hit;
        const bool isHit = model->rayIntersect(ray, &hit);
        EXPECT_EQ(isHit, hit.stateId() != -1);
        EXPECT_EQ(model->rayIntersect(ray, nullptr), isHit);
        return hit;
    }

    orv::PtrRef<DataSourceMemory> own;
    orv::PtrRef<UnstructGridModel> model;
};

TEST_F(RayIntersectTest, TellsAllAboutAHitOnAPart) {
    MemoryModel memory;
    show(memory.source.get(), 2);
    // The top of the second cube of the column; seen along x, which its surfaces are numbered by, top is surface 3,
    // with the nodes 6, 7, 11, 10 in the part.
    const HitItem hit = shoot({11.75, 0.25, 9}, {11.75, 0.25, 0});
    EXPECT_EQ(hit.stateId(), 2);
    EXPECT_EQ(hit.geometryIndex(), 0u);
    EXPECT_EQ(hit.partId(), 2);
    EXPECT_EQ(hit.itemType(), HitItem::PART);
    EXPECT_EQ(hit.itemIndex(), 1u);
    EXPECT_EQ(hit.elementIndex(), 1u);
    EXPECT_EQ(hit.elementLocalSurfaceIndex(), 3u);
    EXPECT_EQ(hit.nodeIndex(), 11u);
    EXPECT_EQ(hit.coordinate(), Vec3d(11.75, 0.25, 1));
}

TEST_F(RayIntersectTest, OfThingsInOnePlaceTheFirstIsHit) {
    MemoryModel memory;
    show(memory.source.get(), 1);
    EXPECT_EQ(shoot({0.5, 0.5, 9}, {0.5, 0.5, 0}).geometryIndex(), 0u);
    model->modelSpec().setPartVisible(0, 1, false);
    EXPECT_EQ(shoot({0.5, 0.5, 9}, {0.5, 0.5, 0}).geometryIndex(), 1u);
    EXPECT_EQ(shoot({0.5, 0.5, 9}, {0.5, 0.5, 0}).partId(), 1);
}

TEST_F(RayIntersectTest, AMissLeavesTheItemAlone) {
    MemoryModel memory;
    show(memory.source.get(), 1);
    Ray ray;
    ray.setOrigin({0.5, 0.5, 9});
    ray.setDirection({0, 0, 1});
    HitItem hit;
    hit.setStateId(7);
    hit.setNodeIndex(8);
    EXPECT_FALSE(model->rayIntersect(ray, &hit));
    EXPECT_EQ(hit.stateId(), 7);
    EXPECT_EQ(hit.nodeIndex(), 8u);
    ray.setDirection({0, 0, 0});
    EXPECT_FALSE(model->rayIntersect(ray, &hit));
    ray.setDirection({0, 0, -1});
    hit.setElementLocalSurfaceIndex(99);
    EXPECT_TRUE(model->rayIntersect(ray, &hit));
    EXPECT_EQ(hit.elementLocalSurfaceIndex(), 3u);
}

TEST_F(RayIntersectTest, WithoutASourceOrAStateNothingIsHit) {
    MemoryModel memory;
    EXPECT_EQ(shoot({0.5, 0.5, 9}, {0.5, 0.5, 0}).stateId(), -1);
    show(memory.source.get(), 1);
    EXPECT_EQ(shoot({0.5, 0.5, 9}, {0.5, 0.5, 0}).stateId(), 1);
    show(memory.source.get(), 9);
    EXPECT_EQ(shoot({0.5, 0.5, 9}, {0.5, 0.5, 0}).stateId(), -1);
    show(nullptr, 1);
    EXPECT_EQ(shoot({0.5, 0.5, 9}, {0.5, 0.5, 0}).stateId(), -1);
}

TEST_F(RayIntersectTest, HitsTheShapeAsItIsDisplaced) {
    MemoryModel memory;
    memory.source->setValues(1, memory.displacement, 0, 0, std::vector<double>(24, 50), nullptr);
    show(memory.source.get(), 1);
    model->modelSpec().setDisplacementResultId(memory.displacement.id());
    model->modelSpec().setDisplaced(true);
    const HitItem hit = shoot({50.25, 50.25, 99}, {50.25, 50.25, 0});
    EXPECT_EQ(hit.coordinate(), Vec3d(50.25, 50.25, 51));
    EXPECT_EQ(hit.nodeIndex(), 3u); // At (0, 0, 1).
    model->modelSpec().setDisplacementScale(0.5);
    EXPECT_EQ(shoot({25.5, 25.5, 99}, {25.5, 25.5, 0}).coordinate(), Vec3d(25.5, 25.5, 26));
}

TEST_F(RayIntersectTest, OnASectionTheItemIsThePlane) {
    MemoryModel memory;
    show(memory.source.get(), 1);
    model->addCuttingPlane()->setVisible(false);
    model->addCuttingPlane()->setPlane({0, 0, 0.5}, {0, 0, 1});
    EXPECT_EQ(shoot({11.75, 0.25, 9}, {11.75, 0.25, 0}).itemType(), HitItem::PART);
    const HitItem inside = shoot({11.75, 0.25, 0.75}, {11.75, 0.25, 0});
    EXPECT_EQ(inside.stateId(), 1);
    EXPECT_EQ(inside.itemType(), HitItem::CUTTING_PLANE);
    EXPECT_EQ(inside.itemIndex(), 1u);
    EXPECT_EQ(inside.geometryIndex(), 0u);
    EXPECT_EQ(inside.partId(), 2);
    EXPECT_EQ(inside.nodeIndex(), UNDEFINED_SIZE_T);
    EXPECT_EQ(inside.elementIndex(), UNDEFINED_SIZE_T);
    EXPECT_EQ(inside.elementLocalSurfaceIndex(), UNDEFINED_SIZE_T);
    EXPECT_EQ(inside.coordinate(), Vec3d(11.75, 0.25, 0.5));
    // In the place of the part's top the part goes first.
    model->cuttingPlane(1)->setPlane({0, 0, 1}, {0, 0, 1});
    EXPECT_EQ(shoot({11.75, 0.25, 9}, {11.75, 0.25, 0}).itemType(), HitItem::PART);
    model->removeCuttingPlane(0);
    model->modelSpec().setPartVisible(0, 2, false);
    model->modelSpec().setPartVisible(1, 2, false);
    EXPECT_EQ(shoot({11.75, 0.25, 9}, {11.75, 0.25, 0}).itemIndex(), 0u);
}

TEST_F(RayIntersectTest, FromInsideItHitsTheSurfaceFromBehind) {
    show(orvtest::referenceCorners(HEXAHEDRON), {{HEXAHEDRON, {0, 1, 2, 3, 4, 5, 6, 7}}});
    const HitItem hit = shoot({0.5, 0.5, 0.5}, {0.5, 0.5, 0.25});
    EXPECT_EQ(hit.elementLocalSurfaceIndex(), 0u);
    EXPECT_EQ(hit.coordinate(), Vec3d(0.5, 0.5, 0));
}

TEST_F(RayIntersectTest, HitsInvertedAndCollapsedElements) {
    show(orvtest::referenceCorners(HEXAHEDRON), {{HEXAHEDRON, {4, 5, 6, 7, 0, 1, 2, 3}}});
    EXPECT_EQ(shoot({0.25, 0.25, 9}, {0.25, 0.25, 0}).nodeIndex(), 4u);
    EXPECT_EQ(shoot({0.25, 0.25, 9}, {0.25, 0.25, 0}).elementLocalSurfaceIndex(), 0u);
    show(orvtest::referenceCorners(HEXAHEDRON), {{HEXAHEDRON, {0, 1, 2, 2, 4, 5, 6, 6}}});
    EXPECT_EQ(shoot({0.75, 0.25, 9}, {0.75, 0.25, 0}).nodeIndex(), 5u);
    EXPECT_EQ(shoot({0.25, 0.75, 9}, {0.25, 0.75, 0}).stateId(), -1); // The half that is not there.
}

TEST_F(RayIntersectTest, HitsMidSideNodesOfCurvedFaces) {
    std::vector<Vec3d> nodes = orvtest::referenceNodes(TRIANGLE_6);
    nodes[4] += Vec3d(0, 0, 0.25);
    show(nodes, {{TRIANGLE_6, {0, 1, 2, 3, 4, 5}}});
    for (std::size_t node = 0; node < 6; ++node) {
        const HitItem hit = shoot({0.3, 0.3, 7}, nodes[node]);
        EXPECT_EQ(hit.nodeIndex(), node);
        EXPECT_NEAR((hit.coordinate() - nodes[node]).length(), 0.0, 1e-15);
    }
}

TEST_F(RayIntersectTest, HitsBeamsAndPoints) {
    show({{0, 0, 0}, {6, 0, 0}, {6, 8, 0}, {6, 4, 0}, {0, 8, 0}}, {{POINT, {4}}, {BEAM, {0, 1}}, {BEAM_3, {1, 2, 3}}});
    struct Case {
        Vec3d target;
        std::size_t element;
        std::size_t node;
    };
    for (const Case& c : {Case{{0, 8, 0}, 0, 4}, Case{{2, 0, 0}, 1, 0}, Case{{4, 0, 0}, 1, 1}, Case{{6, 2.5, 0}, 2, 3},
                          Case{{6, 5.5, 0}, 2, 3}, Case{{6, 7, 0}, 2, 2}}) {
        const HitItem hit = shoot(c.target + Vec3d(0, 0, 5), c.target);
        EXPECT_EQ(hit.stateId(), 3);
        EXPECT_EQ(hit.elementIndex(), c.element);
        EXPECT_EQ(hit.nodeIndex(), c.node);
        EXPECT_EQ(hit.elementLocalSurfaceIndex(), UNDEFINED_SIZE_T);
        EXPECT_NEAR(hit.coordinate().z(), 0.02, 1e-12); // The radius.
    }
}

TEST_F(RayIntersectTest, HitsNodesAMillionAway) {
    for (double offset : {0.0, 1e6, -1e6}) {
        std::vector<Vec3d> nodes = orvtest::referenceCorners(HEXAHEDRON);
        for (Vec3d& node : nodes) {
            node += Vec3d(offset, offset, offset);
        }
        show(nodes, {{HEXAHEDRON, {0, 1, 2, 3, 4, 5, 6, 7}}});
        for (std::size_t node : {1u, 2u, 4u, 5u, 6u, 7u}) {
            EXPECT_EQ(shoot(nodes[6] + Vec3d(3.1, 2.2, 4.3), nodes[node]).nodeIndex(), node);
            EXPECT_EQ(shoot(nodes[6] + Vec3d(3e5, 2e5, 4e5), nodes[node]).nodeIndex(), node);
        }
    }
}

} // namespace
