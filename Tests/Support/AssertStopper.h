#pragma once

#include "Tests/Support/AssertRecorder.h"

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

namespace orvtest {

/// Runs `call` up to its `count`-th failed assertion and returns what failed in order. For calls that would go on to a
/// null pointer or past a buffer. No other recorder may live.
template <typename Call>
std::vector<FailedAssert> assertsUntil(std::size_t count, Call call) {
    AssertRecorder recorder;
    return recorder.takeUntil(count, call);
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
