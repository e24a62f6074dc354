#include "OrvUnstructGrid/PlaneSection_p.h"

#include "Tests/OrvUnstructGrid/ReferenceElements.h"

#include <gmock/gmock.h>

#include <cmath>
#include <random>
#include <set>

using namespace orv::ug;
using orv::Vec3d;
using orvtest::Element;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class PlaneSectionTest : public testing::Test {
protected:
    void fill(const std::vector<Vec3d>& nodes, const std::vector<Element>& elements) {
        orvtest::setNodes(&part, nodes);
        orvtest::setElements(&part, elements);
    }

    PlaneSection cut(const Vec3d& point, const Vec3d& normal) const {
        return sectionOf(part, part.nodes()->coordinates(), point, normal);
    }

    static Vec3d point(const PlaneSection& section, std::size_t index) {
        const double* x = &section.coordinates[3 * index];
        return {x[0], x[1], x[2]};
    }

    /// Along a unit normal: overlaps count twice, what is turned the other way counts negative.
    static double area(const PlaneSection& section, const Vec3d& normal) {
        Vec3d sum;
        for (std::size_t c = 0; c < section.corners.size(); c += 3) {
            const Vec3d a = point(section, section.corners[c]);
            sum += (point(section, section.corners[c + 1]) - a) ^ (point(section, section.corners[c + 2]) - a);
        }
        return sum * normal / 2;
    }

    static double length(const PlaneSection& section) {
        double sum = 0;
        for (std::size_t i = 0; i < section.tubeEnds.size(); i += 2) {
            sum += (point(section, section.tubeEnds[i]) - point(section, section.tubeEnds[i + 1])).length();
        }
        return sum;
    }

    DataPart part{1};
};

// Each reference element across z: the section of the pyramid at z is the square of 1 - z, of the tetrahedron half of
// it.
TEST_F(PlaneSectionTest, VolumesAreCutInTheirExactArea) {
    struct Case {
        ElementType type;
        double areaAtQuarter;
        std::size_t cornerCount;
    };
    for (const Case& c : {Case{TETRAHEDRON, 0.75 * 0.75 / 2, 3}, Case{TETRAHEDRON_10, 0.75 * 0.75 / 2, 3},
                          Case{PYRAMID, 0.75 * 0.75, 4}, Case{PYRAMID_13, 0.75 * 0.75, 4}, Case{WEDGE, 0.5, 3},
                          Case{WEDGE_15, 0.5, 3}, Case{HEXAHEDRON, 1, 4}, Case{HEXAHEDRON_20, 1, 4}}) {
        SCOPED_TRACE(elementTypeInfo(c.type).name);
        orvtest::fillWithReference(&part, c.type);
        const PlaneSection section = cut({5, 5, 0.25}, {0, 0, 2});
        EXPECT_NEAR(area(section, {0, 0, 1}), c.areaAtQuarter, 1e-15);
        EXPECT_EQ(section.points.size(), c.cornerCount);
        EXPECT_THAT(section.faceElements, ElementsAre(0));
        EXPECT_THAT(section.faceOffsets, ElementsAre(0, c.cornerCount - 2));
        for (std::size_t i = 0; i < section.points.size(); ++i) {
            EXPECT_EQ(point(section, i).z(), 0.25);
        }
        EXPECT_NEAR(area(cut({5, 5, 0.25}, {0, 0, -1}), {0, 0, -1}), c.areaAtQuarter, 1e-15);
        EXPECT_THAT(cut({0, 0, 1.5}, {0, 0, 1}).points, IsEmpty());
        EXPECT_THAT(cut({0, 0, -0.5}, {0, 0, 1}).points, IsEmpty());
    }
}

// Along a skew direction the area is a quadratic function of the height from one corner to the next, so two planes
// after Gauss between them give the exact volume.
TEST_F(PlaneSectionTest, SectionsAddUpToTheVolume) {
    const Vec3d direction = Vec3d(1, 2, 3) / std::sqrt(14.0);
    for (ElementType type : {TETRAHEDRON, PYRAMID, WEDGE, HEXAHEDRON}) {
        SCOPED_TRACE(elementTypeInfo(type).name);
        orvtest::fillWithReference(&part, type);
        std::set<double> heights;
        for (const Vec3d& node : orvtest::referenceNodes(type)) {
            heights.insert(node * direction);
        }
        double volume = 0;
        for (auto low = heights.begin(), high = std::next(low); high != heights.end(); ++low, ++high) {
            for (double side : {-1.0, 1.0}) {
                const double at = (*low + *high) / 2 + side * (*high - *low) / 2 / std::sqrt(3.0);
                volume += area(cut(direction * at, direction), direction) * (*high - *low) / 2;
            }
        }
        EXPECT_NEAR(volume, orvtest::referenceSize(type), 1e-14);
    }
}

