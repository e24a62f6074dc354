#pragma once

#include "OrvUnstructGrid/Progress.h"

#include <chrono>
#include <string>

namespace orvapp {

/// A bar on a terminal that shows how far long work has come, and leaves nothing behind.
///
/// Nothing is drawn before the work has gone on for `delay`, nor at all where the descriptor is not a terminal.
class ProgressBar {
public:
    explicit ProgressBar(std::string label, int descriptor = 2,
                         std::chrono::milliseconds delay = std::chrono::milliseconds(500));
    /// Erases the bar.
    ~ProgressBar();

    ProgressBar(const ProgressBar&) = delete;
    ProgressBar& operator=(const ProgressBar&) = delete;

    /// @param percent 0 to 100
    void setPercent(int percent);

private:
    void draw(const std::string& text) const;

    std::string m_label;
    int m_descriptor;
    bool m_isTerminal;
    std::chrono::steady_clock::time_point m_firstDrawing;
    int m_percentShown = -1;
};

/// What the library tells of how far it has come, as a bar.
class BarProgress : public orv::ug::Progress {
public:
    explicit BarProgress(const std::string& label) : m_bar(label) {}

    void setPercent(int percent) override {
        m_bar.setPercent(percent);
    }

private:
    ProgressBar m_bar;
};

} // namespace orvapp
