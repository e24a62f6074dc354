#include "OrvUnstructGrid/NodePieces_p.h"

#include <gmock/gmock.h>

using namespace orv::ug;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

TEST(NodePiecesTest, PiecesOfANodeAscendAndTubesComeLast) {
    ElementMesh mesh;
    mesh.corners = {0, 1, 2, 2, 1, 3, 0, 2, 3};
    mesh.tubeEnds = {3, 5, 5, 0};
    const NodePieces pieces(mesh, 6);
    EXPECT_THAT(pieces.at(0), ElementsAre(0, 2, 4));
    EXPECT_THAT(pieces.at(1), ElementsAre(0, 1));
    EXPECT_THAT(pieces.at(2), ElementsAre(0, 1, 2));
    EXPECT_THAT(pieces.at(3), ElementsAre(1, 2, 3));
    EXPECT_THAT(pieces.at(4), IsEmpty());
    EXPECT_THAT(pieces.at(5), ElementsAre(3, 4));
}

TEST(NodePiecesTest, ASurfaceWithoutPiecesHasNone) {
    const NodePieces pieces(ElementMesh(), 2);
    EXPECT_THAT(pieces.at(0), IsEmpty());
    EXPECT_THAT(pieces.at(1), IsEmpty());
}

} // namespace
