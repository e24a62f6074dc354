#pragma once

#include "OrvUnstructGrid/ElementType.h"

#include <cstdint>

namespace orv::imp::cae {

/// How elements of one of the format's types become ours.
struct FrdElementType {
    std::int64_t number; ///< The type's number in the file.
    ug::ElementType type;
    std::uint8_t nodeCount;
    const std::uint8_t* order; ///< For each of our local nodes the file's.
};

/// Null for a type that the format does not know.
const FrdElementType* findFrdElementType(std::int64_t number);

} // namespace orv::imp::cae
