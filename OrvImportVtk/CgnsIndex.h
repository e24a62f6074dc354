#pragma once

#include "OrvImportCae/CaeFields.h"
#include "OrvImportVtk/CgnsTree.h"
#include "OrvImportVtk/CgnsValues.h"

#include <array>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace orv::imp::cae {

/// The places of the nodes of a zone.
struct CgnsGrid {
    std::string name;
    std::array<std::string, 3> axes; ///< The names of X, Y and Z; empty for those that it does not have.
    CgnsRind rind = {};
};

/// The values at one time in one zone, at its nodes or in its cells.
struct CgnsSolution {
    std::string name;
    std::optional<ug::ResultMapping> mapping; ///< None when they are anywhere else.
    std::vector<CaeArray> arrays;             ///< As joinCgnsArrays() puts them together.
    CgnsRind rind = {};
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
    std::optional<std::size_t> grid;    ///< Of CgnsZone::grids; none when the zone is not there.
    std::vector<std::size_t> solutions; ///< Of CgnsZone::solutions.
};

struct CgnsZone {
    std::string name;
    bool hasMesh = true; ///< Its type is known.
    bool isStructured = false;
    CgnsCounts nodeCounts; ///< One for each dimension of a structured zone.
    CgnsCounts cellCounts;
    std::vector<CgnsSection> sections;
    std::vector<CgnsGrid> grids;
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

/// What there is that is not read: by the reason the names.
using CgnsLeftOut = std::map<std::string, std::vector<std::string>>;

/// Reads what bases a file has and what there is in them, but for coordinates, elements and values, and looks whether
/// it fits together.
bool readCgnsIndex(const CgnsTree& tree, std::vector<CgnsBase>* bases, CgnsLeftOut* leftOut, ug::Error* error);

} // namespace orv::imp::cae
