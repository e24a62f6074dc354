#include "LibCore/rvfObject.h"

#include "LibCore/rvfAssert.h"

namespace rvf {
namespace {

// Compilers take `this` for never null and drop a plain test, yet a call through a null pointer does arrive here. The
// report in front of the crash that follows is worth the detour over memory.
void assertThis(const Object* object, int line) {
    const Object* volatile pointer = object;
    if (!pointer) {
        Assert::handleFailedAssert(RVF_SOURCE_PATH, line, "this", nullptr);
    }
}

} // namespace

Object::Object() : m_refCount(0) {}

Object::Object(const Object&) : m_refCount(0) {}

Object::~Object() = default;

Object& Object::operator=(const Object&) {
    return *this;
}

void Object::addRef() const {
    assertThis(this, __LINE__);
    ++m_refCount;
}

void Object::release() const {
    assertThis(this, __LINE__);
    RVF_ASSERT(m_refCount > 0);
    if (--m_refCount == 0) {
        delete this;
    }
}

int Object::refCount() const {
    return m_refCount;
}

} // namespace rvf
