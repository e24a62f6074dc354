#include "OrvPlot2d/PlotWriter.h"
#include "Tests/OrvPlot2d/PlotSamples.h"
#include "Tests/Support/ReferencePicture.h"
#include "Tests/Support/ScratchFolder.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace orv;
using namespace orv::plt;
using orvtest::makePlot;
using orvtest::mapped;
using orvtest::Numbers;
using orvtest::ScratchFolder;
using orvtest::showsReference;
using orvtest::spaced;

namespace {

/// Other releases of the drawing library smooth edges a little differently; 20 pixels are less than a letter.
constexpr orvtest::PictureTolerance TOLERANCE = {48, 20};

/// All pictures here have been looked at; when one is changed on purpose, look at the candidate again.
testing::AssertionResult shows(const PtrRef<OverlayPlot>& plot, const std::string& name, int width = 400,
                               int height = 300) {
    const ScratchFolder folder;
    Str reason;
    if (!PlotWriter::write(plot.get(), folder / "plot.png", width, height, &reason)) {
        return testing::AssertionFailure() << reason;
    }
    return showsReference(folder / "plot.png", "plots/" + name, TOLERANCE);
}

TEST(PlotPicture, OneCurve) {
    const PtrRef<OverlayPlot> plot = makePlot("", "Time", "Displacement");
    const Numbers x = spaced(0, 10.3, 200);
    plot->addCurve("Displacement", x, mapped(x, [](double t) { return 3.2 * std::exp(-t / 5) * std::sin(3 * t); }));
    EXPECT_TRUE(shows(plot, "one_curve"));
}

PtrRef<OverlayPlot> sixCurves() {
    const PtrRef<OverlayPlot> plot = makePlot("Stress at six nodes", "Time [s]", "von Mises stress [Pa]");
    const Numbers x = spaced(0, 1, 100);
    for (int i = 0; i < 6; ++i) {
        plot->addCurve(Str("Node %1").arg(1001 + i * 17), x,
                       mapped(x, [&](double t) { return 3.5e7 * (i + 1) * std::pow(t, 1 + 0.3 * i); }));
    }
    return plot;
}

TEST(PlotPicture, SixCurves) {
    EXPECT_TRUE(shows(sixCurves(), "six_curves"));
}

TEST(PlotPicture, SmallestSize) {
    EXPECT_TRUE(shows(sixCurves(), "smallest_size", 200, 150));
}

TEST(PlotPicture, LogarithmicAxes) {
    const PtrRef<OverlayPlot> plot = makePlot("Frequency response", "Frequency", "Amplitude");
    plot->axisSettings()->setXAxisLogarithmic(true);
    plot->axisSettings()->setYAxisLogarithmic(true);
    const Numbers x = mapped(spaced(0, 5, 300), [](double exponent) { return std::pow(10.0, exponent); });
    for (const double resonance : {100.0, 1500.0}) {
        plot->addCurve(Str("Support at %1 Hz").arg(resonance), x, mapped(x, [&](double f) {
                           const double r = f / resonance;
                           return 1e-4 / std::hypot(1 - r * r, 0.04 * r);
                       }));
    }
    EXPECT_TRUE(shows(plot, "logarithmic_axes"));
}

TEST(PlotPicture, GapsAndLonePoints) {
    const PtrRef<OverlayPlot> plot = makePlot("Gaps", "Length", "Scalar");
    const Numbers x = spaced(0, 20, 41);
    Numbers line = mapped(x, [](double t) { return std::sin(t / 2); });
    line[5] = line[6] = UNDEFINED_DOUBLE;
    line[13] = line[20] = std::nan("");
    line[15] = INFINITY;
    plot->addCurve("line", x, line);
    for (std::size_t curve = 1; curve < 4; ++curve) {
        Numbers points(41, UNDEFINED_DOUBLE);
        for (std::size_t i = curve; i < 41; i += 4) {
            points[i] = 0.2 * double(curve) * std::cos(double(i) / 6);
        }
        plot->addCurve(Str("points %1").arg(int(curve)), x, points);
    }
    EXPECT_TRUE(shows(plot, "gaps_and_lone_points"));
}

TEST(PlotPicture, StepsOfElements) {
    const PtrRef<OverlayPlot> plot = makePlot("Plot 1", "Length", "Plate thickness");
    plot->addCurve("Scalar vs. Length", {0, 0.7, 0.7, 2, 2, 2.9, 2.9, 4}, {3, 3, 7, 7, 5, 5, 11, 11});
    EXPECT_TRUE(shows(plot, "steps_of_elements"));
}

TEST(PlotPicture, LongTexts) {
    const Str text(
        "The running length along the path across the surface of the model from the first picked node to the "
        "last, in the units of the model, with everything else that can be said about it");
    const PtrRef<OverlayPlot> plot = makePlot(text, text, text);
    plot->addCurve("Node 1234567 of part \"Bracket, upper flange\" in load case 3", {0, 100}, {0, 2e5});
    plot->addCurve("Node 1234568 of part \"Bracket, upper flange\" in load case 3", {0, 100}, {2e5, 0});
    EXPECT_TRUE(shows(plot, "long_texts"));
}

TEST(PlotPicture, AnyScript) {
    const PtrRef<OverlayPlot> plot = makePlot(
        Str(L"\u03c3\u2081\u2082 \u2013 \u041d\u0430\u043f\u0440\u044f\u0436\u0435\u043d\u0438\u0435 \u5fdc\u529b"),
        Str(L"Zeit [\u00b5s]"), Str(L"\u03c3 [N/mm\u00b2]"));
    const Numbers x = spaced(-5, 5, 80);
    plot->addCurve(Str(L"\u041f\u043b\u0430\u0441\u0442\u0438\u043d\u0430 \u2116 5"), x,
                   mapped(x, [](double t) { return t * t; }));
    plot->addCurve(Str(L"\u5fdc\u529b"), x, mapped(x, [](double t) { return 25 - t * t; }));
    EXPECT_TRUE(shows(plot, "any_script"));
}

TEST(PlotPicture, ConstantNumbers) {
    const PtrRef<OverlayPlot> plot = makePlot("Constant", "Time", "Temperature");
    plot->addCurve("T", spaced(0, 5, 6), Numbers(6, 293.15));
    EXPECT_TRUE(shows(plot, "constant_numbers"));
}

} // namespace
