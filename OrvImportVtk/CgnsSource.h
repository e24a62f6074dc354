#pragma once

#include "OrvImportVtk/CgnsIndex.h"
#include "OrvImportVtk/VtkSource.h"

#include <vtkSmartPointer.h>

class vtkMultiBlockDataSet;
class vtkPointSet;

namespace orv::imp::cae {

/// CGNS: zones as parts, solutions at their nodes and in their cells, times. Goes by the CGNS library's tree of nodes,
/// as VTK's reader tells only of the first zone what there is, and believes whatever a file tells it.
class CgnsSource : public VtkSource {
public:
    bool open(const std::string& filename, VtkContents* contents, ug::Error* error) override;
    vtkSmartPointer<vtkDataObject> read(std::size_t step, std::span<const std::size_t> arrays,
                                        ug::Error* error) override;
    void release() override;

private:
    void chooseBases(CgnsLeftOut* leftOut);
    void describe(VtkContents* contents) const;
    bool readZones(std::size_t step, std::span<const std::size_t> arrays, vtkMultiBlockDataSet* output,
                   ug::Error* error) const;
    vtkSmartPointer<vtkPointSet> readZone(const CgnsTree& tree, const CgnsNode& node, const CgnsBase& base,
                                          const CgnsZone& zone, std::size_t step, std::span<const std::size_t> arrays,
                                          ug::Error* error) const;
    bool isWanted(const CaeArray& array, std::span<const std::size_t> arrays) const;

    std::string m_filename;
    std::vector<CgnsBase> m_bases;
    std::vector<std::size_t> m_chosen; ///< Of the bases.
    std::vector<double> m_times;       ///< None when the file has no times.
    std::vector<std::string> m_parts;
    std::vector<CaeArray> m_arrays;
};

} // namespace orv::imp::cae
