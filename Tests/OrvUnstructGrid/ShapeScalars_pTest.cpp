#include "OrvUnstructGrid/ShapeScalars_p.h"

#include "OrvCore/Defines.h"
#include "Tests/OrvUnstructGrid/ReferenceElements.h"

#include <gmock/gmock.h>

using namespace orv::ug;
using orv::UNDEFINED_DOUBLE;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

/// A point, two triangles that share an edge, a beam and a tetrahedron upon the first triangle:
/// 10 items per element and node, 6 per element and surface.
class ShapeScalarsTest : public testing::Test {
protected:
    ShapeScalarsTest() {
        orvtest::setNodes(&part, {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {1, 1, 0}, {0, 0, 1}});
        orvtest::setElements(
            &part,
            {{POINT, {3}}, {TRIANGLE, {0, 1, 2}}, {TRIANGLE, {1, 3, 2}}, {BEAM, {3, 4}}, {TETRAHEDRON, {0, 1, 2, 4}}});
        surface = surfaceOf(part);
    }

    DataPart part{1};
    PartSurface surface;
};

TEST_F(ShapeScalarsTest, ValuesOfElementsGoOnTheirPieces) {
    const double values[] = {10, 11, 12, 13, 14};
    const ShapeScalars faces = scalarsOfFaces({PER_ELEMENT, values}, part, surface);
    EXPECT_THAT(faces.ofPoints, IsEmpty());
    EXPECT_THAT(faces.ofPieces, ElementsAre(11, 12, 14, 14, 14, 14));
    EXPECT_THAT(scalarsOfLines({PER_ELEMENT, values}, part, surface.tubeElements).ofPieces, ElementsAre(13));
    EXPECT_THAT(scalarsOfLines({PER_ELEMENT, values}, part, surface.sphereElements).ofPieces, ElementsAre(10));
}

TEST_F(ShapeScalarsTest, ValuesOfSurfacesGoOnTheFacesAlone) {
    const double values[] = {1, 2, 3, 4, 5, 6};
    const ShapeScalars faces = scalarsOfFaces({PER_ELEMENT_SURFACE, values}, part, surface);
    EXPECT_THAT(faces.ofPoints, IsEmpty());
    EXPECT_THAT(faces.ofPieces, ElementsAre(1, 2, 3, 4, 5, 6));
    const ShapeScalars lines = scalarsOfLines({PER_ELEMENT_SURFACE, values}, part, surface.tubeElements);
    EXPECT_THAT(lines.ofPoints, IsEmpty());
    EXPECT_THAT(lines.ofPieces, IsEmpty());
}

// A second tetrahedron takes surface 0 away from the first one.
TEST_F(ShapeScalarsTest, ValuesOfInnerSurfacesArePassedOver) {
    orvtest::setElements(&part, {{TETRAHEDRON, {0, 1, 2, 4}}, {TETRAHEDRON, {0, 1, 2, 3}}});
    surface = surfaceOf(part);
    const double values[] = {10, 11, 12, 13, 20, 21, 22, 23};
    EXPECT_THAT(scalarsOfFaces({PER_ELEMENT_SURFACE, values}, part, surface).ofPieces,
                ElementsAre(11, 12, 13, 21, 22, 23));
}

// Node 0: from the triangle 1 and the tetrahedron 9; node 1: 2, 4, 10; node 2: 3, 6, 11, of which 6 is undefined;
// node 3: 0, 5, 7; node 4: 8 and 12, both undefined.
TEST_F(ShapeScalarsTest, ValuesOfElementNodesAreAveragedAtNodes) {
    double values[] = {0, 1, 2, 3, 4, 5, UNDEFINED_DOUBLE, 7, UNDEFINED_DOUBLE, 9, 10, 11, UNDEFINED_DOUBLE};
    for (const ShapeScalars& scalars : {scalarsOfFaces({PER_ELEMENT_NODE, values}, part, surface),
                                        scalarsOfLines({PER_ELEMENT_NODE, values}, part, surface.tubeElements)}) {
        EXPECT_THAT(scalars.ofPieces, IsEmpty());
        EXPECT_THAT(scalars.ofPoints, ElementsAre(5, 16.0 / 3, 7, 4, UNDEFINED_DOUBLE));
    }
}

