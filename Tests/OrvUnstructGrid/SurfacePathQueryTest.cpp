#include "OrvUnstructGrid/SurfacePathQuery.h"

#include "OrvUnstructGrid/CuttingPlane.h"
#include "Tests/OrvUnstructGrid/PathModels.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>

using namespace orv::ug;
using orv::UNDEFINED_DOUBLE;
using orv::UNDEFINED_SIZE_T;
using orv::Vec3d;
using orvtest::lengthOf;
using orvtest::Mesh;
using orvtest::PathModel;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

/// Points to within roundings.
void expectPath(const std::vector<Vec3d>& path, const std::vector<Vec3d>& expected) {
    ASSERT_EQ(path.size(), expected.size());
    for (std::size_t i = 0; i < path.size(); ++i) {
        EXPECT_NEAR((path[i] - expected[i]).length(), 0.0, 1e-12) << i;
    }
}

TEST(SurfacePathQueryTest, APathOverAPlateIsStraight) {
    PathModel plate({orvtest::plate(2, 1)});
    // From the middle of the left side of one square to the middle of the right side of the next. The diagonals go up
    // from the first corners; y = 0.5 meets them at x = 0.5 and 1.5, and the common side at x = 1.
    const std::vector<HitItem> items = {PathModel::coordinate(0, 0, {0, 0.5, 0}),
                                        PathModel::coordinate(0, 1, {2, 0.5, 0})};
    expectPath(plate.path(SurfacePathQuery::COORDINATE, items),
               {{0, 0.5, 0}, {0.5, 0.5, 0}, {1, 0.5, 0}, {1.5, 0.5, 0}, {2, 0.5, 0}});
}

TEST(SurfacePathQueryTest, NodesElementsAndCoordinatesArePoints) {
    PathModel plate({orvtest::plate(3, 3)});
    expectPath(plate.path(SurfacePathQuery::NODE, {PathModel::node(0, 5), PathModel::node(0, 10)}),
               {{1, 1, 0}, {2, 2, 0}});
    // Along the diagonals of the squares from the first corner to the third, through their common nodes.
    expectPath(plate.path(SurfacePathQuery::ELEMENT, {PathModel::element(0, 0), PathModel::element(0, 8)}),
               {{0.5, 0.5, 0}, {1, 1, 0}, {2, 2, 0}, {2.5, 2.5, 0}});
    expectPath(plate.path(SurfacePathQuery::COORDINATE,
                          {PathModel::coordinate(0, 0, {0.75, 0.25, 0}), PathModel::coordinate(0, 0, {0.75, 0.5, 0})}),
               {{0.75, 0.25, 0}, {0.75, 0.5, 0}});
}

} // namespace
