#include "OrvPlot2d/PlotText_p.h"

#include "OrvVisualization/Font.h"
#include "Tests/OrvPlot2d/PrintGeometry.h"

#include <gtest/gtest.h>

using namespace orv;
using namespace orv::plt;

namespace {

using Lines = std::vector<Str>;

constexpr double SIZE = 10.0;

class PlotText : public testing::Test {
protected:
    double widthOf(const Str& text) const {
        return font->width(text, SIZE);
    }

    const PtrRef<vis::Font> font = vis::Font::createNormalFont();
};

TEST_F(PlotText, HasABoxAsWideAsTheTextAndAsHighAsTheFont) {
    const PlacedText text = placeText(*font, "Time", SIZE, {5.0, 7.0});
    EXPECT_EQ(text.text, "Time");
    EXPECT_EQ(text.size, SIZE);
    EXPECT_FALSE(text.isUpward);
    EXPECT_EQ(text.box, (Rect{5.0, 7.0, 5.0 + widthOf("Time"), 7.0 + font->ascent(SIZE) + font->descent(SIZE)}));
    EXPECT_EQ(text.start, (Point{5.0, 7.0 + font->ascent(SIZE)}));
}

TEST_F(PlotText, UpwardItStartsAtTheBottom) {
    const PlacedText text = placeUpward(*font, "Time", SIZE, {5.0, 70.0});
    EXPECT_TRUE(text.isUpward);
    EXPECT_EQ(text.box, (Rect{5.0, 70.0 - widthOf("Time"), 5.0 + font->ascent(SIZE) + font->descent(SIZE), 70.0}));
    EXPECT_EQ(text.start, (Point{5.0 + font->ascent(SIZE), 70.0}));
}

TEST(TidyText, IsOneLineWithoutBlanksAtItsEnds) {
    EXPECT_EQ(tidy("  a\tb\r\nc "), "a b  c");
    EXPECT_EQ(tidy(Str(L"\u00A0a\u2028b\x7F")), "a b");
    EXPECT_EQ(tidy(" \n "), "");
    EXPECT_EQ(tidy(std::string(5000, 'x')).size(), 4000u);
}

TEST_F(PlotText, WhatFitsIsNotShortened) {
    EXPECT_EQ(shortenMiddle(*font, "Displacement", SIZE, widthOf("Displacement")), "Displacement");
}

TEST_F(PlotText, IsShortenedInTheMiddle) {
    const Str shortened = Str(L"Nod\u202617"); // of an odd number the greater part is in front
    EXPECT_EQ(shortenMiddle(*font, "Node number 117", SIZE, widthOf(shortened) + 0.01), shortened);
}

TEST_F(PlotText, NothingIsLeftWhereNotEvenTheEllipsisFits) {
    EXPECT_EQ(shortenMiddle(*font, "Node", SIZE, widthOf(Str(L"\u2026")) + 0.01), Str(L"\u2026"));
    EXPECT_EQ(shortenMiddle(*font, "Node", SIZE, widthOf(Str(L"\u2026")) - 0.01), "");
    EXPECT_EQ(shortenMiddle(*font, "", SIZE, -1.0), "");
}

TEST_F(PlotText, IsWrappedAtBlanks) {
    const double width = widthOf("aaaa bbbb ") + 0.01;
    EXPECT_EQ(wrap(*font, "aaaa bbbb cccc dddd", SIZE, width, 3), (Lines{"aaaa bbbb", "cccc dddd"}));
    EXPECT_EQ(wrap(*font, " aaaa   bbbb\ncccc", SIZE, width, 3), (Lines{"aaaa", "bbbb cccc"}));
    EXPECT_EQ(wrap(*font, "aaaa", SIZE, width, 3), Lines{"aaaa"});
    EXPECT_EQ(wrap(*font, "", SIZE, width, 3), Lines{});
    EXPECT_EQ(wrap(*font, " \n", SIZE, width, 3), Lines{});
}

TEST_F(PlotText, TheLastLineIsShortened) {
    // At this size a and b are 6.1 and 6.3 wide, c 5.5, d 6.3, a blank 3.2 and the ellipsis 10; the line is 56.3.
    const double width = widthOf("aaaa bbbb ") + 0.01;
    EXPECT_EQ(wrap(*font, "aaaa bbbb cccc dddd eeee", SIZE, width, 2), (Lines{"aaaa bbbb", Str(L"cccc ddd\u2026")}));
    EXPECT_EQ(wrap(*font, "aaaa bbbb cccc", SIZE, width, 1), Lines{Str(L"aaaa bb\u2026")});
}

TEST_F(PlotText, LinesAreNeverWiderThanAllowed) {
    for (double width = 0.0; width < 100.0; width += 1.7) {
        for (const Str& line : wrap(*font, "A Wonderful, extraordinarilylong title of W", SIZE, width, 4)) {
            EXPECT_LE(widthOf(line), width) << line;
        }
    }
}

} // namespace
