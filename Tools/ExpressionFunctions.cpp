#include "Tools/ExpressionFunctions.h"

#include "OrvApp/ResultOperators.h"
#include "Tools/ItemFunctions.h"

#include <algorithm>
#include <cmath>

namespace orvapp {

namespace {

using orv::ug::ResultInfo;
using Results = std::vector<ResultInfo>;
using Function = ExpressionFunction;

constexpr orv::ug::ResultType ALL[] = {orv::ug::SCALAR, orv::ug::VECTOR, orv::ug::DISPLACEMENT,
                                       orv::ug::SYMMETRIC_TENSOR};
constexpr orv::ug::ResultType VECTORS[] = {orv::ug::VECTOR, orv::ug::DISPLACEMENT};
constexpr orv::ug::ResultType WITH_COMPONENTS[] = {orv::ug::VECTOR, orv::ug::DISPLACEMENT, orv::ug::SYMMETRIC_TENSOR};
constexpr orv::ug::ResultType TENSORS[] = {orv::ug::SYMMETRIC_TENSOR};
constexpr orv::ug::ResultMapping ANY = orv::ug::UNKNOWN_MAPPING;

Results vonMisesOf(const Results& arguments, double) {
    return {vonMises(arguments.front())};
}

Results principalsOf(const Results& arguments, double) {
    return principals(arguments.front());
}

Results l1NormOf(const Results& arguments, double) {
    return {withMissing(l1Norm(arguments.front()), arguments, Missing::BY_ITEM)};
}

Results l2NormOf(const Results& arguments, double) {
    return {withMissing(l2Norm(arguments.front()), arguments, Missing::BY_ITEM)};
}

Results componentOf(const Results& arguments, double index) {
    return {component(arguments.front(), std::size_t(index))};
}

Results averageOf(const Results& arguments, double) {
    return {withMissing(average(arguments), arguments, Missing::BY_COMPONENT)};
}

Results minOf(const Results& arguments, double) {
    return {min(arguments)};
}

Results maxOf(const Results& arguments, double) {
    return {max(arguments)};
}

Results minValueOf(const Results& arguments, double perPart) {
    return {minValue(arguments.front(), perPart != 0)};
}

Results maxValueOf(const Results& arguments, double perPart) {
    return {maxValue(arguments.front(), perPart != 0)};
}

Results averageValueOf(const Results& arguments, double perPart) {
    return {averageValue(arguments.front(), perPart != 0)};
}

Results toElementsOf(const Results& arguments, double) {
    return {converted(arguments.front(), toElementsArithmetic)};
}

Results toNodesOf(const Results& arguments, double) {
    return {converted(arguments.front(), toNodesArithmetic)};
}

constexpr Function ofResults(const char* name, const char* parameters, const char* meaning,
                             Function::Arguments arguments, std::span<const orv::ug::ResultType> types,
                             orv::ug::ResultMapping mapping, Function::OfResults function) {
    return {name, parameters, meaning, arguments, types, mapping, function, nullptr};
}

constexpr Function ofNumbers(const char* name, const char* meaning, Function::OfNumber function) {
    return {name, "(A)", meaning, Function::RESULT, ALL, ANY, nullptr, function};
}

constexpr Function FUNCTIONS[] = {
    ofResults("vonMises", "(TENSOR)", "equivalent stress after von Mises", Function::RESULT, TENSORS, ANY, vonMisesOf),
    ofResults("principals", "(TENSOR)[0]", "principal values: directions are [0] to [2], values [3] to [5]",
              Function::RESULT, TENSORS, ANY, principalsOf),
    ofResults("l2Norm", "(VECTOR)", "length of a vector or displacement", Function::RESULT, VECTORS, ANY, l2NormOf),
    ofResults("l1Norm", "(VECTOR)", "sum of the magnitudes of its components", Function::RESULT, VECTORS, ANY,
              l1NormOf),
    ofResults("extractComponent", "(A, INDEX)", "X Y Z are 0 to 2; XX YY ZZ XY YZ ZX are 0 to 5",
              Function::RESULT_AND_INDEX, WITH_COMPONENTS, ANY, componentOf),
    ofResults("min", "(A, B, ...)", "smallest at each place, component by component", Function::RESULTS, ALL, ANY,
              minOf),
    ofResults("max", "(A, B, ...)", "largest at each place, component by component", Function::RESULTS, ALL, ANY,
              maxOf),
    ofResults("average", "(A, B, ...)", "mean at each place, component by component", Function::RESULTS, ALL, ANY,
              averageOf),
    ofResults("minValue", "(A, PER_PART)", "smallest number of the state, everywhere; with true of each part",
              Function::RESULT_AND_FLAG, ALL, ANY, minValueOf),
    ofResults("maxValue", "(A, PER_PART)", "likewise the largest; 2.2e-308 when none is positive",
              Function::RESULT_AND_FLAG, ALL, ANY, maxValueOf),
    ofResults("averageValue", "(A, PER_PART)", "likewise the mean", Function::RESULT_AND_FLAG, ALL, ANY,
              averageValueOf),
    ofResults("toElementsArithmetic", "(A)", "per node to per element: mean of the element's nodes", Function::RESULT,
              ALL, orv::ug::PER_NODE, toElementsOf),
    ofResults("toNodesArithmetic", "(A)", "per element to per node: mean of the elements around", Function::RESULT, ALL,
              orv::ug::PER_ELEMENT, toNodesOf),
    ofNumbers("abs", "absolute value", [](double x, double) { return std::fabs(x); }),
    ofNumbers("sqrt", "square root", [](double x, double) { return std::sqrt(x); }),
    ofNumbers("exp", "e to the power of A", [](double x, double) { return std::exp(x); }),
    ofNumbers("log", "natural logarithm", [](double x, double) { return std::log(x); }),
    ofNumbers("log10", "logarithm to the base 10", [](double x, double) { return std::log10(x); }),
    ofNumbers("sin", "sine of radians", [](double x, double) { return std::sin(x); }),
    ofNumbers("cos", "cosine of radians", [](double x, double) { return std::cos(x); }),
    ofNumbers("tan", "tangent of radians", [](double x, double) { return std::tan(x); }),
    ofNumbers("asin", "arc sine in radians", [](double x, double) { return std::asin(x); }),
    ofNumbers("acos", "arc cosine in radians", [](double x, double) { return std::acos(x); }),
    ofNumbers("atan", "arc tangent in radians", [](double x, double) { return std::atan(x); }),
    {"pow", "(A, NUMBER)", "A to the power of a number", Function::RESULT_AND_NUMBER, ALL, ANY, nullptr,
     [](double x, double exponent) { return std::pow(x, exponent); }},
};

} // namespace

std::string ExpressionFunction::signature() const {
    return std::string(name) + parameters;
}

std::span<const ExpressionFunction> expressionFunctions() {
    return FUNCTIONS;
}

const ExpressionFunction* findExpressionFunction(std::string_view name) {
    const auto* found = std::find_if(std::begin(FUNCTIONS), std::end(FUNCTIONS),
                                     [name](const ExpressionFunction& function) { return function.name == name; });
    return found != std::end(FUNCTIONS) ? found : nullptr;
}

} // namespace orvapp
