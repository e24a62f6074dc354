// The walk that the generators share: with steps made up for the test, and then what all three generators do with it.

#include "OrvApp/GeneratorWalk_p.h"

#include "OrvApp/ElementToNodeResultGenerator.h"
#include "OrvApp/MinMaxAvgValueResultGenerator.h"
#include "OrvApp/NodeToElementResultGenerator.h"
#include "Tests/OrvApp/GeneratorModel.h"
#include "Tests/Support/AssertRecorder.h"

#include <gtest/gtest.h>

#include <functional>

using namespace orv::ug;
using orv::app::ElementToNodeResultGenerator;
using orv::app::GeneratorPart;
using orv::app::GeneratorWalk;
using orv::app::MinMaxAvgValueResultGenerator;
using orv::app::NodeToElementResultGenerator;
using orvtest::customResult;
using orvtest::FailedAssert;
using orvtest::GeneratorModel;

namespace {

const std::string walkFile = "OrvApp/GeneratorWalk_p";

/// Has the steps of a generator, notes their calls, and lets one of them fail.
class MadeUpSteps {
public:
    bool checkArguments(const std::vector<ResultInfo>&) const {
        return note("check");
    }

    bool computeCustomArguments(const DataSource*, const std::vector<ResultInfo>&, DataState*) const {
        return note("compute");
    }

    bool gatherInputDataResults(const DataResultGroup*, const std::vector<ResultInfo>&, unsigned long partCount,
                                CustomResultGenerator::InputDataResults*) const {
        return note("inputs of " + std::to_string(partCount));
    }

    bool getOuputDataResult(DataResultGroup*, const ResultInfo&, CustomResultGenerator::OutputDataResult* out) const {
        out->scalar = scalar;
        return note("output");
    }

    bool gatherInputValuePointers(const std::vector<ResultInfo>&, unsigned long partIndex,
                                  const CustomResultGenerator::InputDataResults&,
                                  CustomResultGenerator::InputValueData* out) const {
        out->counts = counts;
        return note("in " + std::to_string(partIndex));
    }

    bool getOutputValuePointer(unsigned long partIndex, const CustomResultGenerator::OutputDataResult&,
                               const CustomResultGenerator::InputValueData&, unsigned long itemCount,
                               CustomResultGenerator::OutputValueData*) const {
        return note("out " + std::to_string(partIndex) + " for " + std::to_string(itemCount));
    }

    bool note(const std::string& step) const {
        calls.push_back(step);
        return step != failing;
    }

    mutable std::vector<std::string> calls;
    std::string failing;
    std::vector<unsigned long> counts = {5};
    DataResultScalar* scalar = nullptr;
};

class GeneratorWalkTest : public testing::Test {
protected:
    GeneratorWalkTest() {
        model.addPart(1, {});
        model.addPart(2, {});
        model.addGeometry();
        model.addPart(3, {});
    }

    bool walk() {
        return walkOver(model.state());
    }

    template <class State>
    bool walkOver(State* state) {
        const auto countNodes = [](const DataPart& part, const CustomResultGenerator::InputValueData&) {
            return part.nodes()->nodeCount();
        };
        return GeneratorWalk(ResultInfo(), arguments)
            .forEachPart(steps, state, countNodes, [this](const GeneratorPart& part) {
                EXPECT_EQ(part.output.values, nullptr);
                outputScalars.push_back(part.outputScalar);
                return steps.note("visit " + std::to_string(part.part->nodes()->nodeCount()));
            });
    }

