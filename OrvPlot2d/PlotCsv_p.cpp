#include "OrvPlot2d/PlotCsv_p.h"

#include "OrvCore/Defines.h"
#include "OrvPlot2d/OverlayPlot.h"

#include <algorithm>
#include <charconv>
#include <cstring>
#include <vector>

namespace orv::plt {
namespace {

struct Column {
    std::string name;
    const std::vector<double>* values = nullptr;
};

bool haveSameBits(const std::vector<double>& a, const std::vector<double>& b) {
    return a.size() == b.size() && std::equal(a.begin(), a.end(), b.begin(),
                                              [](double x, double y) { return std::memcmp(&x, &y, sizeof x) == 0; });
}

bool shareX(const OverlayPlot& plot) {
    for (std::size_t i = 1; i < plot.curveCount(); ++i) {
        if (!haveSameBits(plot.curve(i)->x(), plot.curve(0)->x())) {
            return false;
        }
    }
    return true;
}

std::string orElse(const Str& text, const char* fallback) {
    return text.isEmpty() ? fallback : text.toStdString();
}

std::string yName(const OverlayPlot& plot, std::size_t index) {
    const Str& name = plot.curve(index)->name();
    const Str& title = plot.axisSettings()->yAxis().title;
    if (name.isEmpty() || name == title) {
        return orElse(title, "y");
    }
    return title.isEmpty() ? name.toStdString() : (name + ": " + title).toStdString();
}

std::vector<Column> columnsOf(const OverlayPlot& plot) {
    const std::string xName = orElse(plot.axisSettings()->xAxis().title, "x");
    const bool isShared = shareX(plot);
    std::vector<Column> columns;
    for (std::size_t i = 0; i < plot.curveCount(); ++i) {
        if (i == 0 || !isShared) {
            columns.push_back({xName, &plot.curve(i)->x()});
        }
        columns.push_back({yName(plot, i), &plot.curve(i)->y()});
    }
    return columns;
}

std::string quoted(const std::string& text) {
    if (text.find_first_of(",\"\r\n") == std::string::npos) {
        return text;
    }
    std::string field = "\"";
    for (const char c : text) {
        field += c == '"' ? "\"\"" : std::string(1, c);
    }
    return field + '"';
}

void addNumber(double value, std::string* text) {
    if (value != UNDEFINED_DOUBLE) {
        char digits[32];
        text->append(digits, std::to_chars(digits, digits + sizeof digits, value).ptr);
    }
}

} // namespace

std::string csvOf(const OverlayPlot& plot) {
    const std::vector<Column> columns = columnsOf(plot);
    std::string text;
    std::size_t rows = 0;
    for (const Column& column : columns) {
        text += (text.empty() ? "" : ",") + quoted(column.name);
        rows = std::max(rows, column.values->size());
    }
    text += '\n';
    for (std::size_t row = 0; row < rows; ++row) {
        for (const Column& column : columns) {
            text.append(&column == &columns.front() ? 0 : 1, ',');
            if (row < column.values->size()) {
                addNumber((*column.values)[row], &text);
            }
        }
        text += '\n';
    }
    return text;
}

} // namespace orv::plt
