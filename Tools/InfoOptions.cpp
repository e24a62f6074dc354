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

Of a .ztfx file with several cases all are told, and the file of each is the name that opens it: beam.ztfx|3. The other
commands take that name too, and the first case without it.

The JSON has the keys
  {"models": [{"file", "case": {"id", "name"} in .ztfx files, "states": [{"index", "id", "name", "referenceType", "referenceValue"}], "stateGroups": [[ids]],
   "parts": [{"index", "geometry", "id", "name", "nodes", "elements", "elementTypes": {type: count}}],
   "results": [{"index", "id", "name", "type", "mapping", "custom"}], "warnings": []}]})";

} // namespace

Command addInfo(CLI::App* program) {
    auto options = std::make_shared<InfoOptions>();
    CLI::App* info = program->add_subcommand("info", "List the states, parts and results of a file");
    addFile(info, &options->file);
    addPasswordFile(info, &options->passwordFile);
    info->add_flag("--json", options->json, "Print JSON for scripts in place of tables");
    info->footer(INFO_FOOTER);
    return {info, [options] { runInfo(*options); }};
}

} // namespace orvapp
