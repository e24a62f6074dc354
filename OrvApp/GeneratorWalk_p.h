#pragma once

#include "LibCore/rvfAssert.h"
#include "OrvUnstructGrid/CustomResultGenerator.h"
#include "OrvUnstructGrid/DataSource.h"

#include <algorithm>
#include <cstddef>
#include <vector>

namespace orv::app {

/// One part, as a generator meets it on its walk over a state.
struct GeneratorPart {
    const ug::DataPart* part;
    const ug::CustomResultGenerator::InputValueData& input;
    const ug::CustomResultGenerator::OutputValueData& output; ///< A null pointer in it: nothing is to be written.
    ug::DataPartScalar* outputScalar;                         ///< The same part, null unless the output is a scalar.

    void refreshRange() const {
        if (outputScalar) {
            outputScalar->updateMinMax();
        }
    }
};

/// What the generators share that override generate(): the steps of their base class, in order, over all geometries
/// and parts of a state. They make it a friend, as the steps are protected.
class GeneratorWalk {
public:
    /// Asserts "state" and "dataSource", then checks the arguments and has the custom ones computed.
    template <class Generator>
    static bool begin(const Generator& generator, const ug::DataSource* dataSource,
                      const std::vector<ug::ResultInfo>& arguments, ug::DataState* state) {
        RVF_ASSERT(state);
        RVF_ASSERT(dataSource);
        return generator.checkArguments(arguments) && generator.computeCustomArguments(dataSource, arguments, state);
    }

    static const ug::DataSourceDirectory* directoryOf(const ug::DataSource* dataSource) {
        return dataSource ? dataSource->directory() : nullptr;
    }

    GeneratorWalk(const ug::ResultInfo& result, const std::vector<ug::ResultInfo>& arguments)
        : m_result(result), m_arguments(arguments) {}

    /// Visits each part with its input and output gathered.
    /// @param state a DataState, or in tests one that breaks its promises
    /// @param countOutputItems called with a part and its input: the items that the output has there
    /// @param visit called with a GeneratorPart; false ends the walk
    /// @return false when a step, the visit, or inputs that differ in their number of items ended it
    template <class Generator, class State, class CountOutputItems, class Visit>
    bool forEachPart(const Generator& generator, State* state, CountOutputItems countOutputItems, Visit visit) const {
        for (std::size_t i = 0; i < state->geometryCount(); ++i) {
            if (!walkGeometry(generator, state, i, countOutputItems, visit)) {
                return false;
            }
        }
        return true;
    }

private:
    template <class Generator, class State, class CountOutputItems, class Visit>
    bool walkGeometry(const Generator& generator, State* state, std::size_t geometryIndex,
                      CountOutputItems& countOutputItems, Visit& visit) const {
        const auto* geo = state->geometry(geometryIndex);
        RVF_ASSERT(geo);
        const unsigned long partCount = geo->partCount();
        ug::DataResultGroup* group = state->results(geo);
        RVF_ASSERT(group);
        ug::CustomResultGenerator::InputDataResults inputs;
        ug::CustomResultGenerator::OutputDataResult output;
        if (!generator.gatherInputDataResults(group, m_arguments, partCount, &inputs) ||
            !generator.getOuputDataResult(group, m_result, &output)) {
            return false;
        }
        for (unsigned long p = 0; p < partCount; ++p) {
            const ug::DataPart* geoPart = geo->part(p);
            RVF_ASSERT(geoPart);
            if (!walkPart(generator, geoPart, p, inputs, output, countOutputItems, visit)) {
                return false;
            }
        }
        return true;
    }

    template <class Generator, class CountOutputItems, class Visit>
    bool walkPart(const Generator& generator, const ug::DataPart* part, unsigned long partIndex,
                  const ug::CustomResultGenerator::InputDataResults& inputs,
                  const ug::CustomResultGenerator::OutputDataResult& output, CountOutputItems& countOutputItems,
                  Visit& visit) const {
        const std::size_t argCount = m_arguments.size();
        ug::CustomResultGenerator::InputValueData inputValueData;
        ug::CustomResultGenerator::OutputValueData outputValueData;
        if (!generator.gatherInputValuePointers(m_arguments, partIndex, inputs, &inputValueData)) {
            return false;
        }
        RVF_ASSERT(inputValueData.counts.size() == argCount);
        const std::vector<unsigned long>& counts = inputValueData.counts;
        if (std::adjacent_find(counts.begin(), counts.end(), std::not_equal_to<>()) != counts.end()) {
            return false;
        }
        if (!generator.getOutputValuePointer(partIndex, output, inputValueData, countOutputItems(*part, inputValueData),
                                             &outputValueData)) {
            return false;
        }
        ug::DataPartScalar* outputScalar = output.scalar ? output.scalar->part(partIndex) : nullptr;
        return visit(GeneratorPart{part, inputValueData, outputValueData, outputScalar});
    }

    const ug::ResultInfo& m_result;
    const std::vector<ug::ResultInfo>& m_arguments;
};

} // namespace orv::app
