#include "Tools/Commands.h"

#include "Tools/CommandOptions.h"
#include "Tools/ValuesCommand.h"

#include <CLI/CLI.hpp>

#include <memory>

namespace orvapp {

namespace {

constexpr const char* VALUES_FOOTER = R"(Examples:
  orvapp values bracket.frd --result DISP
  orvapp values bracket.frd --result STRESS --state '*time 1' --part 'STEEL*'
  orvapp values bracket.frd --result DISP --csv disp.csv
  orvapp values bracket.frd --result DISP --csv - | head

A pattern is a name, or part of one with wildcards: * for any text, ? for one character, [abc] for one of several.
Put it in quotes, so that the shell leaves it alone. A result is to be one; states and parts may be several. States
without values of the result are left out. Of several results of one name, 'T:node' or 'T:scalar:element' is one: behind
it stands its type (scalar, vector, displacement, tensor), where its values are (node, element, element_node,
element_surface), or both.

Places are the numbers that the solver gave to its nodes and elements. Count is all of them, undefined those without a
value. The CSV has the columns state, part, id and the components; a missing value is an empty field.

The JSON has the keys
  {"result", "rows": [{"state", "part", "component", "count", "undefined", "min", "minAt", "max", "maxAt", "average"}]})";

} // namespace

Command addValues(CLI::App* program) {
    auto options = std::make_shared<ValuesOptions>();
    CLI::App* values =
        program->add_subcommand("values", "Print the range and average of a result, or write all its values");
    addFiles(values, &options->file);
    values->add_option("--result", options->result, "The result to look at")->required()->type_name("PATTERN");
    addSelectionAndOutput(values, options.get(), "Write all values to a CSV file; - is standard output");
    values->footer(VALUES_FOOTER);
    return {values, [options] { runValues(*options); }};
}

} // namespace orvapp
