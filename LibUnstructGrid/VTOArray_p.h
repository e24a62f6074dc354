#pragma once

#include "LibUnstructGrid/VTOArrayBase.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <type_traits>
#include <utility>

/// The loops that are the same in several arrays. They see raw buffers and check nothing: the arrays check first, so
/// that no item pays for it.
namespace VTArrayLoops {

/// The items are left as the memory was, unless their type has a constructor that says otherwise. Null for no items.
template <typename Item>
Item* allocate(int iNumItems) {
    return iNumItems > 0 ? new Item[static_cast<std::size_t>(iNumItems)] : nullptr;
}

/// Items that are nothing but their bytes.
template <typename Item>
inline constexpr bool isPlain = std::is_standard_layout_v<Item>&& std::is_trivially_destructible_v<Item>;

/// Upwards, one item after the other.
template <typename Source, typename Item>
void copy(const Source* pSource, int iNumItems, Item* pTarget) {
    for (int i = 0; i < iNumItems; ++i) {
        pTarget[i] = pSource[i];
    }
}

/// The bytes of the items, whatever their assignment does. The buffers may be the same, or null.
template <typename Item>
void copyBlock(const Item* pSource, int iNumItems, Item* pTarget) {
    static_assert(isPlain<Item>);
    if (iNumItems <= 0 || !pSource || !pTarget) {
        return;
    }
    // The compiler's loop outruns std::memmove() on buffers that are larger than the caches.
    if constexpr (std::is_trivially_copyable_v<Item>) {
        copy(pSource, iNumItems, pTarget);
    } else {
        std::memmove(static_cast<void*>(pTarget), pSource, static_cast<std::size_t>(iNumItems) * sizeof(Item));
    }
}

/// The bytes where items are nothing else, item after item where they are.
template <typename Item>
void copySlots(const Item* pSource, int iNumItems, Item* pTarget) {
    if constexpr (isPlain<Item>) {
        copyBlock(pSource, iNumItems, pTarget);
    } else {
        copy(pSource, iNumItems, pTarget);
    }
}

template <typename Item>
void fill(Item* pData, int iNumItems, const Item& value) {
    for (int i = 0; i < iNumItems; ++i) {
        pData[i] = value;
    }
}

/// Moves the items from `iIndex` on up by `iGap` places.
template <typename Item>
void openGap(Item* pData, int iNumItems, int iIndex, int iGap) {
    if (iIndex < iNumItems) {
        std::move_backward(pData + iIndex, pData + iNumItems, pData + iNumItems + iGap);
    }
}

/// Moves the items behind the gap of `iGap` places at `iIndex` down into it.
template <typename Item>
void closeGap(Item* pData, int iNumItems, int iIndex, int iGap) {
    if (iIndex + iGap < iNumItems) {
        std::move(pData + iIndex + iGap, pData + iNumItems, pData + iIndex);
    }
}

/// Moves the items for which `keep` holds together, in their order, and returns their number.
template <typename Item, typename Keep>
int compact(Item* pData, int iNumItems, const Keep& keep) {
    int iNumKept = 0;
    for (int i = 0; i < iNumItems; ++i) {
        if (keep(pData[i])) {
            pData[iNumKept++] = pData[i];
        }
    }
    return iNumKept;
}

template <typename Item>
void reverse(Item* pData, int iNumItems) {
    std::reverse(pData, pData + iNumItems);
}

template <typename Item>
bool isSorted(const Item* pData, int iNumItems) {
    for (int i = 1; i < iNumItems; ++i) {
        if (pData[i - 1] > pData[i]) {
            return false;
        }
    }
    return true;
}

/// Of at least one item.
template <typename Item>
std::pair<Item, Item> minMax(const Item* pData, int iNumItems) {
    Item min = pData[0];
    Item max = pData[0];
    for (int i = 1; i < iNumItems; ++i) {
        min = pData[i] < min ? pData[i] : min;
        max = pData[i] > max ? pData[i] : max;
    }
    return {min, max};
}

/// Of the items that are not above `limit`, from the seeds given.
template <typename Item>
std::pair<Item, Item> minMaxUpTo(const Item* pData, int iNumItems, Item limit, Item min, Item max) {
    for (int i = 0; i < iNumItems; ++i) {
        const Item value = pData[i];
        if (!(value > limit)) {
            min = value < min ? value : min;
            max = value > max ? value : max;
        }
    }
    return {min, max};
}

/// Replaces every item by what `function` makes of it.
template <typename Item, typename Function>
void change(Item* pData, int iNumItems, Function function) {
    for (int i = 0; i < iNumItems; ++i) {
        pData[i] = function(pData[i]);
    }
}

/// The same for the items below `limit`.
template <typename Item, typename Function>
void changeBelow(Item* pData, int iNumItems, Item limit, Function function) {
    for (int i = 0; i < iNumItems; ++i) {
        if (pData[i] < limit) {
            pData[i] = function(pData[i]);
        }
    }
}

} // namespace VTArrayLoops

