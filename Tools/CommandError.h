#pragma once

#include <stdexcept>

namespace orvapp {

/// Ends the command with exit code 1 and its text, for the person who typed the command, on standard error.
class CommandError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Whoever read our output has gone, as `head` does: the command ends without a word.
class OutputClosed {};

} // namespace orvapp
