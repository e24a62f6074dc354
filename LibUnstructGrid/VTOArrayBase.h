#pragma once

#include "LibCore/rvfAssert.h"
#include "LibCore/rvfExport.h"

/// What the typed arrays have in common: a flat buffer of GetNumAllocated() slots, of which the first GetNumItems()
/// hold items.
///
/// An array is empty without a buffer, owns its buffer, or borrows it. A borrowed buffer must outlive the array, is
/// never released by it, and allows no operation that might have to move it: those assert "!m_bSharedData". When the
/// handler of that assertion returns, `Alloc` and `Realloc` do release the borrowed buffer.
///
/// Growth. An operation that grows asks for the slots it needs and GetGrowBy() more. The growth step is that given to
/// `Alloc` or `Realloc`; -1, as in a new array, selects a step that follows the capacity (not the number of items). A
/// step of 0 leaves no room to spare, so that an array with it cannot take another item when it is full: it suits only
/// arrays that do not grow.
class ORV_API VTArray {
public:
    virtual ~VTArray() = default;

    VTArray(const VTArray&) = delete;
    VTArray& operator=(const VTArray&) = delete;

    /// Makes room for exactly `iNumItems` items and gives up what the array held, but keeps the buffer and what is in
    /// it when it has this size already. New slots hold whatever the memory held. The count becomes `iNumItems` with
    /// `bSetNumItems`, else 0; `iGrowBy` becomes the growth step. Asserts "iNumItems > 0", "!m_bSharedData".
    virtual void Alloc(int iNumItems, int iGrowBy, bool bSetNumItems) = 0;

    /// Makes the capacity `iNewSize`, or the number of items for -1, and keeps what fits, unused slots included. The
    /// count is cut to the capacity; with `bSetNumItems` it becomes the capacity, whatever the new slots hold.
    /// `iGrowBy` becomes the growth step in any case. An array of no items is freed by -1. Asserts
    /// "(iNewSize > 0) || (iNewSize == -1)", "!m_bSharedData".
    virtual void Realloc(int iNewSize, int iGrowBy, bool bSetNumItems) = 0;

    /// Releases the buffer, or forgets it when it is borrowed. The growth step stays.
    virtual void Free() = 0;

    int GetNumItems() const {
        return m_iNumItems;
    }

    /// The capacity in items.
    int GetNumAllocated() const {
        return m_iNumAllocated;
    }

    /// The growth step in use: the one that was set, or, when that is negative, an eighth of the capacity, at least 4
    /// and at most 1024.
    int GetGrowBy() const;

    /// Sets the count within the capacity and leaves the contents alone. Asserts "iNumItems >= 0",
    /// "iNumItems <= m_iNumAllocated".
    void SetNumItems(int iNumItems);

protected:
    VTArray() = default;

    friend struct VTArrayBuffer;

    int m_iNumItems = 0;
    int m_iNumAllocated = 0;
    int m_iGrowBy = -1;
    bool m_bSharedData = false;
};
