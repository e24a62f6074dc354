#include "OrvUnstructGrid/PartSurface_p.h"

#include "Tests/OrvUnstructGrid/ReferenceElements.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <set>

using namespace orv::ug;
using orv::Vec3d;
using orvtest::Element;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

using Side = std::pair<std::uint32_t, std::uint32_t>;

Side sideOf(std::uint32_t a, std::uint32_t b) {
    return {std::min(a, b), std::max(a, b)};
}

class PartSurfaceTest : public testing::Test {
protected:
    PartSurface build(const std::vector<Vec3d>& nodes, const std::vector<Element>& elements) {
        orvtest::setNodes(&part, nodes);
        orvtest::setElements(&part, elements);
        return surfaceOf(part);
    }

    Vec3d corner(const PartSurface& surface, std::size_t index) const {
        return part.nodes()->node(surface.corners[index]);
    }

    /// By the divergence theorem: right for a closed surface with its normals outward, negative with them inward.
    double volume(const PartSurface& surface) const {
        double sum = 0;
        for (std::size_t c = 0; c < surface.corners.size(); c += 3) {
            sum += corner(surface, c) * (corner(surface, c + 1) ^ corner(surface, c + 2));
        }
        return sum / 6;
    }

    double area(const PartSurface& surface) const {
        double sum = 0;
        for (std::size_t c = 0; c < surface.corners.size(); c += 3) {
            const Vec3d a = corner(surface, c);
            sum += ((corner(surface, c + 1) - a) ^ (corner(surface, c + 2) - a)).length() / 2;
        }
        return sum;
    }

    /// The sides that are marked as edges in one face.
    static std::multiset<Side> markedSides(const PartSurface& surface, std::size_t face) {
        std::multiset<Side> sides;
        for (std::uint32_t t = surface.faceOffsets[face]; t < surface.faceOffsets[face + 1]; ++t) {
            for (unsigned int i = 0; i < 3; ++i) {
                if (surface.edges[t] >> i & 1) {
                    sides.insert(sideOf(surface.corners[3 * t + i], surface.corners[3 * t + (i + 1) % 3]));
                }
            }
        }
        return sides;
    }

    DataPart part{1};
};

/// The sides of an element's surface from corner to mid-side node to corner.
std::multiset<Side> sidesOf(ElementType type, std::size_t surfaceIndex) {
    const auto nodes = elementSurface(type, surfaceIndex);
    const bool isQuadratic = elementTypeInfo(type).isQuadratic;
    const std::size_t corners = isQuadratic ? nodes.size() / 2 : nodes.size();
    std::multiset<Side> sides;
    for (std::size_t c = 0; c < corners; ++c) {
        const std::uint32_t next = nodes[(c + 1) % corners];
        if (isQuadratic) {
            sides.insert(sideOf(nodes[c], nodes[corners + c]));
            sides.insert(sideOf(nodes[corners + c], next));
        } else {
            sides.insert(sideOf(nodes[c], next));
        }
    }
    return sides;
}

TEST_F(PartSurfaceTest, EverySurfaceOfAnElementAloneIsThere) {
    for (int t = TRIANGLE; t < ELEMENT_TYPE_COUNT; ++t) {
        const auto type = static_cast<ElementType>(t);
        const ElementTypeInfo& info = elementTypeInfo(type);
        SCOPED_TRACE(info.name);
        orvtest::fillWithReference(&part, type);
        const PartSurface surface = surfaceOf(part);
        ASSERT_EQ(surface.faceElements.size(), info.surfaceCount);
        ASSERT_EQ(surface.faceSurfaces.size(), info.surfaceCount);
        ASSERT_EQ(surface.faceOffsets.size(), info.surfaceCount + 1u);
        ASSERT_EQ(surface.edges.size() * 3, surface.corners.size());
        ASSERT_EQ(surface.faceOffsets.back(), surface.edges.size());
        for (std::size_t s = 0; s < info.surfaceCount; ++s) {
            EXPECT_EQ(surface.faceElements[s], 0u);
            EXPECT_EQ(surface.faceSurfaces[s], s);
            EXPECT_EQ(markedSides(surface, s), sidesOf(type, s));
        }
        EXPECT_THAT(surface.tubeEnds, IsEmpty());
        EXPECT_THAT(surface.spherePoints, IsEmpty());
    }
}

TEST_F(PartSurfaceTest, FacesOfVolumesLookOutwardAndCloseIt) {
    for (int t = TETRAHEDRON; t < ELEMENT_TYPE_COUNT; ++t) {
        const auto type = static_cast<ElementType>(t);
        SCOPED_TRACE(elementTypeInfo(type).name);
        orvtest::fillWithReference(&part, type);
        const PartSurface surface = surfaceOf(part);
        EXPECT_NEAR(volume(surface), orvtest::referenceSize(type), 1e-15);
        for (std::size_t c = 0; c < surface.corners.size(); c += 3) {
            const Vec3d a = corner(surface, c);
            const Vec3d normal = (corner(surface, c + 1) - a) ^ (corner(surface, c + 2) - a);
            EXPECT_GT(normal * (a - Vec3d(0.3, 0.3, 0.3)), 0.0);
        }
    }
}

