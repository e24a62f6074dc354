#include "OrvApp/ResultOperators.h"

#include "LibCore/rvfAssert.h"
#include "OrvApp/ElementToNodeResultGenerator.h"
#include "OrvApp/MathFunctionCallBack.h"
#include "OrvApp/MinMaxAvgValueResultGenerator.h"
#include "OrvApp/Models.h"
#include "OrvApp/NodeToElementResultGenerator.h"
#include "OrvApp/ResultFunctions_p.h"
#include "OrvCore/Defines.h"
#include "OrvUnstructGrid/CustomResultGenerator.h"
#include "OrvUnstructGrid/UnstructGridModel.h"

#include <algorithm>

using namespace orv::ug;
using orv::PtrRef;
using orv::Str;

namespace {

void checkFourTypes(ResultType resultType, const char* message) {
    RVF_ASSERT_MSG(resultType == SCALAR || resultType == VECTOR || resultType == DISPLACEMENT ||
                       resultType == SYMMETRIC_TENSOR,
                   message);
}

void checkVectorTypes(ResultType resultType, const char* message) {
    RVF_ASSERT_MSG(resultType == VECTOR || resultType == DISPLACEMENT, message);
}

void checkAlike(const ResultInfo& first, const ResultInfo& second, const char* typesMessage,
                const char* mappingsMessage) {
    const ResultType resultType = first.type();
    RVF_ASSERT_MSG(resultType == second.type(), typesMessage);
    const ResultMapping resultMapping = first.resultMapping();
    RVF_ASSERT_MSG(resultMapping == second.resultMapping(), mappingsMessage);
}

bool hasCurrentDataSource() {
    UnstructGridModel* model = orv::app::Models::instance()->current();
    return model && model->dataSource();
}

/// The answer for a type that an operator has no case for.
unsigned long unknownDimension() {
    RVF_ASSERT(0);
    return orv::UNDEFINED_SIZE_T;
}

unsigned long dimensionOf(ResultType resultType) {
    return isResultType(resultType) ? doublesPerItem(resultType) : unknownDimension();
}

/// Takes the generator over.
/// @param arguments all declared by the type of the first one
ResultInfo customResult(ResultType type, const Str& name, ResultMapping mapping, std::vector<ResultInfo> arguments,
                        CustomResultGenerator* generator) {
    const PtrRef<CustomResultGenerator> holder(generator);
    for (unsigned long i = 0; i < arguments.size(); ++i) {
        generator->setArgumentType(i, arguments.front().type());
    }
    return ResultInfo(type, name, mapping, arguments, generator);
}

/// The same, computed item by item.
ResultInfo itemwiseResult(ResultType type, const Str& name, ResultMapping mapping,
                          const std::vector<ResultInfo>& arguments, CustomResultFunction* function) {
    auto* generator = new CustomResultGenerator(arguments.size());
    generator->setFunction(function);
    return customResult(type, name, mapping, arguments, generator);
}

/// A number behind an operation's sign: "*2.5".
Str signAndNumber(const char* sign, double value) {
    return sign + Str("%1").arg(value, 0, 'g', -1, ' ');
}

/// The names in parentheses: "(a,b,c)".
Str listOfNames(const std::vector<ResultInfo>& arguments) {
    Str list = "(";
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        list += i > 0 ? "," + arguments[i].name() : arguments[i].name();
    }
    return list + ")";
}

bool areOfOneType(const std::vector<ResultInfo>& arguments) {
    return std::all_of(arguments.begin(), arguments.end(),
                       [&](const ResultInfo& argument) { return argument.type() == arguments[0].type(); });
}

/// The sizes of the envelopes' lists have been checked.
template <class Function>
ResultInfo envelope(const char* prefix, const std::vector<ResultInfo>& arguments) {
    const ResultType resultType = arguments[0].type();
    if (!areOfOneType(arguments) || !hasCurrentDataSource()) {
        return ResultInfo();
    }
    return itemwiseResult(resultType, prefix + listOfNames(arguments), arguments[0].resultMapping(), arguments,
                          new Function(dimensionOf(resultType)));
}

