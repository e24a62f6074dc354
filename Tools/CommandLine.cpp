#include "Tools/CommandLine.h"

#include "OrvApp/OrvApp.h"
#include "OrvImportCae/DataSourceCae.h"
#include "Tools/CommandError.h"
#include "Tools/ComputeCommand.h"
#include "Tools/ConvertCommand.h"
#include "Tools/EnvelopeCommand.h"
#include "Tools/ExpressionError.h"
#include "Tools/ExpressionFunctions.h"
#include "Tools/InfoCommand.h"
#include "Tools/Names.h"
#include "Tools/Output.h"
#include "Tools/ValuesCommand.h"

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

constexpr const char* INFO_FOOTER = R"(Examples:
  orvapp info bracket.frd
  orvapp info bracket.frd --json

Of a .ztfx file with several cases all are told, and the file of each is the name that opens it: beam.ztfx|3. The other
commands take that name too, and the first case without it.

The JSON has the keys
  {"models": [{"file", "case": {"id", "name"} in .ztfx files, "states": [{"index", "id", "name", "referenceType", "referenceValue"}], "stateGroups": [[ids]],
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

constexpr const char* COMPUTE_FOOTER = R"(Examples:
  orvapp compute bracket.frd 'vonMises(STRESS)' --name Mises
  orvapp compute bracket.frd 'principals(STRESS)[3]' --name S1 --state '*time 1'
  orvapp compute bracket.frd '(max(PE, ERROR) - 1) * 100' --name Worst --csv worst.csv
  orvapp compute bracket.frd 'l2Norm("DISP":displacement:node)' --name Moved

The table, the CSV and the JSON are those of orvapp values; see there, also for patterns. A state is left out when it
lacks values of a result that the expression names.

)";

constexpr const char* ENVELOPE_FOOTER = R"(Examples:
  orvapp envelope bracket.frd 'vonMises(STRESS)'
  orvapp envelope bracket.frd 'l2Norm(DISP)' --part STEEL
  orvapp envelope bracket.frd STRESS --csv -

Of vectors and tensors each component has an envelope of its own; for one number of all write l2Norm(A) or vonMises(A).
Of equal values the first is told. Values that are undefined or not numbers do not take part. One state at a time is in
memory.

The CSV has the columns component, extreme, value, state, referenceType, referenceValue, part, id. The JSON has the keys
  {"expression", "states", "rows": [{"component", "count", "undefined", "min", "max"}]}, min and max being
  {"value", "state", "referenceType", "referenceValue", "part", "at"} or null.

)";

constexpr const char* CONVERT_FOOTER = R"(Examples:
  orvapp convert bracket.frd bracket.ztfx
  orvapp convert wing.frd tail.frd plane.ztfx --results STRESS --results DISP --compress 6
  orvapp convert plane.ztfx plane.ztfx --password-file secret.txt
  orvapp convert 'plane.ztfx|2' tail.ztf --states '*time 1'

Each file that is read becomes a case of a .ztfx file, with its name; the cases of a .ztfx file stay cases and keep their
ids where they can. A .ztf file, which people can read, holds one case. The file appears when it is complete, in place of
one of that name. Options that name something may be repeated; a pattern is as in orvapp values.

The password opens what is protected and protects the .ztfx file that is written, by AES-256. A .ztf file is never
protected. Deflating makes a file smaller, but results hardly, and values can no longer be read one by one.)";

constexpr const char* EXPRESSIONS = R"(Expressions:
  DISP              a result by its name; "1st Principal" in double or single quotes when it holds more than letters,
                    digits, dots and underscores or begins with a digit; a quote within it is doubled
  DISP:vector:node  of several results of one name, the one of that type or mapping or both: scalar, vector,
                    displacement or tensor; node, element, element_node or element_surface
  2.5               a number
  ^                 cross product of two vectors; binds strongest
  * /               with a number; of two scalars; * also the dot product of two vectors or displacements
  + -               with a number, which is added to each component; of two results of one type and mapping
  ( )               as usual

Equally strong operators are taken from left to right. Put the expression in quotes, so that the shell leaves it alone.

