#pragma once

#include "OrvUnstructGrid/Error.h"

#include <string>

namespace orv::imp::cae {

/// Looks at all that holds the tree of a CGNS file together when it is ADF: the library believes how long its tables
/// are. Files that are no ADF are fine; files that one links to are not looked at.
bool checkCgnsAdf(const std::string& filename, ug::Error* error);

} // namespace orv::imp::cae
