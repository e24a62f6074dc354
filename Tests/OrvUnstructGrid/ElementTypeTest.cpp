#include "OrvUnstructGrid/ElementType.h"

#include "OrvCore/Vec3d.h"
#include "Tests/Support/AssertRecorder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>

using namespace orv::ug;
using orv::Vec3d;
using orvtest::AssertRecorder;
using orvtest::FailedAssert;

namespace {

using Pair = std::pair<int, int>;

struct Element {
    ElementType type;
    std::vector<Vec3d> corners;
    std::vector<Pair> midSides; ///< The corners on either side of each further node, as the header numbers them.
    double volume;
};

const std::vector<Vec3d> tetrahedron = {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}};
const std::vector<Vec3d> pyramid = {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}, {0.5, 0.5, 1}};
const std::vector<Vec3d> wedge = {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}, {1, 0, 1}, {0, 1, 1}};
const std::vector<Vec3d> hexahedron = {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0},
                                       {0, 0, 1}, {1, 0, 1}, {1, 1, 1}, {0, 1, 1}};

// In each one the base, seen from the top or the apex, runs counter-clockwise: the z axis points at the viewer.
const std::vector<Element> volumes = {
    {TETRAHEDRON, tetrahedron, {}, 1.0 / 6},
    {TETRAHEDRON_10, tetrahedron, {{0, 1}, {1, 2}, {2, 0}, {0, 3}, {1, 3}, {2, 3}}, 1.0 / 6},
    {PYRAMID, pyramid, {}, 1.0 / 3},
    {PYRAMID_13, pyramid, {{0, 1}, {1, 2}, {2, 3}, {3, 0}, {0, 4}, {1, 4}, {2, 4}, {3, 4}}, 1.0 / 3},
    {WEDGE, wedge, {}, 0.5},
    {WEDGE_15, wedge, {{0, 1}, {1, 2}, {2, 0}, {3, 4}, {4, 5}, {5, 3}, {0, 3}, {1, 4}, {2, 5}}, 0.5},
    {HEXAHEDRON, hexahedron, {}, 1.0},
    {HEXAHEDRON_20,
     hexahedron,
     {{0, 1}, {1, 2}, {2, 3}, {3, 0}, {4, 5}, {5, 6}, {6, 7}, {7, 4}, {0, 4}, {1, 5}, {2, 6}, {3, 7}},
     1.0},
};

std::vector<Vec3d> nodesOf(const Element& element) {
    std::vector<Vec3d> nodes = element.corners;
    for (const Pair& ends : element.midSides) {
        nodes.push_back((element.corners[ends.first] + element.corners[ends.second]) / 2);
    }
    return nodes;
}

/// The surface's corners only.
std::vector<Vec3d> polygonOf(const Element& element, std::size_t surface) {
    const auto local = elementSurface(element.type, surface);
    const std::size_t count = elementTypeInfo(element.type).isQuadratic ? local.size() / 2 : local.size();
    std::vector<Vec3d> polygon;
    for (std::size_t i = 0; i < count; ++i) {
        polygon.push_back(element.corners.at(local[i]));
    }
    return polygon;
}

Vec3d centreOf(const std::vector<Vec3d>& points) {
    Vec3d sum;
    for (const Vec3d& point : points) {
        sum += point;
    }
    return sum / static_cast<double>(points.size());
}

/// Half the sum of the fan's cross products: the area in the direction of the normal.
Vec3d areaOf(const std::vector<Vec3d>& polygon) {
    Vec3d area;
    for (std::size_t i = 2; i < polygon.size(); ++i) {
        area += ((polygon[i - 1] - polygon[0]) ^ (polygon[i] - polygon[0])) / 2;
    }
    return area;
}

