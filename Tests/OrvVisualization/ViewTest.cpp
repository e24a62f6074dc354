#include "OrvVisualization/View.h"

#include "Tests/OrvVisualization/ShapesModel.h"
#include "Tests/Support/AssertRecorder.h"

#include <gtest/gtest.h>

using orv::PtrRef;
using orv::Str;
using orv::Vec3d;
using orv::vis::Camera;
using orv::vis::ColorMap;
using orv::vis::Model;
using orv::vis::View;
using orvtest::AssertRecorder;
using orvtest::FailedAssert;
using rvf::Color3f;

namespace {

/// Shows nothing.
class EmptyModel : public Model {
public:
    bool updateShapes(Str*) override {
        return true;
    }

    std::span<const orv::vis::Shape> shapes() const override {
        return {};
    }

    const orv::vis::RayScene* scene() const override {
        return nullptr;
    }

    Str scalarTitle() const override {
        return {};
    }
};

std::vector<Model*> modelsOf(const View& view) {
    std::vector<Model*> models;
    for (size_t i = 0; i < view.modelCount(); ++i) {
        models.push_back(view.model(i));
    }
    return models;
}

class ViewTest : public testing::Test {
protected:
    PtrRef<View> view = new View;
    PtrRef<Model> first = new EmptyModel;
    PtrRef<Model> second = new EmptyModel;
    AssertRecorder asserts;
};

TEST_F(ViewTest, BelongsToItsHolders) {
    EXPECT_EQ(view->refCount(), 1);
}

TEST_F(ViewTest, StartsWhereANewCameraIs) {
    Vec3d eye;
    Vec3d viewReferencePoint;
    view->camera()->toLookAt(&eye, &viewReferencePoint, nullptr);
    EXPECT_EQ(eye, Vec3d(0, 0, 1));
    EXPECT_EQ(viewReferencePoint, Vec3d(0, 0, 0));
}

TEST_F(ViewTest, HasOneCameraOfItsOwn) {
    const View* unchanging = view.get();
    Camera* camera = view->camera();
    EXPECT_EQ(unchanging->camera(), camera);
    EXPECT_NE(PtrRef<View>(new View)->camera(), camera);

    camera->setFromLookAt({5, 6, 7}, {0, 0, 0}, {0, 0, 1});
    Vec3d eye;
    unchanging->camera()->toLookAt(&eye, nullptr, nullptr);
    EXPECT_EQ(eye, Vec3d(5, 6, 7));
}

TEST_F(ViewTest, ShowsNoModelAtFirst) {
    EXPECT_EQ(view->modelCount(), 0u);
}

TEST_F(ViewTest, ShowsModelsInTheOrderOfAdding) {
    view->addModel(second.get());
    view->addModel(first.get());
    EXPECT_EQ(modelsOf(*view), (std::vector<Model*>{second.get(), first.get()}));
}

TEST_F(ViewTest, ShowsAModelOnce) {
    view->addModel(first.get());
    view->addModel(second.get());
    view->addModel(first.get());
    EXPECT_EQ(modelsOf(*view), (std::vector<Model*>{first.get(), second.get()}));
}

TEST_F(ViewTest, KeepsItsModelsAlive) {
    view->addModel(first.get());
    EXPECT_EQ(first->refCount(), 2);
    view->removeModel(first.get());
    EXPECT_EQ(first->refCount(), 1);
    view->addModel(first.get());
    view = nullptr;
    EXPECT_EQ(first->refCount(), 1);
}

TEST_F(ViewTest, LaterModelsMoveUp) {
    view->addModel(first.get());
    view->addModel(second.get());
    view->removeModel(first.get());
    EXPECT_EQ(modelsOf(*view), (std::vector<Model*>{second.get()}));
}

TEST_F(ViewTest, RemovingWhatIsNotShownIsNoMistake) {
    view->addModel(first.get());
    view->removeModel(second.get());
    view->removeModel(nullptr);
    EXPECT_EQ(modelsOf(*view), (std::vector<Model*>{first.get()}));
    EXPECT_EQ(asserts.take(), std::vector<FailedAssert>());
}

TEST_F(ViewTest, NullIsNoModel) {
    view->addModel(nullptr);
    EXPECT_EQ(asserts.take(), (std::vector<FailedAssert>{{"OrvVisualization/View", "model", std::nullopt}}));
    EXPECT_EQ(view->modelCount(), 0u);
}

TEST_F(ViewTest, IndexesMustBeBelowTheCount) {
    view->addModel(first.get());
    EXPECT_EQ(view->model(1), nullptr);
    EXPECT_EQ(asserts.take(),
              (std::vector<FailedAssert>{{"OrvVisualization/View", "index < modelCount()", std::nullopt}}));
}

TEST_F(ViewTest, DrawsOnWhiteAtFirst) {
    EXPECT_EQ(view->backgroundTop(), Color3f(1, 1, 1));
    EXPECT_EQ(view->backgroundBottom(), Color3f(1, 1, 1));
}

TEST_F(ViewTest, ABackgroundIsOneColourOrTwo) {
    view->setBackground({0.1F, 0.2F, 0.3F}, {0.4F, 0.5F, 0.6F});
    EXPECT_EQ(view->backgroundTop(), Color3f(0.1F, 0.2F, 0.3F));
    EXPECT_EQ(view->backgroundBottom(), Color3f(0.4F, 0.5F, 0.6F));
    view->setBackground({0.7F, 0.8F, 0.9F});
    EXPECT_EQ(view->backgroundTop(), Color3f(0.7F, 0.8F, 0.9F));
    EXPECT_EQ(view->backgroundBottom(), Color3f(0.7F, 0.8F, 0.9F));
}

TEST_F(ViewTest, KeepsAColourMapOfItsOwn) {
    EXPECT_EQ(view->colorMap().kind(), ColorMap::Kind::VIRIDIS);
    EXPECT_FALSE(view->colorMap().hasFixedRange());
    ColorMap colors(ColorMap::Kind::RAINBOW);
    colors.setFixedRange(1, 2);
    view->setColorMap(colors);
    EXPECT_EQ(view->colorMap().kind(), ColorMap::Kind::RAINBOW);
    EXPECT_EQ(view->colorMap().maximum(), 2.0);
}

TEST_F(ViewTest, EdgesLegendAndLightAreOnAtFirst) {
    EXPECT_TRUE(view->areEdgesShown());
    EXPECT_TRUE(view->isLegendShown());
    EXPECT_TRUE(view->isLit());
}

TEST_F(ViewTest, EdgesLegendAndLightAreSwitchedOneByOne) {
    view->setEdgesShown(false);
    EXPECT_FALSE(view->areEdgesShown());
    EXPECT_TRUE(view->isLegendShown());
    view->setLegendShown(false);
    EXPECT_FALSE(view->isLegendShown());
    EXPECT_TRUE(view->isLit());
    view->setLit(false);
    EXPECT_FALSE(view->isLit());
}

TEST_F(ViewTest, AntialiasingIsFromOneToEight) {
    EXPECT_EQ(view->antialiasing(), 4);
    for (const int raysPerSide : {1, 8, 3}) {
        EXPECT_TRUE(view->setAntialiasing(raysPerSide));
        EXPECT_EQ(view->antialiasing(), raysPerSide);
    }
    for (const int raysPerSide : {0, 9, -1}) {
        EXPECT_FALSE(view->setAntialiasing(raysPerSide));
        EXPECT_EQ(view->antialiasing(), 3);
    }
}

TEST_F(ViewTest, TellsTheRangeOfAllModels) {
    double minimum = -7;
    double maximum = -8;
    Str reason;
    view->addModel(first.get());
    EXPECT_FALSE(view->scalarRange(&minimum, &maximum, &reason));
    EXPECT_EQ(reason, "No values are shown");
    EXPECT_EQ(minimum, -7);
    EXPECT_EQ(maximum, -8);
    const PtrRef<orvtest::ShapesModel> nodes = new orvtest::ShapesModel;
    orvtest::Mesh mesh = orvtest::rectangle(0, 0, 1, 1, 0);
    mesh.pointScalars = {3, 5, orv::UNDEFINED_DOUBLE, 4};
    nodes->add(mesh);
    const PtrRef<orvtest::ShapesModel> faces = new orvtest::ShapesModel;
    mesh.pointScalars.clear();
    mesh.primitiveScalars = {9};
    faces->add(mesh);
    view->addModel(nodes.get());
    view->addModel(faces.get());
    ColorMap map;
    ASSERT_TRUE(map.setFixedRange(0, 1));
    view->setColorMap(map); // which is for the colours alone
    ASSERT_TRUE(view->scalarRange(&minimum, &maximum, nullptr));
    EXPECT_EQ(minimum, 3);
    EXPECT_EQ(maximum, 9);
    nodes->failWith("There is no state 7");
    EXPECT_FALSE(view->scalarRange(&minimum, &maximum, &reason));
    EXPECT_EQ(reason, "There is no state 7");
}

} // namespace
