#pragma once

#include "OrvImportCae/Hdf5Input.h"

#include <cstdint>
#include <optional>

namespace orv::imp::cae {

/// Finds the superblock of a file and sets by it where addresses count from and how large they are.
/// @return the address of the outermost group; none when the file is no HDF5
std::optional<std::uint64_t> readHdf5Superblock(Hdf5Input& input);

} // namespace orv::imp::cae
