#include "OrvVisualization/View.h"

#include "Tests/OrvVisualization/PictureTest.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

using orv::PtrRef;
using orv::Str;
using orv::Vec3d;
using orv::vis::ColorMap;
using orv::vis::Image;
using orv::vis::RayHit;
using orv::vis::Shape;
using orv::vis::View;
using orvtest::bytes;
using orvtest::countPixels;
using orvtest::difference;
using orvtest::FailedAssert;
using orvtest::Mesh;
using orvtest::rectangle;
using orvtest::red;
using orvtest::ShapesModel;
using orvtest::white;
using rvf::Color3ub;

/// A ball of quadrilaterals, and triangles at the poles, with a number for each point and for each face.
Mesh ball(const Vec3d& center, double radius) {
    constexpr std::uint32_t rings = 10;
    constexpr std::uint32_t around = 20;
    Mesh mesh;
    mesh.faceOffsets = {0};
    for (std::uint32_t ring = 0; ring <= rings; ++ring) {
        for (std::uint32_t i = 0; i < around; ++i) {
            const double polar = M_PI * ring / rings;
            const double angle = 2 * M_PI * i / around;
            mesh.coordinates.push_back(center.x() + radius * std::sin(polar) * std::cos(angle));
            mesh.coordinates.push_back(center.y() + radius * std::sin(polar) * std::sin(angle));
            mesh.coordinates.push_back(center.z() + radius * std::cos(polar));
            mesh.pointScalars.push_back(ring + std::sin(angle));
            if (ring < rings) {
                const std::uint32_t a = ring * around + i;
                const std::uint32_t b = ring * around + (i + 1) % around;
                mesh.corners.insert(mesh.corners.end(), {a, a + around, b + around, a, b + around, b});
                mesh.edges.insert(mesh.edges.end(), {0b011, 0b110});
                mesh.faceOffsets.push_back(std::uint32_t(mesh.edges.size()));
                mesh.primitiveScalars.push_back(double(mesh.primitiveScalars.size() % 7));
            }
        }
    }
    return mesh;
}

class ViewRenderTest : public orvtest::PictureTest {
protected:
    /// What a pixel must be when it has one ray.
    Color3ub expectedAt(int x, int y, int pictureWidth, int pictureHeight) const {
        const orv::Ray ray = view->camera()->rayThrough(x + 0.5, y + 0.5, pictureWidth, pictureHeight);
        RayHit hit;
        if (!model->scene()->intersect(ray, &hit)) {
            return bytes(view->backgroundTop());
        }
        const Shape& shape = model->shapes()[hit.mesh];
        const ColorMap& colors = view->colorMap();
        double scalar = 0;
        if (shape.pointScalars.empty()) {
            scalar = shape.primitiveScalars[hit.primitive];
        } else {
            for (std::size_t i = 0; i < 3; ++i) {
                scalar += hit.weights[i] * shape.pointScalars[shape.corners[3 * hit.triangle + i]];
            }
        }
        return bytes(colors.colorAt(scalar, colors.minimum(), colors.maximum()));
    }
};

TEST_F(ViewRenderTest, AViewWithoutModelsIsItsBackground) {
    view->removeModel(model.get());
    view->setBackground({0.2F, 0.4F, 0.6F});
    const Image image = render();
    EXPECT_EQ(countPixels(image, [](const Color3ub& c) { return c == Color3ub(51, 102, 153); }), width * height);
}

// From the top of the first row to the bottom of the last; the colour of a row is that of its middle.
TEST_F(ViewRenderTest, TheBackgroundGoesFromTopToBottom) {
    view->setBackground({1, 0, 0}, {0, 0, 1});
    const Image image = render(3, 10);
    for (int y = 0; y < 10; ++y) {
        const float share = (float(y) + 0.5F) / 10.0F;
        EXPECT_LE(difference(image.color(1, y), bytes({1 - share, 0, share})), 1) << y;
        EXPECT_EQ(image.color(0, y), image.color(2, y));
    }
}

TEST_F(ViewRenderTest, PixelsAreWhereTheCameraHasThem) {
    model->add(rectangle(-10, -5, 7, 12, 0));
    const Image image = render();
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            const bool isInside = x >= 10 && x < 27 && y >= 3 && y < 20;
            ASSERT_EQ(image.color(x, y), isInside ? red : white) << x << ' ' << y;
        }
    }
}

