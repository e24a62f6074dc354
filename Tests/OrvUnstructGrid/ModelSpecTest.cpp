#include "OrvUnstructGrid/ModelSpec.h"

#include "OrvUnstructGrid/UnstructGridModel.h"
#include "Tests/Support/AssertRecorder.h"
#include "Tests/Support/MemoryModels.h"

#include <gtest/gtest.h>

#include <limits>

using namespace orv::ug;
using orvtest::MemoryModel;

namespace {

class ModelSpecTest : public testing::Test {
protected:
    ModelSpecTest() : shown(new UnstructGridModel) {}

    MemoryModel memory;
    orv::PtrRef<UnstructGridModel> shown;
    ModelSpec& spec = shown->modelSpec();
};

TEST_F(ModelSpecTest, ChoosesNothingAtFirst) {
    EXPECT_EQ(spec.stateId(), -1);
    EXPECT_EQ(spec.fringesResultId(), -1);
    EXPECT_EQ(spec.vectorResultId(), -1);
    EXPECT_EQ(spec.displacementResultId(), -1);
    EXPECT_EQ(spec.effectiveFringesResultId(0, 1), -1);
}

TEST_F(ModelSpecTest, KeepsWhatIsChosen) {
    spec.setStateId(3);
    spec.setFringesResultId(4);
    spec.setVectorResultId(5);
    spec.setDisplacementResultId(6);
    EXPECT_EQ(spec.stateId(), 3);
    EXPECT_EQ(spec.fringesResultId(), 4);
    EXPECT_EQ(spec.vectorResultId(), 5);
    EXPECT_EQ(spec.displacementResultId(), 6);
}

TEST_F(ModelSpecTest, IsNotDisplacedAtFirst) {
    EXPECT_FALSE(spec.isDisplaced());
    EXPECT_EQ(spec.displacementScale(), 1.0);
    spec.setDisplaced(true);
    spec.setDisplacementScale(-20.5);
    EXPECT_TRUE(spec.isDisplaced());
    EXPECT_EQ(spec.displacementScale(), -20.5);
}

TEST_F(ModelSpecTest, AScaleIsANumber) {
    orvtest::AssertRecorder recorder;
    spec.setDisplacementScale(3);
    for (double scale : {std::numeric_limits<double>::infinity(), std::numeric_limits<double>::quiet_NaN()}) {
        spec.setDisplacementScale(scale);
        EXPECT_EQ(recorder.take(), (std::vector<orvtest::FailedAssert>{
                                       {"OrvUnstructGrid/ModelSpec", "std::isfinite(scale)", std::nullopt}}));
        EXPECT_EQ(spec.displacementScale(), 3.0);
    }
}

TEST_F(ModelSpecTest, PartsAreVisibleUntilTheyAreHidden) {
    EXPECT_TRUE(spec.isPartVisible(0, 2));
    spec.setPartVisible(0, 2, false);
    spec.setPartVisible(0, 2, false);
    EXPECT_FALSE(spec.isPartVisible(0, 2));
    EXPECT_TRUE(spec.isPartVisible(1, 2));
    EXPECT_TRUE(spec.isPartVisible(0, 1));
    EXPECT_EQ(spec.hiddenParts(), (std::set<std::pair<std::size_t, int>>{{0, 2}}));
    spec.setPartVisible(0, 2, true);
    EXPECT_TRUE(spec.isPartVisible(0, 2));
    EXPECT_TRUE(spec.hiddenParts().empty());
}

TEST_F(ModelSpecTest, APartsOwnFringesGoFirst) {
    spec.setFringesResultId(4);
    spec.setPartFringesResultId(1, 2, 7);
    spec.setPartFringesResultId(0, 2, -1);
    EXPECT_EQ(spec.effectiveFringesResultId(1, 2), 7);
    EXPECT_EQ(spec.effectiveFringesResultId(0, 2), -1);
    EXPECT_EQ(spec.effectiveFringesResultId(1, 1), 4);
}

TEST_F(ModelSpecTest, ClearForgetsEverything) {
    spec.setStateId(3);
    spec.setFringesResultId(4);
    spec.setVectorResultId(5);
    spec.setDisplacementResultId(6);
    spec.setPartFringesResultId(1, 2, 7);
    spec.setDisplaced(true);
    spec.setDisplacementScale(8);
    spec.setPartVisible(0, 1, false);
    spec.clear();
    EXPECT_FALSE(spec.isDisplaced());
    EXPECT_EQ(spec.displacementScale(), 1.0);
    EXPECT_TRUE(spec.hiddenParts().empty());
    EXPECT_EQ(spec.stateId(), -1);
    EXPECT_EQ(spec.fringesResultId(), -1);
    EXPECT_EQ(spec.vectorResultId(), -1);
    EXPECT_EQ(spec.displacementResultId(), -1);
    EXPECT_EQ(spec.effectiveFringesResultId(1, 2), -1);
}

TEST_F(ModelSpecTest, DefaultsAreTheFirstResultsThatTheStateHas) {
    shown->setDataSource(memory.source.get());
    const ResultInfo late = memory.source->addResult(VECTOR, "Late", PER_ELEMENT);
    memory.setAllValues(1, late);
    spec.setStateId(1); // Which has no velocity, the first vector.
    spec.setDefaultResults();
    EXPECT_EQ(spec.fringesResultId(), memory.temperature.id());
    EXPECT_EQ(spec.vectorResultId(), late.id());
    EXPECT_EQ(spec.displacementResultId(), memory.displacement.id());
    spec.setStateId(3);
    spec.setDefaultResults();
    EXPECT_EQ(spec.vectorResultId(), memory.velocity.id());
}

TEST_F(ModelSpecTest, DefaultsAreNoneWithoutASourceAStateOrAResult) {
    for (bool hasSource : {false, true}) {
        shown->setDataSource(hasSource ? memory.source.get() : nullptr);
        spec.setFringesResultId(4);
        spec.setVectorResultId(5);
        spec.setDisplacementResultId(6);
        spec.setDefaultResults();
        EXPECT_EQ(spec.fringesResultId(), -1);
        EXPECT_EQ(spec.vectorResultId(), -1);
        EXPECT_EQ(spec.displacementResultId(), -1);
    }
    spec.setStateId(1);
    spec.setDefaultResults();
    EXPECT_EQ(spec.vectorResultId(), -1);
}

} // namespace
