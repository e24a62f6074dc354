#pragma once

#include "OrvImportCae/CaeInput.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace orv::imp::cae {

/// Reads a file's words and numbers one behind the other. Numbers are words or, in binary sections, bytes: what the
/// format calls int has four, size_t and double eight.
///
/// What is not as expected gives "NAME, line 12: expected WHAT, found THAT", and false.
class MshInput : public CaeInput {
public:
    /// @param error where failures go; may be null
    MshInput(const CaeFile& file, ug::Error* error);

    /// Numbers are bytes from now on, or words.
    void setBinary(bool isBinary);
    bool isBinary() const;

    /// The bytes from here to the end of the file.
    std::int64_t bytesLeft() const;
    /// Whether the file was at its end when something failed.
    bool hasEnded() const;

    /// Goes to what is not a blank or a line end. False at the end of the file.
    bool skipBlanks();
    /// Goes to the next place where this stands; false, and at the end of the file, when it stands nowhere.
    bool find(std::string_view mark);
    /// Goes behind the line's end, where `what` is expected.
    bool skipLine(const char* what);

    /// A word up to the next blank, in text whatever the section is.
    bool readWord(const char* what, std::string* word);
    /// A text in quotes; one without them goes up to the end of the line.
    bool readQuoted(const char* what, std::string* text);
    /// A number in text, whatever the section is.
    bool readTextInteger(const char* what, std::int64_t* value);
    bool readTextReal(const char* what, double* value);
    /// Expects this word.
    bool expectWord(const std::string& expected);

    bool readInt(const char* what, std::int64_t* value);
    bool readSize(const char* what, std::int64_t* value);
    bool readReal(const char* what, double* value);
    bool skipReals(const char* what, std::size_t count);

    /// readInt() or readSize(), and the number has to be from 0 to `largest`.
    bool readIntUpTo(const char* what, std::int64_t largest, std::int64_t* value);
    bool readSizeUpTo(const char* what, std::int64_t largest, std::int64_t* value);

    /// A count of items that take `bytesEach` or more in a binary section, or `wordsEach` words: there must be room for
    /// them in the file.
    bool checkCount(const char* what, std::int64_t count, std::int64_t wordsEach, std::int64_t bytesEach);

    /// Fills the error for the last number or word that was read. Always false.
    bool fail(const std::string& text);
    /// The same for another place.
    using CaeInput::failAt;
    /// Where the last number or word began.
    std::int64_t lastOffset() const;

private:
    bool beginWord(const char* what);
    std::string_view wordHere();
    bool failHere(const char* what);
    bool checkRange(const char* what, std::int64_t largest, std::int64_t value);
    template <class Number>
    bool readBytes(const char* what, Number* value);

    bool m_isBinary = false;
    bool m_hasEnded = false;
};

} // namespace orv::imp::cae
