#pragma once

namespace orvapp {

/// What the command tells its caller; `orvapp --help` lists the same.
enum ExitCode {
    DONE = 0,
    FAILED = 1,     ///< A file could not be read or written, or does not hold what was asked for.
    WRONG_USAGE = 2 ///< The command line could not be understood.
};

/// The whole command: reads the command line and does what it asks for. Nothing is thrown.
ExitCode run(int argc, const char* const* argv);

} // namespace orvapp
