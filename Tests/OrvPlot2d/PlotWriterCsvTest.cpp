#include "OrvPlot2d/PlotWriter.h"

#include "OrvCore/PtrRef.h"
#include "OrvPlot2d/OverlayPlot.h"
#include "Tests/Support/AssertRecorder.h"
#include "Tests/Support/ScratchFolder.h"

#include <gtest/gtest.h>

using orv::PtrRef;
using orv::plt::OverlayPlot;
using orv::plt::PlotWriter;
using orvtest::FailedAssert;

namespace {

TEST(PlotWriterCsv, IsWhatAFileWouldHold) {
    const PtrRef<OverlayPlot> plot = new OverlayPlot(nullptr);
    plot->axisSettings()->setXAxisTitle("Time");
    plot->addCurve("node 7", {0.25, 0.5}, {1, -2});
    EXPECT_EQ(PlotWriter::csv(plot.get()), "Time,node 7\n0.25,1\n0.5,-2\n");

    const orvtest::ScratchFolder folder;
    ASSERT_TRUE(PlotWriter::write(plot.get(), folder / "plot.csv", 0, 0, nullptr));
    EXPECT_EQ(orvtest::readWholeFile(folder / "plot.csv"), PlotWriter::csv(plot.get()));
}

TEST(PlotWriterCsv, NeedsAPlot) {
    orvtest::AssertRecorder asserts;
    EXPECT_EQ(PlotWriter::csv(nullptr), "");
    EXPECT_EQ(asserts.take(), (std::vector<FailedAssert>{{"OrvPlot2d/PlotWriter", "plot", std::nullopt}}));
}

} // namespace
