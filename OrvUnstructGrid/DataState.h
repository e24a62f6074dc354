#pragma once

#include "LibCore/rvfExport.h"
#include "OrvCore/PtrRef.h"
#include "OrvUnstructGrid/DataGeometry.h"
#include "OrvUnstructGrid/DataResultGroup.h"

#include <cstddef>
#include <memory>
#include <vector>

namespace orv::ug {

/// One state of a data source: its geometries, usually shared with other states, and the results loaded so far.
class ORV_API DataState {
public:
    /// @param geometries none of them null
    DataState(int id, std::vector<PtrRef<DataGeometry>> geometries);
    ~DataState();

    DataState(const DataState&) = delete;
    DataState& operator=(const DataState&) = delete;

    int id() const;

    std::size_t geometryCount() const;
    /// Asserts "index < geometryCount()"; null behind a failed assertion.
    DataGeometry* geometry(std::size_t index);
    const DataGeometry* geometry(std::size_t index) const;

    /// Has all parts of all geometries read that their source has left unread. False with a text when one cannot be.
    bool readGeometries(Error* error) const;

    /// The loaded results on a geometry; null for null and for a geometry of another state.
    DataResultGroup* results(const DataGeometry* geometry);
    const DataResultGroup* results(const DataGeometry* geometry) const;

    /// True when the result is loaded on every geometry.
    bool hasLoaded(const ResultInfo& info) const;

    /// Deletes the values of a result on every geometry.
    void removeResult(const ResultInfo& info);

    /// The loaded values' bytes; the geometries are not counted.
    std::size_t resultByteCount() const;

private:
    int m_id;
    std::vector<PtrRef<DataGeometry>> m_geometries;
    std::vector<std::unique_ptr<DataResultGroup>> m_groups;
};

} // namespace orv::ug
