#pragma once

#include "OrvCore/Vec3d.h"

#include <string>
#include <vector>

namespace orvapp {

/// One curve of a plot.
struct CurveRow {
    std::string name;
    std::vector<double> x;
    std::vector<double> y;             ///< UNDEFINED_DOUBLE where there is no value.
    std::vector<orv::Vec3d> path = {}; ///< The way that x is measured along; empty when x measures something else.
};

/// What `orvapp history` and `orvapp length` tell.
struct CurvesReport {
    std::string result;
    std::string mapping;
    std::string xTitle; ///< What x measures, such as "Time".
    std::vector<CurveRow> curves;
};

} // namespace orvapp
