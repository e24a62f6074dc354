#pragma once

#include <string>
#include <vector>

namespace orvapp {

struct ConvertOptions {
    std::vector<std::string> files;   ///< What is read, and behind it what is written.
    std::vector<std::string> results; ///< Names or patterns, as the next two; none means all.
    std::vector<std::string> states;
    std::vector<std::string> parts;
    std::string passwordFile; ///< Empty for none.
    int compress = 0;         ///< How hard to deflate, up to 9; 0 is not at all.
};

/// `orvapp convert`: writes files of any format that can be read as cases of one .ztfx file, or one as a .ztf file. A
/// line for each case goes to standard output. Memory is needed for the meshes and one result of one state. Throws
/// CommandError or OutputClosed; the file that was there before is then untouched.
void runConvert(const ConvertOptions& options);

} // namespace orvapp
