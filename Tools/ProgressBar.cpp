#include "Tools/ProgressBar.h"

#include "Tools/DisplayText.h"

#include <utility>

#include <unistd.h>

namespace orvapp {

namespace {

constexpr int BAR_WIDTH = 30;
constexpr const char* ERASED_LINE = "\r\x1b[K";

} // namespace

ProgressBar::ProgressBar(std::string label, int descriptor, std::chrono::milliseconds delay)
    : m_label(std::move(label)), m_descriptor(descriptor), m_isTerminal(isatty(descriptor) == 1),
      m_firstDrawing(std::chrono::steady_clock::now() + delay) {}

ProgressBar::~ProgressBar() {
    if (m_percentShown >= 0) {
        draw(ERASED_LINE);
    }
}

void ProgressBar::setPercent(int percent) {
    if (!m_isTerminal || percent == m_percentShown || std::chrono::steady_clock::now() < m_firstDrawing) {
        return;
    }
    m_percentShown = percent;
    const int filled = BAR_WIDTH * percent / 100;
    const std::string number = std::to_string(percent);
    draw(ERASED_LINE + printable(m_label) + " [" + std::string(std::size_t(filled), '#') +
         std::string(std::size_t(BAR_WIDTH - filled), '.') + "] " + std::string(3 - number.size(), ' ') + number +
         " %");
}

void ProgressBar::draw(const std::string& text) const {
    // A bar that cannot be drawn is no reason to stop the work.
    [[maybe_unused]] const ssize_t written = write(m_descriptor, text.data(), text.size());
}

} // namespace orvapp
