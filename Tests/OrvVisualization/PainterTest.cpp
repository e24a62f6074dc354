#include "OrvVisualization/Painter_p.h"

#include "OrvCore/PtrRef.h"
#include "OrvVisualization/Font.h"
#include "OrvVisualization/Image.h"

#include <gtest/gtest.h>

using namespace orv;
using namespace orv::vis;

namespace {

const rvf::Color3f BLACK = rvf::Color3::BLACK;
const rvf::Color3f WHITE = rvf::Color3::WHITE;
const rvf::Color3f RED = rvf::Color3::RED;

Image white(int width, int height) {
    Image image(width, height);
    image.fill(rvf::Color3::WHITE);
    return image;
}

TEST(Painter, FillsWholePixelsWithTheColor) {
    Image image = white(4, 4);
    Painter(&image).fillRectangle(1, 1, 3, 3, RED);
    for (int y = 0; y < 4; ++y) {
        for (int x = 0; x < 4; ++x) {
            const bool isInside = x >= 1 && x < 3 && y >= 1 && y < 3;
            EXPECT_EQ(image.color(x, y), isInside ? rvf::Color3ub(255, 0, 0) : rvf::Color3ub(255, 255, 255));
        }
    }
}

TEST(Painter, MixesColors) {
    // Half of the power 1.5 of white: 255 * 0.5^(2/3) = 160.6.
    Image image = white(1, 1);
    Painter(&image).fillRectangle(0, 0, 1, 1, BLACK, 0.5);
    EXPECT_EQ(image.color(0, 0), rvf::Color3ub(161, 161, 161));
    Image dark(1, 1);
    Painter(&dark).fillRectangle(0.5, 0, 1, 1, WHITE);
    EXPECT_EQ(dark.color(0, 0), rvf::Color3ub(161, 161, 161));
}

TEST(Painter, LaysColorsOverTransparency) {
    Image image(1, 1, Image::Format::RGBA);
    Painter(&image).fillRectangle(0, 0, 1, 1, RED, 0.6);
    EXPECT_EQ(image.color(0, 0), rvf::Color3ub(255, 0, 0)); // what was transparent gives no colour
    EXPECT_EQ(image.alpha(0, 0), 153);                      // 0.6 * 255
    Painter(&image).fillRectangle(0, 0, 1, 1, RED, 0.5);
    EXPECT_EQ(image.alpha(0, 0), 204); // 0.5 + 0.6 * 0.5 = 0.8
    Painter(&image).fillRectangle(0, 0, 1, 1, BLACK, 0.0);
    EXPECT_EQ(image.color(0, 0), rvf::Color3ub(255, 0, 0));
    EXPECT_EQ(image.alpha(0, 0), 204);
}

TEST(Painter, DrawsLinesOfAWidth) {
    Image image = white(10, 5);
    Painter(&image).drawLine({2, 2.5}, {8, 2.5}, 1.0, BLACK);
    for (int x = 0; x < 10; ++x) {
        EXPECT_EQ(image.color(x, 2), x >= 2 && x < 8 ? rvf::Color3ub(0, 0, 0) : rvf::Color3ub(255, 255, 255)) << x;
        EXPECT_EQ(image.color(x, 1), rvf::Color3ub(255, 255, 255));
    }
    Image point = white(3, 3);
    Painter(&point).drawLine({1, 1}, {1, 1}, 2.0, BLACK);
    EXPECT_EQ(point.color(1, 1), rvf::Color3ub(255, 255, 255));
}

TEST(Painter, DrawsBordersAndLeavesTheInsideAlone) {
    Image image = white(6, 6);
    Painter(&image).drawRectangle(1.5, 1.5, 4.5, 4.5, 1.0, BLACK);
    for (int y = 0; y < 6; ++y) {
        for (int x = 0; x < 6; ++x) {
            const bool isWithin = x >= 1 && x <= 4 && y >= 1 && y <= 4;
            const bool isInside = x >= 2 && x <= 3 && y >= 2 && y <= 3;
            EXPECT_EQ(image.color(x, y), isWithin && !isInside ? rvf::Color3ub(0, 0, 0) : rvf::Color3ub(255, 255, 255));
        }
    }
}

TEST(Painter, WritesTextWhereThePenIs) {
    // A full stop of 2048 units: from (219, 0) to (430, 254); at a size of 64 from 6.84 to 13.44, 7.94 high.
    Image image = white(30, 30);
    Painter(&image).drawText(*Font::createNormalFont(), ".", 64.0, 5.0, 20.0, BLACK);
    EXPECT_EQ(image.color(12, 13), rvf::Color3ub(0, 0, 0));
    EXPECT_EQ(image.color(17, 19), rvf::Color3ub(0, 0, 0));
    EXPECT_EQ(image.color(10, 15), rvf::Color3ub(255, 255, 255));
    EXPECT_EQ(image.color(19, 15), rvf::Color3ub(255, 255, 255));
    EXPECT_EQ(image.color(15, 20), rvf::Color3ub(255, 255, 255));
    EXPECT_EQ(image.color(15, 11), rvf::Color3ub(255, 255, 255));
}

} // namespace
