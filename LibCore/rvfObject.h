#pragma once

#include "LibCore/rvfAtomicCounter.h"
#include "LibCore/rvfExport.h"

namespace rvf {

/// The base of everything that a ref holds: an object that counts its holders and ends with the last of them.
///
/// The count starts at zero, so a new object belongs to nobody, and the first ref that takes it makes it shared. An
/// object on the stack may be a plain value as long as no ref ever takes it. The count is atomic, the rest of an object
/// is not protected.
class ORV_API Object {
public:
    Object();
    /// The copy has no holders, however many `other` has.
    Object(const Object& other);
    virtual ~Object();

    /// Keeps the holders of this object: they hold the object, not its value.
    Object& operator=(const Object& other);

    /// Adds a holder. Asserts "this".
    void addRef() const;

    /// Takes a holder away and deletes the object with the last one. Asserts "this" and "m_refCount > 0". A release too
    /// many leaves the count below zero, and the object lives on.
    void release() const;

    /// The number of holders.
    int refCount() const;

private:
    mutable AtomicCounter m_refCount;
};

} // namespace rvf
