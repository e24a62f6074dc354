#pragma once

#include "LibCore/rvfExport.h"
#include "OrvCore/PtrRef.h"
#include "OrvCore/RefCountedObject.h"
#include "OrvUnstructGrid/CustomResultFunction.h"
#include "OrvUnstructGrid/DataResult.h"
#include "OrvUnstructGrid/ResultInfo.h"

#include <vector>

namespace orv::ug {

class DataGeometry;
class DataResultGroup;
class DataSource;
class DataState;

/// What computes the values of a custom result in a state.
///
/// This class runs a per-item function over all items of all parts. A subclass that needs to see more than one item at
/// a time overrides generate() and walks the data with the same steps, which end it with false when they fail:
///
/// 1. checkArguments(), computeCustomArguments();
/// 2. for each geometry gatherInputDataResults(), getOuputDataResult();
/// 3. for each part gatherInputValuePointers(), getOutputValuePointer(), and the values are written.
class ORV_API CustomResultGenerator : public RefCountedObject {
public:
    /// The loaded input results, each kind in the order of the arguments of that kind.
    struct InputDataResults {
        std::vector<const DataResultScalar*> scalars;
        std::vector<const DataResultVector*> vectors;
        std::vector<const DataResultDisplacement*> displacements;
        std::vector<const DataResultSymmetricTensor*> symmetricTensors;
    };

    /// One part's input values, one entry for each argument.
    struct InputValueData {
        std::vector<const double*> values;     ///< The first double of the part; null when the part has no items.
        std::vector<unsigned long> dimensions; ///< The doubles in one item.
        std::vector<unsigned long> counts;     ///< The items in the part.
    };

    /// The result that is written; one pointer is set, by the type of the result.
    struct OutputDataResult {
        DataResultScalar* scalar = nullptr;
        DataResultVector* vector = nullptr;
        DataResultDisplacement* displacement = nullptr;
        DataResultSymmetricTensor* symmetricTensor = nullptr;
    };

    /// One part's output values.
    struct OutputValueData {
        double* values = nullptr;    ///< Null when nothing is to be written for this part.
        unsigned long dimension = 0; ///< The doubles in one item.
        unsigned long count = 0;     ///< The items in the part.
    };

    /// Argument types are not checked until setArgumentType() has named them.
    explicit CustomResultGenerator(unsigned long argumentCount);
    ~CustomResultGenerator() override;

    /// Takes a reference; null takes the function away.
    void setFunction(CustomResultFunction* function);

    /// Asserts "argumentIndex < argumentCount()"; nothing happens behind a failed assertion.
    void setArgumentType(unsigned long argumentIndex, ResultType type);

    unsigned long argumentCount() const;

    /// Writes the values of `result` into `state`. What the arguments rest on in the file must be loaded in the state;
    /// arguments that are custom are computed when they are not there, and stay. A result without arguments gets one
    /// item for each node or element, as its mapping says. Items that the function refuses are undefined, and the range
    /// of a scalar is refreshed.
    /// Asserts "state", "dataSource", "m_function"; false behind a failed assertion.
    /// @return false when the arguments do not fit the generator, lack values, or have other numbers of items than the
    ///         mapping of `result` asks for
    virtual bool generate(const DataSource* dataSource, const ResultInfo& result,
                          const std::vector<ResultInfo>& arguments, DataState* state);

    /// Has a custom result computed by its own generator, from its own arguments. False when it has none.
    static bool compute(const DataSource* dataSource, const ResultInfo& result, DataState* state);

protected:
    /// True when the arguments are as many as announced and of the types that were set.
    bool checkArguments(const std::vector<ResultInfo>& arguments) const;

    /// Has each argument that is custom, and not in the state yet, computed by its own generator, what it rests on
    /// first. An argument is in the state when all its geometries have it.
    bool computeCustomArguments(const DataSource* dataSource, const std::vector<ResultInfo>& arguments,
                                DataState* state) const;

    /// Finds the arguments' loaded results. False when one is not loaded or has not `partCount` parts.
    bool gatherInputDataResults(const DataResultGroup* group, const std::vector<ResultInfo>& arguments,
                                unsigned long partCount, InputDataResults* out) const;

    /// Finds or makes the output result in the group. The name is spelled so, and is to stay.
    bool getOuputDataResult(DataResultGroup* group, const ResultInfo& result, OutputDataResult* out) const;

    /// False when there is no such part.
    bool gatherInputValuePointers(const std::vector<ResultInfo>& arguments, unsigned long partIndex,
                                  const InputDataResults& inputs, InputValueData* out) const;

    /// Makes room for `itemCount` items in the output's part, whatever the input. A part without items gives a null
    /// pointer and true. False when there is no such part.
    bool getOutputValuePointer(unsigned long partIndex, const OutputDataResult& output, const InputValueData& input,
                               unsigned long itemCount, OutputValueData* out) const;

private:
    bool generateGeometry(const ResultInfo& result, const std::vector<ResultInfo>& arguments,
                          const DataGeometry* geometry, DataState* state);
    bool generatePart(unsigned long partIndex, unsigned long itemCount, const std::vector<ResultInfo>& arguments,
                      const InputDataResults& inputs, const OutputDataResult& output);
    void computeBlocks(CustomResultFunction::InputItems input, const OutputValueData& out, DataPartScalar* scalar);

    std::vector<ResultType> m_argumentTypes;
    PtrRef<CustomResultFunction> m_function;
};

} // namespace orv::ug
