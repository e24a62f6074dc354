#include "OrvUnstructGrid/PathSamples_p.h"

#include "OrvUnstructGrid/DataState.h"
#include "OrvUnstructGrid/LoadedResults_p.h"
#include "OrvUnstructGrid/ShapeScalars_p.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <utility>

namespace orv::ug {
namespace {

/// By how much values that are the same may differ, as neighbours compute what lies between them, by the largest value.
constexpr double rounding = 1e-13;

/// The values of a scalar on those elements of a part that a path goes through.
class PartValues {
public:
    PartValues(const DataPart& part, const PartScalars& scalars) : m_part(part), m_scalars(scalars) {}

    void addElement(std::uint32_t element) {
        m_elements.push_back(element);
    }

    /// Call it when all elements are there.
    void prepare() {
        std::sort(m_elements.begin(), m_elements.end());
        m_firstSurfaces.reserve(m_elements.size());
        forFirstSurfaces(m_part, m_elements,
                         [this](std::size_t, std::size_t first) { m_firstSurfaces.push_back(first); });
    }

    double at(const PathSegment& segment, const NodeMean& mean) const {
        if (m_scalars.values.empty()) {
            return UNDEFINED_DOUBLE;
        }
        switch (m_scalars.mapping) {
        case PER_NODE:
            return average(mean, [this](std::uint32_t place) { return m_part.elements()->connectivity()[place]; });
        case PER_ELEMENT:
            return m_scalars.values[segment.element];
        case PER_ELEMENT_NODE:
            return average(mean, [](std::uint32_t place) { return place; });
        case PER_ELEMENT_SURFACE:
            return ofSurface(segment);
        default:
            return UNDEFINED_DOUBLE;
        }
    }

private:
    template <class ItemOf>
    double average(const NodeMean& mean, ItemOf itemOf) const {
        double sum = 0.0;
        double origin = UNDEFINED_DOUBLE;
        for (std::size_t i = 0; i < NodeMean::MAX_TERMS && mean.weights[i] != 0.0; ++i) {
            const double value = m_scalars.values[itemOf(mean.places[i])];
            if (value == UNDEFINED_DOUBLE) {
                return UNDEFINED_DOUBLE;
            }
            if (i == 0) {
                origin = value; // From which the others are counted, so that a constant stays what it is.
            } else {
                sum += mean.weights[i] * (value - origin);
            }
        }
        return origin + sum;
    }

    double ofSurface(const PathSegment& segment) const {
        const auto found = std::lower_bound(m_elements.begin(), m_elements.end(), segment.element);
        const std::size_t first = m_firstSurfaces[static_cast<std::size_t>(found - m_elements.begin())];
        if (segment.surface != PathSegment::ALL_SURFACES) {
            return m_scalars.values[first + segment.surface];
        }
        const ElementType type = m_part.elements()->types()[segment.element];
        return averageOfDefined(m_scalars.values.subspan(first, elementTypeInfo(type).surfaceCount));
    }

    const DataPart& m_part;
    PartScalars m_scalars;
    std::vector<std::uint32_t> m_elements;    ///< Ascending.
    std::vector<std::size_t> m_firstSurfaces; ///< Of each: its first item per surface.
};

using PartKey = std::pair<std::size_t, std::size_t>;

std::map<PartKey, PartValues> collectParts(std::span<const PathSegment> segments, const DataState& state,
                                           const ResultInfo& info) {
    std::map<PartKey, PartValues> parts;
    for (const PathSegment& segment : segments) {
        if (segment.geometryIndex == UNDEFINED_SIZE_T) {
            continue;
        }
        const PartKey key(segment.geometryIndex, segment.partIndex);
        auto found = parts.find(key);
        if (found == parts.end()) {
            const DataPart& part = *state.geometry(key.first)->part(key.second);
            const PartScalars scalars = {info.resultMapping(), loadedValues(state, info, key.first, key.second)};
            found = parts.emplace(key, PartValues(part, scalars)).first;
        }
        found->second.addElement(segment.element);
    }
    for (auto& [key, values] : parts) {
        values.prepare();
    }
    return parts;
}

/// The values of a segment.
struct EndValues {
    double atBegin = UNDEFINED_DOUBLE;
    double atEnd = UNDEFINED_DOUBLE;
};

std::vector<EndValues> valuesOf(std::span<const PathSegment> segments, const std::map<PartKey, PartValues>& parts) {
    std::vector<EndValues> values;
    values.reserve(segments.size());
    for (const PathSegment& segment : segments) {
        const auto part = parts.find({segment.geometryIndex, segment.partIndex});
        if (part == parts.end()) {
            values.emplace_back();
        } else {
            values.push_back({part->second.at(segment, segment.atBegin), part->second.at(segment, segment.atEnd)});
        }
    }
    return values;
}

/// The largest that is defined and finite.
double largestOf(std::span<const EndValues> values) {
    double largest = 0.0;
    for (const EndValues& ends : values) {
        for (const double value : {ends.atBegin, ends.atEnd}) {
            if (value != UNDEFINED_DOUBLE && std::isfinite(value)) {
                largest = std::max(largest, std::abs(value));
            }
        }
    }
    return largest;
}

bool isUndefined(const EndValues& values) {
    return values.atBegin == UNDEFINED_DOUBLE && values.atEnd == UNDEFINED_DOUBLE;
}

} // namespace

void NodeMean::add(std::uint32_t place, double weight) {
    if (weight != 0.0) {
        const auto end = static_cast<std::size_t>(std::find(weights.begin(), weights.end(), 0.0) - weights.begin());
        places[end] = place;
        weights[end] = weight;
    }
}

void reversePath(std::vector<PathSegment>* segments) {
    std::reverse(segments->begin(), segments->end());
    for (PathSegment& segment : *segments) {
        std::swap(segment.begin, segment.end);
        std::swap(segment.atBegin, segment.atEnd);
    }
}

std::vector<Vec3d> pathPoints(std::span<const PathSegment> segments) {
    std::vector<Vec3d> points;
    points.reserve(segments.size() + 1);
    for (const PathSegment& segment : segments) {
        if (points.empty()) {
            points.push_back(segment.begin);
        }
        points.push_back(segment.end);
    }
    return points;
}

bool samplePath(std::span<const PathSegment> segments, const DataState& state, const ResultInfo& info,
                std::vector<double>* x, std::vector<double>* y) {
    x->clear();
    y->clear();
    const std::vector<EndValues> values = valuesOf(segments, collectParts(segments, state, info));
    if (std::all_of(values.begin(), values.end(), isUndefined)) {
        return false;
    }
    const double tolerance = rounding * largestOf(values);
    double length = 0.0;
    for (std::size_t i = 0; i < segments.size(); ++i) {
        const double atBegin = values[i].atBegin;
        const bool goesOn = i > 0 && (y->back() == atBegin || std::abs(y->back() - atBegin) <= tolerance);
        if (!goesOn) {
            x->push_back(length);
            y->push_back(atBegin);
        }
        length += segments[i].length();
        x->push_back(length);
        y->push_back(values[i].atEnd);
    }
    return true;
}

} // namespace orv::ug
