#pragma once

#include "OrvUnstructGrid/ResultType.h"

#include <array>
#include <cstdint>
#include <span>
#include <string>

class vtkDataArray;

namespace orv::imp::cae {

/// Which components of an array's item are those of ours, in our order: X, Y, Z or XX, YY, ZZ, XY, YZ, ZX.
using VtkOrder = std::array<std::uint8_t, 6>;

constexpr VtkOrder VTK_SAME_ORDER = {0, 1, 2, 3, 4, 5};        ///< VTK's own symmetric tensors are in our order.
constexpr VtkOrder VTK_FULL_TENSOR_ORDER = {0, 4, 8, 1, 5, 2}; ///< Of nine components, row by row.

/// What an array of so many components for each item is: 1 a scalar, 3 a vector, 6 and 9 a symmetric tensor; a
/// displacement when it has 3 and is called like one. NO_RESULT_TYPE when nothing fits.
ug::ResultType vtkResultType(int componentCount, const std::string& name);

/// True for the names that programs give to displacements, in any case: disp, displ, displacement(s), depl, U and the
/// like. A path before the name and a trailing underscore do not count.
bool isDisplacementName(const std::string& name);

/// Copies components of items: item i, which begins at values[i * stride], gets these components of item source[i] of
/// the array, or of item i when there is no source. NaN becomes UNDEFINED_DOUBLE. Every index must be below the array's
/// item count, and every component below its component count.
void copyVtkItems(vtkDataArray* array, std::span<const std::int64_t> source, std::span<const std::uint8_t> components,
                  std::size_t stride, std::span<double> values);

/// Whether a tensor of nine components is symmetric in all its items, to a part in 10^6 of each item's largest
/// component. NaNs are symmetric.
bool isSymmetric(vtkDataArray* array);

} // namespace orv::imp::cae
