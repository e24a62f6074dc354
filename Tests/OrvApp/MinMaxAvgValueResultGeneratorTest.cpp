#include "OrvApp/MinMaxAvgValueResultGenerator.h"

#include "OrvCore/Defines.h"
#include "Tests/OrvApp/GeneratorModel.h"
#include "Tests/OrvApp/RandomMesh.h"
#include "Tests/Support/AssertRecorder.h"

#include <gtest/gtest.h>

#include <limits>

using namespace orv::ug;
using orv::UNDEFINED_DOUBLE;
using orv::app::MinMaxAvgValueResultGenerator;
using orvtest::exact;
using orvtest::FailedAssert;
using orvtest::GeneratorModel;

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

// What the figures begin with, and stay without a number.
constexpr double largest = 1.7976931348623157e308;
constexpr double tiny = 2.2250738585072014e-308;

enum Operation { MINIMUM, MAXIMUM, AVERAGE };

const std::string ownFile = "OrvApp/MinMaxAvgValueResultGenerator";
const FailedAssert notOneArgument = {ownFile, "argCount == 1",
                                     "Computation of min, max or average value only accepts one argument."};
const FailedAssert otherType = {
    ownFile, "result.type() == argInfo.type()",
    "Computation of min, max or average value  is only valid if input and output have the same result type (scalar, "
    "vector, displacement or symmetric tensor)"};
const FailedAssert otherMapping = {
    ownFile, "result.resultMapping() == argInfo.resultMapping()",
    "Computation of min, max or average value is only valid if input and output have the same mapping"};

/// Parts of single points: as many nodes as elements.
void addPoints(GeneratorModel* model, std::uint32_t count) {
    orvtest::ElementList points;
    for (std::uint32_t i = 0; i < count; ++i) {
        points.types.push_back(POINT);
        points.nodes.push_back(i);
    }
    model->addPart(count, points);
}

ResultInfo constantOf(const ResultInfo& argument, int operation, bool perPart) {
    return orvtest::customResult(argument.type(), argument.resultMapping(), {argument},
                                 new MinMaxAvgValueResultGenerator(1, operation, perPart));
}

class MinMaxAvgValueResultGeneratorTest : public testing::Test {
protected:
    void TearDown() override {
        EXPECT_EQ(asserts.take(), std::vector<FailedAssert>());
    }

    orvtest::AssertRecorder asserts;
    GeneratorModel model;
};

TEST_F(MinMaxAvgValueResultGeneratorTest, FindsTheFiguresOfOnePart) {
    struct Case {
        std::vector<double> input;
        double minimum;
        double maximum;
        double average;
    };
    const Case cases[] = {
        {{1, 2, UNDEFINED_DOUBLE}, 1, 2, 1.5},
        {{UNDEFINED_DOUBLE, UNDEFINED_DOUBLE}, largest, tiny, 0.0},
        {{-3, -1}, -3, tiny, -2},
        {{0}, 0, tiny, 0},
        {{5e-324}, 5e-324, tiny, 5e-324},
        {{4, 1, 9}, 1, 9, 14.0 / 3},
        {{-UNDEFINED_DOUBLE, 1}, -largest, 1, -largest / 2},
        {{infinity, 1}, 1, infinity, infinity},
        {{-infinity, 1}, -infinity, 1, -infinity},
        // A NaN stands until the next number, and what was held in front of it is forgotten.
        {{1, 9, notANumber}, notANumber, notANumber, notANumber},
        {{1, 9, notANumber, 4}, 4, 4, notANumber},
        {{1, 9, notANumber, UNDEFINED_DOUBLE}, notANumber, notANumber, notANumber},
        {{notANumber, 5, 4}, 4, 5, notANumber},
        // Of equal numbers the last one is kept.
        {{0.0, -0.0}, -0.0, tiny, 0.0},
        {{-0.0, 0.0}, 0.0, tiny, 0.0},
        {{-0.0}, -0.0, tiny, 0.0},
        // 1e16 + 1 is 1e16 again.
        {{1e16, 1, -1e16}, -1e16, 1e16, 0.0},
        {{1e16, -1e16, 1}, -1e16, 1e16, 1.0 / 3},
    };
    for (const Case& c : cases) {
        for (bool perPart : {true, false}) {
            GeneratorModel onePart;
            addPoints(&onePart, static_cast<std::uint32_t>(c.input.size()));
            const ResultInfo input = onePart.add(SCALAR, PER_NODE, {c.input});
            const double figures[] = {c.minimum, c.maximum, c.average};
            for (int operation : {MINIMUM, MAXIMUM, AVERAGE}) {
                const ResultInfo constant = constantOf(input, operation, perPart);
                ASSERT_TRUE(onePart.generate(constant));
                EXPECT_EQ(exact(onePart.values(constant, 0)),
                          exact(std::vector<double>(c.input.size(), figures[operation])))
                    << "operation " << operation << " of " << testing::PrintToString(c.input);
            }
        }
    }
}

