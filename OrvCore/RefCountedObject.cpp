#include "OrvCore/RefCountedObject.h"

#include "LibCore/rvfAssert.h"

namespace orv {
namespace {

// Compilers take `this` for never null and drop a plain test, yet a call through a null pointer does arrive here.
void assertThis(const RefCountedObject* object, int line) {
    const RefCountedObject* volatile pointer = object;
    if (!pointer) {
        rvf::Assert::handleFailedAssert(RVF_SOURCE_PATH, line, "this", nullptr);
    }
}

} // namespace

RefCountedObject::RefCountedObject() : m_refCount(0) {}

RefCountedObject::RefCountedObject(const RefCountedObject&) : m_refCount(0) {}

RefCountedObject::~RefCountedObject() = default;

RefCountedObject& RefCountedObject::operator=(const RefCountedObject&) {
    return *this;
}

void RefCountedObject::addRef() const {
    assertThis(this, __LINE__);
    ++m_refCount;
}

void RefCountedObject::release() const {
    assertThis(this, __LINE__);
    RVF_ASSERT(m_refCount > 0);
    if (--m_refCount == 0) {
        delete this;
    }
}

int RefCountedObject::refCount() const {
    return m_refCount;
}

} // namespace orv
