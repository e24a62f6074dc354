#pragma once

#include "OrvApp/MathFunctionCallBack.h"
#include "OrvUnstructGrid/ResultInfo.h"

#include <memory>
#include <string>
#include <vector>

namespace orvapp {

struct Expression;

/// What an expression describes in the current model.
struct ExpressionResult {
    /// Custom, and not registered yet, except for an expression that is just a result's name.
    orv::ug::ResultInfo info;

    /// What `info` calls when it is computed: keep it as long as that may happen.
    std::vector<std::unique_ptr<orv::app::MathFunctionCallBack>> callbacks;
};

/// Puts an expression together with the result operators. An operator asserts what it is given; so what does not fit is
/// refused here, in front of it.
///
/// Numbers among themselves are computed at once. A missing value makes missing what is computed from it, but for the
/// smallest of several results at a place, which leaves it out, and minValue() and its like, which leave it out of all
/// places; and a division by zero or a number that is not finite among plain numbers is refused.
///
/// Steps in between bear their own text as their name, shortened: the names that operators compose grow with the square
/// of the length of a sum.
/// @param results those that names stand for
/// Throws ExpressionError.
ExpressionResult buildResult(const Expression& expression, const std::vector<orv::ug::ResultInfo>& results);

/// The same for what shows one number at a place.
/// @param shower and its verb, for the message, such as "a curve shows"
/// Throws CommandError, too when the result is no scalar, and tells how to make one of it.
ExpressionResult buildScalar(const Expression& expression, const std::vector<orv::ug::ResultInfo>& results,
                             const std::string& shower);

} // namespace orvapp
