#pragma once

#include "OrvImportCae/CaeFile.h"
#include "OrvImportCae/FrdElementTypes.h"
#include "OrvImportCae/FrdIndex.h"
#include "OrvUnstructGrid/Error.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace orv::imp::cae {

/// One node as the file has it.
struct FrdNodeRow {
    std::int64_t offset = 0; ///< Where it stands.
    int id = 0;
    double coordinates[3] = {};
};

/// Walks the block of nodes.
class FrdNodeRows {
public:
    FrdNodeRows(const CaeFile& file, const FrdRows& rows);

    /// False behind the last node, and with a text when a row is not as it should be.
    bool next(FrdNodeRow* row, ug::Error* error);
    bool hasFailed() const;

private:
    bool readText(FrdNodeRow* row, ug::Error* error);
    bool readBinary(FrdNodeRow* row, ug::Error* error);
    bool fail(std::int64_t offset, const std::string& text, ug::Error* error);

    const CaeFile& m_file;
    const FrdRows& m_rows;
    CaeLines m_lines;
    CaeBytes m_bytes;
    std::int64_t m_offset;
    bool m_hasFailed = false;
};

/// One element as the file has it.
struct FrdElementRow {
    static constexpr std::size_t MOST_NODES = 20;

    std::int64_t offset = 0; ///< Where it stands.
    int id = 0;
    std::int64_t typeNumber = 0;
    const FrdElementType* type = nullptr; ///< Null for an unknown type, whose nodes are passed over.
    int group = 0;
    int material = 0;
    char materialName[6] = {};  ///< In place of the number, which is then 0: what old solvers write. Otherwise empty.
    int nodes[MOST_NODES] = {}; ///< The nodes' numbers in the order of the file.
};

/// Walks the block of elements.
class FrdElementRows {
public:
    FrdElementRows(const CaeFile& file, const FrdRows& rows);

    /// False behind the last element, and with a text when a row is not as it should be.
    bool next(FrdElementRow* row, ug::Error* error);
    bool hasFailed() const;

private:
    bool readText(FrdElementRow* row, ug::Error* error);
    bool readTextNodes(FrdElementRow* row, ug::Error* error);
    bool readTextNodesOfLine(std::size_t count, int* nodes) const;
    void passOverNodes();
    bool readBinary(FrdElementRow* row, ug::Error* error);
    bool fail(std::int64_t offset, const std::string& text, ug::Error* error);

    const CaeFile& m_file;
    const FrdRows& m_rows;
    CaeLines m_lines;
    CaeBytes m_bytes;
    std::int64_t m_offset;
    bool m_hasFailed = false;
};

/// Reads the number of a node or element from a column of a text row, if the row has that column.
bool readFrdId(std::string_view line, std::size_t begin, std::size_t width, int* id);

/// Reads the values that follow the node's number in a text row. They fill columns of FRD_VALUE_WIDTH characters; only
/// a row that is longer than that is taken number by number, because its exponents may have three digits. A shorter
/// row was cut and is refused, since what is left of its last number could pass for another one.
bool readFrdRowValues(std::string_view line, std::size_t begin, std::size_t count, double* values);

} // namespace orv::imp::cae
