#include "Tools/Commands.h"

#include "Tools/CommandOptions.h"
#include "Tools/ConvertCommand.h"

#include <CLI/CLI.hpp>

#include <memory>

namespace orvapp {

namespace {

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

} // namespace

Command addConvert(CLI::App* program) {
    auto options = std::make_shared<ConvertOptions>();
    CLI::App* convert =
        program->add_subcommand("convert", "Write files as cases of one .ztfx file, or one as a .ztf file");
    convert->add_option("IN... OUT", options->files, "Result files, and the file to write")
        ->required()
        ->expected(2, -1)
        ->type_name("");
    addPatterns(convert, "--results", &options->results, "These results only");
    addPatterns(convert, "--states", &options->states, "These states only");
    addPatterns(convert, "--parts", &options->parts, "These parts only");
    addPasswordFile(convert, &options->passwordFile);
    convert->add_option("--compress", options->compress, "Deflate a .ztfx file, up to 9; 0 is not at all")
        ->type_name("N")
        ->check(CLI::Range(0, 9));
    convert->footer(CONVERT_FOOTER);
    return {convert, [options] { runConvert(*options); }};
}

} // namespace orvapp
