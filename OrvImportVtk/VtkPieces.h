#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <vector>

class vtkDataObject;
class vtkDataSet;

namespace orv::imp::cae {

/// A mesh that is part of what a reader gave, and what becomes a part of ours.
struct VtkPiece {
    std::string name; ///< Unique; empty when the reader gave it none.
    vtkDataSet* data; ///< Owned by the reader's output.
};

/// Gives each thing a name of its own.
class VtkNames {
public:
    /// The name when it has not been given before, otherwise one with a number behind it: "wing (2)".
    std::string makeUnique(const std::string& name);

private:
    std::map<std::string, std::size_t> m_times;
};

/// All meshes in an output, in its order: the output itself, or the leaves of its tree of blocks. Empty leaves are left
/// out, and so is what is no mesh. A leaf bears the names on the way to it, "wing/skin"; of a way with a single name
/// that name. A name that has been there before gets a number, "wing (2)", empty leaves being counted.
std::vector<VtkPiece> piecesOf(vtkDataObject* output);

} // namespace orv::imp::cae
