#pragma once

#include "OrvImportCae/CaeFields.h"
#include "OrvUnstructGrid/Error.h"

#include <string>
#include <vector>

namespace orv::imp::cae {

/// An array in a CGNS file, which is of one number for each item.
struct CgnsArray {
    std::string name;
    std::string type;
};

/// The arrays that become of those of one solution, with the names of their components if they may be other than those
/// of a vector: what has the endings X, Y and Z, or _x, _y and _z, is put together,
/// in flat bases X and Y, to be filled up with zeros; unless one is missing, they are not of the same type, or there is
/// an array with the name that is left. In flat bases what else ends in Z is left out. An error where the numbers of
/// the endings add up to a vector's, but are others.
/// @param physicalDimension 2 or 3
/// @param lost the names of arrays that are left out
bool joinCgnsArrays(const std::vector<CgnsArray>& arrays, ug::ResultMapping mapping, int physicalDimension,
                    std::vector<CaeArray>* joined, std::vector<std::string>* lost, ug::Error* error);

} // namespace orv::imp::cae
