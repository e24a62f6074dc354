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

/// The arrays that VTK makes of those of one solution, with the names of their components if they may be other than
/// those of a vector: it puts together what has the endings X, Y and Z, or _x, _y and
/// _z, in flat bases X and Y, filled up with zeros; unless one is missing, they are not of the same type, or there is
/// an array with the name that is left. Of flat bases it loses what else ends in Z. An error where it would put
/// together what is not there.
/// @param physicalDimension 2 or 3
/// @param lost the names of arrays that VTK loses
bool joinCgnsArrays(const std::vector<CgnsArray>& arrays, ug::ResultMapping mapping, int physicalDimension,
                    std::vector<CaeArray>* joined, std::vector<std::string>* lost, ug::Error* error);

} // namespace orv::imp::cae
