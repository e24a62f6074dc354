#pragma once

#include "LibCore/rvfExport.h"
#include "OrvUnstructGrid/ResultInfo.h"

#include <vector>

namespace orv::ug {

/// What a load of a state is to bring in. A value.
class ORV_API DataStateSpec {
public:
    /// Nothing.
    DataStateSpec() = default;

    /// Names the results; replaces those named before.
    void setResultIds(const std::vector<ResultInfo>& results);
    const std::vector<ResultInfo>& resultIds() const;

private:
    std::vector<ResultInfo> m_results;
};

} // namespace orv::ug
