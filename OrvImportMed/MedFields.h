#pragma once

#include "OrvImportMed/MedFile.h"
#include "OrvImportMed/MedMesh.h"
#include "OrvUnstructGrid/ResultType.h"

#include <string>
#include <vector>

namespace orv::imp::cae {

/// Values of a field in a step, for the nodes or the cells of one type, or for those that a profile names.
struct MedChunk {
    med_entity_type entity;
    const MedCell* cell; ///< Null for nodes.
    ug::ResultMapping mapping;
    std::size_t pointCount; ///< The values of each component for each row.
    std::string profile;    ///< Empty for all.
    std::size_t rowCount;
};

struct MedStep {
    med_int number;
    med_int iteration;
    double time;
    std::vector<MedChunk> chunks;
};

struct MedField {
    std::string name;
    std::size_t mesh;
    med_field_type type;
    std::vector<std::string> components;
    std::string timeUnit;
    std::vector<MedStep> steps;

    /// "field 'NAME'"
    std::string place() const;
};

/// Reads what fields there are on the meshes, and where they have values, no values.
///
/// Values on cells at the cell's nodes are PER_ELEMENT_NODE, either way how MED can say so. Values at integration
/// points are left out, but where there is just one in a cell.
/// @param warnings told what is left out
bool readMedFields(const MedFile& file, const std::vector<MedMesh>& meshes, std::vector<MedField>* fields,
                   std::vector<std::string>* warnings, ug::Error* error);

} // namespace orv::imp::cae
