#include "Tools/ItemIds.h"

#include "OrvUnstructGrid/DataPart.h"

#include <gmock/gmock.h>

using namespace orv::ug;
using orvapp::itemIds;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

/// A triangle (element 70, one surface) and a beam (element 40, none) on the nodes 5, 9, 12.
void addTriangleAndBeam(DataPart* part) {
    part->nodes()->set({0, 0, 0, 1, 0, 0, 0, 1, 0}, {5, 9, 12});
    part->elements()->set({TRIANGLE, BEAM}, {0, 1, 2, 1, 2}, {70, 40});
}

} // namespace

TEST(ItemIds, AreTheSolversNumbers) {
    DataPart part(1);
    addTriangleAndBeam(&part);
    EXPECT_THAT(itemIds(part, PER_NODE), ElementsAre(5, 9, 12));
    EXPECT_THAT(itemIds(part, PER_ELEMENT), ElementsAre(70, 40));
    EXPECT_THAT(itemIds(part, PER_ELEMENT_NODE), ElementsAre(70, 70, 70, 40, 40));
    EXPECT_THAT(itemIds(part, PER_ELEMENT_SURFACE), ElementsAre(70));
    EXPECT_THAT(itemIds(part, UNKNOWN_MAPPING), IsEmpty());
}

TEST(ItemIds, OfAnEmptyPartAreNone) {
    const DataPart part(1);
    EXPECT_THAT(itemIds(part, PER_NODE), IsEmpty());
    EXPECT_THAT(itemIds(part, PER_ELEMENT_NODE), IsEmpty());
}
