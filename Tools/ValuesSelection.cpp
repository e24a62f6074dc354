#include "Tools/ValuesSelection.h"

#include "Tools/Choice.h"
#include "Tools/Names.h"
#include "Tools/ValuesCommand.h"

#include <algorithm>
#include <iterator>

namespace orvapp {

namespace {

orv::ug::ResultInfo chosenResult(const ResultFile& file, const std::string& pattern) {
    const std::vector<orv::ug::ResultInfo> results = file.results();
    const std::vector<std::string> names = namesOf(results);
    const std::vector<std::size_t> found = choose(file, "result", names, pattern);
    if (found.size() > 1) {
        refuse(file, '"' + pattern + "\" names " + std::to_string(found.size()) +
                         " results, name one of them: " + listed(picked(names, found)));
    }
    return results[found.front()];
}

/// Those among the states that the pattern selects that have the result.
std::vector<std::size_t> chosenStates(const ResultFile& file, const orv::ug::ResultInfo& result,
                                      const std::string& pattern) {
    const std::vector<std::string> names = namesOf(file.directory().stateInfos());
    const std::vector<std::size_t> selected = choose(file, "state", names, pattern);
    const std::vector<std::size_t> having = file.statesWith(result);
    std::vector<std::size_t> both;
    std::set_intersection(selected.begin(), selected.end(), having.begin(), having.end(), std::back_inserter(both));
    if (both.empty()) {
        const std::string name = '"' + nameOf(result) + '"';
        refuse(file, having.empty() ? name + " has no values in any state"
                                    : name + " has no values in state \"" + pattern +
                                          "\", only in: " + listed(picked(names, having)));
    }
    return both;
}

std::vector<FilePart> chosenParts(const ResultFile& file, const std::string& pattern) {
    const std::vector<FilePart> parts = file.parts();
    return picked(parts, choose(file, "part", namesOf(parts), pattern));
}

} // namespace

ValuesSelection selectValues(const ResultFile& file, const ValuesOptions& options) {
    return selectValues(file, chosenResult(file, options.result), options);
}

ValuesSelection selectValues(const ResultFile& file, const orv::ug::ResultInfo& result, const ValuesOptions& options) {
    ValuesSelection selection;
    selection.result = result;
    selection.states = chosenStates(file, result, options.state);
    selection.parts = chosenParts(file, options.part);
    return selection;
}

} // namespace orvapp
