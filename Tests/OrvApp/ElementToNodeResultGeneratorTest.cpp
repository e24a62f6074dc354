#include "OrvApp/ElementToNodeResultGenerator.h"

#include "OrvCore/Defines.h"
#include "Tests/OrvApp/GeneratorModel.h"
#include "Tests/OrvApp/RandomMesh.h"
#include "Tests/Support/AssertRecorder.h"

#include <gtest/gtest.h>

#include <limits>

using namespace orv::ug;
using orv::UNDEFINED_DOUBLE;
using orv::app::ElementToNodeResultGenerator;
using orvtest::exact;
using orvtest::FailedAssert;

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();

const std::string ownFile = "OrvApp/ElementToNodeResultGenerator";
const FailedAssert notFromElements = {ownFile, "argInfo.resultMapping() == PER_ELEMENT",
                                      "Element to node conversion is only valid from element-mapped results"};
const FailedAssert notToNodes = {ownFile, "result.resultMapping() == PER_NODE",
                                 "Element to node conversion is only valid to node-mapped results"};
const FailedAssert otherType = {ownFile, "result.type() == argInfo.type()",
                                "Element to node conversion is only valid if input and output have the same result "
                                "type (scalar, vector, displacement or symmetric tensor)"};

class ElementToNodeResultGeneratorTest : public testing::Test {
protected:
    void TearDown() override {
        EXPECT_EQ(asserts.take(), std::vector<FailedAssert>());
    }

    static ResultInfo toNodes(const ResultInfo& argument) {
        return orvtest::customResult(argument.type(), PER_NODE, {argument}, new ElementToNodeResultGenerator(1));
    }

    orvtest::AssertRecorder asserts;
    orvtest::GeneratorModel model;
};

TEST_F(ElementToNodeResultGeneratorTest, AveragesTheElementsAroundEachNode) {
    //  3---2     a square with a triangle on its side
    //  |   | \   .
    //  0---1--4
    model.addPart(5, {{QUADRILATERAL, TRIANGLE, POINT}, {0, 1, 2, 3, 1, 4, 2, 2}});
    model.addPart(2, {{BEAM}, {1, 0}});
    model.addGeometry();
    model.addPart(1, {{POINT, POINT}, {0, 0}});
    const ResultInfo perElement = model.add(SCALAR, PER_ELEMENT, {{1, 4, 12}, {7}, {-6, 4}});
    const ResultInfo perNode = toNodes(perElement);
    ASSERT_TRUE(model.generate(perNode));
    EXPECT_EQ(model.values(perNode, 0), (std::vector<double>{1, 5.0 / 2, 17.0 / 3, 1, 4}));
    EXPECT_EQ(model.values(perNode, 1), (std::vector<double>{7, 7}));
    EXPECT_EQ(model.values(perNode, 2), (std::vector<double>{-1}));
}

TEST_F(ElementToNodeResultGeneratorTest, ANodeWithoutAnElementGetsZero) {
    model.addPart(3, {{POINT}, {1}});
    model.addPart(2, {});
    const ResultInfo perNode = toNodes(model.add(SYMMETRIC_TENSOR, PER_ELEMENT, {{1, 2, 3, 4, 5, 6}, {}}));
    ASSERT_TRUE(model.generate(perNode));
    EXPECT_EQ(exact(model.values(perNode, 0)),
              exact({0.0, 0.0, 0.0, 0.0, 0.0, 0.0, 1, 2, 3, 4, 5, 6, 0.0, 0.0, 0.0, 0.0, 0.0, 0.0}));
    EXPECT_EQ(exact(model.values(perNode, 1)), exact(std::vector<double>(12, 0.0)));
}

TEST_F(ElementToNodeResultGeneratorTest, ANodeListedTwiceCountsTwice) {
    model.addPart(2, {{TRIANGLE, BEAM}, {0, 1, 1, 0, 1}});
    const ResultInfo perNode = toNodes(model.add(SCALAR, PER_ELEMENT, {{3, 6}}));
    ASSERT_TRUE(model.generate(perNode));
    EXPECT_EQ(model.values(perNode, 0), (std::vector<double>{4.5, 4}));
}

TEST_F(ElementToNodeResultGeneratorTest, AveragesComponentByComponentAndKeepsTheType) {
    model.addPart(2, {{BEAM, POINT}, {0, 1, 1}});
    for (ResultType type : {VECTOR, DISPLACEMENT, SYMMETRIC_TENSOR}) {
        const std::size_t dimension = doublesPerItem(type);
        std::vector<double> input(2 * dimension);
        std::vector<double> expected(2 * dimension);
        for (std::size_t c = 0; c < dimension; ++c) {
            input[c] = expected[c] = 10.0 * static_cast<double>(c);
            input[dimension + c] = 1;
            expected[dimension + c] = (10.0 * static_cast<double>(c) + 1) / 2;
        }
        const ResultInfo perNode = toNodes(model.add(type, PER_ELEMENT, {input}));
        ASSERT_TRUE(model.generate(perNode));
        EXPECT_EQ(model.values(perNode, 0), expected) << type;
    }
}

