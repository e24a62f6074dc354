#pragma once

#include <array>
#include <cmath>
#include <cstddef>
#include <filesystem>
#include <fstream>
#include <string>
#include <utility>
#include <vector>

#include <vtkUnstructuredGrid.h>

namespace orvbench {

/// Writes an OpenFOAM case of a block of hexahedra, so many along each side: a mesh with one patch, and a time with the
/// fields a0 to a3.
class FoamCaseWriter {
public:
    FoamCaseWriter(std::string folder, int side, bool isBinary)
        : m_folder(std::move(folder)), m_side(side), m_isBinary(isBinary) {
        std::filesystem::create_directories(m_folder + "/constant/polyMesh");
        std::filesystem::create_directories(m_folder + "/1");
        listFaces();
    }

    /// @param grid whose points run along x, then y, then z
    /// @return the file to open
    std::string write(vtkUnstructuredGrid* grid) {
        std::vector<double> points(std::size_t(grid->GetNumberOfPoints()) * 3);
        for (vtkIdType i = 0; i < grid->GetNumberOfPoints(); ++i) {
            grid->GetPoint(i, &points[std::size_t(i) * 3]);
        }
        list("constant/polyMesh/points", "vectorField", points, 3);
        list("constant/polyMesh/owner", "labelList", m_owner, 1);
        list("constant/polyMesh/neighbour", "labelList", m_neighbour, 1);
        writeFaces();
        std::ofstream boundary = begin("constant/polyMesh/boundary", "polyBoundaryMesh");
        boundary << "1(walls { type wall; nFaces " << m_owner.size() - m_neighbour.size() << "; startFace "
                 << m_neighbour.size() << "; })\n";
        for (int a = 0; a < 4; ++a) {
            std::vector<double> values;
            for (int i = 0; i < m_side * m_side * m_side; ++i) {
                values.push_back(std::sin(double(i) * (a + 1)));
            }
            std::ofstream file = begin("1/a" + std::to_string(a), "volScalarField");
            file << "internalField nonuniform List<scalar> ";
            put(file, values, 1);
            file << ";\nboundaryField { walls { type zeroGradient; } }\n";
        }
        std::ofstream(m_folder + "/case.foam");
        return m_folder + "/case.foam";
    }

private:
    // Between cells first, then those on the outside.
    void listFaces() {
        for (const bool isOutside : {false, true}) {
            for (int z = 0; z < m_side; ++z) {
                for (int y = 0; y < m_side; ++y) {
                    for (int x = 0; x < m_side; ++x) {
                        listFacesOf(x, y, z, isOutside);
                    }
                }
            }
        }
    }

    void listFacesOf(int x, int y, int z, bool isOutside) {
        const auto at = [&](int dx, int dy, int dz) {
            return ((z + dz) * (m_side + 1) + y + dy) * (m_side + 1) + x + dx;
        };
        const int cell = (z * m_side + y) * m_side + x;
        const auto add = [&](int position, bool isUpper, int step, std::array<int, 4> points) {
            if ((position == (isUpper ? m_side - 1 : 0)) == isOutside && (isUpper || isOutside)) {
                m_faces.insert(m_faces.end(), points.begin(), points.end());
                m_owner.push_back(cell);
                if (!isOutside) {
                    m_neighbour.push_back(cell + step);
                }
            }
        };
        add(x, true, 1, {at(1, 0, 0), at(1, 1, 0), at(1, 1, 1), at(1, 0, 1)});
        add(y, true, m_side, {at(0, 1, 0), at(0, 1, 1), at(1, 1, 1), at(1, 1, 0)});
        add(z, true, m_side * m_side, {at(0, 0, 1), at(1, 0, 1), at(1, 1, 1), at(0, 1, 1)});
        add(x, false, 0, {at(0, 0, 0), at(0, 0, 1), at(0, 1, 1), at(0, 1, 0)});
        add(y, false, 0, {at(0, 0, 0), at(1, 0, 0), at(1, 0, 1), at(0, 0, 1)});
        add(z, false, 0, {at(0, 0, 0), at(0, 1, 0), at(1, 1, 0), at(1, 0, 0)});
    }

    std::ofstream begin(const std::string& name, const std::string& className) const {
        std::ofstream file(m_folder + "/" + name, std::ios::binary);
        file << "FoamFile { version 2.0; format " << (m_isBinary ? "binary" : "ascii") << "; class " << className
             << "; arch \"LSB;label=32;scalar=64\"; object " << name.substr(name.find_last_of('/') + 1) << "; }\n";
        return file;
    }

    template <class Number>
    void put(std::ofstream& file, const std::vector<Number>& numbers, std::size_t width) const {
        file << numbers.size() / width << "\n(";
        if (m_isBinary) {
            file.write(reinterpret_cast<const char*>(numbers.data()), std::streamsize(numbers.size() * sizeof(Number)));
        }
        for (std::size_t i = 0; i < numbers.size() && !m_isBinary; ++i) {
            file << (width > 1 && i % width == 0 ? "\n("
                     : width > 1                 ? " "
                                                 : "\n")
                 << numbers[i] << (width > 1 && i % width == width - 1 ? ")" : "");
        }
        file << ")";
    }

    template <class Number>
    void list(const std::string& name, const std::string& className, const std::vector<Number>& numbers,
              std::size_t width) const {
        std::ofstream file = begin(name, className);
        put(file, numbers, width);
        file << "\n";
    }

    void writeFaces() const {
        std::ofstream file = begin("constant/polyMesh/faces", m_isBinary ? "faceCompactList" : "faceList");
        if (m_isBinary) {
            std::vector<int> begins;
            for (std::size_t f = 0; f <= m_owner.size(); ++f) {
                begins.push_back(int(4 * f));
            }
            put(file, begins, 1);
            put(file, m_faces, 1);
            return;
        }
        file << m_owner.size() << "\n(\n";
        for (std::size_t f = 0; f < m_owner.size(); ++f) {
            const int* points = &m_faces[4 * f];
            file << "4(" << points[0] << ' ' << points[1] << ' ' << points[2] << ' ' << points[3] << ")\n";
        }
        file << ")\n";
    }

    std::string m_folder;
    int m_side;
    bool m_isBinary;
    std::vector<int> m_faces; ///< Four points of each.
    std::vector<int> m_owner;
    std::vector<int> m_neighbour;
};

} // namespace orvbench
