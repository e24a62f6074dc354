#pragma once

#include <type_traits>
#include <utility>

namespace orv {

/// Holds one reference on a RefCountedObject, or nothing.
///
/// `T` may be incomplete where the holder is declared, and has to be complete where it is made, assigned or destroyed.
/// A holder that is const does not make its object const.
template <class T>
class PtrRef {
    using SafeBool = T* PtrRef::*;

public:
    /// Takes a reference on `object`, which may be null.
    PtrRef(T* object = nullptr) : m_object(object) {
        if (m_object) {
            m_object->addRef();
        }
    }

    PtrRef(const PtrRef& other) : PtrRef(other.m_object) {}

    /// A holder of a derived class gives one of its base.
    template <class Derived>
    requires std::is_convertible_v<Derived*, T*> PtrRef(const PtrRef<Derived>& other) : PtrRef(other.get()) {}

    PtrRef(PtrRef&& other) noexcept : m_object(std::exchange(other.m_object, nullptr)) {}

    /// Gives the reference back. An exception out of release() ends the process.
    ~PtrRef() noexcept {
        if (m_object) {
            m_object->release();
        }
        m_object = nullptr;
    }

    /// The new object is taken before the old one is let go, so assigning what is already held is safe.
    PtrRef& operator=(T* object) {
        PtrRef(object).swap(*this);
        return *this;
    }

    PtrRef& operator=(const PtrRef& other) {
        PtrRef(other).swap(*this);
        return *this;
    }

    PtrRef& operator=(PtrRef&& other) noexcept {
        PtrRef(std::move(other)).swap(*this);
        return *this;
    }

    /// Exchanges the two objects; no count changes.
    void swap(PtrRef& other) noexcept {
        std::swap(m_object, other.m_object);
    }

    T* get() const {
        return m_object;
    }

    T* operator->() const {
        return m_object;
    }

    T& operator*() const {
        return *m_object;
    }

    /// True in a condition when something is held. A member pointer, unlike a bool, takes part in no arithmetic.
    operator SafeBool() const {
        return m_object ? &PtrRef::m_object : nullptr;
    }

private:
    T* m_object;
};

/// Holders are equal when they hold the same object, or nothing both.
template <class A, class B>
bool operator==(const PtrRef<A>& a, const PtrRef<B>& b) {
    return a.get() == b.get();
}

template <class A, class B>
bool operator==(const PtrRef<A>& a, B* b) {
    return a.get() == b;
}

} // namespace orv
