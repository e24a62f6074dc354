#include "Tools/ValuesWalk.h"

#include "Tools/ItemIds.h"
#include "Tools/ProgressBar.h"

namespace orvapp {

namespace {

void visitPart(orv::ug::DataState& state, const orv::ug::StateInfo& stateInfo, const FilePart& part,
               const orv::ug::ResultInfo& result, const std::function<void(const PartValues&)>& visit) {
    const orv::ug::DataGeometry* geometry = state.geometry(part.geometryIndex);
    const orv::ug::DataResult* loaded = state.results(geometry)->find(result);
    const orv::ug::DataPartValues* values = loaded ? loaded->values(part.partIndex) : nullptr;
    const std::vector<int> ids = itemIds(*geometry->part(part.partIndex), result.resultMapping());
    if (values && values->itemCount() == ids.size()) {
        visit({stateInfo, part, ids, values->span()});
    }
}

} // namespace

void walkValues(const ResultFile& file, const ValuesSelection& selection,
                const std::function<void(const PartValues&)>& visit) {
    ProgressBar progress("Reading " + selection.result.name().toStdString());
    for (std::size_t i = 0; i < selection.states.size(); ++i) {
        progress.setPercent(int(100 * i / selection.states.size()));
        orv::ug::DataState* state = file.load(selection.states[i], selection.result);
        const orv::ug::StateInfo stateInfo = file.directory().findStateInfo(state->id());
        for (const FilePart& part : selection.parts) {
            visitPart(*state, stateInfo, part, selection.result, visit);
        }
        file.drop(selection.result);
    }
}

} // namespace orvapp
