#include "Tools/Commands.h"

#include "Tools/CommandOptions.h"
#include "Tools/ComputeCommand.h"

#include <CLI/CLI.hpp>

#include <memory>

namespace orvapp {

namespace {

constexpr const char* COMPUTE_FOOTER = R"(Examples:
  orvapp compute bracket.frd 'vonMises(STRESS)' --name Mises
  orvapp compute bracket.frd 'principals(STRESS)[3]' --name S1 --state '*time 1'
  orvapp compute bracket.frd '(max(PE, ERROR) - 1) * 100' --name Worst --csv worst.csv
  orvapp compute bracket.frd 'l2Norm("DISP":displacement:node)' --name Moved

The table, the CSV and the JSON are those of orvapp values; see there, also for patterns. A state is left out when it
lacks values of a result that the expression names.

)";

} // namespace

Command addCompute(CLI::App* program) {
    auto options = std::make_shared<ComputeOptions>();
    CLI::App* compute =
        program->add_subcommand("compute", "Compute a result from others, and print or write it as values does");
    addFileAndExpression(compute, &options->values.file, &options->expression);
    compute->add_option("--name", options->values.result, "What the computed result is called")
        ->required()
        ->type_name("NAME")
        ->check(notEmpty("the name is empty"));
    addSelectionAndOutput(compute, &options->values, "Write all values to a CSV file; - is standard output");
    compute->footer(COMPUTE_FOOTER + expressionHelp());
    return {compute, [options] { runCompute(*options); }, true};
}

} // namespace orvapp
