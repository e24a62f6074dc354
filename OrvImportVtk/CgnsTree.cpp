#include "OrvImportVtk/CgnsTree.h"

#include <vtk_cgns.h>

// clang-format off
#include VTK_CGNS(cgns_io.h)
// clang-format on

#include <algorithm>
#include <array>
#include <filesystem>
#include <utility>

namespace orv::imp::cae {
namespace {

constexpr int MOST_CHILDREN = 10'000'000;

// Deflated data may be that much larger than its file. What a file links to may lie in others, which are taken to be of
// reasonable size.
constexpr std::int64_t MOST_BYTES_PER_BYTE = 1100;
constexpr std::int64_t MOST_BYTES_OF_SMALL_FILES = std::int64_t(1) << 32;

std::string lastError() {
    std::array<char, CGIO_MAX_ERROR_LENGTH + 1> text = {};
    cgio_error_message(text.data());
    return text.data();
}

template <class Item>
std::vector<std::int64_t> widen(const std::vector<Item>& items) {
    return {items.begin(), items.end()};
}

} // namespace

CgnsNode::~CgnsNode() {
    if (m_file != 0) {
        cgio_release_id(m_file, m_id);
    }
}

CgnsNode::CgnsNode(CgnsNode&& other) noexcept {
    *this = std::move(other);
}

CgnsNode& CgnsNode::operator=(CgnsNode&& other) noexcept {
    std::swap(name, other.name);
    std::swap(label, other.label);
    std::swap(type, other.type);
    std::swap(sizes, other.sizes);
    std::swap(m_file, other.m_file);
    std::swap(m_id, other.m_id);
    return *this;
}

std::int64_t CgnsNode::itemCount() const {
    std::int64_t count = sizes.empty() ? 0 : 1;
    for (const std::int64_t size : sizes) {
        count *= size;
    }
    return count;
}

CgnsTree::~CgnsTree() {
    if (m_file != 0) {
        cgio_close_file(m_file);
    }
}

bool CgnsTree::open(const std::string& filename, ug::Error* error) {
    int type = CGIO_FILE_NONE;
    const bool isThere = cgio_check_file(filename.c_str(), &type) == 0;
    if (isThere && type == CGIO_FILE_NONE) { // Opening would take it for ADF.
        return ug::fail(error, "cannot be opened as a CGNS file: it is neither HDF5 nor ADF");
    }
    if (!isThere || cgio_open_file(filename.c_str(), CGIO_MODE_READ, type, &m_file) != 0) {
        m_file = 0;
        return ug::fail(error, Str("cannot be opened as a CGNS file: " + lastError()));
    }
    std::error_code failed;
    const auto size = std::int64_t(std::filesystem::file_size(filename, failed));
    m_mostBytes = std::max(size * MOST_BYTES_PER_BYTE, MOST_BYTES_OF_SMALL_FILES);
    return !failed || ug::fail(error, Str(failed.message()));
}

bool CgnsTree::findRoot(CgnsNode* root, ug::Error* error) const {
    root->name = "file";
    return cgio_get_root_id(m_file, &root->m_id) == 0 || ug::fail(error, Str("has no outermost node: " + lastError()));
}

bool CgnsTree::find(const CgnsNode& parent, const std::string& name, CgnsNode* child, ug::Error* error) const {
    CgnsNode found;
    if (!findId(parent, name, &found, error) || !look(&found, error)) {
        return false;
    }
    *child = std::move(found);
    return child->name == name || ug::fail(error, Str("'" + child->name + "' has two names"));
}

bool CgnsTree::readChildren(const CgnsNode& parent, std::vector<CgnsNode>* children, ug::Error* error) const {
    children->clear();
    int count = 0;
    if (cgio_number_children(m_file, parent.m_id, &count) != 0 || count < 0 || count > MOST_CHILDREN) {
        return ug::fail(error, Str("the nodes of '" + parent.name + "' cannot be told: " + lastError()));
    }
    if (count == 0) {
        return true;
    }
    int found = 0;
    std::vector<double> ids(std::size_t(count), 0);
    if (cgio_children_ids(m_file, parent.m_id, 1, count, &found, ids.data()) != 0 || found != count) {
        return ug::fail(error, Str("the nodes of '" + parent.name + "' cannot be found: " + lastError()));
    }
    for (const double child : ids) {
        CgnsNode node;
        node.m_file = m_file;
        node.m_id = child;
        children->push_back(std::move(node));
    }
    return std::all_of(children->begin(), children->end(), [&](CgnsNode& node) { return look(&node, error); }) &&
           areCalledSo(parent, *children, error);
}

bool CgnsTree::readIntegers(const CgnsNode& node, std::vector<std::int64_t>* items, ug::Error* error) const {
    items->resize(std::size_t(node.itemCount()));
    if (node.type == "I8") {
        return readItems(node, items->data(), error);
    }
    std::vector<std::int32_t> narrow(items->size());
    const bool isRead = node.type == "I4" ? readItems(node, narrow.data(), error)
                                          : ug::fail(error, Str("'" + node.name + "' is not of whole numbers"));
    *items = widen(narrow);
    return isRead;
}

bool CgnsTree::readReals(const CgnsNode& node, std::vector<double>* items, ug::Error* error) const {
    items->resize(std::size_t(node.itemCount()));
    if (node.type == "R8") {
        return readItems(node, items->data(), error);
    }
    std::vector<float> narrow(items->size());
    const bool isRead = node.type == "R4" ? readItems(node, narrow.data(), error)
                                          : ug::fail(error, Str("'" + node.name + "' is not of reals"));
    items->assign(narrow.begin(), narrow.end());
    return isRead;
}

bool CgnsTree::readText(const CgnsNode& node, std::string* text, ug::Error* error) const {
    text->assign(std::size_t(node.itemCount()), ' ');
    return node.type == "C1" ? readItems(node, text->data(), error)
                             : ug::fail(error, Str("'" + node.name + "' is no text"));
}

bool CgnsTree::findId(const CgnsNode& parent, const std::string& name, CgnsNode* child, ug::Error* error) const {
    if (cgio_get_node_id(m_file, parent.m_id, name.c_str(), &child->m_id) != 0) {
        return ug::fail(error, Str("'" + name + "' cannot be found: " + lastError()));
    }
    child->m_file = m_file;
    return true;
}

// Name, label, type and sizes of a node whose id is known.
bool CgnsTree::look(CgnsNode* node, ug::Error* error) const {
    std::array<char, CGIO_MAX_NAME_LENGTH + 1> name = {};
    std::array<char, CGIO_MAX_LABEL_LENGTH + 1> label = {};
    std::array<char, CGIO_MAX_NAME_LENGTH + 1> type = {};
    std::array<cgsize_t, CGIO_MAX_DIMENSIONS> sizes = {};
    int rank = 0;
    if (cgio_get_name(m_file, node->m_id, name.data()) != 0 || cgio_get_label(m_file, node->m_id, label.data()) != 0 ||
        cgio_get_data_type(m_file, node->m_id, type.data()) != 0 ||
        cgio_get_dimensions(m_file, node->m_id, &rank, sizes.data()) != 0) {
        return ug::fail(error, Str(lastError()));
    }
    node->name = name.data();
    node->label = label.data();
    node->type = type.data();
    if (node->name.empty() || node->type.size() != 2 || rank < 0 || rank > CGIO_MAX_DIMENSIONS) {
        return ug::fail(error, Str("'" + node->name + "' has no name or type, or more dimensions than there may be"));
    }
    std::int64_t bytes = 16; // The largest item.
    for (int d = 0; d < rank; ++d) {
        if (sizes[std::size_t(d)] < 0 || sizes[std::size_t(d)] > m_mostBytes / std::max<std::int64_t>(bytes, 1)) {
            return ug::fail(error, Str("'" + node->name + "' has more data than its file"));
        }
        bytes *= sizes[std::size_t(d)];
        node->sizes.push_back(sizes[std::size_t(d)]);
    }
    return true;
}

// Nodes have their names twice: their own, and the one that they are found by.
bool CgnsTree::areCalledSo(const CgnsNode& parent, const std::vector<CgnsNode>& children, ug::Error* error) const {
    constexpr std::size_t LENGTH = CGIO_MAX_NAME_LENGTH + 1;
    std::vector<char> names(children.size() * LENGTH + 1, '\0');
    int found = 0;
    if (cgio_children_names(m_file, parent.m_id, 1, int(children.size()), int(LENGTH), &found, names.data()) != 0 ||
        std::size_t(found) != children.size()) {
        return ug::fail(error, Str("names of nodes cannot be found: " + lastError()));
    }
    for (std::size_t i = 0; i < children.size(); ++i) {
        if (children[i].name != &names[i * LENGTH]) {
            return ug::fail(error, Str("'" + children[i].name + "' has two names"));
        }
    }
    CgnsNode last; // Looking for it goes past all others.
    return findId(parent, children.back().name, &last, error);
}

bool CgnsTree::readItems(const CgnsNode& node, void* items, ug::Error* error) const {
    return node.itemCount() > 0 && cgio_read_all_data_type(m_file, node.m_id, node.type.c_str(), items) == 0
               ? true
               : ug::fail(error, Str("'" + node.name + "' cannot be read: " +
                                     (node.itemCount() > 0 ? lastError() : std::string("it is empty"))));
}

} // namespace orv::imp::cae
