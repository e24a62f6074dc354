#pragma once

#include <functional>
#include <string>
#include <vector>

namespace orvtest {

/// What a run of the command left behind.
struct Outcome {
    int exitCode;         ///< -1 when a signal ended it.
    std::string output;   ///< Standard output.
    std::string messages; ///< Standard error.
};

/// Runs the built orvapp with these arguments. `prepare` runs in the new process before the program starts.
Outcome runOrvapp(const std::vector<std::string>& arguments, const std::function<void()>& prepare = {});

/// The same with standard error, and nothing else, on a terminal: what the terminal was sent is in `messages`.
Outcome runOrvappOnTerminal(const std::vector<std::string>& arguments);

/// The shipped result: five increments of a bracket of 96 steel and 6 aluminium hexahedra with 20 nodes.
std::string bracketFile();

} // namespace orvtest
