#include "OrvUnstructGrid/CustomResultGenerator.h"

#include "OrvUnstructGrid/DataState.h"
#include "Tests/OrvUnstructGrid/CustomResults.h"
#include "Tests/Support/AssertRecorder.h"
#include "Tests/Support/MemoryModels.h"

#include <gtest/gtest.h>

#include <algorithm>

using namespace orv::ug;
using orvtest::AssertRecorder;
using orvtest::CountingGenerator;
using orvtest::FailedAssert;
using orvtest::MemoryModel;
using orvtest::modelValue;
using orvtest::sumOf;
using orvtest::SumOfInputs;

namespace {

/// Opens the steps to the test.
class Steps : public CustomResultGenerator {
public:
    using CustomResultGenerator::checkArguments;
    using CustomResultGenerator::computeCustomArguments;
    using CustomResultGenerator::CustomResultGenerator;
    using CustomResultGenerator::gatherInputDataResults;
    using CustomResultGenerator::gatherInputValuePointers;
    using CustomResultGenerator::getOuputDataResult;
    using CustomResultGenerator::getOutputValuePointer;
};

class CustomResultGeneratorTest : public testing::Test {
protected:
    CustomResultGeneratorTest() : steps(new Steps(1)) {}

    bool compute(const ResultInfo& info) {
        return CustomResultGenerator::compute(model.source.get(), info, state);
    }

    DataResultGroup* group(std::size_t geometry) {
        return state->results(state->geometry(geometry));
    }

    DataPartScalar* scalarPart(const ResultInfo& info, std::size_t geometry, std::size_t part) {
        DataResultScalar* result = group(geometry)->scalar(group(geometry)->scalarIndex(info.id()));
        return result ? result->part(part) : nullptr;
    }