    orvtest::AssertRecorder asserts;
    GeneratorModel model;
    MadeUpSteps steps;
    std::vector<ResultInfo> arguments = {ResultInfo()};
    std::vector<DataPartScalar*> outputScalars;
};

const std::vector<std::string> allSteps = {"inputs of 2", "output",      "in 0",    "out 0 for 1", "visit 1",
                                           "in 1",        "out 1 for 2", "visit 2", // First geometry.
                                           "inputs of 1", "output",      "in 0",    "out 0 for 3", "visit 3"};

TEST_F(GeneratorWalkTest, TakesTheStepsInOrder) {
    EXPECT_TRUE(walk());
    EXPECT_EQ(steps.calls, allSteps);
    EXPECT_TRUE(asserts.take().empty());
}

TEST_F(GeneratorWalkTest, EachFailureEndsItAtOnce) {
    for (std::size_t i = 0; i < allSteps.size(); ++i) {
        if (allSteps[i] == "output" || allSteps[i] == "in 0") {
            continue; // Occur twice: the next test.
        }
        steps.calls.clear();
        steps.failing = allSteps[i];
        EXPECT_FALSE(walk());
        EXPECT_EQ(steps.calls, std::vector<std::string>(allSteps.begin(), allSteps.begin() + i + 1));
    }
}

TEST_F(GeneratorWalkTest, AFailureInTheFirstGeometryEndsIt) {
    steps.failing = "output";
    EXPECT_FALSE(walk());
    EXPECT_EQ(steps.calls, (std::vector<std::string>{"inputs of 2", "output"}));
    steps.calls.clear();
    steps.failing = "in 0";
    EXPECT_FALSE(walk());
    EXPECT_EQ(steps.calls, (std::vector<std::string>{"inputs of 2", "output", "in 0"}));
}

TEST_F(GeneratorWalkTest, AnotherNumberOfInputsIsAnAssertionForEachPart) {
    arguments.push_back(ResultInfo());
    EXPECT_TRUE(walk());
    const FailedAssert oneCount = {walkFile, "inputValueData.counts.size() == argCount", {}};
    EXPECT_EQ(asserts.take(), (std::vector<FailedAssert>{oneCount, oneCount, oneCount}));
    EXPECT_EQ(steps.calls, allSteps);
}

TEST_F(GeneratorWalkTest, UnequalCountsEndItWithoutAWord) {
    arguments.resize(3);
    for (const std::vector<unsigned long>& counts : {std::vector<unsigned long>{5, 5, 4}, {4, 5, 5}, {5, 4, 5}}) {
        steps.calls.clear();
        steps.counts = counts;
        EXPECT_FALSE(walk());
        EXPECT_EQ(steps.calls, (std::vector<std::string>{"inputs of 2", "output", "in 0"}));
    }
    steps.counts = {5, 5, 5};
    EXPECT_TRUE(walk());
    EXPECT_TRUE(asserts.take().empty());
}

TEST_F(GeneratorWalkTest, GivesTheOutputsPartOfAScalarThatHasIt) {
    DataResultScalar scalar(1, PER_NODE, 1);
    steps.scalar = &scalar;
    EXPECT_TRUE(walk());
    EXPECT_EQ(outputScalars, (std::vector<DataPartScalar*>{scalar.part(0), nullptr, scalar.part(0)}));
}

/// A state with one geometry of one part, of which something is missing.
struct BrokenState {
    struct Geometry {
        std::size_t partCount() const {
            return 1;
        }

        const DataPart* part(std::size_t) const {
            return onlyPart;
        }

        const DataPart* onlyPart = nullptr;
    };

    std::size_t geometryCount() const {
        return 1;
    }

    const Geometry* geometry(std::size_t) const {
        return hasGeometry ? &onlyGeometry : nullptr;
    }

    DataResultGroup* results(const Geometry*) const {
        return group;
    }

