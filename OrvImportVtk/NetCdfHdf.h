#pragma once

#include "OrvImportVtk/NetCdfFile.h"

namespace orv::imp::cae {

/// A file of NetCDF's version 4, which is one of HDF5, read as that. Null when it is none.
std::unique_ptr<NetCdfFile> openNetCdfHdf(const std::string& filename, std::uintmax_t size, ug::Error* error);

} // namespace orv::imp::cae
