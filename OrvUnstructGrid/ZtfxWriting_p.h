#pragma once

#include "OrvCore/PtrRef.h"
#include "OrvUnstructGrid/DataSource.h"
#include "OrvUnstructGrid/ResultLoan_p.h"
#include "OrvUnstructGrid/WritePlan_p.h"
#include "OrvUnstructGrid/ZtfxContainer_p.h"
#include "OrvUnstructGrid/ZtfxIndex_p.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <span>
#include <string>
#include <utility>
#include <vector>

namespace orv::ug {

/// A case that is to be written.
struct ZtfxPlannedCase {
    int id;
    Str name;
    PtrRef<DataSource> source;
    WritePlan plan;
};

/// Fills a container with cases. The index and the meshes are laid out ahead; the values of a result are loaded when
/// their entry is written, so that those of one result in one state are in memory at a time.
class ZtfxWriting {
public:
    ZtfxWriting(const std::vector<ZtfxPlannedCase>& cases, ZtfxContainer* container, bool isEncrypted);

    /// Adds all entries. This object has to live until they are written. False with a text when a source is not as its
    /// directory says.
    bool addEntries(Error* error);

private:
    /// One array of a field: indexes in the index of the file, and the id that its entry has.
    struct Place {
        std::size_t caseIndex;
        std::size_t state;
        std::size_t field;
        std::size_t geometry;
        std::uint64_t id;
    };

    void addText(const char* name, bool isBare, std::function<std::string()> makeText);
    bool addCase(const ZtfxPlannedCase& planned, Error* error);
    bool addState(const ZtfxPlannedCase& planned, const StateInfo& info, ZtfxCase* contents, Error* error);
    bool addMesh(const DataGeometry& geometry, const std::vector<std::size_t>& parts, ZtfxCase* contents,
                 ZtfxState* state, Error* error);
    bool addPart(const DataPart& part, ZtfxPart* written, Error* error);
    std::uint64_t addMeshArray(ZtfxType type, std::uint64_t components, ZtfxContainer::Make make);
    void addFields(std::size_t caseIndex);
    bool makeField(const Place& place, ZtfxPayload* payload, Error* error);
    bool borrow(DataSource* source, int stateId, const ResultInfo& info, Error* error);
    bool gatherValues(const Place& place, const ResultInfo& info, std::vector<std::span<const double>>* values,
                      Error* error) const;
    std::uint64_t intern(ZtfxArray array, std::uint64_t id);

    const std::vector<ZtfxPlannedCase>& m_cases;
    ZtfxContainer* m_container;
    bool m_isEncrypted;
    ZtfxIndex m_index;
    std::uint64_t m_lastId = 0;
    std::map<ZtfxArray, std::uint64_t> m_ids; ///< Of all arrays so far, which are keys without their ids.
    std::map<std::pair<const DataGeometry*, std::vector<std::size_t>>, ZtfxMesh> m_meshes;
    std::unique_ptr<ResultLoan> m_loan; ///< Of the field that is being written.
    const DataState* m_borrowedFrom = nullptr;
    std::string m_text;
};

} // namespace orv::ug
