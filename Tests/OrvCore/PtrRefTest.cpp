#include "OrvCore/PtrRef.h"

#include "OrvCore/RefCountedObject.h"

#include <gtest/gtest.h>

#include <csignal>
#include <stdexcept>
#include <type_traits>
#include <vector>

using orv::PtrRef;
using orv::RefCountedObject;

namespace {

class Derived : public RefCountedObject {};

static_assert(!std::is_convertible_v<PtrRef<RefCountedObject>, int>, "a holder takes part in no arithmetic");
static_assert(!std::is_convertible_v<PtrRef<RefCountedObject>, PtrRef<Derived>>,
              "a holder of the base gives none of the derived");
static_assert(std::is_nothrow_destructible_v<PtrRef<RefCountedObject>>);

TEST(PtrRef, StartsEmpty) {
    PtrRef<RefCountedObject> empty;
    EXPECT_EQ(empty.get(), nullptr);
    EXPECT_FALSE(empty ? true : false);
    EXPECT_TRUE(!empty);
    EXPECT_TRUE(empty == nullptr);
}

TEST(PtrRef, HoldsOneReference) {
    RefCountedObject* object = new RefCountedObject;
    object->addRef();
    {
        PtrRef<RefCountedObject> holder(object);
        EXPECT_EQ(object->refCount(), 2);
        EXPECT_EQ(holder.get(), object);
        EXPECT_EQ(holder->refCount(), 2);
        EXPECT_EQ(&*holder, object);
        EXPECT_TRUE(holder ? true : false);
        EXPECT_TRUE(holder != nullptr);
    }
    EXPECT_EQ(object->refCount(), 1);
    object->release();
}

TEST(PtrRef, CopiesShareAndMovesHandOver) {
    PtrRef<RefCountedObject> first = new RefCountedObject;
    PtrRef<RefCountedObject> copy = first;
    EXPECT_EQ(first->refCount(), 2);
    PtrRef<RefCountedObject> moved = std::move(copy);
    EXPECT_EQ(first->refCount(), 2);
    EXPECT_TRUE(copy == nullptr);
    EXPECT_TRUE(moved == first);
}

TEST(PtrRef, AssignmentLetsTheOldObjectGo) {
    PtrRef<RefCountedObject> first = new RefCountedObject;
    PtrRef<RefCountedObject> second = new RefCountedObject;
    PtrRef<RefCountedObject> holder = first;
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
    EXPECT_TRUE(holder == nullptr);
}

TEST(PtrRef, SelfAssignmentKeepsTheObject) {
    PtrRef<RefCountedObject> holder = new RefCountedObject;
    const PtrRef<RefCountedObject>& self = holder;
    holder = self;
    EXPECT_EQ(holder->refCount(), 1);
    holder = holder.get();
    EXPECT_EQ(holder->refCount(), 1);
}

TEST(PtrRef, HolderOfADerivedClassGivesOneOfItsBase) {
    PtrRef<Derived> derived = new Derived;
    PtrRef<RefCountedObject> base = derived;
    EXPECT_EQ(derived->refCount(), 2);
    EXPECT_TRUE(base == derived);
    base = nullptr;
    base = derived;
    EXPECT_EQ(derived->refCount(), 2);
}

TEST(PtrRef, ComparesByObject) {
    PtrRef<RefCountedObject> a = new RefCountedObject;
    PtrRef<RefCountedObject> b = new RefCountedObject;
    EXPECT_FALSE(a == b); // Both are "true" as a condition.
    EXPECT_TRUE(a != b);
    EXPECT_TRUE(a == a.get());
    EXPECT_TRUE(a.get() == a);
    EXPECT_TRUE(a != b.get());
    const RefCountedObject* constant = a.get();
    EXPECT_TRUE(a == constant);
}

TEST(PtrRef, SwapChangesNoCount) {
    PtrRef<RefCountedObject> a = new RefCountedObject;
    PtrRef<RefCountedObject> b;
    RefCountedObject* object = a.get();
    a.swap(b);
    EXPECT_TRUE(a == nullptr);
    EXPECT_TRUE(b == object);
    EXPECT_EQ(object->refCount(), 1);
}

// Compiles although the held class is not known yet.
class Later;

class Owner {
public:
    Owner();
    ~Owner();
    const Later* later() const {
        return m_later.get();
    }

private:
    PtrRef<Later> m_later;
};

class Later : public RefCountedObject {};

Owner::Owner() : m_later(new Later) {}

Owner::~Owner() = default;

TEST(PtrRef, MayBeDeclaredBeforeItsClassIsKnown) {
    EXPECT_EQ(Owner().later()->refCount(), 1);
}

TEST(PtrRef, LastHolderInAListDeletes) {
    std::vector<PtrRef<RefCountedObject>> list;
    PtrRef<RefCountedObject> object = new RefCountedObject;
    for (int i = 0; i < 100; ++i) {
        list.push_back(object);
    }
    EXPECT_EQ(object->refCount(), 101);
    list.erase(list.begin(), list.begin() + 40);
    EXPECT_EQ(object->refCount(), 61);
    list.clear();
    EXPECT_EQ(object->refCount(), 1);
}

struct Throwing {
    void addRef() const {}
    void release() const {
        throw std::runtime_error("release");
    }
};

TEST(PtrRefDeathTest, ExceptionOutOfReleaseEndsTheProcess) {
    EXPECT_EXIT(
        {
            Throwing object;
            PtrRef<Throwing> holder(&object);
        },
        testing::KilledBySignal(SIGABRT), "terminate");
}

} // namespace
