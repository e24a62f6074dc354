#include "Tools/PlotOptions.h"

#include "Tools/Arguments.h"
#include "Tools/CommandOptions.h"

namespace orvapp {

namespace {

void readSize(const std::string& text, PlotOptions* options) {
    const PictureSize size = parseSize(text);
    options->width = size.width;
    options->height = size.height;
}

} // namespace

const char* const PLOT_HELP =
    R"(OUT is a picture for a report: lines when its name ends in .svg or .pdf, pixels when it ends in .png. Without it the
numbers alone are told. The CSV has a column for x and one for each curve, or two for each when they differ in x.)";

void addPlotOptions(CLI::App* command, PlotOptions* options) {
    command->add_option("OUT", options->picture, "The picture to write: .svg, .png or .pdf")->type_name("");
    command->add_option("--result", options->values.result, "What to draw, such as 'vonMises(STRESS)'")
        ->required()
        ->type_name("EXPRESSION");
    command->add_option("--name", options->name, "What it is called in the plot")->type_name("NAME");
    command->add_option("--title", options->title, "What stands above the plot")->type_name("TEXT");
    command
        ->add_option_function<std::string>(
            "--size", [options](const std::string& text) { readSize(text, options); }, "Pixels of the picture")
        ->type_name("WxH")
        ->check(understoodBy(parseSize));
    command->add_flag("--log-x", options->isXLogarithmic, "Make equal ratios equally long along x");
    command->add_flag("--log-y", options->isYLogarithmic, "Make equal ratios equally long along y");
    addOutput(command, &options->values, "Write all points to a CSV file; - is standard output");
}

} // namespace orvapp
