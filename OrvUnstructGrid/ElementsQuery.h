#pragma once

#include "LibCore/rvfExport.h"
#include "OrvCore/Vec3d.h"

#include <cstddef>

namespace orv::ug {

class DataElements;
class DataNodes;

/// Questions about the elements of one part. Keeps pointers to what it is given.
class ORV_API ElementsQuery {
public:
    /// Neither may be null; both are of the same part.
    ElementsQuery(const DataElements* elements, const DataNodes* nodes);
    ~ElementsQuery();

    /// The average of all nodes of the element, mid-side ones included; a node that is there twice counts twice.
    /// Displacements do not count.
    /// Asserts "elementIndex < m_elements->elementCount()"; UNDEFINED_VECTOR behind a failed assertion.
    Vec3d elementCentroid(std::size_t elementIndex) const;

private:
    const DataElements* m_elements;
    const DataNodes* m_nodes;
};

} // namespace orv::ug
