#pragma once

#include <cstddef>

namespace orv::ug {

/// What one item of a result is.
enum ResultType {
    NO_RESULT_TYPE = 0,  ///< The type of an invalid ResultInfo.
    SCALAR = 1,          ///< 1 double.
    VECTOR = 2,          ///< 3 doubles: X, Y, Z.
    DISPLACEMENT = 3,    ///< 3 doubles: X, Y, Z, in the length unit of the coordinates.
    SYMMETRIC_TENSOR = 4 ///< 6 doubles: XX, YY, ZZ, XY, YZ, ZX. Shears are tensor shears, not engineering ones.
};

/// Where the items of a result sit within a part.
enum ResultMapping {
    PER_NODE = 1,            ///< One item for each node.
    PER_ELEMENT = 2,         ///< One item for each element.
    PER_ELEMENT_NODE = 3,    ///< One item for each node of each element, element after element.
    PER_ELEMENT_SURFACE = 4, ///< One item for each surface of each element, element after element.
    UNKNOWN_MAPPING = 99     ///< The mapping of an invalid ResultInfo.
};

/// The doubles in one item: 1, 3, 3 or 6; 0 for any other value.
constexpr std::size_t doublesPerItem(ResultType type) {
    switch (type) {
    case SCALAR:
        return 1;
    case VECTOR:
    case DISPLACEMENT:
        return 3;
    case SYMMETRIC_TENSOR:
        return 6;
    case NO_RESULT_TYPE:
        break;
    }
    return 0;
}

/// True for the four types that a result can have.
constexpr bool isResultType(ResultType type) {
    return doublesPerItem(type) > 0;
}

} // namespace orv::ug