// What is seen is what is picked: each pixel is the colour of what the scene finds there.
TEST_F(ViewRenderTest, ShowsWhatRaysMeet) {
    view->setAntialiasing(1);
    Mesh byPoints = ball({0, 0, 0}, 10);
    Mesh byFaces = ball({7, 3, 4}, 6);
    byFaces.pointScalars.clear();
    model->add(byPoints);
    model->add(byFaces);
    ColorMap colors(ColorMap::Kind::RAINBOW);
    colors.setFixedRange(-1, 9);
    view->setColorMap(colors);
    for (const bool isParallel : {true, false}) {
        if (!isParallel) {
            view->camera()->setPerspective(35);
        }
        const Image image = render(120, 90);
        int metCount = 0;
        for (int y = 0; y < 90; ++y) {
            for (int x = 0; x < 120; ++x) {
                const Color3ub expected = expectedAt(x, y, 120, 90);
                ASSERT_EQ(image.color(x, y), expected) << x << ' ' << y;
                metCount += !(expected == white);
            }
        }
        EXPECT_GT(metCount, 2500);
    }
}

// The numbers on what is drawn go from 2 to 10; the picture is their colours from end to end.
TEST_F(ViewRenderTest, TheRangeIsThatOfWhatIsShown) {
    Mesh mesh = rectangle(-20, -15, 20, 15, 0);
    mesh.pointScalars = {2, 10, 10, 2};
    model->add(mesh);
    const Image image = render();
    for (const int x : {0, 13, 39}) {
        const double scalar = 2 + 8 * (x + 0.5) / width;
        EXPECT_LE(difference(image.color(x, 7), bytes(ColorMap().colorAt(scalar, 2, 10))), 1) << x;
    }
    ColorMap fixed;
    fixed.setFixedRange(0, 40);
    view->setColorMap(fixed);
    EXPECT_LE(difference(render().color(19, 7), bytes(fixed.colorAt(2 + 8 * 19.5 / width, 0, 40))), 1);
}

TEST_F(ViewRenderTest, AllModelsShareTheRange) {
    Mesh low = rectangle(-20, -15, 0, 15, 0);
    low.primitiveScalars = {-4};
    model->add(low);
    PtrRef<ShapesModel> other = new ShapesModel;
    Mesh high = rectangle(0, -15, 20, 15, 0);
    high.primitiveScalars = {4};
    other->add(high);
    view->addModel(other.get());
    const Image image = render();
    EXPECT_EQ(image.color(5, 5), bytes(ColorMap().colorAtFraction(0)));
    EXPECT_EQ(image.color(35, 5), bytes(ColorMap().colorAtFraction(1)));
}

TEST_F(ViewRenderTest, UndefinedNumbersHaveTheirColour) {
    Mesh mesh = rectangle(-20, -15, 0, 15, 0);
    mesh.pointScalars = {1, 2, orv::UNDEFINED_DOUBLE, 1};
    model->add(mesh);
    mesh = rectangle(0, -15, 20, 15, 0);
    mesh.primitiveScalars = {std::numeric_limits<double>::quiet_NaN()};
    model->add(mesh);
    ColorMap colors;
    colors.setUndefinedColor({1, 0, 1});
    view->setColorMap(colors);
    const Image image = render();
    EXPECT_EQ(countPixels(image, [](const Color3ub& c) { return c == Color3ub(255, 0, 255); }), width * height);
}

// A red square that is looked at from the front: the light is 0.25 left and 0.35 up for 1 forward, and a tenth of
// what it gives is 0.4.
TEST_F(ViewRenderTest, LightTakesSomeOfTheColour) {
    model->add(rectangle(-20, -15, 20, 15, 0));
    view->setLit(true);
    const double light = 0.6 + 0.4 / std::sqrt(1 + 0.25 * 0.25 + 0.35 * 0.35);
    const Image image = render();
    EXPECT_LE(difference(image.color(20, 15), bytes({float(light), 0, 0})), 1);
}

TEST_F(ViewRenderTest, InPerspectiveTheNearerIsLarger) {
    model->add(rectangle(-10, -1, -6, 1, 0));
    model->add(rectangle(6, -1, 10, 1, -50));
    auto widths = [this] {
        const Image image = render(400, 300);
        int left = 0;
        int right = 0;
        for (int x = 0; x < 400; ++x) {
            (x < 200 ? left : right) += image.color(x, 150) == red;
        }
        return std::pair(left, right);
    };
    EXPECT_EQ(widths(), std::pair(40, 40)) << "a tenth of the picture's height of 30 and a bit";
    view->camera()->setPerspective(40);
    // 4 at a distance of 50 and of 100, where the picture is 2 * distance * tan(20 degrees) high.
    const double pixels = 4 * 300 / (2 * 50 * std::tan(M_PI / 9));
    const auto [left, right] = widths();
    EXPECT_NEAR(left, pixels, 1);
    EXPECT_NEAR(right, pixels / 2, 1);
}

