#include "LibCore/rvfObject.h"

#include "Tests/Support/AssertRecorder.h"

#include <gtest/gtest.h>

#include <csignal>

using orvtest::AssertRecorder;
using orvtest::FailedAssert;
using rvf::Object;

namespace {

class Watched : public Object {
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
__attribute__((noinline, no_sanitize("undefined"))) void callThroughNull(void (Object::*operation)() const) {
    Object* volatile object = nullptr;
    (object->*operation)();
}

TEST(Object, DiesWithItsLastHolder) {
    bool isAlive = false;
    const Object* object = new Watched(&isAlive);
    EXPECT_EQ(object->refCount(), 0);
    object->addRef();
    object->addRef();
    EXPECT_EQ(object->refCount(), 2);
    object->release();
    EXPECT_TRUE(isAlive);
    object->release();
    EXPECT_FALSE(isAlive);
}

TEST(Object, CopyHasNoHolders) {
    Object object;
    object.addRef();
    Object copy = object;
    EXPECT_EQ(copy.refCount(), 0);
    EXPECT_EQ(object.refCount(), 1);
}

TEST(Object, AssignmentKeepsTheHolders) {
    Object object;
    Object other;
    object.addRef();
    other.addRef();
    other.addRef();
    object = other;
    EXPECT_EQ(object.refCount(), 1);
    EXPECT_EQ(other.refCount(), 2);
}

TEST(Object, ReleaseTooManyIsAFailureAndKeepsTheObject) {
    AssertRecorder recorder;
    Object object;
    object.release();
    EXPECT_EQ(recorder.take(), (std::vector<FailedAssert>{{"LibCore/rvfObject", "m_refCount > 0", std::nullopt}}));
    EXPECT_EQ(object.refCount(), -1);
}

TEST(ObjectDeathTest, CallsThroughNullAreReported) {
    for (auto operation : {&Object::addRef, &Object::release}) {
        EXPECT_EXIT(callThroughNull(operation), testing::KilledBySignal(SIGABRT),
                    "LibCore/rvfObject:[0-9]+: assertion failed: this\n");
    }
}

} // namespace
