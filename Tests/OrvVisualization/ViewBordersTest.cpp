// What pictures show where something ends: smooth borders, lines and outlines.

#include "OrvVisualization/View.h"

#include "Tests/OrvVisualization/PictureTest.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

using orv::PtrRef;
using orv::vis::Image;
using orv::vis::View;
using orvtest::bytes;
using orvtest::countPixels;
using orvtest::difference;
using orvtest::grid;
using orvtest::Mesh;
using orvtest::rectangle;
using orvtest::red;
using orvtest::ShapesModel;
using orvtest::white;
using rvf::Color3ub;

class ViewBordersTest : public orvtest::PictureTest {};

// The left border goes through the middle of the pixels of column 10, and the upper one leaves a quarter of row 5.
TEST_F(ViewBordersTest, HalfAPixelIsHalfTheColour) {
    model->add(rectangle(-9.5, -15, 20, 9.25, 0));
    const Image image = render();
    EXPECT_EQ(image.color(9, 15), white);
    EXPECT_NEAR(image.color(10, 15).g(), 127.5, 1);
    EXPECT_EQ(image.color(11, 15), red);
    EXPECT_NEAR(image.color(25, 5).g(), 0.75 * 255, 1);
    EXPECT_NEAR(image.color(10, 5).g(), 255 - 0.5 * 0.25 * 255, 16) << "with 16 rays";
}

// The border goes up by 1 on 4: each pixel on it is covered by as much as the line leaves, within 2 of 16 rays.
TEST_F(ViewBordersTest, ASlopeHasAllShades) {
    Mesh mesh = rectangle(-20, -15, 20, 0, 0);
    mesh.coordinates[2 * 3 + 1] = 10;
    model->add(mesh);
    const Image image = render();
    for (int x = 0; x < width; ++x) {
        double above = 0; // Covered from the bottom of the picture up to here.
        for (int y = 0; y < height; ++y) {
            above += (255 - image.color(x, y).g()) / 255.0;
        }
        EXPECT_NEAR(above, 15 + (x + 0.5) / 4, 0.125) << x;
    }
}

TEST_F(ViewBordersTest, WithoutAntialiasingEachPixelIsOneOfBoth) {
    model->add(rectangle(-9.4, -15, 20, 9.3, 0));
    view->setAntialiasing(1);
    const Image image = render();
    EXPECT_EQ(countPixels(image, [](const Color3ub& c) { return !(c == white) && !(c == red); }), 0);
}

// Two colours in one plane, with the border a fifth into the pixels of column 20: 3 of 16 rays are to the left of it,
// or 1 of 4 where the colours are much alike.
TEST_F(ViewBordersTest, BordersBetweenColoursAreSmooth) {
    Mesh left = rectangle(-20, -15, 0.2, 15, 0);
    Mesh right = rectangle(0.2, -15, 20, 15, 0);
    right.color = {0, 0, 1};
    model->add(left);
    model->add(right);
    EXPECT_LE(difference(render().color(20, 15), bytes({3 / 16.0F, 0, 13 / 16.0F})), 1);
    PtrRef<ShapesModel> alike = new ShapesModel;
    left.color = {0.8F, 0.5F, 0.5F};
    right.color = {0.6F, 0.5F, 0.5F};
    alike->add(left);
    alike->add(right);
    view->removeModel(model.get());
    view->addModel(alike.get());
    EXPECT_LE(difference(render().color(20, 15), bytes({0.65F, 0.5F, 0.5F})), 1);
    view->setAntialiasing(2);
    EXPECT_LE(difference(render().color(20, 15), bytes({0.65F, 0.5F, 0.5F})), 1);
}

// Of one colour, so that nothing but its depth tells that something is behind the outline.
TEST_F(ViewBordersTest, StepsAreFoundByTheirDepth) {
    model->add(rectangle(-20, -15, 0, 15, 5));
    model->add(rectangle(-15, -10, 15, 10, 0));
    view->setEdgesShown(true);
    const float share = 0.55F * 0.8F;
    EXPECT_LE(difference(render().color(20, 15), bytes({1 - share * 0.95F, share * 0.05F, share * 0.07F})), 2);
}

// The sides of a steep roof, and of a ditch, are far apart from pixel to pixel, and yet go on.
TEST_F(ViewBordersTest, RidgesAreNoSteps) {
    for (const double ridge : {100.0, -100.0}) {
        PtrRef<ShapesModel> roof = new ShapesModel;
        for (const double side : {-20.0, 20.0}) {
            Mesh mesh = rectangle(0, -15, side, 15, 0);
            mesh.coordinates[2] = mesh.coordinates[11] = ridge;
            roof->add(mesh);
        }
        PtrRef<View> other = new View;
        other->camera()->setFromLookAt({0.3, 0, 500}, {0.3, 0, 0}, {0, 1, 0});
        other->camera()->setParallel(30);
        other->setLit(false);
        other->addModel(roof.get());
        Image image;
        ASSERT_TRUE(other->render(30, 30, &image, nullptr));
        other->setAntialiasing(1);
        Image plain;
        ASSERT_TRUE(other->render(30, 30, &plain, nullptr));
        EXPECT_TRUE(std::ranges::equal(image.bytes(), plain.bytes()));
    }
}

