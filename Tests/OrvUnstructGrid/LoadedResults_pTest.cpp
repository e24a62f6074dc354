#include "OrvUnstructGrid/LoadedResults_p.h"

#include "OrvUnstructGrid/Error.h"
#include "Tests/OrvUnstructGrid/CustomResults.h"
#include "Tests/Support/MemoryModels.h"

#include <gmock/gmock.h>

using namespace orv::ug;
using testing::IsEmpty;
using testing::SizeIs;

namespace {

TEST(LoadedResultsTest, WhatTheStateCanHaveIsLoaded) {
    orvtest::MemoryModel memory;
    DataState* state = memory.state(1);
    const ResultInfo twice = orvtest::doubled(memory.temperature, 1);
    memory.source->directory()->setCustomResultInfo(twice);
    ASSERT_FALSE(state->hasLoaded(twice));
    EXPECT_THAT(loadedValues(*state, twice, 0, 1), IsEmpty());
    // Velocity is not in state 1, and an invalid record is nothing.
    EXPECT_TRUE(loadResults(memory.source.get(), state, {memory.velocity, twice, ResultInfo()}, nullptr));
    EXPECT_TRUE(state->hasLoaded(twice));
    EXPECT_FALSE(state->hasLoaded(memory.velocity));
    // Two cubes in a row have 12 nodes.
    EXPECT_THAT(loadedValues(*state, twice, 0, 1), SizeIs(12));
    EXPECT_THAT(loadedValues(*state, memory.velocity, 0, 1), IsEmpty());
    EXPECT_TRUE(loadResults(memory.source.get(), state, {twice}, nullptr));
}

TEST(LoadedResultsTest, WhatCannotBeComputedFailsWithAText) {
    orvtest::MemoryModel memory;
    std::vector<ResultInfo> arguments = {memory.temperature};
    const ResultInfo broken(SCALAR, "Broken", PER_NODE, arguments, nullptr);
    memory.source->directory()->setCustomResultInfo(broken);
    Error error;
    EXPECT_FALSE(loadResults(memory.source.get(), memory.state(1), {broken}, &error));
    EXPECT_THAT(error.message().toStdString(), testing::HasSubstr("'Broken'"));
}

TEST(LoadedResultsTest, ValuesThatAreNotOneForEachItemDoNotCount) {
    orvtest::MemoryModel memory;
    DataState* state = memory.state(1);
    ASSERT_TRUE(loadResults(memory.source.get(), state, {memory.temperature}, nullptr));
    state->results(state->geometry(0))->find(memory.temperature)->values(1)->allocate(11);
    EXPECT_THAT(loadedValues(*state, memory.temperature, 0, 1), IsEmpty());
}

} // namespace
