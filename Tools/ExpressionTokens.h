#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace orvapp {

/// One word of an expression.
struct ExpressionToken {
    enum Kind {
        END,
        NUMBER,
        WORD,   ///< A name as it stands.
        QUOTED, ///< A name in quotes.
        SIGN    ///< One of + - * / ^ ( ) [ ] , :
    };

    Kind kind = END;
    std::size_t begin = 0; ///< In bytes.
    std::size_t end = 0;
    double number = 0; ///< Of a NUMBER.
    std::string name;  ///< Of a WORD or QUOTED, without the quotes.
    char sign = 0;     ///< Of a SIGN.
};

/// The token that begins at byte `from` or behind the white space there.
///
/// A word begins with a letter, an underscore or a character beyond ASCII, and goes on with those, digits and dots. Any
/// other name stands in double or single quotes, and such a quote within it is doubled. Throws ExpressionError for
/// anything else.
ExpressionToken nextToken(const std::string& expression, std::size_t from);

/// A name as it is written in an expression: bare when it may, otherwise in double quotes.
std::string quotedWhereNeeded(std::string_view name);

} // namespace orvapp
