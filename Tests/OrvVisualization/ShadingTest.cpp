#include "OrvVisualization/Shading_p.h"

#include "Tests/OrvVisualization/ShapesModel.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

using orv::PtrRef;
using orv::Ray;
using orv::Vec3d;
using orv::vis::ColorMap;
using orv::vis::Model;
using orv::vis::PictureScene;
using orv::vis::SeenPoint;
using orv::vis::Shading;
using orv::vis::Shape;
using orvtest::Mesh;
using orvtest::rectangle;
using orvtest::ShapesModel;
using rvf::Color3f;

constexpr double nan = std::numeric_limits<double>::quiet_NaN();

/// Looks down at meshes, y being up in the picture.
class Looker {
public:
    explicit Looker(const Mesh& mesh) {
        PtrRef<ShapesModel> model = new ShapesModel;
        model->add(mesh);
        model->updateShapes(nullptr);
        m_models.push_back(model.get());
    }

    Color3f colorAt(double x, double y, double fromZ = 10) {
        Ray ray;
        ray.setOrigin({x, y, fromZ});
        ray.setDirection({0, 0, fromZ > 0 ? -1.0 : 1.0});
        const SeenPoint seen = PictureScene(m_models).meet(ray);
        EXPECT_NE(seen.shape, nullptr);
        Shading shading(colors, {0, 8});
        if (isLit) {
            shading.setLight(ray.direction(), {0, 1, 0}, {fromZ > 0 ? 1.0 : -1.0, 0, 0});
        }
        return shading.colorOf(seen, ray.direction());
    }

    ColorMap colors;
    bool isLit = false;

private:
    std::vector<PtrRef<Model>> m_models;
};

void expectNear(const Color3f& color, const Color3f& expected) {
    EXPECT_NEAR(color.r(), expected.r(), 1e-6);
    EXPECT_NEAR(color.g(), expected.g(), 1e-6);
    EXPECT_NEAR(color.b(), expected.b(), 1e-6);
}

/// What a red surface with this normal has.
double expectedLight(const Vec3d& normal) {
    const Vec3d toLight(-0.25, 0.35, 1.0);
    return 0.6 + 0.4 * std::max(normal * toLight / (normal.length() * toLight.length()), 0.0);
}

TEST(Shading, WithoutScalarsAShapeHasItsColour) {
    Mesh mesh = rectangle(0, 0, 1, 1, 0);
    mesh.color = {0.25F, 0.5F, 0.75F};
    EXPECT_EQ(Looker(mesh).colorAt(0.5, 0.25), Color3f(0.25F, 0.5F, 0.75F));
}

// (3/4, 1/4) = 1/4 (0,0) + 1/2 (1,0) + 1/4 (1,1), so 0.25 * 1 + 0.5 * 2 + 0.25 * 6 = 2.75.
TEST(Shading, ScalarsOfPointsAreInterpolatedOnTheTriangle) {
    Mesh mesh = rectangle(0, 0, 1, 1, 0);
    mesh.pointScalars = {1, 2, 6, 7};
    mesh.primitiveScalars = {0};
    Looker looker(mesh);
    expectNear(looker.colorAt(0.75, 0.25), looker.colors.colorAt(2.75, 0, 8));
    // 3/4 (0,0) + 1/4 (0,1), on the other triangle: 0.75 * 1 + 0.25 * 7.
    expectNear(looker.colorAt(0, 0.25), looker.colors.colorAt(2.5, 0, 8));
}

TEST(Shading, ScalarsOfPrimitivesAreEven) {
    Mesh mesh = rectangle(0, 0, 1, 1, 0);
    mesh.coordinates.insert(mesh.coordinates.end(), {2, 0, 0, 2, 1, 0});
    mesh.corners.insert(mesh.corners.end(), {1, 4, 5, 1, 5, 2});
    mesh.faceOffsets = {0, 2, 4};
    mesh.primitiveScalars = {3, 5};
    Looker looker(mesh);
    for (const double y : {0.1, 0.9}) {
        EXPECT_EQ(looker.colorAt(0.5, y), looker.colors.colorAt(3, 0, 8));
        EXPECT_EQ(looker.colorAt(1.5, y), looker.colors.colorAt(5, 0, 8));
    }
}

TEST(Shading, OneUndefinedCornerMakesTheFaceUndefined) {
    for (const double undefined : {orv::UNDEFINED_DOUBLE, nan}) {
        Mesh mesh = rectangle(0, 0, 1, 1, 0);
        mesh.pointScalars = {1, undefined, 6, 7};
        Looker looker(mesh);
        looker.colors.setUndefinedColor({1.0F, 0.0F, 1.0F});
        EXPECT_EQ(looker.colorAt(0.75, 0.25), Color3f(1.0F, 0.0F, 1.0F));
        EXPECT_EQ(looker.colorAt(0.25, 0.75), Color3f(1.0F, 0.0F, 1.0F)) << "the other triangle";
        EXPECT_EQ(looker.colorAt(0.0, 0.0), Color3f(1.0F, 0.0F, 1.0F)) << "right at a corner that is defined";
    }
}

TEST(Shading, AnUndefinedPrimitiveIsUndefined) {
    Mesh mesh = rectangle(0, 0, 1, 1, 0);
    mesh.primitiveScalars = {nan};
    Looker looker(mesh);
    EXPECT_EQ(looker.colorAt(0.75, 0.25), looker.colors.undefinedColor());
}