template <class Function>
ResultInfo withConstant(const ResultInfo& info, const char* sign, double value) {
    const ResultType resultType = info.type();
    checkFourTypes(resultType,
                   "Cannot add results, only scalars, vectors, displacement or symmetric tensors are handled.");
    if (!hasCurrentDataSource()) {
        return ResultInfo();
    }
    return itemwiseResult(resultType, info.name() + signAndNumber(sign, value), info.resultMapping(), {info},
                          new Function(dimensionOf(resultType), value));
}

/// The constant results; `operation` is that of the generator.
ResultInfo constantResult(const ResultInfo& info, const char* prefix, int operation, bool perPart) {
    if (!hasCurrentDataSource()) {
        return ResultInfo();
    }
    return customResult(info.type(), prefix + Str(perPart ? "PerPart(" : "(") + info.name() + ")", info.resultMapping(),
                        {info}, new orv::app::MinMaxAvgValueResultGenerator(1, operation, perPart));
}

void checkComponent(ResultType resultType, unsigned long componentIndex) {
    switch (resultType) {
    case VECTOR:
    case DISPLACEMENT:
        RVF_ASSERT_MSG(componentIndex < 3, "Components must be less or equal than 2");
        break;
    case SYMMETRIC_TENSOR:
        // The message overstates the limit by one; it is known by this text.
        RVF_ASSERT_MSG(componentIndex < 6, "Components must be less or equal than 6");
        break;
    default:
        RVF_ASSERT(0);
    }
}

/// Empty for a displacement, which has no case here.
Str componentName(ResultType resultType, unsigned long componentIndex) {
    static const std::vector<const char*> tensorNames = {"XX", "YY", "ZZ", "XY", "YZ", "ZX"};
    static const std::vector<const char*> vectorNames = {"X", "Y", "Z"};
    auto nameIn = [=](const std::vector<const char*>& names) {
        return componentIndex < names.size() ? names[componentIndex] : "";
    };
    switch (resultType) {
    case VECTOR:
        return nameIn(vectorNames);
    case SYMMETRIC_TENSOR:
        return nameIn(tensorNames);
    default:
        RVF_ASSERT(0);
        return Str();
    }
}

} // namespace

ResultInfo operator+(const ResultInfo& first, const ResultInfo& second) {
    const ResultType resultType = first.type();
    checkFourTypes(resultType,
                   "Cannot add results, only scalars, vectors, displacement or symmetric tensors are handled.");
    checkAlike(first, second, "Cannot add results when they are of different types",
               "Cannot add results when they have different mappings");
    if (!hasCurrentDataSource()) {
        return ResultInfo();
    }
    return itemwiseResult(resultType, first.name() + "+" + second.name(), first.resultMapping(), {first, second},
                          new SumFunction(dimensionOf(resultType)));
}

ResultInfo operator-(const ResultInfo& first, const ResultInfo& second) {
    const ResultType resultType = first.type();
    checkFourTypes(resultType,
                   "Cannot subtract results, only scalars, vectors, displacement or symmetric tensors are handled.");
    checkAlike(first, second, "Cannot subtract results when they are of different types",
               "Cannot subtract results when they have different mappings");
    if (!hasCurrentDataSource()) {
        return ResultInfo();
    }
    return itemwiseResult(resultType, first.name() + "-" + second.name(), first.resultMapping(), {first, second},
                          new SubtractFunction(dimensionOf(resultType)));
}

ResultInfo operator-(const ResultInfo& info) {
    const ResultType resultType = info.type();
    checkFourTypes(resultType,
                   "Cannot add results, only scalars, vectors, displacement or symmetric tensors are handled.");
    if (!hasCurrentDataSource()) {
        return ResultInfo();
    }
    return itemwiseResult(resultType, "-" + info.name(), info.resultMapping(), {info},
                          new OppositeFunction(dimensionOf(resultType)));
}

