#include "OrvImportVtk/CgnsAdf.h"

#include <vtk_cgns.h>

// clang-format off
#include VTK_CGNS(cgns_io.h)
// clang-format on

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <fstream>
#include <map>
#include <optional>
#include <set>
#include <string_view>
#include <utility>
#include <vector>

namespace orv::imp::cae {
namespace {

// A file begins with 4 bytes and this, has the letter of its version and that of its byte order in its head, and its
// outermost node at a fixed place. Places have 8 bytes for the block of 4096 bytes and 4 for where it is in that,
// counts as many: hexadecimal digits, but for places from version B on.
constexpr std::string_view MAGIC = "ADF Database Version";
constexpr std::size_t MAGIC_AT = 4;
constexpr std::size_t VERSION_AT = 25; // "A01"
constexpr std::size_t VERSION_SIZE = 3;
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

// Nodes of the type "LK" stand for others: their data are "file>/path", without a file for one in their own. The
// library has room for so much of it.
constexpr std::string_view LINK_TYPE = "LK";
constexpr std::size_t LONGEST_FILE = 1024;
constexpr std::size_t LONGEST_PATH = 4096;

/// Names of nodes, from the outermost one on.
using Path = std::vector<std::string>;

std::string withoutBlanks(std::string name) {
    name.erase(name.find_last_not_of(' ') + 1); // npos + 1 is 0.
    return name;
}

Path pathOf(std::string_view text) {
    Path path;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t end = std::min(text.find('/', at), text.size());
        if (end > at) {
            path.push_back(withoutBlanks(std::string(text.substr(at, end - at))));
        }
        at = end + 1;
    }
    return path;
}

struct Link {
    std::string file; ///< Empty when it is not there.
    Path target;
};

using Links = std::map<Path, Link>; ///< By where they are.

/// Goes through a file, node by node.
class Walk {
public:
    explicit Walk(const std::string& filename) : m_filename(filename), m_file(filename, std::ios::binary) {}

    bool isAdf() {
        const std::string head = read(0, HEAD_SIZE);
        m_isBinary = head.size() == HEAD_SIZE && head[VERSION_AT] == 'B';
        m_isBigEndian = head.size() == HEAD_SIZE && head[BYTE_ORDER_AT] == 'B';
        m_separator = head.size() == HEAD_SIZE && head.substr(VERSION_AT, VERSION_SIZE) < "A02" ? ' ' : '>';
        return head.size() > MAGIC_AT && head.substr(MAGIC_AT).starts_with(MAGIC);
    }

    bool check() {
        return checkNode(ROOT_AT, std::string(), 0);
    }

    /// All that check() has found.
    const Links& links() const {
        return m_links;
    }

private:
    bool checkNode(std::uint64_t at, const std::string& name, int depth) {
        const std::string node = read(at, NODE_SIZE);
        if (!m_seen.insert(at).second || depth > MOST_NODES_DEEP || node.size() != NODE_SIZE ||
            !node.starts_with("NoDe") || node.compare(TAIL_AT, TAG_SIZE, "TaiL") != 0 ||
            (!name.empty() && node.compare(NAME_AT, NAME_SIZE, name) != 0)) {
            return false;
        }
        const std::string type = withoutBlanks(node.substr(TYPE_AT, TYPE_SIZE));
        return type.size() == LINK_TYPE.size() && checkParts(node) && (type != LINK_TYPE || addLink(node)) &&
               checkChildren(node, depth);
    }

    bool addLink(const std::string& node) {
        const auto at = place(node, PARTS_TABLE_AT);
        const auto size = dataSize(node);
        if (m_path.empty() || !at || !size || *size > LONGEST_FILE + LONGEST_PATH || number(node, RANK_AT, 2) != 1 ||
            number(node, PARTS_AT, 4) != 1) {
            return false;
        }
        const std::string text = std::string(read(*at + TAG_SIZE + PLACE_SIZE, std::size_t(*size)).c_str());
        const std::size_t end = text.find(m_separator);
        if (end > LONGEST_FILE || text.size() - end - 1 > LONGEST_PATH) { // npos, too.
            return false;
        }
        m_links[m_path] = {fileOf(text.substr(0, end)), pathOf(std::string_view(text).substr(end + 1))};
        return true;
    }

    // Where the library finds it.
    std::string fileOf(const std::string& name) const {
        std::array<char, LONGEST_FILE + 1> file = {};
        if (name.empty()) {
            return m_filename;
        }
        return cgio_find_file(m_filename.c_str(), name.c_str(), CGIO_FILE_ADF, int(file.size()), file.data()) == 0
                   ? file.data()
                   : "";
    }

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
            if (!child) {
                return false;
            }
            const std::string name = entry.substr(0, NAME_SIZE);
            m_path.push_back(withoutBlanks(name));
            if (i < *count && !checkNode(*child, name, depth + 1)) {
                return false;
            }
            m_path.pop_back();
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

    const std::string m_filename;
    std::ifstream m_file;
    bool m_isBinary = false; ///< Places are.
    bool m_isBigEndian = false;
    char m_separator = '>';
    std::set<std::uint64_t> m_seen;
    Path m_path; ///< Of the node that is looked at.
    Links m_links;
};

// Whether the library gets to a node: it goes around in circles, and never back, where links are on the way to each
// other's targets.
bool endsSomewhere(const std::map<std::string, Links>& files, std::string file, Path path) {
    constexpr int MOST_HOPS = 100;
    for (int hop = 0; hop < MOST_HOPS; ++hop) {
        const auto links = files.find(file);
        std::size_t length = 0;
        const Link* link = nullptr;
        while (links != files.end() && !link && length < path.size()) {
            const auto found = links->second.find(Path(path.begin(), path.begin() + std::ptrdiff_t(++length)));
            link = found == links->second.end() ? nullptr : &found->second;
        }
        if (!link) {
            return true;
        }
        file = link->file;
        Path next = link->target;
        next.insert(next.end(), path.begin() + std::ptrdiff_t(length), path.end());
        path = std::move(next);
    }
    return false;
}

} // namespace

bool checkCgnsAdf(const std::string& filename, ug::Error* error) {
    std::map<std::string, Links> files;
    std::vector<std::string> left = {filename};
    while (!left.empty()) {
        const std::string file = left.back();
        left.pop_back();
        Walk walk(file);
        if (file.empty() || files.contains(file)) {
            continue;
        }
        if (walk.isAdf() && !walk.check()) {
            const std::string text = "is damaged: its nodes are not where they should be";
            return ug::fail(error, Str(file == filename ? text : "links to '" + file + "', which " + text));
        }
        files[file] = walk.links();
        for (const auto& [path, link] : walk.links()) {
            left.push_back(link.file);
        }
    }
    for (const auto& [file, links] : files) {
        for (const auto& [path, link] : links) {
            if (!endsSomewhere(files, file, path)) {
                return ug::fail(error, Str("has a link in '" + file + "' that leads nowhere: '" + path.back() + "'"));
            }
        }
    }
    return true;
}

} // namespace orv::imp::cae
