#pragma once

#include "LibCore/rvfExport.h"
#include "OrvUnstructGrid/Error.h"

#include <cstdint>
#include <string>

namespace orv::imp::cae {

/// Deflate cannot make less of bytes that are all the same: so many become one.
constexpr std::uint64_t DENSEST_PACKING = 1032;

/// Looks at all that holds an HDF5 file together before HDF5 does, which believes what it reads: a damaged size, place
/// or number lets it read and write beyond its memory, run for ever, or take memory without end. What is gone through
/// is the superblock, the headers of all objects that can be reached with all their messages, and the heaps and indexes
/// that these point to. So are files that external links lead to. Values of data sets are not read.
///
/// A file that is no HDF5 at all, or cannot be opened, is fine here, and is for the library to refuse.
///
/// @return false, with "is damaged at byte 800: WHAT", which does not begin with the file's name. Refused are also, by
///         the same text, object headers' messages that are shared in a heap, and saved images of HDF5's cache: no
///         program writes these unless it is asked to.
ORV_API bool checkHdf5File(const std::string& filename, ug::Error* error);

} // namespace orv::imp::cae
