#pragma once

#include <CLI/CLI.hpp>

#include <string>
#include <vector>

namespace orvapp {

struct ValuesOptions;

// What several commands have in common on the command line. The values go where the pointers lead, when the line is
// parsed.

/// Refuses an empty argument with this message.
CLI::Validator notEmpty(const std::string& message);

void addFile(CLI::App* command, std::string* file);

void addFileAndExpression(CLI::App* command, std::string* file, std::string* expression);

/// An option that may be repeated.
void addPatterns(CLI::App* command, const char* name, std::vector<std::string>* patterns, const char* help);

void addPasswordFile(CLI::App* command, std::string* path);

/// --password-file, --csv and --json.
void addOutput(CLI::App* command, ValuesOptions* options, const char* csvHelp);

/// --state, --part, --password-file, --csv and --json.
void addSelectionAndOutput(CLI::App* command, ValuesOptions* options, const char* csvHelp);

/// How expressions are written, with all functions.
std::string expressionHelp();

} // namespace orvapp
