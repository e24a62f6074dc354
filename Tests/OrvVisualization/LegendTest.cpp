#include "OrvVisualization/Legend_p.h"

#include "OrvVisualization/ColorMap.h"
#include "OrvVisualization/Image.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <tuple>
#include <utility>
#include <vector>

using namespace orv;
using namespace orv::vis;

namespace {

using Kind = ColorMap::Kind;

const rvf::Color3ub WHITE = rvf::Color3::WHITE;
const rvf::Color3ub NAVY = rvf::Color3ub(20, 20, 60);
const Str LONG_TITLE = "max(vonMises(STRESS), principal(STRESS, 1)) / 355 + something_long * another_long_thing - "
                       "and(so, on, and, so, on, until, it, is, much, too, long, for, any, legend)";

Image filled(int width, int height, const rvf::Color3ub& color) {
    Image image(width, height);
    image.fill(color);
    return image;
}

Image withLegend(Image image, const ColorMap& map, const LegendContent& content) {
    drawLegend(map, content, &image);
    return image;
}

struct Box {
    int left = 1 << 20;
    int top = 1 << 20;
    int right = -1;
    int bottom = -1;
};

/// Around all pixels that do not have a colour.
Box changed(const Image& image, const rvf::Color3ub& background) {
    Box box;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (!(image.color(x, y) == background)) {
                box.left = std::min(box.left, x);
                box.top = std::min(box.top, y);
                box.right = std::max(box.right, x);
                box.bottom = std::max(box.bottom, y);
            }
        }
    }
    return box;
}

template <class Predicate>
std::size_t countIf(const Image& image, Predicate predicate) {
    std::size_t count = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            count += predicate(image.color(x, y)) ? 1 : 0;
        }
    }
    return count;
}

std::size_t countOf(const Image& image, const rvf::Color3ub& color) {
    return countIf(image, [&](const rvf::Color3ub& other) { return other == color; });
}

/// The plain colours of the bar, from the top: those that fill much of a row of pixels.
std::vector<std::tuple<int, int, int>> barColors(const Image& image) {
    std::vector<std::tuple<int, int, int>> colors;
    for (int y = 0; y < image.height(); ++y) {
        const int x = 18; // within the bar of a picture 320 wide
        const rvf::Color3ub color = image.color(x, y);
        const bool isPlain = color == image.color(x - 3, y) && color == image.color(x + 3, y);
        const bool isColor =
            std::max({color.r(), color.g(), color.b()}) - std::min({color.r(), color.g(), color.b()}) > 9;
        const std::tuple<int, int, int> bytes = {color.r(), color.g(), color.b()};
        if (isPlain && isColor && (colors.empty() || colors.back() != bytes)) {
            colors.push_back(bytes);
        }
    }
    return colors;
}

TEST(Legend, BarHasTheColorsOfTheMapFromTheTop) {
    const Image image = withLegend(filled(320, 240, WHITE), ColorMap(Kind::RAINBOW), {"T", 0.0, 1.0, false});
    const auto colors = barColors(image);
    ASSERT_GT(colors.size(), 100U);
    // 120 pixels high: the middle of the last pixel is 1/240 of the bar from its end, a 60th of the way to yellow, and
    // that of the first to cyan: 255 / 60 = 4.25.
    EXPECT_EQ(colors.front(), std::make_tuple(255, 4, 0));
    EXPECT_EQ(colors.back(), std::make_tuple(0, 4, 255));
}

TEST(Legend, BarHasTheBandsOfTheMap) {
    ColorMap map(Kind::RAINBOW);
    ASSERT_TRUE(map.setBandCount(5));
    using Bytes = std::tuple<int, int, int>;
    const std::vector<Bytes> colors = barColors(withLegend(filled(320, 240, WHITE), map, {"T", 0.0, 1.0, false}));
    const std::vector<Bytes> bands = {{255, 0, 0}, {255, 255, 0}, {0, 255, 0}, {0, 255, 255}, {0, 0, 255}};
    EXPECT_EQ(colors, bands);
}

TEST(Legend, ARangeOfOneNumberHasOneColor) {
    const Image image = withLegend(filled(320, 240, WHITE), ColorMap(Kind::RAINBOW), {"T", 5.0, 5.0, false});
    EXPECT_GT(countOf(image, rvf::Color3ub(0, 255, 0)), 1000U);
    EXPECT_EQ(countOf(image, rvf::Color3ub(255, 0, 0)), 0U);
}

