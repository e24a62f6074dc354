#include "OrvImportVtk/NetCdfHeader.h"

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <vector>

namespace orv::imp::cae {
namespace {

enum Tag : std::uint64_t { DIMENSIONS = 10, VARIABLES = 11, ATTRIBUTES = 12 };

constexpr std::uint64_t LONGEST_NAME = 256; // The library's callers have room for these.
constexpr std::uint64_t MOST_RANKS = 1024;
constexpr std::uint64_t MOST_BYTES = std::uint64_t(1) << 60; // Sums of many of these do not run over.

constexpr std::uint64_t TYPE_SIZES[] = {0, 1, 1, 2, 4, 4, 8, 1, 2, 4, 8, 8};

std::uint64_t padded(std::uint64_t bytes) {
    return (bytes + 3) / 4 * 4;
}

/// Goes through a header and believes none of it. Every list ends where the file does, whatever it counts.
class Header {
public:
    Header(std::istream& file, std::uint64_t size) : m_file(file), m_size(size) {}

    bool check(ug::Error* error) {
        if (!readStart()) {
            return ug::fail(error, "is no NetCDF file");
        }
        if (!readDimensions() || !readAttributes() || !readVariables()) {
            return ug::fail(error, m_file ? "is damaged: the header of its NetCDF format is not as it has to be"
                                          : "ends too early");
        }
        return areValuesWithin() || ug::fail(error, "ends too early");
    }

private:
    struct Variable {
        bool isRecord = false;
        std::uint64_t bytes = 0; ///< Of one record.
        std::uint64_t begin = 0;
    };

    bool readStart() {
        const std::uint64_t magic = number(4);
        m_version = magic & 0xff;
        m_records = count();
        return magic >> 8 == 0x434446 && (m_version == 1 || m_version == 2 || m_version == 5) && m_file;
    }

    bool readDimensions() {
        const std::uint64_t dimensionCount = beginList(DIMENSIONS);
        std::size_t unlimited = 0;
        for (std::uint64_t d = 0; d < dimensionCount && skipName(); ++d) {
            m_lengths.push_back(count());
            unlimited += m_lengths.back() == 0;
        }
        return m_file && m_lengths.size() == dimensionCount && unlimited <= 1;
    }

    bool readAttributes() {
        const std::uint64_t attributeCount = beginList(ATTRIBUTES);
        std::uint64_t a = 0;
        while (a < attributeCount && skipName()) {
            const std::uint64_t bytes = sizeOfType();
            const std::uint64_t values = count();
            if (bytes == 0 || values > m_size || !skip(padded(values * bytes))) {
                return false;
            }
            ++a;
        }
        return m_file && a == attributeCount;
    }

    bool readVariables() {
        const std::uint64_t variableCount = beginList(VARIABLES);
        while (m_variables.size() < variableCount && skipName()) {
            Variable variable;
            if (!readVariable(&variable)) {
                return false;
            }
            m_variables.push_back(variable);
        }
        return m_file && m_variables.size() == variableCount;
    }

    bool readVariable(Variable* variable) {
        const std::uint64_t rank = count();
        variable->bytes = 1;
        for (std::uint64_t r = 0; r < rank && m_file; ++r) {
            const std::uint64_t dimension = count();
            if (rank > MOST_RANKS || dimension >= m_lengths.size()) {
                return false;
            }
            const std::uint64_t length = m_lengths[dimension];
            if (length == 0) {
                variable->isRecord = true;
            }
            if ((length == 0 && r > 0) || length > MOST_BYTES / 8 / variable->bytes) {
                return false;
            }
            variable->bytes *= length == 0 ? 1 : length;
        }
        if (!readAttributes()) {
            return false;
        }
        variable->bytes *= sizeOfType();
        count(); // The size, which the library works out anew.
        variable->begin = number(m_version == 1 ? 4 : 8);
        return m_file && variable->bytes > 0;
    }

    // A record is all record variables one after the other, each padded, unless it is alone.
    bool areValuesWithin() const {
        std::uint64_t record = 0;
        std::size_t recordVariables = 0;
        for (const Variable& variable : m_variables) {
            if (variable.isRecord) {
                record += recordVariables++ == 0 ? variable.bytes : padded(variable.bytes);
                if (record > MOST_BYTES) {
                    return false;
                }
            }
        }
        if (recordVariables > 1) {
            record = padded(record);
        }
        if (record > 0 && m_records > m_size / record + 1) {
            return false;
        }
        for (const Variable& variable : m_variables) {
            const std::uint64_t before = variable.isRecord && m_records > 0 ? (m_records - 1) * record : 0;
            const std::uint64_t bytes = variable.isRecord && m_records == 0 ? 0 : variable.bytes;
            if (variable.begin > m_size || before > m_size || bytes > m_size ||
                variable.begin + before + bytes > m_size) {
                return false;
            }
        }
        return true;
    }

    // Big-endian; 0 once the file is over.
    std::uint64_t number(std::size_t bytes) {
        std::uint64_t value = 0;
        for (std::size_t b = 0; b < bytes; ++b) {
            value = value << 8 | std::uint64_t(m_file.get() & 0xff);
        }
        m_position += bytes;
        return m_file ? value : 0;
    }

    std::uint64_t count() {
        return number(m_version == 5 ? 8 : 4);
    }

    // What it counts; more than there can be when it is no such list.
    std::uint64_t beginList(Tag tag) {
        const std::uint64_t found = number(4);
        const std::uint64_t items = count();
        return items == 0 || found == tag ? items : ~std::uint64_t(0);
    }

    bool skipName() {
        const std::uint64_t length = count();
        return length > 0 && length <= LONGEST_NAME && skip(padded(length));
    }

    // 0 when there is no such type; those from 7 on are in CDF-5 only.
    std::uint64_t sizeOfType() {
        const std::uint64_t type = number(4);
        return type < (m_version == 5 ? std::size(TYPE_SIZES) : 7) ? TYPE_SIZES[type] : 0;
    }

    bool skip(std::uint64_t bytes) {
        if (!m_file || bytes > m_size - m_position) {
            m_file.setstate(std::ios::failbit);
            return false;
        }
        m_file.ignore(std::streamsize(bytes));
        m_position += bytes;
        return true;
    }

    std::istream& m_file;
    std::uint64_t m_size;
    std::uint64_t m_position = 0; ///< Within the file as long as that is good.
    std::uint64_t m_version = 0;
    std::uint64_t m_records = 0;
    std::vector<std::uint64_t> m_lengths; ///< Of dimensions; 0 for that of the records.
    std::vector<Variable> m_variables;
};

} // namespace

bool checkNetCdfHeader(std::istream& file, std::uintmax_t size, ug::Error* error) {
    return Header(file, size).check(error);
}

} // namespace orv::imp::cae
