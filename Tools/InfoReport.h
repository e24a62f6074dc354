#pragma once

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

namespace orvapp {

struct StateRow {
    std::size_t index;
    int id;
    std::string name;
    std::string referenceType;
    double referenceValue; ///< UNDEFINED_DOUBLE when there is none.
};

struct PartRow {
    std::size_t index; ///< In the Parts catalogue.
    std::size_t geometry;
    int id;
    std::string name;
    std::size_t nodes;
    std::size_t elements;
    std::vector<std::pair<std::string, std::size_t>> elementTypes; ///< Those that occur, and how often.
};

struct ResultRow {
    std::size_t index; ///< In the Results catalogue, when nothing is filtered by state.
    int id;
    std::string name;
    std::string type;
    std::string mapping;
    bool custom;
    std::size_t states; ///< How many states have it.
};

/// What a model holds, as `orvapp info` tells it.
struct ModelReport {
    std::string file;
    std::vector<std::string> furtherFiles; ///< Opened together with it.
    int caseId = -1;                       ///< -1 when the format has no cases.
    std::string caseName;
    std::string title;
    std::vector<StateRow> states;
    std::vector<std::vector<int>> stateGroups; ///< State ids.
    std::vector<PartRow> parts;                ///< As in the first state.
    std::vector<ResultRow> results;
    std::vector<std::string> warnings;
};

} // namespace orvapp
