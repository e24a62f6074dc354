#include "Tools/CommandLine.h"

#include "OrvApp/OrvApp.h"
#include "Tools/CommandError.h"
#include "Tools/Commands.h"
#include "Tools/ExpressionError.h"
#include "Tools/FormatsCommand.h"
#include "Tools/Names.h"
#include "Tools/Output.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <exception>

namespace orvapp {

namespace {

constexpr const char* EXAMPLES = R"(Examples:
  orvapp info bracket.frd
      What is in the file: its states, parts and results.
  orvapp values bracket.frd --result DISP
      Minimum, maximum and average of a result in every state and part, and where.
  orvapp values bracket.frd --result STRESS --state '*time 1' --part STEEL
      The same for some of the states and parts only.
  orvapp values bracket.frd --result DISP --csv disp.csv
      All values, node by node, as a table for a spreadsheet.
  orvapp compute bracket.frd 'vonMises(STRESS)/355' --name Utilisation
      The same of a result that is computed from others.
  orvapp envelope bracket.frd 'l2Norm(DISP)'
      The smallest and the largest value over all states, and where.
  orvapp history bracket.frd --result 'vonMises(STRESS)' --node 687 stress.svg
      A result at a node over all states, as a picture for a report.
  orvapp length bracket.frd --result 'l2Norm(DISP)' --through 0,5,10 --through 60,5,10 moved.svg
      A result along the surface from point to point.
  orvapp render bracket.frd --result 'vonMises(STRESS)' --deform DISPx10 mises.png
      A picture, without a display.
  orvapp pick bracket.frd --result 'vonMises(STRESS)' --deform DISPx10 --at 400,380
      What is seen at a pixel of that picture.
  orvapp convert bracket.frd bracket.ztfx
      Into a file that opens at once and holds several cases.
  orvapp info bracket.frd --json
      For scripts.
)";

constexpr const char* EXIT_CODES = R"(Exit codes:
  0  done
  1  a file could not be read or written, or does not hold what was asked for
  2  the command line could not be understood
)";

std::string readableFiles() {
    std::string text = "Readable files:\n";
    for (const orv::imp::cae::FormatInfo& format : readableFormats()) {
        text += "  " + format.description.toStdString() + " (" + format.extensions.toStdString() + ")\n";
    }
    return text;
}

/// Commands with their options, and where their values go.
class CommandLine {
public:
    CommandLine() : m_app("Looks into finite-element result files.", "orvapp") {
        m_app.set_help_flag("-h,--help", "Print this help and exit");
        m_app.set_version_flag("--version", "orvapp " + orv::app::AppComponent::versionString().toStdString(),
                               "Print the version and exit");
        m_app.footer(std::string(EXAMPLES) + '\n' + readableFiles() + '\n' + EXIT_CODES +
                     "\nMore on a command: orvapp COMMAND --help");
        m_app.require_subcommand(1);
        m_app.get_formatter()->label("SUBCOMMAND", "COMMAND ...");
        m_app.get_formatter()->label("Positionals", "Arguments");
        m_app.get_formatter()->label("REQUIRED", "(required)");
        m_commands = addCommands(&m_app);
        for (const Command& command : m_commands) {
            if (command.takesExpressions) {
                unmarkValues(command.options);
            }
        }
    }

    /// Throws CLI::ParseError.
    void parse(int argc, const char* const* argv) {
        const std::vector<std::string> arguments(argv + std::min(argc, 1), argv + argc);
        checkCommandNames(arguments);
        parseArguments(arguments);
    }

    void execute() const {
        for (const Command& command : m_commands) {
            if (command.options->parsed()) {
                command.run();
            }
        }
    }

    /// Of the command that has been named, otherwise of the program.
    std::string help() const {
        return m_app.help();
    }

