#pragma once

#include "OrvUnstructGrid/Error.h"

#include <string>

namespace orv::imp::cae {

/// Looks at all that holds the tree of a CGNS file together when it is ADF, in files that it links to, too: the library
/// believes how long its tables are. Files that are no ADF are fine, and so are links to files that are not there,
/// which the library tells.
bool checkCgnsAdf(const std::string& filename, ug::Error* error);

} // namespace orv::imp::cae
