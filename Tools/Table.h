#pragma once

#include <string>
#include <vector>

namespace orvapp {

/// Lines of text in aligned columns, under a line of titles.
class Table {
public:
    enum Alignment { LEFT, RIGHT };

    /// A title stands like the cells under it.
    struct Column {
        std::string title;
        Alignment alignment = LEFT;
    };

    explicit Table(std::vector<Column> columns);

    /// One cell for each column, in UTF-8. Control characters are replaced.
    void addRow(std::vector<std::string> cells);

    /// All lines, each indented by two blanks and without blanks at its end.
    std::string text() const;

private:
    std::vector<std::size_t> widths() const;
    std::string line(const std::vector<std::string>& cells, const std::vector<std::size_t>& widths) const;

    std::vector<Column> m_columns;
    std::vector<std::vector<std::string>> m_rows; ///< The titles first.
};

} // namespace orvapp
