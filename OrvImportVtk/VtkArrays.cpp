#include "OrvImportVtk/VtkArrays.h"

#include "OrvCore/Defines.h"

#include <vtkDataArray.h>
#include <vtkSetGet.h>

#include <algorithm>
#include <cmath>

namespace orv::imp::cae {
namespace {

double definedOf(double value) {
    return std::isnan(value) ? UNDEFINED_DOUBLE : value;
}

// One component after the other, so that the inner loop is short.
template <class Number>
void copyItems(const Number* from, std::size_t fromStride, std::span<const std::int64_t> source,
               std::span<const std::uint8_t> components, std::size_t stride, std::span<double> values) {
    const std::size_t count = (values.size() + stride - 1) / stride;
    for (std::size_t c = 0; c < components.size(); ++c) {
        const Number* component = from + components[c];
        for (std::size_t i = 0; i < count; ++i) {
            values[i * stride + c] =
                definedOf(double(component[fromStride * (source.empty() ? i : std::size_t(source[i]))]));
        }
    }
}

// For arrays that do not lie in memory item after item.
void copyByComponent(vtkDataArray* array, std::span<const std::int64_t> source,
                     std::span<const std::uint8_t> components, std::size_t stride, std::span<double> values) {
    for (std::size_t i = 0; i * stride < values.size(); ++i) {
        const vtkIdType item = source.empty() ? vtkIdType(i) : vtkIdType(source[i]);
        for (std::size_t c = 0; c < components.size(); ++c) {
            values[i * stride + c] = definedOf(array->GetComponent(item, components[c]));
        }
    }
}

} // namespace

void copyVtkItems(vtkDataArray* array, std::span<const std::int64_t> source, std::span<const std::uint8_t> components,
                  std::size_t stride, std::span<double> values) {
    if (!array->HasStandardMemoryLayout()) {
        copyByComponent(array, source, components, stride, values);
        return;
    }
    const auto fromStride = std::size_t(array->GetNumberOfComponents());
    switch (array->GetDataType()) {
        vtkTemplateMacro(copyItems(static_cast<const VTK_TT*>(array->GetVoidPointer(0)), fromStride, source, components,
                                   stride, values));
    default:
        copyByComponent(array, source, components, stride, values);
    }
}

bool isSymmetric(vtkDataArray* array) {
    constexpr int PAIRS[][2] = {{1, 3}, {2, 6}, {5, 7}};
    constexpr double TOLERANCE = 1e-6;
    for (vtkIdType i = 0; i < array->GetNumberOfTuples(); ++i) {
        const double* item = array->GetTuple(i);
        const double largest =
            std::abs(*std::max_element(item, item + 9, [](double a, double b) { return std::abs(a) < std::abs(b); }));
        for (const auto& [upper, lower] : PAIRS) {
            if (std::abs(item[upper] - item[lower]) > TOLERANCE * largest) {
                return false;
            }
        }
    }
    return true;
}

} // namespace orv::imp::cae
