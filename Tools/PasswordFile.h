#pragma once

#include <string>

namespace orvapp {

/// The first line of a file: passwords are no arguments, which everybody on the machine can read.
/// @param path empty when there is no password
/// Throws CommandError, which never tells what is in the file, when it cannot be read or its first line is empty.
std::string readPassword(const std::string& path);

} // namespace orvapp
