#include "OrvUnstructGrid/PathSamples_p.h"

#include "OrvUnstructGrid/DataStateSpec.h"
#include "Tests/OrvUnstructGrid/PathModels.h"

#include <gmock/gmock.h>

#include <cmath>
#include <limits>

using namespace orv::ug;
using orv::UNDEFINED_DOUBLE;
using orv::UNDEFINED_SIZE_T;
using orv::Vec3d;
using orvtest::PathModel;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

NodeMean at(std::uint32_t place) {
    NodeMean mean;
    mean.add(place, 1.0);
    return mean;
}

NodeMean between(std::uint32_t first, std::uint32_t second, double weightOfSecond) {
    NodeMean mean;
    mean.add(first, 1.0 - weightOfSecond);
    mean.add(second, weightOfSecond);
    return mean;
}

PathSegment segment(double begin, double end, std::uint32_t element, const NodeMean& atBegin, const NodeMean& atEnd) {
    PathSegment made;
    made.begin = {begin, 0, 0};
    made.end = {end, 0, 0};
    made.geometryIndex = 0;
    made.partIndex = 0;
    made.element = element;
    made.surface = 0;
    made.atBegin = atBegin;
    made.atEnd = atEnd;
    return made;
}

TEST(NodeMeanTest, WhatDoesNotCountIsLeftOut) {
    NodeMean mean;
    mean.add(7, 0.0);
    mean.add(3, 0.25);
    mean.add(8, 0.0);
    mean.add(9, 0.75);
    EXPECT_THAT(mean.places, ElementsAre(3, 9, 0, 0, 0, 0));
    EXPECT_THAT(mean.weights, ElementsAre(0.25, 0.75, 0, 0, 0, 0));
}

TEST(PathPointsTest, EachSegmentGoesOn) {
    const std::vector<PathSegment> path = {segment(0, 1, 0, at(0), at(1)), segment(1, 3, 1, at(4), at(5))};
    EXPECT_THAT(pathPoints(path), ElementsAre(Vec3d(0, 0, 0), Vec3d(1, 0, 0), Vec3d(3, 0, 0)));
    EXPECT_THAT(pathPoints({}), IsEmpty());
}

TEST(ReversePathTest, EndsAndOrderChange) {
    std::vector<PathSegment> path = {segment(0, 1, 0, at(0), at(1)), segment(1, 3, 1, at(4), at(5))};
    reversePath(&path);
    EXPECT_THAT(pathPoints(path), ElementsAre(Vec3d(3, 0, 0), Vec3d(1, 0, 0), Vec3d(0, 0, 0)));
    EXPECT_EQ(path[0].element, 1u);
    EXPECT_EQ(path[0].atBegin.places[0], 5u);
    EXPECT_EQ(path[0].atEnd.places[0], 4u);
}

/// Two squares in a row, elements 0 and 1, with the places 0 to 3 and 4 to 7.
class SamplePathTest : public testing::Test {
protected:
    void sample(const std::vector<double>& values, ResultMapping mapping) {
        const ResultInfo info = plate.source->addResult(SCALAR, "values", mapping);
        ASSERT_TRUE(plate.source->setValues(1, info, 0, 0, values, nullptr));
        DataStateSpec spec;
        spec.setResultIds({info});
        ASSERT_TRUE(plate.source->loadDataState(1, spec, nullptr));
        isDone = samplePath(path, *plate.source->state(0), info, &x, &y);
    }

    PathModel plate{{orvtest::plate(2, 1)}};
    std::vector<PathSegment> path = {segment(0, 1, 0, between(0, 3, 0.25), between(1, 2, 0.25)),
                                     segment(1, 2, 1, between(4, 7, 0.25), between(5, 6, 0.25))};
    bool isDone = false;
    std::vector<double> x = {9};
    std::vector<double> y = {9};
};

