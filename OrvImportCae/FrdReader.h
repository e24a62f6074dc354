#pragma once

#include "OrvImportCae/CaeFile.h"
#include "OrvImportCae/CaeReader.h"
#include "OrvImportCae/FrdIndex.h"
#include "OrvImportCae/FrdMesh.h"
#include "OrvImportCae/FrdResults.h"
#include "OrvImportCae/FrdValues.h"

#include <cstddef>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace orv::imp::cae {

/// The block of a state that holds a result, and its columns. Both are null when there is none.
struct FrdSource {
    const FrdResultBlock* block = nullptr;
    const FrdColumns* columns = nullptr;
};

/// Reads the results of CalculiX. Opening takes in the mesh and where the blocks are; the file stays open, and values
/// are read from it one result of one state at a time.
class FrdReader : public CaeReader {
public:
    bool open(const Str& filename, CaeContents* contents, ug::Error* error) override;

    /// The same for an open descriptor, such as one of a file in memory. It is closed in the end in any case.
    bool openDescriptor(int descriptor, const Str& filename, CaeContents* contents, ug::Error* error);

    void adoptGeometry(const PtrRef<ug::DataGeometry>& geometry) override;

    /// Fails too when the file has changed since it was opened.
    bool readResult(const ug::ResultInfo& info, int stateId, const ug::ResultInfo& intoInfo, ug::DataState* state,
                    std::vector<Str>* warnings, ug::Error* error) override;

    /// Reads the node's row and nothing else, in a block that has the rows of all nodes in the order of the mesh.
    bool readScalars(const ug::ResultInfo& info, int stateId, const ug::ScalarPlace& place,
                     std::span<double> values) override;

private:
    bool readStructure(CaeContents* contents, ug::Error* error);
    bool readIndex(ug::Error* error);
    bool readMesh(std::vector<std::string>* warnings, ug::Error* error);
    FrdSource findSource(int stateId, const ug::ResultInfo& info) const;
    void tellLeftOut(const FrdResultBlock& block, const FrdLeftOut& leftOut, std::vector<Str>* warnings);
    void describe(const std::vector<std::string>& warnings, CaeContents* contents) const;

    CaeFile m_file;
    FrdIndex m_index;
    FrdMesh m_mesh;
    FrdResults m_results;
    std::unordered_map<int, std::size_t> m_statesById;
    std::unordered_set<const FrdResultBlock*> m_blocksToldOf;
};

} // namespace orv::imp::cae
