#include "OrvImportVtk/CgnsAdf.h"

#include <charconv>
#include <cstdint>
#include <fstream>
#include <optional>
#include <set>
#include <string_view>

namespace orv::imp::cae {
namespace {

// A file begins with 4 bytes and this, has the letter of its version and that of its byte order in its head, and its
// outermost node at a fixed place. Places have 8 bytes for the block of 4096 bytes and 4 for where it is in that,
// counts as many: hexadecimal digits, but for places from version B on.
constexpr std::string_view MAGIC = "ADF Database Version";
constexpr std::size_t MAGIC_AT = 4;
constexpr std::size_t VERSION_AT = 25;
constexpr std::size_t BYTE_ORDER_AT = 100;
constexpr std::size_t HEAD_SIZE = 186;
constexpr std::uint64_t ROOT_AT = 266;
constexpr std::uint64_t BLOCK_SIZE = 4096;
constexpr std::size_t PLACE_SIZE = 12;
constexpr std::size_t TAG_SIZE = 4;
constexpr int MOST_NODES_DEEP = 64;

// "NoDe", name, label, children and room for them, place of their table, type of the data, dimensions, parts of the
// data and place of their table, "TaiL"
constexpr std::size_t NODE_SIZE = 246;
constexpr std::size_t NAME_AT = 4;
constexpr std::size_t NAME_SIZE = 32;
constexpr std::size_t CHILDREN_AT = 68;
constexpr std::size_t ROOM_AT = 76;
constexpr std::size_t TABLE_AT = 84;
constexpr std::size_t TYPE_AT = 96;
constexpr std::size_t TYPE_SIZE = 32;
constexpr std::size_t RANK_AT = 128;
constexpr std::size_t SIZES_AT = 130;
constexpr std::uint64_t MOST_DIMENSIONS = 12;
constexpr std::size_t PARTS_AT = 226;
constexpr std::size_t PARTS_TABLE_AT = 230;
constexpr std::size_t TAIL_AT = 242;

/// Goes through a file, node by node.
class Walk {
public:
    explicit Walk(const std::string& filename) : m_file(filename, std::ios::binary) {}

    bool isAdf() {
        const std::string head = read(0, HEAD_SIZE);
        m_isBinary = head.size() == HEAD_SIZE && head[VERSION_AT] == 'B';
        m_isBigEndian = head.size() == HEAD_SIZE && head[BYTE_ORDER_AT] == 'B';
        return head.size() > MAGIC_AT && head.substr(MAGIC_AT).starts_with(MAGIC);
    }

    bool checkNode(std::uint64_t at, const std::string& name, int depth) {
        const std::string node = read(at, NODE_SIZE);
        if (!m_seen.insert(at).second || depth > MOST_NODES_DEEP || node.size() != NODE_SIZE ||
            !node.starts_with("NoDe") || node.compare(TAIL_AT, TAG_SIZE, "TaiL") != 0 ||
            (!name.empty() && node.compare(NAME_AT, NAME_SIZE, name) != 0)) {
            return false;
        }
        // VTK has room for two letters.
        const std::string type = node.substr(TYPE_AT, TYPE_SIZE);
        return type.find_last_not_of(' ') == 1 && checkParts(node) && checkChildren(node, depth);
    }

private:
    bool checkParts(const std::string& node) {
        const auto count = number(node, PARTS_AT, 4);
        const auto at = place(node, PARTS_TABLE_AT);
        const auto size = dataSize(node);
        if (!count || !size || *count == 0) {
            return count && size;
        }
        if (*count == 1) {
            return at && isTable(*at, "DaTa", "dEnD", *size);
        }
        if (!at || !isTable(*at, "DCtb", "dcTE", *count * 2 * PLACE_SIZE)) {
            return false;
        }
        std::uint64_t sum = 0;
        for (std::uint64_t i = 0; i < *count; ++i) {
            const std::string entry = read(*at + TAG_SIZE + PLACE_SIZE + i * 2 * PLACE_SIZE, 2 * PLACE_SIZE);
            const auto begin = place(entry, 0);
            const auto end = place(entry, PLACE_SIZE);
            if (!begin || !end || *end < *begin + TAG_SIZE + PLACE_SIZE ||
                !isTable(*begin, "DaTa", "dEnD", *end - *begin - TAG_SIZE - PLACE_SIZE)) {
                return false;
            }
            sum += *end - *begin - TAG_SIZE - PLACE_SIZE;
        }
        return sum >= *size;
    }

