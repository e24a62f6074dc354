#include "Tools/ExpressionError.h"

#include "Tools/DisplayText.h"

#include <algorithm>

namespace orvapp {

namespace {

/// With its indentation and the marks of what is left out, an excerpt fits into 80 columns.
constexpr std::size_t EXCERPT_COLUMNS = 70;
constexpr const char* LEFT_OUT = "...";
constexpr const char* INDENTATION = "  ";

std::size_t columnAt(const std::string& expression, std::size_t at) {
    return columnCount(std::string_view(expression).substr(0, at));
}

} // namespace

ExpressionError::ExpressionError(const std::string& expression, std::size_t at, const std::string& message)
    : CommandError("column " + std::to_string(columnAt(expression, at) + 1) + " of the expression: " + message),
      m_expression(printable(expression)), m_column(columnAt(expression, at)) {}

std::string ExpressionError::excerpt() const {
    if (m_expression.empty()) {
        return "";
    }
    const std::size_t columns = columnCount(m_expression);
    const std::size_t last = columns > EXCERPT_COLUMNS ? columns - EXCERPT_COLUMNS : 0;
    const std::size_t first = std::min(m_column > EXCERPT_COLUMNS / 2 ? m_column - EXCERPT_COLUMNS / 2 : 0, last);
    const std::string before = first > 0 ? LEFT_OUT : "";
    const std::string after = first < last ? LEFT_OUT : "";
    return INDENTATION + before + std::string(columnRange(m_expression, first, EXCERPT_COLUMNS)) + after + '\n' +
           INDENTATION + std::string(before.size() + m_column - first, ' ') + "^\n";
}

} // namespace orvapp
