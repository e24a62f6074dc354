#pragma once

#include <cctype>
#include <climits>

/// Character rules that the sources of VTString share.
namespace VTCharacter {

/// The C library's case tables are defined for the values of an unsigned char alone.
inline bool hasCase(wchar_t cChr) {
    return static_cast<unsigned int>(cChr) <= UCHAR_MAX;
}

inline wchar_t toUpper(wchar_t cChr) {
    return hasCase(cChr) ? static_cast<wchar_t>(std::toupper(static_cast<int>(cChr))) : cChr;
}

inline wchar_t toLower(wchar_t cChr) {
    return hasCase(cChr) ? static_cast<wchar_t>(std::tolower(static_cast<int>(cChr))) : cChr;
}

inline bool isDigit(wchar_t cChr) {
    return cChr >= L'0' && cChr <= L'9';
}

inline bool isSign(wchar_t cChr) {
    return cChr == L'+' || cChr == L'-';
}

inline bool isLineEnd(wchar_t cChr) {
    return cChr == L'\n' || cChr == L'\r';
}

inline bool isBlankOrTab(wchar_t cChr) {
    return cChr == L' ' || cChr == L'\t';
}

inline bool isWordSeparator(wchar_t cChr) {
    return isBlankOrTab(cChr) || cChr == L',';
}

} // namespace VTCharacter