TEST(ElementType, HasItsNumberNameAndCounts) {
    struct Row {
        ElementType type;
        int number;
        const char* name;
        int nodes, corners, surfaces, edges, dimension;
        bool isQuadratic;
    };
    const Row rows[] = {
        {POINT, 0, "point", 1, 1, 0, 0, 0, false},
        {BEAM, 1, "beam", 2, 2, 0, 1, 1, false},
        {BEAM_3, 2, "beam_3", 3, 2, 0, 1, 1, true},
        {TRIANGLE, 3, "triangle", 3, 3, 1, 3, 2, false},
        {TRIANGLE_6, 4, "triangle_6", 6, 3, 1, 3, 2, true},
        {QUADRILATERAL, 5, "quadrilateral", 4, 4, 1, 4, 2, false},
        {QUADRILATERAL_8, 6, "quadrilateral_8", 8, 4, 1, 4, 2, true},
        {TETRAHEDRON, 7, "tetrahedron", 4, 4, 4, 6, 3, false},
        {TETRAHEDRON_10, 8, "tetrahedron_10", 10, 4, 4, 6, 3, true},
        {PYRAMID, 9, "pyramid", 5, 5, 5, 8, 3, false},
        {PYRAMID_13, 10, "pyramid_13", 13, 5, 5, 8, 3, true},
        {WEDGE, 11, "wedge", 6, 6, 5, 9, 3, false},
        {WEDGE_15, 12, "wedge_15", 15, 6, 5, 9, 3, true},
        {HEXAHEDRON, 13, "hexahedron", 8, 8, 6, 12, 3, false},
        {HEXAHEDRON_20, 14, "hexahedron_20", 20, 8, 6, 12, 3, true},
    };
    EXPECT_EQ(std::size(rows), static_cast<std::size_t>(ELEMENT_TYPE_COUNT));
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const ElementTypeInfo& info = elementTypeInfo(row.type);
        EXPECT_EQ(row.type, row.number);
        EXPECT_STREQ(info.name, row.name);
        EXPECT_EQ(info.nodeCount, row.nodes);
        EXPECT_EQ(info.cornerCount, row.corners);
        EXPECT_EQ(info.surfaceCount, row.surfaces);
        EXPECT_EQ(info.edgeCount, row.edges);
        EXPECT_EQ(info.dimension, row.dimension);
        EXPECT_EQ(info.isQuadratic, row.isQuadratic);
    }
}

TEST(ElementType, SurfacesOfVolumesPointOutward) {
    for (const Element& element : volumes) {
        for (std::size_t s = 0; s < elementTypeInfo(element.type).surfaceCount; ++s) {
            const std::vector<Vec3d> polygon = polygonOf(element, s);
            const Vec3d outward = centreOf(polygon) - centreOf(element.corners);
            EXPECT_GT(areaOf(polygon) * outward, 0.0) << elementTypeInfo(element.type).name << " surface " << s;
        }
    }
}

TEST(ElementType, SurfacesOfVolumesCloseAroundTheVolume) {
    for (const Element& element : volumes) {
        SCOPED_TRACE(elementTypeInfo(element.type).name);
        Vec3d sumOfAreas;
        double flux = 0; // Of the field (x, y, z), whose divergence is 3. Constant on a plane surface's normal.
        for (std::size_t s = 0; s < elementTypeInfo(element.type).surfaceCount; ++s) {
            const std::vector<Vec3d> polygon = polygonOf(element, s);
            sumOfAreas += areaOf(polygon);
            flux += polygon[0] * areaOf(polygon);
        }
        EXPECT_NEAR(sumOfAreas.length(), 0.0, 1e-15);
        EXPECT_NEAR(flux / 3, element.volume, 1e-15);
    }
}

TEST(ElementType, EachEdgeOfAVolumeIsPassedOnceInEachDirection) {
    for (const Element& element : volumes) {
        SCOPED_TRACE(elementTypeInfo(element.type).name);
        const ElementTypeInfo& info = elementTypeInfo(element.type);
        std::map<Pair, int> passes;
        for (std::size_t s = 0; s < info.surfaceCount; ++s) {
            const auto surface = elementSurface(element.type, s);
            const std::size_t corners = info.isQuadratic ? surface.size() / 2 : surface.size();
            for (std::size_t i = 0; i < corners; ++i) {
                ++passes[{surface[i], surface[(i + 1) % corners]}];
            }
        }
        EXPECT_EQ(passes.size(), 2u * info.edgeCount);
        for (std::size_t e = 0; e < info.edgeCount; ++e) {
            const auto edge = elementEdge(element.type, e);
            EXPECT_EQ((passes[{edge[0], edge[1]}]), 1) << "edge " << e;
            EXPECT_EQ((passes[{edge[1], edge[0]}]), 1) << "edge " << e;
        }
    }
}

