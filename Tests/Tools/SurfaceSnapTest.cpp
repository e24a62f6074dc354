#include "Tools/SurfaceSnap.h"

#include "Tests/OrvApp/CatalogueTest.h"
#include "Tests/Support/MemoryModels.h"
#include "Tools/CommandError.h"

#include <algorithm>
#include <cmath>
#include <random>

using namespace orv;
using orvapp::snapToSurface;
using orvapp::SurfaceSnap;

namespace {

/// One part of one state.
class SurfaceSnapTest : public testing::Test {
protected:
    SurfaceSnapTest() {
        source->addGeometry();
        part = source->addPart(0, "Part");
    }

    void fill(std::vector<double> coordinates, ug::ElementType type, std::vector<std::uint32_t> nodes) {
        part->nodes()->set(std::move(coordinates), {});
        part->elements()->set({type}, std::move(nodes), {});
    }

    void open() {
        source->addState(ug::StateInfo(1, "", ug::StateInfo::TIME, 0));
        model = orvtest::modelOn(source.get(), 1);
    }

    void expectSnap(const Vec3d& target, const Vec3d& expected, double distance) {
        const std::optional<SurfaceSnap> snap = snapToSurface(*model, target);
        ASSERT_TRUE(snap);
        EXPECT_NEAR((snap->item.coordinate() - expected).length(), 0, 1e-12);
        EXPECT_NEAR(snap->distance, distance, 1e-12);
        EXPECT_EQ(snap->item.stateId(), 1);
        EXPECT_EQ(snap->item.itemIndex(), 0u);
    }

    PtrRef<ug::DataSourceMemory> source = new ug::DataSourceMemory(1);
    ug::DataPart* part;
    PtrRef<ug::UnstructGridModel> model;
};

TEST_F(SurfaceSnapTest, FacesEdgesAndCornersOfACubeAreNearest) {
    orvtest::fillWithCubes(part, 1, 0);
    open();
    expectSnap({0.5, 0.25, 2}, {0.5, 0.25, 1}, 1);
    expectSnap({0.5, 2, 2}, {0.5, 1, 1}, std::sqrt(2.0));
    expectSnap({2, 2, 2}, {1, 1, 1}, std::sqrt(3.0));
    expectSnap({-3, 0.5, 0.5}, {0, 0.5, 0.5}, 3);
    // From inside.
    expectSnap({0.5, 0.5, 0.875}, {0.5, 0.5, 1}, 0.125);
    // On the surface, in a face, on a side and at a corner.
    for (const Vec3d& point : {Vec3d(1, 0.3, 0.4), Vec3d(1, 1, 0.4), Vec3d(1, 1, 1)}) {
        expectSnap(point, point, 0);
    }
}

TEST_F(SurfaceSnapTest, OfABoxTheNearestPointIsTheClampedOne) {
    orvtest::fillWithCubes(part, 4, 1000);
    open();
    std::minstd_rand random(7);
    std::uniform_real_distribution<double> around(-3, 7);
    for (int i = 0; i < 300; ++i) {
        const Vec3d target(1000 + around(random), around(random), around(random));
        const Vec3d clamped(std::clamp(target.x(), 1000.0, 1004.0), std::clamp(target.y(), 0.0, 1.0),
                            std::clamp(target.z(), 0.0, 1.0));
        if (clamped == target) {
            continue; // inside, where the nearest point is another one
        }
        const std::optional<SurfaceSnap> snap = snapToSurface(*model, target);
        ASSERT_TRUE(snap);
        EXPECT_NEAR((snap->item.coordinate() - clamped).length(), 0, 1e-9);
        EXPECT_NEAR(snap->distance, (clamped - target).length(), 1e-9);
    }
}

TEST_F(SurfaceSnapTest, TheItemIsWhatIsThere) {
    orvtest::fillWithCubes(part, 3, 0);
    open();
    const std::optional<SurfaceSnap> snap = snapToSurface(*model, {2.25, 0.75, 1.5});
    EXPECT_EQ(snap->item.elementIndex(), 2u);
    EXPECT_EQ(snap->item.itemType(), ug::HitItem::PART);
    EXPECT_EQ(snap->item.geometryIndex(), 0u);
    EXPECT_EQ(snap->item.partId(), 1);
}

TEST_F(SurfaceSnapTest, AShellIsMetFromBothSides) {
    fill({0, 0, 0, 1, 0, 0, 1, 1, 0, 0, 1, 0}, ug::QUADRILATERAL, {0, 1, 2, 3});
    open();
    expectSnap({0.25, 0.5, 3}, {0.25, 0.5, 0}, 3);
    expectSnap({0.25, 0.5, -3}, {0.25, 0.5, 0}, 3);
    expectSnap({0.25, 0.5, 0}, {0.25, 0.5, 0}, 0);
}

TEST_F(SurfaceSnapTest, BeamsCountByTheirAxes) {
    fill({0, 0, 0, 2, 0, 0}, ug::BEAM, {0, 1});
    open();
    expectSnap({1, 1, 0}, {1, 0, 0}, 1);
    expectSnap({0.5, 0, 0}, {0.5, 0, 0}, 0);
    expectSnap({3, 0, 0}, {2, 0, 0}, 1);
    expectSnap({-1, 1, 0}, {0, 0, 0}, std::sqrt(2.0));
}

TEST_F(SurfaceSnapTest, PointsCountByTheirCentres) {
    part->nodes()->set({0, 0, 0, 5, 0, 0}, {});
    part->elements()->set({ug::POINT, ug::POINT}, {0, 1}, {});
    open();
    expectSnap({4, 0, 0}, {5, 0, 0}, 1);
    expectSnap({5, 0, 0}, {5, 0, 0}, 0);
}

TEST_F(SurfaceSnapTest, WhatIsHiddenIsNotThere) {
    orvtest::fillWithCubes(part, 1, 0);
    open();
    model->modelSpec().setPartVisible(0, 1, false);
    EXPECT_FALSE(snapToSurface(*model, {0, 0, 0}));
    EXPECT_EQ(orvapp::shownDiagonal(*model), 0);
}

TEST_F(SurfaceSnapTest, WithoutAStateNothingCanBeShown) {
    orvtest::fillWithCubes(part, 1, 0);
    open();
    model->modelSpec().setStateId(-1);
    EXPECT_THROW(snapToSurface(*model, {0, 0, 0}), orvapp::CommandError);
}

TEST_F(SurfaceSnapTest, TheDiagonalIsThatOfAllThatIsShown) {
    orvtest::fillWithCubes(part, 3, 10);
    open();
    ASSERT_TRUE(snapToSurface(*model, {0, 0, 0}));
    EXPECT_NEAR(orvapp::shownDiagonal(*model), std::sqrt(11.0), 1e-12);
}

} // namespace
