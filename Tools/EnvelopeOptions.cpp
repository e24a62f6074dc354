#include "Tools/Commands.h"

#include "Tools/CommandOptions.h"
#include "Tools/EnvelopeCommand.h"

#include <CLI/CLI.hpp>

#include <memory>

namespace orvapp {

namespace {

constexpr const char* ENVELOPE_FOOTER = R"(Examples:
  orvapp envelope bracket.frd 'vonMises(STRESS)'
  orvapp envelope bracket.frd 'l2Norm(DISP)' --part STEEL
  orvapp envelope bracket.frd STRESS --csv -

Of vectors and tensors each component has an envelope of its own; for one number of all write l2Norm(A) or vonMises(A).
Of equal values the first is told. Values that are undefined or not numbers do not take part. One state at a time is in
memory.

The CSV has the columns component, extreme, value, state, referenceType, referenceValue, part, id. The JSON has the keys
  {"expression", "states", "rows": [{"component", "count", "undefined", "min", "max"}]}, min and max being
  {"value", "state", "referenceType", "referenceValue", "part", "at"} or null.

)";

} // namespace

Command addEnvelope(CLI::App* program) {
    auto options = std::make_shared<EnvelopeOptions>();
    CLI::App* envelope =
        program->add_subcommand("envelope", "Print the range of an expression over all states, and where");
    addFileAndExpression(envelope, &options->values.file, &options->expression);
    addSelectionAndOutput(envelope, &options->values, "Write the table to a CSV file; - is standard output");
    envelope->footer(ENVELOPE_FOOTER + expressionHelp());
    return {envelope, [options] { runEnvelope(*options); }, true};
}

} // namespace orvapp