TEST(ElementType, MidSideNodesLieOnTheirEdges) {
    for (const Element& element : volumes) {
        const ElementTypeInfo& info = elementTypeInfo(element.type);
        if (!info.isQuadratic) {
            continue;
        }
        SCOPED_TRACE(info.name);
        const std::vector<Vec3d> nodes = nodesOf(element);
        ASSERT_EQ(nodes.size(), info.nodeCount);
        for (std::size_t e = 0; e < info.edgeCount; ++e) {
            const auto edge = elementEdge(element.type, e);
            ASSERT_EQ(edge.size(), 3u);
            EXPECT_EQ(edge[2], info.cornerCount + e);
            EXPECT_EQ(nodes[edge[2]], (nodes[edge[0]] + nodes[edge[1]]) / 2) << "edge " << e;
        }
        for (std::size_t s = 0; s < info.surfaceCount; ++s) {
            const auto surface = elementSurface(element.type, s);
            const std::size_t corners = surface.size() / 2;
            for (std::size_t i = 0; i < corners; ++i) {
                EXPECT_EQ(nodes[surface[corners + i]], (nodes[surface[i]] + nodes[surface[(i + 1) % corners]]) / 2)
                    << "surface " << s << " side " << i;
            }
        }
    }
}

TEST(ElementType, ShellsHaveOneSurfaceInNodeOrder) {
    for (ElementType type : {TRIANGLE, TRIANGLE_6, QUADRILATERAL, QUADRILATERAL_8}) {
        const auto surface = elementSurface(type, 0);
        ASSERT_EQ(surface.size(), elementTypeInfo(type).nodeCount);
        for (std::size_t i = 0; i < surface.size(); ++i) {
            EXPECT_EQ(surface[i], i) << elementTypeInfo(type).name;
        }
    }
}

TEST(ElementType, EdgesOfBeamsAndShells) {
    using Nodes = std::vector<int>;
    auto edge = [](ElementType type, std::size_t index) {
        const auto nodes = elementEdge(type, index);
        return Nodes(nodes.begin(), nodes.end());
    };
    EXPECT_EQ(edge(BEAM, 0), (Nodes{0, 1}));
    EXPECT_EQ(edge(BEAM_3, 0), (Nodes{0, 1, 2}));
    EXPECT_EQ(edge(TRIANGLE, 2), (Nodes{2, 0}));
    EXPECT_EQ(edge(TRIANGLE_6, 0), (Nodes{0, 1, 3}));
    EXPECT_EQ(edge(TRIANGLE_6, 1), (Nodes{1, 2, 4}));
    EXPECT_EQ(edge(TRIANGLE_6, 2), (Nodes{2, 0, 5}));
    EXPECT_EQ(edge(QUADRILATERAL, 3), (Nodes{3, 0}));
    EXPECT_EQ(edge(QUADRILATERAL_8, 3), (Nodes{3, 0, 7}));
}

TEST(ElementType, ThereIsNothingBeyondTheLastSurfaceAndEdge) {
    for (int t = 0; t < ELEMENT_TYPE_COUNT; ++t) {
        const ElementType type = static_cast<ElementType>(t);
        EXPECT_TRUE(elementSurface(type, elementTypeInfo(type).surfaceCount).empty());
        EXPECT_TRUE(elementEdge(type, elementTypeInfo(type).edgeCount).empty());
    }
}

TEST(ElementType, UnknownTypeIsAnAssertionAndThenAPoint) {
    const std::vector<FailedAssert> failed = {{"OrvUnstructGrid/ElementType", "type < ELEMENT_TYPE_COUNT", {}}};
    AssertRecorder recorder;
    EXPECT_STREQ(elementTypeInfo(ELEMENT_TYPE_COUNT).name, "point");
    EXPECT_EQ(recorder.take(), failed);
    EXPECT_TRUE(elementSurface(ELEMENT_TYPE_COUNT, 0).empty());
    EXPECT_EQ(recorder.take(), failed);
    EXPECT_TRUE(elementEdge(ELEMENT_TYPE_COUNT, 0).empty());
    EXPECT_EQ(recorder.take(), failed);
}

} // namespace
