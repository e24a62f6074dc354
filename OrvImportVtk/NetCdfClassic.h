#pragma once

#include "OrvImportVtk/NetCdfFile.h"

#include <istream>

namespace orv::imp::cae {

/// A file of the classic formats, through NetCDF's library. Null when it is none or its header is damaged.
/// @param file the same file, from its beginning
std::unique_ptr<NetCdfFile> openNetCdfClassic(const std::string& filename, std::istream& file, std::uintmax_t size,
                                              ug::Error* error);

} // namespace orv::imp::cae
