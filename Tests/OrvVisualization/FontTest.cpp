// The numbers are those of the font file's own tables (head, hhea, hmtx, kern, glyf), read without this library: in
// units of 2048 for the size.

#include "OrvVisualization/Font.h"

#include <gtest/gtest.h>

#include <algorithm>

using namespace orv;
using namespace orv::vis;

namespace {

constexpr double UNITS = 2048.0;

struct Box {
    double left = 1e9;
    double top = 1e9;
    double right = -1e9;
    double bottom = -1e9;
};

/// Around the ends of the steps: a curve of this font has its outermost points there.
Box boxOf(const Outline& outline) {
    Box box;
    for (const OutlineStep& step : outline) {
        if (step.kind != OutlineStep::Kind::CLOSE) {
            box.left = std::min(box.left, step.end.x);
            box.right = std::max(box.right, step.end.x);
            box.top = std::min(box.top, step.end.y);
            box.bottom = std::max(box.bottom, step.end.y);
        }
    }
    return box;
}

const Font& font() {
    static const PtrRef<Font> theFont = Font::createNormalFont();
    return *theFont;
}

TEST(Font, IsOpenedOnceAndShared) {
    const PtrRef<Font> one = Font::createNormalFont();
    const int holders = one->refCount();
    const PtrRef<Font> two = Font::createNormalFont();
    EXPECT_EQ(one.get(), two.get());
    EXPECT_EQ(one->refCount(), holders + 1);
}

TEST(Font, HasTheMetricsOfItsFile) {
    EXPECT_EQ(font().normalSize(), 12.0);
    EXPECT_EQ(font().ascent(UNITS), 1901.0);
    EXPECT_EQ(font().descent(UNITS), 483.0);
    EXPECT_EQ(font().lineHeight(UNITS), 2384.0);
    EXPECT_DOUBLE_EQ(font().ascent(12.0), 1901.0 * 12.0 / 2048.0);
}

TEST(Font, AddsUpWidths) {
    EXPECT_EQ(font().width("", 12.0), 0.0);
    EXPECT_EQ(font().width("A", UNITS), 1401.0);
    EXPECT_EQ(font().width(" ", UNITS), 651.0);
    EXPECT_EQ(font().width("0123456789", UNITS), 10 * 1303.0);
    EXPECT_EQ(font().width(Str("\xce\xb1"), UNITS), 1350.0); // Greek alpha
}

TEST(Font, MovesPairsTogether) {
    EXPECT_EQ(font().width("AV", UNITS), 1401.0 + 1401.0 - 131.0);
    EXPECT_EQ(font().width("To", UNITS), 1251.0 + 1253.0 - 348.0);
    // The V is where the width says: all of the second letter is moved, not only the pen behind it.
    const Box both = boxOf(font().outline("To", UNITS));
    EXPECT_EQ(both.right, 1251.0 - 348.0 + 1141.0);
}

TEST(Font, WidthsAreProportionalToTheSize) {
    const Str text = "Von Mises 3.14e+05";
    const double atOne = font().width(text, 1.0);
    for (double size : {0.25, 7.0, 12.0, 13.7, 300.0}) {
        EXPECT_DOUBLE_EQ(font().width(text, size), size * atOne);
    }
}

TEST(Font, OutlinesLieOnTheBaselineWithYDown) {
    const Box box = boxOf(font().outline("A", UNITS));
    EXPECT_EQ(box.left, 16.0);
    EXPECT_EQ(box.right, 1384.0);
    EXPECT_EQ(box.top, -1493.0);
    EXPECT_EQ(box.bottom, 0.0);
    EXPECT_EQ(boxOf(font().outline("o", UNITS)).bottom, 29.0);
}

TEST(Font, OutlinesAreScaledAndMoved) {
    const Box box = boxOf(font().outline("A", UNITS / 8, 100.0, 50.0));
    EXPECT_EQ(box.left, 100.0 + 16.0 / 8);
    EXPECT_EQ(box.right, 100.0 + 1384.0 / 8);
    EXPECT_EQ(box.top, 50.0 - 1493.0 / 8);
    EXPECT_EQ(box.bottom, 50.0);
}

TEST(Font, LettersAreClosedLines) {
    using Kind = OutlineStep::Kind;
    // A full stop is a rectangle: from 219 to 430 and from 0 to 254.
    const Outline stop = font().outline(".", UNITS);
    ASSERT_EQ(stop.front().kind, Kind::MOVE);
    ASSERT_EQ(stop.back().kind, Kind::CLOSE);
    EXPECT_EQ(std::count_if(stop.begin(), stop.end(), [](const auto& step) { return step.kind == Kind::CURVE; }), 0);
    // An o has two lines, one within the other, all round.
    const Outline o = font().outline("o", UNITS);
    EXPECT_EQ(std::count_if(o.begin(), o.end(), [](const auto& step) { return step.kind == Kind::MOVE; }), 2);
    EXPECT_EQ(std::count_if(o.begin(), o.end(), [](const auto& step) { return step.kind == Kind::CLOSE; }), 2);
    EXPECT_GE(std::count_if(o.begin(), o.end(), [](const auto& step) { return step.kind == Kind::CURVE; }), 8);
}

TEST(Font, CurvesStartOutAlongTheLineOfTheFile) {
    // Each control is two thirds of the way from its end of the curve to the one control of the file, so both lines
    // through end and control meet there: begin + 1.5 (control1 - begin) = end + 1.5 (control2 - end).
    OutlinePoint begin;
    int curves = 0;
    for (const OutlineStep& step : font().outline("o", UNITS)) {
        if (step.kind == OutlineStep::Kind::CURVE) {
            EXPECT_NEAR(begin.x + 1.5 * (step.control1.x - begin.x), step.end.x + 1.5 * (step.control2.x - step.end.x),
                        1e-9);
            EXPECT_NEAR(begin.y + 1.5 * (step.control1.y - begin.y), step.end.y + 1.5 * (step.control2.y - step.end.y),
                        1e-9);
            ++curves;
        }
        begin = step.end;
    }
    EXPECT_GT(curves, 0);
}

TEST(Font, BlanksHaveAWidthAndNoOutline) {
    EXPECT_TRUE(font().outline("", 12.0).empty());
    EXPECT_TRUE(font().outline("   ", 12.0).empty());
    EXPECT_EQ(font().width("   ", UNITS), 3 * 651.0);
}

TEST(Font, MissingCharactersAreBoxes) {
    // A Chinese character, which the font lacks, a line break, and a number that is no character at all.
    for (const Str& text : {Str(L"\x65e5"), Str("\n"), Str(L"\x7fffffff")}) {
        EXPECT_EQ(font().width(text, UNITS), 1229.0);
        const Box box = boxOf(font().outline(text, UNITS));
        EXPECT_EQ(box.left, 102.0);
        EXPECT_EQ(box.top, -1444.0);
        EXPECT_EQ(box.right, 1126.0);
        EXPECT_EQ(box.bottom, 362.0);
    }
}

} // namespace
