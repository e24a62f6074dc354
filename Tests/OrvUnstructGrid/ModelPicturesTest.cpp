// What pictures of a model show, from its values to the pixels.

#include "OrvUnstructGrid/CuttingPlane.h"
#include "OrvUnstructGrid/DataSourceMemory.h"
#include "OrvUnstructGrid/UnstructGridModel.h"
#include "OrvVisualization/Image.h"
#include "OrvVisualization/View.h"

#include "Tests/Support/MemoryModels.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

using namespace orv::ug;
using orv::PtrRef;
using orv::Str;
using orv::Vec3d;
using orv::vis::ColorMap;
using orv::vis::Image;
using orv::vis::View;
using rvf::Color3f;
using rvf::Color3ub;

namespace {

/// Looks along y at a picture of 160 x 120 pixels, 40 to a unit, in whose middle is (1, 0.5) of x and z.
class ModelPicturesTest : public testing::Test {
protected:
    ModelPicturesTest() {
        source->addGeometry();
        part = source->addPart(0, "part");
        view->camera()->setFromLookAt({1, -50, 0.5}, {1, 0, 0.5}, {0, 0, 1});
        view->camera()->setParallel(3);
        view->setLit(false);
        view->setLegendShown(false);
        view->addModel(model.get());
    }

    void addState() {
        source->addState(StateInfo(1, "", StateInfo::TIME, 0));
        model->setDataSource(source.get());
        model->modelSpec().setStateId(1);
    }

    ResultInfo addValues(ResultType type, ResultMapping mapping, const std::vector<double>& values) {
        const ResultInfo info = source->addResult(type, "Result", mapping);
        EXPECT_TRUE(source->setValues(1, info, 0, 0, values, nullptr));
        return info;
    }

    void render() {
        Str reason;
        ASSERT_TRUE(view->render(160, 120, &image, &reason)) << reason;
    }

    /// The colour about a point of x and z.
    Color3ub at(double x, double z) const {
        return image.color(int(std::floor(80 + 40 * (x - 1))), int(std::floor(60 - 40 * (z - 0.5))));
    }

    static int difference(const Color3ub& a, const Color3ub& b) {
        return std::max({std::abs(a.r() - b.r()), std::abs(a.g() - b.g()), std::abs(a.b() - b.b())});
    }

    /// Whether a line goes through a place: most of the light is gone there.
    bool isLine(double x, double z, const Color3f& surface) const {
        const Color3ub color = at(x, z);
        return color.r() + color.g() + color.b() < 0.75F * 255 * (surface.r() + surface.g() + surface.b());
    }

    bool isPlain(double x, double z, const Color3f& surface) const {
        return difference(at(x, z), Color3ub(surface.rByte(), surface.gByte(), surface.bByte())) <= 1;
    }