    Geometry onlyGeometry;
    bool hasGeometry = true;
    DataResultGroup* group = nullptr;
};

TEST_F(GeneratorWalkTest, AMissingGeometryGroupOrPartIsAnAssertion) {
    BrokenState broken;
    // Behind these two there is nothing defined.
    broken.hasGeometry = false;
    EXPECT_EQ(asserts.takeUntil(1, [&] { walkOver(&broken); }), (std::vector<FailedAssert>{{walkFile, "geo", {}}}));
    broken.hasGeometry = true;
    broken.group = model.group(0);
    EXPECT_EQ(asserts.takeUntil(1, [&] { walkOver(&broken); }), (std::vector<FailedAssert>{{walkFile, "geoPart", {}}}));
    broken.group = nullptr;
    steps.calls.clear();
    steps.failing = "inputs of 1";
    EXPECT_FALSE(walkOver(&broken));
    EXPECT_EQ(asserts.take(), (std::vector<FailedAssert>{{walkFile, "group", {}}}));
    EXPECT_EQ(steps.calls, (std::vector<std::string>{"inputs of 1"}));
}

TEST_F(GeneratorWalkTest, BeginsWithItsArguments) {
    EXPECT_TRUE(GeneratorWalk::begin(steps, model.source.get(), arguments, model.state()));
    EXPECT_EQ(steps.calls, (std::vector<std::string>{"check", "compute"}));
    steps.calls.clear();
    steps.failing = "compute";
    EXPECT_FALSE(GeneratorWalk::begin(steps, model.source.get(), arguments, model.state()));
    EXPECT_EQ(steps.calls, (std::vector<std::string>{"check", "compute"}));
    steps.calls.clear();
    steps.failing = "check";
    EXPECT_FALSE(GeneratorWalk::begin(steps, model.source.get(), arguments, model.state()));
    EXPECT_EQ(steps.calls, (std::vector<std::string>{"check"}));
    EXPECT_TRUE(asserts.take().empty());
}

TEST_F(GeneratorWalkTest, AssertsAStateAndThenASource) {
    EXPECT_TRUE(GeneratorWalk::begin(steps, nullptr, arguments, nullptr));
    EXPECT_EQ(asserts.take(), (std::vector<FailedAssert>{{walkFile, "state", {}}, {walkFile, "dataSource", {}}}));
}

/// A generator and the mappings that it goes between.
struct Kind {
    const char* name;
    std::function<CustomResultGenerator*(unsigned long argumentCount)> make;
    ResultMapping from;
    ResultMapping to;
};

class AnyGeneratorTest : public testing::TestWithParam<Kind> {
protected:
    AnyGeneratorTest() {
        model.addPart(1, {{POINT}, {0}});
        model.addPart(1, {{POINT}, {0}});
        input = model.add(SCALAR, GetParam().from, {{4}, {6}});
    }

    void TearDown() override {
        EXPECT_EQ(asserts.take(), std::vector<FailedAssert>());
    }

    ResultInfo made(std::vector<ResultInfo> arguments) {
        CustomResultGenerator* generator = GetParam().make(arguments.size());
        return customResult(SCALAR, GetParam().to, std::move(arguments), generator);
    }

