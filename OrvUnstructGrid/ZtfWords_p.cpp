#include "OrvUnstructGrid/ZtfWords_p.h"

#include "OrvCore/Defines.h"
#include "OrvUnstructGrid/Convert.h"

#include <algorithm>
#include <array>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <limits>

namespace orv::ug {
namespace {

constexpr std::uint64_t SIGN_BIT = std::uint64_t(1) << 63;
constexpr std::uint64_t EXPONENT_BITS = std::uint64_t(0x7FF) << 52;
constexpr std::uint64_t MANTISSA_BITS = (std::uint64_t(1) << 52) - 1;
constexpr std::uint64_t QUIET_NAN = std::uint64_t(1) << 51;
constexpr const char* UNDEFINED_WORD = "undefined";

std::string inSmallLetters(std::string_view word) {
    std::string small(word);
    for (char& c : small) {
        c = c >= 'A' && c <= 'Z' ? char(c - 'A' + 'a') : c;
    }
    return small;
}

template <class Number, class... Format>
bool readWhole(std::string_view text, Number* value, Format... format) {
    const std::from_chars_result result = std::from_chars(text.data(), text.data() + text.size(), *value, format...);
    return result.ec == std::errc() && result.ptr == text.data() + text.size();
}

// The mantissa of "nan" or "nan(0x12)".
bool readNaN(std::string_view word, std::uint64_t* mantissa) {
    *mantissa = QUIET_NAN;
    if (word == "nan") {
        return true;
    }
    return word.starts_with("nan(0x") && word.ends_with(")") &&
           readWhole(word.substr(6, word.size() - 7), mantissa, 16) && *mantissa > 0 && *mantissa <= MANTISSA_BITS;
}

// In small letters, and without a sign in front.
bool readMagnitude(std::string_view word, double* value) {
    if (std::uint64_t mantissa = 0; readNaN(word, &mantissa)) {
        *value = std::bit_cast<double>(EXPONENT_BITS | mantissa);
        return true;
    }
    if (word == "inf" || word == "infinity") {
        *value = std::numeric_limits<double>::infinity();
        return true;
    }
    const bool isHexadecimal = word.starts_with("0x");
    const std::string_view digits = isHexadecimal ? word.substr(2) : word;
    // The library would take a sign and the words above, where there may be none any more.
    const char first = digits.empty() ? ' ' : digits[0];
    const bool isNumber =
        first == '.' || (first >= '0' && first <= '9') || (isHexadecimal && first >= 'a' && first <= 'f');
    const std::chars_format format = isHexadecimal ? std::chars_format::hex : std::chars_format::general;
    return isNumber && readWhole(digits, value, format);
}

bool isPrintable(wchar_t c) {
    const bool isSurrogate = c >= 0xD800 && c <= 0xDFFF;
    const bool isControl = c < 0x20 || (c >= 0x7F && c < 0xA0);
    // Some editors and programs take these two for line ends.
    const bool isLineEnd = c == 0x2028 || c == 0x2029;
    // These two, and no others of their kind, XML leaves out.
    const bool isNoCharacter = c == 0xFFFE || c == 0xFFFF;
    return !isSurrogate && !isControl && !isLineEnd && !isNoCharacter && c <= 0x10FFFF && c != L'"';
}

} // namespace

bool readZtfNumber(std::string_view word, double* value) {
    const std::string small = inSmallLetters(word);
    if (small == UNDEFINED_WORD) {
        *value = UNDEFINED_DOUBLE;
        return true;
    }
    const bool hasSign = small.starts_with('-') || small.starts_with('+');
    double magnitude = 0.0;
    if (!readMagnitude(std::string_view(small).substr(hasSign), &magnitude)) {
        return false;
    }
    *value = std::copysign(magnitude, small.starts_with('-') ? -1.0 : 1.0);
    return true;
}

void writeZtfNumber(double value, std::string* text) {
    if (value == UNDEFINED_DOUBLE) {
        *text += UNDEFINED_WORD;
        return;
    }
    std::array<char, 40> digits;
    std::to_chars_result result = {digits.data(), std::errc()};
    if (!std::isnan(value)) {
        result = std::to_chars(digits.data(), digits.data() + digits.size(), value);
        text->append(digits.data(), result.ptr);
        return;
    }
    const std::uint64_t bits = std::bit_cast<std::uint64_t>(value);
    *text += (bits & SIGN_BIT) != 0 ? "-nan" : "nan";
    if ((bits & MANTISSA_BITS) != QUIET_NAN) {
        result = std::to_chars(digits.data(), digits.data() + digits.size(), bits & MANTISSA_BITS, 16);
        *text += "(0x" + std::string(digits.data(), result.ptr) + ")";
    }
}

bool readZtfInteger(std::string_view word, long long least, long long most, long long* value) {
    const std::string_view digits = word.starts_with('+') ? word.substr(1) : word;
    long long number = 0;
    if (digits.starts_with('-') && digits.size() != word.size()) {
        return false;
    }
    if (!readWhole(digits, &number) || number < least || number > most) {
        return false;
    }
    *value = number;
    return true;
}

std::string quotedZtfText(const Str& text) {
    std::wstring quoted = L"\"";
    for (const wchar_t c : text.toStdWString()) {
        if (c == L'\\') {
            quoted += L"\\\\";
        } else if (isPrintable(c)) {
            quoted += c;
        } else {
            std::array<char, 8> digits;
            const std::to_chars_result result =
                std::to_chars(digits.data(), digits.data() + digits.size(), std::uint32_t(c), 16);
            quoted += L"\\u{" + std::wstring(digits.data(), result.ptr) + L"}";
        }
    }
    return Str(quoted + L"\"").toStdString();
}

bool readZtfText(const Str& quoted, Str* text) {
    const std::wstring source = quoted.toStdWString();
    std::wstring plain;
    for (std::size_t i = 0; i < source.size(); ++i) {
        if (source[i] != L'\\') {
            plain += source[i];
            continue;
        }
        if (source.compare(i, 2, L"\\\\") == 0) {
            plain += source[++i];
            continue;
        }
        const std::size_t end = source.find(L'}', i);
        if (source.compare(i, 3, L"\\u{") != 0 || end == std::wstring::npos) {
            return false;
        }
        std::uint32_t code = 0;
        const std::string digits = Str(source.substr(i + 3, end - i - 3)).toStdString();
        if (!readWhole(digits, &code, 16)) {
            return false;
        }
        plain += wchar_t(code);
        i = end;
    }
    *text = Str(plain);
    return true;
}

Str quotedForPeople(std::string_view word) {
    constexpr std::size_t LONGEST_QUOTE = 40;
    std::string text(word.substr(0, LONGEST_QUOTE));
    std::replace_if(
        text.begin(), text.end(), [](char c) { return c < ' ' || c > '~'; }, '?');
    return '"' + text + (word.size() > LONGEST_QUOTE ? "...\"" : "\"");
}

ZtfStatement::ZtfStatement(ZtfLines& lines) : m_lines(lines) {}

// What stands between the quotes of a line is outside and inside them by turns.
bool ZtfStatement::read() {
    m_words.clear();
    m_next = 0;
    VTString line = Convert::toVTString(Str(m_lines.text()));
    bool isEndedByQuote = false;
    bool isQuoted = false;
    VTString piece = line.GetFirstToken(L'"', &isEndedByQuote);
    while (isEndedByQuote || !piece.IsNull()) {
        if (isQuoted && !isEndedByQuote) {
            break;
        }
        if (!appendPiece(piece, isQuoted)) {
            return m_lines.fail("a backslash in a name, which only \"\\\\\" and \"\\u{...}\" may have");
        }
        isQuoted = isEndedByQuote ? !isQuoted : isQuoted;
        piece = line.GetNextToken(L'"', &isEndedByQuote);
    }
    return !isQuoted || m_lines.fail("a name without its closing quote");
}

bool ZtfStatement::takeIf(std::string_view keyword) {
    const bool isThere = isAt(false) && m_words[m_next].text == keyword;
    m_next += isThere;
    return isThere;
}

bool ZtfStatement::takeInteger(const char* what, long long least, long long most, long long* value) {
    return isAt(false) && readZtfInteger(m_words[m_next].text, least, most, value) ? ++m_next : failFor(what);
}

bool ZtfStatement::takeNumber(const char* what, double* value) {
    return isAt(false) && readZtfNumber(m_words[m_next].text, value) ? ++m_next : failFor(what);
}

bool ZtfStatement::takeName(const char* what, Str* name) {
    if (!isAt(true)) {
        return failFor(what);
    }
    *name = m_words[m_next++].name;
    return true;
}

bool ZtfStatement::takeOneOf(const char* what, std::span<const char* const> words, std::size_t* index) {
    for (std::size_t i = 0; i < words.size(); ++i) {
        if (takeIf(words[i])) {
            *index = i;
            return true;
        }
    }
    return failFor(what);
}

bool ZtfStatement::takeEnd() {
    return m_next == m_words.size() || failFor("the end of the line");
}

bool ZtfStatement::failFor(const Str& what) {
    Str found = "the end of the line";
    if (m_next < m_words.size()) {
        const Word& word = m_words[m_next];
        found = word.isQuoted ? "the name " + quotedForPeople(word.name.toStdString()) : quotedForPeople(word.text);
    }
    return m_lines.fail("expected " + what + ", found " + found);
}

bool ZtfStatement::appendPiece(const VTString& piece, bool isQuoted) {
    if (isQuoted) {
        Word& word = m_words.emplace_back();
        word.isQuoted = true;
        return readZtfText(Convert::toStr(piece), &word.name);
    }
    VTString words = piece;
    for (VTString word = words.GetFirstWord(); !word.IsEmpty(); word = words.GetNextWord()) {
        m_words.push_back({Convert::toStr(word).toStdString(), Str(), false});
    }
    return true;
}

bool ZtfStatement::isAt(bool isQuoted) const {
    return m_next < m_words.size() && m_words[m_next].isQuoted == isQuoted;
}

ZtfList::ZtfList(ZtfLines& lines, const char* what) : m_lines(lines), m_what(what) {}

bool ZtfList::takeNumber(double* value) {
    return nextWord() && (readZtfNumber(m_word, value) || failFor("a number"));
}

bool ZtfList::takeInteger(long long least, long long most, long long* value) {
    return nextWord() && (readZtfInteger(m_word, least, most, value) ||
                          failFor("a whole number from " + std::to_string(least) + " to " + std::to_string(most)));
}

bool ZtfList::takeOneOf(std::span<const char* const> words, std::size_t* index) {
    if (!nextWord()) {
        return false;
    }
    const auto found = std::find(words.begin(), words.end(), std::string_view(m_word));
    *index = std::size_t(found - words.begin());
    return found != words.end() || failFor("a type");
}

bool ZtfList::takeEnd() {
    const VTString word = m_line.GetNextWord();
    return word.IsEmpty() || m_lines.fail(Str("expected the end of the ") + m_what + ", found " +
                                          quotedForPeople(Convert::toStr(word).toStdString()));
}

bool ZtfList::skip(std::size_t count) {
    while (count > 0) {
        if (!m_lines.next()) {
            return m_lines.hasFailed() ? false : m_lines.fail("the file ends here, within the " + Str(m_what));
        }
        const std::size_t words = m_lines.wordCount();
        if (words > count) {
            return m_lines.fail("expected the end of the " + Str(m_what) + " behind " + std::to_string(count) +
                                " more, found " + std::to_string(words) + " in this line");
        }
        count -= words;
    }
    return true;
}

bool ZtfList::nextWord() {
    VTString word = m_line.GetNextWord();
    if (word.IsEmpty()) {
        if (!m_lines.next()) {
            return m_lines.hasFailed() ? false : m_lines.fail("the file ends here, within the " + Str(m_what));
        }
        m_line = Convert::toVTString(Str(m_lines.text()));
        word = m_line.GetFirstWord();
    }
    // Whatever is no ASCII is no number either; a text for people shows it as "?".
    m_word.clear();
    for (const wchar_t* c = ~word; *c != L'\0'; ++c) {
        m_word += *c < 0x80 ? char(*c) : '?';
    }
    return true;
}

bool ZtfList::failFor(const Str& what) {
    return m_lines.fail("expected " + what + " in the " + m_what + ", found " + quotedForPeople(m_word));
}

} // namespace orv::ug
