#include "LibCore/rvfRef.h"

#include "LibCore/rvfObject.h"

#include <gtest/gtest.h>

#include <csignal>
#include <stdexcept>
#include <type_traits>

using rvf::Object;
using rvf::ref;

namespace {

class Derived : public Object {};

static_assert(!std::is_convertible_v<ref<Object>, int>, "a holder takes part in no arithmetic");
static_assert(!std::is_convertible_v<ref<Object>, ref<Derived>>, "a holder of the base gives none of the derived");
static_assert(std::is_nothrow_destructible_v<ref<Object>>);

TEST(Ref, StartsEmpty) {
    ref<Object> empty;
    EXPECT_TRUE(empty.isNull());
    EXPECT_FALSE(empty.notNull());
    EXPECT_EQ(empty.get(), nullptr);
    EXPECT_EQ(empty.p(), nullptr);
    EXPECT_FALSE(empty ? true : false);
    EXPECT_TRUE(!empty);
    EXPECT_TRUE(empty == nullptr);
}

TEST(Ref, HoldsOneReference) {
    Object* object = new Object;
    object->addRef();
    {
        ref<Object> holder(object);
        EXPECT_EQ(object->refCount(), 2);
        EXPECT_TRUE(holder.notNull());
        EXPECT_FALSE(holder.isNull());
        EXPECT_EQ(holder.get(), object);
        EXPECT_EQ(holder.p(), object);
        EXPECT_EQ(holder->refCount(), 2);
        EXPECT_EQ(&*holder, object);
        EXPECT_TRUE(holder ? true : false);
        EXPECT_TRUE(holder != nullptr);
    }
    EXPECT_EQ(object->refCount(), 1);
    object->release();
}

TEST(Ref, CopiesShareAndMovesHandOver) {
    ref<Object> first = new Object;
    ref<Object> copy = first;
    EXPECT_EQ(first->refCount(), 2);
    ref<Object> moved = std::move(copy);
    EXPECT_EQ(first->refCount(), 2);
    EXPECT_TRUE(copy.isNull());
    EXPECT_TRUE(moved == first);
}

TEST(Ref, AssignmentLetsTheOldObjectGo) {
    ref<Object> first = new Object;
    ref<Object> second = new Object;
    ref<Object> holder = first;
    holder = second;
    EXPECT_EQ(first->refCount(), 1);
    EXPECT_EQ(second->refCount(), 2);
    holder = first.get();
    EXPECT_EQ(first->refCount(), 2);
    EXPECT_EQ(second->refCount(), 1);
    holder = std::move(second);
    EXPECT_EQ(first->refCount(), 1);
    EXPECT_EQ(holder->refCount(), 1);
    holder = nullptr;
    EXPECT_TRUE(holder.isNull());
}

TEST(Ref, SelfAssignmentKeepsTheObject) {
    ref<Object> holder = new Object;
    const ref<Object>& self = holder;
    holder = self;
    EXPECT_EQ(holder->refCount(), 1);
    holder = holder.get();
    EXPECT_EQ(holder->refCount(), 1);
}

TEST(Ref, HolderOfADerivedClassGivesOneOfItsBase) {
    ref<Derived> derived = new Derived;
    ref<Object> base = derived;
    EXPECT_EQ(derived->refCount(), 2);
    EXPECT_TRUE(base == derived);
    base = nullptr;
    base = derived;
    EXPECT_EQ(derived->refCount(), 2);
}

TEST(Ref, ComparesByObject) {
    ref<Object> a = new Object;
    ref<Object> b = new Object;
    EXPECT_FALSE(a == b); // Both are "true" as a condition.
    EXPECT_TRUE(a != b);
    EXPECT_TRUE(a == a.get());
    EXPECT_TRUE(a.get() == a);
    EXPECT_TRUE(a != b.get());
    const Object* constant = a.get();
    EXPECT_TRUE(a == constant);
}

TEST(Ref, SwapChangesNoCount) {
    ref<Object> a = new Object;
    ref<Object> b;
    Object* object = a.get();
    a.swap(b);
    EXPECT_TRUE(a.isNull());
    EXPECT_TRUE(b == object);
    EXPECT_EQ(object->refCount(), 1);
}

struct Throwing {
    void addRef() const {}
    void release() const {
        throw std::runtime_error("release");
    }
};

TEST(RefDeathTest, ExceptionOutOfReleaseEndsTheProcess) {
    EXPECT_EXIT(
        {
            Throwing object;
            ref<Throwing> holder(&object);
        },
        testing::KilledBySignal(SIGABRT), "terminate");
}

} // namespace
