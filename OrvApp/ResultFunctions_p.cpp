#include "OrvApp/ResultFunctions_p.h"

#include "LibUnstructGrid/VTOMathTensor.h"
#include "OrvApp/MathFunctionCallBack.h"
#include "OrvCore/Defines.h"
#include "OrvCore/SymmetricTensor.h"

#include <algorithm>
#include <cmath>

using orv::UNDEFINED_DOUBLE;
using orv::ug::CustomResultFunction;

namespace {

bool isUndefined(double value) {
    return value == UNDEFINED_DOUBLE;
}

/// Undefined where the input is, otherwise what `operation` makes of it. The result is computed in either case: a loop
/// without branches runs on several numbers at once.
template <class Operation>
bool mapDefined(const std::vector<const double*>& inputs, unsigned long count, double* output, Operation operation) {
    if (inputs.size() != 1) {
        return false;
    }
    const double* a = inputs[0];
    for (unsigned long i = 0; i < count; ++i) {
        const double result = operation(a[i]);
        output[i] = isUndefined(a[i]) ? UNDEFINED_DOUBLE : result;
    }
    return true;
}

/// The same for two inputs.
template <class Operation>
bool mapDefinedPairs(const std::vector<const double*>& inputs, unsigned long count, double* output,
                     Operation operation) {
    if (inputs.size() != 2) {
        return false;
    }
    const double* a = inputs[0];
    const double* b = inputs[1];
    for (unsigned long i = 0; i < count; ++i) {
        const double result = operation(a[i], b[i]);
        const double orUndefined = isUndefined(a[i]) ? UNDEFINED_DOUBLE : result;
        output[i] = isUndefined(b[i]) ? UNDEFINED_DOUBLE : orUndefined;
    }
    return true;
}

/// What each number has become and the next input's number go into `operation`, from the first input on.
template <class Operation>
bool foldInputs(const std::vector<const double*>& inputs, unsigned long count, double* output, Operation operation) {
    if (inputs.empty()) {
        output[0] = 0.0;
        return false;
    }
    std::copy_n(inputs[0], count, output);
    for (std::size_t k = 1; k < inputs.size(); ++k) {
        const double* next = inputs[k];
        for (unsigned long i = 0; i < count; ++i) {
            output[i] = operation(output[i], next[i]);
        }
    }
    return true;
}

/// The form for many items of a function that has computeComponents().
template <class Function>
CustomResultFunction::ItemsForm componentwise(const Function* function, unsigned long dimension) {
    return [=](const CustomResultFunction::InputItems& inputs, std::size_t count, double* output) {
        const bool areFitting = function->outputDimension() == dimension &&
                                std::all_of(inputs.dimensions.begin(), inputs.dimensions.end(),
                                            [=](unsigned long inputDimension) { return inputDimension == dimension; });
        return areFitting && function->computeComponents(inputs.values, count * dimension, output);
    };
}

void setComponents(orv::SymmetricTensor* tensor, const double* item) {
    tensor->set(item[0], item[1], item[2], item[3], item[4], item[5]);
}

} // namespace

SumFunction::SumFunction(unsigned long dimension) : m_dimension(dimension) {
    setItemsForm(componentwise(this, dimension));
}

bool SumFunction::computeItem(const std::vector<const double*>& inputs, double* output) {
    return computeComponents(inputs, m_dimension, output);
}

bool SumFunction::computeComponents(const std::vector<const double*>& inputs, unsigned long count,
                                    double* output) const {
    return mapDefinedPairs(inputs, count, output, [](double a, double b) { return a + b; });
}

SubtractFunction::SubtractFunction(unsigned long dimension) : m_dimension(dimension) {
    setItemsForm(componentwise(this, dimension));
}

bool SubtractFunction::computeItem(const std::vector<const double*>& inputs, double* output) {
    return computeComponents(inputs, m_dimension, output);
}

bool SubtractFunction::computeComponents(const std::vector<const double*>& inputs, unsigned long count,
                                         double* output) const {
    return mapDefinedPairs(inputs, count, output, [](double a, double b) { return a - b; });
}

OppositeFunction::OppositeFunction(unsigned long dimension) : m_dimension(dimension) {
    setItemsForm(componentwise(this, dimension));
}

bool OppositeFunction::computeItem(const std::vector<const double*>& inputs, double* output) {
    return computeComponents(inputs, m_dimension, output);
}

bool OppositeFunction::computeComponents(const std::vector<const double*>& inputs, unsigned long count,
                                         double* output) const {
    if (inputs.size() != 1) {
        return false;
    }
    for (unsigned long i = 0; i < count; ++i) {
        output[i] = -inputs[0][i];
    }
    return true;
}

DivisionOfScalars::DivisionOfScalars() {
    setItemsForm(componentwise(this, 1));
}

