#pragma once

#include "LibUnstructGrid/VTOArray.h"
#include "LibUnstructGrid/VTOLinAlgebra.h"
#include "Tests/Support/AssertRecorder.h"
#include "Tests/Support/AssertStopper.h"

#include <string>
#include <vector>

/// What the tests that run over several array classes know of each.
///
/// Every class has an item for each small number, all parts of which follow from the number, and the way back. -999
/// stands for an item that no number gives.
namespace vtarraytest {

template <typename Array>
struct Traits;

template <>
struct Traits<VTIntArray> {
    using Item = int;
    static constexpr const char* unit = "LibUnstructGrid/VTOArrayInt";
    static constexpr const char* assignUnit = unit;
    static constexpr const char* data = "m_piData";
    static constexpr const char* values = "aiValues";
    static constexpr const char* pointer = "piValues";

    static int item(int i) {
        return i;
    }
    static int number(int item) {
        return item;
    }
};

template <>
struct Traits<VTIntIndexArray> : Traits<VTIntArray> {
    static constexpr const char* assignUnit = "LibUnstructGrid/VTOArrayIntIndex";
};

template <>
struct Traits<VTUbyteArray> {
    using Item = unsigned char;
    static constexpr const char* unit = "LibUnstructGrid/VTOArrayUbyte";
    static constexpr const char* assignUnit = unit;
    static constexpr const char* data = "m_pubData";
    static constexpr const char* values = "aubValues";
    static constexpr const char* pointer = "pubValues";

    static unsigned char item(int i) {
        return static_cast<unsigned char>(i);
    }
    static int number(unsigned char item) {
        return item;
    }
};

template <>
struct Traits<VTFloatArray> {
    using Item = float;
    static constexpr const char* unit = "LibUnstructGrid/VTOArrayFloat";
    static constexpr const char* assignUnit = unit;
    static constexpr const char* data = "m_pfData";
    static constexpr const char* values = "afValues";
    static constexpr const char* pointer = "pfValues";

    static float item(int i) {
        return static_cast<float>(i) + 0.5f;
    }
    static int number(const float& item) {
        const int i = static_cast<int>(item);
        return item == Traits::item(i) ? i : -999;
    }
};

template <>
struct Traits<VTRealArray> {
    using Item = double;
    static constexpr const char* unit = "LibUnstructGrid/VTOArrayReal";
    static constexpr const char* assignUnit = unit;
    static constexpr const char* data = "m_pfData";
    static constexpr const char* values = "afValues";
    static constexpr const char* pointer = "pfValues";

    static double item(int i) {
        return i + 0.1;
    }
    static int number(const double& item) {
        const int i = static_cast<int>(item);
        return item == Traits::item(i) ? i : -999;
    }
};

template <>
struct Traits<VTStringArray> {
    using Item = VTString;
    static constexpr const char* unit = "LibUnstructGrid/VTOArrayString";
    static constexpr const char* assignUnit = unit;
    static constexpr const char* data = "m_psData";
    static constexpr const char* values = "asValues";
    static constexpr const char* pointer = "psValues";

    static VTString item(int i) {
        return VTString(i);
    }
    static int number(const VTString& item) {
        return item.AsInt(-999);
    }
};

template <>
struct Traits<VTVectorArray> {
    using Item = VTVector;
    static constexpr const char* unit = "LibUnstructGrid/VTOArrayVector";
    static constexpr const char* assignUnit = unit;
    static constexpr const char* data = "m_pData";
    static constexpr const char* values = "aValues";
    static constexpr const char* pointer = "pValues";

    static VTVector item(int i) {
        return VTVector(i, i + 0.1, i + 0.2);
    }
    static int number(const VTVector& item) {
        const int i = static_cast<int>(item.x);
        return item == Traits::item(i) ? i : -999;
    }
};

template <>
struct Traits<VTVectorFloatArray> {
    using Item = VTVectorFloat;
    static constexpr const char* unit = "LibUnstructGrid/VTOArrayVectorFloat";
    static constexpr const char* assignUnit = unit;
    static constexpr const char* data = "m_pData";
    static constexpr const char* values = "aValues";
    static constexpr const char* pointer = "pValues";

    static VTVectorFloat item(int i) {
        return VTVectorFloat(static_cast<float>(i), static_cast<float>(i) + 0.25f, static_cast<float>(i) + 0.5f);
    }
    static int number(const VTVectorFloat& item) {
        return item.y == item.x + 0.25f && item.z == item.x + 0.5f ? static_cast<int>(item.x) : -999;
    }
};

template <>
struct Traits<VTMatrix4Array> {
    using Item = VTMatrix4;
    static constexpr const char* unit = "LibUnstructGrid/VTOArrayMatrix4";
    static constexpr const char* assignUnit = unit;
    static constexpr const char* data = "m_pData";
    static constexpr const char* values = "aValues";
    static constexpr const char* pointer = "pValues";

    static VTMatrix4 makeMatrix(int i) {
        VTMatrix4 matrix;
        for (int iElement = 0; iElement < 16; ++iElement) {
            matrix.v[iElement] = i + 0.01 * iElement;
        }
        return matrix;
    }
    static VTMatrix4 item(int i) {
        return makeMatrix(i);
    }
    static int number(const VTMatrix4& item) {
        const int i = static_cast<int>(item.v[0]);
        return item == makeMatrix(i) ? i : -999;
    }
};

template <typename Array>
typename Traits<Array>::Item item(int i) {
    return Traits<Array>::item(i);
}

/// The numbers of the items, in order.
template <typename Array>
std::vector<int> numbers(const Array& array) {
    std::vector<int> list;
    for (int i = 0; i < array.GetNumItems(); ++i) {
        list.push_back(Traits<Array>::number(array.Get(i)));
    }
    return list;
}

/// Puts items into an empty array, which ends up full.
template <typename Array>
void fill(Array* pArray, const std::vector<int>& list) {
    if (!list.empty()) {
        pArray->Alloc(static_cast<int>(list.size()), -1, true);
    }
    for (int i = 0; i < static_cast<int>(list.size()); ++i) {
        pArray->Set(i, item<Array>(list[static_cast<std::size_t>(i)]));
    }
}

/// A full array. The numbers are those of its items.
template <typename Array>
struct Full : Array {
    explicit Full(const std::vector<int>& list) {
        fill<Array>(this, list);
    }
};

/// An array with free slots.
template <typename Array>
struct Roomy : Array {
    Roomy(const std::vector<int>& list, int iCapacity) {
        this->Alloc(iCapacity, -1, true);
        for (int i = 0; i < iCapacity; ++i) {
            this->Set(i, item<Array>(i < static_cast<int>(list.size()) ? list[static_cast<std::size_t>(i)] : 99));
        }
        this->SetNumItems(static_cast<int>(list.size()));
    }
};

/// An array that borrows the buffer of another, which is full.
template <typename Array>
struct Shared : Array {
    explicit Shared(Array* pOwner) {
        this->SetSharedDataPtr(pOwner->GetDataPtr(), pOwner->GetNumItems());
    }
};

template <typename Array>
std::vector<typename Traits<Array>::Item> buffer(const std::vector<int>& list) {
    std::vector<typename Traits<Array>::Item> items;
    for (int i : list) {
        items.push_back(item<Array>(i));
    }
    return items;
}

inline std::string replaced(std::string text, const std::string& from, const std::string& to) {
    for (auto at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size())) {
        text.replace(at, from.size(), to);
    }
    return text;
}

} // namespace vtarraytest
