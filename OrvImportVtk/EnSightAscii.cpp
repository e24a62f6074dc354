#include "OrvImportVtk/EnSightAscii.h"

#include "OrvImportCae/CaeNumber.h"

#include <algorithm>
#include <array>
#include <utility>

namespace orv::imp::cae {
namespace {

constexpr std::string_view STEP_BEGIN = "BEGIN TIME STEP";
constexpr std::string_view BLANKS = " \t\r";
constexpr std::size_t NUMBERS_AT_ONCE = 1024;
constexpr std::size_t BYTES_OF_A_WORD = 2; // At least, with what separates it from the next one.

std::string_view trimmed(std::string_view text) {
    const std::size_t begin = std::min(text.find_first_not_of(BLANKS), text.size());
    return text.substr(begin, text.find_last_not_of(BLANKS) + 1 - begin); // npos + 1 is 0.
}

bool beginsNumber(std::string_view word) {
    return std::string_view("+-.0123456789nNiI").find(word[0]) != std::string_view::npos;
}

} // namespace

EnSightAscii::EnSightAscii(std::unique_ptr<CaeFile> file, ug::Error* error)
    : EnSightFile(std::move(file), ASCII, error), m_lines(this->file()) {}

bool EnSightAscii::readText(std::string_view what, std::string* text) {
    setTextOffset(m_lines.lineOffset());
    if (const std::string_view left = trimmed(m_rest); !left.empty()) {
        return failToFind("the end of the line", left);
    }
    setTextOffset(m_lines.offset());
    if (!nextLine()) {
        return fail("expected " + std::string(what) + ", found the end of the file");
    }
    *text = trimmed(m_rest);
    m_rest = {};
    return true;
}

bool EnSightAscii::readPartNumber(int* number) {
    std::vector<int> numbers;
    if (!readInts("a part", 1, 1, std::numeric_limits<int>::max(), &numbers)) {
        return false;
    }
    *number = numbers[0];
    return true;
}

bool EnSightAscii::skipNumbers(std::string_view what, std::size_t count) {
    return eachWord(what, count, beginsNumber);
}

bool EnSightAscii::readIntPieces(std::string_view what, std::size_t count, int lowest, int highest,
                                 const TakeInts& take) {
    std::array<int, NUMBERS_AT_ONCE> piece;
    std::size_t size = 0;
    const bool isRead = eachWord(what, count, [&](std::string_view word) {
        std::int64_t number = 0;
        if (!readCaeInteger(word.data(), word.data() + word.size(), &number) || number < lowest || number > highest) {
            return false;
        }
        piece[size++] = int(number);
        if (size == piece.size()) {
            take(piece);
            size = 0;
        }
        return true;
    });
    take(std::span(piece).first(size));
    return isRead;
}

bool EnSightAscii::readFloatsTo(std::string_view what, std::size_t count, float* first, std::size_t stride) {
    return eachWord(what, count, [&first, stride](std::string_view word) {
        double number = 0.0;
        if (!readCaeReal(word.data(), word.data() + word.size(), &number)) {
            return false;
        }
        *first = float(number);
        first += stride;
        return true;
    });
}

bool EnSightAscii::isAtEnd() {
    if (!trimmed(m_rest).empty()) {
        return false;
    }
    do {
        if (!nextLine()) {
            return true;
        }
    } while (trimmed(m_rest).empty());
    m_lines.putBack();
    m_rest = {};
    return false;
}

std::size_t EnSightAscii::room() const {
    const auto bytes = std::size_t(file().size() - m_lines.offset()) + m_rest.size();
    return (bytes + 1) / BYTES_OF_A_WORD;
}

std::int64_t EnSightAscii::offset() const {
    return m_lines.lineOffset();
}

bool EnSightAscii::goToStep(std::size_t step) {
    std::size_t found = 0;
    while (nextLine()) {
        found += trimmed(m_rest) == STEP_BEGIN;
        m_rest = {};
        if (found == step + 1) {
            return true;
        }
    }
    setTextOffset(m_lines.offset());
    return fail("expected a step more, found " + std::to_string(found));
}

// A line that is a comment is none.
bool EnSightAscii::nextLine() {
    do {
        if (!m_lines.next()) {
            m_rest = {};
            return false;
        }
        m_rest = m_lines.line();
    } while (m_rest.starts_with('#'));
    return true;
}

template <class TakeWord>
bool EnSightAscii::eachWord(std::string_view what, std::size_t count, TakeWord take) {
    if (!hasRoomFor(what, count)) {
        return false;
    }
    for (std::size_t i = 0; i < count; ++i) {
        std::size_t begin = m_rest.find_first_not_of(BLANKS);
        while (begin == std::string_view::npos) {
            if (!nextLine()) {
                return failToFindAll(m_lines.offset(), what, count, "the end of the file");
            }
            begin = m_rest.find_first_not_of(BLANKS);
        }
        const std::size_t end = std::min(m_rest.find_first_of(BLANKS, begin), m_rest.size());
        const std::string_view word = m_rest.substr(begin, end - begin);
        if (end == m_rest.size() && m_lines.lineEndSize() == 0) { // Some of the number may be missing.
            return failToFindAll(m_lines.lineOffset(), what, count, quotedForPeople(word) + " without a line end");
        }
        if (!take(word)) {
            return failToFindAll(m_lines.lineOffset(), what, count, quotedForPeople(word));
        }
        m_rest.remove_prefix(end);
    }
    return true;
}

} // namespace orv::imp::cae
