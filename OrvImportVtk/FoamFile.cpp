#include "OrvImportVtk/FoamFile.h"

#include <vtk_zlib.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <limits>
#include <utility>

namespace orv::imp::cae {
namespace {

constexpr std::size_t LONGEST_WORD = 1023; // VTK takes no more.

constexpr std::int64_t MOST_REPETITIONS = 1'000'000;

constexpr std::size_t WHOLE = std::numeric_limits<std::size_t>::max();
constexpr std::size_t BEGINNING = 16384; // A header has some hundred bytes.

constexpr FoamListType LIST_TYPES[] = {
    {"List<bool>", FoamListType::BOOL, 0},     {"List<label>", FoamListType::LABEL, 0},
    {"List<scalar>", FoamListType::SCALAR, 0}, {"List<sphericalTensor>", FoamListType::SCALAR, 1},
    {"List<vector>", FoamListType::SCALAR, 3}, {"List<symmTensor>", FoamListType::SCALAR, 6},
    {"List<tensor>", FoamListType::SCALAR, 9},
};

bool isBlank(int c) {
    return c == ' ' || (c >= '\t' && c <= '\r');
}

bool isDigit(int c) {
    return c >= '0' && c <= '9';
}

// A number behind blanks, where nothing else stands: what is behind it; null otherwise, or when it is too large.
const char* takeLabel(const char* at, const char* end, std::int64_t* label) {
    constexpr std::int64_t LARGEST = std::numeric_limits<std::int32_t>::max();
    while (at != end && isBlank(*at)) {
        ++at;
    }
    const char* const digits = at;
    std::int64_t value = 0;
    for (; at != end && isDigit(*at) && value <= LARGEST; ++at) {
        value = 10 * value + (*at - '0');
    }
    *label = value;
    return at != digits && value <= LARGEST ? at : nullptr;
}

// The characters of numbers and those between them.
constexpr std::array<bool, 256> PARTS_OF_NUMBERS = [] {
    std::array<bool, 256> table = {};
    for (const char c : std::string_view("0123456789.-+eE \t\n\v\f\r")) {
        table[static_cast<unsigned char>(c)] = true;
    }
    return table;
}();

} // namespace

const FoamListType* findFoamListType(std::string_view word) {
    const auto found = std::find_if(std::begin(LIST_TYPES), std::end(LIST_TYPES),
                                    [word](const FoamListType& type) { return word == type.name; });
    return found == std::end(LIST_TYPES) ? nullptr : found;
}

FoamFile::FoamFile(std::string folder) : m_folder(std::move(folder)) {}

// Blanks and comments. Nearly all that is behind blanks is no comment.
inline void FoamFile::skipBlanks() {
    const char* const end = m_bytes.data() + m_bytes.size();
    const char* at = m_bytes.data() + m_at;
    while (at != end && isBlank(*at)) {
        ++at;
    }
    m_at = std::size_t(at - m_bytes.data());
    if (at != end && *at == '/') {
        skipComments();
    }
}

// And the blanks behind them.
void FoamFile::skipComments() {
    while (true) {
        while (isBlank(peek())) {
            ++m_at;
        }
        if (peek() != '/') {
            return;
        }
        const std::string_view rest = m_bytes.substr(m_at, 2);
        if (rest != "//" && rest != "/*") {
            return;
        }
        const std::string_view end = rest == "//" ? "\n" : "*/";
        const std::size_t found = m_bytes.find(end, m_at + 2);
        m_at = found == std::string::npos ? m_bytes.size() : found + end.size();
    }
}

bool FoamFile::open(const std::string& name, ug::Error* error) {
    return read(name, WHOLE, error);
}

bool FoamFile::openBeginning(const std::string& name, ug::Error* error) {
    return read(name, BEGINNING, error);
}

bool FoamFile::read(const std::string& name, std::size_t mostBytes, ug::Error* error) {
    std::error_code failed;
    m_name = std::filesystem::exists(m_folder + name, failed) ? name : name + ".gz";
    m_size = std::filesystem::file_size(m_folder + m_name, failed); // Which a folder has not.
    std::ifstream file(m_folder + m_name, std::ios::binary);
    if (failed || !file) {
        return ug::fail(error, Str(name + " cannot be opened"));
    }
    const std::size_t count = std::min(std::size_t(m_size), mostBytes);
    m_buffer = std::make_unique_for_overwrite<char[]>(count);
    m_bytes = {m_buffer.get(), count};
    if (!file.read(m_buffer.get(), std::streamsize(count))) {
        return ug::fail(error, Str(m_name + " cannot be read"));
    }
    return !m_bytes.starts_with("\x1f\x8b") || unpack(mostBytes, error);
}

bool FoamFile::unpack(std::size_t mostBytes, ug::Error* error) {
    z_stream stream = {};
    stream.next_in = reinterpret_cast<Bytef*>(m_buffer.get());
    constexpr int GZIP_OR_ZLIB = 15 + 32;
    int status = inflateInit2(&stream, GZIP_OR_ZLIB);
    std::size_t inputLeft = m_bytes.size();
    constexpr std::size_t STEP = 1 << 20;
    while (status == Z_OK && m_unpacked.size() < mostBytes) {
        const std::size_t before = m_unpacked.size();
        const std::size_t step = std::min(STEP, mostBytes - before);
        m_unpacked.resize(before + step);
        if (stream.avail_in == 0) {
            stream.avail_in = uInt(std::min(inputLeft, STEP));
            inputLeft -= stream.avail_in;
        }
        stream.next_out = reinterpret_cast<Bytef*>(&m_unpacked[before]);
        stream.avail_out = uInt(step);
        status = inflate(&stream, Z_NO_FLUSH);
        m_unpacked.resize(before + step - stream.avail_out);
    }
    inflateEnd(&stream);
    constexpr std::uint64_t MOST_OUT_OF_A_BYTE = 1032;
    m_size = mostBytes == WHOLE ? m_unpacked.size() : m_size * MOST_OUT_OF_A_BYTE;
    m_bytes = {m_unpacked.data(), m_unpacked.size()};
    m_buffer.reset();
    return status == Z_STREAM_END || mostBytes != WHOLE ||
           ug::fail(error, Str(m_name + " cannot be unpacked: its gzip data are damaged or end too early"));
}

bool FoamFile::hasHeader() {
    const std::size_t begin = m_at;
    FoamToken token;
    const bool isThere = next(&token, nullptr) && token.kind == FoamToken::WORD && token.text == "FoamFile";
    m_at = begin;
    return isThere;
}

// Single words and numbers between keys and semicolons, nothing else. What VTK misses in it is an error as well.
bool FoamFile::readHeader(ug::Error* error) {
    FoamToken token;
    if (!hasHeader() || !next(&token, error) || !expect('{', error)) {
        return fail(error, "expected the dictionary FoamFile that begins OpenFOAM's files");
    }
    std::string format;
    while (next(&token, error) && token.kind == FoamToken::WORD) {
        const std::string key = token.text;
        if (!next(&token, error) || token.kind < FoamToken::LABEL || token.kind > FoamToken::STRING ||
            !expect(';', error)) {
            return fail(error, "expected one value of " + key + " in the dictionary FoamFile");
        }
        if (key == "class") {
            m_class = token.text;
        } else if (key == "object") {
            m_object = token.text;
        } else if (key == "format") {
            format = token.text;
        } else if (key == "arch") {
            m_labelSize = token.text.find("label=64") == std::string::npos ? 4 : 8;
            m_scalarSize = token.text.find("scalar=32") == std::string::npos ? 8 : 4;
        }
    }
    m_isBinary = format == "binary";
    if (!token.is('}') || m_class.empty() || m_object.empty() || (format != "ascii" && format != "binary")) {
        return fail(error, "expected class, object and format (ascii or binary) in the dictionary FoamFile");
    }
    return true;
}

bool FoamFile::next(FoamToken* token, ug::Error* error) {
    skipBlanks();
    *token = {};
    const int c = peek();
    if (c < 0) {
        return true;
    }
    if (std::strchr("();{}[]:,=+*/", c) && c != 0) {
        *token = {FoamToken::PUNCTUATION, std::string(1, char(c))};
        ++m_at;
        return true;
    }
    if (isDigit(c) || c == '-' || c == '.') {
        readNumber(token);
    } else if (c == '"') {
        return readString(token, error);
    } else if (c == '$' || c == '#') {
        ++m_at;
        FoamToken name;
        const bool isCode = next(&name, error) && c == '#' && name.is('{');
        if (name.kind != FoamToken::WORD && !isCode) {
            return fail(error, std::string("expected a name behind ") + char(c));
        }
        *token = {c == '$' ? FoamToken::IDENTIFIER : FoamToken::DIRECTIVE, name.text};
    } else {
        readWord(token);
    }
    return token->text.size() <= LONGEST_WORD || fail(error, "a word has more than 1023 characters");
}

// As far as a number goes for VTK: "1e" is one, and "-" a label.
void FoamFile::readNumber(FoamToken* token) {
    const std::size_t begin = m_at;
    const auto skipDigits = [this] {
        while (isDigit(peek())) {
            ++m_at;
        }
    };
    m_at += peek() == '-';
    skipDigits();
    token->kind = FoamToken::LABEL;
    if (peek() == '.') {
        token->kind = FoamToken::SCALAR;
        ++m_at;
        skipDigits();
    }
    if (peek() == 'e' || peek() == 'E') {
        token->kind = FoamToken::SCALAR;
        ++m_at;
        m_at += peek() == '+' || peek() == '-';
        skipDigits();
    }
    token->text = std::string(m_bytes.substr(begin, m_at - begin));
    token->label = std::strtoll(token->text.c_str(), nullptr, 10);
}

bool FoamFile::readString(FoamToken* token, ug::Error* error) {
    token->kind = FoamToken::STRING;
    bool isEscaped = false;
    for (++m_at; peek() >= 0; ++m_at) {
        const char c = char(peek());
        if (c == '\\' && !isEscaped) {
            isEscaped = true;
            continue;
        }
        if (c == '"' && !isEscaped) {
            ++m_at;
            return true;
        }
        if ((c == '\n' && !isEscaped) || token->text.size() > LONGEST_WORD) {
            break;
        }
        token->text += c;
        isEscaped = false;
    }
    return fail(error, "a text in quotes has no end");
}

void FoamFile::readWord(FoamToken* token) {
    const std::size_t begin = m_at;
    int depth = 0;
    for (int c = peek(); c >= 0 && !isBlank(c) && !std::strchr("\"/;{}", c); c = peek()) {
        depth += c == '(' ? 1 : c == ')' ? -1 : 0;
        if (depth < 0) {
            break;
        }
        ++m_at;
    }
    m_at = std::max(m_at, begin + 1); // A zero byte is a word, too.
    *token = {FoamToken::WORD, std::string(m_bytes.substr(begin, m_at - begin))};
}

bool FoamFile::expect(char punctuation, ug::Error* error) {
    skipBlanks();
    if (peek() != punctuation) {
        return fail(error, std::string("expected '") + punctuation + "'");
    }
    ++m_at;
    return true;
}

bool FoamFile::skipCode(ug::Error* error) {
    while (true) {
        skipBlanks();
        if (peek() < 0) {
            return fail(error, "code has no end");
        }
        const bool isHash = peek() == '#';
        ++m_at;
        if (isHash && peek() >= 0 && peek() != '/' && m_bytes[m_at++] == '}') {
            return true;
        }
    }
}

bool FoamFile::checkCount(std::int64_t count, std::size_t bytesOfItem, ug::Error* error) const {
    return (count >= 0 && std::uint64_t(count) <= (m_size - m_at) / bytesOfItem) ||
           fail(error, "a list of " + std::to_string(count) + " items has no room in the file");
}

// Of one value, "5{0}", which takes no room in the file.
bool FoamFile::checkRepetitions(std::int64_t count, ug::Error* error) const {
    return (count >= 0 && count <= MOST_REPETITIONS) ||
           fail(error, "a list repeats its value " + std::to_string(count) + " times");
}

// Stays behind the first bracket, and tells how many bytes binary items take.
bool FoamFile::beginList(const FoamListType& type, ListForm* form, std::size_t* bytes, ug::Error* error) {
    FoamToken count;
    *form = PLAIN;
    *bytes = 0;
    if (!next(&count, error)) {
        return false;
    }
    if (count.is('(')) {
        return true;
    }
    if (count.kind != FoamToken::LABEL) {
        return fail(error, "expected the count of a list");
    }
    const auto components = std::size_t(std::max(type.componentCount, 1));
    if (m_isBinary) {
        *form = BINARY;
        const std::size_t sizes[] = {1, m_labelSize, m_scalarSize};
        const std::size_t bytesOfItem = components * sizes[type.number];
        *bytes = std::size_t(count.label) * bytesOfItem;
        return count.label == 0 || (expect('(', error) && checkCount(count.label, bytesOfItem, error));
    }
    skipBlanks();
    if (peek() == '{') {
        *form = REPEATED;
        ++m_at;
        return checkRepetitions(count.label, error);
    }
    return expect('(', error) && checkCount(count.label, 2 * components, error);
}

bool FoamFile::checkList(const FoamListType& type, ug::Error* error) {
    ListForm form = PLAIN;
    std::size_t bytes = 0;
    return beginList(type, &form, &bytes, error);
}

bool FoamFile::skipList(const FoamListType& type, ug::Error* error) {
    ListForm form = PLAIN;
    std::size_t bytes = 0;
    if (!beginList(type, &form, &bytes, error)) {
        return false;
    }
    const int depth = type.componentCount == 0 ? 1 : 2;
    switch (form) {
    case BINARY:
        m_at += bytes;
        return bytes == 0 || expect(')', error);
    case REPEATED:
        return (depth == 1 || expect('(', error)) && skipNumbers(0, error) && (depth == 1 || expect(')', error)) &&
               expect('}', error);
    default:
        return skipNumbers(depth, error);
    }
}

// To the end of the brackets that are open, which are no more than that at any time.
bool FoamFile::skipNumbers(int depth, ug::Error* error) {
    int open = std::min(depth, 1);
    const char* at = m_bytes.data() + m_at;
    const char* const end = m_bytes.data() + m_bytes.size();
    bool isAtEnd = false;
    for (; at != end && !isAtEnd; ++at) {
        if (PARTS_OF_NUMBERS[static_cast<unsigned char>(*at)]) {
            continue;
        }
        open += *at == '(' ? 1 : *at == ')' ? -1 : 0;
        isAtEnd = open == 0 && *at == ')';
        if (open < 0 || open > depth || (*at != '(' && *at != ')')) {
            break;
        }
    }
    m_at = std::size_t(at - m_bytes.data());
    return isAtEnd || depth == 0 || fail(error, "expected numbers");
}

bool FoamFile::readLabel(std::int64_t* label, ug::Error* error) {
    skipBlanks();
    const bool isNegative = peek() == '-';
    m_at += isNegative;
    if (!isDigit(peek())) {
        return fail(error, "expected a whole number");
    }
    const char* const begin = m_bytes.data();
    const char* const next = takeLabel(begin + m_at, begin + m_bytes.size(), label);
    if (!next) {
        return fail(error, "a number is too large");
    }
    m_at = std::size_t(next - begin);
    *label = isNegative ? -*label : *label;
    return true;
}

std::int64_t FoamFile::binaryLabel(std::size_t index) const {
    std::int64_t label = 0;
    if (m_labelSize == 8) {
        std::memcpy(&label, &m_bytes[m_at + 8 * index], 8);
        return label;
    }
    std::int32_t shortLabel = 0;
    std::memcpy(&shortLabel, &m_bytes[m_at + 4 * index], 4);
    return shortLabel;
}

// Stays at the first one. Without any, there are no brackets.
bool FoamFile::beginBinaryLabels(std::int64_t* count, ug::Error* error) {
    return readLabel(count, error) && (*count == 0 || expect('(', error)) && checkCount(*count, m_labelSize, error);
}

bool FoamFile::readLabels(std::uint64_t* count, std::int64_t* largest, ug::Error* error) {
    *largest = -1;
    std::int64_t items = 0;
    if (m_isBinary) {
        if (!beginBinaryLabels(&items, error)) {
            return false;
        }
        for (std::size_t i = 0; i < std::size_t(items); ++i) {
            *largest = std::max(*largest, binaryLabel(i));
        }
        m_at += std::size_t(items) * m_labelSize;
        *count = std::uint64_t(items);
        return items == 0 || expect(')', error);
    }
    if (!readLabel(&items, error)) {
        return false;
    }
    *count = std::uint64_t(items);
    skipBlanks();
    if (peek() == '{') {
        ++m_at;
        return checkRepetitions(items, error) && readLabel(largest, error) && expect('}', error);
    }
    if (!expect('(', error) || !checkCount(items, 2, error)) {
        return false;
    }
    const char* const begin = m_bytes.data();
    const char* at = begin + m_at; // In a register, which m_at is not.
    for (std::int64_t i = 0; i < items; ++i) {
        std::int64_t label = 0;
        const char* next = takeLabel(at, begin + m_bytes.size(), &label);
        if (!next) { // Behind a comment, perhaps.
            m_at = std::size_t(at - begin);
            if (!readLabel(&label, error)) {
                return false;
            }
            next = begin + m_at;
        }
        at = next;
        *largest = std::max(*largest, label);
    }
    m_at = std::size_t(at - begin);
    return expect(')', error);
}

bool FoamFile::skipFaces(std::uint64_t* count, ug::Error* error) {
    if (m_isBinary) {
        return skipBinaryFaces(count, error);
    }
    std::int64_t faces = 0;
    if (!readLabel(&faces, error) || !expect('(', error) || !checkCount(faces, 3, error)) {
        return false;
    }
    *count = std::uint64_t(faces);
    for (std::int64_t i = 0; i < faces; ++i) {
        std::int64_t points = 0;
        if (!readLabel(&points, error) || !expect('(', error) || !checkCount(points, 2, error)) {
            return false;
        }
        const std::size_t end = m_bytes.find(')', m_at); // VTK finds out itself whether numbers are before it.
        if (end == std::string_view::npos) {
            return fail(error, "expected ')'");
        }
        m_at = end + 1;
    }
    return expect(')', error);
}

// Either the beginning of each face among all points and then those, or face by face.
bool FoamFile::skipBinaryFaces(std::uint64_t* count, ug::Error* error) {
    std::int64_t items = 0;
    if (m_class != "faceCompactList") {
        if (!readLabel(&items, error) || !expect('(', error) || !checkCount(items, 3, error)) {
            return false;
        }
        *count = std::uint64_t(items);
        for (std::int64_t i = 0; i < items; ++i) {
            std::int64_t points = 0;
            if (!beginBinaryLabels(&points, error)) {
                return false;
            }
            m_at += std::size_t(points) * m_labelSize;
            if (points > 0 && !expect(')', error)) {
                return false;
            }
        }
        return expect(')', error);
    }
    if (!beginBinaryLabels(&items, error)) {
        return false;
    }
    std::int64_t end = 0;
    for (std::size_t i = 0; i < std::size_t(items); ++i) {
        const std::int64_t begin = binaryLabel(i);
        if (begin < end || (i == 0 && begin != 0)) {
            return fail(error, "the faces do not begin one behind the other");
        }
        end = begin;
    }
    m_at += std::size_t(items) * m_labelSize;
    *count = items == 0 ? 0 : std::uint64_t(items - 1);
    std::int64_t points = 0;
    if ((items > 0 && !expect(')', error)) || !beginBinaryLabels(&points, error)) {
        return false;
    }
    m_at += std::size_t(points) * m_labelSize;
    return (points == end && items > 0 && (points == 0 || expect(')', error))) ||
           fail(error, "the faces do not have the points that they count");
}

bool FoamFile::fail(ug::Error* error, const std::string& text) const {
    if (error && !error->isEmpty()) {
        return false; // What went wrong before is the reason.
    }
    const auto lines = 1 + std::count(m_bytes.begin(), m_bytes.begin() + std::ptrdiff_t(m_at), '\n');
    return ug::fail(error, Str(m_name + ", line " + std::to_string(lines) + ": " + text));
}

} // namespace orv::imp::cae
