#pragma once

#include "OrvImportVtk/HdfLibrary.h"
#include "OrvUnstructGrid/Error.h"

#include <cstdint>
#include <string>
#include <vector>

namespace orv::imp::cae {

/// A node of a CGNS file, with what it says of itself. It must not outlive its tree.
class CgnsNode {
public:
    CgnsNode() = default;
    ~CgnsNode();

    CgnsNode(CgnsNode&& other) noexcept;
    CgnsNode& operator=(CgnsNode&& other) noexcept;

    /// The items of its data, all dimensions multiplied; 0 when it has none.
    std::int64_t itemCount() const;

    std::string name;
    std::string label; ///< Its kind, "Zone_t".
    std::string type;  ///< Of the items: "I4", "I8", "R4", "R8" and "C1"; "MT" without data.
    std::vector<std::int64_t> sizes;

private:
    friend class CgnsTree;

    int m_file = 0;
    double m_id = 0;
};

/// The tree of nodes that a CGNS file is, HDF5 or ADF, through the library that VTK has for it. Nodes are looked at
/// when they are asked for.
class CgnsTree {
public:
    CgnsTree() = default;
    ~CgnsTree();

    CgnsTree(const CgnsTree&) = delete;
    CgnsTree& operator=(const CgnsTree&) = delete;

    bool open(const std::string& filename, ug::Error* error);

    /// The outermost node, which has no data.
    bool findRoot(CgnsNode* root, ug::Error* error) const;

    /// The child of that name.
    bool find(const CgnsNode& parent, const std::string& name, CgnsNode* child, ug::Error* error) const;

    bool readChildren(const CgnsNode& parent, std::vector<CgnsNode>* children, ug::Error* error) const;

    /// All items of a node, of its type, as many as CgnsNode::itemCount().
    bool readItems(const CgnsNode& node, void* items, ug::Error* error) const;

    /// The same of one of the types "I4" and "I8", "R4" and "R8", "C1".
    /// @{
    bool readIntegers(const CgnsNode& node, std::vector<std::int64_t>* items, ug::Error* error) const;
    bool readReals(const CgnsNode& node, std::vector<double>* items, ug::Error* error) const;
    bool readText(const CgnsNode& node, std::string* text, ug::Error* error) const;
    /// @}

private:
    bool findId(const CgnsNode& parent, const std::string& name, CgnsNode* child, ug::Error* error) const;
    bool look(CgnsNode* node, ug::Error* error) const;
    bool areCalledSo(const CgnsNode& parent, const std::vector<CgnsNode>& children, ug::Error* error) const;

    const HdfSilence m_silence; ///< The library changes what HDF5 prints.
    int m_file = 0;             ///< Of the library; 0 while none is open.
    std::int64_t m_mostBytes = 0;
};

} // namespace orv::imp::cae
