#pragma once

#include "OrvImportCae/FileRelation.h"

#include <string>
#include <utility>
#include <vector>

namespace orvapp {

/// What a command reads: a file, or several that are opened as one.
struct InputFiles {
    InputFiles() = default;
    InputFiles(std::string only) : first(std::move(only)) {}
    InputFiles(const char* only) : first(only) {}

    std::string first;
    std::vector<std::string> further;
    orv::imp::cae::FileRelation relation = orv::imp::cae::FileRelation::FROM_CONTENTS;
};

} // namespace orvapp