    PtrRef<DataSourceMemory> source = new DataSourceMemory(1);
    DataPart* part = nullptr;
    PtrRef<UnstructGridModel> model = new UnstructGridModel;
    PtrRef<View> view = new View;
    Image image;
};

const Color3ub white(255, 255, 255);

TEST_F(ModelPicturesTest, AModelWithoutASourceTellsSo) {
    Str reason;
    EXPECT_FALSE(view->render(160, 120, &image, &reason));
    EXPECT_EQ(reason, "The model has no data source: open a file into it first");
    EXPECT_TRUE(image.isEmpty());
}

TEST_F(ModelPicturesTest, AnEmptyPartShowsNothing) {
    addState();
    render();
    EXPECT_EQ(at(0.5, 0.5), white);
    EXPECT_FALSE(view->fit(210, 210));
}

TEST_F(ModelPicturesTest, ElementsHaveTheirColoursAndEdges) {
    orvtest::fillWithCubes(part, 2, 0.0);
    addState();
    model->modelSpec().setFringesResultId(addValues(SCALAR, PER_ELEMENT, {3, 7}).id());
    render();
    const Color3f low = ColorMap().colorAtFraction(0);
    const Color3f high = ColorMap().colorAtFraction(1);
    for (const double place : {0.2, 0.4, 0.6, 0.8}) {
        EXPECT_TRUE(isPlain(place, place, low)) << place;
        EXPECT_TRUE(isPlain(1 + place, place, high)) << place;
        EXPECT_TRUE(isPlain(1 + place, 1 - place, high)) << "no diagonal";
        EXPECT_TRUE(isLine(2 - 0.01, place, high));
        EXPECT_TRUE(isLine(1 + 0.01, place, high));
        EXPECT_TRUE(isLine(1 + place, 0.99, high));
    }
    EXPECT_EQ(at(-0.1, 0.5), white);
    EXPECT_EQ(at(2.1, 0.5), white);
    EXPECT_EQ(at(0.5, 1.1), white);
}

TEST_F(ModelPicturesTest, TheDisplacedShapeIsShown) {
    orvtest::fillWithCubes(part, 1, 0.0);
    addState();
    std::vector<double> displacements;
    for (int node = 0; node < 8; ++node) {
        displacements.insert(displacements.end(), {0.5, 0, 0.25});
    }
    model->modelSpec().setDisplacementResultId(addValues(DISPLACEMENT, PER_NODE, displacements).id());
    render();
    EXPECT_EQ(at(1.1, 0.5), white);
    model->modelSpec().setDisplaced(true);
    model->modelSpec().setDisplacementScale(2.0);
    render();
    EXPECT_EQ(at(0.5, 0.5), white);
    EXPECT_FALSE(at(1.9, 1.4) == white);
    EXPECT_EQ(at(2.1, 1.4), white);
    EXPECT_EQ(at(1.9, 1.6), white);
}

// The value of a node is its x; so are the colours across both elements.
TEST_F(ModelPicturesTest, ASectionHasInterpolatedColoursAndTheBordersOfElements) {
    orvtest::fillWithCubes(part, 2, 0.0);
    addState();
    const ResultInfo info = addValues(SCALAR, PER_NODE, {0, 0, 0, 0, 1, 1, 1, 1, 2, 2, 2, 2});
    CuttingPlane* plane = model->addCuttingPlane();
    plane->setPlane({0, 0.3, 0}, {0, 1, 0});
    plane->setMapScalarResultId(info.id());
    model->modelSpec().setPartVisible(0, part->partId(), false);
    render();
    for (const double place : {0.2125, 0.4125, 0.6125, 0.8125}) { // In the middle of pixels.
        for (const double element : {0.0, 1.0}) {
            const double x = element + place;
            EXPECT_TRUE(isPlain(x, 0.3, ColorMap().colorAt(x, 0, 2))) << x;
            EXPECT_TRUE(isPlain(x, place, ColorMap().colorAt(x, 0, 2))) << x << ", no diagonal";
            EXPECT_TRUE(isPlain(x, 1 - place, ColorMap().colorAt(x, 0, 2))) << x << ", no diagonal";
        }
        EXPECT_TRUE(isLine(0.99, place, ColorMap().colorAt(1, 0, 2)));
        EXPECT_TRUE(isLine(0.01, place, ColorMap().colorAt(0, 0, 2)));
        EXPECT_TRUE(isLine(place, 0.99, ColorMap().colorAt(place, 0, 2)));
    }
    EXPECT_EQ(at(2.1, 0.5), white);
}

// A cube cut across its diagonal: a hexagon with a radius of the root of 1/2, whose four triangles are one face.
TEST_F(ModelPicturesTest, AHexagonHasNoLinesInside) {
    orvtest::fillWithCubes(part, 1, 0.0);
    addState();
    model->addCuttingPlane()->setPlane({0.5, 0.5, 0.5}, {1, 1, 1});
    model->modelSpec().setPartVisible(0, part->partId(), false);
    view->camera()->setFromLookAt({10, 10, 10}, {0.5, 0.5, 0.5}, {0, 0, 1});
    view->camera()->setParallel(1.5);
    render(); // 80 pixels to a unit, so the sides are 80 * sqrt(1/2) * sqrt(3/4) = 48.99 pixels from the middle.
    const Color3f color = model->shapes()[0].color;
    const Color3ub plain(color.rByte(), color.gByte(), color.bByte());
    int dark = 0;
    for (int i = 0; i < 360; ++i) {
        const double angle = i * M_PI / 180;
        for (const double radius : {10.0, 25.0, 45.0}) {
            const int x = int(80 + radius * std::cos(angle));
            const int y = int(60 + radius * std::sin(angle));
            EXPECT_LE(difference(image.color(x, y), plain), 1) << i << ' ' << radius;
        }
        dark += difference(image.color(int(80 + 56 * std::cos(angle)), int(60 + 56 * std::sin(angle))), white) > 1;
    }
    EXPECT_LT(dark, 60) << "the corners, at 56.6 pixels";
    // The corners of the hexagon are at 30 degrees and so on, sides at 0 or 90.
    EXPECT_GT(difference(image.color(80, 60 - 49), plain) + difference(image.color(80 + 49, 60), plain), 60);
}

// The lower side bulges down to z = -0.4, through its mid-side node.
TEST_F(ModelPicturesTest, LinesGoThroughMidSideNodes) {
    part->nodes()->set({0, 0, 0, 2, 0, 0, 2, 0, 1, 0, 0, 1, 1, 0, -0.4, 2, 0, 0.5, 1, 0, 1, 0, 0, 0.5}, {});
    part->elements()->set({QUADRILATERAL_8}, {0, 1, 2, 3, 4, 5, 6, 7}, {});
    addState();
    render();
    const Color3f color = model->shapes()[0].color;
    for (const double share : {0.2, 0.5, 0.8}) {
        EXPECT_TRUE(isLine(share, -0.4 * share + 0.005, color)) << share;
        EXPECT_TRUE(isLine(2 - share, -0.4 * share + 0.005, color)) << share;
        EXPECT_TRUE(isLine(2 - 0.01, share, color));
        EXPECT_TRUE(isPlain(share, -0.4 + 0.9 * (1 - share), color)) << "between mid-side nodes";
        EXPECT_TRUE(isPlain(share, 0.5 + 0.5 * share, color)) << "between mid-side nodes";
    }
    EXPECT_TRUE(isPlain(1, 0.2, color));
    EXPECT_EQ(at(1, -0.45), white);
    EXPECT_EQ(at(0.1, -0.1), white);
}

} // namespace
