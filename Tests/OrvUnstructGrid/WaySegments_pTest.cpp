#include "OrvUnstructGrid/WaySegments_p.h"

#include "Tests/OrvUnstructGrid/SurfaceTopologyModels.h"

#include <gmock/gmock.h>

using namespace orv::ug;
using orv::Vec3d;
using orvtest::Mesh;
using orvtest::TopologyParts;
using testing::ElementsAre;

namespace {

/// Every place is a quarter on from vertex 0 to vertex 1.
struct Graph {
    CornerMean meanAt(std::uint64_t) const {
        return {0, 1, 0.25};
    }
};

TEST(WaySegmentsTest, ElementsKnowTheirPlacesAndSurfaces) {
    Mesh mesh = orvtest::block(2, 1, 1);
    mesh.addElement(BEAM, {0, 11});
    const TopologyParts parts({mesh});
    const SurfaceTopology topology(parts.parts());
    const SurfacePiece top = topology.piecesOfElement(0, 1).back();
    const PathSegment segment = segmentIn(topology, top);
    EXPECT_EQ(segment.geometryIndex, 0u);
    EXPECT_EQ(segment.partIndex, 0u);
    EXPECT_EQ(segment.element, 1u);
    EXPECT_EQ(segment.surface, topology.elementSurface(top));
    // The second cube's nodes are 1, 2, 5, 4, 7, 8, 11, 10, at the places 8 to 15.
    const NodeMean mean = meanInPiece(topology, top, 1, CornerMean{8, 11, 0.25});
    EXPECT_THAT(mean.places, ElementsAre(13, 14, 0, 0, 0, 0));
    EXPECT_THAT(mean.weights, ElementsAre(0.75, 0.25, 0, 0, 0, 0));
    EXPECT_THAT(meanInPiece(topology, top, 1, CornerMean{8, 11, 1.0}).places, ElementsAre(14, 0, 0, 0, 0, 0));
    const SurfacePiece beam = topology.piecesOfElement(0, 2)[0];
    EXPECT_EQ(segmentIn(topology, beam).surface, PathSegment::ALL_SURFACES);
    const NodeMean middle = meanInPiece(topology, beam, 2, Vec3d(1, 0.5, 0.5));
    EXPECT_THAT(middle.places, ElementsAre(16, 17, 0, 0, 0, 0));
    EXPECT_THAT(middle.weights, ElementsAre(0.5, 0.5, 0, 0, 0, 0));
}

TEST(WaySegmentsTest, OtherPartsNodesAreFoundAtJoints) {
    const TopologyParts parts({orvtest::plate(1, 1), orvtest::movedBy(orvtest::plate(1, 1), {1, 0, 0})});
    const SurfaceTopology topology(parts.parts());
    // Vertices 1 and 3 are the nodes 0 and 2 of the second part, the first and last of its only element.
    EXPECT_THAT(meanInPiece(topology, {1, 1}, 0, CornerMean{1, 3, 0.5}).places, ElementsAre(0, 3, 0, 0, 0, 0));
}

TEST(WaySegmentsTest, StepsWithoutALengthAreLeftOut) {
    const TopologyParts parts({orvtest::plate(1, 1)});
    const SurfaceTopology topology(parts.parts());
    const SurfacePiece piece = {0, 0};
    const std::vector<WayStep> way = {
        {WAY_START, {0, 0, 0}, {}}, {5, {0, 0, 0}, piece}, {6, {0.25, 0, 0}, piece}, {WAY_TARGET, {1, 0.5, 0}, piece}};
    const std::vector<PathSegment> segments = waySegments(topology, Graph(), way);
    ASSERT_EQ(segments.size(), 2u);
    EXPECT_EQ(segments[0].begin, Vec3d(0, 0, 0));
    EXPECT_EQ(segments[0].end, Vec3d(0.25, 0, 0));
    EXPECT_THAT(segments[0].atEnd.weights, ElementsAre(0.75, 0.25, 0, 0, 0, 0));
    // The end is between the second and third nodes of the square.
    EXPECT_THAT(segments[1].atEnd.places, ElementsAre(1, 2, 0, 0, 0, 0));
    EXPECT_THAT(segments[1].atEnd.weights, ElementsAre(0.5, 0.5, 0, 0, 0, 0));
    EXPECT_TRUE(waySegments(topology, Graph(), {}).empty());
}

TEST(WaySegmentsTest, APointIsOnItsPieces) {
    SurfacePoint point;
    point.pieces = {{0, 3}, {1, 2}};
    EXPECT_TRUE(isOn(point, {1, 2}));
    EXPECT_FALSE(isOn(point, {1, 3}));
    EXPECT_FALSE(isOn(point, {0, 2}));
}

} // namespace
