#include "Tools/Commands.h"

#include "Tools/CommandOptions.h"
#include "Tools/RenderCommand.h"

#include <CLI/CLI.hpp>

#include <memory>

namespace orvapp {

namespace {

constexpr const char* RENDER_FOOTER = R"(Examples:
  orvapp render bracket.frd --result 'vonMises(STRESS)' mises.png
  orvapp render bracket.frd --result PE --deform DISPx10 --view front --colors rainbow --bands 10 pe.png
  orvapp render bracket.frd --result PE --state '*' --deform DISPx10 --animate pe.png
  orvapp render bracket.frd --result 'l2Norm(DISP)' --cut y=5 cut.png
  orvapp render bracket.frd --part STEEL --parallel --size 1920x1080 steel.png

The camera shows all of what is to be seen. A series has one picture for each state that has the result: pe_0001.png and
so on, all with the same camera and range of colours. No display is needed.

A section is inside of the parts: these are hidden, but for those that --part names. Values that are undefined are grey.
Colours are those of the legend where the light is brightest; with --no-light everywhere.

)";

} // namespace

Command addRender(CLI::App* program) {
    auto options = std::make_shared<RenderOptions>();
    CLI::App* render = program->add_subcommand("render", "Draw a picture of a state, or one of each, as PNG");
    addPicture(render, &options->picture);
    render->add_option("OUT", options->out, "The picture to write; its name ends in .png")->required()->type_name("");
    render->add_flag("--animate", options->isSeries, "One picture of each state, OUT_0001.png and so on");
    addLook(render, &options->look);
    render->footer(RENDER_FOOTER + expressionHelp());
    return {render, [options] { runRender(*options); }, true};
}

} // namespace orvapp
