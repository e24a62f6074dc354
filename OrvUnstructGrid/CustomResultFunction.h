#pragma once

#include "LibCore/rvfExport.h"
#include "OrvCore/RefCountedObject.h"

#include <cstddef>
#include <vector>

namespace orv::ug {

/// What computes one item of a custom result from one item of each of its arguments.
class ORV_API CustomResultFunction : public RefCountedObject {
public:
    CustomResultFunction();
    ~CustomResultFunction() override;

    /// @param inputItems for each argument, the first double of its item
    /// @param outputItem outputDimension() doubles to write
    /// @return false when the number of inputs is not the expected one
    virtual bool computeItem(const std::vector<const double*>& inputItems, double* outputItem) = 0;

    /// The doubles in one output item: 0 until the generator that runs the function has told it.
    std::size_t outputDimension() const;

    /// For the generator: the doubles per item of the result that the function is about to serve.
    void setOutputDimension(std::size_t dimension);

private:
    std::size_t m_outputDimension = 0;
};

} // namespace orv::ug