    // In bytes. None when it is more than there may be.
    std::optional<std::uint64_t> dataSize(const std::string& node) const {
        constexpr std::uint64_t MOST_BYTES = std::uint64_t(1) << 48;
        const auto rank = number(node, RANK_AT, 2);
        const char digit = node[TYPE_AT + 1];
        std::uint64_t size = digit == '4' || digit == '8' ? std::uint64_t(digit - '0') : 1;
        size *= node[TYPE_AT] == 'X' ? 2 : 1; // Complex ones.
        if (!rank || *rank > MOST_DIMENSIONS) {
            return std::nullopt;
        }
        for (std::uint64_t d = 0; d < *rank; ++d) {
            const std::size_t at = SIZES_AT + 8 * std::size_t(d);
            const auto count = m_isBinary ? binary(node, at, 8) : number(node, at, 8);
            if (!count || (*count > 0 && size > MOST_BYTES / *count)) {
                return std::nullopt;
            }
            size *= *count;
        }
        return *rank == 0 ? 0 : size;
    }

    bool checkChildren(const std::string& node, int depth) {
        const auto count = number(node, CHILDREN_AT, 8);
        const auto room = number(node, ROOM_AT, 8);
        const auto at = place(node, TABLE_AT);
        constexpr std::size_t ENTRY_SIZE = NAME_SIZE + PLACE_SIZE;
        if (!count || !room || *count > *room || (*room > 0 && !at)) {
            return false;
        }
        if (*room > 0 && !isTable(*at, "SNTb", "snTE", *room * ENTRY_SIZE)) {
            return false;
        }
        for (std::uint64_t i = 0; i < *room; ++i) {
            const std::string entry = read(*at + TAG_SIZE + PLACE_SIZE + i * ENTRY_SIZE, ENTRY_SIZE);
            const auto child = place(entry, NAME_SIZE);
            if (!child || (i < *count && !checkNode(*child, entry.substr(0, NAME_SIZE), depth + 1))) {
                return false;
            }
        }
        return true;
    }

    // Tables tell where they end.
    bool isTable(std::uint64_t at, std::string_view begin, std::string_view end, std::uint64_t size) {
        const std::string head = read(at, TAG_SIZE + PLACE_SIZE);
        return head.starts_with(begin) && place(head, TAG_SIZE) == at + TAG_SIZE + PLACE_SIZE + size &&
               read(at + TAG_SIZE + PLACE_SIZE + size, TAG_SIZE) == end;
    }

    // As much as there is.
    std::string read(std::uint64_t at, std::size_t size) {
        std::string bytes(size, '\0');
        m_file.clear();
        m_file.seekg(std::streamoff(at));
        m_file.read(bytes.data(), std::streamsize(size));
        bytes.resize(std::size_t(m_file.gcount()));
        return bytes;
    }

    static std::optional<std::uint64_t> number(const std::string& text, std::size_t at, std::size_t digits) {
        std::uint64_t value = 0;
        if (text.size() < at + digits) {
            return std::nullopt;
        }
        const char* end = text.data() + at + digits;
        const auto result = std::from_chars(text.data() + at, end, value, 16);
        return result.ec == std::errc() && result.ptr == end ? std::optional(value) : std::nullopt;
    }

    std::optional<std::uint64_t> binary(const std::string& text, std::size_t at, std::size_t size) const {
        std::uint64_t value = 0;
        if (text.size() < at + size) {
            return std::nullopt;
        }
        for (std::size_t i = 0; i < size; ++i) {
            value = value << 8 | std::uint8_t(text[m_isBigEndian ? at + i : at + size - 1 - i]);
        }
        return value;
    }

    std::optional<std::uint64_t> place(const std::string& text, std::size_t at) const {
        constexpr std::uint64_t MOST_BLOCKS = std::uint64_t(1) << 40;
        const auto block = m_isBinary ? binary(text, at, 8) : number(text, at, 8);
        const auto offset = m_isBinary ? binary(text, at + 8, 4) : number(text, at + 8, 4);
        return block && offset && *block < MOST_BLOCKS ? std::optional(*block * BLOCK_SIZE + *offset) : std::nullopt;
    }

    std::ifstream m_file;
    bool m_isBinary = false; ///< Places are.
    bool m_isBigEndian = false;
    std::set<std::uint64_t> m_seen;
};

} // namespace

bool checkCgnsAdf(const std::string& filename, ug::Error* error) {
    Walk walk(filename);
    return !walk.isAdf() || walk.checkNode(ROOT_AT, std::string(), 0) ||
           ug::fail(error, "is damaged: its nodes are not where they should be");
}

} // namespace orv::imp::cae
