#pragma once

#include "OrvImportCae/CaeFile.h"
#include "OrvUnstructGrid/ElementType.h"
#include "OrvUnstructGrid/Error.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace orv::imp::cae {

/// Cells of finite elements by their names in Tecplot's files.
struct TecCellType {
    const char* name;    ///< Of ZONETYPE.
    const char* oldName; ///< Of ET.
    ug::ElementType elementType;
    std::size_t nodeCount;
};

/// Where a zone has the numbers of a variable.
struct TecColumn {
    bool isThere = false; ///< Passive variables are not.
    bool isOfCells = false;
    std::int64_t offset = 0;  ///< Of the first number of the list that it is in.
    std::size_t place = 0;    ///< Its place in each row of the list.
    std::size_t rowWidth = 1; ///< Rows are of one number unless all variables of a node stand together.
};

/// A mesh and values on it.
struct TecZone {
    std::string title;
    std::int64_t offset = 0;                        ///< Of its record.
    const TecCellType* cellType = nullptr;          ///< Null for ordered zones.
    std::array<std::uint64_t, 3> sizes = {1, 1, 1}; ///< Nodes of an ordered zone along I, J and K.
    std::uint64_t nodeCount = 0;
    std::uint64_t cellCount = 0;
    std::optional<double> time;
    std::optional<std::int64_t> strand;
    std::vector<TecColumn> columns; ///< For each variable.
    std::int64_t cells = 0;         ///< Where the nodes of its cells stand.
};

/// What a Tecplot file in text has: all but the numbers, which have been passed over.
struct TecZones {
    std::string title;
    std::vector<std::string> variables;
    std::vector<TecZone> zones; ///< At least one.
};

bool readTecZones(const CaeFile& file, TecZones* zones, ug::Error* error);

} // namespace orv::imp::cae