TEST_F(MinMaxAvgValueResultGeneratorTest, OnePartAtATimeOrAllTogether) {
    addPoints(&model, 1);
    addPoints(&model, 3);
    model.addGeometry();
    addPoints(&model, 2);
    const ResultInfo input = model.add(SCALAR, PER_ELEMENT, {{40}, {1, 2, 6}, {-5, 10}});
    struct Case {
        int operation;
        std::vector<double> ofParts;
        double ofAll;
    };
    const Case cases[] = {
        {MINIMUM, {40, 1, -5}, -5},
        {MAXIMUM, {40, 6, 10}, 40},
        // The part with more items weighs more: 54 / 6 and not the average of three averages.
        {AVERAGE, {40, 3, 2.5}, 9},
    };
    for (const Case& c : cases) {
        const ResultInfo ofParts = constantOf(input, c.operation, true);
        const ResultInfo ofAll = constantOf(input, c.operation, false);
        ASSERT_TRUE(model.generate(ofParts));
        ASSERT_TRUE(model.generate(ofAll));
        for (std::size_t p = 0; p < 3; ++p) {
            const std::size_t count = model.values(input, p).size();
            EXPECT_EQ(model.values(ofParts, p), std::vector<double>(count, c.ofParts[p]));
            EXPECT_EQ(model.values(ofAll, p), std::vector<double>(count, c.ofAll));
        }
    }
}

TEST_F(MinMaxAvgValueResultGeneratorTest, FiguresOfAllPartsRunOnThroughTheParts) {
    addPoints(&model, 2);
    addPoints(&model, 2);
    model.addGeometry();
    addPoints(&model, 1);
    // The 1 would be lost in the sum of the second part alone; the minima in front of the NaN are forgotten.
    const ResultInfo input = model.add(SCALAR, PER_NODE, {{1e16, 1}, {-1e16, 1}, {0}});
    const ResultInfo average = constantOf(input, AVERAGE, false);
    ASSERT_TRUE(model.generate(average));
    EXPECT_EQ(model.values(average, 0)[0], 1.0 / 5);
    const ResultInfo withNaN = model.add(SCALAR, PER_NODE, {{-7, 7}, {-8, notANumber}, {3}});
    for (int operation : {MINIMUM, MAXIMUM}) {
        const ResultInfo figure = constantOf(withNaN, operation, false);
        ASSERT_TRUE(model.generate(figure));
        EXPECT_EQ(model.values(figure, 0)[0], 3);
    }
}

TEST_F(MinMaxAvgValueResultGeneratorTest, PoolsTheComponents) {
    addPoints(&model, 2);
    for (ResultType type : {VECTOR, DISPLACEMENT, SYMMETRIC_TENSOR}) {
        const std::size_t count = 2 * doublesPerItem(type);
        std::vector<double> values;
        for (std::size_t i = 0; i < count; ++i) {
            values.push_back(static_cast<double>(i));
        }
        const double last = static_cast<double>(count - 1);
        const ResultInfo input = model.add(type, PER_NODE, {values});
        const double figures[] = {0, last, last / 2};
        for (int operation : {MINIMUM, MAXIMUM, AVERAGE}) {
            for (bool perPart : {true, false}) {
                const ResultInfo constant = constantOf(input, operation, perPart);
                ASSERT_TRUE(model.generate(constant));
                EXPECT_EQ(model.values(constant, 0), std::vector<double>(count, figures[operation]));
            }
        }
    }
}

TEST_F(MinMaxAvgValueResultGeneratorTest, AnyOtherOperationLeavesTheValuesAsTheyAre) {
    addPoints(&model, 2);
    const ResultInfo input = model.add(SCALAR, PER_NODE, {{1, 2}});
    for (int operation : {3, -1}) {
        for (bool perPart : {true, false}) {
            const ResultInfo constant = constantOf(input, operation, perPart);
            DataResult* output = model.group(0)->findOrAdd(constant);
            output->values(0)->allocate(2);
            std::fill_n(output->values(0)->values(), 2, 77.0);
            EXPECT_TRUE(model.generate(constant));
            EXPECT_EQ(model.values(constant, 0), (std::vector<double>{77, 77}));
        }
    }
}

