#include "OrvImportCae/CaeReader.h"

#include "OrvImportCae/CaeNumber.h"
#include "OrvUnstructGrid/DataResultGroup.h"

#include <algorithm>
#include <utility>

namespace orv::imp::cae {

ug::StateInfo timeState(int id, double time) {
    return ug::StateInfo(id, Str("Time " + caeNumberText(time)), ug::StateInfo::TIME, time);
}

std::vector<ug::StateGroupInfo> groupStates(const std::vector<ug::StateInfo>& states) {
    std::vector<ug::StateInfo::ReferenceType> types;
    std::vector<std::vector<int>> ids;
    for (const ug::StateInfo& state : states) {
        const auto found = std::find(types.begin(), types.end(), state.referenceType());
        const std::size_t group = std::size_t(found - types.begin());
        if (found == types.end()) {
            types.push_back(state.referenceType());
            ids.emplace_back();
        }
        ids[group].push_back(state.id());
    }
    std::vector<ug::StateGroupInfo> groups;
    if (types.size() > 1) {
        for (std::vector<int>& group : ids) {
            groups.emplace_back(std::move(group));
        }
    }
    return groups;
}

CaeReader::~CaeReader() = default;

void CaeReader::setProgress(ug::ProgressMeter* progress) {
    m_progress = progress;
}

ug::ProgressMeter* CaeReader::progress() const {
    return m_progress;
}

void CaeReader::updateRanges(ug::DataResult* result) {
    if (auto* scalar = dynamic_cast<ug::DataResultScalar*>(result)) {
        for (std::size_t i = 0; i < scalar->partCount(); ++i) {
            scalar->part(i)->updateMinMaxWhenAsked();
        }
    }
}

void CaeReader::beginLoad(const std::vector<ug::ResultInfo>&, int) {}

void CaeReader::endLoad() {}

bool CaeReader::readScalars(const ug::ResultInfo&, int, const ug::ScalarPlace&, std::span<double>) {
    return false;
}

} // namespace orv::imp::cae
