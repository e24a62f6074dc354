#pragma once

#include "LibCore/rvfExport.h"
#include "OrvUnstructGrid/DataElements.h"
#include "OrvUnstructGrid/DataNodes.h"
#include "OrvUnstructGrid/ResultType.h"

#include <cstddef>
#include <functional>
#include <memory>

namespace orv::ug {

class Error;

/// One part of a geometry: its nodes and the elements on them.
///
/// A source may leave them in its file until somebody asks: the first call that needs them reads them then, for which
/// it may change what only looks constant.
class ORV_API DataPart {
public:
    /// What is known of nodes and elements that are still to be read.
    struct Counts {
        std::size_t nodes = 0;
        std::size_t elements = 0;
        std::size_t elementNodes = 0; ///< The nodes of all elements, each as often as elements name it.
    };

    /// Fills empty nodes and elements, as many as was said; false with a text when that fails. Each time the same.
    using Read = std::function<bool(DataNodes* nodes, DataElements* elements, Error* error)>;

    explicit DataPart(int partId);
    ~DataPart();

    DataPart(const DataPart&) = delete;
    DataPart& operator=(const DataPart&) = delete;

    /// Unique within the geometry.
    int partId() const;
    void setPartId(int partId);

    /// Leaves nodes and elements to `read`, which is called when they are needed: once, and again after giveBack(). The
    /// part has to be empty.
    void readLater(const Counts& counts, Read read);

    /// The same where nothing is known of them beforehand: asking for a count reads them.
    void readLater(Read read);

    /// Has nodes and elements read now, unless they are there. False with a text when they cannot be, at each call; the
    /// part then is one without any.
    bool read(Error* error) const;

    /// Gives back the memory of nodes and elements that `read` has brought: they are left to it again, and whoever has
    /// nodes() or elements() or any piece of them asks for them anew. Counts stay known.
    void giveBack();

    /// The bytes that this would give back.
    std::size_t bytesToGiveBack() const;

    /// @name What the part consists of, read if need be
    /// Call read() first where the reason of a failure matters: here it goes to the log, and there are none.
    /// @{
    DataNodes* nodes();
    const DataNodes* nodes() const;
    DataElements* elements();
    const DataElements* elements() const;
    /// @}

    /// True when every element's nodes exist in this part. Look once after filling; one pass over the connectivity.
    bool isConsistent() const;

    /// The items that a result of this mapping has on this part; 0 for UNKNOWN_MAPPING. Only PER_ELEMENT_SURFACE needs
    /// the elements themselves.
    std::size_t itemCount(ResultMapping mapping) const;

    /// The bytes of the nodes and elements that are there.
    std::size_t byteCount() const;

private:
    struct Source;

    void bringIn() const;
    Counts counts() const;

    int m_partId;
    mutable DataNodes m_nodes;
    mutable DataElements m_elements;
    std::unique_ptr<Source> m_source; ///< Null when nothing was left unread.
};

} // namespace orv::ug