    MemoryModel model;
    DataState* state = model.state(2);
    orv::PtrRef<Steps> steps;
};

TEST_F(CustomResultGeneratorTest, RunsTheFunctionOverAllItemsOfAllParts) {
    const ResultInfo sum = sumOf("p+p", {model.pressure, model.pressure});
    ASSERT_TRUE(compute(sum));
    std::size_t partInModel = 0;
    for (std::size_t g = 0; g < 2; ++g) {
        for (std::size_t p = 0; p < state->geometry(g)->partCount(); ++p, ++partInModel) {
            const DataPartScalar* part = scalarPart(sum, g, p);
            ASSERT_NE(part, nullptr);
            ASSERT_EQ(part->itemCount(), state->geometry(g)->part(p)->elements()->elementCount());
            for (std::size_t i = 0; i < part->itemCount(); ++i) {
                EXPECT_EQ(part->value(i), 2 * modelValue(2, model.pressure, partInModel, i, 0));
            }
        }
    }
}

TEST_F(CustomResultGeneratorTest, StepsThroughItemsOfEveryDimension) {
    const ResultInfo vectors = sumOf("v+d", {model.velocity, model.velocity});
    const ResultInfo tensors = sumOf("t", {model.stress});
    ASSERT_TRUE(compute(vectors));
    ASSERT_TRUE(compute(tensors));
    const DataPartVector* vector = group(0)->vector(group(0)->vectorIndex(vectors.id()))->part(1);
    EXPECT_EQ(vector->value(5).z(), 2 * modelValue(2, model.velocity, 1, 5, 2));
    const DataPartSymmetricTensor* tensor =
        group(1)->symmetricTensor(group(1)->symmetricTensorIndex(tensors.id()))->part(1);
    EXPECT_EQ(tensor->value(2)[5], modelValue(2, model.stress, 4, 2, 5));
}

TEST_F(CustomResultGeneratorTest, InputsMayHaveOtherDimensionsThanTheOutput) {
    class FirstOfVectorPlusScalar : public CustomResultFunction {
        bool computeItem(const std::vector<const double*>& items, double* output) override {
            *output = items[0][0] + items[1][0];
            return outputDimension() == 1;
        }
    };
    std::vector<ResultInfo> arguments = {model.velocity, model.temperature};
    orv::PtrRef<CustomResultGenerator> generator(new CustomResultGenerator(2));
    generator->setFunction(new FirstOfVectorPlusScalar);
    generator->setArgumentType(0, VECTOR);
    generator->setArgumentType(1, SCALAR);
    const ResultInfo info(SCALAR, "x", PER_NODE, arguments, generator.get());
    ASSERT_TRUE(compute(info));
    EXPECT_EQ(scalarPart(info, 0, 1)->value(7),
              modelValue(2, model.velocity, 1, 7, 0) + modelValue(2, model.temperature, 1, 7, 0));
}

TEST_F(CustomResultGeneratorTest, RefreshesTheRangeOfScalars) {
    const ResultInfo sum = sumOf("p", {model.pressure});
    ASSERT_TRUE(compute(sum));
    const DataPartScalar* nut = scalarPart(sum, 1, 1);
    EXPECT_EQ(nut->minimum(), modelValue(2, model.pressure, 4, 0, 0));
    EXPECT_EQ(nut->maximum(), modelValue(2, model.pressure, 4, 2, 0));
}

TEST_F(CustomResultGeneratorTest, WithoutArgumentsFollowsTheMapping) {
    class Seven : public CustomResultFunction {
        bool computeItem(const std::vector<const double*>& items, double* output) override {
            *output = 7;
            return items.empty();
        }
    };
    std::vector<ResultInfo> none;
    orv::PtrRef<CustomResultGenerator> generator(new CustomResultGenerator(0));
    generator->setFunction(new Seven);
    const ResultInfo info(SCALAR, "seven", PER_ELEMENT, none, generator.get());
    ASSERT_TRUE(compute(info));
    ASSERT_EQ(scalarPart(info, 0, 1)->itemCount(), 2u);
    EXPECT_EQ(scalarPart(info, 0, 1)->value(1), 7.0);
}

TEST_F(CustomResultGeneratorTest, PartWithoutItemsIsNoFailure) {
    orv::PtrRef<DataSourceMemory> source(new DataSourceMemory(1));
    source->addGeometry();
    source->addPart(0, "empty");
    source->addState(StateInfo(1, "", StateInfo::TIME, 0));
    const ResultInfo scalar = source->addResult(SCALAR, "s", PER_NODE);
    ASSERT_TRUE(source->setValues(1, scalar, 0, 0, {}, nullptr));
    EXPECT_TRUE(CustomResultGenerator::compute(source.get(), sumOf("x", {scalar, scalar}), source->state(0)));
}

TEST_F(CustomResultGeneratorTest, AssertsWhatItNeeds) {
    AssertRecorder recorder;
    const std::string here = "OrvUnstructGrid/CustomResultGenerator";
    const ResultInfo info = sumOf("x", {model.pressure});
    const std::vector<ResultInfo>& arguments = info.customResultArguments();
    EXPECT_FALSE(steps->generate(nullptr, info, arguments, nullptr));
    EXPECT_EQ(recorder.take(),
              (std::vector<FailedAssert>{{here, "state", {}}, {here, "dataSource", {}}, {here, "m_function", {}}}));
    steps->setFunction(new SumOfInputs);
    EXPECT_FALSE(steps->generate(model.source.get(), info, arguments, nullptr));
    EXPECT_EQ(recorder.take(), (std::vector<FailedAssert>{{here, "state", {}}}));
    EXPECT_FALSE(steps->generate(nullptr, info, arguments, state));
    EXPECT_EQ(recorder.take(), (std::vector<FailedAssert>{{here, "dataSource", {}}}));
    steps->setFunction(nullptr);
    EXPECT_FALSE(steps->generate(model.source.get(), info, arguments, state));
    EXPECT_EQ(recorder.take(), (std::vector<FailedAssert>{{here, "m_function", {}}}));
}

TEST_F(CustomResultGeneratorTest, ItemsThatTheFunctionRefusesAreUndefined) {
    const ResultInfo info = sumOf("x", {model.pressure});
    orv::PtrRef<SumOfInputs> function(new SumOfInputs);
    function->refusedCall = 3; // Of 8 elements in all: the second one of "Column".
    steps->setFunction(function.get());
    EXPECT_TRUE(steps->generate(model.source.get(), info, info.customResultArguments(), state));
    EXPECT_EQ(function->calls, 8);
    const DataPartScalar* column = scalarPart(info, 0, 1);
    EXPECT_EQ(column->value(0), modelValue(2, model.pressure, 1, 0, 0));
    EXPECT_EQ(column->value(1), orv::UNDEFINED_DOUBLE);
    EXPECT_EQ(column->maximum(), column->value(0));
    EXPECT_EQ(scalarPart(info, 0, 2)->value(0), modelValue(2, model.pressure, 2, 0, 0));
}

TEST_F(CustomResultGeneratorTest, RefusedItemsAreUndefinedInAllComponents) {
    const ResultInfo info = sumOf("x", {model.stress});
    orv::PtrRef<SumOfInputs> function(new SumOfInputs);
    function->refusedCall = 1;
    steps->setFunction(function.get());
    EXPECT_TRUE(steps->generate(model.source.get(), info, info.customResultArguments(), state));
    const DataPartValues* base = group(0)->find(info)->values(0);
    EXPECT_EQ(std::count(base->span().begin(), base->span().end(), orv::UNDEFINED_DOUBLE), 6);
}

/// A source with one part of `nodeCount` nodes and a result of that type whose doubles count from 0.
struct LongPart {
    LongPart(ResultType type, std::size_t nodeCount) : source(new DataSourceMemory(1)) {
        source->addGeometry();
        source->addPart(0, "long")->nodes()->set(std::vector<double>(3 * nodeCount), {});
        source->addState(StateInfo(1, "", StateInfo::TIME, 0));
        info = source->addResult(type, "counting", PER_NODE);
        std::vector<double> values(nodeCount * doublesPerItem(type));
        for (std::size_t i = 0; i < values.size(); ++i) {
            values[i] = static_cast<double>(i);
        }
        source->setValues(1, info, 0, 0, values, nullptr);
    }

