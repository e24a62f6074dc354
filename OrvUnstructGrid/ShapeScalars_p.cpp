#include "OrvUnstructGrid/ShapeScalars_p.h"

#include "OrvCore/Defines.h"

namespace orv::ug {
namespace {

/// The average of the defined values that are added.
struct Average {
    double sum = 0.0;
    std::size_t count = 0;

    void add(double value) {
        if (value != UNDEFINED_DOUBLE) {
            sum += value;
            ++count;
        }
    }

    double value() const {
        return count > 0 ? sum / static_cast<double>(count) : UNDEFINED_DOUBLE;
    }
};

std::vector<double> averageAtNodes(std::span<const double> values, const DataPart& part) {
    const std::span<const std::uint32_t> nodes = part.elements()->connectivity();
    std::vector<Average> averages(part.nodes()->nodeCount());
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        averages[nodes[i]].add(values[i]);
    }
    std::vector<double> atNodes;
    atNodes.reserve(averages.size());
    for (const Average& average : averages) {
        atNodes.push_back(average.value());
    }
    return atNodes;
}

std::vector<double> pick(std::span<const double> values, std::span<const std::uint32_t> indexes) {
    std::vector<double> picked;
    picked.reserve(indexes.size());
    for (const std::uint32_t index : indexes) {
        picked.push_back(values[index]);
    }
    return picked;
}

std::vector<double> averageOverSurfaces(std::span<const double> values, const DataPart& part,
                                        std::span<const std::uint32_t> ofElements) {
    std::vector<double> averages;
    forFirstSurfaces(part, ofElements, [&](std::size_t i, std::size_t first) {
        const std::size_t count = elementTypeInfo(part.elements()->types()[ofElements[i]]).surfaceCount;
        averages.push_back(averageOfDefined(values.subspan(first, count)));
    });
    return averages;
}

double interpolate(double above, double below, double weightBelow) {
    if (weightBelow == 0.0) {
        return above;
    }
    return above == UNDEFINED_DOUBLE || below == UNDEFINED_DOUBLE ? UNDEFINED_DOUBLE
                                                                  : above + (below - above) * weightBelow;
}

} // namespace

double averageOfDefined(std::span<const double> values) {
    Average average;
    for (const double value : values) {
        average.add(value);
    }
    return average.value();
}

ShapeScalars scalarsOfFaces(const PartScalars& scalars, const DataPart& part, const PartSurface& surface) {
    if (scalars.mapping != PER_ELEMENT_SURFACE) {
        return scalarsOfLines(scalars, part, surface.faceElements);
    }
    ShapeScalars result;
    forFirstSurfaces(part, surface.faceElements, [&](std::size_t face, std::size_t first) {
        result.ofPieces.push_back(scalars.values[first + surface.faceSurfaces[face]]);
    });
    return result;
}

ShapeScalars scalarsOfLines(const PartScalars& scalars, const DataPart& part, std::span<const std::uint32_t> elements) {
    switch (scalars.mapping) {
    case PER_ELEMENT_NODE:
        return {averageAtNodes(scalars.values, part), {}};
    case PER_ELEMENT:
        return {{}, pick(scalars.values, elements)};
    default:
        return {};
    }
}

ShapeScalars scalarsOfSection(const PartScalars& scalars, const DataPart& part, const PlaneSection& section,
                              std::span<const std::uint32_t> elements) {
    if (scalars.mapping == PER_ELEMENT) {
        return {{}, pick(scalars.values, elements)};
    }
    if (scalars.mapping == PER_ELEMENT_SURFACE) {
        return {{}, averageOverSurfaces(scalars.values, part, elements)};
    }
    ShapeScalars result;
    if (scalars.mapping == UNKNOWN_MAPPING) {
        return result;
    }
    const std::span<const std::uint32_t> nodes = part.elements()->connectivity();
    const bool isPerNode = scalars.mapping == PER_NODE;
    result.ofPoints.reserve(section.points.size());
    for (const SectionPoint& point : section.points) {
        const std::size_t above = isPerNode ? nodes[point.abovePlace] : point.abovePlace;
        const std::size_t below = isPerNode ? nodes[point.belowPlace] : point.belowPlace;
        result.ofPoints.push_back(interpolate(scalars.values[above], scalars.values[below], point.weight));
    }
    return result;
}

} // namespace orv::ug
