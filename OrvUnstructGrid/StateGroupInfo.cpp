#include "OrvUnstructGrid/StateGroupInfo.h"

#include "LibCore/rvfAssert.h"

#include <algorithm>
#include <utility>

namespace orv::ug {

StateGroupInfo::StateGroupInfo(std::vector<int> stateIds) : m_stateIds(std::move(stateIds)) {}

bool StateGroupInfo::hasStateId(int stateId) const {
    return std::find(m_stateIds.begin(), m_stateIds.end(), stateId) != m_stateIds.end();
}

std::size_t StateGroupInfo::stateCount() const {
    return m_stateIds.size();
}

int StateGroupInfo::stateId(std::size_t index) const {
    RVF_ASSERT(index < stateCount());
    return index < stateCount() ? m_stateIds[index] : -1;
}

} // namespace orv::ug
