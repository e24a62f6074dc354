#pragma once

#include "Tools/ResultFile.h"

#include <cstddef>
#include <vector>

namespace orvapp {

struct ValuesOptions;

/// What the names and patterns on a command line stand for in a file.
struct ValuesSelection {
    orv::ug::ResultInfo result;
    std::vector<std::size_t> states; ///< Those that have the result, as indexes in the directory's list.
    std::vector<FilePart> parts;
};

/// Throws CommandError, with what there is, when the result is none or several, or when there is no such state or part.
ValuesSelection selectValues(const ResultFile& file, const ValuesOptions& options);

/// The same with a result that is chosen already.
ValuesSelection selectValues(const ResultFile& file, const orv::ug::ResultInfo& result, const ValuesOptions& options);

} // namespace orvapp