ResultInfo operator*(const ResultInfo& info, double value) {
    return withConstant<MultiplyByConstantFunction>(info, "*", value);
}

ResultInfo operator+(const ResultInfo& info, double value) {
    return withConstant<AddConstantFunction>(info, "+", value);
}

ResultInfo operator-(const ResultInfo& info, double value) {
    return withConstant<SubtractConstantFunction>(info, "-", value);
}

ResultInfo operator/(const ResultInfo& info, double value) {
    return withConstant<DivideByConstantFunction>(info, "/", value);
}

ResultInfo operator/(const ResultInfo& first, const ResultInfo& second) {
    const ResultType resultType = first.type();
    RVF_ASSERT_MSG(resultType == SCALAR, "Cannot divide results, only scalars are handled.");
    checkAlike(first, second, "Cannot multiply results when they are of different types",
               "Cannot multiply results when they have different mappings");
    if (!hasCurrentDataSource()) {
        return ResultInfo();
    }
    return itemwiseResult(SCALAR, first.name() + "/" + second.name(), first.resultMapping(), {first, second},
                          new DivisionOfScalars);
}

ResultInfo operator*(const ResultInfo& first, const ResultInfo& second) {
    const ResultType resultType = first.type();
    RVF_ASSERT_MSG(resultType == SCALAR || resultType == VECTOR || resultType == DISPLACEMENT,
                   "Cannot multiply results, only scalars, vectors, displacement are handled.");
    checkAlike(first, second, "Cannot multiply results when they are of different types",
               "Cannot multiply results when they have different mappings");
    if (!hasCurrentDataSource()) {
        return ResultInfo();
    }
    const unsigned long dimension = resultType == SYMMETRIC_TENSOR ? unknownDimension() : dimensionOf(resultType);
    return itemwiseResult(SCALAR, first.name() + "*" + second.name(), first.resultMapping(), {first, second},
                          new PerItemProduct(dimension));
}

ResultInfo operator^(const ResultInfo& first, const ResultInfo& second) {
    const ResultType resultType = first.type();
    RVF_ASSERT_MSG(resultType == VECTOR,
                   "Cannot compute the cross-product of two result. The operator only applies to vectors.");
    checkAlike(first, second, "Cannot compute the cross-product of two results when they are of different types",
               "Cannot multiply results when they have different mappings");
    if (!hasCurrentDataSource()) {
        return ResultInfo();
    }
    return itemwiseResult(VECTOR, first.name() + "^" + second.name(), first.resultMapping(), {first, second},
                          new CrossProduct);
}

ResultInfo extractComponent(const ResultInfo& info, unsigned long componentIndex) {
    const ResultType resultType = info.type();
    RVF_ASSERT_MSG(resultType == VECTOR || resultType == DISPLACEMENT || resultType == SYMMETRIC_TENSOR,
                   "Component extraction is only applicable to vectors, displacements and tensors.");
    if (!hasCurrentDataSource()) {
        return ResultInfo();
    }
    checkComponent(resultType, componentIndex);
    return itemwiseResult(SCALAR, componentName(resultType, componentIndex) + " " + info.name(), info.resultMapping(),
                          {info}, new ExtractComponentFunction(componentIndex));
}

ResultInfo createMathFunctionResult(const ResultInfo& info, orv::app::MathFunctionCallBack* callback) {
    const ResultType resultType = info.type();
    checkFourTypes(
        resultType,
        "Cannot apply math function to result, only scalars, vectors, displacement or symmetric tensors are handled.");
    if (!hasCurrentDataSource()) {
        return ResultInfo();
    }
    return itemwiseResult(resultType, callback->functionName() + "(" + info.name() + ")", info.resultMapping(), {info},
                          new ApplyMathFunction(dimensionOf(resultType), callback));
}