// A million metres from the origin, where a float has steps of a sixteenth.
TEST_F(ViewRenderTest, FarAwayLooksTheSame) {
    view->setEdgesShown(true);
    view->setLit(true);
    model->add(ball({0, 0, 0}, 10));
    view->camera()->setFromLookAt({20, 30, 40}, {0, 0, 0}, {0, 1, 0});
    const Image near = render(200, 150);
    const Vec3d far(1e6, -1e6, 1e6);
    PtrRef<ShapesModel> moved = new ShapesModel;
    Mesh mesh = ball({0, 0, 0}, 10);
    mesh.move(far);
    moved->add(mesh);
    view->removeModel(model.get());
    view->addModel(moved.get());
    view->camera()->setFromLookAt(far + Vec3d(20, 30, 40), far, {0, 1, 0});
    const Image image = render(200, 150);
    int differences = 0;
    for (int y = 0; y < 150; ++y) {
        for (int x = 0; x < 200; ++x) {
            differences += difference(near.color(x, y), image.color(x, y)) > 1;
        }
    }
    EXPECT_LT(differences, 5);
}

TEST_F(ViewRenderTest, TubesAndSpheresAreDrawn) {
    Mesh tube;
    tube.kind = Shape::TUBES;
    tube.radius = 2;
    tube.coordinates = {-10, 0, 0, 10, 0, 0};
    tube.corners = {0, 1};
    model->add(tube);
    Mesh sphere = tube;
    sphere.kind = Shape::SPHERES;
    sphere.color = {0, 0, 1};
    sphere.radius = 3;
    sphere.coordinates = {10, 10, 0};
    sphere.corners = {0};
    model->add(sphere);
    view->setEdgesShown(true);
    const Image image = render();
    EXPECT_EQ(image.color(30, 5), Color3ub(0, 0, 255));
    for (const int y : {13, 14, 15, 16}) {
        EXPECT_EQ(image.color(20, y), red) << y;
    }
    EXPECT_EQ(image.color(20, 12), white);
    EXPECT_EQ(image.color(20, 17), white);
}

TEST_F(ViewRenderTest, ShapesWithoutPiecesShowNothing) {
    model->add(Mesh());
    Mesh points = Mesh();
    points.kind = Shape::SPHERES;
    points.radius = 1;
    model->add(points);
    EXPECT_EQ(countPixels(render(), [](const Color3ub& c) { return c == white; }), width * height);
}

TEST_F(ViewRenderTest, FitsWhatItsModelsShow) {
    model->add(rectangle(100, 50, 140, 80, 3));
    PtrRef<ShapesModel> other = new ShapesModel;
    other->add(rectangle(90, 50, 100, 80, 3));
    view->addModel(other.get());
    ASSERT_TRUE(view->fit(210, 210));
    const Image image = render(210, 210); // 50 wide, so with the margin 200 of the pixels, and 120 high.
    EXPECT_NEAR(countPixels(image, [](const Color3ub& c) { return c == red; }), 200 * 120, 1000);
    for (const int x : {7, 202}) {
        EXPECT_EQ(image.color(x, 105), red) << x;
    }
    for (const int x : {3, 206}) {
        EXPECT_EQ(image.color(x, 105), white) << x;
    }
    EXPECT_FALSE(view->fit(0, 210));
    EXPECT_FALSE(PtrRef<View>(new View)->fit(210, 210));
}

// The legend of a picture 400 wide, without a title, and with one number as "1.000": with its pane it ends at pixel 70,
// which is the 12 of the margin, 14 of the bar, 8.5 to the number, 28.6 of that at a size of 10, and 6 of the pane's
// margin. From there on the model takes 1 / 1.05 of what is left and of what is right of the middle.
TEST_F(ViewRenderTest, FitsBesideTheLegend) {
    Mesh mesh = rectangle(100, 50, 140, 55, 3);
    model->add(mesh);
    view->setLegendShown(true);
    ASSERT_TRUE(view->fit(400, 200));
    view->setLegendShown(false);
    EXPECT_EQ(render(400, 200).color(12, 100), red) << "without scalars there is no legend";
    mesh.primitiveScalars = {1};
    model->add(mesh);
    ASSERT_TRUE(view->fit(400, 200));
    EXPECT_FALSE(render(400, 200).color(12, 100) == white);
    view->setLegendShown(true);
    ASSERT_TRUE(view->fit(400, 200));
    view->setLegendShown(false);
    EXPECT_EQ(render(400, 200).color(75, 100), white);
    EXPECT_FALSE(render(400, 200).color(81, 100) == white);
    EXPECT_FALSE(render(400, 200).color(389, 100) == white);
    EXPECT_EQ(render(400, 200).color(395, 100), white);
}

