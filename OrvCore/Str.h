#pragma once

#include "LibCore/rvfExport.h"

#include <cstddef>
#include <iosfwd>
#include <string>
#include <vector>

namespace orv {

/// The text of the public interface: wide characters, one code point each. A value; copies are independent.
///
/// Narrow text, in and out, is UTF-8 throughout. What is not valid becomes the replacement character U+FFFD and never
/// an error. Comparison and searches are exact and tell upper case from lower case; positions count characters from 0.
/// Numbers are read and written with a decimal point, whatever the process's locale.
class ORV_API Str {
public:
    /// What a search answers that finds nothing; as a length: up to the end.
    static constexpr size_t npos = std::wstring::npos;

    /// The empty text.
    Str() = default;
    /// From UTF-8. Null gives the empty text.
    Str(const char* text);
    /// Null gives the empty text.
    Str(const wchar_t* text);
    /// From UTF-8.
    Str(const std::string& text);
    Str(const std::wstring& text);

    Str& operator+=(const Str& text);

    friend Str operator+(const Str& a, const Str& b) {
        return Str(a.m_text + b.m_text);
    }

    friend bool operator==(const Str& a, const Str& b) {
        return a.m_text == b.m_text;
    }

    /// By code points, so "Z" comes before "a".
    friend bool operator<(const Str& a, const Str& b) {
        return a.m_text < b.m_text;
    }

    size_t size() const;
    bool isEmpty() const;
    /// Never null; ends with a zero. Valid until this text is changed.
    const wchar_t* c_str() const;

    /// The first position of `text` at or behind `start`, npos when there is none. The empty text is found at `start`
    /// unless that is beyond the end.
    size_t find(const Str& text, size_t start = 0) const;

    /// At most `length` characters from `start` on, npos for all of them. Empty when `start` is beyond the end.
    Str subStr(size_t start, size_t length = npos) const;

    /// Replaces every occurrence of `before`, in place and from the left; what has been put in is not searched again.
    /// Nothing happens when `before` is empty.
    void replace(const Str& before, const Str& after);

    /// The pieces between the delimiters, empty ones kept: "a,,b" at "," is "a", "" and "b", and the empty text is one
    /// empty piece. An empty delimiter does not divide: the whole text is the one piece.
    std::vector<Str> split(const Str& delimiter) const;

    /// The decimal integer that the whole text is, with an optional sign and with blanks allowed around it.
    /// `defaultValue` for any other text, and when the number does not fit an int.
    int toInt(int defaultValue) const;

    /// Latin, Greek and Cyrillic capitals of the basic alphabets and of Latin-1 become small letters; all other
    /// characters stay. Independent of the locale.
    Str toLower() const;

    /// True when the whole text matches a wildcard pattern, upper and lower case told apart:
    /// - `*` stands for any characters, none included, and `?` for exactly one,
    /// - `[abc]` and `[a-z]` for one character of the list, `[!abc]` and `[^abc]` for one that is not in it; `]` is a
    ///   member when it comes first and `-` when it comes first or last,
    /// - everything else for itself, a `[` that is never closed too.
    ///
    /// There is no escape character; `[*]` is a star. Hostile patterns end too: the time grows with the sum of both
    /// lengths, except for `?` and lists between two stars, which cost a step per character for every 64 of them.
    bool matches(const Str& pattern) const;

    /// In UTF-8. Surrogates and values outside Unicode become U+FFFD.
    std::string toStdString() const;
    std::wstring toStdWString() const;

    /// A new text in which every occurrence of the lowest-numbered placeholder is replaced by `value`; other
    /// placeholders wait for further calls. A placeholder is a percent sign with one or two digits, from "%0" to "%99",
    /// the longer reading first: "%10" is number 10. Without a placeholder the text comes back unchanged. `fillChar`
    /// fills the value up to `fieldWidth` characters in front, or behind for a negative width.
    ///
    /// A placeholder inside `value` is replaced by the next call like any other: `Str("%1 %2").arg("%2").arg("x")` is
    /// "x x".
    Str arg(const Str& value, int fieldWidth = 0, char fillChar = ' ') const;

    /// The same with a number in decimal. Zeros in front stand behind the minus sign.
    Str arg(int value, int fieldWidth = 0, char fillChar = ' ') const;

    /// The same with a number as `printf` writes it: `format` is one of e, E, f, F, g, G, any other is taken for g; a
    /// negative `precision` is the C library's default of 6. So 2.5 is "2.5" and 1e10 "1e+10" by default.
    Str arg(double value, int fieldWidth = 0, char format = 'g', int precision = -1, char fillChar = ' ') const;

private:
    std::wstring m_text;
};

/// Writes UTF-8.
ORV_API std::ostream& operator<<(std::ostream& out, const Str& text);

} // namespace orv
