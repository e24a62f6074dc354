#pragma once

#include "OrvUnstructGrid/ResultInfo.h"

#include <cstddef>
#include <span>
#include <vector>

namespace orv::ug {

class DataSource;
class DataState;
class Error;

/// Loads those of the results that the state can have and has not yet.
/// @return false when one of them cannot be read
bool loadResults(DataSource* source, DataState* state, std::vector<ResultInfo> results, Error* error);

/// The loaded values of a result on a part; empty when there are none, or not one item for each node or element.
std::span<const double> loadedValues(const DataState& state, const ResultInfo& info, std::size_t geometryIndex,
                                     std::size_t partIndex);

} // namespace orv::ug
