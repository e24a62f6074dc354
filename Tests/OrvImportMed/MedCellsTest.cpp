#include "OrvImportMed/MedCells.h"

#include "Tests/OrvImportMed/MedSamples.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <set>

using namespace orv;
using orvtest::medFile;
using orvtest::openMed;

namespace {

using Point = std::array<double, 3>;

Point pointOf(const ug::DataNodes& nodes, std::uint32_t index) {
    const double* xyz = nodes.coordinates().data() + 3 * index;
    return {xyz[0], xyz[1], xyz[2]};
}

Point difference(const Point& a, const Point& b) {
    return {a[0] - b[0], a[1] - b[1], a[2] - b[2]};
}

double tripleProduct(const Point& a, const Point& b, const Point& c) {
    return a[0] * (b[1] * c[2] - b[2] * c[1]) + a[1] * (b[2] * c[0] - b[0] * c[2]) + a[2] * (b[0] * c[1] - b[1] * c[0]);
}

// By its surfaces, whose normals point outward: a third of the cone over each triangle, from the first corner.
double volume(const ug::DataNodes& nodes, ug::ElementType type, std::span<const std::uint32_t> element) {
    const Point apex = pointOf(nodes, element[0]);
    double sixfold = 0.0;
    for (std::size_t s = 0; s < ug::elementTypeInfo(type).surfaceCount; ++s) {
        const std::span<const std::uint8_t> surface = ug::elementSurface(type, s);
        const std::size_t corners = ug::elementTypeInfo(type).isQuadratic ? surface.size() / 2 : surface.size();
        for (std::size_t i = 2; i < corners; ++i) {
            sixfold += tripleProduct(difference(pointOf(nodes, element[surface[0]]), apex),
                                     difference(pointOf(nodes, element[surface[i - 1]]), apex),
                                     difference(pointOf(nodes, element[surface[i]]), apex));
        }
    }
    return sixfold / 6.0;
}

} // namespace

TEST(MedCells, OrdersNameEachNodeOnceAndAreWithinTheCell) {
    std::set<ug::ElementType> made;
    for (const imp::cae::MedCell& cell : imp::cae::medCells()) {
        SCOPED_TRACE(cell.name);
        const std::size_t count = ug::elementTypeInfo(cell.elementType).nodeCount;
        const std::set<std::uint8_t> nodes(cell.order, cell.order + count);
        EXPECT_EQ(nodes.size(), count);
        EXPECT_EQ(*nodes.rbegin(), count - 1); // Centre nodes are the last ones.
        EXPECT_GE(cell.nodeCount(), count);
        made.insert(cell.elementType);
    }
    EXPECT_EQ(made.size(), std::size_t(ug::ELEMENT_TYPE_COUNT));
}

// MED's edges are ours by its own corners, so the node on the edge of two turned corners is known.
TEST(MedCells, NodesOnEdgesFollowTheirCorners) {
    for (const imp::cae::MedCell& cell : imp::cae::medCells()) {
        SCOPED_TRACE(cell.name);
        const ug::ElementTypeInfo& info = ug::elementTypeInfo(cell.elementType);
        for (std::size_t e = 0; info.isQuadratic && e < info.edgeCount; ++e) {
            const std::span<const std::uint8_t> edge = ug::elementEdge(cell.elementType, e);
            const std::set<int> corners = {cell.order[edge[0]], cell.order[edge[1]]};
            for (std::size_t other = 0; other < info.edgeCount; ++other) {
                const std::span<const std::uint8_t> medEdge = ug::elementEdge(cell.elementType, other);
                if (corners == std::set<int>{medEdge[0], medEdge[1]}) {
                    EXPECT_EQ(cell.order[edge[2]], medEdge[2]);
                }
            }
        }
    }
}

// The file has one cell of each type, of edge 1: a tetrahedron has 1/6, a pyramid 1/3, a wedge 1/2, a hexahedron 1.
TEST(MedCells, ElementsHavePositiveVolumesAndNodesInTheMiddleOfEdges) {
    const std::map<ug::ElementType, double> volumes = {{ug::TETRAHEDRON, 1.0 / 6.0},
                                                       {ug::TETRAHEDRON_10, 1.0 / 6.0},
                                                       {ug::PYRAMID, 1.0 / 3.0},
                                                       {ug::PYRAMID_13, 1.0 / 3.0},
                                                       {ug::WEDGE, 0.5},
                                                       {ug::WEDGE_15, 0.5},
                                                       {ug::HEXAHEDRON, 1.0},
                                                       {ug::HEXAHEDRON_20, 1.0}};
    const auto source = openMed(medFile("cells.med"));
    const ug::DataPart& part = *source->state(0)->geometry(0)->part(0);
    EXPECT_TRUE(part.isConsistent());
    ASSERT_EQ(part.elements()->elementCount(), imp::cae::medCells().size());
    for (std::size_t i = 0; i < part.elements()->elementCount(); ++i) {
        const ug::ElementType type = part.elements()->elementType(i);
        SCOPED_TRACE(imp::cae::medCells()[i].name);
        EXPECT_EQ(type, imp::cae::medCells()[i].elementType);
        const std::span<const std::uint32_t> nodes = part.elements()->nodeIndexes(i);
        if (const auto found = volumes.find(type); found != volumes.end()) {
            EXPECT_NEAR(volume(*part.nodes(), type, nodes), found->second, 1e-12);
        }
        for (std::size_t e = 0; ug::elementTypeInfo(type).isQuadratic && e < ug::elementTypeInfo(type).edgeCount; ++e) {
            const std::span<const std::uint8_t> edge = ug::elementEdge(type, e);
            for (int k = 0; k < 3; ++k) {
                const auto axis = [&](std::uint8_t n) { return pointOf(*part.nodes(), nodes[n])[std::size_t(k)]; };
                EXPECT_DOUBLE_EQ(axis(edge[2]), (axis(edge[0]) + axis(edge[1])) / 2.0) << "edge " << e;
            }
        }
    }
}
