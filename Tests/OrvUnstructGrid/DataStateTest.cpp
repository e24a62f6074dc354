#include "OrvUnstructGrid/DataState.h"

#include "OrvUnstructGrid/Error.h"
#include "Tests/Support/AssertRecorder.h"

#include <gtest/gtest.h>

using namespace orv::ug;
using orvtest::AssertRecorder;
using orvtest::FailedAssert;

namespace {

class DataStateTest : public testing::Test {
protected:
    DataStateTest() : first(new DataGeometry), second(new DataGeometry), state(5, {first, second}) {
        first->addPart(1);
        second->addPart(1);
    }

    orv::PtrRef<DataGeometry> first;
    orv::PtrRef<DataGeometry> second;
    DataState state;
    const DataState& unchanging = state;
    const ResultInfo info = ResultInfo(SCALAR, 1, "s", PER_NODE);
};

TEST_F(DataStateTest, GivesItsGeometries) {
    EXPECT_EQ(state.id(), 5);
    EXPECT_EQ(state.geometryCount(), 2u);
    EXPECT_EQ(state.geometry(0), first.get());
    EXPECT_EQ(unchanging.geometry(1), second.get());
}

TEST_F(DataStateTest, ReadsItsGeometries) {
    Error error;
    EXPECT_TRUE(unchanging.readGeometries(&error));
    first->addPart(2)->readLater({}, [](DataNodes*, DataElements*, Error*) { return true; });
    EXPECT_TRUE(unchanging.readGeometries(&error));
    second->addPart(2)->readLater({}, [](DataNodes*, DataElements*, Error* problem) { return fail(problem, "why"); });
    EXPECT_FALSE(unchanging.readGeometries(&error));
    EXPECT_EQ(error.message(), "why");
}

TEST_F(DataStateTest, GeometryBeyondTheEndIsNull) {
    AssertRecorder recorder;
    const std::vector<FailedAssert> failed = {{"OrvUnstructGrid/DataState", "index < geometryCount()", {}}};
    EXPECT_EQ(state.geometry(2), nullptr);
    EXPECT_EQ(recorder.take(), failed);
    EXPECT_EQ(unchanging.geometry(2), nullptr);
    EXPECT_EQ(recorder.take(), failed);
}

TEST_F(DataStateTest, HasAGroupForEachGeometry) {
    ASSERT_NE(state.results(first.get()), nullptr);
    EXPECT_EQ(state.results(first.get())->geometry(), first.get());
    EXPECT_EQ(state.results(second.get())->geometry(), second.get());
    EXPECT_EQ(unchanging.results(second.get()), state.results(second.get()));
}

TEST_F(DataStateTest, HasNoGroupForNullNorForAStranger) {
    orv::PtrRef<DataGeometry> stranger(new DataGeometry);
    EXPECT_EQ(state.results(nullptr), nullptr);
    EXPECT_EQ(unchanging.results(nullptr), nullptr);
    EXPECT_EQ(state.results(stranger.get()), nullptr);
}

TEST_F(DataStateTest, AResultIsLoadedWhenAllGeometriesHaveIt) {
    EXPECT_FALSE(state.hasLoaded(info));
    state.results(first.get())->findOrAdd(info);
    EXPECT_FALSE(state.hasLoaded(info));
    state.results(second.get())->findOrAdd(info);
    EXPECT_TRUE(state.hasLoaded(info));
}

TEST_F(DataStateTest, RemovesAResultFromAllGeometries) {
    const ResultInfo other(SCALAR, 2, "o", PER_NODE);
    for (const orv::PtrRef<DataGeometry>& geometry : {first, second}) {
        state.results(geometry.get())->findOrAdd(info);
        state.results(geometry.get())->findOrAdd(other);
    }
    state.removeResult(info);
    EXPECT_EQ(state.results(first.get())->find(info), nullptr);
    EXPECT_EQ(state.results(second.get())->find(info), nullptr);
    EXPECT_TRUE(state.hasLoaded(other));
}

TEST_F(DataStateTest, CountsTheBytesOfResultsOnly) {
    first->part(0)->nodes()->set(std::vector<double>(300), {});
    state.results(first.get())->findOrAdd(info)->values(0)->allocate(100);
    state.results(second.get())->findOrAdd(info)->values(0)->allocate(1);
    EXPECT_EQ(state.resultByteCount(), 101 * sizeof(double));
}

TEST_F(DataStateTest, SharesItsGeometries) {
    EXPECT_EQ(first->refCount(), 2);
    {
        DataState other(6, {first});
        EXPECT_EQ(first->refCount(), 3);
    }
    EXPECT_EQ(first->refCount(), 2);
}

} // namespace
