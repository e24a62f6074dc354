#pragma once

#include "LibCore/rvfAssert.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <new>
#include <type_traits>

/// Makes elements in raw memory: zero for pointers and numbers.
template <typename TYPE>
void VTConstructElements(TYPE* pElements, int nCount) {
    std::uninitialized_value_construct_n(pElements, nCount);
}

/// Ends elements and leaves the memory. Does nothing for a pointer, and never deletes what it points at.
template <typename TYPE>
void VTDestructElements(TYPE* pElements, int nCount) {
    std::destroy_n(pElements, nCount);
}

/// A growable array for element types that need construction and destruction hooks. Not one of the VTArray family.
///
/// The growth step works differently here: a step of 0 selects the heuristic one, where a VTArray uses -1, and the
/// heuristic step follows the number of elements, where a VTArray follows the capacity.
///
/// Elements must survive a copy of their bytes to another place. The array does not own what pointer elements point at.
template <typename TYPE, typename ARG_TYPE>
class VTOArray {
public:
    VTOArray() = default;

    ~VTOArray() {
        VTDestructElements(m_pData, m_nSize);
        ::operator delete(m_pData);
    }

    VTOArray(const VTOArray&) = delete;
    VTOArray& operator=(const VTOArray&) = delete;

    int GetSize() const {
        return m_nSize;
    }

    const TYPE& operator[](int nIndex) const {
        RVF_ASSERT(nIndex >= 0 && nIndex < m_nSize);
        return m_pData[nIndex];
    }

    TYPE& operator[](int nIndex) {
        return ElementAt(nIndex);
    }

    /// Asserts "nIndex >= 0 && nIndex < m_nSize".
    TYPE& ElementAt(int nIndex) {
        RVF_ASSERT(nIndex >= 0 && nIndex < m_nSize);
        return m_pData[nIndex];
    }

    /// Makes or ends elements until there are `nNewSize`; 0 releases the buffer too. A first buffer holds exactly
    /// `nNewSize` elements, a larger one has the growth step to spare. `nGrowBy` becomes the growth step unless it is
    /// -1. Asserts "nNewSize >= 0". Always true.
    bool SetSize(int nNewSize, int nGrowBy) {
        RVF_ASSERT(nNewSize >= 0);
        if (nGrowBy != -1) {
            m_nGrowBy = nGrowBy;
        }
        if (nNewSize == 0) {
            Release();
        } else if (!m_pData) {
            m_pData = Allocate(nNewSize);
            VTConstructElements(m_pData, nNewSize);
            m_nMaxSize = nNewSize;
        } else if (nNewSize > m_nMaxSize) {
            Grow(nNewSize);
        } else if (nNewSize > m_nSize) {
            VTConstructElements(m_pData + m_nSize, nNewSize - m_nSize);
        } else {
            VTDestructElements(m_pData + nNewSize, m_nSize - nNewSize);
        }
        m_nSize = nNewSize;
        return true;
    }

    /// Sets an element and makes the array long enough for it. Asserts "nIndex >= 0". Returns whether the element was
    /// stored.
    bool SetAtGrow(int nIndex, ARG_TYPE newElement) {
        RVF_ASSERT(nIndex >= 0);
        if (nIndex >= m_nSize && !SetSize(nIndex + 1, -1)) {
            return false;
        }
        m_pData[nIndex] = newElement;
        return true;
    }

    /// Returns the index of the new element, or -1.
    int Add(ARG_TYPE newElement) {
        const int nIndex = m_nSize;
        return SetAtGrow(nIndex, newElement) ? nIndex : -1;
    }

private:
    static TYPE* Allocate(int nCount) {
        static_assert(alignof(TYPE) <= __STDCPP_DEFAULT_NEW_ALIGNMENT__);
        return static_cast<TYPE*>(::operator new(static_cast<std::size_t>(nCount) * sizeof(TYPE)));
    }

    void Release() {
        VTDestructElements(m_pData, m_nSize);
        ::operator delete(m_pData);
        m_pData = nullptr;
        m_nMaxSize = 0;
    }

    void Grow(int nNewSize) {
        const int nStep = m_nGrowBy == 0 ? std::clamp(m_nSize / 8, 4, 1024) : m_nGrowBy;
        const int nNewMax = std::max(nNewSize, m_nMaxSize + nStep);
        RVF_ASSERT(nNewMax >= m_nMaxSize);
        TYPE* pNewData = Allocate(nNewMax);
        std::memcpy(static_cast<void*>(pNewData), static_cast<const void*>(m_pData),
                    static_cast<std::size_t>(m_nSize) * sizeof(TYPE));
        RVF_ASSERT(nNewSize > m_nSize);
        VTConstructElements(pNewData + m_nSize, nNewSize - m_nSize);
        ::operator delete(m_pData);
        m_pData = pNewData;
        m_nMaxSize = nNewMax;
    }

    TYPE* m_pData = nullptr;
    int m_nSize = 0;
    int m_nMaxSize = 0;
    int m_nGrowBy = 0;
};
