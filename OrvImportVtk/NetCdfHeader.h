#pragma once

#include "OrvUnstructGrid/Error.h"

#include <cstdint>
#include <istream>

namespace orv::imp::cae {

/// Whether a file is of NetCDF's classic formats, has a whole header, and all values within the file. NetCDF's library
/// takes memory for whatever a header counts, does not survive some that are damaged, and reads zeros behind the file's
/// end. Reads no more than the header.
bool checkNetCdfHeader(std::istream& file, std::uintmax_t size, ug::Error* error);

} // namespace orv::imp::cae
