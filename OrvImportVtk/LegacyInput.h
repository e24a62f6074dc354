#pragma once

#include "OrvImportCae/CaeInput.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace orv::imp::cae {

enum class LegacyType { BIT, INT8, UINT8, INT16, UINT16, INT32, UINT32, INT64, UINT64, FLOAT, DOUBLE, TEXT };

/// Values of one type that stand one after the other in a file.
struct LegacyValues {
    std::string what; ///< For texts of errors.
    LegacyType type = LegacyType::FLOAT;
    std::int64_t count = 0;
    std::int64_t offset = 0; ///< Of the first one; in ASCII files blanks may come before it.
};

/// Reads words, lines and blocks of values of a legacy file of VTK, one after the other. Every text of an error tells
/// the place, but does not begin with the file's name.
class LegacyInput : public CaeInput {
public:
    /// The file lives longer.
    LegacyInput(CaeFile* file, bool isBinary, ug::Error* error);

    std::int64_t size() const;
    void setBinary(bool isBinary);
    bool isBinary() const;

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

    /// Three numbers, which are words in any file.
    bool readReals(const std::string& what, std::span<double, 3> numbers);

    /// Notes where values are and passes over them; the file has them all then. The type goes by VTK's name for it, in
    /// small letters. In binary files the values begin on the next line.
    bool passValues(const std::string& what, const std::string& type, std::int64_t count, LegacyValues* values);

    /// Reads what passValues() has passed over, into room for that many: whole numbers for integers, which
    /// have to fit, FLOAT in binary files for float, all but TEXT for double. Words go on behind what was read.
    template <class Number>
    bool read(const LegacyValues& values, Number* numbers);

    /// "line 12: expected WHAT, found "FOUND"" of the last word. Always false.
    bool failToFind(const std::string& what, std::string_view found);

    /// "line 12: TEXT". Always false.
    bool fail(const std::string& text);

private:
    std::string_view nextWord();
    const char* wordEnd() const;
    bool passWords(const LegacyValues& values);
    bool passTexts(const LegacyValues& values);
    bool failToFindAll(const LegacyValues& values, std::string_view found);
    bool failToFit(const LegacyValues& values);
    template <class Number>
    bool readWords(const LegacyValues& values, Number* numbers);
    template <class Stored, class Number>
    bool readBlock(const LegacyValues& values, Number* numbers);
    bool readBits(const LegacyValues& values, double* numbers);

    CaeFile& m_notedFile; ///< The same file, to note what is binary.
    bool m_isBinary;
};

} // namespace orv::imp::cae
