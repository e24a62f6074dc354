#pragma once

#include "LibCore/rvfExport.h"
#include "OrvCore/Str.h"

namespace orv::ug {

/// The record of one part in a directory. A value.
class ORV_API PartInfo {
public:
    /// The undefined record: id -1, no name.
    PartInfo() = default;
    PartInfo(int id, const Str& name);

    /// Unique within a geometry; -1 on an undefined record.
    int id() const;
    Str name() const;

private:
    int m_id = -1;
    Str m_name;
};

} // namespace orv::ug
