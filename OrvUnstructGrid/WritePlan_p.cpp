#include "OrvUnstructGrid/WritePlan_p.h"

#include "OrvUnstructGrid/DataSourceDirectory.h"
#include "OrvUnstructGrid/Error.h"
#include "OrvUnstructGrid/ErrorTexts_p.h"
#include "OrvUnstructGrid/WriteSelection.h"

#include <algorithm>
#include <set>
#include <utility>

namespace orv::ug {
namespace {

using ResultKey = std::pair<ResultType, int>;

bool planStates(const std::vector<int>& ids, const DataSourceDirectory& directory, std::vector<StateInfo>* states,
                Error* error) {
    for (const int id : ids) {
        if (directory.findStateInfo(id).id() < 0) {
            return fail(error, unknownStateText(directory, id));
        }
    }
    const std::set<int> wanted(ids.begin(), ids.end());
    *states = directory.stateInfos();
    std::erase_if(*states, [&](const StateInfo& info) { return !ids.empty() && !wanted.contains(info.id()); });
    return true;
}

bool planResults(const std::vector<ResultInfo>& results, const DataSourceDirectory& directory,
                 std::vector<ResultInfo>* planned, Error* error) {
    std::set<ResultKey> wanted;
    for (const ResultInfo& info : results) {
        if (!info.isValid() || !(directory.findResultInfo(info.type(), info.id()) == info)) {
            return fail(error, unknownResultText(directory, info));
        }
        wanted.insert({info.type(), info.id()});
    }
    for (const ResultType type : {SCALAR, VECTOR, DISPLACEMENT, SYMMETRIC_TENSOR}) {
        for (const ResultInfo& info : directory.resultInfos(type)) {
            if (results.empty() || wanted.contains({info.type(), info.id()})) {
                planned->push_back(info);
            }
        }
    }
    return true;
}

bool planParts(const std::vector<int>& ids, const DataSourceDirectory& directory,
               std::vector<std::vector<std::size_t>>* parts, Error* error) {
    std::set<int> missing(ids.begin(), ids.end());
    const std::set<int> wanted = missing;
    for (std::size_t g = 0; g < directory.geometryCountPerState(); ++g) {
        const std::vector<PartInfo> infos = directory.partInfos(g);
        std::vector<std::size_t>& indexes = parts->emplace_back();
        for (std::size_t p = 0; p < infos.size(); ++p) {
            missing.erase(infos[p].id());
            if (ids.empty() || wanted.contains(infos[p].id())) {
                indexes.push_back(p);
            }
        }
    }
    return missing.empty() || fail(error, Str("There is no part %1 in ").arg(*missing.begin()) + sourceText(directory));
}

} // namespace

bool makeWritePlan(const WriteSelection& selection, const DataSourceDirectory& directory, WritePlan* plan,
                   Error* error) {
    *plan = WritePlan();
    return planStates(selection.stateIds, directory, &plan->states, error) &&
           planResults(selection.results, directory, &plan->results, error) &&
           planParts(selection.partIds, directory, &plan->parts, error);
}

ResultIds idsInFile(const std::vector<ResultInfo>& results) {
    ResultIds ids;
    std::set<ResultKey> taken;
    for (const ResultInfo& info : results) {
        if (!info.isCustom()) {
            ids[{info.type(), info.id()}] = info.id();
            taken.insert({info.type(), info.id()});
        }
    }
    std::map<ResultType, int> next;
    for (const ResultInfo& info : results) {
        if (info.isCustom()) {
            int& id = ++next[info.type()];
            while (taken.contains({info.type(), id})) {
                ++id;
            }
            ids[{info.type(), info.id()}] = id;
        }
    }
    return ids;
}

} // namespace orv::ug
