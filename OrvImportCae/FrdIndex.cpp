#include "OrvImportCae/FrdIndex.h"

#include "OrvImportCae/FrdElementTypes.h"

#include <algorithm>
#include <iterator>
#include <limits>
#include <map>
#include <string_view>
#include <utility>

namespace orv::imp::cae {
namespace {

constexpr std::string_view MODEL_HEADER = "    1C";
constexpr std::string_view USER_HEADER = "    1U";
constexpr std::string_view PARAMETER_HEADER = "    1P";
constexpr std::string_view NODE_HEADER = "    2C";
constexpr std::string_view ELEMENT_HEADER = "    3C";
constexpr std::string_view RESULT_HEADER = "  100C";
constexpr std::string_view END_OF_FILE = " 9999";
constexpr std::string_view ROW = " -1";
constexpr std::string_view ROW_CONTINUED = " -2";
constexpr std::string_view END_OF_BLOCK = " -3";
constexpr std::string_view BLOCK_NAME = " -4";
constexpr std::string_view COMPONENT = " -5";
constexpr std::size_t MARK_WIDTH = 3;
constexpr std::size_t HEADER_WIDTH = 6;
constexpr std::int64_t VALUES_PER_LINE = 6;

// The characters [begin, end) of a line, as far as it has them.
std::string_view field(std::string_view line, std::size_t begin, std::size_t end = std::string_view::npos) {
    return begin < line.size() ? line.substr(begin, end - begin) : std::string_view();
}

// Whether a line, or what may be binary data, is a header that can follow a binary block.
bool isHeader(std::string_view line) {
    constexpr std::string_view HEADERS[] = {USER_HEADER,    PARAMETER_HEADER, NODE_HEADER,
                                            ELEMENT_HEADER, RESULT_HEADER,    END_OF_FILE};
    return std::any_of(std::begin(HEADERS), std::end(HEADERS),
                       [line](std::string_view header) { return line.starts_with(header); });
}

std::string trimmed(std::string_view text) {
    const std::size_t begin = text.find_first_not_of(' ');
    const std::size_t end = text.find_last_not_of(' ');
    return begin == std::string_view::npos ? std::string() : std::string(text.substr(begin, end - begin + 1));
}

bool readInteger(std::string_view text, std::int64_t* value) {
    return readCaeInteger(text.data(), text.data() + text.size(), value);
}

int integerOr(std::string_view text, int missing) {
    std::int64_t value = 0;
    const bool fits = readInteger(text, &value) && value >= std::numeric_limits<int>::min() &&
                      value <= std::numeric_limits<int>::max();
    return fits ? int(value) : missing;
}

std::int64_t textRowSize(const FrdRows& rows, std::int64_t valueCount) {
    const std::int64_t lineCount = std::max<std::int64_t>(1, (valueCount + VALUES_PER_LINE - 1) / VALUES_PER_LINE);
    const std::int64_t aroundValues = std::int64_t(MARK_WIDTH + frdIdWidth(rows.form)) + rows.lineEndSize;
    return lineCount * aroundValues + valueCount * std::int64_t(FRD_VALUE_WIDTH);
}

std::int64_t binaryRowSize(const FrdRows& rows, std::int64_t valueCount) {
    return 4 + valueCount * (rows.form == FrdForm::BINARY_FLOAT ? 4 : 8);
}

class Indexer {
public:
    Indexer(CaeFile& file, FrdIndex& index, ug::Error* error)
        : m_file(file), m_index(index), m_error(error), m_lines(file) {}

    bool run();

private:
    bool readFirstLine();
    bool readBlock();
    void readUserLine();
    void readParameter();
    bool readNodes();
    bool readElements();
    bool readResults();
    bool readResultHeader(FrdResultBlock* block, std::int64_t* announced);
    bool readLayout(FrdLayout* layout);
    void readEnd();
    bool finish();