// Across the long diagonal of the cube through its middle: a regular hexagon with sides of 1 / sqrt(2), whose area is
// 3 sqrt(3) / 2 times the square of a side. Its outline alone is marked.
TEST_F(PlaneSectionTest, ThePlaneAcrossTheDiagonalOfACubeIsAHexagon) {
    for (double offset : {0.0, 1e6}) {
        std::vector<Vec3d> nodes = orvtest::referenceNodes(HEXAHEDRON);
        for (Vec3d& node : nodes) {
            node += Vec3d(offset, offset, offset);
        }
        fill(nodes, {{HEXAHEDRON, {0, 1, 2, 3, 4, 5, 6, 7}}});
        const double middle = offset + 0.5;
        const PlaneSection section = cut({middle, middle, middle}, {1, 1, 1});
        EXPECT_EQ(section.points.size(), 6u);
        EXPECT_THAT(section.edges, ElementsAre(0b011, 0b010, 0b010, 0b110));
        EXPECT_NEAR(area(section, Vec3d(1, 1, 1) / std::sqrt(3.0)), 3 * std::sqrt(3.0) / 4, 1e-12);
    }
    EXPECT_THAT(cut({1e6 + 0.1, 1e6, 1e6}, {1, 1, 1}).edges, ElementsAre(0b111));
}

TEST_F(PlaneSectionTest, PointsTellBetweenWhichNodesTheyAre) {
    fill({{0, 0, 0}, {0, 0, 4}, {9, 9, 9}}, {{POINT, {2}}, {BEAM, {1, 0}}});
    const PlaneSection section = cut({0, 0, 1}, {0, 0, 1});
    ASSERT_EQ(section.points.size(), 1u);
    EXPECT_EQ(section.points[0].abovePlace, 1u); // Behind the point's node.
    EXPECT_EQ(section.points[0].belowPlace, 2u);
    EXPECT_EQ(section.points[0].weight, 0.75);
    EXPECT_EQ(point(section, 0), Vec3d(0, 0, 1));
    EXPECT_THAT(section.spherePoints, ElementsAre(0));
    EXPECT_THAT(section.sphereElements, ElementsAre(1));
    const PlaneSection fromBelow = cut({0, 0, 1}, {0, 0, -1});
    EXPECT_EQ(fromBelow.points[0].abovePlace, 2u);
    EXPECT_EQ(fromBelow.points[0].weight, 0.25);
}

TEST_F(PlaneSectionTest, ShellsAreCutInLines) {
    for (ElementType type : {TRIANGLE, TRIANGLE_6, QUADRILATERAL, QUADRILATERAL_8}) {
        SCOPED_TRACE(elementTypeInfo(type).name);
        orvtest::fillWithReference(&part, type);
        const PlaneSection section = cut({0, 0.25, 7}, {0, 1, 0});
        EXPECT_EQ(length(section), orvtest::referenceSize(type) < 1 ? 0.75 : 1.0);
        EXPECT_THAT(section.tubeElements, ElementsAre(0));
        EXPECT_THAT(section.faceElements, IsEmpty());
    }
}

TEST_F(PlaneSectionTest, BeamsAreCutInPointsAndPointsAreNot) {
    for (ElementType type : {BEAM, BEAM_3}) {
        orvtest::fillWithReference(&part, type);
        const PlaneSection section = cut({0.25, 0, 0}, {1, 0, 0});
        ASSERT_EQ(section.points.size(), 1u);
        EXPECT_EQ(point(section, 0), Vec3d(0.25, 0, 0));
    }
    orvtest::fillWithReference(&part, POINT);
    EXPECT_THAT(cut({0, 0, 0}, {1, 0, 0}).points, IsEmpty());
}

