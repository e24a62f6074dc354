#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include <vtkSmartPointer.h>

class vtkPointSet;

namespace orv::imp::cae {

class EnSightFile;

/// Elements of one type that follow one another in a part.
struct EnSightSection {
    std::string type; ///< As it stands in the file: "hexa8".
    std::size_t elementCount;
};

struct EnSightPart {
    int number;
    std::string name;
    bool isBlock = false; ///< Structured, without sections.
    std::vector<EnSightSection> sections = {};
    vtkSmartPointer<vtkPointSet> data = {}; ///< Null when only the structure was read.
};

/// Reads a mesh of EnSight Gold. Elements that are ghosts, and those of blocks with a node that is blanked, are marked
/// as such; polyhedra are cells without points. Given ids are global ids.
/// @param isWhole false passes over nodes and elements
bool readEnSightMesh(EnSightFile* file, bool isWhole, std::vector<EnSightPart>* parts);

/// Gives parts without elements those of other parts of the same number, whose nodes they replace. False when they do
/// not have as many nodes.
bool takeEnSightElements(const std::vector<EnSightPart>& from, std::vector<EnSightPart>* parts);

} // namespace orv::imp::cae