/// What the arrays do with their buffers once their checks are made. `ppData` is where the array holds its buffer.
struct VTArrayBuffer {
    template <typename Item>
    static void assign(VTArray* pArray, Item** ppData, const VTArray& other, const Item* pOtherData) {
        if (other.m_iNumAllocated < 1) {
            pArray->Free();
            return;
        }
        pArray->Alloc(other.m_iNumAllocated, other.m_iGrowBy, true);
        VTArrayLoops::copySlots(pOtherData, other.m_iNumAllocated, *ppData);
        pArray->m_iNumAllocated = other.m_iNumAllocated;
        pArray->m_iNumItems = other.m_iNumItems;
        pArray->m_iGrowBy = other.m_iGrowBy;
    }

    template <typename Item>
    static void alloc(VTArray* pArray, Item** ppData, int iNumItems, int iGrowBy, bool bSetNumItems) {
        if (iNumItems != pArray->m_iNumAllocated) {
            delete[] * ppData;
            *ppData = nullptr; // Should there be no memory.
            *ppData = VTArrayLoops::allocate<Item>(iNumItems);
        }
        pArray->m_iGrowBy = iGrowBy;
        pArray->m_iNumAllocated = iNumItems;
        pArray->m_iNumItems = bSetNumItems ? iNumItems : 0;
    }

    template <typename Item>
    static void realloc(VTArray* pArray, Item** ppData, int iNewSize, int iGrowBy, bool bSetNumItems) {
        pArray->m_iGrowBy = iGrowBy;
        if (iNewSize < 0) {
            iNewSize = pArray->m_iNumItems;
        }
        if (iNewSize != pArray->m_iNumAllocated) {
            move(pArray, ppData, iNewSize);
        }
        if (bSetNumItems) {
            pArray->m_iNumItems = pArray->m_iNumAllocated;
        }
    }

    /// To a buffer of `iNewSize` slots, with all slots that fit; without a slot the array is freed.
    template <typename Item>
    static void move(VTArray* pArray, Item** ppData, int iNewSize) {
        if (iNewSize == 0) {
            pArray->Free();
            return;
        }
        Item* pNewData = VTArrayLoops::allocate<Item>(iNewSize);
        VTArrayLoops::copySlots(*ppData, std::min(pArray->m_iNumAllocated, iNewSize), pNewData);
        delete[] * ppData;
        *ppData = pNewData;
        pArray->m_iNumAllocated = iNewSize;
        pArray->m_iNumItems = std::clamp(pArray->m_iNumItems, 0, iNewSize);
    }

    template <typename Item>
    static void free(VTArray* pArray, Item** ppData) {
        if (!pArray->m_bSharedData) {
            delete[] * ppData;
        }
        pArray->m_bSharedData = false;
        steal(pArray, ppData);
    }

    /// Takes over a buffer that is full of items.
    template <typename Item>
    static void take(VTArray* pArray, Item** ppData, Item* pNewData, int iNumItems) {
        pArray->Free();
        *ppData = pNewData;
        pArray->m_iNumAllocated = iNumItems;
        pArray->m_iNumItems = iNumItems;
    }

    /// Gives the buffer away.
    template <typename Item>
    static Item* steal(VTArray* pArray, Item** ppData) {
        pArray->m_iNumAllocated = 0;
        pArray->m_iNumItems = 0;
        return std::exchange(*ppData, nullptr);
    }
};