TEST_F(ViewRenderTest, ALegendTakesAThirdAndALittleAtMost) {
    Mesh mesh = rectangle(100, 50, 140, 55, 3);
    mesh.primitiveScalars = {1};
    model->add(mesh);
    model->setScalarTitle("mmmmmmmmmmmmmmmmmmmmmmmmmmmmmmmmmmmmmmmm"); // lines of 156, which is 0.39 of the width
    view->setLegendShown(true);
    ASSERT_TRUE(view->fit(400, 200));
    view->setLegendShown(false);
    // 0.35 of 400 is 140, 60 left of the middle; of these 60 / 1.05 = 57.1 are for the model.
    EXPECT_EQ(render(400, 200).color(141, 100), white);
    EXPECT_FALSE(render(400, 200).color(144, 100) == white);
}

TEST_F(ViewRenderTest, FitsWithoutAModelThatFails) {
    PtrRef<ShapesModel> failing = new ShapesModel;
    failing->failWith("no");
    view->addModel(failing.get());
    EXPECT_FALSE(view->fit(210, 210));
    model->add(rectangle(100, 50, 140, 80, 3));
    EXPECT_TRUE(view->fit(210, 210));
}

/// How many pixels of a picture without and with the legend differ.
int legendPixels(View* view) {
    constexpr int size = 300;
    Image without;
    Image with;
    view->setLegendShown(false);
    EXPECT_TRUE(view->render(size, size, &without, nullptr));
    view->setLegendShown(true);
    EXPECT_TRUE(view->render(size, size, &with, nullptr));
    int differences = 0;
    for (int y = 0; y < size; ++y) {
        for (int x = 0; x < size; ++x) {
            differences += !(with.color(x, y) == without.color(x, y));
        }
    }
    return differences;
}

TEST_F(ViewRenderTest, ALegendTellsOfScalars) {
    model->setScalarTitle("Stress");
    model->add(rectangle(-20, -15, 0, 15, 0));
    EXPECT_EQ(legendPixels(view.get()), 0) << "there are no scalars";
    Mesh mesh = rectangle(0, -15, 20, 15, 0);
    mesh.primitiveScalars = {orv::UNDEFINED_DOUBLE};
    model->add(mesh);
    const int ofUndefined = legendPixels(view.get());
    EXPECT_GT(ofUndefined, 100);
    mesh.pointScalars = {1, 2, 3, 4};
    model->add(mesh);
    EXPECT_GT(legendPixels(view.get()), ofUndefined);
}

TEST_F(ViewRenderTest, SizesThatCannotBeAreRefused) {
    const struct {
        int width;
        int height;
        const char* text;
    } cases[] = {
        {0, 10, "A picture cannot be 0x10 pixels: from 1 to 32768 on each side, and 67108864 in all"},
        {10, -1, "A picture cannot be 10x-1 pixels: from 1 to 32768 on each side, and 67108864 in all"},
        {32769, 1, "A picture cannot be 32769x1 pixels: from 1 to 32768 on each side, and 67108864 in all"},
        {32768, 32768, "A picture cannot be 32768x32768 pixels: from 1 to 32768 on each side, and 67108864 in all"},
    };
    for (const auto& c : cases) {
        Image image(2, 2);
        Str reason;
        EXPECT_FALSE(view->render(c.width, c.height, &image, &reason));
        EXPECT_EQ(reason.toStdString(), c.text);
        EXPECT_EQ(image.width(), 2);
        EXPECT_FALSE(view->render(c.width, c.height, &image, nullptr));
    }
    EXPECT_EQ(render(1, 1).color(0, 0), white);
}

TEST_F(ViewRenderTest, TheFirstModelThatFailsTellsWhy) {
    PtrRef<ShapesModel> first = new ShapesModel;
    PtrRef<ShapesModel> second = new ShapesModel;
    first->failWith("There is no state 7");
    second->failWith("There is no state 8");
    view->addModel(first.get());
    view->addModel(second.get());
    Image image(2, 2);
    Str reason;
    EXPECT_FALSE(view->render(width, height, &image, &reason));
    EXPECT_EQ(reason, "There is no state 7");
    EXPECT_EQ(image.width(), 2);
    EXPECT_FALSE(view->render(width, height, &image, nullptr));
}

TEST_F(ViewRenderTest, WithoutAnImageNothingIsDrawn) {
    Str reason;
    EXPECT_FALSE(view->render(width, height, nullptr, &reason));
    EXPECT_EQ(asserts.take(), (std::vector<FailedAssert>{{"OrvVisualization/View", "image", std::nullopt}}));
}

} // namespace
