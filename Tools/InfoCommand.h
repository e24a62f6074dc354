#pragma once

#include <string>

namespace orvapp {

struct InfoOptions {
    std::string file;
    bool json = false;
};

/// `orvapp info`: what a file holds, as tables or JSON on standard output. Throws CommandError or OutputClosed.
void runInfo(const InfoOptions& options);

} // namespace orvapp