ResultInfo l1Norm(const ResultInfo& info) {
    checkVectorTypes(info.type(), "L1 norm is only applicable to vectors and displacements.");
    if (!hasCurrentDataSource()) {
        return ResultInfo();
    }
    return itemwiseResult(SCALAR, "|" + info.name() + "|", info.resultMapping(), {info}, new L1NormFunction);
}

ResultInfo l2Norm(const ResultInfo& info) {
    checkVectorTypes(info.type(), "L2 norm is only applicable to vectors and displacements.");
    if (!hasCurrentDataSource()) {
        return ResultInfo();
    }
    return itemwiseResult(SCALAR, "All " + info.name(), info.resultMapping(), {info}, new L2NormFunction);
}

ResultInfo toElementsArithmetic(const ResultInfo& info) {
    const ResultMapping resultMapping = info.resultMapping();
    RVF_ASSERT_MSG(resultMapping == PER_NODE, "Conversion to elements is only applicable to node-mapped results.");
    if (!hasCurrentDataSource()) {
        return ResultInfo();
    }
    return customResult(info.type(), info.name() + "[Elts]", PER_ELEMENT, {info},
                        new orv::app::NodeToElementResultGenerator(1));
}

ResultInfo toNodesArithmetic(const ResultInfo& info) {
    const ResultMapping resultMapping = info.resultMapping();
    RVF_ASSERT_MSG(resultMapping == PER_ELEMENT, "Conversion to nodes is only applicable to element-mapped results.");
    if (!hasCurrentDataSource()) {
        return ResultInfo();
    }
    return customResult(info.type(), info.name() + "[Nodes]", PER_NODE, {info},
                        new orv::app::ElementToNodeResultGenerator(1));
}

ResultInfo average(const std::vector<ResultInfo>& arguments) {
    RVF_ASSERT_MSG(arguments.size() > 0, "No results provided to compute average");
    return envelope<AverageFunction>("Avg", arguments);
}

ResultInfo min(const std::vector<ResultInfo>& arguments) {
    RVF_ASSERT_MSG(arguments.size() > 0, "No results provided to compute min");
    return envelope<MinFunction>("Min", arguments);
}

ResultInfo max(const std::vector<ResultInfo>& arguments) {
    RVF_ASSERT_MSG(arguments.size() > 0, "No results provided to compute max");
    return envelope<MaxFunction>("Max", arguments);
}

ResultInfo vonMises(const ResultInfo& info) {
    const ResultType resultType = info.type();
    RVF_ASSERT_MSG(resultType == SYMMETRIC_TENSOR,
                   "Cannot compute vonMises result, only symmetric tensors are handled.");
    if (!hasCurrentDataSource()) {
        return ResultInfo();
    }
    return itemwiseResult(SCALAR, "vonMises " + info.name(), info.resultMapping(), {info}, new VonMisesFunction);
}

std::vector<ResultInfo> principals(const ResultInfo& info) {
    const ResultType resultType = info.type();
    RVF_ASSERT_MSG(resultType == SYMMETRIC_TENSOR,
                   "Cannot compute principals results, only symmetric tensors are handled.");
    std::vector<ResultInfo> results;
    if (!hasCurrentDataSource()) {
        return results;
    }
    static constexpr const char* prefixes[] = {"1st Principal ", "2nd Principal ", "3rd Principal "};
    for (const ResultType type : {VECTOR, SCALAR}) {
        for (unsigned long principal = 0; principal < 3; ++principal) {
            results.push_back(itemwiseResult(type, prefixes[principal] + info.name(), info.resultMapping(), {info},
                                             new PrincipalsFunction(type == VECTOR, principal)));
        }
    }
    return results;
}

ResultInfo minValue(const ResultInfo& info, bool perPart) {
    return constantResult(info, "minValue", 0, perPart);
}

ResultInfo maxValue(const ResultInfo& info, bool perPart) {
    return constantResult(info, "maxValue", 1, perPart);
}

ResultInfo averageValue(const ResultInfo& info, bool perPart) {
    return constantResult(info, "avgValue", 2, perPart);
}
