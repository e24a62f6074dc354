#pragma once

#include "LibCore/rvfExport.h"

#include <span>
#include <vector>

namespace orv::ug {

/// The values of one scalar result at one node or element: one of a result PER_NODE or PER_ELEMENT, and one for each of
/// the element's nodes or surfaces of a result PER_ELEMENT_NODE or PER_ELEMENT_SURFACE, none for an element without
/// surfaces.
class ORV_API ResultsQueryResult {
public:
    explicit ResultsQueryResult(std::vector<double> subItemScalars);

    /// In the order of ElementType's nodes or surfaces. A missing one is UNDEFINED_DOUBLE.
    std::span<const double> subItemScalars() const;

    /// The arithmetic mean of the defined values, summed in their order; a single one is given bit by bit.
    /// UNDEFINED_DOUBLE when none is defined. A NaN is a defined value and makes the mean one.
    double averageSubItemScalar() const;

private:
    std::vector<double> m_subItemScalars;
};

} // namespace orv::ug
