#pragma once

#include "Tools/InputFiles.h"

#include <string>

namespace orvapp {

class ResultFile;
struct ValuesSelection;

struct ValuesOptions {
    InputFiles file;
    std::string passwordFile; ///< Empty when the file is not protected.
    std::string result;
    std::string state = "*"; ///< A name or a pattern, as the next one.
    std::string part = "*";
    std::string csv; ///< Where the full values go; "-" is standard output, empty nowhere.
    bool json = false;
};

/// `orvapp values`: the range and average of one result, state by state and part by part, as a table or JSON on
/// standard output, and on request all values as CSV. Memory is needed for one state at a time. Throws CommandError or
/// OutputClosed.
void runValues(const ValuesOptions& options);

/// The same for what has been selected in an open file; of the options, only where the output goes.
void reportValues(const ResultFile& file, const ValuesSelection& selection, const ValuesOptions& options);

} // namespace orvapp
