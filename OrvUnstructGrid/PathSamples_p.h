#pragma once

#include "OrvCore/Defines.h"
#include "OrvCore/Vec3d.h"
#include "OrvUnstructGrid/ResultInfo.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace orv::ug {

class DataState;

/// A mean of values at some nodes of one element. Weights are 1 together; what has the weight 0 does not count.
struct NodeMean {
    /// A place in a section's triangle: two nodes for each corner.
    static constexpr std::size_t MAX_TERMS = 6;

    std::array<std::uint32_t, MAX_TERMS> places = {}; ///< Positions in the part's connectivity.
    std::array<double, MAX_TERMS> weights = {};

    /// Behind the last term that counts.
    void add(std::uint32_t place, double weight);
};

/// A straight piece of a path, in one element or in a gap.
struct PathSegment {
    /// What `surface` is in a section, and on beams, which have none.
    static constexpr std::uint8_t ALL_SURFACES = 0xff;

    Vec3d begin;
    Vec3d end;
    std::size_t geometryIndex = UNDEFINED_SIZE_T; ///< Undefined in a gap, and then all below.
    std::size_t partIndex = UNDEFINED_SIZE_T;     ///< In the geometry.
    std::uint32_t element = 0;
    std::uint8_t surface = ALL_SURFACES; ///< Which of the element's.
    NodeMean atBegin;
    NodeMean atEnd;

    double length() const {
        return (end - begin).length();
    }
};

/// The same path the other way round.
void reversePath(std::vector<PathSegment>* segments);

/// Appends the end of each segment, and before the first one its begin.
std::vector<Vec3d> pathPoints(std::span<const PathSegment> segments);

/// The values of a scalar at both ends of each segment, by the running length. Where one segment ends and the next
/// begins with the same value, but for roundings, there is one entry, otherwise two.
/// @param segments of geometries and elements that the state has
/// @return false with both lists empty when no value is defined
bool samplePath(std::span<const PathSegment> segments, const DataState& state, const ResultInfo& info,
                std::vector<double>* x, std::vector<double>* y);

} // namespace orv::ug
