#pragma once

#include "LibCore/rvfExport.h"

#include <cstddef>
#include <vector>

namespace orv::ug {

/// States that belong together, such as the modes in a file that also holds load steps. A value.
class ORV_API StateGroupInfo {
public:
    /// The undefined record: no states.
    StateGroupInfo() = default;
    explicit StateGroupInfo(std::vector<int> stateIds);

    bool hasStateId(int stateId) const;
    std::size_t stateCount() const;
    /// Asserts "index < stateCount()"; -1 behind a failed assertion.
    int stateId(std::size_t index) const;

private:
    std::vector<int> m_stateIds;
};

} // namespace orv::ug
