#pragma once

#include "Tools/CurvesReport.h"
#include "Tools/Expression.h"
#include "Tools/ExpressionResult.h"
#include "Tools/Output.h"
#include "Tools/PlotOptions.h"
#include "Tools/ResultFile.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace orvapp {

/// A command that draws curves, at work: an open file, the scalar to draw, and a plot of the Plots catalogue.
class PlotCommand {
public:
    /// Throws CommandError, also when the name of the picture or the type of the result will not do and when no state
    /// has the result, and ExpressionError.
    explicit PlotCommand(const PlotOptions& options);

    const ResultFile& file() const;
    const orv::ug::ResultInfo& scalar() const;

    /// The plot's place in the catalogue.
    std::size_t plotIndex() const;

    /// Takes a curve that the catalogue has added to the plot into the report, and gives it a name.
    /// @param path the way that x is the length of; empty for none
    void addCurve(orv::plt::Curve* curve, const std::string& name, const std::vector<orv::Vec3d>& path);

    /// Writes the picture and the CSV that are asked for, and tells of the curves on standard output. Throws
    /// CommandError or OutputClosed.
    /// @param about what all curves have in common, such as a state; for the title, behind the name of the file
    void write(const std::string& about);

private:
    void finishPlot(const std::string& about);
    void writePicture() const;

    PlotOptions m_options;
    Expression m_expression;
    ResultFile m_file;
    ExpressionResult m_built;
    orv::ug::ResultInfo m_scalar;
    std::optional<OutputFile> m_csv;
    orv::plt::OverlayPlot* m_plot; ///< Owned by the catalogue.
    CurvesReport m_report;
};

} // namespace orvapp
