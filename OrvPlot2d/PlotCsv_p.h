#pragma once

#include <string>

namespace orv::plt {

class OverlayPlot;

/// The curves of a plot as CSV in UTF-8: a line with names, then one line for each point, each ended by a line feed.
///
/// When all curves have the same x values, these are the first column and each curve is one more; otherwise each curve
/// has two columns, its x values and its y values, and fields behind its last point are empty. x columns are named by
/// the title of the x axis, or "x"; y columns by the name of their curve, with the title of the y axis behind it where
/// that says something else. Fields are quoted by RFC 4180 where they need it. A number reads back as the same value;
/// an undefined one is an empty field.
std::string csvOf(const OverlayPlot& plot);

} // namespace orv::plt
