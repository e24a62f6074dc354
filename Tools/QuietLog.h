#pragma once

#include "LibCore/rvfLogDestination.h"
#include "LibCore/rvfLogManager.h"

#include <cstddef>

namespace orvapp {

/// Keeps the library's own log lines off the screen while it lives, and counts them: what they tell, the command says
/// in its own words.
class QuietLog : private rvf::LogDestination {
public:
    QuietLog() : m_earlier(rvf::LogManager::destination()) {
        rvf::LogManager::setDestination(this);
    }

    ~QuietLog() override {
        rvf::LogManager::setDestination(m_earlier);
    }

    QuietLog(const QuietLog&) = delete;
    QuietLog& operator=(const QuietLog&) = delete;

    std::size_t count() const {
        return m_count;
    }

private:
    void write(int, const rvf::String&, const rvf::String&, const rvf::CodeLocation&) override {
        ++m_count;
    }

    rvf::LogDestination* m_earlier;
    std::size_t m_count = 0;
};

} // namespace orvapp