    orv::PtrRef<DataSourceMemory> source;
    ResultInfo info;
};

TEST_F(CustomResultGeneratorTest, PartsMayHaveAnyNumberOfItems) {
    for (std::size_t nodeCount : {1u, 511u, 512u, 513u, 1024u, 2000u}) {
        for (ResultType type : {SCALAR, VECTOR, SYMMETRIC_TENSOR}) {
            const LongPart part(type, nodeCount);
            DataState* only = part.source->state(0);
            const ResultInfo sum = sumOf("x", {part.info, part.info});
            ASSERT_TRUE(CustomResultGenerator::compute(part.source.get(), sum, only));
            const DataPartValues* values = only->results(only->geometry(0))->find(sum)->values(0);
            ASSERT_EQ(values->itemCount(), nodeCount);
            for (std::size_t i = 0; i < values->span().size(); ++i) {
                ASSERT_EQ(values->span()[i], 2.0 * static_cast<double>(i));
            }
        }
    }
}

TEST_F(CustomResultGeneratorTest, RangeCoversAllItemsOfALongPart) {
    const LongPart part(SCALAR, 2000);
    DataState* only = part.source->state(0);
    const ResultInfo sum = sumOf("x", {part.info, part.info});
    for (int run = 0; run < 2; ++run) {
        ASSERT_TRUE(CustomResultGenerator::compute(part.source.get(), sum, only));
        const auto* values = static_cast<const DataPartScalar*>(only->results(only->geometry(0))->find(sum)->values(0));
        EXPECT_EQ(values->minimum(), 0.0);
        EXPECT_EQ(values->maximum(), 3998.0);
    }
}

TEST_F(CustomResultGeneratorTest, RangeIsThatOfTheLatestRun) {
    orv::PtrRef<CustomResultGenerator> generator(new CustomResultGenerator(1));
    const ResultInfo info = sumOf("x", {model.pressure}, generator);
    ASSERT_TRUE(compute(info));
    class Zero : public CustomResultFunction {
        bool computeItem(const std::vector<const double*>&, double* output) override {
            *output = 0;
            return true;
        }
    };
    generator->setFunction(new Zero);
    ASSERT_TRUE(compute(info));
    EXPECT_EQ(scalarPart(info, 0, 1)->minimum(), 0.0);
    EXPECT_EQ(scalarPart(info, 0, 1)->maximum(), 0.0);
}

TEST_F(CustomResultGeneratorTest, FailsWhenCountsDiffer) {
    EXPECT_FALSE(compute(sumOf("mixed", {model.temperature, model.pressure})));
    EXPECT_FALSE(compute(sumOf("mixed", {model.pressure, model.temperature})));
}

TEST_F(CustomResultGeneratorTest, FailsWhenCountsDoNotFitTheMappingOfTheResult) {
    orv::PtrRef<CustomResultGenerator> generator(new CustomResultGenerator(1));
    generator->setFunction(new SumOfInputs);
    std::vector<ResultInfo> arguments = {model.temperature};
    EXPECT_FALSE(compute(ResultInfo(SCALAR, "x", PER_ELEMENT, arguments, generator.get())));
}

TEST_F(CustomResultGeneratorTest, FailsWithoutALoadedArgument) {
    state = model.state(1); // Which has no velocity.
    EXPECT_FALSE(compute(sumOf("x", {model.velocity})));
}

TEST_F(CustomResultGeneratorTest, FailsForAResultWithoutAType) {
    orv::PtrRef<CustomResultGenerator> generator(new CustomResultGenerator(1));
    generator->setFunction(new SumOfInputs);
    std::vector<ResultInfo> arguments = {model.temperature};
    EXPECT_FALSE(compute(ResultInfo(NO_RESULT_TYPE, "x", PER_NODE, arguments, generator.get())));
}

TEST_F(CustomResultGeneratorTest, ComputingNeedsAGenerator) {
    std::vector<ResultInfo> none;
    EXPECT_FALSE(compute(ResultInfo(SCALAR, "x", PER_NODE, none, nullptr)));
    EXPECT_FALSE(compute(model.pressure));
}

TEST_F(CustomResultGeneratorTest, ArgumentsMustBeAsManyAndOfTheTypesThatWereSet) {
    orv::PtrRef<Steps> two(new Steps(2));
    EXPECT_EQ(two->argumentCount(), 2u);
    EXPECT_FALSE(two->checkArguments({model.pressure}));
    EXPECT_FALSE(two->checkArguments({model.pressure, model.pressure, model.pressure}));
    EXPECT_TRUE(two->checkArguments({model.pressure, model.stress}));
    two->setArgumentType(1, VECTOR);
    EXPECT_FALSE(two->checkArguments({model.pressure, model.stress}));
    EXPECT_TRUE(two->checkArguments({model.pressure, model.velocity}));
}

TEST_F(CustomResultGeneratorTest, ArgumentTypeBeyondTheCountIsAnAssertion) {
    AssertRecorder recorder;
    steps->setArgumentType(1, VECTOR);
    EXPECT_EQ(recorder.take(), (std::vector<FailedAssert>{
                                   {"OrvUnstructGrid/CustomResultGenerator", "argumentIndex < argumentCount()", {}}}));
    EXPECT_TRUE(steps->checkArguments({model.pressure}));
}

TEST_F(CustomResultGeneratorTest, GenerateChecksItsArguments) {
    steps->setFunction(new SumOfInputs);
    steps->setArgumentType(0, VECTOR);
    EXPECT_FALSE(steps->generate(model.source.get(), sumOf("x", {model.pressure}), {model.pressure}, state));
}

TEST_F(CustomResultGeneratorTest, ComputesCustomArgumentsOnce) {
    orv::PtrRef<CountingGenerator> generator(new CountingGenerator(2));
    const ResultInfo inner = sumOf("inner", {model.pressure, model.pressure}, generator);
    const ResultInfo outer = sumOf("outer", {inner, inner});
    ASSERT_TRUE(compute(outer));
    EXPECT_EQ(scalarPart(outer, 0, 1)->value(1), 4 * modelValue(2, model.pressure, 1, 1, 0));
    ASSERT_TRUE(compute(sumOf("another", {inner})));
    EXPECT_EQ(generator->runs, 1);
}

TEST_F(CustomResultGeneratorTest, AnArgumentThatAGeometryLacksIsComputedAgain) {
    orv::PtrRef<CountingGenerator> generator(new CountingGenerator(1));
    const ResultInfo inner = sumOf("inner", {model.pressure}, generator);
    ASSERT_TRUE(steps->computeCustomArguments(model.source.get(), {inner}, state));
    group(1)->remove(inner);
    ASSERT_TRUE(steps->computeCustomArguments(model.source.get(), {inner}, state));
    EXPECT_EQ(generator->runs, 2);
}

/// Watches how many generate() calls stand inside each other.
class NestingGenerator : public CustomResultGenerator {
public:
    using CustomResultGenerator::CustomResultGenerator;

