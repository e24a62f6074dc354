#include "OrvPlot2d/PlotCsv_p.h"

#include "Tests/OrvPlot2d/PlotSamples.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace orv;
using namespace orv::plt;
using orvtest::makePlot;

namespace {

TEST(PlotCsv, CurvesOverTheSameXShareAColumn) {
    const PtrRef<OverlayPlot> plot = makePlot("Title", "Time", "Stress");
    plot->addCurve("Node 1", {0, 0.5, 1}, {1.5, 2, -3});
    plot->addCurve("Node 2", {0, 0.5, 1}, {4, 5, 6});
    EXPECT_EQ(csvOf(*plot), "Time,Node 1: Stress,Node 2: Stress\n"
                            "0,1.5,4\n"
                            "0.5,2,5\n"
                            "1,-3,6\n");
}

TEST(PlotCsv, OtherCurvesHaveTheirOwn) {
    const PtrRef<OverlayPlot> plot = makePlot("", "Length", "");
    plot->addCurve("a", {0, 1, 2}, {10, 11, 12});
    plot->addCurve("b", {0, 1}, {20, 21});
    plot->addCurve("c", {0, 1, 3}, {30, 31, 32});
    EXPECT_EQ(csvOf(*plot), "Length,a,Length,b,Length,c\n"
                            "0,10,0,20,0,30\n"
                            "1,11,1,21,1,31\n"
                            "2,12,,,3,32\n");
}

TEST(PlotCsv, NamesSayNothingTwice) {
    const PtrRef<OverlayPlot> plot = makePlot("", "Time", "Displacement");
    plot->addCurve("Displacement", {0}, {1});
    plot->addCurve("", {0}, {2});
    EXPECT_EQ(csvOf(*plot), "Time,Displacement,Displacement\n0,1,2\n");
    const PtrRef<OverlayPlot> nameless = makePlot("", "", "");
    nameless->addCurve("", {0}, {1});
    EXPECT_EQ(csvOf(*nameless), "x,y\n0,1\n");
}

TEST(PlotCsv, NamesAreQuotedWhereTheyNeedIt) {
    const PtrRef<OverlayPlot> plot = makePlot("", "Time, in s", Str(L"\u03c3"));
    plot->addCurve("\"best\"", {0}, {1});
    plot->addCurve("two\nlines", {0}, {2});
    plot->addCurve("a\rb", {0}, {2});
    plot->addCurve("a; b'c", {0}, {3});
    EXPECT_EQ(csvOf(*plot), "\"Time, in s\",\"\"\"best\"\": \xCF\x83\",\"two\nlines: \xCF\x83\",\"a\rb: \xCF\x83\","
                            "a; b'c: \xCF\x83\n0,1,2,2,3\n");
}

TEST(PlotCsv, UndefinedNumbersAreEmptyAndOthersReadBack) {
    const PtrRef<OverlayPlot> plot = makePlot("", "", "");
    plot->addCurve("", {0.1, 1.0 / 3.0, UNDEFINED_DOUBLE, 1e300, -0.0},
                   {UNDEFINED_DOUBLE, 5e-324, 1.0, std::nan(""), -INFINITY});
    EXPECT_EQ(csvOf(*plot), "x,y\n"
                            "0.1,\n"
                            "0.3333333333333333,5e-324\n"
                            ",1\n"
                            "1e+300,nan\n"
                            "-0,-inf\n");
}

TEST(PlotCsv, UndefinedXIsSharedToo) {
    const PtrRef<OverlayPlot> plot = makePlot("", "", "");
    plot->addCurve("a", {0, std::nan("")}, {1, 2});
    plot->addCurve("b", {0, std::nan("")}, {3, 4});
    EXPECT_EQ(csvOf(*plot), "x,a,b\n0,1,3\nnan,2,4\n");
}

TEST(PlotCsv, WithoutCurvesThereIsAnEmptyLineOfNames) {
    EXPECT_EQ(csvOf(*makePlot("Title", "x", "y")), "\n");
    const PtrRef<OverlayPlot> plot = makePlot("", "", "");
    plot->addCurve("a", {}, {});
    EXPECT_EQ(csvOf(*plot), "x,a\n");
}

} // namespace
