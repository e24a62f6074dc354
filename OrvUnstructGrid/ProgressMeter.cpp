#include "OrvUnstructGrid/ProgressMeter.h"

#include "OrvUnstructGrid/Progress.h"

#include <algorithm>
#include <cmath>

namespace orv::ug {

void ProgressMeter::setProgress(Progress* progress) {
    m_progress = progress;
}

Progress* ProgressMeter::progress() const {
    return m_progress;
}

void ProgressMeter::tell(double fraction) {
    if (!m_progress || !m_isAtWork || std::isnan(fraction)) {
        return;
    }
    const double ofAll = m_begin + (m_end - m_begin) * std::clamp(fraction, 0.0, 1.0);
    const int percent = std::min(int(100.0 * ofAll), 99);
    if (percent > m_percent) {
        m_percent = percent;
        m_progress->setPercent(percent);
    }
}

ProgressMeter::Work::Work(ProgressMeter* meter) : m_meter(meter->m_isAtWork ? nullptr : meter) {
    if (m_meter) {
        m_meter->m_isAtWork = true;
        m_meter->m_begin = 0.0;
        m_meter->m_end = 1.0;
        m_meter->m_percent = -1;
        m_meter->tell(0.0);
    }
}

ProgressMeter::Work::~Work() {
    if (m_meter) {
        m_meter->m_isAtWork = false;
    }
}

void ProgressMeter::Work::finish() {
    if (m_meter && m_meter->m_progress) {
        m_meter->m_progress->setPercent(100);
    }
}

ProgressMeter::Step::Step(ProgressMeter* meter, double from, double to) : m_meter(meter) {
    if (m_meter) {
        m_outerBegin = m_meter->m_begin;
        m_outerEnd = m_meter->m_end;
        const double size = m_outerEnd - m_outerBegin;
        m_meter->m_begin = m_outerBegin + from * size;
        m_meter->m_end = m_outerBegin + to * size;
        m_meter->tell(0.0);
    }
}

ProgressMeter::Step::~Step() {
    if (m_meter) {
        m_meter->m_begin = m_outerBegin;
        m_meter->m_end = m_outerEnd;
    }
}

} // namespace orv::ug