TEST(Legend, UndefinedValuesHaveABoxWhenThereAreAny) {
    ColorMap map;
    map.setUndefinedColor(rvf::Color3::PINK);
    const rvf::Color3ub pink = rvf::Color3::PINK;
    EXPECT_EQ(countOf(withLegend(filled(320, 240, WHITE), map, {"T", 0, 1, false}), pink), 0U);
    EXPECT_GT(countOf(withLegend(filled(320, 240, WHITE), map, {"T", 0, 1, true}), pink), 100U);
}

TEST(Legend, WithoutDefinedValuesThereIsNoBar) {
    const Image image = withLegend(filled(320, 240, WHITE), ColorMap(Kind::RAINBOW), {"T", 1.0, 0.0, true});
    EXPECT_TRUE(barColors(image).empty());
    const rvf::Color3f grey = ColorMap().undefinedColor();
    EXPECT_GT(countOf(image, rvf::Color3ub(grey.rByte(), grey.gByte(), grey.bByte())), 100U);
}

TEST(Legend, WithoutAnythingToTellNothingIsDrawn) {
    EXPECT_EQ(changed(withLegend(filled(320, 240, WHITE), ColorMap(), {"", 1.0, 0.0, false}), WHITE).right, -1);
    EXPECT_EQ(changed(withLegend(filled(320, 240, NAVY), ColorMap(), {"", 1.0, 0.0, false}), NAVY).right, -1);
}

TEST(Legend, LettersStandOutFromBrightAndDark) {
    const LegendContent content = {"Title", 0.0, 1.0, false};
    // The bar has neither dark nor whitish colours.
    const ColorMap map(Kind::RAINBOW);
    auto isDark = [](const rvf::Color3ub& color) { return std::max({color.r(), color.g(), color.b()}) < 64; };
    auto isWhitish = [](const rvf::Color3ub& color) { return std::min({color.r(), color.g(), color.b()}) > 192; };
    EXPECT_GT(countIf(withLegend(filled(640, 480, WHITE), map, content), isDark), 500U);
    EXPECT_GT(countIf(withLegend(filled(640, 480, NAVY), map, content), isWhitish), 500U);
}

TEST(Legend, NothingIsCutOffAtAnySize) {
    const std::pair<int, int> sizes[] = {{200, 120}, {320, 240}, {200, 900}, {900, 120}, {640, 480}, {1920, 1080}};
    const LegendContent contents[] = {
        {LONG_TITLE, 0.0, 355.0, true}, {"T", -1e-300 * (1 + 1e-15), -1e-300, true}, {"", -123456.0, 999999.0, false}};
    for (const auto& [width, height] : sizes) {
        for (const LegendContent& content : contents) {
            // On a dark picture the pane is seen, and it holds everything.
            const Box box = changed(withLegend(filled(width, height, NAVY), ColorMap(), content), NAVY);
            EXPECT_EQ(legendWidth(ColorMap(), content, width, height), box.right + 1);
            EXPECT_GE(box.left, 5) << width << " x " << height << " " << content.title;
            EXPECT_GE(box.top, 5) << width << " x " << height << " " << content.title;
            EXPECT_LE(box.right, width - 5) << width << " x " << height << " " << content.title;
            EXPECT_LE(box.bottom, height - 5) << width << " x " << height << " " << content.title;
        }
    }
}

TEST(Legend, SizesFollowThePicture) {
    const LegendContent content = {"Title", 0.0, 1.0, false};
    const Box small = changed(withLegend(filled(1000, 750, NAVY), ColorMap(), content), NAVY);
    const Box large = changed(withLegend(filled(2000, 1500, NAVY), ColorMap(), content), NAVY);
    EXPECT_NEAR(large.right, 2 * small.right, 6);
    EXPECT_NEAR(large.bottom, 2 * small.bottom, 6);
}

TEST(Legend, SmallPicturesStayWithout) {
    const LegendContent content = {"Title", 0.0, 1.0, true};
    EXPECT_EQ(changed(withLegend(filled(199, 500, WHITE), ColorMap(), content), WHITE).right, -1);
    EXPECT_EQ(changed(withLegend(filled(500, 119, WHITE), ColorMap(), content), WHITE).right, -1);
    EXPECT_GT(changed(withLegend(filled(200, 120, WHITE), ColorMap(), content), WHITE).right, 0);
    EXPECT_EQ(legendWidth(ColorMap(), content, 199, 500), 0.0);
    EXPECT_EQ(legendWidth(ColorMap(), content, 500, 119), 0.0);
    EXPECT_GT(legendWidth(ColorMap(), content, 200, 120), 0.0);
}

} // namespace
