#include "Tools/Commands.h"

#include "Tools/Arguments.h"
#include "Tools/CommandOptions.h"
#include "Tools/LengthCommand.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <iterator>
#include <memory>

namespace orvapp {

namespace {

constexpr const char* LENGTH_FOOTER = R"(Examples:
  orvapp length bracket.frd --result 'vonMises(STRESS)' --through 0,5,10 --through 60,5,10 stress.svg
  orvapp length bracket.frd --result 'l2Norm(DISP)' --state '*' --through 0,5,10 --through 60,5,10 moved.pdf
  orvapp length bracket.frd --result PE --through 0,5,10 --through 60,5,10 --csv -

)";

constexpr const char* LENGTH_HELP = R"(

The way runs over the undeformed surface from point to point, straight as seen from above it, and where that does not
lead on, because of a hole, the shortest way along edges of elements. Points are moved to the nearest place of the
surface, which must not be farther away than the tolerance. Each state makes a curve.

The JSON has the keys
  {"result", "mapping", "x", "curves": [{"name", "x": [], "y": [], "path": [[]]}]}, the first "x" being what x measures,
  and the path the corners of the way; a missing value is null.

)";

void readPoints(const std::vector<std::string>& texts, std::vector<orv::Vec3d>* points) {
    std::transform(texts.begin(), texts.end(), std::back_inserter(*points), parseVector);
    if (points->size() < 2) {
        throw CLI::ValidationError("--through", "a way needs two points or more");
    }
}

} // namespace

Command addLength(CLI::App* program) {
    auto options = std::make_shared<LengthOptions>();
    CLI::App* length = program->add_subcommand("length", "Draw a result along the surface through points");
    addFile(length, &options->plot.values.file);
    length
        ->add_option_function<std::vector<std::string>>(
            "--through", [options](const std::vector<std::string>& texts) { readPoints(texts, &options->through); },
            "A point of the way; two or more")
        ->required()
        ->type_name("X,Y,Z")
        ->check(understoodBy(parseVector))
        ->expected(1)
        ->allow_extra_args(false)
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
    addPlotOptions(length, &options->plot);
    length->add_option("--state", options->state, "In these states; in the last one otherwise")->type_name("PATTERN");
    length->add_option("--part", options->plot.values.part, "Along these parts only")->type_name("PATTERN");
    length
        ->add_option("--tolerance", options->tolerance,
                     "How far points may be from the surface; 1 % of the model's diagonal otherwise")
        ->type_name("LENGTH")
        ->check(CLI::Validator(CLI::NonNegativeNumber).description(""));
    length->footer(LENGTH_FOOTER + std::string(PLOT_HELP) + LENGTH_HELP + expressionHelp());
    return {length, [options] { runLength(*options); }, true};
}

} // namespace orvapp
