#include "OrvCore/PropertySetCollection.h"

#include "Tests/Support/AssertRecorder.h"

#include <gtest/gtest.h>

using orv::PropertySet;
using orv::PropertySetCollection;
using orv::PtrRef;
using orvtest::AssertRecorder;
using orvtest::FailedAssert;

namespace {

const std::string unit = "OrvCore/PropertySetCollection";

PropertySet* newSet(const char* classType, int value) {
    auto* set = new PropertySet(classType);
    set->setValue("key", value);
    return set;
}

int valueAt(const PropertySetCollection& collection, size_t index) {
    return collection.propertySet(index)->valueOr("key", -1);
}

TEST(PropertySetCollection, StartsEmpty) {
    PropertySetCollection collection;
    EXPECT_EQ(collection.count(), 0u);
    EXPECT_EQ(collection.find("Type"), nullptr);
}

TEST(PropertySetCollection, KeepsSetsInOrderAndHoldsThem) {
    PtrRef<PropertySet> set = newSet("A", 1);
    {
        PropertySetCollection collection;
        collection.append(set.get());
        collection.append(newSet("B", 2));
        EXPECT_EQ(set->refCount(), 2);
        ASSERT_EQ(collection.count(), 2u);
        EXPECT_EQ(collection.propertySet(0), set.get());
        EXPECT_EQ(valueAt(collection, 1), 2);
    }
    EXPECT_EQ(set->refCount(), 1);
}

TEST(PropertySetCollection, FindsTheFirstOfAClassType) {
    PropertySetCollection collection;
    collection.append(newSet("A", 1));
    collection.append(newSet("B", 2));
    collection.append(newSet("B", 3));
    EXPECT_EQ(collection.find("B"), collection.propertySet(1));
    EXPECT_EQ(collection.find("b"), nullptr);
    const PropertySetCollection& constant = collection;
    EXPECT_EQ(constant.find("A"), constant.propertySet(0));
}

TEST(PropertySetCollection, RemovesByIndex) {
    PropertySetCollection collection;
    PtrRef<PropertySet> middle = newSet("B", 2);
    collection.append(newSet("A", 1));
    collection.append(middle.get());
    collection.append(newSet("C", 3));
    collection.remove(1);
    ASSERT_EQ(collection.count(), 2u);
    EXPECT_EQ(valueAt(collection, 0), 1);
    EXPECT_EQ(valueAt(collection, 1), 3);
    EXPECT_EQ(middle->refCount(), 1);
}

TEST(PropertySetCollection, IndexBeyondTheEndIsAFailure) {
    AssertRecorder recorder;
    PropertySetCollection collection;
    collection.append(newSet("A", 1));
    const std::vector<FailedAssert> failed{{unit, "index < count()", std::nullopt}};
    EXPECT_EQ(collection.propertySet(1), nullptr);
    EXPECT_EQ(recorder.take(), failed);
    EXPECT_EQ(std::as_const(collection).propertySet(1), nullptr);
    EXPECT_EQ(recorder.take(), failed);
    collection.remove(1);
    EXPECT_EQ(recorder.take(), failed);
    EXPECT_EQ(collection.count(), 1u);
}

TEST(PropertySetCollection, NullIsNotAppended) {
    AssertRecorder recorder;
    PropertySetCollection collection;
    collection.append(nullptr);
    EXPECT_EQ(recorder.take(), (std::vector<FailedAssert>{{unit, "set", std::nullopt}}));
    EXPECT_EQ(collection.count(), 0u);
}

TEST(PropertySetCollection, CopyIsDeep) {
    PtrRef<PropertySetCollection> original = new PropertySetCollection;
    original->append(newSet("A", 1));
    original->append(newSet("B", 2));
    PropertySetCollection copy(*original);
    EXPECT_EQ(copy.refCount(), 0);
    ASSERT_EQ(copy.count(), 2u);
    EXPECT_NE(copy.propertySet(0), original->propertySet(0));
    EXPECT_EQ(copy.propertySet(1)->classType(), "B");
    copy.propertySet(0)->setValue("key", 9);
    copy.remove(1);
    EXPECT_EQ(valueAt(*original, 0), 1);
    EXPECT_EQ(original->count(), 2u);
    original->propertySet(0)->setValue("key", 8);
    EXPECT_EQ(valueAt(copy, 0), 9);
}

TEST(PropertySetCollection, CopyOutlivesTheOriginal) {
    PtrRef<PropertySetCollection> original = new PropertySetCollection;
    original->append(newSet("A", 1));
    PtrRef<PropertySetCollection> copy = new PropertySetCollection(*original);
    original = nullptr;
    EXPECT_EQ(valueAt(*copy, 0), 1);
}

} // namespace
