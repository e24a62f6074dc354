#include "Tools/ComputeCommand.h"

#include "OrvApp/ResultOperators.h"
#include "Tools/Expression.h"
#include "Tools/ExpressionResult.h"
#include "Tools/PasswordFile.h"
#include "Tools/ValuesSelection.h"

namespace orvapp {

namespace {

/// The result as a custom one: a result of the file, which an expression may just name, cannot get another name.
orv::ug::ResultInfo custom(const orv::ug::ResultInfo& info) {
    return info.isCustom() ? info : info * 1.0;
}

} // namespace

void runCompute(const ComputeOptions& options) {
    const Expression expression = parseExpression(options.expression);
    const ResultFile file(options.values.file, readPassword(options.values.passwordFile));
    const ExpressionResult built = buildResult(expression, file.results());
    const orv::ug::ResultInfo result = file.add(custom(built.info), options.values.result);
    reportValues(file, selectValues(file, result, options.values), options.values);
}

} // namespace orvapp
