#include "Tools/PlotCommand.h"

#include "Tools/Choice.h"
#include "Tools/CommandError.h"
#include "Tools/DisplayText.h"
#include "Tools/JsonReports.h"
#include "Tools/PasswordFile.h"
#include "Tools/ResultWords.h"
#include "Tools/Statistics.h"
#include "Tools/Table.h"

#include <filesystem>

namespace orvapp {

namespace {

/// The options, unless they ask for a picture that nobody can write: that is told before the work begins.
const PlotOptions& checked(const PlotOptions& options) {
    const orv::Str extension = orv::Str(std::filesystem::path(options.picture).extension().string()).toLower();
    if (!options.picture.empty() && extension != ".svg" && extension != ".png" && extension != ".pdf") {
        throw CommandError(options.picture + ": the name of the picture has to end in .svg, .png or .pdf");
    }
    return options;
}

std::vector<std::string> cellsOf(const CurveRow& curve) {
    const Statistics statistics = componentStatistics(curve.y, 1, 0);
    std::vector<std::string> cells = {curve.name, std::to_string(curve.x.size())};
    for (const std::optional<Extreme>& extreme : {statistics.min, statistics.max}) {
        cells.push_back(extreme ? briefNumber(extreme->value) : "-");
        cells.push_back(extreme ? briefNumber(curve.x[extreme->item]) : "-");
    }
    return cells;
}

std::string curvesText(const CurvesReport& report) {
    const std::string place = "at " + report.xTitle;
    Table table({{"Curve"},
                 {"Points", Table::RIGHT},
                 {"Minimum", Table::RIGHT},
                 {place, Table::RIGHT},
                 {"Maximum", Table::RIGHT},
                 {place, Table::RIGHT}});
    for (const CurveRow& curve : report.curves) {
        table.addRow(cellsOf(curve));
    }
    return printable(report.result) + " (scalar, per " + report.mapping + ") over " + report.xTitle + '\n' +
           table.text();
}

} // namespace

PlotCommand::PlotCommand(const PlotOptions& options)
    : m_options(checked(options)), m_expression(parseExpression(options.values.result)),
      m_file(options.values.file, readPassword(options.values.passwordFile)),
      m_built(buildScalar(m_expression, m_file.results(), "a curve shows")),
      m_scalar(m_file.add(m_built.info, m_expression.text)), m_plot(orv::app::Plots::instance()->add()) {
    if (m_file.statesWith(m_scalar).empty()) {
        refuse(m_file, '"' + nameOf(m_scalar) + "\" has no values in any state");
    }
    if (!options.values.csv.empty()) {
        m_csv.emplace(options.values.csv);
    }
    m_report.result = options.name.empty() ? nameOf(m_scalar) : options.name;
    m_report.mapping = mappingWord(m_scalar.resultMapping());
}

const ResultFile& PlotCommand::file() const {
    return m_file;
}

const orv::ug::ResultInfo& PlotCommand::scalar() const {
    return m_scalar;
}

std::size_t PlotCommand::plotIndex() const {
    return orv::app::Plots::instance()->index(m_plot);
}

void PlotCommand::addCurve(orv::plt::Curve* curve, const std::string& name, const std::vector<orv::Vec3d>& path) {
    curve->setName(name);
    m_report.curves.push_back({name, curve->x(), curve->y(), path});
}

void PlotCommand::write(const std::string& about) {
    finishPlot(about);
    writePicture();
    if (m_csv) {
        m_csv->write(orv::plt::PlotWriter::csv(m_plot));
        m_csv->commit();
    }
    if (m_options.values.csv != "-") {
        writeStandardOutput(m_options.values.json ? curvesJson(m_report) : curvesText(m_report));
    }
}

void PlotCommand::finishPlot(const std::string& about) {
    const std::string fileName = std::filesystem::path(m_file.path()).filename().string();
    m_plot->setTitle(m_options.title.empty() ? fileName + ", " + about : m_options.title);
    orv::plt::AxisSettings* axes = m_plot->axisSettings();
    axes->setYAxisTitle(m_report.result);
    axes->setXAxisLogarithmic(m_options.isXLogarithmic);
    axes->setYAxisLogarithmic(m_options.isYLogarithmic);
    m_report.xTitle = axes->xAxis().title.toStdString();
}

void PlotCommand::writePicture() const {
    orv::Str reason;
    if (!m_options.picture.empty() &&
        !orv::plt::PlotWriter::write(m_plot, m_options.picture, m_options.width, m_options.height, &reason)) {
        throw CommandError(reason.toStdString());
    }
}

} // namespace orvapp