    /// What is wrong with the command line, and where to read how it is right.
    std::string explained(const CLI::ParseError& error) const {
        std::string name;
        const CLI::App* command = &m_app;
        while (!command->get_subcommands().empty()) {
            command = command->get_subcommands().front();
            name += command->get_name() + ' ';
        }
        const std::vector<std::string> commands = commandNames(*command);
        const bool isCommandMissing = !commands.empty() && dynamic_cast<const CLI::RequiredError*>(&error);
        return (isCommandMissing ? "a command is missing: " + listOf(commands) : unmarked(error.what())) +
               " (see orvapp " + name + "--help)";
    }

private:
    void parseArguments(std::vector<std::string> arguments) {
        for (const Command& command : m_commands) {
            if (command.takesExpressions && !arguments.empty() && arguments[0] == command.options->get_name()) {
                std::for_each(arguments.begin() + 1, arguments.end(), markMinus);
            }
        }
        std::reverse(arguments.begin(), arguments.end()); // CLI11 wants the last one first
        m_app.parse(std::move(arguments));
    }

    /// CLI11 would take an expression such as -DISP for options.
    static void markMinus(std::string& argument) {
        if (argument.size() > 1 && argument[0] == '-' && argument[1] != '-' && argument != "-h") {
            argument.insert(0, 1, MINUS_MARK);
        }
    }

    static std::string unmarked(std::string text) {
        std::erase(text, MINUS_MARK);
        return text;
    }

    static void unmarkValues(CLI::App* command) {
        for (CLI::Option* option :
             command->get_options([](const CLI::Option* o) { return o->get_items_expected() > 0; })) {
            option->transform(unmarked);
        }
        for (CLI::App* below : command->get_subcommands([](CLI::App*) { return true; })) {
            unmarkValues(below);
        }
    }

    static std::vector<std::string> commandNames(const CLI::App& command) {
        std::vector<std::string> names;
        for (const CLI::App* below : command.get_subcommands([](const CLI::App*) { return true; })) {
            names.push_back(below->get_name());
        }
        return names;
    }

    /// "a, b or c"
    static std::string listOf(const std::vector<std::string>& names) {
        std::string list;
        for (std::size_t i = 0; i < names.size(); ++i) {
            list += (i == 0 ? "" : i + 1 < names.size() ? ", " : " or ") + names[i];
        }
        return list;
    }

    /// Left to itself, CLI11 says of an unknown command that a command is missing.
    void checkCommandNames(const std::vector<std::string>& arguments) const {
        const CLI::App* command = &m_app;
        std::string before;
        for (const std::string& name : arguments) {
            const std::vector<std::string> names = commandNames(*command);
            if (names.empty() || name.starts_with('-')) {
                return;
            }
            if (selectNames(names, name).empty()) {
                throw CLI::ParseError("there is no command \"" + before + name + '"' + didYouMean(names, name),
                                      CLI::ExitCodes::ExtrasError);
            }
            const auto named =
                command->get_subcommands([&](const CLI::App* below) { return below->get_name() == name; });
            if (named.empty()) {
                return;
            }
            command = named.front();
            before += name + ' ';
        }
    }

    static constexpr char MINUS_MARK = '\x01'; ///< In front of an expression, for CLI11 only.

    CLI::App m_app;
    std::vector<Command> m_commands;
};

ExitCode parseAndExecute(int argc, const char* const* argv) {
    CommandLine line;
    try {
        line.parse(argc, argv);
    } catch (const CLI::CallForHelp&) {
        writeStandardOutput(line.help());
        return DONE;
    } catch (const CLI::CallForVersion& version) {
        writeStandardOutput(std::string(version.what()) + '\n');
        return DONE;
    } catch (const CLI::ParseError& error) {
        writeMessage(line.explained(error));
        return WRONG_USAGE;
    }
    line.execute();
    return DONE;
}

} // namespace

ExitCode run(int argc, const char* const* argv) {
    try {
        return parseAndExecute(argc, argv);
    } catch (const OutputClosed&) {
        return DONE;
    } catch (const ExpressionError& error) {
        writeMessage(error.what());
        writeStandardError(error.excerpt());
        return FAILED;
    } catch (const std::exception& error) {
        writeMessage(error.what());
        return FAILED;
    }
}

} // namespace orvapp
