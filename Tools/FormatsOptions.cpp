#include "Tools/Commands.h"

#include "Tools/FormatsCommand.h"

#include <CLI/CLI.hpp>

#include <memory>

namespace orvapp {

namespace {

constexpr const char* FORMATS_FOOTER =
    R"(A format that is read by a file of its own (libOrvImport...so) stands on a heavy library, which is only loaded when such a
file is opened. The folders in ORV_MODULE_PATH, separated by colons, are looked through first, then the library's own.

The JSON has the keys
  {"formats": [{"name", "description", "extensions": [], "contents", "module", "isThere"}]}, module being null for the
  library itself.)";

} // namespace

Command addFormats(CLI::App* program) {
    auto options = std::make_shared<FormatsOptions>();
    CLI::App* formats = program->add_subcommand("formats", "List the kinds of files that can be read");
    formats->add_flag("--json", options->json, "Print JSON for scripts in place of the table");
    formats->footer(FORMATS_FOOTER);
    return {formats, [options] { runFormats(*options); }};
}

} // namespace orvapp
