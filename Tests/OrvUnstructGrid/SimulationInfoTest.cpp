#include "OrvUnstructGrid/SimulationInfo.h"

#include <gtest/gtest.h>

using namespace orv::ug;

namespace {

TEST(SimulationInfo, IsUndefinedByDefault) {
    EXPECT_EQ(SimulationInfo().filename(), "");
    EXPECT_EQ(SimulationInfo().title(), "");
}

TEST(SimulationInfo, KeepsWhatItIsGiven) {
    const SimulationInfo info("beam.frd", "Cantilever");
    EXPECT_EQ(info.filename(), "beam.frd");
    EXPECT_EQ(info.title(), "Cantilever");
    EXPECT_EQ(SimulationInfo("beam.frd").title(), "");
}

} // namespace
