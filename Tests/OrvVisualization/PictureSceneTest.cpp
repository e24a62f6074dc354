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
using orv::vis::SeenPoint;
using orv::vis::ShownScalars;
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
    const ShownScalars scalars = PictureScene(models).scalars();
    EXPECT_TRUE(scalars.exist);
    EXPECT_TRUE(scalars.haveUndefined);
    EXPECT_EQ(scalars.range.minimum, -2);
    EXPECT_EQ(scalars.range.maximum, 5);
}

TEST(PictureScene, NumbersThatAreNotFiniteHaveNoRange) {
    constexpr double infinity = std::numeric_limits<double>::infinity();
    Mesh mesh = rectangle(0, 0, 1, 1, 0);
    mesh.pointScalars = {infinity, -infinity, infinity, infinity};
    const std::vector<PtrRef<Model>> models = {modelOf({mesh})};
    const ShownScalars scalars = PictureScene(models).scalars();
    EXPECT_TRUE(scalars.exist);
    EXPECT_FALSE(scalars.haveUndefined);
    EXPECT_GT(scalars.range.minimum, scalars.range.maximum);
}

TEST(PictureScene, NaNIsUndefined) {
    for (const double undefined : {orv::UNDEFINED_DOUBLE, std::numeric_limits<double>::quiet_NaN()}) {
        Mesh mesh = rectangle(0, 0, 1, 1, 0);
        mesh.primitiveScalars = {undefined};
        const std::vector<PtrRef<Model>> models = {modelOf({mesh})};
        const ShownScalars scalars = PictureScene(models).scalars();
        EXPECT_TRUE(scalars.exist);
        EXPECT_TRUE(scalars.haveUndefined);
        EXPECT_GT(scalars.range.minimum, scalars.range.maximum);
    }
}

TEST(PictureScene, TheTitleIsThatOfTheFirstModelWithScalars) {
    Mesh mesh = rectangle(0, 0, 1, 1, 0);
    std::vector<PtrRef<Model>> models;
    for (const char* title : {"none", "first", "second"}) {
        PtrRef<ShapesModel> model = new ShapesModel;
        model->add(mesh);
        model->setScalarTitle(title);
        model->updateShapes(nullptr);
        models.push_back(model.get());
        mesh.primitiveScalars = {1};
    }
    EXPECT_EQ(PictureScene(models).scalars().title, "first");
    EXPECT_FALSE(PictureScene(std::span(models).first(1)).scalars().exist);
    EXPECT_FALSE(PictureScene({}).scalars().exist);
}

TEST(PictureScene, WithoutOffsetsATriangleIsAFace) {
    Mesh mesh = rectangle(0, 0, 1, 1, 0);
    EXPECT_EQ(trianglesOf(mesh.shape(), 0).end, 2u);
    mesh.faceOffsets.clear();
    EXPECT_EQ(trianglesOf(mesh.shape(), 1).first, 1u);
    EXPECT_EQ(trianglesOf(mesh.shape(), 1).end, 2u);
}

} // namespace
