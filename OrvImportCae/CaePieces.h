#pragma once

#include "OrvImportCae/CaeFileRelation.h"
#include "OrvImportCae/CaeReader.h"

#include <cstddef>
#include <map>
#include <span>
#include <unordered_map>
#include <vector>

namespace orv::imp::cae {

/// Files that are pieces of one model, as one: the states of the first file, the parts of all, and what results any of
/// them has. Their meshes are not copied: the parts are those of the files.
class CaePieces : public CaeReader {
public:
    /// @param files open, with the same states
    explicit CaePieces(std::vector<CaeOpenFile> files);

    void setProgress(ug::ProgressMeter* progress) override;

    /// The files are open already; tells what they hold together.
    bool open(const Str& filename, CaeContents* contents, ug::Error* error) override;

    /// Nothing: pieces are not added to what is open.
    void adoptGeometry(const PtrRef<ug::DataGeometry>& geometry) override;

    void beginLoad(const std::vector<ug::ResultInfo>& infos, int stateId) override;
    void endLoad() override;

    /// The parts of files that do not have the result in this state are left without values.
    bool readResult(const ug::ResultInfo& info, int stateId, const ug::ResultInfo& intoInfo, ug::DataState* state,
                    std::vector<Str>* warnings, ug::Error* error) override;
    bool readScalars(const ug::ResultInfo& info, int stateId, const ug::ScalarPlace& place,
                     std::span<double> values) override;

private:
    struct Piece {
        CaeOpenFile file;
        std::size_t firstPart;
        std::vector<std::size_t> results; ///< For each of the file's results where it is in `m_results`.

        PtrRef<ug::DataGeometry> geometry(std::size_t state) const;
        int stateId(std::size_t state) const;
    };

    void nameParts();
    void addResults(Piece* piece);
    PtrRef<ug::DataGeometry> makeGeometry(std::size_t state);
    const ug::ResultInfo* findResult(const Piece& piece, const ug::ResultInfo& info, std::size_t state) const;
    const Piece& pieceOfPart(std::size_t part) const;

    std::vector<Piece> m_pieces;
    std::vector<ug::PartInfo> m_parts;
    std::vector<ug::ResultInfo> m_results;
    std::unordered_map<int, std::size_t> m_statesById;
    std::map<std::vector<ug::DataGeometry*>, PtrRef<ug::DataGeometry>> m_geometries; ///< By those of the files.
};

} // namespace orv::imp::cae
