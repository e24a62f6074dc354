#pragma once

#include "OrvImportCae/CaeInput.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace orv::imp::cae {

/// Reads the words and numbers of a Tecplot file one behind the other. Blanks, commas and line ends stand between them,
/// and "#" begins a comment.
///
/// What is not as expected gives "NAME, line 12: expected WHAT, found THAT", and false.
class TecInput : public CaeInput {
public:
    /// @param error where failures go; may be null
    TecInput(const CaeFile& file, ug::Error* error);

    void seek(std::int64_t offset);

    /// Goes to what is not a blank, a comma or a comment. False at the end of the file.
    bool skipBlanks();
    /// Goes behind the end of the line; false at the end of the file.
    bool skipLine();
    /// Whether a name begins behind blanks.
    bool isAtName();
    /// Goes behind that character when it comes next, behind blanks.
    bool take(char c);
    bool expect(char c, const char* what);

    /// A word up to a blank or one of ,=()[]"'
    bool readWord(const char* what, std::string* word);
    /// The same in capital letters.
    bool readName(const char* what, std::string* name);
    /// A text in quotes of either kind, or a word.
    bool readText(const char* what, std::string* text);
    bool readInteger(const char* what, std::int64_t least, std::int64_t most, std::int64_t* value);
    bool readReal(const char* what, double* value);

    /// Passes over so many numbers. "3*0.5" is three.
    bool skipNumbers(const char* what, std::uint64_t count);

    /// The next of a list of numbers. Repeated ones must not reach behind the list's end, see endNumbers().
    /// @param value null to pass over it
    bool nextReal(const char* what, double* value);
    bool nextIndex(const char* what, std::uint64_t count, std::uint32_t* index);
    /// Behind a list: false, and an error, when its last number is repeated beyond it.
    bool endNumbers(const char* what);

    /// Fills the error for a place. Always false.
    using CaeInput::failAt;
    /// The same for the last word or number.
    bool fail(const std::string& text);

private:
    bool beginWord(const char* what);
    std::string_view wordHere(bool isNumber);
    bool readRun(const char* what);
    bool failHere(const char* what);

    std::string_view m_run; ///< What is repeated; it lies in the buffer.
    std::uint64_t m_runLeft = 0;
    bool m_isRunRead = false; ///< And its value is in the next one.
    double m_runValue = 0;
};

} // namespace orv::imp::cae
