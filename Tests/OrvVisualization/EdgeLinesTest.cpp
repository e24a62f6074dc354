#include "OrvVisualization/EdgeLines_p.h"

#include "Tests/OrvVisualization/ShapesModel.h"

#include <gtest/gtest.h>

namespace {

using orv::PtrRef;
using orv::Ray;
using orv::Vec3d;
using orv::vis::Camera;
using orv::vis::LineStyle;
using orv::vis::Model;
using orv::vis::PictureRays;
using orv::vis::PictureScene;
using orv::vis::SeenPoint;
using orvtest::Mesh;
using orvtest::rectangle;
using orvtest::ShapesModel;

/// In a picture with pixels of the size 1, and (0, 0) in its middle.
constexpr int size = 200;

constexpr LineStyle plain = {0.5, 1};

/// How much of the point that is seen straight from above is covered. The eye can be far to the right instead, where
/// `slant` to 1 goes.
double coverageAt(const Mesh& mesh, double x, double y, const LineStyle& style = plain, double slant = 0.0) {
    PtrRef<ShapesModel> model = new ShapesModel;
    model->add(mesh);
    model->updateShapes(nullptr);
    const std::vector<PtrRef<Model>> models = {model.get()};
    Camera camera;
    camera.setFromLookAt({x + 50 * slant, y, 50}, {x, y, 0}, {0, 1, 0});
    camera.setParallel(size);
    const PictureRays rays(camera, size, size);
    const Ray ray = rays.through(size / 2.0, size / 2.0);
    const SeenPoint seen = PictureScene(models).meet(ray);
    EXPECT_NE(seen.shape, nullptr);
    EXPECT_LT((seen.hit.point - Vec3d(x, y, seen.hit.point.z())).length(), 1e-9);
    return lineCoverage(seen, rays.stepsOn(seen.hit.point, seen.hit.normal, ray.direction()), style);
}

// From the middle of the line to a half pixel beyond its half width, where the pixel's border touches it.
TEST(EdgeLines, FadeOverOnePixel) {
    const Mesh mesh = rectangle(0, 0, 60, 40, 0);
    EXPECT_NEAR(coverageAt(mesh, 0.0, 20), 1.0, 1e-12);
    EXPECT_NEAR(coverageAt(mesh, 0.25, 20), 0.75, 1e-12);
    EXPECT_NEAR(coverageAt(mesh, 0.75, 20), 0.25, 1e-12);
    EXPECT_NEAR(coverageAt(mesh, 1.0, 20), 0.0, 1e-12);
    EXPECT_NEAR(coverageAt(mesh, 30, 20), 0.0, 1e-12);
    EXPECT_NEAR(coverageAt(mesh, 60 - 0.25, 10), 0.75, 1e-12);
    EXPECT_NEAR(coverageAt(mesh, 40, 0.25), 0.75, 1e-12);
    EXPECT_NEAR(coverageAt(mesh, 20, 40 - 0.25), 0.75, 1e-12);
}

TEST(EdgeLines, AreAsWideAsToldAndSharperInADividedPixel) {
    const Mesh mesh = rectangle(0, 0, 60, 40, 0);
    EXPECT_NEAR(coverageAt(mesh, 1.25, 20, {1.0, 1}), 0.25, 1e-12);
    // A quarter of a pixel from full to nothing, about the half width.
    EXPECT_NEAR(coverageAt(mesh, 0.5 - 0.125, 20, {0.5, 4}), 1.0, 1e-12);
    EXPECT_NEAR(coverageAt(mesh, 0.5, 20, {0.5, 4}), 0.5, 1e-12);
    EXPECT_NEAR(coverageAt(mesh, 0.5 + 0.0625, 20, {0.5, 4}), 0.25, 1e-12);
    EXPECT_NEAR(coverageAt(mesh, 0.5 + 0.125, 20, {0.5, 4}), 0.0, 1e-12);
}

TEST(EdgeLines, DoNotGoAlongTheDiagonal) {
    const Mesh mesh = rectangle(0, 0, 60, 40, 0);
    EXPECT_EQ(coverageAt(mesh, 30, 20), 0.0);
    EXPECT_EQ(coverageAt(mesh, 15, 10), 0.0);
}

TEST(EdgeLines, GoOnlyAlongSidesThatAreEdges) {
    Mesh mesh = rectangle(0, 0, 60, 40, 0);
    mesh.edges = {0b001, 0b100}; // Bottom and left.
    EXPECT_GT(coverageAt(mesh, 30, 0), 0.9);
    EXPECT_GT(coverageAt(mesh, 0, 20), 0.9);
    EXPECT_EQ(coverageAt(mesh, 60, 20), 0.0);
    EXPECT_EQ(coverageAt(mesh, 30, 40), 0.0);
    mesh.edges.clear();
    EXPECT_EQ(coverageAt(mesh, 30, 0), 0.0);
}

// In the lower triangle, a quarter of a pixel below the upper edge and near to the corner, where the diagonal leaves
// only a tenth of a pixel to the upper triangle.
TEST(EdgeLines, OfTheOtherTriangleCountNearTheDiagonal) {
    const Mesh mesh = rectangle(0, 0, 90, 45, 0);
    const double y = 45 - 0.25;
    const double x = 2 * y + 0.2;
    EXPECT_NEAR(coverageAt(mesh, x, y), 0.75, 1e-12);
    Mesh inner = mesh;
    inner.edges = {0b011, 0b100}; // Without the upper edge only the right one is left, 0.3 away.
    EXPECT_NEAR(coverageAt(inner, x, y), 0.7, 1e-12);
}

// The line along the short side of the upper triangle, which ends at its corners, would cross the lower one.
TEST(EdgeLines, EndWhereTheSideEnds) {
    Mesh mesh;
    mesh.coordinates = {0, 0, 0, 40, 0, 0, 40, 20, 0, 20, 10.2, 0};
    mesh.corners = {0, 1, 2, 0, 2, 3};
    mesh.faceOffsets = {0, 2};
    mesh.edges = {0b011, 0b110};
    // On the diagonal; the sides of the upper triangle, 0.2 above its middle, are nearer than half a pixel.
    EXPECT_GT(coverageAt(mesh, 15, 7.5), 0.0);
    mesh.edges = {0b011, 0b010}; // From (40, 20) to (20, 10.2); seen from (10, 5) it is behind its end.
    EXPECT_EQ(coverageAt(mesh, 10, 5 - 1e-9), 0.0);
    EXPECT_GT(coverageAt(mesh, 30, 15 - 1e-9), 0.0);
}

// Halfway between faces that have no line, 2.5 pixels wide, and those that have all of it, 12 pixels wide.
TEST(EdgeLines, ArePalerAcrossNarrowFaces) {
    const Mesh mesh = rectangle(0, 0, 7.25, 40, 0);
    EXPECT_NEAR(coverageAt(mesh, 0.25, 20), 0.75 * 0.5, 1e-12);
    EXPECT_NEAR(coverageAt(mesh, 7, 20), 0.75 * 0.5, 1e-12);
    EXPECT_NEAR(coverageAt(mesh, 3, 0.25), 0.75, 1e-12) << "the face is long in this direction";
    EXPECT_EQ(coverageAt(rectangle(0, 0, 2.5, 40, 0), 0.25, 20), 0.0);
    EXPECT_NEAR(coverageAt(rectangle(0, 0, 12, 40, 0), 0.25, 20), 0.75, 1e-12);
}

// At 60 degrees to the right a distance looks half as long.
TEST(EdgeLines, AreMeasuredInThePicture) {
    const double slant = std::sqrt(3.0);
    const Mesh mesh = rectangle(0, 0, 60, 40, 0);
    EXPECT_NEAR(coverageAt(mesh, 0.5, 20, plain, slant), 0.75, 1e-9);
    EXPECT_NEAR(coverageAt(mesh, 30, 0.25, plain, slant), 0.75, 1e-9);
    EXPECT_NEAR(coverageAt(rectangle(0, 0, 14.5, 40, 0), 0.5, 20, plain, slant), 0.75 * 0.5, 1e-9);
}

TEST(EdgeLines, AreTheSameAnywhereInSpace) {
    for (const double offset : {0.0, 1e6}) {
        Mesh mesh = rectangle(0, 0, 60, 40, 0);
        mesh.move({offset, offset, 0});
        EXPECT_NEAR(coverageAt(mesh, offset + 0.25, offset + 20), 0.75, 1e-6);
    }
}

} // namespace
