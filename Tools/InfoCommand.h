#pragma once

#include "Tools/InputFiles.h"

#include <string>

namespace orvapp {

struct InfoOptions {
    InputFiles file;
    std::string passwordFile; ///< Empty when the file is not protected.
    bool json = false;
};

/// `orvapp info`: what a file holds, case by case, as tables or JSON on standard output. Throws CommandError or
/// OutputClosed.
void runInfo(const InfoOptions& options);

} // namespace orvapp
