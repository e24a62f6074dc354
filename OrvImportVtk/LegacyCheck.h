#pragma once

#include "OrvUnstructGrid/Error.h"

#include <string>
#include <vector>

namespace orv::imp::cae {

/// Whether a legacy file of VTK is whole: VTK takes what there is of one that has been cut, and does not survive cells
/// that are not as they have to be. Passes over the values of all sections by the counts that they tell, and looks at
/// the cells. The text of an error tells the place, but does not begin with the file's name.
/// @param warnings told when the last number may have been cut
bool checkLegacyFile(const std::string& filename, std::vector<std::string>* warnings, ug::Error* error);

} // namespace orv::imp::cae
