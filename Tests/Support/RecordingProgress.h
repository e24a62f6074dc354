#pragma once

#include "OrvUnstructGrid/Progress.h"

#include <algorithm>
#include <functional>
#include <utility>
#include <vector>

namespace orvtest {

/// Keeps all that it is told.
class RecordingProgress : public orv::ug::Progress {
public:
    void setPercent(int percent) override {
        percents.push_back(percent);
    }

    /// What has been told since the last time.
    std::vector<int> take() {
        return std::exchange(percents, {});
    }

    std::vector<int> percents;
};

/// Whether no percent is told twice, none is smaller than one before, and all are from 0 to 100.
inline bool isRising(const std::vector<int>& percents) {
    return !percents.empty() && percents.front() >= 0 && percents.back() <= 100 &&
           std::adjacent_find(percents.begin(), percents.end(), std::greater_equal<>()) == percents.end();
}

} // namespace orvtest