TEST_F(ElementToNodeResultGeneratorTest, AddsInTheOrderOfElementsFromZeroAndDivides) {
    model.addPart(3, {{BEAM, TRIANGLE, BEAM, POINT}, {0, 2, 0, 1, 2, 0, 2, 1}});
    // 1e16 + 1 is 1e16 again, so the 1 counts only when it is added last.
    const ResultInfo perNode = toNodes(model.add(SCALAR, PER_ELEMENT, {{1e16, -1e16, 1, 1e16}}));
    ASSERT_TRUE(model.generate(perNode));
    EXPECT_EQ(exact(model.values(perNode, 0)), exact({1.0 / 3, 0.0, 1.0 / 3}));
    const ResultInfo inBetween = toNodes(model.add(SCALAR, PER_ELEMENT, {{1e16, 1, -1e16, 0}}));
    ASSERT_TRUE(model.generate(inBetween));
    EXPECT_EQ(exact(model.values(inBetween, 0)), exact({0.0, 0.5, 0.0}));

    // Minus zeros added to 0.0 give 0.0. 5 / 3 is not 5 times the double next to 1 / 3.
    const ResultInfo others = toNodes(model.add(SCALAR, PER_ELEMENT, {{5, -0.0, 0, -0.0}}));
    ASSERT_TRUE(model.generate(others));
    EXPECT_EQ(exact(model.values(others, 0)), exact({5.0 / 3, 0.0, 5.0 / 3}));
}

TEST_F(ElementToNodeResultGeneratorTest, UndefinedValuesSpreadAsHugeOnes) {
    model.addPart(4, {{BEAM, BEAM, POINT, POINT}, {0, 1, 1, 2, 2, 3}});
    const ResultInfo perNode =
        toNodes(model.add(SCALAR, PER_ELEMENT, {{1, UNDEFINED_DOUBLE, UNDEFINED_DOUBLE, UNDEFINED_DOUBLE}}));
    ASSERT_TRUE(model.generate(perNode));
    EXPECT_EQ(exact(model.values(perNode, 0)), exact({1, UNDEFINED_DOUBLE / 2, infinity, UNDEFINED_DOUBLE}));
}

TEST_F(ElementToNodeResultGeneratorTest, RefreshesTheRangeOfScalarsPartByPart) {
    model.addPart(2, {{POINT, POINT}, {0, 1}});
    model.addPart(2, {{BEAM}, {0, 1}});
    const ResultInfo perNode = toNodes(model.add(SCALAR, PER_ELEMENT, {{1, 5}, {7}}));
    ASSERT_TRUE(model.generate(perNode));
    EXPECT_EQ(model.range(perNode, 0), (std::pair<double, double>(1, 5)));
    EXPECT_EQ(model.range(perNode, 1), (std::pair<double, double>(7, 7)));
}

TEST_F(ElementToNodeResultGeneratorTest, RefreshesTheRangeAlsoWhenThereIsNothingToWrite) {
    model.addPart(1, {{POINT}, {0}});
    model.addPart(1, {{POINT}, {0}});
    const ResultInfo perNode = toNodes(model.add(SCALAR, PER_ELEMENT, {{3}, {2}}));
    ASSERT_TRUE(model.generate(perNode));
    model.part(0)->nodes()->set({}, {});
    ASSERT_TRUE(model.generate(perNode));
    EXPECT_EQ(model.range(perNode, 0), (std::pair<double, double>(UNDEFINED_DOUBLE, UNDEFINED_DOUBLE)));
    EXPECT_EQ(model.range(perNode, 1), (std::pair<double, double>(2, 2)));
}

TEST_F(ElementToNodeResultGeneratorTest, OnlyTheFirstOfTwoArgumentsIsConverted) {
    model.addPart(2, {{BEAM}, {0, 1}});
    const ResultInfo first = model.add(SCALAR, PER_ELEMENT, {{1}});
    const ResultInfo second = model.add(VECTOR, PER_ELEMENT, {{7, 7, 7}});
    const ResultInfo info =
        orvtest::customResult(SCALAR, PER_NODE, {first, second}, new ElementToNodeResultGenerator(2));
    ASSERT_TRUE(model.generate(info));
    EXPECT_EQ(model.values(info, 0), (std::vector<double>{1, 1}));
}

