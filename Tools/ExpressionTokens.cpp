#include "Tools/ExpressionTokens.h"

#include "Tools/DisplayText.h"
#include "Tools/ExpressionError.h"

#include <algorithm>
#include <charconv>
#include <system_error>

namespace orvapp {

namespace {

constexpr std::string_view SIGNS = "+-*/^()[],:";

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

bool isWordBegin(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' || static_cast<unsigned char>(c) >= 0x80;
}

bool isWordPart(char c) {
    return isWordBegin(c) || isDigit(c) || c == '.';
}

bool isBlank(char c) {
    return c == ' ' || (c >= '\t' && c <= '\r');
}

template <class Predicate>
std::size_t endOf(std::string_view text, std::size_t from, Predicate accepts) {
    const auto end = std::find_if_not(text.begin() + std::ptrdiff_t(from), text.end(), accepts);
    return std::size_t(end - text.begin());
}

/// Behind "1e-3", and behind the 1 of "1e": an exponent has a digit.
std::size_t numberEnd(std::string_view text, std::size_t begin) {
    const std::size_t mantissaEnd = endOf(text, begin, [](char c) { return isDigit(c) || c == '.'; });
    std::size_t exponent = mantissaEnd;
    if (exponent < text.size() && (text[exponent] == 'e' || text[exponent] == 'E')) {
        ++exponent;
        exponent += exponent < text.size() && (text[exponent] == '+' || text[exponent] == '-');
    }
    const std::size_t exponentEnd = endOf(text, exponent, isDigit);
    return exponentEnd > exponent ? exponentEnd : mantissaEnd;
}

void readNumber(const std::string& expression, ExpressionToken* token) {
    token->kind = ExpressionToken::NUMBER;
    token->end = numberEnd(expression, token->begin);
    const char* end = expression.data() + token->end;
    const auto [rest, problem] = std::from_chars(expression.data() + token->begin, end, token->number);
    if (problem == std::errc() && rest == end) {
        return;
    }
    const std::string text = shortened(expression.substr(token->begin, token->end - token->begin), 40);
    throw ExpressionError(expression, token->begin,
                          problem == std::errc::result_out_of_range ? '"' + text + "\" is beyond the range of numbers"
                                                                    : '"' + text + "\" is not a number");
}

void readQuoted(const std::string& expression, ExpressionToken* token) {
    token->kind = ExpressionToken::QUOTED;
    const char quote = expression[token->begin];
    std::size_t i = token->begin + 1;
    for (; i < expression.size(); ++i) {
        if (expression[i] == quote) {
            const bool isDoubled = i + 1 < expression.size() && expression[i + 1] == quote;
            if (!isDoubled) {
                break;
            }
            ++i;
        }
        token->name += expression[i];
    }
    if (i == expression.size()) {
        throw ExpressionError(expression, token->begin, "the name that begins here lacks its closing quote");
    }
    if (token->name.empty()) {
        throw ExpressionError(expression, token->begin, "there is no name between the quotes");
    }
    token->end = i + 1;
}

} // namespace

ExpressionToken nextToken(const std::string& expression, std::size_t from) {
    ExpressionToken token;
    token.begin = endOf(expression, from, isBlank);
    token.end = token.begin;
    if (token.begin == expression.size()) {
        return token;
    }
    const char first = expression[token.begin];
    if (isDigit(first) || first == '.') {
        readNumber(expression, &token);
    } else if (isWordBegin(first)) {
        token.kind = ExpressionToken::WORD;
        token.end = endOf(expression, token.begin, isWordPart);
        token.name = expression.substr(token.begin, token.end - token.begin);
    } else if (first == '"' || first == '\'') {
        readQuoted(expression, &token);
    } else if (SIGNS.find(first) != std::string_view::npos) {
        token.kind = ExpressionToken::SIGN;
        token.end = token.begin + 1;
        token.sign = first;
    } else {
        throw ExpressionError(expression, token.begin,
                              std::string("\"") + first +
                                  "\" means nothing here; a name with such characters goes in "
                                  "quotes");
    }
    return token;
}

std::string quotedWhereNeeded(std::string_view name) {
    if (!name.empty() && isWordBegin(name.front()) && endOf(name, 0, isWordPart) == name.size()) {
        return std::string(name);
    }
    std::string text = "\"";
    for (const char c : name) {
        text += c == '"' ? "\"\"" : std::string(1, c);
    }
    return text + '"';
}

} // namespace orvapp
