#include "LibUnstructGrid/VTOBaseTypesIdent.h"

#include <gtest/gtest.h>

#include <utility>

namespace {

TEST(VTIndexID, IsUnsetAtFirst) {
    EXPECT_EQ(VTIndexID(), VTIndexID(-1, -1));
}

TEST(VTIndexID, SetsAndComparesBothFields) {
    VTIndexID id;
    id.Set(3, 7);
    EXPECT_EQ(id.iFirst, 3);
    EXPECT_EQ(id.iSecond, 7);
    EXPECT_EQ(id, VTIndexID(3, 7));
    EXPECT_NE(id, VTIndexID(3, 8));
    EXPECT_NE(id, VTIndexID(4, 7));
}

TEST(VTIndexID, IsValidAsksForBothOrForOneField) {
    const struct {
        VTIndexID id;
        bool bBoth;
        bool bOne;
    } rows[] = {{{0, 0}, true, true}, {{0, -1}, false, true}, {{-1, 0}, false, true}, {{-1, -1}, false, false}};
    for (const auto& row : rows) {
        EXPECT_EQ(row.id.IsValid(true), row.bBoth) << row.id.iFirst << " " << row.id.iSecond;
        EXPECT_EQ(row.id.IsValid(false), row.bOne) << row.id.iFirst << " " << row.id.iSecond;
    }
}

TEST(VTPartID, SetsAndInvalidates) {
    VTPartID id;
    EXPECT_EQ(id, VTPartID(-1, -1));
    id.Set(3, 7);
    EXPECT_EQ(id.iGeometryID, 3);
    EXPECT_EQ(id.iPartID, 7);
    EXPECT_NE(id, VTPartID(3, 8));
    EXPECT_NE(id, VTPartID(4, 7));
    id.SetInvalid();
    EXPECT_EQ(id, VTPartID());
}

TEST(VTPartID, IsValidNeedsBothFields) {
    EXPECT_TRUE(VTPartID(0, 0).IsValid());
    EXPECT_FALSE(VTPartID(0, -1).IsValid());
    EXPECT_FALSE(VTPartID(-1, 0).IsValid());
}

TEST(VTPartID, NegativeFieldsAreWildcardsOnlyWhenAskedFor) {
    const struct {
        VTPartID a;
        VTPartID b;
        bool bExact;
        bool bWild;
    } rows[] = {{{3, 7}, {3, 7}, true, true},    {{3, -1}, {3, 7}, false, true},   {{3, 7}, {3, -1}, false, true},
                {{-1, 7}, {3, 7}, false, true},  {{3, 7}, {-2, 7}, false, true},   {{3, 7}, {3, 8}, false, false},
                {{4, 7}, {3, 7}, false, false},  {{-1, -1}, {3, 7}, false, true},  {{4, -1}, {3, 7}, false, false},
                {{-1, 8}, {3, 7}, false, false}, {{-1, -1}, {-1, -1}, true, true}, {{-1, -1}, {-2, -1}, false, true}};
    for (const auto& row : rows) {
        const auto text = testing::Message() << row.a.iGeometryID << "," << row.a.iPartID << " against "
                                             << row.b.iGeometryID << "," << row.b.iPartID;
        EXPECT_EQ(row.a.IsEqual(row.b, false), row.bExact) << text;
        EXPECT_EQ(row.a.IsEqual(row.b, true), row.bWild) << text;
    }
}

template <typename ID>
void expectOrderedByFirstThenSecond() {
    const ID ids[] = {{-1, 9}, {0, 5}, {1, -1}, {1, 0}, {1, 2}, {2, 0}};
    for (int i = 0; i < 6; ++i) {
        for (int j = 0; j < 6; ++j) {
            EXPECT_EQ(ids[i] < ids[j], i < j) << i << " " << j;
        }
    }
}

TEST(VTPartID, OrdersByGeometryThenPart) {
    expectOrderedByFirstThenSecond<VTPartID>();
}

TEST(VTFrameSetPartIdent, OrdersByFrameSetThenPart) {
    expectOrderedByFirstThenSecond<VTFrameSetPartIdent>();
}

TEST(VTResultID, OrdersByResultThenSection) {
    expectOrderedByFirstThenSecond<VTResultID>();
}

TEST(VTFrameSetPartIdent, SetsComparesAndChecksBothFields) {
    VTFrameSetPartIdent id;
    EXPECT_EQ(id, VTFrameSetPartIdent(-1, -1));
    EXPECT_FALSE(id.IsValid());
    id.Set(0, 7);
    EXPECT_EQ(id.iFrameSetID, 0);
    EXPECT_EQ(id.iPartID, 7);
    EXPECT_TRUE(id.IsValid());
    EXPECT_NE(id, VTFrameSetPartIdent(0, 8));
    EXPECT_FALSE(VTFrameSetPartIdent(0, -1).IsValid());
    EXPECT_FALSE(VTFrameSetPartIdent(-1, 0).IsValid());
}

TEST(VTPartInstanceID, FourIntsAreTheFurtherIdsFirstAndThePartLast) {
    const VTPartInstanceID id(1, 2, 3, 4);
    EXPECT_EQ(id.iThirdID, 1);
    EXPECT_EQ(id.iFourthID, 2);
    EXPECT_EQ(id.partID, VTPartID(3, 4));
}

TEST(VTPartInstanceID, SetHasFourForms) {
    const VTPartInstanceID expected(1, 2, 3, 4);
    VTPartInstanceID id;
    EXPECT_EQ(id, VTPartInstanceID(-1, -1, -1, -1));
    id.Set(1, 2, 3, 4);
    EXPECT_EQ(id, expected);
    id.Set(VTPartID(5, 6));
    EXPECT_EQ(id, VTPartInstanceID(-1, -1, 5, 6));
    id.Set(VTPartID(3, 4), 1, 2);
    EXPECT_EQ(id, expected);
    id.SetInvalid();
    EXPECT_EQ(id, VTPartInstanceID());
    id.Set(expected);
    EXPECT_EQ(id, expected);
}

TEST(VTPartInstanceID, ConstructsLikeSet) {
    EXPECT_EQ(VTPartInstanceID(VTPartID(3, 4)), VTPartInstanceID(-1, -1, 3, 4));
    EXPECT_EQ(VTPartInstanceID(VTPartID(3, 4), 1, 2), VTPartInstanceID(1, 2, 3, 4));
}

TEST(VTPartInstanceID, ComparesAllFields) {
    const VTPartInstanceID id(1, 2, 3, 4);
    EXPECT_NE(id, VTPartInstanceID(0, 2, 3, 4));
    EXPECT_NE(id, VTPartInstanceID(1, 0, 3, 4));
    EXPECT_NE(id, VTPartInstanceID(1, 2, 0, 4));
    EXPECT_NE(id, VTPartInstanceID(1, 2, 3, 0));
}

TEST(VTPartInstanceID, IsEqualLooksAtTheFlaggedFields) {
    const VTPartInstanceID id(1, 2, 3, 4);
    const VTPartInstanceID otherThird(9, 2, 3, 4);
    const VTPartInstanceID otherFourth(1, 9, 3, 4);
    EXPECT_TRUE(id.IsEqual(otherThird, false, true, false));
    EXPECT_FALSE(id.IsEqual(otherThird, true, true, false));
    EXPECT_TRUE(id.IsEqual(otherFourth, true, false, false));
    EXPECT_FALSE(id.IsEqual(otherFourth, true, true, false));
    EXPECT_FALSE(id.IsEqual(VTPartInstanceID(1, 2, 3, 9), false, false, true));
}

TEST(VTPartInstanceID, WildcardsHoldForAllFourFields) {
    const VTPartInstanceID id(1, 2, 3, 4);
    for (const VTPartInstanceID& wild : {VTPartInstanceID(-1, 2, 3, 4), VTPartInstanceID(1, -1, 3, 4),
                                         VTPartInstanceID(1, 2, -1, 4), VTPartInstanceID(1, 2, 3, -1)}) {
        EXPECT_TRUE(id.IsEqual(wild, true, true, true));
        EXPECT_TRUE(wild.IsEqual(id, true, true, true));
        EXPECT_FALSE(id.IsEqual(wild, true, true, false));
    }
}

TEST(VTPartInstanceID, IsValidLooksAtTheFlaggedFields) {
    EXPECT_TRUE(VTPartInstanceID(-1, -1, 0, 0).IsValid(false, false));
    EXPECT_FALSE(VTPartInstanceID(-1, 0, 0, 0).IsValid(true, false));
    EXPECT_FALSE(VTPartInstanceID(0, -1, 0, 0).IsValid(false, true));
    EXPECT_TRUE(VTPartInstanceID(0, 0, 0, 0).IsValid(true, true));
    EXPECT_FALSE(VTPartInstanceID(0, 0, -1, 0).IsValid(false, false));
    EXPECT_FALSE(VTPartInstanceID(0, 0, 0, -1).IsValid(false, false));
}

TEST(VTPartItem, IsUnsetAtFirst) {
    const VTPartItem item;
    EXPECT_EQ(item.partInstanceID, VTPartInstanceID());
    EXPECT_EQ(item.iItemIndex, -1);
    EXPECT_EQ(item.ubItemDetail, 255);
}

TEST(VTPartItem, SetsComparesAndInvalidates) {
    const VTPartInstanceID instance(1, 2, 3, 4);
    VTPartItem item;
    item.Set(instance, 5, 6);
    EXPECT_EQ(item, VTPartItem(instance, 5, 6));
    EXPECT_NE(item, VTPartItem(VTPartInstanceID(1, 2, 3, 9), 5, 6));
    EXPECT_NE(item, VTPartItem(instance, 9, 6));
    EXPECT_NE(item, VTPartItem(instance, 5, 9));
    item.SetInvalid();
    EXPECT_EQ(item, VTPartItem());
}

// One row per group of kinds: what an item needs to be valid.
TEST(VTPartItem, IsValidDependsOnTheGroupOfTheKind) {
    const VTPartInstanceID part(-1, -1, 0, 0);
    const VTPartItem nothing;
    const VTPartItem partOnly(part, -1, 255);
    const VTPartItem indexOnly(VTPartInstanceID(), 0, 0);
    const VTPartItem indexed(part, 0, 255);
    const VTPartItem detailedNoIndex(part, -1, 254);
    const VTPartItem detailed(part, 0, 254);
    const struct {
        int iFirstKind;
        int iLastKind;
        bool bNothing;
        bool bPartOnly;
        bool bIndexOnly;
        bool bIndexed;
        bool bDetailedNoIndex;
        bool bDetailed;
    } rows[] = {{-1, 0, false, false, false, false, false, false},
                {1, 4, false, false, false, true, false, true},
                {5, 8, false, false, false, false, false, true},
                {9, 9, false, true, false, true, true, true},
                {10, 14, true, true, true, true, true, true}};
    for (const auto& row : rows) {
        for (int iKind = row.iFirstKind; iKind <= row.iLastKind; ++iKind) {
            const VTItemType eKind = static_cast<VTItemType>(iKind);
            EXPECT_EQ(nothing.IsValid(eKind), row.bNothing) << iKind;
            EXPECT_EQ(partOnly.IsValid(eKind), row.bPartOnly) << iKind;
            EXPECT_EQ(indexOnly.IsValid(eKind), row.bIndexOnly) << iKind;
            EXPECT_EQ(indexed.IsValid(eKind), row.bIndexed) << iKind;
            EXPECT_EQ(detailedNoIndex.IsValid(eKind), row.bDetailedNoIndex) << iKind;
            EXPECT_EQ(detailed.IsValid(eKind), row.bDetailed) << iKind;
        }
    }
}

TEST(VTPartItem, IsEqualPassesTheFlagsToThePartInstance) {
    const VTPartItem item(VTPartInstanceID(1, 2, 3, 4), 5, 6);
    const VTPartItem otherThird(VTPartInstanceID(9, 2, 3, 4), 5, 6);
    const VTPartItem otherFourth(VTPartInstanceID(1, 9, 3, 4), 5, 6);
    EXPECT_TRUE(item.IsEqual(otherThird, false, true, false));
    EXPECT_FALSE(item.IsEqual(otherThird, true, true, false));
    EXPECT_TRUE(item.IsEqual(otherFourth, true, false, false));
    EXPECT_FALSE(item.IsEqual(otherFourth, true, true, false));
}

TEST(VTPartItem, WildcardsMatchAnIndexAndIgnoreTheDetail) {
    const VTPartInstanceID instance(1, 2, 3, 4);
    const VTPartItem item(instance, 5, 6);
    const VTPartItem otherIndex(instance, 9, 6);
    const VTPartItem noIndex(instance, -1, 6);
    const VTPartItem otherDetail(instance, 5, 9);
    EXPECT_FALSE(item.IsEqual(otherIndex, true, true, false));
    EXPECT_FALSE(item.IsEqual(otherIndex, true, true, true));
    EXPECT_FALSE(item.IsEqual(noIndex, true, true, false));
    EXPECT_TRUE(item.IsEqual(noIndex, true, true, true));
    EXPECT_TRUE(noIndex.IsEqual(item, true, true, true));
    EXPECT_FALSE(item.IsEqual(otherDetail, true, true, false));
    EXPECT_TRUE(item.IsEqual(otherDetail, true, true, true));
}

TEST(VTResultID, IsNoResultAtFirstAndAfterReset) {
    VTResultID id;
    EXPECT_EQ(id, VT_NO_RESULT_ID);
    EXPECT_EQ(id.iID, -1);
    EXPECT_EQ(id.iSectionID, -1);
    id.Set(3, 7);
    EXPECT_EQ(id, VTResultID(3, 7));
    EXPECT_NE(id, VTResultID(3, 8));
    EXPECT_NE(id, VTResultID(4, 7));
    id.Reset();
    EXPECT_EQ(id, VT_NO_RESULT_ID);
}

TEST(VTResultID, NoResultSortsBeforeEveryValidId) {
    for (const VTResultID& id : {VTResultID(0, -1), VTResultID(0, 0), VTResultID(5, 2), VTResultID(0x7FFFFFFF, 0)}) {
        EXPECT_TRUE(VT_NO_RESULT_ID < id);
        EXPECT_FALSE(id < VT_NO_RESULT_ID);
    }
}

} // namespace