TEST_F(PartSurfaceTest, ShellsLookAsTheirNodesRun) {
    for (ElementType type : {TRIANGLE, TRIANGLE_6, QUADRILATERAL, QUADRILATERAL_8}) {
        SCOPED_TRACE(elementTypeInfo(type).name);
        orvtest::fillWithReference(&part, type);
        const PartSurface surface = surfaceOf(part);
        EXPECT_NEAR(area(surface), orvtest::referenceSize(type), 1e-15);
        for (std::size_t c = 0; c < surface.corners.size(); c += 3) {
            const Vec3d a = corner(surface, c);
            EXPECT_GT(((corner(surface, c + 1) - a) ^ (corner(surface, c + 2) - a)).z(), 0.0);
        }
    }
}

TEST_F(PartSurfaceTest, EveryNodeOfAQuadraticFaceIsACorner) {
    for (ElementType type : {TRIANGLE_6, QUADRILATERAL_8, TETRAHEDRON_10, PYRAMID_13, WEDGE_15, HEXAHEDRON_20}) {
        SCOPED_TRACE(elementTypeInfo(type).name);
        orvtest::fillWithReference(&part, type);
        const PartSurface surface = surfaceOf(part);
        const std::set<std::uint32_t> used(surface.corners.begin(), surface.corners.end());
        EXPECT_EQ(used.size(), part.nodes()->nodeCount());
    }
}

// A triangle with its mid-side nodes pulled inward: 1/2 less three triangles of base sqrt(2) or 1.
TEST_F(PartSurfaceTest, ASurfaceGoesThroughMidSideNodes) {
    const PartSurface surface =
        build({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0.5, 0.125, 0}, {0.375, 0.375, 0}, {0.125, 0.5, 0}},
              {{TRIANGLE_6, {0, 1, 2, 3, 4, 5}}});
    // Two of 1 * 0.125 / 2, and one from (1, 0), (0, 1) to (0.375, 0.375): 0.25 / 2.
    EXPECT_NEAR(area(surface), 0.5 - 2 * 0.0625 - 0.125, 1e-15);
}

TEST_F(PartSurfaceTest, BeamsAreTubesAndPointsAreSpheres) {
    const PartSurface surface = build({{0, 0, 0}, {1, 0, 0}, {2, 0, 0}, {1.5, 0, 0}},
                                      {{POINT, {3}}, {BEAM, {1, 0}}, {BEAM_3, {1, 2, 3}}, {POINT, {0}}});
    EXPECT_THAT(surface.tubeEnds, ElementsAre(1, 0, 1, 3, 3, 2));
    EXPECT_THAT(surface.tubeElements, ElementsAre(1, 2, 2));
    EXPECT_THAT(surface.spherePoints, ElementsAre(3, 0));
    EXPECT_THAT(surface.sphereElements, ElementsAre(0, 3));
    EXPECT_THAT(surface.faceOffsets, ElementsAre(0));
}

// Two elements that have one face in common; nodes that a face of the other side needs are added.
TEST_F(PartSurfaceTest, AFaceThatTwoElementsShareIsInside) {
    struct Case {
        const char* name;
        Element first;
        Element second;
        std::size_t faceCount;
    };
    const Case cases[] = {
        {"hexahedra", {HEXAHEDRON, {0, 1, 2, 3, 4, 5, 6, 7}}, {HEXAHEDRON, {4, 5, 6, 7, 8, 9, 10, 11}}, 10},
        {"turned hexahedra", {HEXAHEDRON, {0, 1, 2, 3, 4, 5, 6, 7}}, {HEXAHEDRON, {6, 7, 4, 5, 8, 9, 10, 11}}, 10},
        {"inverted neighbour", {HEXAHEDRON, {0, 1, 2, 3, 4, 5, 6, 7}}, {HEXAHEDRON, {7, 6, 5, 4, 8, 9, 10, 11}}, 10},
        {"tetrahedra", {TETRAHEDRON, {0, 1, 2, 3}}, {TETRAHEDRON, {2, 1, 0, 4}}, 6},
        {"wedge and tetrahedron", {WEDGE, {0, 1, 2, 3, 4, 5}}, {TETRAHEDRON, {5, 3, 4, 6}}, 7},
        {"wedge and hexahedron", {WEDGE, {0, 1, 2, 3, 4, 5}}, {HEXAHEDRON, {6, 7, 8, 9, 0, 1, 4, 3}}, 9},
        {"pyramid and hexahedron", {HEXAHEDRON, {0, 1, 2, 3, 4, 5, 6, 7}}, {PYRAMID, {7, 6, 5, 4, 8}}, 9},
        {"pyramid and tetrahedron", {PYRAMID, {0, 1, 2, 3, 4}}, {TETRAHEDRON, {1, 0, 4, 5}}, 7},
        {"linear and quadratic", {TETRAHEDRON, {0, 1, 2, 3}}, {TETRAHEDRON_10, {2, 1, 0, 4, 5, 6, 7, 8, 9, 10}}, 6},
        {"only an edge", {TETRAHEDRON, {0, 1, 2, 3}}, {TETRAHEDRON, {0, 1, 4, 5}}, 8},
        {"three corners of four", {HEXAHEDRON, {0, 1, 2, 3, 4, 5, 6, 7}}, {TETRAHEDRON, {4, 5, 6, 8}}, 10},
    };
    const std::vector<Vec3d> nodes(12);
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(build(nodes, {c.first, c.second}).faceElements.size(), c.faceCount);
        EXPECT_EQ(build(nodes, {c.second, c.first}).faceElements.size(), c.faceCount);
    }
}

