#pragma once

#include "OrvImportCae/CaeFields.h"
#include "OrvImportCae/CaeReader.h"
#include "OrvImportCae/TecValues.h"

#include <array>
#include <memory>
#include <vector>

namespace orv::imp::cae {

/// Reads Tecplot files in text. Zones are parts. When they have solution times these are the states, and the zones of
/// a strand are one part; without strands the first zones of all times are one, the second ones, and so on. A zone
/// without a time, or of strand 0 beside others, is in every state.
///
/// VTK 9.1 has a reader of such files, too, which reads zeros where a file has been cut or has something else than
/// numbers, knows neither times nor variables that zones share nor repeated numbers, and does not survive wrong counts.
class TecReader : public CaeReader {
public:
    bool open(const Str& filename, CaeContents* contents, ug::Error* error) override;

    /// The same for an open descriptor, which is closed in the end in any case. `filename` serves for texts only.
    bool openDescriptor(int descriptor, const Str& filename, CaeContents* contents, ug::Error* error);

    void adoptGeometry(const PtrRef<ug::DataGeometry>& geometry) override;
    bool readResult(const ug::ResultInfo& info, int stateId, const ug::ResultInfo& intoInfo, ug::DataState* state,
                    std::vector<Str>* warnings, ug::Error* error) override;

private:
    static constexpr std::size_t NONE = std::size_t(-1);

    /// What parts need to be read, also after the reader is gone.
    struct Source {
        CaeFile file;
        TecZones zones;
        std::array<std::size_t, 3> axes = {NONE, NONE, NONE}; ///< The variables that are coordinates; Z may be NONE.

        bool readPart(const TecZone& zone, ug::DataNodes* nodes, ug::DataElements* elements, ug::Error* error) const;
        bool isSameMesh(const TecZone& a, const TecZone& b) const;
    };

    struct Part {
        std::string name;
        std::vector<std::size_t> zones; ///< For each step; NONE when there is none.
    };

    bool readStructure(CaeContents* contents, ug::Error* error);
    bool findAxes(ug::Error* error);
    bool arrange(ug::Error* error);
    bool hasOneMesh() const;
    void makeGeometries(CaeContents* contents);
    void describeResults(CaeContents* contents);
    void describeStates(CaeContents* contents) const;
    const TecColumn* findColumn(std::size_t array, std::size_t part, std::size_t step) const;

    std::shared_ptr<Source> m_source = std::make_shared<Source>();
    std::vector<double> m_times; ///< Of the steps; empty when there is but one without a time.
    std::vector<Part> m_parts;
    std::vector<PtrRef<ug::DataGeometry>> m_geometries; ///< One, or one for each step.
    std::vector<CaeArray> m_arrays;
    std::vector<std::size_t> m_arrayVariables; ///< For each array.
    std::vector<CaeField> m_fields;
    std::vector<ug::ResultInfo> m_results; ///< Of the fields.
};

} // namespace orv::imp::cae
