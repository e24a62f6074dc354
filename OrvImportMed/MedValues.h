#pragma once

#include "OrvImportMed/MedComponents.h"
#include "OrvImportMed/MedFields.h"
#include "OrvUnstructGrid/DataResult.h"
#include "OrvUnstructGrid/ProgressMeter.h"

namespace orv::imp::cae {

/// Reads the values that a result has in a step into all parts of the field's mesh, which first become undefined, as
/// nodes and elements stay that the step's profiles do not name. Parts of other meshes are left alone.
/// @param itemCounts for each part the items of the mapping
/// @param progress told behind each read, of which there is one for each type of cells; may be null
bool readMedValues(const MedFile& file, const MedMeshes& meshes, const MedField& field, const MedStep& step,
                   ug::ResultMapping mapping, const std::vector<int>& columns, std::span<const std::size_t> itemCounts,
                   ug::DataResult* result, ug::ProgressMeter* progress, ug::Error* error);

} // namespace orv::imp::cae
