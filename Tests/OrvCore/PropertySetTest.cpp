#include "OrvCore/PropertySet.h"

#include "OrvCore/PtrRef.h"

#include <gtest/gtest.h>

using orv::PropertySet;
using orv::PropertyValue;
using orv::Str;
using orv::Vec3d;

namespace {

TEST(PropertySet, StartsWithItsClassTypeAlone) {
    PropertySet set("Camera");
    EXPECT_EQ(set.classType(), "Camera");
    EXPECT_EQ(set.count(), 0u);
    EXPECT_TRUE(set.values().empty());
    EXPECT_EQ(set.value("missing"), nullptr);
}

TEST(PropertySet, KeepsEveryKindOfValue) {
    PropertySet set("All");
    set.setValue("int", 7);
    set.setValue("double", 2.5);
    set.setValue("bool", true);
    set.setValue("text", Str("abc"));
    set.setValue("vector", Vec3d(1, 2, 3));
    set.setValue("doubles", std::vector<double>{4, 5});
    EXPECT_EQ(set.count(), 6u);
    EXPECT_EQ(set.valueOr("int", 0), 7);
    EXPECT_EQ(set.valueOr("double", 0.0), 2.5);
    EXPECT_EQ(set.valueOr("bool", false), true);
    EXPECT_EQ(set.valueOr("text", Str()), "abc");
    EXPECT_EQ(set.valueOr("vector", Vec3d()), Vec3d(1, 2, 3));
    EXPECT_EQ(set.valueOr("doubles", std::vector<double>()), (std::vector<double>{4, 5}));
    ASSERT_NE(set.value("int"), nullptr);
    EXPECT_EQ(*set.value("int"), PropertyValue(7));
}

TEST(PropertySet, ALiteralIsAText) {
    PropertySet set("Type");
    set.setValue("key", "literal");
    EXPECT_EQ(set.valueOr("key", Str()), "literal");
}

TEST(PropertySet, DefaultComesBackForAMissingKeyAndForAnotherKind) {
    PropertySet set("Type");
    set.setValue("int", 7);
    EXPECT_EQ(set.valueOr("missing", 3), 3);
    EXPECT_EQ(set.valueOr("int", 2.5), 2.5);
    EXPECT_EQ(set.valueOr("int", true), true);
    EXPECT_EQ(set.valueOr("Int", 3), 3);
}

TEST(PropertySet, SettingReplacesValueAndKind) {
    PropertySet set("Type");
    set.setValue("key", 1);
    set.setValue("key", 2.5);
    EXPECT_EQ(set.count(), 1u);
    EXPECT_EQ(set.valueOr("key", 0.0), 2.5);
}

TEST(PropertySet, RemovesByKey) {
    PropertySet set("Type");
    set.setValue("key", 1);
    EXPECT_FALSE(set.remove("other"));
    EXPECT_EQ(set.count(), 1u);
    EXPECT_TRUE(set.remove("key"));
    EXPECT_EQ(set.count(), 0u);
    EXPECT_FALSE(set.remove("key"));
}

TEST(PropertySet, ValuesAreInTheOrderOfTheirKeys) {
    PropertySet set("Type");
    set.setValue("b", 1);
    set.setValue("a", 2);
    set.setValue("C", 3);
    std::string keys;
    for (const auto& [key, value] : set.values()) {
        keys += key.toStdString();
    }
    EXPECT_EQ(keys, "Cab");
}

TEST(PropertySet, CopiesAreIndependentAndUnheld) {
    orv::PtrRef<PropertySet> set = new PropertySet("Type");
    set->setValue("key", 1);
    PropertySet copy = *set;
    copy.setValue("key", 2);
    EXPECT_EQ(copy.refCount(), 0);
    EXPECT_EQ(copy.classType(), "Type");
    EXPECT_EQ(set->valueOr("key", 0), 1);
}

} // namespace
