#include "OrvApp/NodeToElementResultGenerator.h"

#include "OrvCore/Defines.h"
#include "Tests/OrvApp/GeneratorModel.h"
#include "Tests/OrvApp/RandomMesh.h"
#include "Tests/Support/AssertRecorder.h"

#include <gtest/gtest.h>

#include <limits>

using namespace orv::ug;
using orv::UNDEFINED_DOUBLE;
using orv::app::NodeToElementResultGenerator;
using orvtest::exact;
using orvtest::FailedAssert;

namespace {

const std::string ownFile = "OrvApp/NodeToElementResultGenerator";
const FailedAssert notFromNodes = {ownFile, "argInfo.resultMapping() == PER_NODE",
                                   "Node to element conversion is only valid from node-mapped results"};
const FailedAssert notToElements = {ownFile, "result.resultMapping() == PER_ELEMENT",
                                    "Node to element conversion is only valid to element-mapped results"};
const FailedAssert otherType = {ownFile, "result.type() == argInfo.type()",
                                "Node to element conversion is only valid if input and output have the same result "
                                "type (scalar, vector, displacement or symmetric tensor)"};

class NodeToElementResultGeneratorTest : public testing::Test {
protected:
    void TearDown() override {
        EXPECT_EQ(asserts.take(), std::vector<FailedAssert>());
    }

    static ResultInfo toElements(const ResultInfo& argument) {
        return orvtest::customResult(argument.type(), PER_ELEMENT, {argument}, new NodeToElementResultGenerator(1));
    }

