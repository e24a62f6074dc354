#pragma once

#include <cstdlib>
#include <optional>
#include <string>

namespace orvtest {

/// An environment variable's value while it lives.
class EnvironmentVariable {
public:
    EnvironmentVariable(const char* name, const std::string& value) : m_name(name) {
        if (const char* earlier = std::getenv(name)) {
            m_earlier = earlier;
        }
        set(value);
    }

    ~EnvironmentVariable() {
        if (m_earlier) {
            set(*m_earlier);
        } else {
            ::unsetenv(m_name);
        }
    }

    EnvironmentVariable(const EnvironmentVariable&) = delete;
    EnvironmentVariable& operator=(const EnvironmentVariable&) = delete;

    void set(const std::string& value) const {
        ::setenv(m_name, value.c_str(), 1);
    }

private:
    const char* m_name;
    std::optional<std::string> m_earlier;
};

} // namespace orvtest
