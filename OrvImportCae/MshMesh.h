#pragma once

#include "OrvImportCae/MshInput.h"
#include "OrvImportCae/MshSections.h"

#include <string>
#include <vector>

namespace orv::imp::cae {

/// The versions of the format, which differ in how they tell the mesh.
enum class MshVersion { V22, V40, V41 };

/// Each reads what stands between the name of its section and the end mark.
/// @{
bool readMshPhysicalNames(MshInput& input, MshSections* sections);
bool readMshEntities(MshInput& input, MshVersion version, bool arePartitioned, MshSections* sections);
/// @param areParametric for a section of version 2.2 whose nodes have parameters
bool readMshNodes(MshInput& input, MshVersion version, bool areParametric, MshSections* sections);
/// Needs the nodes.
bool readMshElements(const CaeFile& file, MshInput& input, MshVersion version, MshSections* sections);
/// @}

} // namespace orv::imp::cae
