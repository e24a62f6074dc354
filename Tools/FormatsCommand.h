#pragma once

#include "OrvImportCae/ReaderInfo.h"

#include <vector>

namespace orvapp {

struct FormatsOptions {
    bool json = false;
};

/// The kinds of files that the commands read: our own, then those of other programs.
std::vector<orv::imp::cae::FormatInfo> readableFormats();

/// `orvapp formats`: readableFormats() as a table or JSON on standard output. Throws OutputClosed.
void runFormats(const FormatsOptions& options);

} // namespace orvapp
