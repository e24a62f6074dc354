#include "Tools/ValuesSelection.h"

#include "Tools/Choice.h"
#include "Tools/Names.h"
#include "Tools/ResultWords.h"
#include "Tools/ValuesCommand.h"

#include <algorithm>
#include <iterator>

namespace orvapp {

namespace {

/// A pattern for names, and what the words behind it want: "DISP:vector:node", one of the words, or none.
struct QualifiedPattern {
    std::string name;
    orv::ug::ResultType type = orv::ug::NO_RESULT_TYPE;
    orv::ug::ResultMapping mapping = orv::ug::UNKNOWN_MAPPING;

    bool fits(const orv::ug::ResultInfo& result) const {
        return (type == orv::ug::NO_RESULT_TYPE || result.type() == type) &&
               (mapping == orv::ug::UNKNOWN_MAPPING || result.resultMapping() == mapping);
    }

    /// Off the end of the name; each kind of word once. False when there is none.
    bool takeWord() {
        const std::size_t colon = name.rfind(':');
        const std::string word = colon == std::string::npos ? "" : name.substr(colon + 1);
        const orv::ug::ResultType newType = typeOfWord(word);
        const orv::ug::ResultMapping newMapping = mappingOfWord(word);
        const bool isType = newType != orv::ug::NO_RESULT_TYPE && type == orv::ug::NO_RESULT_TYPE;
        const bool isMapping = newMapping != orv::ug::UNKNOWN_MAPPING && mapping == orv::ug::UNKNOWN_MAPPING;
        if (isType || isMapping) {
            type = isType ? newType : type;
            mapping = isMapping ? newMapping : mapping;
            name.resize(colon);
        }
        return isType || isMapping;
    }
};

/// With the words that tell it from others of its name, if there are any.
std::string qualifiedName(const orv::ug::ResultInfo& result, const std::vector<std::string>& names) {
    const std::string name = nameOf(result);
    return std::count(names.begin(), names.end(), name) == 1
               ? name
               : name + ':' + typeWord(result.type()) + ':' + mappingWord(result.resultMapping());
}

// A word is part of a name if there is one with it.
std::vector<std::size_t> chosenResults(const ResultFile& file, const std::vector<orv::ug::ResultInfo>& results,
                                       const std::vector<std::string>& names, const std::string& pattern) {
    QualifiedPattern qualified{pattern};
    while (selectNames(names, qualified.name).empty() && qualified.takeWord()) {
    }
    std::vector<std::size_t> found = choose(file, "result", names, qualified.name);
    const std::vector<orv::ug::ResultInfo> called = picked(results, found);
    std::erase_if(found, [&](std::size_t i) { return !qualified.fits(results[i]); });
    if (found.empty()) {
        std::vector<std::string> all;
        for (const orv::ug::ResultInfo& result : called) {
            all.push_back(qualifiedName(result, {}));
        }
        refuse(file, "there is no result \"" + pattern + "\", only: " + listed(all));
    }
    return found;
}

orv::ug::ResultInfo chosenResult(const ResultFile& file, const std::string& pattern) {
    const std::vector<orv::ug::ResultInfo> results = file.results();
    const std::vector<std::string> names = namesOf(results);
    const std::vector<std::size_t> found = chosenResults(file, results, names, pattern);
    if (found.size() > 1) {
        std::vector<std::string> choices;
        for (const std::size_t i : found) {
            choices.push_back(qualifiedName(results[i], names));
        }
        refuse(file, '"' + pattern + "\" names " + std::to_string(found.size()) +
                         " results, name one of them: " + listed(choices));
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
