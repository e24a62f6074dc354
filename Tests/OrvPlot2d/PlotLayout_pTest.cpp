#include "OrvPlot2d/PlotLayout_p.h"

#include "Tests/OrvPlot2d/PlotSamples.h"
#include "Tests/OrvPlot2d/PrintGeometry.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>

using namespace orv;
using namespace orv::plt;
using orvtest::makePlot;
using orvtest::mapped;
using orvtest::Numbers;
using orvtest::spaced;

namespace {

PlotLayout layOut(const PtrRef<OverlayPlot>& plot, double width, double height) {
    return layOut(*plot, *plot->font(), width, height);
}

std::vector<PlacedText> allTexts(const PlotLayout& layout) {
    std::vector<PlacedText> texts = layout.texts;
    texts.insert(texts.end(), layout.legend.texts.begin(), layout.legend.texts.end());
    return texts;
}

Rect shrunk(const Rect& rect, double by) {
    return {rect.left + by, rect.top + by, rect.right - by, rect.bottom - by};
}

bool isWithin(const Rect& inner, const Rect& outer) {
    return outer.contains({inner.left, inner.top}) && outer.contains({inner.right, inner.bottom});
}

const PlacedText* find(const PlotLayout& layout, const Str& text) {
    const auto found =
        std::find_if(layout.texts.begin(), layout.texts.end(), [&](const PlacedText& t) { return t.text == text; });
    return found == layout.texts.end() ? nullptr : &*found;
}

/// What holds for the layout of any plot.
void expectReadable(const PlotLayout& layout) {
    const Rect page = {0.0, 0.0, layout.width, layout.height};
    const std::vector<PlacedText> texts = allTexts(layout);
    for (std::size_t i = 0; i < texts.size(); ++i) {
        EXPECT_FALSE(texts[i].text.isEmpty());
        EXPECT_GE(texts[i].size, 8.0);
        EXPECT_TRUE(isWithin(texts[i].box, page)) << texts[i].text << testing::PrintToString(texts[i].box);
        EXPECT_FALSE(shrunk(texts[i].box, 1e-6).overlaps(layout.frame) && i < layout.texts.size())
            << texts[i].text << " in the frame";
        for (std::size_t k = 0; k < i; ++k) {
            EXPECT_FALSE(shrunk(texts[i].box, 1e-6).overlaps(texts[k].box)) << texts[i].text << " on " << texts[k].text;
        }
    }
    EXPECT_TRUE(isWithin(layout.frame, page));
    EXPECT_GE(layout.frame.width(), 0.3 * layout.width);
    EXPECT_GE(layout.frame.height(), 0.2 * layout.height);
    EXPECT_GE(layout.xTicks.size(), 2u);
    EXPECT_GE(layout.yTicks.size(), 2u);
}

void expectLegendIsClear(const PlotLayout& layout) {
    if (layout.legend.isEmpty()) {
        return;
    }
    const Rect& box = layout.legend.box;
    EXPECT_TRUE(isWithin(box, {0.0, 0.0, layout.width, layout.height}));
    EXPECT_TRUE(isWithin(box, layout.frame) || !box.overlaps(layout.frame));
    for (const PlacedText& text : layout.legend.texts) {
        EXPECT_TRUE(isWithin(text.box, box)) << text.text;
    }
    for (const PlacedText& text : layout.texts) {
        EXPECT_FALSE(shrunk(box, 1e-6).overlaps(text.box)) << text.text;
    }
    for (const CurveLines& curve : layout.curves) {
        EXPECT_FALSE(touches(curve, shrunk(box, 1e-6), 0.0));
    }
}

struct Words {
    Str title, xTitle, yTitle, name;
};

/// Nothing, a little, much in one word and in many, and scripts that the font has and has not.
std::vector<Words> wordings() {
    const Str word(std::string(300, 'W'));
    Str sentence;
    for (int i = 0; i < 60; ++i) {
        sentence += "stress of the bracket, ";
    }
    return {{"", "", "", ""},
            {"Plot 1", "Time", "Displacement", "Node 17"},
            {word, word, word, word},
            {sentence, sentence, sentence, sentence},
            {Str(L"Spannung \u03c3\u2081\u2082 \u2013 \u041d\u0430\u043f\u0440\u044f\u0436\u0435\u043d\u0438\u0435"),
             Str(L"Zeit [\u00b5s]"), Str(L"\u5fdc\u529b [N/mm\u00b2]"),
             Str(L"\u0627\u0644\u0625\u062c\u0647\u0627\u062f")},
            {"two\nlines", "Length", "a\tb", "\n"}};
}

using Settings = std::function<void(AxisSettings*)>;

struct Data {
    Numbers x, y;
    Settings settings = [](AxisSettings*) {};
};

std::vector<Data> dataKinds() {
    const Numbers x = spaced(0.0, 10.3, 40);
    return {{x, mapped(x, [](double t) { return std::sin(t); })},
            {mapped(x, [](double t) { return 1e6 + t * 1e-5; }), x}, // wide labels over short ones
            {x, mapped(x, [](double t) { return -1e8 + t * 1e-2; })},
            {mapped(x, [](double t) { return (t - 5.0) * 3e307; }), mapped(x, [](double t) { return t * 1e-305; })},
            {mapped(x, [](double t) { return std::pow(10.0, t - 3.0); }),
             mapped(x, [](double t) { return std::pow(10.0, -30.0 * t); }),
             [](AxisSettings* axes) {
                 axes->setXAxisLogarithmic(true);
                 axes->setYAxisLogarithmic(true);
             }},
            {x, Numbers(x.size(), -1234.5678)},
            {x, Numbers(x.size(), std::nan(""))},
            {x, x, [](AxisSettings* axes) {
                 axes->setXAxisRange({1e-7, 3.3e-7});
                 axes->setYAxisRange({-123456.7, 123456.7});
             }}};
}

const Point SIZES[] = {{200, 150}, {200, 900}, {800, 600}, {1600, 300}, {5000, 4000}};

TEST(PlotLayout, TextNeverOverlapsAndNothingIsCutOff) {
    const std::vector<Data> kinds = dataKinds();
    for (const Data& data : kinds) {
        for (const Words& words : wordings()) {
            for (const int curves : {0, 1, 3, 40}) {
                const PtrRef<OverlayPlot> plot = makePlot(words.title, words.xTitle, words.yTitle);
                data.settings(plot->axisSettings());
                for (int i = 0; i < curves; ++i) {
                    const double factor = 1.0 - 0.02 * i;
                    plot->addCurve(words.name, data.x, mapped(data.y, [&](double y) { return y * factor; }));
                }
                for (const Point& size : SIZES) {
                    SCOPED_TRACE(testing::Message() << "data " << &data - kinds.data() << ", title " << words.title
                                                    << ", " << curves << " curves, " << size.x << " x " << size.y);
                    const PlotLayout layout = layOut(plot, size.x, size.y);
                    expectReadable(layout);
                    expectLegendIsClear(layout);
                    if (HasFailure()) {
                        return;
                    }
                }
            }
        }
    }
}

TEST(PlotLayout, GrowsWithThePicture) {
    const PtrRef<OverlayPlot> plot = makePlot("Title", "x", "y");
    plot->addCurve("", spaced(0, 1, 5), spaced(0, 1, 5));
    EXPECT_EQ(layOut(plot, 800, 600).unit, 1.0);
    EXPECT_EQ(layOut(plot, 1600, 1200).unit, 2.0);
    EXPECT_EQ(layOut(plot, 1600, 600).unit, 1.0);
    EXPECT_EQ(layOut(plot, 800, 1200).unit, 1.0);
    EXPECT_NEAR(layOut(plot, 200, 150).unit, 8.0 / 14.0, 1e-12); // text of 8 pixels, not of 3.5
    EXPECT_EQ(find(layOut(plot, 1600, 1200), "x")->size, 28.0);
    EXPECT_EQ(find(layOut(plot, 1600, 1200), "Title")->size, 34.0);
}

TEST(PlotLayout, PlacesTitles) {
    const PtrRef<OverlayPlot> plot = makePlot("Title", "across", "up");
    plot->addCurve("", spaced(0, 1, 5), spaced(0, 1, 5));
    const PlotLayout layout = layOut(plot, 800, 600);
    const Rect& frame = layout.frame;
    EXPECT_NEAR(find(layout, "Title")->box.center().x, frame.center().x, 1e-9);
    EXPECT_LT(find(layout, "Title")->box.bottom, frame.top);
    EXPECT_NEAR(find(layout, "across")->box.center().x, frame.center().x, 1e-9);
    EXPECT_GT(find(layout, "across")->box.top, frame.bottom);
    EXPECT_NEAR(find(layout, "up")->box.center().y, frame.center().y, 1e-9);
    EXPECT_LT(find(layout, "up")->box.right, frame.left);
    EXPECT_TRUE(find(layout, "up")->isUpward);
    EXPECT_FALSE(find(layout, "across")->isUpward);
}

TEST(PlotLayout, PlacesLabelsAtTheirTicks) {
    const PtrRef<OverlayPlot> plot = makePlot("", "", "");
    plot->axisSettings()->setXAxisRange({100.0, 200.0});
    plot->axisSettings()->setYAxisRange({300.0, 400.0});
    const PlotLayout layout = layOut(plot, 800, 600);
    const Rect& frame = layout.frame;
    EXPECT_NEAR(find(layout, "150")->box.center().x, frame.center().x, 1e-9);
    EXPECT_NEAR(find(layout, "200")->box.center().x, frame.right, 1e-9);
    EXPECT_NEAR(find(layout, "300")->box.center().y, frame.bottom, 0.1);
    EXPECT_NEAR(find(layout, "360")->box.center().y, frame.bottom - 0.6 * frame.height(), 0.1);
    EXPECT_LT(find(layout, "360")->box.right, frame.left);
    EXPECT_GT(find(layout, "150")->box.top, frame.bottom);
    EXPECT_NEAR(layout.xTicks.front(), frame.left, 1e-9);
    EXPECT_NEAR(layout.yTicks.front(), frame.bottom, 1e-9);
    EXPECT_NEAR(layout.yTicks.back(), frame.top, 1e-9);
}

TEST(PlotLayout, PlacesFactorsAtTheEndsOfTheAxes) {
    const PtrRef<OverlayPlot> plot = makePlot("", "", "");
    plot->addCurve("", {0.0, 4e6}, {0.0, 4e9});
    const PlotLayout layout = layOut(plot, 800, 600);
    const PlacedText* x = find(layout, Str(L"\u00D710\u2076"));
    const PlacedText* y = find(layout, Str(L"\u00D710\u2079"));
    ASSERT_TRUE(x && y);
    EXPECT_NEAR(x->box.right, layout.frame.right, 1e-9);
    EXPECT_GT(x->box.top, layout.frame.bottom);
    EXPECT_NEAR(y->box.left, layout.frame.left, 1e-9);
    EXPECT_LT(y->box.bottom, layout.frame.top);
}

TEST(PlotLayout, LeavesRoomAboveAndBelowCurvesButNotAtZero) {
    const PtrRef<OverlayPlot> plot = makePlot("", "", "");
    plot->addCurve("", {0.0, 1.0}, {3.0, 11.0});
    PlotLayout layout = layOut(plot, 800, 600);
    // One hundredth of 8 on both sides, outward to the next fifth of a step of 1: from 2.8 to 11.2.
    EXPECT_NEAR(layout.curves[0].points[0].y, layout.frame.bottom - 0.2 / 8.4 * layout.frame.height(), 1e-6);
    EXPECT_NEAR(layout.curves[0].points[1].y, layout.frame.top + 0.2 / 8.4 * layout.frame.height(), 1e-6);
    EXPECT_NEAR(layout.curves[0].points[0].x, layout.frame.left, 1e-6);
    EXPECT_NEAR(layout.curves[0].points[1].x, layout.frame.right, 1e-6);

    const PtrRef<OverlayPlot> positive = makePlot("", "", "");
    positive->addCurve("", {0.0, 1.0}, {0.0, 1000.0});
    layout = layOut(positive, 800, 600);
    EXPECT_NEAR(layout.curves[0].points[0].y, layout.frame.bottom, 1e-6);
    EXPECT_GT(layout.curves[0].points[1].y, layout.frame.top + 1.0);

    const PtrRef<OverlayPlot> negative = makePlot("", "", "");
    negative->addCurve("", {0.0, 1.0}, {-1000.0, -1.0});
    layout = layOut(negative, 800, 600);
    EXPECT_NE(find(layout, "0"), nullptr);
    EXPECT_NEAR(layout.curves[0].points[1].y, layout.frame.top + 0.001 * layout.frame.height(), 0.1);
}

TEST(PlotLayout, OnlyPointsThatAreDrawnCountForTheAxes) {
    const PtrRef<OverlayPlot> plot = makePlot("", "", "");
    plot->addCurve("", {0.0, 1.0, 700.0, orv::UNDEFINED_DOUBLE}, {0.0, 1.0, std::nan(""), 900.0});
    const PlotLayout layout = layOut(plot, 800, 600);
    EXPECT_NEAR(layout.curves[0].points[1].x, layout.frame.right, 1e-6);
    EXPECT_LT(layout.curves[0].points[1].y, layout.frame.top + 0.1 * layout.frame.height());
}

TEST(PlotLayout, CrowdedSmallTicksAreLeftOut) {
    const PtrRef<OverlayPlot> plot = makePlot("", "", "");
    plot->axisSettings()->setYAxisLogarithmic(true);
    plot->addCurve("", {0.0, 1.0}, {1.0, 1e4});
    EXPECT_EQ(layOut(plot, 800, 600).yMinorTicks.size(), 32u);
    EXPECT_EQ(layOut(plot, 200, 150).yTicks.size(), 5u);
    EXPECT_TRUE(layOut(plot, 200, 150).yMinorTicks.empty());
}

TEST(PlotLayout, ASingleCurveHasALegendUnlessTheAxisTellsWhatItIs) {
    const PtrRef<OverlayPlot> plot = makePlot("Title", "x", "");
    plot->addCurve("Temperature", spaced(0, 1, 5), spaced(0, 1, 5));
    ASSERT_EQ(layOut(plot, 800, 600).legend.texts.size(), 1u);
    EXPECT_EQ(layOut(plot, 800, 600).legend.texts[0].text, "Temperature");
    plot->axisSettings()->setYAxisTitle("Temperature");
    EXPECT_TRUE(layOut(plot, 800, 600).legend.isEmpty());
    plot->addCurve("", spaced(0, 1, 5), spaced(0, 1, 5));
    ASSERT_EQ(layOut(plot, 800, 600).legend.texts.size(), 2u);
    EXPECT_EQ(layOut(plot, 800, 600).legend.texts[1].text, "Curve 2");
}

struct LegendCase {
    Numbers firstY, secondY; ///< Over 0, 1, 2, 3.
    bool isRight, isTop;     ///< Of the frame's middle.
};

TEST(PlotLayout, TheLegendIsInAFreeCornerOfTheFrame) {
    const LegendCase cases[] = {{{0, 0, 0, 0}, {1, 1, 1, 10}, false, true},     // only the top right is taken
                                {{0, 0, 0, 0}, {10, 1, 1, 1}, true, true},      // only the top left is taken
                                {{10, 10, 10, 10}, {9, 9, 9, 0}, false, false}, // free at the bottom left
                                {{10, 10, 10, 10}, {0, 9, 9, 9}, true, false}};
    for (const LegendCase& test : cases) {
        const PtrRef<OverlayPlot> plot = makePlot("", "", "");
        plot->addCurve("one", {0, 1, 2, 3}, test.firstY);
        plot->addCurve("two", {0, 1, 2, 3}, test.secondY);
        const PlotLayout layout = layOut(plot, 800, 600);
        ASSERT_TRUE(isWithin(layout.legend.box, layout.frame));
        EXPECT_EQ(layout.legend.box.left > layout.frame.center().x, test.isRight);
        EXPECT_EQ(layout.legend.box.bottom < layout.frame.center().y, test.isTop);
        expectLegendIsClear(layout);
    }
}

/// Curves that leave no room in the frame.
PtrRef<OverlayPlot> fullPlot(std::size_t count, const Str& name, double length = 10.0) {
    const PtrRef<OverlayPlot> plot = makePlot("Title", "x", "y");
    const Numbers x = spaced(0, length, 500);
    for (std::size_t i = 0; i < count; ++i) {
        plot->addCurve(name, x, mapped(x, [&](double t) { return std::sin(400.0 * t / length + double(i)); }));
    }
    return plot;
}

TEST(PlotLayout, TheLegendIsAtTheRightWhenTheFrameIsFull) {
    const PlotLayout layout = layOut(fullPlot(3, "Node 17"), 800, 600);
    EXPECT_GT(layout.legend.box.left, layout.frame.right);
    EXPECT_NEAR(layout.legend.box.top, layout.frame.top, 1e-9);
    EXPECT_TRUE(layout.legend.isComplete());
}

TEST(PlotLayout, TheLegendEndsWithTheFrameThoughTheAxisTitleNeedsAnotherLineBesideIt) {
    const Str xTitle(
        "The running length along the path in the units of the model, from the first node to the last one");
    std::size_t most = 0;
    for (std::size_t count = 1; count < 40; ++count) {
        const PtrRef<OverlayPlot> plot = fullPlot(count, "Node 17", 1e7); // with a factor beside the title
        plot->axisSettings()->setXAxisTitle(xTitle);
        const PlotLayout layout = layOut(plot, 800, 600);
        EXPECT_EQ(find(layout, xTitle) != nullptr, layout.legend.box.left < layout.frame.right) << count;
        if (layout.legend.box.left > layout.frame.right) {
            EXPECT_LE(layout.legend.box.bottom, layout.frame.bottom) << count;
            most = std::max(most, layout.legend.keys.size());
        }
    }
    EXPECT_GT(most, 20u);
}

TEST(PlotLayout, TheLegendIsBelowWhenItIsWide) {
    const PlotLayout layout = layOut(fullPlot(2, "Node 1234567 of part \"Bracket, upper flange\" in case 3"), 800, 600);
    EXPECT_GT(layout.legend.box.top, layout.frame.bottom);
    EXPECT_TRUE(layout.legend.isComplete());
    EXPECT_EQ(layout.legend.texts[0].box.left, layout.legend.texts[1].box.left);
}

TEST(PlotLayout, ALegendOfTooManyCurvesSaysHowManyAreLeftOut) {
    const PlotLayout layout = layOut(fullPlot(300, "Node 17"), 800, 600);
    const std::size_t shown = layout.legend.keys.size();
    EXPECT_GT(shown, 20u);
    EXPECT_EQ(layout.legend.texts.back().text, Str("+ %1 more").arg(int(300 - shown)));
    EXPECT_EQ(layout.curves.size(), 300u);
}

} // namespace