    bool generate(const DataSource* dataSource, const ResultInfo& result, const std::vector<ResultInfo>& arguments,
                  DataState* state) override {
        deepest = std::max(deepest, ++depth);
        const bool done = CustomResultGenerator::generate(dataSource, result, arguments, state);
        --depth;
        return done;
    }

    int depth = 0;
    int deepest = 0;
};

TEST_F(CustomResultGeneratorTest, ComputesDeepArgumentsOneAfterTheOther) {
    orv::PtrRef<NestingGenerator> generator(new NestingGenerator(1));
    ResultInfo deep = model.pressure;
    for (int i = 0; i < 100; ++i) {
        deep = sumOf("x", {deep}, generator);
    }
    ASSERT_TRUE(steps->computeCustomArguments(model.source.get(), {deep}, state));
    EXPECT_EQ(scalarPart(deep, 0, 1)->value(1), modelValue(2, model.pressure, 1, 1, 0));
    EXPECT_EQ(generator->deepest, 1);
}

TEST_F(CustomResultGeneratorTest, CustomArgumentsThatFailEndIt) {
    std::vector<ResultInfo> none;
    const ResultInfo hopeless(SCALAR, "x", PER_NODE, none, nullptr);
    EXPECT_FALSE(steps->computeCustomArguments(model.source.get(), {model.pressure, hopeless}, state));
    EXPECT_FALSE(compute(sumOf("y", {hopeless})));
    EXPECT_FALSE(steps->computeCustomArguments(model.source.get(), {model.pressure}, nullptr));
    EXPECT_TRUE(steps->computeCustomArguments(model.source.get(), {}, state));
}

TEST_F(CustomResultGeneratorTest, GathersInputsByKindInTheOrderOfArguments) {
    Steps::InputDataResults inputs;
    const std::vector<ResultInfo> arguments = {model.stress, model.pressure, model.velocity, model.displacement,
                                               model.temperature};
    ASSERT_TRUE(steps->gatherInputDataResults(group(0), arguments, 3, &inputs));
    ASSERT_EQ(inputs.scalars.size(), 2u);
    EXPECT_EQ(inputs.scalars[0], group(0)->find(model.pressure));
    EXPECT_EQ(inputs.scalars[1], group(0)->find(model.temperature));
    ASSERT_EQ(inputs.vectors.size(), 1u);
    EXPECT_EQ(inputs.vectors[0], group(0)->find(model.velocity));
    ASSERT_EQ(inputs.displacements.size(), 1u);
    EXPECT_EQ(inputs.displacements[0], group(0)->find(model.displacement));
    ASSERT_EQ(inputs.symmetricTensors.size(), 1u);
    EXPECT_EQ(inputs.symmetricTensors[0], group(0)->find(model.stress));

    Steps::InputValueData data;
    ASSERT_TRUE(steps->gatherInputValuePointers(arguments, 1, inputs, &data));
    // "Column": 2 cubes on 12 nodes.
    EXPECT_EQ(data.counts, (std::vector<unsigned long>{2, 2, 12, 12, 12}));
    EXPECT_EQ(data.dimensions, (std::vector<unsigned long>{6, 1, 3, 3, 1}));
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        EXPECT_EQ(data.values[i], group(0)->find(arguments[i])->values(1)->values());
    }
}

