#include "OrvImportCae/FrdValues.h"

#include "OrvCore/Defines.h"
#include "OrvImportCae/FrdMeshRows.h"
#include "OrvImportCae/FrdNumber.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

namespace orv::imp::cae {
namespace {

constexpr std::string_view ROW = " -1";
constexpr std::string_view ROW_CONTINUED = " -2";
constexpr std::size_t MARK_WIDTH = 3;
constexpr std::size_t VALUES_PER_LINE = 6;
constexpr std::size_t CHUNK_SIZE = std::size_t(1) << 15;

using internal::loadWord;

bool isMark(const char* text, std::string_view mark) {
    return std::memcmp(text, mark.data(), MARK_WIDTH) == 0;
}

/// A row of a text block whose columns are where they should be.
class TextRow {
public:
    TextRow(const FrdRows& rows, std::size_t storedCount, std::span<const std::uint32_t> columns)
        : m_idWidth(frdIdWidth(rows.form)), m_lineEndSize(rows.lineEndSize), m_rowSize(std::size_t(rows.rowSize)),
          m_lineSize(MARK_WIDTH + m_idWidth + VALUES_PER_LINE * FRD_VALUE_WIDTH + m_lineEndSize),
          m_readsAll(columns.size() == storedCount) {
        for (std::size_t i = 0; i < columns.size(); ++i) {
            m_offsets[i] = columns[i] / VALUES_PER_LINE * m_lineSize + MARK_WIDTH + m_idWidth +
                           columns[i] % VALUES_PER_LINE * FRD_VALUE_WIDTH;
        }
    }

    /// Both are false when the row does not look as it should.
    bool readId(const char* row, int* id) const {
        const bool hasId = readFrdId({row, m_rowSize}, MARK_WIDTH, m_idWidth, id);
        return hasId && isMark(row, ROW) && hasLineEnds(row);
    }

    template <std::size_t Dimension>
    bool readItem(const char* row, double* item) const {
        bool areNumbers = true;
        for (std::size_t i = 0; i < Dimension; ++i) {
            areNumbers &= readFrdValue(row + m_offsets[i], &item[i]);
        }
        return areNumbers;
    }

private:
    bool hasLineEnds(const char* row) const {
        if (m_readsAll && m_rowSize <= m_lineSize) {
            // Every column is looked at, so a line cannot end within the row.
            return row[m_rowSize - 1] == '\n' && (m_lineEndSize == 1 || row[m_rowSize - 2] == '\r');
        }
        for (std::size_t begin = 0; begin < m_rowSize; begin += m_lineSize) {
            const std::size_t size = std::min(m_lineSize, m_rowSize - begin);
            const void* newline = std::memchr(row + begin, '\n', size);
            if (newline != row + begin + size - 1 || (m_lineEndSize == 2 && row[begin + size - 2] != '\r') ||
                (begin > 0 && !isMark(row + begin, ROW_CONTINUED))) {
                return false;
            }
        }
        return true;
    }

    std::size_t m_idWidth;
    std::size_t m_lineEndSize;
    std::size_t m_rowSize;
    std::size_t m_lineSize;
    bool m_readsAll;
    std::array<std::size_t, 6> m_offsets = {};
};

/// A row of a binary block.
template <class Value>
class BinaryRow {
public:
    explicit BinaryRow(std::span<const std::uint32_t> columns) {
        for (std::size_t i = 0; i < columns.size(); ++i) {
            m_offsets[i] = sizeof(std::int32_t) + columns[i] * sizeof(Value);
        }
    }

    bool readId(const char* row, int* id) const {
        *id = loadWord<std::int32_t>(row);
        return true;
    }

    template <std::size_t Dimension>
    bool readItem(const char* row, double* item) const {
        for (std::size_t i = 0; i < Dimension; ++i) {
            item[i] = double(loadWord<Value>(row + m_offsets[i]));
        }
        return true;
    }

private:
    std::array<std::size_t, 6> m_offsets = {};
};

/// Tells where in the parts the items of nodes go, and knows which nodes had one.
template <std::size_t Dimension>
class ItemPlacer {
public:
    ItemPlacer(const FrdMesh& mesh, std::span<double* const> parts)
        : m_mesh(mesh), m_ids(mesh.nodeIds.ids()), m_parts(parts),
          m_onlyPart(mesh.places.isIdentity() ? parts[0] : nullptr) {}

    enum class Answer { PLACED, UNKNOWN, TWICE };

    /// Where to write the item of a node: straight into the first part that has the node. Good when it is PLACED.
    Answer place(int id, double** item) {
        std::uint32_t node = m_next;
        if (node >= m_ids.size() || m_ids[node] != id) [[unlikely]] {
            node = m_mesh.nodeIds.find(id, CaeIds::NONE);
            if (node == CaeIds::NONE) {
                return Answer::UNKNOWN;
            }
        }
        if (!note(node)) {
            return Answer::TWICE;
        }
        m_next = node + 1;
        *item = begin(node);
        return Answer::PLACED;
    }