TEST_F(ElementToNodeResultGeneratorTest, AssertsMappingsAndTypeInOrderAndGoesOn) {
    // As many beams as nodes, so that values per node can be taken for values per element.
    model.addPart(3, {{BEAM, BEAM, BEAM}, {0, 1, 1, 2, 2, 0}});
    const ResultInfo nodes = model.add(SCALAR, PER_NODE, {{1, 2, 3}});
    const ResultInfo elements = model.add(SCALAR, PER_ELEMENT, {{1, 2, 3}});
    const ResultInfo vectors = model.add(VECTOR, PER_ELEMENT, {{1, 8, 9, 2, 8, 9, 3, 8, 9}});
    const ResultInfo nodeVectors = model.add(VECTOR, PER_NODE, {{1, 8, 9, 2, 8, 9, 3, 8, 9}});
    struct Case {
        ResultInfo argument;
        ResultMapping mapping;
        std::vector<FailedAssert> failed;
    };
    const Case cases[] = {
        {elements, PER_NODE, {}},
        {nodes, PER_NODE, {notFromElements}},
        {elements, PER_ELEMENT, {notToNodes}},
        {elements, PER_ELEMENT_NODE, {notToNodes}},
        {vectors, PER_NODE, {otherType}},
        {nodeVectors, PER_ELEMENT, {notFromElements, notToNodes, otherType}},
    };
    for (const Case& c : cases) {
        const ResultInfo info =
            orvtest::customResult(SCALAR, c.mapping, {c.argument}, new ElementToNodeResultGenerator(1));
        EXPECT_TRUE(model.generate(info));
        EXPECT_EQ(asserts.take(), c.failed);
        // Of the vectors the first component.
        EXPECT_EQ(model.values(info, 0), (std::vector<double>{2, 1.5, 2.5}));
    }
}

TEST_F(ElementToNodeResultGeneratorTest, RefusesArgumentsThatDoNotReach) {
    model.addPart(1, {{POINT}, {0}});
    model.addPart(1, {{POINT, POINT}, {0, 0}});
    const ResultInfo nodes = model.add(SCALAR, PER_NODE, {{4}, {1}});
    const ResultInfo elements = model.add(SCALAR, PER_ELEMENT, {{4}, {1, 2}});
    const ResultInfo fewItems = orvtest::customResult(SCALAR, PER_NODE, {nodes}, new ElementToNodeResultGenerator(1));
    EXPECT_FALSE(model.generate(fewItems));
    EXPECT_EQ(asserts.take(), (std::vector<FailedAssert>{notFromElements}));
    EXPECT_EQ(model.values(fewItems, 0), (std::vector<double>{4})) << "What has been written stays.";
    const ResultInfo smallItems =
        orvtest::customResult(VECTOR, PER_NODE, {elements}, new ElementToNodeResultGenerator(1));
    EXPECT_FALSE(model.generate(smallItems));
    EXPECT_EQ(asserts.take(), (std::vector<FailedAssert>{otherType}));
}

/// Node after node, each looking through all elements.
std::vector<double> referenceAverages(const DataPart& part, const std::vector<double>& elementValues,
                                      std::size_t dimension) {
    std::vector<double> averages;
    for (std::size_t n = 0; n < part.nodes()->nodeCount(); ++n) {
        for (std::size_t c = 0; c < dimension; ++c) {
            double sum = 0.0;
            int count = 0;
            for (std::size_t e = 0; e < part.elements()->elementCount(); ++e) {
                for (unsigned int node : part.elements()->elementNodes(e)) {
                    if (node == n) {
                        sum = sum + elementValues[e * dimension + c];
                        ++count;
                    }
                }
            }
            averages.push_back(count == 0 ? 0.0 : sum / count);
        }
    }
    return averages;
}

TEST_F(ElementToNodeResultGeneratorTest, AgreesWithAPlainReferenceOnRandomMeshes) {
    orvtest::RandomMesh random(2);
    random.fill(&model, 40);
    for (ResultType type : {SCALAR, VECTOR, DISPLACEMENT, SYMMETRIC_TENSOR}) {
        const ResultInfo perElement = random.addValues(&model, type, PER_ELEMENT);
        const ResultInfo perNode = toNodes(perElement);
        ASSERT_TRUE(model.generate(perNode));
        for (std::size_t p = 0; p < model.partCount(); ++p) {
            EXPECT_EQ(exact(model.values(perNode, p)),
                      exact(referenceAverages(*model.part(p), model.values(perElement, p), doublesPerItem(type))));
        }
    }
}

} // namespace
