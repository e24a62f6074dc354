#include "OrvImportVtk/LegacyInput.h"

#include "OrvCore/Str.h"
#include "OrvImportCae/CaeNumber.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <string_view>

namespace orv::imp::cae {
namespace {

constexpr std::size_t BUFFER_SIZE = 1 << 15;
constexpr std::size_t LONGEST_WORD = 4096;
constexpr int END = -1;

struct Type {
    std::string_view name;
    int size; ///< In bytes; of binary numbers.
};

constexpr int BIT = 0;
constexpr int STRING = -1;

constexpr Type TYPES[] = {
    {"bit", BIT},          {"char", 1},         {"signed_char", 1},      {"unsigned_char", 1}, {"short", 2},
    {"unsigned_short", 2}, {"int", 4},          {"unsigned_int", 4},     {"long", 8},          {"unsigned_long", 8},
    {"long_long", 8},      {"vtktypeint64", 8}, {"vtktypeuint64", 8},    {"vtkidtype", 4},     {"float", 4},
    {"double", 8},         {"string", STRING},  {"utf8_string", STRING},
};

const Type* findType(const std::string& name) {
    const auto found =
        std::find_if(std::begin(TYPES), std::end(TYPES), [&](const Type& type) { return type.name == name; });
    return found == std::end(TYPES) ? nullptr : found;
}

bool isBlank(int c) {
    return c == ' ' || (c >= '\t' && c <= '\r');
}

// Binary numbers begin with their largest byte.
std::int64_t integerOf(const char* bytes, int size) {
    std::uint64_t number = bytes[0] < 0 ? ~std::uint64_t(0) : 0;
    for (int i = 0; i < size; ++i) {
        number = number << 8 | static_cast<unsigned char>(bytes[i]);
    }
    return std::int64_t(number);
}

} // namespace

LegacyInput::LegacyInput(ug::Error* error) : m_error(error), m_buffer(BUFFER_SIZE) {}

bool LegacyInput::open(const std::string& filename) {
    return m_file.open(filename, m_error);
}

std::int64_t LegacyInput::size() const {
    return m_file.size();
}

void LegacyInput::setBinary(bool isBinary) {
    m_isBinary = isBinary;
}

std::string LegacyInput::word() {
    std::string found = name();
    std::transform(found.begin(), found.end(), found.begin(), internal::lower);
    return found;
}

std::string LegacyInput::name() {
    int c = get();
    while (isBlank(c)) {
        c = get();
    }
    m_wordOffset = std::min(m_offset, m_file.size()) - (c == END ? 0 : 1);
    std::string found;
    while (c != END && !isBlank(c) && found.size() < LONGEST_WORD) {
        found += char(c);
        c = get();
    }
    m_endsWithinLine = m_endsWithinLine || (c == END && !found.empty());
    if (c != END) {
        unget();
    }
    return found;
}

std::string LegacyInput::line() {
    std::string found;
    m_wordOffset = m_offset;
    for (int c = get(); c != END && c != '\n'; c = get()) {
        if (found.size() < LONGEST_WORD && c != '\r') {
            found += char(c);
        }
    }
    const std::size_t begin = std::min(found.find_first_not_of(" \t"), found.size());
    return found.substr(begin, found.find_last_not_of(" \t") + 1 - begin); // npos + 1 is 0.
}

void LegacyInput::skipParagraph() {
    line();
    while (m_offset < m_file.size() && !line().empty()) {
    }
}

bool LegacyInput::readCount(const std::string& what, std::int64_t* count) {
    const std::string text = word();
    constexpr std::int64_t BITS_OF_A_BYTE = 8;
    return (readCaeInteger(text.data(), text.data() + text.size(), count) && *count >= 0 &&
            *count <= m_file.size() * BITS_OF_A_BYTE) ||
           failToFind("the number of " + what + " that the file has", text);
}

bool LegacyInput::skipValues(const std::string& what, const std::string& type, std::int64_t count) {
    const Type* known = findType(type);
    if (!known) {
        return failToFind("a type of values", type);
    }
    if (known->size == STRING) {
        return skipStrings(what, count);
    }
    if (m_isBinary) {
        line();
        m_file.noteBinaryAt(m_offset);
        constexpr std::int64_t BITS_OF_A_BYTE = 8;
        const std::int64_t left = m_file.size() - m_offset;
        const std::int64_t bytes =
            known->size == BIT ? (count + BITS_OF_A_BYTE - 1) / BITS_OF_A_BYTE : count * known->size;
        if (count > left * BITS_OF_A_BYTE || bytes > left) {
            return fail("expected " + std::to_string(count) + " values of " + what + ", found " + std::to_string(left) +
                        " bytes");
        }
        m_offset += bytes;
        return true;
    }
    return skipNumbers(what, count);
}

bool LegacyInput::skipNumbers(const std::string& what, std::int64_t count) {
    for (std::int64_t i = 0; i < count; ++i) {
        const std::string number = name();
        double value = 0.0;
        if (number.empty() || !readCaeReal(number.data(), number.data() + number.size(), &value)) {
            return failToFind(std::to_string(count) + " values of " + what, number);
        }
    }
    return true;
}

bool LegacyInput::readIntegers(const std::string& what, const std::string& type, std::int64_t count,
                               std::vector<std::int64_t>* numbers) {
    const Type* known = findType(type);
    if (!known || known->size <= 0) {
        return failToFind("a type of whole numbers", type);
    }
    numbers->clear();
    if (m_isBinary) {
        const std::int64_t before = m_offset;
        if (!skipValues(what, type, count)) {
            return false;
        }
        std::vector<char> bytes(std::size_t(count * known->size));
        m_file.read(m_offset - std::int64_t(bytes.size()), bytes.data(), bytes.size());
        m_wordOffset = before;
        for (std::int64_t i = 0; i < count; ++i) {
            numbers->push_back(integerOf(&bytes[std::size_t(i * known->size)], known->size));
        }
        return true;
    }
    for (std::int64_t i = 0; i < count; ++i) {
        const std::string word = name();
        std::int64_t number = 0;
        if (!readCaeInteger(word.data(), word.data() + word.size(), &number)) {
            return failToFind(std::to_string(count) + " values of " + what, word);
        }
        numbers->push_back(number);
    }
    return true;
}

bool LegacyInput::endsWithinLine() const {
    return !m_isBinary && m_endsWithinLine;
}

bool LegacyInput::failToFind(const std::string& what, const std::string& found) {
    return fail("expected " + what + ", found " + (found.empty() ? "the end of the file" : quotedForPeople(found)));
}

bool LegacyInput::fail(const std::string& text) {
    const std::string place = m_file.place(m_wordOffset).substr(m_file.name().size() + 2); // Behind "NAME, ".
    return ug::fail(m_error, Str(place + ": " + text));
}

int LegacyInput::get() {
    const std::int64_t inBuffer = m_offset - m_bufferOffset;
    if (inBuffer < 0 || inBuffer >= std::int64_t(m_bufferSize)) {
        m_bufferOffset = m_offset;
        m_bufferSize = m_file.read(m_offset, m_buffer.data(), m_buffer.size());
        if (m_bufferSize == 0) {
            return END;
        }
    }
    return static_cast<unsigned char>(m_buffer[std::size_t(m_offset++ - m_bufferOffset)]);
}

void LegacyInput::unget() {
    --m_offset;
}

// In binary files each has its length in front, whose own length is in the first two bits.
bool LegacyInput::skipStrings(const std::string& what, std::int64_t count) {
    constexpr std::array<int, 4> SIZES = {8, 4, 2, 1};
    line();
    for (std::int64_t i = 0; i < count; ++i) {
        if (m_offset >= m_file.size()) {
            return failToFind(std::to_string(count) + " texts of " + what, {});
        }
        if (!m_isBinary) {
            line();
            continue;
        }
        std::array<char, 8> bytes = {};
        m_file.read(m_offset, bytes.data(), bytes.size());
        const int size = SIZES[static_cast<unsigned char>(bytes[0]) >> 6];
        bytes[0] = char(bytes[0] & 0x3f);
        const std::int64_t length = integerOf(bytes.data(), size);
        if (length > m_file.size() - m_offset - size) {
            return failToFind(std::to_string(count) + " texts of " + what, {});
        }
        m_offset += size + length;
    }
    return true;
}

} // namespace orv::imp::cae
