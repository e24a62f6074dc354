#pragma once

#include "OrvImportCae/CaeFile.h"
#include "OrvImportCae/CaeReader.h"
#include "OrvImportCae/MshData.h"
#include "OrvImportCae/MshParts.h"
#include "OrvImportCae/MshResults.h"
#include "OrvImportCae/MshSections.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace orv::imp::cae {

/// Reads the meshes of Gmsh and the values on them, versions 2 to 2.2, 4 and 4.1, as text and as bytes in the order of
/// this computer. Opening takes in the mesh and where the sections of values are; the file stays open, and values are
/// read from it one result of one state at a time.
class MshReader : public CaeReader {
public:
    bool open(const Str& filename, CaeContents* contents, ug::Error* error) override;

    /// The same for an open descriptor, such as one of a file in memory. It is closed in the end in any case.
    bool openDescriptor(int descriptor, const Str& filename, CaeContents* contents, ug::Error* error);

    void adoptGeometry(const PtrRef<ug::DataGeometry>& geometry) override;

    /// Fails too when the file has changed since it was opened.
    bool readResult(const ug::ResultInfo& info, int stateId, const ug::ResultInfo& intoInfo, ug::DataState* state,
                    std::vector<Str>* warnings, ug::Error* error) override;

    /// Reads the rows of the items and nothing else, in binary files, when there is one section with a row for each
    /// node or element of the file, in the order of their numbers.
    bool readScalars(const ug::ResultInfo& info, int stateId, const ug::ScalarPlace& place,
                     std::span<double> values) override;

private:
    bool readStructure(CaeContents* contents, ug::Error* error);
    const std::vector<std::size_t>* findSections(int stateId, const ug::ResultInfo& info) const;
    std::int64_t endOfValues(std::size_t section) const;
    void tellLeftOut(std::size_t section, const MshLeftOut& leftOut, std::vector<Str>* warnings);
    void describe(const std::vector<std::string>& warnings, CaeContents* contents) const;

    CaeFile m_file;
    MshSections m_sections; ///< Without the mesh.
    MshParts m_mesh;
    MshResults m_results;
    std::vector<bool> m_isToldOf; ///< For each section of values.
};

} // namespace orv::imp::cae