TEST_F(PartSurfaceTest, AFaceThatThreeElementsShareIsInside) {
    const PartSurface surface = build(
        std::vector<Vec3d>(6), {{TETRAHEDRON, {0, 1, 2, 3}}, {TETRAHEDRON, {0, 1, 2, 4}}, {TETRAHEDRON, {0, 1, 2, 5}}});
    EXPECT_THAT(surface.faceElements, ElementsAre(0, 0, 0, 1, 1, 1, 2, 2, 2));
    EXPECT_THAT(surface.faceSurfaces, ElementsAre(1, 2, 3, 1, 2, 3, 1, 2, 3));
}

TEST_F(PartSurfaceTest, ShellsStayOnFacesAndOnEachOther) {
    const std::vector<Vec3d> nodes(5);
    // The outer face 0 stays as well.
    EXPECT_THAT(build(nodes, {{TRIANGLE, {0, 1, 2}}, {TETRAHEDRON, {0, 1, 2, 3}}}).faceElements,
                ElementsAre(0, 1, 1, 1, 1));
    // Between two volumes and twice.
    EXPECT_THAT(
        build(nodes,
              {{TETRAHEDRON, {0, 1, 2, 3}}, {TRIANGLE, {0, 1, 2}}, {TRIANGLE, {0, 1, 2}}, {TETRAHEDRON, {0, 1, 2, 4}}})
            .faceElements,
        ElementsAre(0, 0, 0, 1, 2, 3, 3, 3));
}

TEST_F(PartSurfaceTest, PartsDoNotShareFaces) {
    DataPart other(2);
    orvtest::fillWithReference(&part, HEXAHEDRON);
    orvtest::fillWithReference(&other, HEXAHEDRON);
    EXPECT_EQ(surfaceOf(part).faceElements.size(), 6u);
    EXPECT_EQ(surfaceOf(other).faceElements.size(), 6u);
}

TEST_F(PartSurfaceTest, AnInvertedElementIsShownFromTheOtherSide) {
    std::vector<Vec3d> nodes = orvtest::referenceCorners(HEXAHEDRON);
    const PartSurface surface = build(nodes, {{HEXAHEDRON, {4, 5, 6, 7, 0, 1, 2, 3}}});
    EXPECT_EQ(surface.faceElements.size(), 6u);
    EXPECT_DOUBLE_EQ(volume(surface), -1.0);
}

// The cube with its edges 2-3 and 6-7 collapsed: a wedge. Its side 2 3 7 6 has gone, bottom and top are triangles,
// whose third side is an edge although it was a diagonal.
TEST_F(PartSurfaceTest, ACollapsedHexahedronIsAWedge) {
    std::vector<Vec3d> nodes = orvtest::referenceCorners(HEXAHEDRON);
    const PartSurface surface = build(nodes, {{HEXAHEDRON, {0, 1, 2, 2, 4, 5, 6, 6}}});
    EXPECT_THAT(surface.faceSurfaces, ElementsAre(0, 1, 2, 4, 5));
    EXPECT_DOUBLE_EQ(volume(surface), 0.5);
    EXPECT_EQ(markedSides(surface, 0), (std::multiset<Side>{{0, 1}, {0, 2}, {1, 2}}));
    EXPECT_EQ(markedSides(surface, 4), (std::multiset<Side>{{4, 5}, {4, 6}, {5, 6}}));
    EXPECT_EQ(markedSides(surface, 1), (std::multiset<Side>{{0, 1}, {0, 4}, {1, 5}, {4, 5}}));
}

