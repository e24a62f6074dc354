#pragma once

#include "LibCore/rvfAssert.h"

#include <optional>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

namespace orvtest {

/// One failed assertion. No text is not an empty text.
struct FailedAssert {
    std::string file;
    std::optional<std::string> expression;
    std::optional<std::string> message;

    bool operator==(const FailedAssert&) const = default;
};

inline std::ostream& operator<<(std::ostream& out, const FailedAssert& failed) {
    return out << failed.file << ": \"" << failed.expression.value_or("(none)") << "\", \""
               << failed.message.value_or("(none)") << '"';
}

/// Collects failed assertions while it lives and lets the program go on behind them. One at a time.
class AssertRecorder {
public:
    AssertRecorder() : m_earlierAction(rvf::Assert::failedAssertAction()) {
        records().clear();
        rvf::Assert::setFailedAssertAction(rvf::Assert::CONTINUE);
        rvf::Assert::setFailedAssertObserver(&AssertRecorder::record);
    }

    ~AssertRecorder() {
        rvf::Assert::setFailedAssertObserver(nullptr);
        rvf::Assert::setFailedAssertAction(m_earlierAction);
    }

    AssertRecorder(const AssertRecorder&) = delete;
    AssertRecorder& operator=(const AssertRecorder&) = delete;

    /// What failed since construction or the last take(), in order.
    std::vector<FailedAssert> take() {
        return std::exchange(records(), {});
    }

private:
    static std::vector<FailedAssert>& records() {
        static std::vector<FailedAssert> list;
        return list;
    }

    static void record(const char* file, int, const char* expression, const char* message) {
        auto text = [](const char* chars) { return chars ? std::optional<std::string>(chars) : std::nullopt; };
        records().push_back({file, text(expression), text(message)});
    }

    rvf::Assert::FailedAction m_earlierAction;
};

} // namespace orvtest
