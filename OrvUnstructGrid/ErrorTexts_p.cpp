#include "OrvUnstructGrid/ErrorTexts_p.h"

#include "OrvUnstructGrid/DataSourceDirectory.h"

namespace orv::ug {
namespace {

Str quoted(const Str& text) {
    return "'" + text + "'";
}

Str number(int value) {
    return Str("%1").arg(value);
}

Str nameText(const ResultInfo& info) {
    return "Result " + quoted(info.name());
}

// A long list is cut: the last id tells how far it goes.
Str idsText(const std::vector<StateInfo>& states) {
    constexpr std::size_t LONGEST = 8;
    Str text;
    for (std::size_t i = 0; i < states.size(); ++i) {
        if (states.size() > LONGEST && i == LONGEST - 1) {
            return text + ", ..., " + number(states.back().id());
        }
        text += (i > 0 ? ", " : "") + number(states[i].id());
    }
    return text;
}

Str namesText(const std::vector<ResultInfo>& infos) {
    Str text;
    for (const ResultInfo& info : infos) {
        text += (text.isEmpty() ? "" : ", ") + quoted(info.name());
    }
    return text;
}

} // namespace

Str sourceText(const DataSourceDirectory& directory) {
    const Str filename = directory.simulationInfo().filename();
    return filename.isEmpty() ? Str("the data source") : quoted(filename);
}

Str stateText(const DataSourceDirectory& directory, int stateId) {
    const Str name = directory.findStateInfo(stateId).name();
    return "state " + (name.isEmpty() ? number(stateId) : quoted(name)) + " of " + sourceText(directory);
}

Str unknownStateText(const DataSourceDirectory& directory, int stateId) {
    const std::vector<StateInfo> states = directory.stateInfos();
    return "There is no state " + number(stateId) + " in " + sourceText(directory) + ": " +
           (states.empty() ? Str("it has no states") : "its states are " + idsText(states));
}

Str unknownResultText(const DataSourceDirectory& directory, const ResultInfo& info) {
    const Str source = sourceText(directory);
    if (!info.isValid()) {
        return "An invalid result was asked for: take one from the directory of " + source;
    }
    if (info.isCustom()) {
        return nameText(info) + " is custom and not registered in " + source + ": add it first";
    }
    return nameText(info) + " is not in " + source + ": take one from its directory";
}

Str unreadableResultText(const DataSourceDirectory& directory, int stateId, const ResultInfo& needed,
                         const ResultInfo& missing) {
    const bool isKnown = directory.findResultInfo(missing.type(), missing.id()) == missing && missing.isValid();
    const Str lack = isKnown ? "has no values in " + stateText(directory, stateId) + ": choose a state that has it"
                             : "is not in " + sourceText(directory) + ": build it from results that are";
    return needed == missing ? nameText(needed) + " " + lack
                             : nameText(needed) + " rests on " + quoted(missing.name()) + ", which " + lack;
}

Str failedReadText(const DataSourceDirectory& directory, int stateId, const ResultInfo& info) {
    return nameText(info) + " could not be read for " + stateText(directory, stateId) +
           ": see whether the file is intact";
}

Str failedComputationText(const DataSourceDirectory& directory, int stateId, const ResultInfo& info) {
    const Str text = nameText(info) + " could not be computed for " + stateText(directory, stateId);
    if (!info.customResultGenerator()) {
        return text + ": it was made without a generator";
    }
    if (info.customResultArguments().empty()) {
        return text + ": its generator gave up";
    }
    return text + ": see whether types, mappings and parts of its arguments fit together, which are " +
           namesText(info.customResultArguments());
}

} // namespace orv::ug