// The tube goes from (0, 0) to (4, 0); at x = 1 the second end has a quarter.
TEST(Shading, TubesAndSpheresHaveScalarsToo) {
    Mesh tube;
    tube.kind = Shape::TUBES;
    tube.radius = 0.5;
    tube.coordinates = {9, 9, 9, 0, 0, 0, 4, 0, 0};
    tube.corners = {1, 2};
    tube.pointScalars = {-1, 2, 6};
    Looker alongTube(tube);
    expectNear(alongTube.colorAt(1, 0), alongTube.colors.colorAt(3, 0, 8));
    tube.pointScalars[2] = orv::UNDEFINED_DOUBLE;
    EXPECT_EQ(Looker(tube).colorAt(1, 0), ColorMap().undefinedColor());

    Mesh sphere;
    sphere.kind = Shape::SPHERES;
    sphere.radius = 0.5;
    sphere.coordinates = {9, 9, 9, 0, 0, 0, 4, 0, 0};
    sphere.corners = {2, 1};
    sphere.pointScalars = {-1, 2, 6};
    Looker atSphere(sphere);
    expectNear(atSphere.colorAt(0.1, 0), atSphere.colors.colorAt(2, 0, 8));
    expectNear(atSphere.colorAt(4.1, 0), atSphere.colors.colorAt(6, 0, 8));
    sphere.pointScalars.clear();
    sphere.primitiveScalars = {3, 5};
    expectNear(Looker(sphere).colorAt(0.1, 0), atSphere.colors.colorAt(5, 0, 8));
}

TEST(Shading, LightComesOverTheLeftShoulder) {
    Mesh slope = rectangle(0, 0, 1, 1, 0);
    slope.coordinates = {0, 0, 0, 1, 0, 0, 1, 1, -1, 0, 1, -1}; // Falls towards y, so its normal is (0, 1, 1).
    Looker looker(slope);
    looker.isLit = true;
    expectNear(looker.colorAt(0.6, 0.3), Color3f(float(expectedLight({0, 1, 1})), 0, 0));
    slope.coordinates = {0, 0, 0, 1, 0, 1, 1, 1, 1, 0, 1, 0}; // Rises to the right: (-1, 0, 1).
    Looker left(slope);
    left.isLit = true;
    expectNear(left.colorAt(0.6, 0.3), Color3f(float(expectedLight({-1, 0, 1})), 0, 0));
    slope.coordinates = {0, 0, 0, 1, 0, -9, 1, 1, -9, 0, 1, 0}; // Steep, away from the light: (9, 0, 1).
    Looker away(slope);
    away.isLit = true;
    expectNear(away.colorAt(0.6, 0.3), Color3f(0.6F, 0, 0));
}

// From below the picture is mirrored: the slope of before rises towards y there.
TEST(Shading, BothSidesAreLitAlike) {
    Mesh slope = rectangle(0, 0, 1, 1, 0);
    slope.coordinates = {0, 0, 0, 1, 0, 0, 1, 1, -1, 0, 1, -1};
    Looker looker(slope);
    looker.isLit = true;
    expectNear(looker.colorAt(0.6, 0.3, -10), Color3f(float(expectedLight({0, -1, 1})), 0, 0));
    std::swap(slope.corners[1], slope.corners[2]); // Turned over, as are inverted elements.
    std::swap(slope.corners[4], slope.corners[5]);
    Looker turned(slope);
    turned.isLit = true;
    expectNear(turned.colorAt(0.6, 0.3), Color3f(float(expectedLight({0, 1, 1})), 0, 0));
}

TEST(Shading, TubesAreLitRoundTheirAxis) {
    Mesh tube;
    tube.kind = Shape::TUBES;
    tube.radius = 1.0;
    tube.coordinates = {0, 0, 0, 4, 0, 0};
    tube.corners = {0, 1};
    Looker looker(tube);
    looker.isLit = true;
    expectNear(looker.colorAt(2, 0.6), Color3f(float(expectedLight({0, 0.6, 0.8})), 0, 0));
}

/// A face of two triangles with the corner (1, 1) raised.
Mesh warped() {
    Mesh mesh = rectangle(0, 0, 1, 1, 0);
    mesh.coordinates = {0, 0, 0, 1, 0, 0, 1, 1, 0, 0, 1, 0.8};
    return mesh;
}

TEST(Shading, IsSmoothInsideAFace) {
    Looker looker(warped());
    looker.isLit = true;
    // At a corner of one triangle the normal is that of it: below (0, 0, 1), above (0.8, -0.8, 1).
    expectNear(looker.colorAt(1, 0), Color3f(float(expectedLight({0, 0, 1})), 0, 0));
    expectNear(looker.colorAt(0, 1), Color3f(float(expectedLight({0.8, -0.8, 1})), 0, 0));
    // On the diagonal it is the sum of both, of which the areas are 1/2 and half of the length of (0.8, -0.8, 1).
    const Color3f onDiagonal(float(expectedLight({0.8, -0.8, 2})), 0, 0);
    for (const double x : {0.0, 0.5, 1.0}) {
        expectNear(looker.colorAt(x, x), onDiagonal);
    }
    EXPECT_NEAR(looker.colorAt(0.5 + 1e-6, 0.5).r(), looker.colorAt(0.5 - 1e-6, 0.5).r(), 1e-5);
}

TEST(Shading, FacesOfTheirOwnKeepTheirFacets) {
    Mesh mesh = warped();
    mesh.faceOffsets = {0, 1, 2};
    Looker looker(mesh);
    looker.isLit = true;
    expectNear(looker.colorAt(0.5 + 1e-6, 0.5), Color3f(float(expectedLight({0, 0, 1})), 0, 0));
    expectNear(looker.colorAt(0.5 - 1e-6, 0.5), Color3f(float(expectedLight({0.8, -0.8, 1})), 0, 0));
}

} // namespace
