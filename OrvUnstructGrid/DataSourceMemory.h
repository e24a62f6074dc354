#pragma once

#include "LibCore/rvfExport.h"
#include "OrvUnstructGrid/DataSourceLazy.h"

#include <cstddef>
#include <span>

namespace orv::ug {

/// A data source filled by the program itself: a solver in the same process, a test, an array in a script.
///
/// Fill it in this order: geometries with their parts, states, results, values. It goes through the same interfaces as
/// a file. Its values are never dropped; those that were computed from them may be.
class ORV_API DataSourceMemory : public DataSourceLazy {
public:
    explicit DataSourceMemory(int id);

    /// The name that the simulation record gives as its file.
    void setName(const Str& name);

    /// Appends an empty geometry, to which addPart() adds. All states share it. Asserts "stateCount() == 0"; null
    /// behind a failed assertion.
    DataGeometry* addGeometry();

    /// Appends a part with the next free id, from 1, to the geometry at that index, and its record. Fill its nodes and
    /// elements before values are set.
    /// Asserts "geometryIndex < geometryCount" and "stateCount() == 0"; null behind a failed assertion.
    DataPart* addPart(std::size_t geometryIndex, const Str& name);

    /// Appends a state. False when the id is negative or taken.
    bool addState(const StateInfo& info);

    /// Appends a result and gives it the next free id of its type, from 1. Invalid when the type is none or the mapping
    /// unknown.
    ResultInfo addResult(ResultType type, const Str& name, ResultMapping mapping);

    /// Copies one part's values in. The result exists in the state from then on; parts without values of their own are
    /// undefined there. New values replace earlier ones, and what had been computed in that state is computed anew when
    /// it is asked for next.
    /// @param values item after item, doublesPerItem() for each node or element of the part, as the mapping says
    /// @return false with a text when the state, result, geometry or part does not exist or the count does not fit
    bool setValues(int stateId, const ResultInfo& info, std::size_t geometryIndex, std::size_t partIndex,
                   std::span<const double> values, Error* error);

protected:
    bool readResult(const ResultInfo& info, DataState* state, Error* error) override;
    bool canReadAgain() const override;

private:
    const DataPart* findPart(std::size_t geometryIndex, std::size_t partIndex, Error* error) const;

    std::vector<PtrRef<DataGeometry>> m_geometries;
};

} // namespace orv::ug
