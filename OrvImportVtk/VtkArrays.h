#pragma once

#include <cstdint>
#include <span>

class vtkDataArray;

namespace orv::imp::cae {

/// Copies components of items: item i, which begins at values[i * stride], gets these components of item source[i] of
/// the array, or of item i when there is no source. NaN becomes UNDEFINED_DOUBLE. Every index must be below the array's
/// item count, and every component below its component count.
void copyVtkItems(vtkDataArray* array, std::span<const std::int64_t> source, std::span<const std::uint8_t> components,
                  std::size_t stride, std::span<double> values);

/// Whether a tensor of nine components is symmetric in all its items, to a part in 10^6 of each item's largest
/// component. NaNs are symmetric.
bool isSymmetric(vtkDataArray* array);

} // namespace orv::imp::cae
