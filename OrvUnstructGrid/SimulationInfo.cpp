#include "OrvUnstructGrid/SimulationInfo.h"

namespace orv::ug {

SimulationInfo::SimulationInfo(const Str& filename, const Str& title) : m_filename(filename), m_title(title) {}

Str SimulationInfo::filename() const {
    return m_filename;
}

Str SimulationInfo::title() const {
    return m_title;
}

} // namespace orv::ug
