#include "Tools/Commands.h"

#include "Tools/CommandOptions.h"
#include "Tools/InfoCommand.h"

#include <CLI/CLI.hpp>

#include <memory>

namespace orvapp {

namespace {

constexpr const char* INFO_FOOTER = R"(Examples:
  orvapp info bracket.frd
  orvapp info bracket.frd --json
  orvapp info step_*.vtu
  orvapp info rank0.vtu rank1.vtu rank2.vtu

Several files of other programs are one model: a series of states when they have the same mesh or states of their own,
the pieces of a model when their meshes are others and their states the same. --as settles it when they do not tell.
The other commands take further files behind --with, as in orvapp render step_1.vtu out.png --with step_2.vtu step_3.vtu.

Of a .ztfx file with several cases all are told, and the file of each is the name that opens it: beam.ztfx|3. The other
commands take that name too, and the first case without it.

The JSON has the keys
  {"models": [{"file", "furtherFiles": [] of several, "case": {"id", "name"} in .ztfx files, "states": [{"index", "id", "name", "referenceType", "referenceValue"}], "stateGroups": [[ids]],
   "parts": [{"index", "geometry", "id", "name", "nodes", "elements", "elementTypes": {type: count}}],
   "results": [{"index", "id", "name", "type", "mapping", "custom"}], "warnings": []}]})";

} // namespace

Command addInfo(CLI::App* program) {
    auto options = std::make_shared<InfoOptions>();
    CLI::App* info = program->add_subcommand("info", "List the states, parts and results of a file");
    addFiles(info, &options->file);
    addPasswordFile(info, &options->passwordFile);
    info->add_flag("--json", options->json, "Print JSON for scripts in place of tables");
    info->footer(INFO_FOOTER);
    return {info, [options] { runInfo(*options); }};
}

} // namespace orvapp
