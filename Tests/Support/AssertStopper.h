#pragma once

#include "Tests/Support/AssertRecorder.h"

#include <cstddef>

namespace orvtest {

/// Runs `call` and leaves it, by an exception, at the `count`-th failed assertion; returns what failed in order. For
/// calls that would go on to a null pointer or past a buffer.
template <typename Call>
std::vector<FailedAssert> assertsUntil(std::size_t count, Call call) {
    struct Left {};
    static std::vector<FailedAssert> seen;
    static std::size_t limit;
    seen.clear();
    limit = count;
    AssertRecorder continues;
    rvf::Assert::setFailedAssertObserver([](const char* file, int, const char* expression, const char* message) {
        auto text = [](const char* chars) { return chars ? std::optional<std::string>(chars) : std::nullopt; };
        seen.push_back({file, text(expression), text(message)});
        if (seen.size() == limit) {
            throw Left();
        }
    });
    try {
        call();
    } catch (const Left&) {
    }
    return std::move(seen);
}

/// The expected record of assertions without a message that fail one after the other in one source.
inline std::vector<FailedAssert> failedIn(const std::string& source, std::vector<std::string> expressions) {
    std::vector<FailedAssert> list;
    for (std::string& expression : expressions) {
        list.push_back({source, std::move(expression), std::nullopt});
    }
    return list;
}

} // namespace orvtest
