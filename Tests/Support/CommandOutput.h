#pragma once

#include <cstdio>
#include <string>

namespace orvtest {

/// What a shell command writes to its standard output, and behind it "status N" for one that does not end with 0.
inline std::string outputOf(const std::string& command) {
    std::FILE* pipe = ::popen(command.c_str(), "r");
    std::string output;
    char chunk[4096];
    while (const std::size_t count = std::fread(chunk, 1, sizeof chunk, pipe)) {
        output.append(chunk, count);
    }
    const int status = ::pclose(pipe);
    return status == 0 ? output : output + "status " + std::to_string(status >> 8);
}

} // namespace orvtest
