#include "OrvImportCae/CaeReaders.h"

#include "OrvCore/EditDistance.h"
#include "OrvImportCae/CaeModule.h"
#include "OrvImportCae/FrdReader.h"
#include "OrvImportCae/MshReader.h"
#include "OrvImportCae/TecReader.h"

#include <sstream>
#include <vector>

namespace orv::imp::cae {
namespace {

template <class Reader>
std::unique_ptr<CaeReader> create() {
    return std::make_unique<Reader>();
}

constexpr CaeModule MED_MODULE = {"Med", "ORV_WITH_MED", "libmedc11", "libmedc-dev"};
constexpr CaeModule VTK_MODULE = {"Vtk", "ORV_WITH_VTK", "libvtk9.1", "libvtk9-dev"};

constexpr CaeReaderEntry READERS[] = {
    {"CalculiX", "CalculiX results", "frd",
     "materials as parts; increments, frequencies and buckling factors as states; all results, per node",
     create<FrdReader>, nullptr},
    {"Gmsh", "Gmsh meshes and results", "msh",
     "physical groups, or else entities, as parts; time steps as states; values per node, element and element node",
     create<MshReader>, nullptr},
    {"MED", "MED files of code_aster and Salome", "med rmed",
     "meshes and groups of cells as parts; computation steps as states; fields on nodes, cells and cell nodes", nullptr,
     &MED_MODULE},
    {"Exodus II", "Exodus II results", "e ex2 exo exii g",
     "blocks of elements as parts; time steps as states; variables of nodes and elements; numbers of nodes and "
     "elements",
     nullptr, &VTK_MODULE, true},
    {"EnSight Gold", "EnSight Gold cases", "case",
     "parts; times as states, with meshes that change if they do; scalars, vectors and tensors of nodes and elements",
     nullptr, &VTK_MODULE},
    {"CGNS", "CGNS files", "cgns",
     "zones as parts; times as states, with meshes that change if they do; solutions at vertices and cell centres",
     nullptr, &VTK_MODULE},
    {"OpenFOAM", "OpenFOAM cases", "foam openfoam",
     "mesh and patches as parts; folders of times as states, with meshes that change if they do; volume fields of "
     "cells "
     "and patches, point fields of nodes",
     nullptr, &VTK_MODULE},
    {"VTK XML", "VTK XML files", "vtu vtp vts vtr vti",
     "one part; arrays of points and cells, of 1, 3, 6 and 9 components", nullptr, &VTK_MODULE},
    {"VTK XML collections", "VTK XML collections", "pvd vtm pvtu pvtp pvts pvtr pvti",
     "files, blocks and pieces as parts; times as states, each with its mesh; arrays of points and cells", nullptr,
     &VTK_MODULE},
    {"VTKHDF", "VTKHDF files", "vtkhdf hdf",
     "one part, of an unstructured grid or an image; arrays of points and cells, of 1, 3, 6 and 9 components", nullptr,
     &VTK_MODULE},
    {"VTK legacy", "VTK legacy files", "vtk", "one part; arrays of points and cells, of 1, 3, 6 and 9 components",
     nullptr, &VTK_MODULE},
    {"Tecplot", "Tecplot files in text", "tec tp dat",
     "zones as parts; solution times as states, with meshes that change if they do; variables of nodes and cells",
     create<TecReader>, nullptr},
};

std::vector<std::string> extensionsOf(const CaeReaderEntry& entry) {
    std::istringstream words(entry.extensions);
    std::vector<std::string> extensions;
    for (std::string word; words >> word;) {
        extensions.push_back(word);
    }
    return extensions;
}

// The known extension that is one slip away from what stands there; empty when there is none.
std::string similarExtension(const std::string& extension) {
    constexpr std::size_t LONGEST_EXTENSION = 16;
    constexpr std::size_t SHORTEST_TO_GUESS = 3; // Every single letter is a slip away from .e
    if (extension.size() > LONGEST_EXTENSION) {
        return std::string();
    }
    for (const CaeReaderEntry& entry : READERS) {
        for (const std::string& known : extensionsOf(entry)) {
            if (known.size() >= SHORTEST_TO_GUESS && editDistance(extension, known) == 1) {
                return known;
            }
        }
    }
    return std::string();
}

std::string supportedList() {
    std::string list;
    for (const CaeReaderEntry& entry : READERS) {
        list += list.empty() ? "" : ", ";
        for (const std::string& extension : extensionsOf(entry)) {
            list += '.' + extension + ' ';
        }
        list += std::string("(") + entry.description + ")";
    }
    return list;
}

// Of "a.e.4.0" it is "e"; empty when there are no two numbers.
std::string extensionBeforeNumbers(std::string name) {
    for (int i = 0; i < 2; ++i) {
        const std::string number = fileExtension(name);
        if (number.empty() || number.find_first_not_of("0123456789") != std::string::npos) {
            return std::string();
        }
        name.resize(name.size() - number.size() - 1);
    }
    return fileExtension(name);
}

} // namespace

std::span<const CaeReaderEntry> caeReaders() {
    return READERS;
}

std::string fileExtension(const std::string& filename) {
    const std::size_t nameBegin = filename.find_last_of('/') + 1; // npos + 1 is 0.
    const std::size_t dot = filename.find_last_of('.');
    if (dot == std::string::npos || dot < nameBegin) {
        return std::string();
    }
    return Str(filename.substr(dot + 1)).toLower().toStdString();
}

const CaeReaderEntry* findCaeReader(const Str& filename, ug::Error* error) {
    const std::string name = filename.toStdString();
    const std::string extension = fileExtension(name);
    const std::string spread = extensionBeforeNumbers(name);
    for (const CaeReaderEntry& entry : READERS) {
        for (const std::string& known : extensionsOf(entry)) {
            if (extension == known || (entry.isSpread && spread == known)) {
                return &entry;
            }
        }
    }
    std::string text = "cannot open \"" + name + "\": ";
    text += extension.empty() ? "its name has no extension that tells its format"
                              : "no reader for the extension \"" + extension + "\"";
    if (const std::string similar = similarExtension(extension); !similar.empty()) {
        text += ", did you mean \"" + similar + "\"?";
    }
    ug::fail(error, Str(text + (text.back() == '?' ? " " : "; ") + "supported are " + supportedList()));
    return nullptr;
}

std::unique_ptr<CaeReader> createCaeReader(const CaeReaderEntry& entry, const Str& filename, ug::Error* error) {
    if (!entry.module) {
        return entry.create();
    }
    ug::Error reason;
    std::unique_ptr<CaeReader> reader = createReaderOfModule(*entry.module, entry.name, &reason);
    if (!reader) {
        ug::fail(error, "cannot open \"" + filename + "\": " + reason.message());
    }
    return reader;
}

} // namespace orv::imp::cae
