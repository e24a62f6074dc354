#pragma once

#include "LibCore/rvfExport.h"
#include "OrvCore/Str.h"

namespace orv::ug {

/// The record of the simulation that a data source holds. A value.
class ORV_API SimulationInfo {
public:
    /// The undefined record: no file.
    SimulationInfo() = default;
    explicit SimulationInfo(const Str& filename, const Str& title = Str());

    /// The primary file, as it was named when it was opened.
    Str filename() const;
    /// The heading that the file bears; often empty.
    Str title() const;

private:
    Str m_filename;
    Str m_title;
};

} // namespace orv::ug
