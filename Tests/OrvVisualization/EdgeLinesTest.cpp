#include "OrvVisualization/EdgeLines_p.h"

#include "Tests/OrvVisualization/ShapesModel.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

using orv::PtrRef;
using orv::Ray;
using orv::Vec3d;
using orv::vis::Camera;
using orv::vis::FacePoint;
using orv::vis::Model;
using orv::vis::PictureRays;
using orv::vis::PictureScene;
using orv::vis::SeenPoint;
using orvtest::Mesh;
using orvtest::rectangle;
using orvtest::ShapesModel;

/// In a picture with pixels of the size 1, and (0, 0) in its middle.
constexpr int size = 200;

/// A mesh seen straight from above, or from far to the right, where `slant` to 1 goes.
class Looker {
public:
    explicit Looker(const Mesh& mesh, double slant = 0.0) : m_slant(slant) {
        PtrRef<ShapesModel> model = new ShapesModel;
        model->add(mesh);
        model->updateShapes(nullptr);
        m_models.push_back(model.get());
    }

    /// How much of a point is covered.
    double inside(double x, double y, int raysPerSide = 1) const {
        const PictureRays rays = raysAt(x, y);
        const Ray ray = rays.through(size / 2.0, size / 2.0);
        const FacePoint place = placeAt(ray);
        EXPECT_LT((place.point - Vec3d(x, y, place.point.z())).length(), 1e-9);
        return lineCoverage(place, rays.stepsOn(place.point, place.normal, ray.direction()), raysPerSide);
    }

    /// The same for a point outside of the face that is seen at another one.
    double outside(double x, double y, double faceX, double faceY) const {
        const PictureRays rays = raysAt(faceX, faceY);
        const Ray ray = rays.through(size / 2.0, size / 2.0);
        FacePoint place = placeAt(ray);
        place.point = {x, y, 0};
        return outerLineCoverage(place, rays.stepsOn(place.point, place.normal, ray.direction()), 1);
    }

private:
    PictureRays raysAt(double x, double y) const {
        Camera camera;
        camera.setFromLookAt({x + 50 * m_slant, y, 50}, {x, y, 0}, {0, 1, 0});
        camera.setParallel(size);
        return {camera, size, size};
    }

    FacePoint placeAt(const Ray& ray) const {
        const SeenPoint seen = PictureScene(m_models).meet(ray);
        EXPECT_NE(seen.shape, nullptr);
        return {seen.shape, seen.hit.primitive, seen.hit.triangle, seen.hit.point, seen.hit.normal};
    }

    std::vector<PtrRef<Model>> m_models;
    double m_slant;
};

/// In units of a pixel, where a line of one ray per pixel ends; full coverage is a pixel nearer.
constexpr double lineEnd = orv::vis::lineHalfWidth + 0.5;

// Up to half a pixel beyond the half width, where the pixel's border touches the line.
TEST(EdgeLines, FadeOverOnePixel) {
    const Looker looker(rectangle(0, 0, 60, 40, 0));
    EXPECT_NEAR(looker.inside(0, 20), 1.0, 1e-12);
    EXPECT_NEAR(looker.inside(lineEnd - 0.75, 20), 0.75, 1e-12);
    EXPECT_NEAR(looker.inside(lineEnd - 0.25, 20), 0.25, 1e-12);
    EXPECT_NEAR(looker.inside(lineEnd, 20), 0.0, 1e-12);
    EXPECT_NEAR(looker.inside(30, 20), 0.0, 1e-12);
    EXPECT_NEAR(looker.inside(60 - lineEnd + 0.75, 10), 0.75, 1e-12);
    EXPECT_NEAR(looker.inside(40, lineEnd - 0.75), 0.75, 1e-12);
    EXPECT_NEAR(looker.inside(20, 40 - lineEnd + 0.75), 0.75, 1e-12);
}

// A quarter of a pixel from full to nothing, about the half width.
TEST(EdgeLines, AreSharperInADividedPixel) {
    const Looker looker(rectangle(0, 0, 60, 40, 0));
    constexpr double half = orv::vis::lineHalfWidth;
    EXPECT_NEAR(looker.inside(half - 0.125, 20, 4), 1.0, 1e-12);
    EXPECT_NEAR(looker.inside(half, 20, 4), 0.5, 1e-12);
    EXPECT_NEAR(looker.inside(half + 0.0625, 20, 4), 0.25, 1e-12);
    EXPECT_NEAR(looker.inside(half + 0.125, 20, 4), 0.0, 1e-12);
}

// What the face at (30, 20), in its lower triangle, would draw outside of itself.
TEST(EdgeLines, HaveAnOuterHalf) {
    const Looker looker(rectangle(0, 0, 60, 40, 0));
    EXPECT_NEAR(looker.outside(30, -lineEnd + 0.75, 30, 15), 0.75, 1e-12);
    EXPECT_NEAR(looker.outside(60 + lineEnd - 0.25, 20, 30, 15), 0.25, 1e-12);
    EXPECT_NEAR(looker.outside(60 + lineEnd, 20, 30, 15), 0.0, 1e-12);
    EXPECT_EQ(looker.outside(30, 0.1, 30, 15), 0.0) << "inside";
    EXPECT_EQ(looker.outside(60.1, 42, 30, 15), 0.0) << "beyond the end of the side";
    EXPECT_NEAR(looker.outside(-lineEnd + 0.75, 20, 30, 15), 0.75, 1e-12) << "at a side of the other triangle";
    EXPECT_EQ(looker.outside(30, 20.1, 30, 15), 0.0) << "beyond the diagonal";
    EXPECT_NEAR(looker.outside(30, -0.1, 30, 15), looker.outside(60.5, -0.1, 30, 15), 1e-12) << "round the corner";
    Mesh plain = rectangle(0, 0, 60, 40, 0);
    plain.edges.clear();
    EXPECT_EQ(Looker(plain).outside(30, -0.1, 30, 15), 0.0);
}

