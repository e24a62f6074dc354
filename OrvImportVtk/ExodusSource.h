#pragma once

#include "OrvImportVtk/ExodusCells.h"
#include "OrvImportVtk/NetCdfFile.h"
#include "OrvImportVtk/VtkSource.h"

class vtkUnstructuredGrid;

namespace orv::imp::cae {

/// Exodus II: blocks of elements as parts, by their ids, variables of nodes and elements, time steps. Points are where
/// the file has them, displacements are not added. Sets are left out, and so are elements that no cell is made of.
///
/// Goes by NetCDF itself, as VTK's own reader believes whatever a file tells it.
class ExodusSource : public VtkSource {
public:
    bool open(const std::string& filename, VtkContents* contents, ug::Error* error) override;
    vtkSmartPointer<vtkDataObject> read(std::size_t step, std::span<const std::size_t> arrays,
                                        ug::Error* error) override;
    bool readNumber(std::size_t step, std::size_t array, std::size_t part, std::size_t item,
                    double* number) const override;
    void release() override;

private:
    struct Block {
        std::string number; ///< What its variables are called by.
        std::string name;
        long long id = 0;
        std::size_t firstElement = 0;
        std::size_t elementCount = 0; ///< 0 when its elements are left out.
        NetCdfFile::Shape shape;      ///< Of its connectivity: elements and nodes of each, or nodes of all.
        ExodusCells cells;
        std::vector<int> nodes = {}; ///< Of its points, from 0, once it has been read.
    };

    /// The nodes of a block's elements.
    struct Connectivity {
        std::vector<int> numbers; ///< From 1.
        std::vector<int> counts;  ///< Of each element, when they differ.
    };

    bool listBlocks(VtkContents* contents, ug::Error* error);
    bool describeCells(Block* block, VtkContents* contents, ug::Error* error) const;
    bool listSteps(VtkContents* contents, ug::Error* error);
    bool listVariables(ug::ResultMapping mapping, VtkContents* contents, ug::Error* error);
    bool isPlausible(std::size_t count) const;

    /// What becomes of each block.
    using Grids = std::vector<vtkSmartPointer<vtkUnstructuredGrid>>;

    bool readMesh(Grids* grids, ug::Error* error);
    bool readCoordinates(std::vector<double>* axes, ug::Error* error) const;
    bool readConnectivity(const Block& block, Connectivity* nodes, ug::Error* error) const;
    bool addNodeValues(std::size_t step, std::size_t array, const Grids& grids, ug::Error* error) const;
    bool addElementValues(std::size_t step, std::size_t array, const Grids& grids, ug::Error* error) const;
    std::string elementVariable(std::size_t array, const Block& block) const;
    std::vector<long long> readIds(const char* variable, std::size_t count) const;

    static void setCells(const Block& block, const Connectivity& nodes, const std::vector<int>& indexes,
                         vtkUnstructuredGrid* grid);

    std::unique_ptr<NetCdfFile> m_file;
    std::size_t m_nodeCount = 0;
    std::size_t m_elementCount = 0;
    std::size_t m_stepCount = 0; ///< That the file has.
    std::vector<Block> m_blocks;
    std::vector<CaeArray> m_arrays;
    std::vector<std::size_t> m_variables; ///< The number in the file of each array, from 0.
};

} // namespace orv::imp::cae