TEST_F(CustomResultGeneratorTest, GatheringReplacesWhatWasGatheredBefore) {
    Steps::InputDataResults inputs;
    Steps::InputValueData data;
    for (int i = 0; i < 2; ++i) {
        ASSERT_TRUE(steps->gatherInputDataResults(group(0), {model.pressure}, 3, &inputs));
        ASSERT_TRUE(steps->gatherInputValuePointers({model.pressure}, 0, inputs, &data));
    }
    EXPECT_EQ(inputs.scalars.size(), 1u);
    EXPECT_EQ(data.values.size(), 1u);
}

TEST_F(CustomResultGeneratorTest, GatheringInputsFails) {
    Steps::InputDataResults inputs;
    EXPECT_FALSE(steps->gatherInputDataResults(nullptr, {model.pressure}, 3, &inputs));
    EXPECT_FALSE(steps->gatherInputDataResults(group(0), {model.pressure}, 2, &inputs));
    EXPECT_FALSE(steps->gatherInputDataResults(group(0), {ResultInfo()}, 3, &inputs));
    EXPECT_FALSE(steps->gatherInputDataResults(group(0), {ResultInfo(VECTOR, 9, "no", PER_NODE)}, 3, &inputs));
}

TEST_F(CustomResultGeneratorTest, GatheringPointersFailsWithoutThePart) {
    Steps::InputDataResults inputs;
    Steps::InputValueData data;
    ASSERT_TRUE(steps->gatherInputDataResults(group(0), {model.pressure}, 3, &inputs));
    EXPECT_FALSE(steps->gatherInputValuePointers({model.pressure}, 3, inputs, &data));
    EXPECT_FALSE(steps->gatherInputValuePointers({model.pressure, model.pressure}, 0, inputs, &data));
    EXPECT_FALSE(steps->gatherInputValuePointers({ResultInfo()}, 0, inputs, &data));
}

