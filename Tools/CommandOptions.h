#pragma once

#include "Tools/CommandError.h"

#include <CLI/CLI.hpp>

#include <string>
#include <vector>

namespace orvapp {

struct InputFiles;
struct LookOptions;
struct PictureOptions;
struct ValuesOptions;

// What several commands have in common on the command line. The values go where the pointers lead, when the line is
// parsed.

/// Refuses an empty argument with this message.
CLI::Validator notEmpty(const std::string& message);

/// FILE, and --with and --as for more of them.
void addFile(CLI::App* command, InputFiles* file);

/// FILE, which may be several, and --as.
void addFiles(CLI::App* command, InputFiles* files);

void addFileAndExpression(CLI::App* command, InputFiles* file, std::string* expression);

/// An option that may be repeated.
void addPatterns(CLI::App* command, const char* name, std::vector<std::string>* patterns, const char* help);

void addPasswordFile(CLI::App* command, std::string* path);

/// Refuses an argument that a function does not understand with the text of its CommandError.
template <class Parse>
CLI::Validator understoodBy(Parse parse) {
    return CLI::Validator(
        [parse](std::string& text) -> std::string {
            try {
                parse(text);
                return "";
            } catch (const CommandError& error) {
                return error.what();
            }
        },
        "", "understood");
}

/// FILE, and the options that tell what is seen in a picture.
void addPicture(CLI::App* command, PictureOptions* options);

/// The options that tell how it is drawn.
void addLook(CLI::App* command, LookOptions* options);

/// --password-file, --csv and --json.
void addOutput(CLI::App* command, ValuesOptions* options, const char* csvHelp);

/// --state, --part, --password-file, --csv and --json.
void addSelectionAndOutput(CLI::App* command, ValuesOptions* options, const char* csvHelp);

/// How expressions are written, with all functions.
std::string expressionHelp();

} // namespace orvapp