TEST_F(SamplePathTest, ValuesPerNodeGoOnInTheNextElement) {
    // Nodes 0 to 2 are below, 3 to 5 above.
    sample({1, 2, 3, 5, 6, 7}, PER_NODE);
    EXPECT_TRUE(isDone);
    EXPECT_THAT(x, ElementsAre(0, 1, 2));
    EXPECT_THAT(y, ElementsAre(2, 3, 4));
}

TEST_F(SamplePathTest, OfEqualValuesNothingIsLeftToRoundings) {
    for (int i = 1; i < 20; ++i) {
        path[0].atBegin = between(0, 3, i / 20.0);
        sample(std::vector<double>(6, 0.1 * i), PER_NODE);
        EXPECT_THAT(y, ElementsAre(0.1 * i, 0.1 * i, 0.1 * i));
    }
}

TEST_F(SamplePathTest, StepsThatAreRoundingsAreNone) {
    // Elements 0 and 1 differ at the line between them by less than 1e-13 of the largest value.
    sample({1e3, 1, 1, 1e3, 1 + 9e-11, 1, 1, 1 + 9e-11}, PER_ELEMENT_NODE);
    EXPECT_THAT(x, ElementsAre(0, 1, 2));
    sample({1e3, 1, 1, 1e3, 1 + 2e-10, 1, 1, 1 + 2e-10}, PER_ELEMENT_NODE);
    EXPECT_THAT(x, ElementsAre(0, 1, 1, 2));
    // What is infinite is no scale for others.
    const double infinity = std::numeric_limits<double>::infinity();
    sample({infinity, 1, 1, infinity, 3, 1, 1, 3}, PER_ELEMENT_NODE);
    EXPECT_THAT(x, ElementsAre(0, 1, 1, 2));
    // Nor is what is undefined.
    sample({UNDEFINED_DOUBLE, 1, 1, 1, 3, 1, 1, 3}, PER_ELEMENT_NODE);
    EXPECT_THAT(y, ElementsAre(UNDEFINED_DOUBLE, 1, 3, 1));
}

TEST_F(SamplePathTest, WithoutADefinedValueThereIsNothing) {
    sample({UNDEFINED_DOUBLE, UNDEFINED_DOUBLE}, PER_ELEMENT);
    EXPECT_FALSE(isDone);
    EXPECT_THAT(x, IsEmpty());
    EXPECT_THAT(y, IsEmpty());
    sample({UNDEFINED_DOUBLE, 2}, PER_ELEMENT);
    EXPECT_TRUE(isDone);
    EXPECT_THAT(y, ElementsAre(UNDEFINED_DOUBLE, UNDEFINED_DOUBLE, 2, 2));
}

TEST_F(SamplePathTest, AGapIsUndefinedAtBothEnds) {
    PathSegment gap;
    gap.begin = {1, 0, 0};
    gap.end = {4, 0, 0};
    path.insert(path.begin() + 1, gap);
    path[2].begin = {4, 0, 0};
    path[2].end = {5, 0, 0};
    sample({1, 2, 3, 5, 6, 7}, PER_NODE);
    EXPECT_THAT(x, ElementsAre(0, 1, 1, 4, 4, 5));
    EXPECT_THAT(y, ElementsAre(2, 3, UNDEFINED_DOUBLE, UNDEFINED_DOUBLE, 3, 4));
}

TEST_F(SamplePathTest, SurfacesAreFoundWhereverTheElementsAre) {
    // The same element twice, and not in order.
    path.push_back(segment(2, 3, 0, at(0), at(1)));
    sample({4, 6}, PER_ELEMENT_SURFACE);
    EXPECT_THAT(y, ElementsAre(4, 4, 6, 6, 4, 4));
    for (PathSegment& each : path) {
        each.surface = PathSegment::ALL_SURFACES;
    }
    sample({4, 6}, PER_ELEMENT_SURFACE);
    EXPECT_THAT(y, ElementsAre(4, 4, 6, 6, 4, 4));
}

} // namespace
