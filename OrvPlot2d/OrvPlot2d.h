#pragma once

/// @page OrvPlot2d OrvPlot2d: curves in plots
///
/// Namespace `orv::plt`. Knows nothing of models and results: a curve is two lists of numbers with a name.
///
/// - Curve is a line through points; values that are not defined leave gaps in it.
/// - OverlayPlot lays several curves over each other in one pair of axes.
/// - AxisSettings says what stands at these axes, and how they run.
/// - PlotWriter makes pictures of plots, and tables.

#include "OrvPlot2d/AxisSettings.h"
#include "OrvPlot2d/Curve.h"
#include "OrvPlot2d/OverlayPlot.h"
#include "OrvPlot2d/PlotWriter.h"
