#pragma once

#include "OrvUnstructGrid/ElementType.h"

#include <cstddef>
#include <cstdint>

namespace orv::imp::cae {

/// How elements of one of the format's types become ours.
struct MshElementType {
    std::int64_t number;       ///< The type's number in the file.
    std::uint8_t nodeCount;    ///< In the file.
    bool isKnown;              ///< False for a type that is passed over.
    ug::ElementType type;      ///< Ours; it may have fewer nodes than the file's, which come last there.
    const std::uint8_t* order; ///< For each of our local nodes the file's.
};

/// The most nodes that an element has.
inline constexpr std::size_t MSH_MOST_NODES = 125;

/// Null for a number whose count of nodes is not known either.
const MshElementType* findMshElementType(std::int64_t number);

/// For each of our local nodes the file's. A type of the file with extra nodes inside faces and volumes has the same
/// order in front of them.
const std::uint8_t* mshNodeOrder(ug::ElementType type);

} // namespace orv::imp::cae