TEST_F(PartSurfaceTest, ACollapsedFaceMeetsATriangle) {
    const std::vector<Vec3d> nodes(9);
    for (const std::vector<std::uint32_t>& hexahedron : std::vector<std::vector<std::uint32_t>>{
             {0, 1, 2, 2, 4, 5, 6, 6}, {0, 0, 1, 2, 4, 4, 5, 6}, {1, 2, 2, 0, 5, 6, 6, 4}}) {
        EXPECT_EQ(build(nodes, {{HEXAHEDRON, hexahedron}, {TETRAHEDRON, {4, 5, 6, 8}}}).faceElements.size(), 7u);
    }
}

// The same wedge with mid-side nodes: those of the collapsed edges are the corners themselves.
TEST_F(PartSurfaceTest, ACollapsedQuadraticHexahedronIsAWedge) {
    std::vector<Vec3d> nodes = orvtest::referenceNodes(HEXAHEDRON_20);
    nodes[11] = (nodes[2] + nodes[0]) * 0.5;
    nodes[15] = (nodes[6] + nodes[4]) * 0.5;
    const PartSurface surface =
        build(nodes, {{HEXAHEDRON_20, {0, 1, 2, 2, 4, 5, 6, 6, 8, 9, 2, 11, 12, 13, 6, 15, 16, 17, 18, 18}}});
    EXPECT_THAT(surface.faceSurfaces, ElementsAre(0, 1, 2, 4, 5));
    EXPECT_NEAR(volume(surface), 0.5, 1e-15);
    EXPECT_EQ(markedSides(surface, 4), (std::multiset<Side>{{4, 12}, {5, 12}, {5, 13}, {6, 13}, {6, 15}, {4, 15}}));
}

TEST_F(PartSurfaceTest, WhatHasNoAreaIsLeftOut) {
    const PartSurface surface = build(std::vector<Vec3d>(8), {{TRIANGLE, {0, 1, 1}},
                                                              {QUADRILATERAL, {0, 1, 0, 2}},
                                                              {QUADRILATERAL, {0, 0, 1, 2}},
                                                              {HEXAHEDRON, {3, 3, 3, 3, 3, 3, 3, 3}}});
    EXPECT_THAT(surface.faceElements, ElementsAre(2));
    EXPECT_THAT(surface.corners, ElementsAre(0, 1, 2));
    EXPECT_THAT(surface.edges, ElementsAre(0b111));
    EXPECT_THAT(surface.faceOffsets, ElementsAre(0, 1));
}

TEST_F(PartSurfaceTest, APartThatIsEmptyOrNotConsistentHasNone) {
    EXPECT_THAT(surfaceOf(part).faceOffsets, ElementsAre(0));
    const PartSurface surface = build(std::vector<Vec3d>(3), {{TETRAHEDRON, {0, 1, 2, 3}}, {POINT, {9}}});
    EXPECT_THAT(surface.faceElements, IsEmpty());
    EXPECT_THAT(surface.spherePoints, IsEmpty());
    EXPECT_THAT(surface.faceOffsets, ElementsAre(0));
}

// 7 * 5 * 3 cubes in a block, their nodes numbered backwards.
TEST_F(PartSurfaceTest, ABlockShowsItsOutside) {
    constexpr std::uint32_t n[] = {7, 5, 3};
    std::vector<Vec3d> nodes((n[0] + 1) * (n[1] + 1) * (n[2] + 1));
    auto index = [&](std::uint32_t x, std::uint32_t y, std::uint32_t z) {
        return std::uint32_t(nodes.size()) - 1 - ((z * (n[1] + 1) + y) * (n[0] + 1) + x);
    };
    std::vector<Element> elements;
    for (std::uint32_t z = 0; z <= n[2]; ++z) {
        for (std::uint32_t y = 0; y <= n[1]; ++y) {
            for (std::uint32_t x = 0; x <= n[0]; ++x) {
                nodes[index(x, y, z)] = {double(x), double(y), double(z)};
                if (x < n[0] && y < n[1] && z < n[2]) {
                    elements.push_back({HEXAHEDRON,
                                        {index(x, y, z), index(x + 1, y, z), index(x + 1, y + 1, z), index(x, y + 1, z),
                                         index(x, y, z + 1), index(x + 1, y, z + 1), index(x + 1, y + 1, z + 1),
                                         index(x, y + 1, z + 1)}});
                }
            }
        }
    }
    const PartSurface surface = build(nodes, elements);
    EXPECT_EQ(surface.faceElements.size(), 2u * (7 * 5 + 5 * 3 + 3 * 7));
    EXPECT_EQ(area(surface), 2.0 * (7 * 5 + 5 * 3 + 3 * 7));
    EXPECT_EQ(volume(surface), 7.0 * 5 * 3);
    EXPECT_TRUE(std::is_sorted(surface.faceElements.begin(), surface.faceElements.end()));
}

} // namespace