Functions:
)";

std::string expressionHelp() {
    std::string text = EXPRESSIONS;
    for (const ExpressionFunction& function : expressionFunctions()) {
        std::string signature = function.signature();
        signature.resize(std::max<std::size_t>(signature.size(), 27), ' ');
        text += "  " + signature + ' ' + function.meaning + '\n';
    }
    return text +
           "\nA missing value makes missing what is computed from it. min leaves it out, as do minValue, maxValue and\n"
           "averageValue.";
}

std::string readableFiles() {
    std::string text = "Readable files:\n";
    for (const orv::imp::cae::ReaderInfo& reader : orv::imp::cae::DataSourceCae::supportedFormats()) {
        text += "  " + reader.description.toStdString() + " (" + reader.extensions.toStdString() + ")\n";
    }
    return text + "  Our own, with several cases (ztfx)\n  Our own, as text (ztf)\n";
}

/// Refuses an empty argument with this message.
CLI::Validator notEmpty(const std::string& message) {
    return CLI::Validator([message](std::string& text) { return text.empty() ? message : ""; }, "", "not empty");
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
        addCompute();
        addEnvelope();
        addConvert();
    }

    /// Throws CLI::ParseError.
    void parse(int argc, const char* const* argv) {
        if (argc > 1 && argv[1][0] != '-') {
            checkCommandName(argv[1]);
        }
        parseArguments(std::vector<std::string>(argv + std::min(argc, 1), argv + argc));
        for (const ValuesOptions* options : {&m_valuesOptions, &m_computeOptions.values, &m_envelopeOptions.values}) {
            if (options->json && options->csv == "-") {
                throw CLI::ParseError("--json and --csv - both want standard output", CLI::ExitCodes::ExcludesError);
            }
        }
    }

    void execute() const {
        if (m_info->parsed()) {
            runInfo(m_infoOptions);
        } else if (m_values->parsed()) {
            runValues(m_valuesOptions);
        } else if (m_compute->parsed()) {
            runCompute(m_computeOptions);
        } else if (m_envelope->parsed()) {
            runEnvelope(m_envelopeOptions);
        } else {
            runConvert(m_convertOptions);
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
        return (isCommandMissing ? std::string("a command is missing: info, values, compute, envelope or convert")
                                 : unmarked(error.what())) +
               " (see orvapp " + (hasCommand ? m_app.get_subcommands().front()->get_name() + ' ' : "") + "--help)";
    }

private:
    void parseArguments(std::vector<std::string> arguments) {
        if (!arguments.empty() && (arguments[0] == "compute" || arguments[0] == "envelope")) {
            std::for_each(arguments.begin() + 1, arguments.end(), markMinus);
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
    }

    void addInfo() {
        m_info = m_app.add_subcommand("info", "List the states, parts and results of a file");
        m_info->add_option("FILE", m_infoOptions.file, "The result file")->required()->type_name("");
        addPasswordFile(m_info, &m_infoOptions.passwordFile);
        m_info->add_flag("--json", m_infoOptions.json, "Print JSON for scripts in place of tables");
        m_info->group("Commands")->footer(INFO_FOOTER);
    }

    void addValues() {
        m_values = m_app.add_subcommand("values", "Print the range and average of a result, or write all its values");
        m_values->add_option("FILE", m_valuesOptions.file, "The result file")->required()->type_name("");
        m_values->add_option("--result", m_valuesOptions.result, "The result to look at")
            ->required()
            ->type_name("PATTERN");
        addSelectionAndOutput(m_values, &m_valuesOptions, "Write all values to a CSV file; - is standard output");
        m_values->group("Commands")->footer(VALUES_FOOTER);
    }

    void addCompute() {
        m_compute =
            m_app.add_subcommand("compute", "Compute a result from others, and print or write it as values does");
        addFileAndExpression(m_compute, &m_computeOptions.values.file, &m_computeOptions.expression);
        m_compute->add_option("--name", m_computeOptions.values.result, "What the computed result is called")
            ->required()
            ->type_name("NAME")
            ->check(notEmpty("the name is empty"));
        addSelectionAndOutput(m_compute, &m_computeOptions.values,
                              "Write all values to a CSV file; - is standard output");
        unmarkValues(m_compute);
        m_compute->group("Commands")->footer(COMPUTE_FOOTER + expressionHelp());
    }

    void addEnvelope() {
        m_envelope = m_app.add_subcommand("envelope", "Print the range of an expression over all states, and where");
        addFileAndExpression(m_envelope, &m_envelopeOptions.values.file, &m_envelopeOptions.expression);
        addSelectionAndOutput(m_envelope, &m_envelopeOptions.values,
                              "Write the table to a CSV file; - is standard output");
        unmarkValues(m_envelope);
        m_envelope->group("Commands")->footer(ENVELOPE_FOOTER + expressionHelp());
    }

    void addConvert() {
        m_convert = m_app.add_subcommand("convert", "Write files as cases of one .ztfx file, or one as a .ztf file");
        m_convert->add_option("IN... OUT", m_convertOptions.files, "Result files, and the file to write")
            ->required()
            ->expected(2, -1)
            ->type_name("");
        addPatterns(m_convert, "--results", &m_convertOptions.results, "These results only");
        addPatterns(m_convert, "--states", &m_convertOptions.states, "These states only");
        addPatterns(m_convert, "--parts", &m_convertOptions.parts, "These parts only");
        addPasswordFile(m_convert, &m_convertOptions.passwordFile);
        m_convert->add_option("--compress", m_convertOptions.compress, "Deflate a .ztfx file, up to 9; 0 is not at all")
            ->type_name("N")
            ->check(CLI::Range(0, 9));
        m_convert->group("Commands")->footer(CONVERT_FOOTER);
    }

    static void addPatterns(CLI::App* command, const char* name, std::vector<std::string>* patterns, const char* help) {
        command->add_option(name, *patterns, help)
            ->type_name("PATTERN")
            ->expected(1)
            ->allow_extra_args(false)
            ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
    }

    static void addPasswordFile(CLI::App* command, std::string* path) {
        command->add_option("--password-file", *path, "A file whose first line is the password of a protected file")
            ->type_name("F")
            ->check(notEmpty("the name of a file is missing"));
    }

    static void addFileAndExpression(CLI::App* command, std::string* file, std::string* expression) {
        command->add_option("FILE", *file, "The result file")->required()->type_name("");
        command->add_option("EXPRESSION", *expression, "What to compute, such as 'vonMises(STRESS)'")
            ->required()
            ->type_name("");
    }

    static void addSelectionAndOutput(CLI::App* command, ValuesOptions* options, const char* csvHelp) {
        command->add_option("--state", options->state, "These states only")->type_name("PATTERN");
        command->add_option("--part", options->part, "These parts only")->type_name("PATTERN");
        addPasswordFile(command, &options->passwordFile);
        command->add_option("--csv", options->csv, csvHelp)
            ->type_name("OUT")
            ->check(notEmpty("the name of a file is missing"));
        command->add_flag("--json", options->json, "Print JSON for scripts in place of the table");
    }

    /// Left to itself, CLI11 says of an unknown command that a command is missing.
    static void checkCommandName(const std::string& name) {
        const std::vector<std::string> commands = {"info", "values", "compute", "envelope", "convert"};
        if (selectNames(commands, name).empty()) {
            throw CLI::ParseError("there is no command \"" + name + '"' + didYouMean(commands, name),
                                  CLI::ExitCodes::ExtrasError);
        }
    }

    static constexpr char MINUS_MARK = '\x01'; ///< In front of an expression, for CLI11 only.

    CLI::App m_app;
    CLI::App* m_info = nullptr;
    CLI::App* m_values = nullptr;
    CLI::App* m_compute = nullptr;
    CLI::App* m_envelope = nullptr;
    CLI::App* m_convert = nullptr;
    InfoOptions m_infoOptions;
    ValuesOptions m_valuesOptions;
    ComputeOptions m_computeOptions;
    EnvelopeOptions m_envelopeOptions;
    ConvertOptions m_convertOptions;
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
