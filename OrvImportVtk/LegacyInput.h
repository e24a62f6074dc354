#pragma once

#include "OrvImportCae/CaeFile.h"
#include "OrvUnstructGrid/Error.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace orv::imp::cae {

/// Reads words, lines and blocks of values of a legacy file of VTK, one after the other. Every text of an error tells
/// the place, but does not begin with the file's name.
class LegacyInput {
public:
    explicit LegacyInput(ug::Error* error);

    bool open(const std::string& filename);
    std::int64_t size() const;
    void setBinary(bool isBinary);

    /// "" at the end of the file. In small letters.
    std::string word();

    /// The same as it stands there.
    std::string name();

    /// What is left of the line, without blanks at its ends.
    std::string line();

    /// Passes over lines up to an empty one.
    void skipParagraph();

    /// A number that is not negative, and not larger than what the file can have of anything.
    bool readCount(const std::string& what, std::int64_t* count);

    /// Values of one of VTK's types, by its name in small letters. In binary files they begin on the next line.
    bool skipValues(const std::string& what, const std::string& type, std::int64_t count);

    /// Words that are numbers, in any file.
    bool skipNumbers(const std::string& what, std::int64_t count);

    /// Values that are whole numbers. Replaces the list.
    bool readIntegers(const std::string& what, const std::string& type, std::int64_t count,
                      std::vector<std::int64_t>* numbers);

    /// Whether the file ends with a number and not with a line end.
    bool endsWithinLine() const;

    /// "line 12: expected WHAT, found "FOUND"" of the last word. Always false.
    bool failToFind(const std::string& what, const std::string& found);

    /// "line 12: TEXT". Always false.
    bool fail(const std::string& text);

private:
    int get();
    void unget();
    bool skipStrings(const std::string& what, std::int64_t count);

    ug::Error* m_error;
    CaeFile m_file;
    bool m_isBinary = false;
    std::vector<char> m_buffer;
    std::int64_t m_bufferOffset = 0;
    std::size_t m_bufferSize = 0;
    std::int64_t m_offset = 0;
    std::int64_t m_wordOffset = 0; ///< Of the last word.
    bool m_endsWithinLine = false;
};

} // namespace orv::imp::cae
