#include "OrvImportVtk/LegacyInput.h"

#include "OrvCore/Str.h"
#include "OrvImportCae/CaeNumber.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>
#include <iterator>
#include <type_traits>
#include <utility>
#include <vector>

namespace orv::imp::cae {
namespace {

constexpr std::size_t LONGEST_WORD = 4096;
constexpr std::int64_t BITS_OF_A_BYTE = 8;

struct Type {
    std::string_view name;
    LegacyType type;
};

// What VTK calls vtkIdType has 32 bits in its files.
constexpr Type TYPES[] = {
    {"bit", LegacyType::BIT},
    {"char", LegacyType::INT8},
    {"signed_char", LegacyType::INT8},
    {"unsigned_char", LegacyType::UINT8},
    {"short", LegacyType::INT16},
    {"unsigned_short", LegacyType::UINT16},
    {"int", LegacyType::INT32},
    {"vtkidtype", LegacyType::INT32},
    {"unsigned_int", LegacyType::UINT32},
    {"long", LegacyType::INT64},
    {"long_long", LegacyType::INT64},
    {"vtktypeint64", LegacyType::INT64},
    {"unsigned_long", LegacyType::UINT64},
    {"vtktypeuint64", LegacyType::UINT64},
    {"float", LegacyType::FLOAT},
    {"double", LegacyType::DOUBLE},
    {"string", LegacyType::TEXT},
    {"utf8_string", LegacyType::TEXT},
};

/// Calls `visit` with a number of the type; false for types that are no numbers of whole bytes.
template <class Visit>
bool visitNumber(LegacyType type, Visit visit) {
    switch (type) {
    case LegacyType::INT8:
        return visit(std::int8_t());
    case LegacyType::UINT8:
        return visit(std::uint8_t());
    case LegacyType::INT16:
        return visit(std::int16_t());
    case LegacyType::UINT16:
        return visit(std::uint16_t());
    case LegacyType::INT32:
        return visit(std::int32_t());
    case LegacyType::UINT32:
        return visit(std::uint32_t());
    case LegacyType::INT64:
        return visit(std::int64_t());
    case LegacyType::UINT64:
        return visit(std::uint64_t());
    case LegacyType::FLOAT:
        return visit(float());
    case LegacyType::DOUBLE:
        return visit(double());
    case LegacyType::BIT:
    case LegacyType::TEXT:
        break;
    }
    return false;
}

std::int64_t sizeOf(LegacyType type, std::int64_t count) {
    std::int64_t size = (count + BITS_OF_A_BYTE - 1) / BITS_OF_A_BYTE; // Of bits.
    visitNumber(type, [&](auto number) {
        size = count * std::int64_t(sizeof number);
        return true;
    });
    return size;
}

bool isBlank(char c) {
    return c == ' ' || (c >= '\t' && c <= '\r');
}

// Binary numbers begin with their largest byte.
template <class Number>
Number numberAt(const char* bytes) {
    using std::uint16_t, std::uint32_t, std::uint64_t;
    if constexpr (sizeof(Number) == 1) {
        return std::bit_cast<Number>(*bytes);
    } else {
        std::conditional_t<sizeof(Number) == 2, uint16_t, std::conditional_t<sizeof(Number) == 4, uint32_t, uint64_t>>
            bits;
        std::memcpy(&bits, bytes, sizeof bits);
        if constexpr (sizeof(Number) == 2) {
            bits = __builtin_bswap16(bits);
        } else if constexpr (sizeof(Number) == 4) {
            bits = __builtin_bswap32(bits);
        } else {
            bits = __builtin_bswap64(bits);
        }
        return std::bit_cast<Number>(bits);
    }
}

bool readNumber(std::string_view word, double* number) {
    return !word.empty() && readCaeReal(word.data(), word.data() + word.size(), number);
}

bool readNumber(std::string_view word, std::int64_t* number) {
    return readCaeInteger(word.data(), word.data() + word.size(), number);
}

// Enough to tell numbers from the name of a section.
bool looksLikeNumber(std::string_view word) {
    double number = 0.0;
    return !word.empty() &&
           (internal::isDigit(word[0]) || word[0] == '-' || word[0] == '.' || readNumber(word, &number));
}

} // namespace

LegacyInput::LegacyInput(CaeFile* file, bool isBinary, ug::Error* error)
    : CaeInput(*file, error), m_notedFile(*file), m_isBinary(isBinary) {}

std::int64_t LegacyInput::size() const {
    return m_file.size();
}

void LegacyInput::setBinary(bool isBinary) {
    m_isBinary = isBinary;
}

bool LegacyInput::isBinary() const {
    return m_isBinary;
}

std::string LegacyInput::word() {
    std::string found = name();
    std::transform(found.begin(), found.end(), found.begin(), internal::lower);
    return found;
}

std::string LegacyInput::name() {
    return std::string(nextWord());
}

std::string LegacyInput::line() {
    constexpr std::string_view BLANKS = " \t\r";
    std::string found;
    m_lastOffset = offset();
    for (bool isEnd = false; !isEnd && fill(1); m_at += isEnd) {
        const char* end = std::find(m_at, m_end, '\n');
        found.append(m_at, std::min(std::size_t(end - m_at), LONGEST_WORD - found.size()));
        isEnd = end < m_end;
        m_at = end;
    }
    const std::size_t begin = std::min(found.find_first_not_of(BLANKS), found.size());
    return found.substr(begin, found.find_last_not_of(BLANKS) + 1 - begin); // npos + 1 is 0.
}

void LegacyInput::skipParagraph() {
    line();
    while (fill(1) && !line().empty()) {
    }
}

bool LegacyInput::readCount(const std::string& what, std::int64_t* count) {
    const std::string_view text = nextWord();
    return (readNumber(text, count) && *count >= 0 && *count <= m_file.size() * BITS_OF_A_BYTE) ||
           failToFind("the number of " + what + " that the file has", text);
}

bool LegacyInput::readReals(const std::string& what, std::span<double, 3> numbers) {
    for (double& number : numbers) {
        const std::string_view text = nextWord();
        if (!readNumber(text, &number)) {
            return failToFind("3 values of " + what, text);
        }
    }
    return true;
}

bool LegacyInput::passValues(const std::string& what, const std::string& type, std::int64_t count,
                             LegacyValues* values) {
    const auto known =
        std::find_if(std::begin(TYPES), std::end(TYPES), [&](const Type& other) { return other.name == type; });
    if (known == std::end(TYPES)) {
        return failToFind("a type of values", type);
    }
    if (m_isBinary || known->type == LegacyType::TEXT) {
        line();
    }
    *values = {what, known->type, count, offset()};
    if (known->type == LegacyType::TEXT) {
        return passTexts(*values);
    }
    if (!m_isBinary) {
        return passWords(*values);
    }
    m_notedFile.noteBinaryAt(offset());
    const std::int64_t left = m_file.size() - offset();
    if (count > left * BITS_OF_A_BYTE || sizeOf(known->type, count) > left) {
        return fail("expected " + std::to_string(count) + " values of " + what + ", found " + std::to_string(left) +
                    " bytes");
    }
    seek(offset() + sizeOf(known->type, count));
    return true;
}

template <class Number>
bool LegacyInput::read(const LegacyValues& values, Number* numbers) {
    m_lastOffset = values.offset;
    if (values.count == 0) {
        return true;
    }
    if (!m_isBinary && values.type != LegacyType::TEXT) {
        return readWords(values, numbers);
    }
    if constexpr (std::is_same_v<Number, double>) {
        if (values.type == LegacyType::BIT) {
            return readBits(values, numbers);
        }
    }
    bool isRead = false;
    const bool isNumber = visitNumber(values.type, [&](auto number) {
        using Stored = decltype(number);
        if constexpr (std::is_same_v<Number, Stored> || std::is_same_v<Number, double> ||
                      (std::is_integral_v<Number> && std::is_integral_v<Stored>)) {
            isRead = readBlock<Stored>(values, numbers);
            return true;
        }
        return false;
    });
    return isNumber ? isRead
                    : fail(std::string("expected ") + (std::is_integral_v<Number> ? "whole numbers" : "numbers") +
                           " of " + values.what + ", found values of another type");
}

template bool LegacyInput::read(const LegacyValues&, float*);
template bool LegacyInput::read(const LegacyValues&, double*);
template bool LegacyInput::read(const LegacyValues&, std::int32_t*);
template bool LegacyInput::read(const LegacyValues&, std::uint8_t*);

bool LegacyInput::failToFind(const std::string& what, std::string_view found) {
    return fail("expected " + what + ", found " + (found.empty() ? "the end of the file" : quotedForPeople(found)));
}

bool LegacyInput::fail(const std::string& text) {
    const std::string place = m_file.place(m_lastOffset).substr(m_file.name().size() + 2); // Behind "NAME, ".
    return ug::fail(m_error, Str(place + ": " + text));
}

// Valid until the next move.
std::string_view LegacyInput::nextWord() {
    do {
        m_at = std::find_if_not(m_at, m_end, isBlank);
    } while (m_at == m_end && fill(1));
    m_lastOffset = offset();
    const char* end = wordEnd();
    if (end == m_end) {
        fill(LONGEST_WORD);
        end = wordEnd();
    }
    return {std::exchange(m_at, end), end};
}

const char* LegacyInput::wordEnd() const {
    return std::find_if(m_at, m_at + std::min(m_end - m_at, std::ptrdiff_t(LONGEST_WORD)), isBlank);
}

bool LegacyInput::passWords(const LegacyValues& values) {
    for (std::int64_t i = 0; i < values.count; ++i) {
        if (const std::string_view word = nextWord(); !looksLikeNumber(word)) {
            return failToFindAll(values, word);
        }
    }
    return true;
}

// In binary files each has its length in front, whose own length is in the first two bits.
bool LegacyInput::passTexts(const LegacyValues& values) {
    constexpr std::array<std::int64_t, 4> SIZES = {8, 4, 2, 1};
    for (std::int64_t i = 0; i < values.count; ++i) {
        if (!fill(1)) {
            return failToFindAll(values, {});
        }
        if (!m_isBinary) {
            line();
            continue;
        }
        std::array<char, 8> bytes = {};
        m_file.read(offset(), bytes.data(), bytes.size());
        const std::int64_t size = SIZES[static_cast<unsigned char>(bytes[0]) >> 6];
        bytes[0] = char(bytes[0] & 0x3f);
        const auto length = std::int64_t(numberAt<std::uint64_t>(bytes.data()) >> (64 - 8 * size));
        if (length > m_file.size() - offset() - size) {
            return failToFindAll(values, {});
        }
        seek(offset() + size + length);
    }
    return true;
}

bool LegacyInput::failToFindAll(const LegacyValues& values, std::string_view found) {
    return failToFind(std::to_string(values.count) + " values of " + values.what, found);
}

bool LegacyInput::failToFit(const LegacyValues& values) {
    return fail("expected numbers of " + values.what + ", found one that is out of bounds");
}

template <class Number>
bool LegacyInput::readWords(const LegacyValues& values, Number* numbers) {
    seek(values.offset);
    for (std::int64_t i = 0; i < values.count; ++i) {
        std::conditional_t<std::is_integral_v<Number>, std::int64_t, double> number = 0;
        if (const std::string_view word = nextWord(); !readNumber(word, &number)) {
            return failToFindAll(values, word);
        }
        numbers[i] = Number(number);
        if constexpr (std::is_integral_v<Number>) {
            if (!std::in_range<Number>(number)) {
                return failToFit(values);
            }
        }
    }
    return true;
}

template <class Stored, class Number>
bool LegacyInput::readBlock(const LegacyValues& values, Number* numbers) {
    constexpr std::int64_t AT_ONCE = std::int64_t(BUFFER_SIZE / sizeof(Stored));
    std::vector<char> bytes(std::size_t(std::min(values.count, AT_ONCE)) * sizeof(Stored));
    for (std::int64_t done = 0; done < values.count; done += AT_ONCE) {
        const std::int64_t count = std::min(values.count - done, AT_ONCE);
        const std::size_t size = std::size_t(count) * sizeof(Stored);
        if (m_file.read(values.offset + done * std::int64_t(sizeof(Stored)), bytes.data(), size) < size) {
            return failToFindAll(values, {});
        }
        bool fits = true;
        for (std::int64_t i = 0; i < count; ++i) {
            const auto number = numberAt<Stored>(&bytes[std::size_t(i) * sizeof(Stored)]);
            numbers[done + i] = Number(number);
            if constexpr (std::is_integral_v<Number>) {
                fits &= std::in_range<Number>(number);
            }
        }
        if (!fits) {
            return failToFit(values);
        }
    }
    return true;
}

// The first one is the highest of its byte.
bool LegacyInput::readBits(const LegacyValues& values, double* numbers) {
    std::vector<char> bytes(std::size_t(sizeOf(values.type, values.count)));
    if (m_file.read(values.offset, bytes.data(), bytes.size()) < bytes.size()) {
        return failToFindAll(values, {});
    }
    for (std::int64_t i = 0; i < values.count; ++i) {
        numbers[i] = bytes[std::size_t(i / BITS_OF_A_BYTE)] >> (BITS_OF_A_BYTE - 1 - i % BITS_OF_A_BYTE) & 1;
    }
    return true;
}

} // namespace orv::imp::cae
