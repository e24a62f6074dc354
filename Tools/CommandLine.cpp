#include "Tools/CommandLine.h"

#include "OrvApp/OrvApp.h"
#include "OrvImportCae/DataSourceCae.h"
#include "Tools/CommandError.h"
#include "Tools/InfoCommand.h"
#include "Tools/Names.h"
#include "Tools/Output.h"
#include "Tools/ValuesCommand.h"

#include <CLI/CLI.hpp>

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
  orvapp info bracket.frd --json
      For scripts.
)";

constexpr const char* EXIT_CODES = R"(Exit codes:
  0  done
  1  a file could not be read or written, or does not hold what was asked for
  2  the command line could not be understood
)";

constexpr const char* INFO_FOOTER = R"(Examples:
  orvapp info bracket.frd
  orvapp info bracket.frd --json

The JSON has the keys
  {"models": [{"file", "states": [{"index", "id", "name", "referenceType", "referenceValue"}], "stateGroups": [[ids]],
   "parts": [{"index", "geometry", "id", "name", "nodes", "elements", "elementTypes": {type: count}}],
   "results": [{"index", "id", "name", "type", "mapping", "custom"}], "warnings": []}]})";

constexpr const char* VALUES_FOOTER = R"(Examples:
  orvapp values bracket.frd --result DISP
  orvapp values bracket.frd --result STRESS --state '*time 1' --part 'STEEL*'
  orvapp values bracket.frd --result DISP --csv disp.csv
  orvapp values bracket.frd --result DISP --csv - | head

A pattern is a name, or part of one with wildcards: * for any text, ? for one character, [abc] for one of several.
Put it in quotes, so that the shell leaves it alone. A result is to be one; states and parts may be several. States
without values of the result are left out.

Places are the numbers that the solver gave to its nodes and elements. Count is all of them, undefined those without a
value. The CSV has the columns state, part, id and the components; a missing value is an empty field.

The JSON has the keys
  {"result", "rows": [{"state", "part", "component", "count", "undefined", "min", "minAt", "max", "maxAt", "average"}]})";

std::string readableFiles() {
    std::string text = "Readable files:\n";
    for (const orv::imp::cae::ReaderInfo& reader : orv::imp::cae::DataSourceCae::supportedFormats()) {
        text += "  " + reader.description.toStdString() + " (" + reader.extensions.toStdString() + ")\n";
    }
    return text;
}

const CLI::Validator& fileName() {
    static const CLI::Validator notEmpty(
        [](std::string& name) { return name.empty() ? "the name of a file is missing" : ""; }, "", "not empty");
    return notEmpty;
}

/// Options, and where their values go.
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
        addInfo();
        addValues();
    }

    /// Throws CLI::ParseError.
    void parse(int argc, const char* const* argv) {
        if (argc > 1 && argv[1][0] != '-') {
            checkCommandName(argv[1]);
        }
        m_app.parse(argc, argv);
        if (m_valuesOptions.json && m_valuesOptions.csv == "-") {
            throw CLI::ParseError("--json and --csv - both want standard output", CLI::ExitCodes::ExcludesError);
        }
    }

    void execute() const {
        if (m_info->parsed()) {
            runInfo(m_infoOptions);
        } else {
            runValues(m_valuesOptions);
        }
    }

    /// Of the command that has been named, otherwise of the program.
    std::string help() const {
        return m_app.help();
    }

    /// What is wrong with the command line, and where to read how it is right.
    std::string explained(const CLI::ParseError& error) const {
        const bool hasCommand = !m_app.get_subcommands().empty();
        const bool isCommandMissing = !hasCommand && dynamic_cast<const CLI::RequiredError*>(&error);
        return (isCommandMissing ? std::string("a command is missing: info or values") : error.what()) +
               " (see orvapp " + (hasCommand ? m_app.get_subcommands().front()->get_name() + ' ' : "") + "--help)";
    }

private:
    void addInfo() {
        m_info = m_app.add_subcommand("info", "List the states, parts and results of a file");
        m_info->add_option("FILE", m_infoOptions.file, "The result file")->required()->type_name("");
        m_info->add_flag("--json", m_infoOptions.json, "Print JSON for scripts in place of tables");
        m_info->group("Commands")->footer(INFO_FOOTER);
    }

    void addValues() {
        m_values = m_app.add_subcommand("values", "Print the range and average of a result, or write all its values");
        m_values->add_option("FILE", m_valuesOptions.file, "The result file")->required()->type_name("");
        m_values->add_option("--result", m_valuesOptions.result, "The result to look at")
            ->required()
            ->type_name("PATTERN");
        m_values->add_option("--state", m_valuesOptions.state, "These states only")->type_name("PATTERN");
        m_values->add_option("--part", m_valuesOptions.part, "These parts only")->type_name("PATTERN");
        m_values->add_option("--csv", m_valuesOptions.csv, "Write all values to a CSV file; - is standard output")
            ->type_name("OUT")
            ->check(fileName());
        m_values->add_flag("--json", m_valuesOptions.json, "Print JSON for scripts in place of the table");
        m_values->group("Commands")->footer(VALUES_FOOTER);
    }

    /// Left to itself, CLI11 says of an unknown command that a command is missing.
    static void checkCommandName(const std::string& name) {
        const std::vector<std::string> commands = {"info", "values"};
        if (selectNames(commands, name).empty()) {
            throw CLI::ParseError("there is no command \"" + name + '"' + didYouMean(commands, name),
                                  CLI::ExitCodes::ExtrasError);
        }
    }

    CLI::App m_app;
    CLI::App* m_info = nullptr;
    CLI::App* m_values = nullptr;
    InfoOptions m_infoOptions;
    ValuesOptions m_valuesOptions;
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
    } catch (const std::exception& error) {
        writeMessage(error.what());
        return FAILED;
    }
}

} // namespace orvapp
