#pragma once

#include "LibCore/rvfAtomicCounter.h"
#include "LibCore/rvfExport.h"

namespace orv {

/// The base of every shared object: it counts its holders and ends with the last of them.
///
/// The count starts at zero, so a new object belongs to nobody until a PtrRef takes it. Make shared objects with `new`
/// and give them to a PtrRef at once.
class ORV_API RefCountedObject {
public:
    RefCountedObject();
    /// The copy has no holders, however many `other` has.
    RefCountedObject(const RefCountedObject& other);
    virtual ~RefCountedObject();

    /// Keeps the holders of this object: they hold the object, not its value.
    RefCountedObject& operator=(const RefCountedObject& other);

    /// Adds a holder. Asserts "this".
    void addRef() const;

    /// Takes a holder away and deletes the object with the last one. Asserts "this" and "m_refCount > 0". A release too
    /// many leaves the count below zero, and the object lives on.
    void release() const;

    /// The number of holders.
    int refCount() const;

private:
    mutable rvf::AtomicCounter m_refCount;
};

} // namespace orv