// A stack of two cubes. What lies in the plane is above it, so the lower cube shows the face between the two, and its
// own top, but not its bottom.
TEST_F(PlaneSectionTest, AFaceInThePlaneIsShownOnce) {
    std::vector<Vec3d> nodes = orvtest::referenceCorners(HEXAHEDRON);
    for (std::size_t i = 4; i < 8; ++i) {
        nodes.push_back(nodes[i] + Vec3d(0, 0, 1));
    }
    fill(nodes, {{HEXAHEDRON, {0, 1, 2, 3, 4, 5, 6, 7}}, {HEXAHEDRON, {4, 5, 6, 7, 8, 9, 10, 11}}});
    const Vec3d up(0, 0, 1);
    EXPECT_THAT(cut({0, 0, 1}, up).faceElements, ElementsAre(0));
    EXPECT_EQ(area(cut({0, 0, 1}, up), up), 1.0);
    EXPECT_THAT(cut({0, 0, 1}, -up).faceElements, ElementsAre(1));
    EXPECT_THAT(cut({0, 0, 2}, up).faceElements, ElementsAre(1));
    EXPECT_THAT(cut({0, 0, 0}, up).faceElements, IsEmpty());
    EXPECT_THAT(cut({0, 0, 0}, -up).faceElements, ElementsAre(0));
}

TEST_F(PlaneSectionTest, WhatOnlyTouchesThePlaneIsNotShown) {
    for (ElementType type : {TRIANGLE, QUADRILATERAL, TETRAHEDRON, PYRAMID, WEDGE, HEXAHEDRON}) {
        SCOPED_TRACE(elementTypeInfo(type).name);
        orvtest::fillWithReference(&part, type);
        // In the corner at the origin, along the edge on the x axis, and, for shells, all over.
        for (const Vec3d& normal : {Vec3d(1, 2, 3), Vec3d(0, 2, 3), Vec3d(0, 0, 1)}) {
            EXPECT_THAT(cut({0, 0, 0}, normal).points, IsEmpty());
        }
        const PlaneSection corner = cut({0, 0, 0}, {-1, -2, -3});
        EXPECT_THAT(corner.points, IsEmpty());
        EXPECT_THAT(cut({0, 0, 0}, {0, -2, -3}).faceElements, IsEmpty());
    }
    // Shells that hang from an edge in the plane show the edge.
    orvtest::fillWithReference(&part, TRIANGLE);
    EXPECT_EQ(length(cut({0, 0, 0}, {0, -1, 0})), 1.0);
    EXPECT_EQ(length(cut({0, 0, 0}, {0, 1, 0})), 0.0);
}

// Through two opposite edges of the cube and thus exactly through four of its nodes.
TEST_F(PlaneSectionTest, APlaneThroughNodesCutsOnce) {
    orvtest::fillWithReference(&part, HEXAHEDRON);
    const PlaneSection section = cut({0, 0, 0}, {1, -1, 0});
    EXPECT_EQ(section.points.size(), 4u);
    EXPECT_NEAR(area(section, Vec3d(1, -1, 0) / std::sqrt(2.0)), std::sqrt(2.0), 1e-15);
}

// A block of 4 x 4 x 4 cubes of the size 1, the nodes inside moved at random, so that no face inside is plane: the
// section of the block is what it was, with no gaps and no overlaps.
TEST_F(PlaneSectionTest, WarpedElementsLeaveNoGaps) {
    constexpr std::uint32_t n = 4;
    std::mt19937 engine(7);
    auto random = [&] { return 0.5 * (engine() / 4294967296.0 - 0.5); };
    auto index = [](std::uint32_t x, std::uint32_t y, std::uint32_t z) { return (z * (n + 1) + y) * (n + 1) + x; };
    std::vector<Vec3d> nodes;
    std::vector<Element> elements;
    for (std::uint32_t z = 0; z <= n; ++z) {
        for (std::uint32_t y = 0; y <= n; ++y) {
            for (std::uint32_t x = 0; x <= n; ++x) {
                auto isInside = [](std::uint32_t i) { return i > 0 && i < n; };
                const bool isMoved = isInside(x) && isInside(y) && isInside(z);
                nodes.push_back(Vec3d(x, y, z) + (isMoved ? Vec3d(random(), random(), random()) : Vec3d()));
                if (x < n && y < n && z < n) {
                    elements.push_back({HEXAHEDRON,
                                        {index(x, y, z), index(x + 1, y, z), index(x + 1, y + 1, z), index(x, y + 1, z),
                                         index(x, y, z + 1), index(x + 1, y, z + 1), index(x + 1, y + 1, z + 1),
                                         index(x, y + 1, z + 1)}});
                }
            }
        }
    }
    fill(nodes, elements);
    for (double z = 0.05; z < n; z += 0.1) {
        EXPECT_NEAR(area(cut({0, 0, z}, {0, 0, 1}), {0, 0, 1}), 16.0, 16e-12);
    }
    // Through the edges of the block x = z: a rectangle of 4 by 4 sqrt(2).
    const Vec3d skew = Vec3d(1, 0, -1) / std::sqrt(2.0);
    EXPECT_NEAR(area(cut({0, 0, 0}, skew), skew), 16 * std::sqrt(2.0), 16e-12);
}

