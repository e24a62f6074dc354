#pragma once

#include "OrvPlot2d/PlotWriter.h"
#include "Tools/ValuesCommand.h"

#include <string>

namespace CLI {
class App;
}

namespace orvapp {

/// What the commands that draw curves have in common.
struct PlotOptions {
    ValuesOptions values; ///< `result` is the expression, and `state` and `part` are the command's own affair.
    std::string picture;  ///< Empty for none.
    int width = orv::plt::PlotWriter::DEFAULT_WIDTH;
    int height = orv::plt::PlotWriter::DEFAULT_HEIGHT;
    std::string title; ///< Empty for one that tells the file.
    std::string name;  ///< What the result is called; empty for the expression.
    bool isXLogarithmic = false;
    bool isYLogarithmic = false;
};

/// OUT, --result, --name, --title, --size, --log-x, --log-y, --password-file, --csv and --json. FILE goes before it.
void addPlotOptions(CLI::App* command, PlotOptions* options);

/// About the picture and the CSV, for the help on a command.
extern const char* const PLOT_HELP;

} // namespace orvapp
