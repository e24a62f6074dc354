#include "OrvUnstructGrid/DataStateSpec.h"

namespace orv::ug {

void DataStateSpec::setResultIds(const std::vector<ResultInfo>& results) {
    m_results = results;
}

const std::vector<ResultInfo>& DataStateSpec::resultIds() const {
    return m_results;
}

} // namespace orv::ug
