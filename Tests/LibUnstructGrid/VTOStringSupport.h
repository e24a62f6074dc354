#pragma once

#include "LibUnstructGrid/VTOString.h"
#include "Tests/Support/AssertRecorder.h"

#include <clocale>
#include <initializer_list>
#include <string>
#include <vector>

namespace orvtest {

/// The characters, for comparison and for a readable message.
inline std::wstring text(const VTString& sText) {
    return ~sText;
}

/// What a recorder takes when these tests failed in LibUnstructGrid/`unit`, in this order.
inline std::vector<FailedAssert> failedIn(const std::string& unit, std::initializer_list<const char*> expressions) {
    std::vector<FailedAssert> list;
    for (const char* expression : expressions) {
        list.push_back({"LibUnstructGrid/" + unit, expression, std::nullopt});
    }
    return list;
}

/// The process's locale while it lives.
class ScopedLocale {
public:
    explicit ScopedLocale(const char* name) : m_earlier(std::setlocale(LC_ALL, nullptr)) {
        m_isSet = std::setlocale(LC_ALL, name) != nullptr;
    }

    ~ScopedLocale() {
        std::setlocale(LC_ALL, m_earlier.c_str());
    }

    ScopedLocale(const ScopedLocale&) = delete;
    ScopedLocale& operator=(const ScopedLocale&) = delete;

    bool isSet() const {
        return m_isSet;
    }

private:
    std::string m_earlier;
    bool m_isSet;
};

/// The two locales that every installation has.
inline constexpr const char* BOTH_LOCALES[] = {"C", "C.UTF-8"};

} // namespace orvtest
