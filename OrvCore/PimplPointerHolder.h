#pragma once

namespace orv::internal {

/// The single owner of a facade's private object. Constness passes through, from the facade to the private object.
///
/// `T` may be incomplete where the holder is declared; the facade's constructor and destructor then have to stand in
/// the source file that knows it.
template <class T>
class PimplPointerHolder {
public:
    /// Takes over `object`, which may be null.
    explicit PimplPointerHolder(T* object = nullptr) : m_object(object) {}

    ~PimplPointerHolder() {
        deleteObject();
    }

    PimplPointerHolder(const PimplPointerHolder&) = delete;
    PimplPointerHolder& operator=(const PimplPointerHolder&) = delete;

    /// Deletes what is held and takes over `object`. Nothing happens when `object` is held already.
    void reset(T* object) {
        if (object != m_object) {
            deleteObject();
            m_object = object;
        }
    }

    /// What is held, also when that is null: nothing is tested.
    T* operator->() {
        return m_object;
    }

    const T* operator->() const {
        return m_object;
    }

private:
    void deleteObject() {
        static_assert(
            requires { sizeof(T); }, "the private class has to be known here");
        delete m_object;
    }

    T* m_object;
};

} // namespace orv::internal
