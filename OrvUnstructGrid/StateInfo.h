#pragma once

#include "LibCore/rvfExport.h"
#include "OrvCore/Defines.h"
#include "OrvCore/Str.h"

namespace orv::ug {

/// The record of one state (a time step, an eigenfrequency, a load case) in a directory. A value.
class ORV_API StateInfo {
public:
    /// What the reference value of a state measures.
    enum ReferenceType {
        TIME = 0,      ///< Time, in the time unit of the analysis.
        FREQUENCY = 1, ///< Frequency, in cycles per time unit.
        LOAD_CASE = 2  ///< A load case's number or load factor.
    };

    /// The undefined record: id -1, no name, type TIME, no reference value.
    StateInfo() = default;
    StateInfo(int id, const Str& name, ReferenceType referenceType, double referenceValue);

    /// Unique within a directory; -1 on an undefined record.
    int id() const;
    Str name() const;
    ReferenceType referenceType() const;
    /// UNDEFINED_DOUBLE when the state has none.
    double referenceValue() const;

private:
    int m_id = -1;
    Str m_name;
    ReferenceType m_referenceType = TIME;
    double m_referenceValue = UNDEFINED_DOUBLE;
};

} // namespace orv::ug
