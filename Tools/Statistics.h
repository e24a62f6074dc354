#pragma once

#include <cstddef>
#include <optional>
#include <span>

namespace orvapp {

/// A value and the item that has it.
struct Extreme {
    double value;
    std::size_t item;
};

/// What there is to say about one component of a result on one part.
struct Statistics {
    std::size_t count = 0;         ///< All items, with a value or without.
    std::size_t undefined = 0;     ///< Those without a value: UNDEFINED_DOUBLE or not a number.
    std::optional<Extreme> min;    ///< The first item with the smallest value; nothing when no item has a value.
    std::optional<Extreme> max;    ///< Likewise the largest.
    std::optional<double> average; ///< Over the items that have a value; nothing when none has.
};

/// @param values item after item, `dimension` doubles each
/// @param component below `dimension`
Statistics componentStatistics(std::span<const double> values, std::size_t dimension, std::size_t component);

} // namespace orvapp
