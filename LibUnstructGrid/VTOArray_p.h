#pragma once

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

/// Moves the buffer to one of another size, with all slots that fit.
template <typename Item>
void resize(Item*& pData, int iOldSize, int iNewSize) {
    Item* pNewData = allocate<Item>(iNewSize);
    if constexpr (isPlain<Item>) {
        copyBlock(pData, std::min(iOldSize, iNewSize), pNewData);
    } else {
        copy(pData, std::min(iOldSize, iNewSize), pNewData);
    }
    delete[] pData;
    pData = pNewData;
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
void change(Item* pData, int iNumItems, const Function& function) {
    for (int i = 0; i < iNumItems; ++i) {
        pData[i] = function(pData[i]);
    }
}

/// The same for the items below `limit`.
template <typename Item, typename Function>
void changeBelow(Item* pData, int iNumItems, Item limit, const Function& function) {
    for (int i = 0; i < iNumItems; ++i) {
        const Item item = pData[i];
        pData[i] = item < limit ? function(item) : item;
    }
}

} // namespace VTArrayLoops
