#pragma once

#include "LibCore/rvfExport.h"
#include "OrvUnstructGrid/DataElements.h"
#include "OrvUnstructGrid/DataNodes.h"
#include "OrvUnstructGrid/ResultType.h"

#include <cstddef>

namespace orv::ug {

/// One part of a geometry: its nodes and the elements on them.
class ORV_API DataPart {
public:
    explicit DataPart(int partId);

    DataPart(const DataPart&) = delete;
    DataPart& operator=(const DataPart&) = delete;

    /// Unique within the geometry.
    int partId() const;

    DataNodes* nodes();
    const DataNodes* nodes() const;
    DataElements* elements();
    const DataElements* elements() const;

    /// True when every element's nodes exist in this part. Look once after filling; one pass over the connectivity.
    bool isConsistent() const;

    /// The items that a result of this mapping has on this part; 0 for UNKNOWN_MAPPING.
    std::size_t itemCount(ResultMapping mapping) const;

    std::size_t byteCount() const;

private:
    int m_partId;
    DataNodes m_nodes;
    DataElements m_elements;
};

} // namespace orv::ug
