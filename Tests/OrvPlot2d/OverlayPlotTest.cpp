#include "OrvPlot2d/OverlayPlot.h"

#include "OrvVisualization/Font.h"
#include "Tests/Support/AssertRecorder.h"

#include <gtest/gtest.h>

using orv::PtrRef;
using orv::Str;
using orv::plt::AxisSettings;
using orv::plt::Curve;
using orv::plt::OverlayPlot;
using orvtest::AssertRecorder;
using orvtest::FailedAssert;

namespace {

class OverlayPlotTest : public testing::Test {
protected:
    PtrRef<OverlayPlot> plot = new OverlayPlot(nullptr);
    AssertRecorder asserts;
};

TEST_F(OverlayPlotTest, StartsEmpty) {
    EXPECT_EQ(plot->title(), Str());
    EXPECT_EQ(plot->curveCount(), 0u);
    EXPECT_EQ(plot->axisSettings()->xAxis().title, Str());
    EXPECT_EQ(plot->axisSettings()->yAxis().title, Str());
}

TEST_F(OverlayPlotTest, HoldsItsFont) {
    EXPECT_EQ(plot->font(), nullptr);
    const PtrRef<orv::vis::Font> font = orv::vis::Font::createNormalFont();
    const int holders = font->refCount();
    plot = new OverlayPlot(font.get());
    EXPECT_EQ(plot->font(), font.get());
    EXPECT_EQ(font->refCount(), holders + 1);
    plot = nullptr;
    EXPECT_EQ(font->refCount(), holders);
}

TEST_F(OverlayPlotTest, HasATitle) {
    plot->setTitle("Plot 1");
    EXPECT_EQ(plot->title(), "Plot 1");
}

TEST_F(OverlayPlotTest, HasOnePairOfAxes) {
    const OverlayPlot* unchanging = plot.get();
    AxisSettings* settings = plot->axisSettings();
    EXPECT_EQ(plot->axisSettings(), settings);
    EXPECT_EQ(unchanging->axisSettings(), settings);
    EXPECT_NE(PtrRef<OverlayPlot>(new OverlayPlot(nullptr))->axisSettings(), settings);
}

TEST_F(OverlayPlotTest, CurvesStandInTheOrderOfAdding) {
    Curve* first = plot->addCurve("A", {0, 1}, {2, 3});
    Curve* second = plot->addCurve("A", {4}, {5});
    EXPECT_EQ(plot->curveCount(), 2u);
    EXPECT_EQ(plot->curve(0), first);
    EXPECT_EQ(plot->curve(1), second);
    EXPECT_EQ(first->name(), "A");
    EXPECT_EQ(first->x(), (std::vector<double>{0, 1}));
    EXPECT_EQ(second->y(), (std::vector<double>{5}));
}

TEST_F(OverlayPlotTest, CurvesStayWhereTheyAreWhenMoreAreAdded) {
    const Curve* first = plot->addCurve("first", {0}, {1});
    for (int i = 0; i < 100; ++i) {
        plot->addCurve("more", {0}, {1});
    }
    EXPECT_EQ(plot->curve(0), first);
    EXPECT_EQ(first->name(), "first");
}

TEST_F(OverlayPlotTest, UnequalListsGiveTheShorterCurve) {
    const Curve* curve = plot->addCurve("A", {0, 1}, {2});
    EXPECT_EQ(asserts.take(), (std::vector<FailedAssert>{{"OrvPlot2d/Curve", "x.size() == y.size()", std::nullopt}}));
    EXPECT_EQ(curve->pointCount(), 1u);
}

TEST_F(OverlayPlotTest, ThereIsNoCurveBehindTheLast) {
    plot->addCurve("A", {0}, {2});
    EXPECT_EQ(plot->curve(1), nullptr);
    EXPECT_EQ(asserts.take(),
              (std::vector<FailedAssert>{{"OrvPlot2d/OverlayPlot", "index < curveCount()", std::nullopt}}));
}

} // namespace
