#pragma once

#include "OrvImportVtk/VtkArrays.h"
#include "OrvUnstructGrid/ResultType.h"

#include <cstddef>
#include <string>
#include <vector>

namespace orv::imp::cae {

/// An array that a file has in some of its steps.
struct VtkArray {
    std::string name;
    ug::ResultMapping mapping = ug::PER_NODE; ///< PER_NODE for points, PER_ELEMENT for cells.
    int componentCount = 1;
    std::vector<std::string> componentNames = {}; ///< When they are scalars of the file that VTK put together.
    std::vector<std::size_t> steps = {};          ///< That have it, ascending; all when empty.
    VtkOrder symmetricOrder = VTK_SAME_ORDER;     ///< Of an item of six components.

    /// What it is when the format tells. It is not put together with others then, and its name says nothing.
    ug::ResultType type = ug::NO_RESULT_TYPE;
};

/// One number of a result's item: a component of an array, by the array's index.
struct VtkComponent {
    std::size_t array;
    std::uint8_t index;

    bool operator==(const VtkComponent&) const = default;
};

/// A result that arrays make.
struct VtkField {
    std::string name;
    ug::ResultMapping mapping;
    ug::ResultType type;
    std::vector<VtkComponent> components; ///< In the order of our items.
};

/// Makes results of arrays: each of 1, 3, 6 and 9 components is one. Scalars whose names differ only in an ending are
/// put together, unless not all of them are there: six with xx, yy, zz, xy, yz and zx or xz, or 11, 22 and so on, make
/// a tensor, three with x, y and z a vector. The ending is written all in small or all in capital letters; what is left
/// of the name, without "_", "-", ".", ":" and blanks at its end, is the result's, and may not be nothing.
/// @param warnings told of each array that makes nothing
std::vector<VtkField> makeVtkFields(const std::vector<VtkArray>& arrays, std::vector<std::string>* warnings);

} // namespace orv::imp::cae
