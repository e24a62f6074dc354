#include "Tools/Commands.h"

#include <CLI/CLI.hpp>

namespace orvapp {

std::vector<Command> addCommands(CLI::App* program) {
    std::vector<Command> commands;
    for (Command (*add)(CLI::App*) : {
             addInfo,
             addValues,
             addCompute,
             addEnvelope,
             addHistory,
             addLength,
             addRender,
             addPick,
             addConvert,
             addSituation,
             addFormats,
         }) {
        commands.push_back(add(program));
        commands.back().options->group("Commands");
    }
    return commands;
}

} // namespace orvapp
