#pragma once

#include <functional>
#include <vector>

namespace CLI {
class App;
}

namespace orvapp {

/// A command as the command line knows it.
struct Command {
    CLI::App* options = nullptr;
    std::function<void()> run;     ///< With what its options were set to; they live as long as this.
    bool takesExpressions = false; ///< So that -DISP is none of its options.
};

Command addInfo(CLI::App* program);
Command addValues(CLI::App* program);
Command addCompute(CLI::App* program);
Command addEnvelope(CLI::App* program);
Command addHistory(CLI::App* program);
Command addLength(CLI::App* program);
Command addConvert(CLI::App* program);
Command addSituation(CLI::App* program);
Command addRender(CLI::App* program);
Command addPick(CLI::App* program);
Command addFormats(CLI::App* program);

/// All of them, in the order of the help.
std::vector<Command> addCommands(CLI::App* program);

} // namespace orvapp