    orvtest::AssertRecorder asserts;
    orvtest::GeneratorModel model;
};

TEST_F(NodeToElementResultGeneratorTest, AveragesTheNodesOfEachElement) {
    //  3---2     a square with a triangle on its side
    //  |   | \   .
    //  0---1--4
    model.addPart(5, {{QUADRILATERAL, TRIANGLE, POINT}, {0, 1, 2, 3, 1, 4, 2, 4}});
    model.addPart(2, {{BEAM}, {1, 0}});
    model.addGeometry();
    model.addPart(1, {{POINT, POINT}, {0, 0}});
    const ResultInfo perNode = model.add(SCALAR, PER_NODE, {{1, 2, 4, 5, 30}, {7, 10}, {-6}});
    const ResultInfo perElement = toElements(perNode);
    ASSERT_TRUE(model.generate(perElement));
    EXPECT_EQ(model.values(perElement, 0), (std::vector<double>{12.0 / 4, 36.0 / 3, 30}));
    EXPECT_EQ(model.values(perElement, 1), (std::vector<double>{17.0 / 2}));
    EXPECT_EQ(model.values(perElement, 2), (std::vector<double>{-6, -6}));
}

TEST_F(NodeToElementResultGeneratorTest, MidSideNodesCountLikeCorners) {
    model.addPart(3, {{BEAM_3}, {0, 1, 2}});
    const ResultInfo perElement = toElements(model.add(SCALAR, PER_NODE, {{1, 2, 9}}));
    ASSERT_TRUE(model.generate(perElement));
    EXPECT_EQ(model.values(perElement, 0), (std::vector<double>{4}));
}

TEST_F(NodeToElementResultGeneratorTest, ANodeListedTwiceCountsTwice) {
    model.addPart(2, {{TRIANGLE}, {0, 1, 1}});
    const ResultInfo perElement = toElements(model.add(SCALAR, PER_NODE, {{3, 6}}));
    ASSERT_TRUE(model.generate(perElement));
    EXPECT_EQ(model.values(perElement, 0), (std::vector<double>{5}));
}

TEST_F(NodeToElementResultGeneratorTest, AveragesComponentByComponentAndKeepsTheType) {
    model.addPart(2, {{BEAM, POINT}, {0, 1, 1}});
    for (ResultType type : {VECTOR, DISPLACEMENT, SYMMETRIC_TENSOR}) {
        const std::size_t dimension = doublesPerItem(type);
        std::vector<double> input(2 * dimension);
        std::vector<double> expected(2 * dimension);
        for (std::size_t c = 0; c < dimension; ++c) {
            input[c] = 10.0 * static_cast<double>(c);
            input[dimension + c] = 1;
            expected[c] = (10.0 * static_cast<double>(c) + 1) / 2;
            expected[dimension + c] = 1;
        }
        const ResultInfo perElement = toElements(model.add(type, PER_NODE, {input}));
        ASSERT_TRUE(model.generate(perElement));
        EXPECT_EQ(model.values(perElement, 0), expected) << type;
    }
}

TEST_F(NodeToElementResultGeneratorTest, AddsInTheOrderOfTheListFromZeroAndDivides) {
    model.addPart(3, {{TRIANGLE, TRIANGLE, BEAM, TRIANGLE}, {0, 1, 2, 0, 2, 1, 0, 0, 1, 1, 1}});
    // 1e16 + 1 is 1e16 again, so the 1 counts only when it is added last.
    const ResultInfo perElement = toElements(model.add(SCALAR, PER_NODE, {{1e16, 1, -1e16}}));
    ASSERT_TRUE(model.generate(perElement));
    EXPECT_EQ(exact(model.values(perElement, 0)), exact({0.0, 1.0 / 3, 1e16, 1}));

    // Minus zeros added to 0.0 give 0.0. 5 / 3 is not 5 times the double next to 1 / 3.
    const ResultInfo others = toElements(model.add(SCALAR, PER_NODE, {{-0.0, 5, 0}}));
    ASSERT_TRUE(model.generate(others));
    EXPECT_EQ(exact(model.values(others, 0)), exact({5.0 / 3, 5.0 / 3, 0.0, 5}));
}

TEST_F(NodeToElementResultGeneratorTest, UndefinedValuesSpreadAsHugeOnes) {
    model.addPart(5, {{TRIANGLE, TRIANGLE, QUADRILATERAL, POINT}, {0, 1, 2, 1, 2, 3, 0, 1, 2, 4, 2}});
    const ResultInfo perElement =
        toElements(model.add(SCALAR, PER_NODE, {{1, 2, UNDEFINED_DOUBLE, UNDEFINED_DOUBLE, -UNDEFINED_DOUBLE}}));
    ASSERT_TRUE(model.generate(perElement));
    EXPECT_EQ(exact(model.values(perElement, 0)),
              exact({UNDEFINED_DOUBLE / 3, std::numeric_limits<double>::infinity(), 0.0, UNDEFINED_DOUBLE}));
    EXPECT_NE(model.values(perElement, 0)[0], UNDEFINED_DOUBLE);
}

TEST_F(NodeToElementResultGeneratorTest, RefreshesTheRangeOfScalarsPartByPart) {
    model.addPart(2, {{POINT, POINT}, {0, 1}});
    model.addPart(2, {{BEAM}, {0, 1}});
    const ResultInfo perElement = toElements(model.add(SCALAR, PER_NODE, {{1, 5}, {7, 9}}));
    ASSERT_TRUE(model.generate(perElement));
    EXPECT_EQ(model.range(perElement, 0), (std::pair<double, double>(1, 5)));
    EXPECT_EQ(model.range(perElement, 1), (std::pair<double, double>(8, 8)));
}

TEST_F(NodeToElementResultGeneratorTest, RefreshesTheRangeAlsoWhenThereIsNothingToWrite) {
    model.addPart(2, {{BEAM}, {0, 1}});
    model.addPart(1, {{POINT}, {0}});
    const ResultInfo perElement = toElements(model.add(SCALAR, PER_NODE, {{1, 5}, {2}}));
    ASSERT_TRUE(model.generate(perElement));
    model.part(0)->elements()->set({}, {}, {});
    ASSERT_TRUE(model.generate(perElement));
    EXPECT_EQ(model.range(perElement, 0), (std::pair<double, double>(UNDEFINED_DOUBLE, UNDEFINED_DOUBLE)));
    EXPECT_EQ(model.range(perElement, 1), (std::pair<double, double>(2, 2)));
}

TEST_F(NodeToElementResultGeneratorTest, OnlyTheFirstOfTwoArgumentsIsConverted) {
    model.addPart(2, {{BEAM}, {0, 1}});
    const ResultInfo first = model.add(SCALAR, PER_NODE, {{1, 2}});
    const ResultInfo second = model.add(VECTOR, PER_NODE, {{7, 7, 7, 7, 7, 7}});
    const ResultInfo info =
        orvtest::customResult(SCALAR, PER_ELEMENT, {first, second}, new NodeToElementResultGenerator(2));
    ASSERT_TRUE(model.generate(info));
    EXPECT_EQ(model.values(info, 0), (std::vector<double>{1.5}));
}

TEST_F(NodeToElementResultGeneratorTest, AllArgumentsNeedAsManyItems) {
    model.addPart(2, {{BEAM}, {0, 1}});
    const ResultInfo first = model.add(SCALAR, PER_NODE, {{1, 2}});
    const ResultInfo second = model.add(SCALAR, PER_ELEMENT, {{7}});
    for (const std::vector<ResultInfo>& arguments : {std::vector<ResultInfo>{first, second}, {first, first, second}}) {
        const ResultInfo info =
            orvtest::customResult(SCALAR, PER_ELEMENT, arguments, new NodeToElementResultGenerator(arguments.size()));
        EXPECT_FALSE(model.generate(info));
    }
}

TEST_F(NodeToElementResultGeneratorTest, AssertsMappingsAndTypeInOrderAndGoesOn) {
    // As many beams as nodes, so that values per element can be taken for values per node.
    model.addPart(3, {{BEAM, BEAM, BEAM}, {0, 1, 1, 2, 2, 0}});
    const ResultInfo nodes = model.add(SCALAR, PER_NODE, {{1, 2, 3}});
    const ResultInfo elements = model.add(SCALAR, PER_ELEMENT, {{1, 2, 3}});
    const ResultInfo vectors = model.add(VECTOR, PER_NODE, {{1, 8, 9, 2, 8, 9, 3, 8, 9}});
    const ResultInfo elementVectors = model.add(VECTOR, PER_ELEMENT, {{1, 8, 9, 2, 8, 9, 3, 8, 9}});
    struct Case {
        ResultInfo argument;
        ResultMapping mapping;
        std::vector<FailedAssert> failed;
    };
    const Case cases[] = {
        {nodes, PER_ELEMENT, {}},
        {elements, PER_ELEMENT, {notFromNodes}},
        {nodes, PER_NODE, {notToElements}},
        {nodes, PER_ELEMENT_NODE, {notToElements}},
        {vectors, PER_ELEMENT, {otherType}},
        {elementVectors, PER_NODE, {notFromNodes, notToElements, otherType}},
    };
    for (const Case& c : cases) {
        const ResultInfo info =
            orvtest::customResult(SCALAR, c.mapping, {c.argument}, new NodeToElementResultGenerator(1));
        EXPECT_TRUE(model.generate(info));
        EXPECT_EQ(asserts.take(), c.failed);
        // Of the vectors the first component.
        EXPECT_EQ(model.values(info, 0), (std::vector<double>{1.5, 2.5, 2}));
    }
}

TEST_F(NodeToElementResultGeneratorTest, RefusesArgumentsThatDoNotReach) {
    model.addPart(1, {{POINT}, {0}});
    model.addPart(3, {{TRIANGLE}, {0, 1, 2}});
    const ResultInfo nodes = model.add(SCALAR, PER_NODE, {{4}, {1, 2, 3}});
    const ResultInfo elements = model.add(SCALAR, PER_ELEMENT, {{4}, {1}});
    const ResultInfo fewItems =
        orvtest::customResult(SCALAR, PER_ELEMENT, {elements}, new NodeToElementResultGenerator(1));
    EXPECT_FALSE(model.generate(fewItems));
    EXPECT_EQ(asserts.take(), (std::vector<FailedAssert>{notFromNodes}));
    EXPECT_EQ(model.values(fewItems, 0), (std::vector<double>{4})) << "What has been written stays.";
    const ResultInfo smallItems =
        orvtest::customResult(VECTOR, PER_ELEMENT, {nodes}, new NodeToElementResultGenerator(1));
    EXPECT_FALSE(model.generate(smallItems));
    EXPECT_EQ(asserts.take(), (std::vector<FailedAssert>{otherType}));
}

/// Element after element, in the plainest words.
std::vector<double> referenceAverages(const DataElements& elements, const std::vector<double>& nodeValues,
                                      std::size_t dimension) {
    std::vector<double> averages;
    for (std::size_t e = 0; e < elements.elementCount(); ++e) {
        const std::vector<unsigned int> nodes = elements.elementNodes(e);
        for (std::size_t c = 0; c < dimension; ++c) {
            double sum = 0.0;
            for (unsigned int node : nodes) {
                sum = sum + nodeValues[node * dimension + c];
            }
            averages.push_back(sum / static_cast<double>(nodes.size()));
        }
    }
    return averages;
}

TEST_F(NodeToElementResultGeneratorTest, AgreesWithAPlainReferenceOnRandomMeshes) {
    orvtest::RandomMesh random(1);
    random.fill(&model, 40);
    for (ResultType type : {SCALAR, VECTOR, DISPLACEMENT, SYMMETRIC_TENSOR}) {
        const ResultInfo perNode = random.addValues(&model, type, PER_NODE);
        const ResultInfo perElement = toElements(perNode);
        ASSERT_TRUE(model.generate(perElement));
        for (std::size_t p = 0; p < model.partCount(); ++p) {
            EXPECT_EQ(
                exact(model.values(perElement, p)),
                exact(referenceAverages(*model.part(p)->elements(), model.values(perNode, p), doublesPerItem(type))));
        }
    }
}

} // namespace
