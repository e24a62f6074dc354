#include "Tests/LibUnstructGrid/NewWatch.h"

#include <new>
#include <utility>

namespace {

orvtest::NewWatch* current = nullptr;

void deleted(const void* memory) {
    if (current && memory) {
        current->countDelete();
    }
}

} // namespace

extern "C" {

void* __real__Znwm(std::size_t size);
void __real__ZdlPv(void* memory);
void __real__ZdlPvm(void* memory, std::size_t size);

void* __wrap__Znwm(std::size_t size) {
    if (current) {
        current->countNew(size);
    }
    return __real__Znwm(size);
}

void __wrap__ZdlPv(void* memory) {
    deleted(memory);
    __real__ZdlPv(memory);
}

void __wrap__ZdlPvm(void* memory, std::size_t size) {
    deleted(memory);
    __real__ZdlPvm(memory, size);
}
}

namespace orvtest {

NewWatch::NewWatch(int failingNew) : m_failingNew(failingNew) {
    m_sizes.reserve(100);
    current = this;
}

NewWatch::~NewWatch() {
    current = nullptr;
}

std::vector<std::size_t> NewWatch::stop() {
    current = nullptr;
    return std::move(m_sizes);
}

void NewWatch::countNew(std::size_t size) {
    if (m_sizes.size() < m_sizes.capacity()) {
        m_sizes.push_back(size); // There is room: this asks for nothing.
    }
    if (m_failingNew > 0 && --m_failingNew == 0) {
        throw std::bad_alloc();
    }
}

} // namespace orvtest