TEST_F(ViewBordersTest, EdgesAreDarkLines) {
    model->add(grid(2));
    view->camera()->setFromLookAt({0.5, 0.5, 5}, {0.5, 0.5, 0}, {0, 1, 0});
    view->camera()->setParallel(1.25);
    view->setEdgesShown(true);
    const Image image = render(100, 100); // 80 pixels for the square, so the middle line is between two pixels.
    // A pixel beside the middle of a line that is 1.1 wide is covered by 0.55 of it, and the line covers four fifths.
    const float share = 0.55F * 0.8F;
    const Color3ub onRed = bytes({1 - share * 0.95F, share * 0.05F, share * 0.07F});
    const Color3ub onWhite = bytes({1 - share * 0.95F, 1 - share * 0.95F, 1 - share * 0.93F});
    for (const int at : {49, 50}) {
        EXPECT_LE(difference(image.color(at, 30), onRed), 1);
        EXPECT_LE(difference(image.color(30, at), onRed), 1);
    }
    EXPECT_EQ(image.color(30, 30), red);
    EXPECT_LE(difference(image.color(48, 30), red), 12);
    // The outline has its other half outside.
    EXPECT_LE(difference(image.color(10, 30), onRed), 2);
    EXPECT_LE(difference(image.color(9, 30), onWhite), 2);
    EXPECT_LE(difference(image.color(30, 90), onWhite), 2);
    EXPECT_EQ(image.color(8, 30), white);
    view->setEdgesShown(false);
    EXPECT_EQ(countPixels(render(100, 100), [](const Color3ub& c) { return c == red; }), 80 * 80);
}

TEST_F(ViewBordersTest, HiddenEdgesDoNotShow) {
    Mesh behind = grid(5);
    for (double& x : behind.coordinates) {
        x *= 10;
    }
    model->add(behind);
    Mesh front = rectangle(-20, -15, 20, 15, 1e-6);
    front.edges.clear();
    model->add(front);
    view->setEdgesShown(true);
    EXPECT_EQ(countPixels(render(), [](const Color3ub& c) { return c == red; }), width * height);
}

// Behind the edge of the front square, at the border between two columns, are the middle of a blue face and white.
TEST_F(ViewBordersTest, OutlinesAreDrawnOverWhatIsBehind) {
    model->add(rectangle(-20, -15, 0, 15, 5));
    Mesh behind = rectangle(-15, -10, 15, 10, 0);
    behind.color = {0, 0, 1};
    model->add(behind);
    view->setEdgesShown(true);
    const Image image = render();
    const float share = 0.55F * 0.8F;
    const Color3ub onBlue = bytes({share * 0.05F, share * 0.05F, 1 - share * 0.93F});
    const Color3ub onRed = bytes({1 - share * 0.95F, share * 0.05F, share * 0.07F});
    EXPECT_LE(difference(image.color(19, 15), onRed), 2);
    EXPECT_LE(difference(image.color(20, 15), onBlue), 2);
    EXPECT_EQ(image.color(21, 15), Color3ub(0, 0, 255));
    EXPECT_EQ(image.color(18, 15), red);
    view->setAntialiasing(1); // One ray sees one half.
    EXPECT_EQ(render().color(20, 15), Color3ub(0, 0, 255));
}

// The edge of what is behind, right under the border of the front square, whose edges are not drawn.
TEST_F(ViewBordersTest, OutlinesAreNotDrawnOverWhatIsBefore) {
    Mesh front = rectangle(-20, -15, 0, 15, 5);
    front.edges.clear();
    model->add(front);
    Mesh behind = rectangle(0, -10, 15, 10, 0);
    behind.color = {0, 0, 1};
    model->add(behind);
    view->setEdgesShown(true);
    const Image image = render();
    EXPECT_EQ(image.color(19, 15), red);
    EXPECT_LT(image.color(20, 15).b(), 200);
}

// 200 faces on 100 pixels: lines would leave nothing of the surface.
TEST_F(ViewBordersTest, EdgesOfTinyElementsVanish) {
    model->add(grid(200));
    view->camera()->setFromLookAt({0.5, 0.5, 5}, {0.5, 0.5, 0}, {0, 1, 0});
    view->camera()->setParallel(1);
    view->setEdgesShown(true);
    EXPECT_EQ(countPixels(render(100, 100), [](const Color3ub& c) { return c == red; }), 100 * 100);
}

} // namespace
