#include "OrvUnstructGrid/HitItem.h"

#include <gtest/gtest.h>

using orv::UNDEFINED_SIZE_T;
using orv::Vec3d;
using orv::ug::HitItem;

namespace {

TEST(HitItem, IsNothingAtFirst) {
    const HitItem hit;
    EXPECT_EQ(hit.stateId(), -1);
    EXPECT_EQ(hit.partId(), -1);
    EXPECT_EQ(hit.itemType(), HitItem::PART);
    EXPECT_EQ(hit.geometryIndex(), UNDEFINED_SIZE_T);
    EXPECT_EQ(hit.itemIndex(), UNDEFINED_SIZE_T);
    EXPECT_EQ(hit.nodeIndex(), UNDEFINED_SIZE_T);
    EXPECT_EQ(hit.elementIndex(), UNDEFINED_SIZE_T);
    EXPECT_EQ(hit.elementLocalSurfaceIndex(), UNDEFINED_SIZE_T);
    EXPECT_EQ(hit.coordinate(), orv::UNDEFINED_VECTOR);
}

TEST(HitItem, TellsCuttingPlanesByTheNumberOne) {
    EXPECT_EQ(static_cast<int>(HitItem::PART), 0);
    EXPECT_EQ(static_cast<int>(HitItem::CUTTING_PLANE), 1);
}

TEST(HitItem, CopiesWhatIsSet) {
    HitItem hit;
    hit.setStateId(3);
    hit.setGeometryIndex(4);
    hit.setPartId(5);
    hit.setItemType(HitItem::CUTTING_PLANE);
    hit.setItemIndex(6);
    hit.setNodeIndex(7);
    hit.setElementIndex(8);
    hit.setElementLocalSurfaceIndex(9);
    hit.setCoordinate({1, 2, 3});
    HitItem copy;
    copy = hit;
    EXPECT_EQ(copy.stateId(), 3);
    EXPECT_EQ(copy.geometryIndex(), 4u);
    EXPECT_EQ(copy.partId(), 5);
    EXPECT_EQ(copy.itemType(), HitItem::CUTTING_PLANE);
    EXPECT_EQ(copy.itemIndex(), 6u);
    EXPECT_EQ(copy.nodeIndex(), 7u);
    EXPECT_EQ(copy.elementIndex(), 8u);
    EXPECT_EQ(copy.elementLocalSurfaceIndex(), 9u);
    EXPECT_EQ(copy.coordinate(), Vec3d(1, 2, 3));
}

} // namespace
