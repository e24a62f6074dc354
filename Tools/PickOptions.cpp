#include "Tools/Commands.h"

#include "Tools/CommandOptions.h"
#include "Tools/PickCommand.h"

#include <CLI/CLI.hpp>

#include <memory>

namespace orvapp {

namespace {

constexpr const char* PICK_FOOTER = R"(Examples:
  orvapp pick bracket.frd --result 'vonMises(STRESS)' --at 400,300
  orvapp pick bracket.frd --result PE --deform DISPx10 --view front --at 120,45 --json
  orvapp pick bracket.frd --ray 0,0,100 0,0,-1

With the options of orvapp render for the file, the result, the state, the parts, the shape and the camera, what is told is
what is seen in that picture. The number under Value is the one that gives the point its colour; the next one is that of
the node or element. Nodes and elements have the numbers that the solver gave them, surfaces of an element count from 0.
A section has neither.

The JSON has the keys
  {"state", "result", "item"}, item being null where nothing is seen, or
  {"part", "isSection", "element", "surface", "node", "point": [X, Y, Z], "value", "itemValue"}.

)";

void checkPlace(const PickOptions& options) {
    if (options.at.empty() == options.ray.empty()) {
        throw CLI::ParseError(options.at.empty() ? "a place is missing: --at or --ray"
                                                 : "--at and --ray are two places, name one",
                              CLI::ExitCodes::ExcludesError);
    }
    if (!options.at.empty()) {
        const Pixel pixel = parsePixel(options.at);
        const PictureSize size = parseSize(options.picture.size);
        if (pixel.x < 0 || pixel.y < 0 || pixel.x >= size.width || pixel.y >= size.height) {
            throw CLI::ParseError("pixel " + options.at + " is outside of the picture, whose last one is " +
                                      std::to_string(size.width - 1) + ',' + std::to_string(size.height - 1),
                                  CLI::ExitCodes::ValidationError);
        }
    }
}

} // namespace

Command addPick(CLI::App* program) {
    auto options = std::make_shared<PickOptions>();
    CLI::App* pick = program->add_subcommand("pick", "Tell what is seen at a pixel of a picture");
    addPicture(pick, &options->picture);
    pick->add_option("--at", options->at, "A pixel, from 0,0 at the upper left corner")
        ->type_name("X,Y")
        ->check(understoodBy(parsePixel));
    pick->add_option("--ray", options->ray, "A ray in place of a pixel: two arguments, such as 0,0,10 0,0,-1")
        ->type_name("ORIGIN DIRECTION")
        ->expected(2)
        ->check(understoodBy(parseVector));
    pick->add_flag("--json", options->json, "Print JSON for scripts in place of the table");
    pick->parse_complete_callback([options] { checkPlace(*options); });
    pick->footer(PICK_FOOTER + expressionHelp());
    return {pick, [options] { runPick(*options); }, true};
}

} // namespace orvapp
