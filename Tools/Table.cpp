#include "Tools/Table.h"

#include "Tools/DisplayText.h"

#include <algorithm>
#include <utility>

namespace orvapp {

Table::Table(std::vector<Column> columns) : m_columns(std::move(columns)) {
    std::vector<std::string> titles;
    for (const Column& column : m_columns) {
        titles.push_back(column.title);
    }
    m_rows.push_back(std::move(titles));
}

void Table::addRow(std::vector<std::string> cells) {
    cells.resize(m_columns.size());
    for (std::string& cell : cells) {
        cell = printable(cell);
    }
    m_rows.push_back(std::move(cells));
}

std::string Table::text() const {
    const std::vector<std::size_t> columnWidths = widths();
    std::string text;
    for (const std::vector<std::string>& row : m_rows) {
        text += line(row, columnWidths);
    }
    return text;
}

std::vector<std::size_t> Table::widths() const {
    std::vector<std::size_t> widths(m_columns.size(), 0);
    for (const std::vector<std::string>& row : m_rows) {
        for (std::size_t i = 0; i < row.size(); ++i) {
            widths[i] = std::max(widths[i], columnCount(row[i]));
        }
    }
    return widths;
}

std::string Table::line(const std::vector<std::string>& cells, const std::vector<std::size_t>& widths) const {
    std::string line;
    for (std::size_t i = 0; i < cells.size(); ++i) {
        const std::string padding(widths[i] - columnCount(cells[i]), ' ');
        line += "  ";
        line += m_columns[i].alignment == RIGHT ? padding + cells[i] : cells[i] + padding;
    }
    line.erase(line.find_last_not_of(' ') + 1);
    return line + '\n';
}

} // namespace orvapp