bool DivisionOfScalars::computeItem(const std::vector<const double*>& inputs, double* output) {
    return computeComponents(inputs, 1, output);
}

bool DivisionOfScalars::computeComponents(const std::vector<const double*>& inputs, unsigned long count,
                                          double* output) const {
    return mapDefinedPairs(inputs, count, output,
                           [](double a, double b) { return b == 0.0 ? UNDEFINED_DOUBLE : a / b; });
}

PerItemProduct::PerItemProduct(unsigned long dimension) : m_dimension(dimension) {}

bool PerItemProduct::computeItem(const std::vector<const double*>& inputs, double* output) {
    if (inputs.size() != 2) {
        return false;
    }
    const double* a = inputs[0];
    const double* b = inputs[1];
    if (isUndefined(a[0]) || isUndefined(b[0])) {
        output[0] = UNDEFINED_DOUBLE;
        return true;
    }
    switch (m_dimension) {
    case 1:
        output[0] = a[0] * b[0];
        return true;
    case 3:
        output[0] = isUndefined(a[1]) || isUndefined(b[1]) || isUndefined(a[2]) || isUndefined(b[2])
                        ? UNDEFINED_DOUBLE
                        : a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
        return true;
    default:
        return false;
    }
}

bool CrossProduct::computeItem(const std::vector<const double*>& inputs, double* output) {
    if (inputs.size() != 2) {
        return false;
    }
    const double* a = inputs[0];
    const double* b = inputs[1];
    output[0] = a[1] * b[2] - a[2] * b[1];
    output[1] = a[2] * b[0] - a[0] * b[2];
    output[2] = a[0] * b[1] - a[1] * b[0];
    return true;
}

MultiplyByConstantFunction::MultiplyByConstantFunction(unsigned long dimension, double constant)
    : m_dimension(dimension), m_constant(constant) {
    setItemsForm(componentwise(this, dimension));
}

bool MultiplyByConstantFunction::computeItem(const std::vector<const double*>& inputs, double* output) {
    return computeComponents(inputs, m_dimension, output);
}

bool MultiplyByConstantFunction::computeComponents(const std::vector<const double*>& inputs, unsigned long count,
                                                   double* output) const {
    return mapDefined(inputs, count, output, [c = m_constant](double a) { return a * c; });
}

AddConstantFunction::AddConstantFunction(unsigned long dimension, double constant)
    : m_dimension(dimension), m_constant(constant) {
    setItemsForm(componentwise(this, dimension));
}

bool AddConstantFunction::computeItem(const std::vector<const double*>& inputs, double* output) {
    return computeComponents(inputs, m_dimension, output);
}

bool AddConstantFunction::computeComponents(const std::vector<const double*>& inputs, unsigned long count,
                                            double* output) const {
    return mapDefined(inputs, count, output, [c = m_constant](double a) { return a + c; });
}

SubtractConstantFunction::SubtractConstantFunction(unsigned long dimension, double constant)
    : m_dimension(dimension), m_constant(constant) {
    setItemsForm(componentwise(this, dimension));
}

bool SubtractConstantFunction::computeItem(const std::vector<const double*>& inputs, double* output) {
    return computeComponents(inputs, m_dimension, output);
}

bool SubtractConstantFunction::computeComponents(const std::vector<const double*>& inputs, unsigned long count,
                                                 double* output) const {
    return mapDefined(inputs, count, output, [c = m_constant](double a) { return a - c; });
}

DivideByConstantFunction::DivideByConstantFunction(unsigned long dimension, double constant)
    : m_dimension(dimension), m_constant(constant) {
    setItemsForm(componentwise(this, dimension));
}

bool DivideByConstantFunction::computeItem(const std::vector<const double*>& inputs, double* output) {
    return computeComponents(inputs, m_dimension, output);
}

bool DivideByConstantFunction::computeComponents(const std::vector<const double*>& inputs, unsigned long count,
                                                 double* output) const {
    return mapDefined(inputs, count, output,
                      [c = m_constant](double a) { return c == 0.0 ? UNDEFINED_DOUBLE : a / c; });
}

ExtractComponentFunction::ExtractComponentFunction(unsigned long componentIndex) : m_componentIndex(componentIndex) {}

bool ExtractComponentFunction::computeItem(const std::vector<const double*>& inputs, double* output) {
    if (inputs.size() != 1) {
        return false;
    }
    output[0] = inputs[0][m_componentIndex];
    return true;
}

ApplyMathFunction::ApplyMathFunction(unsigned long dimension, orv::app::MathFunctionCallBack* callback)
    : m_dimension(dimension), m_callback(callback) {}

