#pragma once

#include "OrvCore/Str.h"
#include "Tests/Support/ScratchFolder.h"
#include "Tests/Support/TestPaths.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>
#include <vector>

namespace orvtest {

/// A file that the solver wrote from one of our decks.
inline std::string solverFile(const std::string& name) {
    return testDataFolder() + "/frd/" + name;
}

/// What can be opened, as errors tell.
inline const std::string SUPPORTED_FORMATS =
    "supported are .frd (CalculiX results), .msh (Gmsh meshes and results), "
    ".med .rmed (MED files of code_aster and Salome), .e .ex2 .exo .exii .g (Exodus II results), "
    ".case (EnSight Gold cases), .cgns (CGNS files), .foam .openfoam (OpenFOAM cases), "
    ".vtu .vtp .vts .vtr .vti (VTK XML files), .pvd .vtm .pvtu .pvtp .pvts .pvtr .pvti (VTK XML collections), "
    ".vtkhdf .hdf (VTKHDF files), .vtk (VTK legacy files), .tec .tp .dat (Tecplot files in text)";

/// A text without the folder's name, which differs from run to run.
inline std::string without(const ScratchFolder& folder, const orv::Str& text) {
    orv::Str result = text;
    result.replace(folder.path() + "/", "");
    return result.toStdString();
}

template <class... Values>
std::string printed(const char* format, Values... values) {
    char text[256];
    std::snprintf(text, sizeof text, format, values...);
    return text;
}

/// Writes small result files by hand, line by line, in the columns of the format.
class FrdText {
public:
    FrdText() {
        line("    1C");
    }

    FrdText& line(const std::string& text) {
        m_text += text + "\n";
        return *this;
    }

    FrdText& nodeHeader(int count) {
        return line(printed("    2C%18s%12d%37s%2d", "", count, "", 1));
    }

    FrdText& node(int id, double x, double y, double z) {
        return line(printed(" -1%10d%12.5E%12.5E%12.5E", id, x, y, z));
    }

    FrdText& elementHeader(int count) {
        return line(printed("    3C%18s%12d%37s%2d", "", count, "", 1));
    }

    FrdText& element(int id, int type, int group, int material, const std::vector<int>& nodes) {
        line(printed(" -1%10d%5d%5d%5d", id, type, group, material));
        for (std::size_t i = 0; i < nodes.size(); i += 10) {
            std::string text = " -2";
            for (std::size_t j = i; j < nodes.size() && j < i + 10; ++j) {
                text += printed("%10d", nodes[j]);
            }
            line(text);
        }
        return *this;
    }

    FrdText& endBlock() {
        return line(" -3");
    }

    FrdText& resultHeader(int state, double value, int count, int kind) {
        return line(
            printed("  100CL%5d%12.5E%12d%20s%2d%5d%10s%2d", 100 + state, value, count, "", kind, state, "", 1));
    }

    FrdText& blockName(const std::string& name, int componentCount) {
        return line(printed(" -4  %-8s%5d    1", name.c_str(), componentCount));
    }

    FrdText& component(const std::string& name, int entity, int row, int column) {
        return line(printed(" -5  %-8s%5d%5d%5d%5d", name.c_str(), 1, entity, row, column));
    }

    FrdText& computedComponent(const std::string& name) {
        return line(printed(" -5  %-8s%5d%5d%5d%5d%5d%s", name.c_str(), 1, 2, 0, 0, 1, name.c_str()));
    }

    FrdText& row(int id, const std::vector<double>& values) {
        std::string text = printed(" -1%10d", id);
        for (std::size_t i = 0; i < values.size(); ++i) {
            if (i > 0 && i % 6 == 0) {
                line(text);
                text = " -2          ";
            }
            text += printed("%12.5E", values[i]);
        }
        return line(text);
    }

    FrdText& endFile() {
        return line(" 9999");
    }

    /// A tetrahedron: nodes 1 to 4 and element 1, of material 1.
    FrdText& tetrahedron() {
        nodeHeader(4).node(1, 0, 0, 0).node(2, 1, 0, 0).node(3, 0, 1, 0).node(4, 0, 0, 1).endBlock();
        return elementHeader(1).element(1, 3, 0, 1, {1, 2, 3, 4}).endBlock();
    }

    /// A block of temperatures: 10 times the node's number, plus the state's.
    FrdText& temperatures(int state, double time, const std::vector<int>& nodes) {
        resultHeader(state, time, int(nodes.size()), 1).blockName("NDTEMP", 1).component("T", 1, 0, 0);
        for (const int node : nodes) {
            row(node, {10.0 * node + state});
        }
        return endBlock();
    }

    const std::string& text() const {
        return m_text;
    }

private:
    std::string m_text;
};

} // namespace orvtest
