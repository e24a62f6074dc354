#include "Tools/ItemFunctions.h"

#include "OrvApp/MathFunctionCallBack.h"
#include "OrvApp/ResultOperators.h"
#include "OrvCore/Defines.h"
#include "OrvCore/PtrRef.h"
#include "OrvUnstructGrid/CustomResultFunction.h"
#include "OrvUnstructGrid/CustomResultGenerator.h"

#include <algorithm>

namespace orvapp {

namespace {

using orv::ug::ResultInfo;

class Component : public orv::ug::CustomResultFunction {
public:
    explicit Component(std::size_t index) : m_index(index) {}

    bool computeItem(const std::vector<const double*>& inputItems, double* outputItem) override {
        *outputItem = inputItems[0][m_index];
        return true;
    }

private:
    std::size_t m_index;
};

bool isMissing(double value) {
    return value == orv::UNDEFINED_DOUBLE;
}

/// Copies the first argument, except where one of the others has a missing value.
class MissingAsInTheOthers : public orv::ug::CustomResultFunction {
public:
    MissingAsInTheOthers(std::size_t componentsOfOthers, Missing missing)
        : m_components(componentsOfOthers), m_missing(missing) {}

    bool computeItem(const std::vector<const double*>& inputItems, double* outputItem) override {
        for (std::size_t c = 0; c < outputDimension(); ++c) {
            outputItem[c] = isMissingIn(inputItems, c) ? orv::UNDEFINED_DOUBLE : inputItems[0][c];
        }
        return true;
    }

private:
    bool isMissingIn(const std::vector<const double*>& inputItems, std::size_t component) const {
        return std::any_of(inputItems.begin() + 1, inputItems.end(), [&](const double* item) {
            return m_missing == Missing::BY_COMPONENT ? isMissing(item[component])
                                                      : std::any_of(item, item + m_components, isMissing);
        });
    }

    std::size_t m_components;
    Missing m_missing;
};

/// Turns a mean of zeros and missing values into a zero or a missing value.
class MissingUnlessZero : public orv::app::MathFunctionCallBack {
public:
    MissingUnlessZero() : MathFunctionCallBack("missing") {}

    /// A NaN comes from a value that was there but infinite or not a number.
    double evaluate(double value) override {
        return value > 0 ? orv::UNDEFINED_DOUBLE : 0.0;
    }
};

ResultInfo computed(orv::ug::ResultType type, orv::ug::ResultMapping mapping, std::vector<ResultInfo> arguments,
                    orv::ug::CustomResultFunction* newFunction) {
    const orv::PtrRef<orv::ug::CustomResultFunction> function(newFunction);
    const orv::PtrRef<orv::ug::CustomResultGenerator> generator(new orv::ug::CustomResultGenerator(arguments.size()));
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        generator->setArgumentType(i, arguments[i].type());
    }
    generator->setFunction(function.get());
    return ResultInfo(type, "", mapping, arguments, generator.get());
}

} // namespace

ResultInfo negative(const ResultInfo& info) {
    return info * -1.0;
}

ResultInfo component(const ResultInfo& info, std::size_t index) {
    return computed(orv::ug::SCALAR, info.resultMapping(), {info}, new Component(index));
}

ResultInfo withMissing(const ResultInfo& result, const std::vector<ResultInfo>& arguments, Missing missing) {
    std::vector<ResultInfo> all = {result};
    all.insert(all.end(), arguments.begin(), arguments.end());
    return computed(result.type(), result.resultMapping(), all,
                    new MissingAsInTheOthers(orv::ug::doublesPerItem(arguments.front().type()), missing));
}

ResultInfo converted(const ResultInfo& info, ResultInfo (*convert)(const ResultInfo&)) {
    static MissingUnlessZero missingUnlessZero;
    const ResultInfo zeros = createMathFunctionResult(convert(info * 0.0), &missingUnlessZero);
    return withMissing(convert(info), {zeros}, Missing::BY_COMPONENT);
}

} // namespace orvapp