bool ApplyMathFunction::computeItem(const std::vector<const double*>& inputs, double* output) {
    if (inputs.size() != 1) {
        return false;
    }
    for (unsigned long c = 0; c < m_dimension; ++c) {
        output[c] = UNDEFINED_DOUBLE;
        if (isUndefined(inputs[0][c])) {
            continue;
        }
        try {
            output[c] = m_callback->evaluate(inputs[0][c]);
        } catch (...) {
            // It stays undefined.
        }
    }
    return true;
}

bool L1NormFunction::computeItem(const std::vector<const double*>& inputs, double* output) {
    if (inputs.size() != 1) {
        return false;
    }
    const double* a = inputs[0];
    output[0] = std::fabs(a[0]) + std::fabs(a[1]) + std::fabs(a[2]);
    return true;
}

bool L2NormFunction::computeItem(const std::vector<const double*>& inputs, double* output) {
    if (inputs.size() != 1) {
        return false;
    }
    const double* a = inputs[0];
    output[0] = std::sqrt(a[0] * a[0] + a[1] * a[1] + a[2] * a[2]);
    return true;
}

AverageFunction::AverageFunction(unsigned long dimension) : m_dimension(dimension) {
    setItemsForm(componentwise(this, dimension));
}

bool AverageFunction::computeItem(const std::vector<const double*>& inputs, double* output) {
    return computeComponents(inputs, m_dimension, output);
}

bool AverageFunction::computeComponents(const std::vector<const double*>& inputs, unsigned long count,
                                        double* output) const {
    if (inputs.empty()) {
        output[0] = 0.0;
        return false;
    }
    std::fill_n(output, count, 0.0);
    for (const double* input : inputs) {
        for (unsigned long i = 0; i < count; ++i) {
            output[i] += input[i];
        }
    }
    const double inputCount = static_cast<double>(inputs.size());
    for (unsigned long i = 0; i < count; ++i) {
        output[i] /= inputCount;
    }
    return true;
}

MinFunction::MinFunction(unsigned long dimension) : m_dimension(dimension) {
    setItemsForm(componentwise(this, dimension));
}

bool MinFunction::computeItem(const std::vector<const double*>& inputs, double* output) {
    return computeComponents(inputs, m_dimension, output);
}

bool MinFunction::computeComponents(const std::vector<const double*>& inputs, unsigned long count,
                                    double* output) const {
    return foldInputs(inputs, count, output, [](double held, double next) { return held > next ? next : held; });
}

MaxFunction::MaxFunction(unsigned long dimension) : m_dimension(dimension) {
    setItemsForm(componentwise(this, dimension));
}

bool MaxFunction::computeItem(const std::vector<const double*>& inputs, double* output) {
    return computeComponents(inputs, m_dimension, output);
}

bool MaxFunction::computeComponents(const std::vector<const double*>& inputs, unsigned long count,
                                    double* output) const {
    return foldInputs(inputs, count, output, [](double held, double next) { return next > held ? next : held; });
}

VonMisesFunction::VonMisesFunction() {
    setItemsForm([this](const InputItems& inputs, std::size_t count, double* output) {
        if (outputDimension() != 1 || inputs.dimensions != std::vector<unsigned long>{6}) {
            return false;
        }
        for (std::size_t i = 0; i < count; ++i) {
            output[i] = VTComputeVonMises(inputs.values[0] + 6 * i, 6);
        }
        return true;
    });
}

bool VonMisesFunction::computeItem(const std::vector<const double*>& inputs, double* output) {
    if (inputs.size() != 1) {
        return false;
    }
    static orv::SymmetricTensor tensor;
    setComponents(&tensor, inputs[0]);
    output[0] = tensor.vonMises();
    return true;
}

PrincipalsFunction::PrincipalsFunction(bool vectorOutput, unsigned long principalIndex)
    : m_vectorOutput(vectorOutput), m_principalIndex(principalIndex) {}

bool PrincipalsFunction::computeItem(const std::vector<const double*>& inputs, double* output) {
    using Tensor = orv::SymmetricTensor;
    using Value = double (Tensor::*)() const;
    using Vector = orv::Vec3d (Tensor::*)() const;
    static constexpr Value values[] = {&Tensor::firstPrincipalValue, &Tensor::secondPrincipalValue,
                                       &Tensor::thirdPrincipalValue};
    static constexpr Vector vectors[] = {&Tensor::firstPrincipalVector, &Tensor::secondPrincipalVector,
                                         &Tensor::thirdPrincipalVector};
    if (outputDimension() != (m_vectorOutput ? 3u : 1u) || inputs.size() != 1) {
        return false;
    }
    static Tensor tensor;
    setComponents(&tensor, inputs[0]);
    if (m_principalIndex > 2) {
        return false;
    }
    if (!m_vectorOutput) {
        output[0] = (tensor.*values[m_principalIndex])();
        return true;
    }
    const orv::Vec3d vector = (tensor.*vectors[m_principalIndex])();
    output[0] = vector.x();
    output[1] = vector.y();
    output[2] = vector.z();
    return true;
}
