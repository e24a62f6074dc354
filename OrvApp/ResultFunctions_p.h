#pragma once

#include "OrvUnstructGrid/CustomResultFunction.h"

#include <vector>

/// @file
/// What the result operators compute for one item. `a` is the item of the first argument, `b` that of the second, and
/// undefined is orv::UNDEFINED_DOUBLE exactly: a NaN is a defined value.
///
/// Every function refuses, with false and without touching the output, another number of inputs than it needs.
/// Functions that look like each other treat undefined values differently, as is told at each.
///
/// Where each component is computed from the same component of the arguments alone, computeComponents() does that for
/// `count` components in a row, be they those of one item or of many: it stands behind both computeItem() and the form
/// for items in a row.

namespace orv::app {
class MathFunctionCallBack;
}

/// a + b by component; undefined where either is.
class SumFunction : public orv::ug::CustomResultFunction {
public:
    explicit SumFunction(unsigned long dimension);
    bool computeItem(const std::vector<const double*>& inputs, double* output) override;
    bool computeComponents(const std::vector<const double*>& inputs, unsigned long count, double* output) const;

private:
    unsigned long m_dimension;
};

/// a - b by component; undefined where either is.
class SubtractFunction : public orv::ug::CustomResultFunction {
public:
    explicit SubtractFunction(unsigned long dimension);
    bool computeItem(const std::vector<const double*>& inputs, double* output) override;
    bool computeComponents(const std::vector<const double*>& inputs, unsigned long count, double* output) const;

private:
    unsigned long m_dimension;
};

/// -a by component, without a look at undefined values: one becomes -1.7976931348623157e308, which is defined.
class OppositeFunction : public orv::ug::CustomResultFunction {
public:
    explicit OppositeFunction(unsigned long dimension);
    bool computeItem(const std::vector<const double*>& inputs, double* output) override;
    bool computeComponents(const std::vector<const double*>& inputs, unsigned long count, double* output) const;

private:
    unsigned long m_dimension;
};

/// a / b of scalars; undefined when either is, and when b is zero of either sign.
class DivisionOfScalars : public orv::ug::CustomResultFunction {
public:
    DivisionOfScalars();
    bool computeItem(const std::vector<const double*>& inputs, double* output) override;
    bool computeComponents(const std::vector<const double*>& inputs, unsigned long count, double* output) const;
};

/// The product of scalars and the dot product of vectors; undefined when any component is. Items of another dimension
/// than 1 and 3 are refused, unless a first component is undefined: that is looked at before the dimension.
class PerItemProduct : public orv::ug::CustomResultFunction {
public:
    explicit PerItemProduct(unsigned long dimension);
    bool computeItem(const std::vector<const double*>& inputs, double* output) override;

private:
    unsigned long m_dimension;
};

/// The cross product of vectors. Undefined components enter it as numbers.
class CrossProduct : public orv::ug::CustomResultFunction {
public:
    bool computeItem(const std::vector<const double*>& inputs, double* output) override;
};

/// a * constant by component; undefined stays so.
class MultiplyByConstantFunction : public orv::ug::CustomResultFunction {
public:
    MultiplyByConstantFunction(unsigned long dimension, double constant);
    bool computeItem(const std::vector<const double*>& inputs, double* output) override;
    bool computeComponents(const std::vector<const double*>& inputs, unsigned long count, double* output) const;

private:
    unsigned long m_dimension;
    double m_constant;
};

/// a + constant by component; undefined stays so.
class AddConstantFunction : public orv::ug::CustomResultFunction {
public:
    AddConstantFunction(unsigned long dimension, double constant);
    bool computeItem(const std::vector<const double*>& inputs, double* output) override;
    bool computeComponents(const std::vector<const double*>& inputs, unsigned long count, double* output) const;

private:
    unsigned long m_dimension;
    double m_constant;
};

/// a - constant by component; undefined stays so.
class SubtractConstantFunction : public orv::ug::CustomResultFunction {
public:
    SubtractConstantFunction(unsigned long dimension, double constant);
    bool computeItem(const std::vector<const double*>& inputs, double* output) override;
    bool computeComponents(const std::vector<const double*>& inputs, unsigned long count, double* output) const;

private:
    unsigned long m_dimension;
    double m_constant;
};

