#include "Tests/OrvImportVtk/VtkSamples.h"
#include "Tests/Support/RecordingProgress.h"

#include <gtest/gtest.h>

using namespace orv;
using Percents = std::vector<int>;

namespace {

/// What is told of one load of the first scalar, at the file's first state.
Percents toldOfALoad(const std::string& name) {
    const auto source = orvtest::openVtk(orvtest::vtkFile(name));
    orvtest::RecordingProgress progress;
    source->setProgress(&progress);
    ug::Error error;
    EXPECT_TRUE(orvtest::load(source.get(), 1, {source->directory()->scalarResultInfos()[0]}, &error))
        << error.message();
    return progress.take();
}

// The mesh and the result are halves of the load, and VTK reads both in the first one.
TEST(VtkReadProgress, VtkTellsHowFarItIs) {
    for (const char* name : {"zoo_ascii.vtu", "surface.vtp", "series.pvd", "zoo_binary.vtk"}) {
        const Percents percents = toldOfALoad(name);
        EXPECT_TRUE(orvtest::isRising(percents)) << name << testing::PrintToString(percents);
        EXPECT_EQ(percents.front(), 0) << name;
        EXPECT_EQ(percents.back(), 100) << name;
        EXPECT_TRUE(std::ranges::any_of(percents, [](int p) { return p > 0 && p < 50; }))
            << name << testing::PrintToString(percents);
    }
}

TEST(VtkReadProgress, OtherFormatsTellTheirResults) {
    for (const char* name : {"bar.ex2", "frame.case"}) {
        EXPECT_EQ(toldOfALoad(name), (Percents{0, 50, 100})) << name;
    }
}

TEST(VtkReadProgress, OpensAreTold) {
    for (const char* name : {"zoo_raw.vtu", "zoo_binary.vtk", "bar.ex2"}) {
        const PtrRef<imp::cae::DataSourceCae> source(new imp::cae::DataSourceCae(1));
        orvtest::RecordingProgress progress;
        source->setProgress(&progress);
        ASSERT_TRUE(source->openFiles({orvtest::vtkFile(name)}, nullptr));
        EXPECT_TRUE(orvtest::isRising(progress.percents)) << name;
        EXPECT_EQ(progress.percents.back(), 100) << name;
    }
}

} // namespace
