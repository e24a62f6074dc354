#pragma once

#include "LibCore/rvfLogDestination.h"
#include "LibCore/rvfLogManager.h"

namespace orvapp {

/// Keeps the library's own log lines off the screen while it lives: what they tell, the command says in its own words.
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

private:
    void write(int, const rvf::String&, const rvf::String&, const rvf::CodeLocation&) override {}

    rvf::LogDestination* m_earlier;
};

} // namespace orvapp
