#pragma once

#include "OrvUnstructGrid/ResultInfo.h"

#include <cstddef>
#include <vector>

namespace orvapp {

/// What expressions need beside the library's operators. Some of those let a missing value (UNDEFINED_DOUBLE) into
/// their arithmetic, where it becomes a huge number that would pass for the largest of all.

/// The negative of a result, missing values as they are.
orv::ug::ResultInfo negative(const orv::ug::ResultInfo& info);

/// One component as a scalar, of a displacement too, missing values as they are.
/// @param index below the doubles of an item
orv::ug::ResultInfo component(const orv::ug::ResultInfo& info, std::size_t index);

enum class Missing {
    BY_ITEM,     ///< An item is missing as a whole when any component of its arguments is.
    BY_COMPONENT ///< A component is missing when that component of an argument is; all have the same type.
};

/// `result` with values missing where they are missing in what it was computed from.
/// @param arguments of the mapping of `result`
orv::ug::ResultInfo withMissing(const orv::ug::ResultInfo& result, const std::vector<orv::ug::ResultInfo>& arguments,
                                Missing missing);

/// `convert` applied, with values missing where one that goes into the mean is.
/// @param convert toElementsArithmetic or toNodesArithmetic
orv::ug::ResultInfo converted(const orv::ug::ResultInfo& info,
                              orv::ug::ResultInfo (*convert)(const orv::ug::ResultInfo&));

} // namespace orvapp
