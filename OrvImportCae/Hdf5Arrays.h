#pragma once

#include "OrvImportCae/Hdf5Input.h"

#include <cstdint>
#include <functional>

namespace orv::imp::cae {

/// Goes through an array that says where chunks are, whose size never changes or grows along one index, and tells all
/// elements that have been set, and some that have not. There are `count` of them when that never changes.
/// @{
void walkHdf5FixedArray(Hdf5Input& input, std::uint64_t address, bool isPacked, std::uint64_t elementSize,
                        std::uint64_t count, const std::function<void(Hdf5Cursor element)>& tell);
void walkHdf5ExtensibleArray(Hdf5Input& input, std::uint64_t address, bool isPacked, std::uint64_t elementSize,
                             const std::function<void(Hdf5Cursor element)>& tell);
/// @}

} // namespace orv::imp::cae
