#pragma once

#include "OrvImportCae/CaeFields.h"

namespace orv::imp::cae {

/// @name Arrays of VTK and the results that they make
/// @{
using VtkOrder = CaeOrder;
using VtkArray = CaeArray;
using VtkComponent = CaeComponent;
using VtkField = CaeField;
/// @}

} // namespace orv::imp::cae
