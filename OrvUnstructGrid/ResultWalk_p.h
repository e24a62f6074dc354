#pragma once

#include "OrvUnstructGrid/ResultInfo.h"

#include <cstddef>
#include <set>
#include <tuple>
#include <vector>

namespace orv::ug {

/// Walks expressions: a custom result, its arguments, theirs, and so on, each result once and arguments before what is
/// computed from them, arguments of one result in their order. Several walks of one object share the memory of what
/// has been seen. It uses no recursion, so an expression may be as deep as memory allows.
class ResultWalk {
public:
    /// @param isInner called with a result when it is first met: whether the walk goes on to its arguments
    /// @param visit called with a result when its arguments are done; false ends the walk
    /// @return false when `visit` ended it
    template <class IsInner, class Visit>
    bool walk(const ResultInfo& root, IsInner isInner, Visit visit) {
        std::vector<Step> path;
        auto enter = [&](const ResultInfo& info) {
            if (m_seen.insert(identity(info)).second) {
                path.push_back({info, 0, isInner(info) ? info.customResultArguments().size() : 0});
            }
        };
        enter(root);
        while (!path.empty()) {
            Step& step = path.back();
            if (step.next < step.end) {
                enter(ResultInfo(step.info.customResultArguments()[step.next++]));
                continue;
            }
            const ResultInfo done = step.info;
            path.pop_back();
            if (!visit(done)) {
                return false;
            }
        }
        return true;
    }

private:
    struct Step {
        ResultInfo info;
        std::size_t next;
        std::size_t end;
    };

    using Identity = std::tuple<bool, ResultType, int, Str>;

    // Files of other sources may use the same type and id: there the name tells them apart.
    static Identity identity(const ResultInfo& info) {
        return {info.isCustom(), info.type(), info.id(), info.isCustom() ? Str() : info.name()};
    }

    std::set<Identity> m_seen;
};

} // namespace orv::ug