// The side face of the cube 0 1 5 4 with its corners in turn above and below: two corners far, two near the plane
// decide which are joined, in the same way for the elements on both sides.
TEST_F(PlaneSectionTest, NeighboursJoinATwistedFaceAlike) {
    for (double high : {3.0, 0.3}) {
        SCOPED_TRACE(high);
        // The face between the two: (0, high), (1, -1), (2, high), (3, -1) in turn, so the sign of the saddle is that
        // of high * high - 1. Apart from the face everything is below.
        std::vector<Vec3d> nodes = {{0, 0, high}, {1, 0, -1}, {1, 1, high}, {0, 1, -1}};
        for (double x : {-1.0, 1.0}) {
            for (const Vec3d& corner : {Vec3d(0, 0, -5), Vec3d(1, 0, -5), Vec3d(1, 1, -5), Vec3d(0, 1, -5)}) {
                nodes.push_back(corner + Vec3d(0, 0, x));
            }
        }
        fill(nodes, {{HEXAHEDRON, {0, 1, 2, 3, 4, 5, 6, 7}}, {HEXAHEDRON, {9, 8, 11, 10, 1, 0, 3, 2}}});
        const PlaneSection section = cut({0, 0, 0}, {0, 0, 1});
        // Joined above: one polygon of six corners in each; otherwise two triangles.
        const bool isJoined = high > 1;
        const std::vector<std::uint32_t> elements =
            isJoined ? std::vector<std::uint32_t>{0, 1} : std::vector<std::uint32_t>{0, 0, 1, 1};
        EXPECT_EQ(section.faceElements, elements);
        EXPECT_EQ(section.points.size(), 12u);
    }
}

TEST_F(PlaneSectionTest, ACollapsedHexahedronIsCutAsTheWedgeItIs) {
    for (const std::vector<std::uint32_t>& nodes : std::vector<std::vector<std::uint32_t>>{
             {0, 1, 2, 2, 4, 5, 6, 6}, {0, 1, 2, 0, 4, 5, 6, 4}, {0, 0, 1, 2, 4, 4, 5, 6}}) {
        fill(orvtest::referenceCorners(HEXAHEDRON), {{HEXAHEDRON, nodes}});
        const PlaneSection section = cut({0, 0, 0.5}, {0, 0, 1});
        EXPECT_EQ(section.points.size(), 3u);
        EXPECT_EQ(area(section, {0, 0, 1}), 0.5);
    }
}

TEST_F(PlaneSectionTest, AnInvertedElementHasTheSameSection) {
    fill(orvtest::referenceCorners(HEXAHEDRON), {{HEXAHEDRON, {4, 5, 6, 7, 0, 1, 2, 3}}});
    EXPECT_EQ(area(cut({0, 0, 0.5}, {0, 0, 1}), {0, 0, -1}), 1.0);
}

TEST_F(PlaneSectionTest, MayBeOfADisplacedPart) {
    orvtest::fillWithReference(&part, HEXAHEDRON);
    std::vector<double> coordinates(part.nodes()->coordinates().begin(), part.nodes()->coordinates().end());
    for (double& coordinate : coordinates) {
        coordinate = 2 * coordinate + 10;
    }
    EXPECT_EQ(area(sectionOf(part, coordinates, {0, 0, 11}, {0, 0, 1}), {0, 0, 1}), 4.0);
}

TEST_F(PlaneSectionTest, APartThatIsNotConsistentHasNone) {
    fill({{0, 0, 0}, {0, 0, 1}}, {{BEAM, {0, 1}}, {POINT, {2}}});
    EXPECT_THAT(cut({0, 0, 0.5}, {0, 0, 1}).points, IsEmpty());
}

} // namespace
