#pragma once

#include "OrvImportCae/CaeFields.h"
#include "OrvImportVtk/CgnsTree.h"

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace orv::imp::cae {

/// The values at one time in one zone, at its nodes or in its cells.
struct CgnsSolution {
    std::string name;
    std::optional<ug::ResultMapping> mapping; ///< None when they are anywhere else, which VTK does not read.
    std::vector<CaeArray> arrays;             ///< As VTK puts them together.
};

/// Elements of one type, or of several, with their numbers in the zone, from 1.
struct CgnsSection {
    std::string name;
    int elementType;
    std::int64_t begin;
    std::int64_t end;       ///< The last one.
    std::int64_t itemCount; ///< Of the connectivity.

    std::int64_t elementCount() const {
        return end - begin + 1;
    }
};

/// What a zone has at one time.
struct CgnsZoneStep {
    bool hasGrid = true;
    std::string grid;
    std::vector<std::size_t> solutions; ///< Of CgnsZone::solutions.
};

struct CgnsZone {
    std::string name;
    bool hasMesh = true; ///< VTK knows its type.
    bool isStructured = false;
    std::vector<std::int64_t> nodeCounts; ///< One for each dimension of a structured zone.
    std::vector<std::int64_t> cellCounts;
    std::vector<CgnsSection> sections;
    std::vector<CgnsSolution> solutions;
    std::vector<CgnsZoneStep> steps; ///< One for each time of the base.
};

struct CgnsBase {
    std::string name;
    int cellDimension = 0;
    int physicalDimension = 0;
    std::vector<double> times; ///< Ascending; none when the file has no times.
    std::vector<CgnsZone> zones;
};

/// What there is that VTK does not read: by the reason the names.
using CgnsLeftOut = std::map<std::string, std::vector<std::string>>;

/// Reads what bases a file has and what there is in them, but for coordinates, elements and values. All that VTK
/// believes of a file without a look is looked at.
bool readCgnsIndex(const CgnsTree& tree, std::vector<CgnsBase>* bases, CgnsLeftOut* leftOut, ug::Error* error);

} // namespace orv::imp::cae
