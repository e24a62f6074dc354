#pragma once

#include "Tools/PlotOptions.h"

#include <string>
#include <vector>

namespace orvapp {

struct HistoryOptions {
    PlotOptions plot;          ///< `values.part` says where the nodes and elements are looked for.
    std::vector<int> nodes;    ///< By the solver's numbers.
    std::vector<int> elements; ///< Likewise; only one of the two lists has any.
    std::string state;         ///< Of several groups of states, one with this state; empty for the first.
};

/// `orvapp history`: a scalar at nodes or elements over the states, a curve for each of them, as a picture, a table,
/// CSV or JSON. A node or element that several parts have is drawn from the first that has values there. Throws
/// CommandError, ExpressionError or OutputClosed.
void runHistory(const HistoryOptions& options);

} // namespace orvapp
