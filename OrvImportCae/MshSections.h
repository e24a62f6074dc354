#pragma once

#include "OrvImportCae/CaeFile.h"
#include "OrvImportCae/CaeIds.h"
#include "OrvImportCae/CaeParts.h"
#include "OrvUnstructGrid/Error.h"
#include "OrvUnstructGrid/ResultType.h"

#include <compare>
#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace orv::imp::cae {

/// A piece of the model's geometry: a point, curve, surface or volume.
struct MshEntity {
    int dimension = 0;
    int tag = 0;

    auto operator<=>(const MshEntity&) const = default;
};

/// What belongs to an entity.
struct MshEntityFacts {
    int physical = 0;      ///< The first of its physical groups, without the sign of its orientation; 0 without one.
    MshEntity parent = {}; ///< What a partition cut the entity out of.
    bool hasParent = false;
};

/// What an element belongs to, as it says itself.
struct MshOwner {
    MshEntity entity;
    int physical = 0;      ///< Version 2 alone tells it here; 0 without one.
    bool hasEntity = true; ///< False for elements without any tags.

    auto operator<=>(const MshOwner&) const = default;
};

/// A section of values: what its header says, and where its values stand.
struct MshDataSection {
    ug::ResultMapping mapping = ug::UNKNOWN_MAPPING;
    std::string name;
    double time = 0.0;
    std::int64_t step = 0;
    std::int64_t componentCount = 0;
    std::int64_t itemCount = 0;
    std::int64_t header = 0; ///< Where the section begins.
    std::int64_t begin = 0;  ///< Of the values.
};

/// What the sections of a file hold, in the file's terms.
struct MshSections {
    bool isBinary = false;
    std::map<MshEntity, std::string> physicalNames;
    std::map<MshEntity, MshEntityFacts> entities;
    CaeIds nodeIds;
    std::vector<double> coordinates;
    CaeElements elements;         ///< Their parts are indexes in `owners`.
    std::vector<MshOwner> owners; ///< In the order of appearance.
    std::vector<MshDataSection> data;
    std::vector<std::string> warnings;
};

/// The name of a section of values, such as "NodeData".
const char* mshSectionName(ug::ResultMapping mapping);

/// Reads everything but values. A file that ends within a section behind the mesh is taken up to there, and a warning
/// tells; elements of types that we do not have, repeated elements and sections that mean nothing to us are left out
/// with a warning.
bool readMshSections(CaeFile* file, MshSections* sections, ug::Error* error);

} // namespace orv::imp::cae
