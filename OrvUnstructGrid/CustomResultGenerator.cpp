#include "OrvUnstructGrid/CustomResultGenerator.h"

#include "LibCore/rvfAssert.h"
#include "OrvUnstructGrid/DataGeometry.h"
#include "OrvUnstructGrid/DataResultGroup.h"
#include "OrvUnstructGrid/DataState.h"
#include "OrvUnstructGrid/ResultWalk_p.h"

#include <algorithm>

namespace orv::ug {
namespace {

template <class Result>
bool appendLoaded(const Result* result, unsigned long partCount, std::vector<const Result*>* results) {
    if (!result || result->partCount() != partCount) {
        return false;
    }
    results->push_back(result);
    return true;
}

template <class Result>
const DataPartValues* partOf(const std::vector<const Result*>& results, std::size_t position, std::size_t partIndex) {
    return position < results.size() ? results[position]->part(partIndex) : nullptr;
}

DataResult* resultOf(const CustomResultGenerator::OutputDataResult& output) {
    if (output.scalar) {
        return output.scalar;
    }
    if (output.vector) {
        return output.vector;
    }
    if (output.displacement) {
        return output.displacement;
    }
    return output.symmetricTensor;
}

} // namespace

CustomResultGenerator::CustomResultGenerator(unsigned long argumentCount)
    : m_argumentTypes(argumentCount, NO_RESULT_TYPE) {}

CustomResultGenerator::~CustomResultGenerator() = default;

void CustomResultGenerator::setFunction(CustomResultFunction* function) {
    m_function = function;
}

void CustomResultGenerator::setArgumentType(unsigned long argumentIndex, ResultType type) {
    RVF_ASSERT(argumentIndex < argumentCount());
    if (argumentIndex < argumentCount()) {
        m_argumentTypes[argumentIndex] = type;
    }
}

unsigned long CustomResultGenerator::argumentCount() const {
    return m_argumentTypes.size();
}

bool CustomResultGenerator::generate(const DataSource* dataSource, const ResultInfo& result,
                                     const std::vector<ResultInfo>& arguments, DataState* state) {
    RVF_ASSERT(state);
    RVF_ASSERT(dataSource);
    RVF_ASSERT(m_function);
    if (!state || !dataSource || !m_function) {
        return false;
    }
    if (!checkArguments(arguments) || !computeCustomArguments(dataSource, arguments, state)) {
        return false;
    }
    m_function->setOutputDimension(doublesPerItem(result.type()));
    for (std::size_t i = 0; i < state->geometryCount(); ++i) {
        if (!generateGeometry(result, arguments, state->geometry(i), state)) {
            return false;
        }
    }
    return true;
}

bool CustomResultGenerator::compute(const DataSource* dataSource, const ResultInfo& result, DataState* state) {
    // A ResultInfo shares its generator as const with all its copies, while generate() may change a subclass.
    CustomResultGenerator* generator = const_cast<CustomResultGenerator*>(result.customResultGenerator());
    return generator && generator->generate(dataSource, result, result.customResultArguments(), state);
}

bool CustomResultGenerator::checkArguments(const std::vector<ResultInfo>& arguments) const {
    return std::equal(
        arguments.begin(), arguments.end(), m_argumentTypes.begin(), m_argumentTypes.end(),
        [](const ResultInfo& argument, ResultType type) { return type == NO_RESULT_TYPE || argument.type() == type; });
}

bool CustomResultGenerator::computeCustomArguments(const DataSource* dataSource,
                                                   const std::vector<ResultInfo>& arguments, DataState* state) const {
    if (!state) {
        return false;
    }
    auto isMissing = [state](const ResultInfo& result) { return result.isCustom() && !state->hasLoaded(result); };
    auto computeMissing = [&](const ResultInfo& result) {
        return !isMissing(result) || compute(dataSource, result, state);
    };
    ResultWalk walk;
    return std::all_of(arguments.begin(), arguments.end(),
                       [&](const ResultInfo& argument) { return walk.walk(argument, isMissing, computeMissing); });
}

bool CustomResultGenerator::gatherInputDataResults(const DataResultGroup* group,
                                                   const std::vector<ResultInfo>& arguments, unsigned long partCount,
                                                   InputDataResults* out) const {
    *out = InputDataResults();
    if (!group) {
        return false;
    }
    return std::all_of(arguments.begin(), arguments.end(), [&](const ResultInfo& argument) {
        const int id = argument.id();
        switch (argument.type()) {
        case SCALAR:
            return appendLoaded(group->scalar(group->scalarIndex(id)), partCount, &out->scalars);
        case VECTOR:
            return appendLoaded(group->vector(group->vectorIndex(id)), partCount, &out->vectors);
        case DISPLACEMENT:
            return appendLoaded(group->displacement(group->displacementIndex(id)), partCount, &out->displacements);
        case SYMMETRIC_TENSOR:
            return appendLoaded(group->symmetricTensor(group->symmetricTensorIndex(id)), partCount,
                                &out->symmetricTensors);
        case NO_RESULT_TYPE:
            break;
        }
        return false;
    });
}

bool CustomResultGenerator::getOuputDataResult(DataResultGroup* group, const ResultInfo& result,
                                               OutputDataResult* out) const {
    *out = OutputDataResult();
    DataResult* output = group ? group->findOrAdd(result) : nullptr;
    if (!output) {
        return false;
    }
    out->scalar = dynamic_cast<DataResultScalar*>(output);
    out->vector = dynamic_cast<DataResultVector*>(output);
    out->displacement = dynamic_cast<DataResultDisplacement*>(output);
    out->symmetricTensor = dynamic_cast<DataResultSymmetricTensor*>(output);
    return true;
}

bool CustomResultGenerator::gatherInputValuePointers(const std::vector<ResultInfo>& arguments, unsigned long partIndex,
                                                     const InputDataResults& inputs, InputValueData* out) const {
    *out = InputValueData();
    std::size_t scalars = 0;
    std::size_t vectors = 0;
    std::size_t displacements = 0;
    std::size_t symmetricTensors = 0;
    for (const ResultInfo& argument : arguments) {
        const DataPartValues* part = nullptr;
        switch (argument.type()) {
        case SCALAR:
            part = partOf(inputs.scalars, scalars++, partIndex);
            break;
        case VECTOR:
            part = partOf(inputs.vectors, vectors++, partIndex);
            break;
        case DISPLACEMENT:
            part = partOf(inputs.displacements, displacements++, partIndex);
            break;
        case SYMMETRIC_TENSOR:
            part = partOf(inputs.symmetricTensors, symmetricTensors++, partIndex);
            break;
        case NO_RESULT_TYPE:
            break;
        }
        if (!part) {
            return false;
        }
        out->values.push_back(part->values());
        out->dimensions.push_back(part->dimension());
        out->counts.push_back(part->itemCount());
    }
    return true;
}

bool CustomResultGenerator::getOutputValuePointer(unsigned long partIndex, const OutputDataResult& output,
                                                  const InputValueData&, unsigned long itemCount,
                                                  OutputValueData* out) const {
    *out = OutputValueData();
    DataResult* result = resultOf(output);
    DataPartValues* part = result ? result->values(partIndex) : nullptr;
    if (!part) {
        return false;
    }
    part->allocate(itemCount);
    *out = {part->values(), part->dimension(), part->itemCount()};
    return true;
}

bool CustomResultGenerator::generateGeometry(const ResultInfo& result, const std::vector<ResultInfo>& arguments,
                                             const DataGeometry* geometry, DataState* state) {
    DataResultGroup* group = state->results(geometry);
    InputDataResults inputs;
    OutputDataResult output;
    if (!gatherInputDataResults(group, arguments, geometry->partCount(), &inputs) ||
        !getOuputDataResult(group, result, &output)) {
        return false;
    }
    for (std::size_t i = 0; i < geometry->partCount(); ++i) {
        const std::size_t itemCount = geometry->part(i)->itemCount(result.resultMapping());
        if (!generatePart(i, itemCount, arguments, inputs, output)) {
            return false;
        }
    }
    return true;
}

bool CustomResultGenerator::generatePart(unsigned long partIndex, unsigned long itemCount,
                                         const std::vector<ResultInfo>& arguments, const InputDataResults& inputs,
                                         const OutputDataResult& output) {
    InputValueData input;
    OutputValueData out;
    if (!gatherInputValuePointers(arguments, partIndex, inputs, &input) ||
        std::any_of(input.counts.begin(), input.counts.end(),
                    [=](unsigned long count) { return count != itemCount; }) ||
        !getOutputValuePointer(partIndex, output, input, itemCount, &out)) {
        return false;
    }
    computeBlocks({input.values, input.dimensions}, out, output.scalar ? output.scalar->part(partIndex) : nullptr);
    return true;
}

// The range of a block is taken while the block is still in the processor's nearest cache: a second pass over all items
// would cost as much as the arithmetic.
void CustomResultGenerator::computeBlocks(CustomResultFunction::InputItems input, const OutputValueData& out,
                                          DataPartScalar* scalar) {
    constexpr unsigned long blockSize = 512;
    if (scalar) {
        scalar->clearMinMax();
    }
    double* output = out.values;
    for (unsigned long begin = 0; begin < out.count; begin += blockSize) {
        const unsigned long count = std::min(blockSize, out.count - begin);
        m_function->computeItems(input, count, output);
        if (scalar) {
            scalar->extendMinMax({output, count});
        }
        output += count * out.dimension;
        for (std::size_t k = 0; k < input.values.size(); ++k) {
            input.values[k] += count * input.dimensions[k];
        }
    }
}

} // namespace orv::ug
