#pragma once

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

#include <vtkDoubleArray.h>
#include <vtkSmartPointer.h>
#include <vtkTypeInt32Array.h>

namespace orv::imp::cae {

/// An array of VTK on a list that can be taken out of it, so that a mesh need not be in memory twice.
template <class Array, class Number>
class VtkVectorArray : public Array {
public:
    static_assert(sizeof(Number) == sizeof(typename Array::ValueType));

    /// Of zeros.
    static vtkSmartPointer<VtkVectorArray> make(int componentCount, std::size_t valueCount) {
        auto array = vtkSmartPointer<VtkVectorArray>::Take(new VtkVectorArray);
        array->InitializeObjectBase();
        array->m_numbers.resize(valueCount);
        array->SetNumberOfComponents(componentCount);
        constexpr int IS_NOT_OF_VTK = 1;
        array->SetArray(reinterpret_cast<typename Array::ValueType*>(array->m_numbers.data()), vtkIdType(valueCount),
                        IS_NOT_OF_VTK);
        return array;
    }

    /// Leaves the array empty. Without a copy unless VTK has given the array another size.
    std::vector<Number> take() {
        const auto* begin = reinterpret_cast<const Number*>(this->GetPointer(0));
        if (begin != m_numbers.data()) {
            m_numbers.assign(begin, begin + this->GetNumberOfValues());
        }
        std::vector<Number> numbers = std::move(m_numbers);
        m_numbers.clear();
        this->Initialize();
        return numbers;
    }

protected:
    VtkVectorArray() = default;
    ~VtkVectorArray() override = default;

private:
    std::vector<Number> m_numbers;
};

/// Coordinates of points.
using VtkPlaces = VtkVectorArray<vtkDoubleArray, double>;

/// Indexes of points, which are never negative.
using VtkIndexes = VtkVectorArray<vtkTypeInt32Array, std::uint32_t>;

} // namespace orv::imp::cae