    orvtest::AssertRecorder asserts;
    GeneratorModel model;
    ResultInfo input;
    const std::string ownFile = std::string("OrvApp/") + GetParam().name + "ResultGenerator";
};

TEST_P(AnyGeneratorTest, ComputesInAllParts) {
    const ResultInfo info = made({input});
    ASSERT_TRUE(model.generate(info));
    EXPECT_EQ(model.values(info, 0), (std::vector<double>{4}));
    EXPECT_EQ(model.values(info, 1), (std::vector<double>{6}));
}

TEST_P(AnyGeneratorTest, WithoutAStateThereIsNothingToCompute) {
    const ResultInfo info = made({input});
    EXPECT_FALSE(CustomResultGenerator::compute(model.source.get(), info, nullptr));
    EXPECT_EQ(asserts.take(), (std::vector<FailedAssert>{{walkFile, "state", {}}}));
}

TEST_P(AnyGeneratorTest, GoesOnWithoutASource) {
    const ResultInfo info = made({input});
    EXPECT_TRUE(CustomResultGenerator::compute(nullptr, info, model.state()));
    EXPECT_EQ(asserts.take(), (std::vector<FailedAssert>{{walkFile, "dataSource", {}}, {ownFile, "directory", {}}}));
    EXPECT_EQ(model.values(info, 1), (std::vector<double>{6}));
}

TEST_P(AnyGeneratorTest, ArgumentsOfAnotherTypeThanSetEndItBeforeItsOwnChecks) {
    const ResultInfo info = customResult(VECTOR, PER_ELEMENT_NODE, {input}, GetParam().make(1));
    const_cast<CustomResultGenerator*>(info.customResultGenerator())->setArgumentType(0, VECTOR);
    EXPECT_FALSE(model.generate(info));
}

TEST_P(AnyGeneratorTest, AnotherNumberOfArgumentsThanAnnouncedEndsItBeforeItsOwnChecks) {
    EXPECT_FALSE(model.generate(customResult(VECTOR, PER_ELEMENT_NODE, {input}, GetParam().make(2))));
    EXPECT_FALSE(model.generate(customResult(VECTOR, PER_ELEMENT_NODE, {input, input}, GetParam().make(1))));
}

TEST_P(AnyGeneratorTest, ComputesCustomArgumentsFirst) {
    const ResultInfo inner =
        customResult(SCALAR, GetParam().from, {input}, new MinMaxAvgValueResultGenerator(1, 1, false));
    const ResultInfo info = made({inner});
    ASSERT_TRUE(model.generate(info));
    EXPECT_EQ(model.values(info, 0), (std::vector<double>{6}));
}

TEST_P(AnyGeneratorTest, ACustomArgumentThatNothingComputesEndsItBeforeItsOwnChecks) {
    const ResultInfo hopeless = customResult(VECTOR, PER_ELEMENT_NODE, {input}, nullptr);
    EXPECT_FALSE(model.generate(made({hopeless})));
}

TEST_P(AnyGeneratorTest, AnArgumentThatIsNotLoadedEndsIt) {
    model.group(0)->remove(input);
    const ResultInfo info = made({input});
    EXPECT_FALSE(model.generate(info));
    EXPECT_EQ(model.group(0)->find(info), nullptr) << "Nothing has been made yet.";
}

TEST_P(AnyGeneratorTest, AnOutputThatLacksAPartEndsIt) {
    const ResultInfo info = made({input});
    DataGeometry* geometry = model.state()->geometry(0);
    model.group(0)->findOrAdd(info);
    geometry->addPart(9);
    // The input is there for the new part, the output is not.
    model.group(0)->remove(input);
    DataResult* again = model.group(0)->findOrAdd(input);
    for (std::size_t p = 0; p < 2; ++p) {
        again->values(p)->allocate(1);
        *again->values(p)->values() = 3;
    }
    EXPECT_FALSE(model.generate(info));
}

TEST_P(AnyGeneratorTest, AResultWithoutATypeEndsIt) {
    const ResultInfo info = customResult(NO_RESULT_TYPE, GetParam().to, {input}, GetParam().make(1));
    EXPECT_FALSE(model.generate(info));
    const std::vector<FailedAssert> failed = asserts.take();
    ASSERT_EQ(failed.size(), 1u);
    EXPECT_EQ(failed[0].expression, "result.type() == argInfo.type()");
}

TEST_P(AnyGeneratorTest, PartsWithoutItemsAreNoFailure) {
    GeneratorModel hollow;
    hollow.addPart(0, {});
    hollow.addPart(1, {{POINT}, {0}});
    const ResultInfo info = made({hollow.add(SCALAR, GetParam().from, {{}, {6}})});
    ASSERT_TRUE(hollow.generate(info));
    EXPECT_EQ(hollow.values(info, 0), std::vector<double>());
    EXPECT_EQ(hollow.values(info, 1), (std::vector<double>{6}));
}

INSTANTIATE_TEST_SUITE_P(
    Kinds, AnyGeneratorTest,
    testing::Values(Kind{"NodeToElement", [](unsigned long count) { return new NodeToElementResultGenerator(count); },
                         PER_NODE, PER_ELEMENT},
                    Kind{"ElementToNode", [](unsigned long count) { return new ElementToNodeResultGenerator(count); },
                         PER_ELEMENT, PER_NODE},
                    Kind{"MinMaxAvgValue",
                         [](unsigned long count) { return new MinMaxAvgValueResultGenerator(count, 0, true); },
                         PER_NODE, PER_NODE}),
    [](const testing::TestParamInfo<Kind>& param) { return std::string(param.param.name); });

TEST(ConversionTest, NeedsAnArgument) {
    orvtest::AssertRecorder asserts;
    GeneratorModel model;
    model.addPart(1, {{POINT}, {0}});
    EXPECT_FALSE(model.generate(customResult(SCALAR, PER_ELEMENT, {}, new NodeToElementResultGenerator(0))));
    EXPECT_FALSE(model.generate(customResult(SCALAR, PER_NODE, {}, new ElementToNodeResultGenerator(0))));
    EXPECT_TRUE(asserts.take().empty());
}

} // namespace
