#pragma once

#include "LibCore/rvfExport.h"
#include "OrvUnstructGrid/ResultInfo.h"

#include <vector>

/// @file
/// Algebra on results: `vonMises(stress) / 250.0` describes a new result, item by item computed from other results.
///
/// **What comes back.** A custom ug::ResultInfo that nobody knows yet: no values are computed, and nothing changes in
/// the catalogues. The values come when it is loaded for a state, for which it must have been added, see
/// orv::app::Results::add(); as an argument of further operators it need not be. The new result sits where the first
/// argument sits (on nodes or on elements), and keeps its arguments.
///
/// An invalid info, without a word, when there is no current model or when it has no data source. Which model that is
/// does not matter here: whether the arguments belong to it is found out when the result is added to it.
///
/// **Names** are plain concatenations without parentheses: `(a + b) * c` and `a + (b * c)` are both called "a+b*c". A
/// name holds the names of all its arguments, so an expression that names one argument twice at each of its levels
/// doubles the length of its name at each of them: give such results names of their own (ug::ResultInfo::setName()).
/// Numbers are written with six digits at most: "a*2.5".
///
/// **Preconditions** are assertions. Behind a failed one a result is described nevertheless, by the type and the
/// mapping of the first argument, and nothing marks it as useless. Do not load it: at best that fails, while the
/// functions of vectors and tensors read beyond items that are smaller. A type that an operator does not know fails a
/// second assertion, "0", when there is a current model. Some messages name another operation than the one that was
/// called; programs and logs know them by these texts.
///
/// **Undefined values** (UNDEFINED_DOUBLE) are looked at by some operators only, as told at each. Where they are not,
/// they enter the arithmetic as the largest finite double. A NaN is a defined value everywhere.
///
/// The operators stand in the global namespace and ug::ResultInfo does not, so a namespace with operators of its own
/// hides them: say `using ::operator+;` there. One thread at a time.

namespace orv::app {
class MathFunctionCallBack;
}

/// @name Arithmetic, component by component
/// A component is undefined where it is undefined in an argument, and a quotient where the divisor is zero of either
/// sign. For all four types; both arguments of one type and mapping.
/// @{

/// Named "first+second". Asserts "resultType == SCALAR || resultType == VECTOR || resultType == DISPLACEMENT ||
/// resultType == SYMMETRIC_TENSOR", "resultType == second.type()" and "resultMapping == second.resultMapping()".
ORV_API orv::ug::ResultInfo operator+(const orv::ug::ResultInfo& first, const orv::ug::ResultInfo& second);
/// Named "first-second". Asserts what operator+ asserts, with messages of its own.
ORV_API orv::ug::ResultInfo operator-(const orv::ug::ResultInfo& first, const orv::ug::ResultInfo& second);

/// Named "-info". Asserts the type, with the message of operator+.
///
/// Undefined values are not looked at: one becomes -1.7976931348623157e308, which is a defined value.
ORV_API orv::ug::ResultInfo operator-(const orv::ug::ResultInfo& info);

/// Named "info*2.5" and so on. Assert the type, all with the message of operator+.
ORV_API orv::ug::ResultInfo operator*(const orv::ug::ResultInfo& info, double value);
ORV_API orv::ug::ResultInfo operator+(const orv::ug::ResultInfo& info, double value);
ORV_API orv::ug::ResultInfo operator-(const orv::ug::ResultInfo& info, double value);
/// Everything is undefined when `value` is zero.
ORV_API orv::ug::ResultInfo operator/(const orv::ug::ResultInfo& info, double value);
/// @}

/// @name Products and quotients of results
/// @{

/// The quotient of two scalars, undefined when one of them is and where the divisor is zero. Named "first/second".
/// Asserts "resultType == SCALAR", "resultType == second.type()" and "resultMapping == second.resultMapping()", the
/// last two with messages that speak of multiplying.
ORV_API orv::ug::ResultInfo operator/(const orv::ug::ResultInfo& first, const orv::ug::ResultInfo& second);

/// The product of scalars, the dot product of vectors or displacements: always a scalar. Undefined when any component
/// is. Named "first*second". Asserts "resultType == SCALAR || resultType == VECTOR || resultType == DISPLACEMENT",
/// "resultType == second.type()" and "resultMapping == second.resultMapping()".
ORV_API orv::ug::ResultInfo operator*(const orv::ug::ResultInfo& first, const orv::ug::ResultInfo& second);

/// The cross product of vectors, not of displacements. Undefined values are not looked at. Named "first^second".
/// Asserts "resultType == VECTOR", "resultType == second.type()" and "resultMapping == second.resultMapping()".
///
/// The operator binds weaker than + and even ==: write parentheses around it.
ORV_API orv::ug::ResultInfo operator^(const orv::ug::ResultInfo& first, const orv::ug::ResultInfo& second);
/// @}

