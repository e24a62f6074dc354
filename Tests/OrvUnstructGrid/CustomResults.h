#pragma once

#include "OrvUnstructGrid/CustomResultGenerator.h"

#include <string>
#include <vector>

namespace orvtest {

/// Adds its inputs component by component; counts its calls.
class SumOfInputs : public orv::ug::CustomResultFunction {
public:
    bool computeItem(const std::vector<const double*>& inputItems, double* outputItem) override {
        ++calls;
        for (std::size_t c = 0; c < outputDimension(); ++c) {
            outputItem[c] = 0;
            for (const double* item : inputItems) {
                outputItem[c] += item[c];
            }
        }
        return calls != refusedCall;
    }

    int calls = 0;
    int refusedCall = -1; ///< The call that answers false.
};

/// A generator that counts how often it computes.
class CountingGenerator : public orv::ug::CustomResultGenerator {
public:
    using CustomResultGenerator::CustomResultGenerator;

    bool generate(const orv::ug::DataSource* dataSource, const orv::ug::ResultInfo& result,
                  const std::vector<orv::ug::ResultInfo>& arguments, orv::ug::DataState* state) override {
        ++runs;
        return CustomResultGenerator::generate(dataSource, result, arguments, state);
    }

    int runs = 0;
};

/// A custom result that adds its arguments, of the first one's type and mapping.
inline orv::ug::ResultInfo sumOf(const std::string& name, std::vector<orv::ug::ResultInfo> arguments,
                                 orv::PtrRef<orv::ug::CustomResultGenerator> generator = {}) {
    if (!generator) {
        generator = new orv::ug::CustomResultGenerator(arguments.size());
    }
    generator->setFunction(new SumOfInputs);
    return {arguments[0].type(), name, arguments[0].resultMapping(), arguments, generator.get()};
}

/// `first`, then a result that adds the previous one to itself, and so on: 2 to the power of `depth` times `first`.
inline orv::ug::ResultInfo doubled(orv::ug::ResultInfo first, int depth) {
    for (int i = 0; i < depth; ++i) {
        first = sumOf("x" + std::to_string(i), {first, first});
    }
    return first;
}

} // namespace orvtest
