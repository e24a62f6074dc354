#pragma once

#include "OrvImportCae/Hdf5Messages.h"

#include <cstdint>
#include <vector>

namespace orv::imp::cae {

/// Looks at the index of a data set's chunks, whichever it is, and at the place of each: HDF5 takes room for a chunk as
/// its sizes tell, and reads as many bytes as the index tells.
void checkHdf5Chunks(Hdf5Input& input, const Hdf5Layout& layout, const Hdf5Space& space,
                     const std::vector<Hdf5Filter>& filters);

} // namespace orv::imp::cae
