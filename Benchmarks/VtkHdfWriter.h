#pragma once

#include <cstdlib>
#include <string>
#include <vector>

#include <vtk_hdf5.h>

#include <vtkCellArray.h>
#include <vtkDataArray.h>
#include <vtkPointData.h>
#include <vtkPoints.h>
#include <vtkUnsignedCharArray.h>
#include <vtkUnstructuredGrid.h>

namespace orvbench {

/// Writes a grid with points and arrays of double as a VTKHDF file of one piece, by the library itself, as VTK 9.1 has
/// no writer.
class VtkHdfWriter {
public:
    explicit VtkHdfWriter(const std::string& path)
        : m_path(path), m_file(H5Fcreate(path.c_str(), H5F_ACC_TRUNC, H5P_DEFAULT, H5P_DEFAULT)) {}

    ~VtkHdfWriter() {
        H5Fclose(m_file);
    }

    VtkHdfWriter(const VtkHdfWriter&) = delete;
    VtkHdfWriter& operator=(const VtkHdfWriter&) = delete;

    std::string write(vtkUnstructuredGrid* grid) const {
        writeHead();
        std::vector<vtkIdType> offsets = {0};
        std::vector<vtkIdType> nodes;
        for (vtkIdType cell = 0; cell < grid->GetNumberOfCells(); ++cell) {
            vtkIdType count = 0;
            const vtkIdType* points = nullptr;
            grid->GetCells()->GetCellAtId(cell, count, points);
            nodes.insert(nodes.end(), points, points + count);
            offsets.push_back(vtkIdType(nodes.size()));
        }
        writeCount("NumberOfPoints", grid->GetNumberOfPoints());
        writeCount("NumberOfCells", grid->GetNumberOfCells());
        writeCount("NumberOfConnectivityIds", vtkIdType(nodes.size()));
        writeSet("Offsets", {offsets.size()}, H5T_STD_I64LE, H5T_NATIVE_LLONG, offsets.data());
        writeSet("Connectivity", {nodes.size()}, H5T_STD_I64LE, H5T_NATIVE_LLONG, nodes.data());
        writeSet("Types", {offsets.size() - 1}, H5T_STD_U8LE, H5T_NATIVE_UCHAR,
                 grid->GetCellTypesArray()->GetPointer(0));
        const hsize_t points = hsize_t(grid->GetNumberOfPoints());
        writeSet("Points", {points, 3}, H5T_IEEE_F64LE, H5T_NATIVE_DOUBLE, grid->GetPoints()->GetVoidPointer(0));
        for (int a = 0; a < grid->GetPointData()->GetNumberOfArrays(); ++a) {
            vtkDataArray* array = grid->GetPointData()->GetArray(a);
            writeSet(std::string("PointData/") + array->GetName(), {points}, H5T_IEEE_F64LE, H5T_NATIVE_DOUBLE,
                     array->GetVoidPointer(0));
        }
        return m_path;
    }

private:
    static void check(herr_t status) {
        if (status < 0) {
            std::abort();
        }
    }

    void writeHead() const {
        constexpr hsize_t TWO = 2;
        constexpr long long VERSION[] = {1, 0};
        const std::string kind = "UnstructuredGrid";
        for (const char* group : {"/VTKHDF", "/VTKHDF/PointData", "/VTKHDF/CellData"}) {
            check(H5Gclose(H5Gcreate2(m_file, group, H5P_DEFAULT, H5P_DEFAULT, H5P_DEFAULT)));
        }
        const hid_t text = H5Tcopy(H5T_C_S1);
        check(H5Tset_size(text, kind.size()));
        writeAttribute("Type", text, H5Screate(H5S_SCALAR), kind.data());
        writeAttribute("Version", H5T_NATIVE_LLONG, H5Screate_simple(1, &TWO, nullptr), VERSION);
        check(H5Tclose(text));
    }

    void writeAttribute(const char* name, hid_t type, hid_t space, const void* values) const {
        const hid_t id = H5Acreate_by_name(m_file, "/VTKHDF", name, type, space, H5P_DEFAULT, H5P_DEFAULT, H5P_DEFAULT);
        check(H5Awrite(id, type, values));
        check(H5Aclose(id));
        check(H5Sclose(space));
    }

    void writeCount(const std::string& name, vtkIdType count) const {
        writeSet(name, {1}, H5T_STD_I64LE, H5T_NATIVE_LLONG, &count);
    }

    void writeSet(const std::string& name, const std::vector<hsize_t>& sizes, hid_t type, hid_t memoryType,
                  const void* values) const {
        const hid_t space = H5Screate_simple(int(sizes.size()), sizes.data(), nullptr);
        const hid_t set =
            H5Dcreate2(m_file, ("/VTKHDF/" + name).c_str(), type, space, H5P_DEFAULT, H5P_DEFAULT, H5P_DEFAULT);
        check(H5Dwrite(set, memoryType, H5S_ALL, H5S_ALL, H5P_DEFAULT, values));
        check(H5Dclose(set));
        check(H5Sclose(space));
    }

    std::string m_path;
    hid_t m_file;
};

} // namespace orvbench