// The second triangle is folded back under the first one; the line along its side is nearer than half a pixel.
TEST(EdgeLines, OfTheFarSideOfAFaceAreNoOutline) {
    Mesh mesh;
    mesh.coordinates = {0, 0, 0, 40, 0, 0, 40, 40, 0, 30, 10, -20};
    mesh.corners = {0, 1, 2, 0, 2, 3};
    mesh.faceOffsets = {0, 2};
    mesh.edges = {0b011, 0b110};
    EXPECT_EQ(Looker(mesh).outside(15, 4.9, 30, 20), 0.0);
    mesh.coordinates[3 * 3 + 1] = 40; // Not folded: (30, 40), with the outline above the diagonal.
    EXPECT_GT(Looker(mesh).outside(15, 20.1, 30, 20), 0.0);
}

TEST(EdgeLines, DoNotGoAlongTheDiagonal) {
    const Looker looker(rectangle(0, 0, 60, 40, 0));
    EXPECT_EQ(looker.inside(30, 20), 0.0);
    EXPECT_EQ(looker.inside(15, 10), 0.0);
}

TEST(EdgeLines, GoOnlyAlongSidesThatAreEdges) {
    Mesh mesh = rectangle(0, 0, 60, 40, 0);
    mesh.edges = {0b001, 0b100}; // Bottom and left.
    EXPECT_GT(Looker(mesh).inside(30, 0), 0.9);
    EXPECT_GT(Looker(mesh).inside(0, 20), 0.9);
    EXPECT_EQ(Looker(mesh).inside(60, 20), 0.0);
    EXPECT_EQ(Looker(mesh).inside(30, 40), 0.0);
    mesh.edges.clear();
    EXPECT_EQ(Looker(mesh).inside(30, 0), 0.0);
}

// In the lower triangle near to the corner, where the diagonal leaves only a tenth of a pixel to the upper triangle.
TEST(EdgeLines, OfTheOtherTriangleCountNearTheDiagonal) {
    Mesh mesh = rectangle(0, 0, 90, 45, 0);
    const double y = 45 - lineEnd + 0.75;
    const double x = 2 * y + 0.2;
    ASSERT_LT(x, 90);
    EXPECT_NEAR(Looker(mesh).inside(x, y), 0.75, 1e-12);
    mesh.edges = {0b011, 0b100}; // Without the upper edge only the right one is left.
    EXPECT_NEAR(Looker(mesh).inside(x, y), lineEnd - (90 - x), 1e-12);
}

// The upper triangle is a sliver, so that the lines along its sides are near to points of the lower one.
TEST(EdgeLines, EndWhereTheSideEnds) {
    Mesh mesh;
    mesh.coordinates = {0, 0, 0, 40, 0, 0, 40, 20, 0, 20, 10.2, 0};
    mesh.corners = {0, 1, 2, 0, 2, 3};
    mesh.faceOffsets = {0, 2};
    mesh.edges = {0b011, 0b110};
    EXPECT_GT(Looker(mesh).inside(10, 5 - 1e-9), 0.0);
    mesh.edges = {0b011, 0b010}; // From (40, 20) to (20, 10.2) alone.
    EXPECT_EQ(Looker(mesh).inside(10, 5 - 1e-9), 0.0);
    EXPECT_GT(Looker(mesh).inside(30, 15 - 1e-9), 0.0);
}

// Halfway between faces that have no line, 2.5 pixels wide, and those that have all of it, 12 pixels wide.
TEST(EdgeLines, ArePalerAcrossNarrowFaces) {
    const double near = lineEnd - 0.75;
    const Looker looker(rectangle(0, 0, 7.25, 40, 0));
    EXPECT_NEAR(looker.inside(near, 20), 0.75 * 0.5, 1e-12);
    EXPECT_NEAR(looker.inside(7.25 - near, 20), 0.75 * 0.5, 1e-12);
    EXPECT_NEAR(looker.inside(3, near), 0.75, 1e-12) << "the face is long in this direction";
    EXPECT_NEAR(looker.outside(-near, 20, 2, 30), 0.75 * 0.5, 1e-12);
    EXPECT_EQ(Looker(rectangle(0, 0, 2.5, 40, 0)).inside(near, 20), 0.0);
    EXPECT_NEAR(Looker(rectangle(0, 0, 12, 40, 0)).inside(near, 20), 0.75, 1e-12);
}

// At 60 degrees to the right a distance looks half as long.
TEST(EdgeLines, AreMeasuredInThePicture) {
    const double near = lineEnd - 0.75;
    const double slant = std::sqrt(3.0);
    EXPECT_NEAR(Looker(rectangle(0, 0, 60, 40, 0), slant).inside(2 * near, 20), 0.75, 1e-9);
    EXPECT_NEAR(Looker(rectangle(0, 0, 60, 40, 0), slant).inside(30, near), 0.75, 1e-9);
    EXPECT_NEAR(Looker(rectangle(0, 0, 14.5, 40, 0), slant).inside(2 * near, 20), 0.75 * 0.5, 1e-9);
}

TEST(EdgeLines, AreTheSameAnywhereInSpace) {
    for (const double offset : {0.0, 1e6}) {
        Mesh mesh = rectangle(0, 0, 60, 40, 0);
        mesh.move({offset, offset, 0});
        EXPECT_NEAR(Looker(mesh).inside(offset + lineEnd - 0.75, offset + 20), 0.75, 1e-6);
    }
}

} // namespace
