#pragma once

#include "LibUnstructGrid/VTOString.h"
#include "OrvCore/Str.h"
#include "OrvUnstructGrid/ZtfFile_p.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace orv::ug {

// How numbers and names are spelled in .ztf files.

/// Reads a number in any notation of C: decimal or hexadecimal, with or without point, exponent and sign, inf and nan
/// in small or capital letters; also "undefined" for UNDEFINED_DOUBLE. "nan(0x12)" has these bits in its mantissa.
/// False when it is none or has no room in a double.
bool readZtfNumber(std::string_view word, double* value);

/// Appends the shortest number that reads back bit by bit.
void writeZtfNumber(double value, std::string* text);

/// False unless the word is a decimal whole number from `least` to `most`.
bool readZtfInteger(std::string_view word, long long least, long long most, long long* value);

/// A text in quotes. What would end it or the line, what is no character, and control characters are written as the
/// hexadecimal code in "\u{...}"; a backslash is doubled.
std::string quotedZtfText(const Str& text);

/// What stands between quotes. False when a backslash is not one of the two forms.
bool readZtfText(const Str& quoted, Str* text);

/// The words of a line that is a statement.
class ZtfStatement {
public:
    explicit ZtfStatement(ZtfLines& lines);

    /// Takes the current line apart. False with a text when a quote is left open or holds a bad backslash.
    bool read();

    /// The next word if it is this one.
    bool takeIf(std::string_view keyword);
    /// These are false with a text that tells `what` was expected.
    bool takeInteger(const char* what, long long least, long long most, long long* value);
    bool takeNumber(const char* what, double* value);
    bool takeName(const char* what, Str* name);
    /// @param index the position of the word in the list
    bool takeOneOf(const char* what, std::span<const char* const> words, std::size_t* index);
    bool takeEnd();

    /// Fills the error with what was expected and what stands there instead. Always false.
    bool failFor(const Str& what);

private:
    struct Word {
        std::string text; ///< Of a quoted one empty.
        Str name;
        bool isQuoted = false;
    };

    bool appendPiece(const VTString& piece, bool isQuoted);
    bool isAt(bool isQuoted) const;

    ZtfLines& m_lines;
    std::vector<Word> m_words;
    std::size_t m_next = 0;
};

/// The numbers and keywords behind a statement, which begin on the next line and may be spread over lines at will. The
/// last one ends its line.
class ZtfList {
public:
    /// @param what the list is of, for texts
    ZtfList(ZtfLines& lines, const char* what);

    /// These are false with a text when the next word is none of these, or the file ends.
    bool takeNumber(double* value);
    bool takeInteger(long long least, long long most, long long* value);
    bool takeOneOf(std::span<const char* const> words, std::size_t* index);

    /// False with a text when something is left on the line.
    bool takeEnd();

    /// Passes over so many words, and looks whether they end a line.
    bool skip(std::size_t count);

private:
    bool nextWord();
    bool failFor(const Str& what);

    ZtfLines& m_lines;
    const char* m_what;
    VTString m_line;
    std::string m_word;
};

/// A word of a file for use in a text: in quotes, at most 40 characters, unprintable ones as "?".
Str quotedForPeople(std::string_view word);

} // namespace orv::ug
