#pragma once

#include "Tools/CommandError.h"

#include <cstddef>
#include <string>

namespace orvapp {

/// An expression that is refused: what is wrong, and where. Its text begins with the column, counted in characters from
/// 1.
class ExpressionError : public CommandError {
public:
    /// @param at the byte of `expression` that the message is about; its size for what is missing at its end
    ExpressionError(const std::string& expression, std::size_t at, const std::string& message);

    /// Two lines, each with its line end: the expression, indented by two blanks, and a caret under the place. Of a
    /// long expression what is near the place, with "..." where something is left out.
    std::string excerpt() const;

private:
    std::string m_expression;
    std::size_t m_column; ///< From 0.
};

} // namespace orvapp
