#pragma once

#include "OrvUnstructGrid/Error.h"

#include <string>

namespace orv::imp::cae {

/// Looks at all that holds the tree of a CGNS file together when it is HDF5, in files that it links to, too: the HDF5
/// and CGNS libraries do not survive some damage there. Files that are no HDF5 are fine.
bool checkCgnsHdf5(const std::string& filename, ug::Error* error);

} // namespace orv::imp::cae
