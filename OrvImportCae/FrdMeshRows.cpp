#include "OrvImportCae/FrdMeshRows.h"

#include "OrvCore/Defines.h"
#include "OrvImportCae/FrdNumber.h"

#include <algorithm>
#include <cmath>

namespace orv::imp::cae {
namespace {

constexpr std::string_view ROW = " -1";
constexpr std::string_view ROW_CONTINUED = " -2";
constexpr std::size_t MARK_WIDTH = 3;
constexpr std::size_t TYPE_WIDTH = 5; // And the group's.
constexpr std::size_t MATERIAL_WIDTH = 5;
constexpr std::size_t BINARY_NODE_SIZE = 28;
constexpr std::size_t BINARY_ELEMENT_HEAD_SIZE = 16;

using internal::loadWord;

bool readColumn(std::string_view line, std::size_t begin, std::size_t width, std::int64_t* value) {
    return begin + width <= line.size() && readCaeInteger(line.data() + begin, line.data() + begin + width, value);
}

// A number, or the first letters of a name.
bool readMaterial(std::string_view line, std::size_t begin, FrdElementRow* row) {
    std::int64_t number = 0;
    row->materialName[0] = '\0';
    row->material = 0;
    if (readColumn(line, begin, MATERIAL_WIDTH, &number)) {
        row->material = int(number);
        return true;
    }
    const std::string_view name = begin < line.size() ? line.substr(begin, MATERIAL_WIDTH) : std::string_view();
    const std::size_t nameBegin = name.find_first_not_of(' ');
    if (nameBegin == std::string_view::npos) {
        return false;
    }
    const std::size_t nameEnd = name.find_last_not_of(' ') + 1;
    *std::copy(name.begin() + nameBegin, name.begin() + nameEnd, row->materialName) = '\0';
    return true;
}

bool isPlace(double coordinate) {
    return std::isfinite(coordinate) && coordinate != UNDEFINED_DOUBLE;
}

} // namespace

bool readFrdId(std::string_view line, std::size_t begin, std::size_t width, int* id) {
    return begin + width <= line.size() && readFrdId(line.data() + begin, width, id);
}

bool readFrdRowValues(std::string_view line, std::size_t begin, std::size_t count, double* values) {
    const std::size_t columnsEnd = begin + count * FRD_VALUE_WIDTH;
    if (line.size() < columnsEnd) {
        return false;
    }
    const char* text = line.data() + begin;
    if (line.find_first_not_of(' ', columnsEnd) != std::string_view::npos) {
        return readFrdTouchingReals(text, line.data() + line.size(), count, values);
    }
    for (std::size_t i = 0; i < count; ++i) {
        if (!readFrdValue(text + i * FRD_VALUE_WIDTH, &values[i])) {
            return false;
        }
    }
    return true;
}

FrdNodeRows::FrdNodeRows(const CaeFile& file, const FrdRows& rows)
    : m_file(file), m_rows(rows), m_lines(file), m_bytes(file), m_offset(rows.begin) {
    m_lines.seek(rows.begin);
}

bool FrdNodeRows::next(FrdNodeRow* row, ug::Error* error) {
    if (m_offset >= m_rows.end) {
        return false;
    }
    return isBinary(m_rows.form) ? readBinary(row, error) : readText(row, error);
}

bool FrdNodeRows::hasFailed() const {
    return m_hasFailed;
}

bool FrdNodeRows::readText(FrdNodeRow* row, ug::Error* error) {
    const std::size_t idWidth = frdIdWidth(m_rows.form);
    row->offset = m_offset;
    if (!m_lines.next() || !m_lines.line().starts_with(ROW)) {
        return fail(m_offset, "expected a node (\" -1\"), found " + quotedForPeople(m_lines.line()), error);
    }
    m_offset = m_lines.offset();
    if (!readFrdId(m_lines.line(), MARK_WIDTH, idWidth, &row->id)) {
        return fail(row->offset,
                    "expected the number of a node, 0 to 2147483647, in columns 4 to " +
                        std::to_string(MARK_WIDTH + idWidth) + ", found " + quotedForPeople(m_lines.line()),
                    error);
    }
    if (!readFrdRowValues(m_lines.line(), MARK_WIDTH + idWidth, 3, row->coordinates) ||
        !std::all_of(row->coordinates, row->coordinates + 3, isPlace)) {
        return fail(row->offset,
                    "expected the three coordinates of node " + std::to_string(row->id) +
                        " in 12 characters each, found " + quotedForPeople(m_lines.line()),
                    error);
    }
    return true;
}

bool FrdNodeRows::readBinary(FrdNodeRow* row, ug::Error* error) {
    row->offset = m_offset;
    const char* bytes = m_bytes.at(m_offset, BINARY_NODE_SIZE);
    if (!bytes) {
        return fail(m_offset, "expected a node of 28 bytes", error);
    }
    m_offset += std::int64_t(BINARY_NODE_SIZE);
    row->id = loadWord<std::int32_t>(bytes);
    for (std::size_t i = 0; i < 3; ++i) {
        row->coordinates[i] = loadWord<double>(bytes + 4 + 8 * i);
    }
    if (row->id < 0) {
        return fail(row->offset, "expected the number of a node, found " + std::to_string(row->id), error);
    }
    if (!std::all_of(row->coordinates, row->coordinates + 3, isPlace)) {
        return fail(row->offset, "expected the three coordinates of node " + std::to_string(row->id), error);
    }
    return true;
}

bool FrdNodeRows::fail(std::int64_t offset, const std::string& text, ug::Error* error) {
    m_hasFailed = true;
    return m_file.fail(offset, text, error);
}

FrdElementRows::FrdElementRows(const CaeFile& file, const FrdRows& rows)
    : m_file(file), m_rows(rows), m_lines(file), m_bytes(file), m_offset(rows.begin) {
    m_lines.seek(rows.begin);
}

bool FrdElementRows::next(FrdElementRow* row, ug::Error* error) {
    if (m_offset >= m_rows.end) {
        return false;
    }
    return isBinary(m_rows.form) ? readBinary(row, error) : readText(row, error);
}

bool FrdElementRows::hasFailed() const {
    return m_hasFailed;
}

bool FrdElementRows::readText(FrdElementRow* row, ug::Error* error) {
    const std::size_t idWidth = frdIdWidth(m_rows.form);
    const std::size_t typeBegin = MARK_WIDTH + idWidth;
    row->offset = m_offset;
    std::int64_t group = 0;
    if (!m_lines.next() || !m_lines.line().starts_with(ROW)) {
        return fail(m_offset, "expected an element (\" -1\"), found " + quotedForPeople(m_lines.line()), error);
    }
    const std::string_view line = m_lines.line();
    if (!readFrdId(line, MARK_WIDTH, idWidth, &row->id)) {
        return fail(row->offset,
                    "expected the number of an element, 0 to 2147483647, in columns 4 to " + std::to_string(typeBegin) +
                        ", found " + quotedForPeople(line),
                    error);
    }
    if (!readColumn(line, typeBegin, TYPE_WIDTH, &row->typeNumber) ||
        !readColumn(line, typeBegin + TYPE_WIDTH, TYPE_WIDTH, &group) ||
        !readMaterial(line, typeBegin + 2 * TYPE_WIDTH, row)) {
        return fail(row->offset,
                    "expected type, group and material of element " + std::to_string(row->id) +
                        " in five characters each, found " + quotedForPeople(line),
                    error);
    }
    row->group = int(group);
    row->type = findFrdElementType(row->typeNumber);
    if (row->type && !readTextNodes(row, error)) {
        return false;
    }
    passOverNodes();
    return true;
}

bool FrdElementRows::readTextNodes(FrdElementRow* row, ug::Error* error) {
    const std::size_t nodesPerLine = m_rows.form == FrdForm::ASCII_SHORT ? 15 : 10;
    for (std::size_t done = 0; done < row->type->nodeCount;) {
        const std::size_t count = std::min<std::size_t>(nodesPerLine, row->type->nodeCount - done);
        const std::int64_t offset = m_lines.offset();
        if (offset >= m_rows.end || !m_lines.next() || !m_lines.line().starts_with(ROW_CONTINUED) ||
            !readTextNodesOfLine(count, row->nodes + done)) {
            return fail(offset,
                        "expected \" -2\" and " + std::to_string(count) + " nodes of element " +
                            std::to_string(row->id) + ", found " + quotedForPeople(m_lines.line()),
                        error);
        }
        done += count;
    }
    return true;
}

bool FrdElementRows::readTextNodesOfLine(std::size_t count, int* nodes) const {
    const std::size_t idWidth = frdIdWidth(m_rows.form);
    for (std::size_t i = 0; i < count; ++i) {
        if (!readFrdId(m_lines.line(), MARK_WIDTH + i * idWidth, idWidth, &nodes[i])) {
            return false;
        }
    }
    return true;
}

// Nodes of an unknown type, and what lines have beyond the nodes that the type needs.
void FrdElementRows::passOverNodes() {
    while (m_lines.offset() < m_rows.end && m_lines.next()) {
        if (!m_lines.line().starts_with(ROW_CONTINUED)) {
            m_lines.putBack();
            break;
        }
    }
    m_offset = m_lines.offset();
}

bool FrdElementRows::readBinary(FrdElementRow* row, ug::Error* error) {
    row->offset = m_offset;
    const char* head = m_bytes.at(m_offset, BINARY_ELEMENT_HEAD_SIZE);
    if (!head) {
        return fail(m_offset, "expected an element", error);
    }
    row->id = loadWord<std::int32_t>(head);
    row->typeNumber = loadWord<std::int32_t>(head + 4);
    row->group = loadWord<std::int32_t>(head + 8);
    row->material = loadWord<std::int32_t>(head + 12);
    row->type = findFrdElementType(row->typeNumber);
    if (row->id < 0 || !row->type) {
        return fail(m_offset, "expected the number and type of an element", error);
    }
    const std::size_t nodesSize = 4 * std::size_t(row->type->nodeCount);
    const char* nodes = m_bytes.at(m_offset + std::int64_t(BINARY_ELEMENT_HEAD_SIZE), nodesSize);
    if (!nodes) {
        return fail(m_offset, "expected the nodes of element " + std::to_string(row->id), error);
    }
    std::copy_n(nodes, nodesSize, reinterpret_cast<char*>(row->nodes));
    m_offset += std::int64_t(BINARY_ELEMENT_HEAD_SIZE + nodesSize);
    return true;
}

bool FrdElementRows::fail(std::int64_t offset, const std::string& text, ug::Error* error) {
    m_hasFailed = true;
    return m_file.fail(offset, text, error);
}

} // namespace orv::imp::cae
