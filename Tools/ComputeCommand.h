#pragma once

#include "Tools/ValuesCommand.h"

#include <string>

namespace orvapp {

struct ComputeOptions {
    std::string expression;
    ValuesOptions values; ///< `result` is the name that the computed result gets.
};

/// `orvapp compute`: computes a result from those of the file and tells of it what `orvapp values` tells of a result.
/// Throws CommandError or OutputClosed.
void runCompute(const ComputeOptions& options);

} // namespace orvapp
