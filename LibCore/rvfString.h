#pragma once

#include "LibCore/rvfCharArray.h"
#include "LibCore/rvfExport.h"

#include <cstddef>
#include <string>

namespace rvf {

/// The core's text: wide characters, one code point each. A value; copies are independent.
///
/// Beware of the narrow constructors: they widen byte by byte, so each byte of a UTF-8 text above 127 becomes a
/// character of its own. Only fromUtf8() and toUtf8() know UTF-8. Comparison and searches are exact and tell upper case
/// from lower case; positions count characters from 0.
class ORV_API String {
public:
    /// What a search answers that finds nothing; as a length: up to the end.
    static constexpr size_t npos = std::wstring::npos;

    /// The empty text.
    String() = default;
    /// Each byte becomes the character of the same number, 0 to 255. Null gives the empty text.
    String(const char* text);
    /// Null gives the empty text.
    String(const wchar_t* text);
    /// Each byte becomes the character of the same number, 0 to 255.
    String(const std::string& text);
    String(const std::wstring& text);

    String& operator+=(const String& text);

    friend String operator+(const String& a, const String& b) {
        return String(a.m_text + b.m_text);
    }

    friend bool operator==(const String& a, const String& b) {
        return a.m_text == b.m_text;
    }

    /// The character at `index`, which has to be below size(); the const form also gives the closing zero at size().
    wchar_t operator[](size_t index) const;
    wchar_t& operator[](size_t index);

    size_t size() const;
    bool isEmpty() const;
    /// Never null; ends with a zero. Valid until this text is changed.
    const wchar_t* c_str() const;

    /// This text in UTF-8. Surrogates and values outside Unicode become U+FFFD.
    CharArray toUtf8() const;

    /// Reads UTF-8. What is not valid becomes U+FFFD. Null gives the empty text.
    static String fromUtf8(const char* text);

    /// A number as `printf` writes it with "%g", whatever the process's locale: `format` is one of e, E, f, F, g, G,
    /// any other is taken for g; a negative `precision` is the C library's default of 6.
    static String number(double value, char format = 'g', int precision = -1);

    /// The first position of `text` at or behind `start`, npos when there is none. The empty text is found at `start`
    /// unless that is beyond the end.
    size_t find(const String& text, size_t start = 0) const;

    /// The last position of `text` at or before `start`, npos when there is none. The empty text is found at `start`,
    /// or at the end when that is beyond it.
    size_t findLast(const String& text, size_t start = npos) const;

    /// True also for the empty `text`.
    bool startsWith(const String& text) const;
    /// True also for the empty `text`.
    bool endsWith(const String& text) const;

    /// At most `length` characters from `start` on, npos for all of them. Empty when `start` is beyond the end.
    String subString(size_t start, size_t length = npos) const;

    /// Replaces every occurrence of `before`, in place and from the left; what has been put in is not searched again.
    /// Nothing happens when `before` is empty.
    void replace(const String& before, const String& after);

    /// A new text in which every occurrence of the lowest-numbered placeholder is replaced by `value`; other
    /// placeholders wait for further calls. A placeholder is a percent sign with one or two digits, from "%0" to "%99",
    /// the longer reading first: "%10" is number 10. Without a placeholder the text comes back unchanged. `fillChar`
    /// fills the value up to `fieldWidth` characters in front, or behind for a negative width.
    ///
    /// A placeholder inside `value` is replaced by the next call like any other: `String("%1 %2").arg("%2").arg("x")`
    /// is "x x".
    String arg(const String& value, int fieldWidth = 0, wchar_t fillChar = L' ') const;

    /// The same with a number in decimal. Zeros in front stand behind the minus sign.
    String arg(int value, int fieldWidth = 0, wchar_t fillChar = L' ') const;

private:
    std::wstring m_text;
};

} // namespace rvf
