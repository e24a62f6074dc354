#pragma once

#include "OrvImportVtk/HdfFile.h"
#include "OrvImportVtk/VtkSource.h"

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

class vtkCellArray;
class vtkDataSetAttributes;
class vtkDataSet;
class vtkUnstructuredGrid;

namespace orv::imp::cae {

/// VTKHDF: an unstructured grid, whose pieces become one mesh, or an image. One step.
///
/// It reads by HDF5 itself. VTK's own reader of version 9.1 takes arrays of an image's cells to have an item for each
/// point and fails, takes a file with several steps for one with several pieces, knows no global ids, follows offsets
/// and points of cells to wherever they lead, and lets HDF5 write on the console.
class HdfSource : public VtkSource {
public:
    HdfSource();
    ~HdfSource() override;

    bool open(const std::string& filename, VtkContents* contents, ug::Error* error) override;
    vtkSmartPointer<vtkDataObject> read(std::size_t step, std::span<const std::size_t> arrays,
                                        ug::Error* error) override;
    void release() override;

private:
    /// The arrays of points or of cells.
    struct Attributes {
        std::string group;
        ug::ResultMapping mapping;
        std::vector<std::uint64_t> sizes = {};     ///< Of the items: one, or those of an image along Z, Y and X.
        std::vector<std::uint64_t> flatSizes = {}; ///< Without directions in which an image has but one point.
        std::string ids = {};                      ///< The data set with global ids; empty when there is none.
        bool hasGhosts = false;
    };

    bool openGrid(ug::Error* error);
    bool openImage(ug::Error* error);
    bool listArrays(Attributes* attributes, VtkContents* contents);
    bool readCounts(const char* name, std::vector<long long>* counts, long long* total, ug::Error* error) const;
    bool checkSize(const char* name, const std::vector<std::uint64_t>& expected, ug::Error* error) const;

    vtkSmartPointer<vtkDataSet> readGrid(ug::Error* error) const;
    vtkSmartPointer<vtkDataSet> makeImage() const;
    bool readCells(vtkUnstructuredGrid* grid, ug::Error* error) const;
    template <class Array>
    bool readLists(vtkCellArray* cells, ug::Error* error) const;
    template <class Number>
    bool readOffsets(Number* offsets, ug::Error* error) const;
    template <class Number>
    bool readIds(Number* ids, ug::Error* error) const;
    bool readMarks(const Attributes& attributes, vtkDataSetAttributes* into, ug::Error* error) const;
    bool readArray(std::size_t index, vtkDataSet* into, ug::Error* error) const;

    std::unique_ptr<HdfFile> m_file;
    bool m_isImage = false;
    Attributes m_points = {"PointData", ug::PER_NODE};
    Attributes m_cells = {"CellData", ug::PER_ELEMENT};
    std::vector<CaeArray> m_arrays;

    /// Counts of each piece of a grid.
    std::vector<long long> m_piecePoints;
    std::vector<long long> m_pieceCells;
    std::vector<long long> m_pieceIds; ///< Points of cells.
    long long m_idCount = 0;

    std::array<int, 6> m_extent = {}; ///< Of an image.
    std::array<double, 3> m_origin = {};
    std::array<double, 3> m_spacing = {};
    std::array<double, 9> m_direction = {};
};

} // namespace orv::imp::cae