TEST_F(CustomResultGeneratorTest, OutputIsFoundOrMadeByType) {
    Steps::OutputDataResult output;
    for (const ResultInfo& info : {model.pressure, model.velocity, model.displacement, model.stress}) {
        ASSERT_TRUE(steps->getOuputDataResult(group(0), info, &output));
        EXPECT_EQ(output.scalar != nullptr, info.type() == SCALAR);
        EXPECT_EQ(output.vector != nullptr, info.type() == VECTOR);
        EXPECT_EQ(output.displacement != nullptr, info.type() == DISPLACEMENT);
        EXPECT_EQ(output.symmetricTensor != nullptr, info.type() == SYMMETRIC_TENSOR);
    }
    EXPECT_EQ(output.symmetricTensor, group(0)->find(model.stress));
    const ResultInfo made = sumOf("new", {model.velocity});
    ASSERT_TRUE(steps->getOuputDataResult(group(0), made, &output));
    EXPECT_EQ(output.vector, group(0)->find(made));
    EXPECT_FALSE(steps->getOuputDataResult(nullptr, made, &output));
    EXPECT_FALSE(steps->getOuputDataResult(group(0), ResultInfo(), &output));
    EXPECT_EQ(output.vector, nullptr);
}

TEST_F(CustomResultGeneratorTest, OutputPointerHasRoomForTheItems) {
    for (const ResultInfo& like : {model.pressure, model.velocity, model.displacement, model.stress}) {
        const ResultInfo made = sumOf("new", {like});
        Steps::OutputDataResult output;
        Steps::OutputValueData data;
        ASSERT_TRUE(steps->getOuputDataResult(group(0), made, &output));
        ASSERT_TRUE(steps->getOutputValuePointer(2, output, {}, 9, &data));
        EXPECT_EQ(data.values, group(0)->find(made)->values(2)->values());
        EXPECT_NE(data.values, nullptr);
        EXPECT_EQ(data.dimension, doublesPerItem(like.type()));
        EXPECT_EQ(data.count, 9u);
        ASSERT_TRUE(steps->getOutputValuePointer(2, output, {}, 0, &data));
        EXPECT_EQ(data.values, nullptr);
        EXPECT_EQ(data.count, 0u);
        EXPECT_FALSE(steps->getOutputValuePointer(3, output, {}, 9, &data));
    }
    Steps::OutputValueData data;
    EXPECT_FALSE(steps->getOutputValuePointer(0, {}, {}, 1, &data));
}

TEST_F(CustomResultGeneratorTest, HoldsItsFunction) {
    orv::PtrRef<SumOfInputs> function(new SumOfInputs);
    steps->setFunction(function.get());
    EXPECT_EQ(function->refCount(), 2);
    steps->setFunction(nullptr);
    EXPECT_EQ(function->refCount(), 1);
}

} // namespace