/// One component as a scalar, undefined values as they are: "XX", "YY", "ZZ", "XY", "YZ", "ZX" of a tensor, "X", "Y",
/// "Z" of a vector or displacement, by index from 0. Named "XX Stress".
///
/// The name of a displacement's component lacks the component, after a failed assertion "0": a blank, then the name of
/// `info`. The result itself is as good as any.
///
/// Asserts "resultType == VECTOR || resultType == DISPLACEMENT || resultType == SYMMETRIC_TENSOR"; then, when there is
/// a current model, "componentIndex < 3" or "componentIndex < 6", whose messages name other limits. Do not load what
/// came back behind a failed assertion about the index: it reads beyond the items, and its name lacks the component.
ORV_API orv::ug::ResultInfo extractComponent(const orv::ug::ResultInfo& info, unsigned long componentIndex);

/// The application's function of each component, undefined ones excepted. Of the type of `info`; named "name(info)"
/// with the function's name. Asserts that the type is one of the four.
/// @param callback not null and not checked; borrowed for as long as the result can be loaded
ORV_API orv::ug::ResultInfo createMathFunctionResult(const orv::ug::ResultInfo& info,
                                                     orv::app::MathFunctionCallBack* callback);

/// @name Sizes of vectors and displacements, as scalars
/// Undefined values are not looked at. Assert "resultType == VECTOR || resultType == DISPLACEMENT".
/// @{

/// The sum of the components' magnitudes. Named "|info|".
ORV_API orv::ug::ResultInfo l1Norm(const orv::ug::ResultInfo& info);
/// The length; infinity where a component is undefined. Named "All info".
ORV_API orv::ug::ResultInfo l2Norm(const orv::ug::ResultInfo& info);
/// @}

/// @name The other mapping, by plain averages
/// Of the type of `info`. Undefined values are not looked at and spread to the neighbours as huge numbers, see
/// orv::app::NodeToElementResultGenerator and orv::app::ElementToNodeResultGenerator.
/// @{

/// Each element gets the average of its nodes. Named "info[Elts]". Asserts "resultMapping == PER_NODE".
ORV_API orv::ug::ResultInfo toElementsArithmetic(const orv::ug::ResultInfo& info);
/// Each node gets the average of the elements around it, or 0.0 when there is none. Named "info[Nodes]". Asserts
/// "resultMapping == PER_ELEMENT".
ORV_API orv::ug::ResultInfo toNodesArithmetic(const orv::ug::ResultInfo& info);
/// @}

/// @name Envelopes: several results made one, component by component
/// Named "Avg(a,b,c)", "Min(a,b)", "Max(a)". Undefined values are not looked at: being the largest finite double, one
/// swells the average, never is the smallest beside a defined value, and makes the largest undefined.
///
/// An invalid info, without a word, when the types differ. Mappings are not compared: the result has that of the first
/// argument, and fails to load when the others have other numbers of items.
///
/// Assert "arguments.size() > 0"; no defined answer behind the failed assertion.
/// @{
ORV_API orv::ug::ResultInfo average(const std::vector<orv::ug::ResultInfo>& arguments);
ORV_API orv::ug::ResultInfo min(const std::vector<orv::ug::ResultInfo>& arguments);
ORV_API orv::ug::ResultInfo max(const std::vector<orv::ug::ResultInfo>& arguments);
/// @}

/// @name Of symmetric tensors
/// Assert "resultType == SYMMETRIC_TENSOR". See orv::SymmetricTensor for the values, also those of undefined tensors.
/// @{

/// The equivalent stress after von Mises, a scalar. Named "vonMises info".
ORV_API orv::ug::ResultInfo vonMises(const orv::ug::ResultInfo& info);

/// Six results: the directions of the first, second and third principal value as vectors, then the three values as
/// scalars. The direction and the value of one number share a name, such as "1st Principal Stress": once they are
/// added, look them up with vectorInfo() and scalarInfo(), not with resultInfo().
/// @return an empty list where others give an invalid info
ORV_API std::vector<orv::ug::ResultInfo> principals(const orv::ug::ResultInfo& info);
/// @}

/// @name The smallest, largest or average number of a result, as a constant result
/// One number for each part, or one for all parts of the state, written to each component of each item: of the type and
/// mapping of `info`, all its components thrown together. Undefined values are left out, and the largest of numbers
/// that are all negative is 2.2250738585072014e-308, see orv::app::MinMaxAvgValueResultGenerator.
///
/// Named "minValue(info)", "maxValue(info)" and "avgValue(info)", or "minValuePerPart(info)" and so on. No
/// preconditions.
/// @{
ORV_API orv::ug::ResultInfo minValue(const orv::ug::ResultInfo& info, bool perPart);
ORV_API orv::ug::ResultInfo maxValue(const orv::ug::ResultInfo& info, bool perPart);
ORV_API orv::ug::ResultInfo averageValue(const orv::ug::ResultInfo& info, bool perPart);
/// @}