TEST_F(MinMaxAvgValueResultGeneratorTest, RefreshesTheRangeOfScalars) {
    addPoints(&model, 2);
    addPoints(&model, 1);
    const ResultInfo input = model.add(SCALAR, PER_NODE, {{1, 3}, {8}});
    const ResultInfo ofParts = constantOf(input, AVERAGE, true);
    const ResultInfo ofAll = constantOf(input, AVERAGE, false);
    ASSERT_TRUE(model.generate(ofParts));
    ASSERT_TRUE(model.generate(ofAll));
    EXPECT_EQ(model.range(ofParts, 0), (std::pair<double, double>(2, 2)));
    EXPECT_EQ(model.range(ofParts, 1), (std::pair<double, double>(8, 8)));
    EXPECT_EQ(model.range(ofAll, 0), (std::pair<double, double>(4, 4)));
    EXPECT_EQ(model.range(ofAll, 1), (std::pair<double, double>(4, 4)));
}

TEST_F(MinMaxAvgValueResultGeneratorTest, RefreshesTheRangeAlsoWhenThereIsNothingToWrite) {
    addPoints(&model, 1);
    const ResultInfo input = model.add(SCALAR, PER_NODE, {{1}});
    for (bool perPart : {true, false}) {
        const ResultInfo constant = constantOf(input, MINIMUM, perPart);
        model.partValues(input, 0)->allocate(1);
        model.partValues(input, 0)->values()[0] = 1;
        ASSERT_TRUE(model.generate(constant));
        model.partValues(input, 0)->allocate(0);
        ASSERT_TRUE(model.generate(constant));
        EXPECT_EQ(model.range(constant, 0), (std::pair<double, double>(UNDEFINED_DOUBLE, UNDEFINED_DOUBLE)));
    }
}

TEST_F(MinMaxAvgValueResultGeneratorTest, AssertsTypeAndMappingInOrderAndGoesOn) {
    addPoints(&model, 2);
    const ResultInfo scalars = model.add(SCALAR, PER_NODE, {{1, 2}});
    const ResultInfo vectors = model.add(VECTOR, PER_NODE, {{4, 5, 6, 3, 2, 1}});
    struct Case {
        ResultInfo argument;
        ResultMapping mapping;
        std::vector<FailedAssert> failed;
        double minimum;
    };
    const Case cases[] = {
        {scalars, PER_NODE, {}, 1},
        {vectors, PER_NODE, {otherType}, 1},
        {scalars, PER_ELEMENT, {otherMapping}, 1},
        {vectors, PER_ELEMENT, {otherType, otherMapping}, 1},
    };
    for (const Case& c : cases) {
        for (bool perPart : {true, false}) {
            const ResultInfo info = orvtest::customResult(SCALAR, c.mapping, {c.argument},
                                                          new MinMaxAvgValueResultGenerator(1, MINIMUM, perPart));
            EXPECT_TRUE(model.generate(info));
            EXPECT_EQ(asserts.take(), c.failed);
            EXPECT_EQ(model.values(info, 0), (std::vector<double>{1, 1}));
        }
    }
    // Also from a scalar to all components of vectors.
    const ResultInfo wider =
        orvtest::customResult(VECTOR, PER_NODE, {scalars}, new MinMaxAvgValueResultGenerator(1, MAXIMUM, true));
    EXPECT_TRUE(model.generate(wider));
    EXPECT_EQ(asserts.take(), (std::vector<FailedAssert>{otherType}));
    EXPECT_EQ(model.values(wider, 0), std::vector<double>(6, 2.0));
}

TEST_F(MinMaxAvgValueResultGeneratorTest, AssertsThatThereIsOneArgumentAndGoesOn) {
    addPoints(&model, 2);
    const ResultInfo first = model.add(SCALAR, PER_NODE, {{1, 2}});
    const ResultInfo second = model.add(VECTOR, PER_NODE, {{0, 0, 0, 9, 9, 9}});
    const ResultInfo two =
        orvtest::customResult(SCALAR, PER_NODE, {first, second}, new MinMaxAvgValueResultGenerator(2, MAXIMUM, true));
    EXPECT_TRUE(model.generate(two));
    EXPECT_EQ(asserts.take(), (std::vector<FailedAssert>{notOneArgument}));
    EXPECT_EQ(model.values(two, 0), (std::vector<double>{2, 2}));
    const ResultInfo none =
        orvtest::customResult(SCALAR, PER_NODE, {}, new MinMaxAvgValueResultGenerator(0, MAXIMUM, true));
    EXPECT_FALSE(model.generate(none));
    EXPECT_EQ(asserts.take(), (std::vector<FailedAssert>{notOneArgument}));
}