    bool readAnnouncement(std::string_view what, FrdRows* rows, std::int64_t* announced);
    bool findEnd(FrdRows* rows, std::int64_t announced, std::int64_t valueCount);
    bool findTextEnd(FrdRows* rows, std::int64_t announced);
    bool isTextEnd(const FrdRows& rows, std::int64_t announced, std::int64_t end);
    bool walkTextRows(FrdRows* rows);
    bool findBinaryEnd(FrdRows* rows, std::int64_t announced);
    bool isBinaryEnd(std::int64_t offset);
    bool walkBinaryRows(FrdRows* rows, std::int64_t announced);
    bool walkBinaryElements(FrdRows* rows);
    std::int64_t firstElementSize(const FrdRows& rows);

    bool startsWith(std::string_view prefix) const;
    bool isLineCut() const;
    std::uint32_t layoutNumber(const FrdLayout& layout);
    void noteCut(std::int64_t offset, const std::string& what);
    bool failHere(const std::string& expected);

    CaeFile& m_file;
    FrdIndex& m_index;
    ug::Error* m_error;
    CaeLines m_lines;
    FrdResultBlock m_parameters; // What 1P lines told since the last block.
    std::map<FrdLayout, std::uint32_t> m_layoutNumbers;
    bool m_isFirstUserLine = true;
    bool m_hasEndLine = false;
    bool m_isCut = false;
    std::int64_t m_cutOffset = 0;
    std::string m_cutBlock; // What the file ends within.
};

bool Indexer::run() {
    if (!readFirstLine()) {
        return false;
    }
    while (!m_isCut && !m_hasEndLine && m_lines.next()) {
        if (startsWith(END_OF_FILE)) {
            readEnd();
        } else if (isLineCut()) {
            noteCut(m_lines.lineOffset(), "this line");
        } else if (!readBlock()) {
            return false;
        }
    }
    return finish();
}

bool Indexer::readFirstLine() {
    if (!m_lines.next()) {
        return ug::fail(m_error, Str(m_file.name() + " is empty; expected the results of CalculiX, which begin with "
                                                     "\"    1C\""));
    }
    if (!startsWith(MODEL_HEADER)) {
        return failHere("not a result file of CalculiX: expected \"    1C\" at its beginning");
    }
    m_index.title = trimmed(field(m_lines.line(), MODEL_HEADER.size()));
    return true;
}

bool Indexer::readBlock() {
    if (startsWith(USER_HEADER)) {
        readUserLine();
    } else if (startsWith(PARAMETER_HEADER)) {
        readParameter();
    } else if (startsWith(NODE_HEADER)) {
        return readNodes();
    } else if (startsWith(ELEMENT_HEADER)) {
        return readElements();
    } else if (startsWith(RESULT_HEADER)) {
        return readResults();
    } else if (!startsWith(MODEL_HEADER) && !trimmed(m_lines.line()).empty()) {
        return failHere("expected the header of a block (1U, 1P, 2C, 3C, 100C or 9999)");
    }
    return true;
}

// The heading of the deck is the first user line and bears no key.
void Indexer::readUserLine() {
    const std::string_view text = field(m_lines.line(), USER_HEADER.size());
    if (text.starts_with("MAT")) {
        m_index.materials.emplace_back(integerOr(field(text, 3, 8), 0), trimmed(field(text, 8)));
    } else if (m_isFirstUserLine && m_index.title.empty()) {
        m_index.title = trimmed(text);
    }
    m_isFirstUserLine = false;
}

void Indexer::readParameter() {
    const std::string_view line = m_lines.line();
    const std::string_view key = field(line, PARAMETER_HEADER.size(), 24);
    const std::string_view value = field(line, 24, 36);
    if (key.starts_with("STEP")) {
        m_parameters.increment = integerOr(field(line, 36, 48), 0);
        m_parameters.step = integerOr(field(line, 48, 60), 0);
    } else if (key.starts_with("MODE")) {
        m_parameters.mode = integerOr(value, 0);
    } else if (key.starts_with("HID")) {
        m_parameters.nodalDiameter = integerOr(value, -1);
    }
}

bool Indexer::readNodes() {
    if (m_index.nodes.header != 0) {
        return failHere("a second block of nodes: a mesh that changes within the file is not understood");
    }
    std::int64_t announced = 0;
    if (!readAnnouncement("nodes", &m_index.nodes, &announced) || !findEnd(&m_index.nodes, announced, 3)) {
        return false;
    }
    return !m_isCut || m_file.fail(m_index.nodes.header, "the file ends within this block of nodes", m_error);
}

bool Indexer::readElements() {
    if (m_index.elements.header != 0) {
        return failHere("a second block of elements: a mesh that changes within the file is not understood");
    }
    FrdRows& rows = m_index.elements;
    std::int64_t announced = 0;
    if (!readAnnouncement("elements", &rows, &announced)) {
        return false;
    }
    if (isBinary(rows.form)) {
        if (!walkBinaryElements(&rows)) {
            return false;
        }
    } else {
        rows.rowSize = firstElementSize(rows);
        if (!findTextEnd(&rows, announced)) {
            return false;
        }
    }
    return !m_isCut || m_file.fail(rows.header, "the file ends within this block of elements", m_error);
}

bool Indexer::readResults() {
    FrdResultBlock block = std::exchange(m_parameters, FrdResultBlock());
    FrdLayout layout;
    std::int64_t announced = 0;
    if (!readResultHeader(&block, &announced) || !readLayout(&layout)) {
        return false;
    }
    if (!m_isCut && !findEnd(&block.rows, announced, std::int64_t(layout.components.size()))) {
        return false;
    }
    if (m_isCut) {
        noteCut(block.rows.header, "block " + layout.name + (layout.name.empty() ? "" : " ") + "of state " +
                                       std::to_string(block.stateNumber));
        return true;
    }
    block.layout = layoutNumber(layout);
    m_index.blocks.push_back(block);
    return true;
}

bool Indexer::readResultHeader(FrdResultBlock* block, std::int64_t* announced) {
    const std::string_view line = m_lines.line();
    const std::string_view value = field(line, 12, 24);
    if (!readCaeReal(value.data(), value.data() + value.size(), &block->value)) {
        return failHere("expected the state's value in columns 13 to 24");
    }
    block->kind = integerOr(field(line, 56, 58), -1);
    if (block->kind < 0) {
        return failHere("expected the kind of analysis in columns 57 to 58");
    }
    block->stateNumber = integerOr(field(line, 58, 63), -1);
    if (block->stateNumber < 0) {
        return failHere("expected the state's number in columns 59 to 63");
    }
    return readAnnouncement("nodes", &block->rows, announced);
}

bool Indexer::readLayout(FrdLayout* layout) {
    if (!m_lines.next() || isLineCut()) {
        m_isCut = true;
        return true;
    }
    layout->name = trimmed(field(m_lines.line(), 5, 13));
    if (!startsWith(BLOCK_NAME) || layout->name.empty()) {
        return failHere("expected \" -4\" and the name of the result in columns 6 to 13");
    }
    while (m_lines.next()) {
        const std::string_view line = m_lines.line();
        if (isLineCut()) {
            m_isCut = true;
            return true;
        }
        if (!startsWith(COMPONENT)) {
            m_lines.putBack();
            return true;
        }
        const bool isComputed = integerOr(field(line, 33, 38), 0) == 1;
        if (!isComputed) {
            layout->components.push_back(
                {trimmed(field(line, 5, 13)), integerOr(field(line, 18, 23), 0), integerOr(field(line, 23, 28), 0)});
        }
    }
    m_isCut = true;
    return true;
}

void Indexer::readEnd() {
    m_hasEndLine = true;
    while (m_lines.next()) {
        if (!trimmed(m_lines.line()).empty()) {
            m_index.warnings.push_back(m_file.place(m_lines.lineOffset()) +
                                       ": what follows the end line \"9999\" is not read");
            return;
        }
    }
}

bool Indexer::finish() {
    if (m_index.nodes.header == 0) {
        return m_file.fail(m_file.size(),
                           "the file ends without a block of nodes (2C); the run was broken off before the mesh",
                           m_error);
    }
    if (m_isCut) {
        m_index.warnings.push_back(m_file.place(m_cutOffset) + ": the file ends within " + m_cutBlock +
                                   ", which is left out; the run was broken off or is not over yet");
    } else if (!m_hasEndLine) {
        m_index.warnings.push_back(m_file.name() +
                                   " ends without its end line \"9999\"; the run was broken off or is not over yet");
    }
    return true;
}

// Some text blocks announce nothing; then -1.
bool Indexer::readAnnouncement(std::string_view what, FrdRows* rows, std::int64_t* announced) {
    const std::string_view line = m_lines.line();
    const int form = integerOr(field(line, 73, 75), -1);
    if (form < 0 || form > 3) {
        return failHere("expected the format, 0 to 3, in columns 74 to 75");
    }
    rows->form = FrdForm(form);
    const std::string_view count = field(line, 24, 36);
    const bool isLeftOut = !isBinary(rows->form) && trimmed(count).empty();
    if (isLeftOut) {
        *announced = -1;
    } else if (!readInteger(count, announced) || *announced < 0) {
        return failHere("expected the number of " + std::string(what) + " in columns 25 to 36");
    }
    rows->header = m_lines.lineOffset();
    rows->begin = m_lines.offset();
    rows->lineEndSize = std::uint8_t(m_lines.lineEndSize());
    return true;
}

bool Indexer::findEnd(FrdRows* rows, std::int64_t announced, std::int64_t valueCount) {
    rows->begin = m_lines.offset();
    if (isBinary(rows->form)) {
        // Nodes are written in eight bytes in both binary forms.
        const bool isNodes = rows == &m_index.nodes;
        rows->rowSize = isNodes ? 28 : binaryRowSize(*rows, valueCount);
        return findBinaryEnd(rows, announced);
    }
    rows->rowSize = textRowSize(*rows, valueCount);
    return findTextEnd(rows, announced);
}

bool Indexer::findTextEnd(FrdRows* rows, std::int64_t announced) {
    if (announced == 0 ||
        (announced > 0 && rows->rowSize > 0 && announced <= (m_file.size() - rows->begin) / rows->rowSize)) {
        const std::int64_t end = rows->begin + announced * rows->rowSize;
        if (isTextEnd(*rows, announced, end)) {
            rows->count = announced;
            rows->end = end;
            return true;
        }
    }
    return walkTextRows(rows);
}

// Rows begin where they should and the end line stands where they should end. Leaves the end line behind.
bool Indexer::isTextEnd(const FrdRows& rows, std::int64_t announced, std::int64_t end) {
    m_lines.seek(rows.begin);
    if (!m_lines.next() || !startsWith(announced > 0 ? ROW : END_OF_BLOCK)) {
        return false;
    }
    m_lines.seek(end - 1);
    const bool beginsLine = m_lines.next() && m_lines.line().empty();
    return beginsLine && m_lines.next() && startsWith(END_OF_BLOCK);
}

bool Indexer::walkTextRows(FrdRows* rows) {
    m_lines.seek(rows->begin);
    rows->count = 0;
    while (m_lines.next()) {
        if (startsWith(END_OF_BLOCK)) {
            rows->end = m_lines.lineOffset();
            return true;
        }
        if (isLineCut()) {
            break;
        }
        if (startsWith(ROW)) {
            ++rows->count;
        } else if (!startsWith(ROW_CONTINUED)) {
            return failHere("expected a row (\" -1\" or \" -2\") or the end of the block (\" -3\")");
        }
    }
    m_isCut = true;
    return true;
}

bool Indexer::findBinaryEnd(FrdRows* rows, std::int64_t announced) {
    m_file.noteBinaryAt(rows->begin);
    const bool hasRoom = announced <= (m_file.size() - rows->begin) / rows->rowSize;
    rows->end = hasRoom ? rows->begin + announced * rows->rowSize : rows->begin;
    if ((!hasRoom || !isBinaryEnd(rows->end)) && !walkBinaryRows(rows, announced)) {
        m_isCut = !hasRoom;
        return m_isCut || failHere("expected the header of a block behind " + std::to_string(announced) +
                                   " binary rows of " + std::to_string(rows->rowSize) + " bytes");
    }
    rows->count = (rows->end - rows->begin) / rows->rowSize;
    m_lines.seek(rows->end);
    return true;
}

// A header or the file's end.
bool Indexer::isBinaryEnd(std::int64_t offset) {
    m_lines.seek(offset);
    return !m_lines.next() || isHeader(m_lines.line());
}

// Solvers have been seen that write none of the rows that they announce. That there are more than that is not looked
// into: a row could be anything.
bool Indexer::walkBinaryRows(FrdRows* rows, std::int64_t announced) {
    CaeBytes bytes(m_file);
    std::int64_t end = rows->begin;
    for (std::int64_t i = 0; i < announced && bytes.at(end, HEADER_WIDTH); ++i, end += rows->rowSize) {
        if (isHeader({bytes.at(end, HEADER_WIDTH), HEADER_WIDTH})) {
            rows->end = end;
            return true;
        }
    }
    return false;
}

// Solvers have been seen that write more elements than they announce, so it is a header that ends the block.
bool Indexer::walkBinaryElements(FrdRows* rows) {
    constexpr std::size_t HEAD_SIZE = 16;
    m_file.noteBinaryAt(rows->begin);
    CaeBytes bytes(m_file);
    rows->count = 0;
    rows->end = rows->begin;
    while (rows->end < m_file.size()) {
        if (const char* header = bytes.at(rows->end, HEADER_WIDTH); header && isHeader({header, HEADER_WIDTH})) {
            break;
        }
        const char* head = bytes.at(rows->end, HEAD_SIZE);
        if (!head) {
            m_isCut = true;
            return true;
        }
        const std::int32_t number = internal::loadWord<std::int32_t>(head + 4);
        const FrdElementType* type = findFrdElementType(number);
        if (!type) {
            return m_file.fail(rows->end + 4,
                               "expected the type of an element, 1 to 12, found " + std::to_string(number), m_error);
        }
        rows->end += std::int64_t(HEAD_SIZE) + 4 * type->nodeCount;
        ++rows->count;
    }
    m_isCut = rows->end > m_file.size();
    m_lines.seek(rows->end);
    return true;
}

// The bytes of the first element's lines, which are those of all when the elements are of one type; 0 when unknown.
std::int64_t Indexer::firstElementSize(const FrdRows& rows) {
    if (!m_lines.next()) {
        return 0;
    }
    const std::int64_t idWidth = std::int64_t(frdIdWidth(rows.form));
    const std::size_t typeBegin = MARK_WIDTH + std::size_t(idWidth);
    const FrdElementType* type = findFrdElementType(integerOr(field(m_lines.line(), typeBegin, typeBegin + 5), 0));
    if (!type) {
        return 0;
    }
    const std::int64_t nodesPerLine = rows.form == FrdForm::ASCII_SHORT ? 15 : 10;
    const std::int64_t nodeLines = (type->nodeCount + nodesPerLine - 1) / nodesPerLine;
    const std::int64_t firstLine = std::int64_t(MARK_WIDTH) + idWidth + 15 + rows.lineEndSize;
    return firstLine + nodeLines * std::int64_t(MARK_WIDTH + rows.lineEndSize) + type->nodeCount * idWidth;
}

bool Indexer::startsWith(std::string_view prefix) const {
    return m_lines.line().starts_with(prefix);
}

// The file ends within this line.
bool Indexer::isLineCut() const {
    return m_lines.lineEndSize() == 0 && m_lines.offset() >= m_file.size();
}

std::uint32_t Indexer::layoutNumber(const FrdLayout& layout) {
    const auto [found, isNew] = m_layoutNumbers.try_emplace(layout, std::uint32_t(m_index.layouts.size()));
    if (isNew) {
        m_index.layouts.push_back(layout);
    }
    return found->second;
}

void Indexer::noteCut(std::int64_t offset, const std::string& what) {
    m_isCut = true;
    m_cutOffset = offset;
    m_cutBlock = what;
}

bool Indexer::failHere(const std::string& expected) {
    return m_file.fail(m_lines.lineOffset(), expected + ", found " + quotedForPeople(m_lines.line()), m_error);
}

} // namespace

bool readFrdIndex(CaeFile& file, FrdIndex* index, ug::Error* error) {
    return Indexer(file, *index, error).run();
}

} // namespace orv::imp::cae
