#pragma once

#include "Tools/EnvelopeReport.h"
#include "Tools/ValuesCommand.h"

#include <string>

namespace orvapp {

class ResultFile;
struct ValuesSelection;

struct EnvelopeOptions {
    std::string expression;
    ValuesOptions values; ///< `result` is not used.
};

/// `orvapp envelope`: the smallest and the largest value of an expression over all states, component by component, and
/// where they are, as a table, JSON or CSV. Memory is needed for one state at a time. Throws CommandError or
/// OutputClosed.
void runEnvelope(const EnvelopeOptions& options);

/// Of equal values the first in the order of states, parts and items counts. Values that are undefined or not numbers
/// do not.
EnvelopeReport envelopeOf(const ResultFile& file, const ValuesSelection& selection);

} // namespace orvapp
