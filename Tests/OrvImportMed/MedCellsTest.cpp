#include "OrvImportMed/MedCells.h"

#include "Tests/OrvImportMed/MedSamples.h"
#include "Tests/OrvImportMed/MedShapes.h"

#include <gtest/gtest.h>

#include <map>
#include <set>

using namespace orv;
using orvtest::expectNodesInTheMiddleOfEdges;
using orvtest::medFile;
using orvtest::openMed;
using orvtest::volume;

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
        expectNodesInTheMiddleOfEdges(*part.nodes(), type, nodes);
    }
}

// Nodes of the file in our order: the first one is in our first place.
TEST(MedCells, VolumesThatMedsOrderWouldTurnInsideOutKeepTheirOwn) {
    const auto source = openMed(medFile("cells.med"));
    const ug::DataPart& part = *source->state(0)->geometry(0)->part(0);
    std::size_t volumeCount = 0;
    for (std::size_t i = 0; i < part.elements()->elementCount(); ++i) {
        const imp::cae::MedCell& cell = imp::cae::medCells()[i];
        SCOPED_TRACE(cell.name);
        const std::span<const std::uint32_t> nodes = part.elements()->nodeIndexes(i);
        std::vector<int> ours(nodes.size());
        std::vector<int> asMed(nodes.size());
        for (std::size_t n = 0; n < nodes.size(); ++n) {
            ours[n] = int(nodes[n]) + 1;
            asMed[cell.order[n]] = int(nodes[n]) + 1;
        }
        const double* coordinates = part.nodes()->coordinates().data();
        EXPECT_EQ(imp::cae::medNodeOrder(cell, coordinates, asMed.data()), cell.order);
        const std::uint8_t* order = imp::cae::medNodeOrder(cell, coordinates, ours.data());
        for (std::size_t n = 0; n < nodes.size(); ++n) {
            EXPECT_EQ(order[n], n);
        }
        if (ug::elementTypeInfo(cell.elementType).dimension == 3) {
            ++volumeCount;
            const std::vector<double> flat(3 * part.nodes()->nodeCount(), 1.0);
            EXPECT_EQ(imp::cae::medNodeOrder(cell, flat.data(), ours.data()), cell.order);
        }
    }
    EXPECT_EQ(volumeCount, 10u);
}
