#include "OrvVisualization/PictureScene_p.h"

#include "Tests/OrvVisualization/ShapesModel.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

using orv::PtrRef;
using orv::Ray;
using orv::Vec3d;
using orv::vis::Model;
using orv::vis::PictureScene;
using orv::vis::ScalarRange;
using orv::vis::SeenPoint;
using orv::vis::Shape;
using orvtest::Mesh;
using orvtest::rectangle;
using orvtest::ShapesModel;

PtrRef<Model> modelOf(const std::vector<Mesh>& meshes) {
    PtrRef<ShapesModel> model = new ShapesModel;
    for (const Mesh& mesh : meshes) {
        model->add(mesh);
    }
    model->updateShapes(nullptr);
    return model.get();
}

SeenPoint lookDown(const PictureScene& scene, double x, double y) {
    Ray ray;
    ray.setOrigin({x, y, 10});
    ray.setDirection({0, 0, -1});
    return scene.meet(ray);
}

TEST(PictureScene, OfSeveralModelsTheNearestIsSeen) {
    const std::vector<PtrRef<Model>> models = {modelOf({rectangle(0, 0, 1, 1, 2)}),
                                               modelOf({rectangle(5, 5, 6, 6, 0), rectangle(0, 0, 3, 1, 4)}),
                                               modelOf({rectangle(0, 0, 1, 1, 3)})};
    const PictureScene scene(models);
    const SeenPoint seen = lookDown(scene, 0.5, 0.25);
    EXPECT_EQ(seen.shape, &models[1]->shapes()[1]);
    EXPECT_EQ(seen.hit.point, Vec3d(0.5, 0.25, 4));
    EXPECT_EQ(lookDown(scene, 7, 7).shape, nullptr);
    EXPECT_EQ(scene.shapes().size(), 4u);
}

TEST(PictureScene, AtOneDistanceTheFirstModelIsSeen) {
    const std::vector<PtrRef<Model>> models = {modelOf({rectangle(0, 0, 1, 1, 2)}),
                                               modelOf({rectangle(0, 0, 1, 1, 2)})};
    EXPECT_EQ(lookDown(PictureScene(models), 0.5, 0.25).shape, &models[0]->shapes()[0]);
}

TEST(PictureScene, AModelWithoutASceneShowsNothing) {
    const std::vector<PtrRef<Model>> models = {new ShapesModel, modelOf({rectangle(0, 0, 1, 1, 2)})};
    const PictureScene scene(models);
    EXPECT_EQ(scene.shapes().size(), 1u);
    EXPECT_EQ(lookDown(scene, 0.5, 0.25).shape, &models[1]->shapes()[0]);
}

TEST(PictureScene, TheRangeIsThatOfWhatIsDrawn) {
    Mesh points = rectangle(0, 0, 1, 1, 0);
    points.coordinates.insert(points.coordinates.end(), {0, 0, 9});
    points.pointScalars = {3, 5, orv::UNDEFINED_DOUBLE, 4, 1000}; // The last point is no corner.
    points.primitiveScalars = {-70};                              // Those of points go before.
    Mesh faces = rectangle(0, 0, 1, 1, 1);
    faces.primitiveScalars = {-2};
    const std::vector<PtrRef<Model>> models = {modelOf({points}), modelOf({rectangle(0, 0, 1, 1, 3), faces})};
    const ScalarRange range = PictureScene(models).scalarRange();
    EXPECT_EQ(range.minimum, -2);
    EXPECT_EQ(range.maximum, 5);
    EXPECT_FALSE(range.isEmpty());
}

TEST(PictureScene, NumbersThatAreNotFiniteHaveNoRange) {
    constexpr double infinity = std::numeric_limits<double>::infinity();
    Mesh mesh = rectangle(0, 0, 1, 1, 0);
    mesh.pointScalars = {infinity, -infinity, orv::UNDEFINED_DOUBLE, std::numeric_limits<double>::quiet_NaN()};
    const std::vector<PtrRef<Model>> models = {modelOf({mesh})};
    EXPECT_TRUE(PictureScene(models).scalarRange().isEmpty());
    EXPECT_TRUE(PictureScene({}).scalarRange().isEmpty());
}

TEST(PictureScene, WithoutOffsetsATriangleIsAFace) {
    Mesh mesh = rectangle(0, 0, 1, 1, 0);
    EXPECT_EQ(trianglesOf(mesh.shape(), 0).end, 2u);
    mesh.faceOffsets.clear();
    EXPECT_EQ(trianglesOf(mesh.shape(), 1).first, 1u);
    EXPECT_EQ(trianglesOf(mesh.shape(), 1).end, 2u);
}

} // namespace