    /// Takes the item, now that it is written, to the other parts that have its node.
    void spread() {
        for (std::size_t i = 1; i < m_places.size(); ++i) {
            std::copy_n(at(m_places[0]), Dimension, at(m_places[i]));
        }
    }

    bool isUntouched() const {
        return m_inOrder == 0 && m_isPlaced.empty();
    }

    void fillOthers() {
        for (std::size_t node = m_inOrder; node < m_ids.size(); ++node) {
            if (m_isPlaced.empty() || !m_isPlaced[node]) {
                std::fill_n(begin(node), Dimension, UNDEFINED_DOUBLE);
                spread();
            }
        }
    }

private:
    double* begin(std::size_t node) {
        if (m_onlyPart) {
            return m_onlyPart + node * Dimension;
        }
        m_places = m_mesh.places.of(node);
        return m_places.empty() ? m_nowhere : at(m_places[0]);
    }

    double* at(const CaeNodePlaces::Place& place) const {
        return m_parts[place.part] + std::size_t(place.node) * Dimension;
    }

    // False when the node has been here. The nodes below m_inOrder have; marks are kept from the first gap on.
    bool note(std::uint32_t node) {
        if (m_isPlaced.empty()) {
            if (node == m_inOrder) {
                ++m_inOrder;
                return true;
            }
            m_isPlaced.resize(m_ids.size());
        }
        if (node < m_inOrder || m_isPlaced[node]) {
            return false;
        }
        m_isPlaced[node] = true;
        return true;
    }

    const FrdMesh& m_mesh;
    std::span<const int> m_ids;
    std::span<double* const> m_parts;
    double* m_onlyPart;
    std::span<const CaeNodePlaces::Place> m_places; // Of the node that place() saw last.
    double m_nowhere[Dimension];                    // For a node that no part has.
    std::uint32_t m_next = 0;
    std::uint32_t m_inOrder = 0;
    std::vector<bool> m_isPlaced;
};

/// One reading of one block.
template <std::size_t Dimension>
class BlockReader {
public:
    BlockReader(const CaeFile& file, const FrdRows& rows, std::size_t storedCount,
                std::span<const std::uint32_t> columns, const FrdMesh& mesh, std::span<double* const> parts,
                ug::Error* error)
        : m_file(file), m_rows(rows), m_storedCount(storedCount), m_columns(columns), m_placer(mesh, parts),
          m_error(error) {}

    enum class Outcome { DONE, FAILED, IRREGULAR };

    Outcome readRegular() {
        switch (m_rows.form) {
        case FrdForm::BINARY_FLOAT:
            return readRows(BinaryRow<float>(m_columns));
        case FrdForm::BINARY_DOUBLE:
            return readRows(BinaryRow<double>(m_columns));
        default:
            return m_rows.isRegular() ? readRows(TextRow(m_rows, m_storedCount, m_columns)) : Outcome::IRREGULAR;
        }
    }

    bool readLines() {
        CaeLines lines(m_file);
        lines.seek(m_rows.begin);
        std::vector<double> values(m_storedCount);
        while (lines.offset() < m_rows.end) {
            const std::int64_t offset = lines.offset();
            int id = 0;
            if (!readLinesOfRow(lines, &id, values.data())) {
                return false;
            }
            double* item = nullptr;
            if (!place(offset, id, &item)) {
                return false;
            }
            if (item) {
                std::transform(m_columns.begin(), m_columns.end(), item,
                               [&values](std::uint32_t column) { return values[column]; });
                m_placer.spread();
            }
        }
        return finish();
    }

    const FrdLeftOut& leftOut() const {
        return m_leftOut;
    }

private:
    template <class Row>
    Outcome readRows(const Row& row) {
        CaeBytes bytes(m_file);
        const std::int64_t rowSize = m_rows.rowSize;
        const std::int64_t rowsPerChunk = std::max<std::int64_t>(1, std::int64_t(CHUNK_SIZE) / rowSize);
        for (std::int64_t first = 0; first < m_rows.count; first += rowsPerChunk) {
            const std::int64_t count = std::min(rowsPerChunk, m_rows.count - first);
            std::int64_t offset = m_rows.begin + first * rowSize;
            const char* chunk = bytes.at(offset, std::size_t(count * rowSize));
            if (!chunk) {
                m_file.fail(offset, "expected " + std::to_string(count * rowSize) + " more bytes of values", m_error);
                return Outcome::FAILED;
            }
            for (std::int64_t i = 0; i < count; ++i, chunk += rowSize, offset += rowSize) {
                int id = 0;
                double* item = nullptr;
                if (!row.readId(chunk, &id)) {
                    return Outcome::IRREGULAR;
                }
                if (!place(offset, id, &item)) {
                    return Outcome::FAILED;
                }
                if (item) {
                    if (!row.template readItem<Dimension>(chunk, item)) {
                        return Outcome::IRREGULAR;
                    }
                    m_placer.spread();
                }
            }
        }
        return finish() ? Outcome::DONE : Outcome::FAILED;
    }

