#include "OrvCore/RefCountedObject.h"

#include "Tests/Support/AssertRecorder.h"

#include <gtest/gtest.h>

#include <csignal>

using orv::RefCountedObject;
using orvtest::AssertRecorder;
using orvtest::FailedAssert;

namespace {

class Watched : public RefCountedObject {
public:
    explicit Watched(bool* isAlive) : m_isAlive(isAlive) {
        *m_isAlive = true;
    }

    ~Watched() override {
        *m_isAlive = false;
    }

private:
    bool* m_isAlive;
};

// What only a mistaken caller does. The sanitizer would stop the call before it arrives.
__attribute__((noinline, no_sanitize("undefined"))) void callThroughNull(void (RefCountedObject::*operation)() const) {
    RefCountedObject* volatile object = nullptr;
    (object->*operation)();
}

TEST(RefCountedObject, DiesWithItsLastHolder) {
    bool isAlive = false;
    const RefCountedObject* object = new Watched(&isAlive);
    EXPECT_EQ(object->refCount(), 0);
    object->addRef();
    object->addRef();
    EXPECT_EQ(object->refCount(), 2);
    object->release();
    EXPECT_TRUE(isAlive);
    object->release();
    EXPECT_FALSE(isAlive);
}

TEST(RefCountedObject, CopyHasNoHolders) {
    RefCountedObject object;
    object.addRef();
    RefCountedObject copy = object;
    EXPECT_EQ(copy.refCount(), 0);
    EXPECT_EQ(object.refCount(), 1);
}

TEST(RefCountedObject, AssignmentKeepsTheHolders) {
    RefCountedObject object;
    RefCountedObject other;
    object.addRef();
    other.addRef();
    other.addRef();
    object = other;
    EXPECT_EQ(object.refCount(), 1);
    EXPECT_EQ(other.refCount(), 2);
}

TEST(RefCountedObject, ReleaseTooManyIsAFailureAndKeepsTheObject) {
    AssertRecorder recorder;
    RefCountedObject object;
    object.release();
    EXPECT_EQ(recorder.take(),
              (std::vector<FailedAssert>{{"OrvCore/RefCountedObject", "m_refCount > 0", std::nullopt}}));
    EXPECT_EQ(object.refCount(), -1);
}

TEST(RefCountedObjectDeathTest, CallsThroughNullAreReported) {
    for (auto operation : {&RefCountedObject::addRef, &RefCountedObject::release}) {
        EXPECT_EXIT(callThroughNull(operation), testing::KilledBySignal(SIGABRT),
                    "OrvCore/RefCountedObject:[0-9]+: assertion failed: this\n");
    }
}

} // namespace