TEST_F(MinMaxAvgValueResultGeneratorTest, LooksForOneArgumentBeforeTheDirectory) {
    addPoints(&model, 1);
    const ResultInfo input = model.add(SCALAR, PER_NODE, {{1}});
    const ResultInfo two =
        orvtest::customResult(SCALAR, PER_NODE, {input, input}, new MinMaxAvgValueResultGenerator(2, MAXIMUM, true));
    EXPECT_TRUE(CustomResultGenerator::compute(nullptr, two, model.state()));
    EXPECT_EQ(asserts.take(),
              (std::vector<FailedAssert>{
                  {"OrvApp/GeneratorWalk_p", "dataSource", {}}, notOneArgument, {ownFile, "directory", {}}}));
}

TEST_F(MinMaxAvgValueResultGeneratorTest, WhatHasBeenWrittenStaysWhenAPartFails) {
    addPoints(&model, 1);
    addPoints(&model, 1);
    const ResultInfo first = model.add(SCALAR, PER_NODE, {{1}, {2}});
    const ResultInfo second = model.add(SCALAR, PER_NODE, {{1}, {2}});
    model.partValues(second, 1)->allocate(2); // The counts differ on the second part.
    for (bool perPart : {true, false}) {
        const ResultInfo info = orvtest::customResult(SCALAR, PER_NODE, {first, second},
                                                      new MinMaxAvgValueResultGenerator(2, MINIMUM, perPart));
        model.group(0)->findOrAdd(info)->values(0)->allocate(1);
        *model.partValues(info, 0)->values() = 77;
        EXPECT_FALSE(model.generate(info));
        EXPECT_EQ(asserts.take(), (std::vector<FailedAssert>{notOneArgument}));
        EXPECT_EQ(model.values(info, 0), (std::vector<double>{perPart ? 1.0 : 77.0}));
    }
}

/// The figures of a list, minimum first, in the plainest words.
std::vector<double> referenceFigures(const std::vector<double>& values) {
    double minimum = largest;
    double maximum = tiny;
    double sum = 0;
    int count = 0;
    for (double value : values) {
        if (value == largest) {
            continue;
        }
        if (!(minimum < value)) {
            minimum = value;
        }
        if (!(maximum > value)) {
            maximum = value;
        }
        sum += value;
        count += 1;
    }
    return {minimum, maximum, count > 0 ? sum / count : 0.0};
}

TEST_F(MinMaxAvgValueResultGeneratorTest, AgreesWithAPlainReferenceOnRandomMeshes) {
    orvtest::RandomMesh random(3);
    random.fill(&model, 40);
    for (ResultType type : {SCALAR, VECTOR, DISPLACEMENT, SYMMETRIC_TENSOR}) {
        for (ResultMapping mapping : {PER_NODE, PER_ELEMENT}) {
            const ResultInfo input = random.addValues(&model, type, mapping);
            std::vector<double> all;
            for (std::size_t p = 0; p < model.partCount(); ++p) {
                const std::vector<double> values = model.values(input, p);
                all.insert(all.end(), values.begin(), values.end());
            }
            for (int operation : {MINIMUM, MAXIMUM, AVERAGE}) {
                const ResultInfo ofParts = constantOf(input, operation, true);
                const ResultInfo ofAll = constantOf(input, operation, false);
                ASSERT_TRUE(model.generate(ofParts));
                ASSERT_TRUE(model.generate(ofAll));
                for (std::size_t p = 0; p < model.partCount(); ++p) {
                    const std::vector<double> values = model.values(input, p);
                    EXPECT_EQ(exact(model.values(ofParts, p)),
                              exact(std::vector<double>(values.size(), referenceFigures(values)[operation])));
                    EXPECT_EQ(exact(model.values(ofAll, p)),
                              exact(std::vector<double>(values.size(), referenceFigures(all)[operation])));
                }
            }
        }
    }
}

} // namespace
