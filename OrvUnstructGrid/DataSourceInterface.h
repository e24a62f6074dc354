#pragma once

#include "LibCore/rvfExport.h"

#include <cstddef>
#include <span>

namespace orv::ug {

class DataStateSpec;
class Error;
class ResultInfo;

/// Where neighbouring values of a scalar result begin in a state: the geometry's index, the part's index in it, and the
/// first item's in the part, counted as the result's mapping says.
struct ScalarPlace {
    std::size_t geometryIndex = 0;
    std::size_t partIndex = 0;
    std::size_t firstItem = 0;
};

/// A data source that loads values on demand.
class ORV_API DataSourceInterface {
public:
    virtual ~DataSourceInterface();

    /// Brings the results that the DataStateSpec names, and what custom ones among them rest on, into the state, and
    /// the state's meshes first: no values are loaded onto a mesh that cannot be read. What is there already stays as
    /// it is. On failure false, with the reason in `error` unless that is null, and the state holds what it held
    /// before.
    virtual bool loadDataState(int stateId, const DataStateSpec& spec, Error* error) = 0;

    /// Copies `values.size()` neighbouring values of a scalar result out of a state. A source that can seek in its file
    /// reads these alone; otherwise, and for a custom result, the result is loaded and stays so.
    /// @return false, with the reason in `error` unless that is null, when the state, the result in it or the place do
    ///         not exist or cannot be read; `values` is then anything
    virtual bool copyScalars(int stateId, const ResultInfo& info, const ScalarPlace& place, std::span<double> values,
                             Error* error) = 0;
};

} // namespace orv::ug
