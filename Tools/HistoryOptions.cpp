#include "Tools/Commands.h"

#include "Tools/CommandOptions.h"
#include "Tools/HistoryCommand.h"

#include <CLI/CLI.hpp>

#include <memory>

namespace orvapp {

namespace {

constexpr const char* HISTORY_FOOTER = R"(Examples:
  orvapp history bracket.frd --result 'vonMises(STRESS)' --node 687 stress.svg
  orvapp history bracket.frd --result 'l2Norm(DISP)' --node 687 --node 761 --name 'Displacement [mm]' moved.pdf
  orvapp history bracket.frd --result 'toElementsArithmetic(PE)' --element 12 --csv -

)";

constexpr const char* HISTORY_HELP = R"(

Nodes and elements are named by the solver's numbers. One that several parts have is taken from the first of them that
has values there, unless --part chooses. In a file with several groups of states, such as time steps and modes, the
first group is drawn; --state draws the one that has that state.

The JSON has the keys
  {"result", "mapping", "x", "curves": [{"name", "x": [], "y": []}]}, the first "x" being what x measures.

)";

void addIds(CLI::App* command, const char* name, std::vector<int>* ids, const char* help) {
    command->add_option(name, *ids, help)
        ->type_name("ID")
        ->expected(1)
        ->allow_extra_args(false)
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
}

} // namespace

Command addHistory(CLI::App* program) {
    auto options = std::make_shared<HistoryOptions>();
    CLI::App* history = program->add_subcommand("history", "Draw a result at nodes or elements over the states");
    addFile(history, &options->plot.values.file);
    addIds(history, "--node", &options->nodes, "A node to draw; may be repeated");
    addIds(history, "--element", &options->elements, "An element to draw; may be repeated");
    addPlotOptions(history, &options->plot);
    history->add_option("--part", options->plot.values.part, "In these parts only")->type_name("PATTERN");
    history->add_option("--state", options->state, "The states that belong to this one")->type_name("PATTERN");
    history->final_callback([options] {
        if (options->nodes.empty() == options->elements.empty()) {
            throw CLI::ParseError("either --node or --element is required", CLI::ExitCodes::RequiredError);
        }
    });
    history->footer(HISTORY_FOOTER + std::string(PLOT_HELP) + HISTORY_HELP + expressionHelp());
    return {history, [options] { runHistory(*options); }, true};
}

} // namespace orvapp
