#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace orvapp {

/// A value and where it was found.
struct EnvelopeExtreme {
    double value;
    std::string state;
    std::string referenceType; ///< "time" and so on.
    double referenceValue;     ///< UNDEFINED_DOUBLE when the state has none.
    std::string part;
    int at; ///< The solver's number of the node or element.
};

/// One component over all states and parts.
struct EnvelopeRow {
    std::string component;
    std::size_t count = 0;     ///< Values, there or missing.
    std::size_t undefined = 0; ///< Missing ones.
    std::optional<EnvelopeExtreme> min = {};
    std::optional<EnvelopeExtreme> max = {};
};

/// What `orvapp envelope` tells.
struct EnvelopeReport {
    std::string expression;
    std::string type;
    std::string mapping;
    std::string place; ///< Whose numbers the places are: "node" or "element".
    std::size_t states = 0;
    std::vector<EnvelopeRow> rows;
};

} // namespace orvapp