    bool readLinesOfRow(CaeLines& lines, int* id, double* values) {
        const std::size_t idWidth = frdIdWidth(m_rows.form);
        std::string_view mark = ROW;
        std::size_t done = 0;
        do {
            const std::size_t count = std::min(VALUES_PER_LINE, m_storedCount - done);
            const std::int64_t offset = lines.offset();
            const bool isThere = offset < m_rows.end && lines.next() && lines.line().starts_with(mark);
            if (!isThere || (done == 0 && !readFrdId(lines.line(), MARK_WIDTH, idWidth, id)) ||
                !readFrdRowValues(lines.line(), MARK_WIDTH + idWidth, count, values + done)) {
                return m_file.fail(offset,
                                   "expected \"" + std::string(mark) + "\"" + (done == 0 ? ", a node" : "") + " and " +
                                       std::to_string(count) + " values in 12 characters each, found " +
                                       quotedForPeople(lines.line()),
                                   m_error);
            }
            done += count;
            mark = ROW_CONTINUED;
        } while (done < m_storedCount);
        return true;
    }

    // Null for a node that is left out.
    bool place(std::int64_t offset, int id, double** item) {
        const auto answer = m_placer.place(id, item);
        if (answer == ItemPlacer<Dimension>::Answer::PLACED) [[likely]] {
            return true;
        }
        return answer == ItemPlacer<Dimension>::Answer::UNKNOWN ? leaveOut(offset, id) : failForDuplicate(offset, id);
    }

    bool leaveOut(std::int64_t offset, int id) {
        if (m_leftOut.count++ == 0) {
            m_leftOut.firstOffset = offset;
            m_leftOut.firstNode = id;
        }
        return true;
    }

    bool failForDuplicate(std::int64_t offset, int id) {
        return m_file.fail(offset, "node " + std::to_string(id) + " stands here for the second time in its block",
                           m_error);
    }

    bool finish() {
        if (m_leftOut.count > 0 && m_placer.isUntouched()) {
            return m_file.fail(m_leftOut.firstOffset,
                               "expected values of the file's nodes, found those of node " +
                                   std::to_string(m_leftOut.firstNode) + " and others that the file does not have",
                               m_error);
        }
        m_placer.fillOthers();
        return true;
    }

    const CaeFile& m_file;
    const FrdRows& m_rows;
    std::size_t m_storedCount;
    std::span<const std::uint32_t> m_columns;
    ItemPlacer<Dimension> m_placer;
    FrdLeftOut m_leftOut;
    ug::Error* m_error;
};

template <std::size_t Dimension>
bool readBlock(const CaeFile& file, const FrdRows& rows, std::size_t storedCount,
               std::span<const std::uint32_t> columns, const FrdMesh& mesh, std::span<double* const> parts,
               FrdLeftOut* leftOut, ug::Error* error) {
    using Reader = BlockReader<Dimension>;
    Reader regular(file, rows, storedCount, columns, mesh, parts, error);
    const typename Reader::Outcome outcome = regular.readRegular();
    if (outcome != Reader::Outcome::IRREGULAR) {
        *leftOut = regular.leftOut();
        return outcome == Reader::Outcome::DONE;
    }
    Reader byLine(file, rows, storedCount, columns, mesh, parts, error);
    const bool isRead = byLine.readLines();
    *leftOut = byLine.leftOut();
    return isRead;
}

template <class Row>
bool readItemOfNode(const Row& row, const char* text, int nodeId, double* value) {
    int id = 0;
    return row.readId(text, &id) && id == nodeId && row.template readItem<1>(text, value);
}

} // namespace

bool readFrdValues(const CaeFile& file, const FrdRows& rows, std::size_t storedCount,
                   std::span<const std::uint32_t> columns, const FrdMesh& mesh, std::span<double* const> parts,
                   FrdLeftOut* leftOut, ug::Error* error) {
    switch (columns.size()) {
    case 1:
        return readBlock<1>(file, rows, storedCount, columns, mesh, parts, leftOut, error);
    case 3:
        return readBlock<3>(file, rows, storedCount, columns, mesh, parts, leftOut, error);
    default:
        return readBlock<6>(file, rows, storedCount, columns, mesh, parts, leftOut, error);
    }
}

bool readFrdValueOfRow(const CaeFile& file, const FrdRows& rows, std::size_t storedCount, std::uint32_t column,
                       std::uint32_t row, int nodeId, double* value) {
    if (!rows.isRegular() || row >= rows.count) {
        return false;
    }
    std::vector<char> text(std::size_t(rows.rowSize));
    if (file.read(rows.begin + row * rows.rowSize, text.data(), text.size()) != text.size()) {
        return false;
    }
    const std::span<const std::uint32_t> columns(&column, 1);
    switch (rows.form) {
    case FrdForm::BINARY_FLOAT:
        return readItemOfNode(BinaryRow<float>(columns), text.data(), nodeId, value);
    case FrdForm::BINARY_DOUBLE:
        return readItemOfNode(BinaryRow<double>(columns), text.data(), nodeId, value);
    default:
        return readItemOfNode(TextRow(rows, storedCount, columns), text.data(), nodeId, value);
    }
}

} // namespace orv::imp::cae
