#include "Tools/CommandOptions.h"

#include "Tools/Arguments.h"
#include "Tools/ExpressionFunctions.h"
#include "Tools/InputFiles.h"
#include "Tools/Picture.h"
#include "Tools/PictureLook.h"
#include "Tools/ValuesCommand.h"

#include <algorithm>

namespace orvapp {

namespace {

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

void addRelation(CLI::App* command, InputFiles* files) {
    command
        ->add_option_function<std::string>(
            "--as", [files](const std::string& text) { files->relation = parseFileRelation(text); },
            "What several files are when they do not tell: series or pieces")
        ->type_name("WHAT")
        ->check(understoodBy(parseFileRelation));
}

} // namespace

CLI::Validator notEmpty(const std::string& message) {
    return CLI::Validator([message](std::string& text) { return text.empty() ? message : ""; }, "", "not empty");
}

void addFile(CLI::App* command, InputFiles* file) {
    command->add_option("FILE", file->first, "The result file")->required()->type_name("");
    command->add_option("--with", file->further, "Further files of the series or model, up to the next option")
        ->type_name("F...");
    addRelation(command, file);
}

void addFiles(CLI::App* command, InputFiles* files) {
    command
        ->add_option_function<std::vector<std::string>>(
            "FILE",
            [files](const std::vector<std::string>& names) {
                files->first = names.front();
                files->further.assign(names.begin() + 1, names.end());
            },
            "The result file, or several of a series or model")
        ->required()
        ->type_name("");
    addRelation(command, files);
}

void addFileAndExpression(CLI::App* command, InputFiles* file, std::string* expression) {
    addFile(command, file);
    command->add_option("EXPRESSION", *expression, "What to compute, such as 'vonMises(STRESS)'")
        ->required()
        ->type_name("");
}

void addPatterns(CLI::App* command, const char* name, std::vector<std::string>* patterns, const char* help) {
    command->add_option(name, *patterns, help)
        ->type_name("PATTERN")
        ->expected(1)
        ->allow_extra_args(false)
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
}

void addPasswordFile(CLI::App* command, std::string* path) {
    command->add_option("--password-file", *path, "A file whose first line is the password of a protected file")
        ->type_name("F")
        ->check(notEmpty("the name of a file is missing"));
}

void addPicture(CLI::App* command, PictureOptions* options) {
    addFile(command, &options->file);
    command->add_option("--result", options->result, "The scalar to show in colours, such as 'vonMises(STRESS)'")
        ->type_name("EXPRESSION");
    command->add_option("--state", options->state, "The state, by default the last one that has the result")
        ->type_name("PATTERN");
    addPatterns(command, "--part", &options->parts, "Show these parts only; may be repeated");
    command->add_option("--deform", options->deformation, "Displace the shape, by so many times the displacement")
        ->type_name("DISPxSCALE")
        ->check(understoodBy(parseDeformation));
    command->add_option("--cut", options->cut, "Show a section, such as z=2.5 or 0,0,2.5:0,0,1, in place of the parts")
        ->type_name("PLANE")
        ->check(understoodBy(parsePlane));
    command
        ->add_option("--view", options->view, "iso, front, back, left, right, top, bottom or where the eye is: X,Y,Z")
        ->capture_default_str()
        ->type_name("VIEW")
        ->check(understoodBy(parseViewpoint));
    command->add_flag("--parallel", options->isParallel, "Without foreshortening, in place of perspective");
    command->add_option("--size", options->size, "Of the picture, in pixels")
        ->capture_default_str()
        ->type_name("WxH")
        ->check(understoodBy(parseSize));
    command->add_flag_callback(
        "--no-legend", [options] { options->hasLegend = false; },
        "Without the legend, and the room that is left for it");
    addPasswordFile(command, &options->passwordFile);
}

void addLook(CLI::App* command, LookOptions* options) {
    command->add_option("--colors", options->colors, "viridis or rainbow")
        ->capture_default_str()
        ->type_name("MAP")
        ->check(understoodBy(parseColors));
    command->add_option("--bands", options->bands, "Divide the range into so many plain colours")
        ->type_name("N")
        ->check(CLI::Range(0, int(orv::vis::ColorMap::MAXIMUM_BANDS)));
    command->add_option("--range", options->range, "From which value to which the colours go")
        ->type_name("MIN,MAX")
        ->check(understoodBy(parseRange));
    command->add_option("--background", options->background, "white, grey, black or #rrggbb; or two, TOP,BOTTOM")
        ->capture_default_str()
        ->type_name("COLOR")
        ->check(understoodBy(parseBackground));
    command->add_flag_callback(
        "--no-edges", [options] { options->hasEdges = false; }, "Without the edges of elements");
    command->add_flag_callback(
        "--no-light", [options] { options->hasLight = false; }, "Surfaces in exactly the colours of the legend");
}

void addOutput(CLI::App* command, ValuesOptions* options, const char* csvHelp) {
    addPasswordFile(command, &options->passwordFile);
    command->add_option("--csv", options->csv, csvHelp)
        ->type_name("OUT")
        ->check(notEmpty("the name of a file is missing"));
    command->add_flag("--json", options->json, "Print JSON for scripts in place of the table");
    command->parse_complete_callback([options] {
        if (options->json && options->csv == "-") {
            throw CLI::ParseError("--json and --csv - both want standard output", CLI::ExitCodes::ExcludesError);
        }
    });
}

void addSelectionAndOutput(CLI::App* command, ValuesOptions* options, const char* csvHelp) {
    command->add_option("--state", options->state, "These states only")->type_name("PATTERN");
    command->add_option("--part", options->part, "These parts only")->type_name("PATTERN");
    addOutput(command, options, csvHelp);
}

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

} // namespace orvapp
