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

    /// Runs `call` up to its `count`-th failed assertion, for calls that have no defined outcome behind it. Gives all
    /// that has failed since the last take().
    template <class Call>
    std::vector<FailedAssert> takeUntil(size_t count, Call call) {
        endingRecord() = records().size() + count;
        try {
            call();
        } catch (const Ending&) {
        }
        endingRecord() = 0;
        return take();
    }

private:
    struct Ending {};

    static std::vector<FailedAssert>& records() {
        static std::vector<FailedAssert> list;
        return list;
    }

    /// The number of records that ends a call; 0 for none.
    static size_t& endingRecord() {
        static size_t count = 0;
        return count;
    }

    static void record(const char* file, int, const char* expression, const char* message) {
        auto text = [](const char* chars) { return chars ? std::optional<std::string>(chars) : std::nullopt; };
        records().push_back({file, text(expression), text(message)});
        if (records().size() == endingRecord()) {
            throw Ending();
        }
    }

    rvf::Assert::FailedAction m_earlierAction;
};

} // namespace orvtest
