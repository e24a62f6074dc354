#pragma once

#include "OrvImportCae/CaeReader.h"
#include "OrvImportMed/MedComponents.h"
#include "OrvImportMed/MedFields.h"
#include "OrvImportMed/MedFile.h"
#include "OrvImportMed/MedMesh.h"

#include <vector>

namespace orv::imp::cae {

/// Reads MED files, those of code_aster and Salome, through libmedc.
///
/// All meshes of a file are one geometry, see readMedMeshes() for its parts. A computation step, told by its two
/// numbers and its time, is a state, in that order; a file without any has one state without results. See
/// gatherMedComponents() for what the components of a field become.
class MedReader : public CaeReader {
public:
    bool open(const Str& filename, CaeContents* contents, ug::Error* error) override;
    void adoptGeometry(const PtrRef<ug::DataGeometry>& geometry) override;
    bool readResult(const ug::ResultInfo& info, int stateId, const ug::ResultInfo& intoInfo, ug::DataState* state,
                    std::vector<Str>* warnings, ug::Error* error) override;

private:
    /// A result, and which of the fields' components it is made of.
    struct Result {
        ug::ResultInfo info;
        std::size_t field;
        std::vector<int> columns;
    };

    bool read(CaeContents* contents, ug::Error* error);
    void makeResults();
    void describeResults(CaeContents* contents) const;
    void describeStates(CaeContents* contents);
    bool readValues(const Result& result, const MedStep& step, const ug::ResultInfo& intoInfo, ug::DataState* state,
                    ug::Error* error) const;
    const MedStep* findStep(const Result& result, int stateId) const;

    /// What tells states apart.
    struct StateKey {
        med_int number;
        med_int iteration;
        double time;

        bool operator==(const StateKey&) const = default;
    };

    static StateKey keyOf(const MedStep& step);
    std::vector<StateKey> gatherStates() const;

    MedFile m_file;
    MedMeshes m_meshes;
    std::vector<MedField> m_fields;
    std::vector<Result> m_results;
    std::vector<StateKey> m_states; ///< The id of a state is its index and 1.
    PtrRef<ug::DataGeometry> m_geometry;
};

} // namespace orv::imp::cae
