#pragma once

#include "LibCore/rvfExport.h"
#include "OrvUnstructGrid/ResultType.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace orv::imp::cae {

/// Which components of an array's item are those of ours, in our order: X, Y, Z or XX, YY, ZZ, XY, YZ, ZX.
using CaeOrder = std::array<std::uint8_t, 6>;

constexpr CaeOrder SAME_ORDER = {0, 1, 2, 3, 4, 5};
constexpr CaeOrder FULL_TENSOR_ORDER = {0, 4, 8, 1, 5, 2}; ///< Of nine components, row by row.

/// What an array of so many components for each item is: 1 a scalar, 3 a vector, 6 and 9 a symmetric tensor; a
/// displacement when it has 3 and is called like one. NO_RESULT_TYPE when nothing fits.
ORV_API ug::ResultType resultTypeOf(int componentCount, const std::string& name);

/// True for the names that programs give to displacements, in any case: disp, displ, displacement(s), depl, U and the
/// like. A path before the name and a trailing underscore do not count.
ORV_API bool isDisplacementName(const std::string& name);

/// An array that a file has in some of its steps.
struct CaeArray {
    std::string name;
    ug::ResultMapping mapping = ug::PER_NODE; ///< PER_NODE for points, PER_ELEMENT for cells.
    int componentCount = 1;
    std::vector<std::string> componentNames = {}; ///< When they are scalars of the file that were put together.
    std::vector<std::size_t> steps = {};          ///< That have it, ascending; all when empty.
    CaeOrder symmetricOrder = SAME_ORDER;         ///< Of an item of six components.

    /// What it is when the format tells. It is not put together with others then, and its name says nothing.
    ug::ResultType type = ug::NO_RESULT_TYPE;
};

/// One number of a result's item: a component of an array, by the array's index.
struct CaeComponent {
    std::size_t array;
    std::uint8_t index;

    bool operator==(const CaeComponent&) const = default;
};

/// A result that arrays make.
struct CaeField {
    std::string name;
    ug::ResultMapping mapping;
    ug::ResultType type;
    std::vector<CaeComponent> components; ///< In the order of our items.
};

/// Makes results of arrays: each of 1, 3, 6 and 9 components is one. Scalars whose names differ only in an ending are
/// put together, unless not all of them are there: six with xx, yy, zz, xy, yz and zx or xz, or 11, 22 and so on, make
/// a tensor, three with x, y and z a vector. The ending is written all in small or all in capital letters; what is left
/// of the name, without "_", "-", ".", ":" and blanks at its end, is the result's, and may not be nothing.
/// @param warnings told of each array that makes nothing
ORV_API std::vector<CaeField> makeCaeFields(const std::vector<CaeArray>& arrays, std::vector<std::string>* warnings);

} // namespace orv::imp::cae
