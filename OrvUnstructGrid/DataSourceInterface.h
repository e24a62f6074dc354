#pragma once

#include "LibCore/rvfExport.h"

namespace orv::ug {

class DataStateSpec;
class Error;

/// A data source that loads values on demand.
class ORV_API DataSourceInterface {
public:
    virtual ~DataSourceInterface();

    /// Brings the results that the DataStateSpec names, and what custom ones among them rest on, into the state. What
    /// is there already stays as it is. On failure false, with the reason in `error` unless that is null, and the state
    /// holds what it held before.
    virtual bool loadDataState(int stateId, const DataStateSpec& spec, Error* error) = 0;
};

} // namespace orv::ug
