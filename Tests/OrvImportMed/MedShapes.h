#pragma once

#include "OrvUnstructGrid/DataNodes.h"
#include "OrvUnstructGrid/ElementType.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <span>

namespace orvtest {

using Point = std::array<double, 3>;

inline Point pointOf(const orv::ug::DataNodes& nodes, std::uint32_t index) {
    const double* xyz = nodes.coordinates().data() + 3 * std::size_t(index);
    return {xyz[0], xyz[1], xyz[2]};
}

inline Point difference(const Point& a, const Point& b) {
    return {a[0] - b[0], a[1] - b[1], a[2] - b[2]};
}

inline double tripleProduct(const Point& a, const Point& b, const Point& c) {
    return a[0] * (b[1] * c[2] - b[2] * c[1]) + a[1] * (b[2] * c[0] - b[0] * c[2]) + a[2] * (b[0] * c[1] - b[1] * c[0]);
}

/// By its surfaces, whose normals point outward: a third of the cone over each triangle, from the first corner. 0 for
/// what is no volume.
inline double volume(const orv::ug::DataNodes& nodes, orv::ug::ElementType type,
                     std::span<const std::uint32_t> element) {
    const orv::ug::ElementTypeInfo& info = orv::ug::elementTypeInfo(type);
    const Point apex = pointOf(nodes, element[0]);
    double sixfold = 0.0;
    for (std::size_t s = 0; info.dimension == 3 && s < info.surfaceCount; ++s) {
        const std::span<const std::uint8_t> surface = orv::ug::elementSurface(type, s);
        const std::size_t corners = info.isQuadratic ? surface.size() / 2 : surface.size();
        for (std::size_t i = 2; i < corners; ++i) {
            sixfold += tripleProduct(difference(pointOf(nodes, element[surface[0]]), apex),
                                     difference(pointOf(nodes, element[surface[i - 1]]), apex),
                                     difference(pointOf(nodes, element[surface[i]]), apex));
        }
    }
    return sixfold / 6.0;
}

inline void expectNodesInTheMiddleOfEdges(const orv::ug::DataNodes& nodes, orv::ug::ElementType type,
                                          std::span<const std::uint32_t> element) {
    const orv::ug::ElementTypeInfo& info = orv::ug::elementTypeInfo(type);
    for (std::size_t e = 0; info.isQuadratic && e < info.edgeCount; ++e) {
        const std::span<const std::uint8_t> edge = orv::ug::elementEdge(type, e);
        for (std::size_t k = 0; k < 3; ++k) {
            const auto axis = [&](std::uint8_t node) { return pointOf(nodes, element[node])[k]; };
            EXPECT_NEAR(axis(edge[2]), (axis(edge[0]) + axis(edge[1])) / 2.0, 1e-12) << "edge " << e;
        }
    }
}

} // namespace orvtest