TEST_F(ShapeScalarsTest, WithoutAMappingThereAreNone) {
    const PlaneSection section = sectionOf(part, part.nodes()->coordinates(), {0, 0, 0.5}, {0, 0, 1});
    for (const ShapeScalars& scalars :
         {scalarsOfFaces({}, part, surface), scalarsOfLines({}, part, surface.tubeElements),
          scalarsOfSection({}, part, section, section.faceElements)}) {
        EXPECT_THAT(scalars.ofPieces, IsEmpty());
        EXPECT_THAT(scalars.ofPoints, IsEmpty());
    }
}

class SectionScalarsTest : public ShapeScalarsTest {
protected:
    /// Across z at a quarter: a point on the beam, whose corners are the connectivity's places 7 and 8, and a triangle
    /// in the tetrahedron, whose places are 9 to 12; the upper node has a quarter of each.
    const PlaneSection section = sectionOf(part, part.nodes()->coordinates(), {0, 0, 0.25}, {0, 0, 1});
};

TEST_F(SectionScalarsTest, ValuesOfNodesAreInterpolated) {
    const double values[] = {0, 4, 8, UNDEFINED_DOUBLE, 100};
    const ShapeScalars scalars = scalarsOfSection({PER_NODE, values}, part, section, section.faceElements);
    EXPECT_THAT(scalars.ofPieces, IsEmpty());
    ASSERT_EQ(scalars.ofPoints.size(), 4u);
    EXPECT_EQ(scalars.ofPoints[0], UNDEFINED_DOUBLE);
    EXPECT_THAT(std::vector<double>(scalars.ofPoints.begin() + 1, scalars.ofPoints.end()),
                testing::UnorderedElementsAre(25, 28, 31));
}

TEST_F(SectionScalarsTest, ValuesOfElementNodesAreInterpolatedInEachElement) {
    const double values[] = {0, 0, 0, 0, 0, 0, 0, 40, 80, 0, 4, 8, 100};
    const ShapeScalars scalars = scalarsOfSection({PER_ELEMENT_NODE, values}, part, section, section.faceElements);
    EXPECT_THAT(scalars.ofPieces, IsEmpty());
    EXPECT_THAT(scalars.ofPoints, testing::UnorderedElementsAre(50, 25, 28, 31));
}

TEST_F(SectionScalarsTest, ValuesOfElementsStay) {
    const double values[] = {10, 11, 12, 13, 14};
    EXPECT_THAT(scalarsOfSection({PER_ELEMENT, values}, part, section, section.faceElements).ofPieces, ElementsAre(14));
    EXPECT_THAT(scalarsOfSection({PER_ELEMENT, values}, part, section, section.sphereElements).ofPieces,
                ElementsAre(13));
}

TEST_F(SectionScalarsTest, ValuesOfSurfacesAreAveraged) {
    double values[] = {1, 2, 3, UNDEFINED_DOUBLE, 5, 13};
    EXPECT_THAT(scalarsOfSection({PER_ELEMENT_SURFACE, values}, part, section, section.faceElements).ofPieces,
                ElementsAre(7));
    EXPECT_THAT(scalarsOfSection({PER_ELEMENT_SURFACE, values}, part, section, section.sphereElements).ofPieces,
                ElementsAre(UNDEFINED_DOUBLE));
}

// In a node the other end of the edge does not count.
TEST_F(SectionScalarsTest, APointInANodeHasItsValue) {
    const PlaneSection atNode = sectionOf(part, part.nodes()->coordinates(), {0, 0, 1}, {0, 0, 1});
    const double values[] = {0, 4, 8, UNDEFINED_DOUBLE, 100};
    EXPECT_THAT(scalarsOfSection({PER_NODE, values}, part, atNode, atNode.sphereElements).ofPoints, ElementsAre(100));
}

} // namespace