/// a / constant by component; undefined stays so, and everything is undefined when the constant is zero.
class DivideByConstantFunction : public orv::ug::CustomResultFunction {
public:
    DivideByConstantFunction(unsigned long dimension, double constant);
    bool computeItem(const std::vector<const double*>& inputs, double* output) override;
    bool computeComponents(const std::vector<const double*>& inputs, unsigned long count, double* output) const;

private:
    unsigned long m_dimension;
    double m_constant;
};

/// One component of a. The index is not checked: whoever makes the function has done that.
class ExtractComponentFunction : public orv::ug::CustomResultFunction {
public:
    explicit ExtractComponentFunction(unsigned long componentIndex);
    bool computeItem(const std::vector<const double*>& inputs, double* output) override;

private:
    unsigned long m_componentIndex;
};

/// The application's function of each component; undefined stays so and does not reach it. A component for which it
/// throws, whatever it throws, is undefined.
class ApplyMathFunction : public orv::ug::CustomResultFunction {
public:
    /// @param callback not owned, not null
    ApplyMathFunction(unsigned long dimension, orv::app::MathFunctionCallBack* callback);
    bool computeItem(const std::vector<const double*>& inputs, double* output) override;

private:
    unsigned long m_dimension;
    orv::app::MathFunctionCallBack* m_callback;
};

/// The sum of the magnitudes of a vector's components. Undefined components enter it as numbers.
class L1NormFunction : public orv::ug::CustomResultFunction {
public:
    bool computeItem(const std::vector<const double*>& inputs, double* output) override;
};

/// The length of a vector. An undefined component squares to infinity.
class L2NormFunction : public orv::ug::CustomResultFunction {
public:
    bool computeItem(const std::vector<const double*>& inputs, double* output) override;
};

/// The mean of all inputs by component, undefined values taken as numbers. At least one input is needed: without one
/// the first double of the output becomes 0.0 although the item is refused.
class AverageFunction : public orv::ug::CustomResultFunction {
public:
    explicit AverageFunction(unsigned long dimension);
    bool computeItem(const std::vector<const double*>& inputs, double* output) override;
    bool computeComponents(const std::vector<const double*>& inputs, unsigned long count, double* output) const;

private:
    unsigned long m_dimension;
};

/// The smallest of all inputs by component. Undefined is the largest finite double, so any other number but infinity
/// wins over it. Without an input like AverageFunction.
class MinFunction : public orv::ug::CustomResultFunction {
public:
    explicit MinFunction(unsigned long dimension);
    bool computeItem(const std::vector<const double*>& inputs, double* output) override;
    bool computeComponents(const std::vector<const double*>& inputs, unsigned long count, double* output) const;

private:
    unsigned long m_dimension;
};

/// The largest of all inputs by component. Undefined is the largest finite double, so it wins over any other number but
/// infinity. Without an input like AverageFunction.
class MaxFunction : public orv::ug::CustomResultFunction {
public:
    explicit MaxFunction(unsigned long dimension);
    bool computeItem(const std::vector<const double*>& inputs, double* output) override;
    bool computeComponents(const std::vector<const double*>& inputs, unsigned long count, double* output) const;

private:
    unsigned long m_dimension;
};

/// The equivalent stress of a tensor. Not reentrant, not even for two objects: the tensor is static.
class VonMisesFunction : public orv::ug::CustomResultFunction {
public:
    VonMisesFunction();
    bool computeItem(const std::vector<const double*>& inputs, double* output) override;
};

/// A principal value of a tensor, or its direction. Not reentrant, not even for two objects: the tensor is static.
/// Refuses the item when outputDimension() is not that of a vector or a scalar, and an index beyond 2.
class PrincipalsFunction : public orv::ug::CustomResultFunction {
public:
    PrincipalsFunction(bool vectorOutput, unsigned long principalIndex);
    bool computeItem(const std::vector<const double*>& inputs, double* output) override;

private:
    bool m_vectorOutput;
    unsigned long m_principalIndex;
};
