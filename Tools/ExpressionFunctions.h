#pragma once

#include "OrvUnstructGrid/ResultInfo.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace orvapp {

/// A function that expressions can call.
struct ExpressionFunction {
    enum Arguments {
        RESULT,            ///< f(A)
        RESULT_AND_INDEX,  ///< f(A, 0)
        RESULT_AND_NUMBER, ///< f(A, 2.5)
        RESULT_AND_FLAG,   ///< f(A) or f(A, true)
        RESULTS            ///< f(A, B, C)
    };

    /// What the function makes of results: one, or a list from which an index chooses.
    /// @param parameter the index, the number, or 1 for the flag `true`
    using OfResults = std::vector<orv::ug::ResultInfo> (*)(const std::vector<orv::ug::ResultInfo>& arguments,
                                                           double parameter);
    /// What it makes of one number, be it a result's component or a plain number.
    using OfNumber = double (*)(double value, double parameter);

    const char* name;
    const char* parameters; ///< As help and messages show them, such as "(A, INDEX)".
    const char* meaning;    ///< A line of help.
    Arguments arguments;
    std::span<const orv::ug::ResultType> types; ///< Of results that it takes.
    orv::ug::ResultMapping mapping;             ///< Of results that it takes; UNKNOWN_MAPPING for any.
    OfResults ofResults;                        ///< Null when ofNumber is set, and the other way round.
    OfNumber ofNumber;

    /// "extractComponent(A, INDEX)"
    std::string signature() const;
};

std::span<const ExpressionFunction> expressionFunctions();

/// Null when there is no such function.
const ExpressionFunction* findExpressionFunction(std::string_view name);

} // namespace orvapp
