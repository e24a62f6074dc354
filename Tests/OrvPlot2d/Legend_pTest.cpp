#include "OrvPlot2d/Legend_p.h"

#include "OrvVisualization/Font.h"
#include "Tests/OrvPlot2d/PrintGeometry.h"

#include <gtest/gtest.h>

using namespace orv;
using namespace orv::plt;

namespace {

constexpr double SIZE = 10.0;

// In sizes of the text: half a one around, a key of 2.8 and a gap of 0.5 before each name, 1.2 between columns, and
// 1.3 for each row.
double widthFor(double columns, double nameWidth) {
    return 10.0 + columns * (33.0 + nameWidth) + (columns - 1.0) * 12.0;
}

double heightFor(double rows) {
    return 10.0 + rows * 13.0;
}

class LegendTest : public testing::Test {
protected:
    Legend make(std::size_t count, double width, double height, bool isFlat = false) const {
        return makeLegend(*font, std::vector<Str>(count, "Node 17"), SIZE, {width, height, isFlat});
    }

    const PtrRef<vis::Font> font = vis::Font::createNormalFont();
    const double nameWidth = font->width("Node 17", SIZE);
};

TEST_F(LegendTest, IsEmptyWithoutNames) {
    EXPECT_TRUE(make(0, 500, 500).isEmpty());
    EXPECT_TRUE(make(0, 500, 500).isComplete());
}

TEST_F(LegendTest, IsOneColumnWhereItFits) {
    const Legend legend = make(3, 500, 500);
    EXPECT_TRUE(legend.isComplete());
    EXPECT_NEAR(legend.box.width(), widthFor(1, nameWidth), 1e-9);
    EXPECT_NEAR(legend.box.height(), heightFor(3), 1e-9);
    ASSERT_EQ(legend.keys.size(), 3u);
    ASSERT_EQ(legend.texts.size(), 3u);
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_EQ(legend.keys[i].curve, i);
        EXPECT_NEAR(legend.keys[i].from.x, 5.0, 1e-9);
        EXPECT_NEAR(legend.keys[i].to.x, 33.0, 1e-9);
        EXPECT_NEAR(legend.keys[i].from.y, 5.0 + 13.0 * (double(i) + 0.5), 1e-9);
        EXPECT_EQ(legend.keys[i].to.y, legend.keys[i].from.y);
        EXPECT_NEAR(legend.texts[i].box.left, 38.0, 1e-9);
        EXPECT_NEAR(legend.texts[i].box.center().y, legend.keys[i].from.y, 1e-9);
    }
}

TEST_F(LegendTest, FurtherColumnsComeWhenTheHeightIsUsed) {
    const Legend legend = make(5, 500, heightFor(2) + 0.1);
    EXPECT_TRUE(legend.isComplete());
    EXPECT_NEAR(legend.box.width(), widthFor(3, nameWidth), 1e-9);
    EXPECT_NEAR(legend.box.height(), heightFor(2), 1e-9);
    // Down the first column, then down the next.
    EXPECT_EQ(legend.keys[1].from.x, legend.keys[0].from.x);
    EXPECT_EQ(legend.keys[2].from.y, legend.keys[0].from.y);
    EXPECT_NEAR(legend.keys[2].from.x - legend.keys[0].from.x, 45.0 + nameWidth, 1e-9);
}

TEST_F(LegendTest, AFlatOneHasAsManyColumnsAsFit) {
    const Legend legend = make(5, widthFor(3, nameWidth) + 0.1, 500, true);
    EXPECT_TRUE(legend.isComplete());
    EXPECT_NEAR(legend.box.width(), widthFor(3, nameWidth), 1e-9);
    EXPECT_NEAR(legend.box.height(), heightFor(2), 1e-9);
    EXPECT_NEAR(make(5, 500, 500, true).box.height(), heightFor(1), 1e-9);
}

TEST_F(LegendTest, CurvesWithoutRoomAreCounted) {
    const Legend legend = make(9, widthFor(1, nameWidth) + 0.1, heightFor(3) + 0.1);
    EXPECT_FALSE(legend.isComplete());
    EXPECT_EQ(legend.wholeNames, 2u);
    ASSERT_EQ(legend.keys.size(), 2u);
    ASSERT_EQ(legend.texts.size(), 3u);
    EXPECT_EQ(legend.texts[2].text, "+ 7 more");
    EXPECT_NEAR(legend.texts[2].box.left, 5.0, 1e-9);
    EXPECT_NEAR(legend.box.height(), heightFor(3), 1e-9);
}

TEST_F(LegendTest, OnePlaceIsAlwaysThere) {
    const Legend legend = make(9, widthFor(1, nameWidth), 0.0);
    EXPECT_TRUE(legend.keys.empty());
    ASSERT_EQ(legend.texts.size(), 1u);
    EXPECT_EQ(legend.texts[0].text, "+ 9 more");
}

TEST_F(LegendTest, LongNamesAreShortenedInTheMiddle) {
    const double width = widthFor(1, nameWidth) + 0.1;
    const Legend legend = makeLegend(*font, {"Node 17", "Node 1234567 of part 8"}, SIZE, {width, 500});
    EXPECT_FALSE(legend.isComplete());
    EXPECT_EQ(legend.wholeNames, 1u);
    EXPECT_EQ(legend.texts[0].text, "Node 17");
    EXPECT_EQ(legend.texts[1].text, shortenMiddle(*font, "Node 1234567 of part 8", SIZE, nameWidth + 0.1));
    EXPECT_LE(legend.box.width(), width);
    EXPECT_LE(legend.texts[1].box.right, legend.box.right);
}

TEST_F(LegendTest, MovesAsAWhole) {
    const Legend before = make(2, 500, 500);
    Legend legend = before;
    legend.place({100.0, 200.0});
    legend.place({30.0, 40.0});
    EXPECT_NEAR(legend.box.left, 30.0, 1e-9);
    EXPECT_NEAR(legend.box.top, 40.0, 1e-9);
    EXPECT_NEAR(legend.box.width(), before.box.width(), 1e-9);
    EXPECT_NEAR(legend.keys[1].to.x, before.keys[1].to.x + 30.0, 1e-9);
    EXPECT_NEAR(legend.keys[1].from.y, before.keys[1].from.y + 40.0, 1e-9);
    EXPECT_NEAR(legend.texts[1].box.right, before.texts[1].box.right + 30.0, 1e-9);
    EXPECT_NEAR(legend.texts[1].start.y, before.texts[1].start.y + 40.0, 1e-9);
}

} // namespace
