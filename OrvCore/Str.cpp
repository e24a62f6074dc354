#include "OrvCore/Str.h"

#include "LibCore/rvfTextFormat.h"
#include "LibCore/rvfUtf8.h"
#include "OrvCore/Wildcard_p.h"

#include <algorithm>
#include <limits>
#include <ostream>
#include <string_view>

namespace orv {
namespace {

/// Capitals in a row whose small letters lie at a fixed distance.
struct Capitals {
    wchar_t first;
    wchar_t last;
    int toSmall;
};

constexpr Capitals CAPITALS[] = {
    {L'A', L'Z', 32},     // Latin
    {0x00C0, 0x00D6, 32}, // Latin-1 up to the multiplication sign
    {0x00D8, 0x00DE, 32}, // Latin-1 behind it
    {0x0391, 0x03A1, 32}, // Greek up to the gap that faces the final sigma
    {0x03A3, 0x03AB, 32}, // Greek behind it
    {0x0400, 0x040F, 80}, // Cyrillic additions
    {0x0410, 0x042F, 32}, // Cyrillic
};

wchar_t smallLetter(wchar_t character) {
    for (const Capitals& row : CAPITALS) {
        if (character >= row.first && character <= row.last) {
            return wchar_t(character + row.toSmall);
        }
    }
    return character;
}

std::wstring_view withoutBlanksAround(std::wstring_view text) {
    constexpr std::wstring_view BLANKS = L" \t\n\v\f\r";
    size_t begin = text.find_first_not_of(BLANKS);
    return begin == text.npos ? std::wstring_view() : text.substr(begin, text.find_last_not_of(BLANKS) - begin + 1);
}

bool isDigit(wchar_t character) {
    return character >= L'0' && character <= L'9';
}

wchar_t widen(char character) {
    return wchar_t(static_cast<unsigned char>(character));
}

} // namespace

Str::Str(const char* text) : m_text(text ? rvf::internal::decodeUtf8(text) : std::wstring()) {}

Str::Str(const wchar_t* text) : m_text(text ? text : L"") {}

Str::Str(const std::string& text) : m_text(rvf::internal::decodeUtf8(text)) {}

Str::Str(const std::wstring& text) : m_text(text) {}

Str& Str::operator+=(const Str& text) {
    m_text += text.m_text;
    return *this;
}

size_t Str::size() const {
    return m_text.size();
}

bool Str::isEmpty() const {
    return m_text.empty();
}

const wchar_t* Str::c_str() const {
    return m_text.c_str();
}

size_t Str::find(const Str& text, size_t start) const {
    return m_text.find(text.m_text, start);
}

Str Str::subStr(size_t start, size_t length) const {
    return start < size() ? Str(m_text.substr(start, length)) : Str();
}

void Str::replace(const Str& before, const Str& after) {
    m_text = rvf::internal::replaceAll(m_text, before.m_text, after.m_text);
}

std::vector<Str> Str::split(const Str& delimiter) const {
    std::vector<Str> pieces;
    size_t begin = 0;
    if (!delimiter.isEmpty()) {
        for (size_t end = find(delimiter); end != npos; end = find(delimiter, begin)) {
            pieces.push_back(subStr(begin, end - begin));
            begin = end + delimiter.size();
        }
    }
    pieces.push_back(subStr(begin));
    return pieces;
}

int Str::toInt(int defaultValue) const {
    std::wstring_view digits = withoutBlanksAround(m_text);
    bool isNegative = digits.starts_with(L'-');
    if (isNegative || digits.starts_with(L'+')) {
        digits.remove_prefix(1);
    }
    if (digits.empty() || !std::all_of(digits.begin(), digits.end(), isDigit)) {
        return defaultValue;
    }
    constexpr long long LARGEST = std::numeric_limits<int>::max();
    long long value = 0;
    for (wchar_t digit : digits) {
        value = value * 10 + (digit - L'0');
        if (value > LARGEST + (isNegative ? 1 : 0)) {
            return defaultValue;
        }
    }
    return int(isNegative ? -value : value);
}

Str Str::toLower() const {
    Str lower = *this;
    std::transform(m_text.begin(), m_text.end(), lower.m_text.begin(), smallLetter);
    return lower;
}

bool Str::matches(const Str& pattern) const {
    return internal::Wildcard(pattern.m_text).matches(m_text);
}

std::string Str::toStdString() const {
    return rvf::internal::encodeUtf8(m_text);
}

std::wstring Str::toStdWString() const {
    return m_text;
}

Str Str::arg(const Str& value, int fieldWidth, char fillChar) const {
    std::wstring padded = rvf::internal::padText(value.m_text, fieldWidth, widen(fillChar));
    return Str(rvf::internal::replaceLowestPlaceholder(m_text, padded));
}

Str Str::arg(int value, int fieldWidth, char fillChar) const {
    std::wstring padded = rvf::internal::padNumber(std::to_wstring(value), fieldWidth, widen(fillChar));
    return Str(rvf::internal::replaceLowestPlaceholder(m_text, padded));
}

Str Str::arg(double value, int fieldWidth, char format, int precision, char fillChar) const {
    std::wstring number = rvf::internal::formatNumber(value, format, precision);
    std::wstring padded = rvf::internal::padNumber(number, fieldWidth, widen(fillChar));
    return Str(rvf::internal::replaceLowestPlaceholder(m_text, padded));
}

std::ostream& operator<<(std::ostream& out, const Str& text) {
    return out << text.toStdString();
}

} // namespace orv
