#pragma once

#include "OrvUnstructGrid/Error.h"

#include <string>

namespace orv::imp::cae {

/// Whether a file is one that the NetCDF library can be given: of the classic formats one whose header is whole and
/// whose values are all within the file, or one of HDF5, which is not looked into. The library takes memory for
/// whatever a classic header counts, does not survive some that are damaged, and reads zeros behind the file's end.
/// Reads no more than the header.
bool checkNetCdfHeader(const std::string& filename, ug::Error* error);

} // namespace orv::imp::cae
